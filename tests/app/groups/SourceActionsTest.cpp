// The entries of the tree that change the set of data sources, from the menu entry to the
// file.
#include "app/framework/QtText.h"
#include "app/groups/GroupForms.h"
#include "app/shell/MainWindow.h"
#include "app/shell/TreePanel.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "groups/DataSources.h"
#include "support/SourceStage.h"

#include <filesystem>

#include <QLabel>
#include <QListWidget>
#include <QTreeView>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::press;
using test::type;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class SourceActionsTest : public ::testing::Test {
  protected:
    SourceActionsTest() {
        std::filesystem::create_directory(folder / "temp");
        test::writeFile(path, test::threeSources());
        window = std::make_unique<MainWindow>(application, door);
        EXPECT_TRUE(window->begin({.splash = false, .file = path}));
        installGroupForms(*window, application);
        application.context().files.demandScopes(true);
    }
    ~SourceActionsTest() override {
        application.context().document.changed = false;
        window.reset();
        application.shutDown(nullptr);
    }

    void request(TreeAction action, const TreeItem& item) {
        emit window->tree().requested(action, item);
    }
    static TreeItem source(const std::string& name) {
        return {.kind = TreeKind::Source, .name = name};
    }
    /// The next dialog gets this button.
    void answer(const char* button) {
        door.next([button](QDialog& dialog) { press(dialog, button); });
    }
    /// The next dialog shows this, and gets the button.
    void answerAbout(const char* part, const char* button) {
        door.next([part, button](QDialog& dialog) {
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            QString text;
            for (const auto* const label : dialog.findChildren<QLabel*>()) {
                text += label->text();
            }
            EXPECT_TRUE(text.contains(QLatin1String(part))) << toBytes(text);
            press(dialog, button);
        });
    }
    void enter(const char* text) {
        door.next([text](QDialog& dialog) {
            type(dialog, "value", QLatin1String(text));
            press(dialog, "ok");
        });
    }
    std::vector<std::string> sources() {
        std::vector<std::string> names;
        listDataSources(application.context(), nullptr, &names);
        return names;
    }
    bool treeHas(TreeKind kind, const std::string& name) {
        const auto* const view = window->tree().findChild<QTreeView*>();
        return static_cast<TreeModel*>(view->model())->indexOf(kind, name).isValid();
    }
    void put(char letter, int index, std::string_view bytes) {
        auto& context = application.context();
        const LoadScope load(context.files);
        test::writeFile(context.store.pathOf(groupFile(letter, index)), bytes);
    }
    std::string file(char letter, int index) {
        return test::readFile(application.context().store.pathOf(groupFile(letter, index)));
    }

    test::TempFolder folder;
    std::string path = folder / "three.tma";
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{
        test::testEnvironment({{"TEMP", folder / "temp"}, {"HOME", folder.path()}}), clock, random,
        folder / "kavu.ini"};
    test::TestDoor door;
    std::unique_ptr<MainWindow> window;
};

