#include "mdb/record/MdbFields.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace kavu {
namespace {

std::size_t faultsOf(int edition, std::size_t index, std::string_view value) {
    std::vector<MdbFault> faults;
    MdbFieldTable(edition).check(index, value, faults);
    return faults.size();
}

TEST(MdbFields, LabelsAndElementsAreThereOnce) {
    std::set<std::string_view> labels;
    std::set<std::string_view> elements;
    for (const auto& field : mdbFields()) {
        EXPECT_TRUE(labels.insert(field.label).second) << field.label;
        EXPECT_TRUE(field.element.empty() || elements.insert(field.element).second)
            << field.element;
    }
    EXPECT_EQ(mdbFields()[35].label, "Eu Conversion Data");
}

TEST(MdbFields, AFieldIsFoundByLabelInAnyCaseOrByIndex) {
    EXPECT_EQ(mdbFieldIndex("measurement DESCRIPTION"), 26U);
    EXPECT_EQ(mdbFieldIndex("26"), 26U);
    for (const auto* const bad : {"36", "-1", "", "26x", "Description"}) {
        EXPECT_EQ(mdbFieldIndex(bad), std::nullopt) << bad;
    }
}

TEST(MdbFields, ColumnsOfTheSmallFormLeaveOutTheBus) {
    EXPECT_EQ(columnCount(MdbVersion::Basic), 28U);
    EXPECT_EQ(columnIndex(6, MdbVersion::Basic), 6U);
    EXPECT_EQ(columnIndex(7, MdbVersion::Basic), 15U);
    EXPECT_EQ(columnIndex(27, MdbVersion::Basic), 35U);
    EXPECT_EQ(columnIndex(7, MdbVersion::WithBus), 7U);
}

TEST(MdbFields, ListsDependOnTheEdition) {
    const auto format = mdbfield::kInputFormat;
    EXPECT_EQ(MdbFieldTable(1996).allowed(format), "INT UNS SIG ONE TWO OFF OTH");
    EXPECT_EQ(MdbFieldTable(1999).allowed(format), "INT UNS SIG ONE TWO OFF OTH FPT");
    for (const int edition : {2000, 2001, 2004, 2005}) {
        EXPECT_EQ(MdbFieldTable(edition).allowed(format),
                  "INT UNS SIG SIM ONE TWO OFF OTH FPT BCD");
    }
    EXPECT_EQ(MdbFieldTable(2007).allowed(format), "INT UNS SIG SIM ONE TWO OFF OTH FPT BCD BWT");
    EXPECT_EQ(MdbFieldTable(1996).allowed(mdbfield::kType), "NON PRS COE OTH DER DIS SP");
    EXPECT_EQ(MdbFieldTable(2011).allowed(mdbfield::kType),
              "NON PRS COE OTH DER DIS SP PTM BTM VOI VID");
}

TEST(MdbFields, SecurityHasFourCharactersInTheFirstEditionAlone) {
    EXPECT_EQ(faultsOf(1996, 18, "OTHR"), 0U);
    EXPECT_EQ(faultsOf(1999, 18, "OTHR"), 1U);
    EXPECT_EQ(faultsOf(1996, 18, "OTHRX"), 1U);
}

TEST(MdbFields, ListsCompareExactlyAndEmptyIsAllowed) {
    EXPECT_EQ(faultsOf(2011, 4, "M"), 0U);
    EXPECT_EQ(faultsOf(2011, 4, ""), 0U);
    EXPECT_EQ(faultsOf(2011, 4, "m"), 1U);
    EXPECT_EQ(faultsOf(2011, 4, "MM"), 2U);
    EXPECT_EQ(faultsOf(2011, 13, "1"), 0U);
    EXPECT_EQ(faultsOf(2011, 13, "2"), 1U);
    EXPECT_EQ(faultsOf(2011, 6, "EV OD"), 2U);
}

TEST(MdbFields, TextLimitsAreThoseOfTheTable) {
    EXPECT_EQ(faultsOf(2011, 0, std::string(32, 'x')), 0U);
    EXPECT_EQ(faultsOf(2011, 0, std::string(33, 'x')), 1U);
    EXPECT_EQ(faultsOf(2011, 3, std::string(65, '1')), 1U);
    EXPECT_EQ(faultsOf(2011, 26, std::string(5000, 'x')), 0U);
}

TEST(MdbFields, WordsOfTheXmlFormGoBothWaysAndOthersStand) {
    const auto& security = mdbFields()[18];
    EXPECT_EQ(toXmlWord(security, "SR"), "Counts Secret");
    EXPECT_EQ(toXmlWord(security, "TB"), "Counts And EU Top Secret");
    EXPECT_EQ(fromXmlWord(security, "EU Confidential"), "CE");
    EXPECT_EQ(toXmlWord(security, "XX"), "XX");
    EXPECT_EQ(fromXmlWord(security, "Cosmic"), "Cosmic");
    EXPECT_EQ(toXmlWord(mdbFields()[32], "BWT"), "Bit Weight");
    EXPECT_EQ(toXmlWord(mdbFields()[34], "NON"), "None");
    for (const auto& field : mdbFields()) {
        for (const auto& word : field.words) {
            EXPECT_EQ(fromXmlWord(field, toXmlWord(field, word.code)), word.code);
        }
    }
}

}  // namespace
}  // namespace kavu
