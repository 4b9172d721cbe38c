#include "xml/XmlSyntax.h"

#include "core/text/Text.h"
#include "core/text/TextEncoding.h"
#include "xml/XmlText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace kavu {

namespace {

constexpr bool isXmlSpace(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

std::size_t spaceLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && isXmlSpace(text[length])) {
        ++length;
    }
    return length;
}

/// The longest reference: that of the last character with some leading zeros.
constexpr std::size_t kLongestReference = 32;

constexpr auto kPredefined = std::to_array<std::string_view>({"amp", "lt", "gt", "quot", "apos"});

bool isKnownReference(std::string_view name) {
    if (!name.starts_with('#')) {
        return std::find(kPredefined.begin(), kPredefined.end(), name) != kPredefined.end();
    }
    name.remove_prefix(1);
    const bool isHexadecimal = name.starts_with('x');
    name.remove_prefix(isHexadecimal ? 1 : 0);
    unsigned long number = 0;
    const auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), number, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == name.data() + name.size() && isXmlCharacter(number);
}

/// One walk over a document. Each step takes what it has checked from the front, or states the
/// fault and returns false.
class SyntaxCheck {
  public:
    explicit SyntaxCheck(std::string_view text) : text_(text), rest_(text) {}

    XmlShape run() {
        if (!isValidUtf8(text_)) {
            fail("not UTF-8");
        } else {
            (void)(checkCharacters() && takeDeclaration() && takeAll());
        }
        return std::move(shape_);
    }

  private:
    bool fail(std::string reason) {
        const auto at = text_.size() - rest_.size();
        const auto lines = std::count(text_.begin(), text_.begin() + static_cast<long>(at), '\n');
        shape_.fault = XmlFault{static_cast<std::size_t>(lines) + 1, std::move(reason)};
        return false;
    }

    bool checkCharacters() {
        for (std::size_t at = 0; at < text_.size(); ++at) {
            const auto c = static_cast<unsigned char>(text_[at]);
            const bool isNone = c == 0xEF && text_.compare(at, 2, "\xEF\xBF") == 0 &&
                                static_cast<unsigned char>(text_[at + 2]) >= 0xBE;
            if ((c < 0x20 && !isXmlCharacter(c)) || isNone) {
                rest_ = text_.substr(at);
                return fail("a character that XML does not allow");
            }
        }
        return true;
    }

    bool takeDeclaration() {
        if (!rest_.starts_with("<?xml") || !isXmlSpace(rest_.substr(0, 6).back())) {
            return true;
        }
        rest_.remove_prefix(5);
        if (!takeAttributes()) {
            return false;
        }
        return takeText("?>") || fail("the declaration does not end");
    }

    bool takeAll() {
        while (!rest_.empty()) {
            const bool taken = rest_.front() == '<' ? takeMarkup() : takeCharacters();
            if (!taken) {
                return false;
            }
        }
        if (!open_.empty()) {
            return fail("the element '" + std::string(open_.back().name) + "' is not closed");
        }
        return hasRoot_ || fail("no element");
    }

    bool takeMarkup() {
        const char second = rest_.size() > 1 ? rest_[1] : '\0';
        if (second != '!' && second != '?') {  // which nearly all markup is not
            return second == '/' ? takeEndTag() : takeStartTag();
        }
        if (rest_.starts_with("<!--")) {
            return takeComment();
        }
        if (rest_.starts_with("<![CDATA[")) {
            return takeSection();
        }
        if (second == '!') {
            return fail("a document type is not read");
        }
        return takeInstruction();
    }

    bool takeComment() {
        const auto end = rest_.find("--", 4);
        if (end == std::string_view::npos || !rest_.substr(end).starts_with("-->")) {
            return fail("a comment does not end, or holds '--'");
        }
        rest_.remove_prefix(end + 3);
        return true;
    }

    bool takeSection() {
        const auto end = rest_.find("]]>");
        if (open_.empty() || end == std::string_view::npos) {
            return fail("a CDATA section outside the root, or without its end");
        }
        noteText();
        rest_.remove_prefix(end + 3);
        return true;
    }

    bool takeInstruction() {
        const auto target = rest_.substr(2, xmlNameLength(rest_.substr(2)));
        const auto end = rest_.find("?>");
        if (target.empty() || equalsIgnoreCase(target, "xml") || end == std::string_view::npos) {
            return fail("a processing instruction without a name or end, or a second declaration");
        }
        const auto behind = rest_[2 + target.size()];
        if (behind != '?' && !isXmlSpace(behind)) {
            return fail("the name of a processing instruction is not one");
        }
        rest_.remove_prefix(end + 2);
        return true;
    }

