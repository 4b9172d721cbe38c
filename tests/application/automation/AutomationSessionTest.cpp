#include "application/automation/AutomationStage.h"
#include "conversion/ConversionStore.h"

namespace kavu {
namespace {

using test::AutomationStage;
using ::testing::ElementsAre;

class AutomatedSession : public AutomationStage {
  protected:
    [[nodiscard]] bool hasRecord(const std::string& name) {
        return test.application.conversions().locateDefinition(name).found;
    }
    bool makeRecord(AutomationTalk& talk) {
        return test.application.conversions().createDefaultDefinition(&talk, "A", false);
    }
};

TEST_F(AutomatedSession, ACallThatFailsPutsTheStreamBack) {
    load();
    const auto fail = [&](AutomationTalk&) {
        (void)format().setNumberOfFrames(nullptr, 2);
        (void)format().setWordsPerMinorFrame(nullptr, 5);
        format().removeMeasurement("A");
        return false;
    };
    EXPECT_EQ(errorOf([&] { session->edit(0, "Edit", fail); }), "Refused 0");
    EXPECT_EQ(errorOf([&] {
                  session->edit(0, "Edit", [&](AutomationTalk& talk) -> bool {
                      (void)fail(talk);
                      throw AutomationError(AutomationFault::BadValue, "Bad");
                  });
              }),
              "BadValue");
    EXPECT_FALSE(session->history().canUndo());
}

TEST_F(AutomatedSession, WhatWasChangedBesideACallStaysWhenTheCallFails) {
    load();
    format().setBitRate("7");
    EXPECT_EQ(errorOf([&] { formats->SetNumberOfFrames(0, 0); }), "Refused 216");
    EXPECT_EQ(formats->GetBitRate(), 7);
}

TEST_F(AutomatedSession, ACallThatChangesNothingTurnsNoMark) {
    load();
    session->edit(0, "Edit", [&](AutomationTalk&) {
        format().changed = true;
        format().formatEdited = true;
        return true;
    });
    EXPECT_FALSE(format().changed);
    EXPECT_FALSE(format().formatEdited);
    EXPECT_FALSE(session->history().canUndo());
}

TEST_F(AutomatedSession, RecordsChangeWithTheStreamAsOneOperationOfTheDocument) {
    load();
    auto& history = test.application.context().history;
    const auto levels = history.levels();
    session->editWithRecords(0, "Edit", [&](AutomationTalk& talk) {
        format().setBitRate("7");
        return makeRecord(talk);
    });
    EXPECT_TRUE(hasRecord("A"));
    EXPECT_EQ(history.levels(), levels + 1);
    EXPECT_TRUE(documents->IsTmatsFileChanged());
    EXPECT_TRUE(formats->IsPCMFormatChanged());
}

TEST_F(AutomatedSession, ARefusedCallLeavesNoRecord) {
    load();
    EXPECT_EQ(failureOf([&] {
                  session->editWithRecords(0, "Edit", [&](AutomationTalk& talk) {
                      format().setBitRate("7");
                      (void)makeRecord(talk);
                      return false;
                  });
              }),
              "Refused 0");
    EXPECT_FALSE(hasRecord("A"));
    EXPECT_EQ(formats->GetBitRate(), 64000);
    EXPECT_FALSE(documents->IsTmatsFileChanged());
    EXPECT_FALSE(formats->IsPCMFormatChanged());
}

TEST_F(AutomatedSession, TheParentOfACallIsThatOfItsWindow) {
    EXPECT_EQ(session->parentOf(kWindow), nullptr) << "there is no display";
    EXPECT_EQ(session->talkFor(kWindow).reach(), AutomationTalk::Reach::NoDisplay);
    reach(&windows);
    EXPECT_EQ(session->parentOf(0), nullptr);
    EXPECT_EQ(session->parentOf(kWindow), &windows.ui);
    EXPECT_EQ(session->talkFor(0).reach(), AutomationTalk::Reach::Silent);
    EXPECT_EQ(session->talkFor(kWindow).reach(), AutomationTalk::Reach::Window);
}

TEST_F(AutomatedSession, ErrorsAreTestedInTheirOrder) {
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "X", ""); }), "NoDocument");
    open();
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "X", ""); }), "NoFormat");
    formats->LoadPCMFormat(0, 1);
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "X", " "); }), "NotFound");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "SFID", " ;"); }), "BadValue");
    EXPECT_EQ(errorOf([&] { counters->SetSFIDName(kWindow, "SFID", ";"); }), "Refused 402");
    EXPECT_EQ(errorOf([&] { subframes->CreateSubframe(0, 0, " ", 9, 0, 0); }), "OutOfRange");
    EXPECT_EQ(errorOf([&] { subframes->CreateSubframe(0, 4, " ", 9, 0, 0); }), "BadValue");
    EXPECT_EQ(errorOf([&] { subframes->CreateSubframe(0, 4, "X", 9, 0, 0); }), "Refused 160");
    EXPECT_EQ(errorOf([&] { counters->DeleteSFID(kWindow, "SFID"); }), "Refused 360");
    EXPECT_EQ(errorOf([&] { subframes->DeleteSubframe(kWindow, "SF"); }), "NoDisplay");
}

TEST_F(AutomatedSession, TheSignalsFollowTheDocument) {
    load();
    formats->SetBitRate(1);
    documents->SaveTmatsFile(0);
    documents->CloseTmatsFile(0, false);
    const auto path = test.folder / "in.tma";
    EXPECT_THAT(signals, ElementsAre("opened " + path, "format ONE changed", "format ONE unchanged",
                                     "saved " + path, "closed " + path));
}

}  // namespace
}  // namespace kavu
