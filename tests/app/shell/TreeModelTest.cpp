#include "app/framework/QtText.h"
#include "app/shell/TreeModel.h"
#include "conversion/ConversionStore.h"
#include "core/document/OpenDocument.h"
#include "groups/DocumentTree.h"
#include "support/TestApplication.h"

#include <chrono>
#include <iostream>
#include <set>

#include <QAbstractItemModelTester>

namespace kavu {
namespace {

constexpr TreeBranches kAllBranches = {
    .general = true, .conversion = true, .hardware = true, .pam = true};

/// One line for each item, indented by its level: label and command.
void describe(const TreeModel& model, const QModelIndex& parent, const std::string& indent,
              std::vector<std::string>& lines) {
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const auto index = model.index(row, 0, parent);
        lines.push_back(indent + toBytes(index.data().toString()) + " " +
                        std::to_string(model.item(index).command));
        describe(model, index, indent + "  ", lines);
    }
}

std::vector<std::string> described(const TreeModel& model) {
    std::vector<std::string> lines;
    describe(model, {}, "", lines);
    return lines;
}

DocumentTree smallTree() {
    DocumentTree tree;
    TreeSource radio{.name = "Radio", .type = "RF", .sourceClass = 'R', .group = 3, .multiplex = 2};
    radio.groupLetter = 'T';
    TreeLink link{.name = "One", .kind = "PCM (Class 1)", .group = 7};
    link.letter = 'P';
    link.embedded = {"Inner", "Merged"};
    radio.links.push_back(link);
    tree.dataSources.push_back(radio);
    tree.dataSources.push_back({.name = "Recorder", .type = "STO", .sourceClass = 'T'});
    return tree;
}

TEST(TreeModel, ShowsTheBranchesOfTheSampleWithTheirCommands) {
    test::TestApplication app;
    auto& context = app.application.context();
    ASSERT_TRUE(openFromName(context, &app.ui, KAVU_SOURCE_DIR "/samples/flight-test.tma"));
    TreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.build(readDocumentTree(context, &app.ui), {}, kAllBranches);
    EXPECT_EQ(described(model), (std::vector<std::string>{
                                    "General Information 13",
                                    "  Transmission Attributes Sources -82",
                                    "    L-Band Telemetry 82",
                                    "      Multiplex/Modulation Definition 16",
                                    "      Stream Definitions -17",
                                    "        PCM Stream 1 17",
                                    "    S-Band Telemetry 82",
                                    "      Multiplex/Modulation Definition 16",
                                    "      Stream Definitions -17",
                                    "        PCM Stream 2 17",
                                    "        PCM Stream 3 17",
                                    "  Recorder/Reproducer Sources -84",
                                    "    Onboard Recorder 84",
                                    "      Multiplex/Modulation Definition 16",
                                    "      Stream Definitions -17",
                                    "        1553 Bus 1 17",
                                    "        PCM Stream 1 17",
                                    "        PCM Stream 2 17",
                                    "        PCM Stream 3 17",
                                    "Data Conversion Information -18",
                                    "Airborne Hardware Information 19",
                                    "PAM 21",
                                    "Vendor -20",
                                    "  Onboard Recorder 20",
                                }));
    const auto names = app.application.conversions().definitionNames(-1);
    ASSERT_TRUE(names.has_value());
    model.build(readDocumentTree(context, &app.ui), *names, kAllBranches);
    const auto head = model.indexOf(TreeKind::ConversionHead);
    ASSERT_EQ(model.rowCount(head), static_cast<int>(names->size()));
    ASSERT_GT(names->size(), 5u);
    const auto first = model.index(0, 0, head);
    EXPECT_EQ(model.item(first),
              (TreeItem{.kind = TreeKind::Measurement, .command = 18, .name = names->front()}));
}

TEST(TreeModel, NothingOfADocumentIsOutOfReach) {
    auto tree = smallTree();
    TreeLink track{.name = "Bus", .kind = "1553", .group = 4};
    track.letter = 'B';
    tree.dataSources.back().tracks.push_back(track);
    TreeLink lone{.name = "Lone", .kind = "PCM (Class 2)", .group = 9};
    lone.letter = 'P';
    tree.unlinked.push_back(lone);
    TreeLink nameless;
    nameless.letter = 'S';
    nameless.group = 5;
    tree.unlinked.push_back(nameless);
    tree.vendors = {{"Radio", 1}, {"", 2}};
    TreeModel model;
    const QAbstractItemModelTester tester(&model);
    model.build(tree, {}, {.general = true});
    EXPECT_EQ(described(model), (std::vector<std::string>{
                                    "General Information 13",
                                    "  Transmission Attributes Sources -82",
                                    "    Radio 82",
                                    "      Multiplex/Modulation Definition 16",
                                    "      Stream Definitions -17",
                                    "        One 17",
                                    "          Inner 17",
                                    "          Merged 17",
                                    "  Recorder/Reproducer Sources -84",
                                    "    Recorder 84",
                                    "      Multiplex/Modulation Definition 16",
                                    "      Stream Definitions -17",
                                    "        Bus 17",
                                    "Unlinked Streams -17",
                                    "  Lone 17",
                                    "  S-5 (no name) 17",
                                    "Vendor -20",
                                    "  Radio 20",
                                    "  V-2 (no name) 20",
                                }));
    EXPECT_TRUE(model.item(model.indexOf(TreeKind::Stream, "Lone")).isUnlinked);
    EXPECT_FALSE(model.item(model.indexOf(TreeKind::Stream, "Bus")).isUnlinked);
    EXPECT_EQ(model.item(model.indexOfGroup('V', 2)).kind, TreeKind::Vendor);
}

TEST(TreeModel, AFirstLevelItemAppearsOnlyIfItsEntryIsEnabled) {
    TreeModel model;
    const auto firstLevel = [&](const TreeBranches& branches) {
        model.build({}, {}, branches);
        std::string labels;
        for (int row = 0; row < model.rowCount({}); ++row) {
            labels += toBytes(model.index(row, 0, {}).data().toString()) + ";";
        }
        return labels;
    };
    EXPECT_EQ(firstLevel({}), "");
    EXPECT_EQ(firstLevel({.general = true}), "General Information;");
    EXPECT_EQ(firstLevel({.conversion = true}), "Data Conversion Information;");
    EXPECT_EQ(firstLevel({.hardware = true}), "Airborne Hardware Information;");
    EXPECT_EQ(firstLevel({.pam = true}), "PAM;");
}

TEST(TreeModel, AStreamHasTheEmbeddedAndMergedStreamsBelowIt) {
    TreeModel model;
    model.build(smallTree(), {}, kAllBranches);
    const auto stream = model.indexOf(TreeKind::Stream, "One");
    ASSERT_TRUE(stream.isValid());
    ASSERT_EQ(model.rowCount(stream), 2);
    EXPECT_EQ(model.item(model.index(0, 0, stream)),
              (TreeItem{.kind = TreeKind::EmbeddedStream, .command = 17, .name = "Inner"}));
    EXPECT_EQ(toBytes(model.index(1, 0, stream).data().toString()), "Merged");
}

TEST(TreeModel, AnItemIsFoundByItsGroupFileAndByItsName) {
    TreeModel model;
    model.build(smallTree(), {"ALT", "alt"}, kAllBranches);
    EXPECT_EQ(model.item(model.indexOfGroup('T', 3)).name, "Radio");
    EXPECT_EQ(model.item(model.indexOfGroup('P', 7)).name, "One");
    EXPECT_EQ(model.item(model.indexOfGroup('M', 2)).kind, TreeKind::MultiplexDefinition);
    EXPECT_EQ(model.item(model.indexOfGroup('G', 0)).kind, TreeKind::General);
    EXPECT_FALSE(model.indexOfGroup('P', 8).isValid());
    EXPECT_EQ(model.indexOf(TreeKind::Measurement, "alt").row(), 1);
    EXPECT_FALSE(model.indexOf(TreeKind::Measurement, "Alt").isValid());
}

TEST(TreeModel, SourcesOfNeitherTypeGetABranchOnlyIfThereAreSome) {
    TreeModel model;
    auto tree = smallTree();
    model.build(tree, {}, kAllBranches);
    EXPECT_FALSE(model.indexOf(TreeKind::OtherHead).isValid());
    tree.dataSources.push_back({.name = "Lab", .type = "OTH", .sourceClass = 'O'});
    model.build(tree, {}, kAllBranches);
    const auto head = model.indexOf(TreeKind::OtherHead);
    ASSERT_TRUE(head.isValid());
    EXPECT_EQ(toBytes(head.data().toString()), "Other Data Sources");
    EXPECT_EQ(model.rowCount(head), 1);
}

TEST(TreeModel, NamesThatAreNotUtf8AreShownAndKept) {
    TreeModel model;
    model.build({}, {"K\xF6ln"}, kAllBranches);
    const auto index = model.indexOf(TreeKind::Measurement, "K\xF6ln");
    ASSERT_TRUE(index.isValid());
    EXPECT_EQ(toBytes(index.data().toString()), "K\xC3\xB6ln");
}

TEST(TreeModel, AStreamHasTheImageOfItsKindAlsoWhereItsFormatDescribesIt) {
    struct Row {
        const char* kind;
        char letter;
        const char* icon;
    };
    for (const auto& row :
         {Row{"PCM (Class 1)", 'P', "stream"}, Row{"PCM (Class 2)", 'P', "stream"},
          Row{"1553", 'P', "bus"}, Row{"Packet", 'P', "packet"}, Row{"1553", 'B', "bus"},
          Row{"Message Data", 'S', "packet"}, Row{"PAM", 'A', "pam"}, Row{"", '\0', "stream"}}) {
        TreeModel model;
        DocumentTree tree;
        tree.dataSources.push_back(
            {.name = "Link",
             .type = "RF",
             .sourceClass = 'R',
             .links = {{.name = "One", .kind = row.kind, .group = 1, .letter = row.letter}}});
        model.build(tree, {}, kAllBranches);
        const auto stream = model.indexOf(TreeKind::Stream, "One");
        ASSERT_TRUE(stream.isValid());
        EXPECT_EQ(toBytes(model.iconName(stream)), row.icon) << row.kind << row.letter;
    }
}

TEST(TreeModel, EveryItemHasAnImageAndAWordForTheScreenReader) {
    TreeModel model;
    auto tree = smallTree();
    tree.dataSources.push_back({.name = "Lab", .type = "OTH", .sourceClass = 'O'});
    tree.unlinked.push_back({.name = "Lone", .kind = "1553", .group = 2, .letter = 'B'});
    tree.vendors.push_back({"Radio", 1});
    model.build(tree, {"ALT"}, kAllBranches);
    std::vector<QModelIndex> open = {QModelIndex()};
    std::set<TreeKind> kinds;
    while (!open.empty()) {
        const auto parent = open.back();
        open.pop_back();
        for (int row = 0; row < model.rowCount(parent); ++row) {
            const auto index = model.index(row, 0, parent);
            kinds.insert(model.item(index).kind);
            EXPECT_FALSE(index.data(Qt::DecorationRole).value<QIcon>().isNull())
                << toBytes(index.data().toString());
            EXPECT_FALSE(index.data(Qt::AccessibleTextRole).toString().isEmpty());
            open.push_back(index);
        }
    }
    EXPECT_EQ(kinds.size(), static_cast<std::size_t>(kTreeKindCount));
    EXPECT_EQ(
        toBytes(
            model.indexOf(TreeKind::Measurement, "ALT").data(Qt::AccessibleTextRole).toString()),
        "Measurement ALT");
    EXPECT_TRUE(model.indexOf(TreeKind::Stream, "One")
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("PCM (Class 1)")));
}

TEST(TreeModel, TwentyThousandMeasurementsAreBuiltWithinThreeTenthsOfASecond) {
    std::vector<std::string> names;
    for (int i = 0; i < 20000; ++i) {
        names.push_back("MEASUREMENT-" + std::to_string(i));
    }
    TreeModel model;
    const auto start = std::chrono::steady_clock::now();
    model.build(smallTree(), std::move(names), kAllBranches);
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start);
    std::cout << "20000 measurements: " << took.count() << " ms\n";
    EXPECT_EQ(model.rowCount(model.indexOf(TreeKind::ConversionHead)), 20000);
    EXPECT_LE(took.count(), 300);
}

}  // namespace
}  // namespace kavu
