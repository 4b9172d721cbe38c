#include "MeasurementStage.h"
#include "application/automation/AutomationMeasurements.h"

namespace kavu::test {
namespace {

class AutomationMeasurementsTest : public MeasurementStage {
  protected:
    void setClass(std::string_view name) {
        format().typeFormat = name;
        (void)session->history().commit();
    }
};

/// "M" in every minor frame, "S" in frame 3 of the subframe, "F" in two fragments.
const std::vector<MeasurementRows> kMixed = {
    {"MN@:M", "MN1@:EV", "MN2@:L", "MN3@:M", "LT@:MFSC", "MFS\\N@:2", "MFS1@:I", "MFS2@:4",
     "MFS3@:FW", "MFS4@:3"},
    {"MN@:S", "LT@:SF", "SF1@:SF", "SF2@:3", "SF3@:FW"},
    {"MN@:F", "LT@:MFFR", "FMF\\N@:2", "FMF1@:32", "FMF2@:I", "FMF3@:12", "FMF4@:FW", "FMF5@:1"}};

TEST_F(AutomationMeasurementsTest, EveryMethodNeedsADocumentAndThenAFormat) {
    auto m = measurements();
    const std::vector<std::function<void()>> calls = {
        [&] { create(2, 1, "N"); },
        [&] { m.DeleteMeasurement("A"); },
        [&] { m.EditMeasurementByName(0, "A"); },
        [&] { m.EditMeasurementsAt(0, 2, 1); },
        [&] { (void)m.CountMeasurementsAt(2, 1); },
        [&] { (void)m.CountMeasurementOccurences("A"); },
        [&] { (void)m.GetMeasurementBitMask("A"); },
        [&] { m.SetMeasurementBitMask("A", "FW"); },
        [&] { (void)m.GetMeasurementName(2, 1, 1); },
        [&] { m.SetMeasurementName("A", "B"); },
        [&] { (void)m.GetMeasurementOccurence("A", 1); },
        [&] { (void)m.GetMeasurementParity("A"); },
        [&] { m.SetMeasurementParity("A", "EV"); },
        [&] { (void)m.GetMeasurementParityXfer("A"); },
        [&] { m.SetMeasurementParityXfer("A", "L"); },
        [&] { (void)m.GetMeasurementWordLength("A"); },
        [&] { m.SetMeasurementWordLength(0, "A", 8); },
        [&] { (void)m.GetMeasurementXferOrder("A"); },
        [&] { m.SetMeasurementXferOrder("A", "L"); }};
    ASSERT_EQ(calls.size(), 19U);
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(errorOf(calls[i]), "NoDocument") << "call " << i;
    }
    open();
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(errorOf(calls[i]), "NoFormat") << "call " << i;
    }
}

TEST_F(AutomationMeasurementsTest, AnUnknownNameIsNotFoundAndShowsNothingAtAnyWindow) {
    load();
    reach(&windows);
    auto m = measurements();
    const std::vector<std::function<void()>> calls = {
        [&] { m.DeleteMeasurement("X"); },
        [&] { m.EditMeasurementByName(kWindow, "X"); },
        [&] { (void)m.CountMeasurementOccurences("X"); },
        [&] { (void)m.GetMeasurementBitMask("X"); },
        [&] { m.SetMeasurementBitMask("X", "no mask"); },
        [&] { m.SetMeasurementName("X", ""); },
        [&] { (void)m.GetMeasurementOccurence("X", 1); },
        [&] { (void)m.GetMeasurementParity("X"); },
        [&] { m.SetMeasurementParity("X", "?"); },
        [&] { (void)m.GetMeasurementParityXfer("X"); },
        [&] { m.SetMeasurementParityXfer("X", "?"); },
        [&] { (void)m.GetMeasurementWordLength(""); },
        [&] { m.SetMeasurementWordLength(kWindow, "X", 0); },
        [&] { (void)m.GetMeasurementXferOrder("X"); },
        [&] { m.SetMeasurementXferOrder("", "?"); }};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(errorOf(calls[i]), "NotFound") << "call " << i;
    }
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_TRUE(windows.opened.empty());
}

