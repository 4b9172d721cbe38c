#include "pcm/LoadFixture.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::Logged;
using test::plainFormat;
using test::operator+;

/// The plain format with some of its commands given another value, or dropped with none.
Commands changed(Commands commands, const Commands& changes) {
    for (const auto& change : changes) {
        const auto code = change.substr(0, change.find(':') + 1);
        std::erase_if(commands, [&code](const auto& command) { return command.starts_with(code); });
        if (change.size() > code.size()) {
            commands.push_back(change);
        }
    }
    return commands;
}

TEST(PGroupReader, ReadsEveryAttribute) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load({"D1:RNRZ-L",
                        "D2:1000000",
                        "D3:U",
                        "D4:N",
                        "D5:Y",
                        "D6:R",
                        "D7:N",
                        "D8:STD",
                        "TF:TWO",
                        "F1:16",
                        "F2:M",
                        "F3:EV",
                        "F4:L",
                        "MF\\N:4",
                        "MF1:8",
                        "MF2:136",
                        "MF3:FPT",
                        "MF4:24",
                        "MF5:111110101111001100100000",
                        "SYNC1:1",
                        "SYNC2:2",
                        "SYNC3:3",
                        "SYNC4:NS",
                        "COM:hello"}));
    const auto& format = f.format;
    EXPECT_EQ(format.pcmCode, "RNRZ-L");
    EXPECT_EQ(format.bitRate, "1000000");
    EXPECT_EQ(format.encryption, "U");
    EXPECT_EQ(format.polarity, "N");
    EXPECT_EQ(format.autoPolarityCorrection, "Y");
    EXPECT_EQ(format.dataDirection, "R");
    EXPECT_EQ(format.dataRandomized, "N");
    EXPECT_EQ(format.randomizerLength, "STD");
    EXPECT_EQ(format.typeFormat, "TWO");
    EXPECT_EQ(format.commonWordLength, 16);
    EXPECT_EQ(format.wordTransferOrder, "M");
    EXPECT_EQ(format.parity, "EV");
    EXPECT_EQ(format.parityTransferOrder, "L");
    EXPECT_EQ(format.numberOfFrames, 4);
    EXPECT_EQ(format.wordsPerMinorFrame, 8);
    EXPECT_EQ(format.bitsPerMinorFrame, 136);
    EXPECT_EQ(format.syncType, "FPT");
    EXPECT_EQ(format.syncLength, 24);
    EXPECT_EQ(format.syncPattern, "111 110 101 111 001 100 100 000");
    EXPECT_EQ(format.inSyncCriteria, "1");
    EXPECT_EQ(format.inSyncPatternCriteria, "2");
    EXPECT_EQ(format.outOfSyncDisagrees, "3");
    EXPECT_EQ(format.outOfSyncPatternCriteria, "NS");
    EXPECT_EQ(format.comment, "hello");
    EXPECT_EQ(format.streamName, "PCM 1");
    EXPECT_EQ(format.pGroup, 1);
    EXPECT_EQ(format.dGroup, 1);
    EXPECT_EQ(format.wordType(0), WordType::Sync);
    EXPECT_EQ(format.wordLength(0), 24);
    EXPECT_EQ(format.wordLength(7), 16);
    EXPECT_EQ(f.result(), 0);
    EXPECT_FALSE(format.changed);
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(PGroupReader, ThreeHundredFramesAre256AndThreeThousandWordsAre2048) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF\\N:300", "MF1:3000", "MF2:"})));
    EXPECT_EQ(f.format.numberOfFrames, 256);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 2048);
    EXPECT_EQ(f.logText(188),
              "There are too many minor frames defined (300). Number of minor "
              "frames truncated to 256");
    EXPECT_EQ(f.logText(189),
              "PCM format too big. This program only allows up to 2048 words per "
              "minor frame. Minor frame length truncated to 2048.");
    EXPECT_EQ(f.result(), 1) << "values of the file were replaced";
    EXPECT_TRUE(f.format.changed);
}

