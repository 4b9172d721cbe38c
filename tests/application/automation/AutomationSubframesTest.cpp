#include "application/automation/AutomationStage.h"

namespace kavu {
namespace {

using test::AutomationStage;
using test::kLeastInt;
using test::kMostInt;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class AutomatedSubframes : public AutomationStage {
  protected:
    [[nodiscard]] std::vector<int> wordsOf(const std::string& name) {
        return format().wordsOf(*format().findSubframe(name));
    }
    void create(int fwp, const std::string& name, int depth = 0, int locations = 1,
                int interval = 0) {
        subframes->CreateSubframe(0, fwp, name, depth, locations, interval);
    }
};

// --- making ---------------------------------------------------------------------------------

TEST_F(AutomatedSubframes, ANewSubframeHasItsNameDepthAndWords) {
    load();
    expectOneLevel([&] { create(4, "New", 4, 3, 2); });
    EXPECT_THAT(wordsOf("New"), ElementsAre(4, 6, 8));
    EXPECT_EQ(subframes->GetSubframeDepth("New"), 4);
    EXPECT_EQ(subframes->GetSubframeIDCounter("New"), "SFID");
    EXPECT_EQ(subframes->GetSubframeName(6), "New");
}

TEST_F(AutomatedSubframes, WithoutANameItIsNamedForItsWord) {
    load();
    create(4, "");
    EXPECT_EQ(subframes->GetSubframeName(4), "SF-4");
}

TEST_F(AutomatedSubframes, ADepthBelow1IsTheEndFrameOfTheCounter) {
    load();
    create(4, "X", 0);
    create(5, "Y", kLeastInt);
    EXPECT_EQ(subframes->GetSubframeDepth("X"), 8);
    EXPECT_EQ(subframes->GetSubframeDepth("Y"), 8);
}

TEST_F(AutomatedSubframes, ANewOneObeysTheRulesOfTheDialog) {
    load();
    EXPECT_EQ(errorOf([&] { create(4, "SF"); }), "Refused 354");
    EXPECT_EQ(errorOf([&] { create(4, "A;B"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { create(4, " A"); }), "BadValue");
    EXPECT_EQ(errorOf([&] { create(4, std::string(33, 'x')); }), "BadValue");
    for (const auto bad : {0, -1, 100, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { create(4, "X", 0, bad, 1); }), "Refused 160") << bad;
        EXPECT_THAT(text, HasSubstr("99"));
    }
    for (const auto bad : {0, -1, 10000, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { create(4, "X", 0, 2, bad); }), "Refused 160") << bad;
        EXPECT_THAT(text, HasSubstr("9999"));
    }
    EXPECT_EQ(errorOf([&] { create(4, "X", 9); }), "Refused 350");
    EXPECT_EQ(errorOf([&] { create(4, "X", kMostInt); }), "Refused 350");
    EXPECT_EQ(errorOf([&] { create(4, "X", 3); }), "Refused 351");
    EXPECT_EQ(errorOf([&] { create(2, "X"); }), "Refused 231");
    EXPECT_EQ(errorOf([&] { create(1, "X", 0, 2, 1); }), "Refused 231") << "its second word";
    EXPECT_EQ(errorOf([&] { create(10, "X"); }), "Refused 0");
    EXPECT_EQ(errorOf([&] { create(4, "X", 0, 2, 11); }), "Refused 0") << "the counter's word";
    EXPECT_EQ(errorOf([&] { create(4, "X", 0, 2, 12); }), "Refused 0") << "beyond the frame";
    for (const auto bad : {0, -1, 16, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { create(bad, "X"); }), "OutOfRange") << bad;
    }
}

TEST_F(AutomatedSubframes, WithoutACounterThereIsNoSubframe) {
    load();
    subframes->DeleteSubframe(0, "SF");
    counters->DeleteSFID(0, "SFID");
    EXPECT_EQ(errorOf([&] { create(4, "X"); }), "Refused 355");
}

TEST_F(AutomatedSubframes, WhileMeasurementsUseNoSubframesTheyAreRefusedWith233) {
    load();
    format().implicitSubframes = true;
    EXPECT_EQ(errorOf([&] { create(4, "X"); }), "Refused 233");
    format().implicitSubframes = false;
    document().version = 2011;
    EXPECT_EQ(errorOf([&] { create(4, "X"); }), "Refused 233");
    document().version = 2009;
}

TEST_F(AutomatedSubframes, MessagesAreShownOnAWindowOnly) {
    reach(&windows);
    load();
    EXPECT_EQ(errorOf([&] { create(4, "SF"); }), "Refused 354");
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(errorOf([&] { subframes->CreateSubframe(kWindow, 4, "SF", 0, 1, 0); }),
              "Refused 354");
    EXPECT_EQ(windows.ui.countBoxes(354), 1);
}

// --- names ----------------------------------------------------------------------------------

TEST_F(AutomatedSubframes, AnUnknownNameIsNotFoundAndShowsNoDialog) {
    reach(&windows);
    load();
    for (const std::string name : {"", "sf", "SF ", "SFID"}) {
        for (const auto& call : std::vector<std::function<void()>>{
                 [&] { subframes->DeleteSubframe(kWindow, name); },
                 [&] { subframes->EditSubframe(kWindow, name); },
                 [&] { (void)subframes->GetSubframeDepth(name); },
                 [&] { subframes->SetSubframeDepth(kWindow, name, 0); },
                 [&] { (void)subframes->GetSubframeIDCounter(name); },
                 [&] { subframes->SetSubframeIDCounter(kWindow, name, "X"); },
                 [&] { (void)subframes->GetSubframeLocations(name); },
                 [&] { subframes->SetSubframeLocations(kWindow, name, 0, 0); },
                 [&] { subframes->SetSubframeName(kWindow, name, ""); }}) {
            EXPECT_EQ(errorOf(call), "NotFound") << name;
        }
    }
    EXPECT_TRUE(windows.ui.boxes.empty());
}

TEST_F(AutomatedSubframes, HiddenOnesDoNotExist) {
    load();
    format().idCounters.front().subframes.front().hidden = true;
    EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeDepth("SF"); }), "NotFound");
    EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeName(10); }), "NotFound");
}

