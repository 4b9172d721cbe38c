#include "application/automation/AutomationStage.h"
#include "pcm/structure/SubframeEdit.h"

namespace kavu {
namespace {

using test::AutomationStage;
using test::kLeastInt;
using test::kMostInt;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class AutomatedCounters : public AutomationStage {
  protected:
    /// The document as one of 106-11, where every plain word has a hidden subframe: "A" is in every
    /// frame of word 2, "B" only in frame 1 of word 3.
    static std::string latest() {
        return "G\\106:11;G\\DSI\\N:1;G\\DSI-1:Source;G\\DST-1:RF;T-1\\ID:Source;"
               "M-1\\ID:Source;M-1\\BB\\DLN:ONE;M-1\\SI\\N:0;"
               "P-1\\DLN:ONE;P-1\\TF:TWO;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:16;"
               "P-1\\ISF\\N:1;P-1\\ISF1-1:SFID;P-1\\ISF2-1:ID;P-1\\IDC1-1:15;P-1\\IDC2-1:16;"
               "P-1\\IDC3-1:1;P-1\\IDC4-1:16;P-1\\IDC5-1:M;P-1\\IDC6-1:1;P-1\\IDC7-1:1;"
               "P-1\\IDC8-1:4;P-1\\IDC9-1:4;P-1\\IDC10-1:INC;"
               "D-1\\DLN:ONE;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:2;"
               "D-1\\MN-1-1:A;D-1\\LT-1-1:WDFR;D-1\\IDCN-1-1:SFID;D-1\\MML\\N-1-1:1;"
               "D-1\\MNF\\N-1-1-1:1;D-1\\WP-1-1-1-1:2;D-1\\WI-1-1-1-1:0;D-1\\FP-1-1-1-1:1;"
               "D-1\\FI-1-1-1-1:1;D-1\\EFP-1-1-1-1:4;D-1\\WFM-1-1-1-1:FW;"
               "D-1\\MN-1-2:B;D-1\\LT-1-2:WDFR;D-1\\IDCN-1-2:SFID;D-1\\MML\\N-1-2:1;"
               "D-1\\MNF\\N-1-2-1:1;D-1\\WP-1-2-1-1:3;D-1\\WI-1-2-1-1:0;D-1\\FP-1-2-1-1:1;"
               "D-1\\FI-1-2-1-1:0;D-1\\WFM-1-2-1-1:FW;";
    }
    [[nodiscard]] const IdCounter& counter(std::size_t index = 0) {
        return format().idCounters[index];
    }
};

// --- making and deleting --------------------------------------------------------------------

TEST_F(AutomatedCounters, ANewCounterHasItsWordsLengthAndAllFrames) {
    load();
    expectOneLevel([&] { counters->CreateSFID(0, 5); });
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 2);
    const auto place = counters->GetSFIDInfo(2);
    EXPECT_EQ(place.Name, "SFID2");
    EXPECT_EQ(place.Fwp, 5);
    EXPECT_EQ(counters->GetSFIDWordLength("SFID2"), 16);
    EXPECT_EQ(counters->GetSFIDCounterLength("SFID2"), 16);
    EXPECT_EQ(counters->GetSFIDEndFrame("SFID2"), 8);
    EXPECT_EQ(counters->GetSFIDEndValue("SFID2"), 8);
}

TEST_F(AutomatedCounters, AWordThatIsInUseTakesNoCounter) {
    reach(&windows);
    load();
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, 2); }), "Refused 231") << "it is measured";
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(kWindow, 2); }), "Refused 231");
    EXPECT_EQ(windows.ui.countBoxes(231), 1);
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, 10); }), "Refused 0") << "of a subframe";
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, 15); }), "Refused 0") << "of a counter";
    for (const auto bad : {0, -1, 16, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, bad); }), "OutOfRange");
    }
}

TEST_F(AutomatedCounters, The100thCounterIsMessage177) {
    load();
    formats->SetWordsPerMinorFrame(0, 200);
    for (int fwp = 100; fwp < 198; ++fwp) {
        counters->CreateSFID(0, fwp);
    }
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 99);
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, 198); }), "Refused 177");
}

