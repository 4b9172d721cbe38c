#include "core/TmatsDocument.h"
#include "core/document/GroupFiles.h"
#include "groups/MGroup.h"
#include "support/TestContext.h"

namespace kavu {
namespace {

using test::TestContext;

/// Every command of the page, in the order in which it is written.
constexpr char kWhole[] =
    "M-1\\ID:Src;\r\nM-1\\BB1:SCO's;\r\nM-1\\BB2:POS;\r\nM-1\\BB3:123456;\r\nM-1\\BSG1:PCM;\r\n"
    "M-1\\BSF1:500;\r\nM-1\\BSF2:CD;\r\nM-1\\BB\\DLN:Link;\r\nM-1\\SCO\\N:3;\r\nM-1\\SI\\N:3;\r\n"
    "M-1\\SI1-1:1;\r\nM-1\\SI2-1:PCM;\r\nM-1\\SI3-1:POS;\r\nM-1\\SIF1-1:6;\r\nM-1\\SIF2-1:CA;\r\n"
    "M-1\\SI\\DLN-1:Sub 1;\r\n"
    "M-1\\SI1-2:2;\r\nM-1\\SI2-2:ANA;\r\nM-1\\SI3-2:NEG;\r\nM-1\\SIF2-2:OT;\r\n"
    "M-1\\SI\\MN-2:TEMP;\r\n"
    "M-1\\SI1-3:3;\r\nM-1\\SI2-3:OTH;\r\nM-1\\SI3-3:NEG;\r\nM-1\\SIF2-3:OT;\r\n"
    "M-1\\SO:N;\r\nM-1\\RC:240;\r\nM-1\\COM:a\x14\x15"
    "b;\r\n";

class MGroupTest : public ::testing::Test {
  protected:
    void put(std::string_view bytes, int index = 1) { t.write(groupFile('M', index), bytes); }
    [[nodiscard]] std::string file(int index = 1) { return t.read(groupFile('M', index)); }
    MultiplexGroup load(int index = 1) {
        MultiplexGroup group;
        loadMultiplex(t.context, &t.ui, "Src", index, group);
        return group;
    }
    bool store(const MultiplexGroup& group) { return storeMultiplex(t.context, &t.ui, group); }

    TestContext t{2009};
};

TEST_F(MGroupTest, AWholeGroupIsWrittenAsItWasRead) {
    put(kWhole);
    const auto group = load();
    EXPECT_EQ(basebandName(group), "Link");
    const auto rows = group.record.rows("SI\\N");
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(subcarrierName(rows[0]), "Sub 1");
    EXPECT_EQ(subcarrierName(rows[1]), "TEMP");
    EXPECT_EQ(subcarrierName(rows[2]), "");
    EXPECT_TRUE(store(group));
    EXPECT_EQ(file(), kWhole);
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.statusTexts,
              (std::vector<std::string>{"Initializing Multiplex/Modulation Information...",
                                        "Edit Multiplex/Modulation Information",
                                        "Saving Multiplex/Modulation Information..."}));
    EXPECT_TRUE(t.document.changed);
}

TEST_F(MGroupTest, WhateverTheOrderOfTheFileTheWrittenOrderIsThatOfTheTable) {
    std::string reversed;
    std::string whole(kWhole);
    for (std::size_t end = whole.size(); end > 0;) {
        const auto begin = whole.rfind("\r\n", end - 3);
        const auto from = begin == std::string::npos ? 0 : begin + 2;
        reversed += whole.substr(from, end - from);
        end = from;
    }
    put(reversed);
    EXPECT_TRUE(store(load()));
    EXPECT_EQ(file(), kWhole);
}

TEST_F(MGroupTest, TheTableIsInTheOrderOfTheFile) {
    std::string whole(kWhole);
    std::size_t at = 0;
    for (const auto& field : multiplexFields()) {
        if (field.code == "BB\\MN") {
            continue;
        }
        auto command = "\\" + fieldCode(field.code, {1, 0}) + ":";
        auto found = whole.find(command);
        if (found == std::string::npos) {
            found = whole.find("\\" + fieldCode(field.code, {2, 0}) + ":");
            EXPECT_EQ(field.code, "SI\\MN-n");
            continue;
        }
        EXPECT_GE(found, at) << field.code;
        at = found;
    }
}

TEST_F(MGroupTest, AMissingFileIsToldAndStartsWithPcm) {
    const auto group = load(7);
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, -145);
    EXPECT_EQ(t.ui.boxes[0].text,
              "Previous 'Multiplex/Modulation (M)' TMATS definition was not found. Creating new "
              "definition");
    EXPECT_EQ(group.record.value("BSG1"), "PCM");
    EXPECT_TRUE(store(group));
    EXPECT_EQ(file(7), "M-7\\ID:Src;\r\nM-7\\BSG1:PCM;\r\nM-7\\SI\\N:0;\r\n");
}

