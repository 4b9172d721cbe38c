// The one place where the bytes of the logic become Unicode.
#pragma once

#include <string>
#include <string_view>

namespace kavu {

/// What some programs write before UTF-8; it is not part of the text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// True if the bytes are well-formed UTF-8 (no overlong forms, no surrogates).
[[nodiscard]] bool isValidUtf8(std::string_view bytes);

/// The text as UTF-8: bytes that are valid UTF-8 stay as they are, others are read as
/// Windows-1252. The five bytes without a character there become U+FFFD.
[[nodiscard]] std::string toUtf8(std::string_view bytes);

}  // namespace kavu