    bool takeStartTag() {
        const auto name = rest_.substr(1, xmlNameLength(rest_.substr(1)));
        if (name.empty()) {
            return fail("'<' is not followed by a name");
        }
        if (open_.empty() && hasRoot_) {
            return fail("more than one root element");
        }
        if (open_.size() == kMostXmlDepth) {
            return fail("elements more than " + std::to_string(kMostXmlDepth) + " deep");
        }
        rest_.remove_prefix(1 + name.size());
        if (!takeAttributes()) {
            return false;
        }
        hasRoot_ = true;
        if (!open_.empty()) {
            open_.back().hasElement = true;
            noteMixture();
        }
        if (takeText("/>")) {
            return true;
        }
        if (!takeText(">")) {
            return fail("the tag of '" + std::string(name) + "' does not end");
        }
        open_.push_back({name});
        return true;
    }

    bool takeEndTag() {
        const auto name = rest_.substr(2, xmlNameLength(rest_.substr(2)));
        if (open_.empty() || open_.back().name != name) {
            return fail("mismatched tag");
        }
        rest_.remove_prefix(2 + name.size());
        takeSpace();
        if (!takeText(">")) {
            return fail("the end tag of '" + std::string(name) + "' does not end");
        }
        open_.pop_back();
        return true;
    }

    /// Takes the attributes of a tag and the white space after them.
    bool takeAttributes() {
        names_.clear();
        for (;;) {
            const bool hadSpace = takeSpace();
            const auto name = rest_.substr(0, xmlNameLength(rest_));
            if (name.empty()) {
                break;
            }
            if (!hadSpace) {
                return fail("no blank before the attribute '" + std::string(name) + "'");
            }
            rest_.remove_prefix(name.size());
            if (!takeAttributeValue(name)) {
                return false;
            }
            names_.push_back(name);
        }
        if (names_.size() < 2) {
            return true;
        }
        std::sort(names_.begin(), names_.end());
        const auto twice = std::adjacent_find(names_.begin(), names_.end());
        return twice == names_.end() || fail("the attribute '" + std::string(*twice) + "' twice");
    }

    bool takeAttributeValue(std::string_view name) {
        takeSpace();
        const bool hasSign = takeText("=");
        takeSpace();
        const char quote = rest_.empty() ? '\0' : rest_.front();
        const auto end = rest_.size() < 2 ? std::string_view::npos : rest_.find(quote, 1);
        if (!hasSign || (quote != '"' && quote != '\'') || end == std::string_view::npos) {
            return fail("the attribute '" + std::string(name) + "' has no value in quotes");
        }
        const auto value = rest_.substr(1, end - 1);
        if (value.find('<') != std::string_view::npos || !holdsKnownReferences(value)) {
            return fail("'<' or an unknown entity in the attribute '" + std::string(name) + "'");
        }
        if (name == "xml:space") {
            shape_.keepsWhiteSpace = true;
        }
        rest_.remove_prefix(end + 1);
        return true;
    }

    bool takeCharacters() {
        const auto characters = rest_.substr(0, rest_.find('<'));
        if (spaceLength(characters) < characters.size()) {
            if (open_.empty()) {
                return fail("text outside the root element");
            }
            if (characters.find("]]>") != std::string_view::npos) {
                return fail("']]>' in a text");
            }
            if (!holdsKnownReferences(characters)) {
                return fail("an unknown entity");
            }
            noteText();
        }
        rest_.remove_prefix(characters.size());
        return true;
    }

    [[nodiscard]] static bool holdsKnownReferences(std::string_view text) {
        for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
            const auto name = text.substr(at + 1, kLongestReference);
            const auto end = name.find(';');
            if (end == std::string_view::npos || !isKnownReference(name.substr(0, end))) {
                return false;
            }
        }
        return true;
    }

    void noteText() {
        open_.back().hasText = true;
        noteMixture();
    }
    void noteMixture() {
        shape_.keepsWhiteSpace |= open_.back().hasText && open_.back().hasElement;
    }

    bool takeText(std::string_view text) {
        if (!rest_.starts_with(text)) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }
    bool takeSpace() {
        const auto length = spaceLength(rest_);
        rest_.remove_prefix(length);
        return length > 0;
    }

    struct Element {
        std::string_view name;
        bool hasText = false;
        bool hasElement = false;
    };

    std::string_view text_;
    std::string_view rest_;
    std::vector<Element> open_;
    std::vector<std::string_view> names_;
    bool hasRoot_ = false;
    XmlShape shape_;
};

}  // namespace

XmlShape checkXml(std::string_view text) {
    return SyntaxCheck(text).run();
}

}  // namespace kavu
