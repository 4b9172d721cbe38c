#include "app/automation/AutomationServer.h"

#include "app/automation/AutomationMethods.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/QtText.h"
#include "application/Application.h"
#include "pcm/PcmFormat.h"

#include <algorithm>
#include <exception>
#include <unistd.h>
#include <utility>

#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>

namespace kavu {

namespace {

constexpr auto kDialogLook = std::chrono::milliseconds(50);

QString busErrorName(AutomationFault fault) {
    return toQString(automationErrorName(fault));
}

/// "/Kavu/Kavu" is the object of the name "Kavu.Kavu".
QString busNameOf(const AutomationInterface& interface) {
    auto name = toQString(interface.path.substr(1));
    return name.replace(QLatin1Char('/'), QLatin1Char('.'));
}

}  // namespace

/// An object of the bus: finds the method of a call and holds its arguments against the type
/// library.
class AutomationObject : public QDBusVirtualObject {
  public:
    AutomationObject(AutomationServer& server, const AutomationInterface& interface)
        : server_(server), interface_(interface) {}

    [[nodiscard]] QString introspect(const QString&) const override {
        return toQString(interface_.introspection());
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        const auto interface = toBytes(message.interface());
        if (!interface.empty() && interface != interface_.name) {
            return false;
        }
        const auto name = toBytes(message.member());
        const auto method =
            std::find_if(interface_.methods.begin(), interface_.methods.end(),
                         [&name](const AutomationMethod& each) { return each.name == name; });
        if (method == interface_.methods.end()) {
            if (interface.empty()) {
                return false;
            }
            server_.fail(message, QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
                         QStringLiteral("There is no method %1 in %2")
                             .arg(message.member(), message.interface()));
            return true;
        }
        if (toBytes(message.signature()) != method->signature) {
            server_.fail(
                message, QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"),
                QStringLiteral("The arguments of %1 are \"%2\", not \"%3\"")
                    .arg(message.member(), toQString(method->signature), message.signature()));
            return true;
        }
        server_.take(message, *method);
        return true;
    }

  private:
    AutomationServer& server_;
    const AutomationInterface& interface_;
};

/// What exists once the application has been started.
struct AutomationServer::Served {
    Served(Application& started, AutomationWindows* windows, AutomationEvents events,
           const std::string& settingsPath)
        : application(started),
          session(started, windows, std::move(events)),
          methods(session, settingsPath) {}

    Application& application;
    AutomationSession session;
    AutomationMethods methods;
};

AutomationServer::AutomationServer(const QDBusConnection& bus, DialogDoor& door,
                                   std::chrono::milliseconds patience)
    : bus_(bus), door_(door) {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this,
            &AutomationServer::clientLeft);
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, &AutomationServer::considerEnd);
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, &AutomationServer::runWaiting);
    dialog_.setInterval(kDialogLook);
    connect(&dialog_, &QTimer::timeout, this, &AutomationServer::refuseWaiting);
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(noteBusEnd()));
}

AutomationServer::~AutomationServer() {
    stop();
    for (const auto& interface : automationInterfaces()) {
        bus_.unregisterObject(toQString(interface.path));
    }
}

bool AutomationServer::takeNames() {
    // A call may come as soon as there is a name: the objects are there before.
    for (const auto& interface : automationInterfaces()) {
        objects_.push_back(std::make_unique<AutomationObject>(*this, interface));
        if (!bus_.registerVirtualObject(toQString(interface.path), objects_.back().get())) {
            return false;
        }
    }
    for (const auto& interface : automationInterfaces()) {
        const auto taken = bus_.interface()->registerService(
            busNameOf(interface), QDBusConnectionInterface::DontQueueService,
            QDBusConnectionInterface::DontAllowReplacement);
        if (!taken.isValid() || taken.value() != QDBusConnectionInterface::ServiceRegistered) {
            return false;
        }
    }
    return true;
}

void AutomationServer::serve(Application& application, AutomationWindows* windows,
                             const std::string& settingsPath) {
    served_ = std::make_unique<Served>(application, windows, makeEvents(), settingsPath);
    patience_.start();
    next_.start();
}

void AutomationServer::stop() {
    stopped_ = true;
    waiting_.clear();
    patience_.stop();
    for (const auto& interface : automationInterfaces()) {
        if (bus_.interface() != nullptr && bus_.isConnected()) {
            bus_.interface()->unregisterService(busNameOf(interface));
        }
    }
}

