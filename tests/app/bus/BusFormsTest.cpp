#include "app/bus/BusFormStage.h"
#include "app/bus/BusForms.h"
#include "app/bus/BusWindow.h"
#include "app/bus/GroupTreeEditor.h"
#include "app/framework/FormContext.h"
#include "app/support/TestDoor.h"
#include "bus/definition/BusFiles.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"
#include "groups/MeasurementNames.h"
#include "mdb/DatabaseStage.h"
#include "support/TestApplication.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace kavu {
namespace {

using test::key;
using test::press;
using test::type;

/// As recorders write it: two buses, commands in an order of their own, and some that no page
/// reads.
constexpr char kRecorderBus[] =
    "B-1\\DLN:1553 Bus;\r\nB-1\\TA:F-1;\r\nB-1\\NBS\\N:2;\r\nB-1\\BID-1:000;\r\n"
    "B-1\\BNA-1:Left;\r\nB-1\\BT-1:1553;\r\nB-1\\TK\\N-1:0;\r\nB-1\\NMS\\N-1:1;\r\n"
    "B-1\\MID-1-1:1;\r\nB-1\\MNA-1-1:NAV;\r\nB-1\\TRA-1-1:101;\r\nB-1\\STA-1-1:00010;\r\n"
    "B-1\\TRM-1-1:1;\r\nB-1\\DWC-1-1:32;\r\nB-1\\MN\\N-1-1:0;\r\nB-1\\BID-2:001;\r\n"
    "B-1\\BT-2:A429;\r\nB-1\\TK\\N-2:0;\r\nB-1\\NMS\\N-2:0;\r\nB-1\\X-OWN:kept;\r\n";

class BusFormsTest : public ::testing::Test {
  protected:
    BusFormsTest() {
        auto& document = t.application.context().document;
        document.version = 2009;
        document.open = true;
        form.edition = 2009;
        put("[kavu]GTMP.G", "G\\DSI\\N:1;\r\nG\\DSI-1:Aircraft;\r\nG\\DST-1:STO;\r\n");
        put(groupFile('B', 1), kRecorderBus);
    }
    void put(const std::string& name, std::string_view bytes) {
        test::writeFile(t.application.context().store.pathOf(name), bytes);
    }
    std::string group() {
        return test::readFile(t.application.context().store.pathOf(groupFile('B', 1)));
    }
    bool has(std::string_view name) {
        return fileExists(t.application.context().store.pathOf(name));
    }
    bool edit(const test::TestDoor::Driver& driver) {
        door.next(driver);
        return editBus(form, t.application, "1553 Bus");
    }

    test::TestApplication t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

TEST_F(BusFormsTest, AGroupThatNobodyEditedComesBackByteForByte) {
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        EXPECT_TRUE(has(kBusProfile));
        EXPECT_TRUE(has(kTerminalProfile));
        static_cast<BusWindow&>(dialog).editor().tree()->expandAll();
        press(dialog, "ok");
    }));
    EXPECT_EQ(group(), kRecorderBus);
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_FALSE(has(kBusProfile));
    EXPECT_FALSE(has(kTerminalProfile));
    EXPECT_FALSE(t.application.context().document.changed);
}

