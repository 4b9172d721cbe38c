// What a file has besides its bytes: owner, mode and extended attributes.
#pragma once

#include <string>

struct stat;

namespace kavu {

/// Gives a new file the owner, mode and extended attributes (POSIX access lists are among them)
/// of the one at `from`, of which `info` was read. False if not all of them can be given.
[[nodiscard]] bool copyAttributes(const std::string& from, const struct stat& info,
                                  const std::string& to);

}  // namespace kavu
