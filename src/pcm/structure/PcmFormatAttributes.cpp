#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/StreamType.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr int kMostWordsClassOne = 1024;
constexpr int kMostWordsBus = 256;
constexpr int kWordLengthBus = 24;

/// The text of a number field, as the records keep it.
FixedText<3> numberText(int number) {
    return {std::to_string(number)};
}

}  // namespace

bool PcmFormat::checkWordLength(UserInterface* parent, int length) const {
    const auto& messages = context_.messages;
    if (typeFormat.empty()) {
        messages.show(parent, 218, title::kInternalError, kErrorBox);
        return false;
    }
    const int most = edition() >= 2005 ? 32 : 16;
    if (typeFormat == stream_type::kClassOne.stored && (length < 4 || length > most)) {
        messages.show(parent, 219, title::kIllegalValueEntered, kErrorBox, most);
        return false;
    }
    if (typeFormat == stream_type::kBus1553.stored && length != kWordLengthBus) {
        messages.show(parent, 220, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    return true;
}

bool PcmFormat::setCommonWordLength(UserInterface* parent, int length) {
    if (!checkWordLength(parent, length)) {
        return false;
    }
    // A variable length that equals the common one changes with it. The sync word does not: its
    // length is that of the pattern.
    for (int fwp = 1; fwp < wordsPerMinorFrame; ++fwp) {
        if (wordLength(fwp) == commonWordLength) {
            setWordLength(fwp, length);
        }
    }
    commonWordLength = length;
    recalculateBitsPerMinorFrame();
    formatEdited = true;
    changed = true;
    return true;
}

void PcmFormat::raiseNumberOfFrames(const Report& report, int frames) {
    if (frames > kMostFrames) {
        if (report) {
            report(188, title::kError, frames, kMostFrames);
        }
        frames = kMostFrames;
    }
    numberOfFrames = std::max(numberOfFrames, frames);
}

bool PcmFormat::setNumberOfFrames(UserInterface* parent, int frames) {
    if (frames < 1 || frames > kMostFrames) {
        context_.messages.show(parent, 216, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    if (frames < numberOfFrames) {
        for (auto& counter : idCounters) {
            if (!counter.name.empty() && counter.endFrame.number() > frames) {
                counter.endFrame = numberText(frames);
                counter.startFrame = numberText(std::min(counter.startFrame.number(), frames));
                updateEndValue(counter);
            }
            for (auto& subframe : counter.subframes) {
                if (!subframe.name.empty() && subframe.depth.number() > frames) {
                    subframe.depth = numberText(frames);
                }
            }
        }
        subframesChanged();
    }
    changed = changed || frames != numberOfFrames;
    const int before = numberOfFrames;
    numberOfFrames = frames;
    asyncFramesChanged(*this, before);
    for (int fwp = 0; fwp < wordsPerMinorFrame; ++fwp) {
        if (wordType(fwp) == WordType::Subframe && !allocateCells(parent, fwp)) {
            return false;
        }
    }
    formatEdited = true;
    return true;
}

bool PcmFormat::allocateWords(const Report& report, int words) {
    if (words > kMostWords) {
        if (report) {
            report(189, title::kError, kMostWords, kMostWords);
        }
        words = kMostWords;
    }
    words = std::max(words, 1);
    const int before = wordsPerMinorFrame;
    for (int fwp = words; fwp < before; ++fwp) {
        cells_.announce(fwp);
    }
    const FrameWord plain{WordType::Minor, commonWordLength, -1, -1};
    words_.resize(static_cast<std::size_t>(words) + 1, plain);
    for (int fwp = before; fwp < words; ++fwp) {
        words_[static_cast<std::size_t>(fwp)] = plain;
    }
    words_.back() = plain;
    wordsPerMinorFrame = words;
    cells_.setWordCount(words);
    for (int fwp = before; fwp < words; ++fwp) {
        cells_.resizeWord(fwp, 1);
    }
    subframeIndex_.wordsValid = false;
    return true;
}

bool PcmFormat::setWordsPerMinorFrame(UserInterface* parent, int words) {
    const auto& messages = context_.messages;
    if (words < 1) {
        messages.show(parent, 161, title::kIllegalValueEntered, kErrorBox, 0);
        return false;
    }
    if (isBusStream && (words < kLeastWordsBus || words > kMostWordsBus)) {
        messages.show(parent, 222, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    if (typeFormat == stream_type::kClassOne.stored && words > kMostWordsClassOne) {
        messages.show(parent, 223, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    // Subframes are removed before the counters that they refer to, without a question.
    for (int fwp = words; fwp < wordsPerMinorFrame; ++fwp) {
        if (wordType(fwp) == WordType::Subframe) {
            deleteSubframe(*this, nullptr, fwp, true);
        }
    }
    for (int fwp = words; fwp < wordsPerMinorFrame; ++fwp) {
        if (wordType(fwp) == WordType::IdCounter) {
            deleteIdCounter(*this, nullptr, fwp);
        }
    }
    const auto report = [&](MessageFor<int, int> id, MessageTitle titleId, int first, int second) {
        messages.show(parent, id, titleId, kErrorBox, first, second);
    };
    if (!allocateWords(report, words)) {
        return false;
    }
    changed = true;
    recalculateBitsPerMinorFrame();
    formatEdited = true;
    return true;
}

bool PcmFormat::setFrameSyncPatternByValue(UserInterface* parent, std::string_view pattern) {
    const auto digits = withoutBlanks(pattern);
    if (!digits.empty() && !(hexFsp ? isHexadecimalText(digits) : isBinaryText(digits))) {
        context_.messages.show(parent, 439, title::kIllegalValueEntered, kErrorBox);
        return false;
    }
    const int bits = digits.empty() ? 0 : countPatternBits(digits, hexFsp);
    if (bits > kMostSyncBits) {
        context_.messages.show(parent, 440, title::kIllegalValueEntered, kErrorBox, kMostSyncBits);
        return false;
    }
    // A text longer than its place consists partly of blanks; cut, it would lose digits.
    constexpr auto kWidth = decltype(syncPattern)::kWidth;
    syncPattern =
        pattern.size() <= kWidth ? std::string(pattern) : groupFromRight(digits, hexFsp ? 4 : 3);
    syncLength = bits;
    setWordLength(0, bits);
    recalculateBitsPerMinorFrame();
    formatEdited = true;
    changed = true;
    return true;
}

bool PcmFormat::setFrameSyncPatternByLength(UserInterface* parent, int length) {
    if (length > kMostSyncBits) {
        context_.messages.show(parent, 440, title::kIllegalValueEntered, kErrorBox, kMostSyncBits);
        return false;
    }
    return setFrameSyncPatternByValue(parent, recommendedPattern(length, hexFsp));
}

void PcmFormat::setHexFsp(bool hexadecimal) {
    if (hexadecimal != hexFsp) {
        syncPattern = switchPattern(syncPattern, hexadecimal);
        hexFsp = hexadecimal;
    }
    context_.settings.set(setting::kHexadecimalPattern, hexadecimal);
}

void PcmFormat::setBitRate(std::string_view rate) {
    changed = changed || bitRate.view() != rate;
    bitRate = rate;
    formatEdited = true;
}

bool PcmFormat::recalculateBitsPerMinorFrame() {
    std::int64_t sum = 0;
    for (int fwp = 0; fwp < wordsPerMinorFrame; ++fwp) {
        sum += wordLength(fwp);
    }
    const int bits = static_cast<int>(std::min<std::int64_t>(sum, INT32_MAX));
    if (bits == bitsPerMinorFrame) {
        return false;
    }
    bitsPerMinorFrame = bits;
    changed = true;
    return true;
}

std::optional<std::string> PcmFormat::classTwoAttribute() const {
    if (!(typeFormat == stream_type::kClassOne.stored)) {
        return std::nullopt;
    }
    const auto rate = leadingInteger(bitRate);
    if (edition() >= 2005 && rate > 10'000'000) {
        return "a bitrate greater than 10,000,000";
    }
    if (edition() < 2005 && rate > 5'000'000) {
        return "a bitrate greater than 5,000,000";
    }
    if (bitsPerMinorFrame > 8192) {
        return "more than 8192 bits per minor frame";
    }
    if (wordsPerMinorFrame > kMostWordsClassOne) {
        return "more than 1024 words per minor frame";
    }
    if (asyncCount() > 0) {
        return "Async Embedded Formats";
    }
    const bool fragments = cells_.any([](const Measurement& measurement) {
        return equalsIgnoreCase(measurement.locationType, location_type::kMinorFrameFragments) ||
               equalsIgnoreCase(measurement.locationType, location_type::kSubframeFragments);
    });
    if (fragments) {
        return "measurements defined as fragments";
    }
    // Before 106-05 the standard allows only 16 bits, but the limit here has always been 32
    // in every edition.
    constexpr int kMostBits = 32;
    if (commonWordLength > kMostBits) {
        return "a common word length greater than 32";
    }
    for (int fwp = 1; fwp < wordsPerMinorFrame; ++fwp) {
        if (wordLength(fwp) > kMostBits) {
            return "word lengths greater than 32";
        }
    }
    return std::nullopt;
}

}  // namespace kavu