TEST_F(AutomationMeasurementsTest, PlacesOutsideTheFrameAreOutOfRange) {
    load();
    const int most = std::numeric_limits<std::int32_t>::max();
    const int least = std::numeric_limits<std::int32_t>::min();
    for (const auto& [fwp, fn] : std::vector<std::pair<int, int>>{{0, 1},
                                                                  {16, 1},
                                                                  {-1, 1},
                                                                  {2, 0},
                                                                  {2, 9},
                                                                  {most, 1},
                                                                  {least, 1},
                                                                  {2, most},
                                                                  {2, least}}) {
        const auto w = fwp;
        const auto f = fn;
        EXPECT_EQ(creation(w, f, "N"), "OutOfRange") << w << " " << f;
        EXPECT_EQ(errorOf([&] { (void)measurements().CountMeasurementsAt(w, f); }), "OutOfRange");
        EXPECT_EQ(errorOf([&] { (void)measurements().GetMeasurementName(w, f, 1); }), "OutOfRange");
        EXPECT_EQ(errorOf([&] { measurements().EditMeasurementsAt(0, w, f); }), "OutOfRange");
    }
    for (const int n : {0, 2, -1, most, least}) {
        EXPECT_EQ(errorOf([&] { (void)measurements().GetMeasurementName(2, 1, n); }), "OutOfRange");
    }
    EXPECT_EQ(errorOf([&] { (void)measurements().GetMeasurementName(3, 1, 1); }), "OutOfRange")
        << "an empty place";
    for (const int n : {0, 9, -1, most, least}) {
        EXPECT_EQ(errorOf([&] { (void)measurements().GetMeasurementOccurence("A", n); }),
                  "OutOfRange");
    }
}

TEST_F(AutomationMeasurementsTest, CountsAndNamesTheMeasurementsOfAPlace) {
    load(documentWith(kMixed));
    create(4, 1, "Z");
    auto m = measurements();
    EXPECT_EQ(m.CountMeasurementsAt(4, 8), 2);
    EXPECT_EQ(m.GetMeasurementName(4, 5, 1), "M");
    EXPECT_EQ(m.GetMeasurementName(4, 5, 2), "Z");
    EXPECT_EQ(m.CountMeasurementsAt(10, 2), 0);
    EXPECT_EQ(m.CountMeasurementsAt(10, 3), 1);
    EXPECT_EQ(m.GetMeasurementName(10, 3, 1), "S");
}

TEST_F(AutomationMeasurementsTest, AnOccurrenceIsAHitOfTheWalkByFramesAndThenWords) {
    load(documentWith(kMixed));
    auto m = measurements();
    const auto place = [&](const std::string& name, int n) {
        const auto found = m.GetMeasurementOccurence(name, n);
        return std::to_string(found.Fwp) + ":" + std::to_string(found.Fn);
    };
    EXPECT_EQ(place("M", 1), "4:1");
    EXPECT_EQ(place("M", 2), "7:1");
    EXPECT_EQ(place("M", 3), "4:2");
    EXPECT_EQ(place("M", 16), "7:8");
    EXPECT_EQ(place("S", 1), "10:3");
    EXPECT_EQ(m.CountMeasurementOccurences("m"), 16) << "in any case";
}

TEST_F(AutomationMeasurementsTest, FragmentsAreHitsButNoOccurrencesOfTheirOwn) {
    load(documentWith(kMixed));
    auto m = measurements();
    EXPECT_EQ(m.CountMeasurementOccurences("F"), 8);
    const auto last = m.GetMeasurementOccurence("F", 16);
    EXPECT_EQ(last.Fwp, 13);
    EXPECT_EQ(last.Fn, 8);
    EXPECT_EQ(errorOf([&] { (void)m.GetMeasurementOccurence("F", 17); }), "OutOfRange");
}

TEST_F(AutomationMeasurementsTest, CodesAreTakenInAnyCaseAtAllCopies) {
    load(documentWith(kMixed));
    auto m = measurements();
    EXPECT_EQ(m.GetMeasurementParity("M"), "EV");
    EXPECT_EQ(m.GetMeasurementParityXfer("M"), "L");
    EXPECT_EQ(m.GetMeasurementXferOrder("M"), "M");
    expectOneLevel([&] { m.SetMeasurementParity("M", "od"); });
    expectOneLevel([&] { m.SetMeasurementParityXfer("M", "t"); });
    expectOneLevel([&] { m.SetMeasurementXferOrder("M", "l"); });
    for (const int fwp : {4, 7}) {
        EXPECT_EQ(at(fwp, 1, "M").parity, "OD");
        EXPECT_EQ(at(fwp, 1, "M").parityTransferOrder, "T");
        EXPECT_EQ(at(fwp, 1, "M").transferOrder, "L");
    }
    for (const auto* const wrong : {"", "X", "EVEN", "ODD ", "E"}) {
        EXPECT_EQ(errorOf([&] { m.SetMeasurementParity("M", wrong); }), "BadValue") << wrong;
        EXPECT_EQ(errorOf([&] { m.SetMeasurementParityXfer("M", wrong); }), "BadValue") << wrong;
        EXPECT_EQ(errorOf([&] { m.SetMeasurementXferOrder("M", wrong); }), "BadValue") << wrong;
    }
}

