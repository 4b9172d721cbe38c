#include "app/automation/AutomationProcess.h"

#include "app/automation/AutomationDoor.h"
#include "app/automation/AutomationForms.h"
#include "app/automation/AutomationServer.h"
#include "app/automation/Display.h"
#include "app/automation/Registration.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/text/Clock.h"
#include "pcm/PcmFormat.h"
#include "pcm/write/PcmSave.h"

#include <iostream>
#include <memory>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QTimer>

namespace kavu {

namespace {

constexpr int kFailed = 2;

enum class End { Unneeded, Stopped, BusEnded };

std::unique_ptr<QCoreApplication> makeToolkit(int& argc, char** argv, bool withWindows,
                                              const StartOptions& options) {
    if (!withWindows) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    auto toolkit = std::make_unique<QApplication>(argc, argv);
    // Its windows come and go with the calls.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    look::apply(*toolkit, options.scheme.value_or(look::desktopScheme()));
    return toolkit;
}

/// A dialog that a call waits for would hold the end up.
void dismissDialogs() {
    while (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        dialog->done(QDialog::Rejected);
        if (dialog->isVisible()) {
            return;
        }
    }
}

End runUntilEnd(AutomationServer& server, const std::function<bool()>& isStopped,
                bool withWindows) {
    End end = End::Unneeded;
    bool ends = false;
    const auto finish = [&](End how) {
        if (!ends) {
            end = how;
            ends = true;
            server.stop();
        }
    };
    QObject::connect(&server, &AutomationServer::unneeded, &server, [&] { finish(End::Unneeded); });
    QObject::connect(&server, &AutomationServer::busEnded, &server, [&] { finish(End::BusEnded); });
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &server, [&] {
        if (isStopped()) {
            finish(End::Stopped);
        }
        // The call that runs comes to its end first.
        if (ends && server.isRunning() && withWindows) {
            dismissDialogs();
        } else if (ends && !server.isRunning()) {
            QCoreApplication::quit();
        }
    });
    look.start(std::chrono::milliseconds(100));
    QCoreApplication::exec();
    return end;
}

/// The stream in memory goes to the working files as well: from them a document is recovered.
void leaveForRecovery(Application& system) {
    auto& format = system.pcmFormat();
    if (format.loaded() && format.changed) {
        (void)savePcmFormat(format, nullptr);
    }
}

/// A bus that runs does not look again by itself, least of all into a folder that is new.
void letBusLookAgain(const Environment& environment) {
    if (!environment.variable("DBUS_SESSION_BUS_ADDRESS")) {
        return;
    }
    const auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        const auto name = QStringLiteral("org.freedesktop.DBus");
        (void)bus.call(QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/DBus"),
                                                      name, QStringLiteral("ReloadConfig")));
    }
}

}  // namespace

int serveAutomation(int& argc, char** argv, const StartOptions& options,
                    const std::function<bool()>& isStopped) {
    const auto environment = Environment::ofProcess();
    const bool withWindows = hasDisplay(environment);
    const auto toolkit = makeToolkit(argc, argv, withWindows, options);
    keepNumbersPlain();
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        std::cerr << "kavu: there is no session bus: " << toBytes(bus.lastError().message())
                  << '\n';
        return kFailed;
    }
    AutomationDoor door;
    SystemClock clock;
    SystemRandomSource random;
    Application system(environment, clock, random, options.settings);
    std::unique_ptr<AutomationForms> forms;
    AutomationServer server(bus, door);
    if (!server.takeNames()) {
        return 0;
    }
    if (!system.startUp(nullptr)) {
        std::cerr << "kavu: the working store cannot be made\n";
        return kFailed;
    }
    if (withWindows) {
        forms = std::make_unique<AutomationForms>(system, door);
    }
    server.serve(system, forms.get(), options.settings);
    const auto end = runUntilEnd(server, isStopped, withWindows);
    if (end == End::BusEnded && server.hasUnsaved()) {
        leaveForRecovery(system);
        return 0;
    }
    system.documents().discard(nullptr);
    system.shutDown(nullptr);
    return 0;
}

int changeRegistration(int& argc, char** argv, const StartOptions& options) {
    const QCoreApplication toolkit(argc, argv);
    const auto environment = Environment::ofProcess();
    const auto folder = registrationFolder(
        environment, options.forSystem ? RegistrationScope::System : RegistrationScope::User);
    const bool registers = options.automation == AutomationSwitch::Register;
    const auto status =
        registers ? registerAutomation(folder, toBytes(QCoreApplication::applicationFilePath()))
                  : unregisterAutomation(folder);
    if (!status.ok()) {
        std::cerr << "kavu: " << status.path() << ": " << status.reason() << '\n';
        return kFailed;
    }
    letBusLookAgain(environment);
    return 0;
}

}  // namespace kavu
