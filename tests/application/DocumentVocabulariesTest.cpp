#include "application/DocumentVocabularies.h"
#include "groups/Vocabularies.h"

#include <string>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(DocumentVocabularies, StandInTheOrderInWhichTheGroupsAreSaved) {
    std::string letters;
    for (const auto& vocabulary : documentVocabularies()) {
        letters += vocabulary.letter;
        EXPECT_FALSE(vocabulary.name.empty()) << vocabulary.letter;
        EXPECT_FALSE(vocabulary.fields.empty()) << vocabulary.letter;
    }
    EXPECT_EQ(letters, "GTRMPDA");
}

TEST(DocumentVocabularies, HaveThoseOfTheAttributeGroups) {
    for (const char letter : vocabularyLetters()) {
        const auto* const found = findDocumentVocabulary(letter);
        ASSERT_NE(found, nullptr) << letter;
        EXPECT_EQ(found->fields.data(), groupVocabulary(letter).data());
        EXPECT_EQ(found->name, vocabularyName(letter));
    }
    EXPECT_EQ(findDocumentVocabulary('P')->fields.front().code, "DLN");
    EXPECT_EQ(findDocumentVocabulary('D')->fields.front().code, "DLN");
    EXPECT_EQ(findDocumentVocabulary('B'), nullptr);
    EXPECT_EQ(findDocumentVocabulary('p'), nullptr);
}

}  // namespace
}  // namespace kavu
