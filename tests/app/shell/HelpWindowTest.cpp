#include "app/framework/EditDialog.h"
#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/shell/Commands.h"
#include "app/shell/HelpTopics.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/StartOptions.h"
#include "app/shell/TreePanel.h"
#include "app/support/TestDoor.h"
#include "application/Application.h"
#include "support/TestContext.h"

#include <filesystem>
#include <memory>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QtTest>
#include <gtest/gtest.h>

namespace kavu {
namespace {

/// The help window there is, or null.
HelpWindow* helpWindow() {
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (auto* const help = qobject_cast<HelpWindow*>(widget)) {
            return help;
        }
    }
    return nullptr;
}

/// What a window needs; the application ends after it.
struct HelpStage {
    HelpStage() = default;
    HelpStage(const HelpStage&) = delete;
    HelpStage& operator=(const HelpStage&) = delete;
    ~HelpStage() { application.shutDown(nullptr); }

    test::TempFolder folder;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{
        test::testEnvironment({{"TEMP", folder.path()}, {"HOME", folder.path()}}), clock, random,
        folder / "kavu.ini"};
    test::TestDoor door;
};

TEST(HelpWindowTest, CanBeUsedWhileTheDialogThatOpenedItIsModal) {
    HelpStage stage;
    MainWindow window(stage.application, stage.door);
    ASSERT_TRUE(window.begin({.splash = false}));
    const auto form = window.formContext();
    form.help("display");
    ASSERT_NE(helpWindow(), nullptr);
    EXPECT_EQ(helpWindow()->parentWidget(), &window);
    {
        QDialog dialog(&window);
        dialog.setModal(true);
        dialog.show();
        form.help("display");
        ASSERT_NE(helpWindow(), nullptr);
        EXPECT_EQ(helpWindow()->parentWidget(), &dialog) << "others are blocked";
        EXPECT_TRUE(helpWindow()->isVisible());
    }
    EXPECT_EQ(helpWindow(), nullptr) << "it has ended with its dialog";
    form.help("display");
    ASSERT_NE(helpWindow(), nullptr);
    EXPECT_EQ(helpWindow()->parentWidget(), &window);
}

TEST(HelpWindowTest, AKeyOnAnEntryOfAnOpenMenuTellsOfThatEntry) {
    HelpStage stage;
    MainWindow window(stage.application, stage.door);
    ASSERT_TRUE(window.begin({.splash = false}));
    auto& menu = *window.findChild<QMenu*>(QStringLiteral("editMenu"));
    const auto ask = [&](QAction* entry) {
        if (entry != nullptr) {
            entry->setEnabled(true);  // no document is open
        }
        menu.popup(window.mapToGlobal(QPoint(0, 0)));
        menu.setActiveAction(entry);
        QTest::keyClick(&menu, Qt::Key_F1);
        EXPECT_FALSE(menu.isVisible());
        return helpWindow() == nullptr ? QString() : helpWindow()->openedPage();
    };
    EXPECT_EQ(ask(window.action(CommandId::Undo)), QStringLiteral("undo"));
    EXPECT_EQ(ask(window.action(CommandId::General)), QStringLiteral("groups"));
    EXPECT_EQ(ask(window.action(CommandId::Redo)), QStringLiteral("undo"));
    EXPECT_EQ(ask(nullptr), QStringLiteral("index"));
}

TEST(HelpWindowTest, EveryEntryHasAPageOfTheManual) {
    HelpWindow help(KAVU_SOURCE_DIR "/docs/manual");
    for (const auto& row : commandTable()) {
        const auto topic = topicOf(row);
        help.openTopic(std::string(topic));
        EXPECT_EQ(toBytes(help.openedPage()), helpPlace(topic).page) << row.text;
        EXPECT_EQ(topic == "index", row.menu == MenuId::Help)
            << row.text << " has a page of its own";
    }
}

TEST(HelpWindowTest, ATopicOpensItsPageAtItsHeading) {
    HelpWindow help(KAVU_SOURCE_DIR "/docs/manual");
    help.show();
    auto& browser = *help.findChild<QTextBrowser*>(QStringLiteral("page"));
    help.openTopic("pam_info");
    EXPECT_EQ(help.openedPage(), QStringLiteral("groups"));
    EXPECT_EQ(browser.textCursor().block().text(), QStringLiteral("PAM"));
    EXPECT_GT(browser.verticalScrollBar()->value(), 0);
    help.openTopic("Tape7");
    EXPECT_EQ(help.openedPage(), QStringLiteral("recorder"));
    help.openTopic("editions");
    EXPECT_EQ(help.openedPage(), QStringLiteral("editions"));
    help.openTopic("of nothing");
    EXPECT_EQ(help.openedPage(), QStringLiteral("index"));
}

class HelpSearchTest : public testing::Test {
  protected:
    HelpSearchTest() {
        help.show();
        help.activateWindow();
        QApplication::processEvents();
    }
    QLineEdit& field() { return *test::find<QLineEdit>(help, "search"); }
    QListWidget& pages() { return *test::find<QListWidget>(help, "pages"); }
    QString found() { return test::find<QTextBrowser>(help, "page")->textCursor().selectedText(); }

