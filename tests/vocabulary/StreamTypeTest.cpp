#include "vocabulary/FieldRules.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/StreamType.h"

#include <string>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(StreamType, IsFoundByWhatIsStoredInItsSpelling) {
    for (const auto& type : kStreamTypes) {
        EXPECT_EQ(findStreamType(type.stored)->text, type.text);
    }
    for (const char* stored : {"", "one", "ONE ", "1553A", "PCM"}) {
        EXPECT_EQ(findStreamType(stored), nullptr) << stored;
    }
}

TEST(StreamType, TellsTheGroupOfItsMeasurements) {
    std::string letters;
    for (const char* stored : {"ONE", "TWO", "1553", "ALTD", "PKTM", "OTHR", "BUS", "", "XYZ"}) {
        letters += dataLetterOf(stored);
    }
    EXPECT_EQ(letters, "DDBDSDDDD");
}

TEST(StreamType, IsOfferedFromItsFirstEditionOn) {
    const auto offered = [](int edition) {
        std::string all;
        for (const auto& choice : choicesOf(p::kTf, edition)) {
            all += std::string(choice.value) + " ";
        }
        return all;
    };
    EXPECT_EQ(offered(2001), "ONE ");
    EXPECT_EQ(offered(2004), "ONE TWO 1553 BUS ALTD ");
    EXPECT_EQ(offered(2005), "ONE TWO 1553 BUS ALTD PKTM OTHR ");
    EXPECT_EQ(offered(2011), "ONE TWO 1553 BUS ALTD ");
}

}  // namespace
}  // namespace kavu
