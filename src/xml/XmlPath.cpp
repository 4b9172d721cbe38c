#include "xml/XmlPath.h"

#include "core/text/Text.h"
#include "xml/XmlText.h"

namespace kavu {

namespace {

/// Follows the quotes of a path.
class Quotes {
  public:
    void pass(char c) {
        if (quote_ == '\0' && (c == '"' || c == '\'')) {
            quote_ = c;
        } else if (c == quote_) {
            quote_ = '\0';
        }
    }
    [[nodiscard]] bool isInside() const { return quote_ != '\0'; }
    [[nodiscard]] bool isInsideDouble() const { return quote_ == '"'; }

  private:
    char quote_ = '\0';
};

bool isRefused(std::string_view path) {
    if (path.find("///") != std::string_view::npos) {
        return true;
    }
    Quotes quotes;
    for (std::size_t at = 0; at + 1 < path.size(); ++at) {
        quotes.pass(path[at]);
        if (at > 0 && !quotes.isInsideDouble() && path[at] == '/' && path[at + 1] == '/') {
            return true;
        }
    }
    return false;
}

void skipBlanks(std::string_view& text) {
    text = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

bool take(std::string_view& text, std::string_view word) {
    skipBlanks(text);
    if (!text.starts_with(word)) {
        return false;
    }
    text.remove_prefix(word.size());
    return true;
}

/// `@name="value"` at the front of a predicate.
bool takeCondition(std::string_view& text, XmlStep& step) {
    if (!take(text, "@")) {
        return false;
    }
    const auto name = text.substr(0, xmlNameLength(text));
    text.remove_prefix(name.size());
    if (name.empty() || !take(text, "=")) {
        return false;
    }
    skipBlanks(text);
    const char quote = text.empty() ? '\0' : text.front();
    const auto end = text.size() < 2 ? std::string_view::npos : text.find(quote, 1);
    if ((quote != '"' && quote != '\'') || end == std::string_view::npos) {
        return false;
    }
    step.attributes.emplace_back(name, text.substr(1, end - 1));
    text.remove_prefix(end + 1);
    return true;
}

}  // namespace

std::optional<std::string> fullXmlPath(std::string_view path, std::string_view rootPath) {
    if (path.empty() || isRefused(path)) {
        return std::nullopt;
    }
    std::string full;
    if (!path.starts_with(rootPath)) {
        full = rootPath;
        full += path.front() == '/' || path.front() == '[' ? "" : "/";
    }
    full += path;
    if (full.ends_with('/')) {
        full.pop_back();
    }
    return full;
}

std::size_t lastXmlStep(std::string_view path) {
    Quotes quotes;
    int depth = 0;
    auto step = std::string_view::npos;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const char c = path[at];
        quotes.pass(c);
        if (quotes.isInside()) {
            continue;
        }
        depth += c == '[' ? 1 : c == ']' ? -1 : 0;
        // The two at the start of a path are no step.
        if (c == '/' && depth == 0 && at > 1) {
            step = at;
        }
    }
    return step;
}

std::optional<XmlStep> parseXmlStep(std::string_view step) {
    XmlStep result;
    result.name = step.substr(0, xmlNameLength(step));
    step.remove_prefix(result.name.size());
    // Of an axis, as in "parent::A", the name is more than the name of an element.
    if (result.name.empty() || result.name.find("::") != std::string::npos) {
        return std::nullopt;
    }
    for (skipBlanks(step); !step.empty(); skipBlanks(step)) {
        if (!take(step, "[")) {
            return std::nullopt;
        }
        do {
            if (!takeCondition(step, result)) {
                return std::nullopt;
            }
        } while (take(step, "and "));
        if (!take(step, "]")) {
            return std::nullopt;
        }
    }
    return result;
}

}  // namespace kavu
