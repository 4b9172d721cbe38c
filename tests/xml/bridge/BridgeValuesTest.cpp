#include "vocabulary/Vocabularies.h"
#include "xml/bridge/BridgeValues.h"

#include <gtest/gtest.h>

namespace kavu {
namespace {

const Field& rowOf(char letter, std::string_view code) {
    static const Field none;
    for (const auto& field : findVocabulary(letter)->fields) {
        if (field.code == code) {
            return field;
        }
    }
    ADD_FAILURE() << letter << " " << code;
    return none;
}

std::string valueOf(char letter, std::string_view code, std::string_view text,
                    XmlDialect dialect = XmlDialect::Classic) {
    return std::string(valueForXmlText(rowOf(letter, code), text, dialect).value_or("(none)"));
}

std::string textOf(char letter, std::string_view code, std::string_view value,
                   XmlDialect dialect = XmlDialect::Classic) {
    return std::string(xmlTextFor(rowOf(letter, code), value, dialect).value_or("(none)"));
}

TEST(BridgeValues, AreFoundWithoutRegardToCaseAndOuterBlanks) {
    EXPECT_EQ(valueOf('T', "RF4", "oTHER"), "OTHR");
    EXPECT_EQ(valueOf('T', "RF4", "\n fm\t"), "FM");
    EXPECT_EQ(textOf('T', "GST7", " b&dpr "), "Both And Pre-Detection");
    EXPECT_EQ(valueOf('T', "RF4", ""), "(none)");
    EXPECT_EQ(valueOf('T', "RF4", "Some Thing"), "(none)");
}

TEST(BridgeValues, OfOlderEditionsGiveWayWhereTwoHaveOneText) {
    EXPECT_EQ(valueOf('R', "TC7", "Other"), "OT");
}

/// The last pair of these tables is one joined text, which nothing matches.
TEST(BridgeValues, OfFiveTablesPassTheirLastTextWhenTheDefaultFormIsRead) {
    EXPECT_EQ(valueOf('R', "TC5", "Other"), "(none)");
    EXPECT_EQ(valueOf('R', "TT", "Rotary"), "(none)");
    EXPECT_EQ(valueOf('R', "TT", "Longitudinal"), "LO");
    EXPECT_EQ(valueOf('P', "D3", "Unencrypted"), "(none)");
    EXPECT_EQ(valueOf('P', "D3", "Encrypted"), "E");
    EXPECT_EQ(valueOf('P', "IDC10-n", "Decreasing"), "(none)");
    EXPECT_EQ(valueOf('P', "MFF\\FDT", "Exclusive Filtering"), "(none)");
    EXPECT_EQ(valueOf('D', "WFT-n-m-k-f", "MSB First"), "(none)");
    EXPECT_EQ(textOf('P', "D3", "U"), "Unencrypted");
    EXPECT_EQ(textOf('R', "TT", "RO"), "Rotary");
    EXPECT_EQ(valueOf('P', "D3", "Unencrypted", XmlDialect::Schema), "U");
}

TEST(BridgeValues, KeepTheOddTextsOfTheDefaultFormAndHaveTheSchemasOwn) {
    EXPECT_EQ(textOf('G', "SC", "C"), "Confidental");
    EXPECT_EQ(textOf('G', "SC", "C", XmlDialect::Schema), "Confidential");
    EXPECT_EQ(textOf('R', "TC5", "15.0"), "`5.0");
    EXPECT_EQ(textOf('R', "TC5", "15.0", XmlDialect::Schema), "15.0");
    EXPECT_EQ(textOf('R', "TK2-n", "FMWBII"), "FM Wide band Group 2");
    EXPECT_EQ(textOf('R', "TK2-n", "RO-K"), "Rotary Single Track");
    EXPECT_EQ(textOf('C', "BFM", "SIG"), "Sign and Magnitude Binary (+ 0)");
    EXPECT_EQ(textOf('C', "BFM", "SIM", XmlDialect::Schema), "Sign and Magnitude Binary (+=1)");
    EXPECT_EQ(textOf('G', "DST-n", "DRS"), "(none)");
    EXPECT_EQ(textOf('G', "DST-n", "DRS", XmlDialect::Schema), "Direct Source");
}

TEST(BridgeValues, WithoutATableStandAsTheyAreInTheDefaultForm) {
    EXPECT_EQ(textOf('B', "CWE-n-m", "W"), "(none)");
    EXPECT_EQ(textOf('B', "CWE-n-m", "W", XmlDialect::Schema), "Command Word");
    EXPECT_EQ(valueOf('C', "DPAT", "Algorithm"), "(none)");
    EXPECT_EQ(valueOf('C', "PTM", "Low Order Time"), "(none)");
    EXPECT_EQ(valueOf('C', "PTM", "Low Order Time", XmlDialect::Schema), "L");
}

TEST(BridgeDates, AreTurnedByTheirPlacesOnly) {
    EXPECT_EQ(tmatsDate("2009-01-02"), "01-02-2009");
    EXPECT_EQ(tmatsDate(" 2009-01-02\n"), "01-02-2009");
    EXPECT_EQ(tmatsDate("01-02-2009"), "");
    EXPECT_EQ(tmatsDate("2009-01-02T03:04:05"), "");
    EXPECT_EQ(tmatsDate(""), "");
    EXPECT_EQ(tmatsDateTime("2009-01-02T03:04:05"), "01-02-2009-03-04-05");
    EXPECT_EQ(tmatsDateTime("2009-01-02T03:04:05.678Z"), "01-02-2009-03-04-05");
    EXPECT_EQ(tmatsDateTime("2009-01-02 03:04:05"), "");
    EXPECT_EQ(tmatsDateTime("2009-01-02T03:04:0"), "");
    EXPECT_EQ(xmlDate("01-02-2009"), "2009-01-02");
    EXPECT_EQ(xmlDate("01-02-09"), "");
    EXPECT_EQ(xmlDateTime("01-02-2009-03-04-05"), "2009-01-02T03:04:05");
    EXPECT_EQ(xmlDateTime("01-02-2009"), "");
}

TEST(BridgeMasks, AreTheElementsOfThisName) {
    EXPECT_TRUE(isMaskElement("Bus/UserDefined/Word1/BitMask"));
    EXPECT_TRUE(isMaskElement("BitMask"));
    EXPECT_FALSE(isMaskElement("AsyncEmbeddedFormat/Mask"));
    EXPECT_FALSE(isMaskElement(""));
}

}  // namespace
}  // namespace kavu
