// A box about many things: it names the first of them and counts the others.
#pragma once

#include "core/talk/UserInterface.h"

#include <string>
#include <vector>

namespace kavu {

/// More names than this make a box hard to read.
inline constexpr std::size_t kMostNamesShown = 10;

/// Appends the first `kMostNamesShown` lines to the text of a box. If there are more, a line
/// counts them, and the details of the box have all.
void addLines(MessageBox& box, const std::vector<std::string>& lines);

}  // namespace kavu