TEST(PGroupReader, APatternLongerThanItsLengthGivesTheLengthAndACorrectedRead) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF4:16"})));
    EXPECT_EQ(f.format.syncLength, 24);
    EXPECT_EQ(f.logged(), (Logged{{198, 86}}));
    EXPECT_EQ(f.logText(198),
              "FSP had an invalid length. The TMATS file (MF4) command indicated "
              "that the FSP was 16 bits long, yet the actual FSP found was 24 bits "
              "long. This value has been corrected.");
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, ALengthThatIsNoNumberIsToldWithoutAPattern) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF5:", "MF4:x24", "MF2:112"})));
    EXPECT_EQ(f.logged(), (Logged{{198, 86}}));
    EXPECT_EQ(f.format.syncLength, 0);
    EXPECT_EQ(f.result(), 1);
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF5:", "MF4:0", "MF2:112"})));
    EXPECT_TRUE(f.logged().empty()) << "no length, no pattern";
}

TEST(PGroupReader, AHexadecimalPatternIsShownInHexAndComesBackInBinary) {
    LoadFixture f;
    f.settings.writeInteger("HexFSP", 1);
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF5:10101", "MF4:5", "MF2:117"})));
    EXPECT_EQ(f.format.syncPattern, "15");
    EXPECT_EQ(f.format.syncLength, 5);
    EXPECT_EQ(f.result(), 0);
    f.format.changed = true;
    ASSERT_TRUE(savePcmFormat(f.format, f.parent));
    const auto lines = f.saved("[kavu]PCMFMT.P01");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF5:10101;"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "P-1\\MF4:5;"), lines.end());
}

TEST(PGroupReader, ARefusedPatternCountsNoBitsSo198Follows206) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF5:11102", "MF4:5"})));
    EXPECT_EQ(f.logged(), (Logged{{206, 86}, {198, 86}, {176, 88}}));
    EXPECT_EQ(f.logText(206),
              "Invalid Frame Sync Pattern field found in TMATS file (P-1\\MF5). Value found: "
              "'11102'. The Frame Sync Pattern must be a string containing only 1's and 0's. This "
              "definition will be ignored.");
    EXPECT_TRUE(f.format.syncPattern.empty());
    EXPECT_EQ(f.format.syncLength, 0);
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, WordLengthsOutsideOfTheFrameAreRefused) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"MFW1-1:0", "MFW2-1:12", "MFW1-2:8",
                                                    "MFW2-2:12", "MFW1-3:7", "MFW2-3:16"}));
    EXPECT_EQ(f.logged(), (Logged{{173, 88}, {173, 88}}));
    EXPECT_EQ(f.ui.logs[1].text,
              "Unable to process variable word length definition for frame word position 8. This "
              "PCM format is defined with a maximum of 8 words per minor frame (numbered 1 to 7). "
              "This definition will be ignored.");
    EXPECT_EQ(f.format.wordLength(0), 24);
    EXPECT_EQ(f.result(), 0) << "a message alone does not make a read a corrected one";
}

TEST(PGroupReader, AMissingWordLengthIsToldBeforeAPositionOutOfRange) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"MFW1-1:9"}));
    EXPECT_EQ(f.logged(), (Logged{{175, 75}, {173, 88}}));
    EXPECT_EQ(f.ui.logs[0].text,
              "Unable to determine word length for word position 9. Could not locate 'MFW2-1' "
              "command in TMATS file. Word length for this frame word position set to common word "
              "length.");
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, WordLengthsEndAtTheFirstMissingNumber) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF2:132"}) +
                       Commands{"MFW1-1:3", "MFW2-1:12", "MFW1-3:4", "MFW2-3:12"}));
    EXPECT_EQ(f.format.wordLength(3), 12);
    EXPECT_EQ(f.format.wordLength(4), 16);
    EXPECT_TRUE(f.ui.logs.empty());
}

