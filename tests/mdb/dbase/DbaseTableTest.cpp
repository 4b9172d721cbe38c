#include "core/text/Text.h"
#include "mdb/dbase/DbaseTable.h"
#include "mdb/dbase/TableBytes.h"
#include "support/TestContext.h"

#include <sys/stat.h>
#include <unistd.h>

namespace kavu::test {
namespace {

using Rows = std::vector<std::int64_t>;

constexpr const char* kOpenTitle = "ERROR: Unable To Open Dbase File";
constexpr const char* kWriteTitle = "ERROR: Unable to Write To Dbase File";

const std::vector<TableColumn> kColumns{{"NAME", 6}, {"UNIT", 3}, {"NOTE", 10, 'M'}};

class DbaseTableTest : public testing::Test {
  protected:
    void open(const std::vector<TableColumn>& columns, const std::vector<std::string>& rows) {
        writeFile(file_, tableBytes(columns, rows));
        table_.close();
        ASSERT_TRUE(table_.open(&ui_, file_));
    }
    void openThree() { open(kColumns, {" ALPHA V", "*BETA  A", " ALPH2 kV"}); }
    std::string cell(std::int64_t row, int column) {
        return table_.readCell(&ui_, row, column).value_or("(none)");
    }
    std::string lastBox() const {
        return ui_.boxes.empty() ? "" : ui_.boxes.back().title + ": " + ui_.boxes.back().text;
    }
    Rows found(std::string_view text, bool matchesCase = false, bool isWhole = false) {
        return table_.findRows(0, text, {matchesCase, isWhole}).value_or(Rows{-99});
    }

