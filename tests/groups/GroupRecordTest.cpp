#include "core/document/GroupFiles.h"
#include "groups/GroupLists.h"
#include "groups/GroupScan.h"
#include "support/TestContext.h"

#include <array>

namespace kavu {
namespace {

using test::TestContext;

constexpr auto kLevels = std::to_array<Choice>({
    {.value = "HI", .text = "HIGH"},
    {.value = "LO", .text = "LOW"},
    {.value = "AUTO", .text = "AUTO", .firstEdition = 2009},
});

/// A group as none of the real ones, with everything that a table can say.
constexpr auto kTable = std::to_array<Field>({
    {.code = "ID", .limit = 32},
    {.code = "A1", .label = "First:", .limit = 4, .limit1996 = 2},
    {.code = "LV", .label = "Level:", .limit = 4, .kind = FieldKind::Choice, .choices = kLevels},
    {.code = "EV\\N", .kind = FieldKind::Count, .rows = 3},
    {.code = "EV\\ID-n", .limit = 8, .list = "EV\\N", .missing = "ID%d"},
    {.code = "EV\\T-n", .limit = 4, .kind = FieldKind::Choice, .choices = kLevels, .list = "EV\\N"},
    {.code = "EV\\PM\\N-n", .kind = FieldKind::Count, .list = "EV\\N", .rows = 2},
    {.code = "EV\\PM\\MN-n-m", .limit = 8, .list = "EV\\PM\\N-n"},
    {.code = "EV\\PM\\PRE-n-m", .limit = 8, .list = "EV\\PM\\N-n"},
    {.code = "X4-n", .codeRead = "X42-n", .list = "X\\N"},
    {.code = "X\\N", .kind = FieldKind::Count, .rows = 9, .writesZero = true},
    {.code = "NEW", .label = "New:", .firstEdition = 2009},
    {.code = "A1", .element = "Elsewhere", .bridgeOnly = true},
    {.code = "COM", .kind = FieldKind::Comment},
});

class GroupRecordTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('T', 3), bytes); }
    GroupRow read() {
        GroupRow record;
        EXPECT_TRUE(source().readTable(kTable, record));
        return record;
    }
    GroupSource& source() {
        source_ = std::make_unique<GroupSource>(t.context, &t.ui, 'T', 3);
        return *source_;
    }
    std::string store(const GroupRow& record, UserInterface* parent) {
        GroupWriter writer('T', 3);
        writer.writeTable(kTable, record, t.document.version);
        EXPECT_TRUE(storeGroup(t.context, parent, 'T', 3, writer.text(), source_->kept()));
        return t.read(groupFile('T', 3));
    }

    TestContext t;
    std::unique_ptr<GroupSource> source_;
};

TEST(CodeOfARow, TakesItsNumbers) {
    EXPECT_EQ(fieldCode("PN", {}), "PN");
    EXPECT_EQ(fieldCode("POC1-n", {12, 0}), "POC1-12");
    EXPECT_EQ(fieldCode("EV\\PM\\MN-n-m", {2, 34}), "EV\\PM\\MN-2-34");
    EXPECT_EQ(groupHead('G', 7), "G\\");
    EXPECT_EQ(groupHead('T', 7), "T-7\\");
}

TEST_F(GroupRecordTest, AFileInTheOrderOfItsTableIsTheSameAfterIt) {
    const std::string bytes =
        "T-3\\ID:Src;\r\nT-3\\A1:one;\r\nT-3\\LV:LOW;\r\nT-3\\EV\\N:2;\r\nT-3\\EV\\ID-1:a;\r\n"
        "T-3\\EV\\T-1:HI;\r\nT-3\\EV\\PM\\N-1:2;\r\nT-3\\EV\\PM\\MN-1-1:m;\r\n"
        "T-3\\EV\\PM\\PRE-1-1:5;\r\nT-3\\EV\\PM\\MN-1-2:o;\r\nT-3\\EV\\ID-2:b;\r\n"
        "T-3\\X\\N:0;\r\nT-3\\NEW:n;\r\nT-3\\COM:two\x14\x15lines;\r\n";
    put(bytes);
    const auto record = read();
    EXPECT_EQ(record.value("A1"), "one");
    ASSERT_EQ(record.rows("EV\\N").size(), 2u);
    const auto& first = record.rows("EV\\N")[0];
    EXPECT_EQ(first.value("EV\\ID-n"), "a");
    ASSERT_EQ(first.rows("EV\\PM\\N-n").size(), 2u);
    EXPECT_EQ(first.rows("EV\\PM\\N-n")[0].value("EV\\PM\\PRE-n-m"), "5");
    EXPECT_EQ(store(record, &t.ui), bytes);
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(t.document.changed);
}

