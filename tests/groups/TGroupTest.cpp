#include "core/document/GroupFiles.h"
#include "groups/GroupSamples.h"
#include "groups/TGroup.h"
#include "support/TestContext.h"
#include "vocabulary/TGroupFields.h"

namespace kavu {
namespace {

using test::TestContext;

class TransmissionGroup : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('T', 1), bytes); }
    EditedGroup read(const std::string& source = "Src") {
        auto group = readTransmission(t.context, &t.ui, source);
        EXPECT_TRUE(group.has_value());
        return group ? *group : EditedGroup();
    }
    std::string storedWith(const EditedGroup& group, UserInterface* parent) {
        EXPECT_TRUE(storeTransmission(t.context, parent, group));
        return t.read(groupFile('T', group.index));
    }
    static const Field& field(std::string_view code) {
        const auto all = transmissionFields();
        return *std::find_if(all.begin(), all.end(),
                             [&](const Field& each) { return each.code == code; });
    }
    static std::vector<std::string> entries(std::string_view code, int edition) {
        std::vector<std::string> texts;
        for (const auto& choice : choicesOf(field(code), edition)) {
            texts.emplace_back(choice.text);
        }
        return texts;
    }

    TestContext t;
};

TEST_F(TransmissionGroup, EveryFieldIsReadAndWrittenInTheOrderOfTheTable) {
    for (const int edition : {1996, 1999, 2000, 2011}) {
        t.document.version = edition;
        EditedGroup group{.letter = 'T', .index = 1};
        group.record = test::fullRow(transmissionFields(), edition);
        group.record.set("ID", "Src");
        const auto text = transmissionText(group, edition);
        std::vector<std::string> expected;
        test::appendCodes(expected, transmissionFields(), edition);
        EXPECT_EQ(test::codesOf(text), expected);
        put(text);
        EXPECT_EQ(read().record, group.record) << edition;
        EXPECT_EQ(storedWith(read(), &t.ui), text);
        EXPECT_TRUE(t.ui.boxes.empty());
    }
}

TEST_F(TransmissionGroup, TheOrderOfTheFileIsThatOfTheStandard) {
    std::string codes;
    for (const auto& each : transmissionFields()) {
        codes.append(each.code).append(" ");
    }
    EXPECT_EQ(codes,
              "ID TID RF1 RF2 RF3 RF4 RF5 RF6 SCO\\N SCO1-n SCO2-n RF7 PMF1 PMF2 PMF3 AN1 AN2 AN3 "
              "AP AP\\POC1 AP\\POC2 AP\\POC3 AP\\POC4 GST1 GST2 GST3 GST4 GST5 GST6 GST7 FM1 FM2 "
              "PLL COM ");
}

TEST_F(TransmissionGroup, EveryFieldStandsOnAPageOfTheSheet) {
    const auto pages = transmissionPages();
    ASSERT_EQ(pages.size(), 10u);
    for (const auto& each : transmissionFields()) {
        EXPECT_TRUE(each.label.empty() || std::any_of(pages.begin(), pages.end(),
                                                      [&](const TransmissionPage& page) {
                                                          return page.name == each.page;
                                                      }))
            << each.code;
    }
}

TEST_F(TransmissionGroup, OtherSelectsNothingInEdition2004) {
    t.document.version = 2004;
    put("T-1\\ID:Src;\r\nT-1\\RF4:OTHER;\r\n");
    EXPECT_EQ(read().record.value("RF4"), "");
    EXPECT_TRUE(t.ui.boxes.empty());
    put("T-1\\ID:Src;\r\nT-1\\RF4:OTHERWISE;\r\n");
    EXPECT_EQ(read().record.value("RF4"), "");
}

TEST_F(TransmissionGroup, OtherIsSelectedInEdition1996) {
    t.document.version = 1996;
    put("T-1\\ID:Src;\r\nT-1\\RF4:OTHER;\r\n");
    EXPECT_EQ(read().record.value("RF4"), "OTHER");
}

TEST_F(TransmissionGroup, SubcarriersWithMissingCellsAreThere) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:12;\r\n");
    const auto group = read();
    const auto rows = group.record.rows(kTransmissionSubcarriers);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].value("SCO1-n"), "12");
    EXPECT_EQ(rows[0].value("SCO2-n"), "");
    EXPECT_EQ(rows[1].value("SCO1-n"), "");
    for (const auto& column : transmissionSubcarrierFields()) {
        EXPECT_EQ(column.placeholder, "?");
    }
    // The sign for a missing cell is no value.
    EXPECT_EQ(storedWith(group, nullptr), "T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:12;\r\n");
}

TEST_F(TransmissionGroup, TheReceptionIsKeptAsItStands) {
    put("T-1\\ID:Src;\r\nT-1\\GST7:B&DPR;\r\n");
    EXPECT_EQ(storedWith(read(), &t.ui), "T-1\\ID:Src;\r\nT-1\\GST7:B&DPR;\r\n");
    const auto& choices = field("GST7").choices;
    EXPECT_EQ(choices[3].value, "B&DPR");
    EXPECT_EQ(choices[3].xml, "Both And Pre-Detection");
}

TEST_F(TransmissionGroup, AModulationThatOnlyXmlKnowsGoesUnlessItIsKept) {
    put("T-1\\ID:Src;\r\nT-1\\RF4:FQPSK-JR;\r\n");
    EXPECT_EQ(read().record.value("RF4"), "");
    t.ui.otherwise = Button::Yes;
    EXPECT_EQ(storedWith(read(), &t.ui), "T-1\\ID:Src;\r\nT-1\\RF4:FQPSK-JR;\r\n");
    EXPECT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(storedWith(read(), nullptr), "T-1\\ID:Src;\r\n");
}

