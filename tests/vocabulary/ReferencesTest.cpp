#include "core/text/Text.h"
#include "vocabulary/References.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu {
namespace {

// What the lists of codes said before the tables had a column for it: each pass over the
// groups had a list of its own, compared by the fronts of codes.

bool beginsWithOne(std::initializer_list<std::string_view> fronts, std::string_view code) {
    return std::any_of(fronts.begin(), fronts.end(), [code](std::string_view front) {
        return startsWithIgnoreCase(code, front);
    });
}
bool wasRecordedLink(std::string_view code) {
    return beginsWithOne({"CDLN-", "BDLN-", "PDLN-", "UCNM-", "MCNM-", "ENAM-"}, code);
}
bool wasMultiplexedLink(std::string_view code) {
    return equalsIgnoreCase(code, "BB\\DLN") || startsWithIgnoreCase(code, "SI\\DLN-");
}
bool wasEmbeddedLink(std::string_view code) {
    return beginsWithOne({"AEF\\DLN-", "ADM\\DMN-"}, code);
}
bool isStreamGroup(char letter) {
    return std::string_view("PDBSA").find(letter) != std::string_view::npos;
}
/// Of renames and copies.
bool wasLink(char letter, std::string_view code) {
    switch (letter) {
        case 'M':
            return wasMultiplexedLink(code);
        case 'P':
            return equalsIgnoreCase(code, "DLN") || wasEmbeddedLink(code);
        case 'R':
            return wasRecordedLink(code) || startsWithIgnoreCase(code, "EV\\MS-");
        default:
            return isStreamGroup(letter) && equalsIgnoreCase(code, "DLN");
    }
}
/// Of copies with a prefix or suffix.
bool wasMeasurement(char letter, std::string_view code) {
    switch (letter) {
        case 'D':
        case 'B':
            return beginsWithOne({"MN-", "SMF\\SMN-"}, code);
        case 'S':
            return beginsWithOne({"MN-", "SMF\\SMN-", "TMN-", "HMN-", "SMN-"}, code);
        default:
            return false;
    }
}
/// Of the removal of what nothing names, and of the search for homes.
bool wasHome(char letter, std::string_view code) {
    return (letter == 'R' && wasRecordedLink(code)) ||
           (letter == 'M' && wasMultiplexedLink(code)) || (letter == 'P' && wasEmbeddedLink(code));
}
/// Of the names of a stream's measurements.
bool wasDefinition(char letter, std::string_view code) {
    return std::string_view("DBS").find(letter) != std::string_view::npos &&
           startsWithIgnoreCase(code, "MN-");
}
bool wasSource(char letter, std::string_view code) {
    return std::string_view("TRMV").find(letter) != std::string_view::npos &&
           equalsIgnoreCase(code, "ID");
}
bool wasSourceName(char letter, std::string_view code) {
    return letter == 'G' && startsWithIgnoreCase(code, "DSI-");
}

/// Every stem of every table, with those that only the lists had.
std::set<std::string> allStems() {
    std::set<std::string> stems = {"BDLN", "PDLN", "TMN", "HMN", "SMN", "MN", "ID", "", "DLN1"};
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            for (const auto code : {field.code, field.codeRead, field.codeToXml}) {
                stems.insert(std::string(stemOf(code)));
            }
        }
    }
    return stems;
}

std::vector<std::string> formsOf(const std::string& stem) {
    std::vector<std::string> forms;
    for (const char* index : {"", "-", "-n", "-x", "-1", "-0", "-12-3", "-1-2-3", "-1-2-3-4", "x",
                              "\\N", "\\N-1", "1", "1-2"}) {
        forms.push_back(stem + index);
        forms.push_back(lowerAscii(stem + index));
    }
    return forms;
}

