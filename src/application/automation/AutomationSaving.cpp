#include "application/automation/AutomationSaving.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/automation/AutomationSession.h"
#include "core/TmatsDocument.h"
#include "core/document/ChangedFile.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/PcmSave.h"

namespace kavu {

bool hasUnsavedChanges(AutomationSession& session, Leaving what) {
    const auto& format = session.application().pcmFormat();
    return (format.loaded() && format.changed) ||
           (what == Leaving::Document && session.context().document.changed);
}

void settleChanges(AutomationSession& session, std::int64_t hWnd, Leaving what) {
    if (!hasUnsavedChanges(session, what)) {
        return;
    }
    auto talk = session.talkFor(hWnd);
    if (talk.reach() == AutomationTalk::Reach::Silent) {
        throw AutomationError(AutomationFault::Unsaved,
                              what == Leaving::Document ? "The open file has unsaved changes."
                                                        : "The PCM format has unsaved changes.");
    }
    if (talk.reach() == AutomationTalk::Reach::NoDisplay) {
        throw AutomationError(AutomationFault::NoDisplay, "There is no display to ask on.");
    }
    const std::string called = what == Leaving::Document ? "file" : "PCM format";
    const BoxStyle style{Icon::Warning, Buttons::YesNoCancel, Button::Yes};
    switch (
        session.context().messages.show(&talk, -76, title::kWarning, style, "", called, called)) {
        case Button::Yes:
            what == Leaving::Document ? saveFile(session, hWnd) : saveFormat(session, hWnd);
            return;
        case Button::No:
            return;
        default:
            throw AutomationError(AutomationFault::Cancelled, "The user has cancelled.");
    }
}

void saveFormat(AutomationSession& session, std::int64_t hWnd) {
    auto& format = session.application().pcmFormat();
    if (!format.loaded() || !format.changed) {
        return;
    }
    auto talk = session.talkFor(hWnd);
    if (!savePcmFormat(format, &talk)) {
        throw talk.failure(AutomationFault::FileError, "The PCM format could not be written.");
    }
    // What the save has written next to the groups is no part of the next edit.
    (void)session.history().commit();
    session.tellFormatState();
}

void saveFile(AutomationSession& session, std::int64_t hWnd) {
    auto& context = session.context();
    auto talk = session.talkFor(hWnd);
    const auto& document = context.document;
    if (document.readOnly) {
        context.messages.show(&talk, -144, title::kWarning, kWarningBox, document.path);
        throw talk.failure();
    }
    if (talk.isSilent() && isChangedByAnother(document, document.path)) {
        throw AutomationError(
            AutomationFault::FileError,
            formatPrintf("Another program has changed the file '%s' since it was opened or saved "
                         "here.",
                         document.path));
    }
    saveFormat(session, hWnd);
    if (!session.application().documents().save(&talk)) {
        throw talk.failure(AutomationFault::FileError,
                           formatPrintf("The file '%s' was not saved.", document.path));
    }
}

}  // namespace kavu
