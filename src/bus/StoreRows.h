// How the rows of message data and packets are written to their group.
#pragma once

#include "vocabulary/Field.h"

#include <span>

namespace kavu {

struct DocumentContext;
struct GroupRow;
class GroupFile;
class UserInterface;

/// Writes a record with its table to an S group. What was not read of a row goes where the row is
/// now; what stands behind a count, or is no row for want of a name, stays out of the lists, and
/// moves behind them where a row has its number now. All of that is asked about. False if the file
/// could not be written, which is reported.
[[nodiscard]] bool storeRows(DocumentContext& context, UserInterface* parent, int index,
                             std::span<const Field> table, const GroupRow& record,
                             const GroupFile& kept);

}  // namespace kavu
