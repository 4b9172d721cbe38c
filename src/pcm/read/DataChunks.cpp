#include "pcm/read/DataChunks.h"

#include "core/TmatsReader.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/MeasurementFields.h"

#include <algorithm>
#include <bit>

namespace kavu {

namespace {

/// Commands that wait in memory for their files.
constexpr std::size_t kMostWaiting = std::size_t{16} << 20U;
/// Commands of chunks that are kept once they have been read.
constexpr std::size_t kMostRead = std::size_t{64} << 20U;
/// Bytes between two looks at the progress and at a cancel.
constexpr std::uint64_t kStep = 1U << 16U;

std::size_t hashOf(std::string_view code) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : code) {
        hash = (hash ^ static_cast<unsigned char>(toLowerAscii(c))) * 1099511628211U;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
}

/// The field of a command behind its group part.
std::string_view fieldOf(std::string_view command) {
    const auto backslash = command.find('\\');
    return backslash == std::string_view::npos ? std::string_view() : command.substr(backslash + 1);
}

}  // namespace

// --- one chunk ------------------------------------------------------------------------------

ChunkFields::ChunkFields(TmatsReader& reader, std::string_view bytes) {
    entries_.push_back({});
    text_.reserve(bytes.size());
    auto source = ByteSource::fromMemory(bytes);
    std::string command;
    while (reader.nextCommand(source, command)) {
        const auto colon = command.find(':');
        const std::size_t end = command.ends_with(';') ? command.size() - 1 : command.size();
        if (colon == std::string::npos || colon + 1 >= end) {
            continue;
        }
        entries_.push_back({static_cast<std::uint32_t>(text_.size()),
                            static_cast<std::uint32_t>(colon),
                            static_cast<std::uint32_t>(end - colon - 1), 0});
        text_.append(command, 0, colon).append(command, colon + 1, end - colon - 1);
    }
    slots_.resize(std::bit_ceil(2 * entries_.size()));
    for (std::uint32_t i = 1; i < entries_.size(); ++i) {
        auto& slot = slots_[slotOf(codeOf(entries_[i]))];
        (slot.first == 0 ? slot.first : entries_[slot.last].next) = i;
        slot.last = i;
    }
}

std::size_t ChunkFields::slotOf(std::string_view code) const {
    return hashOf(code) & (slots_.size() - 1);
}

std::optional<ChunkFields::Found> ChunkFields::find(std::string_view code) {
    std::uint32_t found = 0;
    for (auto i = slots_[slotOf(code)].first; i != 0; i = entries_[i].next) {
        if ((found == 0 || i >= position_) && equalsIgnoreCase(codeOf(entries_[i]), code)) {
            found = i;
            if (i >= position_) {
                break;
            }
        }
    }
    if (found == 0) {
        return std::nullopt;
    }
    position_ = found + 1;
    const auto& entry = entries_[found];
    return Found{codeOf(entry),
                 std::string_view(text_).substr(entry.start + entry.codeSize, entry.valueSize)};
}

// --- all chunks -----------------------------------------------------------------------------

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
    const auto field = fieldOf(command);
    if (load_.edition() >= 2009 && startsWithIgnoreCase(field, "SMF\\")) {
        smf_.append(command).append("\r\n");
        return;
    }
    const auto indices = parseCommandIndices(command);
    if (indices.count == 1 &&
        equalsIgnoreCase(codeHead(field), codeHead(measurement_field::kCount.code))) {
        countedLists_.insert(indices.fields[0]);
    }
    const int measurement = indices.count >= 2 ? indices.fields[1] : 0;
    if (measurement < 0 || measurement > kMostMeasurements) {
        return;
    }
    if (equalsIgnoreCase(codeHead(field), codeHead(measurement_field::kLocationType.code))) {
        const auto value = fieldView(command).value;
        const bool wordFrame = equalsIgnoreCase(value, "WDFR");
        hasWordFrame_ = hasWordFrame_ || wordFrame;
        hasOtherTypes_ = hasOtherTypes_ || (!wordFrame && !value.empty());
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
    // What an earlier load has left behind is not of this group.
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
        status = writeWholeFile(context.store.path(kSmfFormat, group_), smf_);
    }
    if (!status.ok()) {
        reportUnableToWrite(load_.parent, status);
    }
    return status.ok();
}

ChunkFields* DataChunks::chunkOf(int measurement) {
    const int number = measurement / kMeasurementsInChunk;
    if (const auto it = read_.find(number); it != read_.end()) {
        return it->second.get();
    }
    std::string bytes;
    if (!waiting_.contains(number) || !readWholeFile(pathOf(number), bytes).ok()) {
        return nullptr;
    }
    if (readBytes_ > kMostRead) {
        read_.clear();
        readBytes_ = 0;
    }
    auto& chunk = read_[number];
    chunk = std::make_unique<ChunkFields>(load_.format.context().reader, bytes);
    readBytes_ += chunk->memory();
    return chunk.get();
}

ChunkFields& DataChunks::lists() {
    if (auto* const chunk = chunkOf(0)) {
        return *chunk;
    }
    none_ = std::make_unique<ChunkFields>(load_.format.context().reader, std::string_view());
    return *none_;
}

int DataChunks::nextPresent(int number) const {
    const auto it = waiting_.lower_bound(number / kMeasurementsInChunk);
    return it == waiting_.end() ? kMostMeasurements + 1
                                : std::max(number, it->first * kMeasurementsInChunk);
}

}  // namespace kavu
