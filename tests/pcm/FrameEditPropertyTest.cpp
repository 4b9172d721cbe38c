// After any sequence of edits the frame can still be written and read.
#include "pcm/StreamFixture.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/FrameEditWords.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <map>
#include <random>

namespace kavu {
namespace {

using test::StreamFixture;

/// Words have the cells of their depth, indices lead to records, and the index of names agrees
/// with a walk through the frame.
void expectSound(const StreamFixture& f) {
    const auto& format = f.format;
    const auto& cells = format.cells();
    ASSERT_EQ(cells.wordCount(), format.wordsPerMinorFrame);
    EXPECT_EQ(format.wordType(0), WordType::Sync);
    std::map<std::string, int> names;
    std::map<int, int> counterWords;
    int bits = 0;
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        bits += format.wordLength(fwp);
        const auto type = format.wordType(fwp);
        EXPECT_EQ(cells.cellCount(fwp), type == WordType::IdCounter ? 1 : format.wordDepth(fwp));
        if (type == WordType::IdCounter) {
            ASSERT_NE(format.idCounterOfWord(fwp), nullptr);
            ++counterWords[format.word(fwp).idCounterIndex];
        }
        EXPECT_TRUE(type != WordType::Subframe || format.subframeOfWord(fwp) != nullptr);
        for (int index = 1; index <= cells.cellCount(fwp); ++index) {
            for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
                if (cells.isMeasurement(at)) {
                    ++names[lowerAscii(cells.measurement(at).name)];
                }
            }
        }
    }
    EXPECT_EQ(format.bitsPerMinorFrame, bits);
    EXPECT_EQ(cells.nameCount(), static_cast<int>(names.size()));
    for (const auto& [name, count] : names) {
        EXPECT_EQ(cells.places(name).size(), static_cast<std::size_t>(count)) << name;
    }
    for (const auto& [counter, count] : counterWords) {
        EXPECT_EQ(count, 1) << counter;
    }
}

class Editor {
  public:
    explicit Editor(StreamFixture& fixture, unsigned seed) : f_(fixture), random_(seed) {}

    void step() {
        auto& format = f_.format;
        switch (number(0, 7)) {
            case 0:
                (void)insertFwps(format, f_.parent, word(), number(0, 3));
                break;
            case 1:
                (void)deleteFwps(format, f_.parent, {}, word(), word());
                break;
            case 2:
                (void)moveFwps(format, f_.parent, word(), word(), word());
                break;
            case 3:
                (void)createDataWords(format, f_.parent, {}, readDataWordDefaults(format));
                break;
            case 4:
                (void)deleteMeasurement(format, nullptr, {}, anyName());
                break;
            case 5:
                if (canCreateAt(format, nullptr, word())) {
                    (void)createSubframe(
                        format, nullptr,
                        {.fwp = word(), .depth = number(1, format.numberOfFrames)});
                }
                break;
            case 6:
                define();
                break;
            default:
                move();
                break;
        }
    }

  private:
    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }
    int word() { return number(0, f_.format.wordsPerMinorFrame); }
    std::string anyName() {
        const auto at = f_.format.measurementAt(word(), 1, 1, true);
        return at ? f_.format.cells().measurement(at).name.str() : std::string();
    }
    void define() {
        MeasurementDefinition definition;
        definition.attributes.name = "M" + std::to_string(number(1, 5));
        definition.attributes.locationType = std::array{"MF", "SF", "MFSC", "SFSC", "MFFR"}.at(
            static_cast<std::size_t>(number(0, 4)));
        definition.attributes.mask = "FW";
        definition.attributes.locationMode = "I";
        definition.attributes.locationCount = number(0, 3);
        definition.attributes.interval = number(0, 3);
        definition.attributes.reconstructedLength = 16;
        const auto name = definition.attributes.name.str();
        (void)saveMeasurement(f_.format, f_.parent, {}, {},
                              {word(), number(1, f_.format.numberOfFrames),
                               f_.format.hasMeasurement(name) ? name : std::string()},
                              definition);
    }
    void move() {
        const auto name = anyName();
        const auto first = Occurrences(f_.format, name).next();
        if (first) {
            f_.ui.choices = {number(0, 20)};
            (void)moveMeasurement(f_.format, f_.parent, f_.format.cells().measurement(first->cell));
        }
    }

    StreamFixture& f_;
    std::mt19937 random_;
};

TEST(FrameEditProperty, RandomEditsKeepTheFrameSound) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        StreamFixture f(2009, 16, 4);
        ASSERT_TRUE(createIdCounter(f.format, nullptr, 9));
        f.format.recalculateBitsPerMinorFrame();
        f.ui.otherwise = seed % 2 == 0 ? Button::Yes : Button::No;
        Editor editor(f, seed);
        for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            editor.step();
            expectSound(f);
        }
    }
}

}  // namespace
}  // namespace kavu