    TestContext context_;
    TempFolder folder_;
    std::string file_ = folder_ / "t.dbf";
    RecordingInterface ui_;
    DbaseTable table_{context_.messages};
};

// --- open ---------------------------------------------------------------------------------

TEST_F(DbaseTableTest, NothingIsOpenAtFirst) {
    EXPECT_EQ(table_.columnCount(), -1);
    EXPECT_EQ(table_.rowCount(), -1);
    EXPECT_EQ(table_.columnIndexByName("NAME"), -1);
    EXPECT_EQ(cell(0, 0), "(none)");
}

TEST_F(DbaseTableTest, WhatIsWrongWithAFileIsShown) {
    EXPECT_FALSE(table_.open(&ui_, ""));
    EXPECT_EQ(lastBox(), std::string(kOpenTitle) + ": No Dbase filename found.");
    EXPECT_FALSE(table_.open(&ui_, folder_ / "none.dbf"));
    EXPECT_EQ(lastBox(), std::string(kOpenTitle) + ": " + (folder_ / "none.dbf") +
                             "\n\nReason: No such file or directory");
    writeFile(file_, "not a table");
    EXPECT_FALSE(table_.open(&ui_, file_));
    EXPECT_EQ(lastBox(),
              std::string(kOpenTitle) + ": Unable to verify that this is a valid Dbase file");
    writeFile(file_, tableBytes({{"WIDE", 200}}, {}));
    EXPECT_FALSE(table_.open(&ui_, file_));
    EXPECT_EQ(lastBox(), std::string(kOpenTitle) +
                             ": Unable to verify that this is a valid Dbase file\n\nColumn 'WIDE' "
                             "has a length of 200; no more than 127 are supported.");
    EXPECT_FALSE(table_.isOpen());
    EXPECT_FALSE(table_.open(nullptr, file_));
}

TEST_F(DbaseTableTest, OpeningAnOpenTableChangesNothing) {
    openThree();
    writeFile(folder_ / "other.dbf", tableBytes({}, {}));
    EXPECT_TRUE(table_.open(&ui_, folder_ / "other.dbf"));
    EXPECT_EQ(table_.path(), file_);
    EXPECT_EQ(table_.columnCount(), 3);
    table_.close();
    EXPECT_TRUE(table_.open(&ui_, folder_ / "other.dbf"));
    EXPECT_EQ(table_.columnCount(), 0);
}

TEST_F(DbaseTableTest, ATableOfNoColumnsHasEmptyCells) {
    open({}, {" ", "*"});
    EXPECT_EQ(table_.columnCount(), 0);
    EXPECT_EQ(table_.rowCount(), 2);
    EXPECT_EQ(cell(0, 0), "");
    EXPECT_EQ(cell(7, 3), "");
    EXPECT_TRUE(ui_.boxes.empty());
}

// --- cells --------------------------------------------------------------------------------

TEST_F(DbaseTableTest, ReadsCellsWithoutOuterBlanks) {
    openThree();
    EXPECT_EQ(table_.rowCount(), 3);
    EXPECT_EQ(cell(0, 0), "ALPHA");
    EXPECT_EQ(cell(2, 1), "kV");
    EXPECT_EQ(cell(0, 2), "");
    EXPECT_EQ(table_.columnIndexByName("unit"), 1);
    EXPECT_EQ(table_.columnIndexByName("unit "), -1);
    open({{"A", 5}, {"B", 4}}, {std::string("   x  y\0zz", 10)});
    EXPECT_EQ(cell(0, 0), "x");
    EXPECT_EQ(cell(0, 1), "y");
}

TEST_F(DbaseTableTest, ADeletedRowReadsAsUsualWithItsMark) {
    openThree();
    bool isDeleted = false;
    EXPECT_EQ(table_.readCell(&ui_, 1, 0, &isDeleted), "BETA");
    EXPECT_TRUE(isDeleted);
    EXPECT_EQ(table_.readCell(&ui_, 0, 0, &isDeleted), "ALPHA");
    EXPECT_FALSE(isDeleted);
}

TEST_F(DbaseTableTest, ACellThatIsNotThereIsTold) {
    openThree();
    for (const auto& [row, column] :
         {std::pair<std::int64_t, int>{3, 0}, {-1, 0}, {0, 3}, {0, -1}}) {
        ui_.boxes.clear();
        EXPECT_EQ(cell(row, column), "(none)");
        EXPECT_EQ(lastBox(), "ERROR: Unable To Locate Dbase Cell: Invalid Row or Column specified");
    }
}

// --- writing ------------------------------------------------------------------------------

TEST_F(DbaseTableTest, WritesACellInItsPlace) {
    openThree();
    const auto before = readFile(file_);
    std::int64_t row = 2;
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 1, "mA"));
    EXPECT_EQ(cell(2, 1), "mA");
    auto expected = before;
    expected.replace(table_.headerLength() + 2 * 20 + 7, 3, "mA ");
    EXPECT_EQ(readFile(file_), expected);
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 1, ""));
    EXPECT_EQ(cell(2, 1), "");
    EXPECT_TRUE(ui_.boxes.empty());
}

TEST_F(DbaseTableTest, ANewRowStandsOverTheOldEndByteAndIsBlank) {
    openThree();
    auto expected = readFile(file_);
    expected.pop_back();
    expected += "       Pa            \x1A";
    expected.replace(4, 4, littleEndian(4, 4));
    std::int64_t row = DbaseTable::kNewRow;
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 1, "Pa"));
    EXPECT_EQ(row, 3);
    EXPECT_EQ(table_.rowCount(), 4);
    expected.erase(expected.size() - 2, 1);
    EXPECT_EQ(readFile(file_), expected);
    bool isDeleted = true;
    EXPECT_EQ(table_.readCell(&ui_, 3, 1, &isDeleted), "Pa");
    EXPECT_FALSE(isDeleted);
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 0, "NEW"));
    EXPECT_EQ(table_.rowCount(), 4);
    EXPECT_EQ(cell(3, 0), "NEW");
}

TEST_F(DbaseTableTest, ANewRowOfATableThatWasCutShortFollowsItsLastWholeRow) {
    auto bytes = tableBytes({{"A", 3}}, {" one", " two"});
    bytes.resize(bytes.size() - 3);
    writeFile(file_, bytes);
    ASSERT_TRUE(table_.open(&ui_, file_));
    ASSERT_EQ(table_.rowCount(), 1);
    std::int64_t row = DbaseTable::kNewRow;
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 0, "new"));
    EXPECT_EQ(readFile(file_), tableBytes({{"A", 3}}, {" one", " new"}));
}