TEST_F(GroupRecordTest, AnyOrderAndCaseIsRead) {
    put("t-3\\ev\\id-2:b;T-3\\EV\\N:2;\nT-3\\COM:c;\nT-3\\a1:x;");
    const auto record = read();
    EXPECT_EQ(record.value("A1"), "x");
    EXPECT_EQ(record.value("COM"), "c");
    EXPECT_EQ(record.rows("EV\\N")[1].value("EV\\ID-n"), "b");
}

TEST_F(GroupRecordTest, AMissingCommandStandsForTheDefaultOfItsField) {
    put("T-3\\EV\\N:2;T-3\\EV\\ID-1:a;");
    const auto rows = read().lists["EV\\N"];
    EXPECT_EQ(rows[0].value("EV\\ID-n"), "a");
    EXPECT_EQ(rows[1].value("EV\\ID-n"), "ID2");
}

TEST_F(GroupRecordTest, ACountIsClampedToItsList) {
    for (const char* count : {"5", "4294967299", "99999999999999999999999"}) {
        put(std::string("T-3\\EV\\N:") + count + ";T-3\\EV\\PM\\N-2:3;");
        const auto record = read();
        ASSERT_EQ(record.rows("EV\\N").size(), 3u) << count;
        EXPECT_EQ(record.rows("EV\\N")[1].rows("EV\\PM\\N-n").size(), 2u);
    }
    for (const char* count : {"-1", "0", "many"}) {
        put(std::string("T-3\\EV\\N:") + count + ";");
        EXPECT_TRUE(read().rows("EV\\N").empty()) << count;
    }
}

TEST_F(GroupRecordTest, ACountOfZeroStaysIfItWasThere) {
    put("T-3\\EV\\N:0;\r\n");
    EXPECT_EQ(store(read(), &t.ui), "T-3\\EV\\N:0;\r\nT-3\\X\\N:0;\r\n");
    put("T-3\\A1:x;\r\n");
    EXPECT_EQ(store(read(), &t.ui), "T-3\\A1:x;\r\nT-3\\X\\N:0;\r\n");
}

TEST_F(GroupRecordTest, RowsWithoutACountAreNone) {
    put("T-3\\EV\\ID-1:a;");
    EXPECT_TRUE(read().rows("EV\\N").empty());
}

TEST_F(GroupRecordTest, AValueThatIsTooLongIsCutAndTold) {
    put("T-3\\A1:abcdef;");
    EXPECT_EQ(read().value("A1"), "abcd");
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].title, "ERROR Parsing TMATS File");
    EXPECT_EQ(t.ui.boxes[0].text,
              "The TMATS command 'T-3\\A1:abcdef;'\nwas too long. This field can only be 4 "
              "characters long.\n\nThis field has been truncated.");
    t.document.version = 1996;
    EXPECT_EQ(read().value("A1"), "ab");
}

TEST_F(GroupRecordTest, AnotherEditionReadsAndWritesWhatItKnows) {
    t.document.version = 2007;
    put("T-3\\NEW:n;\r\nT-3\\A1:x;\r\n");
    const auto record = read();
    EXPECT_EQ(record.value("NEW"), "");
    EXPECT_EQ(store(record, nullptr), "T-3\\A1:x;\r\nT-3\\X\\N:0;\r\n");
}

TEST_F(GroupRecordTest, AChoiceOfNoEntryIsLeftUnselected) {
    put("T-3\\LV:MED;\r\nT-3\\EV\\N:1;\r\nT-3\\EV\\T-1:MED;\r\n");
    const auto record = read();
    EXPECT_EQ(record.value("LV"), "");
    EXPECT_EQ(record.rows("EV\\N")[0].value("EV\\T-n"), "MED");
    EXPECT_EQ(store(record, nullptr),
              "T-3\\EV\\N:1;\r\nT-3\\EV\\ID-1:ID1;\r\nT-3\\EV\\T-1:MED;\r\nT-3\\X\\N:0;\r\n");
}

