#include "app/framework/FormContext.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MessageDesk.h"
#include "app/support/MainWindowStage.h"

#include <QApplication>
#include <QTextBrowser>
#include <gtest/gtest.h>

namespace kavu {
namespace {

class AppearanceTest : public MainWindowTest {
  public:
    ~AppearanceTest() override {
        window.reset();
        look::apply(*qApp, look::Scheme::Light);
    }
};

TEST_F(AppearanceTest, IsSwitchedInTheRunningProgramAndAllWindowsFollowAtOnce) {
    begin(path);
    window->run(CommandId::ShowMessages);
    const auto form = window->formContext();
    form.help("display");
    HelpWindow* help = nullptr;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        help = help == nullptr ? qobject_cast<HelpWindow*>(widget) : help;
    }
    ASSERT_NE(help, nullptr);
    window->run(CommandId::AppearanceLight);
    EXPECT_FALSE(look::isDark(*window));
    const auto light = window->grab().toImage().pixelColor(3, window->height() / 2);
    window->run(CommandId::AppearanceDark);
    QApplication::processEvents();
    EXPECT_TRUE(look::isDark(*window));
    EXPECT_TRUE(look::isDark(*window->messages().window()));
    EXPECT_TRUE(look::isDark(*help));
    EXPECT_NE(window->grab().toImage().pixelColor(3, window->height() / 2), light);
    EXPECT_TRUE(window->action(CommandId::AppearanceDark)->isChecked());
    EXPECT_FALSE(window->action(CommandId::AppearanceLight)->isChecked());
}

TEST_F(AppearanceTest, IsRememberedAndAnOptionOfTheStartHoldsForTheRunOnly) {
    begin();
    EXPECT_TRUE(window->action(CommandId::AppearanceDesktop)->isChecked());
    window->run(CommandId::AppearanceDark);
    EXPECT_EQ(settings().text("Appearance"), "dark");
    ASSERT_TRUE(window->quit());
    look::apply(*qApp, look::Scheme::Light);
    begin();
    EXPECT_TRUE(look::isDark(*window));
    ASSERT_TRUE(window->quit());
    window = std::make_unique<DropWindow>(application, door);
    ASSERT_TRUE(window->begin({.splash = false, .scheme = look::Scheme::Light}));
    EXPECT_FALSE(look::isDark(*window));
    EXPECT_EQ(settings().text("Appearance"), "dark");
}

TEST_F(AppearanceTest, TheDesktopsIsFoundAgainAfterAnother) {
    begin();
    const bool desktop = look::isDark(*window);
    window->run(CommandId::AppearanceDark);
    window->run(CommandId::AppearanceDesktop);
    EXPECT_EQ(look::isDark(*window), desktop);
    EXPECT_EQ(settings().text("Appearance"), "desktop");
}

TEST(AppearanceSetting, IsReadInAnyCaseAndAnythingElseIsTheDesktops) {
    EXPECT_EQ(look::appearanceOf("DARK"), look::Appearance::Dark);
    EXPECT_EQ(look::appearanceOf("light"), look::Appearance::Light);
    EXPECT_EQ(look::appearanceOf("purple"), look::Appearance::Desktop);
    for (const auto appearance :
         {look::Appearance::Desktop, look::Appearance::Light, look::Appearance::Dark}) {
        EXPECT_EQ(look::appearanceOf(look::settingOf(appearance)), appearance);
    }
}

}  // namespace
}  // namespace kavu