TEST_F(BusFormsTest, CancelDeletesBothProfilesAndLeavesTheGroup) {
    t.ui.otherwise = Button::Yes;
    EXPECT_FALSE(edit([](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("other"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(group(), kRecorderBus);
    EXPECT_FALSE(has(kBusProfile));
    EXPECT_FALSE(has(kTerminalProfile));
    EXPECT_FALSE(t.application.context().document.changed);
}

TEST_F(BusFormsTest, OkIsOneOperationThatUndoTakesBack) {
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit([](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("other"));
        press(dialog, "ok");
    }));
    EXPECT_NE(group().find("B-1\\TA:other;"), std::string::npos);
    EXPECT_FALSE(has(kBusProfile));
    EXPECT_FALSE(has(kTerminalProfile));
    auto& document = t.application.context();
    EXPECT_TRUE(document.document.changed);
    ASSERT_EQ(document.history.levels(), 1U);
    EXPECT_TRUE(document.history.undo(&t.ui));
    EXPECT_EQ(group(), kRecorderBus);
}

TEST_F(BusFormsTest, CommandsThatNoPageReadsAreAskedAboutOnOk) {
    t.ui.otherwise = Button::Yes;
    edit([](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("other"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(t.ui.hasText("X-OWN")) << "the question lists them";
    EXPECT_NE(group().find("B-1\\X-OWN:kept;"), std::string::npos);
    t.ui.otherwise = Button::No;
    edit([](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("third"));
        press(dialog, "ok");
    });
    EXPECT_EQ(group().find("X-OWN"), std::string::npos);
}

TEST_F(BusFormsTest, ALinkWithoutAGroupGetsOneWithTheFirstEdit) {
    door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_FALSE(editBus(form, t.application, "New Bus"));
    EXPECT_FALSE(has(groupFile('B', 2)));
    door.next([&](QDialog& dialog) {
        door.next([](QDialog& bus) {
            type(bus, "BNA", QStringLiteral("First"));
            press(bus, "ok");
        });
        press(dialog, "addButton");
        press(dialog, "ok");
    });
    EXPECT_TRUE(editBus(form, t.application, "New Bus"));
    const auto made = test::readFile(t.application.context().store.pathOf(groupFile('B', 2)));
    EXPECT_NE(made.find("B-2\\DLN:New Bus;"), std::string::npos);
    EXPECT_NE(made.find("B-2\\BNA-1:First;"), std::string::npos);
}

TEST_F(BusFormsTest, WithinTheEditorOfAStreamOnlyTheCopyIsWritten) {
    auto& document = t.application.context();
    ASSERT_TRUE(loadBusGroup(document, &t.ui, "1553 Bus"));
    t.ui.otherwise = Button::Yes;
    door.next([](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("other"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(editLoadedBus(form, t.application, "1553 Bus"));
    EXPECT_EQ(group(), kRecorderBus);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(test::find<QLineEdit>(dialog, "TA")->text(), QStringLiteral("other"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(editLoadedBus(form, t.application, "1553 Bus"));
    EXPECT_TRUE(storeBusGroup(document, &t.ui, "1553 Bus"));
    EXPECT_NE(group().find("B-1\\TA:other;"), std::string::npos);
}

TEST_F(BusFormsTest, AGroupThatCannotBeWrittenIsReportedAndTheWindowStays) {
    t.ui.otherwise = Button::Yes;
    edit([&](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("other"));
        const auto path = t.application.context().store.pathOf(kBusGroupFile);
        (void)deleteFile(path);
        ASSERT_TRUE(makeFolder(path).ok());
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(t.ui.countBoxes(322), 1);
        press(dialog, "cancel");
    });
    EXPECT_EQ(group(), kRecorderBus);
}

TEST_F(BusFormsTest, ACancelWhileTheGroupIsReadOpensNothing) {
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(editBus(form, t.application, "1553 Bus"));
    EXPECT_FALSE(has(kBusProfile));
    EXPECT_TRUE(door.names.empty());
}

TEST_F(BusFormsTest, AMeasurementNameOfAnotherStreamIsRefusedHereAndInAPaste) {
    put("[kavu]PCMMEAS.D01",
        "D-1\\DLN:PCM 1;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\nD-1\\MN\\N-1:1;\r\n"
        "D-1\\MN-1-1:TAKEN;\r\n");
    put("[kavu]PCMFMT.P01", "P-1\\DLN:PCM 1;\r\nP-1\\TF:ONE;\r\n");
    put("[kavu]MULT.M01",
        "M-1\\ID:Aircraft;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:PCM 1;\r\nM-1\\SI\\N:1;\r\n"
        "M-1\\SI1-1:1;\r\nM-1\\SI\\DLN-1:1553 Bus;\r\n");
    put("[kavu]GTMP.G", "G\\DSI\\N:1;\r\nG\\DSI-1:Aircraft;\r\nG\\DST-1:RF;\r\n");
    ASSERT_TRUE(t.application.measurementNames().checkForDuplicates(&t.ui));
    ASSERT_EQ(t.application.measurementNames().names(), std::vector<std::string>{"TAKEN"});
    t.ui.otherwise = Button::Yes;
    edit([&](QDialog& dialog) {
        auto& editor = static_cast<BusWindow&>(dialog).editor();
        editor.select({0, 0});
        door.next([](QDialog& measurement) {
            type(measurement, "MN", QStringLiteral("TAKEN"));
            press(measurement, "ok");
            EXPECT_TRUE(measurement.isVisible());
            press(measurement, "cancel");
        });
        key(editor, Qt::Key_Insert);
        EXPECT_EQ(t.ui.countBoxes(455), 1);
        copyTable({.rows = {{"x"}},
                   .kind = "bus-message",
                   .own = {{"0", "2", "MNA", "A"}, {"1", "3", "MN", "TAKEN"}}});
        editor.select({0});
        key(editor, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(t.ui.countBoxes(455), 2);
        press(dialog, "cancel");
    });
    EXPECT_EQ(group(), kRecorderBus);
}

// --- the measurement database
// ---------------------------------------------------------------------

class BusDatabaseTest : public BusFormsTest {
  protected:
    BusDatabaseTest() {
        std::vector<std::string> fields(36);
        fields[0] = "Mach";
        fields[mdbfield::kBusNumber] = "0";
        fields[mdbfield::kRemoteTerminalAddress] = "101";
        fields[mdbfield::kSubTerminalAddress] = "10";
        fields[mdbfield::kWordNumber] = "3";
        test::writeFile(path, test::mdbLine(fields) + test::mdbLine({"Other"}));
        auto& settings = t.application.context().settings;
        settings.set(setting::kDatabasePath, path);
        settings.set(setting::kDatabaseVersion, 1);
        settings.set(setting::kDatabaseEnabled, true);
    }
    static bool isOffered(QDialog& dialog) {
        return test::find<QPushButton>(dialog, "addFromDatabase")->isEnabled();
    }
    /// Opens the sheet of the first message.
    void openMessage(QDialog& dialog, const test::TestDoor::Driver& driver) {
        door.next(driver);
        auto& editor = static_cast<BusWindow&>(dialog).editor();
        editor.select({0, 0});
        editor.findChild<QAction*>(QStringLiteral("edit"))->trigger();
    }

    std::string path = t.folder / "my.otb";
};

TEST_F(BusDatabaseTest, RecordsOfTheDatabaseGoToTheMessagesThatTheyName) {
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        press(dialog, "addFromDatabase");
        EXPECT_TRUE(t.ui.hasBox(418));
        EXPECT_TRUE(t.ui.hasBox(415));
        press(dialog, "ok");
    }));
    EXPECT_NE(group().find("B-1\\MN-1-1-1:Mach;"), std::string::npos) << group();
    EXPECT_EQ(group().find("Other"), std::string::npos);
    EXPECT_EQ(t.application.context().history.levels(), 1U);
}

TEST_F(BusDatabaseTest, ARecordThatIsChosenGoesToTheMessageOfTheSheet) {
    t.ui.otherwise = Button::Yes;
    t.ui.rows = {1};
    EXPECT_TRUE(edit([&](QDialog& dialog) {
        openMessage(dialog, [](QDialog& message) {
            test::openPage(message, 1);
            press(message, "addFromDatabase");
            press(message, "ok");
        });
        press(dialog, "ok");
    }));
    EXPECT_NE(group().find("B-1\\MN-1-1-1:Other;"), std::string::npos) << group();
}

TEST_F(BusDatabaseTest, ACancelledSheetTakesItsAdditionBack) {
    t.ui.otherwise = Button::Yes;
    t.ui.rows = {1};
    edit([&](QDialog& dialog) {
        openMessage(dialog, [](QDialog& message) {
            test::openPage(message, 1);
            press(message, "addFromDatabase");
            press(message, "cancel");
        });
        press(dialog, "cancel");
    });
    EXPECT_EQ(group(), kRecorderBus);
}

TEST_F(BusDatabaseTest, WhileTheDatabaseIsOffItsButtonsAreDisabled) {
    t.application.context().settings.set(setting::kDatabaseEnabled, false);
    edit([&](QDialog& dialog) {
        EXPECT_FALSE(isOffered(dialog));
        openMessage(dialog, [](QDialog& message) {
            EXPECT_FALSE(isOffered(message));
            press(message, "cancel");
        });
        press(dialog, "cancel");
    });
}

TEST_F(BusDatabaseTest, Message428DisablesTheButtons) {
    edit([&](QDialog& dialog) {
        EXPECT_TRUE(isOffered(dialog));
        ASSERT_TRUE(deleteFile(path).ok());
        press(dialog, "addFromDatabase");
        EXPECT_TRUE(t.ui.hasBox(428));
        EXPECT_FALSE(isOffered(dialog));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(t.application.context().settings.get(setting::kDatabaseEnabled));
}

}  // namespace
}  // namespace kavu