TEST_F(AutomatedCounters, FromTheEditionOfHiddenSubframesOnlyWhatIsInEveryFrameMayBeAtACounter) {
    load(latest());
    EXPECT_EQ(errorOf([&] { counters->CreateSFID(0, 3); }), "Refused 231");
    expectOneLevel([&] { counters->CreateSFID(0, 4); });
    expectOneLevel([&] { counters->CreateSFID(0, 2); });
    EXPECT_EQ(format().countMeasurementOccurences("A"), 4);
}

TEST_F(AutomatedCounters, AHoleIsUsedAgain) {
    load();
    counters->CreateSFID(0, 5);
    counters->CreateSFID(0, 6);
    counters->DeleteSFID(0, "SFID2");
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 2);
    EXPECT_EQ(counters->GetSFIDInfo(2).Name, "SFID3");
    counters->CreateSFID(0, 7);
    EXPECT_EQ(format().idCounters.size(), 3U);
    EXPECT_EQ(counters->GetSFIDInfo(2).Name, "SFID2");
    EXPECT_EQ(counters->GetSFIDInfo(2).Fwp, 7);
}

TEST_F(AutomatedCounters, ACounterWithASubframeIsNotDeleted) {
    load();
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(0, "SFID"); }), "Refused 360");
    EXPECT_THAT(text, HasSubstr("SF references this ID Counter"));
    subframes->DeleteSubframe(0, "SF");
    expectOneLevel([&] { counters->DeleteSFID(0, "SFID"); });
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 0);
}

TEST_F(AutomatedCounters, AHiddenSubframeKeepsItsCounterOnlyWithAMeasurement) {
    load(latest());
    counters->CreateSFID(0, 9);
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(0, "SFID"); }), "Refused 360")
        << "also while there is another counter";
    counters->DeleteSFID(0, "SFID2");
    format().removeMeasurement("A");
    format().removeMeasurement("B");
    (void)session->history().commit();
    counters->DeleteSFID(0, "SFID");
    EXPECT_EQ(format().wordType(4), WordType::Minor) << "empty hidden ones go with it";
}

TEST_F(AutomatedCounters, WithAWindowTheDeletionIsAsked) {
    reach(&windows);
    load();
    counters->CreateSFID(0, 5);
    windows.ui.byId[129] = Button::No;
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(kWindow, "SFID2"); }), "Cancelled");
    windows.ui.byId[129] = Button::Yes;
    counters->DeleteSFID(kWindow, "SFID2");
    EXPECT_EQ(windows.ui.countBoxes(129), 2);
    reach(nullptr);
    counters->CreateSFID(0, 5);
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(kWindow, "SFID2"); }), "NoDisplay");
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(kWindow, "SFID"); }), "Refused 360")
        << "a rule comes before the display";
    counters->DeleteSFID(0, "SFID2");
    EXPECT_EQ(counters->GetNumberOfSFIDs(), 1);
}

TEST_F(AutomatedCounters, TheDialogIsThatOfTheCounter) {
    load();
    EXPECT_EQ(errorOf([&] { counters->EditSFID(0, "sfid"); }), "NotFound")
        << "the name comes before the display";
    EXPECT_EQ(errorOf([&] { counters->EditSFID(0, "SFID"); }), "NoDisplay");
    reach(&windows);
    counters->EditSFID(0, "SFID");
    EXPECT_THAT(windows.opened, ElementsAre("counter 0"));
    windows.answer = false;
    EXPECT_EQ(errorOf([&] { counters->EditSFID(0, "SFID"); }), "Cancelled");
}

// --- names ----------------------------------------------------------------------------------

