#include "application/automation/AutomationDocuments.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/automation/AutomationSaving.h"
#include "application/automation/AutomationSession.h"
#include "application/automation/AutomationValues.h"
#include "core/TmatsDocument.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

namespace kavu {

namespace {

/// The file that a caller means. Throws `BadValue` for a name that is blank or relative: the
/// service has no folder that a caller could know.
std::string requirePath(const std::string& name) {
    if (trim(replaceAll(name, "\"", "")).empty()) {
        throw AutomationError(AutomationFault::BadValue, "The path is blank.");
    }
    for (const auto& form : storedForms(name)) {
        auto path = fileOfName(form);
        if (!path.starts_with('/')) {
            throw AutomationError(AutomationFault::BadValue,
                                  formatPrintf("'%s' is no absolute path.", name));
        }
        if (fileExists(path)) {
            return path;
        }
    }
    return fileOfName(name);
}

/// Throws `FileError` for a file that cannot be opened.
void requireReadable(const std::string& path) {
    ByteSource file;
    if (const auto status = file.open(path); !status.ok()) {
        throw AutomationError(
            AutomationFault::FileError,
            formatPrintf("Unable to open '%s'\n\nReason: %s", shownText(path), status.reason()));
    }
}

/// A sheet may rename what the loaded format is a part of, and the format is then released.
template <typename Open>
void editSheet(AutomationSession& session, const Open& open) {
    session.requireDocument();
    auto& windows = session.requireWindows();
    if (hasUnsavedChanges(session, Leaving::Format)) {
        throw AutomationError(AutomationFault::Unsaved, "The PCM format has unsaved changes.");
    }
    const bool isAccepted = open(windows);
    if (!session.application().pcmFormat().loaded()) {
        session.leaveStream();
    }
    if (!isAccepted) {
        throw AutomationError(AutomationFault::Cancelled, "The user has cancelled.");
    }
}

}  // namespace

void AutomationDocuments::OpenTmatsFile(std::int64_t hWnd, const std::string& pathName) {
    const auto path = requirePath(pathName);
    requireReadable(path);
    auto& documents = session_.application().documents();
    if (session_.context().document.open) {
        settleChanges(session_, hWnd, Leaving::Document);
        session_.leaveStream();
        auto closing = session_.talkFor(hWnd);
        documents.discard(&closing);
    }
    auto talk = session_.talkFor(hWnd);
    if (!documents.openNamed(&talk, path)) {
        throw talk.failure(AutomationFault::FileError,
                           formatPrintf("Unable to open '%s'", shownText(path)));
    }
}

void AutomationDocuments::SaveTmatsFile(std::int64_t hWnd) {
    session_.requireDocument();
    saveFile(session_, hWnd);
}

void AutomationDocuments::CloseTmatsFile(std::int64_t hWnd, bool allowSave) {
    session_.requireDocument();
    if (allowSave && hasUnsavedChanges(session_, Leaving::Document)) {
        if (hWnd == 0) {
            saveFile(session_, hWnd);
        } else {
            settleChanges(session_, hWnd, Leaving::Document);
        }
    }
    session_.leaveStream();
    auto talk = session_.talkFor(hWnd);
    session_.application().documents().discard(&talk);
}

bool AutomationDocuments::IsTmatsFileChanged() {
    session_.requireDocument();
    return session_.context().document.changed;
}

void AutomationDocuments::EditGeneralInfo(std::int64_t hWnd) {
    editSheet(session_, [&](AutomationWindows& windows) { return windows.editGeneral(hWnd); });
}

void AutomationDocuments::EditMultiplexInfo(std::int64_t hWnd) {
    editSheet(session_, [&](AutomationWindows& windows) { return windows.editMultiplex(hWnd); });
}

void AutomationDocuments::EditRFInfo(std::int64_t hWnd) {
    editSheet(session_, [&](AutomationWindows& windows) { return windows.editRf(hWnd); });
}

void AutomationDocuments::EditTapeInfo(std::int64_t hWnd) {
    editSheet(session_, [&](AutomationWindows& windows) { return windows.editTape(hWnd); });
}

}  // namespace kavu
