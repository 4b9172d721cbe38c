// The comment of the measurement section. It is held in a working file, not in memory.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class PcmFormat;
class UserInterface;

/// A comment of more bytes than this is neither shown nor kept.
inline constexpr std::size_t kMostComment = 16 * 1024 * 1024;

/// The comment with real line breaks; empty if there is none. Nothing with message 324 (it is
/// too long) or 325 (the file cannot be read).
[[nodiscard]] std::optional<std::string> readMeasurementComment(const PcmFormat& format,
                                                                UserInterface* parent);
/// Replaces the comment by one with real line breaks; the format then counts as changed.
/// False with message 332 (it is too long), 333 (the file cannot be written) or 402 (a
/// semi-colon would end it); the old one stays.
bool storeMeasurementComment(PcmFormat& format, UserInterface* parent, std::string_view comment);

}  // namespace kavu