TEST_F(AutomatedCounters, AnUnknownNameIsNotFoundAndShowsNoDialog) {
    reach(&windows);
    load();
    for (const std::string name : {"", "sfid", "SFID ", "SFID2", "SF"}) {
        const std::vector<std::function<void()>> calls{
            [&] { counters->DeleteSFID(kWindow, name); },
            [&] { counters->EditSFID(kWindow, name); },
            [&] { counters->SetSFIDName(kWindow, name, ""); },
            [&] { (void)counters->GetSFIDCountDirection(name); },
            [&] { counters->SetSFIDCountDirection(name, "X"); },
            [&] { (void)counters->GetSFIDCounterLength(name); },
            [&] { counters->SetSFIDCounterLength(name, 0); },
            [&] { (void)counters->GetSFIDEndFrame(name); },
            [&] { counters->SetSFIDEndFrame(name, -1); },
            [&] { (void)counters->GetSFIDEndValue(name); },
            [&] { counters->SetSFIDEndValue(name, -1); },
            [&] { (void)counters->GetSFIDMSBStartBit(name); },
            [&] { counters->SetSFIDMSBStartBit(name, 0); },
            [&] { (void)counters->GetSFIDStartFrame(name); },
            [&] { counters->SetSFIDStartFrame(name, -1); },
            [&] { (void)counters->GetSFIDStartValue(name); },
            [&] { counters->SetSFIDStartValue(name, -1); },
            [&] { (void)counters->GetSFIDTransferOrder(name); },
            [&] { counters->SetSFIDTransferOrder(name, "X"); },
            [&] { (void)counters->GetSFIDWordLength(name); },
            [&] { counters->SetSFIDWordLength(name, 0); }};
        for (const auto& call : calls) {
            EXPECT_EQ(errorOf(call), "NotFound") << name;
        }
    }
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_TRUE(windows.opened.empty());
}

TEST_F(AutomatedCounters, EveryMethodNeedsAFormat) {
    EXPECT_EQ(errorOf([&] { counters->SetSFIDWordLength("X", 0); }), "NoDocument");
    open();
    for (const auto& call : std::vector<std::function<void()>>{
             [&] { counters->CreateSFID(0, 0); }, [&] { counters->DeleteSFID(0, "X"); },
             [&] { counters->EditSFID(0, "X"); }, [&] { (void)counters->GetNumberOfSFIDs(); },
             [&] { (void)counters->GetSFIDInfo(0); }, [&] { counters->SetSFIDName(0, "X", ""); },
             [&] { (void)counters->GetSFIDEndFrame("X"); },
             [&] { counters->SetSFIDEndFrame("X", -1); }}) {
        EXPECT_EQ(errorOf(call), "NoFormat");
    }
}

TEST_F(AutomatedCounters, InfoCountsTheNamedOnesFrom1) {
    load();
    for (const auto bad : {0, -1, 2, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDInfo(bad); }), "OutOfRange");
    }
    EXPECT_EQ(counters->GetSFIDInfo(1).Name, "SFID");
    EXPECT_EQ(counters->GetSFIDInfo(1).Fwp, 15);
}

TEST_F(AutomatedCounters, ANewNameIsUniqueAndOfARightForm) {
    reach(&windows);
    load();
    counters->CreateSFID(0, 5);
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(0, "SFID2", ""); }), "Refused 361");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(0, "SFID2", "A;B"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(0, "SFID2", "SFID"); }), "Refused 365");
    EXPECT_THAT(text, HasSubstr("frame word position #15")) << "that of the other counter";
    for (const auto& bad : {std::string(33, 'x'), std::string(" A"), std::string("A ")}) {
        EXPECT_EQ(errorOf([&] { counters->SetSFIDName(0, "SFID2", bad); }), "BadValue");
    }
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "SFID2", "A;B"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "SFID2", ""); }), "Refused 361");
    EXPECT_EQ(windows.ui.countBoxes(402), 1);
    EXPECT_EQ(windows.ui.countBoxes(361), 1);
    expectOneLevel([&] { counters->SetSFIDName(0, "SFID2", "sfid"); });
    EXPECT_EQ(counters->GetSFIDInfo(2).Name, "sfid") << "names differ in case";
}

TEST_F(AutomatedCounters, ANameSetToItselfIsNoChange) {
    load();
    counters->SetSFIDName(0, "SFID", "SFID");
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    EXPECT_FALSE(session->history().canUndo());
}

