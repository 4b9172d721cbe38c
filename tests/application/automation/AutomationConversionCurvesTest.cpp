// The numbers of a conversion: its coefficients, and the pairs that they may be fitted to.
#include "MeasurementStage.h"

#include <limits>

namespace kavu::test {
namespace {

class ConversionCurves : public MeasurementStage {
  protected:
    void openWith(const std::string& fields, const std::string& edition = "09") {
        if (document().open) {
            documents->CloseTmatsFile(0, false);  // a changed one would refuse another
        }
        open(documentWith({{"MN@:P", "LT@:MF", "MF@:2"}}, "C-1\\DCN:P;" + fields, edition));
        EXPECT_TRUE(store().writeOut().ok());
    }
    std::string settingTerm(int term, double value) {
        return errorOf([&] { conversions().SetMeasurementEuCoefficient("P", term, value); });
    }
    std::string gettingTerm(int term) {
        return errorOf([&] { (void)conversions().GetMeasurementEuCoefficient("P", term); });
    }
    std::string settingPair(int pair, int x, double y) {
        return errorOf([&] { conversions().SetMeasurementEuPairSet("P", pair, x, y); });
    }
};

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr int kMost = std::numeric_limits<std::int32_t>::max();
constexpr int kLeast = std::numeric_limits<std::int32_t>::min();

TEST_F(ConversionCurves, CoefficientsAreReadByTheirTerms) {
    openWith("C-1\\DCT:COE;C-1\\CO\\N:2;C-1\\CO1:N;C-1\\CO:1.5;C-1\\CO-1:-2E3;C-1\\CO-2:x;");
    auto c = conversions();
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 2);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 0), 1.5);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("p", 1), -2000);
    EXPECT_EQ(gettingTerm(2), "NotANumber");
    for (const int term : {3, 11, -1, kMost, kLeast}) {
        EXPECT_EQ(gettingTerm(term), "OutOfRange") << term;
    }
}

TEST_F(ConversionCurves, AnOrderThatIsNoNumberIsNever0) {
    openWith("C-1\\DCT:COE;C-1\\CO\\N:x;C-1\\CO:1;");
    auto c = conversions();
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuCoefficientOrderOfFit("P"); }), "NotANumber");
    openWith("C-1\\DCT:COE;");
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuCoefficientOrderOfFit("P"); }), "NotANumber");
    EXPECT_EQ(gettingTerm(0), "NotANumber");
}

TEST_F(ConversionCurves, AHigherTermRaisesTheOrderAndFillsWith0) {
    openWith("C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO1:N;C-1\\CO:1.0;C-1\\CO-1:2.0;");
    auto c = conversions();
    c.SetMeasurementEuCoefficient("P", 4, 0.5);
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 4);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 0), 1.0);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 1), 2.0);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 2), 0.0);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 3), 0.0);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 4), 0.5);
    EXPECT_EQ(key("P", "CO"), "1.0") << "others keep their text";
    EXPECT_EQ(key("P", "CO-4"), "5.00000000E-01");
    EXPECT_EQ(settingTerm(10, 1), "none");
    for (const int term : {11, -1, kMost, kLeast}) {
        EXPECT_EQ(settingTerm(term, 1), "OutOfRange") << term;
    }
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 10);
}

TEST_F(ConversionCurves, TheFirstCoefficientOfARecordIsNotLostInTheFile) {
    openWith("C-1\\DCT:COE;");
    auto c = conversions();
    c.SetMeasurementEuCoefficient("P", 0, 7);
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 0), 7);
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 1)
        << "a file has the offset only with a term";
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 1), 0);
}

TEST_F(ConversionCurves, NegativePowersHaveFieldsOfTheirOwn) {
    openWith("C-1\\DCT:NPC;C-1\\NPC\\N:1;C-1\\NPC1:N;C-1\\NPC:1;C-1\\NPC-1:2;C-1\\CO:9;");
    auto c = conversions();
    EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 1), 2);
    c.SetMeasurementEuCoefficient("P", 2, 3);
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 2);
    EXPECT_EQ(key("P", "NPC-2"), "3.00000000E+00");
    EXPECT_EQ(key("P", "CO-2"), "");
    EXPECT_EQ(settingPair(1, 1, 1), "WrongType");
    openWith("C-1\\DCT:NPC;C-1\\NPC\\N:1;C-1\\NPC:1;C-1\\NPC-1:2;", "05");
    EXPECT_EQ(gettingTerm(0), "NotInEdition");
    EXPECT_EQ(settingTerm(0, 1), "NotInEdition");
}

