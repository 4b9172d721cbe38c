#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/GroupSamples.h"
#include "groups/RGroup.h"
#include "support/TestContext.h"

#include <algorithm>
#include <set>

namespace kavu {
namespace {

using test::contains;
using test::TestContext;

const Field& fieldOf(const ChannelType& type, std::string_view code) {
    const auto it = std::find_if(type.fields.begin(), type.fields.end(),
                                 [&](const Field& field) { return field.code == code; });
    EXPECT_NE(it, type.fields.end()) << code;
    return *it;
}

std::vector<std::string> labelsShown(const ChannelType& type, int edition) {
    std::vector<std::string> labels;
    for (const auto* field : detailFields(type, edition)) {
        if (!isHiddenDetail(*field, edition)) {
            labels.emplace_back(field->label);
        }
    }
    return labels;
}

class RTracks : public ::testing::Test {
  protected:
    RecorderGroup read(int edition, const std::string& commands) {
        t.document.version = edition;
        t.write(groupFile('R', 1), "R-1\\ID:Deck;\r\n" + commands);
        auto group = readRecorder(t.context, &t.ui, "Deck");
        EXPECT_TRUE(group.has_value());
        return std::move(*group);
    }
    std::string written(const RecorderGroup& group) {
        return recorderText(group, t.document.version);
    }
    /// The text that a file becomes when nobody edits it.
    std::string rewritten(int edition, const std::string& commands) {
        return written(read(edition, commands));
    }

