#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEditAsync.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::StreamFixture;
using testing::HasSubstr;

struct AsyncPlaceFixture : StreamFixture {
    AsyncPlaceFixture() {
        format.asyncFormats.resize(1);
        format.asyncFormats[0].dataLinkName = "VIDEO";
        EXPECT_TRUE(placeAsyncSlots(format, nullptr, 1, {9, {{1, 1, 8}}}, "FW"));
    }
    bool save(const std::string& mask, const std::string& oldName = {}) {
        MeasurementDefinition definition;
        definition.attributes.name = "SPEED";
        definition.attributes.locationType = "MF";
        definition.attributes.mask = mask;
        return saveMeasurement(format, parent, {}, {}, {9, 1, oldName}, definition);
    }
};

TEST(MeasurementOverAsync, AWholeWordAsksFirst) {
    AsyncPlaceFixture f;
    f.ui.otherwise = Button::No;
    EXPECT_FALSE(f.save("FW"));
    EXPECT_FALSE(f.format.hasMeasurement("SPEED"));
    ASSERT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_THAT(f.ui.boxes[0].text, HasSubstr("FWP 9, FN 1: 'VIDEO'"));
    EXPECT_EQ(f.ui.boxes[0].defaultButton, Button::No);
    f.ui.otherwise = Button::Yes;
    EXPECT_TRUE(f.save("1111111111111111")) << "all ones are the whole word";
    EXPECT_EQ(f.ui.boxes.size(), 2U);
    EXPECT_TRUE(f.format.hasMeasurement("SPEED"));
    EXPECT_TRUE(isAsyncAt(f.format, 9, 1, 1));
    EXPECT_TRUE(f.save("FW", "SPEED"));
    EXPECT_EQ(f.ui.boxes.size(), 2U) << "it is there already";
}

TEST(MeasurementOverAsync, APartOfTheWordAndOtherWordsAskNothing) {
    AsyncPlaceFixture f;
    EXPECT_TRUE(f.save("0000000011111111"));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_TRUE(mayCoverAsync(f.format, f.parent, "X", "", {{10, 1, "FW"}}));
    EXPECT_TRUE(mayCoverAsync(f.format, nullptr, "X", "", {{9, 1, "FW"}})) << "no parent";
    EXPECT_TRUE(f.ui.boxes.empty());
}

TEST(MeasurementOverAsync, AMoveOntoItAsksToo) {
    AsyncPlaceFixture f;
    f.place(3, 1, "ALT");
    const auto values = f.format.cells().measurement(f.format.findInCell(3, 1, "ALT"));
    const auto targets = moveTargets(f.format);
    const auto at = std::find_if(targets.begin(), targets.end(),
                                 [](const auto& target) { return target.fwp == 9; });
    ASSERT_NE(at, targets.end());
    f.ui.otherwise = Button::No;
    f.ui.choices = {static_cast<int>(at - targets.begin())};
    EXPECT_FALSE(moveMeasurement(f.format, f.parent, values));
    EXPECT_EQ(f.ui.boxes.size(), 1U);
    EXPECT_TRUE(f.format.findInCell(3, 1, "ALT"));
}

}  // namespace
}  // namespace kavu
