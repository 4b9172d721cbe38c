#include "pcm/LoadFixture.h"
#include "pcm/edit/MeasurementEditDefinition.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <tuple>

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;
using ::testing::IsEmpty;

/// Words 1 to 31 in 8 frames, a counter in 1; before 106-11 the subframes S and U of one word and
/// T of two.
class EditedStream : public LoadFixture {
  public:
    EditedStream(int edition, unsigned seed) : LoadFixture(edition), random_(seed) {
        const auto subframes = edition >= 2011
                                   ? Commands()
                                   : Commands{"SF\\N-1:3"} + subframeAt(1, "S", 5, 4) +
                                         Commands{"SF1-1-2:T",   "SF2-1-2:2",  "SF3-1-2:FI",
                                                  "SF4-1-2-1:6", "SF5-1-2:10", "SF6-1-2:4"} +
                                         subframeAt(3, "U", 8, 8);
        settings.writeInteger("WdFrCreation", 0);
        EXPECT_TRUE(load(plainFormat(32, 8) + counterAt(1, 8, subframes), listOf({})));
    }

    /// A definition as a person may enter it: what can not be is refused.
    std::pair<EditedPlace, MeasurementDefinition> entered() {
        EditedPlace place{number(1, 31), number(1, 8), {}};
        MeasurementDefinition definition;
        auto& cell = definition.attributes;
        cell.name = "M" + std::to_string(number(1, 12));
        if (format.hasMeasurement(cell.name)) {
            place.oldName = cell.name.str();
        }
        const auto types = locationTypes(format, place.fwp);
        cell.locationType =
            types.empty()
                ? "WDFR"
                : types[static_cast<std::size_t>(number(0, static_cast<int>(types.size()) - 1))]
                      .substr(0, 4);
        cell.parity = "EV";
        cell.parityTransferOrder = "L";
        cell.transferOrder = "M";
        cell.filterOverwrite = "N";
        cell.mask = mask();
        cell.locationMode = number(0, 1) == 0 ? "I" : "E";
        cell.locationCount = number(1, 4);
        cell.interval = number(1, 4);
        cell.reconstructedLength = number(8, 40);
        for (int n = number(1, 4); n > 0; --n) {
            definition.spots.push_back({number(2, 31), number(0, 1) == 0 ? "S" : "U", number(1, 8),
                                        mask(), number(0, 1) == 0 ? "M" : "L", number(1, 4)});
        }
        for (int n = number(1, 2); n > 0; --n) {
            definition.wordFrame.locations.push_back(location());
        }
        return {place, definition};
    }

    /// Names, samples and what was entered for each of them. A word that shares a subframe's
    /// cells, or has one for all frames, looks the same.
    using Cell = std::tuple<std::string, int, int, std::string, std::string, std::string, int, int,
                            int, std::string, int>;
    [[nodiscard]] std::vector<Cell> picture() const {
        std::vector<Cell> all;
        for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
            for (int fn = 1; fn <= format.numberOfFrames; ++fn) {
                for (auto at = format.cellAtFrame(fwp, fn); at; at = format.next(at)) {
                    if (format.cells().isMeasurement(at)) {
                        all.push_back(shown(format.cells().measurement(at), fwp, fn));
                    }
                }
            }
        }
        std::sort(all.begin(), all.end());
        return all;
    }

  private:
    int number(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }
    std::string mask() {
        return number(0, 1) == 0   ? "FW"
               : number(0, 1) == 0 ? "1111000000000000"
                                   : "0000000011111111";
    }
    WordFrameLocation location() {
        WordFrameLocation result;
        result.wordLength = 16;
        for (int n = number(1, 3); n > 0; --n) {
            WordFrameFragment fragment;
            fragment.startWord = number(2, 31);
            fragment.wordInterval = number(0, 3) * 4;
            fragment.endWord = fragment.wordInterval == 0 ? fragment.startWord : number(2, 31);
            fragment.startFrame = number(1, 4);
            fragment.frameInterval = number(0, 2);
            fragment.endFrame = fragment.frameInterval == 0 ? fragment.startFrame : number(1, 8);
            fragment.mask = mask();
            fragment.transferOrder = number(0, 1) == 0 ? 'M' : 'D';
            result.fragments.push_back(fragment);
        }
        return result;
    }
    static Cell shown(const Measurement& cell, int fwp, int fn) {
        const bool isRange = cell.locationType == "WDFR";
        // Of a list of words the mask of whatever is first in the word is written.
        const bool hasOwnMask =
            !isRange && !(cell.locationType == "MFSC" && cell.locationMode == "E");
        const bool isFragment = isFragmented(cell.locationType);
        return {cell.name.str(),
                fwp,
                fn,
                cell.locationType.str(),
                hasOwnMask ? cell.mask.str() : "",
                cell.locationMode.str(),
                isRange ? 0 : cell.locationCount,
                cell.interval,
                isFragment && !isRange ? cell.reconstructedLength : 0,
                cell.fragmentTransferOrder.str(),
                isRange ? 0 : cell.fragmentNumber};
    }

    std::mt19937 random_;
};

TEST(MeasurementEditProperty, WhatWasEnteredComesBackFromTheFile) {
    for (const int edition : {2001, 2004, 2009, 2011}) {
        int accepted = 0;
        for (unsigned seed = 1; seed <= 25; ++seed) {
            EditedStream stream(edition, seed);
            for (int step = 0; step < 12; ++step) {
                const auto [place, definition] = stream.entered();
                accepted += saveMeasurement(stream.format, nullptr, {}, {}, place, definition);
            }
            const auto before = stream.picture();
            ASSERT_TRUE(savePcmFormat(stream.format, stream.parent));
            ASSERT_TRUE(stream.reload());
            const auto after = stream.picture();
            std::vector<EditedStream::Cell> lost;
            std::vector<EditedStream::Cell> added;
            std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                                std::back_inserter(lost));
            std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                                std::back_inserter(added));
            ASSERT_THAT(lost, IsEmpty()) << edition << " seed " << seed;
            ASSERT_THAT(added, IsEmpty()) << edition << " seed " << seed;
        }
        EXPECT_GT(accepted, 40) << edition;
    }
}

}  // namespace
}  // namespace kavu
