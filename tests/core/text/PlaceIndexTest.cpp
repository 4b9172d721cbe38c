#include "core/text/PlaceIndex.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

/// Texts with an index, as a list of members is kept.
struct ListedTexts {
    std::vector<std::string> texts;
    PlaceIndex index;

    void add(const std::string& text) {
        index.add(textHash(text), texts.size());
        texts.push_back(text);
    }
    [[nodiscard]] std::size_t find(const std::string& text) const {
        return index.find(textHash(text), [&](std::size_t place) { return texts[place] == text; });
    }
};

TEST(PlaceIndex, EveryTextIsFoundAtItsPlaceHoweverManyThereAre) {
    ListedTexts texts;
    EXPECT_TRUE(texts.index.empty());
    EXPECT_EQ(texts.find("PS3-1"), PlaceIndex::kNone);
    constexpr std::size_t kCount = 5000;
    for (std::size_t i = 0; i < kCount; ++i) {
        texts.add("PS3-" + std::to_string(i));
    }
    for (std::size_t i = 0; i < kCount; ++i) {
        EXPECT_EQ(texts.find("PS3-" + std::to_string(i)), i);
    }
    EXPECT_EQ(texts.find("PS4-1"), PlaceIndex::kNone);
    texts.index.clear();
    EXPECT_TRUE(texts.index.empty());
    EXPECT_EQ(texts.find("PS3-1"), PlaceIndex::kNone);
}

TEST(PlaceIndex, TextsOfOneHashAreToldApart) {
    const std::vector<std::string> texts{"A", "B", "C"};
    PlaceIndex index;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        index.add(7, i);
    }
    const auto find = [&](const std::string& text) {
        return index.find(7, [&](std::size_t place) { return texts[place] == text; });
    };
    EXPECT_EQ(find("A"), 0U);
    EXPECT_EQ(find("C"), 2U);
    EXPECT_EQ(find("D"), PlaceIndex::kNone);
}

TEST(PlaceIndex, AFoldedHashIsThatOfEveryCase) {
    EXPECT_EQ(foldedHash("Ps3-1"), foldedHash("pS3-1"));
    EXPECT_NE(foldedHash("PS3-1"), foldedHash("PS3-2"));
    const std::string longer(100, 'a');
    EXPECT_EQ(foldedHash(longer), foldedHash(std::string(100, 'A')));
    EXPECT_EQ(foldedHash(""), textHash(""));
}

}  // namespace
}  // namespace kavu
