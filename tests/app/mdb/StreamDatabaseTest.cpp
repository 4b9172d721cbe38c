// The database in the windows of a stream: the display's menu and pane, and the edit of a word.
#include "app/framework/FormContext.h"
#include "app/mdb/DatabasePane.h"
#include "app/pcm/EditDataWordDialog.h"
#include "app/pcm/PcmForms.h"
#include "app/pcm/WordSteps.h"
#include "app/support/TestDoor.h"
#include "conversion/ConversionStore.h"
#include "core/document/DocumentFiles.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/DatabaseStage.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "support/TestApplication.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <gtest/gtest.h>

namespace kavu::test {
namespace {

/// A stream with the measurement M1 in word 3, and a database that knows it and its child.
class StreamDatabaseTest : public testing::Test {
  protected:
    StreamDatabaseTest() {
        auto& document = t.application.context().document;
        document.version = 2009;
        document.open = true;
        form.edition = 2009;
        put("[kavu]GTMP.G", "G\\DSI\\N:1;\r\nG\\DSI-1:Aircraft;\r\nG\\DST-1:RF;\r\n");
        put("[kavu]MULT.M01", "M-1\\ID:Aircraft;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:PCM 1;\r\n");
        put("[kavu]PCMFMT.P01",
            "P-1\\DLN:PCM 1;\r\nP-1\\TF:TWO;\r\nP-1\\F1:16;\r\nP-1\\MF\\N:4;\r\nP-1\\MF1:8;\r\n"
            "P-1\\MF2:136;\r\nP-1\\MF4:24;\r\nP-1\\MF5:111110101111001100100000;\r\n");
        put("[kavu]PCMMEAS.D01",
            "D-1\\DLN:PCM 1;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\nD-1\\MN\\N-1:1;\r\n"
            "D-1\\MN-1-1:M1;\r\nD-1\\LT-1-1:MF;\r\nD-1\\MF-1-1:3;\r\nD-1\\MFM-1-1:FW;\r\n");
        std::vector<std::string> fields(36);
        fields[0] = "M1";
        fields[mdbfield::kParity] = "OD";
        fields[mdbfield::kDescription] = "the first";
        std::vector<std::string> child(36);
        child[0] = "Part";
        child[mdbfield::kRoot] = "M1";
        child[mdbfield::kMask] = "1111000000000000";
        writeFile(database, mdbLine(fields) + mdbLine(child));
        settings().set(setting::kDatabasePath, database);
        settings().set(setting::kDatabaseVersion, 1);
        settings().set(setting::kDatabaseEnabled, true);
    }
    void put(std::string_view name, std::string_view bytes) {
        writeFile(t.application.context().store.pathOf(name), bytes);
    }
    ProfileSettings& settings() { return t.application.context().settings; }
    /// Opens the stream and its display, drives that, and leaves both.
    void withDisplay(const TestDoor::Driver& drive) {
        door.next([&](QDialog& sheet) {
            door.next([&](QDialog& display) {
                drive(display);
                display.close();
            });
            press(sheet, "viewEditStream");
            t.ui.otherwise = Button::Yes;
            press(sheet, "cancel");
        });
        editStream(form, t.application, "PCM 1");
    }
    static QAction* entry(QWidget& display, const char* name) {
        return display.findChild<QAction*>(QLatin1String(name));
    }
    [[nodiscard]] std::string parity() {
        const auto& format = t.application.pcmFormat();
        return format.cells().measurement(format.findInCell(3, 1, "M1")).parity.str();
    }

