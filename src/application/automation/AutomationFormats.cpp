#include "application/automation/AutomationFormats.h"

#include "application/Application.h"
#include "application/automation/AutomationSaving.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "vocabulary/StreamType.h"

#include <limits>

namespace kavu {

namespace {

constexpr std::size_t kBitRateBytes = decltype(PcmAttributes::bitRate)::kWidth;
/// A word length has two digits.
constexpr int kMostWordLength = 99;
constexpr int kTooManyWords = 189;

std::vector<std::string> pcmStreams(AutomationSession& session) {
    session.requireDocument();
    std::vector<std::string> streams;
    auto talk = session.talkFor(0);
    if (!gatherPcmStreams(session.context(), &talk, streams)) {
        throw talk.failure(AutomationFault::FileError, "The data links could not be read.");
    }
    return streams;
}

/// The name as the file has it.
std::string requireStream(AutomationSession& session, std::int32_t stream) {
    const auto streams = pcmStreams(session);
    requireRange(stream, 1, static_cast<std::int64_t>(streams.size()), "number of the stream");
    return streams[static_cast<std::size_t>(stream) - 1];
}

}  // namespace

std::int32_t AutomationFormats::CountPCMStreams() {
    return static_cast<std::int32_t>(pcmStreams(session_).size());
}

std::string AutomationFormats::GetPCMStreamName(std::int32_t stream) {
    return shownText(requireStream(session_, stream));
}

void AutomationFormats::LoadPCMFormat(std::int64_t hWnd, std::int32_t stream) {
    const auto name = requireStream(session_, stream);
    auto& format = session_.application().pcmFormat();
    if (format.loaded() && format.streamName == FixedText<32>(name)) {
        return;
    }
    settleChanges(session_, hWnd, Leaving::Format);
    session_.leaveStream();
    auto talk = session_.talkFor(hWnd);
    auto steps = session_.application().pcmSteps();
    steps.makesNewFormats = true;
    if (talk.isSilent()) {
        // It would open a dialog; the choice of two is a question like any other.
        steps.chooseDefinitionMode = {};
    }
    if (!loadPcmFormat(format, &talk, steps, name)) {
        throw talk.failure(AutomationFault::Refused, "The PCM format could not be loaded.");
    }
    session_.tellFormatState();
}

void AutomationFormats::SavePCMFormat(std::int64_t hWnd) {
    (void)session_.requireFormat();
    saveFormat(session_, hWnd);
}

bool AutomationFormats::IsPCMFormatChanged() {
    return session_.requireFormat().changed;
}

void AutomationFormats::ShowPCMFormatDialog(std::int64_t hWnd) {
    session_.editInWindow("PCM Attributes",
                          [&](AutomationWindows& windows) { return windows.editFormat(hWnd); });
}

void AutomationFormats::ShowPCMDisplay(std::int64_t hWnd) {
    session_.editInWindow("Major Frame",
                          [&](AutomationWindows& windows) { return windows.showDisplay(hWnd); });
}

std::int32_t AutomationFormats::GetBitRate() {
    return numberOfText(session_.requireFormat().bitRate, "bit rate");
}

void AutomationFormats::SetBitRate(std::int32_t bitRate) {
    session_.edit(0, "Bit Rate", [&](AutomationTalk&) {
        session_.requireFormat().setBitRate(std::to_string(bitRate).substr(0, kBitRateBytes));
        return true;
    });
}

std::int32_t AutomationFormats::GetCommonWordLength() {
    return session_.requireFormat().commonWordLength;
}

void AutomationFormats::SetCommonWordLength(std::int64_t hWnd, std::int32_t length) {
    auto& format = session_.requireFormat();
    const bool hasRule = format.typeFormat.empty() ||
                         format.typeFormat == stream_type::kClassOne.stored ||
                         format.typeFormat == stream_type::kBus1553.stored;
    if (!hasRule) {
        requireRange(length, 1, kMostWordLength, "common word length");
    }
    session_.edit(hWnd, "Common Word Length",
                  [&](AutomationTalk& talk) { return format.setCommonWordLength(&talk, length); });
}

std::string AutomationFormats::GetFrameSyncPattern() {
    return shownText(session_.requireFormat().syncPattern);
}

void AutomationFormats::SetFrameSyncPatternByLength(std::int64_t hWnd, std::int32_t newLength) {
    auto& format = session_.requireFormat();
    requireRange(newLength, 0, std::numeric_limits<std::int32_t>::max(), "length of the pattern");
    session_.edit(hWnd, "Frame Sync Pattern", [&](AutomationTalk& talk) {
        return format.setFrameSyncPatternByLength(&talk, newLength);
    });
}

void AutomationFormats::SetFrameSyncPatternByValue(std::int64_t hWnd, const std::string& newFsp) {
    auto& format = session_.requireFormat();
    session_.edit(hWnd, "Frame Sync Pattern", [&](AutomationTalk& talk) {
        if (trim(newFsp).empty()) {
            // No pattern is a length of 0, and not a text that was forgotten.
            session_.context().messages.show(&talk, 439, title::kIllegalValueEntered, kErrorBox);
            return false;
        }
        return format.setFrameSyncPatternByValue(&talk, newFsp);
    });
}

std::int32_t AutomationFormats::GetNumberOfFrames() {
    return session_.requireFormat().numberOfFrames;
}

void AutomationFormats::SetNumberOfFrames(std::int64_t hWnd, std::int32_t frames) {
    auto& format = session_.requireFormat();
    session_.edit(hWnd, "Number Of Minor Frames",
                  [&](AutomationTalk& talk) { return format.setNumberOfFrames(&talk, frames); });
}

std::string AutomationFormats::GetPCMComment() {
    return shownText(session_.requireFormat().comment);
}

void AutomationFormats::SetPCMComment(const std::string& comment) {
    auto& format = session_.requireFormat();
    const auto text = storedText(comment, format.comment);
    if (text != format.comment) {
        requireText(text, 0, true, "comment");
    }
    session_.edit(0, "Comment", [&](AutomationTalk&) {
        format.comment = text;
        return true;
    });
}

std::int32_t AutomationFormats::GetWordsPerMinorFrame() {
    return session_.requireFormat().wordsPerMinorFrame;
}

void AutomationFormats::SetWordsPerMinorFrame(std::int64_t hWnd, std::int32_t words) {
    auto& format = session_.requireFormat();
    std::string tooMany;
    session_.edit(hWnd, "Words Per Minor Frame", [&](AutomationTalk& talk) {
        const bool isDone = format.setWordsPerMinorFrame(&talk, words);
        if (isDone && talk.lastMessage() == kTooManyWords) {
            tooMany = talk.lastText();
        }
        return isDone;
    });
    if (!tooMany.empty()) {
        // The words that there can be stand.
        throw AutomationError::refused(kTooManyWords, tooMany);
    }
}

}  // namespace kavu
