#include "app/Forms.h"
#include "app/support/MainWindowStage.h"
#include "core/talk/Messages.h"

#include <QComboBox>
#include <QMessageBox>

namespace kavu {
namespace {

class DatabaseForms : public MainWindowTest {
  public:
    void beginWith(const std::string& settings) {
        test::writeFile(folder / "kavu.ini", "[KAVU-9]\r\n" + settings);
        begin();
        installForms(*window, application);
    }
    std::string database = folder / "my.otb";
};

TEST_F(DatabaseForms, WhileItIsOffOnlyItsPlaceAndItsSwitchAreOffered) {
    beginWith("");
    for (const auto id : {CommandId::EditDatabase, CommandId::ImportDatabase,
                          CommandId::DisableDatabase, CommandId::AddRoot, CommandId::DoNotAddRoot,
                          CommandId::AddChildren, CommandId::DoNotAddChildren}) {
        EXPECT_FALSE(enabled(id)) << static_cast<int>(id);
    }
    EXPECT_TRUE(enabled(CommandId::DatabaseLocation));
    EXPECT_TRUE(enabled(CommandId::EnableDatabase));
}

TEST_F(DatabaseForms, ADatabaseIsMadeWhenItIsSwitchedOnAndNotBefore) {
    beginWith("");
    const auto made = settings().get(setting::kDatabasePath);
    EXPECT_TRUE(made.ends_with("kavu.mdb")) << made;
    EXPECT_FALSE(fileExists(made));
    // The folder of the default is made by a start with the settings in it.
    settings().set(setting::kDatabasePath, database);
    answer("no");  // 429
    answer("ok");  // 428
    window->run(CommandId::EnableDatabase);
    EXPECT_FALSE(settings().get(setting::kDatabaseEnabled));
    EXPECT_FALSE(enabled(CommandId::EditDatabase));
    answer("yes");
    window->run(CommandId::EnableDatabase);
    EXPECT_TRUE(settings().get(setting::kDatabaseEnabled));
    EXPECT_TRUE(enabled(CommandId::EditDatabase));
    EXPECT_TRUE(enabled(CommandId::AddRoot));
    EXPECT_FALSE(enabled(CommandId::EnableDatabase));
    EXPECT_TRUE(fileExists(database));
    window->run(CommandId::DisableDatabase);
    EXPECT_FALSE(enabled(CommandId::EditDatabase));
}

TEST_F(DatabaseForms, Message428GreysTheCommands) {
    test::writeFile(database, "A;" + std::string(34, ';') + "\r\n");
    beginWith("MDBEnabled=1\r\nMDBVer=1\r\nMDB=" + database + "\r\n");
    EXPECT_TRUE(enabled(CommandId::EditDatabase));
    ASSERT_TRUE(deleteFile(database).ok());
    answer("ok");
    window->run(CommandId::EditDatabase);
    EXPECT_FALSE(settings().get(setting::kDatabaseEnabled));
    EXPECT_FALSE(enabled(CommandId::EditDatabase));
    EXPECT_TRUE(enabled(CommandId::EnableDatabase));
}

TEST_F(DatabaseForms, TheWindowToWorkInOpensOnTheDatabaseOfTheSettings) {
    test::writeFile(database, "A;" + std::string(34, ';') + "\r\n");
    beginWith("MDBEnabled=1\r\nMDBVer=1\r\nMDB=" + database + "\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("EDITMEASUREMENTDATABASE"));
        test::press(dialog, "cancel");
    });
    window->run(CommandId::EditDatabase);
}

TEST_F(DatabaseForms, AnotherFileAndFormAreTakenIntoUseAndChecked) {
    beginWith("MDBEnabled=1\r\n");
    door.next([this](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("MDB_LOCATION"));
        EXPECT_EQ(test::find<QComboBox>(dialog, "version")->currentText(),
                  QStringLiteral("Version 3 - XML (Recommended)"));
        test::type(dialog, "path", QString());
        test::find<QLineEdit>(dialog, "path")->clear();
        answer("ok");  // a path is needed
        test::press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        test::find<QComboBox>(dialog, "version")->setCurrentIndex(1);
        test::type(dialog, "path", toQString(database));
        answer("yes");  // 429
        test::press(dialog, "ok");
    });
    window->run(CommandId::DatabaseLocation);
    EXPECT_EQ(settings().get(setting::kDatabasePath), database);
    EXPECT_EQ(settings().get(setting::kDatabaseVersion), 1);
    EXPECT_TRUE(fileExists(database));
    EXPECT_TRUE(settings().get(setting::kDatabaseEnabled));
}

TEST_F(DatabaseForms, TheAboutBoxTellsOfTheDatabase) {
    beginWith("");
    door.next([](QDialog& dialog) {
        EXPECT_TRUE(static_cast<QMessageBox&>(dialog).text().contains(
            QStringLiteral("(Measurement Database Installed)")));
        test::press(dialog, "ok");
    });
    window->run(CommandId::About);
}

}  // namespace
}  // namespace kavu
