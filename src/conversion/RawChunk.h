// A chunk as the load first writes it: the commands of up to 25 group indices, one on a
// line, before they are regrouped under their measurement names.
#pragma once

#include "core/Text.h"

#include <cstdint>
#include <string_view>

namespace kavu {

/// The group index of a command: the number behind `C-`, 0 without one.
[[nodiscard]] inline std::int64_t groupIndexOf(std::string_view command) {
    command = command.substr(0, command.find(':'));
    return command.size() > 2 && command[1] == '-' ? leadingInteger(command.substr(2)) : 0;
}

/// A command and its parts, all within the bytes of the chunk.
struct RawCommand {
    std::string_view line;  ///< without its line end
    std::int64_t index = 0;
    std::string_view code;
    std::string_view value;  ///< without the `;`
};

[[nodiscard]] inline RawCommand parseRawCommand(std::string_view line) {
    RawCommand command;
    command.line = line;
    command.index = groupIndexOf(line);
    const auto slash = line.find('\\');
    const auto colon = slash == std::string_view::npos ? slash : line.find(':', slash);
    if (colon != std::string_view::npos) {
        command.code = line.substr(slash + 1, colon - slash - 1);
        command.value = line.substr(colon + 1);
        command.value = command.value.substr(0, command.value.find(';'));
    }
    return command;
}

/// Calls `visit` with each command of a raw chunk.
template <typename Visit>
void forEachRawCommand(std::string_view bytes, Visit visit) {
    while (!bytes.empty()) {
        const auto end = bytes.find('\n');
        auto line = bytes.substr(0, end);
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        line = trimRight(line);
        if (!line.empty()) {
            visit(parseRawCommand(line));
        }
    }
}

/// The measurement name that a command gives its index, or empty if it is none: the value
/// without blanks at its end, which a section name can not have.
[[nodiscard]] std::string_view measurementNameIn(const RawCommand& command);

}  // namespace kavu
