// The list of data sources in the G group, and the first commands of the groups that a new
// data source gets.
#pragma once

#include "core/files/IoStatus.h"
#include "groups/DataSources.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// Makes room for a new row of the list: what the file has under its number is behind the count,
/// and may be the only row that names a group. It moves to a number that no row has.
class RoomForSource {
  public:
    [[nodiscard]] IoStatus find(DocumentContext& context, int row);
    /// True for the code of a command that has to move.
    [[nodiscard]] bool isInTheWay(std::string_view code) const;
    [[nodiscard]] std::string moved(const std::string& command) const;

  private:
    std::int64_t row_ = 0;
    std::int64_t unused_ = 0;
};

/// Adds a row after the counted ones; the count is replaced in place. REQUIRES: there are
/// fewer than 99 rows.
[[nodiscard]] IoStatus appendSource(DocumentContext& context, int rows, std::string_view name,
                                    std::string_view type);
/// Adds the rows of the list outside 1 to `counted`: a count that is missing or too small
/// hides them, but what they name exists.
[[nodiscard]] IoStatus readUncountedSources(DocumentContext& context, int counted,
                                            std::vector<DataSource>& rows);
/// Removes the whole list and writes these rows at the end of the file, numbered from 1; the
/// count is that of `rows`, and the others follow uncounted.
[[nodiscard]] IoStatus rewriteSources(DocumentContext& context, std::span<const DataSource> rows,
                                      std::span<const DataSource> uncounted);

/// The index for a new file of a group, or 0 after message 303 ("Unable to create new"),
/// which names `called`.
int indexForNew(DocumentContext& context, UserInterface* parent, char letter,
                std::string_view called);
/// Writes a new group file.
[[nodiscard]] IoStatus writeGroupFile(DocumentContext& context, char letter, int index,
                                      const std::string& text);

/// Releases the stream in memory: after an operation on sources and links it may have another
/// name or number, or no files.
void releaseStream(DocumentContext& context);

}  // namespace kavu
