// The commands of up to 25 group indices, before they are regrouped under their
// measurement names.
#pragma once

#include "conversion/ConversionFields.h"
#include "core/command/GroupIndex.h"
#include "core/text/Text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

/// What ends a command in a file: carriage return and line feed.
inline constexpr std::uint64_t kLineEndBytes = 2;

/// A command and its parts, all within the bytes of the chunk.
struct RawCommand {
    std::string_view line;  ///< with its `;`
    std::size_t end = 0;    ///< its end in the bytes; it begins at the end of the one before
    std::int64_t index = 0;
    std::string_view code;
    std::string_view value;  ///< without the `;`
};

[[nodiscard]] inline RawCommand parseRawCommand(std::string_view line) {
    RawCommand command;
    command.line = line;
    const auto head = rawHeadOf(line);
    command.index = head.index;
    const auto colon =
        head.slash == std::string_view::npos ? head.slash : line.find(':', head.slash);
    if (colon != std::string_view::npos) {
        command.code = line.substr(head.slash + 1, colon - head.slash - 1);
        command.value = line.substr(colon + 1, line.size() - colon - 2);
    }
    return command;
}

/// Calls `visit` with each command. Line breaks within a command get their stored form in
/// place, so that each value fits on one line; `severalLines` states that there may be some.
template <typename Visit>
void forEachRawCommand(std::string& bytes, bool severalLines, Visit visit) {
    constexpr std::string_view kBetween = " \t\r\n\v\f\x1a";
    std::size_t start = 0;
    for (auto end = bytes.find(';'); end != std::string::npos; end = bytes.find(';', start)) {
        auto first = start;
        while (kBetween.find(bytes[first]) != std::string_view::npos) {
            ++first;
        }
        const auto length = end + 1 - first;
        const std::string_view line(bytes.data() + first, length);
        if (severalLines && holdsLineBreak(line)) {
            std::string stored(line);
            toStoredForm(stored);
            bytes.replace(first, length, stored);
        }
        auto command = parseRawCommand(std::string_view(bytes.data() + first, length));
        command.end = start = end + 1;
        visit(command);
    }
}

/// True for a command that names its index.
[[nodiscard]] inline bool isNaming(const RawCommand& command) {
    return !command.code.empty() && toUpperAscii(command.code.front()) == kNameCode.front() &&
           startsWithIgnoreCase(command.code, kNameCode);
}
/// The measurement name that a command gives its index, or empty if it gives none: the
/// value without trailing blanks, which a section name cannot have.
[[nodiscard]] std::string_view measurementNameIn(const RawCommand& command);
/// The same, cut to what a record can be called.
[[nodiscard]] std::string_view recordNameIn(const RawCommand& command);

}  // namespace kavu
