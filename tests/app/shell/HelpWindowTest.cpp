#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"
#include "app/shell/Commands.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/StartOptions.h"
#include "app/support/TestDoor.h"
#include "application/Application.h"
#include "support/TestContext.h"

#include <memory>

#include <QDialog>
#include <QMenu>
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
        help.openTopic(std::string(row.topic));
        EXPECT_EQ(toBytes(help.openedPage()), row.topic) << row.text;
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

}  // namespace
}  // namespace kavu
