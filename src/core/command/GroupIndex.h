// The index of the group that a command belongs to.
#pragma once

#include "core/text/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kavu {

/// The group index of a command: the number after `C-`, 0 without one.
[[nodiscard]] inline std::int64_t groupIndexOf(std::string_view command) {
    command = command.substr(0, command.find(':'));
    return command.size() > 2 && command[1] == '-' ? leadingInteger(command.substr(2)) : 0;
}

/// What is in front of the index, "C-", and digits that always fit.
inline constexpr std::size_t kBeforeIndex = 2;
inline constexpr std::size_t kSureDigits = 9;

/// The head of a C command: its group index, and where its `\` is, if it has one.
struct RawHead {
    std::int64_t index = 0;
    std::size_t slash = 0;
};
[[nodiscard]] inline RawHead rawHeadOf(std::string_view line) {
    RawHead head;
    // Nearly every command begins with "C-", a few digits and a backslash.
    const auto most = std::min(line.size(), kBeforeIndex + kSureDigits);
    head.slash = kBeforeIndex;
    for (; head.slash < most && isDigit(line[head.slash]); ++head.slash) {
        head.index = head.index * 10 + (line[head.slash] - '0');
    }
    if (head.slash == kBeforeIndex || head.slash >= line.size() || line[head.slash] != '\\' ||
        !line.starts_with("C-")) {
        head.index = groupIndexOf(line);
        head.slash = line.find('\\');
    }
    return head;
}

}  // namespace kavu
