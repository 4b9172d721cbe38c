// Opens a file in the main window a few times, and reports as one JSON line how long it
// took and how well the window could paint meanwhile.
//
//     kavu_window_bench FILE [RUNS]
//
// The working store and the settings are those of the environment.
#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/shell/MainWindow.h"
#include "app/shell/TreePanel.h"
#include "application/Application.h"
#include "core/TmatsDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/text/Clock.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

namespace {

using kavu::MainWindow;

/// There is no user to answer; a dialog that opens is counted and dropped.
class CountingDoor : public kavu::DialogDoor {
  public:
    int run(QDialog&) override {
        ++dialogs;
        return QDialog::Rejected;
    }
    int dialogs = 0;
};

/// Requests a repaint all the time, and measures how long each takes to come.
class PaintWatch : public QObject {
  public:
    explicit PaintWatch(QWidget& window) : window_(window) {
        window.installEventFilter(this);
        connect(&timer_, &QTimer::timeout, this, [this] { window_.update(); });
        timer_.start(10);
        clock_.start();
    }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            const auto now = clock_.nsecsElapsed();
            gaps.push_back(static_cast<double>(now - last_) / 1e6);
            last_ = now;
        }
        return QObject::eventFilter(receiver, event);
    }
    std::vector<double> gaps;  ///< milliseconds

  private:
    QWidget& window_;
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 last_ = 0;
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

struct Figures {
    std::vector<double> open;
    std::vector<double> tree;
    std::vector<double> longestGap;
    std::vector<double> paintsPerSecond;
    std::size_t treeItems = 0;
};

bool measure(MainWindow& window, const std::string& file, Figures& figures) {
    QElapsedTimer clock;
    PaintWatch watch(window);
    clock.start();
    if (!window.openNamed(file)) {
        return false;
    }
    const auto took = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    figures.open.push_back(took);
    figures.paintsPerSecond.push_back(static_cast<double>(watch.gaps.size()) * 1000 / took);
    figures.longestGap.push_back(
        watch.gaps.empty() ? took : *std::max_element(watch.gaps.begin(), watch.gaps.end()));
    QApplication::processEvents();
    clock.start();
    // What the end of an operation costs the window.
    window.document()->history.tell({kavu::DocumentChange::Edited, {}, {}});
    figures.tree.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    figures.treeItems = window.tree().model().itemCount();
    window.run(kavu::CommandId::Close);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication toolkit(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc < 2) {
        std::fputs("usage: kavu_window_bench FILE [RUNS]\n", stderr);
        return 64;
    }
    kavu::look::apply(toolkit, kavu::look::Scheme::Light);
    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::Application application(kavu::Environment::ofProcess(), clock, random);
    CountingDoor door;
    Figures figures;
    {
        MainWindow window(application, door);
        if (!window.begin({.splash = false, .file = {}})) {
            return 2;
        }
        const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
        for (int run = 0; run < runs; ++run) {
            if (!measure(window, argv[1], figures)) {
                return 2;
            }
        }
        window.quit();
    }
    std::printf(
        "{\"open_ms\": %.1f, \"tree_ms\": %.1f, \"paints_per_second\": %.1f, "
        "\"longest_gap_ms\": %.1f, \"tree_items\": %zu, \"dialogs\": %d}\n",
        median(figures.open), median(figures.tree), median(figures.paintsPerSecond),
        median(figures.longestGap), figures.treeItems, door.dialogs);
    return 0;
}
