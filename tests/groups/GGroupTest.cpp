#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GGroup.h"
#include "groups/GroupSamples.h"
#include "support/TestContext.h"
#include "vocabulary/GGroupFields.h"

namespace kavu {
namespace {

using test::TestContext;

class GeneralGroup : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(working::kGeneral, bytes); }
    EditedGroup read() {
        auto group = readGeneral(t.context, &t.ui);
        EXPECT_TRUE(group.has_value());
        return group ? *group : EditedGroup();
    }
    std::string storedWith(const EditedGroup& group, UserInterface* parent) {
        EXPECT_TRUE(storeGeneral(t.context, parent, group));
        return t.read(working::kGeneral);
    }

    TestContext t;
};

TEST_F(GeneralGroup, EveryFieldIsReadAndWrittenInTheOrderOfTheTable) {
    for (const int edition : {1996, 1999, 2004, 2009, 2011}) {
        t.document.version = edition;
        EditedGroup group;
        group.record = test::fullRow(generalFields(), edition);
        const auto text = generalText(group, edition);
        std::vector<std::string> expected;
        test::appendCodes(expected, generalFields(), edition);
        EXPECT_EQ(test::codesOf(text), expected);
        // The page reads the telephone from another code than it writes.
        put(replaceAll(text, "G\\POC4-", "G\\POC42-"));
        EXPECT_EQ(read().record, group.record) << edition;
        EXPECT_EQ(storedWith(read(), &t.ui), text);
        EXPECT_TRUE(t.ui.boxes.empty());
    }
}

TEST_F(GeneralGroup, TheOrderOfTheFileIsThatOfTheStandard) {
    std::vector<std::string> codes;
    for (const auto& field : generalFields()) {
        codes.emplace_back(field.code);
    }
    EXPECT_EQ(codes,
              (std::vector<std::string>{"PN",     "TA",     "106",    "OD",     "RN",     "RD",
                                        "UN",     "UD",     "TN",     "POC\\N", "POC1-n", "POC2-n",
                                        "POC3-n", "POC4-n", "DSI\\N", "DSI-n",  "DST-n",  "TI1",
                                        "TI2",    "TI3",    "SC",     "COM"}));
}

TEST_F(GeneralGroup, OfTwelveContactsNineAreShown) {
    std::string bytes = "G\\POC\\N:12;\r\n";
    for (int i = 1; i <= 12; ++i) {
        bytes += formatPrintf("G\\POC1-%d:Name %2.2d;\r\n", i, i);
    }
    put(bytes);
    const auto group = read();
    ASSERT_EQ(group.record.rows(kContactCount).size(), 9u);
    EXPECT_EQ(group.record.rows(kContactCount)[8].value("POC1-n"), "Name 09");
    EXPECT_TRUE(t.ui.boxes.empty());
    const auto stored = storedWith(group, nullptr);
    EXPECT_NE(stored.find("G\\POC\\N:9;"), std::string::npos);
    EXPECT_EQ(stored.find("POC1-10"), std::string::npos);
}

TEST_F(GeneralGroup, ContactsWithoutACountAreNotShown) {
    put("G\\POC1-1:Somebody;\r\n");
    EXPECT_TRUE(read().record.rows(kContactCount).empty());
}

TEST_F(GeneralGroup, AContactWithoutANameIsUnknown) {
    put("G\\POC\\N:1;\r\nG\\POC2-1:Agency;\r\n");
    const auto group = read();
    EXPECT_EQ(group.record.rows(kContactCount)[0].value("POC1-n"), "Unknown");
    EXPECT_EQ(storedWith(group, nullptr),
              "G\\POC\\N:1;\r\nG\\POC1-1:Unknown;\r\nG\\POC2-1:Agency;\r\n");
}

