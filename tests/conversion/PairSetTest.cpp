#include "conversion/PairFile.h"
#include "conversion/PairSet.h"
#include "conversion/PairText.h"
#include "core/files/ProfileFile.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::string text(const PairSet& set) {
    std::string found;
    for (const auto& pair : set.pairs()) {
        found += pair.telemetry + "=" + pair.engineering + " ";
    }
    return found;
}

// --- The list ------------------------------------------------------------------------------

TEST(PairSet, HoldsAtMost99Pairs) {
    PairSet set;
    for (int i = 0; i < 99; ++i) {
        ASSERT_TRUE(set.canAdd());
        ASSERT_TRUE(set.add({std::to_string(i), "1"}));
    }
    EXPECT_FALSE(set.canAdd());
    EXPECT_FALSE(set.add({"1", "1"}));
    EXPECT_EQ(set.size(), 99U);
}

TEST(PairSet, IsInOrderOfEntryUntilItIsSorted) {
    PairSet set;
    EXPECT_EQ(set.add({"10", "a"}), 0U);
    EXPECT_EQ(set.add({"9", "b"}), 1U);
    EXPECT_EQ(set.add({"-1", "c"}), 2U);
    EXPECT_EQ(text(set), "10=a 9=b -1=c ");
    set.setSorted(true);
    EXPECT_EQ(text(set), "-1=c 9=b 10=a ");
    set.setSorted(false);
    EXPECT_EQ(text(set), "-1=c 9=b 10=a ") << "once sorted, always sorted";
}

TEST(PairSet, ASortedListTellsWhereTheChangedPairHasGone) {
    PairSet set(true);
    EXPECT_EQ(set.add({"5", "a"}), 0U);
    EXPECT_EQ(set.add({"1", "b"}), 0U);
    EXPECT_EQ(set.edit(0, {"7", "b"}), 1U);
    EXPECT_EQ(text(set), "5=a 7=b ");
    EXPECT_EQ(set.add({"5", "equal"}), 1U) << "equal values stay in order";
}

TEST(PairSet, ASortThatIsTurnedOnTellsWhereAPairHasGone) {
    PairSet set;
    for (const char* const x : {"3", "1", "2"}) {
        (void)set.add({x, x});
    }
    EXPECT_EQ(set.setSorted(true, 2), 1U);
    EXPECT_EQ(set.pairs()[1].telemetry, "2");
}

TEST(PairSet, EditsAndRemovesOnlyWhatIsThere) {
    PairSet set;
    EXPECT_FALSE(set.edit(0, {"1", "1"}));
    EXPECT_FALSE(set.remove(0));
    (void)set.add({"1", "1"});
    EXPECT_TRUE(set.remove(0));
    EXPECT_EQ(set.size(), 0U);
}

TEST(PairSet, TextsAreCutToTheirLimits) {
    PairSet set;
    (void)set.add({std::string(17, '1'), std::string(33, '2')});
    EXPECT_EQ(set.pairs()[0].telemetry.size(), 16U);
    EXPECT_EQ(set.pairs()[0].engineering.size(), 32U);
}

TEST(PairSet, TextThatIsNoNumberCountsAs0) {
    PairSet set;
    (void)set.add({"abc", "1.5V"});
    EXPECT_EQ(set.telemetryValues(), std::vector<double>{0});
    EXPECT_EQ(set.engineeringValues(), std::vector<double>{1.5});
}

// --- Import --------------------------------------------------------------------------------

TEST(PairSetImport, TakesTheLinesOfBothBoxesInStep) {
    PairSet set;
    EXPECT_FALSE(set.import(" 1 \r\n2\n\n4\n5", "10\n 20\n30\n40").has_value());
    EXPECT_EQ(text(set), "1=10 2=20 4=40 ");
}