TEST_F(ConversionCurves, OtherTypesHaveNeitherCoefficientsNorPairs) {
    for (const auto* const type : {"NON", "DER", "DIS", "OTH", "VOI", "PTM"}) {
        openWith("C-1\\DCT:" + std::string(type) + ";C-1\\CO\\N:1;C-1\\CO:1;C-1\\CO-1:1;");
        EXPECT_EQ(gettingTerm(0), "WrongType") << type;
        EXPECT_EQ(settingTerm(0, 2), "WrongType") << type;
        EXPECT_EQ(settingPair(1, 1, 1), "WrongType") << type;
        EXPECT_EQ(errorOf([&] { (void)conversions().GetMeasurementEuPairSet("P", 1); }),
                  "WrongType");
        EXPECT_EQ(errorOf([&] { (void)conversions().GetMeasurementEuPairSetNumberOfPairs("P"); }),
                  "WrongType");
        EXPECT_EQ(errorOf([&] { (void)conversions().GetMeasurementEuCoefficientOrderOfFit("P"); }),
                  "WrongType");
    }
}

TEST_F(ConversionCurves, NoRecordIsMadeForAWrongType) {
    open();
    EXPECT_TRUE(store().writeOut().ok());
    EXPECT_EQ(errorOf([&] { conversions().SetMeasurementEuCoefficient("A", 0, 1); }), "WrongType");
    EXPECT_FALSE(store().locateDefinition("A").found);
    EXPECT_FALSE(document().changed);
    test.application.context().settings.write("CDCT", "COE");
    conversions().SetMeasurementEuCoefficient("A", 1, 2);
    EXPECT_EQ(key("A", "CO"), "0.0") << "of the default record";
}

