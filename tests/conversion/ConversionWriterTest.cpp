#include "conversion/ConversionFixture.h"
#include "conversion/ConversionWriter.h"
#include "core/text/Text.h"

#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::Names;

/// The raw commands of one record: its fields are the words of a text, `code:value`.
std::string raw(const std::string& fields) {
    std::string text = "C-5\\DCN:M;\r\n";
    std::istringstream words(fields);
    for (std::string word; words >> word;) {
        text += "C-5\\" + word + ";\r\n";
    }
    return text;
}

/// The saved fields of a record in order, without the prefix, joined by blanks.
std::string saved(int edition, const std::string& fields) {
    ConversionFixture f(edition);
    auto text = replaceAll(f.roundTrip(raw(fields)), "C-1\\", "");
    text = replaceAll(text, ";\r\n", " ");
    return std::string(trim(text));
}

/// A field of everything that is written in front of the type, in a jumbled order.
constexpr const char* kEverything =
    "CRT:c SR:10 MOT6:m6 MOT5:m5 MOT4:m4 MOT3:m3 MOT2:m2 MOT1:m1 "
    "MA3-1:a3 MA2-1:a2 MA1-1:a1 MA\\N:1 MA3:A3 MA2:A2 MA1:A1 "
    "MC3-2:f MC2-2:e MC1-2:d MC3-1:c MC2-1:b MC1-1:a MC\\N:2 "
    "BWTV-1:v1 BWTB-1:b1 BWT\\N:1 FPF:IEEE_32 BFM:BWT MN4:ANA MN3:n3 MN2:n2 MN1:n1 "
    "POC4:p4 POC3:p3 POC2:p2 POC1:p1 TRD7:t7 TRD6:t6 TRD5:t5 TRD4:U TRD3:t3 TRD2:t2 TRD1:t1";

constexpr const char* kHead =
    "DCN:M TRD1:t1 TRD2:t2 TRD3:t3 TRD4:U TRD5:t5 TRD6:t6 TRD7:t7 "
    "POC1:p1 POC2:p2 POC3:p3 POC4:p4 MN1:n1 MN2:n2 MN3:n3 MN4:ANA BFM:BWT ";
constexpr const char* kFlight = "MC\\N:2 MC1-1:a MC2-1:b MC3-1:c MC1-2:d MC2-2:e MC3-2:f ";

TEST(ConversionWriter, FieldsInFrontOfTheTypeComeInOrderByEdition) {
    const std::string head = kHead;
    const std::string flight = kFlight;
    const std::string plainAmbient = "MA1:A1 MA2:A2 MA3:A3 ";
    const std::string ambient = "MA\\N:1 MA1-1:a1 MA2-1:a2 MA3-1:a3 ";
    const std::string limits = "MOT1:m1 MOT2:m2 MOT3:m3 MOT4:m4 ";
    const std::string warnings = "MOT5:m5 MOT6:m6 ";
    const std::string weights = "BWT\\N:1 BWTB-1:b1 BWTV-1:v1 ";
    const std::string format = "FPF:IEEE_32 ";
    const std::string rate = "SR:10 ";
    const std::string date = "CRT:c ";
    const std::string end = "DCT:NON";
    const struct {
        int edition;
        std::string expected;
    } cases[] = {
        {1996, head + flight + plainAmbient + limits + rate + end},
        {1999, head + flight + ambient + limits + warnings + rate + end},
        {2000, head + format + flight + ambient + limits + warnings + rate + end},
        {2001, head + format + flight + ambient + limits + warnings + rate + end},
        {2004, head + format + flight + ambient + limits + warnings + rate + date + end},
        {2005, head + format + flight + ambient + limits + warnings + rate + date + end},
        {2007, head + format + weights + flight + ambient + limits + warnings + rate + date + end},
        {2009, head + format + weights + flight + ambient + limits + warnings + rate + date + end},
        {2011, head + format + weights + flight + ambient + limits + warnings + rate + date + end},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(saved(c.edition, kEverything), c.expected) << c.edition;
    }
}