TEST_F(AutomationMeasurementsTest, SettingAThingToItselfRaisesNothing) {
    load(documentWith(kMixed));
    format().changed = false;
    signals.clear();
    const auto before = picture();
    auto m = measurements();
    m.SetMeasurementParity("M", "ev");
    m.SetMeasurementParityXfer("M", "L");
    m.SetMeasurementXferOrder("M", "M");
    m.SetMeasurementBitMask("M", "FW");
    m.SetMeasurementWordLength(0, "M", 16);
    m.SetMeasurementName("M", "M");
    EXPECT_TRUE(picture() == before);
    EXPECT_FALSE(session->history().canUndo());
    EXPECT_TRUE(signals.empty());
}

// --- masks -----------------------------------------------------------------------------------

TEST_F(AutomationMeasurementsTest, AMaskIsBinaryWhateverTheSettingOfMasksSays) {
    load(documentWith(kMixed));
    auto m = measurements();
    for (const auto* const hexadecimal : {"0", "1"}) {
        test.application.context().settings.write("HexBM", hexadecimal);
        m.SetMeasurementBitMask("M", "1010");
        EXPECT_EQ(m.GetMeasurementBitMask("M"), "1010000000000000");
        EXPECT_EQ(errorOf([&] { m.SetMeasurementBitMask("M", "FF"); }), "Refused 142");
    }
    for (const auto* const wrong : {"", "fw", "102", "FW ", " 1"}) {
        EXPECT_EQ(errorOf([&] { m.SetMeasurementBitMask("M", wrong); }), "Refused 142") << wrong;
    }
    EXPECT_EQ(errorOf([&] { m.SetMeasurementBitMask("M", std::string(65, '1')); }), "Refused 142");
}

TEST_F(AutomationMeasurementsTest, AMaskIsCutAndPaddedAtTheRightAtAllCopies) {
    load(documentWith(kMixed));
    auto m = measurements();
    expectOneLevel([&] { m.SetMeasurementBitMask("M", "11111111000000001111"); });
    EXPECT_EQ(at(4, 1, "M").mask, "1111111100000000");
    EXPECT_EQ(at(7, 1, "M").mask, "1111111100000000");
    m.SetMeasurementBitMask("M", "1111111111111111");
    EXPECT_EQ(m.GetMeasurementBitMask("M"), "1111111111111111") << "as it is kept";
    m.SetMeasurementBitMask("M", "FW");
    EXPECT_EQ(m.GetMeasurementBitMask("M"), "FW");
}

TEST_F(AutomationMeasurementsTest, AMeasurementInFragmentsHasNoSingleMask) {
    load(documentWith(kMixed));
    auto m = measurements();
    EXPECT_EQ(m.GetMeasurementBitMask("F"), "FW");
    EXPECT_EQ(errorOf([&] { m.SetMeasurementBitMask("F", "1111"); }), "Refused 0");
}

const MeasurementRows kTwoFragments = {"MN@:W",       "LT@:WDFR",
                                       "IDCN@:SFID",  "MML\\N@:1",
                                       "MNF\\N@-1:2", "MWL@-1:24",
                                       "WP@-1-1:2",   "WI@-1-1:0",
                                       "EWP@-1-1:2",  "FP@-1-1:1",
                                       "FI@-1-1:1",   "EFP@-1-1:8",
                                       "WFM@-1-1:FW", "WFT@-1-1:D",
                                       "WFP@-1-1:1",  "WP@-1-2:3",
                                       "WI@-1-2:0",   "EWP@-1-2:3",
                                       "FP@-1-2:1",   "FI@-1-2:1",
                                       "EFP@-1-2:8",  "WFM@-1-2:1111111100000000",
                                       "WFT@-1-2:D",  "WFP@-1-2:2"};

