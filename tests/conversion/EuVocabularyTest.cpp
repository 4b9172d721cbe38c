#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/EuVocabulary.h"
#include "core/files/ProfileFile.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

bool offers(int edition, std::string_view text) {
    const auto list = choicesOf(euField("TRD4"), edition);
    return std::any_of(list.begin(), list.end(),
                       [&](const Choice& choice) { return choice.text == text; });
}

void expectLimit(const Field& field) {
    // The classification is longer in 106-96, and the count of bits is no count of a list.
    if (field.limit > 0 && field.code != "TRD4" && !field.code.starts_with("BWT") &&
        !field.code.starts_with("NPC") && field.code != "DPNO") {
        EXPECT_EQ(field.limit, static_cast<std::size_t>(conversionLimit(field.code, 2011)))
            << field.code;
    }
}

TEST(EuPages, AreEightInOrderWithTheirKeys) {
    const auto pages = euPages();
    ASSERT_EQ(pages.size(), 8U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_EQ(pages[i].resource, "DataConversion" + std::to_string(i + 1));
        for (const auto& field : pages[i].fields) {
            expectLimit(field);
        }
        if (pages[i].list != nullptr) {
            for (const auto& column : pages[i].list->columns) {
                expectLimit(column);
            }
        }
    }
    EXPECT_EQ(pages[2].title, "Limits And Sample Rate");
    EXPECT_FALSE(pages[3].list->isIn(1998)) << "the list of ambient values is closed before";
    EXPECT_TRUE(pages[3].list->isIn(1999));
    EXPECT_EQ(pages[4].list->columns[1].limit, 16U);
    EXPECT_EQ(euSheetTitle("M%d"), "Data Conversion Attributes: M%d");
}

TEST(EuPages, HaveEachCodeOnce) {
    std::set<std::string_view> codes;
    for (const auto& page : euPages()) {
        for (const auto& field : page.fields) {
            EXPECT_TRUE(codes.insert(field.code).second) << field.code;
            EXPECT_EQ(&euField(field.code), &field);
        }
    }
    EXPECT_EQ(euField("DPA").label, "Algorithm:") << "also of a detail window";
    EXPECT_TRUE(euField("XX").code.empty());
}

TEST(EuPages, FieldsAreKnownFromTheirEditionOn) {
    const std::tuple<const char*, int, int> gates[] = {{"FPF", 1999, 2000},
                                                       {"CRT", 2001, 2004},
                                                       {"MOT5", 1996, 1999},
                                                       {"DPA", 1996, 1999},
                                                       {"DPAT", 2007, 2009}};
    for (const auto& [code, before, from] : gates) {
        EXPECT_FALSE(isKnownIn(before, euField(code))) << code;
        EXPECT_TRUE(isKnownIn(from, euField(code))) << code;
    }
    EXPECT_FALSE(bitWeightList().isIn(2005));
    EXPECT_TRUE(bitWeightList().isIn(2007));
}

TEST(EuPages, BinaryFormatsAndTypesAreThoseOfTheRecord) {
    for (const int edition : {1996, 1999, 2000, 2005, 2007, 2011}) {
        std::vector<std::string_view> formats;
        for (const auto& choice : choicesOf(euField("BFM"), edition)) {
            formats.push_back(choice.text);
            EXPECT_EQ(choice.value, choice.text.substr(0, 3));
        }
        EXPECT_EQ(formats, ConversionStore::binaryFormatList(edition)) << edition;
        std::vector<std::string_view> types;
        for (const auto& choice : choicesOf(euField("DCT"), edition)) {
            types.push_back(choice.text);
            EXPECT_EQ(choice.value, storedType(choice.text));
        }
        EXPECT_EQ(types, ConversionStore::conversionTypeList(edition)) << edition;
    }
}

TEST(Classification, In1996HasAnOtherOfItsOwn) {
    EXPECT_TRUE(offers(1996, "OTH  - Other"));
    EXPECT_TRUE(offers(1996, "OTHR - Other (TM)"));
    EXPECT_TRUE(offers(1996, "OTHB - Other (TM & EU)"));
    EXPECT_FALSE(offers(1996, "O    - Other"));
    EXPECT_TRUE(offers(1999, "O    - Other"));
    EXPECT_TRUE(offers(2011, "OB   - Other (TM & EU)"));
    EXPECT_FALSE(offers(2011, "OTHE - Other (EU)"));
    EXPECT_EQ(choicesOf(euField("TRD4"), 1996).size(), 20U);
    EXPECT_EQ(choicesOf(euField("TRD4"), 2011).size(), 20U);
}

