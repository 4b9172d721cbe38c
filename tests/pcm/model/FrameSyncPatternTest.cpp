#include "pcm/PcmFormat.h"
#include "pcm/model/FrameSyncPattern.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(FrameSyncPattern, BothFormsOfARecommendedPatternAreTheSameBits) {
    for (int length = 7; length <= kMostSyncBits; ++length) {
        const auto binary = withoutBlanks(recommendedPattern(length, false));
        const auto hex = withoutBlanks(recommendedPattern(length, true));
        ASSERT_EQ(binary.size(), static_cast<std::size_t>(length));
        const auto bits = hexToBinary(hex);
        EXPECT_EQ(bits.substr(bits.size() - binary.size()), binary) << length;
        EXPECT_EQ(bits.substr(0, bits.size() - binary.size()).find('1'), std::string::npos);
        EXPECT_EQ(binaryToHex(binary), hex) << length;
        EXPECT_EQ(countPatternBits(recommendedPattern(length, true), true), length);
        EXPECT_EQ(countPatternBits(recommendedPattern(length, false), false), length);
    }
    EXPECT_EQ(recommendedPattern(24, false), "111 110 101 111 001 100 100 000");
    EXPECT_EQ(recommendedPattern(24, true), "FA F320");
    EXPECT_EQ(recommendedPattern(33, true), "1 F74E 9498");
}

TEST(FrameSyncPattern, BelowSevenBitsOnesStandInBinaryAndTheLengthItselfInHex) {
    EXPECT_EQ(recommendedPattern(6, false), "111 111");
    EXPECT_EQ(recommendedPattern(4, false), "111 1");
    EXPECT_EQ(recommendedPattern(0, false), "");
    EXPECT_EQ(recommendedPattern(6, true), "6");
    EXPECT_EQ(recommendedPattern(5, true), "5");
}

TEST(FrameSyncPattern, ConvertsFourBitsAtATimeFromTheRight) {
    struct Row {
        const char* binary;
        const char* hex;
    };
    for (const auto& row : {Row{"", ""}, Row{"0", "0"}, Row{"1", "1"}, Row{"10101", "15"},
                            Row{"111110101111001100100000", "FAF320"}, Row{"00101", "05"}}) {
        EXPECT_EQ(binaryToHex(row.binary), row.hex);
    }
    EXPECT_EQ(binaryToHex("111 010"), "72") << "a blank ends a group early";
    EXPECT_EQ(hexToBinary("15"), "00010101");
    EXPECT_EQ(hexToBinary("fA"), "11111010");
}

TEST(FrameSyncPattern, CountsHexadecimalBitsWithoutTheZerosOfItsFirstDigitThatIsNotZero) {
    EXPECT_EQ(countPatternBits("15", true), 5);
    EXPECT_EQ(countPatternBits("EB90", true), 16);
    EXPECT_EQ(countPatternBits("05", true), 7);
    EXPECT_EQ(countPatternBits("FA F320", true), 24);
    EXPECT_EQ(countPatternBits("111 0", false), 4);
}

TEST(FrameSyncPattern, GroupsFromTheRight) {
    EXPECT_EQ(groupFromRight("1110101", 3), "1 110 101");
    EXPECT_EQ(groupFromRight("111010", 3), "111 010");
    EXPECT_EQ(groupFromRight("10", 3), "10");
    EXPECT_EQ(groupFromRight("", 3), "");
}

TEST(FrameSyncPattern, ASwitchToBinaryDropsTheZerosInFront) {
    EXPECT_EQ(switchPattern("15", false), "10 101");
    EXPECT_EQ(switchPattern("10 101", true), "15");
    EXPECT_EQ(switchPattern("FA F320", false), "111 110 101 111 001 100 100 000");
    EXPECT_EQ(switchPattern("111 110 101 111 001 100 100 000", true), "FA F320");
    EXPECT_EQ(switchPattern("0", false), "");
}

}  // namespace
}  // namespace kavu
