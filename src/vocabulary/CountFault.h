// How a count is told of that does not say what is there.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

/// "P-1\ISF\N states 1, but the file has commands of number 2. ..." `stated` is what is shown for
/// the count. `highest` is the highest number of a command that it governs.
[[nodiscard]] std::string hiddenRowsText(std::string_view code, std::string_view stated,
                                         int highest);
/// "C-1\PS\N states 'x', which is no number."
[[nodiscard]] std::string noNumberText(std::string_view code, std::string_view stated);

}  // namespace kavu