TEST_F(DbaseTableTest, ALongTextIsCutWhichTheLogSays) {
    openThree();
    std::int64_t row = 0;
    EXPECT_TRUE(table_.writeCell(&ui_, &row, 1, "Volts"));
    EXPECT_EQ(cell(0, 1), "Vol");
    ASSERT_EQ(ui_.logs.size(), 1U);
    EXPECT_EQ(trim(ui_.logs[0].text),
              "WARNING (Row: 0, Col: 1): Field 'UNIT' was truncated to 3 characters.");
    EXPECT_TRUE(table_.writeCell(nullptr, &row, 1, "Amperes"));
    EXPECT_EQ(cell(0, 1), "Amp");
    EXPECT_EQ(ui_.logs.size(), 1U);
}

TEST_F(DbaseTableTest, ArgumentsAreCheckedInTheirOrder) {
    std::int64_t row = 0;
    EXPECT_FALSE(table_.writeCell(&ui_, nullptr, 0, "x"));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": 'Row' cannot be NULL");
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 0, std::nullopt));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": No Text specified");
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 0, "x"));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": Dbase file not open");
    openThree();
    EXPECT_FALSE(table_.writeCell(&ui_, nullptr, 9, std::nullopt));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": 'Row' cannot be NULL");
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 3, std::nullopt));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": Invalid column number specified");
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 2, "x"));
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) +
                             ": Column 'NOTE' is of the type 'M', whose cells are no text.");
    row = 3;
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 0, "x"));
    EXPECT_EQ(lastBox(), "ERROR: Unable To Locate Dbase Cell: Invalid Row or Column specified");
    EXPECT_FALSE(table_.writeCell(nullptr, &row, 0, "x"));
}

TEST_F(DbaseTableTest, AFailedWriteLeavesTheTableOpen) {
    openThree();
    const auto before = readFile(file_);
    const auto was = ::geteuid();
    ASSERT_EQ(::chmod(folder_.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file_.c_str(), 0444), 0);
    ASSERT_TRUE(was != 0 || ::seteuid(65534) == 0);
    std::int64_t row = DbaseTable::kNewRow;
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 0, "x"));
    ASSERT_EQ(::seteuid(was), 0);
    EXPECT_EQ(lastBox(), std::string(kWriteTitle) + ": Could not open Dbase File for writing");
    EXPECT_EQ(row, DbaseTable::kNewRow);
    EXPECT_EQ(table_.rowCount(), 3);
    EXPECT_EQ(cell(0, 0), "ALPHA");
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(DbaseTableTest, WhatAnotherProgramHasChangedIsNotWritten) {
    openThree();
    const auto theirs = tableBytes({{"X", 1}}, {" 1", " 2", " 3", " 4"});
    writeFile(file_, theirs);
    std::int64_t row = 0;
    EXPECT_FALSE(table_.writeCell(&ui_, &row, 0, "x"));
    EXPECT_TRUE(ui_.hasText("It was changed by another program meanwhile"));
    EXPECT_EQ(readFile(file_), theirs);
}

// --- search -------------------------------------------------------------------------------

TEST_F(DbaseTableTest, FindsRowsThatHoldAText) {
    openThree();
    EXPECT_EQ(found("alph"), (Rows{0, 2}));
    EXPECT_EQ(found("alph", true), Rows{});
    EXPECT_EQ(found("ALPHA", true), Rows{0});
    EXPECT_EQ(found("alph", false, true), Rows{});
    EXPECT_EQ(found("alph2", false, true), Rows{2});
    EXPECT_EQ(found("beta"), Rows{});
}

TEST_F(DbaseTableTest, AnEmptyCellEndsTheSearch) {
    open({{"A", 3}}, {" a1", " ", " a2"});
    EXPECT_EQ(found("a"), Rows{0});
    // Also one of a deleted row.
    open({{"A", 3}}, {" a1", "*", " a2"});
    EXPECT_EQ(found("a"), Rows{0});
    open({{"A", 3}}, {" a1", "*b", " a2"});
    EXPECT_EQ(found("a"), (Rows{0, 2}));
}

