#include "pcm/read/KeptReading.h"

#include "core/command/CommandPath.h"
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/read/DataChunks.h"
#include "pcm/read/RowRules.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

/// The filter commands: their second number is not that of a measurement.
constexpr std::string_view kFilterHead = "SMF\\";

/// A command without the head of its group, and with its `;`.
std::string textOf(const CommandView& command) {
    std::string text(command.field);
    return text.append(":").append(command.value).append(";");
}

/// What is to be known of a command that the load has not read.
class UnreadCommands {
  public:
    UnreadCommands(const CommandIndex& commands, const RowRules& rules)
        : commands_(commands), rules_(rules) {}

    [[nodiscard]] KeptCommand kept(const CommandView& command) {
        KeptCommand result{.text = textOf(command),
                           .isRepeat = commands_.peekRead(trimRight(command.code)).has_value()};
        const auto path = parseField(trimRight(command.field));
        for (const auto& use : path ? rules_.usesOf(path->stem) : std::span<const RowUse>()) {
            if (use.depth < path->count && !isRead(RowRules::rowKey(use, *path))) {
                result.missingRow = use.depth;
                break;
            }
        }
        return result;
    }

  private:
    /// Unknown commands are in no list, and a group may have many thousands of them: the
    /// rows of the read ones are gathered for the first that is.
    [[nodiscard]] bool isRead(const std::string& row) {
        if (!isGathered_) {
            gather();
        }
        return rows_.contains(row);
    }
    void gather() {
        isGathered_ = true;
        for (std::size_t place = 0; place < commands_.size(); ++place) {
            if (!commands_.isRead(place)) {
                continue;
            }
            const auto read = parseField(trimRight(commands_.at(place).field));
            for (const auto& use : read ? rules_.usesOf(read->stem) : std::span<const RowUse>()) {
                if (use.depth < read->count) {
                    rows_.insert(RowRules::rowKey(use, *read));
                }
            }
        }
    }

    const CommandIndex& commands_;
    const RowRules& rules_;
    bool isGathered_ = false;
    std::unordered_set<std::string> rows_;
};

/// What commands belong to that are of no measurement.
constexpr std::pair<int, int> kOfLists{0, 0};

/// The row of a measurement list that a command belongs to.
std::pair<int, int> rowOf(const CommandView& command) {
    const auto path = parseField(trimRight(command.field));
    if (!path || path->count < 2 || startsWithIgnoreCase(path->stem, kFilterHead)) {
        return kOfLists;
    }
    return {path->at[0], path->at[1]};
}

/// A command of a row without the numbers of the row.
std::string lineOf(std::string_view text) {
    const auto command = viewCommand(text);
    const auto path = parseField(trimRight(command.field));
    std::string line = lowerAscii(path->stem);
    for (int i = 2; i < path->count; ++i) {
        line.append("-").append(std::to_string(path->at[static_cast<std::size_t>(i)]));
    }
    return line.append(":").append(command.value);
}

}  // namespace

void gatherKeptOfFormat(PcmLoad& load) {
    const auto& commands = *load.fields;
    UnreadCommands unread(commands, pcmRowRules());
    std::unordered_set<std::string> read;
    for (std::size_t place = 0; place < commands.size(); ++place) {
        const auto command = commands.at(place);
        if (command.head.empty()) {
            continue;
        }
        // Two passes that read a count which stands twice have read one of the two each.
        const bool isUsed =
            commands.isRead(place) && read.insert(lowerAscii(trimRight(command.code))).second;
        if (!isUsed) {
            load.format.kept.ofFormat.push_back(unread.kept(command));
        }
    }
}

void KeptMeasurements::markPlaced(int list, int number) {
    auto& rows = placed_[list];
    const auto at = static_cast<std::size_t>(number);
    if (rows.size() <= at) {
        rows.resize(at + 1);
    }
    rows[at] = true;
}

void KeptMeasurements::notePlaced(int list, int number, std::string_view name) {
    markPlaced(list, number);
    if (load_.format.measurementListCount > 1) {
        firstRows_.emplace(lowerAscii(name), Row(list, number));
    }
}

void KeptMeasurements::noteTagged(int list, int number) {
    markPlaced(list, number);
    tagged_.emplace(list, number);
}

void KeptMeasurements::noteSecond(int list, int number, std::string_view name) {
    const auto first = firstRows_.find(lowerAscii(name));
    if (first == firstRows_.end() || first->second.first == list ||
        !secondNames_.emplace(list, first->first).second) {
        return;
    }
    seconds_.emplace(Row(list, number), Second{first->first, first->second});
    firstLines_[first->second];
}

bool KeptMeasurements::isPlaced(const Row& row) const {
    const auto rows = placed_.find(row.first);
    const auto at = static_cast<std::size_t>(row.second);
    return rows != placed_.end() && at < rows->second.size() && rows->second[at];
}

