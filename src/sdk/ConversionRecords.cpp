#include "sdk/ConversionRecords.h"

#include "core/TmatsReader.h"
#include "core/command/CommandPath.h"
#include "core/command/GroupIndex.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "vocabulary/CGroupFields.h"

namespace kavu {

IoStatus ConversionRecords::index(TmatsReader& reader, const std::string& path) {
    clear();
    path_ = path;
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return isMissing(status) ? IoStatus() : status;
    }
    std::string room;
    for (auto start = source.position();; start = source.position()) {
        const auto command = reader.viewNext(source, room);
        if (!command) {
            return source.status();
        }
        add(*command, {start, source.position()});
    }
}

void ConversionRecords::clear() {
    source_.close();
    records_.clear();
    first_.clear();
    last_.clear();
    names_.clear();
}

void ConversionRecords::add(std::string_view text, Run place) {
    const auto number = rawHeadOf(text).index;
    const auto command = viewCommand(text);
    const bool isName = equalsIgnoreCase(command.field, c::kDcn.code) && !command.value.empty();
    const auto [known, isNew] = last_.try_emplace(number, records_.size());
    if (isNew || (isName && !records_[known->second].name.empty())) {
        known->second = records_.size();
        records_.push_back({number, {}, {}});
        first_.try_emplace(number, known->second);
    }
    auto& record = records_[known->second];
    if (isName) {
        record.name = command.value;
        names_.try_emplace(record.name, known->second);
    }
    // Commands of one record mostly follow each other.
    if (!record.runs.empty() && record.runs.back().end == place.start) {
        record.runs.back().end = place.end;
    } else {
        record.runs.push_back(place);
    }
}

std::optional<std::size_t> ConversionRecords::findNumber(std::int64_t number) const {
    const auto found = first_.find(number);
    return found == first_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> ConversionRecords::findName(const std::string& name) const {
    const auto found = names_.find(name);
    return found == names_.end() ? std::nullopt : std::optional(found->second);
}

IoStatus ConversionRecords::read(TmatsReader& reader, std::size_t place, CommandIndex& commands) {
    commands.clear();
    if (!source_.isOpen()) {
        if (auto status = source_.open(path_); !status.ok()) {
            return status;
        }
    }
    std::string room;
    for (const auto& run : records_[place].runs) {
        source_.seek(run.start);
        while (source_.position() < run.end) {
            const auto command = reader.viewNext(source_, room);
            if (!command || !commands.add(*command)) {
                return source_.status().ok() ? IoStatus(path_, EFBIG) : source_.status();
            }
        }
    }
    return source_.status();
}

}  // namespace kavu
