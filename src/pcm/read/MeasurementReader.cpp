// Reading the D group: the measurement lists, and each measurement by its location type.
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "groups/GroupScan.h"
#include "pcm/read/KeptReading.h"
#include "pcm/read/MeasurementInput.h"
#include "pcm/read/TaggedData.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

class MeasurementReader {
  public:
    MeasurementReader(PcmLoad& load, int group)
        : load_(load), format_(load.format), group_(group), chunks_(load, group), kept_(load) {}

    int read();

  private:
    int readCount();
    void keepComment();
    void readList(int list);
    void readRow(MeasurementInput& input);
    void readMeasurement(MeasurementInput& input);
    bool readType(MeasurementInput& input);
    void place(MeasurementInput& input);
    void keepTaggedData(MeasurementInput& input);
    void closeTags();
    void decideSubframes();
    /// A field of the group or of a list.
    std::optional<std::string_view> listText(const Field& field,
                                             std::initializer_list<int> numbers = {});
    std::optional<int> listNumber(const Field& field, std::initializer_list<int> numbers = {});

    PcmLoad& load_;
    PcmFormat& format_;
    int group_;
    DataChunks chunks_;
    KeptMeasurements kept_;
    std::optional<DocumentWriter> tags_;  ///< while the file is being written
    int tagNumber_ = 0;                   ///< of the list being read
};

std::optional<std::string_view> MeasurementReader::listText(const Field& field,
                                                            std::initializer_list<int> numbers) {
    auto& lists = chunks_.lists();
    const auto found = lists.find(load_.prefix + fieldCode(field.code, numbers));
    if (!found) {
        return std::nullopt;
    }
    lists.markRead(found->place);
    return format_.context().reader.applyLimit(load_.parent, found->code, found->value,
                                               static_cast<int>(field.limit));
}

std::optional<int> MeasurementReader::listNumber(const Field& field,
                                                 std::initializer_list<int> numbers) {
    const auto value = listText(field, numbers);
    return value ? std::optional(std::max(0, leadingInt(*value))) : std::nullopt;
}

/// The number of lists that the file states.
int MeasurementReader::readCount() {
    const auto told = listNumber(measurement_field::kListCount);
    int count = told.value_or(1);
    if (!told) {
        load_.log(238, title::kWarning);
        load_.corrected();
    } else if (count < 1) {
        load_.log(237, title::kIllegalNumberOfLists, load_.prefix, count);
        load_.corrected();
        count = 1;
    }
    format_.measurementListCount = count;
    if (count > kMostMeasurementLists) {
        // Further lists have no name, but those in the file are read.
        format_.measurementListCount = kMostMeasurementLists;
        load_.corrected();
    }
    return count;
}

void MeasurementReader::keepComment() {
    auto& files = format_.context().files;
    const auto comment = listText(measurement_field::kComment);
    if (!comment && !fileExists(files.path(kMeasurementComment))) {
        return;
    }
    if (!files.put(kMeasurementComment, comment.value_or(std::string_view())).ok()) {
        load_.log(265, title::kErrorReading);
    }
}

void MeasurementReader::decideSubframes() {
    if (load_.edition() >= 2011) {
        format_.implicitSubframes = true;
    } else if (load_.edition() >= 2004) {
        format_.implicitSubframes =
            !load_.countsSubframes && chunks_.hasWordFrame() && !chunks_.hasOtherTypes();
    }
}

/// The location type; the user is asked for a missing one.
bool MeasurementReader::readType(MeasurementInput& input) {
    if (const auto type = input.text(measurement_field::kLocationType)) {
        input.cell.locationType = *type;
        return true;
    }
    const bool wordFrame = load_.edition() >= 2011;
    if (!load_.ask(241, title::kErrorReadingMeasurement, load_.prefix,
                   input.code(measurement_field::kLocationType), input.name(),
                   wordFrame ? "Word/Frame" : "Minor Word")) {
        load_.abort = true;
        return false;
    }
    input.cell.locationType = wordFrame ? location_type::kWordFrame : location_type::kMinorFrame;
    load_.corrected();
    return true;
}

