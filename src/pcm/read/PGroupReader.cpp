// Reading the P group. The order of the look-ups is the order of the messages.
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/talk/ProfileSettings.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/read/AsyncReading.h"
#include "pcm/read/KeptReading.h"
#include "pcm/read/PGroupSideFiles.h"
#include "pcm/read/PcmCounts.h"
#include "pcm/read/SubframeReading.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "vocabulary/StreamType.h"

#include <initializer_list>

namespace kavu {

namespace {

/// Corrects a field of a bus stream that may only have one value, or none.
template <std::size_t Width>
void fixBusField(PcmLoad& load, FixedText<Width>& field, std::string_view only,
                 MessageFor<> message) {
    if (load.format.isBusStream && !field.empty() && !(field == only)) {
        load.log(message, title::kIllegalValueFound);
        field = only;
        load.corrected();
    }
}

void fixBusNumber(PcmLoad& load, int& number, int only, MessageFor<> message) {
    if (load.format.isBusStream && number != only) {
        load.log(message, title::kIllegalValueFound);
        number = only;
        load.corrected();
    }
}

std::optional<int> limited(PcmLoad& load, const Field& field) {
    return load.limitedNumber(field.code, static_cast<int>(field.limit));
}

void readTexts(PcmLoad& load, std::initializer_list<std::string_view> codes) {
    for (const auto code : codes) {
        const auto& attribute = *findPcmAttribute(code);
        const auto text = load.text(code, static_cast<int>(attribute.field.limit));
        attribute.setText(load.format, text.value_or(std::string_view()));
    }
}

void readInputData(PcmLoad& load) {
    auto& format = load.format;
    readTexts(load, {"D1", "D2", "D3", "D4", "D5", "D6", "D7", "D8", "TF"});
    format.isBusStream = format.typeFormat == stream_type::kBus1553.stored;
    if (format.typeFormat.empty()) {
        load.log(165, title::kErrorReadingFormat);
        format.typeFormat = stream_type::kClassOne.stored;
        load.corrected();
    }
    format.commonWordLength = limited(load, p::kF1).value_or(0);
    readTexts(load, {"F2", "F3", "F4"});
    fixBusField(load, format.wordTransferOrder, p::bus::kWordOrder, 166);
    fixBusField(load, format.parity, p::bus::kParity, 167);
    fixBusField(load, format.parityTransferOrder, p::bus::kParityOrder, 168);
}

/// The number of frames and the words, all of the common length. False without words.
bool readFrameSize(PcmLoad& load) {
    auto& format = load.format;
    const PcmFormat::Report report = [&load](MessageFor<int, int> id, MessageTitle titleId,
                                             int first, int second) {
        load.log(id, titleId, first, second);
        load.corrected();
    };
    int frames = limited(load, p::kMfN).value_or(1);
    fixBusNumber(load, frames, p::bus::kFrames, 169);
    if (frames < 1) {
        frames = 1;
        load.corrected();
    }
    format.raiseNumberOfFrames(report, frames);
    const int words = limited(load, p::kMf1).value_or(1);
    if (words < 1) {
        load.corrected();
    }
    if (!format.allocateWords(report, words)) {
        return false;
    }
    load.progress(20);
    return true;
}

/// A pattern as it is held: in groups, in the notation of the setting.
std::string shownPattern(const PcmFormat& format, const std::string& digits) {
    return format.hexFsp ? groupFromRight(binaryToHex(digits), 4) : groupFromRight(digits, 3);
}

std::string readPattern(PcmLoad& load) {
    const auto value = load.text(p::kMf5.code, kMostSyncBits);
    const auto digits = withoutBlanks(value.value_or(std::string_view()));
    if (digits.empty()) {
        return {};
    }
    if (!isBinaryText(digits)) {
        load.log(206, title::kIllegalValueFound, load.prefix, *value);
        load.corrected();
        return {};
    }
    return shownPattern(load.format, digits);
}

void readSync(PcmLoad& load) {
    constexpr int kMostDigits = 32;  // more than any length has
    auto& format = load.format;
    format.bitsPerMinorFrame = limited(load, p::kMf2).value_or(0);
    readTexts(load, {"MF3"});
    fixBusField(load, format.syncType, p::bus::kSyncType, 170);
    const auto stated = trimBlanks(load.text(p::kMf4.code, kMostDigits).value_or(""));
    int length = std::max(0, leadingInt(stated));
    // Without a pattern no length is written: a text that is none would go without a word.
    const bool isUnreadable = !std::all_of(stated.begin(), stated.end(), isDigit);
    fixBusNumber(load, length, p::bus::kWordLength, 171);
    auto pattern = readPattern(load);
    if (format.isBusStream) {
        const auto only = shownPattern(format, std::string(p::bus::kSyncPattern));
        if (pattern != only) {
            load.log(172, title::kIllegalValueFound);
            pattern = only;
            length = p::bus::kWordLength;
            load.corrected();
        }
    } else {
        const int bits = pattern.empty() ? 0 : countPatternBits(pattern, format.hexFsp);
        if (bits != length || (bits == 0 && isUnreadable)) {
            load.log(198, title::kIllegalValueFound, length, bits);
            length = bits;
            load.corrected();
        }
    }
    format.syncPattern = pattern;
    format.syncLength = length;
    format.setWordLength(0, length);
    format.setWord(0, WordType::Sync, -1, -1);
    readTexts(load, {"SYNC1", "SYNC2", "SYNC3", "SYNC4"});
}

/// Words whose length is not the common one.
void readWordLengths(PcmLoad& load) {
    auto& format = load.format;
    const auto& position = wordLengthFields().front();
    for (int n = 1;; ++n) {
        const auto from = load.readSoFar();
        const auto fwp = load.number(fieldCode(position.code, {n}));
        if (!fwp) {
            return;
        }
        const auto lengthCode = fieldCode(wordLengthFields().back().code, {n});
        const auto length = load.number(lengthCode);
        if (!length) {
            load.log(175, title::kErrorReading, *fwp, lengthCode);
            load.corrected();
        }
        if (!format.isDataWord(*fwp)) {
            load.log(173, title::kErrorReadingFormat, *fwp, format.wordsPerMinorFrame,
                     format.wordsPerMinorFrame - 1);
            load.leaveOut(from);
        } else if (length && *length < 1) {
            load.log(174, title::kErrorReadingFormat, *fwp);
            load.corrected();
            load.leaveOut(from);
        } else if (length) {
            format.setWordLength(*fwp, *length);
        }
    }
}

void checkBits(PcmLoad& load) {
    auto& format = load.format;
    const int told = format.bitsPerMinorFrame;
    if (format.recalculateBitsPerMinorFrame()) {
        load.log(176, title::kErrorReadingFormat, told, format.bitsPerMinorFrame);
        load.corrected();
    }
}

bool hasSubframeCounts(PcmLoad& load) {
    const int counters =
        std::min(load.number(counter_field::kCount.field.code).value_or(0), kMostIdCounters);
    for (int n = 1; n <= counters; ++n) {
        if (load.number(fieldCode(subframe_field::kCount.field.code, {n})).value_or(0) > 0) {
            return true;
        }
    }
    return false;
}

/// Counters, subframes, async formats, and what is kept as text. False on a cancel.
bool readParts(PcmLoad& load) {
    if (!readIdCounters(load) || load.cancelled()) {
        return false;
    }
    // Later editions have no subframes in the file: their counts are no part of the model.
    load.countsSubframes = load.edition() < kHiddenSubframesEdition && hasSubframeCounts(load);
    load.progress(80);
    if (load.edition() >= 2009) {
        load.status("Initializing Minor Frame Filtering Commands");
        keepFrameFilter(load);
    }
    load.status("Initializing Asynchronous Embedded PCM Formats");
    if (!readAsyncEmbedded(load) || load.cancelled()) {
        return false;
    }
    load.progress(85);
    keepFormatSwitch(load);
    keepAltTag(load);
    load.progress(90);
    load.status("Initializing Asynchronous Data Merge Formats");
    return readDataMerge(load) && !load.cancelled();
}

void readComment(PcmLoad& load) {
    auto& format = load.format;
    format.comment = load.text("COM", 0).value_or(std::string_view());
    fromStoredForm(format.comment);
    if (!(format.pcmCode == "OTHER")) {
        return;
    }
    auto parts = splitCommentRecord(format.comment);
    format.nonStandardCode = commentRecordValue(parts.record, "D1").value_or(std::string());
    if (!parts.record.empty()) {
        setCommentRecordValue(parts.record, "D1", {});
    }
    format.comment = parts.record + parts.plain;
}

int readCommands(PcmLoad& load) {
    auto& format = load.format;
    readInputData(load);
    if (!readFrameSize(load) || load.cancelled()) {
        return -1;
    }
    readSync(load);
    readWordLengths(load);
    checkBits(load);
    if (load.cancelled() || (!format.isBusStream && !readParts(load))) {
        return -1;
    }
    readComment(load);
    return load.result;
}

}  // namespace

int readPcmGroup(PcmLoad& load) {
    auto& format = load.format;
    auto& context = format.context();
    load.progress(10);
    if (format.pGroup > 0) {
        CommandIndex fields;
        const auto status =
            fields.readFile(context.reader, context.store.pathOf(groupFile('P', format.pGroup)));
        if (status.ok()) {
            load.fields = &fields;
            load.prefix = groupHead('P', format.pGroup);
            if (const auto name = fields.peek(load.prefix + std::string(p::kDln.code))) {
                fields.markRead(name->place);  // the stream was found by it
            }
            const int result = readCommands(load);
            if (result >= 0 && !format.isBusStream) {
                checkPcmCounts(load);
            }
            if (result >= 0) {
                gatherKeptOfFormat(load);
            }
            load.fields = nullptr;
            return result;
        }
        if (!isMissing(status)) {
            // An existing stream must not be taken for a new one.
            reportUnableToRead(load.parent, status);
            return -1;
        }
    }
    showBox(load.parent, "PCM format definition not found. Creating new PCM format definition.",
            std::string(loadText(title::kNote).value_or("")), Icon::Information);
    return makeNewFormat(load) ? 0 : -1;
}

bool makeNewFormat(PcmLoad& load) {
    auto& format = load.format;
    load.isNew = true;
    const auto& settings = format.context().settings;
    const auto setting = [&settings](std::string_view code) {
        const auto& attribute = *findPcmAttribute(code);
        return settings.text(attribute.setting, attribute.fallback);
    };
    for (const auto& attribute : pcmAttributes()) {
        if (attribute.setText != nullptr && !attribute.setting.empty()) {
            attribute.setText(format, setting(attribute.field.code));
        }
    }
    format.syncPattern.clear();  // it can hold more than a valid text
    format.isBusStream = format.typeFormat == stream_type::kBus1553.stored;
    format.commonWordLength = leadingInt(setting("F1"));
    const PcmFormat::Report report = [&load](MessageFor<int, int> id, MessageTitle titleId,
                                             int first,
                                             int second) { load.log(id, titleId, first, second); };
    format.raiseNumberOfFrames(report, std::max(1, leadingInt(setting("MF\\N"))));
    if (!format.allocateWords(report, leadingInt(setting("MF1")))) {
        return false;
    }
    format.setWord(0, WordType::Sync, -1, -1);
    const auto pattern = setting("MF5");
    format.setFrameSyncPatternByValue(load.parent,
                                      format.hexFsp ? switchPattern(pattern, true) : pattern);
    return true;
}

}  // namespace kavu
