// Words that are inserted, deleted and moved, with changes of their cells in between: levels of
// several such edits go back and forth to exactly the same cells, and names are found where they
// are.
#include "pcm/StreamGenerator.h"
#include "pcm/StreamPicture.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/undo/StreamUndo.h"
#include "support/Seeds.h"

#include <map>
#include <random>

namespace kavu {
namespace {

using test::LoadFixture;
using test::Picture;
using test::pictureOf;
using test::StreamGenerator;

/// The index of names has each place once for each of its cells, and no other.
void expectIndexed(const PcmFormat& format) {
    const auto& cells = format.cells();
    std::map<std::string, std::vector<FrameCells::Place>> places;
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        for (int index = 1; index <= cells.cellCount(fwp); ++index) {
            for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
                if (cells.isMeasurement(at)) {
                    places[cells.measurement(at).name.str()].push_back({at.word, at.index});
                }
            }
        }
    }
    EXPECT_EQ(cells.nameCount(), static_cast<int>(places.size()));
    for (const auto& [name, wanted] : places) {
        EXPECT_EQ(cells.places(name), wanted) << name;
        for (const auto& place : wanted) {
            EXPECT_TRUE(cells.holdsAt(place.word, place.index, name)) << name;
        }
    }
}

class WordMover {
  public:
    WordMover(LoadFixture& fixture, unsigned seed) : f_(fixture), random_(seed) {}

    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, std::max(least, most))(random_);
    }

    void step() {
        auto& format = f_.format;
        const int words = format.wordsPerMinorFrame;
        f_.ui.otherwise = std::array{Button::Yes, Button::No, Button::Cancel}.at(
            static_cast<std::size_t>(number(0, 2)));
        UserInterface* const parent = number(0, 2) == 0 ? f_.parent : nullptr;
        switch (number(0, 8)) {
            case 0:
            case 1:
                (void)insertFwps(format, parent, number(0, words - 1), number(1, 4));
                break;
            case 2:
                if (words > 12) {
                    (void)deleteFwps(format, parent, {}, word(), word());
                }
                break;
            case 3:
            case 4:
                (void)moveFwps(format, parent, word(), word(), word());
                break;
            case 5:
                (void)editFrameAttribute(format, parent, "MF1",
                                         std::to_string(std::max(12, words + number(-3, 4))));
                break;
            case 6:
                store();
                break;
            case 7:
                clearOne();
                break;
            default:
                format.setWordLength(word(), number(8, 20));
                break;
        }
    }

  private:
    int word() { return number(1, f_.format.wordsPerMinorFrame - 1); }
    void store() {
        const auto at = f_.format.getFreeCell(nullptr, word(), number(1, f_.format.numberOfFrames));
        if (at) {
            Measurement measurement;
            measurement.name = "NEW" + std::to_string(number(1, 5));
            measurement.locationType = "MF";
            measurement.mask = "FW";
            f_.format.cells().store(at, measurement);
        }
    }
    void clearOne() {
        const auto at = f_.format.measurementAt(word(), 1, 1, true);
        if (at) {
            f_.format.removeMeasurement(f_.format.cells().measurement(at).name.str());
        }
    }

    LoadFixture& f_;
    std::mt19937 random_;
};

class StreamUndoMoves : public ::testing::TestWithParam<int> {};

TEST_P(StreamUndoMoves, LevelsOfManyEditsGoBackAndForthToTheSameCells) {
    for (unsigned seed = 1; seed <= test::seeds(12); ++seed) {
        const StreamGenerator stream(seed * 104729, GetParam());
        LoadFixture f(GetParam());
        f.settings.write("WdFrCreation", "1");
        ASSERT_TRUE(f.load(stream.pGroup(), stream.dGroup())) << seed;
        StreamUndo undo(f.format);
        std::vector<Picture> pictures{pictureOf(f.format)};
        std::size_t now = 0;
        WordMover mover(f, seed);
        for (int round = 0; round < 40 && !HasFailure(); ++round) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
            if (mover.number(0, 2) == 0) {
                for (int back = mover.number(0, 4); back > 0 && now > 0; --back) {
                    ASSERT_TRUE(undo.undo());
                    ASSERT_TRUE(pictureOf(f.format) == pictures[--now]);
                    expectIndexed(f.format);
                }
                for (int forth = mover.number(0, 3); forth > 0 && now + 1 < pictures.size();
                     --forth) {
                    ASSERT_TRUE(undo.redo());
                    ASSERT_TRUE(pictureOf(f.format) == pictures[++now]);
                    expectIndexed(f.format);
                }
                continue;
            }
            for (int edits = mover.number(1, 4); edits > 0; --edits) {
                mover.step();
            }
            expectIndexed(f.format);
            const auto picture = pictureOf(f.format);
            if (undo.commit()) {
                pictures.resize(++now);
                pictures.push_back(picture);
            } else {
                ASSERT_TRUE(picture.words == pictures[now].words);
            }
        }
        while (now > 0 && !HasFailure()) {
            ASSERT_TRUE(undo.undo());
            ASSERT_TRUE(pictureOf(f.format) == pictures[--now]) << seed;
        }
        EXPECT_FALSE(undo.canUndo()) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, StreamUndoMoves, ::testing::Values(1996, 2004, 2009, 2011));

TEST(StreamUndoMoves, AMoveOfFullWordsKeepsPlacesAndNotCells) {
    LoadFixture f(2009);
    test::Commands subframes{"SF\\N-1:20"};
    std::vector<test::Commands> measurements;
    using test::operator+;
    for (int m = 1; m <= 20; ++m) {
        subframes = subframes + test::subframeAt(m, "S" + std::to_string(m), m + 3, 64);
        for (int fn = 1; fn <= 64; ++fn) {
            measurements.push_back({"MN@:M" + std::to_string(m) + "-" + std::to_string(fn),
                                    "LT@:SF", "SF1@:S" + std::to_string(m),
                                    "SF2@:" + std::to_string(fn)});
        }
    }
    ASSERT_TRUE(f.load(test::plainFormat(32, 64) + test::counterAt(2, 64, subframes),
                       test::listOf(measurements)));
    ASSERT_EQ(f.format.cells().nameCount(), 1280);
    StreamUndo undo(f.format);
    ASSERT_TRUE(insertFwps(f.format, nullptr, 1, 1));
    ASSERT_TRUE(undo.commit());
    EXPECT_LT(undo.bytes(), 10'000U);
    EXPECT_EQ(f.places("M1-1"), (test::Places{{5, 1}}));
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(f.places("M1-1"), (test::Places{{4, 1}}));
    EXPECT_LT(undo.bytes(), 10'000U);
}

TEST(StreamUndoMoves, WordsThatAreAlikeChangePlacesWithoutALevel) {
    LoadFixture f(2009);
    ASSERT_TRUE(f.load(test::operator+(test::plainFormat(16, 4), {})));
    StreamUndo undo(f.format);
    f.format.permuteWords({0, 2, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
    EXPECT_FALSE(undo.commit());
    EXPECT_FALSE(undo.canUndo());
}

}  // namespace
}  // namespace kavu
