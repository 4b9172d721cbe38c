#include "xml/XmlText.h"

#include "core/text/TextEncoding.h"

#include <array>

namespace kavu {

namespace {

constexpr bool startsName(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
}

constexpr bool continuesName(unsigned char c) {
    return startsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

constexpr auto kContinuesName = [] {
    std::array<bool, 256> table{};
    for (unsigned c = 0; c < table.size(); ++c) {
        table[c] = continuesName(static_cast<unsigned char>(c));
    }
    return table;
}();

/// U+FFFE and U+FFFF are no characters; in UTF-8 they begin as U+FFBF does.
bool isNoCharacter(std::string_view text, std::size_t at) {
    return text.compare(at, 3, "\xEF\xBF\xBE") == 0 || text.compare(at, 3, "\xEF\xBF\xBF") == 0;
}

}  // namespace

std::string xmlCharacters(std::string_view bytes) {
    const auto text = toUtf8(bytes);
    std::string kept;
    kept.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (isNoCharacter(text, at)) {
            at += 2;
        } else if (const auto c = static_cast<unsigned char>(text[at]);
                   c >= 0x80 || isXmlCharacter(c)) {
            kept += text[at];
        }
    }
    return kept;
}

bool isXmlCharacter(unsigned long number) {
    return number == '\t' || number == '\n' || number == '\r' ||
           (number >= 0x20 && number <= 0xD7FF) || (number >= 0xE000 && number <= 0xFFFD) ||
           (number >= 0x10000 && number <= 0x10FFFF);
}

std::size_t xmlNameLength(std::string_view text) {
    if (text.empty() || !startsName(static_cast<unsigned char>(text.front()))) {
        return 0;
    }
    std::size_t length = 1;
    while (length < text.size() && kContinuesName[static_cast<unsigned char>(text[length])]) {
        ++length;
    }
    return length;
}

bool isXmlName(std::string_view name) {
    return !name.empty() && xmlNameLength(name) == name.size();
}

std::string xpathLiteral(std::string_view text) {
    if (text.find('"') == std::string_view::npos) {
        return '"' + std::string(text) + '"';
    }
    // A literal has no escapes: pieces between the double quotes, and the quotes themselves in
    // single ones.
    std::string literal = "concat(";
    for (;;) {
        const auto quote = text.find('"');
        literal += '"' + std::string(text.substr(0, quote)) + '"';
        if (quote == std::string_view::npos) {
            return literal + ")";
        }
        literal += ",'\"',";
        text.remove_prefix(quote + 1);
    }
}

}  // namespace kavu