TEST(ConversionWriter, TypesHaveTheirFieldsInOrderByEdition) {
    const std::string derived =
        "DCT:DER DPNO:3 DPTM:t DPA:alg DPAT:A DPC-2:k2 DPC-1:k1 DPC\\N:2 DP-2:p2 DP-1:p1 DP\\N:2";
    const std::string pairs =
        "CO-2:z CO-1:y CO:x CO1:Y CO\\N:2 PS4-2:d PS3-2:c PS4-1:b PS3-1:a PS2:3 PS1:Y PS\\N:02";
    const std::string pairsOut =
        " PS\\N:2 PS1:Y PS2:3 PS3-1:a PS4-1:b PS3-2:c PS4-2:d CO\\N:2 CO1:Y CO:x CO-1:y CO-2:z";
    const struct {
        const char* what;
        int edition;
        std::string fields;
        std::string expected;  ///< from the type on
    } cases[] = {
        {"pair set", 2011, "DCT:PRS " + pairs, "DCT:PRS" + pairsOut},
        {"pair set in 1996", 1996, "DCT:PRS " + pairs, "DCT:PRS" + pairsOut},
        {"coefficients", 2011, "DCT:COE " + pairs, "DCT:COE" + pairsOut},
        {"coefficients without any", 2007, "DCT:COE CO\\N:0", "DCT:COE PS\\N:0 PS1:N PS2:1"},
        {"lower case", 2011, "DCT:coe CO\\N:1 CO:5 CO-1:6",
         "DCT:coe PS\\N:0 PS1:N PS2:1 CO\\N:1 CO1:N CO:5 CO-1:6"},
        {"negative powers", 2007, "DCT:NPC NPC-1:b NPC:a NPC\\N:1",
         "DCT:NPC NPC\\N:1 NPC1:N NPC:a NPC-1:b"},
        {"negative powers of none", 2007, "DCT:NPC NPC:a NPC\\N:0", "DCT:NPC"},
        {"negative powers before their time", 2005, "DCT:NPC NPC-1:b NPC:a NPC\\N:1 VOI\\D:v",
         "DCT:NPC VOI\\D:v"},
        {"other", 2011, "DCT:OTH OTH:words VOI\\D:v", "DCT:OTH OTH:words"},
        {"derived in 1996", 1996, derived, "DCT:DER DP\\N:2 DP-1:p1 DP-2:p2"},
        {"derived in 1999", 1999, derived,
         "DCT:DER DP\\N:2 DP-1:p1 DP-2:p2 DPC\\N:2 DPC-1:k1 DPC-2:k2 DPA:alg"},
        {"derived in 2007", 2007, derived,
         "DCT:DER DP\\N:2 DP-1:p1 DP-2:p2 DPC\\N:2 DPC-1:k1 DPC-2:k2 DPA:alg"},
        {"derived in 2009", 2009, derived,
         "DCT:DER DPAT:A DPA:alg DPTM:t DPNO:3 DP\\N:2 DP-1:p1 DP-2:p2 DPC\\N:2 DPC-1:k1 DPC-2:k2"},
        {"derived of nothing", 2011, "DCT:DER DP\\N:0 DPC\\N:0 DPA:alg", "DCT:DER DPA:alg"},
        {"discrete", 2011, "DCT:DIS DICP-2:d DICC-2:c DICP-1:b DICC-1:a DICI\\N:1 DIC\\N:2",
         "DCT:DIS DIC\\N:2 DICI\\N:1 DICC-1:a DICP-1:b DICC-2:c DICP-2:d"},
        {"discrete without indicators", 2011, "DCT:DIS DICC-1:a DIC\\N:1",
         "DCT:DIS DIC\\N:1 DICI\\N:0 DICC-1:a"},
        {"discrete of none", 2011, "DCT:DIS DICI\\N:1", "DCT:DIS"},
        {"discrete without its count", 2011, "DCT:DIS DICC-1:a DICI\\N:1",
         "DCT:DIS DICI\\N:1 DICC-1:a"},
        {"bus time", 2011, "DCT:BTM BTM:H PTM:L", "DCT:BTM BTM:H"},
        {"PCM time", 2011, "DCT:PTM BTM:H PTM:L", "DCT:PTM PTM:L"},
        {"none", 2011, "DCT:NON VID\\D:d VID\\E:c VOI\\D:b VOI\\E:a OTH:x",
         "DCT:NON VOI\\E:a VOI\\D:b VID\\E:c VID\\D:d"},
        {"voice", 2011, "DCT:VOI VOI\\D:b VOI\\E:a", "DCT:VOI VOI\\E:a VOI\\D:b"},
        {"video", 2011, "DCT:VID VID\\E:c", "DCT:VID VID\\E:c"},
        {"special processing", 2011, "DCT:SP COM:c", "DCT:SP COM:c"},
        {"no type", 2011, "MN1:n", "DCT:NON"},
        {"the comment is last", 2011, "COM:c DCT:OTH OTH:o", "DCT:OTH OTH:o COM:c"},
    };
    for (const auto& c : cases) {
        const auto text = saved(c.edition, c.fields);
        EXPECT_EQ(text.substr(text.find("DCT:")), c.expected) << c.what;
    }
}