TEST_F(MGroupTest, ANumberThatNoGroupHasIsNotReadAndNotWritten) {
    for (const int index : {0, 100, -3}) {
        t.ui.boxes.clear();
        const auto group = load(index);
        ASSERT_EQ(t.ui.boxes.size(), 1U) << index;
        EXPECT_EQ(t.ui.boxes[0].id, -145);
        EXPECT_FALSE(store(group));
        EXPECT_EQ(t.ui.boxes.back().id, 307);
    }
}

TEST_F(MGroupTest, AnUnknownSignalTypeSelectsPcmWhichTheSaveWrites) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:XYZ;\r\n");
    const auto group = load();
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 300);
    EXPECT_TRUE(store(group));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:0;\r\n");
}

TEST_F(MGroupTest, AGroupWithoutSignalTypeIsToldWhenItIsStored) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Link;\r\n");
    auto group = load();
    group.record.set("BSG1", "");
    EXPECT_TRUE(store(group));
    EXPECT_EQ(t.ui.boxes.back().id, 301);
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\SI\\N:0;\r\n");
}

TEST_F(MGroupTest, AHundredAndTwentyRowsBecomeNinetyNine) {
    std::string bytes = "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:120;\r\n";
    for (int n = 1; n <= 120; ++n) {
        bytes += formatPrintf("M-1\\SI1-%d:%d;\r\n", n, n);
    }
    put(bytes);
    t.ui.otherwise = Button::No;
    const auto group = load();
    EXPECT_EQ(group.record.rows("SI\\N").size(), 99U);
    EXPECT_TRUE(store(group));
    EXPECT_NE(file().find("M-1\\SI\\N:99;"), std::string::npos);
    EXPECT_NE(file().find("M-1\\SI1-99:99;"), std::string::npos);
    EXPECT_EQ(file().find("M-1\\SI1-100"), std::string::npos);
}

TEST_F(MGroupTest, MissingCellsHaveTheirValues) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:NON;\r\nM-1\\SI\\N:1;\r\n");
    const auto group = load();
    const auto& row = group.record.rows("SI\\N")[0];
    EXPECT_EQ(row.value("SI1-n"), "");
    EXPECT_EQ(row.value("SI2-n"), "OTH");
    EXPECT_EQ(row.value("SI3-n"), "NEG");
    EXPECT_EQ(row.value("SIF1-n"), "");
    EXPECT_EQ(row.value("SIF2-n"), "OT");
}

TEST_F(MGroupTest, TheFilterTypeOfARowIsCutToTwoCharactersInTheOldestEditionToo) {
    t.document.version = 1996;
    put("M-1\\ID:Src;\r\nM-1\\BSG1:NON;\r\nM-1\\BSF2:OTH;\r\nM-1\\SI\\N:1;\r\n"
        "M-1\\SI2-1:OTH;\r\nM-1\\SI3-1:NEG;\r\nM-1\\SIF2-1:OTH;\r\n");
    const auto group = load();
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(store(group));
    EXPECT_NE(file().find("M-1\\BSF2:OTH;"), std::string::npos);
    EXPECT_NE(file().find("M-1\\SIF2-1:OT;"), std::string::npos);
}

TEST_F(MGroupTest, AThreeCharacterFilterTypeIsTooLongFromTheNextEditionOn) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:NON;\r\nM-1\\BSF2:OTH;\r\n");
    const auto group = load();
    EXPECT_EQ(group.record.value("BSF2"), "OT");
    EXPECT_EQ(t.ui.boxes.size(), 1U);
}

