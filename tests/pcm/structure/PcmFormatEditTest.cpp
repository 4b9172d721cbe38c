#include "pcm/LoadFixture.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "vocabulary/FieldRules.h"

#include <set>

namespace kavu {
namespace {

using test::Commands;
using test::LoadFixture;
using test::plainFormat;
using test::operator+;

std::vector<std::string> offeredTypes(int edition) {
    std::vector<std::string> texts;
    for (const auto& choice : choicesOf(findPcmAttribute("TF")->field, edition)) {
        texts.emplace_back(choice.text);
    }
    return texts;
}

class PcmFormatEditTest : public ::testing::Test, public LoadFixture {
  protected:
    PcmFormatEditTest() : LoadFixture(2009) {
        EXPECT_TRUE(load(plainFormat(8, 4)));
        format.changed = false;
        format.formatEdited = false;
    }
    bool edit(std::string_view code, std::string_view value) {
        return editAttribute(format, parent, code, value);
    }
};

TEST(PcmFormatFields, AttributesHaveCodesOfTheirOwn) {
    std::set<std::string_view> codes;
    for (const auto& row : pcmAttributes()) {
        EXPECT_TRUE(codes.insert(row.field.code).second) << row.field.code;
        EXPECT_NE(row.number == nullptr, row.text == nullptr) << row.field.code;
    }
    EXPECT_EQ(codes.size(), 24U);
    EXPECT_EQ(findPcmAttribute("XX"), nullptr);
}

TEST(PcmFormatFields, AChoiceStoresWhatAListControlStored) {
    for (const auto& row : pcmAttributes()) {
        for (const auto& choice : row.field.choices) {
            if (row.field.kind == FieldKind::Choice) {
                EXPECT_EQ(storedChoice({{}, choice.text}, row.field.limit),
                          choice.value.substr(0, row.field.limit))
                    << row.field.code;
            }
        }
    }
}

TEST(PcmFormatFields, TheTypesEndAtTheFirstThatAnEditionDoesNotHave) {
    EXPECT_EQ(offeredTypes(2001), std::vector<std::string>{"ONE - Class I"});
    EXPECT_EQ(offeredTypes(2004),
              (std::vector<std::string>{"ONE - Class I", "TWO - Class II", "1553 Bus", "BUS - BUS",
                                        "ALTD - Alternate Tag & Data"}));
    for (const int edition : {2005, 2007}) {
        EXPECT_EQ(offeredTypes(edition).size(), 7U);
        EXPECT_EQ(offeredTypes(edition).back(), "OTHR - Other");
    }
    for (const int edition : {2009, 2011}) {
        EXPECT_EQ(offeredTypes(edition).back(), "ALTD - Alternate Tag & Data");
    }
}

TEST_F(PcmFormatEditTest, APickIsTakenAndBecomesTheDefaultOfNewFormats) {
    EXPECT_TRUE(edit("D3", "E"));
    EXPECT_EQ(format.encryption, "E");
    EXPECT_TRUE(format.changed);
    EXPECT_TRUE(format.formatEdited);
    EXPECT_EQ(settings.text("PD3"), "E");
    EXPECT_TRUE(edit("SYNC2", "17"));
    EXPECT_EQ(settings.text("PSYNC2"), "17");
    EXPECT_TRUE(edit("MF\\N", "6"));
    EXPECT_EQ(settings.integer("PMFN", 0), 6);
    EXPECT_EQ(attributeValue(format, "MF\\N"), "6");
}

TEST_F(PcmFormatEditTest, TheSameValueIsNoChange) {
    EXPECT_TRUE(edit("TF", "TWO"));
    EXPECT_FALSE(format.changed);
    EXPECT_TRUE(format.formatEdited);
}

TEST_F(PcmFormatEditTest, ThePatternIsKeptInBinaryWithoutBlanks) {
    editHexFsp(format, true);
    EXPECT_EQ(format.syncPattern, "FA F320");
    EXPECT_TRUE(edit("MF5", "EB90"));
    EXPECT_EQ(settings.text("PMF5"), "1110101110010000");
    EXPECT_EQ(format.syncLength, 16);
    EXPECT_TRUE(edit("MF4", "7"));
    EXPECT_EQ(format.syncPattern, "58");
    EXPECT_EQ(settings.text("PMF5"), "1011000");
}

TEST_F(PcmFormatEditTest, RefusedValuesLeaveTheStreamAsItWas) {
    struct Row {
        const char* code;
        const char* value;
        int message;
    };
    for (const auto& row :
         {Row{"MF\\N", "0", 216}, Row{"MF\\N", "257", 216}, Row{"MF1", "0", 161},
          Row{"MF5", "12", 439}, Row{"MF5", "1111111111111111111111111111111111", 440}}) {
        const auto before = attributeValue(format, row.code);
        ui.boxes.clear();
        EXPECT_FALSE(edit(row.code, row.value)) << row.code << row.value;
        EXPECT_EQ(ui.countBoxes(row.message), 1) << row.code << row.value;
        EXPECT_EQ(attributeValue(format, row.code), before);
        EXPECT_FALSE(format.changed);
    }
    EXPECT_FALSE(edit("XX", "1"));
}

TEST_F(PcmFormatEditTest, TheCodeSetsTheRandomizing) {
    EXPECT_TRUE(edit("D1", "NRZ-L"));
    EXPECT_EQ(format.dataRandomized, "Y") << "odd, and always so: the plain code switches it on";
    EXPECT_TRUE(isAttributeEnabled(format, "D8"));
    EXPECT_TRUE(edit("D1", "RNRZ-L"));
    EXPECT_EQ(format.dataRandomized, "N");
    EXPECT_EQ(format.randomizerLength, "N/A");
    EXPECT_FALSE(isAttributeEnabled(format, "D8"));
    EXPECT_TRUE(edit("D7", "Y"));
    EXPECT_TRUE(isAttributeEnabled(format, "D8"));
    EXPECT_EQ(settings.text("PD7"), "Y");
}

TEST_F(PcmFormatEditTest, TheNonStandardCodeIsForOtherCodesAndHasNoBlanks) {
    EXPECT_FALSE(isAttributeEnabled(format, kNonStandardCode));
    EXPECT_TRUE(edit("D1", "OTHER"));
    EXPECT_TRUE(isAttributeEnabled(format, kNonStandardCode));
    EXPECT_TRUE(edit(kNonStandardCode, "MY CODE]="));
    EXPECT_EQ(format.nonStandardCode, "MYCODE");
    ASSERT_TRUE(savePcmFormat(format, parent));
    ASSERT_TRUE(reload());
    EXPECT_EQ(format.nonStandardCode, "MYCODE");
}

TEST_F(PcmFormatEditTest, ABusStreamHasItsFixedValues) {
    EXPECT_TRUE(edit("TF", "1553"));
    EXPECT_TRUE(format.isBusStream);
    EXPECT_EQ(format.commonWordLength, 24);
    EXPECT_EQ(format.numberOfFrames, 1);
    EXPECT_EQ(format.syncLength, 24);
    EXPECT_EQ(format.syncPattern, "111 110 101 111 001 100 100 000");
    EXPECT_EQ(format.syncType, "FPT");
    EXPECT_EQ(format.parity, "OD");
    EXPECT_EQ(format.parityTransferOrder, "L");
    EXPECT_EQ(format.wordTransferOrder, "") << "is shown as Default, and loads without a message";
    for (const auto* const code : {"MF\\N", "F2", "F3", "F4", "MF3", "MF4", "MF5"}) {
        EXPECT_FALSE(isAttributeEnabled(format, code)) << code;
    }
    EXPECT_TRUE(isAttributeEnabled(format, "F1"));
    EXPECT_TRUE(offersPcmCode(format, "NRZ-L"));
    EXPECT_FALSE(offersPcmCode(format, "NRZ-M"));
    EXPECT_FALSE(edit("F1", "16"));
    EXPECT_EQ(ui.countBoxes(220), 1);
    EXPECT_FALSE(edit("MF1", "127"));
    EXPECT_EQ(ui.countBoxes(222), 1);
    EXPECT_TRUE(edit("MF1", "128"));

    EXPECT_TRUE(edit("TF", "TWO"));
    EXPECT_FALSE(format.isBusStream);
    EXPECT_TRUE(isAttributeEnabled(format, "MF5"));
    EXPECT_TRUE(offersPcmCode(format, "NRZ-M"));
}

TEST_F(PcmFormatEditTest, AnotherTypeThanABusTakesTheWordTransferOrderBack) {
    EXPECT_TRUE(edit("F2", "L"));
    EXPECT_TRUE(edit("TF", "1553"));
    EXPECT_TRUE(edit("TF", "1553"));
    EXPECT_EQ(format.wordTransferOrder, "");
    EXPECT_TRUE(edit("TF", "BUS"));
    EXPECT_EQ(format.wordTransferOrder, "L");
    EXPECT_TRUE(edit("F2", ""));
    EXPECT_TRUE(edit("TF", "TWO"));
    EXPECT_EQ(format.wordTransferOrder, "") << "what is chosen since then stays";
}

TEST_F(PcmFormatEditTest, ABusStreamHasItsPatternInTheFormThatIsShown) {
    editHexFsp(format, true);
    EXPECT_TRUE(edit("TF", "1553"));
    EXPECT_EQ(format.syncPattern, "FA F320");
}

TEST_F(PcmFormatEditTest, AClassOneStreamWithMoreThanThatIsToldAndChanged) {
    EXPECT_TRUE(edit("TF", "ONE"));
    EXPECT_FALSE(ui.hasBox(221));
    EXPECT_TRUE(edit("D2", "10000001"));
    EXPECT_EQ(ui.countBoxes(221), 1);
    EXPECT_NE(boxText(221).find("'PCM 1'"), std::string::npos);
    EXPECT_NE(boxText(221).find("a bitrate greater than 10,000,000"), std::string::npos);
    EXPECT_EQ(format.typeFormat, "TWO");
    EXPECT_TRUE(edit("TF", "ONE"));
    EXPECT_EQ(ui.countBoxes(221), 2);
    EXPECT_EQ(format.typeFormat, "TWO");
    EXPECT_EQ(settings.text("PTF"), "ONE") << "what was picked";
    document.version = 2001;
    EXPECT_TRUE(edit("TF", "ONE"));
    EXPECT_EQ(format.typeFormat, "OTHR");
}

TEST_F(PcmFormatEditTest, AWithoutParentNothingIsAskedAndTheClassChangesAllTheSame) {
    EXPECT_TRUE(editAttribute(format, nullptr, "TF", "ONE"));
    EXPECT_TRUE(editAttribute(format, nullptr, "D2", "99999999"));
    EXPECT_EQ(format.typeFormat, "TWO");
    EXPECT_FALSE(editAttribute(format, nullptr, "MF1", "0"));
}

TEST_F(PcmFormatEditTest, TitlesTellTheKindOfTheStream) {
    EXPECT_EQ(attributesTitle(format), "Edit PCM Attributes - Data Link: PCM 1");
    EXPECT_EQ(attributesStatus(format), "Edit PCM Format Information.");
    format.isBusStream = true;
    EXPECT_EQ(attributesTitle(format), "Edit Bus Attributes - Data Link: PCM 1");
    format.isBusStream = false;
    format.typeFormat = "PKTM";
    EXPECT_EQ(attributesStatus(format), "Edit PCM Format Information.");
    document.version = 2007;
    EXPECT_EQ(attributesTitle(format), "Edit Packet Attributes - Data Link: PCM 1");
    EXPECT_EQ(attributesStatus(format), "Edit Packet Format Information.");
}

// --- beside the model -----------------------------------------------------------------------

const Commands kSideCommands = {
    "MFF\\FDT:IN", "MFF\\N:2",    "MFF\\MFN-1:2",  "MFF\\MFN-2:4", "FFI1:3",   "FFI2:1111",
    "MLC\\N:1",    "MLC1-1:0001", "MLC2-1:List A", "FSC\\N:1",     "FSC1-1:1", "FSC2-1:Link B",
    "ALT\\N:2",    "ALT1:6",      "ALT2:10",       "ALT3:1",       "ALT4:R"};

class PcmSideRecordsTest : public ::testing::Test, public LoadFixture {
  protected:
    PcmSideRecordsTest() : LoadFixture(2009) {
        EXPECT_TRUE(load(plainFormat(8, 4) + kSideCommands));
        format.changed = false;
    }
};

TEST_F(PcmSideRecordsTest, TheWorkingFilesAreReadAndWrittenAsTheyWere) {
    const auto before = read(kFrameFilterFile) + read(kFormatSwitchFile) + read(kAltTagFile);
    const auto records = readSideRecords(format, parent);
    EXPECT_EQ(records.formatSwitch.value("FFI2"), "1111");
    EXPECT_EQ(records.formatSwitch.rows("FSC\\N")[0].value("FSC2-n"), "Link B");
    EXPECT_EQ(records.altTag.value("ALT4"), "R");
    EXPECT_EQ(filteredFrames(records.frameFilter, 4),
              (std::vector<bool>{false, true, false, true}));
    EXPECT_TRUE(storeSideRecords(format, parent, records));
    EXPECT_EQ(read(kFrameFilterFile) + read(kFormatSwitchFile) + read(kAltTagFile), before);
    EXPECT_TRUE(format.changed);
}

TEST_F(PcmSideRecordsTest, EditsReachTheGroupFile) {
    auto records = readSideRecords(format, parent);
    setFilteredFrames(records.frameFilter, {true, false, false, false});
    records.altTag.set("ALT\\N", "3");
    auto& row = records.formatSwitch.lists["MLC\\N"].emplace_back();
    row.set("MLC1-n", "0010");
    row.set("MLC2-n", "List B");
    ASSERT_TRUE(storeSideRecords(format, parent, records));
    ASSERT_TRUE(savePcmFormat(format, parent));
    const auto lines = saved("[kavu]PCMFMT.P01");
    for (const auto* const line :
         {"P-1\\MFF\\N:1;", "P-1\\MFF\\MFN-1:1;", "P-1\\ALT\\N:3;", "P-1\\MLC\\N:2;",
          "P-1\\MLC2-2:List B;", "P-1\\FSC2-1:Link B;"}) {
        EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
    }
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "P-1\\MFF\\MFN-2:4;"), 0);
}

