#include "cli/ScriptedInterface.h"
#include "core/talk/QuestionNames.h"

#include <sstream>

#include <gtest/gtest.h>

namespace kavu::cli {
namespace {

MessageBox box(int id, Buttons buttons, const std::string& text = "Text?") {
    MessageBox result;
    result.id = id;
    result.titleId = 79;
    result.title = "Title";
    result.text = text;
    result.buttons = buttons;
    return result;
}

struct Terminal {
    explicit Terminal(Replies replies = {}) { options.replies = std::move(replies); }
    ScriptedInterface& ui() {
        if (!made) {
            made = std::make_unique<ScriptedInterface>(options, err);
        }
        return *made;
    }
    ScriptedInterfaceOptions options;
    std::ostringstream err;
    std::unique_ptr<ScriptedInterface> made;
};

struct ReplyCase {
    std::string reply;
    Buttons buttons;
    Button pressed;
    std::string told;
};

TEST(ScriptedInterface, RepliesPressTheNearestButtonTheBoxHas) {
    const ReplyCase cases[] = {
        {"yes", Buttons::YesNo, Button::Yes, "yes"},
        {"no", Buttons::YesNo, Button::No, "no"},
        {"cancel", Buttons::YesNo, Button::No, "no"},
        {"YES", Buttons::YesNo, Button::Yes, "yes"},
        {"12", Buttons::YesNo, Button::No, "no"},
        {"yes", Buttons::YesNoCancel, Button::Yes, "yes"},
        {"no", Buttons::YesNoCancel, Button::No, "no"},
        {"cancel", Buttons::YesNoCancel, Button::Cancel, "cancel"},
        {"yes", Buttons::OkCancel, Button::Ok, "ok"},
        {"no", Buttons::OkCancel, Button::Cancel, "cancel"},
        {"cancel", Buttons::OkCancel, Button::Cancel, "cancel"},
        {"yes", Buttons::RetryCancel, Button::Retry, "retry"},
        {"no", Buttons::RetryCancel, Button::Cancel, "cancel"},
        {"cancel", Buttons::RetryCancel, Button::Cancel, "cancel"},
    };
    for (const auto& c : cases) {
        Terminal terminal({{}, c.reply});
        EXPECT_EQ(terminal.ui().message(box(0, c.buttons)), c.pressed) << c.reply;
        ASSERT_EQ(terminal.ui().questions().size(), 1U);
        EXPECT_EQ(terminal.ui().questions()[0].reply, c.told) << c.reply;
        EXPECT_TRUE(terminal.ui().messages().empty());
    }
}

TEST(ScriptedInterface, AnAnswerOfItsOwnGoesBeforeTheAnswerForAll) {
    Terminal terminal({{{304, "yes"}}, "cancel"});
    EXPECT_EQ(terminal.ui().message(box(-304, Buttons::YesNoCancel)), Button::Yes);
    EXPECT_EQ(terminal.ui().message(box(304, Buttons::YesNoCancel)), Button::Yes);
    EXPECT_EQ(terminal.ui().message(box(305, Buttons::YesNoCancel)), Button::Cancel);
    EXPECT_EQ(terminal.ui().questions()[0].id, 304);
    EXPECT_EQ(terminal.ui().questions()[0].titleId, 79);
}

TEST(ScriptedInterface, AQuestionWithANameTakesItsDefaultWhateverIsAnsweredToAll) {
    for (const std::string all : {"no", "yes", "cancel"}) {
        for (const auto defaultButton : {Button::Yes, Button::No}) {
            Replies replies;
            replies.all = all;
            Terminal t(replies);
            auto named = box(0, Buttons::YesNo);
            named.name = "restore";
            named.defaultButton = defaultButton;
            EXPECT_EQ(t.ui().message(named), defaultButton) << all;
            EXPECT_EQ(t.ui().questions().at(0).name, "restore");
        }
    }
}

TEST(ScriptedInterface, AnAnswerReachesAQuestionByItsName) {
    Replies replies;
    replies.byName["restore"] = "No";
    Terminal t(replies);
    auto named = box(0, Buttons::YesNo);
    named.name = "restore";
    named.defaultButton = Button::Yes;
    EXPECT_EQ(t.ui().message(named), Button::No);
    named.name = "another";
    EXPECT_EQ(t.ui().message(named), Button::Yes);
    EXPECT_EQ(t.ui().message(box(0, Buttons::YesNo)), Button::No) << "one without a name";
    EXPECT_EQ(t.ui().questions().at(0).reply, "no");
}

TEST(ScriptedInterface, TheNamedQuestionOfThreeButtonsTakesEachReply) {
    for (const auto& [reply, button] : {std::pair("yes", Button::Yes), std::pair("no", Button::No),
                                        std::pair("cancel", Button::Cancel)}) {
        Replies replies;
        replies.all = "no";
        replies.byName["adjust"] = reply;
        Terminal t(replies);
        auto named = box(0, Buttons::YesNoCancel);
        named.name = question::kAdjust;
        EXPECT_EQ(t.ui().message(named), button) << reply;
    }
    Replies replies;
    replies.all = "no";
    Terminal t(replies);
    auto named = box(0, Buttons::YesNoCancel);
    named.name = question::kAdjust;
    named.defaultButton = Button::Yes;
    EXPECT_EQ(t.ui().message(named), Button::Yes);
    EXPECT_TRUE(isQuestionName("adjust"));
}

TEST(ScriptedInterface, AChoiceOfANamedQuestionIsTakenByAYesOfItsOwnAlone) {
    const ChoicePrompt prompt{.name = "changed-file",
                              .title = "Title",
                              .text = "Overwrite?",
                              .choices = {"&Overwrite", "&Elsewhere"}};
    const std::pair<std::string, int> rows[] = {{"", -1},  {"no", -1}, {"cancel", -1},
                                                {"2", -1}, {"yes", 0}, {"YES", 0}};
    for (const auto& [own, chosen] : rows) {
        Replies replies;
        replies.all = "yes";
        if (!own.empty()) {
            replies.byName["changed-file"] = own;
        }
        Terminal t(replies);
        EXPECT_EQ(t.ui().choose(prompt), chosen) << own;
        EXPECT_EQ(t.ui().questions().at(0).name, "changed-file");
        EXPECT_EQ(t.ui().questions().at(0).reply, chosen < 0 ? "cancel" : "yes");
        EXPECT_EQ(t.err.str(),
                  chosen < 0 ? "Title: Overwrite? -> cancel\n" : "Title: Overwrite? -> yes\n");
    }
}

TEST(ScriptedInterface, ANumberForAQuestionSaysYesAndAnswersThePromptBehindIt) {
    const std::vector<std::string> words{"1", "3", "12", "13"};
    Terminal terminal({{{357, "12"}}, "no"});
    EXPECT_EQ(terminal.ui().message(box(357, Buttons::YesNo)), Button::Yes);
    EXPECT_EQ(terminal.ui().questions()[0].reply, "yes");
    EXPECT_EQ(terminal.ui().chooseFromList("word", words), 2);
    EXPECT_EQ(terminal.ui().chooseFromList("word", words), -1) << "it answers one prompt";

    // What is not offered is not taken for the number of a choice.
    Terminal absent({{{357, "2"}}, "yes"});
    EXPECT_EQ(absent.ui().message(box(357, Buttons::YesNo)), Button::Yes);
    EXPECT_EQ(absent.ui().chooseFromList("word", words), -1);

    // Another question in between ends it.
    Terminal between({{{357, "12"}}, "no"});
    EXPECT_EQ(between.ui().message(box(357, Buttons::YesNo)), Button::Yes);
    EXPECT_EQ(between.ui().message(box(1, Buttons::YesNo)), Button::No);
    EXPECT_EQ(between.ui().chooseFromList("word", words), -1);
}

TEST(ScriptedInterface, ARetryThatHelpedNothingIsNotRepeatedForEver) {
    Terminal terminal({{}, "yes"});
    EXPECT_EQ(terminal.ui().message(box(0, Buttons::RetryCancel, "a")), Button::Retry);
    EXPECT_EQ(terminal.ui().message(box(0, Buttons::RetryCancel, "a")), Button::Cancel);
    EXPECT_EQ(terminal.ui().message(box(0, Buttons::RetryCancel, "b")), Button::Retry);
}

TEST(ScriptedInterface, MessagesAreOkBoxesAndTheLogInTheirOrder) {
    Terminal terminal;
    terminal.ui().logged({-318, 106, "Heading", "one\x14\x15two\r\nthree"});
    EXPECT_EQ(terminal.ui().message(box(157, Buttons::Ok, "boxed")), Button::Ok);
    terminal.ui().message(box(1, Buttons::YesNo));
    ASSERT_EQ(terminal.ui().messages().size(), 2U);
    EXPECT_EQ(terminal.ui().messages()[0].id, 318);
    EXPECT_EQ(terminal.ui().messages()[0].titleId, 106);
    EXPECT_EQ(terminal.ui().messages()[0].text, "one\ntwo\nthree");
    EXPECT_EQ(terminal.ui().messages()[1].id, 157);
    EXPECT_EQ(terminal.ui().messages()[1].text, "boxed");
}

TEST(ScriptedInterface, BoxesAndQuestionsAreShownWithNumberAndReply) {
    Terminal terminal;
    terminal.ui().message(box(157, Buttons::Ok, "Cut off"));
    terminal.ui().message(box(-304, Buttons::YesNo, "Make it?"));
    EXPECT_EQ(terminal.err.str(), "Title: KAVU Error #157\n\nCut off\nTitle: Make it? -> no\n");
}

TEST(ScriptedInterface, WithoutBoxesAndNotesTheErrorStreamStaysSilent) {
    Terminal terminal;
    terminal.options.showBoxes = false;
    terminal.options.showNotes = false;
    terminal.ui().message(box(157, Buttons::Ok));
    terminal.ui().message(box(304, Buttons::YesNo));
    terminal.ui().note("remark");
    terminal.ui().setStatusText("status");
    EXPECT_EQ(terminal.err.str(), "");
}

TEST(ScriptedInterface, NotesGoToTheErrorStreamAndAreNoMessages) {
    Terminal terminal;
    terminal.ui().note("a byte order mark");
    EXPECT_EQ(terminal.err.str(), "Note: a byte order mark\n");
    EXPECT_TRUE(terminal.ui().messages().empty());
}

TEST(ScriptedInterface, ControlCharactersOfAFileDoNotReachTheTerminal) {
    Terminal terminal;
    terminal.ui().note(
        "a\x1b[2Jb\xC2\x9B"
        "c\x07");
    EXPECT_EQ(terminal.err.str(),
              "Note: a\xE2\x90\x9B[2Jb\xEF\xBF\xBD"
              "c\xE2\x90\x87\n");
}

TEST(ScriptedInterface, PromptsTakeTheReplyForAll) {
    Terminal number({{}, "7"});
    EXPECT_EQ(number.ui().enterInteger({"t", "p", 1, 0, 9}), 7);
    EXPECT_EQ(number.ui().enterInteger({"t", "p", 1, 0, 5}), std::nullopt);
    EXPECT_EQ(number.ui().enterInteger({"t", "p", 1, 0, 0}), 7);
    EXPECT_EQ(number.ui().enterDouble({"t", "p", 1, 0, 9}), 7.0);
    EXPECT_EQ(number.ui().enterText({"t", "p", "initial", 0}), "7");
    EXPECT_EQ(number.ui().questions()[1].reply, "cancel");
    EXPECT_EQ(number.ui().questions()[0].reply, "7");

    Terminal agree({{}, "yes"});
    EXPECT_EQ(agree.ui().enterText({"t", "p", "initial", 0}), "initial");
    EXPECT_EQ(agree.ui().enterInteger({"t", "p", 3, 0, 9}), 3);

    Terminal refuse;
    EXPECT_EQ(refuse.ui().enterText({"t", "p", "initial", 0}), std::nullopt);
    EXPECT_EQ(refuse.ui().enterInteger({"t", "p", 3, 0, 9}), std::nullopt);
    EXPECT_EQ(refuse.ui().chooseFromList("t", {"RF", "Tape"}), -1);
    EXPECT_EQ(refuse.ui().chooseFile({}), std::nullopt);

    Terminal longText({{}, "abcdef"});
    EXPECT_EQ(longText.ui().enterText({"t", "p", "", 5}), std::nullopt);
    EXPECT_EQ(longText.ui().enterText({"t", "p", "", 6}), "abcdef");
}

TEST(ScriptedInterface, AChoiceIsNamedByItsTextOrItsNumberFromOne) {
    Terminal text({{}, "tape"});
    EXPECT_EQ(text.ui().chooseFromList("t", {"RF", "Tape"}), 1);
    EXPECT_EQ(text.ui().questions()[0].reply, "Tape");
    Terminal number({{}, "2"});
    EXPECT_EQ(number.ui().chooseFromList("t", {"RF", "Tape"}), 1);
    EXPECT_EQ(number.ui().selectFromTable({"t", {"c"}, {{"a"}, {"b"}}}), 1);
    Terminal outside({{}, "3"});
    EXPECT_EQ(outside.ui().chooseFromList("t", {"RF", "Tape"}), -1);
    EXPECT_EQ(outside.ui().selectFromTable({"t", {"c"}, {{"a"}, {"b"}}}), -1);
}

TEST(ScriptedInterface, AFileIsChosenByItsPath) {
    Terminal terminal({{}, "/tmp/x.tma"});
    FilePrompt prompt;
    prompt.filterIndex = 2;
    const auto choice = terminal.ui().chooseFile(prompt);
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(choice->path, "/tmp/x.tma");
    EXPECT_EQ(choice->filterIndex, 2);
}

TEST(ScriptedInterface, OnlyTheFirstProgressWindowIsOpened) {
    Terminal terminal;
    EXPECT_TRUE(terminal.ui().openProgress(ProgressMode::WithCancel, true));
    EXPECT_FALSE(terminal.ui().openProgress(ProgressMode::WithCancel, true));
    terminal.ui().closeProgress();
    EXPECT_TRUE(terminal.ui().openProgress(ProgressMode::WithCancel, true));
}

TEST(ScriptedInterface, OffATerminalProgressIsALineOfItsOwn) {
    Terminal terminal;
    terminal.options.showProgress = true;
    terminal.ui().setProgressBar(42.7);
    terminal.ui().setStatusText("Reading\nall");
    EXPECT_EQ(terminal.err.str(), "Reading all  42 %\n");
}

TEST(ScriptedInterface, OnATerminalProgressIsPaintedOverAndWiped) {
    Terminal terminal;
    terminal.options.showProgress = true;
    terminal.options.terminal = true;
    terminal.ui().openProgress(ProgressMode::WithCancel, true);
    terminal.ui().setStatusText("Reading");
    terminal.ui().closeProgress();
    EXPECT_EQ(terminal.err.str(), "\rReading\x1b[K\r\x1b[K");
}

TEST(ScriptedInterface, AnOddPercentageIsShownWithinItsBounds) {
    for (const double percent : {1e300, 101.0}) {
        Terminal terminal;
        terminal.options.showProgress = true;
        terminal.ui().setProgressBar(percent);
        terminal.ui().setStatusText("x");
        EXPECT_EQ(terminal.err.str(), "x  100 %\n");
    }
}

TEST(ScriptedInterface, AnInterruptIsAConfirmedCancel) {
    bool interrupted = false;
    Terminal terminal;
    terminal.options.interrupted = [&interrupted] { return interrupted; };
    EXPECT_FALSE(terminal.ui().cancelRequested());
    interrupted = true;
    EXPECT_TRUE(terminal.ui().cancelRequested());
    EXPECT_TRUE(terminal.ui().cancelRequested());
    Terminal without;
    EXPECT_FALSE(without.ui().cancelRequested());
}

TEST(ScriptedInterface, TheMessagesWindowIsKeptForTheReport) {
    Terminal terminal;
    terminal.ui().showMessages("title", "subtitle", {"a", "b"});
    ASSERT_EQ(terminal.ui().shown().size(), 1U);
    EXPECT_EQ(terminal.ui().shown()[0].title, "title");
    EXPECT_EQ(terminal.ui().shown()[0].lines.size(), 2U);
    EXPECT_TRUE(terminal.ui().messages().empty());
}

}  // namespace
}  // namespace kavu::cli
