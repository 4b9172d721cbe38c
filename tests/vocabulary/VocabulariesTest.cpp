#include "vocabulary/FieldRules.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <set>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace kavu {
namespace {

constexpr std::string_view kAttributeGroups = "GTRMA";

std::span<const Field> tableOf(char letter) {
    return findVocabulary(letter)->fields;
}

TEST(Vocabularies, StandInTheOrderInWhichTheGroupsAreSaved) {
    std::string letters;
    for (const auto& vocabulary : vocabularies()) {
        letters += vocabulary.letter;
        EXPECT_FALSE(vocabulary.name.empty()) << vocabulary.letter;
        EXPECT_FALSE(vocabulary.fields.empty()) << vocabulary.letter;
    }
    EXPECT_EQ(letters, "GTRMPDBSAC");
}

TEST(Vocabularies, AreFoundByTheirLetter) {
    for (const auto& vocabulary : vocabularies()) {
        EXPECT_EQ(findVocabulary(vocabulary.letter), &vocabulary);
    }
    EXPECT_EQ(findVocabulary('P')->fields.front().code, "DLN");
    EXPECT_EQ(findVocabulary('D')->fields.front().code, "DLN");
    for (const char letter : {'H', 'X', 'g', 'p'}) {
        EXPECT_EQ(findVocabulary(letter), nullptr) << letter;
    }
}

TEST(Vocabularies, ACodeStandsOnceForThePagesAndOnceForTheBridge) {
    for (const char letter : kAttributeGroups) {
        // Several types of tracks have had the same code for their data link.
        std::set<std::tuple<std::string_view, bool, std::string_view>> seen;
        for (const auto& field : tableOf(letter)) {
            EXPECT_TRUE(seen.emplace(field.code, field.bridgeOnly, field.box).second)
                << letter << " " << field.code;
        }
    }
}

TEST(Vocabularies, TheRowsOfAListStandBehindTheirCount) {
    for (const char letter : kAttributeGroups) {
        const auto table = tableOf(letter);
        for (std::size_t i = 0; i < table.size(); ++i) {
            if (table[i].list.empty()) {
                continue;
            }
            const auto count =
                std::find_if(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(i),
                             [&](const Field& field) { return field.code == table[i].list; });
            ASSERT_NE(count, table.begin() + static_cast<std::ptrdiff_t>(i)) << table[i].code;
            EXPECT_TRUE(governsRows(*count)) << table[i].code;
            EXPECT_EQ(indexCountOf(table[i].code) - (governsRows(table[i]) ? 0 : 1),
                      indexCountOf(count->code) + (governsRows(table[i]) ? 1 : 0))
                << table[i].code;
        }
    }
}

TEST(Vocabularies, AStoredChoiceFitsItsField) {
    for (const char letter : kAttributeGroups) {
        for (const auto& field : tableOf(letter)) {
            for (const int edition : {1996, 1999, 2004, 2011}) {
                const auto limit = limitIn(edition, field);
                for (const auto& choice : choicesOf(field, edition)) {
                    const auto stored = storedChoice(choice, limit);
                    EXPECT_TRUE(limit == 0 || stored.size() <= limit) << field.code << stored;
                }
            }
        }
    }
}

TEST(Vocabularies, AFieldCodeFindsItsRow) {
    const auto general = tableOf('G');
    auto matches = matchVocabulary(general, "poc1-12");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].field->code, "POC1-n");
    EXPECT_EQ(matches[0].path.at[0], 12);
    matches = matchVocabulary(general, "PN");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].path.count, 0);
    matches = matchVocabulary(tableOf('R'), "ADL-2-5");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].path.at[0], 2);
    EXPECT_EQ(matches[0].path.at[1], 5);
    for (const char* code : {"POC1", "POC1-0", "POC1-01", "POC1-n", "POC1-1-1", "PN-1", "POC1-",
                             "POC1-99999999999", "POC1-1000000", "NOPE", ""}) {
        EXPECT_TRUE(matchVocabulary(general, code).empty()) << code;
    }
}

TEST(Vocabularies, AFieldCodeOfAnyDepthFindsItsRow) {
    struct Case {
        char letter;
        const char* field;
        const char* code;
        std::vector<int> numbers;
    };
    for (const auto& [letter, field, code, numbers] :
         {Case{'D', "wp-1-20-3-4", "WP-n-m-k-f", {1, 20, 3, 4}},
          Case{'D', "FSF3-1-2-3", "FSF3-n-m-s", {1, 2, 3}},
          Case{'D', "SMF\\SMN-7", "SMF\\SMN-k", {7}},
          Case{'D', "SMF\\SMN-7-2", "SMF\\SMN-n-k", {7, 2}},
          Case{'P', "SF4-9-8-7", "SF4-n-m-k", {9, 8, 7}}, Case{'P', "TF", "TF", {}}}) {
        const auto matches = matchVocabulary(letter, field);
        ASSERT_EQ(matches.size(), 1u) << field;
        EXPECT_EQ(matches[0].field->code, code);
        ASSERT_EQ(matches[0].path.count, static_cast<int>(numbers.size())) << field;
        EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), matches[0].path.at.begin()))
            << field;
    }
    EXPECT_TRUE(matchVocabulary('D', "WP-1-2-3").empty());
    EXPECT_TRUE(matchVocabulary('H', "MN-1-2-3").empty()) << "a group without a vocabulary";
}

TEST(Vocabularies, ACodeOfThePageAndTheBridgeFindsBoth) {
    const auto matches = matchVocabulary(tableOf('R'), "RI6");
    ASSERT_EQ(matches.size(), 2u);
    EXPECT_FALSE(matches[0].field->bridgeOnly);
    EXPECT_TRUE(matches[1].field->bridgeOnly);
}

/// The fields in the order in which a writer puts them.
std::vector<std::string_view> inOrder(std::span<const Field> table,
                                      std::vector<std::string_view> fields) {
    std::stable_sort(fields.begin(), fields.end(),
                     [table](std::string_view first, std::string_view second) {
                         return isWrittenBefore(table, matchVocabulary(table, first).front(),
                                                matchVocabulary(table, second).front());
                     });
    return fields;
}

TEST(Vocabularies, CommandsAreWrittenRowByRowInEveryDepth) {
    const auto* const measurements = findVocabulary('D');
    using Fields = std::vector<std::string_view>;
    const Fields order = {"DLN",         "ML\\N",        "MLN-1",      "MN\\N-1",     "MN-1-1",
                          "MML\\N-1-1",  "MNF\\N-1-1-1", "WP-1-1-1-1", "WFM-1-1-1-1", "WP-1-1-1-2",
                          "WFM-1-1-1-2", "MWL-1-1-2",    "WP-1-1-2-1", "MN-1-2",      "MML\\N-1-2",
                          "MLN-2",       "MN\\N-2",      "COM"};
    auto mixed = order;
    std::reverse(mixed.begin(), mixed.end());
    EXPECT_EQ(inOrder(measurements->fields, mixed), order);
    std::rotate(mixed.begin(), mixed.begin() + 7, mixed.end());
    EXPECT_EQ(inOrder(measurements->fields, mixed), order);
}

TEST(Vocabularies, ACommandIsNotWrittenBeforeItself) {
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            const auto code = fieldCode(field.code, {1, 2, 3, 4, 5, 6});
            const auto matches = matchVocabulary(vocabulary.fields, code);
            ASSERT_FALSE(matches.empty()) << code;
            EXPECT_FALSE(isWrittenBefore(vocabulary.fields, matches.front(), matches.front()))
                << code;
        }
    }
}

}  // namespace
}  // namespace kavu
