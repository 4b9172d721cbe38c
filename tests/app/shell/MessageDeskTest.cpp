// What the main window says about the open document: its messages, its remarks, its edition, the
// status line.
#include "app/framework/FormContext.h"
#include "app/shell/CommandPane.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/TreePanel.h"
#include "app/support/MainWindowStage.h"
#include "core/document/GroupFiles.h"

#include <QAccessible>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTableView>
#include <QTreeView>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using testing::HasSubstr;

class MessageDeskTest : public MainWindowTest {
  public:
    /// A file that says that it is newer than this system (message 443), and has a remark.
    void beginWithMessages() {
        test::writeFile(path, "G\\PN:X;\r\nG\\106:12;\r\nQ-1\\ID:unknown;\r\n");
        begin(path);
    }
    const std::vector<Finding>& findings() { return window->messages().model().findings(); }
    /// Plants a fault in the working file of the first stream, as an edit of it would.
    void damageStream() {
        const auto group = application.context().store.pathOf(groupFile('P', 1));
        auto text = test::readFile(group);
        const auto at = text.find("P-1\\MF1:");
        ASSERT_NE(at, std::string::npos);
        undamaged = text;
        text.replace(at, text.find(';', at) - at, "P-1\\MF1:99999");
        std::filesystem::remove(group);
        test::writeFile(group, text);
    }
    void mendStream() {
        const auto group = application.context().store.pathOf(groupFile('P', 1));
        std::filesystem::remove(group);
        test::writeFile(group, undamaged);
    }

    std::string undamaged;
};

TEST_F(MessageDeskTest, TheMessagesOfAnOpeningComeOnceWhenTheTreeIsThereAndLetTheWindowBeUsed) {
    beginWithMessages();
    EXPECT_TRUE(door.names.empty()) << "no window waits for an answer";
    auto* const shown = window->messages().window();
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(shown->isVisible());
    EXPECT_FALSE(shown->isModal());
    EXPECT_TRUE(window->tree().current().has_value());
    ASSERT_EQ(findings().size(), 2U);
    EXPECT_EQ(findings()[0].source, "Remark");
    EXPECT_EQ(findings()[1].id, 443);
    EXPECT_EQ(findings()[1].source, "Opening");
    window->run(CommandId::ExpandAll);
    EXPECT_TRUE(shown->isVisible()) << "it stays while the window is used";
}

TEST_F(MessageDeskTest, TheMenuShowsThemAgainAndACloseOfTheDocumentTakesThemAway) {
    beginWithMessages();
    auto* const shown = window->messages().window();
    QTest::keyClick(shown, Qt::Key_Escape);
    EXPECT_FALSE(shown->isVisible());
    window->run(CommandId::ShowMessages);
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(findings().size(), 2U);
    window->run(CommandId::Close);
    EXPECT_FALSE(shown->isVisible());
    EXPECT_TRUE(findings().empty());
    EXPECT_FALSE(window->noteBar().isVisible()) << "the remarks were about the document";
    window->run(CommandId::ShowMessages);
    EXPECT_EQ(test::find<QPlainTextEdit>(*shown, "whole")->toPlainText(),
              QStringLiteral("There are no messages."));
}

TEST_F(MessageDeskTest, ACleanLoadShowsNothing) {
    begin(path);
    EXPECT_EQ(window->messages().window(), nullptr);
    EXPECT_TRUE(findings().empty());
    EXPECT_FALSE(window->noteBar().isVisible());
}

TEST_F(MessageDeskTest, TheRemarksAreShownAmongTheMessages) {
    test::writeFile(path, "G\\PN:X;\r\nG\\106:09;\r\nQ-1\\ID:a;\r\nT-100\\ID:b;\r\n");
    begin(path);
    EXPECT_EQ(window->messages().window(), nullptr) << "remarks alone are offered";
    test::press(window->noteBar(), "showRemarks");
    ASSERT_NE(window->messages().window(), nullptr);
    EXPECT_TRUE(window->messages().window()->isVisible());
    EXPECT_EQ(findings().size(), 2U);
}