TEST_F(GroupRecordTest, WhatAChoiceCanNotShowIsAskedAbout) {
    put("T-3\\LV:MED;\r\n");
    t.ui.otherwise = Button::Yes;
    const auto record = read();
    EXPECT_EQ(store(record, &t.ui), "T-3\\X\\N:0;\r\nT-3\\LV:MED;\r\n");
    auto edited = read();
    edited.set("LV", "HI");
    EXPECT_EQ(store(edited, &t.ui), "T-3\\LV:HI;\r\nT-3\\X\\N:0;\r\n");
    EXPECT_EQ(t.ui.boxes.size(), 1u);
}

TEST_F(GroupRecordTest, AFieldMayBeReadUnderAnotherCode) {
    put("T-3\\X\\N:1;\r\nT-3\\X42-1:tel;\r\n");
    EXPECT_EQ(store(read(), &t.ui), "T-3\\X\\N:1;\r\nT-3\\X4-1:tel;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GroupRecordTest, TheWriterStoresLineBreaksAndDropsBlanksAtTheEnd) {
    GroupWriter writer('T', 3);
    writer.write(kTable[1], "a\r\nb  ");
    writer.write(kTable[1], "   ");
    writer.write(kTable[1], "");
    EXPECT_EQ(writer.text(),
              "T-3\\A1:a\x14\x15"
              "b;\r\n");
}

TEST_F(GroupRecordTest, MoreRowsThanAListCanHaveAreNotWritten) {
    GroupRow record;
    for (int i = 0; i < 5; ++i) {
        record.lists["EV\\N"].emplace_back().set("EV\\ID-n", std::to_string(i));
    }
    GroupWriter writer('T', 3);
    writer.writeTable(kTable, record, 2011);
    EXPECT_NE(writer.text().find("EV\\N:3;"), std::string::npos);
    EXPECT_EQ(writer.text().find("EV\\ID-4"), std::string::npos);
}

TEST_F(GroupRecordTest, TheBarFollowsTheStepsAndCancelEndsTheLoad) {
    constexpr auto steps = std::to_array<LoadStep>({{{}, 10}, {"LV", 40}, {"EV\\N", 80}});
    put("T-3\\EV\\N:2;\r\nT-3\\COM:c;\r\n");
    GroupRow record;
    EXPECT_TRUE(source().readTable(kTable, record, steps));
    EXPECT_EQ(t.ui.bars, (std::vector<double>{10, 40, 80}));
    const int polls = t.ui.polls;
    EXPECT_EQ(polls, 5);  // three steps, two rows
    for (int at = 1; at <= polls; ++at) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = at;
        GroupRow cancelled;
        EXPECT_FALSE(source().readTable(kTable, cancelled, steps)) << at;
    }
}

TEST_F(GroupRecordTest, WhatWasNotReadOfARowGoesWhereTheRowGoes) {
    put("T-3\\EV\\N:3;\r\nT-3\\EV\\ID-1:a;\r\nT-3\\EV\\ID-2:b;\r\nT-3\\EV\\ID-3:c;\r\n"
        "T-3\\EV\\ID-1:aa;\r\nT-3\\EV\\ID-2:bb;\r\nT-3\\EV\\ID-3:cc;\r\n"
        "T-3\\EV\\ID-4:behind;\r\nT-3\\OTHER-1:x;\r\n");
    auto record = read();
    auto& rows = record.lists["EV\\N"];
    // c, a; b is deleted.
    rows = {rows[2], rows[0]};
    GroupWriter writer('T', 3);
    writer.writeTable(kTable, record, 2011);
    const auto kept = settleRows(source_->kept(), 'T', 3, kTable, record, 2011).kept;
    EXPECT_EQ(kept.leftovers(writer.text()),
              (std::vector<std::string>{"T-3\\EV\\ID-2:aa;", "T-3\\EV\\ID-1:cc;",
                                        "T-3\\EV\\ID-4:behind;", "T-3\\OTHER-1:x;"}));
}

TEST_F(GroupRecordTest, AMissingFileHasNoValues) {
    EXPECT_TRUE(isMissing(source().status()));
    EXPECT_EQ(read().value("A1"), "");
}

