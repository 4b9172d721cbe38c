// The general information group: the head of a document, with its points of contact and its
// list of data sources. Between edits its group file is the truth.
#pragma once

#include "groups/GroupRecord.h"

#include <optional>
#include <string>
#include <string_view>

namespace kavu {

/// A group while it is edited.
struct EditedGroup {
    char letter = 'G';
    int index = 0;  ///< 1 to 99; unused for G
    GroupRow record{};
    GroupFile kept{};
    /// The group of a data source that has no file yet. OK writes it, edited or not.
    bool isNew = false;
};

/// Reads the group. A missing file is reported by message 145 ("not found") and leaves the
/// fields empty. Both lists are sorted by their first column. Nothing if the user has
/// cancelled, or if the file cannot be read, which has been reported.
[[nodiscard]] std::optional<EditedGroup> readGeneral(DocumentContext& context,
                                                     UserInterface* parent);

/// The text of the group file as `storeGeneral` writes it for rows of the record alone,
/// without the kept commands.
[[nodiscard]] std::string generalText(const EditedGroup& group, int edition);
/// Writes the group file; see `storeTable`.
[[nodiscard]] bool storeGeneral(DocumentContext& context, UserInterface* parent,
                                const EditedGroup& group);

/// True if a data source of this name has a T, an R or an M group: its name is then used
/// elsewhere and must be changed there, too.
[[nodiscard]] bool isExistingSource(DocumentContext& context, UserInterface* parent,
                                    const std::string& name);
/// What becomes of a name that was changed in the list of data sources.
enum class NameChange {
    Plain,   ///< only the row changes
    Rename,  ///< the user wants it changed everywhere
    Refused  ///< the row stays as it was
};
/// Asks with message 299 ("about to rename") if an existing data source gets another name that
/// is not empty. Without a parent nothing is renamed.
[[nodiscard]] NameChange askNameChange(DocumentContext& context, UserInterface* parent,
                                       const std::string& oldName, const std::string& newName);

}  // namespace kavu
