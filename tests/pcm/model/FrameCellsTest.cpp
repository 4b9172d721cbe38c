#include "pcm/model/FrameCells.h"

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using Place = FrameCells::Place;

Measurement named(const std::string& name, const std::string& mask = "FW") {
    Measurement measurement;
    measurement.name = name;
    measurement.locationType = "MF";
    measurement.mask = mask;
    return measurement;
}

std::vector<std::string> list(const FrameCells& cells, int fwp, int index) {
    std::vector<std::string> names;
    for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
        names.push_back(
            cells.measurement(at).name.str() +
            (cells.asyncNumber(at) > 0 ? "#" + std::to_string(cells.asyncNumber(at)) : ""));
    }
    return names;
}

using Names = std::vector<std::string>;

class FrameCellsTest : public ::testing::Test {
  protected:
    FrameCellsTest() {
        cells.reset(10);
        for (int fwp = 0; fwp < 10; ++fwp) {
            cells.resizeWord(fwp, 4);
        }
    }
    CellRef add(int fwp, int index, const Measurement& measurement, int async = 0) {
        const auto at = cells.freeCell(cells.cell(fwp, index));
        cells.store(at, measurement, async);
        return at;
    }
    FrameCells cells;
};

TEST_F(FrameCellsTest, ANewWordHasFreeCells) {
    const auto head = cells.cell(1, 1);
    ASSERT_TRUE(head);
    EXPECT_TRUE(cells.isFree(head));
    EXPECT_FALSE(cells.next(head));
    EXPECT_FALSE(cells.cell(1, 0));
    EXPECT_FALSE(cells.cell(1, 5));
    EXPECT_FALSE(cells.cell(10, 1));
    EXPECT_FALSE(cells.cell(-1, 1));
    EXPECT_EQ(cells.nameCount(), 0);
}

TEST_F(FrameCellsTest, TheFirstFreeCellIsTakenBeforeTheListGrows) {
    add(1, 1, named("A"));
    const auto b = add(1, 1, named("B"));
    add(1, 1, named("C"));
    cells.clear(b);
    EXPECT_EQ(list(cells, 1, 1), (Names{"A", "", "C"}));
    add(1, 1, named("D"));
    add(1, 1, named("E"));
    EXPECT_EQ(list(cells, 1, 1), (Names{"A", "D", "C", "E"}));
}

TEST_F(FrameCellsTest, StoringIntoAnAsyncSlotKeepsItsNumber) {
    const auto at = add(1, 1, Measurement{}, 3);
    EXPECT_FALSE(cells.isFree(at));
    cells.store(at, named("A"));
    EXPECT_EQ(cells.asyncNumber(at), 3);
    EXPECT_EQ(cells.measurement(at).name, "A");
    EXPECT_FALSE(cells.isMeasurement(at));
    EXPECT_FALSE(cells.holds("A")) << "what a slot holds is no measurement";
    cells.store(at, named("A"), 5);
    EXPECT_EQ(cells.asyncNumber(at), 5);
    cells.setAsyncNumber(at, 0);
    EXPECT_TRUE(cells.holds("a"));
}

TEST_F(FrameCellsTest, CopiesShareARecordUntilOneDiffers) {
    const auto a = add(1, 1, named("A"));
    const auto b = add(2, 1, named("A"));
    const auto c = add(3, 1, named("A", "1100"));
    EXPECT_TRUE(cells.sameRecord(a, b));
    EXPECT_FALSE(cells.sameRecord(a, c));
    auto fragment = named("A");
    fragment.fragmentNumber = 2;
    cells.store(b, fragment);
    EXPECT_FALSE(cells.sameRecord(a, b));
    EXPECT_EQ(cells.measurement(a).fragmentNumber, 0);
    EXPECT_EQ(cells.measurement(b).fragmentNumber, 2);
}

TEST_F(FrameCellsTest, AnUpdateReachesEveryCopyAndLeavesTheName) {
    const auto a = add(1, 1, named("Abc"));
    const auto b = add(2, 3, named("ABC", "10"));
    const auto other = add(2, 3, named("B"));
    cells.updateAll("abc", [](Measurement& copy) {
        copy.locationCount = 7;
        copy.name = "no";
    });
    EXPECT_EQ(cells.measurement(a).locationCount, 7);
    EXPECT_EQ(cells.measurement(b).locationCount, 7);
    EXPECT_EQ(cells.measurement(a).name, "Abc");
    EXPECT_EQ(cells.measurement(b).name, "ABC");
    EXPECT_EQ(cells.measurement(other).locationCount, 0);
}