TEST(Classification, StoresWhatStandsInFrontOfTheFirstBlank) {
    for (const int edition : {1996, 1999, 2011}) {
        const auto list = choicesOf(euField("TRD4"), edition);
        for (std::size_t i = 0; i < list.size(); ++i) {
            EXPECT_EQ(list[i].value, storedClassification(list[i].text));
            EXPECT_LE(list[i].value.size(),
                      static_cast<std::size_t>(conversionLimit("TRD4", edition)));
            EXPECT_EQ(choiceIndex(list, list[i].value), static_cast<int>(i)) << list[i].value;
        }
        EXPECT_EQ(choiceIndex(list, "XX"), -1);
        EXPECT_EQ(choiceIndex(list, ""), -1);
    }
}

TEST(DetailWindow, IsThatOfTheType) {
    EXPECT_STREQ(detailWindow("PRS", 2011, false)->resource, "PairSets");
    EXPECT_STREQ(detailWindow("PRS", 2011, true)->resource, "PairSetsPlot");
    EXPECT_STREQ(detailWindow("COE", 1996, true)->resource, "coefficients");
    EXPECT_STREQ(detailWindow("VOI", 2011, false)->resource, "DigitalVoice");
    EXPECT_STREQ(detailWindow("ptm", 2011, false)->resource, "TimePCM");
}

TEST(DetailWindow, SpecialProcessingAndNoneHaveNone) {
    EXPECT_FALSE(detailWindow("SP", 2011, true));
    EXPECT_FALSE(detailWindow("SP ", 2011, true));
    EXPECT_FALSE(detailWindow("NON", 2011, true));
    EXPECT_FALSE(detailWindow("", 2011, true));
}

TEST(DetailWindow, NegativePowersAreShownFrom2007On) {
    EXPECT_FALSE(detailWindow("NPC", 2005, false));
    const auto window = detailWindow("NPC", 2007, false);
    ASSERT_TRUE(window);
    EXPECT_STREQ(window->resource, "coefficients");
    EXPECT_EQ(window->title, "Coefficients (Negative Powers Of X)");
}

TEST(ConversionTypeText, IsTheOneOfTheEdition) {
    EXPECT_EQ(typeText("PRS", 2011), "PRS - Pair Set");
    EXPECT_EQ(typeText("SP ", 2011), "SP  - Special Processing");
    EXPECT_EQ(typeText("NPC", 2005), "NPC");
    EXPECT_EQ(typeText("XYZ", 2011), "XYZ");
    EXPECT_EQ(typeText("", 2011), "");
    EXPECT_EQ(storedType("SP  - Special Processing"), "SP");
    EXPECT_EQ(storedType("NPC - Coefficients (Negative Powers of X)"), "NPC");
}

TEST(ConversionTypeText, In1996VoiceAndVideoAreStoredAsNone) {
    EXPECT_EQ(storedType("VOI - Voice", 1996), "NON");
    EXPECT_EQ(storedType("VID - Video", 1996), "NON");
    EXPECT_EQ(storedType("VOI - Voice", 1999), "VOI");
    EXPECT_EQ(storedType("COE - Coefficients", 1996), "COE");
    ProfileFile file("");
    file.setValue("M", "DCT", "NON");
    EXPECT_EQ(shownType(file, "M", 1996), "NON");
    file.setValue("M", "VID\\D", "camera");
    EXPECT_EQ(shownType(file, "M", 1996), "VID");
    EXPECT_EQ(shownType(file, "M", 1999), "NON");
    file.setValue("M", "VOI\\E", "CVSD");
    EXPECT_EQ(shownType(file, "M", 1996), "VOI");
}

TEST(EuChoices, StoreTheirCodes) {
    EXPECT_EQ(floatingPointFormats().size(), 11U);
    EXPECT_EQ(floatingPointFormats()[3].code, "1750A_48");
    const auto choices = [](const char* code) { return euField(code).choices; };
    ASSERT_EQ(choices("MN4").size(), 4U);
    EXPECT_EQ(choices("MN4")[0].text, "ANAlog");
    EXPECT_EQ(choices("MN4")[3].text, "OTHer");
    EXPECT_EQ(choices("BTM")[0].text, "Response Time");
    EXPECT_EQ(choices("PTM").size(), 3U);
    EXPECT_EQ(choices("DPAT")[1].text, "Name Of Algorithm");
    EXPECT_EQ(choices("VOI\\E")[0].value, "OTHR");
    EXPECT_EQ(choices("VOI\\E")[1].value, "CVSD");
    EXPECT_EQ(detailButtonText(false), "Show Conversion Details");
    EXPECT_EQ(detailButtonText(true), "Hide Conversion Details");
    EXPECT_EQ(coefficientTerm(3), "C(3)");
    EXPECT_EQ(coefficientPrompt(3), "Enter Coefficient 'C(3)'");
}

TEST(BitWeight, IsANumberOrTheSignBit) {
    for (const char* const good : {"S", "s", "1", "-0.5", "1e3"}) {
        EXPECT_TRUE(isBitWeight(good)) << good;
    }
    for (const char* const bad : {"", "SS", "x", "nan", "inf", "1 2"}) {
        EXPECT_FALSE(isBitWeight(bad)) << bad;
    }
}

}  // namespace
}  // namespace kavu
