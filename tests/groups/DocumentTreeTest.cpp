#include "groups/DocumentTree.h"
#include "support/TestContext.h"

#include <string>
#include <vector>

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

std::vector<std::string> namesOf(const std::vector<TreeLink>& links) {
    std::vector<std::string> names;
    for (const auto& link : links) {
        const auto group =
            link.group > 0 ? std::string(1, link.letter) + std::to_string(link.group) : "";
        names.push_back(link.name + " " + group);
    }
    return names;
}

TEST(DocumentTreeTest, StreamsThatTheTracksOfARecorderNameStandBelowIt) {
    test::TestContext t;
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:Tape;\r\nG\\DST-1:OTH;\r\n");
    t.write("[kavu]DSRCE.R01",
            "R-1\\ID:Tape;\r\nR-1\\N:4;\r\nR-1\\DSI-1:Time;\r\nR-1\\CDLN-1:Time;\r\n"
            "R-1\\DSI-2:Home;\r\nR-1\\CDLN-2:Pcm;\r\nR-1\\PDLN-2:Pcm;\r\n"
            "R-1\\BDLN-3:Bus;\r\nR-1\\DSI-4:Radio;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:Tape;\r\nM-1\\BB\\DLN:Own;\r\n");
    t.write("[kavu]MULT.M02", "M-2\\ID:Radio;\r\nM-2\\BB\\DLN:Far;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Own;\r\nP-1\\TF:ONE;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:Pcm;\r\nP-2\\TF:ONE;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:Far;\r\nP-3\\TF:ONE;\r\n");
    t.write("[kavu]PCM1553.B04", "B-4\\DLN:Bus;\r\n");

    const auto tree = readDocumentTree(t.context, &t.ui);

    ASSERT_EQ(tree.dataSources.size(), 1U);
    EXPECT_EQ(tree.dataSources[0].groupLetter, 'R');
    EXPECT_THAT(namesOf(tree.dataSources[0].links), ElementsAre("Own P1"));
    EXPECT_THAT(namesOf(tree.dataSources[0].tracks), ElementsAre("Pcm P2", "Bus B4", "Far P3"))
        << "a track of a channel that is no stream has nothing to show";
    EXPECT_TRUE(tree.unlinked.empty());
}

TEST(DocumentTreeTest, StreamsThatNothingLeadsToAreShownOnce) {
    test::TestContext t;
    t.write(working::kGeneral, "G\\DSI\\N:1;\r\nG\\DSI-1:Radio;\r\nG\\DST-1:RF;\r\n");
    t.write("[kavu]MULT.M01", "M-1\\ID:Radio;\r\nM-1\\BB\\DLN:Linked;\r\n");
    t.write("[kavu]MULT.M02", "M-2\\BB\\DLN:Of nobody;\r\n");
    t.write("[kavu]PCMFMT.P01", "P-1\\DLN:Linked;\r\nP-1\\AEF\\N:1;\r\nP-1\\AEF\\DLN-1:Inner;\r\n");
    t.write("[kavu]PCMFMT.P02", "P-2\\DLN:Inner;\r\n");
    t.write("[kavu]PCMFMT.P03", "P-3\\DLN:Second;\r\n");
    t.write("[kavu]PCMFMT.P04",
            "P-4\\DLN:Of nobody;\r\nP-4\\AEF\\N:1;\r\nP-4\\AEF\\DLN-1:Second;\r\n");
    t.write("[kavu]PCMFMT.P05", "P-5\\TF:ONE;\r\n");
    t.write("[kavu]PCMFMT.P06", "P-6\\DLN:Ring;\r\nP-6\\AEF\\N:1;\r\nP-6\\AEF\\DLN-1:Round;\r\n");
    t.write("[kavu]PCMFMT.P07", "P-7\\DLN:Round;\r\nP-7\\AEF\\N:1;\r\nP-7\\AEF\\DLN-1:Ring;\r\n");
    t.write("[kavu]PCMMEAS.D01", "D-1\\DLN:Of nobody;\r\nD-1\\MN-1-1:A;\r\n");
    t.write("[kavu]PCMMEAS.D02", "D-2\\DLN:Lone;\r\nD-2\\MN-1-1:B;\r\nD-2\\MN-1-2:C;\r\n");
    t.write("[kavu]PCM1553.B03", "B-3\\NBS\\N:1;\r\n");
    t.write("[kavu]PCMS.S08", "S-8\\DLN:Messages;\r\n");

    const auto tree = readDocumentTree(t.context, &t.ui);

    EXPECT_THAT(namesOf(tree.unlinked),
                ElementsAre("Of nobody P4", " P5", "Ring P6", "Lone D2", " B3", "Messages S8"));
    EXPECT_EQ(tree.unlinked[0].measurements, 1U);
    EXPECT_THAT(tree.unlinked[0].embedded, ElementsAre("Second"));
    EXPECT_EQ(tree.unlinked[3].measurements, 2U);
}

TEST(DocumentTreeTest, VendorGroupsAreShownWithAndWithoutAName) {
    test::TestContext t;
    t.write("[kavu]V.V01", "V-1\\ID:Radio;\r\nV-1\\VN:KAV;\r\n");
    t.write("[kavu]V.V03", "V-3\\VN:KAV;\r\n");
    const auto tree = readDocumentTree(t.context, &t.ui);
    ASSERT_EQ(tree.vendors.size(), 2U);
    EXPECT_EQ(tree.vendors[0].name, "Radio");
    EXPECT_EQ(tree.vendors[0].group, 1);
    EXPECT_EQ(tree.vendors[1].name, "");
    EXPECT_EQ(tree.vendors[1].group, 3);
}

}  // namespace
}  // namespace kavu
