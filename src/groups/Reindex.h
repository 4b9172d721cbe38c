// Cleans up after a data source was deleted: removes groups that are no longer
// referenced, and closes the gaps in the numbering of the group files.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// A group that no data source, or no multiplex definition, recorder and stream names.
struct UnreferencedGroup {
    std::string file;   ///< in the working store
    std::string title;  ///< "M-3 'Old Radio'"
};

/// Removes source, multiplex and vendor files whose `ID` is not a data source of the G
/// group, then stream files whose `DLN` no group names, then renumbers all groups from 1. A
/// file without a name is kept: it may be referenced. True unless a file operation failed,
/// which is reported. The files of `spared` are not removed, and what they name is named.
bool reindexAllSections(DocumentContext& context, UserInterface* parent,
                        std::span<const UnreferencedGroup> spared = {});

/// The groups that a re-index would remove. A data source named `source` counts as listed, though
/// it may be in no row. False if a file cannot be read, which is reported.
bool findUnreferencedGroups(DocumentContext& context, UserInterface* parent,
                            const std::string& source, std::vector<UnreferencedGroup>& found);

/// Renumbers the files of a group from 1 in the order of their names, and the index in all
/// their commands. Works on copies in the folder "tmp" of the working store; if that cannot
/// be made, the group is left as it is, and the result is true. On a failure, which is
/// reported, the result is false and the copies stay.
bool renumberGroup(DocumentContext& context, UserInterface* parent, char letter,
                   std::string_view wildcard, std::string_view nameFormat);

}  // namespace kavu
