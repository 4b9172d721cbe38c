#include "conversion/ConversionFields.h"
#include "conversion/EuVocabulary.h"
#include "core/ProfileFile.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

bool offers(int edition, std::string_view text) {
    const auto list = classificationList(edition);
    return std::find(list.begin(), list.end(), text) != list.end();
}

TEST(EuPages, AreEightInOrderWithTheirKeys) {
    const auto pages = euPages();
    ASSERT_EQ(pages.size(), 8U);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        EXPECT_EQ(pages[i].resource, "DataConversion" + std::to_string(i + 1));
        for (const auto& field : pages[i].fields) {
            if (field.limit > 0 && field.code != "TRD4") {
                EXPECT_EQ(field.limit, conversionLimit(field.code, 2011)) << field.code;
            }
        }
    }
    EXPECT_EQ(pages[2].title, "Limits And Sample Rate");
    EXPECT_EQ(pages[3].listFrom, 1999) << "the list of ambient values is closed before";
    EXPECT_EQ(pages[4].columns[1].limit, 16);
    EXPECT_EQ(euSheetTitle("M%d"), "Data Conversion Attributes: M%d");
}

TEST(Classification, In1996HasAnOtherOfItsOwn) {
    EXPECT_TRUE(offers(1996, "OTH  - Other"));
    EXPECT_TRUE(offers(1996, "OTHR - Other (TM)"));
    EXPECT_TRUE(offers(1996, "OTHB - Other (TM & EU)"));
    EXPECT_FALSE(offers(1996, "O    - Other"));
    EXPECT_TRUE(offers(1999, "O    - Other"));
    EXPECT_TRUE(offers(2011, "OB   - Other (TM & EU)"));
    EXPECT_FALSE(offers(2011, "OTHE - Other (EU)"));
    EXPECT_EQ(classificationList(1996).size(), 20U);
    EXPECT_EQ(classificationList(2011).size(), 20U);
}

TEST(Classification, StoresWhatStandsInFrontOfTheFirstBlank) {
    for (const int edition : {1996, 1999, 2011}) {
        const auto list = classificationList(edition);
        for (std::size_t i = 0; i < list.size(); ++i) {
            const auto stored = storedClassification(list[i]);
            EXPECT_LE(stored.size(), static_cast<std::size_t>(conversionLimit("TRD4", edition)));
            EXPECT_EQ(classificationIndex(list, stored), static_cast<int>(i)) << stored;
        }
        EXPECT_EQ(classificationIndex(list, "XX"), -1);
        EXPECT_EQ(classificationIndex(list, ""), -1);
    }
}

TEST(DetailWindow, IsThatOfTheType) {
    EXPECT_EQ(detailWindow("PRS", 2011, false)->resource, "PairSets");
    EXPECT_EQ(detailWindow("PRS", 2011, true)->resource, "PairSetsPlot");
    EXPECT_EQ(detailWindow("COE", 1996, true)->resource, "coefficients");
    EXPECT_EQ(detailWindow("VOI", 2011, false)->resource, "DigitalVoice");
    EXPECT_EQ(detailWindow("ptm", 2011, false)->resource, "TimePCM");
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
    EXPECT_EQ(window->resource, "coefficients");
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
    EXPECT_EQ(linkTypeList().size(), 4U);
    EXPECT_EQ(busTimeChoices()[0].text, "Response Time");
    EXPECT_EQ(pcmTimeChoices().size(), 3U);
    EXPECT_EQ(algorithmChoices()[1].text, "Name Of Algorithm");
    EXPECT_EQ(voiceEncodings()[0].value, "OTHR");
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
