#include "app/framework/MessagesWindow.h"
#include "app/framework/QtText.h"
#include "app/support/TestDoor.h"
#include "support/TestContext.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLabel>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>

namespace kavu {
namespace {

using test::find;
using test::press;

class MessagesWindowTest : public testing::Test {
  protected:
    std::unique_ptr<MessagesWindow> make(std::vector<std::string> lines = {"first", "K\xF6ln",
                                                                           "P-1\\D2 third"}) {
        return std::make_unique<MessagesWindow>(
            ui, door, MessageLines{"KAVU-9 Error Messages", "TMATS File: a.tma", lines},
            [this](const Finding& finding) {
                gone.push_back(finding.text);
                return finding.text == "P-1\\D2 third";
            },
            nullptr);
    }

    test::RecordingInterface ui;
    test::TestDoor door;
    std::vector<std::string> gone;
};

TEST_F(MessagesWindowTest, ShowsTitleSubtitleAndLines) {
    const auto window = make();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("KAVU-9 Error Messages"));
    EXPECT_EQ(find<QLabel>(*window, "subtitle")->text(), QStringLiteral("TMATS File: a.tma"));
    const auto* model = find<QTreeView>(*window, "lines")->model();
    ASSERT_EQ(model->rowCount(), 3);
    EXPECT_EQ(model->index(1, FindingModel::kText).data().toString(), QStringLiteral("Köln"));
    EXPECT_EQ(find<QPushButton>(*window, "print")->text(), QStringLiteral("&Print"));
    EXPECT_EQ(find<QPushButton>(*window, "saveAs")->text(), QStringLiteral("&Save As"));
    EXPECT_EQ(find<QPushButton>(*window, "close")->text(), QStringLiteral("&Close Window"));
}

TEST_F(MessagesWindowTest, WithoutATitleItIsCalledMessages) {
    const MessagesWindow window(ui, door, {"", "", {"x"}}, {}, nullptr);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Messages"));
    EXPECT_FALSE(find<QPushButton>(window, "goTo")->isVisibleTo(&window));
}

TEST_F(MessagesWindowTest, ALineWiderThanTheWindowIsReadByScrolling) {
    const auto narrow = make();
    narrow->show();
    EXPECT_EQ(find<QTreeView>(*narrow, "lines")->horizontalScrollBar()->maximum(), 0);
    const auto wide = make({"first", "D-1\\COM:" + std::string(600, 'W') + ";", "third"});
    wide->show();
    auto* const list = find<QTreeView>(*wide, "lines");
    EXPECT_GE(list->horizontalScrollBar()->maximum() + list->viewport()->width(),
              list->fontMetrics().horizontalAdvance(QString(600, u'W')));
}

TEST_F(MessagesWindowTest, CloseWindowAndEscapeEndIt) {
    for (const bool byKey : {false, true}) {
        const auto window = make();
        window->show();
        if (byKey) {
            QTest::keyClick(window.get(), Qt::Key_Escape);
        } else {
            press(*window, "close");
        }
        EXPECT_FALSE(window->isVisible());
    }
}

TEST_F(MessagesWindowTest, SavesTheBytesOfItsLines) {
    test::TempFolder folder;
    const auto window = make();
    ui.files.push_back(FileChoice{folder / "out.txt", 1});
    press(*window, "saveAs");
    EXPECT_EQ(test::readFile(folder / "out.txt"), "first\nK\xF6ln\nP-1\\D2 third\n");
    ASSERT_EQ(ui.filePrompts.size(), 1u);
    EXPECT_EQ(ui.filePrompts[0].title, "Save Messages");
    EXPECT_EQ(ui.filePrompts[0].filters[0].first, "Text Files");
    EXPECT_TRUE(ui.filePrompts[0].forSaving);
}

TEST_F(MessagesWindowTest, AsksBeforeItOverwritesAFile) {
    test::TempFolder folder;
    test::writeFile(folder / "out.txt", "old");
    const auto window = make();
    ui.files.push_back(FileChoice{folder / "out.txt", 1});
    ui.queued = {Button::No};
    press(*window, "saveAs");
    EXPECT_TRUE(ui.hasText("already exists"));
    EXPECT_EQ(test::readFile(folder / "out.txt"), "old");
}

TEST_F(MessagesWindowTest, AFileThatCanNotBeWrittenIsReported) {
    const auto window = make();
    ui.files.push_back(FileChoice{"/no such folder/out.txt", 1});
    press(*window, "saveAs");
    EXPECT_TRUE(ui.hasText("Unable to open '/no such folder/out.txt'"));
}

TEST_F(MessagesWindowTest, CopiesTheSelectedLinesOrAll) {
    const auto window = make();
    press(*window, "copy");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("first\nKöln\nP-1\\D2 third\n"));
    auto* list = find<QTreeView>(*window, "lines");
    list->setCurrentIndex(list->model()->index(1, FindingModel::kText));
    press(*window, "copy");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Köln\n"));
}