TEST_F(AutomatedSubframes, EveryMethodNeedsAFormat) {
    EXPECT_EQ(errorOf([&] { create(0, ""); }), "NoDocument");
    open();
    for (const auto& call : std::vector<std::function<void()>>{
             [&] { create(0, ""); }, [&] { subframes->DeleteSubframe(0, "X"); },
             [&] { subframes->EditSubframe(0, "X"); },
             [&] { (void)subframes->GetSubframeDepth("X"); },
             [&] { subframes->SetSubframeDepth(0, "X", 0); },
             [&] { (void)subframes->GetSubframeIDCounter("X"); },
             [&] { subframes->SetSubframeIDCounter(0, "X", "Y"); },
             [&] { (void)subframes->GetSubframeLocations("X"); },
             [&] { subframes->SetSubframeLocations(0, "X", 0, 0); },
             [&] { (void)subframes->GetSubframeName(0); },
             [&] { subframes->SetSubframeName(0, "X", ""); }}) {
        EXPECT_EQ(errorOf(call), "NoFormat");
    }
}

TEST_F(AutomatedSubframes, TheNameOfAWordIsThatOfItsSubframe) {
    load();
    EXPECT_EQ(subframes->GetSubframeName(10), "SF");
    EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeName(3); }), "NotFound");
    for (const auto bad : {0, -1, 16, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeName(bad); }), "OutOfRange");
    }
}

TEST_F(AutomatedSubframes, ANewNameIsUniqueAndOfARightForm) {
    load();
    create(4, "Other");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeName(0, "Other", ""); }), "Refused 353");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeName(0, "Other", "SF"); }), "Refused 354");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeName(0, "Other", "A;B"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeName(0, "Other", "A\nB"); }), "BadValue");
    expectOneLevel([&] { subframes->SetSubframeName(0, "Other", "sf"); });
    EXPECT_EQ(subframes->GetSubframeName(4), "sf");
    EXPECT_EQ(subframes->GetSubframeDepth("sf"), 8);
}

TEST_F(AutomatedSubframes, ANameSetToItselfIsNoChange) {
    load();
    subframes->SetSubframeName(0, "SF", "SF");
    EXPECT_FALSE(formats->IsPCMFormatChanged());
}

// --- deleting and the dialog ----------------------------------------------------------------

TEST_F(AutomatedSubframes, ADeletedOneLeavesPlainWords) {
    load();
    subframes->SetSubframeLocations(0, "SF", 2, 2);
    expectOneLevel([&] { subframes->DeleteSubframe(0, "SF"); });
    EXPECT_EQ(format().wordType(10), WordType::Minor);
    EXPECT_EQ(format().wordType(12), WordType::Minor);
}

TEST_F(AutomatedSubframes, WithAWindowTheDeletionIsAsked) {
    reach(&windows);
    load();
    windows.ui.byId[123] = Button::No;
    EXPECT_EQ(errorOf([&] { subframes->DeleteSubframe(kWindow, "SF"); }), "Cancelled");
    reach(nullptr);
    EXPECT_EQ(errorOf([&] { subframes->DeleteSubframe(kWindow, "SF"); }), "NoDisplay");
    reach(&windows);
    windows.ui.byId[123] = Button::Yes;
    subframes->DeleteSubframe(kWindow, "SF");
    EXPECT_EQ(windows.ui.countBoxes(123), 2);
}

TEST_F(AutomatedSubframes, TheDialogIsThatOfTheSubframe) {
    load();
    EXPECT_EQ(errorOf([&] { subframes->EditSubframe(0, "SF"); }), "NoDisplay");
    reach(&windows);
    subframes->EditSubframe(0, "SF");
    EXPECT_THAT(windows.opened, ElementsAre("subframe 0 0"));
    windows.answer = false;
    EXPECT_EQ(errorOf([&] { subframes->EditSubframe(0, "SF"); }), "Cancelled");
}

// --- depth, counter and words ---------------------------------------------------------------

