// The B group of one data link in memory: its buses, their messages, the measurements of these and
// their locations, each level a list of rows as the vocabulary describes them. Numbers count
// from 1.
//
// The receive commands of a message are rows of `kReceiveCount` in every edition, with the codes of
// `BusLevel::Receive`; from 106-99 on a message has exactly one.
#pragma once

#include "core/document/GroupFile.h"
#include "groups/GroupRecord.h"
#include "vocabulary/BGroupFields.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// Working files of the editor of a bus group.
inline constexpr std::string_view kBusGroupFile = "1553.TMP";
inline constexpr std::string_view kBusProfile = "1553.INI";
inline constexpr std::string_view kTerminalProfile = "1553Term.ini";

/// The buses whose terminals are listed.
inline constexpr std::size_t kMostTerminalBuses = 16;

struct Terminal {
    std::string name{};
    std::string address{};  ///< five digits, or nothing
    [[nodiscard]] bool operator==(const Terminal&) const = default;
};

/// The terminals that are known of a bus.
struct BusTerminals {
    std::vector<Terminal> remote{};
    std::vector<Terminal> sub{};
    [[nodiscard]] bool operator==(const BusTerminals&) const = default;
};

/// A row of a bus definition by its numbers: the bus, its message, its measurement, its location.
/// Without numbers it is the group.
using BusPlace = std::vector<std::size_t>;
inline constexpr std::size_t kDeepestBusPlace = 4;

struct BusDefinition {
    std::string link{};  ///< the name of the data link
    int index = 0;       ///< of the group; 0 for one that has no file yet
    int edition = 0;
    GroupRow group{};
    std::vector<BusTerminals> terminals{};  ///< by bus; some buses after the last have lists too
    GroupFile kept{};                       ///< the file as it was, with what was read of it marked

    [[nodiscard]] const std::vector<GroupRow>& buses() const;
    /// The lists of a bus; empty ones for a bus without.
    [[nodiscard]] const BusTerminals& listKnownTerminals(std::size_t bus) const;

    /// Whether it is what it was: what a form asks before it writes.
    [[nodiscard]] bool holdsTheSame(const BusDefinition& other) const {
        return group == other.group;
    }
};

/// The level of a place. REQUIRES: not deeper than a location.
[[nodiscard]] BusLevel levelOf(const BusPlace& place);
/// The rows of a level in the row around them. REQUIRES: not the group.
[[nodiscard]] const std::vector<GroupRow>& rowsOf(const GroupRow& owner, BusLevel level);
[[nodiscard]] std::vector<GroupRow>& rowsOf(GroupRow& owner, BusLevel level);

/// The row at a place, or null.
[[nodiscard]] const GroupRow* busRowAt(const BusDefinition& definition, const BusPlace& place);
[[nodiscard]] GroupRow* busRowAt(BusDefinition& definition, const BusPlace& place);

/// The value of a field by its code without indices ("MNA"); empty for a row without it.
[[nodiscard]] std::string_view busValue(const GroupRow& row, BusLevel level, std::string_view stem);
/// An empty value removes it. REQUIRES: a field of the level.
void setBusValue(GroupRow& row, BusLevel level, std::string_view stem, std::string_view value);

/// The receive command of a message, the first of several; an empty row if it has none.
[[nodiscard]] const GroupRow& receiveOf(const GroupRow& message);
/// The same, made if there is none.
[[nodiscard]] GroupRow& receiveOf(GroupRow& message);

/// True for a bus whose messages have labels; no bus has them before 106-04.
[[nodiscard]] bool isArincBus(const GroupRow& bus, int edition);

}  // namespace kavu