TEST_F(AutomationMeasurementsTest, TheMaskOfRangesIsThatOfTheFirstFragment) {
    load(documentWith({kTwoFragments}));
    auto m = measurements();
    EXPECT_EQ(m.GetMeasurementBitMask("W"), "FW");
    EXPECT_EQ(errorOf([&] { m.SetMeasurementBitMask("W", "1111"); }), "Refused 0");
    EXPECT_EQ(m.CountMeasurementOccurences("W"), 8);
}

TEST_F(AutomationMeasurementsTest, TheMaskOfRangesWithOneFragmentIsSetThere) {
    load(documentWith({}, "", "11"));
    create(2, 1, "R", 3, 2);
    auto m = measurements();
    expectOneLevel([&] { m.SetMeasurementBitMask("R", "1111"); });
    EXPECT_EQ(m.GetMeasurementBitMask("R"), "1111000000000000");
    const auto* const definition = format().wordFrameDefinition(at(2, 1, "R").wordFrameIndex);
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->locations.front().fragments.front().mask, "1111000000000000");
    EXPECT_EQ(at(2, 5, "R").mask, "1111000000000000");
}

// --- word lengths ----------------------------------------------------------------------------

TEST_F(AutomationMeasurementsTest, TheWordLengthIsThatOfEveryWordOfTheMeasurement) {
    load(documentWith(kMixed));
    auto m = measurements();
    const int bits = format().bitsPerMinorFrame;
    expectOneLevel([&] { m.SetMeasurementWordLength(0, "M", 12); });
    EXPECT_EQ(m.GetMeasurementWordLength("M"), 12);
    EXPECT_EQ(format().wordLength(4), 12);
    EXPECT_EQ(format().wordLength(7), 12);
    EXPECT_EQ(format().wordLength(5), 16);
    EXPECT_EQ(format().bitsPerMinorFrame, bits - 8);
}

TEST_F(AutomationMeasurementsTest, AWordLengthKeepsToTheRulesOfTheCommonOne) {
    load(documentWith(kMixed));
    auto m = measurements();
    for (const int wrong : {0, -1, 100, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(errorOf([&] { m.SetMeasurementWordLength(0, "M", wrong); }), "OutOfRange");
    }
    m.SetMeasurementWordLength(0, "M", 99);
    setClass("ONE");
    for (const int wrong : {0, 3, 33}) {
        EXPECT_EQ(errorOf([&] { m.SetMeasurementWordLength(0, "M", wrong); }), "Refused 219");
    }
    m.SetMeasurementWordLength(0, "M", 32);
    setClass("1553");
    EXPECT_EQ(errorOf([&] { m.SetMeasurementWordLength(0, "M", 16); }), "Refused 220");
}

TEST_F(AutomationMeasurementsTest, TheLimitOfClassOneIs16Before106_05) {
    load(documentWith(kMixed, "", "04"));
    setClass("ONE");
    auto m = measurements();
    EXPECT_EQ(errorOf([&] { m.SetMeasurementWordLength(0, "M", 17); }), "Refused 219");
    EXPECT_THAT(text, ::testing::HasSubstr("16"));
}

TEST_F(AutomationMeasurementsTest, AWordLengthThatIsRefusedIsShownAtAWindow) {
    load(documentWith(kMixed));
    reach(&windows);
    setClass("ONE");
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementWordLength(kWindow, "M", 3); }),
              "Refused 219");
    EXPECT_TRUE(windows.ui.hasBox(219));
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementWordLength(0, "M", 3); }), "Refused 219");
    EXPECT_EQ(windows.ui.countBoxes(219), 1) << "without a window nothing is shown";
}

// --- windows ---------------------------------------------------------------------------------

TEST_F(AutomationMeasurementsTest, TheEditOpensAtTheFirstOccurrenceOrAtThePlace) {
    load(documentWith(kMixed));
    EXPECT_EQ(errorOf([&] { measurements().EditMeasurementByName(0, "M"); }), "NoDisplay");
    EXPECT_EQ(errorOf([&] { measurements().EditMeasurementsAt(0, 4, 1); }), "NoDisplay");
    reach(&windows);
    measurements().EditMeasurementByName(kWindow, "s");
    measurements().EditMeasurementsAt(kWindow, 7, 2);
    EXPECT_THAT(windows.opened, ::testing::ElementsAre("word 10 3 S", "word 7 2 "));
    windows.answer = false;
    EXPECT_EQ(errorOf([&] { measurements().EditMeasurementByName(0, "S"); }), "Cancelled");
}