TEST(PGroupReader, ALengthThatIsNotAboveZeroLeavesTheCommonOne) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"MFW1-1:3", "MFW2-1:0"}));
    EXPECT_EQ(f.logged(), (Logged{{174, 88}}));
    EXPECT_EQ(f.format.wordLength(3), 16);
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, BitsAreCountedAndAWrongCountIsToldAndCorrected) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF2:100"})));
    EXPECT_EQ(f.logText(176),
              "Bits Per Minor Frame definition (MF2) in the TMATS file was not correct. According "
              "to the TMATS definition, this PCM format contains 100 Bits Per Minor Frame, but "
              "the actual number of bits calculated is 136. Bits Per Minor Frame has been "
              "changed.");
    EXPECT_EQ(f.format.bitsPerMinorFrame, 136);
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, AMissingTypeIsClassOne) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"TF:"})));
    EXPECT_EQ(f.logged(), (Logged{{165, 88}}));
    EXPECT_EQ(f.format.typeFormat, "ONE");
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, MissingSizesAreOne) {
    LoadFixture f;
    ASSERT_TRUE(f.load({"TF:ONE", "F1:16", "MF2:0"}));
    EXPECT_EQ(f.format.numberOfFrames, 1);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 1);
    EXPECT_EQ(f.result(), 0);
}

TEST(PGroupReader, SizesOfZeroAreOneAndACorrection) {
    LoadFixture f;
    ASSERT_TRUE(f.load(changed(plainFormat(8, 1), {"MF\\N:0", "MF1:-5", "MF2:24"})));
    EXPECT_EQ(f.format.numberOfFrames, 1);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 1);
    EXPECT_TRUE(f.ui.logs.empty());
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, ABusStreamHasFixedValues) {
    LoadFixture f;
    ASSERT_TRUE(f.load({"TF:1553", "F1:24", "F2:L", "F3:EV", "F4:T", "MF\\N:4", "MF1:200",
                        "MF2:4800", "MF3:OTH", "MF4:16", "MF5:1110101110010000"}));
    EXPECT_TRUE(f.format.isBusStream);
    EXPECT_EQ(
        f.logged(),
        (Logged{{166, 86}, {167, 86}, {168, 86}, {169, 86}, {170, 86}, {171, 86}, {172, 86}}));
    EXPECT_EQ(f.format.wordTransferOrder, "M");
    EXPECT_EQ(f.format.parity, "OD");
    EXPECT_EQ(f.format.parityTransferOrder, "L");
    EXPECT_EQ(f.format.numberOfFrames, 1);
    EXPECT_EQ(f.format.syncType, "FPT");
    EXPECT_EQ(f.format.syncLength, 24);
    EXPECT_EQ(f.format.syncPattern, "111 110 101 111 001 100 100 000");
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, ACleanBusStreamIsSilentAlsoInHexAndWithoutOptionalFields) {
    for (const bool hex : {false, true}) {
        LoadFixture f;
        f.settings.writeInteger("HexFSP", hex ? 1 : 0);
        ASSERT_TRUE(f.load(
            {"TF:1553", "F1:24", "MF1:200", "MF2:4800", "MF4:24", "MF5:111110101111001100100000"}));
        EXPECT_TRUE(f.ui.logs.empty());
        EXPECT_EQ(f.format.syncPattern, hex ? "FA F320" : "111 110 101 111 001 100 100 000");
        EXPECT_EQ(f.result(), 0);
    }
}

TEST(PGroupReader, ABusStreamCallsItsLoaderAndLeavesCountersAlone) {
    LoadFixture f;
    int calls = 0;
    f.steps_.loadBusDefinitions = [&calls](UserInterface*, PcmFormat& format) {
        ++calls;
        return format.isBusStream;
    };
    ASSERT_TRUE(f.load({"TF:1553", "F1:24", "MF1:200", "MF2:4800", "MF4:24",
                        "MF5:111110101111001100100000", "ISF\\N:1", "ISF1-1:X"}));
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(f.format.idCounters.empty());
    f.steps_.loadBusDefinitions = [](UserInterface*, PcmFormat&) { return false; };
    EXPECT_FALSE(f.reload());
    EXPECT_FALSE(f.format.loaded());
    EXPECT_EQ(f.result(), -1);
}

