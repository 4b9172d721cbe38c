#include "core/document/GroupFiles.h"
#include "groups/AttributeEdit.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

class AttributeEdit : public ::testing::Test {
  protected:
    void SetUp() override { t.document.version = 2009; }
    void put(char letter, const std::string& bytes) { t.write(groupFile(letter, 1), bytes); }
    [[nodiscard]] std::string file(char letter) { return t.read(groupFile(letter, 1)); }
    bool set(const std::vector<std::pair<std::string, std::string>>& values) {
        std::vector<AttributeChange> changes;
        for (const auto& [code, value] : values) {
            const auto parsed = parseCommandCode(code);
            EXPECT_TRUE(parsed.has_value()) << code;
            changes.push_back({*parsed, value});
        }
        return setAttributes(t.context, &t.ui, changes);
    }
    std::string refusal(const std::string& code, const std::string& value) {
        t.ui.boxes.clear();
        EXPECT_FALSE(set({{code, value}})) << code << "=" << value;
        EXPECT_FALSE(t.document.changed);
        if (t.ui.boxes.size() != 1) {
            return "boxes: " + std::to_string(t.ui.boxes.size());
        }
        EXPECT_EQ(t.ui.boxes[0].title, "Unable To Set Attribute");
        const auto& text = t.ui.boxes[0].text;
        return text.substr(text.find("\n\n") + 2);
    }

    TestContext t;
};

TEST_F(AttributeEdit, EveryCommandOfACodeIsReadInTheOrderOfTheFile) {
    put('G',
        "G\\PN:first;\r\nG\\TA:t;\r\ng\\pn:second;\r\nG\\PN:;\r\nG\\COM:a:b\x14\x15"
        "c;\r\n");
    std::vector<std::vector<std::string>> values;
    const std::vector<CommandCode> codes = {*parseCommandCode("G\\PN"), *parseCommandCode("g\\com"),
                                            *parseCommandCode("G\\NOPE"),
                                            *parseCommandCode("P-3\\D2")};
    EXPECT_TRUE(readAttributes(t.context, &t.ui, codes, values));
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values[0], (std::vector<std::string>{"first", "second", ""}));
    EXPECT_EQ(values[1], std::vector<std::string>{"a:b\x14\x15"
                                                  "c"});
    EXPECT_TRUE(values[2].empty());
    EXPECT_TRUE(values[3].empty());
}

