// One open table in the dBase file format: cells of text in rows of a fixed length.
//
// Rows and columns count from 0. A row that is marked as deleted is still there, and reads as any
// other, until the table is purged.
#pragma once

#include "core/files/FileIo.h"
#include "mdb/dbase/DbaseHeader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class Messages;
class UserInterface;

class DbaseTable {
  public:
    /// A search gives no more rows.
    static constexpr std::size_t kMostMatches = 500;
    /// A larger table is not purged.
    static constexpr std::uint64_t kMostPurgedBytes = std::uint64_t{1} << 30;
    /// In place of a row: one more at the end of the table.
    static constexpr std::int64_t kNewRow = -1;

    /// The messages must outlive the object.
    explicit DbaseTable(const Messages& messages) : messages_(messages) {}
    DbaseTable(const DbaseTable&) = delete;
    DbaseTable& operator=(const DbaseTable&) = delete;

    /// Opens a table; while one is open this changes nothing. What is wrong with the file is shown
    /// in a box: it has no name, cannot be read, or is no table.
    bool open(UserInterface* parent, const std::string& path);
    void close();
    [[nodiscard]] bool isOpen() const { return isOpen_; }
    [[nodiscard]] const std::string& path() const { return path_; }

    /// -1 while no table is open, as is the number of rows.
    [[nodiscard]] int columnCount() const;
    [[nodiscard]] std::int64_t rowCount() const;
    [[nodiscard]] std::size_t rowLength() const { return header_.rowLength; }
    [[nodiscard]] std::size_t headerLength() const { return header_.headerLength; }
    [[nodiscard]] const std::vector<DbaseColumn>& columns() const { return header_.columns; }
    /// The column of a name, in any case, or -1.
    [[nodiscard]] int columnIndexByName(std::string_view name) const;

    /// The text of a cell without outer blanks. Nothing for a cell that is not there, which a box
    /// says; in a table without columns every cell is empty. `isDeleted`, if given, says whether
    /// the row is marked.
    [[nodiscard]] std::optional<std::string> readCell(UserInterface* parent, std::int64_t row,
                                                      int column, bool* isDeleted = nullptr);

    /// Writes a cell, padded with blanks; a longer text is cut, which is logged. `row` is
    /// `kNewRow` to add a row, and then becomes its number. The file is open for writing only
    /// meanwhile. What is missing or failed is shown in a box. Columns whose cells are no text
    /// are refused.
    bool writeCell(UserInterface* parent, std::int64_t* row, int column,
                   std::optional<std::string_view> text);

    struct Search {
        bool matchesCase = false;  ///< else letters of ASCII match in any case
        bool isWhole = false;      ///< the value is the text; else it holds it
    };
    /// The rows whose cell matches, at most `kMostMatches`. Rows marked as deleted do not match.
    /// The first empty cell of the column ends the search. Nothing for a column that is not there,
    /// an empty text, or no table.
    [[nodiscard]] std::optional<std::vector<std::int64_t>> findRows(int column,
                                                                    std::string_view text,
                                                                    Search search);
    /// The same for one row: of several the user chooses one, or all. `row` becomes its number, -1
    /// for none or all; `count` the number of matches. False if nothing can be found (see
    /// `findRows`) or the user has cancelled. Without a parent of several all are taken.
    bool findRow(UserInterface* parent, int column, std::string_view text, Search search,
                 std::int64_t& row, std::size_t& count);

    /// Removes the rows that are marked as deleted, after question "purge", whose answer without
    /// a parent is No. The table is replaced as a whole or not at all. Gives the number of rows
    /// that went, 0 if the user did not want it or has cancelled; nothing if it failed, which a
    /// box says.
    std::optional<std::int64_t> purgeDeletedRows(UserInterface* parent);

  private:
    bool readRow(std::int64_t row);
    [[nodiscard]] std::uint64_t offsetOf(std::int64_t row) const;
    [[nodiscard]] std::string cellOf(int column) const;
    [[nodiscard]] bool isMarked() const;
    [[nodiscard]] bool checkWrite(UserInterface* parent, const std::int64_t* row, int column,
                                  bool hasText) const;
    [[nodiscard]] std::string padded(UserInterface* parent, std::int64_t row, int column,
                                     std::string_view text) const;
    IoStatus writePadded(std::int64_t row, int column, const std::string& cell);
    bool chooseRow(UserInterface* parent, std::string_view text,
                   const std::vector<std::int64_t>& rows, std::int64_t& row);
    std::optional<std::int64_t> countPurged(UserInterface* parent);
    std::optional<std::string> keptBytes(std::int64_t kept);
    bool wantsPurge(UserInterface* parent, bool& isAsked) const;

    const Messages& messages_;
    bool isOpen_ = false;
    std::string path_;
    std::string stamp_;  ///< of the file as it was opened, or written here
    DbaseHeader header_;
    ByteSource source_;
    std::int64_t cachedRow_ = -1;
    std::string rowBytes_;
};

/// Reads up to `count` bytes from the position of a source.
[[nodiscard]] std::string takeBytes(ByteSource& source, std::size_t count);

}  // namespace kavu
