#include "pcm/LoadFixture.h"
#include "pcm/write/PcmSave.h"

#include <algorithm>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

TEST(PcmSave, AnUnchangedFormatIsNotWritten) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"ZZ:unknown"}));
    const auto before = f.read("[kavu]PCMFMT.P01");
    EXPECT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read("[kavu]PCMFMT.P01"), before);
    EXPECT_FALSE(f.document.changed);
}

TEST(PcmSave, WritesEveryCommandInItsOrder) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load({"COM:hello",   "SYNC4:NS",   "SYNC3:3",
                        "SYNC2:2",     "SYNC1:1",    "MF5:111110101111001100100000",
                        "MF4:24",      "MF3:FPT",    "MF2:150",
                        "MF1:8",       "MF\\N:4",    "F4:L",
                        "F3:EV",       "F2:M",       "F1:16",
                        "TF:TWO",      "D8:STD",     "D7:N",
                        "D6:R",        "D5:Y",       "D4:N",
                        "D3:U",        "D2:1000000", "D1:RNRZ-L",
                        "MFW1-1:6",    "MFW2-1:20",  "MFW1-2:2",
                        "MFW2-2:26",   "ALT\\N:2",   "FFI1:3",
                        "MFF\\FDT:IN", "ADM\\N:0",   "AEF\\N:0"}));
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.saved("[kavu]PCMFMT.P01"),
              (Commands{"P-1\\DLN:PCM 1;",  "P-1\\D1:RNRZ-L;",
                        "P-1\\D2:1000000;", "P-1\\D3:U;",
                        "P-1\\D4:N;",       "P-1\\D5:Y;",
                        "P-1\\D6:R;",       "P-1\\D7:N;",
                        "P-1\\D8:STD;",     "P-1\\TF:TWO;",
                        "P-1\\F1:16;",      "P-1\\F2:M;",
                        "P-1\\F3:EV;",      "P-1\\F4:L;",
                        "P-1\\MF\\N:4;",    "P-1\\MF1:8;",
                        "P-1\\MF2:150;",    "P-1\\MF3:FPT;",
                        "P-1\\MF4:24;",     "P-1\\MF5:111110101111001100100000;",
                        "P-1\\SYNC1:1;",    "P-1\\SYNC2:2;",
                        "P-1\\SYNC3:3;",    "P-1\\SYNC4:NS;",
                        "P-1\\MFW1-1:2;",   "P-1\\MFW2-1:26;",
                        "P-1\\MFW1-2:6;",   "P-1\\MFW2-2:20;",
                        "P-1\\ISF\\N:0;",   "P-1\\MFF\\FDT:IN;",
                        "P-1\\AEF\\N:0;",   "P-1\\FFI1:3;",
                        "P-1\\ALT\\N:2;",   "P-1\\ADM\\N:0;",
                        "P-1\\COM:hello;"}));
    EXPECT_FALSE(f.format.changed);
    EXPECT_TRUE(f.document.changed);
}

TEST(PcmSave, AWordOfTheCommonLengthIsNeverWritten) {
    LoadFixture f;
    ASSERT_TRUE(
        f.load(plainFormat(8, 1) + Commands{"MFW1-1:3", "MFW2-1:12", "MFW1-2:5", "MFW2-2:16"}));
    ASSERT_TRUE(f.format.setCommonWordLength(f.parent, 12));
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    for (const auto& line : f.saved("[kavu]PCMFMT.P01")) {
        EXPECT_FALSE(line.starts_with("P-1\\MFW")) << line;
    }
}

TEST(PcmSave, AHexadecimalPatternLosesTheZerosInFrontOfItsLength) {
    LoadFixture f;
    f.settings.writeInteger("HexFSP", 1);
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, "15"));
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    const auto lines = f.saved("[kavu]PCMFMT.P01");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF4:5;"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF5:10101;"), lines.end());
}

TEST(PcmSave, ZerosInFrontThatASwitchOfTheFormHasDroppedAreWrittenAgain) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, "0001 1010"));
    f.format.setHexFsp(true);
    EXPECT_EQ(f.format.syncPattern, "1A");
    f.format.setHexFsp(false);
    EXPECT_EQ(f.format.syncPattern, "11 010");
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    const auto lines = f.saved("[kavu]PCMFMT.P01");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF4:8;"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF5:00011010;"), lines.end());
}

TEST(PcmSave, WithoutAPatternNeitherLengthNorPatternIsWritten) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(f.format.setFrameSyncPatternByValue(f.parent, ""));
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    for (const auto& line : f.saved("[kavu]PCMFMT.P01")) {
        EXPECT_FALSE(line.starts_with("P-1\\MF4") || line.starts_with("P-1\\MF5")) << line;
    }
}

