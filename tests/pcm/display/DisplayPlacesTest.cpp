#include "pcm/display/DisplayPlaces.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(DisplayPlaces, AStreamIsShownWhereItWasLeft) {
    auto setting = withDisplayPlace("", "PCM 1", {{12, 3}, 10, 2});
    setting = withDisplayPlace(setting, "A,B", {{-1, -1}, 4, 0});
    EXPECT_EQ(displayPlace(setting, "PCM 1"), (DisplayPlace{{12, 3}, 10, 2}));
    EXPECT_EQ(displayPlace(setting, "A,B"), (DisplayPlace{{}, 4, 0}));
    EXPECT_EQ(displayPlace(setting, "pcm 1"), DisplayPlace{});
    setting = withDisplayPlace(setting, "PCM 1", {{1, 1}, 0, 0});
    EXPECT_EQ(displayPlace(setting, "PCM 1"), (DisplayPlace{{1, 1}, 0, 0}));
    EXPECT_EQ(std::count(setting.begin(), setting.end(), ';'), 1) << setting;
}

TEST(DisplayPlaces, TheOldestIsForgotten) {
    std::string setting;
    for (int i = 0; i <= kMostDisplayPlaces; ++i) {
        setting = withDisplayPlace(setting, "S" + std::to_string(i), {{1, 1}, i, 0});
    }
    EXPECT_EQ(displayPlace(setting, "S0"), DisplayPlace{});
    EXPECT_EQ(displayPlace(setting, "S1").firstWord, 1);
    EXPECT_EQ(displayPlace(setting, "S20").firstWord, 20);
}

TEST(DisplayPlaces, WhatCannotBeReadIsNoPlace) {
    for (const auto* text : {"", ";", "1,2,3", "1,2,3,4", "x", ";;PCM"}) {
        EXPECT_EQ(displayPlace(text, "PCM"), DisplayPlace{}) << text;
    }
    EXPECT_EQ(displayPlace("x,,9999999999999,-5,PCM", "PCM").scrolledRows, -5);
    EXPECT_EQ(withDisplayPlace("1,1,0,0,A", "B;C", {}), "1,1,0,0,A") << "a name with a ';'";
    EXPECT_EQ(withDisplayPlace("", "", {}), "");
}

}  // namespace
}  // namespace kavu
