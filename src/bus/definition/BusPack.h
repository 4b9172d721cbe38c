// Packs a bus definition: writes the group that is being edited, "1553.TMP", from it.
#pragma once

#include "bus/definition/BusDefinition.h"

#include <string>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The whole text of the group. Lists what would be dropped (commands that no page reads, labels
/// of a bus that is no ARINC 429 bus any more) and asks whether to keep it, with Yes as default:
/// with Yes it is at the end, but for repetitions, which stand in front so that what was edited
/// holds, and with No, or without a parent, it is not in the text.
[[nodiscard]] std::string packedBusText(UserInterface* parent, const BusDefinition& definition);

/// Writes the group and deletes the profile files. False with message 322 ("Unable to open") if the
/// group could not be written, or 77 ("Unable to allocate memory"); the former one is then as it
/// was.
[[nodiscard]] bool packBusGroup(DocumentContext& context, UserInterface* parent,
                                const BusDefinition& definition);

}  // namespace kavu
