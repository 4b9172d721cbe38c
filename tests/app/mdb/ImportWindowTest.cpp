#include "app/mdb/ImportWindow.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/DatabaseStage.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

using Names = std::vector<std::string>;

struct ImportStage : DatabaseStage {
    ImportStage() : DatabaseStage(MdbVersion::Xml) {
        settings.set(setting::kDatabasePath, path);
        writeFile(source, "name,Measurement Description,other\nA,first,1\n,none,2\nB,\"x, y\",3\n");
    }
    void open() {
        window = std::make_unique<ImportWindow>(form, context, nullptr);
        window->show();
        QApplication::processEvents();
    }
    void openSource() {
        ui.files = {FileChoice{source}};
        press(*window, "open");
    }
    [[nodiscard]] std::string cell(const char* table, int row, int column) const {
        const auto* const item = find<QTableWidget>(*window, table)->item(row, column);
        return item == nullptr ? "<none>" : toBytes(item->text());
    }
    [[nodiscard]] std::string state() const {
        return toBytes(find<QLabel>(*window, "state")->text());
    }

    std::string source = folder / "list.csv";
    TestDoor door;
    FormContext form = formContext(ui, door, context);
    std::unique_ptr<ImportWindow> window;
};

TEST(ImportWindow, OffersItsMenuAndIsWhole) {
    ImportStage stage;
    stage.open();
    EXPECT_EQ(stage.window->objectName(), QStringLiteral("IMPORTDATABASE"));
    Names entries;
    for (const auto* const name :
         {"openEntry", "convertEntry", "loadEntry", "saveEntry", "closeEntry"}) {
        auto text = stage.window->findChild<QAction*>(QLatin1String(name))->text();
        entries.push_back(toBytes(text.remove(u'&')));
    }
    EXPECT_EQ(entries, (Names{"Open File To Be Imported...", "Convert Database",
                              "Load Previous Saved Database Settings...",
                              "Save Database Settings...", "Close Window"}));
    EXPECT_EQ(stage.cell("mapping", 0, 1), "Measurement Name");
    EXPECT_EQ(find<QTableWidget>(*stage.window, "mapping")->rowCount(), 36);
    EXPECT_EQ(toBytes(find<QLineEdit>(*stage.window, "target")->text()), stage.path);
    EXPECT_EQ(checkWindow(*stage.window), Names{});
}

TEST(ImportWindow, AFileSaysItsKindAndItsHeadMapsTheFields) {
    ImportStage stage;
    stage.open();
    stage.openSource();
    EXPECT_EQ(find<QComboBox>(*stage.window, "kind")->currentText(),
              QStringLiteral("Delimited File"));
    EXPECT_TRUE(find<QCheckBox>(*stage.window, "header")->isChecked());
    EXPECT_EQ(stage.ui.filePrompts.back().title, "Open File To Be Imported Into KAVU");
    EXPECT_EQ(stage.cell("mapping", 0, 2), "name");
    EXPECT_EQ(stage.cell("mapping", mdbfield::kDescription, 2), "Measurement Description");
    EXPECT_EQ(stage.cell("mapping", 1, 2), "");
    EXPECT_EQ(stage.cell("preview", 0, 2), "A");
    EXPECT_EQ(stage.cell("preview", 0, 3), "first");
    EXPECT_EQ(stage.cell("preview", 1, 1), "There is no measurement name");
    EXPECT_EQ(stage.cell("preview", 2, 3), "x, y");
    EXPECT_EQ(stage.state(), "The first 3 rows; 1 of them are not imported");
    EXPECT_EQ(stage.settings.profileText("Kavu9DbfImport", "ImpFileIn"), stage.source);
}

TEST(ImportWindow, AConversionFillsTheTargetAndThePreviewKnowsWhatIsThere) {
    ImportStage stage;
    stage.open();
    stage.openSource();
    press(*stage.window, "convert");
    EXPECT_TRUE(stage.ui.hasBox(424));
    EXPECT_EQ(stage.database.open(), MeasurementDatabase::Opening::Ready);
    EXPECT_EQ(stage.names(), (Names{"A", "B"}));
    EXPECT_EQ(stage.cell("preview", 0, 1), "The measurement is in the database already");
    find<QRadioButton>(*stage.window, "overwrite")->click();
    EXPECT_EQ(stage.cell("preview", 0, 1), "");
}

TEST(ImportWindow, RecordsAreOverwrittenAfterAQuestionAlone) {
    ImportStage stage;
    ASSERT_NE(stage.database.open(), MeasurementDatabase::Opening::Failed);
    ASSERT_TRUE(stage.database.add(&stage.ui, MdbRecord("Before")));
    stage.open();
    stage.openSource();
    find<QRadioButton>(*stage.window, "overwrite")->click();
    const auto before = stage.bytes();
    press(*stage.window, "convert");
    EXPECT_EQ(stage.ui.boxes.back().title, "Delete Measurement Database");
    EXPECT_EQ(stage.bytes(), before);
    stage.ui.otherwise = Button::Yes;
    press(*stage.window, "convert");
    EXPECT_EQ(stage.database.open(), MeasurementDatabase::Opening::Ready);
    EXPECT_EQ(stage.names(), (Names{"A", "B"}));
}