// --- names -----------------------------------------------------------------------------------

TEST_F(AutomationMeasurementsTest, ARenameChangesAllOccurrences) {
    load(documentWith(kMixed));
    expectOneLevel([&] { measurements().SetMeasurementName("m", "New"); });
    EXPECT_EQ(placesOf("New"), "4:1 7:1");
    EXPECT_EQ(placesOf("M"), "");
    EXPECT_EQ(at(4, 1, "New").locationType, "MFSC");
    EXPECT_EQ(at(7, 1, "New").parity, "EV");
}

TEST_F(AutomationMeasurementsTest, ARangeKeepsItsPlacesUnderANewName) {
    load(documentWith({kTwoFragments}));
    measurements().SetMeasurementName("W", "V");
    EXPECT_EQ(placesOf("V"), "2:1 3:1");
    EXPECT_EQ(measurements().CountMeasurementOccurences("V"), 8);
}

TEST_F(AutomationMeasurementsTest, ANewNameKeepsToTheRulesOfNames) {
    load(documentWith(kMixed));
    auto m = measurements();
    const auto renamed = [&](const std::string& name) {
        return errorOf([&] { m.SetMeasurementName("M", name); });
    };
    EXPECT_EQ(renamed(""), "Refused 326");
    EXPECT_EQ(renamed(" N"), "BadValue");
    EXPECT_EQ(renamed("N "), "BadValue");
    EXPECT_EQ(renamed("N\n"), "BadValue");
    EXPECT_EQ(renamed(std::string(33, 'N')), "BadValue");
    EXPECT_EQ(renamed("N;M"), "Refused 402");
    EXPECT_EQ(renamed("s"), "Refused 334");
    EXPECT_THAT(text, ::testing::HasSubstr("Frame Word Position: 10 Frame Number: 3"));
    EXPECT_EQ(renamed(std::string(32, 'N')), "none");
}

TEST_F(AutomationMeasurementsTest, ItsOwnNameInAnotherCaseIsAllowedWithItsRecord) {
    load(documentWith(kMixed, "C-1\\DCN:M;C-1\\MN1:Text;C-1\\DCT:NON;"));
    measurements().SetMeasurementName("M", "m");
    EXPECT_EQ(measurements().GetMeasurementName(4, 1, 1), "m");
    EXPECT_TRUE(hasRecord("m"));
    EXPECT_FALSE(hasRecord("M"));
    EXPECT_EQ(key("m", "MN1"), "Text");
}

TEST_F(AutomationMeasurementsTest, TheRecordFollowsItsMeasurement) {
    load(documentWith(kMixed, "C-1\\DCN:M;C-1\\MN1:Text;C-1\\DCT:NON;"));
    measurements().SetMeasurementName("M", "New");
    EXPECT_EQ(key("New", "MN1"), "Text");
    undoOneLevel();
    EXPECT_EQ(placesOf("M"), "4:1 7:1");
    EXPECT_EQ(key("M", "MN1"), "Text");
    EXPECT_FALSE(hasRecord("New"));
    measurements().SetMeasurementName("M", "Newer");
    EXPECT_FALSE(hasRecord("M"));
    EXPECT_EQ(key("Newer", "MN1"), "Text");
    EXPECT_TRUE(document().changed) << "a record is of the document";
}

TEST_F(AutomationMeasurementsTest, ANameThatHasARecordKeepsIt) {
    load(documentWith(
        kMixed, "C-1\\DCN:M;C-1\\MN1:Old;C-1\\DCT:NON;C-2\\DCN:new;C-2\\MN1:Own;C-2\\DCT:NON;"));
    measurements().SetMeasurementName("M", "New");
    EXPECT_EQ(key("M", "MN1"), "Old");
    EXPECT_EQ(key("new", "MN1"), "Own");
    EXPECT_FALSE(hasRecord("New"));
}

TEST_F(AutomationMeasurementsTest, ANameOfATaggedMeasurementIsInUse) {
    load(documentWith({}, "", "11"));
    create(2, 1, "M");
    const auto path =
        test.application.context().store.path("[kavu]DTAG0000.D%2.2d", format().dGroup);
    writeFile(path, "D-1\\MN-1-9:Tagged;");
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementName("M", "TAGGED"); }), "Refused 339");
    EXPECT_EQ(creation(3, 1, "tagged"), "Refused 339");
}