TEST_F(FrameCellsTest, ANameIsFoundWhateverItsCase) {
    add(3, 2, named("Alpha"));
    EXPECT_TRUE(cells.holds("ALPHA"));
    EXPECT_TRUE(cells.holdsAt(3, 2, "alpha"));
    EXPECT_FALSE(cells.holdsAt(3, 1, "alpha"));
    EXPECT_EQ(cells.measurement(cells.findFrom(cells.cell(3, 2), "aLPHA")).name, "Alpha");
    EXPECT_EQ(cells.nameNumber("ALPHA"), cells.nameNumber(cells.cell(3, 2)));
    EXPECT_EQ(cells.nameNumber("Beta"), -1);
}

TEST_F(FrameCellsTest, PlacesComeByRisingWordAndIndex) {
    add(7, 1, named("A"));
    add(2, 3, named("A"));
    add(2, 1, named("a"));
    add(2, 3, named("A"));
    EXPECT_EQ(cells.places("A"), (std::vector<Place>{{2, 1}, {2, 3}, {2, 3}, {7, 1}}));
}

TEST_F(FrameCellsTest, RemovingTakesChainedCellsOutOfTheirList) {
    const auto a = add(1, 1, named("A"));
    const auto b = add(1, 1, named("B"));
    const auto c = add(1, 1, named("C"));
    cells.remove(b);
    EXPECT_EQ(list(cells, 1, 1), (Names{"A", "C"}));
    cells.remove(c);
    EXPECT_EQ(list(cells, 1, 1), (Names{"A"}));
    cells.remove(a);
    EXPECT_EQ(list(cells, 1, 1), (Names{""})) << "the array cell stays, free";
    EXPECT_EQ(cells.nameCount(), 0);
    add(1, 1, named("D"));
    EXPECT_EQ(list(cells, 1, 1), (Names{"D"}));
}

TEST_F(FrameCellsTest, AShrinkingWordForgetsWhatItHeld) {
    add(1, 4, named("A"));
    add(1, 4, named("B"));
    add(1, 1, named("C"));
    cells.resizeWord(1, 2);
    EXPECT_FALSE(cells.holds("A"));
    EXPECT_FALSE(cells.holds("B"));
    EXPECT_TRUE(cells.holds("C"));
    cells.resizeWord(1, 4);
    EXPECT_TRUE(cells.isFree(cells.cell(1, 4)));
    cells.setWordCount(1);
    EXPECT_FALSE(cells.holds("C"));
}

TEST_F(FrameCellsTest, ListsAreSortedByNameUpToTheFirstAsyncSlot) {
    for (const auto* const name : {"delta", "Beta", "alpha"}) {
        add(1, 1, named(name));
    }
    add(1, 1, Measurement{}, 1);
    add(1, 1, named("Aaa"));
    cells.prepareSort();
    cells.sortList(cells.cell(1, 1));
    EXPECT_EQ(list(cells, 1, 1), (Names{"alpha", "Beta", "delta", "#1", "Aaa"}));
}

TEST_F(FrameCellsTest, ListsThatBeginWithASlotStayAsTheyAre) {
    add(1, 1, Measurement{}, 1);
    add(1, 1, named("B"));
    add(1, 1, named("A"));
    add(2, 1, named("B"));
    add(2, 1, Measurement{}, 1);
    add(2, 1, named("A"));
    cells.prepareSort();
    cells.sortList(cells.cell(1, 1));
    cells.sortList(cells.cell(2, 1));
    EXPECT_EQ(list(cells, 1, 1), (Names{"#1", "B", "A"}));
    EXPECT_EQ(list(cells, 2, 1), (Names{"B", "#1", "A"}));
}

TEST_F(FrameCellsTest, EqualNamesKeepTheirOrderWhenSorted) {
    add(1, 1, named("X", "1"));
    add(1, 1, named("x", "2"));
    add(1, 1, named("A"));
    cells.prepareSort();
    cells.sortList(cells.cell(1, 1));
    EXPECT_EQ(list(cells, 1, 1), (Names{"A", "X", "x"}));
}

