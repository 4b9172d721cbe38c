// The set-up of a benchmark that opens one window several times: the program without anybody who
// answers, and how often of what size.
#pragma once

#include "TimingDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/Look.h"
#include "application/Application.h"
#include "core/text/Clock.h"

#include <algorithm>
#include <cstdlib>

namespace kavu::bench {

/// Of a run: what the window holds, and how long it took from the call to the first painted
/// window, in milliseconds.
struct DialogTimes {
    int size = 0;
    double median = 0;
    double worst = 0;
};

/// The working store and the settings are those of the environment.
class DialogBench {
  public:
    /// The arguments are the size, and the number of runs.
    DialogBench(int& argc, char** argv, int size, int runs)
        : toolkit_(argc, argv),
          size_(argc > 1 ? std::atoi(argv[1]) : size),
          runs_(std::max(1, argc > 2 ? std::atoi(argv[2]) : runs)) {
        look::apply(toolkit_, look::Scheme::Light);
    }

    /// `prepare` makes what the window shows, of a size; `open` opens the window. False if the
    /// program does not start or no window came; `times` are of the door.
    template <class Door, class Prepare, class Open>
    bool run(Door& door, QElapsedTimer& clock, Prepare prepare, Open open, DialogTimes& times) {
        if (!application_.startUp(&ui_)) {
            return false;
        }
        prepare(application_.context(), size_);
        auto form = formContext(ui_, door, application_.context());
        for (int i = 0; i < runs_; ++i) {
            clock.start();
            open(form, application_);
        }
        application_.shutDown(nullptr);
        auto opened = door.opened;
        if (opened.empty()) {
            return false;
        }
        std::sort(opened.begin(), opened.end());
        times = {size_, opened[opened.size() / 2], opened.back()};
        return true;
    }

  private:
    QApplication toolkit_;
    SystemClock clock_;
    SystemRandomSource random_;
    Application application_{Environment::ofProcess(), clock_, random_, ""};
    Silent ui_;
    int size_;
    int runs_;
};

}  // namespace kavu::bench
