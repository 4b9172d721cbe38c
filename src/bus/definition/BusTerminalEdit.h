// The lists of the terminals that are known of a bus, and the terminals that the user has kept as
// defaults in the settings.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <string>

namespace kavu {

struct DocumentContext;
class UserInterface;

enum class TerminalKind { Remote, Sub };

[[nodiscard]] inline std::vector<Terminal>& terminalsOf(BusTerminals& terminals,
                                                        TerminalKind kind) {
    return kind == TerminalKind::Remote ? terminals.remote : terminals.sub;
}

/// Adds the terminals of a message to the lists of its bus, unless their names or addresses are
/// there.
void noteTerminals(BusDefinition& definition, std::size_t bus, const GroupRow& message);

/// Adds a terminal to a list, or, with a number from 1, changes one. False with 376 (an address),
/// 402 (a semi-colon), 321 (a name or address that is in the list), or a text (no bus, no terminal,
/// a name that is too long).
bool enterTerminal(DocumentContext& context, UserInterface* parent, BusDefinition& definition,
                   std::size_t bus, TerminalKind kind, Terminal terminal, std::size_t number = 0);

/// Asks question 394 and keeps both lists of a bus as the defaults. Without a parent nothing is
/// kept.
bool saveTerminalsAsDefaults(DocumentContext& context, UserInterface* parent,
                             const BusDefinition& definition, std::size_t bus);
/// Adds the defaults that are not in the lists of a bus, after question 393. False if nothing was
/// added, which a note says where there is nothing to add.
bool loadDefaultTerminals(DocumentContext& context, UserInterface* parent,
                          BusDefinition& definition, std::size_t bus);

}  // namespace kavu
