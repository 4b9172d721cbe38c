// The list of data sources in the G group, and the first commands of the groups that a new
// data source gets.
#pragma once

#include "core/IoStatus.h"
#include "groups/DataSources.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// Adds a row behind the others; the count is replaced where it stands. REQUIRES: there are
/// fewer than 99 rows.
[[nodiscard]] IoStatus appendSource(DocumentContext& context, int rows, std::string_view name,
                                    std::string_view type);
/// Takes the whole list out and writes these rows at the end of the file, numbered from 1.
[[nodiscard]] IoStatus rewriteSources(DocumentContext& context, std::span<const DataSource> rows);

/// Replaces values of a group file: `newValue(code, value)` gives the new one for the code
/// without its head, or nothing. A file that is not there is no failure. True if any value
/// was replaced.
bool replaceValues(
    DocumentContext& context, const std::string& path,
    const std::function<std::optional<std::string>(std::string_view code, std::string_view value)>&
        newValue,
    IoStatus& status);

/// The index for a new file of a group, or 0 after message 303 with what it was for.
int indexForNew(DocumentContext& context, UserInterface* parent, char letter,
                std::string_view called);
/// Writes a new group file.
[[nodiscard]] IoStatus writeGroupFile(DocumentContext& context, char letter, int index,
                                      const std::string& text);

/// The document has changed: its flag, the menus and the tree.
void tellChanged(DocumentContext& context, bool update = true);

}  // namespace kavu
