// What a rewrite of a group would lose. An editor rewrites a group file from its model, so a
// command that it neither read nor writes would be lost silently: attributes of a newer
// edition or of another program, rows after the end of a list. The user is asked about them. One
// mechanism for all group, bus and message editors:
//
//     GroupFile file;                         // on loading: all commands of the file, and
//     file.commands().markRead(place);        //   which of them the editor has read
//     text += keptTail(parent, file, text);   // on saving, after what the editor writes
//
// `GroupSource` and `storeGroup` (GroupRecord.h) do this for editors with a vocabulary table.
#pragma once

#include "core/document/GroupFile.h"

#include <string>
#include <string_view>

namespace kavu {

class UserInterface;

/// Lists what would be dropped (`GroupFile::leftovers`) and asks whether to keep it, with Yes as
/// default. Returns the lines to append: all with Yes, none with No, without a parent, or, without
/// a question, if nothing would be dropped.
[[nodiscard]] std::string keptTail(UserInterface* parent, const GroupFile& file,
                                   std::string_view rewritten);

}  // namespace kavu