/// Any run of operations leaves what the plainest model has: a list of cells for each place,
/// each with a copy of its own.
TEST(FrameCells, AgreesWithAPlainModel) {
    struct Plain {
        Measurement measurement;
        int async = 0;
        [[nodiscard]] bool isFree() const { return measurement.name.empty() && async == 0; }
    };
    using List = std::vector<Plain>;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&random](int most) {
            return static_cast<int>(random() % static_cast<unsigned>(most));
        };
        FrameCells cells;
        cells.reset(5);
        std::map<std::pair<int, int>, List> model;
        for (int fwp = 0; fwp < 5; ++fwp) {
            cells.resizeWord(fwp, 3);
            for (int index = 1; index <= 3; ++index) {
                model[{fwp, index}] = List(1);
            }
        }
        const auto refOf = [&cells](int fwp, int index, std::size_t n) {
            auto at = cells.cell(fwp, index);
            for (; n > 0; --n) {
                at = cells.next(at);
            }
            return at;
        };
        for (int step = 0; step < 400; ++step) {
            const int fwp = pick(5);
            const int index = pick(3) + 1;
            auto& plain = model[{fwp, index}];
            const auto n = static_cast<std::size_t>(pick(static_cast<int>(plain.size())));
            const auto at = refOf(fwp, index, n);
            auto measurement = named(std::string(1, static_cast<char>('a' + pick(6))));
            measurement.fragmentNumber = pick(3);
            switch (pick(8)) {
                case 0:
                case 1:
                case 2: {
                    const int async = pick(6) == 0 ? 1 + pick(3) : 0;
                    auto it = std::find_if(plain.begin(), plain.end(),
                                           [](const Plain& cell) { return cell.isFree(); });
                    if (it == plain.end()) {
                        plain.emplace_back();
                        it = plain.end() - 1;
                    }
                    it->measurement = measurement;
                    it->async = async > 0 ? async : it->async;
                    cells.store(cells.freeCell(cells.cell(fwp, index)), measurement, async);
                    break;
                }
                case 3:
                    plain[n].measurement = measurement;
                    cells.store(at, measurement);
                    break;
                case 4:
                    plain[n] = {};
                    cells.clear(at);
                    break;
                case 5:
                    if (n == 0) {
                        plain[n] = {};
                    } else {
                        plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(n));
                    }
                    cells.remove(at);
                    break;
                case 6:
                    for (auto& [place, other] : model) {
                        for (auto& cell : other) {
                            if (cell.async == 0 && cell.measurement.name == measurement.name) {
                                cell.measurement.interval = step;
                            }
                        }
                    }
                    cells.updateAll(measurement.name,
                                    [step](Measurement& copy) { copy.interval = step; });
                    break;
                default:
                    plain.resize(1);
                    cells.freeChain(cells.cell(fwp, index));
                    break;
            }
        }
        std::map<std::string, std::vector<Place>> places;
        for (const auto& [place, plain] : model) {
            auto at = cells.cell(place.first, place.second);
            for (const auto& cell : plain) {
                ASSERT_TRUE(at) << seed;
                EXPECT_EQ(cells.asyncNumber(at), cell.async);
                if (cell.async == 0) {
                    // A record that a slot shares with a measurement may follow its updates.
                    EXPECT_EQ(cells.measurement(at), cell.measurement) << seed;
                }
                EXPECT_EQ(cells.isFree(at), cell.isFree());
                if (cell.async == 0 && !cell.measurement.name.empty()) {
                    places[cell.measurement.name.str()].push_back(
                        {static_cast<std::uint16_t>(place.first),
                         static_cast<std::uint16_t>(place.second)});
                }
                at = cells.next(at);
            }
            EXPECT_FALSE(at) << seed;
        }
        EXPECT_EQ(cells.nameCount(), static_cast<int>(places.size())) << seed;
        for (const auto& [name, wanted] : places) {
            EXPECT_EQ(cells.places(name), wanted) << seed << " " << name;
        }
    }
}

TEST(FrameCells, APlaceTakesAtMost64Bytes) {
    constexpr int kWords = 100;
    constexpr int kDepth = 256;
    constexpr int kInList = 10;
    FrameCells cells;
    cells.reset(kWords);
    for (int fwp = 0; fwp < kWords; ++fwp) {
        cells.resizeWord(fwp, kDepth);
        for (int n = 0; n < kInList; ++n) {
            const auto measurement = named("M" + std::to_string(fwp * kInList + n));
            for (int index = 1; index <= kDepth; ++index) {
                cells.store(cells.freeCell(cells.cell(fwp, index)), measurement);
            }
        }
    }
    EXPECT_LE(cells.memory() / (kWords * kDepth * kInList), 64U);
}

TEST(FrameCells, ALongListIsFilledWithoutAWalkForEachCell) {
    FrameCells cells;
    cells.reset(2);
    cells.resizeWord(1, 1);
    constexpr int kCount = 200'000;
    const auto head = cells.cell(1, 1);
    for (int n = 0; n < kCount; ++n) {
        const auto name = "M" + std::to_string(n);
        ASSERT_FALSE(cells.holdsAt(1, 1, name));
        cells.store(cells.freeCell(head), named(name));
    }
    EXPECT_EQ(cells.nameCount(), kCount);
    cells.prepareSort();
    cells.sortList(head);
    EXPECT_EQ(cells.measurement(head).name, "M0");
}

}  // namespace
}  // namespace kavu