TEST_F(SourceActionsTest, Rename) {
    enter("Renamed");
    request(TreeAction::Rename, source("First"));
    EXPECT_THAT(sources(), ElementsAre("Renamed", "Second", "Recorder"));
    EXPECT_TRUE(treeHas(TreeKind::Source, "Renamed"));
    EXPECT_FALSE(treeHas(TreeKind::Source, "First"));
    EXPECT_TRUE(application.context().document.changed);
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(SourceActionsTest, RenameStream) {
    enter("Renamed");
    request(TreeAction::RenameStream, {.kind = TreeKind::Stream, .name = "Link A"});
    EXPECT_TRUE(treeHas(TreeKind::Stream, "Renamed"));
    EXPECT_THAT(file('D', 1), HasSubstr("D-1\\DLN:Renamed;"));
}

TEST_F(SourceActionsTest, ARenameAsksAboutTheReferencesThatItLeaves) {
    put('R', 1, "R-1\\ID:Recorder;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\DSI-1:First;\r\n");
    enter("Renamed");
    answerAbout("R-1\\DSI-1", "cancel");
    request(TreeAction::Rename, source("First"));
    EXPECT_THAT(sources(), ElementsAre("First", "Second", "Recorder"));
    enter("Renamed");
    answerAbout("R-1\\DSI-1", "yes");
    request(TreeAction::Rename, source("First"));
    EXPECT_THAT(sources(), ElementsAre("Renamed", "Second", "Recorder"));
    EXPECT_THAT(file('R', 1), HasSubstr("R-1\\DSI-1:Renamed;"));
}

TEST_F(SourceActionsTest, ADeleteNamesWhatElseGoesAndCanLeaveIt) {
    put('M', 7, "M-7\\ID:Stray;\r\nM-7\\BB\\DLN:Loose;\r\n");
    answer("yes");
    answerAbout("M-7 'Stray'", "no");
    request(TreeAction::Delete, source("Second"));
    EXPECT_THAT(sources(), ElementsAre("First", "Recorder"));
    EXPECT_THAT(file('M', 3), HasSubstr("M-3\\ID:Stray;"));
}

TEST_F(SourceActionsTest, Delete) {
    answer("no");
    request(TreeAction::Delete, source("Second"));
    EXPECT_EQ(sources().size(), 3U);
    answer("yes");
    request(TreeAction::Delete, source("Second"));
    EXPECT_THAT(sources(), ElementsAre("First", "Recorder"));
    EXPECT_FALSE(treeHas(TreeKind::Source, "Second"));
    EXPECT_FALSE(treeHas(TreeKind::Stream, "Link B"));
}

TEST_F(SourceActionsTest, MakeACopyWithAPrefix) {
    answer("yes");
    enter("Copy");
    answer("yes");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Measurement Prefix And Suffix"));
        type(dialog, "value0", QStringLiteral("L_"));
        press(dialog, "ok");
    });
    request(TreeAction::MakeCopy, source("First"));
    EXPECT_THAT(sources(), ElementsAre("First", "Second", "Recorder", "Copy"));
    EXPECT_TRUE(treeHas(TreeKind::Source, "Copy"));
    EXPECT_TRUE(treeHas(TreeKind::Stream, "Link A 2"));
    EXPECT_TRUE(treeHas(TreeKind::Measurement, "L_ALPHA"));
}

TEST_F(SourceActionsTest, CreateANewOne) {
    answer("yes");
    enter("New");
    answer("choice0");  // RF
    answer("yes");
    answer("choice0");  // PCM
    request(TreeAction::CreateNew, {.kind = TreeKind::TransmissionHead});
    EXPECT_THAT(sources(), ElementsAre("First", "Second", "Recorder", "New"));
    EXPECT_TRUE(treeHas(TreeKind::Stream, "PCM Stream 3"));
}

TEST_F(SourceActionsTest, ImportTakesTheKindOfTheBranch) {
    const auto other = folder / "other.tma";
    test::writeFile(other, "T-1\\ID:Radio;\nR-1\\ID:Box;\n");
    const auto import = [&](TreeKind head) {
        door.next([&](QDialog& dialog) {
            type(dialog, "fileNameEdit", toQString(other));
            QTest::keyClick(test::find<QWidget>(dialog, "fileNameEdit"), Qt::Key_Return);
        });
        answer("ok");
        answer("no");
        answer("no");
        request(TreeAction::Import, {.kind = head});
    };
    import(TreeKind::TransmissionHead);
    EXPECT_EQ(sources().back(), "Radio");
    import(TreeKind::RecorderHead);
    EXPECT_EQ(sources().back(), "Box");
    EXPECT_TRUE(treeHas(TreeKind::Source, "Box"));
}

TEST_F(SourceActionsTest, ASourceOfAnotherTypeOpensTheSheetOfItsGroup) {
    const auto other = folder / "other.tma";
    test::writeFile(other,
                    "G\\106:09;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:Tape;\r\nG\\DST-1:OTH;\r\n"
                    "R-1\\ID:Tape;\r\nR-1\\R1:A Recorder;\r\n");
    ASSERT_TRUE(application.documents().openNamed(&window->ui(), other));
    QString title;
    door.next([&title](QDialog& dialog) {
        title = dialog.windowTitle();
        dialog.reject();
    });
    request(TreeAction::Edit,
            {.kind = TreeKind::Source, .name = "Tape", .letter = 'R', .group = 1});
    EXPECT_TRUE(title.contains(QLatin1String("Recorder"))) << title.toStdString();
}

}  // namespace
}  // namespace kavu