TEST_F(GroupRecordTest, AFileThatCanNotBeWrittenIsToldAndStays) {
    put("T-3\\A1:x;\r\n");
    const auto record = read();
    GroupWriter writer('T', 3);
    writer.writeTable(kTable, record, 2011);
    GroupFile none;
    // A folder stands where the group file of this number would be.
    ASSERT_TRUE(makeFolder(t.store.pathOf(groupFile('T', 4))).ok());
    EXPECT_FALSE(storeGroup(t.context, &t.ui, 'T', 4, writer.text(), none));
    EXPECT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_FALSE(t.document.changed);
}

// --- Lists in lists ---------------------------------------------------------------------------

/// Buses, their messages, the measurements of these, and where each of them is.
constexpr auto kDeepTable = std::to_array<Field>({
    {.code = "NB\\N", .kind = FieldKind::Count, .rows = 9},
    {.code = "BNA-n", .list = "NB\\N"},
    {.code = "NM\\N-n", .kind = FieldKind::Count, .list = "NB\\N", .rows = 9},
    {.code = "MNA-n-m", .list = "NM\\N-n", .missing = "MSG%d"},
    {.code = "MN\\N-n-m", .kind = FieldKind::Count, .list = "NM\\N-n", .rows = 9},
    {.code = "MN-n-m-k", .list = "MN\\N-n-m"},
    {.code = "NML\\N-n-m-k", .kind = FieldKind::Count, .list = "MN\\N-n-m", .rows = 9},
    {.code = "MWN-n-m-k-f", .list = "NML\\N-n-m-k", .missing = "W%d"},
});

TEST(GroupRecordDepth, ListsInListsAreReadAndWrittenToAnyDepth) {
    TestContext t;
    const std::string bytes =
        "T-3\\NB\\N:2;\r\nT-3\\BNA-1:one;\r\nT-3\\NM\\N-1:1;\r\nT-3\\MNA-1-1:MSG1;\r\n"
        "T-3\\BNA-2:two;\r\nT-3\\NM\\N-2:2;\r\nT-3\\MNA-2-1:a;\r\nT-3\\MNA-2-2:b;\r\n"
        "T-3\\MN\\N-2-2:1;\r\nT-3\\MN-2-2-1:SPEED;\r\nT-3\\NML\\N-2-2-1:3;\r\n"
        "T-3\\MWN-2-2-1-1:5;\r\nT-3\\MWN-2-2-1-2:W2;\r\nT-3\\MWN-2-2-1-3:7;\r\n";
    t.write(groupFile('T', 3), bytes);
    GroupSource source(t.context, &t.ui, 'T', 3);
    GroupRow record;
    ASSERT_TRUE(source.readTable(kDeepTable, record));
    const auto messages = record.rows("NB\\N")[1].rows("NM\\N-n");
    ASSERT_EQ(messages.size(), 2U);
    const auto measurements = messages[1].rows("MN\\N-n-m");
    ASSERT_EQ(measurements.size(), 1U);
    ASSERT_EQ(measurements[0].rows("NML\\N-n-m-k").size(), 3U);
    EXPECT_EQ(measurements[0].rows("NML\\N-n-m-k")[2].value("MWN-n-m-k-f"), "7");
    GroupWriter writer('T', 3);
    writer.writeTable(kDeepTable, record, 2011);
    EXPECT_EQ(writer.text(), bytes);
    EXPECT_EQ(source.kept().leftovers(""), std::vector<std::string>{}) << "all of it was read";
}

TEST(GroupRecordDepth, WhatIsMissingFromARowHasTheNumberOfTheInnermostRow) {
    TestContext t;
    t.write(groupFile('T', 3), "T-3\\NB\\N:1;T-3\\NM\\N-1:2;T-3\\MN\\N-1-2:1;T-3\\NML\\N-1-2-1:3;");
    GroupSource source(t.context, &t.ui, 'T', 3);
    GroupRow record;
    ASSERT_TRUE(source.readTable(kDeepTable, record));
    const auto messages = record.rows("NB\\N")[0].rows("NM\\N-n");
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[1].value("MNA-n-m"), "MSG2");
    const auto words = messages[1].rows("MN\\N-n-m")[0].rows("NML\\N-n-m-k");
    ASSERT_EQ(words.size(), 3U);
    EXPECT_EQ(words[2].value("MWN-n-m-k-f"), "W3");
}

}  // namespace
}  // namespace kavu