TEST_F(MessageDeskTest, ACheckRenewsThemAndGoToLeadsToThePlaceWhileTheWindowStays) {
    begin(path);
    damageStream();
    window->activateWindow();
    QApplication::processEvents();
    QTest::keyClick(window.get(), Qt::Key_F8);
    auto* const shown = window->messages().window();
    ASSERT_NE(shown, nullptr);
    ASSERT_FALSE(findings().empty());
    EXPECT_EQ(findings()[0].source, "Stream 'PCM Stream 1'");
    EXPECT_THAT(toBytes(test::find<QLabel>(*shown, "subtitle")->text()),
                HasSubstr("Check of 'flight.tma' at 03:04"));
    auto* const list = test::find<QTreeView>(*shown, "lines");
    window->tree().select('T', 1);
    list->setCurrentIndex(list->model()->index(0, FindingModel::kText));
    test::press(*shown, "goTo");
    EXPECT_EQ(window->tree().current()->name, "PCM Stream 1");
    EXPECT_TRUE(shown->isVisible());
    mendStream();
    window->run(CommandId::CheckDocument);
    EXPECT_TRUE(findings().empty());
    EXPECT_THAT(toBytes(test::find<QLabel>(*shown, "subtitle")->text()),
                HasSubstr("nothing was found"));
}

TEST_F(MessageDeskTest, GoToSelectsTheCommandItself) {
    begin(path);
    EXPECT_TRUE(window->goTo(placeIn("See D-1\\MN-1-3 of it")));
    EXPECT_EQ(window->tree().current()->name, "PCM Stream 1");
    auto* const table = test::find<QTableView>(window->pane(), "commands");
    const auto selected = [&] {
        const auto rows = table->selectionModel()->selectedRows();
        return rows.isEmpty() ? std::string() : toBytes(rows.front().data().toString());
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return selected() == "D-1\\MN-1-3"; }, 2000)) << selected();
    EXPECT_TRUE(window->goTo(placeIn("measurement 'ENG1-N1' has no limits")));
    EXPECT_EQ(window->tree().current()->kind, TreeKind::Measurement);
    EXPECT_TRUE(window->goTo({.stream = "PCM Stream 2"}));
    EXPECT_EQ(window->tree().current()->name, "PCM Stream 2");
    EXPECT_FALSE(window->goTo({.stream = "not there"}));
}

TEST_F(MessageDeskTest, TheMessagesOfAStreamWaitForItsSheetAndAreKeptWithItsName) {
    begin(path);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("Messages"));
        EXPECT_TRUE(dialog.isModal());
        test::press(dialog, "close");
    });
    window->ui().logged({264, 0, "Error", "Unable to place it"});
    window->ui().showMessages("KAVU-9 Error Messages (Stream: PCM Stream 1)", "TMATS File: x",
                              {"Error - (KAVU Error #264)", "", "Unable to place it", ""});
    ASSERT_EQ(findings().size(), 1U);
    EXPECT_EQ(findings()[0].id, 264);
    EXPECT_EQ(findings()[0].source, "Stream 'PCM Stream 1'");
    EXPECT_EQ(findings()[0].place.stream, "PCM Stream 1");
}

TEST_F(MessageDeskTest, AnotherOperationTakesThePlaceOfTheOneBeforeAndNotOfTheOpening) {
    beginWithMessages();
    for (const char* const text : {"one", "two"}) {
        window->ui().showMessages("KAVU-9 Error Messages", "TMATS File: x", {text});
    }
    ASSERT_EQ(findings().size(), 3U);
    EXPECT_EQ(findings()[1].source, "Opening");
    EXPECT_EQ(findings()[2].source, "Operation");
    EXPECT_EQ(findings()[2].text, "two");
}

TEST_F(MessageDeskTest, WithoutADocumentThereIsNothingToCheck) {
    begin();
    EXPECT_FALSE(enabled(CommandId::CheckDocument));
    EXPECT_TRUE(enabled(CommandId::ShowMessages));
}