    TestApplication t;
    std::string database = t.folder / "my.otb";
    TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

TEST_F(StreamDatabaseTest, TheDisplayUpdatesTheStreamAsOneLevelOfUndo) {
    withDisplay([&](QDialog& display) {
        const auto before = parity();
        EXPECT_TRUE(find<QMenu>(display, "databaseMenu")->menuAction()->isEnabled());
        EXPECT_EQ(entry(display, "database0")->text(),
                  QStringLiteral("&Update Stream From Database..."));
        EXPECT_EQ(entry(display, "database1")->text(),
                  QStringLiteral("&Save Measurements To Database..."));
        door.next([](QDialog& dialog) {
            press(dialog, "all");
            press(dialog, "ok");
        });
        door.next([](QDialog& dialog) { press(dialog, "ok"); });
        entry(display, "database0")->trigger();
        EXPECT_TRUE(t.ui.hasBox(415));
        EXPECT_EQ(parity(), "OD");
        EXPECT_TRUE(t.application.conversions().locateDefinition("M1").found);
        entry(display, "undo")->trigger();
        EXPECT_EQ(parity(), before);
        EXPECT_NE(before, "OD");
        EXPECT_FALSE(entry(display, "undo")->isEnabled());
    });
}

TEST_F(StreamDatabaseTest, TheDisplaySavesItsMeasurements) {
    withDisplay([&](QDialog& display) {
        t.ui.choices = {0};
        t.ui.otherwise = Button::Yes;
        entry(display, "database1")->trigger();
        EXPECT_TRUE(t.ui.hasText("1 measurements were added to the database."));
    });
    EXPECT_TRUE(readFile(database).starts_with("M1;"));
    EXPECT_EQ(readFile(database).find("Part"), std::string::npos);
}

TEST_F(StreamDatabaseTest, ADatabaseThatGoesAwayDisablesTheMenuWithMessage428) {
    withDisplay([&](QDialog& display) {
        EXPECT_TRUE(deleteFile(database).ok());
        entry(display, "database0")->trigger();
        EXPECT_TRUE(t.ui.hasBox(428));
        EXPECT_FALSE(find<QMenu>(display, "databaseMenu")->menuAction()->isEnabled());
    });
    EXPECT_FALSE(settings().get(setting::kDatabaseEnabled));
}

TEST_F(StreamDatabaseTest, ThePaneShowsTheRecordsAndWhichTheStreamHas) {
    withDisplay([&](QDialog& display) {
        entry(display, "viewDatabase")->trigger();
        auto* const pane = find<DatabasePane>(display, "VIEWMEASUREMENTDATABASE");
        ASSERT_NE(pane, nullptr);
        const auto& model = *find<QTableView>(*pane, "databaseRecords")->model();
        ASSERT_EQ(model.rowCount(), 2);
        EXPECT_EQ(model.index(0, PaneModel::kName).data().toString(), QStringLiteral("M1"));
        EXPECT_EQ(model.index(0, PaneModel::kInStream).data().toString(), QStringLiteral("Yes"));
        EXPECT_EQ(model.index(1, PaneModel::kInStream).data().toString(), QString());
        find<QComboBox>(*pane, "databaseView")->setCurrentIndex(2);
        EXPECT_EQ(model.rowCount(), 1);
        type(*pane, "databaseFilter", QStringLiteral("nothing"));
        EXPECT_EQ(model.rowCount(), 0);
        EXPECT_EQ(toBytes(find<QLabel>(*pane, "databaseState")->text()), "0 of 2 records");
    });
    EXPECT_EQ(settings().profileInteger("ViewMdb", "Enabled", -1), 1);
    EXPECT_EQ(settings().profileInteger("ViewMdb", "View", -1), 2);
    EXPECT_GT(settings().profileInteger("ViewMdb", "DX", -1), 0);
    EXPECT_GT(settings().profileInteger("ViewMdb", "DY", -1), 0);
    withDisplay([&](QDialog& display) {
        auto* const pane = find<DatabasePane>(display, "VIEWMEASUREMENTDATABASE");
        ASSERT_NE(pane, nullptr) << "it opens as it was left";
        EXPECT_EQ(find<QComboBox>(*pane, "databaseView")->currentIndex(), 2);
    });
}

TEST_F(StreamDatabaseTest, ThePaneIsMovedAroundTheGridAndOpensThereAgain) {
    const auto placeOf = [](QDialog& display) {
        const auto& pane = *find<DatabasePane>(display, "VIEWMEASUREMENTDATABASE");
        const auto& grid = *find<QWidget>(display, "pcm_display_window");
        const auto at = pane.mapTo(&display, QPoint());
        const auto beside = grid.mapTo(&display, QPoint());
        return at.y() >= beside.y() + grid.height() ? DatabasePane::Side::Below
               : at.x() > beside.x()                ? DatabasePane::Side::Right
                                                    : DatabasePane::Side::Left;
    };
    bool isFirst = true;
    for (const auto side :
         {DatabasePane::Side::Right, DatabasePane::Side::Below, DatabasePane::Side::Left}) {
        withDisplay([&](QDialog& display) {
            if (isFirst) {
                entry(display, "viewDatabase")->trigger();
            }
            isFirst = false;
            find<QComboBox>(display, "databaseSide")->setCurrentIndex(static_cast<int>(side));
            QApplication::processEvents();
            EXPECT_EQ(placeOf(display), side);
        });
        withDisplay([&](QDialog& display) {
            EXPECT_EQ(placeOf(display), side) << "it opens where it was left";
            EXPECT_EQ(find<QComboBox>(display, "databaseSide")->currentIndex(),
                      static_cast<int>(side));
        });
    }
    EXPECT_EQ(settings().profileInteger("ViewMdb", "X", -1), 0);
    EXPECT_EQ(settings().profileInteger("ViewMdb", "Y", -1), 0);
}

TEST_F(StreamDatabaseTest, ThePaneHasTheSizeThatItHadLast) {
    int wide = 0;
    withDisplay([&](QDialog& display) {
        display.resize(1400, 800);
        entry(display, "viewDatabase")->trigger();
        QApplication::processEvents();
        auto* const pane = find<DatabasePane>(display, "VIEWMEASUREMENTDATABASE");
        auto* const parts = find<QSplitter>(display, "displaySplitter");
        auto sizes = parts->sizes();
        sizes.back() += 90;
        sizes.front() -= 90;
        parts->setSizes(sizes);
        QApplication::processEvents();
        wide = pane->width();
    });
    EXPECT_EQ(settings().profileInteger("ViewMdb", "DX", -1), wide);
    withDisplay([&](QDialog& display) {
        EXPECT_EQ(find<DatabasePane>(display, "VIEWMEASUREMENTDATABASE")->sizeHint().width(), wide);
    });
}

TEST_F(StreamDatabaseTest, AtFirstThePaneIsBelowTheGridUnlessTheWindowIsWide) {
    for (const auto& [width, side] :
         {std::pair{900, DatabasePane::Side::Below}, std::pair{2000, DatabasePane::Side::Right}}) {
        withDisplay([&](QDialog& display) {
            display.resize(width, 600);
            QApplication::processEvents();
            entry(display, "viewDatabase")->trigger();
            EXPECT_EQ(find<QComboBox>(display, "databaseSide")->currentIndex(),
                      static_cast<int>(side))
                << width;
        });
        settings().writeProfile("ViewMdb", std::nullopt, std::nullopt);
    }
}

// --- a bus group ---------------------------------------------------------------------------------

TEST_F(StreamDatabaseTest, ABusTakesOneRecordForAMessageOrAllThatNameOne) {
    std::vector<std::string> fields(36);
    fields[0] = "Mach";
    fields[mdbfield::kBusNumber] = "1";
    fields[mdbfield::kRemoteTerminalAddress] = "00101";
    fields[mdbfield::kSubTerminalAddress] = "00010";
    fields[mdbfield::kWordNumber] = "3";
    writeFile(database, mdbLine(fields) + mdbLine({"Other"}));
    BusDefinition definition;
    definition.edition = 2009;
    auto& bus = rowsOf(definition.group, BusLevel::Bus).emplace_back();
    setBusValue(bus, BusLevel::Bus, "BID", "001");
    auto& message = rowsOf(bus, BusLevel::Message).emplace_back();
    setBusValue(message, BusLevel::Message, "TRA", "00101");
    setBusValue(message, BusLevel::Message, "STA", "00010");
    const auto step = busDatabaseStep(form, t.application, definition);
    ASSERT_TRUE(step);
    QWidget window;
    EXPECT_FALSE(step(window, {})) << "question 418 is answered with no";
    t.ui.byId[418] = Button::Yes;
    EXPECT_TRUE(step(window, {}));
    t.ui.rows = {1};
    EXPECT_TRUE(step(window, {1, 1}));
    EXPECT_FALSE(step(window, {1, 1})) << "nothing is chosen";
    const auto& rows = rowsOf(*busRowAt(definition, {1, 1}), BusLevel::Measurement);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(busValue(rows[0], BusLevel::Measurement, "MN"), "Mach");
    EXPECT_EQ(busValue(rows[1], BusLevel::Measurement, "MN"), "Other");
    settings().set(setting::kDatabaseEnabled, false);
    EXPECT_FALSE(busDatabaseStep(form, t.application, definition));
}

// --- the edit of a word --------------------------------------------------------------------------

class WordDatabaseTest : public StreamDatabaseTest {
  protected:
    void SetUp() override {
        scope_ = std::make_unique<ChangeScope>(t.application.context().files);
        ASSERT_TRUE(
            loadPcmFormat(t.application.pcmFormat(), &t.ui, t.application.pcmSteps(), "PCM 1"));
    }
    void edit(int fwp, const TestDoor::Driver& drive) {
        door.next(drive);
        const auto steps = makeWordSteps(form, t.application);
        editMeasurementAt(form, t.application.pcmFormat(), steps, nullptr, fwp, 1);
    }

