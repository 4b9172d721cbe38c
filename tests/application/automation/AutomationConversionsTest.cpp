#include "MeasurementStage.h"
#include "application/automation/AutomationConversions.h"
#include "core/document/BuildDocument.h"
#include "core/document/Transaction.h"

namespace kavu::test {
namespace {

using ::testing::HasSubstr;

/// "P" is in the stream, and has a record.
const char kRecord[] =
    "C-1\\DCN:P;C-1\\MN1:First line;C-1\\MN3:kPa;C-1\\BFM:UNS;C-1\\MOT1:100;C-1\\MOT2:0;"
    "C-1\\MOT3:90;C-1\\MOT4:10;C-1\\MOT5:80;C-1\\MOT6:20;C-1\\SR:31.25;C-1\\DCT:NON;";

class AutomationConversionsTest : public MeasurementStage {
  protected:
    void openWith(const std::string& records = kRecord, const std::string& edition = "09") {
        if (document().open) {
            documents->CloseTmatsFile(0, false);  // a changed one would refuse another
        }
        open(documentWith({{"MN@:P", "LT@:MF", "MF@:2"}, {"MN@:Q", "LT@:MF", "MF@:3"}}, records,
                          edition));
        if (edition == "96") {
            document().version = 1996;  // its documents do not name an edition
        }
        // What a load has read is in its files once a record is asked for.
        EXPECT_TRUE(store().writeOut().ok());
    }
    std::string saved() {
        EXPECT_TRUE(saveDocumentTo(test.application.context(), &test.ui, test.folder / "out.tma"));
        return readFile(test.folder / "out.tma");
    }
};

struct TextMethods {
    std::string code;
    std::string (AutomationConversions::*get)(const std::string&);
    void (AutomationConversions::*set)(const std::string&, const std::string&);
    std::string held;
    std::string other;
};

const std::vector<TextMethods>& textMethods() {
    using C = AutomationConversions;
    static const std::vector<TextMethods> all = {
        {"MN1", &C::GetMeasurementEuDescription, &C::SetMeasurementEuDescription, "First line",
         "Another text"},
        {"MN3", &C::GetMeasurementEuUnits, &C::SetMeasurementEuUnits, "kPa", "psi"},
        {"MOT1", &C::GetMeasurementEuHiValue, &C::SetMeasurementEuHiValue, "100", "200.5"},
        {"MOT2", &C::GetMeasurementEuLowValue, &C::SetMeasurementEuLowValue, "0", "-1e3"},
        {"MOT3", &C::GetMeasurementEuHiLimit, &C::SetMeasurementEuHiLimit, "90", "95"},
        {"MOT4", &C::GetMeasurementEuLowLimit, &C::SetMeasurementEuLowLimit, "10", "5"},
        {"MOT5", &C::GetMeasurementEuHiWarning, &C::SetMeasurementEuHiWarning, "80", "85"},
        {"MOT6", &C::GetMeasurementEuLowWarning, &C::SetMeasurementEuLowWarning, "20", "15"},
        {"SR", &C::GetMeasurementEuSampleRate, &C::SetMeasurementEuSampleRate, "31.25", "62.5"},
        {"BFM", &C::GetMeasurementEuBinaryFormat, &C::SetMeasurementEuBinaryFormat, "UNS", "TWO"},
        {"DCT", &C::GetMeasurementEuConversionType, &C::SetMeasurementEuConversionType, "NON",
         "COE"}};
    return all;
}

TEST_F(AutomationConversionsTest, EveryMethodNeedsADocumentButNoFormat) {
    auto c = conversions();
    const std::vector<std::function<void()>> calls = {
        [&] { c.ShowMeasurementEuDialog(0, "P"); },
        [&] { (void)c.GetMeasurementEuCoefficientOrderOfFit("P"); },
        [&] { (void)c.GetMeasurementEuCoefficient("P", 0); },
        [&] { c.SetMeasurementEuCoefficient("P", 0, 1); },
        [&] { (void)c.GetMeasurementEuPairSetNumberOfPairs("P"); },
        [&] { (void)c.GetMeasurementEuPairSet("P", 1); },
        [&] { c.SetMeasurementEuPairSet("P", 1, 1, 1); }};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(errorOf(calls[i]), "NoDocument") << i;
    }
    for (const auto& each : textMethods()) {
        EXPECT_EQ(errorOf([&] { (void)(c.*each.get)("P"); }), "NoDocument") << each.code;
        EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "1"); }), "NoDocument") << each.code;
    }
    openWith();
    for (const auto& each : textMethods()) {
        EXPECT_EQ((c.*each.get)("P"), each.held) << each.code;
    }
}

