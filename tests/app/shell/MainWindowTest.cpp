#include "app/framework/FormContext.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/NoteBar.h"
#include "app/shell/StartOptions.h"
#include "app/shell/TreePanel.h"
#include "app/support/MainWindowStage.h"
#include "core/document/DocumentChange.h"
#include "core/document/DocumentHistory.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"

#include <clocale>

#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QRadioButton>
#include <QStatusBar>
#include <QTimer>
#include <QTreeView>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using enum CommandId;

TEST_F(MainWindowTest, WithoutADocumentOnlyTheWaysToOneAreOpen) {
    begin();
    EXPECT_EQ(title(), "KAVU-9 - TMATS Editor[*]");
    for (const auto id : {CreateNew, Open, Exit, Versions, HelpIndex, About}) {
        EXPECT_TRUE(enabled(id)) << static_cast<int>(id);
    }
    for (const auto id : {Save, SaveAs, Close, General, ExpandAll, CollapseAll, ExpandBranch}) {
        EXPECT_FALSE(enabled(id)) << static_cast<int>(id);
    }
}

TEST_F(MainWindowTest, TheTitleTellsFileEditionAndChanges) {
    begin(path);
    ASSERT_TRUE(document().open);
    EXPECT_EQ(title(), "KAVU-9 - TMATS Editor flight.tma (106-09)[*]");
    EXPECT_FALSE(window->isWindowModified());
    document().changed = true;
    application.context().history.tell({DocumentChange::Edited, {}, {}});
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(enabled(Save));
    EXPECT_TRUE(enabled(Close));
}

TEST_F(MainWindowTest, AnEntryWithoutAnEditorIsDisabledAndItsPromptSaysSo) {
    begin(path);
    EXPECT_FALSE(enabled(General));
    EXPECT_EQ(window->action(General)->statusTip(),
              QStringLiteral("Edit GENERAL Information Section (not available in this version)"));
    int opened = 0;
    window->installEditor(General, [&] { ++opened; });
    EXPECT_TRUE(enabled(General));
    EXPECT_EQ(window->action(General)->statusTip(),
              QStringLiteral("Edit GENERAL Information Section"));
    window->run(General);
    EXPECT_EQ(opened, 1);
    window->run(Close);
    EXPECT_FALSE(enabled(General));
    window->run(General);
    EXPECT_EQ(opened, 1);
}

TEST_F(MainWindowTest, EditorsAreOpenedFromTheTreeAsWell) {
    begin(path);
    int general = 0;
    std::string stream;
    window->installEditor(General, [&] { ++general; });
    window->installTreeAction(TreeAction::EditStream,
                              [&](const TreeItem& item) { stream = item.name; });
    emit window->tree().activated({.kind = TreeKind::General, .command = 13});
    emit window->tree().activated({.kind = TreeKind::Stream, .name = "PCM Stream 1"});
    EXPECT_EQ(general, 1);
    EXPECT_EQ(stream, "PCM Stream 1");
}

TEST_F(MainWindowTest, AHeadOfTheTreeOpensAndClosesItsBranch) {
    begin(path);
    auto& tree = window->tree();
    tree.collapseAll();
    const auto head = tree.model().indexOf(TreeKind::ConversionHead, {});
    tree.view()->setCurrentIndex(head);
    QTest::keyClick(tree.view(), Qt::Key_Return);
    EXPECT_TRUE(tree.view()->isExpanded(head));
    QTest::keyClick(tree.view(), Qt::Key_Return);
    EXPECT_FALSE(tree.view()->isExpanded(head));
}

TEST_F(MainWindowTest, EveryMenuAndSubmenuHasAPrompt) {
    begin();
    int menus = 0;
    for (const auto* const menu : window->findChildren<QMenu*>()) {
        if (const auto* const entry = menu->menuAction(); !entry->text().isEmpty()) {
            EXPECT_FALSE(entry->statusTip().isEmpty()) << toBytes(entry->text());
            ++menus;
        }
    }
    EXPECT_EQ(menus, 16);
}

