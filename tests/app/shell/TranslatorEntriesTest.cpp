// The entries of File, Translators, with and without modules.
#include "app/Forms.h"
#include "app/framework/QtText.h"
#include "app/shell/MainWindow.h"
#include "app/support/TestDoor.h"
#include "app/translators/TranslatorConfigurationDialog.h"
#include "application/Application.h"
#include "core/files/FileIo.h"
#include "sdk/TranslatorModule.h"
#include "support/TestContext.h"

#include <filesystem>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>
#include <QTreeWidget>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::find;
using test::press;

class TranslatorEntries : public testing::Test {
  public:
    ~TranslatorEntries() override {
        window.reset();
        application.shutDown(nullptr);
    }
    void begin() {
        std::filesystem::create_directory(folder / "temp");
        window = std::make_unique<MainWindow>(application, door);
        installForms(*window, application);
        ASSERT_TRUE(window->begin({.splash = false}));
    }
    /// Puts the example where the program looks for modules.
    void putModule(unsigned mode = 0644) {
        const auto modules = folder / "TranslatorSupportFiles";
        std::filesystem::create_directory(modules);
        std::filesystem::permissions(modules, std::filesystem::perms(0755));
        const auto path = modules + "/csv_setup.so";
        std::filesystem::copy_file(KAVU_EXAMPLE_TRANSLATOR, path);
        std::filesystem::permissions(path, std::filesystem::perms(mode));
    }
    void putSettings(const std::string& line) {
        ASSERT_TRUE(makeFolders(translatorFolder(application.environment())).ok());
        test::writeFile(translatorFolder(application.environment()) + "translat.ini",
                        "[Translator]\r\n" + line + "\r\n");
    }
    /// "in.tma" is converted to "out.csv".
    void chooseFiles() {
        for (const char* const name : {"in.tma", "out.csv"}) {
            door.next([path = folder / name](QDialog& dialog) {
                auto* const field = find<QLineEdit>(dialog, "fileNameEdit");
                field->setText(toQString(path));
                QTest::keyClick(field, Qt::Key_Return);
            });
        }
    }
    [[nodiscard]] QAction* entry(const char* name) const {
        return window->findChild<QAction*>(QLatin1String(name));
    }

    test::TempFolder folder;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{
        test::testEnvironment({{"TEMP", folder / "temp"}, {"HOME", folder.path()}}, folder.path()),
        clock, random, folder / "kavu.ini"};
    test::TestDoor door;
    std::unique_ptr<MainWindow> window;
};

TEST_F(TranslatorEntries, AreDisabledAndSaySoWithoutAModule) {
    begin();
    for (const auto id :
         {CommandId::ConvertWyle, CommandId::ConvertL3Com550, CommandId::ConvertL3ComVts,
          CommandId::WyleDefaults, CommandId::L3Com550Defaults, CommandId::L3ComVtsDefaults}) {
        EXPECT_FALSE(window->action(id)->isEnabled());
        EXPECT_EQ(window->action(id)->statusTip(), QStringLiteral("No translator is installed"));
    }
    EXPECT_EQ(window->action(CommandId::ConvertWyle)->text(),
              QStringLiteral("Convert TMATS file To &Wyle Export Format"));
    EXPECT_TRUE(window->action(CommandId::TranslatorDefaults)->isEnabled());
    EXPECT_EQ(entry("translatorCSV Setup"), nullptr);
}

TEST_F(TranslatorEntries, HaveOneForAModuleOfAnotherName) {
    putModule();
    begin();
    ASSERT_NE(entry("translatorCSV Setup"), nullptr);
    EXPECT_EQ(entry("translatorCSV Setup")->text(),
              QStringLiteral("Convert TMATS file To &CSV Setup Format"));
    EXPECT_FALSE(window->action(CommandId::ConvertWyle)->isEnabled());
}

TEST_F(TranslatorEntries, ConvertAFileAndShowItsMessages) {
    putModule();
    test::writeFile(folder / "in.tma",
                    "P-1\\DLN:a;P-1\\TF:ONE;P-1\\MF\\N:1;P-1\\MF1:5;"
                    "M-1\\BB\\DLN:none;");
    begin();
    chooseFiles();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("You Have Messages Waiting"));
        press(dialog, "no");
    });
    entry("translatorCSV Setup")->trigger();
    EXPECT_THAT(test::readFile(folder / "out.csv"), testing::StartsWith("stream,measurement"));
}

