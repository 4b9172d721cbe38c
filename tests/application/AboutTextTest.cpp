#include "application/AboutText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(AboutText, BeginsWithTheProgramAndTheEditionItSupports) {
    EXPECT_THAT(aboutText({}), StartsWith("Kavu Telemetry Workbench\nTMATS Editor\n\n"
                                          "Version 5.00 - January 2011\nSupporting IRIG 106-11\n"));
}

TEST(AboutText, NamesThePartsThatAreInstalled) {
    EXPECT_THAT(aboutText({}), Not(HasSubstr("Installed")));
    EXPECT_THAT(aboutText({.reports = true, .database = true}),
                HasSubstr("106-11\n(Report Generator Installed)\n(Measurement Database "
                          "Installed)\n"));
}

TEST(AboutText, ClosingWordsAreKeptWithEveryBitTurnedOver) {
    const auto stored = storedClosingWords();
    const auto words = closingWords();
    ASSERT_EQ(stored.size(), 179U);
    ASSERT_EQ(words.size(), stored.size());
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(static_cast<unsigned char>(words[i]) ^ static_cast<unsigned char>(stored[i]),
                  0xFF);
    }
    EXPECT_THAT(aboutText({}), HasSubstr(words));
}

TEST(AboutText, RightsReachToTheCurrentYear) {
    EXPECT_THAT(rightsText(2026), HasSubstr("1994 - 2026"));
}

}  // namespace
}  // namespace kavu
