// The commands and the entries of the tree that open the sheets and dialogs of the
// conversions.
#include "app/conversion/ConversionForms.h"
#include "app/framework/EditableList.h"
#include "app/shell/MainWindow.h"
#include "app/shell/TreePanel.h"
#include "app/support/TestDoor.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "core/document/DocumentFiles.h"
#include "core/talk/ProfileSettings.h"
#include "support/TestContext.h"

#include <filesystem>
#include <memory>

#include <QAction>
#include <QLineEdit>
#include <QTabWidget>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class ConversionFormsTest : public testing::Test {
  protected:
    ConversionFormsTest() {
        std::filesystem::copy_file(std::string(KAVU_SOURCE_DIR) + "/samples/flight-test.tma", path);
        window = std::make_unique<MainWindow>(application, door);
        installConversionForms(*window, application);
    }
    ~ConversionFormsTest() override {
        window.reset();
        application.shutDown(nullptr);
    }
    void begin() {
        ASSERT_TRUE(window->begin({.splash = false, .file = path}));
        application.context().files.demandScopes(true);
    }
    void choose(TreeAction action, const std::string& name = {}) {
        TreeItem item;
        item.kind = name.empty() ? TreeKind::ConversionHead : TreeKind::Measurement;
        item.name = name;
        emit window->tree().requested(action, item);
    }
    bool has(const char* name) { return application.conversions().locateDefinition(name).found; }
    std::string temp() {
        EXPECT_TRUE(makeFolder(folder / "temp").ok());
        return folder / "temp";
    }

    test::TempFolder folder;
    std::string path = folder / "flight.tma";
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{test::testEnvironment({{"TEMP", temp()}, {"HOME", folder.path()}}),
                            clock, random, folder / "kavu.ini"};
    test::TestDoor door;
    std::unique_ptr<MainWindow> window;
};

TEST_F(ConversionFormsTest, TheCommandOpensTheListAndTheListTheSheet) {
    begin();
    ASSERT_TRUE(window->action(CommandId::Conversion)->isEnabled());
    door.next([](QDialog& list) {
        EXPECT_EQ(toBytes(list.objectName()), "edit_data_conversion_from_menu");
        EXPECT_GT(find<EditableList>(list, "definitions")->rowCount(), 10);
        press(list, "edit");
        press(list, "close");
    });
    door.next([](QDialog& sheet) {
        EXPECT_TRUE(sheet.windowTitle().startsWith(QStringLiteral("Data Conversion Attributes: ")));
        type(sheet, "MN1", QStringLiteral("Fan speed"));
        press(sheet, "ok");
    });
    window->run(CommandId::Conversion);
    EXPECT_TRUE(application.context().document.changed);
    EXPECT_TRUE(window->isWindowModified()) << "the title follows";
    application.context().document.changed = false;
}

TEST_F(ConversionFormsTest, TheTreeEditsDeletesAndRenamesARecord) {
    begin();
    ASSERT_TRUE(has("ENG1-N1"));
    door.next([](QDialog& sheet) {
        EXPECT_EQ(sheet.windowTitle(), QStringLiteral("Data Conversion Attributes: ENG1-N1"));
        press(sheet, "cancel");
    });
    choose(TreeAction::EditConversion, "ENG1-N1");
    EXPECT_FALSE(application.context().document.changed);
    // The question of the rename, then the name.
    door.next([](QDialog& box) { press(box, "yes"); });
    door.next([](QDialog& prompt) {
        prompt.findChild<QLineEdit*>()->setText(QStringLiteral("ENG1-SPEED"));
        press(prompt, "ok");
    });
    choose(TreeAction::RenameMeasurement, "ENG1-N1");
    EXPECT_FALSE(has("ENG1-N1"));
    EXPECT_TRUE(has("ENG1-SPEED"));
    door.next([](QDialog& box) { press(box, "no"); });
    choose(TreeAction::DeleteConversion, "ENG1-SPEED");
    EXPECT_TRUE(has("ENG1-SPEED"));
    door.next([](QDialog& box) { press(box, "yes"); });
    choose(TreeAction::DeleteConversion, "ENG1-SPEED");
    EXPECT_FALSE(has("ENG1-SPEED"));
    EXPECT_TRUE(application.context().document.changed);
    application.context().document.changed = false;
}

TEST_F(ConversionFormsTest, TheHeadOfTheBranchOpensTheList) {
    begin();
    door.next([](QDialog& list) { press(list, "close"); });
    choose(TreeAction::ViewAllConversions);
    EXPECT_FALSE(application.context().document.changed);
}

TEST_F(ConversionFormsTest, TheStringsOfTheCommentAreAnOption) {
    begin();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(toBytes(dialog.objectName()), "EUCommentOptions");
        press(dialog, "ok");
    });
    window->run(CommandId::CommentOptions);
    EXPECT_EQ(application.context().settings.profileText("EUComment", "C"), "0");
}

TEST_F(ConversionFormsTest, TheSheetReachesTheSampleRateOptions) {
    begin();
    door.next([](QDialog& sheet) {
        find<QTabWidget>(sheet, "pages")->setCurrentIndex(2);
        press(sheet, "sampleRateOptions");
        press(sheet, "cancel");
    });
    door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    choose(TreeAction::EditConversion, "ENG1-N1");
}

}  // namespace
}  // namespace kavu