TEST_F(TransmissionGroup, ModulationsFollowTheEdition) {
    EXPECT_EQ(entries("RF4", 1996),
              (std::vector<std::string>{"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHER"}));
    EXPECT_EQ(entries("RF4", 1999),
              (std::vector<std::string>{"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHR"}));
    EXPECT_EQ(entries("RF4", 2000),
              (std::vector<std::string>{"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHR", "FQPSK-B"}));
    EXPECT_EQ(limitIn(1996, field("RF4")), 5u);
    EXPECT_EQ(limitIn(1999, field("RF4")), 4u);
    EXPECT_EQ(limitIn(2000, field("RF4")), 8u);
}

TEST_F(TransmissionGroup, TheLastReceptionFollowsTheEdition) {
    EXPECT_EQ(entries("GST7", 1996).back(), "OTH");
    EXPECT_EQ(entries("GST7", 1999).back(), "OTHER");
    EXPECT_EQ(entries("GST7", 2011).size(), 8u);
}

TEST_F(TransmissionGroup, ChoicesAreStoredAsTheirLeftmostCharacters) {
    struct Case {
        const char* code;
        const char* text;
        const char* stored;
    };
    for (const auto& [code, text, stored] :
         {Case{"PMF3", "CA - Constant Amplitude", "CA"}, Case{"PMF3", "OTHER", "OT"},
          Case{"AN2", "LINEAR", "LINE"}, Case{"GST5", "None", "Non"},
          Case{"RF4", "FQPSK-B", "FQPSK-B"}, Case{"GST7", "POS-D", "POS-D"}}) {
        const auto choices = choicesOf(field(code), 2011);
        const auto entry = std::find_if(choices.begin(), choices.end(),
                                        [&](const Choice& each) { return each.text == text; });
        ASSERT_NE(entry, choices.end()) << code;
        EXPECT_EQ(storedChoice(*entry, limitIn(2011, field(code))), stored);
    }
    // A value that is set without the sheet is the one that XML knows.
    EXPECT_EQ(storedValue(field("AN2"), "LINEAR", 2011), "LIN");
    EXPECT_EQ(storedValue(field("GST5"), "None", 2011), "NON");
    EXPECT_EQ(storedValue(field("RF4"), "FQPSK-B", 2011), "FQPSK-B");
    // What XML writes is found again.
    EXPECT_GE(choiceIndex(choicesOf(field("AN2"), 2011), "LIN"), 0);
    EXPECT_GE(choiceIndex(choicesOf(field("GST5"), 2011), "NON"), 0);
}

TEST_F(TransmissionGroup, AMissingFileIsToldAndGetsTheNextNumber) {
    put("T-1\\ID:Other;\r\n");
    const auto group = read("New");
    EXPECT_EQ(group.index, 2);
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, -145);
    EXPECT_EQ(t.ui.boxes[0].text,
              "Previous 'RF Attributes (T)' TMATS definition was not found. Creating new "
              "definition");
    EXPECT_EQ(storedWith(group, &t.ui), "T-2\\ID:New;\r\n");
}

TEST_F(TransmissionGroup, NoNumberLeftIsTold) {
    for (int index = 1; index <= kMostGroupIndex; ++index) {
        t.write(groupFile('T', index), formatPrintf("T-%d\\ID:S%d;\r\n", index, index));
    }
    EXPECT_FALSE(readTransmission(t.context, &t.ui, "New").has_value());
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, 85);
}

TEST_F(TransmissionGroup, StatusAndProgressTellOfTheLoad) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\n");
    (void)read();
    EXPECT_EQ(t.ui.statusTexts,
              (std::vector<std::string>{"Initializing RF Data Source Information...",
                                        "Edit Transmission Information."}));
    EXPECT_EQ(t.ui.bars, (std::vector<double>{20, 60, 70, 80, 90, -1}));
}

TEST_F(TransmissionGroup, CancelEndsTheLoad) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\n");
    (void)read();
    const int polls = t.ui.polls;
    EXPECT_EQ(polls, 7);
    for (int at = 1; at <= polls; ++at) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = at;
        EXPECT_FALSE(readTransmission(t.context, &t.ui, "Src").has_value()) << at;
    }
}

TEST_F(TransmissionGroup, HugeCountsAreClamped) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2000000000;\r\n");
    EXPECT_EQ(read().record.rows(kTransmissionSubcarriers).size(), 99u);
}

TEST_F(TransmissionGroup, WhatTheSheetDoesNotKnowIsKeptInItsOrder) {
    put("T-1\\X:1;\r\nT-1\\ID:Src;\r\nT-1\\RF1:22;\r\nT-1\\A:2;\r\nT-1\\X:3;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_EQ(storedWith(read(), &t.ui),
              "T-1\\ID:Src;\r\nT-1\\RF1:22;\r\nT-1\\X:1;\r\nT-1\\A:2;\r\nT-1\\X:3;\r\n");
    t.ui.otherwise = Button::No;
    EXPECT_EQ(storedWith(read(), &t.ui), "T-1\\ID:Src;\r\nT-1\\RF1:22;\r\n");
}

}  // namespace
}  // namespace kavu
