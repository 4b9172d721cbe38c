#include "pcm/StreamFixture.h"
#include "pcm/StreamPicture.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/edit/MeasurementEdit.h"
#include "pcm/undo/StreamUndo.h"

#include <functional>
#include <random>

namespace kavu {
namespace {

using test::Picture;
using test::pictureOf;
using test::StreamFixture;

TEST(StreamUndo, EveryEditIsOneLevelAndComesBackExactly) {
    for (unsigned seed = 1; seed <= 8; ++seed) {
        StreamFixture f(2009, 16, 4);
        std::mt19937 random(seed);
        const auto word = [&] {
            return std::uniform_int_distribution<int>(1, f.format.wordsPerMinorFrame - 1)(random);
        };
        const std::vector<std::function<void()>> edits{
            [&] { (void)insertFwps(f.format, nullptr, word(), 2); },
            [&] { (void)deleteFwps(f.format, nullptr, {}, word(), word()); },
            [&] { (void)moveFwps(f.format, nullptr, word(), word(), word()); },
            [&] { (void)createDataWords(f.format, nullptr, {}, readDataWordDefaults(f.format)); },
            [&] { clearWord(f.format, nullptr, {}, word()); },
            [&] { (void)createIdCounter(f.format, nullptr, word()); },
            [&] { (void)createSubframe(f.format, nullptr, {.fwp = word(), .depth = 3}); }};
        StreamUndo undo(f.format);
        std::vector<Picture> pictures{pictureOf(f.format)};
        for (int step = 0; step < 25; ++step) {
            if (f.format.wordsPerMinorFrame < 4) {
                (void)insertFwps(f.format, nullptr, 0, 6);
            }
            edits[static_cast<std::size_t>(step * 3 + static_cast<int>(seed)) % edits.size()]();
            if (undo.commit()) {
                pictures.push_back(pictureOf(f.format));
            }
        }
        ASSERT_GT(pictures.size(), 8U);
        for (std::size_t i = pictures.size() - 1; i-- > 0;) {
            ASSERT_TRUE(undo.undo());
            ASSERT_TRUE(pictureOf(f.format) == pictures[i]) << seed << " undo " << i;
        }
        EXPECT_FALSE(undo.undo());
        for (std::size_t i = 1; i < pictures.size(); ++i) {
            ASSERT_TRUE(undo.redo());
            ASSERT_TRUE(pictureOf(f.format) == pictures[i]) << seed << " redo " << i;
        }
        EXPECT_FALSE(undo.redo());
    }
}

TEST(StreamUndo, WordFrameMeasurementsComeBackWithTheirDefinitions) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        StreamFixture f(2011, 12, 4);
        f.format.implicitSubframes = true;
        std::mt19937 random(seed);
        const auto pick = [&](int least, int most) {
            return std::uniform_int_distribution<int>(least, most)(random);
        };
        int made = 0;
        const auto nameOf = [](int n) { return "M" + std::to_string(n); };
        const std::vector<std::function<void()>> edits{
            [&] { f.placeInEveryFrame(pick(1, f.format.wordsPerMinorFrame - 1), nameOf(made++)); },
            [&] { (void)deleteMeasurement(f.format, nullptr, {}, nameOf(pick(0, made))); },
            [&] {
                if (auto* const definition = f.format.wordFrameDefinition(pick(1, 3))) {
                    definition->idCounterName = nameOf(pick(0, 99));
                }
            },
            [&] {
                f.format.cells().updateAll(nameOf(pick(0, made)), [&](Measurement& copy) {
                    copy.locationCount = pick(1, 9);
                });
            },
            [&] { (void)insertFwps(f.format, nullptr, pick(0, 4), 1); },
            [&] { (void)createIdCounter(f.format, nullptr, pick(1, 6)); }};
        StreamUndo undo(f.format);
        std::vector<Picture> pictures{pictureOf(f.format)};
        for (int step = 0; step < 40; ++step) {
            edits[static_cast<std::size_t>(pick(0, static_cast<int>(edits.size()) - 1))]();
            if (undo.commit()) {
                pictures.push_back(pictureOf(f.format));
            }
        }
        ASSERT_GT(pictures.size(), 15U);
        for (int walk = 0, at = static_cast<int>(pictures.size()) - 1; walk < 120; ++walk) {
            const bool back = pick(0, 1) == 0;
            const bool can = back ? at > 0 : at + 1 < static_cast<int>(pictures.size());
            ASSERT_EQ(back ? undo.undo() : undo.redo(), can) << seed << " " << walk;
            at += !can ? 0 : back ? -1 : 1;
            ASSERT_TRUE(pictureOf(f.format) == pictures[static_cast<std::size_t>(at)])
                << seed << " " << walk << " " << at;
        }
    }
}

TEST(StreamUndo, ANewEditEndsTheRedoAndNoEditIsNoLevel) {
    StreamFixture f(2009, 8, 1);
    StreamUndo undo(f.format);
    EXPECT_FALSE(undo.commit());
    EXPECT_FALSE(undo.canUndo());
    f.place(3, 1, "A");
    EXPECT_TRUE(undo.commit());
    EXPECT_TRUE(undo.undo());
    EXPECT_FALSE(f.format.hasMeasurement("A"));
    EXPECT_TRUE(undo.canRedo());
    f.place(4, 1, "B");
    EXPECT_TRUE(undo.commit());
    EXPECT_FALSE(undo.canRedo());
    EXPECT_FALSE(undo.redo());
    EXPECT_TRUE(f.format.hasMeasurement("B"));
}

}  // namespace
}  // namespace kavu
