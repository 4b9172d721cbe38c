// The list of edit steps of `--edit`: the forms that a script opens, fills and leaves with OK, as
// JSON. It is read before any document is opened: a list that is wrong changes nothing.
//
//     [ { "do": "add", "at": [1], "values": { "MNA": "New" } },
//       { "do": "set", "at": [1, "M", 2], "values": { "name": "A" } },
//       { "do": "delete", "at": [1, 1] } ]
#pragma once

#include "core/text/Text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kavu::cli {

/// What a step does. The last three are of the terminal lists of a bus.
enum class EditAct { Add, Set, Delete, AddTerminal, SaveTerminals, LoadTerminals };

/// A part of a place: a number from 1, or the letter of a branch ("F", "M", "T", "H", "S").
using PlacePart = std::variant<int, char>;

struct EditStep {
    EditAct act = EditAct::Set;
    std::vector<PlacePart> at{};  ///< empty is the group
    /// In the order of the list. Texts are bytes of UTF-8 with real line breaks.
    std::vector<std::pair<std::string, std::string>> values{};
    std::optional<std::string> type{};
    std::optional<std::vector<std::string>> tracks{};
    std::string list{};  ///< of `add-terminal`: "remote" or "sub"

    /// The numbers of a place without branches; nothing if it has one.
    [[nodiscard]] std::optional<std::vector<std::size_t>> numbers() const;
};

/// Where a command of buses, messages or packets knows acts of its own.
enum class EditActs { Plain, WithTerminals };

/// The steps of a JSON text, or what is wrong with it, for the user: wrong JSON, an unknown act or
/// member, a step without its members, a value that is no text.
[[nodiscard]] std::variant<std::vector<EditStep>, std::string> parseEditSteps(
    std::string_view json, EditActs acts = EditActs::Plain);
/// The same for what follows `--edit`: the list itself, or the path of a file with it.
[[nodiscard]] std::variant<std::vector<EditStep>, std::string> readEditSteps(
    const std::string& argument, EditActs acts = EditActs::Plain);

}  // namespace kavu::cli
