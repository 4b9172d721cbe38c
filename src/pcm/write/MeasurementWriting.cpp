#include "pcm/write/MeasurementWriting.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/RecordField.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/write/MeasurementCommands.h"
#include "pcm/write/PcmSave.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <set>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

namespace {

constexpr const char* kUnableToOpen =
    "Unable to open PCM Measurement Definition File. Operation Aborted";

/// A measurement at its first place in the order of the frame.
struct FirstPlace {
    CellRef cell;
    int fwp;
    int index;
};

/// The tagged data measurements in the working file of the D group. They are numbered in
/// each list from 1 without gaps; what follows a gap does not count.
int countTaggedMeasurements(const PcmFormat& format, const std::string& path) {
    std::set<std::pair<int, int>> numbers;
    // A missing file has none.
    (void)forEachCommand(format.context().reader, path, [&numbers](const std::string& command) {
        if (equalsIgnoreCase(codeHead(viewCommand(command).field),
                             codeHead(measurement_field::kName.code))) {
            const auto indices = parseCommandIndices(command);
            numbers.emplace(indices.fields[0], indices.fields[1]);
        }
        return true;
    });
    int count = 0;
    std::pair<int, int> expected{1, 1};
    for (const auto& number : numbers) {
        if (number.first > expected.first) {
            expected = {number.first, 1};
        }
        if (number == expected) {
            ++count;
            ++expected.second;
        }
    }
    return count;
}

/// The lines of a working file, each once. Every list gets the filter commands of all lists, so
/// such a file holds them several times; without this they would multiply with each save.
std::string distinctLines(const std::string& path) {
    std::string bytes;
    if (!fileExists(path) || !readWholeFile(path, bytes).ok()) {
        return {};
    }
    std::unordered_set<std::string_view> seen;
    std::string text;
    const std::string_view all(bytes);
    for (std::size_t at = 0; at < all.size();) {
        const auto end = std::min(all.find('\n', at), all.size() - 1) + 1;
        const auto line = all.substr(at, end - at);
        if (seen.insert(line).second) {
            text += line;
        }
        at = end;
    }
    return text;
}

/// The measurements of a D file, by their list and their number in it.
using Rows = std::map<std::pair<int, int>, std::string>;

Rows rowsOf(TmatsReader& reader, const std::string& path, IoStatus& status) {
    Rows rows;
    status = forEachCommand(reader, path, [&rows](const std::string& command) {
        const auto view = viewCommand(command);
        if (equalsIgnoreCase(codeHead(view.field), codeHead(measurement_field::kName.code))) {
            const auto indices = parseCommandIndices(command);
            rows.emplace(std::pair(indices.fields[0], indices.fields[1]), view.value);
        }
        return true;
    });
    return rows;
}

/// Gives a command of a measurement the number that this has now. False if it is gone.
bool followRow(std::string& code, const Rows& former,
               const std::map<std::pair<int, std::string>, int>& now) {
    const auto path = parsePath(code);
    if (!path || path->count < 2 || startsWithIgnoreCase(path->stem, "SMF")) {
        return true;
    }
    const auto name = former.find({path->at[0], path->at[1]});
    if (name == former.end()) {
        return true;
    }
    const auto row = now.find({path->at[0], name->second});
    if (row == now.end()) {
        return false;
    }
    code = groupHead('D', path->group).append(path->stem).append("-");
    appendNumber(code, path->at[0]);
    code += '-';
    appendNumber(code, row->second);
    for (int i = 2; i < path->count; ++i) {
        code += '-';
        appendNumber(code, path->at[static_cast<std::size_t>(i)]);
    }
    return true;
}

/// Puts the group in the place of the former one, whose carried commands it gathers.
IoStatus closeGroup(DocumentContext& context, const std::string& file, DocumentWriter& writer,
                    CarriedMeasurements& carried) {
    auto status = gatherCarried(context.files, context.reader, file, carried.commands);
    if (status.ok() && !carried.commands.empty()) {
        carried.former = rowsOf(context.reader, context.files.path(file), status);
    }
    return status.ok() ? writer.close() : status;
}

IoStatus carryAlong(DocumentContext& context, const std::string& file,
                    CarriedMeasurements& carried) {
    if (carried.commands.empty()) {
        return {};
    }
    IoStatus status;
    std::map<std::pair<int, std::string>, int> now;
    for (const auto& [place, name] : rowsOf(context.reader, context.files.path(file), status)) {
        now.emplace(std::pair(place.first, name), place.second);
    }
    carried.commands.recode(
        [&](std::string& code) { return followRow(code, carried.former, now); });
    return status.ok() ? putCarriedBack(context.files, context.reader, file, carried.commands)
                       : status;
}

/// Reports a failure. True without one.
bool isWritten(UserInterface* parent, const IoStatus& status) {
    if (!status.ok()) {
        if (parent != nullptr) {
            parent->beep();
        }
        showBox(parent,
                formatPrintf("%s\n\n'%s': %s", kUnableToOpen, status.path(), status.reason()),
                std::string(loadText(title::kError).value_or("")));
    }
    return status.ok();
}

/// The D group of a bus or packet stream was never read.
bool hasGroup(const PcmFormat& format) {
    return !format.isBusStream && !isPacketStream(format);
}

/// Writes one D group to an open file.
class ListWriter {
  public:
    ListWriter(PcmFormat& format, UserInterface* parent, FileWriter& writer)
        : format_(format),
          parent_(parent),
          writer_(writer),
          prefix_(groupHead('D', format.dGroup)),
          commands_(format, parent, writer, prefix_) {}

