// A box about many things: it names the first of them and counts the others.
#pragma once

#include "core/talk/UserInterface.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// More names than this make a box hard to read.
inline constexpr std::size_t kMostNamesShown = 10;

/// Appends the first `kMostNamesShown` lines to the text of a box. If there are more, a line
/// counts them, and the details of the box have all.
void addLines(MessageBox& box, const std::vector<std::string>& lines);

/// A question about many things that has a name, with Yes, No and Cancel.
struct LinesQuestion {
    std::string_view name;  ///< one of `kQuestionNames`
    std::string_view title;
    std::string before;  ///< the text above the lines
    std::string after;   ///< and below them
    Button defaultButton = Button::No;
    const char* yes = nullptr;  ///< what the buttons say, with an "&"
    const char* no = nullptr;
};
[[nodiscard]] Button askAboutLines(UserInterface& parent, const LinesQuestion& question,
                                   const std::vector<std::string>& lines);

}  // namespace kavu