TEST_F(AutomatedSubframes, ADepthDividesThatOfItsCounter) {
    load();
    expectOneLevel([&] { subframes->SetSubframeDepth(0, "SF", 4); });
    EXPECT_EQ(subframes->GetSubframeDepth("SF"), 4);
    EXPECT_EQ(format().wordDepth(10), 4);
    for (const auto bad : {0, -1, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { subframes->SetSubframeDepth(0, "SF", bad); }), "Refused 349");
    }
    for (const auto bad : {9, 1000, kMostInt}) {
        EXPECT_EQ(errorOf([&] { subframes->SetSubframeDepth(0, "SF", bad); }), "Refused 350");
    }
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeDepth(0, "SF", 3); }), "Refused 351");
    EXPECT_THAT(text, HasSubstr("SFID"));
}

TEST_F(AutomatedSubframes, ADepthHeldAsAnotherTextIsNotANumber) {
    load();
    format().idCounters.front().subframes.front().depth = "x";
    EXPECT_EQ(errorOf([&] { (void)subframes->GetSubframeDepth("SF"); }), "NotANumber");
}

TEST_F(AutomatedSubframes, ItMovesToTheCounterOfThatNameIfItsDepthFits) {
    load();
    counters->CreateSFID(0, 5);
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeIDCounter(0, "SF", "sfid2"); }), "NotFound");
    counters->SetSFIDEndFrame("SFID2", 6);
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeIDCounter(0, "SF", "SFID2"); }), "Refused 351");
    EXPECT_THAT(text, HasSubstr("SFID2")) << "against the new counter";
    subframes->SetSubframeDepth(0, "SF", 2);
    expectOneLevel([&] { subframes->SetSubframeIDCounter(0, "SF", "SFID2"); });
    EXPECT_EQ(subframes->GetSubframeIDCounter("SF"), "SFID2");
    EXPECT_EQ(format().word(10).idCounterIndex, 1);
    format().changed = false;
    subframes->SetSubframeIDCounter(0, "SF", "SFID2");
    EXPECT_FALSE(formats->IsPCMFormatChanged()) << "the same counter";
}

TEST_F(AutomatedSubframes, LocationsAreTheFirstWordAndAnInterval) {
    load();
    EXPECT_EQ(subframes->GetSubframeLocations("SF").NumberOfLocs, 1);
    EXPECT_EQ(subframes->GetSubframeLocations("SF").Interval, 0);
    expectOneLevel([&] { subframes->SetSubframeLocations(0, "SF", 3, 2); });
    EXPECT_THAT(wordsOf("SF"), ElementsAre(10, 12, 14));
    const auto places = subframes->GetSubframeLocations("SF");
    EXPECT_EQ(places.Fwp, 10);
    EXPECT_EQ(places.NumberOfLocs, 3);
    EXPECT_EQ(places.Interval, 2);
    expectOneLevel([&] { subframes->SetSubframeLocations(0, "SF", 1, kMostInt); });
    EXPECT_THAT(wordsOf("SF"), ElementsAre(10));
    EXPECT_EQ(format().subframeOfWord(10)->supercommutated, "NO") << "a count of 1";
}

TEST_F(AutomatedSubframes, OneThatListsEveryLocationReportsNoInterval) {
    std::string document = test::kAutomationDocument;
    document.replace(document.find("P-1\\SF2-1-1:NO;"), 15,
                     "P-1\\SF2-1-1:2;P-1\\SF3-1-1:EL;P-1\\SF4-1-1-2:13;");
    load(document);
    const auto places = subframes->GetSubframeLocations("SF");
    EXPECT_EQ(places.Fwp, 10);
    EXPECT_EQ(places.NumberOfLocs, 2);
    EXPECT_EQ(places.Interval, 0);
}

TEST_F(AutomatedSubframes, LocationsObeyTheRulesOfTheDialog) {
    load();
    for (const auto bad : {0, -1, 100, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { subframes->SetSubframeLocations(0, "SF", bad, 1); }),
                  "Refused 160");
    }
    for (const auto bad : {0, -1, 10000, kMostInt, kLeastInt}) {
        EXPECT_EQ(errorOf([&] { subframes->SetSubframeLocations(0, "SF", 2, bad); }),
                  "Refused 160");
    }
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeLocations(0, "SF", 2, 7); }), "Refused 343");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeLocations(0, "SF", 2, 5); }), "Refused 344");
    create(1, "X");
    EXPECT_EQ(errorOf([&] { subframes->SetSubframeLocations(0, "X", 2, 1); }), "Refused 341");
}

TEST_F(AutomatedSubframes, ThePositionAfterTheLastWordIsLetThroughAndNotWritten) {
    load();
    expectOneLevel([&] { subframes->SetSubframeLocations(0, "SF", 2, 6); });
    EXPECT_THAT(wordsOf("SF"), ElementsAre(10));
    EXPECT_EQ(formats->GetWordsPerMinorFrame(), 16);
    EXPECT_EQ(subframes->GetSubframeLocations("SF").NumberOfLocs, 2);
}

}  // namespace
}  // namespace kavu