    HelpWindow help{KAVU_SOURCE_DIR "/docs/manual"};
};

TEST_F(HelpSearchTest, ListsThePagesThatHaveTheTextAndGoesFromPlaceToPlaceOverThem) {
    const int all = pages().count();
    QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(field().hasFocus());
    QTest::keyClicks(&field(), QStringLiteral("supercommutat"));
    const int some = pages().count();
    EXPECT_GT(some, 0);
    EXPECT_LT(some, all);
    EXPECT_EQ(found().toLower(), QStringLiteral("supercommutat"));
    const auto first = help.openedPage();
    QSet<QString> seen;
    for (int i = 0; i < 60; ++i) {
        QTest::keyClick(&field(), Qt::Key_Return);
        EXPECT_EQ(found().toLower(), QStringLiteral("supercommutat"));
        seen.insert(help.openedPage());
    }
    EXPECT_EQ(seen.size(), some) << "Return goes on to the next page";
    EXPECT_TRUE(seen.contains(first));
    QTest::keyClick(&field(), Qt::Key_Escape);
    EXPECT_EQ(field().text(), QString());
    EXPECT_EQ(pages().count(), all);
    EXPECT_TRUE(help.isVisible());
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpSearchTest, WhatIsNowhereIsSaid) {
    field().setText(QStringLiteral("no such words anywhere"));
    EXPECT_EQ(pages().count(), 0);
    EXPECT_EQ(test::find<QLabel>(help, "count")->text(), QStringLiteral("Not found"));
}

TEST_F(HelpSearchTest, GoesBackAndForwardByButtonsAndKeys) {
    auto* const back = test::find<QPushButton>(help, "back");
    auto* const forward = test::find<QPushButton>(help, "forward");
    EXPECT_FALSE(back->isEnabled());
    help.openPage(QStringLiteral("display"));
    help.openPage(QStringLiteral("undo"));
    test::press(help, "back");
    EXPECT_EQ(help.openedPage(), QStringLiteral("display"));
    EXPECT_TRUE(forward->isEnabled());
    QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(help.openedPage(), QStringLiteral("index"));
    EXPECT_FALSE(back->isEnabled());
    QTest::keyClick(&help, Qt::Key_Right, Qt::AltModifier);
    test::press(help, "forward");
    EXPECT_EQ(help.openedPage(), QStringLiteral("undo"));
}

TEST(HelpWindowTest, F1OpensWhatBelongsToTheSelection) {
    HelpStage stage;
    MainWindow window(stage.application, stage.door);
    ASSERT_TRUE(window.begin({.splash = false}));
    const auto opened = [&] {
        window.activateWindow();
        QApplication::processEvents();
        QTest::keyClick(&window, Qt::Key_F1);
        return helpWindow() == nullptr ? QString() : helpWindow()->openedPage();
    };
    EXPECT_EQ(opened(), QStringLiteral("index"));
    const auto path = stage.folder / "flight.tma";
    std::filesystem::copy_file(KAVU_SOURCE_DIR "/samples/flight-test.tma", path);
    ASSERT_TRUE(window.openNamed(path));
    window.tree().select('P', 1);
    EXPECT_EQ(opened(), QStringLiteral("pcm-format"));
    window.tree().select('R', 1);
    EXPECT_EQ(opened(), QStringLiteral("recorder"));
    window.tree().selectMeasurement("ENG1-N1");
    EXPECT_EQ(opened(), QStringLiteral("conversions"));
}

/// The page and the heading that F1 opens on a dialog, while it is there.
std::string helpOfDialog(QDialog& dialog) {
    auto* const focus = dialog.focusWidget();
    QTest::keyClick(focus == nullptr ? &dialog : focus, Qt::Key_F1);
    auto* const help = helpWindow();
    if (help == nullptr) {
        return "none";
    }
    EXPECT_EQ(help->parentWidget(), &dialog) << "the others are blocked";
    const auto heading = test::find<QTextBrowser>(*help, "page")->textCursor().block().text();
    return toBytes(help->openedPage() + QStringLiteral(": ") + heading);
}

/// Prompts, questions and the dialogs of the options have no help of their own: F1 opens that of
/// the command they are part of.
TEST(HelpWindowTest, F1OnAPromptOpensThePageOfItsCommand) {
    HelpStage stage;
    MainWindow window(stage.application, stage.door);
    ASSERT_TRUE(window.begin({.splash = false}));
    std::string opened;
    const auto ask = [&](CommandId id) {
        stage.door.next([&](QDialog& dialog) {
            opened = helpOfDialog(dialog);
            dialog.reject();
        });
        window.run(id);
        return opened;
    };
    EXPECT_EQ(ask(CommandId::Precision), "editor: Options");
    EXPECT_EQ(ask(CommandId::SampleRateOptions), "editor: Options");
    EXPECT_EQ(ask(CommandId::Versions).substr(0, 9), "editions:");
    const auto path = stage.folder / "flight.tma";
    std::filesystem::copy_file(KAVU_SOURCE_DIR "/samples/flight-test.tma", path);
    ASSERT_TRUE(window.openNamed(path));
    window.tree().select('P', 1);
    stage.door.next([&](QDialog& dialog) {
        opened = helpOfDialog(dialog);
        dialog.reject();
    });
    (void)window.ui().enterText({.title = "Any", .prompt = "Name:", .initial = ""});
    EXPECT_EQ(opened, "pcm-format: The pages") << "what is selected";
}

class SomeForm : public EditDialog {
  public:
    SomeForm(FormContext& form, QWidget* parent)
        : EditDialog(form, "EDIT_ASYNC_FORMAT", QStringLiteral("A form"), parent) {}

  protected:
    bool store() override { return true; }
};

/// A dialog that is asked by a form opens the page of the form.
TEST(HelpWindowTest, F1OnAPromptOfAFormOpensThePageOfTheForm) {
    HelpStage stage;
    MainWindow window(stage.application, stage.door);
    ASSERT_TRUE(window.begin({.splash = false}));
    auto form = window.formContext();
    SomeForm below(form, &window);
    below.setModal(true);
    below.show();
    std::string opened;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), &below);
        opened = helpOfDialog(dialog);
        dialog.reject();
    });
    (void)form.ui.chooseFromList("One of three", {"a", "b", "c"});
    EXPECT_EQ(opened, "pcm-format: Async embedded formats and data merge");
    QDialog detail(&below);
    setHelpTopic(detail, "PairSets");
    detail.setModal(true);
    detail.show();
    EXPECT_EQ(helpOfDialog(detail), "curve-fitting: Pair sets in the editor")
        << "its own comes before that of the window it belongs to";
}

}  // namespace
}  // namespace kavu
