#include "app/framework/FormContext.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/StartOptions.h"
#include "app/support/TestDoor.h"
#include "application/Application.h"
#include "support/TestContext.h"

#include <memory>

#include <QDialog>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
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

TEST(HelpWindowTest, CanBeUsedWhileTheDialogThatOpenedItIsModal) {
    test::TempFolder folder;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{
        test::testEnvironment({{"TEMP", folder.path()}, {"HOME", folder.path()}}), clock, random,
        folder / "kavu.ini"};
    test::TestDoor door;
    {
        MainWindow window(application, door);
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
    application.shutDown(nullptr);
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