void MeasurementReader::place(MeasurementInput& input) {
    struct Branch {
        std::string_view type;
        void (*read)(MeasurementInput&);
    };
    static constexpr std::array<Branch, 6> kOlderTypes = {{
        {location_type::kMinorFrame, readMinorWord},
        {location_type::kSubframe, readSubframeWord},
        {location_type::kMinorFrameSupercommutated, readMinorFrameSupercom},
        {location_type::kSubframeSupercommutated, readSubframeSupercom},
        {location_type::kMinorFrameFragments, readMinorFrameFragments},
        {location_type::kSubframeFragments, readSubframeFragments},
    }};
    const auto type = input.cell.locationType;
    // From here on a type has the spelling of the standard, by which it is compared and written.
    if (equalsIgnoreCase(type, location_type::kWordFrame)) {
        if (load_.edition() >= 2004) {
            input.cell.locationType = location_type::kWordFrame;
            readWordFrame(input);
        } else {
            load_.log(283, title::kErrorReadingMeasurement, load_.prefix,
                      input.code(measurement_field::kLocationType), type.view(), input.name(),
                      editionNumber(load_.edition()));
        }
        return;
    }
    if (load_.edition() >= 2011) {
        if (equalsIgnoreCase(type, kTaggedType)) {
            keepTaggedData(input);
            return;
        }
    } else {
        for (const auto& branch : kOlderTypes) {
            if (equalsIgnoreCase(type, branch.type)) {
                input.cell.locationType = branch.type;
                branch.read(input);
                return;
            }
        }
    }
    load_.log(264, title::kErrorReadingMeasurement, input.name(), load_.prefix,
              input.code(measurement_field::kLocationType), type.view());
}

void MeasurementReader::readMeasurement(MeasurementInput& input) {
    const auto name = input.text(measurement_field::kName);
    if (!name) {
        load_.log(278, title::kErrorReadingMeasurement, load_.prefix,
                  input.code(measurement_field::kName));
        return;
    }
    input.cell.name = *name;
    if (format_.hasMeasurement(input.name())) {
        load_.log(281, title::kErrorReadingMeasurement, load_.prefix,
                  input.code(measurement_field::kName), input.name());
        load_.corrected();
        kept_.noteSecond(input.list(), input.row(), input.name());
        input.cell.name.clear();
        return;
    }
    input.cell.parity = input.textOrMissing(measurement_field::kParity);
    input.cell.parityTransferOrder = input.textOrMissing(measurement_field::kParityOrder);
    input.cell.transferOrder = input.textOrMissing(measurement_field::kTransferOrder);
    if (load_.edition() == 2009) {
        input.cell.filterOverwrite = input.textOrMissing(measurement_field::kFilterOverwrite);
    }
    if (readType(input)) {
        place(input);
    }
}

/// Reads a measurement, and notes whether it is in the model.
void MeasurementReader::readRow(MeasurementInput& input) {
    const int taggedBefore = tagNumber_;
    readMeasurement(input);
    if (tagNumber_ > taggedBefore) {
        kept_.noteTagged(input.list(), input.row());
    } else if (!input.name().empty() && format_.hasMeasurement(input.name())) {
        kept_.notePlaced(input.list(), input.row(), input.name());
    } else {
        input.leaveOut();
    }
}

/// Tagged data has no place in the frame: its commands go to a working file, renumbered.
void MeasurementReader::keepTaggedData(MeasurementInput& input) {
    if (!tags_) {
        return;
    }
    ++tagNumber_;
    const int list = std::min(input.list(), kMostMeasurementLists);
    const auto write = [&](const Field& field, std::string_view value) {
        writeCommand(tags_->out(), load_.prefix, fieldCode(field.code, {list, tagNumber_}), value);
    };
    const auto& cell = input.cell;
    write(measurement_field::kName, cell.name);
    write(measurement_field::kParity, cell.parity);
    write(measurement_field::kParityOrder, cell.parityTransferOrder);
    write(measurement_field::kTransferOrder, cell.transferOrder);
    write(measurement_field::kLocationType, kTaggedType);
    const int count = input.number(tagged_field::kCount).value_or(0);
    write(tagged_field::kCount, std::to_string(count));
    write(tagged_field::kWordLength,
          input.wholeText(tagged_field::kWordLength).value_or(std::string_view()));
    int missing = 0;
    for (int f = 1; f <= count && missing < MeasurementInput::kMostMissing; ++f) {
        ++missing;
        for (auto field : taggedTagFields()) {
            const auto pattern = tagPattern(field);
            field.code = pattern;
            if (const auto value = input.wholeText(field, {f})) {
                missing = 0;
                writeCommand(tags_->out(), load_.prefix,
                             fieldCode(field.code, {list, tagNumber_, f}), *value);
            }
        }
    }
}

