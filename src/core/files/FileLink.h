// A second name for the bytes of a file.
#pragma once

#include "core/files/IoStatus.h"

#include <string>

namespace kavu {

/// Makes a second name for a file, or a copy where the disk has no links; whole or not at all.
[[nodiscard]] IoStatus linkOrCopyFile(const std::string& from, const std::string& to);

}  // namespace kavu
