// What a rewrite of a group would lose. An editor rewrites a group file from its model, so a
// command that it neither read nor writes would be lost silently: attributes of a newer
// edition or of another program, rows after the end of a list. The user is asked about them. One
// mechanism for all group, bus and message editors:
//
//     GroupFile file;                         // on loading: all commands of the file, and
//     file.commands().markRead(place);        //   which of them the editor has read
//     text = keptText(parent, file, text);    // on saving: with what the editor does not write
//
// `GroupSource` and `storeGroup` (GroupRecord.h) do this for editors with a vocabulary table.
#pragma once

#include "core/document/GroupFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class UserInterface;

/// Lists commands that would be dropped and asks whether to keep them, with Yes as default. False,
/// without a question, if there are none, and without a parent.
[[nodiscard]] bool askToKeep(UserInterface* parent, const std::vector<std::string>& dropped);

/// Shows, in a note, commands that the new file states in other words; nothing if there are none.
void showReplaced(UserInterface* parent, const std::vector<std::string>& replaced);

/// The whole text of the new file. Lists what would be dropped (`GroupFile::leftovers`) and asks
/// whether to keep it, with Yes as default: with Yes it is at the end, with No, or without a
/// parent, it is not in the text. Nobody is asked if nothing would be dropped. What belongs to no
/// model (see CarriedCommands.h) stays in its place.
[[nodiscard]] std::string keptText(UserInterface* parent, const GroupFile& file,
                                   std::string_view rewritten);

}  // namespace kavu
