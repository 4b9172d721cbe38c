#include "groups/DataSources.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct DataSources : testing::Test {
    test::TestContext t;
};

struct TypeClass {
    const char* type;
    char expected;
};

class DataSourceClass : public testing::TestWithParam<TypeClass> {};

TEST_P(DataSourceClass, IsALetter) {
    EXPECT_EQ(dataSourceClass(GetParam().type), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Types, DataSourceClass,
                         testing::Values(TypeClass{"RF", 'R'}, TypeClass{"rfx", 'R'},
                                         TypeClass{"TAP", 'T'}, TypeClass{"STO", 'T'},
                                         TypeClass{"DRS", 'T'}, TypeClass{"R", 'T'},
                                         TypeClass{"OTH", 'O'}, TypeClass{"OTHER", 'O'},
                                         TypeClass{"", 'O'}));

TEST_F(DataSources, AreListedByTheCountOfTheGroup) {
    t.write(working::kGeneral,
            "G\\DSI\\N:2;\r\nG\\DSI-1:One;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Two;\r\nG\\DST-2:TAP;\r\n"
            "G\\DSI-3:Three;\r\n");
    std::vector<std::string> names;
    EXPECT_EQ(listDataSources(t.context, &t.ui, &names), 2);
    EXPECT_THAT(names, ElementsAre("One", "Two"));
    EXPECT_EQ(listDataSources(t.context, nullptr), 2);
}

TEST_F(DataSources, CountIsCutTo99) {
    t.write(working::kGeneral, "G\\DSI\\N:2000000000;\r\n");
    EXPECT_EQ(listDataSources(t.context, &t.ui), 99);
}

TEST_F(DataSources, WithoutAGeneralGroupThereAreNone) {
    EXPECT_EQ(listDataSources(t.context, &t.ui), 0);
    EXPECT_THAT(t.ui.boxes, IsEmpty());
}

TEST_F(DataSources, InfoGivesNameTypeAndClass) {
    t.write(working::kGeneral, "G\\DSI-1:One;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Two;\r\n");
    std::string name;
    std::string type;
    EXPECT_EQ(dataSourceInfo(t.context, &t.ui, 1, name, type), 'R');
    EXPECT_EQ(name, "One");
    EXPECT_EQ(type, "RF");
    EXPECT_EQ(dataSourceInfo(t.context, &t.ui, 2, name, type), 'O');
    EXPECT_EQ(name, "Two");
    EXPECT_EQ(type, "");
    EXPECT_EQ(dataSourceInfo(t.context, &t.ui, 3, name, type), 'O');
    EXPECT_EQ(name, "");
}

TEST_F(DataSources, ANameOf33CharactersIsCutTo32OnReadingAndTold) {
    const std::string name(33, 'x');
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:" + name + ";\r\n");
    t.reader.setLogFile("");
    std::vector<std::string> names;
    listDataSources(t.context, &t.ui, &names);
    EXPECT_THAT(names, ElementsAre(std::string(32, 'x')));
    EXPECT_TRUE(t.ui.hasText("can only be 32 characters long"));
}

TEST_F(DataSources, AGeneralGroupThatCanNotBeReadIsReported) {
    ASSERT_TRUE(makeFolder(t.store.pathOf(working::kGeneral)).ok());
    EXPECT_EQ(listDataSources(t.context, &t.ui), 0);
    EXPECT_TRUE(t.ui.hasText("Unable to read '" + t.store.pathOf(working::kGeneral) + "'"));
    EXPECT_TRUE(t.ui.hasText("Reason: "));
}

// --- Group files by name -------------------------------------------------------------------

TEST_F(DataSources, GroupIsFoundByItsName) {
    t.write("[kavu]DSRCE.T02", "T-2\\ID:Radio;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\TF:ONE;\r\nP-3\\DLN:Link;\r\n");
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'T', "Radio"), 2);
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'P', "Link"), 3);
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'D', "Link"), 0);
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'T', "Other"), 0);
}

TEST_F(DataSources, ANameThatDiffersInCaseIsAnother) {
    t.write("[kavu]DSRCE.T01", "T-1\\ID:RADIO;\r\n");
    t.write("[kavu]DSRCE.T02", "T-2\\ID:radio;\r\n");
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'T', "radio"), 2);
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'T', "RADIO"), 1);
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'T', "Radio"), 0);
}

