#include "core/talk/ProfileSettings.h"
#include "pcm/LoadFixture.h"
#include "pcm/write/WordFrameConversion.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

const auto kOlder = listOf({Commands{"MN@:A", "LT@:MF", "MF@:2"}});

TEST(WordFrameMode, AFormatWithoutMeasurementsShowsTheOptionDialogOnce) {
    LoadFixture stream(2009);
    stream.ui.choices.push_back(0);
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    ASSERT_EQ(stream.ui.listPrompts.size(), 1U);
    EXPECT_EQ(stream.ui.listPrompts[0].first, "Measurement Definition Options");
    EXPECT_EQ(stream.ui.listPrompts[0].second.size(), 2U);
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "1");
    EXPECT_TRUE(stream.format.implicitSubframes);
    ASSERT_TRUE(stream.reload());
    EXPECT_EQ(stream.ui.listPrompts.size(), 1U);
}

TEST(WordFrameMode, AStepOfTheEditorAsksInPlaceOfTheChoiceOfTwo) {
    LoadFixture stream(2009);
    int asked = 0;
    stream.steps_.chooseDefinitionMode = [&](UserInterface&, bool wordFrame) {
        EXPECT_TRUE(wordFrame);
        return ++asked > 0 ? std::optional(false) : std::nullopt;
    };
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(stream.ui.listPrompts.empty());
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "0");
}

TEST(WordFrameMode, TheOlderTypesCanBeChosen) {
    LoadFixture stream(2009);
    stream.ui.choices.push_back(1);
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "0");
    EXPECT_FALSE(stream.format.implicitSubframes);
}

TEST(WordFrameMode, AMissingOptionBecomesWordFrameWithoutADialogWhereThereAreMeasurements) {
    LoadFixture stream(2009);
    ASSERT_TRUE(stream.load(plainFormat(8, 1), kOlder));
    wordFrameMode(stream.format, stream.parent);
    EXPECT_TRUE(stream.ui.listPrompts.empty());
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "1");
    EXPECT_FALSE(stream.format.implicitSubframes) << "a measurement of an older type";
}

TEST(WordFrameMode, IsOnWithoutShownSubframesAndOlderTypes) {
    LoadFixture stream(2009);
    stream.settings.write("WdFrCreation", "1");
    ASSERT_TRUE(stream.load(plainFormat(8, 4) + counterAt(1, 4)));
    EXPECT_TRUE(stream.format.implicitSubframes);
    ASSERT_TRUE(stream.load(plainFormat(8, 4) +
                            counterAt(1, 4, Commands{"SF\\N-1:1"} + subframeAt(1, "S", 3, 4))));
    EXPECT_FALSE(stream.format.implicitSubframes);
    stream.format.idCounters[0].subframes[0].hidden = true;
    wordFrameMode(stream.format, stream.parent);
    EXPECT_TRUE(stream.format.implicitSubframes);
}

TEST(WordFrameMode, IsOffBefore106_04AndOnFrom106_11) {
    for (const auto& [edition, expected] :
         {std::pair(1996, false), std::pair(2001, false), std::pair(2011, true)}) {
        LoadFixture stream(edition);
        ASSERT_TRUE(stream.load(plainFormat(8, 1)));
        wordFrameMode(stream.format, stream.parent);
        EXPECT_EQ(stream.format.implicitSubframes, expected) << edition;
        EXPECT_TRUE(stream.ui.listPrompts.empty());
        EXPECT_EQ(stream.settings.text("WdFrCreation"), "") << edition;
    }
}

TEST(WordFrameMode, ANullParentIsNotAsked) {
    LoadFixture stream(2009);
    stream.parent = nullptr;
    ASSERT_TRUE(stream.load(plainFormat(8, 1)));
    EXPECT_TRUE(stream.format.implicitSubframes);
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "1");
}

TEST(WordFrameMode, AnUnchangedChoiceChangesNothing) {
    LoadFixture stream(2009);
    ASSERT_TRUE(stream.load(plainFormat(8, 1), kOlder));
    stream.settings.write("WdFrCreation", "0");
    stream.ui.choices = {1, -1, 0};
    EXPECT_FALSE(chooseWordFrameMode(stream.format, stream.parent));
    EXPECT_FALSE(chooseWordFrameMode(stream.format, stream.parent)) << "cancelled";
    EXPECT_TRUE(chooseWordFrameMode(stream.format, stream.parent));
    EXPECT_EQ(stream.settings.text("WdFrCreation"), "1");
}

}  // namespace
}  // namespace kavu