TEST_F(AutomationConversionsTest, AChangeIsInTheDocumentAtOnceAsOneOperation) {
    auto c = conversions();
    for (const auto& each : textMethods()) {
        openWith();
        ASSERT_FALSE(document().changed) << each.code;
        (c.*each.set)("P", each.other);
        EXPECT_EQ((c.*each.get)("P"), each.other) << each.code;
        EXPECT_EQ(key("P", each.code), each.other);
        EXPECT_TRUE(document().changed);
        EXPECT_EQ(key("P", "Chg"), "1");
        auto& history = test.application.context().history;
        ASSERT_TRUE(history.undo(nullptr)) << each.code;
        EXPECT_FALSE(history.canUndo()) << "one operation";
        EXPECT_EQ(key("P", each.code), each.held);
        EXPECT_FALSE(document().changed);
    }
}

TEST_F(AutomationConversionsTest, AGetWithoutARecordIsNotFoundAndMakesNone) {
    openWith();
    auto c = conversions();
    for (const auto& each : textMethods()) {
        EXPECT_EQ(errorOf([&] { (void)(c.*each.get)("Q"); }), "NotFound") << each.code;
    }
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuCoefficient("Q", 0); }), "NotFound");
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuCoefficientOrderOfFit("Q"); }), "NotFound");
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuPairSet("Q", 1); }), "NotFound");
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuPairSetNumberOfPairs("Q"); }), "NotFound");
    EXPECT_FALSE(store().locateDefinition("Q").found);
}

TEST_F(AutomationConversionsTest, ASetMakesTheDefaultRecordOfAMeasurement) {
    openWith();
    test.application.context().settings.write("CMN4", "PCM");
    conversions().SetMeasurementEuUnits("q", "V");
    ASSERT_TRUE(hasRecord("Q")) << "spelled as the measurement is";
    EXPECT_EQ(key("Q", "MN3"), "V");
    EXPECT_EQ(key("Q", "MN4"), "PCM");
    EXPECT_EQ(key("Q", "Chg"), "1");
    EXPECT_EQ(key("Q", "EuTemplate"), "");
}

TEST_F(AutomationConversionsTest, ASetOnNoMeasurementIsNotFound) {
    openWith();
    auto c = conversions();
    for (const auto& each : textMethods()) {
        EXPECT_EQ(errorOf([&] { (c.*each.set)("X", "?"); }), "NotFound") << each.code;
        EXPECT_EQ(errorOf([&] { (c.*each.set)("", "?"); }), "NotFound") << each.code;
    }
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuCoefficient("X", 99, 1); }), "NotFound");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuPairSet("X", 0, 1, 1); }), "NotFound");
    EXPECT_EQ(errorOf([&] { c.ShowMeasurementEuDialog(0, "X"); }), "NotFound");
}

TEST_F(AutomationConversionsTest, AMeasurementOfTheLoadedFormatCanHaveARecordBeforeItIsSaved) {
    load();
    EXPECT_EQ(errorOf([&] { conversions().SetMeasurementEuUnits("NEW", "V"); }), "NotFound");
    create(3, 1, "New");
    conversions().SetMeasurementEuUnits("NEW", "V");
    EXPECT_TRUE(hasRecord("New"));
}

TEST_F(AutomationConversionsTest, RecordsAreFoundInAnyCaseTheExactOneFirst) {
    openWith("C-1\\DCN:p;C-1\\MN3:lower;C-1\\DCT:NON;C-2\\DCN:P;C-2\\MN3:upper;C-2\\DCT:NON;");
    auto c = conversions();
    if (hasRecord("p") && hasRecord("P")) {
        EXPECT_EQ(c.GetMeasurementEuUnits("p"), "lower");
        EXPECT_EQ(c.GetMeasurementEuUnits("P"), "upper");
    } else {
        EXPECT_EQ(c.GetMeasurementEuUnits("P"), c.GetMeasurementEuUnits("p"));
    }
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuUnits("PP"); }), "NotFound");
}

