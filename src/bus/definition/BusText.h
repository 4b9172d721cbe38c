// A bus definition as commands, in the order of the file.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <functional>
#include <string>
#include <string_view>

namespace kavu {

class UserInterface;

/// What takes the commands one by one: the code without its head, and the value in stored form,
/// which is not empty.
using BusCommandSink = std::function<void(std::string_view code, std::string_view value)>;

/// Calls `write` for every command of the definition, and `omit` for values that it has and that a
/// file of its edition and of this type of bus does not have. The interface, which may be null,
/// shows how far it is.
void eachBusCommand(const BusDefinition& definition, UserInterface* parent,
                    const BusCommandSink& write, const BusCommandSink& omit);

/// The commands as the text of a group file, with what was omitted, each a whole command.
struct BusText {
    std::string text{};
    std::vector<std::string> omitted{};
};
[[nodiscard]] BusText busText(const BusDefinition& definition, UserInterface* parent);

}  // namespace kavu