TEST(PGroupReader, APacketStreamCallsItsLoaderIn10605And10607Only) {
    for (const auto& [edition, expected] :
         {std::pair(2005, 1), std::pair(2007, 1), std::pair(2004, 0), std::pair(2009, 0)}) {
        LoadFixture f(edition);
        int calls = 0;
        f.steps_.loadPacketDefinitions = [&calls](UserInterface*, PcmFormat&) {
            ++calls;
            return true;
        };
        ASSERT_TRUE(f.load(plainFormat(8, 1, "PKTM")));
        EXPECT_EQ(calls, expected) << edition;
    }
}

TEST(PGroupReader, ANonStandardCodeTravelsInTheRecordOfTheComment) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"D1:OTHER", "COM:[KAVU: D1=MYCODE]text"}));
    EXPECT_EQ(f.format.nonStandardCode, "MYCODE");
    EXPECT_EQ(f.format.comment, "text") << "a record without keys goes with its brackets";
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"D1:OTHER", "COM:[KAVU: X=1 D1=MYCODE]text"}));
    EXPECT_EQ(f.format.comment, "[KAVU: X=1]text");
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"D1:NRZ-L", "COM:[KAVU: D1=MYCODE]text"}));
    EXPECT_EQ(f.format.nonStandardCode, "");
    EXPECT_EQ(f.format.comment, "[KAVU: D1=MYCODE]text") << "left alone for another code";
}

TEST(PGroupReader, CommandsWithoutAFieldAreKeptInWorkingFiles) {
    LoadFixture f(2009);
    ASSERT_TRUE(
        f.load(plainFormat(8, 4) + Commands{"ALT4:N", "ALT\\N:2", "ALT1:8", "MFF\\FDT:IN",
                                            "MFF\\N:2", "MFF\\MFN-1:1", "MFF\\MFN-2:3", "FSC\\N:1",
                                            "FSC1-1:11", "FSC2-1:Other", "FFI1:3", "FFI2:110",
                                            "MLC\\N:1", "MLC1-1:01", "MLC2-1:List"}));
    EXPECT_EQ(
        f.read("[kavu]TmpPCMFMT.MFF"),
        "P-1\\MFF\\FDT:IN;\r\nP-1\\MFF\\N:2;\r\nP-1\\MFF\\MFN-1:1;\r\nP-1\\MFF\\MFN-2:3;\r\n");
    EXPECT_EQ(f.read("[kavu]TmpPCMFMT.FFI"),
              "P-1\\FFI1:3;\r\nP-1\\FFI2:110;\r\nP-1\\MLC\\N:1;\r\nP-1\\MLC1-1:01;\r\n"
              "P-1\\MLC2-1:List;\r\nP-1\\FSC\\N:1;\r\nP-1\\FSC1-1:11;\r\nP-1\\FSC2-1:Other;\r\n");
    EXPECT_EQ(f.read("[kavu]TmpPCMFMT.ALTTAG"),
              "P-1\\ALT\\N:2;\r\nP-1\\ALT1:8;\r\nP-1\\ALT4:N;\r\n");
    f.format.closeFormat();
    for (const auto* const name :
         {"[kavu]TmpPCMFMT.MFF", "[kavu]TmpPCMFMT.FFI", "[kavu]TmpPCMFMT.ALTTAG"}) {
        EXPECT_FALSE(f.has(name));
    }
}

TEST(PGroupReader, FrameFilteringIsKnownFrom10609On) {
    LoadFixture f(2007);
    ASSERT_TRUE(f.load(plainFormat(8, 4) + Commands{"MFF\\FDT:IN", "MFF\\N:1", "MFF\\MFN-1:1"}));
    EXPECT_FALSE(f.has("[kavu]TmpPCMFMT.MFF"));
}

