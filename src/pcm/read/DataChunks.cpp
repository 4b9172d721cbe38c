#include "pcm/read/DataChunks.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/RecordField.h"
#include "pcm/read/PcmCounts.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>

namespace kavu {

namespace {

/// Commands that wait in memory for their files.
constexpr std::size_t kMostWaiting = std::size_t{16} << 20U;
/// Commands of chunks that are kept in memory after they have been read.
constexpr std::size_t kMostRead = std::size_t{64} << 20U;
/// Bytes between two updates of the progress and checks for a cancel.
constexpr std::uint64_t kStep = 1U << 16U;

}  // namespace

DataChunks::DataChunks(PcmLoad& load, int group)
    : load_(load), group_(group), counts_(measurementCountRules(), load.edition()) {}

DataChunks::~DataChunks() {
    for (const auto& [number, text] : waiting_) {
        if (fileExists(pathOf(number))) {
            (void)deleteFile(pathOf(number));
        }
    }
}

std::string DataChunks::pathOf(int chunk) const {
    return load_.format.context().store.path(kDataChunkFormat, chunk, group_);
}

void DataChunks::add(std::string_view command) {
    // Not only known fields go with the list: its file is copied as it is.
    if (load_.edition() >= 2009 && startsWithIgnoreCase(afterHead(command), "SMF\\")) {
        smf_.append(command).append("\r\n");
        const auto smf = viewCommand(command);
        counts_.addBeyondOne(codeHead(smf.field), parseCommandIndices(command), smf.value);
        return;
    }
    const auto indices = parseCommandIndices(command);
    const auto view = viewCommand(command);
    const auto head = codeHead(view.field);
    counts_.addBeyondOne(head, indices, view.value);
    if (indices.count >= 2) {
        counts_.addRow(indices.fields[0], indices.fields[1]);
    }
    if (indices.count == 1 && equalsIgnoreCase(head, codeHead(measurement_field::kCount.code))) {
        countedLists_.insert(indices.fields[0]);
    }
    // No measurement has a higher number: such a command is only kept.
    const int number = indices.count >= 2 ? indices.fields[1] : 0;
    const int measurement = std::clamp(number, 0, kMostMeasurements + kMeasurementsInChunk);
    if (head.size() < view.field.size() &&
        equalsIgnoreCase(head, codeHead(measurement_field::kLocationType.code))) {
        const bool wordFrame = equalsIgnoreCase(view.value, location_type::kWordFrame);
        hasWordFrame_ = hasWordFrame_ || wordFrame;
        hasOtherTypes_ = hasOtherTypes_ || (!wordFrame && !view.value.empty());
    }
    auto& text = waiting_[measurement / kMeasurementsInChunk];
    text.append(command).append("\r\n");
    waitingBytes_ += command.size() + 2;
}

IoStatus DataChunks::writeOut() {
    for (auto& [number, text] : waiting_) {
        if (text.empty()) {
            continue;
        }
        FileWriter writer;
        if (auto status = writer.open(pathOf(number), WriteMode::Append); !status.ok()) {
            return status;
        }
        writer.write(text);
        if (auto status = writer.close(); !status.ok()) {
            return status;
        }
        text = std::string();
    }
    waitingBytes_ = 0;
    return {};
}

bool DataChunks::split() {
    auto& context = load_.format.context();
    // Files left by an earlier load are not of this group.
    (void)context.store.deleteFiles(nullptr, formatPrintf("[kavu]D0*.D%2.2d", group_));
    ByteSource source;
    IoStatus status = source.open(context.store.pathOf(groupFile('D', group_)));
    if (!status.ok()) {
        reportUnableToRead(load_.parent, status);
        return false;
    }
    std::string command;
    std::uint64_t next = 0;
    while (status.ok() && context.reader.nextCommand(source, command)) {
        add(command);
        if (waitingBytes_ > kMostWaiting) {
            status = writeOut();
        }
        if (source.position() >= next) {
            next = source.position() + kStep;
            load_.progress(100.0 * static_cast<double>(source.position()) /
                           static_cast<double>(std::max<std::uint64_t>(1, source.size())));
            load_.status("Reading PCM measurement definitions");
            if (load_.cancelled()) {
                return false;
            }
        }
    }
    if (!source.status().ok()) {
        reportUnableToRead(load_.parent, source.status());
        return false;
    }
    status = status.ok() ? writeOut() : status;
    if (status.ok() && load_.edition() >= 2009) {
        status = context.files.put(formatPrintf(kSmfFormat, group_), smf_);
    }
    if (!status.ok()) {
        reportUnableToWrite(load_.parent, status);
    }
    return status.ok();
}

void DataChunks::reportCounts() {
    counts_.report(load_.prefix, [this](const std::string& text) {
        load_.logLeftOut(title::kErrorReadingMeasurement, text);
    });
}

CommandIndex* DataChunks::chunkOf(int measurement) {
    const int number = measurement / kMeasurementsInChunk;
    if (const auto it = read_.find(number); it != read_.end()) {
        return &it->second;
    }
    CommandIndex commands;
    if (!readChunk(number, commands)) {
        return nullptr;
    }
    if (readBytes_ > kMostRead) {
        dropRead();
    }
    readBytes_ += commands.memory();
    return &(read_[number] = std::move(commands));
}

bool DataChunks::readChunk(int number, CommandIndex& commands) const {
    if (!waiting_.contains(number) ||
        !commands.readFile(load_.format.context().reader, pathOf(number)).ok()) {
        return false;
    }
    const auto marks = marks_.find(number);
    for (std::size_t place = 0; marks != marks_.end() && place < commands.size(); ++place) {
        commands.markRead(place, marks->second[place]);
    }
    return true;
}

void DataChunks::dropRead() {
    for (const auto& [number, commands] : read_) {
        auto& marks = marks_[number];
        marks.resize(commands.size());
        for (std::size_t place = 0; place < commands.size(); ++place) {
            marks[place] = commands.isRead(place);
        }
    }
    read_.clear();
    readBytes_ = 0;
}

void DataChunks::forEachChunk(const std::function<void(const CommandIndex&)>& visit) {
    for (const auto& [number, waiting] : waiting_) {
        if (const auto it = read_.find(number); it != read_.end()) {
            visit(it->second);
            continue;
        }
        CommandIndex commands;
        if (readChunk(number, commands)) {
            visit(commands);
        }
    }
}

CommandIndex& DataChunks::lists() {
    if (auto* const chunk = chunkOf(0)) {
        return *chunk;
    }
    none_.rewind();
    return none_;
}

int DataChunks::nextPresent(int number) const {
    const auto it = waiting_.lower_bound(number / kMeasurementsInChunk);
    return it == waiting_.end() ? kMostMeasurements + 1
                                : std::max(number, it->first * kMeasurementsInChunk);
}

}  // namespace kavu
