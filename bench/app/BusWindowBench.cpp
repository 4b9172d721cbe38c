// Opens the window of a bus group a few times, and reports as one JSON line how long it took from
// the call to the first painted window, in milliseconds.
//
//     kavu_bus_window_bench [MESSAGES] [RUNS]
//
// The working store and the settings are those of the environment.
#include "BusGroupText.h"
#include "DialogBench.h"
#include "app/bus/BusForms.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/files/FileIo.h"

#include <cstdio>

namespace {

constexpr int kEdition = 2011;

void prepare(kavu::DocumentContext& document, int messages) {
    document.document.version = kEdition;
    document.document.open = true;
    (void)kavu::writeWholeFile(document.store.pathOf(kavu::groupFile('B', 1)),
                               kavu::bench::busGroup(messages));
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    kavu::bench::DialogBench bench(argc, argv, 200, 9);
    QElapsedTimer time;
    kavu::bench::TimingDoor door(time);
    kavu::bench::DialogTimes times;
    const auto open = [](kavu::FormContext& form, kavu::Application& application) {
        kavu::editBus(form, application, "Bus");
    };
    if (!bench.run(door, time, prepare, open, times)) {
        return 1;
    }
    std::printf(
        "{\"messages\": %d, \"measurements\": %d, \"median_ms\": %.1f, \"worst_ms\": %.1f}\n",
        times.size, times.size * kavu::bench::kMeasurementsOfMessage, times.median, times.worst);
    return 0;
}