TEST_F(MGroupTest, TheNameOfASignalFollowsItsType) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:ANA;\r\nM-1\\BB\\MN:TEMP;\r\n");
    auto group = load();
    EXPECT_EQ(basebandName(group), "TEMP");
    group.record.set("BSG1", "OTH");
    EXPECT_EQ(basebandName(group), "");
    EXPECT_TRUE(store(group));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:OTH;\r\nM-1\\SI\\N:0;\r\n");
}

TEST_F(MGroupTest, ANameThatTheTypeDoesNotReadIsAskedFor) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\MN:TEMP;\r\nM-1\\BB\\DLN:Link;\r\n"
        "M-1\\X:1;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(store(load()));
    EXPECT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(file(),
              "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Link;\r\nM-1\\SI\\N:0;\r\n"
              "M-1\\BB\\MN:TEMP;\r\nM-1\\X:1;\r\n");
}

TEST_F(MGroupTest, ARowOfAnotherTypeLosesItsName) {
    GroupRow row;
    row.set("SI2-n", "PCM");
    setSubcarrierName(row, "Link");
    EXPECT_EQ(row.value("SI\\DLN-n"), "Link");
    row.set("SI2-n", "ANA");
    setSubcarrierName(row, "TEMP");
    EXPECT_EQ(row.value("SI\\MN-n"), "TEMP");
    EXPECT_EQ(row.value("SI\\DLN-n"), "");
    row.set("SI2-n", "OTH");
    setSubcarrierName(row, "x");
    EXPECT_EQ(subcarrierName(row), "");
}

TEST_F(MGroupTest, ALinkIsRenamedWhereverTheGroupNamesIt) {
    put(kWhole);
    auto group = load();
    setSubcarrierName(group.record.lists["SI\\N"][0], "Link");
    replaceLinkName(group, "Link", "New");
    EXPECT_EQ(basebandName(group), "New");
    EXPECT_EQ(subcarrierName(group.record.rows("SI\\N")[0]), "New");
    EXPECT_EQ(subcarrierName(group.record.rows("SI\\N")[1]), "TEMP");
}

TEST_F(MGroupTest, ALinkIsNotNamedAsAnExistingStream) {
    t.write(groupFile('P', 3), "P-3\\DLN:Taken;\r\n");
    EXPECT_FALSE(mayNameLink(t.context, &t.ui, "Taken"));
    ASSERT_EQ(t.ui.boxes.size(), 1U);
    EXPECT_EQ(t.ui.boxes[0].id, 306);
    EXPECT_EQ(t.ui.boxes[0].text,
              "This Data Link name already exists. Please choose another name.");
    EXPECT_TRUE(mayNameLink(t.context, &t.ui, "Free"));
    EXPECT_TRUE(mayNameLink(t.context, &t.ui, ""));
}

TEST_F(MGroupTest, TheNumberIsThatOfTheSourceOrTheFirstFreeOne) {
    put("M-1\\ID:Other;\r\n", 1);
    put("M-3\\ID:Src;\r\n", 3);
    EXPECT_EQ(multiplexIndex(t.context, &t.ui, "Src"), 3);
    EXPECT_EQ(multiplexIndex(t.context, &t.ui, "New"), 2);
}

TEST_F(MGroupTest, AnIndexedOtherSubcarrierFlagIsNotRead) {
    put("M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SO-1:Y;\r\n");
    t.ui.otherwise = Button::Yes;
    const auto group = load();
    EXPECT_EQ(group.record.value("SO"), "");
    EXPECT_TRUE(store(group));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:0;\r\nM-1\\SO-1:Y;\r\n");
}

TEST_F(MGroupTest, WithoutAParentAllIsSilent) {
    put("M-1\\BSG1:XYZ;\r\nM-1\\X:1;\r\n");
    MultiplexGroup group;
    loadMultiplex(t.context, nullptr, "Src", 1, group);
    EXPECT_TRUE(storeMultiplex(t.context, nullptr, group));
    EXPECT_EQ(file(), "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\nM-1\\SI\\N:0;\r\n");
    EXPECT_TRUE(t.ui.boxes.empty());
}

}  // namespace
}  // namespace kavu
