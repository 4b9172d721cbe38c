#include "application/automation/AutomationSession.h"

#include "application/Application.h"
#include "core/TmatsDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/Transaction.h"
#include "core/text/TextEncoding.h"
#include "pcm/PcmFormat.h"
#include "pcm/undo/StreamUndo.h"

#include <utility>

namespace kavu {

namespace {

/// The marks of a stream, which do not turn for a call that changes nothing.
class FormatMarks {
  public:
    explicit FormatMarks(const PcmFormat& format)
        : changed_(format.changed), edited_(format.formatEdited) {}
    void restore(PcmFormat& format) const {
        format.changed = changed_;
        format.formatEdited = edited_;
    }

  private:
    bool changed_;
    bool edited_;
};

void takeBack(StreamUndo& history) {
    if (history.commit()) {
        (void)history.undo();
    }
}

void call(const std::function<void(const std::string&)>& event, const std::string& path) {
    if (event && !path.empty()) {
        event(toUtf8(path));
    }
}

}  // namespace

AutomationSession::AutomationSession(Application& application, AutomationWindows* windows,
                                     AutomationEvents events)
    : application_(application), windows_(windows), events_(std::move(events)) {
    context().history.addListener(*this);
}

AutomationSession::~AutomationSession() {
    context().history.removeListener(*this);
}

DocumentContext& AutomationSession::context() {
    return application_.context();
}

UserInterface* AutomationSession::parentOf(std::int64_t hWnd) {
    return hWnd == 0 || windows_ == nullptr ? nullptr : windows_->parentOf(hWnd);
}

AutomationTalk AutomationSession::talkFor(std::int64_t hWnd) {
    using Reach = AutomationTalk::Reach;
    if (auto* const shown = parentOf(hWnd)) {
        return {Reach::Window, shown};
    }
    return {hWnd == 0 || windows_ != nullptr ? Reach::Silent : Reach::NoDisplay, nullptr};
}

AutomationWindows& AutomationSession::requireWindows() {
    if (windows_ == nullptr) {
        throw AutomationError(AutomationFault::NoDisplay, "There is no display.");
    }
    return *windows_;
}

void AutomationSession::requireDocument() const {
    if (!application_.context().document.open) {
        throw AutomationError(AutomationFault::NoDocument, "No file is open.");
    }
}

PcmFormat& AutomationSession::requireFormat() {
    requireDocument();
    auto& format = application_.pcmFormat();
    if (!format.loaded()) {
        throw AutomationError(AutomationFault::NoFormat, "No PCM format is loaded.");
    }
    return format;
}

void AutomationSession::edit(std::int64_t hWnd, std::string_view title, const Work& work) {
    auto& format = requireFormat();
    auto& levels = history();
    // What was changed besides the stream since the last call stays, whatever becomes of this one.
    (void)levels.commit();
    const FormatMarks before(format);
    auto talk = talkFor(hWnd);
    bool isDone = false;
    try {
        isDone = work(talk);
    } catch (const AutomationError&) {
        takeBack(levels);
        before.restore(format);
        throw;
    }
    if (!isDone) {
        takeBack(levels);
        before.restore(format);
        throw talk.failure();
    }
    if (levels.commit(true, title)) {
        format.changed = true;
    } else {
        before.restore(format);
    }
    tellFormatState();
}

void AutomationSession::editWithRecords(std::int64_t hWnd, std::string_view title,
                                        const Work& work) {
    (void)requireFormat();
    Transaction operation(context(), std::string(title));
    // An error leaves the block with the transaction open: its files are put back.
    edit(hWnd, title, work);
    if (const auto status = operation.commit(); !status.ok()) {
        // The files are as they were, and so is the stream again.
        (void)history().undo();
        throw AutomationError(AutomationFault::FileError, status.path() + ": " + status.reason());
    }
}

void AutomationSession::editInWindow(std::string_view title,
                                     const std::function<bool(AutomationWindows&)>& open) {
    auto& format = requireFormat();
    auto& windows = requireWindows();
    auto& levels = history();
    const bool isAccepted = open(windows);
    // The window may have saved the stream or put it back.
    (void)levels.commit(isAccepted, title);
    if (format.loaded()) {
        tellFormatState();
    }
    if (!isAccepted) {
        throw AutomationError(AutomationFault::Cancelled, "The user has cancelled.");
    }
}

StreamUndo& AutomationSession::history() {
    if (history_ == nullptr) {
        history_ = std::make_unique<StreamUndo>(
            application_.pcmFormat(),
            StreamUndo::Beside{&application_.conversions(), &application_.measurementNames()});
    }
    return *history_;
}

void AutomationSession::leaveStream() {
    history_.reset();
    wasChanged_ = false;
}

void AutomationSession::tellFormatState() {
    const auto& format = application_.pcmFormat();
    if (!format.loaded() || format.changed == wasChanged_) {
        return;
    }
    wasChanged_ = format.changed;
    if (events_.formatChanged) {
        events_.formatChanged(toUtf8(format.streamName.view()), wasChanged_);
    }
}

void AutomationSession::documentChanged(const DocumentChange& change) {
    switch (change.kind) {
        case DocumentChange::Opened:
            call(events_.documentOpened, change.path);
            break;
        case DocumentChange::Saved:
            call(events_.documentSaved, change.path);
            break;
        case DocumentChange::Closed:
            leaveStream();
            call(events_.documentClosed, change.path);
            break;
        case DocumentChange::Edited:
        case DocumentChange::TakenBack:
        case DocumentChange::Undone:
        case DocumentChange::Redone:
        case DocumentChange::CutShort:
            break;
    }
}

}  // namespace kavu