TEST_F(MainWindowTest, FactsComeFromTheSourcesOfTheDocument) {
    begin(path);
    EXPECT_TRUE(window->facts().document.hasRadioSource);
    EXPECT_TRUE(window->facts().document.hasTapeSource);
    EXPECT_TRUE(window->facts().document.hasDataLink);
    window->run(Close);
    EXPECT_FALSE(window->facts().document.hasRadioSource);
    EXPECT_FALSE(document().open);
}

TEST_F(MainWindowTest, EveryControlHasANameAndFits) {
    begin(path);
    EXPECT_THAT(test::checkNames(*window), IsEmpty());
    EXPECT_THAT(test::checkText(*window), IsEmpty());
}

TEST_F(MainWindowTest, ClosingAChangedDocumentAsksAndCancelKeepsTheProgramRunning) {
    begin(path);
    document().changed = true;
    answer("cancel");
    EXPECT_FALSE(window->quit());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(document().open);
    answer("no");
    EXPECT_TRUE(window->quit());
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(fileExists(folder / "temp/[kavu]GTMP.G"));
}

TEST_F(MainWindowTest, TheSplashStandsWhileTheDocumentClosesAndGoesWithACancel) {
    const auto splashShown = [] {
        return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
            return widget->objectName() == QStringLiteral("splash") && widget->isVisible();
        });
    };
    begin(path, true);
    EXPECT_FALSE(splashShown());
    document().changed = true;
    bool shown = false;
    door.next([&](QDialog& dialog) {
        shown = splashShown();
        test::press(dialog, "cancel");
    });
    EXPECT_FALSE(window->quit());
    EXPECT_TRUE(shown);
    EXPECT_FALSE(splashShown());
    answer("no");
    EXPECT_TRUE(window->quit());
    EXPECT_FALSE(splashShown());
}

TEST_F(MainWindowTest, ClosingWithYesSavesTheDocument) {
    begin(path);
    document().changed = true;
    // The question about the backup's file comes only if one was made before.
    answer("yes");
    window->run(Close);
    EXPECT_FALSE(document().open);
    EXPECT_THAT(test::readFile(path), HasSubstr("G\\FN:flight.tma;"));
}

TEST_F(MainWindowTest, GeometryAndOpenBranchesComeBack) {
    begin(path);
    window->setGeometry(40, 30, 700, 500);
    window->run(ExpandAll);
    ASSERT_TRUE(window->quit());
    EXPECT_EQ(settings().integer("DX", 0), 700);
    EXPECT_EQ(settings().integer("DY", 0), 500);
    EXPECT_EQ(settings().integer("ExpG", 0), 1);
    begin(path);
    EXPECT_EQ(window->geometry(), QRect(40, 30, 700, 500));
    EXPECT_TRUE(window->tree().expansion().general);
}

TEST_F(MainWindowTest, TheGeometryOfAMinimisedWindowIsNotKept) {
    begin();
    settings().writeInteger("DX", 777);
    window->setWindowState(Qt::WindowMinimized);
    ASSERT_TRUE(window->isMinimized());
    EXPECT_TRUE(window->quit());
    EXPECT_EQ(settings().integer("DX", 0), 777);
}

TEST_F(MainWindowTest, AWindowOfAScreenThatIsGoneComesBackOntoOneThatIsThere) {
    test::writeFile(folder / "kavu.ini", "[KAVU-9]\r\nX=9000\r\nY=-4000\r\nDX=600\r\nDY=400\r\n");
    begin();
    const auto room = window->screen()->availableGeometry();
    EXPECT_TRUE(room.contains(window->geometry())) << window->geometry().x();
}

TEST_F(MainWindowTest, ADroppedFileIsOpened) {
    begin();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(toQString(path))});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    window->dropEvent(&drop);
    EXPECT_EQ(document().path, path);
}

TEST_F(MainWindowTest, SaveAsAsksBeforeAnotherFileGoesAndAddsTheExtension) {
    const auto other = folder / "other.tma";
    test::writeFile(other, "precious");
    begin(path);
    door.next([&](QDialog& dialog) {
        answer("no");
        typeFileName(dialog, "other");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(test::readFile(other), "precious");
        dialog.reject();
    });
    window->run(SaveAs);
    EXPECT_EQ(test::readFile(other), "precious");
    EXPECT_EQ(document().path, path);
    door.next([&](QDialog& dialog) { typeFileName(dialog, "new"); });
    window->run(SaveAs);
    EXPECT_EQ(document().path, folder / "new.tma");
    EXPECT_TRUE(fileExists(folder / "new.tma"));
    // The document's own file is saved as by Save.
    door.next([&](QDialog& dialog) {
        EXPECT_EQ(test::find<QLineEdit>(dialog, "fileNameEdit")->text(), QStringLiteral("new.tma"));
        dialog.accept();
    });
    window->run(SaveAs);
    EXPECT_EQ(document().path, folder / "new.tma");
}

