// The edit of a database: its records as rows in memory, until they are stored or given up.
#pragma once

#include "mdb/operations/DatabaseWork.h"
#include "mdb/operations/RecordMerge.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// A copy of the database in the working store while it is edited.
inline constexpr std::string_view kDatabaseBackup = "KavuMDBBackup.tmp";

class DatabaseEdit {
  public:
    /// The parts must outlive the object.
    DatabaseEdit(DocumentContext& context, MeasurementDatabase& database)
        : context_(context), database_(database) {}
    DatabaseEdit(const DatabaseEdit&) = delete;
    DatabaseEdit& operator=(const DatabaseEdit&) = delete;
    /// Deletes the backup.
    ~DatabaseEdit();

    /// Reads the database and makes the backup. False without a usable one, which switches the
    /// functions of the database off (message 428), and after a cancel.
    bool begin(UserInterface* parent);

    // --- The rows. Conversion data of type "DIS" is in the quoted form. ------------------------

    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    [[nodiscard]] const PackedRecord& row(std::size_t row) const { return rows_[row].record; }
    /// Each of these is one step to undo. Texts are trimmed of blanks; line breaks may be real.
    void set(std::size_t row, std::size_t index, std::string_view text);
    struct CellChange {
        std::size_t row = 0;  ///< one from `size()` on is a new row
        std::size_t index = 0;
        std::string text{};
    };
    /// All of them are one step to undo. REQUIRES: new rows are without gaps. Returns how many
    /// cells are different now.
    std::size_t setCells(const std::vector<CellChange>& changes);
    /// Returns the place of the new row.
    std::size_t add(const MdbRecord& record);
    /// Copies of rows as new ones, one step; returns the place of the first.
    std::size_t duplicate(const std::vector<std::size_t>& rows);
    /// Asks question 82 ("Are you sure") for one row, and 410 ("all entries") for all of them. True
    /// if they are gone. REQUIRES: the rows rise.
    bool remove(UserInterface* parent, const std::vector<std::size_t>& rows);
    /// Asks its questions and adds sample entries, or puts them in place of all rows.
    bool createSamples(UserInterface* parent);
    [[nodiscard]] bool canUndo() const { return !undo_.empty(); }
    bool undo();
    [[nodiscard]] bool isChanged() const { return isChanged_; }

    // --- Its end. -------------------------------------------------------------------------------

    struct Fault {
        std::size_t row = 0;
        std::size_t index = 0;
    };
    /// What breaks a rule of the edition of the document, in the order of the rows; a string of
    /// discrete values that is no such string is reported.
    [[nodiscard]] std::vector<Fault> check(UserInterface* parent) const;
    /// OK: checks and writes what has changed; all other lines keep their bytes. With a fault
    /// message 427 ("errors found"), and nothing is written. Of a file that another program has
    /// changed the user is asked whether it is read again with the changes put on top: then the
    /// rows are new, and nothing is written yet or left to undo; what both have changed is shown.
    /// False if the edit goes on.
    bool store(UserInterface* parent, std::vector<Fault>* faults = nullptr);
    /// Cancel: the database is as the backup has it.
    bool cancel(UserInterface* parent);

  private:
    using Row = EditedRecord;
    /// How the rows were before a step: these were at these places, and the others are the same.
    struct Step {
        std::vector<std::pair<std::size_t, Row>> replaced{};
        std::vector<std::pair<std::size_t, Row>> removed{};
        std::size_t added = 0;  ///< rows at the end
    };
    void keep(Step step);
    bool isRemovalMeant(UserInterface* parent, std::size_t count) const;
    bool makeBackup(UserInterface* parent);
    bool write(UserInterface* parent);
    std::vector<Row> readRows(MeasurementDatabase& database) const;
    bool isTakeOverWanted(UserInterface* parent) const;
    void takeOver(UserInterface* parent);
    [[nodiscard]] bool opens(MeasurementDatabase& database, UserInterface* parent) const;
    [[nodiscard]] std::string backupPath() const;

    DocumentContext& context_;
    MeasurementDatabase& database_;
    std::vector<Row> rows_;
    std::deque<Step> undo_;
    bool isChanged_ = false;
    bool hasBackup_ = false;
    bool hasWritten_ = false;
    bool isLost_ = false;  ///< the places of the rows are not those of the file any more
};

}  // namespace kavu
