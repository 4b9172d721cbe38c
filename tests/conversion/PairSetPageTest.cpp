#include "conversion/ConversionFixture.h"
#include "conversion/DefinitionEdit.h"
#include "conversion/PairSetPage.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::ConversionFixture;

/// The page over a record of three pairs on y = 1 + 2 x.
struct Page {
    explicit Page(const char* more = "") {
        EXPECT_TRUE(
            f.load(std::string("C-1\\DCN:A;\nC-1\\DCT:PRS;\nC-1\\PS1:Y;\nC-1\\PS2:1;\n"
                               "C-1\\PS\\N:3;\nC-1\\PS3-1:0;\nC-1\\PS4-1:1;\nC-1\\PS3-2:2;\n"
                               "C-1\\PS4-2:5;\nC-1\\PS3-3:1;\nC-1\\PS4-3:3;\n"
                               "C-1\\CO:77;\nC-1\\MOT1:100;\nC-1\\MOT2:-10;\nC-1\\BFM:TWO;\n") +
                   more));
        edit = DefinitionEdit::open(f.context, f.conversions, &f.ui, "A");
        EXPECT_TRUE(edit);
    }
    std::string value(std::string_view code) { return edit->value(code); }

    ConversionFixture f;
    std::optional<DefinitionEdit> edit;
    PairSetPage page{f.context, f.conversions, "A"};
};

TEST(PairSetPage, ReadsWhatARefitWorksOn) {
    Page p;
    const auto input = p.page.input(12);
    EXPECT_EQ(input.x, (std::vector<double>{0, 2, 1}));
    EXPECT_EQ(input.y, (std::vector<double>{1, 5, 3}));
    EXPECT_EQ(input.order, 1);
    EXPECT_EQ(input.limits.valueHigh, "100");
    EXPECT_EQ(input.limits.valueLow, "-10");
    EXPECT_EQ(input.bits, 12);
    EXPECT_EQ(input.binaryFormat, "TWO");
    EXPECT_FALSE(input.series);
    p.f.settings.write("PRSSort", "1");
    EXPECT_EQ(p.page.input(12).x, (std::vector<double>{0, 1, 2}));
}

TEST(PairSetPage, ARefitStoresDerivedCoefficients) {
    Page p;
    p.f.settings.write("FloatPrecision", "3");
    ASSERT_TRUE(p.page.refresh(&p.f.ui, p.page.input(0)).fitted);
    EXPECT_EQ(p.value("CO1"), "Y");
    EXPECT_EQ(p.value("CO\\N"), "1");
    EXPECT_EQ(p.value("CO"), "1.000E+00");
    EXPECT_EQ(p.value("CO-1"), "2.000E+00");
    EXPECT_EQ(p.f.value("A", "CO"), "77") << "in the working copy only";
    EXPECT_EQ(p.value("PS3-1"), "0") << "the list still shows its text";
}

TEST(PairSetPage, StoresPairsAndChoicesInTheWorkingCopyOnly) {
    Page p;
    auto pairs = p.page.pairs();
    ASSERT_TRUE(pairs.remove(0));
    EXPECT_TRUE(p.page.storePairs(&p.f.ui, pairs));
    EXPECT_EQ(p.value("PS\\N"), "2");
    EXPECT_EQ(p.value("PS3-1"), "2");
    EXPECT_EQ(p.value("PS3-3"), "") << "a row that is gone leaves nothing behind";
    EXPECT_TRUE(p.page.storeOrder(&p.f.ui, 4));
    EXPECT_EQ(p.value("PS2"), "4");
    EXPECT_TRUE(p.page.definesCurve());
    EXPECT_TRUE(p.page.storeCurve(&p.f.ui, false));
    EXPECT_FALSE(p.page.definesCurve());
    EXPECT_EQ(p.f.value("A", "PS\\N"), "3");
    EXPECT_EQ(p.f.value("A", "PS1"), "Y");
}

TEST(PairSetPage, AWorkingCopyThatIsGoneIsNotMadeAgain) {
    Page p;
    ASSERT_TRUE(std::filesystem::remove(p.f.store.pathOf(working::kData1)));
    EXPECT_FALSE(p.page.storeOrder(&p.f.ui, 4));
    EXPECT_FALSE(p.f.has(working::kData1));
}

TEST(PairSetPage, AFitThatFailsLeavesTheCoefficients) {
    Page p;
    auto input = p.page.input(0);
    input.order = 3;
    EXPECT_FALSE(p.page.refresh(&p.f.ui, input).fitted);
    EXPECT_EQ(p.value("CO"), "77");
    EXPECT_TRUE(p.f.ui.boxes.empty()) << "never a message box";
    EXPECT_FALSE(p.page.refresh(nullptr, input).fitted);
}

