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
    current_ = 0;
    records_.clear();
    first_.clear();
    last_.clear();
    names_.clear();
}

/// The last record of a number, made if there is none.
std::size_t ConversionRecords::recordOf(std::int64_t number) {
    const auto [known, isNew] = last_.try_emplace(number, records_.size());
    if (isNew) {
        begin(number);
    }
    return known->second;
}

void ConversionRecords::begin(std::int64_t number) {
    last_[number] = records_.size();
    first_.try_emplace(number, records_.size());
    records_.push_back({number, {}, {}});
}

void ConversionRecords::add(std::string_view text, Run place) {
    const auto head = rawHeadOf(text);
    // Nearly every command is of the record of the one before it.
    if (current_ >= records_.size() || records_[current_].number != head.index) {
        current_ = recordOf(head.index);
    }
    // The name is looked for by its code's first letter: most codes begin with another.
    const bool mayBeName =
        head.slash < text.size() - 1 && toUpperAscii(text[head.slash + 1]) == c::kDcn.code.front();
    if (mayBeName) {
        const auto command = viewCommand(text);
        if (equalsIgnoreCase(command.field, c::kDcn.code) && !command.value.empty()) {
            if (!records_[current_].name.empty()) {
                begin(head.index);
                current_ = records_.size() - 1;
            }
            records_[current_].name = command.value;
            names_.try_emplace(records_[current_].name, current_);
        }
    }
    auto& record = records_[current_];
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
