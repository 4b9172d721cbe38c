#include "app/framework/ProgressWindow.h"
#include "app/framework/QtInterface.h"
#include "app/support/TestDoor.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>

namespace kavu {
namespace {

using test::find;
using test::press;

/// Counts what reaches it, as the main window's commands would be reached.
class Listener : public QWidget {
  public:
    int presses = 0;
    int keys = 0;
    int closes = 0;
    int paints = 0;

  protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
    void keyPressEvent(QKeyEvent*) override { ++keys; }
    void closeEvent(QCloseEvent* event) override {
        ++closes;
        event->ignore();
    }
    void paintEvent(QPaintEvent*) override { ++paints; }
};

class ProgressWindowTest : public testing::Test {
  protected:
    ProgressWindowTest() {
        ui.hooks.beep = [this] { ++beeps; };
        window.show();
        window.activateWindow();
        QApplication::processEvents();
    }
    ~ProgressWindowTest() override { ui.closeProgress(); }

    /// Yields for a while as a long loop does.
    void work(int milliseconds) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds) {
            ui.yieldToInterface();
        }
    }
    ProgressWindow& shown() {
        work(ProgressWindow::kShowAfterMilliseconds + 2 * ProgressWindow::kPumpMilliseconds);
        EXPECT_TRUE(ui.progressWindow()->isVisible());
        return *ui.progressWindow();
    }
    /// What arrives from outside while the loop runs: it waits in the queue.
    static void postKey(QObject& receiver, Qt::Key key) {
        QCoreApplication::postEvent(&receiver, new QKeyEvent(QEvent::KeyPress, key, {}));
    }
    static void postPress(QWidget& receiver) {
        const QPointF at(3, 3);
        QCoreApplication::postEvent(
            &receiver, new QMouseEvent(QEvent::MouseButtonPress, at, receiver.mapToGlobal(at),
                                       Qt::LeftButton, Qt::LeftButton, {}));
    }
    /// The question is answered by the button of a name.
    void answer(const char* button) {
        door.next([this, button](QDialog& box) {
            questions.push_back(toBytes(static_cast<QMessageBox&>(box).text()));
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Cancel Operation"));
            press(box, button);
        });
    }

    test::TestDoor door;
    Listener window;
    QtInterface ui{&window, door};
    int beeps = 0;
    std::vector<std::string> questions;
};

TEST_F(ProgressWindowTest, ASecondOneIsNotOpenedAndTheInnerOneIsNotClosed) {
    const ProgressScope outer(&ui, ProgressMode::WithCancel);
    auto* first = ui.progressWindow();
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(ui.openProgress(ProgressMode::WithoutCancel, false));
    {
        const ProgressScope inner(&ui, ProgressMode::WithoutCancel);
        EXPECT_EQ(ui.progressWindow(), first);
    }
    EXPECT_EQ(ui.progressWindow(), first);
    EXPECT_TRUE(first->withCancel());
}

TEST_F(ProgressWindowTest, AShortOperationShowsNoWindow) {
    ui.openProgress(ProgressMode::WithCancel, true);
    work(ProgressWindow::kShowAfterMilliseconds / 2);
    EXPECT_FALSE(ui.progressWindow()->isVisible());
    ui.closeProgress();
    EXPECT_EQ(ui.progressWindow(), nullptr);
}

TEST_F(ProgressWindowTest, ALongOperationShowsItsTextAndBar) {
    ui.openProgress(ProgressMode::WithCancel, true);
    ui.setProgressText("Reading line 7");
    ui.setProgressBar(42);
    auto& progress = shown();
    EXPECT_EQ(progress.windowTitle(), QStringLiteral("Operation In Progress"));
    EXPECT_EQ(find<QLabel>(progress, "heading")->text(),
              QStringLiteral("Press <ESC> Or Cancel To Abort"));
    EXPECT_EQ(find<QLabel>(progress, "text")->text(), QStringLiteral("Reading line 7"));
    EXPECT_EQ(find<QProgressBar>(progress, "bar")->value(), 42);
    ui.setProgressBar(-1);
    work(2 * ProgressWindow::kPumpMilliseconds);
    EXPECT_EQ(find<QProgressBar>(progress, "bar")->maximum(), 0);
}

TEST_F(ProgressWindowTest, WithoutCancelThereIsNoButtonAndEscDoesNothing) {
    ui.openProgress(ProgressMode::WithoutCancel, false);
    auto& progress = shown();
    EXPECT_EQ(find<QLabel>(progress, "heading")->text(), QStringLiteral("Please Stand By"));
    EXPECT_FALSE(find<QPushButton>(progress, "cancel")->isVisible());
    EXPECT_FALSE(find<QProgressBar>(progress, "bar")->isVisible());
    postKey(progress, Qt::Key_Escape);
    work(2 * ProgressWindow::kPumpMilliseconds);
    EXPECT_FALSE(ui.cancelRequested());
    EXPECT_TRUE(progress.isVisible());
}

TEST_F(ProgressWindowTest, EscDuringALoadAsksFirstAndNoGoesOn) {
    ui.openProgress(ProgressMode::WithCancel, true);
    auto& progress = shown();
    EXPECT_FALSE(ui.cancelRequested());
    postKey(progress, Qt::Key_Escape);
    work(2 * ProgressWindow::kPumpMilliseconds);
    answer("no");
    EXPECT_FALSE(ui.cancelRequested());
    EXPECT_EQ(questions, std::vector<std::string>{"Do you really want to cancel?"});
    EXPECT_EQ(beeps, 1);
    // The flag is gone: nothing is asked again.
    EXPECT_FALSE(ui.cancelRequested());
    EXPECT_TRUE(progress.isVisible());
}

