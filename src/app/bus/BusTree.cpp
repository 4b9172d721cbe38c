#include "app/bus/BusTree.h"

#include "bus/definition/BusRows.h"
#include "bus/definition/BusTerminalEdit.h"
#include "core/command/CommandPath.h"
#include "core/talk/UserInterface.h"

#include <array>

namespace kavu {

namespace {

constexpr GroupTreeKind kGroupKind{.icon = "bus", .add = "Add New Bus"};
constexpr GroupTreeKind kBusKind{.icon = "stream",
                                 .add = "Add New Message",
                                 .edit = "Edit This Bus",
                                 .remove = "Delete This Bus",
                                 .pastes = "bus-message"};
constexpr GroupTreeKind kMessageKind{.icon = "message",
                                     .add = "Add New Measurement",
                                     .edit = "Edit This Message",
                                     .remove = "Delete This Message",
                                     .clip = "bus-message",
                                     .pastes = "bus-measurement"};
constexpr GroupTreeKind kMeasurementKind{.icon = "measurement",
                                         .add = "Add New Location",
                                         .edit = "Edit This Measurement",
                                         .remove = "Delete This Measurement",
                                         .clip = "bus-measurement"};
constexpr GroupTreeKind kLocationKind{
    .icon = "list", .edit = "Edit This Location", .remove = "Delete This Location"};

/// The kinds by how deep their rows are.
constexpr auto kKindsByDepth = std::to_array<const GroupTreeKind*>(
    {&kGroupKind, &kBusKind, &kMessageKind, &kMeasurementKind, &kLocationKind});

/// What a state takes: a row with its values is about this large.
constexpr std::size_t kBytesOfRow = 600;

/// What an undo goes back to: all that the forms change.
struct BusState {
    GroupRow group{};
    std::vector<BusTerminals> terminals{};
};

std::size_t rowsIn(const GroupRow& row) {
    std::size_t all = 1;
    for (const auto& [count, rows] : row.lists) {
        for (const auto& each : rows) {
            all += rowsIn(each);
        }
    }
    return all;
}

BusLevel levelBelow(const BusPlace& owner) {
    auto place = owner;
    place.push_back(1);
    return levelOf(place);
}

/// The levels whose rows are in a row of a level, as far as they are copied.
std::vector<BusLevel> levelsIn(BusLevel level) {
    switch (level) {
        case BusLevel::Message:
            return {BusLevel::Receive, BusLevel::Measurement};
        case BusLevel::Measurement:
            return {BusLevel::Location};
        default:
            return {};
    }
}

/// One line for each row, those in it behind it: the depth, the level, then codes and values.
void appendTexts(TableRows& texts, const GroupRow& row, BusLevel level, std::size_t depth) {
    std::vector<std::string> line = {std::to_string(depth),
                                     std::to_string(static_cast<int>(level))};
    for (const auto& [code, value] : row.values) {
        line.emplace_back(stemOf(code));
        line.push_back(value);
    }
    texts.push_back(std::move(line));
    for (const auto inner : levelsIn(level)) {
        for (const auto& each : rowsOf(row, inner)) {
            appendTexts(texts, each, inner, depth + 1);
        }
    }
}

/// Takes the lines of one row and of those in it.
class RowOfTexts {
  public:
    explicit RowOfTexts(const TableRows& texts) : texts_(texts) {}

    bool take(GroupRow& row, BusLevel level, std::size_t depth) {
        if (!isAt(level, depth) || !takeValues(row, level)) {
            return false;
        }
        ++next_;
        for (const auto inner : levelsIn(level)) {
            while (isAt(inner, depth + 1)) {
                if (!take(rowsOf(row, inner).emplace_back(), inner, depth + 1)) {
                    return false;
                }
            }
        }
        return true;
    }
    [[nodiscard]] bool isAtEnd() const { return next_ == texts_.size(); }

  private:
    [[nodiscard]] bool isAt(BusLevel level, std::size_t depth) const {
        return next_ < texts_.size() && texts_[next_].size() >= 2 &&
               texts_[next_][0] == std::to_string(depth) &&
               texts_[next_][1] == std::to_string(static_cast<int>(level));
    }
    bool takeValues(GroupRow& row, BusLevel level) {
        const auto& line = texts_[next_];
        for (std::size_t i = 2; i + 1 < line.size(); i += 2) {
            const auto* const field = findBusField(level, line[i]);
            if (field == nullptr || line[i + 1].find(';') != std::string::npos) {
                return false;
            }
            row.set(field->code, line[i + 1]);
        }
        return line.size() % 2 == 0;
    }

    const TableRows& texts_;
    std::size_t next_ = 0;
};

}  // namespace

BusPlace busPlaceOf(const TreePath& path) {
    BusPlace place;
    for (const auto number : path) {
        place.push_back(number + 1);
    }
    return place;
}

TableRows busRowTexts(const GroupRow& row, BusLevel level) {
    TableRows texts;
    appendTexts(texts, row, level, 0);
    return texts;
}

std::optional<GroupRow> busRowOfTexts(const TableRows& texts, BusLevel level) {
    GroupRow row;
    RowOfTexts taken(texts);
    return taken.take(row, level, 0) && taken.isAtEnd() ? std::optional(std::move(row))
                                                        : std::nullopt;
}

GroupTreeRow BusTree::row(const TreePath& at) const {
    const auto place = busPlaceOf(at);
    const auto& definition = setup_.definition;
    const auto& row = *busRowAt(definition, place);
    const auto level = levelOf(place);
    GroupTreeRow shown{kKindsByDepth[place.size()]};
    if (place.empty()) {
        shown.label = definition.link;
    } else {
        shown.label = busRowLabel(level, row, place.back());
        const auto type = busValue(row, level, "BT");
        shown.label.append(level == BusLevel::Bus && !type.empty() ? " (" + std::string(type) + ")"
                                                                   : std::string());
    }
    shown.rows = level == BusLevel::Location ? 0 : rowsOf(row, levelBelow(place)).size();
    return shown;
}

bool BusTree::add(const TreePath& owner, QWidget* window) {
    return addBusRow(setup_, busPlaceOf(owner), window).has_value();
}

bool BusTree::edit(const TreePath& at, QWidget* window) {
    return editBusRow(setup_, busPlaceOf(at), window);
}

bool BusTree::remove(const TreePath& at) {
    return setup_.edit.remove(busPlaceOf(at));
}

bool BusTree::paste(const TreePath& owner, const TableClip& clip) {
    const auto place = busPlaceOf(owner);
    const auto level = levelBelow(place);
    const auto row = busRowOfTexts(clip.own, level);
    if (!row) {
        showBox(&setup_.form.ui, "The clipboard holds nothing that can be put here.",
                "Unable To Paste");
        return false;
    }
    return setup_.edit.paste(place, level, *row);
}

TableClip BusTree::copy(const TreePath& at) const {
    const auto place = busPlaceOf(at);
    const auto level = levelOf(place);
    const auto& row = *busRowAt(setup_.definition, place);
    const int edition = setup_.definition.edition;
    TableClip clip;
    clip.rows = {busColumns(level, edition), busCells(level, row, edition)};
    clip.own = busRowTexts(row, level);
    return clip;
}

GroupTreeState BusTree::state() const {
    const auto& definition = setup_.definition;
    return stateOf(BusState{definition.group, definition.terminals},
                   rowsIn(definition.group) * kBytesOfRow);
}

void BusTree::restore(const GroupTreeState& state) {
    BusState former;
    restoreTo(former, state);
    setup_.definition.group = std::move(former.group);
    setup_.definition.terminals = std::move(former.terminals);
}

}  // namespace kavu