TEST_F(MainWindowTest, OpenStartsInTheFolderOfTheLastFile) {
    begin(path);
    window->run(Close);
    door.next([&](QDialog& dialog) {
        EXPECT_EQ(toBytes(static_cast<QFileDialog&>(dialog).directory().absolutePath()),
                  folder.path());
        dialog.reject();
    });
    window->run(Open);
}

TEST_F(MainWindowTest, ANameOfTheCommandLineBecomesAnAbsolutePath) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    begin("flight.tma");
    std::filesystem::current_path(before);
    EXPECT_EQ(document().path, path);
    EXPECT_EQ(settings().profileText("KAVU_Opened_Files", "File1"), path);
}

TEST_F(MainWindowTest, TheStartShowsWhatItDoesUnderAWaitCursor) {
    bool seen = false;
    // Comes while the splash picture is up.
    QTimer::singleShot(50, [&] {
        seen = true;
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(test::find<QLabel>(*window, "statusText")->text(),
                  QStringLiteral("Verifying no KAVU temporary files exist"));
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        window->close();
        EXPECT_TRUE(window->isVisible()) << "the start cannot be closed half way";
    });
    begin(path, true);
    EXPECT_TRUE(seen);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(test::find<QLabel>(*window, "statusText")->text(), QString());
}

TEST_F(MainWindowTest, ADialogOfTheStartHasNoWaitCursor) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Qt::CursorShape shape = Qt::WaitCursor;
    door.next([&](QDialog& dialog) {
        shape = QGuiApplication::overrideCursor()->shape();
        dialog.reject();
    });
    begin();
    showBox(&window->ui(), "A question", "Start");
    EXPECT_EQ(shape, Qt::ArrowCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

TEST_F(MainWindowTest, TheTitleBarIsOnTheScreen) {
    test::writeFile(folder / "kavu.ini", "[KAVU-9]\r\nX=0\r\nY=0\r\nDX=600\r\nDY=400\r\n");
    begin();
    const auto room = window->screen()->availableGeometry();
    // The frame of a test's platform is none, and room is kept for one.
    EXPECT_GE(window->geometry().top() - room.top(), window->fontMetrics().height());
    QTest::qWait(20);
    EXPECT_TRUE(room.contains(window->frameGeometry()));
}

TEST_F(MainWindowTest, ClosingRemovesGroupsOfEveryIndex) {
    test::writeFile(path,
                    "G\\106:09;T-0\\ID:Zero;T-100\\ID:Hundred;P-0\\DLN:Nobody;D-12345\\DLN:Far;");
    begin(path);
    const auto& store = application.context().store;
    ASSERT_TRUE(fileExists(store.pathOf("[kavu]DSRCE.T100")));
    window->run(Close);
    EXPECT_FALSE(document().open);
    for (const auto* const name : {"[kavu]DSRCE.T00", "[kavu]DSRCE.T100", "[kavu]PCMFMT.P00",
                                   "[kavu]PCMMEAS.D12345", "[kavu]GTMP.G"}) {
        EXPECT_FALSE(fileExists(store.pathOf(name))) << name;
    }
}

TEST_F(MainWindowTest, RecentFilesAreOfferedAndOpened) {
    begin(path);
    window->run(Close);
    auto* const menu = window->findChild<QMenu*>(QStringLiteral("recentMenu"));
    ASSERT_NE(menu, nullptr);
    emit qobject_cast<QMenu*>(menu->parent())->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_THAT(toBytes(menu->actions().front()->toolTip()), HasSubstr(path));
    menu->actions().front()->trigger();
    EXPECT_TRUE(document().open);
}

TEST_F(MainWindowTest, TheDialogOfTheEditionsConvertsTheDocument) {
    begin(path);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("TMATS Version Numbers (Current file is 106-09)"));
        test::find<QRadioButton>(dialog, "saveAsSelected")->click();
        auto* const output = test::find<QComboBox>(dialog, "outputVersion");
        output->setCurrentIndex(output->findData(2007));
        test::press(dialog, "ok");
    });
    answer("ok");  // the ends of ranges, which 2007 cannot express, in place of note 444
    window->run(Versions);
    ASSERT_NE(window->messages().window(), nullptr) << "they are in the messages as well";
    EXPECT_TRUE(window->messages().window()->isVisible());
    EXPECT_EQ(document().version, 2007);
    EXPECT_TRUE(document().changed);
    EXPECT_EQ(title(), "KAVU-9 - TMATS Editor flight.tma (106-07)[*]");
}