const char kSecondStream[] =
    "D-2\\DLN:TWO;D-2\\ML\\N:1;D-2\\MLN-1:L;D-2\\MN\\N-1:2;D-2\\MN-1-1:OTHER;D-2\\LT-1-1:MF;"
    "D-2\\MF-1-1:1;D-2\\MN-1-2:M;D-2\\LT-1-2:MF;D-2\\MF-1-2:2;"
    "C-1\\DCN:M;C-1\\MN1:Shared;C-1\\DCT:NON;";

TEST_F(AutomationMeasurementsTest, ANameOfAnotherStreamIsRefusedWhileNamesAreChecked) {
    load(documentWith(kMixed, kSecondStream));
    test.application.measurementNames().setChecking(true, false);
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementName("S", "OTHER"); }), "Refused 455");
    EXPECT_EQ(creation(3, 1, "OTHER"), "Refused 455");
    test.application.measurementNames().setChecking(false, false);
    EXPECT_EQ(creation(3, 1, "OTHER"), "none");
}

TEST_F(AutomationMeasurementsTest, ASharedConversionStaysAsItIs) {
    load(documentWith(kMixed, kSecondStream));
    test.application.measurementNames().setChecking(true, false);
    measurements().SetMeasurementName("M", "New");
    EXPECT_EQ(key("M", "MN1"), "Shared");
    EXPECT_FALSE(hasRecord("New"));
    measurements().SetMeasurementName("New", "M2");
    create(3, 1, "X");
    measurements().DeleteMeasurement("M2");
    EXPECT_EQ(key("M", "MN1"), "Shared");
}

TEST_F(AutomationMeasurementsTest, ADeletionKeepsASharedConversion) {
    load(documentWith(kMixed, kSecondStream));
    test.application.measurementNames().setChecking(true, false);
    measurements().DeleteMeasurement("M");
    EXPECT_EQ(placesOf("M"), "");
    EXPECT_EQ(key("M", "MN1"), "Shared");
}

TEST_F(AutomationMeasurementsTest, ADeletionTakesTheConversionWithIt) {
    load(documentWith(kMixed, "C-1\\DCN:M;C-1\\MN1:Text;C-1\\DCT:NON;"));
    ASSERT_TRUE(hasRecord("M"));
    const auto before = pictureOf(format()).words;
    measurements().DeleteMeasurement("m");
    EXPECT_TRUE(format().changed);
    EXPECT_FALSE(hasRecord("M"));
    undoOneLevel();
    EXPECT_TRUE(pictureOf(format()).words == before);
    EXPECT_EQ(key("M", "MN1"), "Text");
    measurements().DeleteMeasurement("M");
    EXPECT_EQ(placesOf("M"), "");
    EXPECT_FALSE(hasRecord("M"));
    EXPECT_EQ(errorOf([&] { measurements().DeleteMeasurement("M"); }), "NotFound");
}

TEST_F(AutomationMeasurementsTest, ADeletionRemovesHiddenSubframesThatBecomeEmpty) {
    load(documentWith({}, "", "11"));
    create(2, 3, "R");
    ASSERT_EQ(format().wordType(2), WordType::Subframe) << "hidden from 106-11 on";
    measurements().DeleteMeasurement("R");
    EXPECT_EQ(format().wordType(2), WordType::Minor);
}

TEST_F(AutomationMeasurementsTest, NamesOfWindows1252FilesAreFoundAndStayInTheirEncoding) {
    load(
        documentWith({{"MN@:Dr\xFC"
                       "cke",
                       "LT@:MF", "MF@:2"}}));
    auto m = measurements();
    EXPECT_EQ(m.GetMeasurementName(2, 1, 1), "Drücke");
    EXPECT_EQ(m.CountMeasurementOccurences("Drücke"), 8);
    EXPECT_EQ(m.CountMeasurementOccurences("DRücke"), 8);
    EXPECT_EQ(creation(3, 1, "Drücke"), "Refused 334") << "the same characters";
    m.SetMeasurementName("Drücke", "Öl");
    EXPECT_EQ(placesOf("\xD6"
                       "l"),
              "2:1");
    EXPECT_EQ(m.GetMeasurementName(2, 1, 1), "Öl");
    m.SetMeasurementName("Öl", "压力");
    EXPECT_EQ(placesOf("压力"), "2:1") << "which the former encoding does not have";
}

}  // namespace
}  // namespace kavu::test
