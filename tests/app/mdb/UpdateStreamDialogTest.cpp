#include "app/mdb/ChangesDialog.h"
#include "app/mdb/UpdateStreamDialog.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/operations/StreamStage.h"

#include <QCheckBox>
#include <QLabel>
#include <QTableView>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

namespace f = mdbfield;

struct UpdateWindowStage : StreamStage {
    UpdateWindowStage() {
        place(3, 1, "Alpha");
        place(4, 1, "Beta");
        EXPECT_TRUE(load("C-1\\DCN:Alpha;C-1\\MN1:old;C-1\\DCT:NON;"));
        fill({record("Alpha", {{f::kParity, "OD"}, {f::kDescription, "new"}}),
              record("Beta", {{f::kParity, "EV"}}), record("Nobody", {{f::kParity, "EV"}})});
    }
    void choose(const std::vector<const char*>& boxes) {
        door.next([boxes](QDialog& dialog) {
            press(dialog, "none");
            for (const auto* const box : boxes) {
                find<QCheckBox>(dialog, box)->click();
            }
            press(dialog, "ok");
        });
    }
    TestDoor door;
    FormContext form = formContext(ui, door, context);
};

TEST(UpdateStreamDialog, OffersABoxForEachFieldOfAStreamAndKeepsThem) {
    UpdateWindowStage stage;
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("MDB_UPDATE"));
        for (std::size_t field = 0; field < f::kCount; ++field) {
            const auto name = QStringLiteral("MDBU%1").arg(field);
            EXPECT_EQ(dialog.findChild<QCheckBox*>(name) != nullptr, isStreamField(field)) << field;
        }
        EXPECT_EQ(checkWindow(dialog), std::vector<std::string>{});
        find<QCheckBox>(dialog, "MDBU6")->click();
        press(dialog, "ok");
    });
    stage.door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_FALSE(runStreamUpdate(stage.form, stage.work, nullptr));
    EXPECT_EQ(stage.settings.integer("MDBU6", 0), 1);
    EXPECT_EQ(stage.settings.integer("MDBU26", 1), 0);
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "");
}

TEST(UpdateStreamDialog, WhatWillChangeIsShownAndOnlyWhatIsTickedIsDone) {
    UpdateWindowStage stage;
    stage.choose({"MDBU6", "MDBU26"});
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("MDB_UPDATE_PREVIEW"));
        const auto& changes = dynamic_cast<ChangesDialog&>(dialog).changes();
        ASSERT_EQ(changes.size(), 3U);
        EXPECT_EQ(changes[1].name, "Alpha");
        EXPECT_EQ(changes[1].field, "Measurement Description");
        EXPECT_EQ(changes[1].before, "old");
        EXPECT_EQ(changes[1].after, "new");
        EXPECT_EQ(stage.measurement(4, "Beta").parity, "");
        EXPECT_EQ(checkWindow(dialog), std::vector<std::string>{});
        // The tick of the first change, by its key.
        auto* const list = find<QTableView>(dialog, "changes");
        list->setCurrentIndex(list->model()->index(0, 0));
        QTest::keyClick(list, Qt::Key_Space);
        EXPECT_FALSE(changes[0].isTicked);
        EXPECT_EQ(toBytes(find<QLabel>(dialog, "count")->text()), "2 of 3 changes");
        press(dialog, "ok");
    });
    EXPECT_TRUE(runStreamUpdate(stage.form, stage.work, nullptr));
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "");
    EXPECT_EQ(stage.value("Alpha", "MN1"), "new");
    EXPECT_EQ(stage.measurement(4, "Beta").parity, "EV");
    EXPECT_TRUE(stage.ui.hasBox(415));
}

TEST(UpdateStreamDialog, ACancelledPreviewChangesNothing) {
    UpdateWindowStage stage;
    stage.choose({"MDBU6"});
    stage.door.next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(runStreamUpdate(stage.form, stage.work, nullptr));
    EXPECT_EQ(stage.measurement(3, "Alpha").parity, "");
    EXPECT_FALSE(stage.document.changed);
}

TEST(UpdateStreamDialog, WithNothingTickedNoRecordIsMadeOrMarkedAndTheStreamStays) {
    UpdateWindowStage stage;
    stage.choose({"MDBU6", "MDBU26"});
    stage.door.next([](QDialog& dialog) {
        press(dialog, "untickAll");
        EXPECT_EQ(toBytes(find<QLabel>(dialog, "count")->text()), "0 of 3 changes");
        press(dialog, "tickAll");
        EXPECT_EQ(toBytes(find<QLabel>(dialog, "count")->text()), "3 changes");
        press(dialog, "untickAll");
        press(dialog, "ok");
    });
    EXPECT_FALSE(runStreamUpdate(stage.form, stage.work, nullptr));
    EXPECT_TRUE(stage.ui.hasBox(415)) << "the matches are counted";
    EXPECT_EQ(stage.measurement(4, "Beta").parity, "");
    EXPECT_EQ(stage.value("Alpha", "Chg"), "");
    EXPECT_FALSE(stage.conversions.locateDefinition("Beta").found);
    EXPECT_FALSE(stage.document.changed);
}

TEST(UpdateStreamDialog, ARecordWithoutATickIsNotMarkedWhileOthersAre) {
    UpdateWindowStage stage;
    stage.choose({"MDBU6", "MDBU26"});
    stage.door.next([](QDialog& dialog) {
        press(dialog, "untickAll");
        auto* const list = find<QTableView>(dialog, "changes");
        list->setCurrentIndex(list->model()->index(2, 0));  // Beta's parity
        QTest::keyClick(list, Qt::Key_Space);
        press(dialog, "ok");
    });
    EXPECT_TRUE(runStreamUpdate(stage.form, stage.work, nullptr));
    EXPECT_EQ(stage.measurement(4, "Beta").parity, "EV");
    EXPECT_EQ(stage.value("Beta", "Chg"), "1");
    EXPECT_EQ(stage.value("Alpha", "Chg"), "");
    EXPECT_EQ(stage.value("Alpha", "MN1"), "old");
}

}  // namespace
}  // namespace kavu::test
