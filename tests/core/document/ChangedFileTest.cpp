#include "core/document/BuildDocument.h"
#include "core/document/ChangedFile.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "support/TestContext.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::readFile;
using test::writeFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class ChangedFileTest : public testing::Test {
  protected:
    ChangedFileTest() { writeFile(path_, "G\\PN:MINE;"); }
    void open() { ASSERT_TRUE(loadDocument(t.context, &t.ui, path_)); }
    /// A stamp that differs for sure, whatever the file system's clock can tell.
    void changeOnDisk() const {
        std::filesystem::remove(path_);
        writeFile(path_, "G\\PN:THEIRS;");
    }
    std::vector<std::string> namesBeside() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(t.folder.path())) {
            if (const auto name = entry.path().filename().string(); name.find("in.") == 0) {
                names.push_back(name);
            }
        }
        return names;
    }

    test::TestContext t;
    std::string path_ = t.folder / "in.tma";
};

TEST_F(ChangedFileTest, AFileIsTheSameUntilItIsReplacedOrRemoved) {
    EXPECT_EQ(diskState(t.document), DiskState::Same) << "there is no document";
    open();
    EXPECT_EQ(diskState(t.document), DiskState::Same);
    changeOnDisk();
    EXPECT_EQ(diskState(t.document), DiskState::Changed);
    std::filesystem::remove(path_);
    EXPECT_EQ(diskState(t.document), DiskState::Missing);
    EXPECT_TRUE(saveDocument(t.context, &t.ui)) << "nothing is overwritten";
    EXPECT_TRUE(t.ui.choicePrompts.empty());
    EXPECT_EQ(diskState(t.document), DiskState::Same);
}

TEST_F(ChangedFileTest, EveryNameOfTheDocumentsFileIsAskedAbout) {
    std::filesystem::create_symlink(path_, t.folder / "link.tma");
    std::filesystem::create_directory(t.folder / "sub");
    writeFile(t.folder / "other.tma", "other");
    open();
    changeOnDisk();
    std::filesystem::create_hard_link(path_, t.folder / "hard.tma");
    for (const char* const name : {"in.tma", "link.tma", "hard.tma", "sub/../in.tma"}) {
        EXPECT_TRUE(isChangedByAnother(t.document, t.folder / name)) << name;
    }
    for (const char* const name : {"other.tma", "new.tma"}) {
        EXPECT_FALSE(isChangedByAnother(t.document, t.folder / name)) << name;
    }
}

TEST_F(ChangedFileTest, WithoutAParentAChangedFileIsNotOverwritten) {
    open();
    changeOnDisk();
    EXPECT_FALSE(saveDocument(t.context, nullptr));
    EXPECT_EQ(readFile(path_), "G\\PN:THEIRS;");
}

TEST_F(ChangedFileTest, AFileThatChangesWhileItIsBuiltIsLeftAsTheOtherProgramHasWrittenIt) {
    open();
    t.document.changed = true;
    t.context.steps.saveConversions = [&](UserInterface*, FileWriter&) {
        changeOnDisk();
        return true;
    };
    EXPECT_FALSE(saveDocument(t.context, &t.ui));
    EXPECT_TRUE(t.ui.hasText("while it was being saved"));
    EXPECT_EQ(readFile(path_), "G\\PN:THEIRS;");
    EXPECT_TRUE(t.document.changed);
    EXPECT_THAT(namesBeside(), ElementsAre("in.tma")) << "there is no backup";
    EXPECT_EQ(diskState(t.document), DiskState::Changed);
}

/// Looks at the lock of the file while it is asked.
struct LookingInterface : test::RecordingInterface {
    explicit LookingInterface(std::string path) : lock(std::move(path)) {}
    int choose(const ChoicePrompt& prompt) override {
        isLocked = fileExists(lock);
        return RecordingInterface::choose(prompt);
    }
    std::string lock;
    bool isLocked = false;
};

TEST_F(ChangedFileTest, OtherRunsAreKeptAwayWhileTheQuestionIsOpen) {
    LookingInterface ui(t.folder / ".in.tma.kavu-lock");
    open();
    changeOnDisk();
    const auto general = t.read(working::kGeneral);
    EXPECT_FALSE(saveDocument(t.context, &ui));
    EXPECT_TRUE(ui.isLocked);
    EXPECT_FALSE(fileExists(ui.lock));
    EXPECT_EQ(t.read(working::kGeneral), general) << "no banner before the answer";
    ASSERT_EQ(ui.choicePrompts.size(), 1u);
    EXPECT_THAT(ui.choicePrompts[0].choices,
                ElementsAre("&Overwrite the file", "&Save the document under another name"))
        << "no step reopens it";
}

TEST_F(ChangedFileTest, TheQuestionSaysWhereTheOthersContentsWouldBe) {
    open();
    changeOnDisk();
    (void)askAboutChangedFile(t.context, &t.ui, path_);
    t.settings.writeInteger("CreateBackup", 0);
    (void)askAboutChangedFile(t.context, &t.ui, path_);
    ASSERT_EQ(t.ui.choicePrompts.size(), 2u);
    EXPECT_THAT(t.ui.choicePrompts[0].text,
                HasSubstr("only in the backup '" + t.folder / "in.bak"));
    EXPECT_THAT(t.ui.choicePrompts[1].text, HasSubstr("is then lost"));
    t.ui.choices = {0};
    EXPECT_TRUE(saveDocument(t.context, &t.ui));
    EXPECT_THAT(readFile(path_), HasSubstr("PN:MINE"));
}

TEST_F(ChangedFileTest, AFailedSaveInPlaceUnderAnotherNameOfTheFileIsOurOwn) {
    open();
    std::filesystem::create_hard_link(path_, t.folder / "hard.tma");
    t.settings.writeInteger("CreateBackup", 0);
    t.context.steps.saveConversions = [](UserInterface*, FileWriter&) { return false; };
    t.ui.otherwise = Button::No;  // its former contents are not put back
    EXPECT_FALSE(saveDocumentTo(t.context, &t.ui, t.folder / "hard.tma"));
    EXPECT_TRUE(t.document.changed);
    EXPECT_EQ(diskState(t.document), DiskState::Same);
}

}  // namespace
}  // namespace kavu