TEST(ConversionWriter, CountsStandAsTheyAreAndHideNothing) {
    const struct {
        const char* what;
        const char* fields;
        const char* expected;  ///< behind the name
    } cases[] = {
        {"missing counts", "", "MC\\N:N MA\\N:N DCT:NON"},
        {"no calibration", "MC\\N:N MA\\N:0", "MC\\N:N MA\\N:0 DCT:NON"},
        {"a row of no calibration stays", "MC\\N:N MA\\N:0 MC1-1:x",
         "MC\\N:N MC1-1:x MA\\N:0 DCT:NON"},
        {"a text count", "MC\\N:2x MC1-1:a", "MC\\N:2 MC1-1:a MA\\N:N DCT:NON"},
        {"a count that is no number stands", "MC\\N:- MA\\N:-", "MC\\N:- MA\\N:- DCT:NON"},
        {"zero in front", "DCT:DIS DIC\\N:01 DICC-1:a",
         "MC\\N:N MA\\N:N DCT:DIS DIC\\N:01 DICI\\N:0 DICC-1:a"},
        {"a huge count writes what is there", "DCT:DER DP\\N:2000000000 DP-1:a DP-3:c",
         "MC\\N:N MA\\N:N DCT:DER DP\\N:2000000000 DP-1:a DP-3:c"},
        {"a count too low keeps the rest", "DCT:DER DP\\N:1 DP-1:a DP-2:b",
         "MC\\N:N MA\\N:N DCT:DER DP\\N:1 DP-1:a DP-2:b"},
        {"an index beyond an integer", "DCT:DER DP\\N:9 DP-1:a DP-99999999999:b",
         "MC\\N:N MA\\N:N DCT:DER DP\\N:9 DP-1:a"},
        {"lower-case keys", "dct:DER dp\\n:1 dp-1:a", "MC\\N:N MA\\N:N DCT:DER DP\\N:1 DP-1:a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(saved(2011, c.fields), std::string("DCN:M ") + c.expected) << c.what;
    }
}

TEST(ConversionWriter, NegativeCountsOfAnEditedRecordBecomeZero) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:M;\r\n"));
    const auto chunk = f.conversions.chunk(0);
    chunk->setValue("M", "MC\\N", "-3");
    chunk->setValue("M", "MA\\N", "-1");
    ASSERT_TRUE(f.conversions.store(0, *chunk).ok());
    EXPECT_EQ(f.save(), "C-1\\DCN:M;\r\nC-1\\MC\\N:0;\r\nC-1\\MA\\N:0;\r\nC-1\\DCT:NON;\r\n");
}

TEST(ConversionWriter, BitWeightsAreWrittenOnlyForTheirFormat) {
    EXPECT_EQ(saved(2011, "BFM:UNS BWT\\N:1 BWTB-1:b"), "DCN:M BFM:UNS MC\\N:N MA\\N:N DCT:NON");
    EXPECT_EQ(saved(2011, "BFM:bwt"), "DCN:M BFM:bwt BWT\\N:0 MC\\N:N MA\\N:N DCT:NON");
    EXPECT_EQ(saved(2011, "BFM:BWT BWT\\N:999999999 BWTB-1:b BWTV-2:v"),
              "DCN:M BFM:BWT BWT\\N:999999999 BWTB-1:b BWTV-2:v MC\\N:N MA\\N:N DCT:NON");
}

TEST(ConversionWriter, IndicesFiveAndNineAreSavedAsOneAndTwo) {
    ConversionFixture f;
    EXPECT_EQ(f.roundTrip("C-5\\DCN:A;\r\nC-9\\DCN:B;\r\n"),
              "C-1\\DCN:A;\r\nC-1\\MC\\N:N;\r\nC-1\\MA\\N:N;\r\nC-1\\DCT:NON;\r\n"
              "C-2\\DCN:B;\r\nC-2\\MC\\N:N;\r\nC-2\\MA\\N:N;\r\nC-2\\DCT:NON;\r\n");
}

