// Paints the grid of a large stream, 2000 words by 256 frames, on a viewport of 1920 x 1080, and
// reports as one JSON line how long that takes at three cell sizes, and for a change of the
// selection.
//
//     kavu_frame_bench [RUNS]
#include "app/framework/Look.h"
#include "app/pcm/FrameGrid.h"
#include "application/Application.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/SubframeEdit.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QImage>

namespace {

using namespace kavu;

constexpr int kWords = 2000;
constexpr int kFrames = 256;

void place(PcmFormat& format, int fwp, int fn, const std::string& name) {
    Measurement measurement;
    measurement.name = name;
    measurement.locationType = format.wordType(fwp) == WordType::Subframe ? "SF" : "MF";
    measurement.mask = "FW";
    if (const auto cell = format.getFreeCell(nullptr, fwp, fn)) {
        format.cells().store(cell, measurement);
    }
}

/// Every fourth word is one of a subframe, every tenth is free, every fiftieth holds two.
void fill(PcmFormat& format) {
    format.commonWordLength = 16;
    format.raiseNumberOfFrames({}, kFrames);
    format.allocateWords({}, kWords);
    format.setWord(0, WordType::Sync, -1, -1);
    createIdCounter(format, nullptr, kWords - 1);
    for (int fwp = 1; fwp < kWords - 1; ++fwp) {
        const int depth = fwp % 8 == 0 ? kFrames : 32;
        if (fwp % 4 == 0) {
            createSubframe(format, nullptr,
                           {.fwp = fwp, .name = formatPrintf("SF%d", fwp), .depth = depth});
        }
        const int cells = format.wordType(fwp) == WordType::Subframe ? depth : 1;
        for (int fn = 1; fn <= cells && fwp % 10 != 1; ++fn) {
            place(format, fwp, fn,
                  fwp % 3 == 0 ? formatPrintf("P%d", fwp % 100)
                               : formatPrintf("ENGINE_TEMP_%d_%d", fwp, fn));
            if (fwp % 50 == 0) {
                place(format, fwp, fn, formatPrintf("SECOND_%d_%d", fwp, fn));
            }
        }
    }
}

/// Counts what is really painted.
class PaintCount : public QObject {
  public:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(receiver, event);
    }
    int paints = 0;
};

double medianOf(int runs, const std::function<void(int run)>& work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer clock;
        clock.start();
        work(run);
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    QApplication toolkit(argc, argv);
    kavu::look::apply(toolkit, kavu::look::Scheme::Light);
    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::Application application(kavu::Environment::ofProcess(), clock, random);
    if (!application.startUp(nullptr)) {
        return 2;
    }
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 21;
    auto& format = application.pcmFormat();
    fill(format);
    kavu::FrameDisplay display(format);
    display.showAllCells = true;  // no free ground: the most that can be painted
    kavu::FrameView view(display);
    kavu::FrameGrid grid(display, view, nullptr);
    grid.resize(1920, 1080);
    QImage image(grid.size(), QImage::Format_ARGB32_Premultiplied);
    std::string line = "{";
    for (const int width : {5, 30, 150}) {
        view.setCellWidth(width);
        view.firstWord = 0;
        grid.render(&image);
        const double time = medianOf(runs, [&](int run) {
            view.firstWord = run % 20;
            grid.render(&image);
        });
        line += kavu::formatPrintf("\"paint_%d_ms\": %.2f, ", width, time);
    }
    view.setCellWidth(30);
    view.firstWord = 0;
    grid.show();
    QApplication::processEvents();
    grid.select({1, 1});
    QApplication::processEvents();
    PaintCount count;
    grid.installEventFilter(&count);
    const double time = medianOf(runs, [&](int run) {
        grid.select({run % 2 + 1, 1});
        // Immediately, and not at the next refresh of the display.
        grid.repaint(grid.cellRect({1, 1}));
        grid.repaint(grid.cellRect({2, 1}));
    });
    line += kavu::formatPrintf("\"select_ms\": %.3f, \"select_paints\": %d, \"measurements\": %d}",
                               time, count.paints, format.cells().nameCount());
    std::puts(line.c_str());
    format.clear();
    application.shutDown(nullptr);
    return 0;
}