TEST(PairSetImport, BeginsWithTheValuesOfTheList) {
    PairSet set;
    (void)set.add({"1", "2"});
    (void)set.add({"3", "4"});
    EXPECT_EQ(set.boxTexts(), (std::pair<std::string, std::string>("1\n3\n", "2\n4\n")));
}

TEST(PairSetImport, TheFirstBadValueIsToldAndNothingIsImported) {
    PairSet set;
    (void)set.add({"1", "2"});
    EXPECT_EQ(set.import("1\nx", "1\n2"),
              "Error in row #2. X Value found is not a valid floating point number");
    EXPECT_EQ(set.import("1\n\n3", "1\n\n3v"),
              "Error in row #3. Y Value found is not a valid floating point number");
    for (const char* const bad : {"nan", "inf", "-inf", "1e999", "0x1", "1 2", "1,500"}) {
        EXPECT_TRUE(set.import(bad, "1").has_value()) << bad;
        EXPECT_TRUE(set.import("1", bad).has_value()) << bad;
    }
    EXPECT_EQ(text(set), "1=2 ");
}

TEST(PairSetImport, RefusesTenThousandPairsAndTakes99) {
    std::string column;
    for (int i = 0; i < 10000; ++i) {
        column += "1e308\n";
    }
    PairSet set;
    (void)set.add({"1", "2"});
    EXPECT_EQ(set.import(column, column),
              "There are 10000 pairs. A pair set cannot have more than 99.");
    EXPECT_EQ(text(set), "1=2 ");
    EXPECT_FALSE(set.import(column.substr(0, 99 * 6), column).has_value());
    EXPECT_EQ(set.size(), 99U);
}

TEST(PairSetImport, RefusesAValueThatWouldBeAnotherOneIfItWereCut) {
    PairSet set;
    EXPECT_EQ(set.import("1.234567890123E10", "1"),
              "Error in row #1. X Value found is longer than 16 characters");
    EXPECT_EQ(set.import("1", "1." + std::string(31, '0')),
              "Error in row #1. Y Value found is longer than 32 characters");
}

TEST(PairSetImport, SortsIfTheListIsSorted) {
    PairSet set(true);
    EXPECT_FALSE(set.import("3\n1\n2", "30\n10\n20").has_value());
    EXPECT_EQ(text(set), "1=10 2=20 3=30 ");
}

TEST(PairSetImport, TakesDecimalCommasAndStoresPoints) {
    PairSet set;
    EXPECT_FALSE(set.import("1,5\n-0,125\n3", "2\n2,5E-3\n12,125").has_value());
    EXPECT_EQ(text(set), "1.5=2 -0.125=2.5E-3 3=12.125 ");
}

TEST(PairSetImport, RefusesACommaThatMaySeparateThousands) {
    PairSet set;
    for (const auto& [x, y] : {std::pair("1\n32,768", "1\n2"), std::pair("1\n32,768", "1.5\n2"),
                               std::pair("1,5\n32,768", "1.5\n2")}) {
        EXPECT_EQ(set.import(x, y),
                  "Error in row #2. X Value found is not a valid floating point number: the comma "
                  "of '32,768' can be a decimal comma or separate thousands")
            << x << y;
    }
    EXPECT_EQ(set.size(), 0U);
}

TEST(PairSetImport, RefusesUnitsAndSecondColumns) {
    PairSet set;
    for (const char* const bad : {"3.5 V", "3.5V", "1,5 bar", "1,5,2", "1.234,5", "1\t2", "1;2",
                                  ",5", "5,", "1,-5", "\"1\""}) {
        EXPECT_EQ(set.import("1\n2", std::string("1\n") + bad),
                  "Error in row #2. Y Value found is not a valid floating point number")
            << bad;
    }
    EXPECT_EQ(set.size(), 0U);
}

// --- The record ----------------------------------------------------------------------------

