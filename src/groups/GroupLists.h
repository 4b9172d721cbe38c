// The rows of the lists of a group: to which list a command belongs that no table knows, and what
// becomes of the commands of a row when the rows of its list get other numbers.
//
// A group file can hold more rows than an editor shows: rows behind the count of their list, and
// rows without the command that makes them one. They are nobody else's: an editor that would write
// their number makes room for them first.
#pragma once

#include "core/document/GroupFile.h"
#include "groups/GroupRecord.h"
#include "vocabulary/Field.h"

#include <deque>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavu {

class GroupLists {
  public:
    struct List {
        Field count{};
        const List* outer = nullptr;  ///< the list that it is in; null for an outermost one
        std::size_t depth = 0;        ///< the place of its rows' number among the indices
        std::vector<Field> fields{};  ///< of its rows, with the counts of the lists in them
    };
    explicit GroupLists(std::span<const Field> table);
    // The lists point to each other.
    GroupLists(const GroupLists&) = delete;
    GroupLists& operator=(const GroupLists&) = delete;

    /// The list of a field without its indices, whatever its case: that of its code in the table,
    /// else the one whose codes share the longest stem with it ("TK1" and "TK9" have "TK", "EV\ID"
    /// and "EV\X" have "EV\", the count "RMM\N" gives "RMM"). Null for a field of no list.
    [[nodiscard]] const List* listOf(std::string_view stem) const;
    [[nodiscard]] const std::deque<List>& all() const { return lists_; }

  private:
    void addStems(std::string_view code, const List& list);

    std::deque<List> lists_;
    std::unordered_map<std::string, const List*> codes_;
    std::unordered_map<std::string, const List*> stems_;
};

/// The numbers under which a group file has commands of the rows of each list.
class RowNumbersInFile {
  public:
    /// `prefix` is the head of the group's codes.
    RowNumbersInFile(const CommandIndex& commands, const GroupLists& lists,
                     std::string_view prefix);

    /// Of the list in a row, given by the numbers of the rows around it.
    [[nodiscard]] const std::set<std::size_t>& of(const GroupLists::List& list,
                                                  const RowNumbers& around) const;

  private:
    std::map<std::pair<const GroupLists::List*, std::array<int, RowNumbers::kMostIndices>>,
             std::set<std::size_t>>
        numbers_;
};

/// Inserts the rows of the file that the record does not have where rows that came later would take
/// their numbers, with the values that the file has: those that came later move behind them. A list
/// that is full stays as it is. `edition` is that of the document.
void makeRoom(GroupRow& record, const GroupFile& kept, const GroupLists& lists,
              std::string_view prefix, int edition);

/// The commands of a file, renumbered as the rows of its lists are now: what was not read of a row
/// follows the row when rows are sorted or deleted, and is deleted with it. Rows that the record
/// does not have stay as they are, or move behind those whose number they have. REQUIRES: rows that
/// come from the file have their `fileRow`.
[[nodiscard]] GroupFile keptAtRows(const GroupFile& kept, const GroupLists& lists,
                                   std::string_view prefix, const GroupRow& record);

/// A record with room for all rows of its file, and the commands at their rows.
struct SettledGroup {
    GroupRow record;
    GroupFile kept;
};
[[nodiscard]] SettledGroup settleRows(const GroupFile& kept, char letter, int index,
                                      std::span<const Field> table, const GroupRow& record,
                                      int edition);

/// Writes a record with its table; see `storeGroup`. Rows of the file that the record does not have
/// keep their numbers, and new rows come behind them.
[[nodiscard]] bool storeTable(DocumentContext& context, UserInterface* parent, char letter,
                              int index, std::span<const Field> table, const GroupRow& record,
                              const GroupFile& kept);

}  // namespace kavu
