// The S group of a data link, whatever it is in this edition: for passes that treat all streams
// alike.
#pragma once

#include <string_view>

namespace kavu {

struct DocumentContext;
class UserInterface;

enum class StreamData { None, Messages, Packets };
/// What the S group of a link holds that is part of its stream: message data from 106-09 on;
/// packets before, if the stream is a packet stream or has no format of its own. None for a link
/// without an S group.
[[nodiscard]] StreamData streamDataOf(DocumentContext& context, UserInterface* parent,
                                      std::string_view link);

/// Reads the S group of a link and does nothing with it: 0 clean, 1 with values over their limits,
/// -1 if it could not be read, which is reported. REQUIRES: it has one (`streamDataOf`).
[[nodiscard]] int checkStreamData(DocumentContext& context, UserInterface* parent,
                                  std::string_view link);
/// Writes the S group of a link again from what was read of it. The result is that of the read, and
/// -1 if it could not be written, which is reported. REQUIRES: as above.
[[nodiscard]] int rewriteStreamData(DocumentContext& context, UserInterface* parent,
                                    std::string_view link);

}  // namespace kavu
