#include "app/automation/AutomationStart.h"

#include "app/framework/QtText.h"
#include "application/automation/AutomationSession.h"
#include "core/files/FileIo.h"

#include <utility>

#include <QCoreApplication>
#include <QProcess>

namespace kavu {

AutomationStart::AutomationStart(AutomationSession& session, std::string settingsPath)
    : session_(session), settingsPath_(std::move(settingsPath)) {}

std::string AutomationStart::GetKAVU9ModulePathname() const {
    return toBytes(QCoreApplication::applicationFilePath());
}

void AutomationStart::StartKAVU9(const std::string& tmatsFile) {
    if (!tmatsFile.starts_with('/')) {
        throw AutomationError(AutomationFault::BadValue,
                              "'" + tmatsFile + "' is no absolute path.");
    }
    PathKind kind{};
    if (const auto status = probePath(tmatsFile, kind); !status.ok()) {
        throw AutomationError(AutomationFault::FileError, status.path() + ": " + status.reason());
    }
    if (kind != PathKind::PlainFile) {
        throw AutomationError(
            AutomationFault::FileError,
            tmatsFile + (kind == PathKind::Missing ? ": there is no such file" : ": is no file"));
    }
    (void)session_.requireWindows();
    QStringList arguments;
    if (!settingsPath_.empty()) {
        arguments << QStringLiteral("--settings") << toQString(settingsPath_);
    }
    arguments << QStringLiteral("--") << toQString(tmatsFile);
    const auto program = QCoreApplication::applicationFilePath();
    if (!QProcess::startDetached(program, arguments)) {
        throw AutomationError(AutomationFault::FileError, toBytes(program) + ": cannot be started");
    }
}

}  // namespace kavu