TEST(PairSetPage, TellsOfCoefficientsThatItsPairsDoNotGive) {
    Page p;
    const auto fit = p.page.refresh(&p.f.ui, p.page.input(0));
    ASSERT_TRUE(fit.fitted);
    EXPECT_EQ(p.page.staleNote(fit), "");
    ASSERT_TRUE(p.page.storePairs(&p.f.ui, PairSet()));
    const auto none = p.page.refresh(&p.f.ui, p.page.input(0));
    EXPECT_FALSE(none.fitted);
    EXPECT_NE(p.page.staleNote(none).find("earlier fit"), std::string::npos);
    ASSERT_TRUE(p.page.storeCurve(&p.f.ui, false));
    EXPECT_NE(p.page.staleNote({}), "") << "the coefficients are still there";
    // Coefficients that nobody has derived are the user's own.
    EXPECT_TRUE(p.edit->setValues(&p.f.ui, {{"CO1", "N"}}));
    EXPECT_EQ(p.page.staleNote({}), "");
}

TEST(PairSetPage, WithoutACurveNothingIsFitted) {
    Page p("C-1\\COM:x;\n");
    ASSERT_TRUE(p.edit->setValues(&p.f.ui, {{"PS1", "N"}}));
    EXPECT_FALSE(p.page.refresh(&p.f.ui, p.page.input(0)).fitted);
    EXPECT_EQ(p.value("CO"), "77");
    // The window of coefficients asks for it whatever the page says.
    EXPECT_TRUE(p.page.deriveCoefficients(&p.f.ui));
    EXPECT_EQ(p.value("CO-1"), "2.00000000E+00");
    // A count of 0 hides no pairs; without them there is nothing to fit.
    ASSERT_TRUE(p.edit->setValues(&p.f.ui, {{"PS\\N", "0"}}));
    const auto pairs = p.page.pairs();
    EXPECT_GT(pairs.size(), 0u);
    ASSERT_TRUE(p.page.storePairs(&p.f.ui, PairSet()));
    EXPECT_FALSE(p.page.deriveCoefficients(&p.f.ui));
}

TEST(SeriesValues, AreOnOnlyWithTheSettingAndAValue) {
    for (const bool setting : {false, true}) {
        for (const char* const comment : {"", "C-1\\COM:[KAVU: RCal=9];\n"}) {
            Page p(comment);
            p.f.settings.write("DoRCal", setting ? "1" : "0");
            const auto series = p.page.openSeries();
            EXPECT_EQ(series.on, setting && *comment != '\0');
            EXPECT_EQ(series.cal, *comment != '\0' ? "9" : "");
        }
    }
}

TEST(SeriesValues, AnEmptyBoxBecomes0WhenTheSeriesIsEnabled) {
    Page p;
    auto series = p.page.openSeries();
    series.cal = "8";
    ASSERT_TRUE(p.page.enableSeries(&p.f.ui, true, series));
    EXPECT_EQ(series.zero, "0");
    EXPECT_EQ(p.f.settings.integer("DoRCal", 0), 1);
    EXPECT_EQ(p.f.conversions.commentRecordGet("A", "ZeroCal"), "0");
    EXPECT_EQ(p.f.conversions.commentRecordGet("A", "RCal"), "8");
    ASSERT_TRUE(p.page.enableSeries(&p.f.ui, false, series));
    EXPECT_EQ(p.f.settings.integer("DoRCal", 1), 0);
    EXPECT_EQ(p.f.conversions.commentRecordGet("A", "RCal"), "8") << "the values stay";
    ASSERT_TRUE(p.edit->store(&p.f.ui));
    EXPECT_NE(p.f.save().find("COM:[KAVU:ZeroCal=0 RCal=8];"), std::string::npos);
}

TEST(SeriesValues, HoldAtMost20CharactersWithoutBlanks) {
    Page p;
    ASSERT_TRUE(p.page.storeSeries(&p.f.ui, {" 1 RCal=7 ", std::string(30, '2'), true}));
    EXPECT_EQ(p.f.conversions.commentRecordGet("A", "ZeroCal"), "1RCal=7");
    EXPECT_EQ(p.f.conversions.commentRecordGet("A", "RCal"), std::string(20, '2'));
}

TEST(PairSetPage, AsksBeforeAPairIsDeleted) {
    Page p;
    EXPECT_FALSE(p.page.confirmDelete(&p.f.ui));
    EXPECT_EQ(p.f.ui.boxes[0].text, "Are You Sure?");
    EXPECT_EQ(p.f.ui.boxes[0].title, "Delete This Entry?");
    p.f.ui.byId[82] = Button::Yes;
    EXPECT_TRUE(p.page.confirmDelete(&p.f.ui));
    EXPECT_FALSE(p.page.confirmDelete(nullptr));
}

}  // namespace
}  // namespace kavu