TEST(PcmSave, ANonStandardCodeIsPutBackIntoTheRecordOfTheComment) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"D1:OTHER", "COM:[KAVU: D1=MYCODE]text"}));
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.saved("[kavu]PCMFMT.P01").back(), "P-1\\COM:[KAVU: D1=MYCODE]text;");
    f.format.pcmCode = "NRZ-L";
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.saved("[kavu]PCMFMT.P01").back(), "P-1\\COM:text;") << "not saved for other codes";
}

TEST(PcmSave, LineBreaksOfTheCommentComeBack) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"COM:one\x14\x15two"}));
    EXPECT_EQ(f.format.comment, "one\r\ntwo");
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_NE(f.read("[kavu]PCMFMT.P01").find("P-1\\COM:one\x14\x15two;\r\n"), std::string::npos);
}

TEST(PcmSave, TheGroupFilesOfANewFormatTakeTheFirstFreeNumber) {
    LoadFixture f(2009);
    f.write("[kavu]PCMFMT.P01", "P-1\\DLN:Other;\r\n");
    f.write("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\n");
    ASSERT_TRUE(f.reload());
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read("[kavu]PCMFMT.P01"), "P-1\\DLN:Other;\r\n");
    EXPECT_EQ(f.saved("[kavu]PCMFMT.P02").front(), "P-2\\DLN:PCM 1;");
}

TEST(PcmSave, ABusStreamWritesItsFormatOnly) {
    LoadFixture f;
    ASSERT_TRUE(f.load(
        {"TF:1553", "F1:24", "MF1:200", "MF2:4800", "MF4:24", "MF5:111110101111001100100000"}));
    const auto before = f.read("[kavu]PCMMEAS.D01");
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read("[kavu]PCMMEAS.D01"), before);
}

TEST(PcmSave, AFileThatCanNotBeOpenedIsReportedAndTheFormatStaysChanged) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    const auto before = f.read("[kavu]PCMFMT.P01");
    ASSERT_TRUE(makeFolder(f.store.pathOf("[kavu]PCMFMT.P01.new")).ok());
    f.format.changed = true;
    EXPECT_FALSE(savePcmFormat(f.format, f.parent));
    EXPECT_TRUE(f.ui.hasText("Unable to open PCM Format Definition File. Operation Aborted"));
    EXPECT_GE(f.ui.beeps, 1);
    EXPECT_TRUE(f.format.changed);
    EXPECT_EQ(f.read("[kavu]PCMFMT.P01"), before);
}

TEST(PcmSave, AFileThatCanNotTakeItsPlaceLeavesNothingBehind) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1)));
    ASSERT_TRUE(deleteFile(f.store.pathOf("[kavu]PCMFMT.P01")).ok());
    ASSERT_TRUE(makeFolder(f.store.pathOf("[kavu]PCMFMT.P01")).ok());
    f.format.changed = true;
    EXPECT_FALSE(savePcmFormat(f.format, f.parent));
    EXPECT_TRUE(f.format.changed);
    EXPECT_FALSE(fileExists(f.store.pathOf("[kavu]PCMFMT.P01.new")));
}

/// What is read, written and read again is the same.
TEST(PcmSave, AStreamSurvivesItsGroupFiles) {
    LoadFixture f(2007);
    ASSERT_TRUE(f.load(
        plainFormat(32, 8) + counterAt(31, 8, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 5, 8)),
        listOf({{"MN@:A", "MN1@:NO", "MN2@:D", "MN3@:L", "LT@:MF", "MF@:3", "MFM@:1100"},
                {"MN@:B", "LT@:SF", "SF1@:S", "SF2@:4", "SFM@:FW"}})));
    const auto groupP = f.read("[kavu]PCMFMT.P01");
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    const auto first = f.read("[kavu]PCMFMT.P01");
    const auto firstD = f.read("[kavu]PCMMEAS.D01");
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.result(), 0);
    EXPECT_EQ(f.places("A"), (test::Places{{3, 1}}));
    EXPECT_EQ(f.places("B"), (test::Places{{5, 4}}));
    EXPECT_EQ(f.first("A").mask, "1100");
    EXPECT_EQ(f.first("A").transferOrder, "L");
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    EXPECT_EQ(f.read("[kavu]PCMFMT.P01"), first);
    EXPECT_EQ(f.read("[kavu]PCMMEAS.D01"), firstD);
}

}  // namespace
}  // namespace kavu
