// The editor. Here is only what a process has and a library must not: arguments, signals,
// the one application object of the toolkit.
#include "app/Forms.h"
#include "app/automation/AutomationProcess.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/MainWindow.h"
#include "app/shell/StartOptions.h"
#include "application/Application.h"
#include "core/text/Clock.h"

#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include <QApplication>
#include <QTimer>

namespace {

// A signal handler can reach nothing but a static variable.
volatile std::sig_atomic_t stopSignals = 0;

extern "C" void rememberSignal(int) {
    stopSignals = 1;
}

/// From here on a signal is remembered: the working store is there before there is anything that
/// could be closed.
void rememberSignals() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signal, rememberSignal);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

/// A signal ends the program as the close of its window does, questions included. It waits while
/// the window starts or a long operation runs, which cannot be left in its middle.
void followSignals(kavu::MainWindow& window) {
    auto* const timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, &window, [&window] {
        if (stopSignals != 0 && window.mayBeClosed()) {
            stopSignals = 0;
            window.close();
        }
    });
    timer->start(std::chrono::milliseconds(200));
}

}  // namespace

int main(int argc, char** argv) {
    const auto options =
        kavu::readStartOptions(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
    switch (options.automation) {
        case kavu::AutomationSwitch::None:
            break;
        case kavu::AutomationSwitch::Register:
        case kavu::AutomationSwitch::Unregister:
            return kavu::changeRegistration(argc, argv, options);
        case kavu::AutomationSwitch::Embedding:
            rememberSignals();
            return kavu::serveAutomation(argc, argv, options, [] { return stopSignals != 0; });
    }
    if (!options.print.empty()) {
        (options.wrong ? std::cerr : std::cout) << options.print << std::flush;
        return options.wrong ? 64 : 0;
    }
    rememberSignals();
    QApplication application(argc, argv);
    kavu::keepNumbersPlain();
    kavu::look::apply(application, options.scheme.value_or(kavu::look::desktopScheme()));

    kavu::SystemClock clock;
    kavu::SystemRandomSource random;
    kavu::Application system(kavu::Environment::ofProcess(), clock, random, options.settings);
    kavu::DialogDoor door;
    kavu::MainWindow window(system, door);
    kavu::installForms(window, system);
    followSignals(window);
    if (!window.begin({.splash = options.splash, .file = options.file, .scheme = options.scheme})) {
        system.shutDown(nullptr);
        return 1;
    }
    const int result = QApplication::exec();
    system.shutDown(nullptr);
    return result;
}
