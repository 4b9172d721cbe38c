#include "core/document/GroupFiles.h"
#include "core/text/PrintfFormat.h"

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(GroupFilesTest, GroupsStandInTheOrderInWhichTheyAreSaved) {
    std::string letters;
    for (const auto& kind : groupKinds()) {
        letters.push_back(kind.letter);
        EXPECT_EQ(&groupKind(kind.letter), &kind);
    }
    EXPECT_EQ(letters, "GTRMPDBSAHV");
}

TEST(GroupFilesTest, EachGroupHasItsFile) {
    const std::pair<char, const char*> rows[] = {
        {'G', "[kavu]GTMP.G"},      {'T', "[kavu]DSRCE.T07"},  {'R', "[kavu]DSRCE.R07"},
        {'M', "[kavu]MULT.M07"},    {'P', "[kavu]PCMFMT.P07"}, {'D', "[kavu]PCMMEAS.D07"},
        {'B', "[kavu]PCM1553.B07"}, {'S', "[kavu]PCMS.S07"},   {'A', "[kavu]PCMPAM.A07"},
        {'H', "[kavu]H.HHH"},       {'V', "[kavu]V.V07"},
    };
    for (const auto& [letter, name] : rows) {
        EXPECT_EQ(groupFile(letter, 7), name);
    }
}

TEST(GroupFilesTest, NoTwoGroupsShareAFile) {
    std::set<std::string> names;
    for (const auto& kind : groupKinds()) {
        for (const int index : {1, 99}) {
            if (kind.indexed || index == 1) {
                EXPECT_TRUE(names.insert(groupFile(kind.letter, index)).second);
            }
        }
    }
}

TEST(GroupFilesTest, Index100GivesANameWithThreeDigits) {
    EXPECT_EQ(groupFile('T', 100), "[kavu]DSRCE.T100");
    EXPECT_EQ(groupFile('P', 0), "[kavu]PCMFMT.P00");
    EXPECT_EQ(groupFile('D', 2000000000), "[kavu]PCMMEAS.D2000000000");
}

TEST(GroupFilesTest, DataLinkNamesAreForFiveLettersAndIndices1To99) {
    for (const char letter : std::string("ABDPS")) {
        EXPECT_EQ(groupFileName(letter, 1, 2011), groupFile(letter, 1));
        EXPECT_EQ(groupFileName(letter, 99, 2011), groupFile(letter, 99));
        for (const int index : {-1, 0, 100}) {
            EXPECT_EQ(groupFileName(letter, index, 2011), "") << letter << index;
        }
    }
    for (const char letter : std::string("GTRMHVCXap\0", 11)) {
        EXPECT_EQ(groupFileName(letter, 1, 2011), "") << letter;
    }
}

TEST(GroupFilesTest, SHasNoNameInADocumentOf2004) {
    EXPECT_EQ(groupFileName('S', 1, 2004), "");
    EXPECT_EQ(groupFileName('S', 1, 2005), "[kavu]PCMS.S01");
    EXPECT_EQ(groupFileName('P', 1, 1996), "[kavu]PCMFMT.P01");
}

TEST(GroupFilesTest, TextsOfReadingSavingAndMessages) {
    struct Row {
        char letter;
        const char* read;
        const char* save;
        const char* message;
        int firstEdition;
    };
    const Row rows[] = {
        {'G', "General Information Section", "Saving General Information", "General Information",
         0},
        {'T', "Transmission Information - Definition: #%d", "Saving RF Attributes - Data source %d",
         "Transmission Attributes", 0},
        {'R', "Tape Data Source Information - Definition: #%d",
         "Saving Tape Attributes - Data source %d", "Tape Data Source", 0},
        {'M', "Multiplex Information - Definition: #%d",
         "Saving Multiplex/Modulation Attributes - Data source %d",
         "Multiplex/Modulation Attributes", 0},
        {'P', "PCM Information - Definition: #%d", "Saving PCM Format Attributes - Data link %d",
         "PCM Format Information", 0},
        {'D', "PCM Measurement Information - Definition: #%d",
         "Saving PCM Measurement Attributes - Data link #%d", "PCM Measurement", 0},
        {'B', "1553 Bus Information - Definition: #%d", "Saving 1553 Bus Attributes - Data link %d",
         "1553 Bus Attributes", 0},
        {'S', "Packet Information - Definition: #%d", "Saving %s - Data link %d",
         "Packet Attributes", 2005},
        {'A', "PAM Information - Definition: #%d", "Saving PAM Attributes - Data link %d",
         "PAM Attributes", 0},
        {'H', "Airborne Hardware Information", "Saving Airborne Hardware Attributes",
         "H-Section (Airborne Hardware)", 0},
        {'V', "Vendor Information - Definition: #%d",
         "Saving Vendor Specific Attributes - Data source %d", "Vendor Specific Attributes", 2004},
    };
    for (const auto& row : rows) {
        const auto& kind = groupKind(row.letter);
        EXPECT_EQ(kind.readTitle, row.read);
        EXPECT_EQ(kind.saveTitle, row.save);
        EXPECT_EQ(kind.messageName, row.message);
        EXPECT_EQ(kind.firstEdition, row.firstEdition) << row.letter;
    }
}

// They are chosen at run time: no compiler checks them.
TEST(GroupFilesTest, FormatsFitTheIndexTheyAreGiven) {
    for (const auto& kind : groupKinds()) {
        const std::vector index(kind.indexed ? 1 : 0, PrintfKind::Integer);
        EXPECT_TRUE(fitsArguments(kind.fileFormat, index)) << kind.letter;
        EXPECT_TRUE(fitsArguments(kind.readTitle, index)) << kind.letter;
        const bool named = kind.letter == 'S';
        const std::vector saved =
            named ? std::vector{PrintfKind::Text, PrintfKind::Integer} : index;
        EXPECT_TRUE(fitsArguments(kind.saveTitle, saved)) << kind.letter;
    }
}

}  // namespace
}  // namespace kavu::test
