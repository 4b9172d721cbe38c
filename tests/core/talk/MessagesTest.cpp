#include "support/TestContext.h"

#include <algorithm>
#include <cerrno>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int kNotInTable = 9999;
constexpr int kUnableToEdit = 85;  // "Unable To Edit %s"

// --- the table -----------------------------------------------------------------------------

TEST(MessageTableTest, NumbersRiseAndNoneIsUsedTwice) {
    const auto table = messageTable();
    ASSERT_EQ(table.size(), 411u);
    for (std::size_t i = 1; i < table.size(); ++i) {
        EXPECT_LT(table[i - 1].id, table[i].id);
    }
    EXPECT_EQ(table.front().id, 1);
    EXPECT_EQ(table.back().id, 461);
}

TEST(MessageTableTest, TextsFitTheirBuffer) {
    for (const auto& message : messageTable()) {
        EXPECT_FALSE(message.text.empty()) << message.id;
        EXPECT_LE(message.text.size(), 600u) << message.id;
    }
}

TEST(MessageTableTest, EveryNumberIsFoundAndGapsStayGaps) {
    for (const auto& message : messageTable()) {
        EXPECT_EQ(loadText(message.id), message.text);
    }
    for (const int gap : {-73, 0, 3, 34, 37, 72, 462, kNotInTable}) {
        EXPECT_EQ(loadText(gap), std::nullopt) << gap;
    }
}

TEST(MessageTableTest, PromptsStandInFrontOfMessages) {
    EXPECT_EQ(loadText(1), "Create a new TMATS file");
    EXPECT_EQ(loadText(12), "Exit KAVU-9");
    EXPECT_EQ(loadText(38),
              "Control how/if measurement sample rates are automatically calculated.");
    EXPECT_EQ(loadText(56), "Display KAVU-9 Information");
}

TEST(MessageTableTest, TitlesThatManyCallersUse) {
    const std::pair<int, const char*> rows[] = {
        {title::kErrorReading, "Error Reading TMATS File"},
        {title::kError, "KAVU-9 Error"},
        {title::kWarning, "KAVU-9 Warning"},
        {title::kNote, "KAVU-9"},
        {title::kInternalError, "KAVU-9 Internal Error"},
        {title::kDeleteEntry, "Delete This Entry?"},
        {title::kErrorSaving, "Error Saving TMATS File"},
        {title::kIllegalValueFound, "Illegal Value Found"},
        {title::kIllegalValueEntered, "Illegal Value Entered"},
        {title::kErrorReadingFormat, "Error Reading PCM Format Information"},
        {title::kErrorReadingMeasurement, "Error Reading Measurement Information In TMATS File"},
        {title::kErrorReadingConversion, "Error Reading Data Conversion Information"},
    };
    for (const auto& [id, text] : rows) {
        EXPECT_EQ(loadText(id), text);
    }
}

// --- boxes ---------------------------------------------------------------------------------

class MessagesTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string logText() { return readFile(t.messages.logPath()); }
    [[nodiscard]] const MessageBox& box() const { return t.ui.boxes.back(); }

    TestContext t;
};

TEST_F(MessagesTest, APositiveNumberIsShown) {
    EXPECT_EQ(t.messages.show(&t.ui, kUnableToEdit, title::kError, kWarningBox, "x"), Button::Ok);
    EXPECT_EQ(box().id, kUnableToEdit);
    EXPECT_EQ(box().title, "KAVU-9 Error");
    EXPECT_EQ(box().titleId, title::kError);
    EXPECT_EQ(box().text, "Unable To Edit x");
    EXPECT_EQ(box().shownText(), "KAVU Error #85\n\nUnable To Edit x");
    EXPECT_EQ(box().icon, Icon::Warning);
    EXPECT_EQ(box().buttons, Buttons::Ok);
    EXPECT_EQ(t.ui.beeps, 1);
}

TEST_F(MessagesTest, ANegativeNumberShowsTheTextAlone) {
    t.ui.byId[kUnableToEdit] = Button::Yes;
    EXPECT_EQ(t.messages.show(&t.ui, -kUnableToEdit, title::kNote, kYesNoBox, "x"), Button::Yes);
    EXPECT_EQ(box().id, -kUnableToEdit);
    EXPECT_EQ(box().shownText(), "Unable To Edit x");
    EXPECT_EQ(box().buttons, Buttons::YesNo);
}

