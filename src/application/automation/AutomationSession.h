// What the methods of the automation share: the one document with its one loaded format, the
// windows that a call may need, and who is told of what happens.
#pragma once

#include "application/automation/AutomationError.h"
#include "application/automation/AutomationTalk.h"
#include "core/document/DocumentChange.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kavu {

class Application;
class PcmFormat;
class StreamUndo;
class UserInterface;
struct DocumentContext;

/// The windows that some methods open. An implementation without a display is never called:
/// `AutomationSession::requireWindows` comes first. False means that the user took Cancel.
class AutomationWindows {
  public:
    virtual ~AutomationWindows() = default;
    /// Messages and questions of a call, with the caller's window as parent.
    [[nodiscard]] virtual UserInterface* parentOf(std::int64_t hWnd) = 0;
    virtual bool editGeneral(std::int64_t hWnd) = 0;
    virtual bool editMultiplex(std::int64_t hWnd) = 0;
    virtual bool editRf(std::int64_t hWnd) = 0;
    virtual bool editTape(std::int64_t hWnd) = 0;
    virtual bool editFormat(std::int64_t hWnd) = 0;
    virtual bool showDisplay(std::int64_t hWnd) = 0;
    virtual bool editCounter(std::int64_t hWnd, int counter) = 0;
    virtual bool editSubframe(std::int64_t hWnd, int counter, int subframe) = 0;
    /// The measurement of that name at the place; without a name the user chooses, or makes one.
    virtual bool editDataWord(std::int64_t hWnd, int fwp, int fn, const std::string& name) = 0;
    virtual bool editConversion(std::int64_t hWnd, const std::string& measurement) = 0;
};

/// Who is told: the signals of the bus.
struct AutomationEvents {
    std::function<void(const std::string& path)> documentOpened;
    std::function<void(const std::string& path)> documentSaved;
    std::function<void(const std::string& path)> documentClosed;
    std::function<void(const std::string& stream, bool isChanged)> formatChanged;
};

/// One at a time; a call's failure is thrown as `AutomationError`.
class AutomationSession : private DocumentListener {
  public:
    /// Without `windows` there is no display. All arguments outlive the session. REQUIRES: the
    /// application has been started.
    AutomationSession(Application& application, AutomationWindows* windows,
                      AutomationEvents events);
    AutomationSession(const AutomationSession&) = delete;
    AutomationSession& operator=(const AutomationSession&) = delete;
    ~AutomationSession() override;

    [[nodiscard]] Application& application() { return application_; }
    [[nodiscard]] DocumentContext& context();
    [[nodiscard]] const AutomationEvents& events() const { return events_; }
    /// The parent of a call's messages and questions: null for 0 and without a display.
    [[nodiscard]] UserInterface* parentOf(std::int64_t hWnd);
    /// The parent for the operations of one call, of which its error is made.
    [[nodiscard]] AutomationTalk talkFor(std::int64_t hWnd);
    /// Throws `NoDisplay` without one.
    [[nodiscard]] AutomationWindows& requireWindows();
    /// Throws `NoDocument`.
    void requireDocument() const;
    /// Throws `NoDocument`, then `NoFormat`.
    [[nodiscard]] PcmFormat& requireFormat();

    using Work = std::function<bool(AutomationTalk& talk)>;
    /// One changing call: what `work` changes in the loaded stream is one level of its history, and
    /// raises the changed mark if it is a change at all. If `work` returns false or throws, the
    /// stream is as it was; false is thrown as the failure of the talk. Throws `NoDocument` and
    /// `NoFormat`.
    void edit(std::int64_t hWnd, std::string_view title, const Work& work);
    /// The same for a call that changes files of the document, too, as conversion records are: it
    /// is an operation of the document with the same name.
    void editWithRecords(std::int64_t hWnd, std::string_view title, const Work& work);
    /// Opens a window of `requireWindows` that edits the loaded stream; throws `Cancelled` for its
    /// Cancel.
    void editInWindow(std::string_view title, const std::function<bool(AutomationWindows&)>& open);

    /// The history of the loaded stream. REQUIRES: a loaded format.
    [[nodiscard]] StreamUndo& history();
    /// To be called before the loaded stream is released or replaced.
    void leaveStream();
    /// Reports a changed mark that has turned since the last call.
    void tellFormatState();

  private:
    void documentChanged(const DocumentChange& change) override;

    Application& application_;
    AutomationWindows* windows_;
    AutomationEvents events_;
    std::unique_ptr<StreamUndo> history_;
    bool wasChanged_ = false;  ///< what was told last of the loaded format
};

}  // namespace kavu
