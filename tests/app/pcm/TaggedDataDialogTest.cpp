#include "app/framework/EditableList.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SheetStage.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/TaggedDataDialog.h"

namespace kavu {
namespace {

using test::find;
using test::pick;
using test::press;
using test::SheetStage;

class TaggedStage : public SheetStage {
  public:
    TaggedStage() : SheetStage(2011) {
        TaggedMeasurement measurement;
        measurement.values = {{"MN", "FIRST"}, {"TD1", "16"}};
        measurement.tags = {{{{"TD2", "12"}, {"TD4", "M"}}}};
        EXPECT_TRUE(storeTaggedData(format, nullptr, {measurement}));
        format.changed = false;
    }
    bool edit(const test::TestDoor::Driver& driver) {
        door.next(driver);
        return editTaggedData(form, format, nullptr);
    }
    std::vector<TaggedMeasurement> all() { return *readTaggedData(format, nullptr); }
};

TEST(TaggedDataDialog, AMeasurementWithItsTagsIsAdded) {
    TaggedStage s;
    EXPECT_TRUE(s.edit([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Tagged Data Definitions"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        auto* const list = find<EditableList>(dialog, "taggedMeasurements");
        EXPECT_EQ(list->rows(), (std::vector<ListRow>{{"FIRST", "16", "1"}}));
        s.door.next([&](QDialog& measurement) {
            EXPECT_EQ(test::checkWindow(measurement), std::vector<std::string>{});
            test::type(measurement, "MN", QStringLiteral("SECOND"));
            pick(measurement, "MN1", QStringLiteral("Odd"));
            test::type(measurement, "TD1", QStringLiteral("8"));
            s.door.next([&s](QDialog& tag) {
                test::type(tag, "TD2", QStringLiteral("44"));
                test::type(tag, "TD3", QStringLiteral("1111"));
                pick(tag, "TD4", QStringLiteral("LSB"));
                press(tag, "ok");
                EXPECT_TRUE(s.ui.boxes.empty()) << s.ui.boxes.back().text;
            });
            find<EditableList>(measurement, "tags")->addRow();
            press(measurement, "ok");
        });
        list->addRow();
        press(dialog, "ok");
    }));
    const auto all = s.all();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].values, (FieldValues{{"MN", "SECOND"}, {"MN1", "OD"}, {"TD1", "8"}}));
    ASSERT_EQ(all[1].tags.size(), 1U);
    EXPECT_EQ(all[1].tags[0].values, (FieldValues{{"TD2", "44"}, {"TD3", "1111"}, {"TD4", "L"}}));
    EXPECT_TRUE(s.format.changed);
}

TEST(TaggedDataDialog, CancelKeepsThemAndAsksAfterAChange) {
    TaggedStage s;
    EXPECT_FALSE(s.edit([](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(s.ui.boxes.empty());
    s.ui.byId[83] = Button::Yes;
    s.ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(s.edit([](QDialog& dialog) {
        auto* const list = find<EditableList>(dialog, "taggedMeasurements");
        list->deleteRow();
        EXPECT_EQ(list->rowCount(), 0);
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(s.all().size(), 1U);
    EXPECT_FALSE(s.format.changed);
}

TEST(TaggedDataDialog, NamesInUseAreRefused) {
    TaggedStage s;
    Measurement cell;
    cell.name = "WORD";
    s.format.cells().store(s.format.getFreeCell(nullptr, 3, 1), cell);
    s.edit([&](QDialog& dialog) {
        auto* const list = find<EditableList>(dialog, "taggedMeasurements");
        s.door.next([&](QDialog& measurement) {
            press(measurement, "ok");
            EXPECT_TRUE(s.ui.hasText("Please enter a name"));
            test::type(measurement, "MN", QStringLiteral("first"));
            press(measurement, "ok");
            EXPECT_EQ(s.lastBox(), 339);
            test::type(measurement, "MN", QStringLiteral("WORD"));
            press(measurement, "ok");
            EXPECT_EQ(s.lastBox(), 334);
            EXPECT_TRUE(measurement.isVisible());
            s.ui.otherwise = Button::Yes;
            press(measurement, "cancel");
        });
        list->addRow();
        s.door.next([](QDialog& measurement) {
            test::type(measurement, "TD1", QStringLiteral("12"));
            press(measurement, "ok");
        });
        list->editRow();
        press(dialog, "ok");
    });
    EXPECT_EQ(s.all()[0].values.at("TD1"), "12") << "its own name is no other one";
}

TEST(TaggedDataDialog, TheStepIsThereFromTheNewestEditionOn) {
    for (const int edition : {2009, 2011}) {
        SheetStage s(edition);
        PcmFormSteps steps;
        installSheetSteps(steps, s.form, s.format);
        EXPECT_EQ(static_cast<bool>(steps.editTaggedData), edition >= 2011);
        EXPECT_TRUE(static_cast<bool>(steps.editAsyncAt));
    }
}

}  // namespace
}  // namespace kavu
