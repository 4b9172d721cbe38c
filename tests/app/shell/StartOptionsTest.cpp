#include "app/shell/StartOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(StartOptions, WithoutArgumentsTheEditorJustStarts) {
    const auto options = readStartOptions({});
    EXPECT_TRUE(options.file.empty());
    EXPECT_TRUE(options.splash);
    EXPECT_EQ(options.automation, AutomationSwitch::None);
    EXPECT_TRUE(options.print.empty());
}

TEST(StartOptions, AFileMayHoldBlanks) {
    EXPECT_EQ(readStartOptions({"/data/flight test 7.tma"}).file, "/data/flight test 7.tma");
}

TEST(StartOptions, BehindTwoDashesAllIsAFile) {
    EXPECT_EQ(readStartOptions({"--", "--odd.tma"}).file, "--odd.tma");
}

AutomationSwitch switchOf(const std::vector<std::string>& arguments) {
    return readStartOptions(arguments).automation;
}

TEST(StartOptions, SwitchesOfAutomationCountInAnyCaseBehindADashOrASlash) {
    EXPECT_EQ(switchOf({"-RegServer"}), AutomationSwitch::Register);
    EXPECT_EQ(switchOf({"/regserver"}), AutomationSwitch::Register);
    EXPECT_EQ(switchOf({"-UNREGSERVER"}), AutomationSwitch::Unregister);
    EXPECT_EQ(switchOf({"/UnregServer"}), AutomationSwitch::Unregister);
    EXPECT_EQ(switchOf({"-embedding"}), AutomationSwitch::Embedding);
    EXPECT_EQ(switchOf({"/Embedding"}), AutomationSwitch::Embedding);
    EXPECT_EQ(switchOf({"Embedding"}), AutomationSwitch::None);
    EXPECT_EQ(switchOf({"/embedding/flight.tma"}), AutomationSwitch::None);
}

TEST(StartOptions, OfSeveralSwitchesTheFirstCountsWhereverItStands) {
    EXPECT_EQ(switchOf({"a.tma", "/UnregServer", "-RegServer"}), AutomationSwitch::Unregister);
    EXPECT_EQ(switchOf({"--fast", "b.tma", "-Embedding"}), AutomationSwitch::Embedding);
    EXPECT_FALSE(readStartOptions({"--fast", "-Embedding"}).wrong);
}

TEST(StartOptions, ASwitchWithinAWordOrBehindTwoDashesIsNone) {
    EXPECT_EQ(switchOf({"/data/my -Embedding file.tma"}), AutomationSwitch::None);
    EXPECT_EQ(switchOf({"--", "-Embedding"}), AutomationSwitch::None);
    EXPECT_EQ(readStartOptions({"--", "-Embedding"}).file, "-Embedding");
    EXPECT_EQ(switchOf({"--settings", "-RegServer"}), AutomationSwitch::None);
}

TEST(StartOptions, SettingsAndScopeCountBesideASwitch) {
    const auto options = readStartOptions({"--settings", "s.ini", "-RegServer", "--system"});
    EXPECT_EQ(options.settings, "s.ini");
    EXPECT_TRUE(options.forSystem);
    EXPECT_FALSE(readStartOptions({"-RegServer"}).forSystem);
}

TEST(StartOptions, AnUnknownOptionAndASecondFileAreRefused) {
    const auto unknown = readStartOptions({"--fast"});
    EXPECT_TRUE(unknown.wrong);
    EXPECT_THAT(unknown.print, HasSubstr("unknown option '--fast'"));
    EXPECT_TRUE(readStartOptions({"a.tma", "b.tma"}).wrong);
    EXPECT_TRUE(readStartOptions({"--settings"}).wrong);
    EXPECT_TRUE(readStartOptions({"--screenshots", "out"}).wrong);
}

TEST(StartOptions, VersionAndHelpArePrinted) {
    EXPECT_THAT(readStartOptions({"--version"}).print, StartsWith("kavu "));
    EXPECT_THAT(readStartOptions({"--help"}).print, StartsWith("usage: kavu"));
    EXPECT_FALSE(readStartOptions({"--help"}).wrong);
}

TEST(StartOptions, PaletteAndSettingsAreTaken) {
    const auto options = readStartOptions({"--dark", "--settings", "s.ini", "--no-splash"});
    EXPECT_EQ(options.scheme, look::Scheme::Dark);
    EXPECT_EQ(options.settings, "s.ini");
    EXPECT_FALSE(options.splash);
}

}  // namespace
}  // namespace kavu
