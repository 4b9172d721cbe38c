// Opens the window of a bus group a few times, and reports as one JSON line how long it took from
// the call to the first painted window, in milliseconds.
//
//     kavu_bus_window_bench [MESSAGES] [RUNS]
//
// The working store and the settings are those of the
// environment.
#include "BusGroupText.h"
#include "TimingDoor.h"
#include "app/bus/BusForms.h"
#include "app/framework/FormContext.h"
#include "app/framework/Look.h"
#include "application/Application.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"
#include "core/text/Clock.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <QApplication>

namespace {

constexpr int kEdition = 2011;

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication program(argc, argv);
    kavu::look::apply(program, kavu::look::Scheme::Light);
    const int messages = argc > 1 ? std::atoi(argv[1]) : 200;
    const int runs = std::max(1, argc > 2 ? std::atoi(argv[2]) : 9);

    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::Application application(kavu::Environment::ofProcess(), clock, random, "");
    kavu::bench::Silent ui;
    if (!application.startUp(&ui)) {
        return 1;
    }
    auto& document = application.context();
    document.document.version = kEdition;
    document.document.open = true;
    (void)kavu::writeWholeFile(document.store.pathOf(kavu::groupFile('B', 1)),
                               kavu::bench::busGroup(messages));
    QElapsedTimer time;
    kavu::bench::TimingDoor door(time);
    auto form = kavu::formContext(ui, door, document);
    for (int i = 0; i < runs; ++i) {
        time.start();
        kavu::editBus(form, application, "Bus");
    }
    application.shutDown(nullptr);
    std::sort(door.opened.begin(), door.opened.end());
    if (door.opened.empty()) {
        return 1;
    }
    std::printf(
        "{\"messages\": %d, \"measurements\": %d, \"median_ms\": %.1f, \"worst_ms\": %.1f}\n",
        messages, messages * kavu::bench::kMeasurementsOfMessage,
        door.opened[door.opened.size() / 2], door.opened.back());
    return 0;
}
