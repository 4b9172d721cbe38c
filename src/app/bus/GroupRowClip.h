// Rows of a group, with all rows in them, as rows of the clipboard and back.
#pragma once

#include "app/framework/TableClipboard.h"
#include "groups/GroupRecord.h"

#include <optional>
#include <span>

namespace kavu {

/// One row for each row of the group: how deep it is, the count of its list (none of the outermost
/// one), and codes and values in turn.
[[nodiscard]] TableRows clipOfRow(const GroupRow& row);
/// The row of such a table; nothing if it is not one, or has rows deeper in each other than groups
/// have. It may come from anywhere: what the codes and values are is not looked at.
[[nodiscard]] std::optional<GroupRow> rowOfClip(std::span<const std::vector<std::string>> clip);

}  // namespace kavu
