// Each operation on the document, started as a user starts it, undone and redone by the two
// entries of the Edit menu.
#include "app/Forms.h"
#include "app/pcm/SheetStage.h"
#include "app/shell/MainWindow.h"
#include "app/shell/TreePanel.h"
#include "app/support/TestDoor.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/files/FileIo.h"
#include "support/SourceStage.h"

#include <filesystem>
#include <map>

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTreeView>

namespace kavu {
namespace {

using test::find;
using test::pick;
using test::press;
using test::type;

constexpr const char* kFlightTest = KAVU_SOURCE_DIR "/samples/flight-test.tma";

class UndoTest : public testing::Test {
  public:
    ~UndoTest() override {
        application.context().document.changed = false;
        window.reset();
        application.shutDown(nullptr);
    }
    void open(const std::string& bytes) {
        std::filesystem::create_directory(folder / "temp");
        test::writeFile(path, bytes);
        window = std::make_unique<MainWindow>(application, door);
        installForms(*window, application);
        ASSERT_TRUE(window->begin({.splash = false}));
        application.context().files.demandScopes(true);
        ASSERT_TRUE(window->openNamed(path));
        // What an opening corrects cannot be undone; the document is to begin without a mark.
        if (window->isWindowModified()) {
            window->run(CommandId::Save);
        }
        ASSERT_FALSE(window->isWindowModified());
    }
    void request(TreeAction action, const TreeItem& item) {
        emit window->tree().requested(action, item);
    }
    void answer(const char* button) {
        door.next([button](QDialog& dialog) { press(dialog, button); });
    }
    /// A row of the next list.
    void enter(const char* text) {
        door.next([text](QDialog& dialog) {
            type(dialog, "value", QLatin1String(text));
            press(dialog, "ok");
        });
    }
    /// The sheet of the flight test's general information, whose telephones it does not know.
    void editGeneral() {
        fill("PN", "Changed");
        answer("yes");
        window->run(CommandId::General);
    }
    /// The next dialog gets this text in a field, and OK.
    void fill(const char* field, const char* text) {
        door.next([field, text](QDialog& dialog) {
            type(dialog, field, QLatin1String(text));
            press(dialog, "ok");
        });
    }

    QString entryText(CommandId id) { return window->action(id)->text().remove(QLatin1Char('&')); }
    bool isEnabled(CommandId id) { return window->action(id)->isEnabled(); }
    /// What the tree shows, one item on a line.
    QStringList tree() {
        QStringList items;
        const auto* const model = window->tree().view()->model();
        std::function<void(const QModelIndex&, int)> add = [&](const QModelIndex& parent,
                                                               int depth) {
            for (int row = 0; row < model->rowCount(parent); ++row) {
                const auto index = model->index(row, 0, parent);
                items << QString(depth, QLatin1Char(' ')) + index.data().toString();
                add(index, depth + 1);
            }
        };
        add({}, 0);
        return items;
    }
    /// Every file of the document by name, without what editors keep next to them.
    std::map<std::string, std::string> files() {
        EXPECT_TRUE(application.conversions().writeOut().ok());
        const auto& store = application.context().store;
        std::vector<FolderEntry> entries;
        EXPECT_TRUE(listFolder(store.folder(), entries).ok());
        std::map<std::string, std::string> found;
        for (const auto& entry : entries) {
            const auto kind = describeDocumentFile(entry.name).kind;
            if (!entry.isFolder && kind != DocumentFile::Side && kind != DocumentFile::Record) {
                found[entry.name] = test::readFile(store.pathOf(entry.name));
            }
        }
        return found;
    }