TEST_F(MessagesTest, ANumberThatIsNotInTheTableSaysSoWithItsNumber) {
    t.messages.show(&t.ui, chosenMessage(kNotInTable), title::kError, kErrorBox);
    EXPECT_EQ(box().text, "<Internal error: String not found>");
    EXPECT_EQ(box().shownText(), "KAVU Error #9999\n\n<Internal error: String not found>");
    t.messages.log(&t.ui, chosenMessage(kNotInTable), title::kError);
    EXPECT_EQ(logText(),
              "KAVU-9 Error - (KAVU Error #9999)\n\n\t<Internal error: String not found>\n\n");
}

TEST_F(MessagesTest, AMissingTitleSaysSoInLowerCase) {
    t.messages.show(&t.ui, kUnableToEdit, chosenMessage(kNotInTable), kErrorBox, "x");
    EXPECT_EQ(box().title, "<internal error: String not found>");
}

TEST_F(MessagesTest, ATitleCanBeAText) {
    t.messages.showTitled(&t.ui, -kUnableToEdit, "Some Title", kErrorBox, "x");
    EXPECT_EQ(box().title, "Some Title");
    EXPECT_EQ(box().titleId, 0);
}

TEST_F(MessagesTest, AMessageOf2000CharactersIsCutByTheBufferOfBoxes) {
    const std::string value(2000, 'x');
    t.messages.show(&t.ui, -kUnableToEdit, title::kError, kErrorBox, value);
    EXPECT_EQ(box().shownText().size(), 599u);
    t.messages.show(&t.ui, kUnableToEdit, title::kError, kErrorBox, value);
    EXPECT_EQ(box().shownText().size(), 599u) << "the number takes its place in the buffer";
    EXPECT_THAT(box().shownText(), StartsWith("KAVU Error #85\n\nUnable To Edit xxx"));
}

TEST_F(MessagesTest, TheCutDoesNotSplitACharacter) {
    std::string value;
    for (int i = 0; i < 500; ++i) {
        value += "\xC3\xA9";
    }
    t.messages.show(&t.ui, -kUnableToEdit, title::kError, kErrorBox, value);
    EXPECT_EQ(box().text.size(), 599u);  // 15 + 2 * 292
    t.messages.show(&t.ui, -kUnableToEdit, title::kError, kErrorBox, "x" + value);
    EXPECT_EQ(box().text.size(), 598u);
}

TEST_F(MessagesTest, AFailureGivesItsReasonBehindTheText) {
    const IoStatus status("/some/path", ENOSPC);
    t.messages.showFailure(&t.ui, status, kUnableToEdit, title::kError, kErrorBox, "x");
    EXPECT_EQ(box().text, "Unable To Edit x\n\nReason: No space left on device");
    t.messages.showFailure(&t.ui, IoStatus(), kUnableToEdit, title::kError, kErrorBox, "x");
    EXPECT_EQ(box().text, "Unable To Edit x");
    const std::string value(2000, 'x');
    t.messages.showFailure(&t.ui, status, kUnableToEdit, title::kError, kErrorBox, value);
    EXPECT_THAT(box().text, EndsWith("\n\nReason: No space left on device"));
}

TEST_F(MessagesTest, ATextFromAFileIsNoFormat) {
    t.messages.show(&t.ui, kUnableToEdit, title::kError, kErrorBox, "100%s %n %d");
    EXPECT_EQ(box().text, "Unable To Edit 100%s %n %d");
}

TEST_F(MessagesTest, WithoutAParentNothingIsShown) {
    EXPECT_EQ(t.messages.show(nullptr, kUnableToEdit, title::kError, kYesNoBox, "x"), Button::None);
    EXPECT_EQ(t.messages.showTitled(nullptr, 1, "title", kYesNoBox), Button::None);
    EXPECT_EQ(t.messages.showFailure(nullptr, {}, 1, title::kError, kErrorBox), Button::None);
    t.messages.showLog(nullptr, "path");
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_FALSE(t.has(working::kMessageLog));
}

// --- the log -------------------------------------------------------------------------------