TEST_F(MessagesWindowTest, ADoubleClickGoesToTheCommandOfTheLineOrBeeps) {
    const auto window = make();
    window->show();
    auto* list = find<QTreeView>(*window, "lines");
    const auto doubleClick = [&](int row) {
        const auto place =
            list->visualRect(list->model()->index(row, FindingModel::kText)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    };
    doubleClick(2);
    EXPECT_EQ(ui.beeps, 0);
    doubleClick(0);
    EXPECT_EQ(ui.beeps, 1);
    EXPECT_EQ(gone, (std::vector<std::string>{"P-1\\D2 third", "first"}));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MessagesWindowTest, TheKeyboardGoesToTheCommandToo) {
    const auto window = make();
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    auto* list = find<QTreeView>(*window, "lines");
    list->setCurrentIndex(list->model()->index(2, FindingModel::kText));
    QTest::keyClick(list, Qt::Key_G, Qt::AltModifier);
    // A button that is pressed by its letter shows so for a moment before it acts.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !gone.empty(); }, 2000));
    EXPECT_EQ(gone, std::vector<std::string>{"P-1\\D2 third"});
}

TEST_F(MessagesWindowTest, AFindingHasItsNumberPlaceAndSourceAndIsReadInFull) {
    Finding finding = findingOfText("Measurement 'A' of <D-1\\LT-1-1>\nis left out.", "File");
    finding.id = 264;
    finding.commands = "D-1\\LT-1-1:X;";
    FindingModel model;
    model.setFindings({finding, findingOfText("a remark", "Remark")});
    MessagesWindow window(
        ui, door, {"", "", {}}, model, [](const Finding&) { return true; }, nullptr);
    window.show();
    auto* const list = find<QTreeView>(window, "lines");
    const auto cell = [&](int column) { return toBytes(model.index(0, column).data().toString()); };
    EXPECT_EQ(cell(FindingModel::kNumber), "264");
    EXPECT_EQ(cell(FindingModel::kPlace), "D-1\\LT-1-1");
    EXPECT_EQ(cell(FindingModel::kSource), "File");
    EXPECT_FALSE(list->isHeaderHidden());
    list->setCurrentIndex(model.index(0, FindingModel::kText));
    EXPECT_EQ(find<QPlainTextEdit>(window, "whole")->toPlainText(),
              QStringLiteral("KAVU Error #264\nMeasurement 'A' of <D-1\\LT-1-1>\nis left out.\n\n"
                             "Last TMATS commands read: D-1\\LT-1-1:X;"));
    EXPECT_TRUE(find<QPushButton>(window, "goTo")->isEnabled());
    list->setCurrentIndex(model.index(1, FindingModel::kText));
    EXPECT_FALSE(find<QPushButton>(window, "goTo")->isEnabled()) << "a remark without a place";
}

TEST_F(MessagesWindowTest, FollowsItsFindingsAndSaysWhenThereAreNone) {
    FindingModel model;
    MessagesWindow window(ui, door, {"", "", {}}, model, {}, nullptr);
    window.show();
    EXPECT_EQ(find<QPlainTextEdit>(window, "whole")->toPlainText(),
              QStringLiteral("There are no messages."));
    EXPECT_FALSE(find<QPushButton>(window, "saveAs")->isEnabled());
    model.append({findingOfText("one", "File")});
    EXPECT_TRUE(find<QPushButton>(window, "saveAs")->isEnabled());
    model.removeSource("File");
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(find<QPushButton>(window, "saveAs")->isEnabled());
}

int pageCount(const std::string& pdf) {
    int count = 0;
    for (auto at = pdf.find("/Type /Page\n"); at != std::string::npos;
         at = pdf.find("/Type /Page\n", at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(MessagesWindowTest, PrintsAllLinesOverAsManyPagesAsItTakes) {
    test::TempFolder folder;
    for (const auto& [lines, least, most] : {std::tuple(3, 1, 1), std::tuple(200, 3, 6)}) {
        const auto path = folder / "out.pdf";
        QPdfWriter pdf(toQString(path));
        EXPECT_TRUE(printMessageLines(
            pdf, {"Title", "Subtitle", std::vector<std::string>(std::size_t(lines), "a line")}));
        const int pages = pageCount(test::readFile(path));
        EXPECT_GE(pages, least);
        EXPECT_LE(pages, most);
    }
}

TEST_F(MessagesWindowTest, APrinterThatFailsStopsThePrint) {
    QPdfWriter pdf(QStringLiteral("/no such folder/out.pdf"));
    EXPECT_FALSE(printMessageLines(pdf, {"Title", "Subtitle", {"line"}}));
}

TEST_F(MessagesWindowTest, PrintAsksForThePrinterAndMayBeCancelled) {
    const auto window = make();
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("Print"));
        dialog.reject();
    });
    press(*window, "print");
    EXPECT_TRUE(ui.boxes.empty());
}

TEST_F(MessagesWindowTest, ShowsAHundredThousandLinesAtOnce) {
    QElapsedTimer timer;
    timer.start();
    const auto window = make(std::vector<std::string>(100000, "Error Reading TMATS File"));
    window->show();
    QApplication::processEvents();
    EXPECT_LT(timer.elapsed(), 2000);
}

}  // namespace
}  // namespace kavu