TEST_F(GeneralGroup, AStandardTelephoneLeavesThePhoneEmptyAndIsNotLost) {
    const std::string bytes = "G\\POC\\N:1;\r\nG\\POC1-1:A;\r\nG\\POC4-1:123;\r\n";
    put(bytes);
    auto group = read();
    EXPECT_EQ(group.record.rows(kContactCount)[0].value("POC4-n"), "");
    // What is written under its code takes the place of the old one, once.
    group.record.lists[std::string(kContactCount)][0].set("POC4-n", "456");
    EXPECT_EQ(storedWith(group, &t.ui), "G\\POC\\N:1;\r\nG\\POC1-1:A;\r\nG\\POC4-1:456;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
    // As long as the page has no telephone the user is asked about that of the file.
    put(bytes);
    t.ui.otherwise = Button::Yes;
    EXPECT_EQ(storedWith(read(), &t.ui), bytes);
    EXPECT_EQ(t.ui.boxes.size(), 1u);
}

TEST_F(GeneralGroup, ATelephoneThatIsKeptStaysWithItsPerson) {
    put("G\\POC\\N:3;\r\nG\\POC1-1:Zoe;\r\nG\\POC4-1:111;\r\nG\\POC1-2:Mia;\r\n"
        "G\\POC4-2:222;\r\nG\\POC1-3:Ann;\r\nG\\POC4-3:333;\r\n");
    auto group = read();
    auto& rows = group.record.lists[std::string(kContactCount)];
    // They are sorted by their names; the one in the middle is deleted.
    ASSERT_EQ(rows[1].value("POC1-n"), "Mia");
    rows.erase(rows.begin() + 1);
    t.ui.otherwise = Button::Yes;
    EXPECT_EQ(storedWith(group, &t.ui),
              "G\\POC\\N:2;\r\nG\\POC1-1:Ann;\r\nG\\POC1-2:Zoe;\r\nG\\POC4-2:111;\r\n"
              "G\\POC4-1:333;\r\n");
}

TEST_F(GeneralGroup, AClassificationThatIsNoEntryLeavesTheChoiceUnselected) {
    put("G\\SC:Q;\r\n");
    EXPECT_EQ(read().record.value("SC"), "");
}

TEST_F(GeneralGroup, AShortDateIsShownAsItIsInEveryEdition) {
    for (const int edition : {1996, 2004}) {
        t.document.version = edition;
        put("G\\OD:12-31-99;\r\n");
        const auto group = read();
        EXPECT_EQ(group.record.value("OD"), "12-31-99");
        EXPECT_EQ(isValidDate(group.record.value("OD"), edition), edition == 1996);
        EXPECT_EQ(storedWith(group, nullptr), "G\\OD:12-31-99;\r\n");
    }
}

TEST_F(GeneralGroup, ATypeOfANewerEditionShowsAsOtherAndIsOfClassT) {
    t.document.version = 2004;
    put("G\\DSI\\N:1;\r\nG\\DSI-1:Src;\r\nG\\DST-1:DRS;\r\n");
    const auto group = read();
    const auto stored = group.record.rows(kSourceCount)[0].value(kSourceType);
    EXPECT_EQ(sourceTypeText(stored, 2004), "Other");
    EXPECT_EQ(sourceTypeText(stored, 2009), "Direct Source");
    EXPECT_EQ(dataSourceClass(stored), 'T');
    EXPECT_NE(storedWith(group, nullptr).find("G\\DST-1:DRS;"), std::string::npos);
}

TEST_F(GeneralGroup, TypesAreShownByTheirWholeValueWhateverTheCase) {
    EXPECT_EQ(sourceTypeText("rf", 1996), "RF");
    EXPECT_EQ(sourceTypeText("tap", 1996), "Tape");
    EXPECT_EQ(sourceTypeText("TA", 1996), "Other");
    EXPECT_EQ(sourceTypeText("STO", 2001), "Other");
    EXPECT_EQ(sourceTypeText("STO", 2004), "Storage");
    EXPECT_EQ(sourceTypeText("", 2011), "Other");
    EXPECT_EQ(sourceTypeText("OTH", 2011), "Other");
    EXPECT_EQ(storedSourceType("Direct Source"), "DRS");
    EXPECT_EQ(storedSourceType("Other"), "OTH");
}

TEST_F(GeneralGroup, TheTypesOfferedFollowTheEdition) {
    const auto texts = [](int edition) {
        std::vector<std::string> all;
        for (const auto& type : sourceTypes(edition)) {
            all.emplace_back(type.text);
        }
        return all;
    };
    EXPECT_EQ(texts(2001), (std::vector<std::string>{"RF", "Tape", "Other"}));
    EXPECT_EQ(texts(2004), (std::vector<std::string>{"RF", "Tape", "Storage", "Other"}));
    EXPECT_EQ(texts(2009), (std::vector<std::string>{"RF", "Tape", "Storage", "Distributed Source",
                                                     "Direct Source", "Reproducer", "Other"}));
}

TEST_F(GeneralGroup, TheXmlOfConfidentialIsSpelledWrongOnPurpose) {
    const auto fields = generalFields();
    const auto it = std::find_if(fields.begin(), fields.end(),
                                 [](const Field& field) { return field.code == "SC"; });
    EXPECT_EQ(it->choices[1].text, "Confidential");
    EXPECT_EQ(it->choices[1].xml, "Confidental");
}

TEST_F(GeneralGroup, TheEditionOfTheFileStaysAsItIs) {
    put("G\\106:not a year;\r\nG\\PN:P;\r\n");
    EXPECT_EQ(storedWith(read(), &t.ui), "G\\PN:P;\r\nG\\106:not a year;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GeneralGroup, AMissingFileIsToldAndStartsEmpty) {
    const auto group = read();
    EXPECT_EQ(group.record, GroupRow());
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, -145);
    EXPECT_EQ(t.ui.boxes[0].text,
              "Previous 'General Information (G)' TMATS definition was not found. Creating new "
              "definition");
    EXPECT_TRUE(readGeneral(t.context, nullptr).has_value());
}

TEST_F(GeneralGroup, AFileThatCanNotBeReadIsToldAndNotEdited) {
    ASSERT_TRUE(makeFolder(t.store.pathOf(working::kGeneral)).ok());
    EXPECT_FALSE(readGeneral(t.context, &t.ui).has_value());
    EXPECT_EQ(t.ui.boxes.size(), 1u);
}

TEST_F(GeneralGroup, StatusAndProgressTellOfTheLoad) {
    put("G\\PN:P;\r\n");
    (void)read();
    EXPECT_EQ(t.ui.statusTexts, (std::vector<std::string>{"Initalizing General Information...",
                                                          "Edit General Information"}));
    EXPECT_EQ(t.ui.bars, (std::vector<double>{10, 40, 60, 80, -1}));
}

TEST_F(GeneralGroup, CancelEndsTheLoadAtEachStep) {
    put("G\\POC\\N:1;\r\nG\\DSI\\N:1;\r\n");
    (void)read();
    const int polls = t.ui.polls;
    EXPECT_EQ(polls, 6);
    for (int at = 1; at <= polls; ++at) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = at;
        EXPECT_FALSE(readGeneral(t.context, &t.ui).has_value()) << at;
    }
}

