#include "pcm/StreamFixture.h"
#include "pcm/edit/MeasurementEditDatabase.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::StreamFixture;

/// A database in memory: the word W with its children A, B and, already in the stream, C.
struct DatabaseFixture : StreamFixture {
    explicit DatabaseFixture(int edition = 2009) : StreamFixture(edition) {
        place(20, 1, "C");
        database.find = [this](UserInterface*, std::string_view name) {
            for (const auto& record : records) {
                if (record.name == name) {
                    return std::optional(record);
                }
            }
            return std::optional<DatabaseRecord>();
        };
        database.forEachChild = [this](UserInterface*, std::string_view root,
                                       const std::function<bool(const DatabaseRecord&)>& visit) {
            for (const auto& record : records) {
                if (record.root == root && !visit(record)) {
                    break;
                }
            }
            return true;
        };
        database.addConversion = [this](UserInterface*, std::string_view name) {
            conversions += std::string(name) + " ";
        };
    }
    [[nodiscard]] std::string names(int fwp, int fn = 1) const {
        std::string text;
        for (auto at = format.cellAtFrame(fwp, fn); at; at = format.next(at)) {
            text += format.cells().measurement(at).name.str() + " ";
        }
        return text;
    }
    bool add(const AutoAdd& wanted, const std::string& name, const std::string& type, int fwp = 4) {
        return addRootAndChildren(format, parent, database, wanted, name, type, fwp, 1);
    }

    std::vector<DatabaseRecord> records = {{"W", "", "FW", "M", "L", "EV"},
                                           {"A", "W", "1111000000000000", "L", "T", "OD"},
                                           {"B", "W", "0000111100000000", "M", "D", "DE"},
                                           {"C", "W", "0000000011110000", "M", "D", "DE"},
                                           {"X", "w", "FW", "M", "D", "DE"}};
    DatabaseSteps database;
    std::string conversions;
};

TEST(MeasurementEditDatabase, TheRootComesFirstInThePlaceOfItsPart) {
    DatabaseFixture f;
    f.place(4, 1, "A");
    f.format.changed = false;
    EXPECT_TRUE(f.add({.root = true}, "A", "MF  "));
    EXPECT_EQ(f.names(4), "W A ");
    const auto& root = f.format.cells().measurement(f.format.findInCell(4, 1, "W"));
    EXPECT_EQ(root.parity, "EV");
    EXPECT_EQ(root.parityTransferOrder, "L");
    EXPECT_EQ(root.transferOrder, "M");
    EXPECT_EQ(root.mask, "FW");
    EXPECT_EQ(root.locationType, "MF");
    EXPECT_EQ(f.conversions, "W ");
    EXPECT_TRUE(f.format.changed);
    EXPECT_FALSE(f.add({.root = true}, "A", "MF"));  // it is there already
}

TEST(MeasurementEditDatabase, ChildrenComeUnlessTheStreamHasThemAndOnlyForTheExactName) {
    DatabaseFixture f;
    f.place(4, 1, "W");
    EXPECT_TRUE(f.add({.children = true}, "W", "MF  "));
    EXPECT_EQ(f.names(4), "W A B ");
    EXPECT_EQ(f.names(20), "C ");
    EXPECT_EQ(f.conversions, "A B ");
}

TEST(MeasurementEditDatabase, OtherTypesAreRefusedAndNothingHappensWithoutASetting) {
    DatabaseFixture f;
    f.place(4, 1, "A", "MFSC");
    f.format.changed = false;
    EXPECT_FALSE(f.add({}, "A", "MFSC"));
    EXPECT_TRUE(f.ui.boxes.empty());
    EXPECT_FALSE(f.add({.root = true}, "A", "MF", -1));
    EXPECT_TRUE(f.ui.boxes.empty());
    for (const auto* type : {"MFSC", "SFSC", "MFFR", "SFFR"}) {
        f.ui.boxes.clear();
        EXPECT_FALSE(f.add({.root = true, .children = true}, "A", type));
        ASSERT_EQ(f.ui.boxes.size(), 1U) << type;
        EXPECT_EQ(f.ui.boxes[0].id, 412);
        EXPECT_NE(f.ui.boxes[0].text.find("for 'A'"), std::string::npos);
    }
    EXPECT_EQ(f.names(4), "A ");
    EXPECT_FALSE(f.format.changed);
}

TEST(MeasurementEditDatabase, WordFrameRangesComeAlongWithTheMaskOfTheRecord) {
    DatabaseFixture f(2011);
    f.format.implicitSubframes = true;
    f.placeInEveryFrame(4, "W");
    EXPECT_TRUE(f.add({.children = true}, "W", "WDFR"));
    EXPECT_EQ(f.names(4), "W A B ");
    const auto& child = f.format.cells().measurement(f.format.findInCell(4, 1, "A"));
    const auto* const ranges = f.format.wordFrameDefinition(child.wordFrameIndex);
    ASSERT_NE(ranges, nullptr);
    EXPECT_NE(child.wordFrameIndex,
              f.format.cells().measurement(f.format.findInCell(4, 1, "W")).wordFrameIndex);
    EXPECT_EQ(ranges->locations[0].fragments[0].mask, "1111000000000000");
    EXPECT_EQ(ranges->locations[0].fragments[0].startWord, 4);
}

TEST(MeasurementEditDatabase, APickIsCompletedWhenItIsSaved) {
    DatabaseFixture f;
    SaveSteps saving;
    saving.database = f.database;
    saving.autoAdd = {.root = true, .children = false};
    MeasurementDefinition definition;
    definition.attributes.name = "A";
    definition.attributes.locationType = "MF  ";
    definition.attributes.mask = "FW";
    ASSERT_TRUE(saveMeasurement(f.format, f.parent, {}, saving, {4, 1, {}}, definition));
    EXPECT_EQ(f.names(4), "A ");
    definition.isPicked = true;
    ASSERT_TRUE(saveMeasurement(f.format, f.parent, {}, saving, {4, 1, "A"}, definition));
    EXPECT_EQ(f.names(4), "W A ");
}

}  // namespace
}  // namespace kavu