TEST_F(DataSources, NoNameAsksForTheFirstFreeIndexNegated) {
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'M', ""), -1);
    t.write("[kavu]MULT.M01", "M-1\\ID:a;\r\n");
    t.write("[kavu]MULT.M03", "");
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'M', ""), -2);
    for (int index = 1; index <= 99; ++index) {
        t.write(formatPrintf("[kavu]DSRCE.R%2.2d", index), "");
    }
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'R', ""), -100);
}

TEST_F(DataSources, MessageGroupsAreUnknownBefore2005) {
    t.write("[kavu]PCMS.S01", "S-1\\DLN:Link;\r\n");
    t.document.version = 2004;
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'S', "Link"), 0);
    t.document.version = 2005;
    EXPECT_EQ(findGroupIndex(t.context, &t.ui, 'S', "Link"), 1);
}

// --- Links ---------------------------------------------------------------------------------

TEST_F(DataSources, LinksAreThoseOfAllMultiplexGroupsAlsoBehindAGap) {
    t.write("[kavu]MULT.M01",
            "M-1\\ID:One;\r\nM-1\\BB\\DLN:A;\r\nM-1\\SI\\N:2;\r\nM-1\\SI\\DLN-1:B;\r\n"
            "M-1\\SI\\DLN-2:C;\r\nM-1\\SI\\DLN-3:not counted;\r\n");
    t.write("[kavu]MULT.M99", "M-99\\BB\\DLN:D;\r\n");
    std::vector<std::string> links;
    EXPECT_TRUE(gatherDataLinks(t.context, &t.ui, links));
    EXPECT_THAT(links, ElementsAre("A", "B", "C", "D"));
}

TEST_F(DataSources, ALinkThatIsNamedTwiceIsGivenOnce) {
    t.write("[kavu]MULT.M01", "M-1\\BB\\DLN:A;\r\nM-1\\SI\\N:1;\r\nM-1\\SI\\DLN-1:A;\r\n");
    t.write("[kavu]MULT.M02", "M-2\\BB\\DLN:A;\r\n");
    std::vector<std::string> links;
    EXPECT_TRUE(gatherDataLinks(t.context, &t.ui, links));
    EXPECT_THAT(links, ElementsAre("A"));
}

TEST_F(DataSources, ACountOfLinksOutOfAllReasonIsCut) {
    t.write("[kavu]MULT.M01",
            "M-1\\SI\\N:2147483647;\r\nM-1\\SI\\DLN-99:A;\r\n"
            "M-1\\SI\\DLN-100:B;\r\n");
    std::vector<std::string> links;
    EXPECT_TRUE(gatherDataLinks(t.context, &t.ui, links));
    EXPECT_THAT(links, ElementsAre("A"));
}

TEST_F(DataSources, StreamKindFollowsTheGroupThatBearsTheLink) {
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Pcm;\r\nP-1\\TF:ONE;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:Bus;\r\nP-2\\TF:1553;\r\n");
    t.write("[kavu]PCM1553.B01", "B-1\\DLN:Lone bus;\r\n");
    t.write("[kavu]PCMS.S01", "S-1\\DLN:Messages;\r\n");
    t.document.version = 2009;
    EXPECT_EQ(streamKindOfLink(t.context, &t.ui, "Pcm"), StreamKind::PcmOrNone);
    EXPECT_EQ(streamKindOfLink(t.context, &t.ui, "Bus"), StreamKind::Bus);
    EXPECT_EQ(streamKindOfLink(t.context, &t.ui, "Lone bus"), StreamKind::Bus);
    EXPECT_EQ(streamKindOfLink(t.context, &t.ui, "Messages"), StreamKind::MessageData);
    EXPECT_EQ(streamKindOfLink(t.context, nullptr, "Nobody"), StreamKind::PcmOrNone);
    t.document.version = 2007;
    EXPECT_EQ(streamKindOfLink(t.context, &t.ui, "Messages"), StreamKind::PcmOrNone);
}

}  // namespace
}  // namespace kavu
