// All of a stream that an edit of the frame can change, as it is in memory.
#pragma once

#include "pcm/model/FrameEditLists.h"

#include <vector>

namespace kavu::test {

struct Picture {
    std::vector<WordContents> words;
    std::vector<IdCounter> counters;
    std::vector<AsyncFormat> asyncFormats;
    std::vector<WordFrameDefinition> definitions;
    int bits = 0;
    bool changed = false;
    bool operator==(const Picture&) const = default;
};

inline Picture pictureOf(const PcmFormat& format) {
    Picture picture{{},
                    format.idCounters,
                    format.asyncFormats,
                    format.wordFrameDefinitions,
                    format.bitsPerMinorFrame,
                    format.changed};
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        picture.words.push_back(takeWord(format, fwp));
    }
    return picture;
}

}  // namespace kavu::test
