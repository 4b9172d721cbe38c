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
    EXPECT_FALSE(options.automation);
    EXPECT_TRUE(options.print.empty());
}

TEST(StartOptions, AFileMayHoldBlanks) {
    EXPECT_EQ(readStartOptions({"/data/flight test 7.tma"}).file, "/data/flight test 7.tma");
}

TEST(StartOptions, BehindTwoDashesAllIsAFile) {
    EXPECT_EQ(readStartOptions({"--", "--odd.tma"}).file, "--odd.tma");
}

TEST(StartOptions, SwitchesOfAutomationCountInAnyCaseBehindADashOrASlash) {
    for (const auto* const argument :
         {"-RegServer", "/regserver", "-UNREGSERVER", "/UnregServer", "-embedding", "/Embedding"}) {
        EXPECT_TRUE(readStartOptions({argument}).automation) << argument;
    }
    EXPECT_FALSE(readStartOptions({"Embedding"}).automation);
    EXPECT_FALSE(readStartOptions({"/embedding/flight.tma"}).automation);
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
