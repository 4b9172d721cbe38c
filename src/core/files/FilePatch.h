// Bytes of a file that are written where they are, for formats in which a value has its place.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

/// Writes bytes from `offset` on into a file that exists; the file grows if they go beyond its
/// end. If that fails, what was there is put back as far as the system lets it.
[[nodiscard]] IoStatus overwriteBytes(const std::string& path, std::uint64_t offset,
                                      std::string_view bytes);

}  // namespace kavu