    test::TempFolder folder;
    std::string path = folder / "document.tma";
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{
        test::testEnvironment({{"TEMP", folder / "temp"}, {"HOME", folder.path()}}), clock, random,
        folder / "kavu.ini"};
    test::TestDoor door;
    std::unique_ptr<MainWindow> window;
};

struct UndoCase {
    const char* name;
    OperationId operation;
    std::function<std::string()> document;
    std::function<void(UndoTest&)> act;
};

std::string flightTest() {
    return test::readFile(kFlightTest);
}
std::string pamDocument() {
    return "G\\106:09;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:Source;\r\nG\\DST-1:RF;\r\n"
           "M-1\\ID:Source;\r\nM-1\\BSG1:PAM;\r\nM-1\\BB\\DLN:Pam Link;\r\nM-1\\SI\\N:0;\r\n"
           "A-1\\DLN:Pam Link;\r\nA-1\\A1:NR;\r\n";
}
std::string loneStream() {
    return "G\\106:09;\r\nG\\DSI\\N:0;\r\nS-1\\DLN:Lone;\r\n";
}
TreeItem sourceItem(const char* name) {
    return {.kind = TreeKind::Source, .name = name};
}
TreeItem measurementItem(const char* name) {
    return {.kind = TreeKind::Measurement, .name = name};
}
/// Types a command in front of the text of a group.
test::TestDoor::Driver typeCommand(const char* command) {
    return [command](QDialog& dialog) {
        auto* const text = dialog.findChild<QPlainTextEdit*>();
        ASSERT_NE(text, nullptr);
        text->moveCursor(QTextCursor::Start);
        QTest::keyClicks(text, QLatin1String(command));
        QTest::keyClick(text, Qt::Key_Return);
        press(dialog, "ok");
    };
}

std::vector<UndoCase> undoCases() {
    using enum OperationId;
    return {
        {"General", EditGeneral, flightTest, [](UndoTest& t) { t.editGeneral(); }},
        {"Transmission", EditTransmission, flightTest,
         [](UndoTest& t) {
             t.fill("TID", "Changed");
             t.request(TreeAction::Edit, sourceItem("L-Band Telemetry"));
         }},
        {"Recorder", EditRecorder, flightTest,
         [](UndoTest& t) {
             t.fill("R1", "Changed");
             t.request(TreeAction::Edit, sourceItem("Onboard Recorder"));
         }},
        {"Multiplex", EditMultiplex, flightTest,
         [](UndoTest& t) {
             t.fill("BB3", "1234");
             t.request(TreeAction::Edit,
                       {.kind = TreeKind::MultiplexDefinition, .name = "L-Band Telemetry"});
         }},
        {"Hardware", EditHardware, flightTest,
         [](UndoTest& t) {
             t.door.next(typeCommand("H\\NEW:1;"));
             t.window->run(CommandId::Hardware);
         }},
        {"Vendor", EditVendor, test::threeSources,
         [](UndoTest& t) {
             t.answer("edit");
             t.door.next(typeCommand("V-1\\XYZ\\NEW:1;"));
             t.window->run(CommandId::Vendor);
         }},
        {"Pam", EditPam, pamDocument,
         [](UndoTest& t) {
             t.fill("A5", "900");
             t.window->run(CommandId::Pam);
         }},
        {"Stream", EditStream, flightTest,
         [](UndoTest& t) {
             t.door.next([](QDialog& dialog) {
                 pick(dialog, "D3", QStringLiteral("Encrypted"));
                 press(dialog, "ok");
             });
             t.request(TreeAction::EditStream, {.kind = TreeKind::Stream, .name = "PCM Stream 1"});
         }},
        {"Conversion", EditConversion, flightTest,
         [](UndoTest& t) {
             t.fill("MN1", "Changed");
             t.request(TreeAction::EditConversion, measurementItem("ENG1-N1"));
         }},
        {"RenameOfAConversion", RenameConversion, flightTest,
         [](UndoTest& t) {
             t.answer("yes");
             t.door.next([](QDialog& prompt) {
                 prompt.findChild<QLineEdit*>()->setText(QStringLiteral("ENG1-SPEED"));
                 press(prompt, "ok");
             });
             t.request(TreeAction::RenameMeasurement, measurementItem("ENG1-N1"));
         }},
        {"DeletionOfAConversion", DeleteConversion, flightTest,
         [](UndoTest& t) {
             t.answer("yes");
             t.request(TreeAction::DeleteConversion, measurementItem("ENG1-N1"));
         }},
        {"CreationOfASource", CreateSource, test::threeSources,
         [](UndoTest& t) {
             t.answer("yes");
             t.enter("New");
             t.answer("choice0");
             t.answer("yes");
             t.answer("choice0");
             t.request(TreeAction::CreateNew, {.kind = TreeKind::TransmissionHead});
         }},
        {"CopyOfASource", CopySource, test::threeSources,
         [](UndoTest& t) {
             t.answer("yes");
             t.enter("Copy");
             t.answer("yes");
             t.fill("value0", "L_");
             t.request(TreeAction::MakeCopy, sourceItem("First"));
         }},
        {"ImportOfASource", ImportSource, test::threeSources,
         [](UndoTest& t) {
             const auto other = t.folder / "other.tma";
             test::writeFile(other, "T-1\\ID:Radio;\n");
             t.door.next([other](QDialog& dialog) {
                 type(dialog, "fileNameEdit", toQString(other));
                 QTest::keyClick(find<QWidget>(dialog, "fileNameEdit"), Qt::Key_Return);
             });
             t.answer("ok");
             t.answer("no");
             t.answer("no");
             t.request(TreeAction::Import, {.kind = TreeKind::TransmissionHead});
         }},
        {"RenameOfASource", RenameSource, test::threeSources,
         [](UndoTest& t) {
             t.enter("Renamed");
             t.request(TreeAction::Rename, sourceItem("First"));
         }},
        {"DeletionOfASource", DeleteSource, test::threeSources,
         [](UndoTest& t) {
             t.answer("yes");
             t.request(TreeAction::Delete, sourceItem("Second"));
         }},
        {"RenameOfALink", RenameLink, test::threeSources,
         [](UndoTest& t) {
             t.enter("Renamed");
             t.request(TreeAction::RenameStream, {.kind = TreeKind::Stream, .name = "Link A"});
         }},
        {"HomeOfAStream", CreateHome, loneStream,
         [](UndoTest& t) {
             t.answer("yes");
             t.request(TreeAction::CreateHome,
                       {.kind = TreeKind::Stream, .name = "Lone", .isUnlinked = true});
         }},
        {"ChangeOfTheEdition", ChangeEdition, flightTest,
         [](UndoTest& t) {
             t.door.next([](QDialog& dialog) {
                 find<QRadioButton>(dialog, "saveAsSelected")->click();
                 auto* const output = find<QComboBox>(dialog, "outputVersion");
                 output->setCurrentIndex(output->findData(2007));
                 press(dialog, "ok");
             });
             t.answer("ok");
             t.window->run(CommandId::Versions);
         }},
    };
}

/// How often the tree of a window was filled.
class TreeCount {
  public:
    explicit TreeCount(MainWindow& window)
        : resets_(window.tree().view()->model(), &QAbstractItemModel::modelReset) {}
    /// Since this was asked last.
    int taken() {
        const auto count = resets_.count();
        resets_.clear();
        return static_cast<int>(count);
    }