TEST_F(AutomationConversionsTest, ASetDropsTheMarkOfATemplate) {
    openWith();
    {
        Transaction operation(test.application.context(), "Creation");
        ASSERT_TRUE(store().createDefaultDefinition(nullptr, "Q", true));
        ASSERT_TRUE(operation.commit().ok());
    }
    test.application.context().settings.write("CDCT", "NON");
    ASSERT_EQ(key("Q", "EuTemplate"), "1");
    conversions().SetMeasurementEuConversionType("Q", "NON");
    EXPECT_EQ(key("Q", "EuTemplate"), "");
    EXPECT_EQ(key("Q", "Chg"), "1");
}

TEST_F(AutomationConversionsTest, AnotherUndoLevelBelongsToTheStreamThatIsLoaded) {
    load(documentWith({{"MN@:P", "LT@:MF", "MF@:2"}}, kRecord));
    conversions().SetMeasurementEuUnits("P", "psi");
    EXPECT_FALSE(format().changed) << "the format is as it was";
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementName("P", ""); }), "Refused 326");
    EXPECT_EQ(errorOf([&] { measurements().SetMeasurementBitMask("P", "x"); }), "Refused 142");
    EXPECT_EQ(key("P", "MN3"), "psi") << "a refused call takes back only itself";
    measurements().SetMeasurementParity("P", "EV");
    EXPECT_EQ(key("P", "MN3"), "psi");
}

TEST_F(AutomationConversionsTest, SettingAThingToItselfLeavesTheDocumentUnchanged) {
    openWith();
    auto c = conversions();
    for (const auto& each : textMethods()) {
        (c.*each.set)("P", each.held);
        EXPECT_FALSE(document().changed) << each.code;
        EXPECT_FALSE(test.application.context().history.canUndo()) << each.code;
        EXPECT_EQ((c.*each.get)("P"), each.held);
    }
    EXPECT_EQ(key("P", "Chg"), "1") << "but the record counts as edited";
}

TEST_F(AutomationConversionsTest, TextsKeepToTheirFields) {
    openWith();
    auto c = conversions();
    for (const auto& each : textMethods()) {
        EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "a\tb"); }), "BadValue") << each.code;
        if (each.code != "BFM" && each.code != "DCT") {
            EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "1;2"); }), "Refused 402") << each.code;
        }
        if (each.code.starts_with("MOT")) {
            EXPECT_EQ(errorOf([&] { (c.*each.set)("P", std::string(33, '1')); }), "BadValue");
            EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "high"); }), "BadValue") << each.code;
            EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "inf"); }), "BadValue") << each.code;
            EXPECT_EQ(errorOf([&] { (c.*each.set)("P", "1\n2"); }), "BadValue") << each.code;
        }
    }
    (c.*textMethods()[2].set)("P", "");
    EXPECT_EQ(c.GetMeasurementEuHiValue("P"), "") << "an empty text removes the field";
}

TEST_F(AutomationConversionsTest, ALowLimitIsBelowItsHighOne) {
    openWith();
    auto c = conversions();
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuLowValue("P", "100"); }), "Refused 0");
    EXPECT_THAT(text, HasSubstr("Value Low must be below Value High"));
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuHiLimit("P", "10"); }), "Refused 0");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuHiWarning("P", "1"); }), "Refused 0");
}

TEST_F(AutomationConversionsTest, ADescriptionHasRealLineBreaks) {
    openWith();
    auto c = conversions();
    c.SetMeasurementEuDescription("P", "one\ntwo\r\nthree");
    EXPECT_EQ(c.GetMeasurementEuDescription("P"), "one\ntwo\r\nthree");
    EXPECT_EQ(key("P", "MN1"), "one\x15two\x14\x15three") << "as the store keeps them";
    EXPECT_THAT(saved(), HasSubstr("MN1:one\ntwo\r\nthree;"));
}

TEST_F(AutomationConversionsTest, TextsOfWindows1252StayInTheirEncoding) {
    openWith(
        "C-1\\DCN:Dr\xFC"
        "ck;C-1\\MN1:\xD6l;C-1\\MN3:\xB0"
        "C;C-1\\DCT:NON;");
    auto c = conversions();
    EXPECT_EQ(c.GetMeasurementEuDescription("Drück"), "Öl");
    EXPECT_EQ(c.GetMeasurementEuUnits("DRück"), "°C");
    c.SetMeasurementEuDescription("Drück", "Ölstände");
    EXPECT_EQ(key("Dr\xFC"
                  "ck",
                  "MN1"),
              "\xD6lst\xE4nde");
    EXPECT_EQ(c.GetMeasurementEuDescription("Drück"), "Ölstände");
}