TEST_F(DbaseTableTest, WhatCannotBeSearchedGivesNothing) {
    EXPECT_FALSE(table_.findRows(0, "a", {}));
    openThree();
    EXPECT_FALSE(table_.findRows(3, "a", {}));
    EXPECT_FALSE(table_.findRows(-1, "a", {}));
    EXPECT_FALSE(table_.findRows(0, "", {}));
    std::int64_t row = 0;
    std::size_t count = 9;
    EXPECT_FALSE(table_.findRow(&ui_, 0, "", {}, row, count));
    EXPECT_EQ(row, -1);
    EXPECT_EQ(count, 0U);
}

TEST_F(DbaseTableTest, OneMatchIsTakenWithoutAQuestion) {
    openThree();
    std::int64_t row = 0;
    std::size_t count = 0;
    EXPECT_TRUE(table_.findRow(&ui_, 0, "alph2", {}, row, count));
    EXPECT_EQ(row, 2);
    EXPECT_EQ(count, 1U);
    EXPECT_TRUE(table_.findRow(&ui_, 0, "none", {}, row, count));
    EXPECT_EQ(row, -1);
    EXPECT_EQ(count, 0U);
    EXPECT_TRUE(ui_.choicePrompts.empty());
}

TEST_F(DbaseTableTest, OfSeveralMatchesTheUserChooses) {
    openThree();
    std::int64_t row = 0;
    std::size_t count = 0;
    ui_.choices = {0, 1, -1, 0};
    ui_.rows = {1, -1};
    EXPECT_TRUE(table_.findRow(&ui_, 0, "alph", {}, row, count));
    EXPECT_EQ(row, 2);
    EXPECT_EQ(count, 2U);
    ASSERT_EQ(ui_.choicePrompts.size(), 1U);
    EXPECT_EQ(ui_.choicePrompts[0].text, "Multiple Entries Found for 'alph' - Select One");
    EXPECT_EQ(ui_.choicePrompts[0].title, "Multiple Entries Found - Select Entry To Be Used");
    ASSERT_EQ(ui_.tablePrompts.size(), 1U);
    EXPECT_EQ(ui_.tablePrompts[0].columns, (std::vector<std::string>{"NAME", "UNIT", "NOTE"}));
    EXPECT_EQ(ui_.tablePrompts[0].rows[1], (std::vector<std::string>{"ALPH2", "kV", ""}));
    // All of them.
    EXPECT_TRUE(table_.findRow(&ui_, 0, "alph", {}, row, count));
    EXPECT_EQ(row, -1);
    // Cancel, in either of the two.
    EXPECT_FALSE(table_.findRow(&ui_, 0, "alph", {}, row, count));
    EXPECT_FALSE(table_.findRow(&ui_, 0, "alph", {}, row, count));
    EXPECT_TRUE(table_.findRow(nullptr, 0, "alph", {}, row, count));
    EXPECT_EQ(row, -1);
    EXPECT_TRUE(ui_.boxes.empty());
}

TEST_F(DbaseTableTest, ASearchStopsAt500MatchesAndSaysSo) {
    open({{"A", 1}}, std::vector<std::string>(600, " a"));
    std::int64_t row = 0;
    std::size_t count = 0;
    ui_.choices = {1};
    EXPECT_TRUE(table_.findRow(&ui_, 0, "a", {}, row, count));
    EXPECT_EQ(count, 500U);
    EXPECT_EQ(lastBox(), "Too Many Matches Found: Only showing the first 500");
}

// --- purge --------------------------------------------------------------------------------

TEST_F(DbaseTableTest, PurgeCopiesTheOtherRowsByteForByte) {
    openThree();
    auto bytes = readFile(file_);
    bytes += "rows beyond the count";
    writeFile(file_, bytes);
    table_.close();
    ASSERT_TRUE(table_.open(&ui_, file_));
    ui_.otherwise = Button::Yes;
    EXPECT_EQ(table_.purgeDeletedRows(&ui_), 1);
    EXPECT_EQ(readFile(file_), tableBytes(kColumns, {" ALPHA V", " ALPH2 kV"}));
    EXPECT_EQ(table_.rowCount(), 2);
    EXPECT_EQ(cell(1, 0), "ALPH2");
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].text,
              "This Dbase File Has Rows Marked As 'deleted'\n\n"
              "Should I permanently purge them?");
    EXPECT_EQ(ui_.boxes[0].name, "purge");
    EXPECT_EQ(ui_.progressTexts.front(), "Processing Row 1 of 3");
    EXPECT_EQ(ui_.progressTexts.back(), "Re-writing Database");
    EXPECT_EQ(ui_.progressOpened, ui_.progressClosed);
}