    void write() {
        writeCommand(writer_, prefix_, measurement_field::kDataLink.code, format_.streamName);
        const auto filterLists = formatPrintf(kSmfFormat, format_.dGroup);
        if (format_.edition() >= 2011) {
            appendWorkingFile(format_, writer_, filterLists);
        }
        format_.measurementListCount = std::max(1, format_.measurementListCount);
        writeIntCommand(writer_, prefix_, measurement_field::kListCount.code,
                        format_.measurementListCount);
        gather();
        if (format_.edition() == 2009) {
            filters_ = distinctLines(format_.context().store.pathOf(filterLists));
        }
        for (int l = 1; l <= format_.measurementListCount; ++l) {
            if (l <= kMostMeasurementLists) {
                writeCommand(writer_, prefix_, fieldCode(measurement_field::kListName.code, {l}),
                             format_.measurementListNames[static_cast<std::size_t>(l) - 1]);
            }
            if (format_.edition() == 2009) {
                writer_.write(filters_);
            }
            writeList(l);
        }
        writeComment();
    }

  private:
    /// The walk is the same for each list, so it is done once.
    void gather() {
        format_.forEachMeasurement([this](CellRef cell, int fwp, int index) {
            places_.push_back({cell, fwp, index});
            return true;
        });
        if (format_.edition() >= 2011) {
            const auto name = formatPrintf(kTagFormat, format_.dGroup);
            tagged_ = countTaggedMeasurements(format_, format_.context().store.pathOf(name));
        }
    }

    void writeList(int l) {
        const auto count = static_cast<int>(places_.size());
        writeIntCommand(writer_, prefix_, fieldCode(measurement_field::kCount.code, {l}),
                        count + tagged_);
        if (tagged_ > 0) {
            appendWorkingFile(format_, writer_, formatPrintf(kTagFormat, format_.dGroup));
        }
        int m = tagged_;
        for (const auto& place : places_) {
            commands_.write(l, ++m, place.cell, place.fwp, place.index);
            if (parent_ != nullptr && format_.context().ticker.secondElapsed()) {
                const auto& name = format_.cells().measurement(place.cell).name;
                parent_->setStatusText(formatPrintf(
                    "Saving Measurements. List #%d Measurement #%d (%s)", l, m, name.view()));
                parent_->setProgressBar(m * 100.0 / count);
                parent_->yieldToInterface();
            }
        }
    }

    void writeComment() {
        std::string comment;
        const auto path = format_.context().store.pathOf(kMeasurementComment);
        if (fileExists(path) && readWholeFile(path, comment).ok() && !comment.empty()) {
            writer_.write(prefix_ + std::string(measurement_field::kComment.code) + ":" + comment +
                          ";\r\n");
        }
    }

    PcmFormat& format_;
    UserInterface* parent_;
    FileWriter& writer_;
    std::string prefix_;
    MeasurementCommands commands_;
    std::vector<FirstPlace> places_;
    int tagged_ = 0;
    std::string filters_;
};

}  // namespace

bool writeMeasurements(PcmFormat& format, UserInterface* parent) {
    CarriedMeasurements carried;
    return writeMeasurements(format, parent, carried) && carryMeasurements(format, parent, carried);
}

bool writeMeasurements(PcmFormat& format, UserInterface* parent, CarriedMeasurements& carried) {
    auto& context = format.context();
    if (!hasGroup(format)) {
        return true;
    }
    setStatusText(parent, "Saving PCM Measurement Information...");
    setProgressBar(parent, 0);
    giveMeasurementGroup(format, parent);
    const auto file = groupFile('D', format.dGroup);
    IoStatus status(context.files.path(file), ENOSPC);
    if (format.dGroup <= kMostGroupIndex) {
        auto writer = context.files.writer(file);
        if (writer.status().ok()) {
            ListWriter(format, parent, writer.out()).write();
        }
        status = closeGroup(context, file, writer, carried);
    }
    return isWritten(parent, status);
}

bool carryMeasurements(PcmFormat& format, UserInterface* parent, CarriedMeasurements& carried) {
    return !hasGroup(format) ||
           isWritten(parent, carryAlong(format.context(), groupFile('D', format.dGroup), carried));
}

}  // namespace kavu