TEST_F(AutomatedCounters, ARenameTakesTheWordFrameDefinitionsAlong) {
    load(latest());
    ASSERT_EQ(format().wordFrameDefinitions.size(), 2U);
    format().wordFrameDefinitions[0].idCounterName = "SFID";
    format().wordFrameDefinitions[1].idCounterName = "Other";
    (void)session->history().commit();
    expectOneLevel([&] { counters->SetSFIDName(0, "SFID", "Frame"); });
    EXPECT_EQ(format().wordFrameDefinitions[0].idCounterName, "Frame");
    EXPECT_EQ(format().wordFrameDefinitions[1].idCounterName, "Other");
}

TEST_F(AutomatedCounters, ANameInWindows1252IsFoundAndKept) {
    std::string document = test::kAutomationDocument;
    document.replace(document.find("ISF1-1:SFID"), 11, "ISF1-1:Z\xE4hler");
    load(document);
    EXPECT_EQ(counters->GetSFIDInfo(1).Name, "Z\xC3\xA4hler");
    EXPECT_EQ(counters->GetSFIDEndFrame("Z\xC3\xA4hler"), 8);
    counters->SetSFIDName(0, "Z\xC3\xA4hler", "Z\xC3\xA4hler");
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    counters->SetSFIDName(0, "Z\xC3\xA4hler",
                          "Gr\xC3\xB6\xC3\x9F"
                          "e");
    EXPECT_EQ(counter().name,
              "Gr\xF6\xDF"
              "e");
}

// --- fields ---------------------------------------------------------------------------------

TEST_F(AutomatedCounters, NumbersHaveTheRangesOfTheirFields) {
    struct Row {
        std::int32_t (AutomationCounters::*get)(const std::string&);
        void (AutomationCounters::*set)(const std::string&, std::int32_t);
        std::vector<std::int32_t> good;
        std::vector<std::int32_t> bad;
    };
    using Counters = AutomationCounters;
    load();
    for (const auto& row : {
             Row{&Counters::GetSFIDWordLength,
                 &Counters::SetSFIDWordLength,
                 {99, 1, 24},
                 {0, 100, -1}},
             Row{&Counters::GetSFIDCounterLength,
                 &Counters::SetSFIDCounterLength,
                 {24, 1},
                 {0, 100, -1}},
             Row{&Counters::GetSFIDMSBStartBit, &Counters::SetSFIDMSBStartBit, {99, 2}, {100}},
             Row{&Counters::GetSFIDEndValue, &Counters::SetSFIDEndValue, {0, 999}, {-1, 1000}},
             Row{&Counters::GetSFIDStartValue, &Counters::SetSFIDStartValue, {0, 999}, {-1, 1000}},
             Row{&Counters::GetSFIDEndFrame, &Counters::SetSFIDEndFrame, {4, 2}, {-1, 1000}},
             Row{&Counters::GetSFIDStartFrame, &Counters::SetSFIDStartFrame, {1}, {-1, 1000}},
         }) {
        for (const auto good : row.good) {
            ((*counters).*row.set)("SFID", good);
            EXPECT_EQ(((*counters).*row.get)("SFID"), good);
        }
        auto bads = row.bad;
        bads.push_back(kMostInt);
        for (const auto bad : bads) {
            EXPECT_EQ(errorOf([&] { ((*counters).*row.set)("SFID", bad); }), "OutOfRange") << bad;
        }
    }
}