class EditionNoteTest : public MainWindowTest {
  public:
    void beginWithoutEdition(const std::string& more = {}) {
        auto text = test::readFile(path);
        const auto at = text.find("G\\106:");
        text.erase(at, text.find(';', at) + 1 - at);
        test::writeFile(path, text + more);
        begin(path);
    }
    bool hasNote() { return window->noteBar().has(NoteBar::About::Edition); }
};

TEST_F(EditionNoteTest, TheBarNamesTheBetterEditionAndReadsTheFileAsOneOfIt) {
    beginWithoutEdition("Q-1\\ID:unknown;\r\n");
    EXPECT_EQ(document().version, 2011);
    ASSERT_TRUE(hasNote());
    EXPECT_TRUE(window->noteBar().has(NoteBar::About::Remarks)) << "one does not replace the other";
    EXPECT_THAT(toBytes(window->noteBar().text()), HasSubstr("Read as 106-09 (2009) it has"));
    test::press(window->noteBar(), "readAs");
    EXPECT_EQ(document().version, 2009);
    EXPECT_EQ(title(), "KAVU-9 - TMATS Editor flight.tma (106-09)[*]");
    EXPECT_FALSE(hasNote());
    EXPECT_EQ(settings().integer("IRIGInputVersion", 0), 2011) << "the setting stays";
}

TEST_F(EditionNoteTest, ItCanBeLeftAndIsNotSaidAgainBeforeTheNextOpening) {
    beginWithoutEdition();
    test::press(window->noteBar(), "keepEdition");
    window->run(CommandId::ExpandAll);
    EXPECT_FALSE(hasNote());
    window->openNamed(path);
    EXPECT_TRUE(hasNote());
    window->run(CommandId::Close);
    EXPECT_FALSE(hasNote());
}

TEST_F(EditionNoteTest, AFileThatStatesItsEditionHasNone) {
    begin(path);
    EXPECT_FALSE(hasNote());
}

TEST(NoteBarTest, HoldsOneNoteOfEachKindAndEachButtonTakesItsOwn) {
    NoteBar bar(nullptr);
    int ran = 0;
    bar.showNote(NoteBar::About::Recovery, QStringLiteral("lost"),
                 {{"later", QStringLiteral("Later"), [&] { ++ran; }}});
    bar.showNote(NoteBar::About::Remarks, QStringLiteral("first"),
                 {{"dismiss", QStringLiteral("Dismiss"), {}}});
    bar.showNote(NoteBar::About::Remarks, QStringLiteral("second"),
                 {{"dismiss", QStringLiteral("Dismiss"), {}}});
    EXPECT_EQ(bar.text(), QStringLiteral("lost\nsecond"));
    test::press(bar, "dismiss");
    EXPECT_EQ(bar.text(), QStringLiteral("lost"));
    EXPECT_TRUE(bar.isVisible());
    test::press(bar, "later");
    EXPECT_EQ(ran, 1);
    EXPECT_FALSE(bar.isVisible());
}

class StatusTest : public MainWindowTest {
  public:
    QLabel& status() { return *test::find<QLabel>(*window->statusBar(), "statusText"); }
};

TEST_F(StatusTest, AScreenReaderGetsItsText) {
    begin();
    const auto spoken = [this] {
        return QAccessible::queryAccessibleInterface(&status())->text(QAccessible::Name);
    };
    EXPECT_EQ(spoken(), QStringLiteral("Status"));
    window->ui().setStatusText("Reading measurement names");
    EXPECT_EQ(spoken(), QStringLiteral("Status: Reading measurement names"));
    window->ui().setStatusText({});
    EXPECT_EQ(spoken(), QStringLiteral("Status"));
}

TEST_F(StatusTest, TheEndOfACommandClearsIt) {
    begin(path);
    window->installEditor(CommandId::General,
                          [this] { window->ui().setStatusText("Processing the G group"); });
    window->run(CommandId::General);
    EXPECT_EQ(status().text(), QString());
    window->installTreeAction(TreeAction::EditStream, [this](const TreeItem&) {
        window->ui().setStatusText("Processing the stream");
    });
    emit window->tree().activated({.kind = TreeKind::Stream, .name = "PCM Stream 1"});
    EXPECT_EQ(status().text(), QString());
}

}  // namespace
}  // namespace kavu