  private:
    QSignalSpy resets_;
};

class EachOperation : public UndoTest, public testing::WithParamInterface<UndoCase> {};

TEST_P(EachOperation, IsUndoneAndDoneAgainByItsName) {
    const auto& operation = GetParam();
    open(operation.document());
    const auto name = toQString(operationName(operation.operation));
    const auto title = window->windowTitle();
    const auto before = files();
    const auto treeBefore = tree();
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo"));
    EXPECT_FALSE(isEnabled(CommandId::Undo));

    TreeCount count(*window);
    operation.act(*this);
    EXPECT_EQ(count.taken(), 1) << "the tree is read once";
    const auto after = files();
    const auto treeAfter = tree();
    const auto titleAfter = window->windowTitle();
    EXPECT_NE(after, before);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo ") + name);
    ASSERT_TRUE(isEnabled(CommandId::Undo));
    EXPECT_FALSE(isEnabled(CommandId::Redo));

    window->run(CommandId::Undo);
    EXPECT_EQ(count.taken(), 1);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(tree(), treeBefore);
    EXPECT_EQ(window->windowTitle(), title);
    EXPECT_FALSE(window->isWindowModified()) << "it is what is on the disk";
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo"));
    EXPECT_FALSE(isEnabled(CommandId::Undo));
    EXPECT_EQ(entryText(CommandId::Redo), QStringLiteral("Redo ") + name);
    ASSERT_TRUE(isEnabled(CommandId::Redo));

    window->run(CommandId::Redo);
    EXPECT_EQ(count.taken(), 1);
    EXPECT_EQ(files(), after);
    EXPECT_EQ(tree(), treeAfter);
    EXPECT_EQ(window->windowTitle(), titleAfter);
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(entryText(CommandId::Redo), QStringLiteral("Redo"));
}

INSTANTIATE_TEST_SUITE_P(Operations, EachOperation, testing::ValuesIn(undoCases()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(UndoTest, TheMarkComesBackAfterASaveAndAnUndo) {
    open(flightTest());
    editGeneral();
    window->run(CommandId::Save);
    EXPECT_FALSE(window->isWindowModified());
    window->run(CommandId::Undo);
    EXPECT_TRUE(window->isWindowModified()) << "the file on the disk has the edit";
    window->run(CommandId::Redo);
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(UndoTest, AnotherOperationAfterAnUndoLeavesNothingToDoAgain) {
    open(test::threeSources());
    enter("Renamed");
    request(TreeAction::Rename, sourceItem("First"));
    window->run(CommandId::Undo);
    answer("yes");
    request(TreeAction::Delete, sourceItem("Second"));
    EXPECT_FALSE(isEnabled(CommandId::Redo));
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo Deletion of Data Source"));
}

TEST_F(UndoTest, ASheetThatWasCancelledLeavesNothingToUndo) {
    open(flightTest());
    door.next([](QDialog& dialog) {
        type(dialog, "PN", QStringLiteral("Changed"));
        press(dialog, "cancel");
    });
    answer("yes");
    window->run(CommandId::General);
    EXPECT_FALSE(isEnabled(CommandId::Undo));
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(UndoTest, OpeningOrClosingADocumentLeavesNothingToUndo) {
    open(test::threeSources());
    enter("Renamed");
    request(TreeAction::Rename, sourceItem("First"));
    ASSERT_TRUE(isEnabled(CommandId::Undo));
    answer("no");
    window->run(CommandId::Close);
    EXPECT_FALSE(isEnabled(CommandId::Undo));
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo"));
    EXPECT_TRUE(window->openNamed(path));
    EXPECT_FALSE(isEnabled(CommandId::Undo));
}

TEST_F(UndoTest, WhileAStreamIsOpenTheDocumentIsNotUndone) {
    open(flightTest());
    editGeneral();
    const auto general = [this] {
        return test::readFile(application.context().store.pathOf(working::kGeneral));
    };
    const auto edited = general();
    door.next([&](QDialog& sheet) {
        window->run(CommandId::Undo);
        EXPECT_EQ(general(), edited);
        press(sheet, "cancel");
    });
    request(TreeAction::EditStream, {.kind = TreeKind::Stream, .name = "PCM Stream 1"});
    EXPECT_TRUE(isEnabled(CommandId::Undo));
    EXPECT_EQ(entryText(CommandId::Undo), QStringLiteral("Undo Edit of General Information"));
}

TEST_F(UndoTest, TheTreeIsReadOnceForWhateverHappensToTheDocument) {
    open(flightTest());
    TreeCount count(*window);
    editGeneral();
    EXPECT_EQ(count.taken(), 1) << "the OK of a sheet";
    window->run(CommandId::Save);
    EXPECT_EQ(count.taken(), 1) << "a save";
    window->run(CommandId::Close);
    EXPECT_EQ(count.taken(), 1) << "a close";
    EXPECT_TRUE(window->openNamed(path));
    EXPECT_EQ(count.taken(), 1) << "an opening";
    EXPECT_TRUE(window->openNamed(path));
    EXPECT_EQ(count.taken(), 2) << "a close and an opening";
    answer("cancel");
    window->run(CommandId::General);
    EXPECT_EQ(count.taken(), 0) << "a look";
    // Another program writes the file, and the user wants that.
    std::filesystem::remove(path);
    test::writeFile(path, flightTest());
    answer("choice1");
    window->checkDisk();
    EXPECT_EQ(count.taken(), 2) << "a reopening closes and opens";
    std::filesystem::remove(path);
    test::writeFile(path, flightTest());
    answer("choice0");
    window->checkDisk();
    EXPECT_EQ(count.taken(), 1) << "the document is no more what is on the disk";
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(UndoTest, TheKeysAreThoseOfEveryEditor) {
    open(flightTest());
    EXPECT_EQ(window->action(CommandId::Undo)->shortcut(), QKeySequence(QStringLiteral("Ctrl+Z")));
    EXPECT_EQ(window->action(CommandId::Redo)->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
}

}  // namespace
}  // namespace kavu