TEST(PairSetRecord, IsReadAndWritten) {
    ProfileFile file("");
    PairSet set;
    (void)set.add({"1", "2"});
    (void)set.add({"3", ""});
    ASSERT_TRUE(set.write(file, "M"));
    EXPECT_EQ(file.value("M", "PS\\N", ""), "2");
    EXPECT_EQ(file.value("M", "PS3-1", ""), "1");
    EXPECT_EQ(text(PairSet::read(file, "M")), "1=2 3= ");
    (void)set.remove(0);
    ASSERT_TRUE(set.write(file, "M"));
    EXPECT_EQ(file.value("M", "PS3-2"), std::nullopt) << "no row of the longer list is left";
}

TEST(PairSetRecord, ACountFromAFileIsNotTrusted) {
    ProfileFile file("");
    file.setValue("M", "PS\\N", "999999999");
    EXPECT_EQ(PairSet::read(file, "M").size(), 99U);
    file.setValue("M", "PS\\N", "-5");
    EXPECT_EQ(PairSet::read(file, "M").size(), 0U);
}

// --- Files of pairs ------------------------------------------------------------------------

TEST(ParsePairFile, TakesTheUsualForms) {
    for (const char* const file : {"1,2\n3,4\n", "x,y\n1,2\n3,4", "# pairs\n\n1;2\r\n3;4\r\n",
                                   "\xEF\xBB\xBF"
                                   "1\t2\n3\t4",
                                   "\"1\",\"2\"\n\"3\",\"4\"\n", "1 2\n3  4 # last",
                                   "+1,2e0\n3 ,4,\n", "x,y,z\n1,2,,\n3,4\t"}) {
        const auto found = parsePairFile(file);
        EXPECT_EQ(found.error, "") << file;
        EXPECT_EQ(found.x, (std::vector<double>{1, 3})) << file;
        EXPECT_EQ(found.y, (std::vector<double>{2, 4})) << file;
    }
}

TEST(SplitPairFile, KeepsTheTextsOfTheFile) {
    const auto columns = splitPairFile(
        "\xEF\xBB\xBF\"counts\",\"psi\"\r\n# a remark\r\n\"1.50\",2.10 # x\r\n\n-3,4e5\n");
    EXPECT_EQ(columns.error, "");
    EXPECT_EQ(columns.count, 2U);
    EXPECT_EQ(columns.telemetry, "1.50\n-3\n");
    EXPECT_EQ(columns.engineering, "2.10\n4e5\n");
}

TEST(SplitPairFile, AFileThatIsWrongHasNoValues) {
    const auto columns = splitPairFile("1 2\n3 nan\n");
    EXPECT_EQ(columns.error, "Error in row #2. Y Value found is not a valid floating point number");
    EXPECT_EQ(columns.telemetry + columns.engineering, "");
    EXPECT_EQ(columns.count, 0U);
}

TEST(ParsePairFile, TellsTheFirstValueThatIsNone) {
    EXPECT_EQ(parsePairFile("1,2\n3,x\n").error,
              "Error in row #2. Y Value found is not a valid floating point number");
    EXPECT_EQ(parsePairFile("head,er\nx,2\n").error,
              "Error in row #2. X Value found is not a valid floating point number");
    for (const char* const bad : {"1", "1,", ",1", "1,2\nnan,1", "1,2\n1,inf", "1,2\n1e999,1",
                                  "1,2\nhead,er", "1;2\n3,5"}) {
        const auto found = parsePairFile(bad);
        EXPECT_NE(found.error, "") << bad;
        EXPECT_TRUE(found.x.empty() && found.y.empty()) << bad;
    }
}

TEST(ParsePairFile, ARowWithAThirdColumnIsRefused) {
    for (const auto& [file, told] :
         {std::pair("1,2\n3,4,5\n", "5"), std::pair("1 2\n3 4 V\n", "V"),
          std::pair("1\t2\n3\t4\t\t9\n", "9"), std::pair("1;2\n3;4; x;y\n", "x;y"),
          std::pair("1,2\n1,5 2,5\n", "5"), std::pair("1,2\n1,5,2,5\n", "2,5")}) {
        const auto found = parsePairFile(file);
        EXPECT_EQ(found.error,
                  "Error in row #2. There are more than two columns: '" + std::string(told) + "'")
            << file;
        EXPECT_TRUE(found.x.empty()) << file;
    }
}

