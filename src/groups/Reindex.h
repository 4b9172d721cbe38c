// After a data source was deleted: what nothing refers to any more is removed, and the
// gaps in the numbering of the group files are closed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Removes source, multiplex and vendor files whose `ID` is no data source of the G group,
/// then stream files whose `DLN` nobody names, then numbers all groups anew from 1. A file
/// without a name is kept: it can not be said to be unreferenced. True unless a file
/// operation failed, which is reported. `removed`, if given, gets the name of each file that
/// was removed.
bool reindexAllSections(DocumentContext& context, UserInterface* parent,
                        std::vector<std::string>* removed = nullptr);

/// Numbers the files of a group anew from 1 in the order of their names, with the index in
/// all their commands. Works on copies in the folder "tmp" of the working store; if that
/// can not be made, the group is left as it is, and the result is true. On a failure, which
/// is reported, the result is false and the copies stay.
bool renumberGroup(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view wildcard, std::string_view nameFormat);

}  // namespace kavu
