// The common model of the attribute groups. A group file is read in one pass into a record
// as a vocabulary table describes it, a sheet or the command line changes the values of the
// record, and the record is written in the order of the table.
//
//     GroupSource source(context, parent, 'T', 3);      // reads "[kavu]DSRCE.T03"
//     GroupRow record;
//     if (!source.readTable(tFields(), record)) ...      // the user has cancelled
//     record.values["RF1"] = "2200.5";
//     record.lists["SCO\\N"].push_back({{{"SCO1-n", "1"}}, {}});
//     storeTable(context, parent, 'T', 3, tFields(), record, source.kept());  // GroupLists.h
//
// A group whose rows do not follow from a table alone (the tracks of a recorder) reads and
// writes the parts of its table in turn, and the fields between them with `value` and `write`.
#pragma once

#include "core/command/CommandPath.h"
#include "core/document/GroupFile.h"
#include "core/files/IoStatus.h"
#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// The values of a group, or of one row of a list: by the code of the table ("RF1", "SCO1-n"),
/// in the bytes of the group file. `lists` has the rows by the code of their count; an empty
/// list has a count of 0 in the file.
struct GroupRow {
    FieldValues values{};
    std::map<std::string, std::vector<GroupRow>, std::less<>> lists{};
    /// The number of the row in the file; 0 for a new one. It stays with the row when rows
    /// are sorted, see `keptAtRows` of GroupLists.h.
    std::size_t fileRow = 0;
    /// The numbers of the file that were read as rows of a list, by the code of their count.
    std::map<std::string, std::set<std::size_t>, std::less<>> fileRows{};

    [[nodiscard]] std::string_view value(std::string_view code) const;
    /// An empty value removes it.
    void set(std::string_view code, std::string_view value);
    /// The rows of the list of a count; empty if there are none.
    [[nodiscard]] std::span<const GroupRow> rows(std::string_view count) const;
    /// Ignores where rows came from.
    bool operator==(const GroupRow& other) const {
        return values == other.values && lists == other.lists;
    }
};

/// Progress while a table is read: when the field of this code (of a count: with its rows) has
/// been read, the bar shows the percentage and the user may cancel. An empty code: at the start.
struct LoadStep {
    std::string_view after{};
    double percent = 0;
};

/// A group file, read once. Look-ups work as those of `CommandIndex`: the first command of a
/// code at or after the one found last, wrapping once around the file.
class GroupSource {
  public:
    /// Reads the file of the group; `index` is ignored for G and H.
    GroupSource(DocumentContext& context, UserInterface* parent, char letter, int index);

    /// A failure for a file that is missing (`isMissing`) or cannot be read.
    [[nodiscard]] const IoStatus& status() const { return status_; }

    /// The value of a field, read under its `codeRead`. A value over the limit of the edition
    /// is cut with a message; a missing one is the `missing` of the field, or empty.
    [[nodiscard]] std::string value(const Field& field, RowNumbers at = {});
    /// The same; empty if the command is missing.
    [[nodiscard]] std::string valueIfThere(const Field& field, RowNumbers at = {});
    /// The value in its full length, without marking the command as read.
    [[nodiscard]] std::string peek(const Field& field, RowNumbers at = {});
    /// A count, clamped to the rows that its list can have.
    [[nodiscard]] std::size_t count(const Field& field, RowNumbers at = {});
    /// Reads all fields that the edition knows, with their lists. A choice outside lists that
    /// is not an entry of its field is left unselected: its command counts as not read. In a
    /// list the value stays as it is. False if the user has cancelled, which is checked at
    /// each step and before each row.
    [[nodiscard]] bool readTable(std::span<const Field> table, GroupRow& record,
                                 std::span<const LoadStep> steps = {});
    /// Reads the fields of one row; `fields` are those of its list, without nested lists.
    void readRow(std::span<const Field> fields, GroupRow& row, RowNumbers at);

    /// All commands of the file, with marks for those that were read.
    [[nodiscard]] GroupFile& kept() { return kept_; }

  private:
    using Found = CommandIndex::Found;
    struct Plan;
    /// The code that is looked up for a field.
    [[nodiscard]] std::string codeOf(const Field& field, RowNumbers at) const;
    [[nodiscard]] std::string taken(const Field& field, RowNumbers at, const Found& found);
    void readChoice(const Field& field, GroupRow& row);
    [[nodiscard]] bool readLevel(const Plan& plan, std::string_view list, GroupRow& row,
                                 RowNumbers at);
    [[nodiscard]] bool readRows(const Plan& plan, const Field& count, GroupRow& row, RowNumbers at);
    [[nodiscard]] bool step(const Plan& plan, std::string_view after);

    DocumentContext& context_;
    UserInterface* parent_;
    std::string prefix_;
    IoStatus status_;
    GroupFile kept_;
};

/// Composes the new text of a group file.
class GroupWriter {
  public:
    GroupWriter(char letter, int index) : prefix_(groupHead(letter, index)) {}

    /// Writes nothing for an empty value. Line breaks are stored as their two bytes; trailing
    /// blanks are removed.
    void write(const Field& field, std::string_view value, RowNumbers at = {});
    /// Writes the number of rows; 0 only if the field says so.
    void writeCount(const Field& field, std::size_t rows, RowNumbers at = {});
    /// Writes all fields that the edition knows in the order of the table, each count followed
    /// by its rows.
    void writeTable(std::span<const Field> table, const GroupRow& record, int edition);

    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    void writeLevel(std::span<const Field> known, std::string_view list, const GroupRow& row,
                    RowNumbers at);

    std::string prefix_;
    std::string text_;
};

/// Replaces the group file by the text. Asks about the commands that would be dropped, and
/// appends those to be kept. The document then counts as changed. False if it could not be
/// written, which has been reported; the old file is still there.
[[nodiscard]] bool storeGroup(DocumentContext& context, UserInterface* parent, char letter,
                              int index, std::string_view text, const GroupFile& kept);

}  // namespace kavu
