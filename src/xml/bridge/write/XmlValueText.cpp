#include "xml/bridge/write/XmlValueText.h"

#include "core/text/Markup.h"
#include "core/text/TextEncoding.h"
#include "xml/XmlText.h"

#include <array>
#include <cstddef>

namespace kavu {

namespace {

constexpr std::string_view kNotInXml = "\xEF\xBF\xBD";

struct Named {
    std::string_view character;  ///< in UTF-8
    std::string_view name;       ///< after the ampersand has been escaped
};
constexpr auto kNamed = std::to_array<Named>({
    {"\xC3\xB6", "&amp;ouml;"},
    {"\xC3\xA4", "&amp;auml;"},
    {"\xC3\xBC", "&amp;uuml;"},
    {"\xC3\x96", "&amp;Ouml;"},
    {"\xC3\x84", "&amp;Auml;"},
    {"\xC3\x9C", "&amp;Uuml;"},
    {"\xC3\x9F", "&amp;szlig;"},
});

/// The bytes of the character at the front of valid UTF-8 that begins with a byte beyond ASCII.
std::string_view characterAt(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    return text.substr(0, lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2);
}

/// The two characters beyond ASCII that have a place in UTF-8 and none in XML.
bool isForbidden(std::string_view character) {
    return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

std::string_view beyondAscii(std::string_view character, XmlDialect dialect) {
    if (dialect == XmlDialect::Classic) {
        for (const auto& named : kNamed) {
            if (named.character == character) {
                return named.name;
            }
        }
    }
    return isForbidden(character) ? kNotInXml : character;
}

/// What is written of an ASCII character; empty for the character itself.
std::string_view asciiText(char c, XmlDialect dialect) {
    if (const auto entity = markupEntity(c); !entity.empty()) {
        return entity;
    }
    const bool isClassic = dialect == XmlDialect::Classic;
    switch (c) {
        case '\'':
            return isClassic ? "&apos;" : std::string_view{};
        case '\n':
            return "&#10;";
        case '\r':
            return isClassic ? " " : "&#13;";
        case '\t':
            // A parser makes a blank of a tabulator in an attribute.
            return isClassic ? std::string_view{} : "&#9;";
        default:
            return isXmlCharacter(static_cast<unsigned char>(c)) ? std::string_view{} : kNotInXml;
    }
}

}  // namespace

std::string xmlValueText(std::string_view value, XmlDialect dialect) {
    const std::string text = toUtf8(value);
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (static_cast<unsigned char>(c) >= 0x80U) {
            const auto character = characterAt(std::string_view(text).substr(at));
            out += beyondAscii(character, dialect);
            at += character.size();
            continue;
        }
        const auto other = asciiText(c, dialect);
        if (other.empty()) {
            out += c;
        } else {
            out += other;
        }
        ++at;
    }
    return out;
}

std::string xmlCommentText(std::string_view text) {
    const std::string utf8 = toUtf8(text);
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const char c = utf8[at];
        if (static_cast<unsigned char>(c) >= 0x80U) {
            const auto character = characterAt(std::string_view(utf8).substr(at));
            out += beyondAscii(character, XmlDialect::Schema);
            at += character.size();
            continue;
        }
        if (c == '-' && out.ends_with('-')) {
            out += ' ';
        }
        if (isXmlCharacter(static_cast<unsigned char>(c))) {
            out += c;
        } else {
            out += kNotInXml;
        }
        ++at;
    }
    return out;
}

}  // namespace kavu
