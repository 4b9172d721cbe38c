#include "core/text/TwoThreads.h"

#include <array>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::Each;

TEST(TwoThreads, EachPlaceIsVisitedOnce) {
    for (const std::size_t count : {0U, 1U, 2U, 3U, 1000U}) {
        std::vector<int> visits(count, 0);
        std::array<std::size_t, kMostWorkers> shares{};
        forEachOnTwoThreads(count, [&](std::size_t place, std::size_t worker) {
            ++visits[place];
            ++shares.at(worker);
        });
        EXPECT_THAT(visits, Each(1)) << count;
        EXPECT_EQ(shares[0] + shares[1], count);
    }
}

TEST(TwoThreads, TheCallerDoesItsOwnWorkOnce) {
    for (const std::size_t count : {0U, 1U, 1000U}) {
        const auto caller = std::this_thread::get_id();
        std::vector<int> visits(count, 0);
        int meanwhile = 0;
        forEachOnTwoThreads(
            count, [&](std::size_t place, std::size_t) { ++visits[place]; },
            [&] {
                EXPECT_EQ(std::this_thread::get_id(), caller);
                ++meanwhile;
            });
        EXPECT_THAT(visits, Each(1)) << count;
        EXPECT_EQ(meanwhile, 1);
    }
}

TEST(TwoThreads, AnExceptionOfTheCallersWorkComesWhenAllHaveEnded) {
    std::vector<int> visits(1000, 0);
    const auto visit = [&](std::size_t place, std::size_t) { ++visits[place]; };
    EXPECT_THROW(forEachOnTwoThreads(visits.size(), visit, [] { throw std::runtime_error("own"); }),
                 std::runtime_error);
    const auto after = visits;
    EXPECT_EQ(visits, after) << "nobody works on";
}

TEST(TwoThreads, AnExceptionComesToTheCallerWhenAllHaveEnded) {
    std::vector<int> visits(1000, 0);
    const auto visit = [&](std::size_t place, std::size_t) {
        ++visits[place];
        if (place == 1) {
            throw std::runtime_error("place 1");
        }
    };
    EXPECT_THROW(forEachOnTwoThreads(visits.size(), visit), std::runtime_error);
    const auto after = visits;
    EXPECT_EQ(visits[1], 1);
    EXPECT_EQ(visits, after) << "nobody works on";
}

}  // namespace
}  // namespace kavu