TEST_F(AutomationConversionsTest, FormatsAndTypesAreThoseOfTheEditionInAnyCase) {
    openWith();
    auto c = conversions();
    c.SetMeasurementEuBinaryFormat("P", "bwt");
    EXPECT_EQ(c.GetMeasurementEuBinaryFormat("P"), "BWT");
    c.SetMeasurementEuConversionType("P", "npc");
    EXPECT_EQ(c.GetMeasurementEuConversionType("P"), "NPC");
    c.SetMeasurementEuConversionType("P", "sp");
    EXPECT_EQ(c.GetMeasurementEuConversionType("P"), "SP");
    for (const auto* const wrong : {"", "X", "INTeger", "NON - None"}) {
        EXPECT_EQ(errorOf([&] { c.SetMeasurementEuBinaryFormat("P", wrong); }), "BadValue");
        EXPECT_EQ(errorOf([&] { c.SetMeasurementEuConversionType("P", wrong); }), "BadValue");
    }
    openWith(kRecord, "05");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuBinaryFormat("P", "BWT"); }), "BadValue");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuConversionType("P", "NPC"); }), "BadValue");
    c.SetMeasurementEuBinaryFormat("P", "SIM");
    openWith(kRecord, "99");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuBinaryFormat("P", "SIM"); }), "BadValue");
    openWith(kRecord, "96");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuBinaryFormat("P", "FPT"); }), "BadValue");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuConversionType("P", "PTM"); }), "BadValue");
}

TEST_F(AutomationConversionsTest, AChangeOfTheFormatSetsTheDateOfRelease) {
    openWith();
    conversions().SetMeasurementEuUnits("P", "psi");
    EXPECT_EQ(key("P", "CRT"), "") << "units are of another page";
    conversions().SetMeasurementEuBinaryFormat("P", "TWO");
    EXPECT_EQ(key("P", "CRT"), "01-02-2026-03-04-05");
}

TEST_F(AutomationConversionsTest, WarningsAreNotInTheFirstEdition) {
    openWith(kRecord, "96");
    auto c = conversions();
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuHiWarning("P"); }), "NotInEdition");
    EXPECT_EQ(errorOf([&] { (void)c.GetMeasurementEuLowWarning("P"); }), "NotInEdition");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuHiWarning("P", "x"); }), "NotInEdition");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuLowWarning("P", "1"); }), "NotInEdition");
    EXPECT_EQ(errorOf([&] { c.SetMeasurementEuLowWarning("X", "1"); }), "NotFound");
    EXPECT_EQ(c.GetMeasurementEuHiLimit("P"), "90");
}

TEST_F(AutomationConversionsTest, ASampleRateIsTrimmedWhereRatesAreKept) {
    openWith();
    conversions().SetMeasurementEuSampleRate("P", "12.500000");
    EXPECT_EQ(conversions().GetMeasurementEuSampleRate("P"), "12.500000");
    test.application.context().settings.write("ChkSR", "1");
    conversions().SetMeasurementEuSampleRate("P", "13.500000");
    EXPECT_EQ(conversions().GetMeasurementEuSampleRate("P"), "13.5");
}

TEST_F(AutomationConversionsTest, TheDialogNeedsADisplayAfterItsName) {
    openWith();
    EXPECT_EQ(errorOf([&] { conversions().ShowMeasurementEuDialog(0, "X"); }), "NotFound");
    EXPECT_EQ(errorOf([&] { conversions().ShowMeasurementEuDialog(0, "p"); }), "NoDisplay");
    reach(&windows);
    conversions().ShowMeasurementEuDialog(kWindow, "p");
    EXPECT_THAT(windows.opened, ::testing::ElementsAre("conversion P"));
    windows.answer = false;
    EXPECT_EQ(errorOf([&] { conversions().ShowMeasurementEuDialog(0, "Q"); }), "Cancelled");
}

}  // namespace
}  // namespace kavu::test