TEST_F(MessagesTest, AnEntryWithATitleIsIndented) {
    t.messages.log(&t.ui, kUnableToEdit, title::kError, "x");
    EXPECT_EQ(logText(), "KAVU-9 Error - (KAVU Error #85)\n\n\tUnable To Edit x\n\n");
    EXPECT_EQ(t.ui.beeps, 0);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(MessagesTest, AnEntryWithoutATitleIsNot) {
    t.messages.log(&t.ui, kUnableToEdit, 0, "x");
    EXPECT_EQ(logText(), " - (KAVU Error #85)\nUnable To Edit x\n");
}

TEST_F(MessagesTest, AnEntryOfANegativeNumberDoesNotShowIt) {
    t.messages.log(&t.ui, -kUnableToEdit, title::kWarning, "x");
    t.messages.log(&t.ui, -kUnableToEdit, 0, "y");
    EXPECT_EQ(logText(), "KAVU-9 Warning\n\n\tUnable To Edit x\n\n\nUnable To Edit y\n");
}

TEST_F(MessagesTest, ATextWithoutANumberCanBeLogged) {
    t.messages.logText(&t.ui, title::kNote, "some text");
    t.messages.logText(&t.ui, 0, "");
    EXPECT_EQ(logText(), "KAVU-9\n\n\tsome text\n\n\n<Internal error: String not found>\n");
    EXPECT_EQ(t.ui.logs.at(0).text, "some text");
    EXPECT_EQ(t.ui.logs.at(0).id, 0);
}

TEST_F(MessagesTest, LinesWrapAtTheFirstBlankPastTheColumn) {
    // The blank has to stand past the column: at it is not enough.
    const auto line = [](std::size_t blankAt) { return std::string(blankAt - 1, 'x') + " tail"; };
    const std::string x70(70, 'x');
    const std::string x80(80, 'x');
    t.messages.logText(nullptr, title::kNote, line(70));
    t.messages.logText(nullptr, title::kNote, line(71));
    EXPECT_EQ(logText(), "KAVU-9\n\n\t" + std::string(69, 'x') + " tail\n\n" + "KAVU-9\n\n\t" +
                             x70 + " \n\ttail\n\n");
    ASSERT_TRUE(deleteFile(t.messages.logPath()).ok());
    t.messages.logText(nullptr, 0, line(80));
    t.messages.logText(nullptr, 0, line(81));
    EXPECT_EQ(logText(), "\n" + std::string(79, 'x') + " tail\n" + "\n" + x80 + " \ntail\n");
}

TEST_F(MessagesTest, TheColumnCountRestartsAtALineBreak) {
    const std::string x60(60, 'x');
    t.messages.logText(nullptr, title::kNote, x60 + "\n" + x60 + " y " + std::string(10, 'z'));
    EXPECT_EQ(logText(),
              "KAVU-9\n\n\t" + x60 + "\n\t" + x60 + " y " + std::string(10, 'z') + "\n\n");
}

TEST_F(MessagesTest, ALongTextWithoutBlanksIsNotCut) {
    const std::string value(900, 'x');
    t.messages.log(&t.ui, kUnableToEdit, title::kError, value);
    EXPECT_THAT(logText(), HasSubstr("\tUnable To Edit " + value + "\n\n"));
}

TEST_F(MessagesTest, StoredLineBreaksBecomeRealOnes) {
    t.messages.log(&t.ui, kUnableToEdit, title::kError,
                   "a\x14\x15"
                   "b\r\nc");
    EXPECT_EQ(logText(), "KAVU-9 Error - (KAVU Error #85)\n\n\tUnable To Edit a\n\tb\n\tc\n\n");
    EXPECT_EQ(t.ui.logs.at(0).text, "Unable To Edit a\nb\nc");
}

TEST_F(MessagesTest, TheParentHearsEveryEntryUnwrapped) {
    std::string words;
    for (int i = 0; i < 60; ++i) {
        words += "word ";
    }
    t.messages.log(&t.ui, -kUnableToEdit, title::kWarning, words);
    ASSERT_EQ(t.ui.logs.size(), 1u);
    EXPECT_EQ(t.ui.logs[0].id, -kUnableToEdit);
    EXPECT_EQ(t.ui.logs[0].titleId, title::kWarning);
    EXPECT_EQ(t.ui.logs[0].title, "KAVU-9 Warning");
    EXPECT_EQ(t.ui.logs[0].text, "Unable To Edit " + words);
    const auto text = logText();
    EXPECT_GT(std::count(text.begin(), text.end(), '\n'), 7);
}

TEST_F(MessagesTest, TheBufferOfTheLogIsTwiceThatOfBoxes) {
    t.messages.log(&t.ui, kUnableToEdit, title::kError, std::string(2000, 'x'));
    EXPECT_EQ(t.ui.logs.at(0).text.size(), 1199u);
}

TEST_F(MessagesTest, AFailureIsLoggedWithItsReason) {
    t.messages.logFailure(&t.ui, {"/some/path", EIO}, kUnableToEdit, title::kError, "x");
    EXPECT_EQ(t.ui.logs.at(0).text, "Unable To Edit x\n\nReason: Input/output error");
    EXPECT_THAT(logText(), HasSubstr("\tUnable To Edit x\n\t\n\tReason: Input/output error\n\n"));
}

TEST_F(MessagesTest, ALogThatCanNotBeWrittenLosesTheMessageAndNothingElse) {
    ASSERT_TRUE(makeFolder(t.messages.logPath()).ok());
    t.messages.log(&t.ui, kUnableToEdit, title::kError, "x");
    t.messages.logLastCommands("D-1\\MN:x;");
    EXPECT_EQ(t.ui.logs.size(), 1u);
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(MessagesTest, LastCommandsStandOneOnALine) {
    t.messages.logLastCommands("");
    EXPECT_FALSE(t.has(working::kMessageLog));
    t.messages.logLastCommands("D-1\\MN-1-1:A;D-1\\LT-1-1:WFWB;");
    EXPECT_EQ(logText(),
              "\tLast TMATS commands read:\n\n\t\tD-1\\MN-1-1:A;\n\t\tD-1\\LT-1-1:WFWB;\n\t\t\n\n");
}

// --- the Messages window -------------------------------------------------------------------

TEST_F(MessagesTest, TheLogIsShownWithoutItsIndentsAndThenGone) {
    t.messages.log(nullptr, kUnableToEdit, title::kError, "x");
    t.messages.showLog(&t.ui, "/a/file.tma");
    ASSERT_EQ(t.ui.shown.size(), 1u);
    EXPECT_EQ(t.ui.shown[0].title, "KAVU-9 Error Messages");
    EXPECT_EQ(t.ui.shown[0].subtitle, "TMATS File: /a/file.tma");
    EXPECT_THAT(t.ui.shown[0].lines,
                ElementsAre("KAVU-9 Error - (KAVU Error #85)", "", "Unable To Edit x", ""));
    EXPECT_FALSE(t.has(working::kMessageLog));
}

TEST_F(MessagesTest, TheStreamStandsInTheTitle) {
    t.messages.logText(nullptr, 0, "x");
    t.messages.showLog(&t.ui, "file.tma", "PCM 1");
    EXPECT_EQ(t.ui.shown.at(0).title, "KAVU-9 Error Messages (Stream: PCM 1)");
}

TEST_F(MessagesTest, APathIsNoFormat) {
    t.messages.logText(nullptr, 0, "x");
    t.messages.showLog(&t.ui, "100%s.tma");
    EXPECT_EQ(t.ui.shown.at(0).subtitle, "TMATS File: 100%s.tma");
}

TEST_F(MessagesTest, AnEmptyLogIsACleanLoad) {
    EXPECT_FALSE(t.messages.showDialog(&t.ui, "title", "", t.messages.logPath()));
    t.write(working::kMessageLog, "");
    EXPECT_FALSE(t.messages.showDialog(&t.ui, "title", "", t.messages.logPath()));
    EXPECT_TRUE(t.ui.shown.empty());
    EXPECT_FALSE(t.has(working::kMessageLog));
}

TEST_F(MessagesTest, AnyLogCanBeShownAndHasATitle) {
    const auto path = t.folder / "other.log";
    writeFile(path, " \t a b \r\n\tc");
    EXPECT_TRUE(t.messages.showDialog(&t.ui, "", "subtitle", path));
    EXPECT_EQ(t.ui.shown.at(0).title, "Messages");
    EXPECT_EQ(t.ui.shown.at(0).subtitle, "subtitle");
    EXPECT_THAT(t.ui.shown.at(0).lines, ElementsAre("a b ", "c"));
    EXPECT_FALSE(fileExists(path));
}

TEST_F(MessagesTest, ALogThatCanNotBeReadSaysSo) {
    ASSERT_TRUE(makeFolder(t.messages.logPath()).ok());
    EXPECT_TRUE(t.messages.showDialog(&t.ui, "title", "", t.messages.logPath()));
    EXPECT_THAT(t.ui.shown.at(0).lines, ElementsAre("Internal Error: Unable to display messages"));
}

TEST_F(MessagesTest, ALogThatNobodyCanBeShownStays) {
    t.messages.logText(nullptr, 0, "x");
    t.messages.showLog(nullptr, "file.tma");
    EXPECT_FALSE(t.messages.showDialog(nullptr, "title", "", t.messages.logPath()));
    EXPECT_THAT(logText(), Not(::testing::IsEmpty()));
}

}  // namespace
}  // namespace kavu::test
