#include "groups/Vocabularies.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <set>
#include <tuple>

#include <gtest/gtest.h>

namespace kavu {
namespace {

TEST(Vocabularies, EveryLetterHasATableAndAName) {
    for (const char letter : vocabularyLetters()) {
        EXPECT_FALSE(groupVocabulary(letter).empty()) << letter;
        EXPECT_FALSE(vocabularyName(letter).empty()) << letter;
    }
    EXPECT_TRUE(groupVocabulary('X').empty());
    EXPECT_TRUE(groupVocabulary('g').empty());
    EXPECT_EQ(vocabularyName('X'), "");
}

TEST(Vocabularies, ACodeStandsOnceForThePagesAndOnceForTheBridge) {
    for (const char letter : vocabularyLetters()) {
        // Several types of tracks have had the same code for their data link.
        std::set<std::tuple<std::string_view, bool, std::string_view>> seen;
        for (const auto& field : groupVocabulary(letter)) {
            EXPECT_TRUE(seen.emplace(field.code, field.bridgeOnly, field.box).second)
                << letter << " " << field.code;
        }
    }
}

TEST(Vocabularies, TheRowsOfAListStandBehindTheirCount) {
    for (const char letter : vocabularyLetters()) {
        const auto table = groupVocabulary(letter);
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
    for (const char letter : vocabularyLetters()) {
        for (const auto& field : groupVocabulary(letter)) {
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

TEST(Vocabularies, ACodeIsTakenApart) {
    struct Case {
        const char* code;
        char letter;
        int index;
        const char* field;
    };
    for (const auto& [code, letter, index, field] :
         {Case{"G\\PN", 'G', 0, "PN"}, Case{"g\\DSI-1", 'G', 0, "DSI-1"},
          Case{"T-1\\AP\\POC1", 'T', 1, "AP\\POC1"}, Case{"r-99\\ADL-2-5", 'R', 99, "ADL-2-5"},
          Case{"P-01\\D2", 'P', 1, "D2"}, Case{"H\\X", 'H', 0, "X"}}) {
        const auto parsed = parseCommandCode(code);
        ASSERT_TRUE(parsed.has_value()) << code;
        EXPECT_EQ(parsed->letter, letter);
        EXPECT_EQ(parsed->index, index);
        EXPECT_EQ(parsed->field, field);
    }
    EXPECT_EQ(parseCommandCode("r-7\\ADL-2-5")->text(), "R-7\\ADL-2-5");
    EXPECT_EQ(parseCommandCode("g\\pn")->text(), "G\\pn");
}

TEST(Vocabularies, WhatIsNoCodeIsRefused) {
    for (const char* code :
         {"", "PN", "\\PN", "G\\", "G-1\\PN", "T\\RF1", "T-\\RF1", "T-0\\RF1", "T-100\\RF1",
          "T-1x\\RF1", "Q-1\\X", "C-1\\DCN", "G\\PN:x", "G\\P;N", "G\\P N", "T1\\RF1"}) {
        EXPECT_FALSE(parseCommandCode(code).has_value()) << code;
    }
}

TEST(Vocabularies, AFieldCodeFindsItsRow) {
    const auto general = groupVocabulary('G');
    auto matches = matchVocabulary(general, "poc1-12");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].field->code, "POC1-n");
    EXPECT_EQ(matches[0].n, 12u);
    matches = matchVocabulary(general, "PN");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].n, 0u);
    matches = matchVocabulary(groupVocabulary('R'), "ADL-2-5");
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].n, 2u);
    EXPECT_EQ(matches[0].m, 5u);
    for (const char* code : {"POC1", "POC1-0", "POC1-01", "POC1-n", "POC1-1-1", "PN-1", "POC1-",
                             "POC1-99999999999", "NOPE", ""}) {
        EXPECT_TRUE(matchVocabulary(general, code).empty()) << code;
    }
}

TEST(Vocabularies, ACodeOfThePageAndTheBridgeFindsBoth) {
    const auto matches = matchVocabulary(groupVocabulary('R'), "RI6");
    ASSERT_EQ(matches.size(), 2u);
    EXPECT_FALSE(matches[0].field->bridgeOnly);
    EXPECT_TRUE(matches[1].field->bridgeOnly);
}

}  // namespace
}  // namespace kavu
