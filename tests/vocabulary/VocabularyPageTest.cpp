#include "vocabulary/VocabularyPage.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::string lineOf(const std::string& page, const std::string& start) {
    const auto at = page.find("\n" + start);
    return at == std::string::npos ? std::string()
                                   : page.substr(at + 1, page.find('\n', at + 1) - at - 1);
}

std::string pageOf(char letter) {
    return vocabularyPage(*findVocabulary(letter));
}

TEST(VocabularyPage, HasARowForEachFieldInTheOrderOfTheTable) {
    for (const auto& vocabulary : vocabularies()) {
        const auto page = vocabularyPage(vocabulary);
        std::size_t at = 0;
        for (const auto& field : vocabulary.fields) {
            at = page.find("\n| `" + std::string(field.code) + "` |", at);
            ASSERT_NE(at, std::string::npos) << vocabulary.letter << " " << field.code;
            ++at;
        }
        EXPECT_EQ(static_cast<std::size_t>(std::count(page.begin(), page.end(), '\n')),
                  vocabulary.fields.size() + 6);
    }
}

TEST(VocabularyPage, TellsLimitsChoicesAndElements) {
    const auto page = pageOf('T');
    EXPECT_EQ(lineOf(page, "| `RF1`"),
              "| `RF1` | Frequency | RF1 | text | 6 | all |  | `SourceRFAttributes/Frequency` |");
    EXPECT_NE(lineOf(page, "| `RF4`").find("| 8; 5 in 1996; 4 in 1999 |"), std::string::npos);
    EXPECT_NE(lineOf(page, "| `RF4`").find("`FQPSK-B` (from 2000); `FQPSK-JR` (XML only)"),
              std::string::npos);
    EXPECT_NE(lineOf(page, "| `SCO\\N`").find("| 99 rows |"), std::string::npos);
    EXPECT_NE(lineOf(pageOf('G'), "| `RN`").find("| Revision: Number |"), std::string::npos);
    EXPECT_NE(lineOf(pageOf('G'), "| `POC4-n`").find("| Phone (the page reads `POC42-n`) |"),
              std::string::npos);
}

TEST(VocabularyPage, HasAFileNameOfItsOwn) {
    EXPECT_EQ(vocabularyPageName('T'), "group-t.md");
}

}  // namespace
}  // namespace kavu
