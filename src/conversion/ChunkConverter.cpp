#include "conversion/ChunkConverter.h"

#include "conversion/ConversionFields.h"
#include "conversion/ConversionFiles.h"
#include "conversion/LoadReports.h"
#include "conversion/RawChunk.h"
#include "conversion/StagedChunks.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/KeyValueStore.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"

#include <algorithm>
#include <utility>

namespace kavu {

namespace {

constexpr std::size_t kIndexFrom = 40;     // fields of a record from which on a hash pays
constexpr std::size_t kLongestShown = 80;  // characters of a value in message 315
constexpr std::string_view kLineEnd = "\r\n";

/// True if a code can be a key of the sectioned format; any other is unknown to the
/// records.
bool canBeKey(std::string_view code) {
    return !code.empty() && code.front() != '[' && code.front() != ';' &&
           code.find('=') == std::string_view::npos;
}

std::string shown(std::string_view value) {
    const auto cut = cutToBytes(value, kLongestShown);
    return cut.size() < value.size() ? std::string(cut) + "..." : std::string(value);
}

}  // namespace

void ChunkConverter::Record::put(std::string_view code, std::string_view value) {
    if (fields.size() < kIndexFrom) {
        for (auto& field : fields) {
            if (equalsIgnoreCase(field.code, code)) {
                field.value = value;
                return;
            }
        }
    } else {
        for (std::size_t i = places.size(); i < fields.size(); ++i) {
            places.emplace(lowerAscii(fields[i].code), i);
        }
        if (const auto found = places.find(lowerAscii(code)); found != places.end()) {
            fields[found->second].value = value;
            return;
        }
    }
    fields.push_back({code, value});
}

ChunkConverter::Record& ChunkConverter::record(std::int64_t index) {
    if (!records_.empty() && records_.back().index == index) {
        return records_.back();
    }
    const auto [it, isNew] = byIndex_.try_emplace(index, records_.size());
    if (isNew) {
        records_.emplace_back().index = index;
    }
    return records_[it->second];
}

bool ChunkConverter::open() {
    const auto names = context_.store.pathOf(working::kData2);
    if (const auto status = namesFile_.open(names, WriteMode::Truncate); !status.ok()) {
        reportUnwritable(context_, parent_, status, "Create", working::kData2);
        return false;
    }
    const auto sections = context_.store.pathOf(working::kData1);
    if (const auto status = sectionsFile_.open(sections, WriteMode::Truncate); !status.ok()) {
        reportUnreadable(context_, parent_, status);
        return false;
    }
    return true;
}

bool ChunkConverter::close() {
    if (const auto status = namesFile_.close(); !status.ok()) {
        reportUnwritable(context_, parent_, status, "Create", working::kData2);
        return false;
    }
    if (const auto status = sectionsFile_.close(); !status.ok()) {
        reportUnreadable(context_, parent_, status);
        return false;
    }
    // No numbered message reports them; but a person who looks for the lost calibration has to be
    // able to find out.
    if (unnamed_ > 0 && parent_ != nullptr) {
        parent_->loadRemark(
            formatPrintf("%d C groups without a name (DCN) are left out.", unnamed_));
    }
    return true;
}

bool ChunkConverter::convert(std::int64_t number, std::string& bytes, double percent,
                             bool commentsOutside) {
    at_ = 0;
    records_.clear();
    byIndex_.clear();
    return collect(bytes, percent) && writeChunk(number, commentsOutside);
}

bool ChunkConverter::collect(std::string& bytes, double percent) {
    bool good = true;
    forEachRawCommand(bytes, [&](const RawCommand& command) {
        if (!good) {
            return;
        }
        if (++polled_ % kPollEvery == 0) {
            yieldToInterface(parent_);
            good = !cancelRequested(parent_);
        }
        ++at_;
        if (command.value.empty()) {
            return;
        }
        if (startsWithIgnoreCase(command.code, kNameCode)) {
            good = good && takeName(command, measurementNameIn(command), percent);
        } else {
            takeField(command);
        }
    });
    return good;
}

bool ChunkConverter::takeName(const RawCommand& command, std::string_view name, double percent) {
    if (name.empty()) {
        return true;
    }
    if (name.size() > kLongestMeasurementName) {
        name = trimRight(cutToBytes(name, kLongestMeasurementName));
        context_.messages.log(parent_, 318, title::kErrorReadingConversion, command.index,
                              command.code, command.value, name);
    }
    if (names_.sectionExists(name)) {
        context_.messages.log(parent_, 317, title::kErrorReadingConversion, name);
        context_.history.markCorrected();
        record(command.index).refused = true;
        return true;
    }
    auto& to = record(command.index);
    if (!to.name.empty()) {
        // A second name of one index is never used; it must not hide the record of that
        // name.
        return true;
    }
    const auto index = std::to_string(command.index);
    const KeyValueStore::Pair pair{"N", index};
    if (!names_.writeSection(parent_, name, {&pair, 1})) {
        return false;
    }
    to.name = name;
    to.nameAt = at_;
    namesFile_.write("[" + index + "]\nN=" + to.name + "\n");
    ++measurements_;
    if (parent_ != nullptr && context_.ticker.secondElapsed()) {
        parent_->setProgressText(formatPrintf(
            "Initializing Data Conversion Info. Measurement #%u: %s", measurements_, name));
        parent_->setProgressBar(percent);
    }
    return true;
}

void ChunkConverter::takeField(const RawCommand& command) {
    auto& to = record(command.index);
    auto value = command.value;
    const auto limit = static_cast<std::size_t>(conversionLimit(command.code, edition_));
    if (limit > 0 && value.size() > limit) {
        context_.messages.log(parent_, 315, title::kErrorReadingConversion,
                              to.name.empty() ? std::string("<name not defined>") : to.name,
                              command.index, command.code, shown(value), limit);
        value = cutToBytes(value, limit);
        context_.history.markCorrected();
    }
    const auto code = trim(command.code);
    if (!canBeKey(code)) {
        return;
    }
    if (to.fields.empty()) {
        to.firstAt = at_;
    }
    to.put(code, value);
}

std::vector<const ChunkConverter::Record*> ChunkConverter::ordered() const {
    std::vector<const Record*> order;
    for (const auto& record : records_) {
        order.push_back(&record);
    }
    const auto position = [](const Record* record) {
        return record->fields.empty() ? record->nameAt : record->firstAt;
    };
    std::stable_sort(order.begin(), order.end(),
                     [&](const Record* a, const Record* b) { return position(a) < position(b); });
    return order;
}

bool ChunkConverter::writeChunk(std::int64_t number, bool commentsOutside) {
    std::string byIndex;  // the sections by group index
    std::string chunk;    // those of them that have a name, under it
    for (const auto* const record : ordered()) {
        byIndex.append("[");
        appendNumber(byIndex, record->index);
        byIndex.append("]").append(kLineEnd);
        const auto body = byIndex.size();
        bool inChunk = false;
        for (const auto& field : record->fields) {
            if (commentsOutside && !record->name.empty() &&
                equalsIgnoreCase(field.code, kCommentCode)) {
                if (const auto status = context_.files.put(commentName(record->name), field.value);
                    !status.ok()) {
                    reportUnwritable(context_, parent_, status, "Write/Create");
                    return false;
                }
                continue;
            }
            byIndex.append(field.code).append("=").append(field.value).append(kLineEnd);
            inChunk = true;
        }
        if (record->name.empty()) {
            unnamed_ += record->refused ? 0 : 1;
            continue;
        }
        chunk.append("[").append(record->name).append("]").append(kLineEnd);
        chunk.append(byIndex, body);
        if (!inChunk) {
            // A section without a key would not be a record.
            chunk.append(kNameCode).append("=").append(record->name).append(kLineEnd);
        }
    }
    sectionsFile_.write(byIndex);
    if (const auto status = chunks_.put(context_.files, number, std::move(chunk)); !status.ok()) {
        reportUnwritable(context_, parent_, status, "Write/Create");
        return false;
    }
    return true;
}

}  // namespace kavu