TEST_F(AttributeEdit, AValueIsReplacedInItsPlaceAndNothingElseMoves) {
    put('T', "T-1\\X:1;\r\nT-1\\RF1:old;\r\nT-1\\ID:Src;\r\nT-1\\RF1:repeat;\r\n");
    EXPECT_TRUE(set({{"t-1\\rf1", "2200.5"}}));
    EXPECT_EQ(file('T'), "T-1\\X:1;\r\nT-1\\RF1:2200.5;\r\nT-1\\ID:Src;\r\n");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(AttributeEdit, ANewCommandStandsWhereTheWriterPutsIt) {
    put('T', "T-1\\ID:Src;\r\nT-1\\RF2:2;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:a;\r\nT-1\\COM:c;\r\n");
    EXPECT_TRUE(
        set({{"T-1\\RF1", "1"}, {"T-1\\SCO1-2", "b"}, {"T-1\\SCO2-1", "i"}, {"T-1\\PLL", "4"}}));
    EXPECT_EQ(file('T'),
              "T-1\\ID:Src;\r\nT-1\\RF1:1;\r\nT-1\\RF2:2;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:a;\r\n"
              "T-1\\SCO2-1:i;\r\nT-1\\SCO1-2:b;\r\nT-1\\PLL:4;\r\nT-1\\COM:c;\r\n");
}

TEST_F(AttributeEdit, AnEmptyValueRemovesTheCommandWithItsRepeats) {
    put('G', "G\\PN:a;\r\nG\\TA:t;\r\nG\\PN:b;\r\n");
    EXPECT_TRUE(set({{"G\\PN", ""}, {"G\\COM", ""}}));
    EXPECT_EQ(file('G'), "G\\TA:t;\r\n");
}

TEST_F(AttributeEdit, AGeneralGroupIsMadeIfThereIsNone) {
    EXPECT_TRUE(set({{"G\\PN", "New"}}));
    EXPECT_EQ(file('G'), "G\\PN:New;\r\n");
}

TEST_F(AttributeEdit, LineBreaksAreStoredAsTheFileHasThem) {
    EXPECT_TRUE(set({{"G\\COM", "one\ntwo\r\nthree  "}}));
    EXPECT_EQ(file('G'), "G\\COM:one\x14\x15two\x14\x15three;\r\n");
}

TEST_F(AttributeEdit, ChoicesAreStoredByTheirLeftmostCharacters) {
    EXPECT_TRUE(set({{"G\\SC", "top secret"}, {"G\\TI2", "y"}, {"G\\TI3", ""}}));
    EXPECT_EQ(file('G'), "G\\TI2:Y;\r\nG\\SC:T;\r\n");
}

TEST_F(AttributeEdit, EachRuleRefusesWithItsReason) {
    put('G', "G\\PN:P;\r\nG\\106:09;\r\nG\\POC\\N:2;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:Src;\r\n");
    put('T', "T-1\\ID:Src;\r\n");
    const std::string before = file('G');
    EXPECT_EQ(refusal("G\\PN", "12345678901234567"), "The value can only be 16 characters long.");
    EXPECT_EQ(refusal("G\\PN", "a;b"), "A value cannot hold a semi-colon.");
    EXPECT_EQ(refusal("G\\SC", "Q"), "The value is not one of: U, C, S, T, O.");
    EXPECT_EQ(refusal("G\\OD", "12-31-99"), "The value is not of the form MM-DD-YYYY.");
    EXPECT_EQ(refusal("G\\POC\\N", "x"), "The value is not made of digits.");
    EXPECT_EQ(refusal("G\\POC\\N", "10"), "The list can have 9 rows.");
    EXPECT_EQ(refusal("G\\POC1-3", "Me"), "The list has 2 rows. Set 'G\\POC\\N' first.");
    EXPECT_EQ(refusal("G\\NOPE", "1"), "The vocabulary of group G has no such command.");
    EXPECT_EQ(refusal("G\\POC42-1", "1"), "The vocabulary of group G has no such command.");
    EXPECT_EQ(refusal("P-1\\D2", "1"), "The commands of group P cannot be set one by one.");
    EXPECT_EQ(refusal("T-2\\RF1", "1"), "There is no group T-2 in this document.");
    EXPECT_EQ(refusal("T-1\\RF4", "SOQPSK"),
              "The value is not one of: FM, PM, BPSK, DPSK, QPSK, OTHR, FQPSK-B, FQPSK-JR, "
              "SOQPSK-TG, MULTI-H CPM.");
    EXPECT_EQ(file('G'), before);
}

TEST_F(AttributeEdit, NamesThatOtherGroupsReferToAreNotSet) {
    put('G', "G\\106:09;\r\nG\\DSI\\N:2;\r\nG\\DSI-1:Src;\r\n");
    put('T', "T-1\\ID:Src;\r\n");
    put('M', "M-1\\ID:Src;\r\nM-1\\BB\\DLN:Link;\r\n");
    const std::string rename =
        "Other groups depend on this value. Use 'source rename' to change it.";
    EXPECT_EQ(refusal("G\\DSI-1", "New"), rename);
    EXPECT_EQ(refusal("G\\DSI-1", ""), rename);
    EXPECT_EQ(refusal("T-1\\ID", "New"), rename);
    EXPECT_EQ(refusal("M-1\\BB\\DLN", "New"),
              "Other groups depend on this value. Use 'link rename' to change it.");
    EXPECT_EQ(refusal("G\\106", "11"),
              "Other groups depend on this value. Use 'save --edition' to change it.");
    EXPECT_EQ(refusal("G\\DSI\\N", "1"), "Use 'source delete' to delete a data source.");
    EXPECT_TRUE(set({{"G\\DSI-2", "Second"}, {"G\\DST-2", "tape"}, {"G\\DSI-1", "Src"}}));
    EXPECT_NE(file('G').find("G\\DSI-2:Second;\r\nG\\DST-2:TAP;"), std::string::npos);
}

TEST_F(AttributeEdit, TheNumberOfTracksIsNotLessThanThereAreTracks) {
    put('R', "R-1\\ID:Src;\r\nR-1\\N:4;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\n");
    const std::string why =
        "There are currently 2 Data Tracks defined. Please enter a number greater than or equal to "
        "2, otherwise, please delete one or more Data Track Definitions if you want to lower this "
        "number.";
    EXPECT_EQ(refusal("R-1\\N", "1"), why);
    EXPECT_EQ(refusal("R-1\\N", ""), why);
    EXPECT_TRUE(set({{"R-1\\N", "2"}}));
    EXPECT_TRUE(set({{"R-1\\TK1-2", ""}, {"R-1\\N", "1"}}));
    EXPECT_EQ(file('R'), "R-1\\ID:Src;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\n");
}

TEST_F(AttributeEdit, TheEditionOfTheDocumentDecides) {
    put('R', "R-1\\ID:Src;\r\n");
    EXPECT_EQ(refusal("R-1\\RML", "I"),
              "It is known from IRIG 106-11 (2011) on, and this document is of IRIG 106-09 "
              "(2009).");
    t.document.version = 1996;
    EXPECT_EQ(refusal("G\\OD", "12-31-1999"), "The value is not of the form MM-DD-YY.");
    EXPECT_TRUE(set({{"G\\OD", "12-31-99"}}));
}

TEST_F(AttributeEdit, ACommandWithoutAPageIsCheckedByWhatXmlKnows) {
    t.document.version = 2011;
    put('R', "R-1\\ID:Src;\r\n");
    EXPECT_EQ(refusal("R-1\\CRE", "Q"), "The value is not one of: T, F.");
    EXPECT_TRUE(set({{"R-1\\CRE", "T"}}));
    EXPECT_EQ(file('R'), "R-1\\ID:Src;\r\nR-1\\CRE:T;\r\n");
}

TEST_F(AttributeEdit, AllChangesAreMadeOrNone) {
    put('G', "G\\PN:P;\r\n");
    EXPECT_FALSE(set({{"G\\PN", "Q"}, {"G\\TA", "t"}, {"G\\SC", "?"}}));
    EXPECT_EQ(file('G'), "G\\PN:P;\r\n");
    EXPECT_FALSE(t.document.changed);
}

TEST_F(AttributeEdit, ALaterChangeSeesAnEarlierOne) {
    EXPECT_TRUE(set({{"G\\POC\\N", "1"}, {"G\\POC1-1", "Me"}}));
    EXPECT_EQ(file('G'), "G\\POC\\N:1;\r\nG\\POC1-1:Me;\r\n");
}

TEST_F(AttributeEdit, GroupsThatOnlyAnEditorChangesNameItsCommand) {
    put('B', "B-1\\DLN:Bus;\r\n");
    EXPECT_EQ(refusal("B-1\\TA", "x"),
              "The commands of group B cannot be set one by one. Use 'bus' with --edit.");
    EXPECT_EQ(refusal("S-1\\TA", "x"),
              "The commands of group S cannot be set one by one. Use 'message' or 'packet' with "
              "--edit.");
    EXPECT_EQ(file('B'), "B-1\\DLN:Bus;\r\n");
}

TEST_F(AttributeEdit, WithoutAParentARefusalIsSilent) {
    const std::vector<AttributeChange> changes = {{*parseCommandCode("G\\SC"), "?"}};
    EXPECT_FALSE(setAttributes(t.context, nullptr, changes));
}

}  // namespace
}  // namespace kavu