TEST(References, AreThoseOfTheListsOfCodesForEveryCodeOfEveryGroup) {
    std::map<Refers, std::size_t> met;
    for (const auto& stem : allStems()) {
        for (const auto& code : formsOf(stem)) {
            for (char letter = 'A'; letter <= 'Z'; ++letter) {
                const auto refers = refersTo(letter, code);
                ++met[refers];
                const auto what = std::string(1, letter) + "\\" + code;
                ASSERT_EQ(namesLink(refers), wasLink(letter, code)) << what;
                ASSERT_EQ(refers == Refers::Link, wasHome(letter, code)) << what;
                ASSERT_EQ(refers == Refers::LinkName,
                          isStreamGroup(letter) && equalsIgnoreCase(code, "DLN"))
                    << what;
                ASSERT_EQ(namesMeasurement(refers), wasMeasurement(letter, code)) << what;
                ASSERT_EQ(refers == Refers::MeasurementName, wasDefinition(letter, code)) << what;
                ASSERT_EQ(refers == Refers::Source, wasSource(letter, code)) << what;
                ASSERT_EQ(refers == Refers::SourceName, wasSourceName(letter, code)) << what;
            }
        }
    }
    EXPECT_EQ(met.size(), 10U) << "each of them was met";
}

TEST(References, OthersFollowARenameOnlyIfTheUserAgrees) {
    EXPECT_EQ(refersTo('R', "DSI-3"), Refers::OtherSource);
    EXPECT_EQ(refersTo('G', "DSI-3"), Refers::SourceName);
    EXPECT_EQ(refersTo('R', "EV\\DLN-2"), Refers::OtherLink);
    EXPECT_FALSE(namesLink(Refers::OtherLink));
    EXPECT_TRUE(hasReferences('R', Refers::OtherSource));
    EXPECT_TRUE(hasReferences('R', Refers::OtherLink));
    EXPECT_FALSE(hasReferences('G', Refers::OtherSource));
    EXPECT_FALSE(hasReferences('?', Refers::OtherLink));
}

TEST(References, AnEventMentionsALinkAndGivesItNoHome) {
    EXPECT_EQ(refersTo('R', "EV\\MS-1"), Refers::LinkMention);
    EXPECT_TRUE(namesLink(Refers::LinkMention));
}

TEST(References, AreOfGroupsWithACapitalLetterAlone) {
    EXPECT_EQ(refersTo('p', "DLN"), Refers::No);
    EXPECT_EQ(refersTo('\0', "DLN"), Refers::No);
    EXPECT_EQ(refersTo('\xC4', "DLN"), Refers::No);
    EXPECT_EQ(refersTo('P', {}), Refers::No);
}

TEST(References, EveryNameHasTheLimitOfNames) {
    int names = 0;
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            // The details of a recorder's tracks have no limits of their own.
            const bool isDetail = vocabulary.letter == 'R' && field.limit == 0;
            if (field.refersTo != Refers::No && !isDetail) {
                ++names;
                for (const int edition : {1996, 1999, 2011}) {
                    EXPECT_EQ(limitIn(edition, field), static_cast<std::size_t>(kNameLimit))
                        << vocabulary.letter << " " << field.code;
                }
            }
        }
    }
    EXPECT_GT(names, 15);
}

TEST(References, AGroupBearsTheNameOfItsSourceOrItsLink) {
    for (const char letter : std::string_view("TRMV")) {
        EXPECT_EQ(ownNameOf(letter), "ID") << letter;
    }
    for (const char letter : std::string_view("PDBSA")) {
        EXPECT_EQ(ownNameOf(letter), "DLN") << letter;
    }
    for (const char letter : std::string_view("GHC?@[t")) {
        EXPECT_EQ(ownNameOf(letter), "") << letter;
    }
}

TEST(References, OneLookAtTheFirstLetterExcludesNoName) {
    int excluded = 0;
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            const bool may = mayRefer(vocabulary.letter, field.code);
            excluded += may ? 0 : 1;
            EXPECT_TRUE(may || field.refersTo == Refers::No)
                << vocabulary.letter << " " << field.code;
            EXPECT_EQ(may, mayRefer(vocabulary.letter, lowerAscii(field.code)));
        }
    }
    EXPECT_GT(excluded, 100);
    EXPECT_TRUE(mayRefer('D', "mn-1-1:A;"));
    EXPECT_FALSE(mayRefer('D', {}));
    EXPECT_FALSE(mayRefer('p', "DLN"));
}

}  // namespace
}  // namespace kavu