TEST(ConversionWriter, ValuesHaveRealLineBreaksButTheNameKeepsTheStoredForm) {
    ConversionFixture f;
    const auto text = f.roundTrip(
        "C-1\\DCN:A\x14\x15"
        "B;\r\nC-1\\TRD1:one\x14\x15two;\r\n");
    EXPECT_NE(text.find("C-1\\DCN:A\x14\x15"
                        "B;\r\n"),
              std::string::npos);
    EXPECT_NE(text.find("C-1\\TRD1:one\r\ntwo;\r\n"), std::string::npos);
}

TEST(ConversionWriter, ATemplateLeavesAsNoneWhateverTheDefaultTypeIs) {
    ConversionFixture f;
    f.settings.write("CDCT", "COE");
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "M", true));
    EXPECT_EQ(f.value("M", "DCT"), "COE");
    const auto text = f.save();
    EXPECT_NE(text.find("C-1\\DCT:NON;\r\n"), std::string::npos);
    EXPECT_EQ(text.find("\\CO"), std::string::npos);
    EXPECT_EQ(f.value("M", "DCT"), "NON");
    EXPECT_EQ(f.save(), text) << "saving can be repeated";
}

TEST(ConversionWriter, TheSampleRateIsTrimmedIfRatesAreChecked) {
    EXPECT_NE(saved(2011, "SR:12.5000").find("SR:12.5000"), std::string::npos);
    ConversionFixture f;
    f.settings.writeInteger("ChkSR", 1);
    EXPECT_NE(f.roundTrip(raw("SR:12.5000")).find("C-1\\SR:12.5;\r\n"), std::string::npos);
}

TEST(ConversionWriter, SavingTwiceGivesTheSame) {
    ConversionFixture f;
    const auto first = f.roundTrip(raw(kEverything));
    EXPECT_EQ(f.save(), first);
}

TEST(ConversionWriter, ALoadedAndSavedGroupIsSavedTheSameAgain) {
    ConversionFixture first;
    const auto text = first.roundTrip(raw(std::string(kEverything) + " DCT:PRS PS\\N:1 PS3-1:a"));
    ConversionFixture second;
    EXPECT_EQ(second.roundTrip(text), text);
}

TEST(ConversionWriter, ShowsWhatItIsAt) {
    ConversionFixture f;
    ASSERT_TRUE(f.loadSilently("C-1\\DCN:A;\r\n"));
    f.save();
    EXPECT_EQ(f.ui.progressTexts,
              (Names{"Saving PCM Data Conversion Information...",
                     "Saving Data Conversion Information. Measurement #1", ""}));
    EXPECT_EQ(f.ui.bars, (std::vector<double>{0.0, 0.0}));
}

TEST(ConversionWriter, ACancelStopsTheSaveAndChangesNoRecord) {
    ConversionFixture f;
    f.settings.write("CDCT", "COE");
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "A", true));
    ASSERT_TRUE(f.conversions.createDefaultDefinition(&f.ui, "B", true));
    f.ui.cancelAtPoll = f.ui.polls + 2;
    EXPECT_EQ(f.save(), "<failed>");
    EXPECT_EQ(f.value("A", "DCT"), "COE");
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(ConversionWriter, AnUnreadableCommentIsReported) {
    ConversionFixture f;
    ASSERT_TRUE(f.load("C-1\\DCN:A;\r\nC-1\\COM:" + std::string(31000, 'c') + ";\r\n"));
    const auto& record = f.conversions.chunk(0)->sections()[1];
    ASSERT_EQ(f.conversions.readEuComment(record).size(), 31000U);
    // A folder can be read by nobody.
    const auto path = commentPath(f.store, "A");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(f.save(), "<failed>");
    EXPECT_EQ(f.ui.countBoxes(407), 1);
}

// --- The update file ----------------------------------------------------------------------

