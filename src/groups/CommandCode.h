// A command's code as the user types it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

/// A command's code in its parts: `R-1\ADL-2-5` is R, 1 and "ADL-2-5".
struct CommandCode {
    char letter = 0;
    int index = 0;        ///< 1 to 99; 0 for a group without one
    std::string field{};  ///< as it was typed, but for zeros at the front of its indices

    /// "R-1\ADL-2-5"
    [[nodiscard]] std::string text() const;
};
/// The parts of a code in any case; nothing for an unknown letter, an index that is
/// missing, out of range or not allowed, a missing field, or a colon or semi-colon.
[[nodiscard]] std::optional<CommandCode> parseCommandCode(std::string_view typed);

}  // namespace kavu
