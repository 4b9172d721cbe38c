// Opens the window to work in a measurement database a few times, and reports as one JSON line how
// long it took from the call to the first painted window, and what a change of the filter, a sort
// and a page of scrolling take then, in milliseconds, and the most memory that was used.
//
//     kavu_database_window_bench [RECORDS] [RUNS]
//
// The working store and the settings are those of the environment.
#include "DatabaseRecords.h"
#include "DialogBench.h"
#include "app/mdb/DatabaseWindow.h"
#include "core/WorkingStore.h"
#include "core/talk/ProfileSettings.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <cstdio>
#include <string>
#include <sys/resource.h>

#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

namespace {

using kavu::bench::TimingDoor;

/// Works in the window once it is open.
class WorkingDoor : public TimingDoor {
  public:
    using TimingDoor::TimingDoor;
    int run(QDialog& dialog) override {
        const int result = TimingDoor::run(dialog);
        auto& view = static_cast<kavu::DatabaseWindow&>(dialog).view();
        auto& filter = *dialog.findChild<QLineEdit*>(QStringLiteral("filter"));
        filtered = took([&] {
            filter.setText(QStringLiteral("station 4"));
            dialog.grab();
        });
        filter.clear();
        sorted = took([&] {
            view.sortByColumn(0, Qt::DescendingOrder);
            dialog.grab();
        });
        constexpr int kPages = 50;
        auto& bar = *view.verticalScrollBar();
        scrolled = took([&] {
                       for (int i = 0; i < kPages; ++i) {
                           bar.setValue(bar.maximum() / kPages * i);
                           view.viewport()->grab();
                       }
                   }) /
                   kPages;
        return result;
    }
    double filtered = 0;
    double sorted = 0;
    double scrolled = 0;

  private:
    template <typename Work>
    static double took(Work work) {
        QElapsedTimer clock;
        clock.start();
        work();
        return static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }
};

void makeDatabase(kavu::DocumentContext& document, int count) {
    const auto path = document.store.pathOf("Bench.mdb");
    document.settings.overrideForThisRun(kavu::setting::kDatabasePath, path);
    document.settings.overrideForThisRun(kavu::setting::kDatabaseVersion, 2);
    kavu::MeasurementDatabase database(document.messages, path, kavu::MdbVersion::Xml, {});
    (void)database.open();
    kavu::MeasurementDatabase::Batch batch(database, nullptr);
    for (int i = 0; i < count; ++i) {
        (void)database.add(nullptr, kavu::bench::recordOf(i));
    }
    (void)batch.commit(nullptr);
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    kavu::bench::DialogBench bench(argc, argv, 50'000, 5);
    QElapsedTimer time;
    WorkingDoor door(time);
    kavu::bench::DialogTimes times;
    const auto open = [](kavu::FormContext& form, kavu::Application& application) {
        (void)kavu::editDatabase(form, application.context(), nullptr);
    };
    if (!bench.run(door, time, makeDatabase, open, times)) {
        return 1;
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf(
        "{\"records\": %d, \"open_ms\": %.1f, \"worst_open_ms\": %.1f, \"filter_ms\": %.1f, "
        "\"sort_ms\": %.1f, \"scroll_ms\": %.1f, \"peak_mb\": %.0f}\n",
        times.size, times.median, times.worst, door.filtered, door.sorted, door.scrolled,
        static_cast<double>(usage.ru_maxrss) / 1024);
    return 0;
}