bool AutomationServer::hasUnsaved() const {
    if (served_ == nullptr) {
        return false;
    }
    const auto& format = served_->application.pcmFormat();
    return served_->application.context().document.changed || (format.loaded() && format.changed);
}

// --- calls --------------------------------------------------------------------------------------

void AutomationServer::take(const QDBusMessage& message, const AutomationMethod& method) {
    if (stopped_) {
        return;
    }
    if (!admit(message.service())) {
        fail(message, QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"),
             QStringLiteral("Only processes of the same user may call"));
        return;
    }
    waiting_.push_back({message, &method});
    if (running_) {
        // A load goes on meanwhile; a dialog lets nobody wait.
        refuseWaiting();
    } else {
        runWaiting();
    }
}

void AutomationServer::refuseWaiting() {
    if (door_.depth() == 0) {
        return;
    }
    for (const auto& call : std::exchange(waiting_, {})) {
        fail(call.message, busErrorName(AutomationFault::Busy),
             QStringLiteral("A dialog of another call is open."));
    }
}

void AutomationServer::runWaiting() {
    if (served_ == nullptr || running_) {
        return;
    }
    while (!waiting_.empty() && !stopped_) {
        const auto call = std::move(waiting_.front());
        waiting_.pop_front();
        running_ = true;
        dialog_.start();
        run(call);
        dialog_.stop();
        running_ = false;
    }
    if (clients_.empty() && !stopped_) {
        patience_.start();
    }
}

void AutomationServer::run(const Call& call) {
    try {
        reply(call.message, call.method->call(served_->methods, call.message.arguments()));
    } catch (const AutomationError& error) {
        fail(call.message, busErrorName(error.fault()), toQString(error.what()));
    } catch (const std::exception& error) {
        fail(call.message, QStringLiteral("org.freedesktop.DBus.Error.Failed"),
             toQString(error.what()));
    }
}

void AutomationServer::reply(const QDBusMessage& message, const QVariantList& results) {
    if (message.isReplyRequired()) {
        bus_.send(message.createReply(results));
    }
}

void AutomationServer::fail(const QDBusMessage& message, const QString& name, const QString& text) {
    if (message.isReplyRequired()) {
        bus_.send(message.createErrorReply(name, text));
    }
}

// --- clients ------------------------------------------------------------------------------------

bool AutomationServer::admit(const QString& client) {
    if (clients_.contains(client)) {
        return true;
    }
    // The watch comes first: who leaves from here on is heard, who has left has no user.
    watcher_.addWatchedService(client);
    const auto user = bus_.interface()->serviceUid(client);
    if (!user.isValid() || user.value() != ::geteuid()) {
        watcher_.removeWatchedService(client);
        return false;
    }
    clients_.insert(client);
    patience_.stop();
    return true;
}

void AutomationServer::clientLeft(const QString& client) {
    watcher_.removeWatchedService(client);
    clients_.erase(client);
    if (clients_.empty() && !running_ && !stopped_) {
        patience_.start();
    }
}

void AutomationServer::considerEnd() {
    // Who has left unsaved changes may come back for them.
    if (clients_.empty() && !running_ && waiting_.empty() && !hasUnsaved()) {
        emit unneeded();
    }
}

void AutomationServer::noteBusEnd() {
    stopped_ = true;
    waiting_.clear();
    emit busEnded();
}

// --- signals ------------------------------------------------------------------------------------

void AutomationServer::emitSignal(const char* name, const QVariantList& arguments) {
    const auto& interface = automationInterfaces().front();
    auto signal = QDBusMessage::createSignal(toQString(interface.path), toQString(interface.name),
                                             QString::fromLatin1(name));
    signal.setArguments(arguments);
    bus_.send(signal);
}

AutomationEvents AutomationServer::makeEvents() {
    const auto ofPath = [this](const char* name) {
        return [this, name](const std::string& path) { emitSignal(name, {toQString(path)}); };
    };
    AutomationEvents events;
    events.documentOpened = ofPath("DocumentOpened");
    events.documentSaved = ofPath("DocumentSaved");
    events.documentClosed = ofPath("DocumentClosed");
    events.formatChanged = [this](const std::string& stream, bool isChanged) {
        emitSignal("FormatChanged", {toQString(stream), isChanged});
    };
    return events;
}

}  // namespace kavu