TEST_F(ConversionCurves, NumbersMustBeFinite) {
    openWith("C-1\\DCT:COE;");
    for (const double wrong : {kInfinite, -kInfinite, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(settingTerm(0, wrong), "BadValue");
        EXPECT_EQ(settingPair(1, 1, wrong), "BadValue");
    }
}

TEST_F(ConversionCurves, NumbersAreWrittenWithTheDigitsThatReadingBackNeeds) {
    openWith("C-1\\DCT:COE;");
    auto c = conversions();
    for (const auto* const precision : {"0", "2", "8", "40"}) {
        test.application.context().settings.write("FloatPrecision", precision);
        for (const double value : {0.1, 1.0 / 3, -2.5e-300, 1.7976931348623157e308, 5e-324, 0.0}) {
            c.SetMeasurementEuCoefficient("P", 1, value);
            EXPECT_EQ(c.GetMeasurementEuCoefficient("P", 1), value) << precision;
            EXPECT_LE(key("P", "CO-1").size(), 32U) << "what the field holds";
        }
    }
    test.application.context().settings.write("FloatPrecision", "3");
    c.SetMeasurementEuCoefficient("P", 1, 1.5);
    EXPECT_EQ(key("P", "CO-1"), "1.500E+00");
    c.SetMeasurementEuCoefficient("P", 1, 1.23456);
    EXPECT_EQ(key("P", "CO-1"), "1.23456E+00");
}

TEST_F(ConversionCurves, ACoefficientThatIsThereKeepsItsText) {
    openWith("C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO:1.0;C-1\\CO-1:2.50;");
    conversions().SetMeasurementEuCoefficient("P", 1, 2.5);
    EXPECT_EQ(key("P", "CO-1"), "2.50");
    EXPECT_FALSE(document().changed);
    EXPECT_EQ(key("P", "Chg"), "1");
}

// --- pairs -----------------------------------------------------------------------------------

const char kPairs[] =
    "C-1\\DCT:PRS;C-1\\PS\\N:3;C-1\\PS1:N;C-1\\PS2:1;C-1\\PS3-1:10;C-1\\PS4-1:1.5;"
    "C-1\\PS3-2:5.0;C-1\\PS4-2:two;C-1\\PS3-3:7.5;C-1\\PS4-3:3;";

TEST_F(ConversionCurves, PairsAreReadByTheirNumbers) {
    openWith(kPairs);
    auto c = conversions();
    EXPECT_EQ(c.GetMeasurementEuPairSetNumberOfPairs("P"), 3);
    EXPECT_EQ(c.GetMeasurementEuPairSet("P", 1).X, 10);
    EXPECT_EQ(c.GetMeasurementEuPairSet("P", 1).Y, 1.5);
    const auto getting = [&](int pair) {
        return errorOf([&] { (void)c.GetMeasurementEuPairSet("P", pair); });
    };
    EXPECT_EQ(getting(2), "NotANumber") << "its EU value is a word";
    EXPECT_EQ(getting(3), "NotANumber") << "its telemetry value is no whole number";
    for (const int pair : {0, 4, -1, kMost, kLeast}) {
        EXPECT_EQ(getting(pair), "OutOfRange") << pair;
    }
    openWith("C-1\\DCT:COE;");
    EXPECT_EQ(c.GetMeasurementEuPairSetNumberOfPairs("P"), 0);
}

TEST_F(ConversionCurves, APairIsReplacedOrAddedAndNeverSorted) {
    openWith(kPairs);
    test.application.context().settings.write("PRSSort", "1");
    auto c = conversions();
    c.SetMeasurementEuPairSet("P", 2, 100, -4.25);
    c.SetMeasurementEuPairSet("P", 4, -1, 2);
    EXPECT_EQ(c.GetMeasurementEuPairSetNumberOfPairs("P"), 4);
    EXPECT_EQ(key("P", "PS3-1"), "10");
    EXPECT_EQ(key("P", "PS3-2"), "100");
    EXPECT_EQ(key("P", "PS4-2"), "-4.25000000E+00");
    EXPECT_EQ(key("P", "PS3-3"), "7.5") << "others keep their text";
    EXPECT_EQ(key("P", "PS3-4"), "-1");
    for (const int pair : {0, 6, -1, kMost, kLeast}) {
        EXPECT_EQ(settingPair(pair, 1, 1), "OutOfRange") << pair;
    }
    c.SetMeasurementEuPairSet("P", 5, kLeast, 1);
    EXPECT_EQ(c.GetMeasurementEuPairSet("P", 5).X, kLeast);
}

TEST_F(ConversionCurves, ThereAreAtMost99Pairs) {
    openWith("C-1\\DCT:COE;");
    auto c = conversions();
    for (int pair = 1; pair <= 99; ++pair) {
        c.SetMeasurementEuPairSet("P", pair, pair, pair);
    }
    EXPECT_EQ(settingPair(100, 1, 1), "OutOfRange");
    EXPECT_EQ(c.GetMeasurementEuPairSetNumberOfPairs("P"), 99);
    EXPECT_EQ(settingPair(99, 1, 1), "none");
}

TEST_F(ConversionCurves, ACurveIsFittedAgainWithItsPairs) {
    openWith(
        "C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS1:Y;C-1\\PS2:1;C-1\\PS3-1:0;C-1\\PS4-1:1;"
        "C-1\\PS3-2:1;C-1\\PS4-2:3;");
    auto c = conversions();
    c.SetMeasurementEuPairSet("P", 3, 2, 5);
    EXPECT_EQ(c.GetMeasurementEuCoefficientOrderOfFit("P"), 1);
    EXPECT_NEAR(c.GetMeasurementEuCoefficient("P", 0), 1, 1e-9);
    EXPECT_NEAR(c.GetMeasurementEuCoefficient("P", 1), 2, 1e-9);
    EXPECT_EQ(key("P", "CO1"), "Y");
    ASSERT_TRUE(test.application.context().history.undo(nullptr));
    EXPECT_EQ(key("P", "CO"), "") << "pairs and fit are one operation";
    EXPECT_EQ(c.GetMeasurementEuPairSetNumberOfPairs("P"), 2);
}

TEST_F(ConversionCurves, WithoutACurveTheCoefficientsStay) {
    openWith(
        "C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS1:N;C-1\\PS2:1;C-1\\PS3-1:0;C-1\\PS4-1:1;"
        "C-1\\PS3-2:1;C-1\\PS4-2:3;C-1\\CO\\N:1;C-1\\CO:7;C-1\\CO-1:8;");
    conversions().SetMeasurementEuPairSet("P", 1, 5, 5);
    EXPECT_EQ(conversions().GetMeasurementEuCoefficient("P", 0), 7);
}

TEST_F(ConversionCurves, APairThatIsThereKeepsItsText) {
    openWith("C-1\\DCT:PRS;C-1\\PS\\N:1;C-1\\PS1:N;C-1\\PS3-1:10;C-1\\PS4-1:1.50;");
    conversions().SetMeasurementEuPairSet("P", 1, 10, 1.5);
    EXPECT_EQ(key("P", "PS4-1"), "1.50");
    EXPECT_FALSE(document().changed);
}

}  // namespace
}  // namespace kavu::test