TEST_F(GeneralGroup, BothListsAreSortedByTheirFirstColumn) {
    put("G\\POC\\N:3;G\\POC1-1:cee;G\\POC1-2:Bee;G\\POC1-3:ant;G\\POC2-1:first;"
        "G\\DSI\\N:3;G\\DSI-1:z;G\\DST-1:TAP;G\\DSI-2:y;G\\DST-2:RF;G\\DSI-3:a;G\\DST-3:TAP;");
    const auto group = read();
    EXPECT_EQ(group.record.rows(kContactCount)[0].value("POC1-n"), "ant");
    EXPECT_EQ(group.record.rows(kContactCount)[2].value("POC2-n"), "first");
    EXPECT_EQ(group.record.rows(kSourceCount)[0].value(kSourceName), "y");
    EXPECT_EQ(group.record.rows(kSourceCount)[1].value(kSourceName), "z");
}

TEST_F(GeneralGroup, TheFileNameIsLeftToTheSave) {
    put("G\\FN:old.tma;\r\nG\\PN:P;\r\n");
    EXPECT_EQ(storedWith(read(), &t.ui), "G\\PN:P;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
    // No save of an older edition writes it.
    t.document.version = 2007;
    t.ui.otherwise = Button::Yes;
    put("G\\FN:old.tma;\r\nG\\PN:P;\r\n");
    EXPECT_EQ(storedWith(read(), &t.ui), "G\\PN:P;\r\nG\\FN:old.tma;\r\n");
    EXPECT_EQ(t.ui.boxes.size(), 1u);
}

TEST_F(GeneralGroup, ADataSourceWithAGroupExists) {
    t.write(groupFile('T', 1), "T-1\\ID:Radio;\r\n");
    t.write(groupFile('R', 2), "R-2\\ID:Tape;\r\n");
    t.write(groupFile('M', 3), "M-3\\ID:Lone;\r\n");
    for (const char* name : {"Radio", "Tape", "Lone"}) {
        EXPECT_TRUE(isExistingSource(t.context, &t.ui, name)) << name;
    }
    EXPECT_FALSE(isExistingSource(t.context, &t.ui, "New"));
    EXPECT_FALSE(isExistingSource(t.context, &t.ui, ""));
}

TEST_F(GeneralGroup, AnotherNameOfAnExistingDataSourceIsAskedAbout) {
    t.write(groupFile('T', 1), "T-1\\ID:Radio;\r\n");
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Radio", "Radio"), NameChange::Plain);
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Radio", ""), NameChange::Plain);
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Blank", "New"), NameChange::Plain);
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Radio", "New"), NameChange::Refused);
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].id, -299);
    EXPECT_EQ(t.ui.boxes[0].buttons, Buttons::YesNo);
    EXPECT_NE(t.ui.boxes[0].text.find("from 'Radio' to 'New'"), std::string::npos);
    t.ui.otherwise = Button::Yes;
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Radio", "New"), NameChange::Rename);
    EXPECT_EQ(askNameChange(t.context, nullptr, "Radio", "New"), NameChange::Refused);
    // Groups find each other by names as they are spelled: another case would part them.
    EXPECT_EQ(askNameChange(t.context, &t.ui, "Radio", "RADIO"), NameChange::Rename);
    EXPECT_NE(t.ui.boxes.back().text.find("from 'Radio' to 'RADIO'"), std::string::npos);
}

}  // namespace
}  // namespace kavu
