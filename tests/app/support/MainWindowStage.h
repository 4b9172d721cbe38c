// A main window over a sample document in a folder of its own.
#pragma once

#include "app/shell/MainWindow.h"
#include "app/shell/NoteBar.h"
#include "app/shell/StartOptions.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "application/Application.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

#include <filesystem>

#include <QLineEdit>
#include <gtest/gtest.h>

namespace kavu {

/// Takes a drop as the toolkit would hand it over.
class DropWindow : public MainWindow {
  public:
    using MainWindow::dropEvent;
    using MainWindow::MainWindow;
};

/// A sample document in a folder of its own.
class MainWindowTest : public testing::Test {
  public:
    MainWindowTest() {
        std::filesystem::copy_file(std::string(KAVU_SOURCE_DIR) + "/samples/flight-test.tma", path);
    }
    ~MainWindowTest() override {
        window.reset();
        application.shutDown(nullptr);
    }
    void begin(const std::string& file = {}, bool splash = false) {
        window = std::make_unique<DropWindow>(application, door);
        ASSERT_TRUE(window->begin({.splash = splash, .file = file}));
        application.context().files.demandScopes(true);
    }
    bool enabled(CommandId id) { return window->action(id)->isEnabled(); }
    std::string title() { return toBytes(window->windowTitle()); }
    TmatsDocument& document() { return application.context().document; }
    ProfileSettings& settings() { return application.context().settings; }
    std::string temp() {
        EXPECT_TRUE(makeFolder(folder / "temp").ok());
        return folder / "temp";
    }
    void answer(const char* button) {
        door.next([button](QDialog& dialog) { test::press(dialog, button); });
    }

    test::TempFolder folder;
    std::string path = folder / "flight.tma";
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{test::testEnvironment({{"TEMP", temp()}, {"HOME", folder.path()}}),
                            clock, random, folder / "kavu.ini"};
    test::TestDoor door;
    std::unique_ptr<DropWindow> window;
};

inline void typeFileName(QDialog& dialog, const char* text) {
    auto* const name = test::find<QLineEdit>(dialog, "fileNameEdit");
    name->setText(QLatin1String(text));
    QTest::keyClick(name, Qt::Key_Return);
}

}  // namespace kavu
