#include "bus/definition/BusDefinition.h"

#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr int kBusTypeEdition = 2004;

const GroupRow* rowAt(const GroupRow& group, const BusPlace& place) {
    if (place.size() > kDeepestBusPlace) {
        return nullptr;
    }
    const auto* row = &group;
    BusPlace at;
    for (const auto number : place) {
        at.push_back(number);
        const auto& rows = rowsOf(*row, levelOf(at));
        if (number < 1 || number > rows.size()) {
            return nullptr;
        }
        row = &rows[number - 1];
    }
    return row;
}

}  // namespace

const std::vector<GroupRow>& BusDefinition::buses() const {
    return rowsOf(group, BusLevel::Bus);
}

const BusTerminals& BusDefinition::listKnownTerminals(std::size_t bus) const {
    static const BusTerminals kNone;
    return bus >= 1 && bus <= terminals.size() ? terminals[bus - 1] : kNone;
}

BusLevel levelOf(const BusPlace& place) {
    constexpr auto kLevels = std::to_array({BusLevel::Group, BusLevel::Bus, BusLevel::Message,
                                            BusLevel::Measurement, BusLevel::Location});
    return kLevels[place.size()];
}

const std::vector<GroupRow>& rowsOf(const GroupRow& owner, BusLevel level) {
    static const std::vector<GroupRow> kNone;
    const auto found = owner.lists.find(countOfLevel(level));
    return found == owner.lists.end() ? kNone : found->second;
}

std::vector<GroupRow>& rowsOf(GroupRow& owner, BusLevel level) {
    return owner.lists[std::string(countOfLevel(level))];
}

const GroupRow* busRowAt(const BusDefinition& definition, const BusPlace& place) {
    return rowAt(definition.group, place);
}

GroupRow* busRowAt(BusDefinition& definition, const BusPlace& place) {
    return const_cast<GroupRow*>(rowAt(definition.group, place));
}

std::string_view busValue(const GroupRow& row, BusLevel level, std::string_view stem) {
    const auto* const field = findBusField(level, stem);
    return field == nullptr ? std::string_view() : row.value(field->code);
}

void setBusValue(GroupRow& row, BusLevel level, std::string_view stem, std::string_view value) {
    row.set(findBusField(level, stem)->code, value);
}

const GroupRow& receiveOf(const GroupRow& message) {
    static const GroupRow kNone;
    const auto& rows = rowsOf(message, BusLevel::Receive);
    return rows.empty() ? kNone : rows.front();
}

GroupRow& receiveOf(GroupRow& message) {
    auto& rows = rowsOf(message, BusLevel::Receive);
    if (rows.empty()) {
        rows.emplace_back();
    }
    return rows.front();
}

bool isArincBus(const GroupRow& bus, int edition) {
    return edition >= kBusTypeEdition &&
           equalsIgnoreCase(busValue(bus, BusLevel::Bus, "BT"), kBusTypeArinc);
}

}  // namespace kavu