TEST(ImportWindow, WithoutAMeasurementNameItStaysWithMessage425) {
    ImportStage stage;
    stage.open();
    stage.openSource();
    find<QTableWidget>(*stage.window, "mapping")->setCurrentCell(0, 0);
    press(*stage.window, "clear");
    press(*stage.window, "convert");
    EXPECT_TRUE(stage.ui.hasBox(425));
    EXPECT_TRUE(stage.window->isVisible());
    EXPECT_FALSE(fileExists(stage.path));
}

TEST(ImportWindow, AReferenceIsAskedForByKindAndKept) {
    ImportStage stage;
    stage.open();
    auto* const kind = find<QComboBox>(*stage.window, "kind");
    auto* const mapping = find<QTableWidget>(*stage.window, "mapping");
    kind->setCurrentIndex(1);
    EXPECT_EQ(stage.cell("mapping", 4, 2), "5");  // the row's number, if nothing is stored
    mapping->setCurrentCell(4, 0);
    stage.ui.texts = {"7"};
    mapping->setFocus();
    QTest::keyClick(mapping, Qt::Key_Return);
    ASSERT_FALSE(stage.ui.textPrompts.empty());
    EXPECT_EQ(stage.ui.textPrompts.back().prompt, "Enter New Field # (1-n)");
    EXPECT_EQ(stage.cell("mapping", 4, 2), "7");
    EXPECT_EQ(stage.settings.profileText("Kavu9DbfImport", "D1_1_2_4"), "7");
    kind->setCurrentIndex(0);
    EXPECT_EQ(stage.cell("mapping", 4, 2), "");
    mapping->setCurrentCell(4, 0);
    stage.ui.texts = {"COL"};
    press(*stage.window, "edit");
    EXPECT_EQ(stage.ui.textPrompts.back().prompt, "Enter New Dbase Field Name");
    kind->setCurrentIndex(2);
    mapping->setCurrentCell(4, 0);
    stage.ui.texts = {"11", "4"};
    press(*stage.window, "edit");
    EXPECT_EQ(stage.cell("mapping", 4, 2), "11");
    EXPECT_EQ(stage.cell("mapping", 4, 3), "4");
    EXPECT_EQ(stage.settings.profileText("Kavu9DbfImport", "D2_2_2_4"), "4");
    kind->setCurrentIndex(1);
    EXPECT_EQ(stage.cell("mapping", 4, 2), "7");
}

TEST(ImportWindow, AProfileIsSavedLoadedAndDeleted) {
    ImportStage stage;
    stage.open();
    stage.openSource();
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(checkWindow(dialog), Names{});
        type(dialog, "title", QStringLiteral("Mine"));
        press(dialog, "ok");
    });
    press(*stage.window, "save");
    find<QTableWidget>(*stage.window, "mapping")->setCurrentCell(0, 0);
    press(*stage.window, "clear");
    EXPECT_EQ(stage.cell("mapping", 0, 2), "");
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(toBytes(find<QTableWidget>(dialog, "profiles")->item(0, 0)->text()), "Mine");
        EXPECT_EQ(checkWindow(dialog), Names{});
        press(dialog, "ok");
    });
    press(*stage.window, "load");
    EXPECT_EQ(stage.cell("mapping", 0, 2), "name");
    // A title that is there is guarded by a question.
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "title", QStringLiteral("mine"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(stage.ui.boxes.back().title, "Overwrite Existing Entry?");
        press(dialog, "cancel");
    });
    press(*stage.window, "save");
    stage.ui.otherwise = Button::Yes;
    stage.door.next([&](QDialog& dialog) {
        press(dialog, "delete");
        EXPECT_EQ(stage.ui.boxes.back().text, "Delete the profile, \"Mine\"?");
        EXPECT_EQ(stage.ui.boxes.back().title, "Delete Profile");
        EXPECT_FALSE(find<QPushButton>(dialog, "ok")->isEnabled());
        press(dialog, "cancel");
    });
    press(*stage.window, "load");
}

TEST(ImportWindow, TheFieldsOfATableAreShownAsMessages) {
    ImportStage stage;
    stage.source = KAVU_SOURCE_DIR "/tests/data/dbase/gdal.dbf";
    stage.open();
    stage.openSource();
    EXPECT_EQ(find<QComboBox>(*stage.window, "kind")->currentText(), QStringLiteral("Dbase File"));
    press(*stage.window, "fields");
    ASSERT_FALSE(stage.ui.shown.empty());
    EXPECT_EQ(stage.ui.shown.back().title, "Database Contents");
}

TEST(ImportWindow, EscapeClosesItAndNothingIsLost) {
    ImportStage stage;
    stage.open();
    stage.openSource();
    QTest::keyClick(stage.window.get(), Qt::Key_Escape);
    EXPECT_FALSE(stage.window->isVisible());
    stage.open();
    EXPECT_EQ(toBytes(find<QLineEdit>(*stage.window, "source")->text()), stage.source);
    EXPECT_EQ(stage.cell("mapping", 0, 2), "name");
}

}  // namespace
}  // namespace kavu::test
