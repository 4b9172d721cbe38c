// What a file says of the range of a fragment, and whether a reader understands it the same way.
#pragma once

#include "pcm/model/WordFrame.h"

#include <optional>

namespace kavu {

class PcmFormat;

/// True if fragments are written with end word and end frame: from 106-09 on.
[[nodiscard]] bool writesFragmentEnds(const PcmFormat& format);
/// Sets the ends of a fragment as they are read where none are written: a range with an
/// interval extends to the last word or frame, one without is only its start.
void takeUnwrittenEnds(const PcmFormat& format, WordFrameFragment& fragment);

/// A fragment as it is written: no end is beyond the frame, and where no ends are written they are
/// those that a reader takes. Nothing for a fragment that begins beyond the frame.
[[nodiscard]] std::optional<WordFrameFragment> writtenFragment(const PcmFormat& format,
                                                               const WordFrameFragment& fragment);

/// A definition of such fragments. A location that is beyond the frame as a whole is left out.
[[nodiscard]] WordFrameDefinition writtenDefinition(const PcmFormat& format,
                                                    const WordFrameDefinition& definition);

/// True if a reader gets the same places from a range. The word of an ID counter is never in one.
/// Where no ends are written, a reader takes the last word, or the last frame: a range that ends
/// before it would come back as more places than it was.
[[nodiscard]] bool comesBack(const PcmFormat& format, const WordFrameFragment& fragment);

}  // namespace kavu
