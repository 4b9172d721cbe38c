// The order of many rows, and what a cancel leaves of it.
#include "reports/content/MeasurementRows.h"
#include "support/RecordingInterface.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

/// So many rows of a few names and words, in no order; the length tells where each was.
std::vector<MeasurementPlace> mixedPlaces(int count, const std::vector<std::string>& names) {
    std::vector<MeasurementPlace> places;
    for (int i = 0; i < count; ++i) {
        MeasurementPlace place;
        place.name = names[static_cast<std::size_t>(i) % names.size()];
        place.startWord = place.endWord = i * 7 % 11;
        place.startFrame = place.endFrame = i * 5 % 13;
        place.length = i;
        places.push_back(place);
    }
    return places;
}

constexpr int kMany = 50'000;
const std::vector<std::string> kNames = {"B", "a", "\xE4", "A1", "A"};

TEST(SortPlaces, ManyRowsAreSortedByBytesAndEqualOnesKeepTheirOrder) {
    for (const auto sort : {MeasurementSort::Place, MeasurementSort::Name}) {
        auto places = mixedPlaces(kMany, kNames);
        EXPECT_TRUE(sortPlaces(places, sort, nullptr));
        ASSERT_EQ(places.size(), static_cast<std::size_t>(kMany));
        EXPECT_TRUE(std::is_sorted(places.begin(), places.end(), [&](const auto& a, const auto& b) {
            const auto key = [&](const MeasurementPlace& each) {
                const bool byName = sort == MeasurementSort::Name;
                return std::tuple(byName ? each.name : std::string_view(), each.startWord,
                                  each.startFrame, each.name, each.length);
            };
            return key(a) < key(b);
        }));
    }
}

TEST(SortPlaces, ACancelIsAnsweredBetweenTheRuns) {
    test::RecordingInterface ui;
    auto places = mixedPlaces(kMany, kNames);
    EXPECT_TRUE(sortPlaces(places, MeasurementSort::Name, &ui));
    const int polls = ui.polls;
    EXPECT_GE(polls, 4);
    for (int poll = 1; poll <= polls; ++poll) {
        places = mixedPlaces(kMany, kNames);
        ui.cancelAtPoll = ui.polls + poll;
        EXPECT_FALSE(sortPlaces(places, MeasurementSort::Name, &ui)) << poll;
        EXPECT_EQ(places.size(), static_cast<std::size_t>(kMany));
    }
}

TEST(MergePlaces, ACancelIsAnsweredOnTheWay) {
    test::RecordingInterface ui;
    auto places = mixedPlaces(kMany, kNames);
    ui.cancelAtPoll = 1;
    EXPECT_FALSE(mergePlaces(places, &ui));
    ui.cancelAtPoll = 0;
    EXPECT_TRUE(mergePlaces(places, &ui));
}

}  // namespace
}  // namespace kavu
