#include "pcm/write/PcmSave.h"

#include "bus/definition/BusFiles.h"
#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/CarriedCommands.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/model/RecordField.h"
#include "pcm/write/AsyncWriting.h"
#include "pcm/write/KeptWriting.h"
#include "pcm/write/MeasurementWriting.h"
#include "pcm/write/SubframeWriting.h"

namespace kavu {

namespace {

void writeAttributes(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    for (const auto& attribute : pcmAttributes()) {
        const auto code = attribute.field.code;
        if (code == "MF4") {
            return;  // the sync pattern and what follows
        }
        if (attribute.text != nullptr) {
            writeCommand(writer, prefix, code, attribute.text(format));
        } else {
            writeIntCommand(writer, prefix, code, format.*attribute.number);
        }
    }
}

/// The pattern is in binary and without blanks in the file, whatever its notation here.
void writeSync(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    auto pattern = withoutBlanks(format.syncPattern);
    if (format.hexFsp) {
        pattern = hexToBinary(pattern);
    }
    const auto length = static_cast<std::size_t>(std::max(0, format.syncLength));
    if (pattern.size() > length) {
        pattern.erase(0, pattern.size() - length);
    }
    if (!pattern.empty()) {
        // A switch to binary drops leading zeros, which are still bits of the pattern.
        pattern.insert(0, length - pattern.size(), '0');
        writeIntCommand(writer, prefix, "MF4", format.syncLength);
        writeCommand(writer, prefix, "MF5", pattern);
    }
    for (const auto* const code : {"SYNC1", "SYNC2", "SYNC3", "SYNC4"}) {
        writeCommand(writer, prefix, code, findPcmAttribute(code)->text(format));
    }
}

void writeWordLengths(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    const auto& position = wordLengthFields().front();
    const auto& length = wordLengthFields().back();
    int n = 0;
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        if (format.wordLength(fwp) != format.commonWordLength) {
            ++n;
            writeIntCommand(writer, prefix, fieldCode(position.code, {n}), fwp);
            writeIntCommand(writer, prefix, fieldCode(length.code, {n}), format.wordLength(fwp));
        }
    }
}

void writeComment(const PcmFormat& format, FileWriter& writer, const std::string& prefix) {
    auto comment = format.comment;
    if (format.pcmCode == "OTHER" && !format.nonStandardCode.empty()) {
        auto parts = splitCommentRecord(comment);
        setCommentRecordValue(parts.record, "D1", format.nonStandardCode);
        comment = parts.record + parts.plain;
    }
    writeCommand(writer, prefix, "COM", comment);
}

bool isDone(UserInterface* parent, const IoStatus& status) {
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace

void appendWorkingFile(const PcmFormat& format, FileWriter& writer, std::string_view name) {
    const auto path = format.context().store.pathOf(name);
    ByteSource source;
    if (!fileExists(path) || !source.open(path).ok()) {
        return;
    }
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        writer.write(window);
        source.take(window.size());
    }
}

namespace {

/// Writes the P group, and gathers what its former file carries. False if the file could not be
/// written, which is reported.
bool writePcmGroup(PcmFormat& format, UserInterface* parent, CarriedCommands& carried) {
    auto& context = format.context();
    setStatusText(parent, "Saving PCM Format Information...");
    setProgressBar(parent, 0);
    if (format.pGroup < 1) {
        format.pGroup = firstFreeIndex(context, 'P');
    }
    const auto file = groupFileName('P', format.pGroup, format.edition());
    auto group = context.files.writer(file);
    const auto opened =
        file.empty() ? IoStatus(groupFile('P', format.pGroup), ENOSPC) : group.status();
    if (!opened.ok()) {
        if (parent != nullptr) {
            parent->beep();
        }
        showBox(parent,
                "Unable to open PCM Format Definition File. Operation Aborted\n\nReason: " +
                    opened.path() + ": " + opened.reason(),
                std::string(loadText(title::kError).value_or("")));
        return false;
    }
    auto& writer = group.out();
    const auto prefix = groupHead('P', format.pGroup);
    writeAttributes(format, writer, prefix);
    setProgressBar(parent, 20);
    writeSync(format, writer, prefix);
    writeWordLengths(format, writer, prefix);
    writeIdCounters(format, writer, prefix);
    setProgressBar(parent, 50);
    if (format.edition() >= 2009) {
        appendWorkingFile(format, writer, kFrameFilterFile);
    }
    setProgressBar(parent, 80);
    writeAsyncEmbedded(format, parent, writer, prefix);
    setProgressBar(parent, 85);
    appendWorkingFile(format, writer, kFormatSwitchFile);
    setProgressBar(parent, 90);
    appendWorkingFile(format, writer, kAltTagFile);
    writeDataMerge(format, parent, writer, prefix);
    setProgressBar(parent, 95);
    writeComment(format, writer, prefix);
    auto status = gatherCarried(context.files, context.reader, file, carried);
    status = status.ok() ? group.close() : status;
    return isDone(parent, status);
}

/// Writes both groups with what is kept of their former files.
bool writeGroups(PcmFormat& format, UserInterface* parent) {
    auto& context = format.context();
    CarriedCommands carried(CarriedCommands::Follow::Values);
    CarriedMeasurements measurements;
    if (!writePcmGroup(format, parent, carried) ||
        !writeMeasurements(format, parent, measurements)) {
        return false;
    }
    const auto kept = keepBeyondModel(format, parent);
    if (!isDone(parent, kept.status) ||
        !isDone(parent, putCarriedBack(context.files, context.reader, groupFile('P', format.pGroup),
                                       carried)) ||
        !carryMeasurements(format, parent, measurements) ||
        (format.isBusStream && !storeBusGroup(context, parent, format.streamName.str()))) {
        return false;
    }
    if (kept.isDropped) {
        forgetKept(format);
    }
    return true;
}

}  // namespace

bool savePcmFormat(PcmFormat& format, UserInterface* parent) {
    if (!format.loaded() || !format.changed) {
        return true;
    }
    if (!inTransaction(format.context(), parent, OperationId::EditStream,
                       [&] { return writeGroups(format, parent); })) {
        return false;
    }
    format.changed = false;
    ++format.saveCount;
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return true;
}

}  // namespace kavu