TEST(PGroupReader, AMissingGroupMakesANewFormatFromTheSettings) {
    LoadFixture f(2009);
    f.settings.write("PD1", "NRZ-L");
    f.settings.write("PMFN", "4");
    f.settings.write("PMF1", "20");
    f.settings.write("PSYNC4", "NS");
    f.write("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\n");
    ASSERT_TRUE(f.reload());
    EXPECT_TRUE(
        f.ui.hasText("PCM format definition not found. Creating new PCM format "
                     "definition."));
    EXPECT_EQ(f.format.pcmCode, "NRZ-L");
    EXPECT_EQ(f.format.typeFormat, "ONE");
    EXPECT_EQ(f.format.commonWordLength, 16);
    EXPECT_EQ(f.format.numberOfFrames, 4);
    EXPECT_EQ(f.format.wordsPerMinorFrame, 20);
    EXPECT_EQ(f.format.outOfSyncPatternCriteria, "NS");
    EXPECT_EQ(f.format.syncPattern, "111 010 111 001 000 0");
    EXPECT_EQ(f.format.syncLength, 16);
    EXPECT_EQ(f.format.bitsPerMinorFrame, 20 * 16);
    EXPECT_EQ(f.result(), 0);
    EXPECT_TRUE(f.format.changed) << "no group file holds it yet";
}

TEST(PGroupReader, ANewFormatInHexConvertsThePatternOfTheSettings) {
    LoadFixture f(2009);
    f.settings.writeInteger("HexFSP", 1);
    f.settings.write("PMF5", "111110101111001100100000");
    f.write("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\n");
    ASSERT_TRUE(f.reload());
    EXPECT_EQ(f.format.syncPattern, "FA F320");
    EXPECT_EQ(f.format.syncLength, 24);
}

TEST(PGroupReader, OverlongFieldsAreCutToldOfAndACorrection) {
    LoadFixture f;
    ASSERT_TRUE(f.load(plainFormat(8, 1) + Commands{"D2:12345678901"}));
    EXPECT_EQ(f.format.bitRate, "123456789");
    ASSERT_EQ(f.ui.shown.size(), 1U);
    EXPECT_EQ(f.result(), 1);
}

TEST(PGroupReader, ACancelFailsTheLoad) {
    for (int poll = 1; poll <= 3; ++poll) {
        LoadFixture f;
        f.ui.cancelAtPoll = poll;
        EXPECT_FALSE(f.load(plainFormat(8, 4) + counterAt(7, 4)));
        EXPECT_FALSE(f.format.loaded());
        EXPECT_EQ(f.result(), -1);
    }
}

TEST(PGroupReader, AClassOneStreamWithAHighBitRateBecomesClassTwo) {
    struct Row {
        int edition;
        const char* rate;
        const char* type;
    };
    for (const auto& row :
         {Row{2007, "12000000", "TWO"}, Row{2007, "5000001", "ONE"}, Row{2004, "5000001", "TWO"},
          Row{2004, "5000000", "ONE"}, Row{2001, "5000001", "OTHR"}}) {
        LoadFixture f(row.edition);
        ASSERT_TRUE(f.load(plainFormat(8, 1, "ONE") + Commands{std::string("D2:") + row.rate}));
        EXPECT_EQ(f.format.typeFormat, row.type) << row.edition << " " << row.rate;
        const bool isChanged = row.type != std::string("ONE");
        EXPECT_EQ(f.result(), isChanged ? 1 : 0);
        EXPECT_EQ(f.format.changed, isChanged);
        EXPECT_EQ(f.ui.countLogs(221), isChanged ? 1 : 0);
    }
    LoadFixture f(2007);
    ASSERT_TRUE(f.load(plainFormat(8, 1, "ONE") + Commands{"D2:12000000"}));
    EXPECT_EQ(f.logText(221),
              "PCM stream 'PCM 1' was identified as a 'Class 1' stream, but it contains 'Class 2' "
              "attributes. This stream contains a bitrate greater than 10,000,000, which is a "
              "Class 2 attribute. The 'Type Format' attribute has been changed to 'Class 2'");
}

}  // namespace
}  // namespace kavu
