#include "bus/definition/BusRows.h"

#include "bus/definition/BusMessageType.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <array>

namespace kavu {

namespace {

struct Column {
    std::string_view title;
    std::string_view stem{};  ///< without one it is the type of a message
};
constexpr auto kBusColumns =
    std::to_array<Column>({{"Number", "BID"}, {"Name", "BNA"}, {"Type", "BT"}});
constexpr auto kBusMessageColumns = std::to_array<Column>({{"Number", "MID"},
                                                           {"Name", "MNA"},
                                                           {"Type"},
                                                           {"Remote Terminal", "TRA"},
                                                           {"Sub Terminal", "STA"},
                                                           {"Data Word Count", "DWC"}});
constexpr auto kBusMeasurementColumns = std::to_array<Column>({{"Measurement Name", "MN"},
                                                               {"Type", "MT"},
                                                               {"Parity", "MN1"},
                                                               {"Parity Transfer Order", "MN2"}});
constexpr auto kBusLocationColumns = std::to_array<Column>({{"Word Number", "MWN"},
                                                            {"Bit Mask", "MBM"},
                                                            {"Transfer Order", "MTO"},
                                                            {"Fragment Position", "MFP"}});
constexpr auto kTrackColumns = std::to_array<Column>({{"Track Sequence", "TS"}});

std::span<const Column> columnsOf(BusLevel level) {
    switch (level) {
        case BusLevel::Bus:
            return kBusColumns;
        case BusLevel::Message:
            return kBusMessageColumns;
        case BusLevel::Measurement:
            return kBusMeasurementColumns;
        case BusLevel::Location:
            return kBusLocationColumns;
        case BusLevel::Track:
            return kTrackColumns;
        case BusLevel::Group:
        case BusLevel::Receive:
            break;
    }
    return {};
}

/// The columns that an edition has, with their fields.
template <typename Take>
void eachColumn(BusLevel level, int edition, const Take& take) {
    for (const auto& column : columnsOf(level)) {
        const auto* const field = findBusField(level, column.stem);
        if (field == nullptr || isKnownIn(edition, *field)) {
            take(column, field);
        }
    }
}

}  // namespace

std::vector<std::string> busColumns(BusLevel level, int edition) {
    std::vector<std::string> titles;
    eachColumn(level, edition,
               [&](const Column& column, const Field*) { titles.emplace_back(column.title); });
    return titles;
}

std::vector<std::string> busCells(BusLevel level, const GroupRow& row, int edition) {
    std::vector<std::string> cells;
    eachColumn(level, edition, [&](const Column&, const Field* field) {
        cells.push_back(field == nullptr ? std::string(messageTypeText(messageTypeOf(row, edition)))
                                         : shownBusValue(*field, row));
    });
    return cells;
}

std::string shownBusValue(const Field& field, const GroupRow& row) {
    std::string value(row.value(field.code));
    const int entry = choiceIndex(field.choices, value);
    if (entry >= 0) {
        return std::string(field.choices[static_cast<std::size_t>(entry)].text);
    }
    fromStoredForm(value);
    return value;
}

std::string busRowTitle(BusLevel level, std::size_t number) {
    const auto n = static_cast<int>(number);
    switch (level) {
        case BusLevel::Bus:
            return formatPrintf("Bus #%d", n);
        case BusLevel::Message:
            return formatPrintf("Message #%d", n);
        case BusLevel::Measurement:
            return formatPrintf("Measurement #%d", n);
        case BusLevel::Track:
            return formatPrintf("Track Sequence #%d", n);
        default:
            return formatPrintf("Location #%d", n);
    }
}

std::string busRowLabel(BusLevel level, const GroupRow& row, std::size_t number) {
    struct Parts {
        BusLevel level;
        std::string_view number;
        std::string_view name;
    };
    constexpr auto kParts = std::to_array<Parts>({{BusLevel::Bus, "BID", "BNA"},
                                                  {BusLevel::Message, "MID", "MNA"},
                                                  {BusLevel::Measurement, "MN", {}},
                                                  {BusLevel::Location, "MWN", "MBM"},
                                                  {BusLevel::Track, "TS", {}}});
    for (const auto& parts : kParts) {
        if (parts.level != level) {
            continue;
        }
        std::string label(busValue(row, level, parts.number));
        const auto name = busValue(row, level, parts.name);
        label.append(label.empty() || name.empty() ? "" : " ").append(name);
        if (!label.empty()) {
            return label;
        }
    }
    return busRowTitle(level, number);
}

}  // namespace kavu