class UpdateFileTest : public testing::Test {
  protected:
    UpdateFileTest() {
        f.settings.writeInteger("EnableUpd", 1);
        f.settings.write("UpdPath", path);
    }
    void mark(const std::string& name) {
        const auto place = f.conversions.locateDefinition(name);
        const auto chunk = f.conversions.chunk(place.chunk);
        ASSERT_TRUE(chunk->setValue(place.section, "Chg", "1"));
        ASSERT_TRUE(f.conversions.store(place.chunk, *chunk).ok());
    }
    static constexpr const char* kGroup =
        "C-1\\DCN:Pairs;\r\nC-1\\DCT:PRS;\r\nC-1\\PS\\N:3;\r\nC-1\\PS3-1:1;\r\nC-1\\PS4-1:10;\r\n"
        "C-1\\PS3-2:2;\r\nC-1\\PS4-2:20;\r\nC-1\\PS3-3:3;\r\n"
        "C-2\\DCN:Line;\r\nC-2\\DCT:COE;\r\nC-2\\CO\\N:12;\r\nC-2\\CO-12:far;\r\nC-2\\CO-2:0.5;\r\n"
        "C-2\\CO-1:1.5;\r\n"
        "C-3\\DCN:Other;\r\nC-3\\DCT:OTH;\r\n"
        "C-4\\DCN:Lower;\r\nC-4\\DCT:prs;\r\n"
        "C-5\\DCN:Untouched;\r\nC-5\\DCT:PRS;\r\n";
    static constexpr const char* kHeader =
        "\n* These items added by KAVU-9 TMATS Editor. Date: 01-02-2026 Time: 03:04:05\n";
    static constexpr const char* kPairs = "Pairs, TABLE\n1, 10\n2, 20\nEND\n\n";
    static constexpr const char* kLine = "Line, 0.5, 1.5, 0\n\n";

    ConversionFixture f;
    std::string path = f.folder / "update.txt";
};

TEST_F(UpdateFileTest, HoldsChangedPairSetsAndCoefficientsOnce) {
    ASSERT_TRUE(f.load(kGroup));
    for (const auto* name : {"Pairs", "Line", "Other", "Lower"}) {
        mark(name);
    }
    f.save();
    EXPECT_EQ(test::readFile(path), std::string(kHeader) + kPairs + kLine);
    EXPECT_EQ(f.value("Pairs", "Chg"), "");
    EXPECT_EQ(f.value("Line", "Chg"), "");
    EXPECT_EQ(f.value("Other", "Chg"), "1");
    EXPECT_EQ(f.value("Lower", "Chg"), "1");
    f.save();
    EXPECT_EQ(test::readFile(path), std::string(kHeader) + kPairs + kLine);
}

TEST_F(UpdateFileTest, IsAppendedToWithoutASecondHeader) {
    test::writeFile(path, "before\n");
    ASSERT_TRUE(f.load(kGroup));
    mark("Line");
    f.save();
    EXPECT_EQ(test::readFile(path), std::string("before\n") + kLine);
}

TEST_F(UpdateFileTest, IsOverwrittenIfTheSettingsSaySo) {
    f.settings.writeInteger("UpdAppend", 0);
    test::writeFile(path, "before\n");
    ASSERT_TRUE(f.load(kGroup));
    mark("Line");
    f.save();
    EXPECT_EQ(test::readFile(path), std::string(kHeader) + kLine);
}

TEST_F(UpdateFileTest, IsNotMadeWithoutTheSetting) {
    f.settings.writeInteger("EnableUpd", 0);
    ASSERT_TRUE(f.load(kGroup));
    mark("Line");
    f.save();
    EXPECT_FALSE(fileExists(path));
    EXPECT_EQ(f.value("Line", "Chg"), "1");
}

TEST_F(UpdateFileTest, ThatCanNotBeOpenedIsReportedAndTheChangesWait) {
    f.settings.write("UpdPath", f.folder / "missing/update.txt");
    ASSERT_TRUE(f.load(kGroup));
    mark("Line");
    EXPECT_NE(f.save(), "<failed>");
    EXPECT_EQ(f.ui.countBoxes(313), 1);
    EXPECT_EQ(f.value("Line", "Chg"), "1");
}

TEST_F(UpdateFileTest, ThatTakesNoMoreIsReportedAndTheChangesWait) {
    if (!fileExists("/dev/full")) {
        FAIL() << "needs /dev/full";
    }
    f.settings.write("UpdPath", "/dev/full");
    ASSERT_TRUE(f.load(kGroup));
    mark("Line");
    EXPECT_NE(f.save(), "<failed>");
    EXPECT_EQ(f.ui.countBoxes(313), 1);
    EXPECT_EQ(f.value("Line", "Chg"), "1");
}

}  // namespace
}  // namespace kavu
