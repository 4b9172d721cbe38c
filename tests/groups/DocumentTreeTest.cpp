#include "groups/DocumentTree.h"
#include "support/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::ElementsAre;

TEST(DocumentTreeTest, ShowsSourcesLinksAndStreams) {
    test::TestContext t;
    t.write(
        working::kGeneral,
        "G\\DSI\\N:2;\r\nG\\DSI-1:Radio;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Tape;\r\nG\\DST-2:STO;\r\n");
    t.write("[kavu]DSRCE.T02", "T-2\\ID:Radio;\r\n");
    t.write("[kavu]DSRCE.R05", "R-5\\ID:Tape;\r\n");
    t.write("[kavu]DSRCE.R06", "R-6\\ID:Radio;\r\n");
    t.write("[kavu]MULT.M03",
            "M-3\\ID:Radio;\r\nM-3\\BB\\DLN:Pcm;\r\nM-3\\SI\\N:1;\r\nM-3\\SI\\DLN-1:Bus;\r\n");
    t.write("[kavu]MULT.M04", "M-4\\ID:Radio;\r\nM-4\\BB\\DLN:Nobody;\r\n");
    t.write("[kavu]PCMFMT.P01",
            "P-1\\DLN:Pcm;\r\nP-1\\TF:ONE;\r\nP-1\\AEF\\N:1;\r\nP-1\\AEF\\DLN-1:Inner;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Pcm;\r\nD-1\\MN-1-1:A;\r\nD-1\\MN-1-2:B;\r\n");
    t.write("[kavu]PCM1553.B07", "B-7\\DLN:Bus;\r\nB-7\\MN-1-1:C;\r\n");

    const auto tree = readDocumentTree(t.context, &t.ui);

    ASSERT_EQ(tree.dataSources.size(), 2U);
    const auto& radio = tree.dataSources[0];
    EXPECT_EQ(radio.name, "Radio");
    EXPECT_EQ(radio.type, "RF");
    EXPECT_EQ(radio.sourceClass, 'R');
    EXPECT_EQ(radio.group, 2);
    EXPECT_EQ(radio.multiplex, 3);
    ASSERT_EQ(radio.links.size(), 3U);
    EXPECT_EQ(radio.links[0].name, "Pcm");
    EXPECT_EQ(radio.links[0].kind, "PCM (Class 1)");
    EXPECT_EQ(radio.links[0].group, 1);
    EXPECT_EQ(radio.links[0].measurements, 2U);
    EXPECT_THAT(radio.links[0].embedded, ElementsAre("Inner"));
    EXPECT_EQ(radio.links[1].kind, "1553");
    EXPECT_EQ(radio.links[1].group, 7);
    EXPECT_EQ(radio.links[1].measurements, 1U);
    EXPECT_EQ(radio.links[2].kind, "");
    EXPECT_EQ(radio.links[2].group, 0);
    const auto& tape = tree.dataSources[1];
    EXPECT_EQ(tape.type, "STO");
    EXPECT_EQ(tape.sourceClass, 'T');
    EXPECT_EQ(tape.group, 5);
    EXPECT_EQ(tape.multiplex, 0);
    EXPECT_TRUE(tape.links.empty());
}

struct Kind {
    const char* name;
    const char* file;
    const char* commands;
    int edition;
    const char* text;
};

class StreamKinds : public testing::TestWithParam<Kind> {};

TEST_P(StreamKinds, AreShownByTheirText) {
    const auto& c = GetParam();
    test::TestContext t(c.edition);
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:S;\r\nG\\DST-1:RF;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:S;\r\nM-1\\BB\\DLN:L;\r\n");
    t.write(c.file, c.commands);
    const auto tree = readDocumentTree(t.context, nullptr);
    EXPECT_EQ(tree.dataSources.at(0).links.at(0).kind, c.text);
    EXPECT_EQ(tree.dataSources.at(0).links.at(0).group, *c.text == 0 ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(
    Links, StreamKinds,
    testing::Values(
        Kind{"One", "[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\nP-1\\TF:ONE;\r\n", 2011, "PCM (Class 1)"},
        Kind{"Two", "[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\nP-1\\TF:TWO;\r\n", 2011, "PCM (Class 2)"},
        Kind{"Packet", "[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\nP-1\\TF:PKTM;\r\n", 2005, "Packet"},
        Kind{"Bus", "[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\nP-1\\TF:1553;\r\n", 2011, "1553"},
        Kind{"Other", "[kavu]PCMFMT.P01", "P-1\\DLN:L;\r\nP-1\\TF:ALTC;\r\n", 2011, "ALTC"},
        Kind{"LoneBus", "[kavu]PCM1553.B01", "B-1\\DLN:L;\r\n", 1996, "1553"},
        Kind{"Message", "[kavu]PCMS.S01", "S-1\\DLN:L;\r\n", 2009, "Message Data"},
        Kind{"PacketGroup", "[kavu]PCMS.S01", "S-1\\DLN:L;\r\n", 2007, "Packet"},
        Kind{"MessageGroupTooEarly", "[kavu]PCMS.S01", "S-1\\DLN:L;\r\n", 2004, ""},
        Kind{"Pam", "[kavu]PCMPAM.A01", "A-1\\DLN:L;\r\n", 2011, "PAM"},
        Kind{"CaseDiffers", "[kavu]PCMFMT.P01", "P-1\\DLN:l;\r\nP-1\\TF:ONE;\r\n", 2011, ""}),
    [](const auto& row) { return row.param.name; });

TEST(DocumentTreeTest, ASourceOfAnotherClassIsLookedForInBothGroups) {
    test::TestContext t;
    t.write(working::kGeneral,
            "G\\DSI\\N:2;\r\nG\\DSI-1:One;\r\nG\\DST-1:OTH;\r\nG\\DSI-2:Two;\r\n");
    t.write("[kavu]DSRCE.R01", "R-1\\ID:One;\r\n");
    t.write("[kavu]DSRCE.R02", "R-2\\ID:Two;\r\n");
    t.write("[kavu]DSRCE.T03", "T-3\\ID:Two;\r\n");
    const auto tree = readDocumentTree(t.context, nullptr);
    EXPECT_EQ(tree.dataSources.at(0).sourceClass, 'O');
    EXPECT_EQ(tree.dataSources.at(0).group, 1);
    EXPECT_EQ(tree.dataSources.at(1).group, 3);
}

TEST(DocumentTreeTest, OfAnEmptyDocumentIsEmpty) {
    test::TestContext t;
    EXPECT_TRUE(readDocumentTree(t.context, &t.ui).dataSources.empty());
    EXPECT_TRUE(t.ui.boxes.empty());
}

}  // namespace
}  // namespace kavu
