#include "application/automation/AutomationTalk.h"
#include "support/RecordingInterface.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using Reach = AutomationTalk::Reach;

MessageBox boxOf(int id, Buttons buttons, Button byDefault = Button::None) {
    MessageBox box;
    box.id = id;
    box.text = "Text " + std::to_string(id);
    box.buttons = buttons;
    box.defaultButton = byDefault;
    return box;
}

std::string errorOf(const AutomationTalk& talk,
                    AutomationFault unnumbered = AutomationFault::Refused) {
    const auto error = talk.failure(unnumbered, "Nothing was told.");
    return std::string(automationErrorName(error.fault())) + " " + error.what();
}

TEST(AutomationTalk, WithoutAWindowAQuestionHasTheAnswerOfNoParent) {
    AutomationTalk talk(Reach::Silent, nullptr);
    EXPECT_EQ(talk.message(boxOf(241, Buttons::YesNo)), Button::None);
    EXPECT_EQ(talk.message(boxOf(-76, Buttons::YesNoCancel, Button::Yes)), Button::None)
        << "it is never answered for the user";
    EXPECT_EQ(talk.message(boxOf(231, Buttons::Ok)), Button::None);
    EXPECT_FALSE(talk.enterText({}));
    EXPECT_FALSE(talk.enterInteger({}));
    EXPECT_FALSE(talk.enterDouble({}));
    EXPECT_FALSE(talk.enterTexts("Title", {TextPrompt{}}));
    EXPECT_FALSE(talk.chooseFile({}));
    EXPECT_EQ(talk.chooseFromList("Title", {"A"}), -1);
    EXPECT_EQ(talk.choose({}), -1);
    EXPECT_EQ(talk.selectFromTable({}), -1);
    EXPECT_FALSE(talk.cancelRequested());
}

TEST(AutomationTalk, WithoutAWindowADeletionCountsAsConfirmed) {
    AutomationTalk silent(Reach::Silent, nullptr);
    EXPECT_EQ(silent.message(boxOf(123, Buttons::YesNo)), Button::Yes);
    EXPECT_EQ(silent.message(boxOf(129, Buttons::YesNo)), Button::Yes);
    AutomationTalk blind(Reach::NoDisplay, nullptr);
    EXPECT_EQ(blind.message(boxOf(123, Buttons::YesNo)), Button::No);
    EXPECT_EQ(errorOf(blind), "Kavu.Error.NoDisplay There is no display to ask on.");
}

TEST(AutomationTalk, WhatAnotherAnswerWouldLoseIsKept) {
    AutomationTalk talk(Reach::Silent, nullptr);
    EXPECT_EQ(talk.message(boxOf(0, Buttons::YesNo, Button::Yes)), Button::Yes);
    EXPECT_EQ(talk.message(boxOf(0, Buttons::YesNo, Button::No)), Button::None);
}

TEST(AutomationTalk, TheErrorIsTheLastMessage) {
    AutomationTalk talk(Reach::Silent, nullptr);
    EXPECT_EQ(errorOf(talk), "Kavu.Error.Refused 0: Nothing was told.");
    EXPECT_EQ(errorOf(talk, AutomationFault::FileError), "Kavu.Error.FileError Nothing was told.");
    talk.message(boxOf(231, Buttons::Ok));
    talk.message(boxOf(-144, Buttons::Ok));
    EXPECT_EQ(errorOf(talk), "Kavu.Error.Refused 144: Text -144");
    EXPECT_EQ(errorOf(talk, AutomationFault::FileError), "Kavu.Error.Refused 144: Text -144");
    talk.message(boxOf(407, Buttons::Ok));
    EXPECT_EQ(errorOf(talk), "Kavu.Error.FileError Text 407") << "about a file";
    talk.message(boxOf(0, Buttons::Ok));
    EXPECT_EQ(errorOf(talk, AutomationFault::FileError), "Kavu.Error.FileError Text 0");
}

TEST(AutomationTalk, ANoIsTheReasonUnlessAMessageFollows) {
    test::RecordingInterface ui;
    AutomationTalk talk(Reach::Window, &ui);
    ui.byId[241] = Button::No;
    EXPECT_EQ(talk.message(boxOf(241, Buttons::YesNo)), Button::No);
    EXPECT_EQ(errorOf(talk), "Kavu.Error.Cancelled The user has cancelled.");
    talk.message(boxOf(157, Buttons::Ok));
    EXPECT_EQ(errorOf(talk), "Kavu.Error.Refused 157: Text 157");
    EXPECT_EQ(ui.boxes.size(), 2U) << "both are shown";
    ui.cancelAtPoll = 1;
    EXPECT_TRUE(talk.cancelRequested());
    talk.message(boxOf(0, Buttons::Ok));
    EXPECT_EQ(errorOf(talk), "Kavu.Error.Cancelled The user has cancelled.");
}

TEST(AutomationTalk, AWindowHearsAllThatIsSaid) {
    test::RecordingInterface ui;
    AutomationTalk talk(Reach::Window, &ui);
    talk.note("Note");
    talk.setStatusText("Status");
    talk.setProgressText("Progress");
    talk.setProgressBar(50);
    talk.beep();
    talk.logged({});
    talk.showMessages("Title", "Sub", {"Line"});
    EXPECT_TRUE(talk.openProgress(ProgressMode::WithCancel, true));
    talk.closeProgress();
    EXPECT_EQ(ui.notes.size() + ui.statusTexts.size() + ui.progressTexts.size() + ui.bars.size() +
                  ui.logs.size() + ui.shown.size(),
              6U);
    EXPECT_EQ(ui.beeps + ui.progressOpened + ui.progressClosed, 3);
}

}  // namespace
}  // namespace kavu
