#include "conversion/EuEvaluation.h"

#include <limits>

#include <gtest/gtest.h>

namespace kavu {
namespace {

struct Record {
    Record(std::initializer_list<std::pair<const char*, const char*>> values) {
        for (const auto& [key, value] : values) {
            file.setValue("M", key, value);
        }
    }
    std::optional<EuEvaluation> evaluation(int edition = 2011) {
        return EuEvaluation::make(file, "M", edition, why);
    }
    ProfileFile file{""};
    std::string why;
};

TEST(EuEvaluation, ConvertsByCoefficients) {
    Record r({{"DCT", "COE"}, {"CO\\N", "2"}, {"CO", "1"}, {"CO-1", "2"}, {"CO-2", "0.5"}});
    const auto e = r.evaluation();
    ASSERT_TRUE(e) << r.why;
    EXPECT_EQ(e->value(4), 17);
    EXPECT_EQ(e->value(0), 1);
    EXPECT_FALSE(e->negativePowers());
    EXPECT_FALSE(e->value(1e308));
    EXPECT_FALSE(e->value(std::numeric_limits<double>::quiet_NaN()));
}

TEST(EuEvaluation, ConvertsByNegativePowersFrom2007On) {
    Record r({{"DCT", "NPC"}, {"NPC\\N", "2"}, {"NPC", "1"}, {"NPC-1", "2"}, {"NPC-2", "8"}});
    const auto e = r.evaluation(2007);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->value(2), 4);
    EXPECT_FALSE(e->value(0)) << "a negative power of 0";
    EXPECT_FALSE(r.evaluation(2005));
    EXPECT_EQ(r.why, "A conversion of type \"NPC\" is no polynomial.");
}

TEST(EuEvaluation, FitsPairsThatDefineACurve) {
    Record r({{"DCT", "PRS"},
              {"PS1", "Y"},
              {"PS2", "1"},
              {"PS\\N", "2"},
              {"PS3-1", "0"},
              {"PS4-1", "10"},
              {"PS3-2", "10"},
              {"PS4-2", "30"},
              {"CO", "99"}});
    const auto e = r.evaluation();
    ASSERT_TRUE(e) << r.why;
    EXPECT_NEAR(*e->value(5), 20, 1e-9) << "the fit, not what stands beside the pairs";
}

TEST(EuEvaluation, TellsWhyNot) {
    Record none({{"DCT", "NON"}});
    EXPECT_FALSE(none.evaluation());
    EXPECT_EQ(none.why, "It has no conversion (type \"NON\").");
    Record missing({{"MN1", "x"}});
    EXPECT_FALSE(missing.evaluation());
    Record table({{"DCT", "PRS"}, {"PS\\N", "2"}});
    EXPECT_FALSE(table.evaluation());
    EXPECT_EQ(table.why, "Its pair sets do not define a polynomial curve fit.");
    Record few({{"DCT", "PRS"}, {"PS1", "Y"}, {"PS2", "3"}, {"PS\\N", "2"}});
    EXPECT_FALSE(few.evaluation());
    EXPECT_EQ(few.why,
              "ERROR: Unable to generate coefficients from pair sets definition for 'M'.\n\tNumber "
              "of pair sets: 2 Order of fit: 3");
    Record empty({{"DCT", "COE"}, {"CO\\N", "0"}, {"CO", "1"}});
    EXPECT_FALSE(empty.evaluation());
    EXPECT_EQ(empty.why, "It has no coefficients.");
    for (const char* const type : {"DER", "DIS", "PTM", "BTM", "OTH", "SP", "VID", "VOI", "?"}) {
        Record other({{"DCT", type}});
        EXPECT_FALSE(other.evaluation());
        EXPECT_NE(other.why.find(type), std::string::npos);
    }
}

TEST(EuEvaluation, ACountFromAFileIsNotTrusted) {
    Record r({{"DCT", "COE"}, {"CO\\N", "2000000000"}, {"CO", "1"}, {"CO-1", "text"}});
    const auto e = r.evaluation();
    ASSERT_TRUE(e);
    EXPECT_EQ(e->coefficients().size(), 100U);
    EXPECT_EQ(e->value(7), 1);
    Record order({{"DCT", "PRS"}, {"PS1", "Y"}, {"PS2", "-7"}, {"PS\\N", "99"}});
    EXPECT_FALSE(order.evaluation());
}

}  // namespace
}  // namespace kavu