TEST_F(MainWindowTest, EditionsOfAChangedDocumentAreNotTouched) {
    begin(path);
    document().changed = true;
    answer("ok");  // note 441
    window->run(Versions);
    EXPECT_EQ(document().version, 2009);
    document().changed = false;
}

TEST_F(MainWindowTest, ThePrecisionOpensWithThePresentValueAndOkKeepsIt) {
    begin();
    for (const auto& [kept, row] : {std::pair(8, 7), {1, 0}, {0, 0}, {13, 12}, {40, 12}}) {
        settings().set(setting::kFloatPrecision, kept);
        door.next([row = row](QDialog& dialog) {
            auto* const list = dialog.findChild<QListWidget*>();
            EXPECT_EQ(list->currentRow(), row);
            test::press(dialog, row == 12 || row == 0 ? "cancel" : "ok");
        });
        window->run(Precision);
        EXPECT_EQ(settings().get(setting::kFloatPrecision), kept);
    }
}

TEST_F(MainWindowTest, ThePrecisionIsKeptAsOneMoreThanWasChosen) {
    begin();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Enter Precision"));
        auto* const list = dialog.findChild<QListWidget*>();
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->count(), 13);
        list->setCurrentRow(6);
        test::press(dialog, "ok");
    });
    window->run(Precision);
    EXPECT_EQ(settings().integer("FloatPrecision", 0), 7);
    EXPECT_EQ(settings().get(setting::kFloatPrecision), 7);
}

TEST_F(MainWindowTest, ChoicesAreCheckedAndWrittenAtOnce) {
    test::writeFile(folder / "kavu.ini", "[KAVU-9]\r\nMDBEnabled=1\r\n");
    begin();
    EXPECT_TRUE(window->action(MakeBackups)->isChecked());
    window->action(NoBackups)->trigger();
    EXPECT_EQ(settings().integer("CreateBackup", 1), 0);
    EXPECT_FALSE(window->action(MakeBackups)->isChecked());
    EXPECT_TRUE(window->action(RefuseSameNames)->isChecked());
    window->action(AllowSameNames)->trigger();
    EXPECT_EQ(settings().integer("CheckForDupMeasurements", 1), 0);
    for (const bool inPlace : {true, false}) {
        window->action(SaveInPlace)->trigger();
        EXPECT_EQ(window->action(SaveInPlace)->isChecked(), inPlace);
        EXPECT_EQ(settings().integer("SaveInPlace", 2), inPlace ? 1 : 0);
    }
    window->action(AddRoot)->trigger();
    EXPECT_EQ(settings().get(setting::kDatabaseAddsRoot), 1);
    EXPECT_FALSE(window->action(KeepComments)->isChecked());
    for (const bool on : {true, false}) {
        window->action(KeepComments)->trigger();
        EXPECT_EQ(window->action(KeepComments)->isChecked(), on);
        EXPECT_EQ(settings().integer("KeepComments", -1), on ? 1 : 0);
    }
}

TEST_F(MainWindowTest, TheSessionDoesNotEndWhileADialogIsUp) {
    begin(path);
    door.next([&](QDialog& dialog) {
        EXPECT_FALSE(window->maySessionEnd());
        test::press(dialog, "cancel");
    });
    answer("ok");  // the note that the editor is still active
    window->run(SampleRateOptions);
    QApplication::processEvents();
    EXPECT_TRUE(document().open);
    EXPECT_TRUE(window->maySessionEnd());
}