TEST_F(AutomatedCounters, ANumberHeldAsAnotherTextIsNotZero) {
    load();
    auto& record = format().idCounters.front();
    record.wordLength = "";
    record.counterLength = "x";
    record.msbStartBit = "-";
    record.initialValue = "1x";
    record.startFrame = "?";
    record.endFrame = "8a";
    record.endValue = "a";
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDWordLength("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDCounterLength("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDMSBStartBit("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDStartValue("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDStartFrame("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDEndFrame("SFID"); }), "NotANumber");
    EXPECT_EQ(errorOf([&] { (void)counters->GetSFIDEndValue("SFID"); }), "NotANumber");
}

TEST_F(AutomatedCounters, ACounterIsNotLongerThanItsWordLength) {
    load();
    EXPECT_EQ(errorOf([&] { counters->SetSFIDCounterLength("SFID", 17); }), "Refused 362");
    EXPECT_THAT(text, HasSubstr("greater than 16"));
    counters->SetSFIDWordLength("SFID", 20);
    expectOneLevel([&] { counters->SetSFIDCounterLength("SFID", 20); });
    EXPECT_EQ(errorOf([&] { counters->SetSFIDCounterLength("SFID", 21); }), "Refused 362");
}

TEST_F(AutomatedCounters, AStartBitBelow1IsMessage366) {
    load();
    for (const auto bad : {0, -1, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { counters->SetSFIDMSBStartBit("SFID", bad); }), "Refused 366");
    }
}

TEST_F(AutomatedCounters, FramesAreThoseOfTheStreamAndInOrder) {
    load();
    EXPECT_EQ(errorOf([&] { counters->SetSFIDEndFrame("SFID", 0); }), "Refused 363");
    EXPECT_THAT(text, HasSubstr("ending"));
    EXPECT_EQ(errorOf([&] { counters->SetSFIDEndFrame("SFID", 9); }), "Refused 363");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDStartFrame("SFID", 0); }), "Refused 363");
    EXPECT_THAT(text, HasSubstr("starting"));
    EXPECT_EQ(errorOf([&] { counters->SetSFIDStartFrame("SFID", 8); }), "Refused 364");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDEndFrame("SFID", 1); }), "Refused 364");
}

TEST_F(AutomatedCounters, TheEndValueFollowsDirectionStartValueAndBothFrames) {
    load();
    expectOneLevel([&] { counters->SetSFIDStartValue("SFID", 10); });
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 17);
    expectOneLevel([&] { counters->SetSFIDCountDirection("SFID", "dec"); });
    EXPECT_EQ(counters->GetSFIDCountDirection("SFID"), "DEC");
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 3);
    expectOneLevel([&] { counters->SetSFIDEndFrame("SFID", 5); });
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 6);
    expectOneLevel([&] { counters->SetSFIDStartFrame("SFID", 2); });
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 7);
    counters->SetSFIDStartValue("SFID", 2);
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 1) << "raised to 1";
    expectOneLevel([&] { counters->SetSFIDEndValue("SFID", 0); });
    EXPECT_EQ(counters->GetSFIDEndValue("SFID"), 0) << "a value that is set stands as given";
}

TEST_F(AutomatedCounters, CodesAreTakenInAnyCaseAndStoredAsTheCode) {
    load();
    expectOneLevel([&] { counters->SetSFIDTransferOrder("SFID", "l"); });
    EXPECT_EQ(counters->GetSFIDTransferOrder("SFID"), "L");
    counters->SetSFIDTransferOrder("SFID", "d");
    EXPECT_EQ(counters->GetSFIDTransferOrder("SFID"), "D");
    for (const char* const bad : {"", "X", "MSB", "MM"}) {
        EXPECT_EQ(errorOf([&] { counters->SetSFIDTransferOrder("SFID", bad); }), "BadValue");
    }
    for (const char* const bad : {"", "UP", "IN", "INCrease"}) {
        EXPECT_EQ(errorOf([&] { counters->SetSFIDCountDirection("SFID", bad); }), "BadValue");
    }
    counters->SetSFIDCountDirection("SFID", "Inc");
    EXPECT_EQ(counters->GetSFIDCountDirection("SFID"), "INC");
}

TEST_F(AutomatedCounters, TheDefaultTransferOrderIsOfTheEditionsFrom106_09) {
    load();
    document().version = 2007;
    EXPECT_EQ(errorOf([&] { counters->SetSFIDTransferOrder("SFID", "D"); }), "BadValue");
    document().version = 2009;
    counters->SetSFIDTransferOrder("SFID", "D");
}

}  // namespace
}  // namespace kavu