TEST_F(PcmSideRecordsTest, FramesThatTheStreamHasNotAreNotFiltered) {
    const auto records = readSideRecords(format, parent);
    EXPECT_EQ(filteredFrames(records.frameFilter, 3), (std::vector<bool>{false, true, false}));
    EXPECT_TRUE(filteredFrames(records.frameFilter, 0).empty());
}

TEST_F(PcmSideRecordsTest, FilesThatAreNotThereAreEmptyRecords) {
    format.closeFormat();
    EXPECT_EQ(readSideRecords(format, parent), PcmSideRecords{});
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(PcmSideRecordsTest, AFileThatCanNotBeWrittenIsReported) {
    const auto path = store.pathOf(kFormatSwitchFile);
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_FALSE(storeSideRecords(format, parent, {}));
    ASSERT_FALSE(ui.boxes.empty());
    EXPECT_NE(ui.boxes.back().text.find(path), std::string::npos);
}

TEST_F(PcmSideRecordsTest, BeforeMinorFrameFilteringItsFileStaysAsItIs) {
    const auto before = read(kFrameFilterFile);
    document.version = 2007;
    PcmSideRecords records;
    setFilteredFrames(records.frameFilter, {true});
    EXPECT_TRUE(storeSideRecords(format, parent, records));
    EXPECT_EQ(read(kFrameFilterFile), before);
}

TEST_F(PcmSideRecordsTest, TheLocationOfTheIdentifierIsAWordOfTheMinorFrame) {
    for (const auto* const good : {"", "1", "8"}) {
        EXPECT_TRUE(checkSwitchLocation(format, parent, good)) << good;
    }
    EXPECT_FALSE(checkSwitchLocation(format, parent, "0"));
    EXPECT_FALSE(checkSwitchLocation(format, parent, "9"));
    EXPECT_EQ(ui.countBoxes(160), 2);
    EXPECT_NE(boxText(160).find("between 1 and 8"), std::string::npos);
}

}  // namespace
}  // namespace kavu