  private:
    std::unique_ptr<ChangeScope> scope_;
};

TEST_F(WordDatabaseTest, APickBringsItsAttributesAndItsRootWord) {
    writeFile(database, mdbLine({"Whole"}) + mdbLine({"Half", "Whole", "", "1111111100000000"}));
    edit(5, [&](QDialog& dialog) {
        find<QCheckBox>(dialog, "autoAddRoot")->setChecked(true);
        t.ui.rows = {1};
        press(dialog, "selectFromDatabase");
        EXPECT_EQ(t.ui.tablePrompts.back().title, "Select Measurement From Database");
        EXPECT_EQ(find<QLineEdit>(dialog, "measurementName")->text(), QStringLiteral("Half"));
        press(dialog, "ok");
    });
    const auto& format = t.application.pcmFormat();
    ASSERT_TRUE(format.hasMeasurement("Half"));
    EXPECT_EQ(format.cells().measurement(format.findInCell(5, 1, "Half")).mask.str(),
              "1111111100000000");
    ASSERT_TRUE(format.hasMeasurement("Whole")) << "its root word comes with it";
    EXPECT_TRUE(t.application.conversions().locateDefinition("Whole").found);
}

TEST_F(WordDatabaseTest, OkStoresTheMeasurementInTheDatabaseIfThatIsChosen) {
    edit(3, [&](QDialog& dialog) {
        find<QCheckBox>(dialog, "storeInDatabase")->setChecked(true);
        find<QComboBox>(dialog, "parity")->setCurrentIndex(0);
        press(dialog, "ok");
    });
    EXPECT_TRUE(settings().get(setting::kStoreInDatabase));
    EXPECT_TRUE(readFile(database).starts_with("M1;;16;FW;")) << readFile(database);
    EXPECT_NE(readFile(database).find("Part;M1;"), std::string::npos);
}

TEST_F(WordDatabaseTest, WithoutTheDatabaseItsControlsAreDisabledAlsoAfter428) {
    edit(3, [&](QDialog& dialog) {
        EXPECT_TRUE(deleteFile(database).ok());
        press(dialog, "selectFromDatabase");
        EXPECT_TRUE(t.ui.hasBox(428));
        EXPECT_FALSE(find<QPushButton>(dialog, "selectFromDatabase")->isEnabled());
        press(dialog, "cancel");
    });
    edit(3, [&](QDialog& dialog) {
        EXPECT_FALSE(find<QPushButton>(dialog, "selectFromDatabase")->isEnabled());
        EXPECT_FALSE(find<QCheckBox>(dialog, "storeInDatabase")->isEnabled());
        press(dialog, "cancel");
    });
}

}  // namespace
}  // namespace kavu::test
