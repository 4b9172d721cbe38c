#include "conversion/ConversionFields.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(ConversionLimits, TheTableHoldsItsRowsInTheOddOrder) {
    const auto rows = conversionLimits();
    ASSERT_EQ(rows.size(), 63U);
    EXPECT_EQ(rows[0].code, "BFM");
    EXPECT_EQ(rows[17].code, "DP\\N");
    EXPECT_EQ(rows[18].code, "DPNO");
    EXPECT_EQ(rows[19].code, "DPTM");
    EXPECT_EQ(rows[31].code, "MN3");
    EXPECT_EQ(rows[62].code, "VOI\\E");
    // Only those two stand out of byte order.
    std::vector<std::string_view> codes;
    for (const auto& row : rows) {
        if (row.code != "DP\\N" && row.code != "DPNO") {
            codes.push_back(row.code);
        }
    }
    EXPECT_TRUE(std::is_sorted(codes.begin(), codes.end()));
}

TEST(ConversionLimits, EveryRowIsFoundButTheTwoOutOfOrder) {
    for (const auto& row : conversionLimits()) {
        const bool missed = row.code == "DP\\N" || row.code == "DPNO";
        for (const int edition : kEditions) {
            const int stated = edition == 1996 && row.limit1996 >= 0 ? row.limit1996 : row.limit;
            EXPECT_EQ(conversionLimit(row.code, edition), missed ? 0 : stated)
                << row.code << " " << edition;
        }
    }
}

TEST(ConversionLimits, ListIndicesAreCutOff) {
    EXPECT_EQ(conversionLimit("MC1-2", 2011), 32);
    EXPECT_EQ(conversionLimit("MC2-2-3", 2011), 16);
    EXPECT_EQ(conversionLimit("CO-9", 2011), 32);
    EXPECT_EQ(conversionLimit("DICC-1", 2011), 16);
}

TEST(ConversionLimits, EditionsDiffer) {
    EXPECT_EQ(conversionLimit("TRD4", 1996), 4);
    EXPECT_EQ(conversionLimit("TRD4", 1999), 2);
    EXPECT_EQ(conversionLimit("VOI\\E", 1996), 64);
    EXPECT_EQ(conversionLimit("VOI\\E", 2011), 4);
}

TEST(ConversionLimits, OtherCodesHaveNone) {
    for (const std::string_view code : {"", "XYZ", "NPC", "BWT\\N", "mc1", "-1", "DPN"}) {
        EXPECT_EQ(conversionLimit(code, 2011), 0) << code;
    }
}

TEST(ConversionTypes, AreComparedByThreeCharactersWithoutCase) {
    EXPECT_EQ(typeConversionFields("oth", 2011).front().code, "OTH");
    EXPECT_EQ(typeConversionFields("OTHER", 2011).front().code, "OTH");
    EXPECT_EQ(typeConversionFields("OT", 2011).front().code, "VOI\\E");
    EXPECT_EQ(typeConversionFields("", 2011).front().code, "VOI\\E");
    EXPECT_EQ(typeConversionFields("NPC", 2007).front().code, "NPC\\N");
    EXPECT_EQ(typeConversionFields("NPC", 2005).front().code, "VOI\\E");
}

}  // namespace
}  // namespace kavu
