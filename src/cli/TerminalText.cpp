#include "cli/TerminalText.h"

#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

#include <algorithm>

namespace kavu::cli {

namespace {

/// The Unicode block of pictures of the ASCII control characters, U+2400.
std::string controlPicture(unsigned char c) {
    const unsigned char code = c == 0x7F ? 0x21 : c;
    return {'\xE2', '\x90', static_cast<char>(0x80 + code)};
}

/// Characters, not bytes: the bytes that continue a character do not count.
std::size_t columnsOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

}  // namespace

std::string terminalText(std::string_view bytes) {
    std::string stored(bytes);
    fromStoredForm(stored);
    const std::string text = toUtf8(stored);
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        if (c == '\n' || c == '\t' || (c >= 0x20 && c != 0x7F && c != 0xC2)) {
            result += text[i];
        } else if (c == '\r') {
            // Half of a line break, or a way to overwrite the line.
            if (next != '\n') {
                result += '\n';
            }
        } else if (c == 0xC2 && next < 0xA0) {
            // The second set of control characters, U+0080 to U+009F.
            result += "\xEF\xBF\xBD";
            ++i;
        } else if (c == 0xC2) {
            result += text[i];
        } else {
            result += controlPicture(c);
        }
    }
    return result;
}

std::string terminalLine(std::string_view bytes) {
    std::string text = terminalText(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return text;
}

std::string alignedTable(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], columnsOf(row[i]));
        }
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            line.append(widths[i] - columnsOf(row[i]) + 2, ' ');
        }
        text += trimTrailingBlanks(line);
        text += '\n';
    }
    return text;
}

}  // namespace kavu::cli
