#include "core/document/Banner.h"
#include "core/document/GroupSplitter.h"
#include "core/document/OpenDocument.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

namespace kavu::test {
namespace {

class GroupSplitterTest : public ::testing::Test {
  protected:
    bool split(std::string_view bytes) {
        path_ = t.folder / "in.tma";
        writeFile(path_, bytes);
        return splitIntoGroupFiles(t.context, &t.ui, path_);
    }
    /// The only note; fails if there is none or more than one.
    std::string note() {
        EXPECT_EQ(t.ui.notes.size(), 1u);
        return t.ui.notes.empty() ? std::string() : t.ui.notes.front();
    }

    TestContext t;
    std::string path_;
};

struct Sorted {
    const char* command;
    const char* file;
};

TEST_F(GroupSplitterTest, EveryGroupGoesToItsFile) {
    const Sorted rows[] = {
        {"G\\PN:A;", "[kavu]GTMP.G"},         {"H\\X:A;", "[kavu]H.HHH"},
        {"T-1\\ID:A;", "[kavu]DSRCE.T01"},    {"R-2\\ID:A;", "[kavu]DSRCE.R02"},
        {"M-3\\ID:A;", "[kavu]MULT.M03"},     {"V-4\\ID:A;", "[kavu]V.V04"},
        {"P-5\\DLN:A;", "[kavu]PCMFMT.P05"},  {"D-99\\DLN:A;", "[kavu]PCMMEAS.D99"},
        {"B-7\\DLN:A;", "[kavu]PCM1553.B07"}, {"A-8\\DLN:A;", "[kavu]PCMPAM.A08"},
        {"S-9\\DLN:A;", "[kavu]PCMS.S09"},    {"C-10\\DCN:A;", "DATA1.TMP"},
    };
    std::string text;
    for (const auto& row : rows) {
        text += std::string(row.command) + "\r\n";
    }
    ASSERT_TRUE(split(text));
    for (const auto& row : rows) {
        EXPECT_EQ(t.read(row.file), std::string(row.command) + "\r\n") << row.command;
    }
    EXPECT_TRUE(t.ui.notes.empty());
}

TEST_F(GroupSplitterTest, OnlyCommentsLeaveNoGroupFile) {
    ASSERT_TRUE(split("COMMENT: one;\r\ncomment: two;\r\n"));
    EXPECT_FALSE(t.has("[kavu]GTMP.G"));
    EXPECT_EQ(t.read("DATA1.TMP"), "");
    EXPECT_EQ(note(), "2 comments of the file are left out, the first at line 1: COMMENT: one;");
    EXPECT_FALSE(t.document.changed);
}

TEST_F(GroupSplitterTest, CommentsThatAreKeptStandInFrontOfTheirCommands) {
    t.settings.set(setting::kKeepComments, true);
    ASSERT_TRUE(
        split("COMMENT: a;\nT-1\\ID:x;\nCOMMENT: b\nc;COMMENT: d;X-1\\A:1;P-1\\TF:ONE;"
              "COMMENT: e;C-2\\CO:1;COMMENT: f;C-2\\DCN:N ;COMMENT: g;C-3;COMMENT: h;"));
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "COMMENT: a;\r\nT-1\\ID:x;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"),
              "COMMENT: b\x14\x15"
              "c;\r\nCOMMENT: d;\r\nP-1\\TF:ONE;\r\n");
    EXPECT_EQ(t.read("DATA1.TMP"), "C-2\\CO:1;\r\nC-2\\DCN:N;\r\n");
    EXPECT_EQ(t.read("[kavu]CCOM.C"),
              "NAME:N;\r\nCODE:CO;\r\nCOMMENT: e;\r\nNAME:N;\r\nCODE:DCN;\r\nCOMMENT: f;\r\n");
    EXPECT_EQ(t.read("[kavu]CREST.C"), "COMMENT: g;\r\nC-3;\r\nCOMMENT: h;\r\n");
    for (const auto& text : t.ui.notes) {
        EXPECT_EQ(text.find("comment"), std::string::npos) << text;
    }
}