void MeasurementReader::readList(int list) {
    const auto name = listText(measurement_field::kListName, {list});
    if (!name) {
        load_.log(239, title::kErrorReadingMeasurement, list, list);
        load_.corrected();
    }
    if (list <= kMostMeasurementLists) {
        format_.measurementListNames[static_cast<std::size_t>(list) - 1] =
            name ? std::string(*name) : formatPrintf("Measurement List #%d", list);
    }
    const auto told = listNumber(measurement_field::kCount, {list});
    if (!told) {
        load_.log(240, title::kWarning);
        return;
    }
    const int count = std::min(*told, kMostMeasurements);
    kept_.noteCount(list, count);
    for (int m = chunks_.nextPresent(1); m <= count; ++m) {
        if (load_.cancelled()) {
            return;
        }
        auto* const chunk = chunks_.chunkOf(m);
        if (chunk == nullptr) {
            m = chunks_.nextPresent(m) - 1;
            continue;
        }
        load_.status("Initializing PCM Measurements. List: #%d Measurement: #%d", list, m);
        if (m % DataChunks::kMeasurementsInChunk == 0) {
            load_.progress(100.0 * m / count);
        }
        MeasurementInput input(load_, *chunk, list, m);
        readRow(input);
        if (load_.abort) {
            return;
        }
    }
}

void MeasurementReader::closeTags() {
    if (!tags_) {
        return;
    }
    if (const auto status = tags_->close(); !status.ok()) {
        reportUnableToWrite(load_.parent, status);
        load_.abort = true;
    }
}

int MeasurementReader::read() {
    load_.status("Initializing PCM Measurement Information...");
    if (!chunks_.split()) {
        return -1;
    }
    decideSubframes();
    if (auto& group = chunks_.lists();
        const auto name =
            group.peek(load_.prefix + std::string(measurement_field::kDataLink.code))) {
        group.markRead(name->place);  // the stream was found by it
    }
    const int lists = readCount();
    keepComment();
    if (load_.edition() >= 2011) {
        // All lists share one file.
        tags_.emplace(format_.context().files.writer(formatPrintf(kTagFormat, group_)));
        if (!tags_->status().ok()) {
            reportUnableToWrite(load_.parent, tags_->status());
            tags_.reset();
        }
    }
    for (int list = 1; list <= std::min(lists, kMostMeasurementLists) && !load_.cancelled();
         ++list) {
        tagNumber_ = 0;
        readList(list);
    }
    for (const int list : chunks_.countedLists()) {
        if (list > kMostMeasurementLists && list <= lists && !load_.cancelled()) {
            readList(list);
        }
    }
    closeTags();
    chunks_.reportCounts();
    setStatusText(load_.parent, {});
    load_.progress(100);
    if (load_.abort) {
        format_.context().messages.show(load_.parent, 266, title::kUnableToInitializeMeasurements,
                                        kErrorBox);
        return -1;
    }
    kept_.gather(chunks_);
    format_.sortCells();
    return load_.result;
}

}  // namespace

int readMeasurements(PcmLoad& load) {
    auto& format = load.format;
    format.dGroup = findStreamGroup(format, load.parent, 'D', format.streamName);
    if (format.dGroup < 1) {
        format.context().messages.show(load.parent, 145, title::kNote, kNoteBox,
                                       "Measurement Description Group (D)");
        format.implicitSubframes = load.edition() >= 2011;
        return load.result;
    }
    load.prefix = groupHead('D', format.dGroup);
    return MeasurementReader(load, format.dGroup).read();
}

}  // namespace kavu