TEST_F(MainWindowTest, TheSessionEndsAsTheUserAnswersForAChangedDocument) {
    begin(path);
    document().changed = true;
    answer("cancel");
    EXPECT_FALSE(window->maySessionEnd());
    answer("no");
    EXPECT_TRUE(window->maySessionEnd());
}

TEST_F(MainWindowTest, AFileThatAnotherProgramHasChangedIsAskedAboutOnce) {
    begin(path);
    std::filesystem::remove(path);
    test::writeFile(path, "G\\PN:OTHER;\r\nG\\106:09;\r\n");
    door.next([this](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("Question"));
        EXPECT_THAT(toBytes(test::find<QLabel>(dialog, "text")->text()),
                    HasSubstr("Another program has changed the file '" + path + "'"));
        dialog.reject();
    });
    window->checkDisk();
    EXPECT_TRUE(document().changed);
    window->checkDisk();
    document().changed = false;
}

TEST_F(MainWindowTest, ALineOfTheMessagesGoesToThePlaceOfItsCommand) {
    begin(path);
    EXPECT_TRUE(window->goTo(placeIn("The command P-1\\D2 is wrong")));
    ASSERT_TRUE(window->tree().current().has_value());
    EXPECT_EQ(window->tree().current()->letter, 'P');
    EXPECT_EQ(window->tree().current()->group, 1);
    EXPECT_TRUE(window->goTo(placeIn("G\\PN:KESTREL;")));
    EXPECT_EQ(window->tree().current()->kind, TreeKind::General);
    EXPECT_FALSE(window->goTo(placeIn("Nothing is named here, not even P-x")));
    EXPECT_FALSE(window->goTo(placeIn("P-98\\D2")));
}

TEST_F(MainWindowTest, ALineOfAGroupBesideTheFormatGoesToTheStreamOfItsName) {
    begin(path);
    const auto& store = application.context().store;
    // The groups of a stream need not have the same index.
    ASSERT_TRUE(
        renameFile(store.pathOf("[kavu]PCMMEAS.D01"), store.pathOf("[kavu]PCMMEAS.D07")).ok());
    const auto text = test::readFile(store.pathOf("[kavu]PCMMEAS.D07"));
    test::writeFile(store.pathOf("[kavu]PCMMEAS.D07"), replaceAll(text, "D-1\\", "D-7\\"));
    EXPECT_TRUE(window->goTo(placeIn("D-7\\MN-1-1:X;")));
    EXPECT_EQ(window->tree().current()->name, "PCM Stream 1");
    EXPECT_FALSE(window->goTo(placeIn("D-1\\MN-1-1:X;")));
}

TEST_F(MainWindowTest, RemarksOfAnOpeningAreOffered) {
    test::writeFile(path, "G\\PN:X;\r\nQ-1\\ID:unknown;\r\n");
    begin(path);
    EXPECT_TRUE(window->noteBar().isVisible());
    EXPECT_THAT(toBytes(window->noteBar().text()), HasSubstr("no known group"));
    test::press(window->noteBar(), "dismiss");
    EXPECT_FALSE(window->noteBar().isVisible());
}

TEST_F(MainWindowTest, CommentsOfTheFileAreRemarkedOrKept) {
    const std::string text = "COMMENT: mine;\r\nG\\PN:X;\r\n";
    test::writeFile(path, text);
    begin(path);
    EXPECT_EQ(toBytes(window->noteBar().text()),
              "Line 1: a comment of the file is left out: COMMENT: mine;");
    test::press(window->noteBar(), "dismiss");
    window->run(Close);
    window->action(KeepComments)->trigger();
    window->openNamed(path);
    EXPECT_FALSE(window->noteBar().isVisible());
    document().changed = true;
    application.context().history.tell({DocumentChange::Edited, {}, {}});
    window->run(Save);
    EXPECT_THAT(test::readFile(path), HasSubstr("\r\n" + text));
}

TEST_F(MainWindowTest, NumbersStayAsTheyAreWhateverTheLocale) {
    keepNumbersPlain();
    begin(path);
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(MainWindowTest, TheAboutBoxTellsVersionAndRights) {
    begin();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("About KAVU-9"));
        test::press(dialog, "ok");
    });
    window->run(About);
}

}  // namespace
}  // namespace kavu