TEST_F(ProgressWindowTest, EscBeforeTheWindowIsUpCounts) {
    ui.openProgress(ProgressMode::WithCancel, true);
    postKey(window, Qt::Key_Escape);
    work(2 * ProgressWindow::kPumpMilliseconds);
    EXPECT_FALSE(ui.progressWindow()->isVisible());
    answer("yes");
    EXPECT_TRUE(ui.cancelRequested());
    EXPECT_EQ(window.keys, 0);
}

TEST_F(ProgressWindowTest, TheButtonAndEnterOnItAskToo) {
    ui.openProgress(ProgressMode::WithCancel, true);
    auto& progress = shown();
    QTest::mouseClick(find<QPushButton>(progress, "cancel"), Qt::LeftButton);
    answer("no");
    EXPECT_FALSE(ui.cancelRequested());
    progress.activateWindow();
    work(2 * ProgressWindow::kPumpMilliseconds);
    postKey(*find<QPushButton>(progress, "cancel"), Qt::Key_Return);
    work(2 * ProgressWindow::kPumpMilliseconds);
    answer("yes");
    EXPECT_TRUE(ui.cancelRequested());
}

TEST_F(ProgressWindowTest, ACancelCountsOnlyWhileTheFocusIsOnTheProgressWindow) {
    ui.openProgress(ProgressMode::WithCancel, true);
    auto& progress = shown();
    QWidget other;
    progress.reject();
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    ASSERT_EQ(QGuiApplication::focusWindow(), other.windowHandle());
    EXPECT_FALSE(ui.cancelRequested());
    other.hide();
    progress.activateWindow();
    work(2 * ProgressWindow::kPumpMilliseconds);
    answer("yes");
    EXPECT_TRUE(ui.cancelRequested());
}

TEST_F(ProgressWindowTest, NoCommandComesInWhileAnOperationRuns) {
    int commands = 0;
    QShortcut shortcut(QKeySequence(Qt::CTRL | Qt::Key_O), &window);
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++commands; });
    ui.openProgress(ProgressMode::WithCancel, true);
    for (int round = 0; round < 2; ++round) {  // before the window is up, and after
        postPress(window);
        postKey(window, Qt::Key_A);
        QCoreApplication::postEvent(
            &window, new QKeyEvent(QEvent::KeyPress, Qt::Key_O, Qt::ControlModifier));
        QCoreApplication::postEvent(&window, new QCloseEvent);
        work(2 * ProgressWindow::kPumpMilliseconds);
        (void)shown();
    }
    ui.closeProgress();
    // What was dropped does not come back when the operation is over.
    QApplication::processEvents();
    EXPECT_EQ(window.presses, 0);
    EXPECT_EQ(window.keys, 0);
    EXPECT_EQ(window.closes, 0);
    EXPECT_EQ(commands, 0);
    postPress(window);
    QApplication::processEvents();
    EXPECT_EQ(window.presses, 1);
}

TEST_F(ProgressWindowTest, AMinimisedMainWindowTakesInputSoThatItCanComeBack) {
    ui.openProgress(ProgressMode::WithCancel, true);
    window.setWindowState(Qt::WindowMinimized);
    postPress(window);
    QCoreApplication::postEvent(&window, new QCloseEvent);
    work(2 * ProgressWindow::kPumpMilliseconds);
    EXPECT_EQ(window.presses, 1);
    EXPECT_EQ(window.closes, 0);
}

TEST_F(ProgressWindowTest, TheCloseBoxOfTheProgressWindowIsDropped) {
    ui.openProgress(ProgressMode::WithCancel, true);
    auto& progress = shown();
    progress.close();
    EXPECT_TRUE(progress.isVisible());
    QCoreApplication::postEvent(&progress, new QCloseEvent);
    work(2 * ProgressWindow::kPumpMilliseconds);
    EXPECT_TRUE(progress.isVisible());
    EXPECT_FALSE(ui.cancelRequested());
}

TEST_F(ProgressWindowTest, TheMainWindowPaintsTenTimesASecondDuringALoad) {
    ui.openProgress(ProgressMode::WithCancel, true);
    (void)shown();
    window.paints = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 1000) {
        window.update();
        ui.setProgressText(std::to_string(timer.elapsed()));
        ui.yieldToInterface();
    }
    EXPECT_GE(window.paints, 10);
}

TEST_F(ProgressWindowTest, AMillionYieldsCostNextToNothing) {
    ui.openProgress(ProgressMode::WithCancel, true);
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 1000000; ++i) {
        ui.yieldToInterface();
    }
    // A look at the clock each; a pump each would take a minute.
    EXPECT_LT(timer.elapsed(), 2000);
}

TEST_F(ProgressWindowTest, ABoxDuringAnOperationIsAnsweredAndTheOperationGoesOn) {
    ui.openProgress(ProgressMode::WithCancel, true);
    auto& progress = shown();
    door.next([&](QDialog& box) {
        EXPECT_EQ(box.parentWidget(), &progress);
        press(box, "yes");
    });
    EXPECT_EQ(showBox(&ui, "Go on?", "Question", Icon::Question, Buttons::YesNo), Button::Yes);
    EXPECT_TRUE(progress.isVisible());
}

TEST_F(ProgressWindowTest, WithoutAnOperationThereIsNothingToYieldToOrToCancel) {
    postPress(window);
    ui.yieldToInterface();
    EXPECT_EQ(window.presses, 0);
    EXPECT_FALSE(ui.cancelRequested());
    ui.setProgressText("nobody sees it");
    ui.closeProgress();
}

}  // namespace
}  // namespace kavu