TEST_F(TranslatorEntries, ShowTheLogInAWindowOfTheirOwnIfItsViewerIsNotThere) {
    putModule();
    putSettings("EditorName=/none/notepad");
    test::writeFile(folder / "in.tma",
                    "P-1\\DLN:a;P-1\\TF:ONE;P-1\\MF\\N:1;P-1\\MF1:5;"
                    "M-1\\BB\\DLN:none;");
    begin();
    chooseFiles();
    door.next([](QDialog& dialog) { press(dialog, "yes"); });
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("TranslatLog.txt"));
        EXPECT_THAT(toBytes(find<QPlainTextEdit>(dialog, "text")->toPlainText()),
                    testing::HasSubstr("Stream 'none' is left out."));
        dialog.close();
    });
    entry("translatorCSV Setup")->trigger();
}

TEST_F(TranslatorEntries, ConvertTheStreamsThatAreChosen) {
    putModule();
    putSettings("ProcessAllStreams=0");
    std::string text = "G\\106:09;";
    for (const std::string n : {"1", "2", "3"}) {
        text += "P-" + n + "\\DLN:S" + n + ";P-" + n + "\\TF:ONE;P-" + n + "\\F1:8;P-" + n +
                "\\MF\\N:1;P-" + n + "\\MF1:5;D-" + n + "\\DLN:S" + n + ";D-" + n + "\\ML\\N:1;D-" +
                n + "\\MN\\N-1:1;D-" + n + "\\MN-1-1:M" + n + ";D-" + n + "\\LT-1-1:MF;D-" + n +
                "\\MF-1-1:3;";
    }
    test::writeFile(folder / "in.tma", text);
    begin();
    chooseFiles();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Select Streams To Convert"));
        auto* const rows = find<QTreeView>(dialog, "rows");
        ASSERT_EQ(rows->model()->rowCount(), 3);
        rows->selectionModel()->select(rows->model()->index(2, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        press(dialog, "ok");
    });
    entry("translatorCSV Setup")->trigger();
    const auto setup = test::readFile(folder / "out.csv");
    EXPECT_THAT(setup, testing::HasSubstr("S1,M1,"));
    EXPECT_THAT(setup, testing::Not(testing::HasSubstr("S2,")));
    EXPECT_THAT(setup, testing::HasSubstr("S3,M3,"));
}

TEST_F(TranslatorEntries, HaveNoneForAModuleThatOthersCanWrite) {
    putModule(0666);
    begin();
    EXPECT_EQ(entry("translatorCSV Setup"), nullptr);
}

TEST_F(TranslatorEntries, EditTheDefaultsWithoutAModule) {
    begin();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("TranslatorConfigurationDialog"));
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Configuration"));
        auto* const rows = find<QTreeWidget>(dialog, "items");
        EXPECT_EQ(rows->headerItem()->text(1), QStringLiteral("Current Default Value"));
        ASSERT_EQ(rows->topLevelItemCount(), 3);
        EXPECT_EQ(rows->topLevelItem(2)->text(0),
                  QStringLiteral("(No Vendor configurable items available)"));
        EXPECT_FALSE(find<QPushButton>(dialog, "defaults")->isEnabled());
        press(dialog, "cancel");
    });
    window->run(CommandId::TranslatorDefaults);
}

TEST_F(TranslatorEntries, SayThatTheDefaultsCannotBeShown) {
    begin();
    door.next([](QDialog& dialog) {
        dialog.hide();
        throw std::bad_alloc();
    });
    door.next([](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Translator Error"));
        EXPECT_EQ(static_cast<QMessageBox&>(box).text(),
                  QStringLiteral("Unable to display Edit Configuration dialog"));
        press(box, "ok");
    });
    window->run(CommandId::TranslatorDefaults);
    EXPECT_EQ(door.depth(), 0);
}

TEST_F(TranslatorEntries, EditTheItemsOfAModuleAndKeepThem) {
    putModule();
    begin();
    door.next([this](QDialog& dialog) {
        auto* const rows = find<QTreeWidget>(dialog, "items");
        EXPECT_EQ(rows->topLevelItem(2)->text(1), QStringLiteral(","));
        door.next([](QDialog& prompt) {
            EXPECT_EQ(prompt.windowTitle(), QStringLiteral("Enter New Default Value"));
            test::type(prompt, "value", QStringLiteral("|"));
            press(prompt, "ok");
        });
        qobject_cast<TranslatorConfigurationDialog*>(&dialog)->editRow(2);
        EXPECT_EQ(rows->topLevelItem(2)->text(1), QStringLiteral("|"));
        press(dialog, "ok");
    });
    window->run(CommandId::TranslatorDefaults);
    door.next([](QDialog& dialog) {
        EXPECT_EQ(find<QTreeWidget>(dialog, "items")->topLevelItem(2)->text(1),
                  QStringLiteral("|"));
        press(dialog, "cancel");
    });
    window->run(CommandId::TranslatorDefaults);
}

}  // namespace
}  // namespace kavu