TEST_F(GroupSplitterTest, CommentsAloneAreKeptInTheGeneralGroup) {
    t.settings.set(setting::kKeepComments, true);
    ASSERT_TRUE(split("COMMENT: one;COMMENT: two;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "COMMENT: one;\r\nCOMMENT: two;\r\n");
}

TEST_F(GroupSplitterTest, TheBannerOfASaveIsNoComment) {
    const auto banner = bannerText({2026, 1, 2, 3, 4, 5}, false);
    ASSERT_TRUE(split(banner + "G\\PN:A;" + banner + "COMMENT: mine;" + banner));
    EXPECT_EQ(note(), "Line 12: a comment of the file is left out: COMMENT: mine;");
    t.ui.notes.clear();
    t.settings.set(setting::kKeepComments, true);
    ASSERT_TRUE(split("COMMENT: ***;" + banner + "T-1\\ID:x;"));
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "COMMENT: ***;\r\nT-1\\ID:x;\r\n");
}

TEST_F(GroupSplitterTest, CommandBehindACommentOnOneLineIsKept) {
    ASSERT_TRUE(split("COMMENT: x; G\\PN:A;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A;\r\n");
}

TEST_F(GroupSplitterTest, MissingLastSemicolonRefusesTheFile) {
    EXPECT_FALSE(split("G\\PN:A;\nG\\TA:B;\nG\\106:09"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, 157);
    EXPECT_EQ(t.ui.boxes[0].icon, Icon::Warning);
    EXPECT_EQ(t.ui.boxes[0].title, "Error Reading TMATS File");
    // The counter starts at 1 and rises once for each call of the reader.
    EXPECT_EQ(t.ui.boxes[0].text,
              "Illegal or partial command detected at the end of the file. Last line read was "
              "line #4. Operation aborted.");
}

TEST_F(GroupSplitterTest, FillerAfterTheLastCommandIsLeftOutAndRemarked) {
    using namespace std::string_literals;
    ASSERT_TRUE(split("G\\PN:A;\r\n\0\0 \x1A"s));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A;\r\n");
    EXPECT_EQ(note(),
              "6 bytes of filler (NUL or Ctrl-Z) follow the last command. They are left out.");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GroupSplitterTest, FillerBeforeTheEndOfAPartialCommandRefusesTheFile) {
    using namespace std::string_literals;
    for (const auto& bytes : {"G\\PN:A;\0\0G\\TA"s, "G\\PN:A;G\\TA\0\0"s, "\0\0\0"s}) {
        EXPECT_FALSE(split(bytes));
        EXPECT_TRUE(t.ui.hasBox(157));
        t.ui.boxes.clear();
    }
    EXPECT_TRUE(t.ui.notes.empty());
}

TEST_F(GroupSplitterTest, LowerCaseGroupVanishesButIsRemarked) {
    ASSERT_TRUE(split("p-1\\TF:ONE;"));
    EXPECT_FALSE(t.has("[kavu]PCMFMT.P01"));
    EXPECT_EQ(note(), "Line 1: a command of no known group is left out: p-1\\TF:ONE;");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GroupSplitterTest, SecondPieceOfAGroupIsAppended) {
    ASSERT_TRUE(split("T-1\\ID:X;P-1\\TF:ONE;T-1\\CF:Y;"));
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\ID:X;\r\nT-1\\CF:Y;\r\n");
}

TEST_F(GroupSplitterTest, UnknownGroupIsLostAndRemarked) {
    ASSERT_TRUE(split("X-1\\A:B;\nG\\PN:A;\nY-1\\A:B;"));
    EXPECT_EQ(note(), "2 commands of no known group are left out, the first at line 1: X-1\\A:B;");
}

TEST_F(GroupSplitterTest, LineBreaksInAValueAreStoredAsTwoBytes) {
    ASSERT_TRUE(split("P-1\\COM:one\ntwo;"));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"), "P-1\\COM:one\x14\x15two;\r\n");
    std::string value = t.read("[kavu]PCMFMT.P01");
    fromStoredForm(value);
    EXPECT_NE(value.find("one\r\ntwo"), std::string::npos);
}

TEST_F(GroupSplitterTest, ConversionCommandWithoutANumberIsStored) {
    ASSERT_TRUE(split("C-abc\\DCN:X;"));
    EXPECT_EQ(t.read("DATA1.TMP"), "C-abc\\DCN:X;\r\n");
}

TEST_F(GroupSplitterTest, IndexOverNinetyNineIsWrittenWithThreeDigitsAndRemarked) {
    ASSERT_TRUE(split("P-100\\DLN:X;\nP-0\\DLN:Y;"));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P100"), "P-100\\DLN:X;\r\n");
    EXPECT_EQ(t.read("[kavu]PCMFMT.P00"), "P-0\\DLN:Y;\r\n");
    EXPECT_EQ(note(),
              "2 commands whose group index is not 1 to 99 will not be saved, the first at line "
              "1: P-100\\DLN:X;");
}

TEST_F(GroupSplitterTest, IndexThatFitsNoIntegerIsOutOfRange) {
    ASSERT_TRUE(split("P-99999999999999999999\\DLN:X;"));
    EXPECT_FALSE(t.has("[kavu]PCMFMT.P01"));
    EXPECT_NE(note().find("will not be saved"), std::string::npos);
}

TEST_F(GroupSplitterTest, IndicesLoseTheZerosAtTheirFrontAndTheFirstIsRemarked) {
    ASSERT_TRUE(split("P-1\\TF:ONE;\nP-01\\DLN:X-01;\nP-001\\SF4-1-010:16;\nC-02\\DCN:A;"));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"),
              "P-1\\TF:ONE;\r\nP-1\\DLN:X-01;\r\nP-1\\SF4-1-10:16;\r\n");
    EXPECT_EQ(t.read("DATA1.TMP"), "C-2\\DCN:A;\r\n");
    EXPECT_EQ(note(),
              "3 commands have an index with a 0 at its front, which is read as its number, "
              "the first at line 2: P-01\\DLN:X-01;");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(GroupSplitterTest, ZerosElsewhereChangeNothing) {
    const std::string text =
        "P-1\\SF4-0-10:-01;\r\nP-1\\A-01B:1;\r\nP-1\\A-01;\r\nP-1\\F10:05;\r\n";
    ASSERT_TRUE(split(text + "V-1\\X-01:a;H\\X-01:b;X-01\\A:1;COMMENT: T-01\\ID:x;"));
    EXPECT_EQ(t.read("[kavu]PCMFMT.P01"), text);
    EXPECT_EQ(t.read("[kavu]V.V01"), "V-1\\X-01:a;\r\n");
    EXPECT_EQ(t.read("[kavu]H.HHH"), "H\\X-01:b;\r\n");
    EXPECT_FALSE(t.document.changed);
}

TEST_F(GroupSplitterTest, InterleavedGroupsKeepTheirOrder) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        const auto line = formatPrintf("D-1\\MN-1-%d:M%d;", i, i);
        text += formatPrintf("P-1\\X%d:1;", i) + line + "C-1\\DCN:A;";
        expected += line + "\r\n";
    }
    ASSERT_TRUE(split(text));
    EXPECT_EQ(t.read("[kavu]PCMMEAS.D01"), expected);
}

TEST_F(GroupSplitterTest, ByteOrderMarkIsLeftOutAndRemarked) {
    ASSERT_TRUE(split("\xEF\xBB\xBFG\\PN:A;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A;\r\n");
    EXPECT_NE(note().find("byte order mark"), std::string::npos);
}

TEST_F(GroupSplitterTest, CommentThatSwallowsACommandIsRemarked) {
    ASSERT_TRUE(split("COMMENT: no end\nG\\PN:A;\nG\\TA:B;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\TA:B;\r\n");
    ASSERT_EQ(t.ui.notes.size(), 2U);
    EXPECT_EQ(t.ui.notes[0].find("Line 2: a comment of the file is left out"), 0U);
    EXPECT_NE(t.ui.notes[1].find("takes the command after it along: G\\PN:A;"), std::string::npos);
}

TEST_F(GroupSplitterTest, ColonInPlaceOfASemicolonIsRemarked) {
    ASSERT_TRUE(split("G\\PN:A:\r\nG\\TA:B;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A:\x14\x15G\\TA:B;\r\n");
    EXPECT_NE(note().find("is a semicolon missing in front of it? G\\TA:B;"), std::string::npos);
}

TEST_F(GroupSplitterTest, TextOverSeveralLinesIsNotRemarked) {
    t.settings.set(setting::kKeepComments, true);
    ASSERT_TRUE(split("G\\COM:one\ntwo: three\nC\\ no;COMMENT: see\nbelow;"));
    EXPECT_TRUE(t.ui.notes.empty());
}

TEST_F(GroupSplitterTest, CommandWithoutAColonIsKeptAndRemarked) {
    ASSERT_TRUE(split("G\\PN A;"));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN A;\r\n");
    EXPECT_NE(note().find("without a colon"), std::string::npos);
}

TEST_F(GroupSplitterTest, ConversionCommandThatCannotBeTakenApartStaysOutsideOfTheRecords) {
    ASSERT_TRUE(split("C-1\\DCN:A;C-1\\X;C-1;C-1:a\\b;C-1\\CO:1;"));
    EXPECT_EQ(t.read("DATA1.TMP"), "C-1\\DCN:A;\r\nC-1\\CO:1;\r\n");
    EXPECT_EQ(t.read("[kavu]CREST.C"), "C-1\\X;\r\nC-1;\r\nC-1:a\\b;\r\n");
    EXPECT_NE(note().find("3 commands without a colon"), std::string::npos);
}

TEST_F(GroupSplitterTest, NulBytesAreKeptAndRemarked) {
    using namespace std::string_literals;
    ASSERT_TRUE(split("G\\PN:A\0B;"s));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A\0B;\r\n"s);
    EXPECT_NE(note().find("NUL bytes"), std::string::npos);
}

TEST_F(GroupSplitterTest, CancelStopsThePass) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "G\\COM:x;";
    }
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(split(text));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GroupSplitterTest, UnwritableWorkingFileNamesPathAndReason) {
    ASSERT_TRUE(makeFolder(t.store.pathOf("[kavu]GTMP.G")).ok());
    EXPECT_FALSE(split("G\\PN:A;"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, 158);
    EXPECT_NE(t.ui.boxes[0].text.find("[kavu]GTMP.G"), std::string::npos);
    EXPECT_NE(t.ui.boxes[0].text.find("Is a directory"), std::string::npos);
}

TEST_F(GroupSplitterTest, WorksWithoutAParent) {
    path_ = t.folder / "in.tma";
    writeFile(path_, "X-1\\A:B;G\\PN:A;G\\TA");
    EXPECT_FALSE(splitIntoGroupFiles(t.context, nullptr, path_));
    EXPECT_FALSE(splitIntoGroupFiles(t.context, nullptr, t.folder / "missing"));
}

TEST_F(GroupSplitterTest, MissingFileNamesTheReason) {
    EXPECT_FALSE(splitIntoGroupFiles(t.context, &t.ui, t.folder / "none.tma"));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].title, "Unable To Open File");
    EXPECT_EQ(t.ui.boxes[0].text, "Unable to open '" + (t.folder / "none.tma") +
                                      "'\n\nReason: No such file or directory");
}

struct Code {
    const char* line;
    const char* code;
};

class LeadingCodeTest : public ::testing::TestWithParam<Code> {};

TEST_P(LeadingCodeTest, FindsOnlyCodes) {
    EXPECT_EQ(leadingCode(GetParam().line), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Lines, LeadingCodeTest,
                         ::testing::Values(Code{"G\\PN:A", "G\\PN"}, Code{"P-1\\TF:ONE", "P-1\\TF"},
                                           Code{"P-12\\ISF\\N:0;", "P-12\\ISF\\N"},
                                           Code{"P-\\TF:ONE", ""}, Code{"Z\\A:1", ""},
                                           Code{"G\\:1", ""}, Code{"G\\A B:1", ""},
                                           Code{"G\\A", ""}, Code{"", ""}, Code{"G:", ""}));

}  // namespace
}  // namespace kavu::test