    TestContext t;
};

TEST(ChannelTypes, AreFourteenInTheOrderOfTheirList) {
    std::vector<std::string> values;
    for (const auto& type : channelTypes()) {
        values.emplace_back(type.value);
        EXPECT_FALSE(type.text.empty());
    }
    EXPECT_EQ(values, (std::vector<std::string>{"PCMIN", "ANAIN", "DISIN", "TIMEIN", "VIDIN",
                                                "UARTIN", "1553IN", "429IN", "MSGIN", "IMGIN",
                                                "1394IN", "PARIN", "ETHIN", "TSPIIN"}));
}

TEST(ChannelTypes, ComeWithTheirEditions) {
    EXPECT_EQ(channelType("PCMIN", 2001), nullptr);
    EXPECT_NE(channelType("PCMIN", 2004), nullptr);
    EXPECT_EQ(channelType("ETHIN", 2005), nullptr);
    EXPECT_NE(channelType("ETHIN", 2007), nullptr);
    EXPECT_EQ(channelType("TSPIIN", 2009), nullptr);
    EXPECT_NE(channelType("TSPIIN", 2011), nullptr);
    EXPECT_EQ(channelType("XYZ", 2011), nullptr);
    EXPECT_EQ(channelType("", 2011), nullptr);
}

TEST(ChannelTypes, HaveAPromptForEveryDetailAndNoCodeTwice) {
    for (const auto& type : channelTypes()) {
        std::set<std::string_view> codes;
        for (const auto& field : type.fields) {
            EXPECT_TRUE(codes.insert(field.code).second) << field.code;
            if (!isItemField(field)) {
                EXPECT_EQ(field.prompt.empty(), field.kind == FieldKind::Count) << field.code;
            }
            EXPECT_EQ(field.page, "Tape8") << field.code;
            EXPECT_EQ(field.box, type.text) << field.code;
            EXPECT_GE(field.firstEdition, 2004) << field.code;
        }
        EXPECT_EQ(type.itemName.empty(), type.addText.empty());
    }
}

TEST(ChannelTypes, ReadTimeSourcesByTheirValueAndNotByTheFirstTextThatBeginsSo) {
    const auto& format = fieldOf(*channelType("TIMEIN", 2011), "TFMT-n");
    EXPECT_EQ(textOfValue(format, 2011, "I", ""), "Internal");
    EXPECT_EQ(textOfValue(format, 2011, "A", ""), "IRIG-A");
    EXPECT_EQ(valueOfText(format, 2011, "Internal"), "I");
    EXPECT_EQ(textOfValue(format, 2011, "Q", "Q"), "Q");
}

TEST(ChannelTypes, KeepTheMisspeltLabelOfTheOverwriteFilter) {
    EXPECT_EQ(fieldOf(*channelType("PCMIN", 2011), "POF\\E-n").label,
              "Post Process Overwite/Filter Enabled");
}

TEST_F(RTracks, ShowOnlyLinkFormatAndPackingOfPcmIn2004) {
    const auto& pcm = *channelType("PCMIN", 2004);
    EXPECT_EQ(
        labelsShown(pcm, 2004),
        (std::vector<std::string>{"Data Link Name", "Data Type Format", "Data Packing Option"}));
    const auto group = read(2004,
                            "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\ICE-1:180;"
                            "\r\nR-1\\CDLN-1:Link;\r\nR-1\\PTF-1:MPEG1;\r\n");
    EXPECT_EQ(group.tracks[0].details.values.count("ICE"), 0u);
    EXPECT_EQ(group.tracks[0].details.values.at("PDLN"), "Link");
    const auto text = written(group);
    EXPECT_FALSE(contains(text, "ICE-1"));
    EXPECT_TRUE(contains(text, "R-1\\CDT-1:PCMIN;\r\nR-1\\CDLN-1:Link;\r\nR-1\\PTF-1:MPEG1;\r\n"));
}

TEST_F(RTracks, ReadTheLinkOf2005UnderTheKeyOfItsTypeAsWell) {
    const std::string head =
        "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:PCMIN;\r\n"
        "R-1\\TK1-2:2;\r\nR-1\\CDT-2:429IN;\r\n";
    auto group = read(2005, head + "R-1\\PDLN-1:Stream;\r\nR-1\\BDLN-2:Bus;\r\n");
    EXPECT_EQ(group.tracks[0].details.values.at("PDLN"), "Stream");
    EXPECT_TRUE(contains(written(group), "R-1\\CDT-1:PCMIN;\r\nR-1\\CDLN-1:Stream;\r\n"));
    EXPECT_TRUE(contains(written(group), "R-1\\CDT-2:429IN;\r\nR-1\\CDLN-2:Bus;\r\n"));
    EXPECT_TRUE(recorderLeftovers(group).leftovers(written(group)).empty());
    group = read(2005, head + "R-1\\PDLN-1:Old;\r\nR-1\\CDLN-1:Stream;\r\n");
    EXPECT_EQ(group.tracks[0].details.values.at("PDLN"), "Stream") << "the other one goes first";
    group = read(2007, head + "R-1\\PDLN-1:Old;\r\n");
    EXPECT_EQ(trackValue(group.tracks[0], "CDLN-n"), "");
}

TEST_F(RTracks, GiveTheInputClockEdgeAPlaceFrom2007On) {
    const auto text =
        rewritten(2007, "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\ICE-1:180;\r\n");
    EXPECT_TRUE(contains(text, "R-1\\ICE-1:180;"));
}

TEST_F(RTracks, ReadTheAnalogConversionOnlyIn2007) {
    const std::string file =
        "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:ANAIN;\r\nR-1\\ACH\\N-1:1;\r\n"
        "R-1\\AMN-1-1:Volts;\r\nR-1\\ALSV-1-1:0.1;\r\nR-1\\AECS-1-1:1;\r\nR-1\\AECO-1-1:2;\r\n"
        "R-1\\AECU-1-1:V;\r\nR-1\\AF-1-1:2;\r\n";
    for (const int edition : {2004, 2005, 2009, 2011}) {
        const auto text = rewritten(edition, file);
        EXPECT_TRUE(contains(text, "AMN-1-1:Volts;")) << edition;
        for (const auto* code : {"ALSV", "AECS", "AECO", "AECU", "AF-"}) {
            EXPECT_FALSE(contains(text, code)) << edition << code;
        }
    }
    const auto text = rewritten(2007, file);
    for (const auto* code :
         {"ALSV-1-1:0.1", "AECS-1-1:1", "AECO-1-1:2", "AECU-1-1:V", "AF-1-1:2"}) {
        EXPECT_TRUE(contains(text, code)) << code;
    }
}

TEST_F(RTracks, ShowNoTypeForAnUnknownOneAndWriteNoBlock) {
    const auto group =
        read(2011, "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:XYZ;\r\nR-1\\PDTF-1:1;\r\n");
    EXPECT_EQ(typeOf(group.tracks[0], 2011), nullptr);
    EXPECT_TRUE(group.tracks[0].details.values.empty());
    const auto text = written(group);
    EXPECT_FALSE(contains(text, "CDT"));
    EXPECT_FALSE(contains(text, "PDTF"));
    EXPECT_EQ(recorderLeftovers(group).leftovers(text),
              (std::vector<std::string>{"R-1\\CDT-1:XYZ;", "R-1\\PDTF-1:1;"}));
}

TEST_F(RTracks, ShowReverseForEveryDirectionButForward) {
    const auto group =
        read(2011,
             "R-1\\N:4;\r\nR-1\\TK1-1:1;\r\nR-1\\TK3-1:REV;\r\nR-1\\TK1-2:2;\r\n"
             "R-1\\TK3-2:XX;\r\nR-1\\TK1-3:3;\r\nR-1\\TK3-3:fwd;\r\nR-1\\TK1-4:4;\r\n");
    std::vector<std::string> directions;
    for (const auto& track : group.tracks) {
        directions.push_back(trackValue(track, "TK3-n"));
    }
    EXPECT_EQ(directions, (std::vector<std::string>{"REV", "REV", "FWD", "FWD"}));
}

TEST_F(RTracks, HaveTheirDefaultsWhenCommandsAreMissing) {
    const auto text = rewritten(2011, "R-1\\N:1;\r\nR-1\\TK1-1:7;\r\n");
    EXPECT_TRUE(
        contains(text, "R-1\\TK1-1:7;\r\nR-1\\IDDR-1:N;\r\nR-1\\TK3-1:FWD;\r\nR-1\\CHE-1:F;\r\n"));
    EXPECT_TRUE(contains(rewritten(2001, "R-1\\N:1;\r\nR-1\\TK1-1:7;\r\n"),
                         "R-1\\TK1-1:7;\r\nR-1\\TK3-1:FWD;\r\n"));
}

TEST_F(RTracks, HaveTheColumnsOfTheirEdition) {
    const auto count = [](int edition) {
        const auto fields = trackFields();
        return std::count_if(fields.begin(), fields.end(),
                             [&](const Field& field) { return isKnownIn(edition, field); });
    };
    EXPECT_EQ(count(2011), 9);
    EXPECT_EQ(count(2009), 8);
    EXPECT_EQ(count(2007), 8);
    EXPECT_EQ(count(2005), 6);
    EXPECT_EQ(count(2004), 6);
    EXPECT_EQ(count(2001), 4);
    EXPECT_EQ(count(1996), 4);
}

TEST_F(RTracks, KeepTheDetailsOfADeletedTrackForANewOneOfItsNumber) {
    auto group = read(2011,
                      "R-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:8;\r\nR-1\\CDT-2:TIMEIN;\r\n"
                      "R-1\\TFMT-2:B;\r\n");
    deleteTrack(group, 1);
    EXPECT_EQ(group.record.value("N"), "1");
    Track other;
    setTrackValue(other, "TK1-n", "9");
    addTrack(group, other);
    EXPECT_EQ(group.tracks[1].details, TrackDetails{});
    Track same;
    setTrackValue(same, "TK1-n", "8");
    setTrackValue(same, "CDT-n", "TIMEIN");
    addTrack(group, same);
    EXPECT_EQ(group.tracks[2].details.values.at("TFMT"), "B");
    EXPECT_EQ(group.record.value("N"), "3");
    EXPECT_TRUE(contains(written(group), "R-1\\TFMT-3:B;"));
}

TEST_F(RTracks, SkipARowWithoutATrackNumber) {
    const auto group = read(2011,
                            "R-1\\N:3;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-2:PCMIN;\r\nR-1\\TK1-3:3;\r\n"
                            "R-1\\CDT-3:VIDIN;\r\nR-1\\VED-3:20;\r\n");
    ASSERT_EQ(group.tracks.size(), 2u);
    // Its commands are not those of the next track, which stays behind them.
    EXPECT_TRUE(contains(written(group), "R-1\\TK1-3:3;"));
    EXPECT_TRUE(contains(written(group), "R-1\\VED-3:20;"));
    EXPECT_EQ(recorderLeftovers(group).leftovers(written(group)),
              std::vector<std::string>{"R-1\\CDT-2:PCMIN;"});
}

TEST_F(RTracks, CloseTheGapOfANumberThatNothingHas) {
    const auto group = read(2011, "R-1\\N:3;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-3:3;\r\n");
    EXPECT_TRUE(contains(written(group), "R-1\\TK1-2:3;"));
}

TEST_F(RTracks, DropTheRawValueOfAChoiceButOfferToKeepIt) {
    const auto group =
        read(2011, "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\PDP-1:QQ;\r\n");
    EXPECT_EQ(group.tracks[0].details.values.at("PDP"), "QQ");
    EXPECT_FALSE(contains(written(group), "PDP"));
    EXPECT_EQ(recorderLeftovers(group).leftovers(written(group)),
              std::vector<std::string>{"R-1\\PDP-1:QQ;"});
}

TEST_F(RTracks, WriteTheCountOfItemsInFrontOfThem) {
    const std::string items =
        "R-1\\NAS\\N-1:2;\r\nR-1\\ASN-1-1:1;\r\nR-1\\ANM-1-1:One;\r\nR-1\\ASN-1-2:2;\r\n"
        "R-1\\ANM-1-2:Two;\r\n";
    const auto text =
        rewritten(2009, "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:429IN;\r\n" + items);
    EXPECT_TRUE(contains(text, items));
}

TEST_F(RTracks, BoundCountsOfItemsByTheFile) {
    const auto group = read(2011,
                            "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:ANAIN;\r\n"
                            "R-1\\ACH\\N-1:2000000000;\r\nR-1\\AMN-1-1:A;\r\n");
    EXPECT_LT(group.tracks[0].details.items.at("ACH\\N-n").size(), 300u);
}

TEST_F(RTracks, ReadManyItemsWithoutCuttingThem) {
    std::string file = "R-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:DISIN;\r\nR-1\\NDM\\N-1:1000;\r\n";
    for (int m = 1; m <= 1000; ++m) {
        file += "R-1\\DMN-1-" + std::to_string(m) + ":M" + std::to_string(m) + ";\r\n";
    }
    const auto group = read(2011, file);
    EXPECT_EQ(group.tracks[0].details.items.at("NDM\\N-n").size(), 1000u);
    EXPECT_TRUE(contains(written(group), "R-1\\DMN-1-1000:M1000;"));
}

TEST_F(RTracks, KeepWhatIsUnknownWithTheNumberThatTheirTrackHasNow) {
    auto group = read(2011,
                      "R-1\\N:3;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\nR-1\\TK1-3:3;\r\n"
                      "R-1\\TKQ-1:a;\r\nR-1\\TKQ-2:b;\r\nR-1\\TKQ-3:c;\r\nR-1\\TKQ-3:d;\r\n"
                      "R-1\\VCO\\Z-3-1:e;\r\nR-1\\RIMQ:f;\r\nR-1\\RIMMID-2:g;\r\n"
                      "R-1\\XQ-2:h;\r\nR-1\\XQ-3:i;\r\n");
    deleteTrack(group, 1);
    EXPECT_EQ(recorderLeftovers(group).leftovers(written(group)),
              (std::vector<std::string>{"R-1\\TKQ-1:a;", "R-1\\TKQ-2:c;", "R-1\\TKQ-2:d;",
                                        "R-1\\VCO\\Z-2-1:e;", "R-1\\RIMQ:f;", "R-1\\RIMMID-2:g;",
                                        "R-1\\XQ-2:h;", "R-1\\XQ-3:i;"}));
}

/// One track of each type with every field that the edition knows: the written order is that
/// of the tables, from both sides of each gate.
TEST_F(RTracks, AreWrittenInTheOrderOfTheTables) {
    for (const int edition : {2004, 2005, 2007, 2009, 2011}) {
        t.document.version = edition;
        for (const auto& type : channelTypes()) {
            if (channelType(type.value, edition) == nullptr) {
                continue;
            }
            Track track;
            std::vector<std::string> expected;
            const auto valueFor = [&](const Field& field) {
                return field.choices.empty() ? std::string("7")
                                             : std::string(field.choices.front().value);
            };
            for (const auto& field : trackFields()) {
                const auto value =
                    field.code == "CDT-n" ? std::string(type.value) : valueFor(field);
                setTrackValue(track, field.code, value);
                if (isKnownIn(edition, field)) {
                    expected.push_back(fieldCode(field.code, {1, 0}));
                }
            }
            for (const auto* field : detailFields(type, edition)) {
                track.details.values[detailKey(type, *field)] = valueFor(*field);
                expected.push_back(fieldCode(field->code, {1, 0}));
            }
            if (const auto* count = itemCount(type, edition)) {
                auto& rows = track.details.items[std::string(count->code)];
                rows.emplace_back();
                expected.push_back(fieldCode(count->code, {1, 0}));
                for (const auto* field : itemFields(type, edition)) {
                    rows.back().push_back(valueFor(*field));
                    expected.push_back(fieldCode(field->code, {1, 1}));
                }
            }
            GroupWriter writer('R', 1);
            writeTrack(writer, track, {}, edition);
            std::vector<std::string> codes;
            for (const auto& line : splitLines(writer.text())) {
                codes.push_back(line.substr(4, line.find(':') - 4));
            }
            EXPECT_EQ(codes, expected) << type.value << " " << edition;
            // And what was written is read again.
            const auto group = read(edition, "R-1\\N:1;\r\n" + writer.text());
            ASSERT_EQ(group.tracks.size(), 1u);
            EXPECT_EQ(group.tracks[0].details, track.details) << type.value << " " << edition;
        }
    }
}

TEST_F(RTracks, HaveASectionOfItemsOnlyInTheirEditions) {
    EXPECT_EQ(itemCount(*channelType("1553IN", 2007), 2007), nullptr);
    EXPECT_NE(itemCount(*channelType("1553IN", 2009), 2009), nullptr);
    EXPECT_EQ(itemCount(*channelType("ETHIN", 2007), 2007), nullptr);
    EXPECT_NE(itemCount(*channelType("ETHIN", 2009), 2009), nullptr);
    EXPECT_EQ(itemCount(*channelType("TIMEIN", 2011), 2011), nullptr);
    EXPECT_NE(itemCount(*channelType("ANAIN", 2004), 2004), nullptr);
}

}  // namespace
}  // namespace kavu
