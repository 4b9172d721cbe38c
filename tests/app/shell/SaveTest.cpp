// What a save in the window asks, and what the window says after one that has failed.
#include "app/support/MainWindowStage.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/document/Transaction.h"

#include <csignal>
#include <functional>
#include <sys/resource.h>

#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using testing::HasSubstr;
using testing::Not;

/// No file can become longer than this, as on a disk that is full.
class SizeLimit {
  public:
    explicit SizeLimit(rlim_t most) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit now{most, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &now);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    ~SizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        (void)std::signal(SIGXFSZ, handler_);
    }

  private:
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before_{};
};

class SaveTest : public MainWindowTest {
  protected:
    void edit(const std::string& hardware = "H\\X:mine;\r\n") {
        auto& context = application.context();
        ASSERT_TRUE(inTransaction(context, nullptr, "Edit", [&] {
            return context.files.put(groupFile('H'), hardware).ok();
        }));
        ASSERT_TRUE(window->isWindowModified());
    }
    void changeOnDisk(const std::string& text) const {
        std::filesystem::remove(path);
        test::writeFile(path, text);
    }
    void drop(const std::string& file) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(toQString(file))});
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        window->dropEvent(&event);
    }
    /// Lets a save in place fail in the middle of the file, which is then put back or not.
    void failInPlace(const char* putBack) {
        const auto before = test::readFile(path);
        const SizeLimit full(before.size() + 1000);
        answer("ok");  // that it cannot be written
        answer(putBack);
        window->run(CommandId::Save);
        const auto after = test::readFile(path);
        EXPECT_EQ(after == before, putBack == std::string("yes"));
    }

    const std::string theirs_ = "G\\PN:THEIRS;\r\nG\\106:09;\r\n";
};

TEST_F(SaveTest, EveryWayToASaveAsksBeforeItOverwritesWhatAnotherProgramHasWritten) {
    const auto other = folder / "other.tma";
    test::writeFile(other, "G\\PN:OTHER;\r\nG\\106:09;\r\n");
    begin(path);
    const std::vector<std::pair<const char*, std::function<void()>>> closing = {
        {"close", [&] { window->run(CommandId::Close); }},
        {"exit", [&] { window->run(CommandId::Exit); }},
        {"open", [&] { window->openNamed(other); }},
        {"new", [&] { window->run(CommandId::CreateNew); }},
        {"drop", [&] { drop(other); }},
    };
    const auto cancelled = [&](const std::function<void()>& way) {
        std::filesystem::copy_file(std::string(KAVU_SOURCE_DIR) + "/samples/flight-test.tma", path,
                                   std::filesystem::copy_options::overwrite_existing);
        document().changed = false;
        window->openNamed(path);
        edit();
        changeOnDisk(theirs_);
        if (way) {
            answer("yes");
        }
        door.next([&](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("Question"));
            EXPECT_THAT(toBytes(test::find<QLabel>(dialog, "text")->text()), HasSubstr(path));
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        if (way) {
            way();
        } else {
            window->run(CommandId::Save);
        }
        EXPECT_EQ(test::readFile(path), theirs_);
        EXPECT_TRUE(document().open);
        EXPECT_EQ(document().path, path);
        EXPECT_TRUE(window->isWindowModified());
        EXPECT_TRUE(window->isVisible());
    };
    {
        SCOPED_TRACE("save");
        cancelled(nullptr);
    }
    for (const auto& [name, way] : closing) {
        SCOPED_TRACE(name);
        cancelled(way);
    }
    answer("yes");
    answer("choice0");
    window->run(CommandId::Close);
    EXPECT_THAT(test::readFile(path), HasSubstr("H\\X:mine;"));
    EXPECT_EQ(test::readFile(folder / "flight.bak"), theirs_);
}

TEST_F(SaveTest, ADocumentThatIsLeftCanBeSavedUnderAnotherName) {
    const auto other = folder / "other.tma";
    test::writeFile(other, "G\\PN:OTHER;\r\nG\\106:09;\r\n");
    begin(path);
    edit();
    changeOnDisk(theirs_);
    answer("yes");
    answer("choice1");
    door.next([](QDialog& dialog) { typeFileName(dialog, "mine"); });
    window->openNamed(other);
    EXPECT_THAT(test::readFile(folder / "mine.tma"), HasSubstr("H\\X:mine;"));
    EXPECT_EQ(test::readFile(path), theirs_);
    EXPECT_EQ(document().path, other);
}

TEST_F(SaveTest, TheFileCanBeReopenedInPlaceOfASave) {
    begin(path);
    edit();
    changeOnDisk(theirs_);
    answer("choice2");
    window->run(CommandId::Save);
    EXPECT_EQ(test::readFile(path), theirs_);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_THAT(test::readFile(application.context().store.pathOf(working::kGeneral)),
                HasSubstr("PN:THEIRS"));
}

TEST_F(SaveTest, AFailedSaveKeepsTheMarkOfTheTitleAndIsNoOtherProgram) {
    begin(path);
    edit("H\\X:" + std::string(300000, 'x') + ";\r\n");
    const auto before = test::readFile(path);
    {
        const SizeLimit full(before.size() + 1000);
        answer("ok");
        window->run(CommandId::Save);
        EXPECT_EQ(test::readFile(path), before) << "a save is complete or it did not happen";
    }
    EXPECT_TRUE(window->isWindowModified());
    settings().set(setting::kSaveInPlace, true);
    for (const char* const putBack : {"yes", "no"}) {
        failInPlace(putBack);
        EXPECT_TRUE(window->isWindowModified()) << putBack;
        EXPECT_TRUE(enabled(CommandId::Save));
        window->checkDisk();  // an unexpected question fails the test
    }
    answer("ok");  // that the file was left cut short
    window->run(CommandId::Save);
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_THAT(test::readFile(path), HasSubstr("xxxx;"));
    EXPECT_EQ(test::readFile(folder / "flight.bak~"), before) << "the last whole contents";
}

TEST_F(SaveTest, AFailedSaveOfAnUnchangedDocumentMarksIt) {
    std::string text = "G\\PN:A;G\\106:09;";
    for (int i = 0; i < 2000; ++i) {
        text += "H\\X:1;";  // a save gives each a line of its own
    }
    test::writeFile(path, text);
    begin(path);
    ASSERT_FALSE(window->isWindowModified());
    settings().set(setting::kSaveInPlace, true);
    failInPlace("no");
    EXPECT_TRUE(window->isWindowModified()) << "the file is no longer what is open here";
    document().changed = false;
}

TEST_F(SaveTest, AnEmptyOrPartialFileIsOpenedAndReopenedWithAWordAboutIt) {
    test::writeFile(path, "");
    begin(path);
    EXPECT_TRUE(window->noteBar().isVisible());
    EXPECT_THAT(toBytes(window->noteBar().text()), HasSubstr("'" + path + "' is empty."));
    test::press(window->noteBar(), "dismiss");
    edit();
    for (const char* const text : {"", "G\\PN:THEIRS;\r\nG\\10"}) {
        changeOnDisk(text);
        answer("choice1");
        answer("no");
        window->checkDisk();
        EXPECT_TRUE(window->isWindowModified());
        EXPECT_TRUE(fileExists(application.context().store.pathOf(groupFile('H'))))
            << "the document is the one that was open";
    }
    document().changed = false;
}

}  // namespace
}  // namespace kavu
