// Unpacks the bus group that is being edited, "1553.TMP", into a definition and into the two
// profile files "1553.INI" and "1553Term.ini".
#pragma once

#include "bus/definition/BusDefinition.h"

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Reads the group into `definition`, whose link and index are set, and makes the profile files. A
/// missing group is success: the definition is then empty. False if the user has cancelled, or a
/// file could not be read or written, which is reported; then there are no profile files.
[[nodiscard]] bool unpackBusGroup(DocumentContext& context, UserInterface* parent,
                                  BusDefinition& definition);

/// Deletes the profile files: an editor that is left with Cancel leaves the group as it was.
void discardBusProfiles(DocumentContext& context);

}  // namespace kavu