void KeptMeasurements::gather(DataChunks& chunks) {
    chunks.forEachChunk([this](const CommandIndex& commands) { gatherChunk(commands); });
    settleSeconds();
    auto& rows = load_.format.kept.rows;
    for (auto& [row, commands] : leftOut_) {
        const auto count = counts_.find(row.first);
        rows.push_back({.list = row.first,
                        .number = row.second,
                        .isCounted = count != counts_.end() && row.second <= count->second,
                        .commands = std::move(commands)});
    }
}

void KeptMeasurements::gatherChunk(const CommandIndex& commands) {
    std::map<Row, std::vector<std::size_t>> ofPlaced;
    for (std::size_t place = 0; place < commands.size(); ++place) {
        if (!commands.isRead(place)) {
            takeUnread(commands, place, ofPlaced);
        }
    }
    keepOfPlaced(commands, ofPlaced);
    if (!firstLines_.empty()) {
        noteFirstLines(commands);
    }
}

void KeptMeasurements::takeUnread(const CommandIndex& commands, std::size_t place,
                                  std::map<Row, std::vector<std::size_t>>& ofPlaced) {
    const auto command = commands.at(place);
    if (command.head.empty()) {
        return;
    }
    const auto row = rowOf(command);
    if (row == kOfLists || isPlaced(row)) {
        ofPlaced[row].push_back(place);
    } else if (const auto second = seconds_.find(row); second != seconds_.end()) {
        second->second.commands.push_back(textOf(command));
    } else {
        leftOut_[row].push_back(textOf(command));
    }
}

void KeptMeasurements::noteFirstLines(const CommandIndex& commands) {
    for (std::size_t place = 0; place < commands.size(); ++place) {
        if (!commands.isRead(place)) {
            continue;
        }
        const auto command = commands.at(place);
        if (const auto first = firstLines_.find(rowOf(command)); first != firstLines_.end()) {
            first->second.insert(lineOf(command.text));
        }
    }
}

void KeptMeasurements::keepOfPlaced(const CommandIndex& commands,
                                    const std::map<Row, std::vector<std::size_t>>& ofPlaced) {
    UnreadCommands unread(commands, measurementRowRules());
    for (const auto& [row, places] : ofPlaced) {
        const auto name = commands.peekRead(
            load_.prefix + fieldCode(measurement_field::kName.code, {row.first, row.second}));
        auto& kept = keptOf(row, name ? FixedText<32>(name->value).str() : std::string());
        for (const auto place : places) {
            kept.push_back(unread.kept(commands.at(place)));
        }
    }
}

std::vector<KeptCommand>& KeptMeasurements::keptOf(const Row& row, const std::string& name) {
    auto& kept = load_.format.kept;
    if (row == kOfLists) {
        return kept.ofLists;
    }
    if (tagged_.contains(row)) {
        return kept.ofTagged[{std::min(row.first, kMostMeasurementLists), name}];
    }
    const auto [it, isNew] = numbers_.try_emplace(lowerAscii(name));
    if (isNew) {
        kept.ofMeasurements.emplace_back();
        it->second = static_cast<int>(kept.ofMeasurements.size());
        load_.format.cells().updateAll(
            name, [number = it->second](Measurement& copy) { copy.kept = number; });
    }
    return kept.ofMeasurements[static_cast<std::size_t>(it->second) - 1];
}

/// A second row that says what was read of the first one is that measurement: what it says besides
/// is kept with it.
void KeptMeasurements::settleSeconds() {
    for (auto& [row, second] : seconds_) {
        const auto& first = firstLines_[second.first];
        Lines here;
        for (const auto& text : second.commands) {
            here.insert(lineOf("D-0\\" + text));
        }
        if (!std::all_of(first.begin(), first.end(),
                         [&here](const std::string& line) { return here.contains(line); })) {
            leftOut_[row] = std::move(second.commands);
            continue;
        }
        for (auto& text : second.commands) {
            if (!first.contains(lineOf("D-0\\" + text))) {
                keptOf(second.first, second.name).push_back({.text = std::move(text)});
            }
        }
    }
}

void gatherUnreadMeasurements(PcmLoad& load) {
    auto& format = load.format;
    const int group = findStreamGroup(format, nullptr, 'D', format.streamName);
    if (group < 1) {
        return;
    }
    PcmLoad unread(format, nullptr);
    unread.prefix = groupHead('D', group);
    DataChunks chunks(unread, group);
    KeptMeasurements kept(unread);
    if (!chunks.split()) {
        return;
    }
    // A save writes these itself.
    auto& lists = chunks.lists();
    const auto take = [&](const Field& field, std::initializer_list<int> numbers) {
        const auto found = lists.peek(unread.prefix + fieldCode(field.code, numbers));
        if (found) {
            lists.markRead(found->place);
        }
        return found ? leadingInt(found->value) : 0;
    };
    take(measurement_field::kDataLink, {});
    take(measurement_field::kListCount, {});
    for (const int list : chunks.countedLists()) {
        kept.noteCount(list, take(measurement_field::kCount, {list}));
    }
    kept.gather(chunks);
}

}  // namespace kavu