TEST(ParsePairFile, ANumberWithAUnitIsRefused) {
    for (const char* const file :
         {"1,2\n3,4 V\n", "1\t2\n3\t4V\n", "1;2\n3;4 psi\n", "1 2\n3 4V\n"}) {
        EXPECT_EQ(parsePairFile(file).error,
                  "Error in row #2. Y Value found is not a valid floating point number")
            << file;
    }
}

TEST(ParsePairFile, DecimalCommasAreUnderstoodWhereNothingElseCanBeMeant) {
    for (const char* const file : {"1,5;2,25\n3,5;4", "1,5\t2,25\n3,5\t4\n", "1,5 2,25\n3.5 4\n",
                                   "x y\n1,5  2,25\n3,5 4", "\"1,5\",\"2,25\"\n\"3,5\",4\n"}) {
        const auto found = parsePairFile(file);
        EXPECT_EQ(found.error, "") << file;
        EXPECT_EQ(found.x, (std::vector<double>{1.5, 3.5})) << file;
        EXPECT_EQ(found.y, (std::vector<double>{2.25, 4})) << file;
    }
    EXPECT_EQ(splitPairFile("1,5;2,250\n").engineering, "2.250\n") << "the 1,5 says so";
    for (const char* const file : {"1;2\n32,768;5", "1.5\t2\n32,768\t5", "1,5;2.5\n32,768;5"}) {
        EXPECT_EQ(parsePairFile(file).error,
                  "Error in row #2. X Value found is not a valid floating point number: the comma "
                  "of '32,768' can be a decimal comma or separate thousands")
            << file;
    }
}

TEST(ParsePairFile, AllRowsAreSeparatedAsTheFirst) {
    // The second rows are one number each, whose partner is missing.
    for (const char* const file : {"1;2\n3,5", "1\t2\n3,5", "1,5 2,5\n3,5"}) {
        EXPECT_EQ(parsePairFile(file).error,
                  "Error in row #2. Y Value found is not a valid floating point number")
            << file;
    }
}

TEST(TabColumns, AreExactlyTwo) {
    using Columns = std::pair<std::string, std::string>;
    EXPECT_EQ(tabColumns("1\t2\r\n3,5\t4 V\r\n"), Columns("1\n3,5\n", "2\n4 V\n"));
    EXPECT_EQ(tabColumns("1\t2\n\n3\t\n"), Columns("1\n\n3\n", "2\n\n\n"));
    for (const char* const other :
         {"", "\n", "7", "1\n2\n", "1;2", "1, 2", "1 2", "1\t2\t3", "1\t2\n3", "1\t2\t\n"}) {
        EXPECT_FALSE(tabColumns(other).has_value()) << other;
    }
}

TEST(ParsePairFile, AnEmptyFileHasNoPairs) {
    for (const char* const file : {"", "\n\n", "# nothing\n", "x,y\n"}) {
        const auto found = parsePairFile(file);
        EXPECT_EQ(found.error, "");
        EXPECT_TRUE(found.x.empty());
    }
}

TEST(ParsePairFile, HoldsAtMostAMillionPairs) {
    std::string file;
    for (std::size_t i = 0; i <= kMostFilePairs; ++i) {
        file += "1 2\n";
    }
    EXPECT_EQ(parsePairFile(file).error, "There are more than 1000000 pairs in the file.");
    file.resize(file.size() - 4);
    EXPECT_EQ(parsePairFile(file).x.size(), kMostFilePairs);
}

}  // namespace
}  // namespace kavu