TEST_F(DbaseTableTest, PurgeWithoutDeletedRowsChangesNothing) {
    open(kColumns, {" A", " B"});
    const auto before = readFile(file_) + "x";
    writeFile(file_, before);
    EXPECT_EQ(table_.purgeDeletedRows(&ui_), 0);
    EXPECT_EQ(readFile(file_), before);
    EXPECT_TRUE(ui_.boxes.empty());
}

TEST_F(DbaseTableTest, PurgeAsksAtTheFirstDeletedRowAndNoStopsIt) {
    openThree();
    const auto before = readFile(file_);
    ui_.otherwise = Button::No;
    EXPECT_EQ(table_.purgeDeletedRows(&ui_), 0);
    EXPECT_EQ(ui_.polls, 6);  // two rows of three cells
    EXPECT_EQ(table_.purgeDeletedRows(nullptr), 0);
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(DbaseTableTest, PurgePollsAtEachCellAndACancelKeepsTheFile) {
    openThree();
    const auto before = readFile(file_);
    ui_.otherwise = Button::Yes;
    ui_.cancelAtPoll = 8;
    EXPECT_EQ(table_.purgeDeletedRows(&ui_), 0);
    EXPECT_EQ(ui_.polls, 8);
    EXPECT_EQ(readFile(file_), before);
    EXPECT_EQ(cell(1, 0), "BETA");
}

TEST_F(DbaseTableTest, PurgeShowsEvery25thRow) {
    open({{"A", 1}}, std::vector<std::string>(51, " a"));
    EXPECT_EQ(table_.purgeDeletedRows(&ui_), 0);
    EXPECT_EQ(ui_.progressTexts,
              (std::vector<std::string>{"Processing Row 1 of 51", "Processing Row 26 of 51",
                                        "Processing Row 51 of 51"}));
}

TEST_F(DbaseTableTest, PurgeDoesNotOverwriteWhatAnotherProgramHasChanged) {
    openThree();
    const auto theirs = readFile(file_) + "y";
    writeFile(file_, theirs);
    ui_.otherwise = Button::Yes;
    EXPECT_FALSE(table_.purgeDeletedRows(&ui_));
    EXPECT_TRUE(ui_.hasText("It was changed by another program meanwhile"));
    EXPECT_EQ(readFile(file_), theirs);
    table_.close();
    EXPECT_FALSE(table_.purgeDeletedRows(&ui_));
}

// --- tables of others ---------------------------------------------------------------------

TEST_F(DbaseTableTest, ReadsTablesOfOtherPrograms) {
    const std::string folder = KAVU_SOURCE_DIR "/tests/data/dbase/";
    ASSERT_TRUE(table_.open(&ui_, folder + "gdal.dbf"));
    EXPECT_EQ(table_.rowCount(), 3);
    ASSERT_EQ(table_.columnCount(), 4);
    EXPECT_EQ(cell(1, 0), "\xC3\x96ldruck");
    EXPECT_EQ(cell(1, 2), "-12.250000000000000");
    EXPECT_EQ(cell(1, table_.columnIndexByName("made")), "20111231");
    EXPECT_EQ(cell(2, 1), "");
    table_.close();
    ASSERT_TRUE(table_.open(&ui_, folder + "r-foreign.dbf"));
    EXPECT_EQ(table_.rowCount(), 3);
    ASSERT_EQ(table_.columnCount(), 6);
    EXPECT_EQ(table_.columns()[4].type, 'L');
    EXPECT_EQ(cell(0, 0), "Altitude");
    EXPECT_EQ(cell(0, 4), "T");
    EXPECT_EQ(cell(2, 1), "");
    EXPECT_TRUE(ui_.boxes.empty());
}

}  // namespace
}  // namespace kavu::test
