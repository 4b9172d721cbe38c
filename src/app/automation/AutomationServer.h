// The automation on the session bus: takes the calls of other programs, runs them one at a time
// on the interface thread, and ends when nobody needs it any more.
#pragma once

#include "app/automation/AutomationTable.h"
#include "application/automation/AutomationSession.h"

#include <chrono>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

namespace kavu {

class Application;
class AutomationObject;
class DialogDoor;

class AutomationServer : public QObject {
    Q_OBJECT
  public:
    /// How long the server stays after its last client has left.
    static constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(60);

    /// `door` is that of the windows which the methods open, and must outlive the object.
    AutomationServer(const QDBusConnection& bus, DialogDoor& door,
                     std::chrono::milliseconds patience = kPatience);
    ~AutomationServer() override;

    /// Takes the names on the bus; false if another process has them, or the bus refuses. Calls
    /// that come before `serve` wait.
    bool takeNames();
    /// Runs the calls from now on. `windows` is null without a display. All of the arguments
    /// outlive the object; the application has been started.
    void serve(Application& application, AutomationWindows* windows,
               const std::string& settingsPath);
    /// Lets no more call begin.
    void stop();
    [[nodiscard]] bool isRunning() const { return running_; }
    /// The document or the loaded format has changes that are not on the disk.
    [[nodiscard]] bool hasUnsaved() const;

  signals:
    /// Nobody needs the server any more.
    void unneeded();
    /// The bus has ended, or has thrown this process out.
    void busEnded();

  private slots:
    void noteBusEnd();

  private:
    friend class AutomationObject;
    struct Call {
        QDBusMessage message;
        const AutomationMethod* method;
    };
    struct Served;

    void take(const QDBusMessage& message, const AutomationMethod& method);
    void run(const Call& call);
    void runWaiting();
    void refuseWaiting();
    /// True for a process of this user, which counts as a client from then on.
    [[nodiscard]] bool admit(const QString& client);
    void clientLeft(const QString& client);
    void considerEnd();
    void reply(const QDBusMessage& message, const QVariantList& results);
    void fail(const QDBusMessage& message, const QString& name, const QString& text);
    void emitSignal(const char* name, const QVariantList& arguments);
    [[nodiscard]] AutomationEvents makeEvents();

    QDBusConnection bus_;
    DialogDoor& door_;
    std::vector<std::unique_ptr<AutomationObject>> objects_;
    std::unique_ptr<Served> served_;
    std::deque<Call> waiting_;
    bool running_ = false;
    bool stopped_ = false;
    QDBusServiceWatcher watcher_;
    std::set<QString> clients_;
    QTimer patience_;
    QTimer next_;    ///< runs what waits
    QTimer dialog_;  ///< looks whether the call that runs shows a dialog by now
};

}  // namespace kavu
