// What the methods of the automation share: the one document with its one loaded format, the
// windows that a call may need, and who is told of what happens.
#pragma once

#include "application/automation/AutomationError.h"

#include <cstdint>
#include <functional>
#include <string>

namespace kavu {

class Application;
class PcmFormat;
class UserInterface;

/// The windows that some methods open. An implementation without a display is never called:
/// `AutomationSession::requireDisplay` comes first. False means that the user took Cancel.
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
    virtual bool editDataWord(std::int64_t hWnd, int fwp, int index) = 0;
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
class AutomationSession {
  public:
    /// Without `windows` there is no display. All arguments outlive the session.
    AutomationSession(Application& application, AutomationWindows* windows,
                      AutomationEvents events);

    [[nodiscard]] Application& application() { return application_; }
    [[nodiscard]] const AutomationEvents& events() const { return events_; }
    /// The parent of a call's messages and questions: null for 0 and without a display.
    [[nodiscard]] UserInterface* parentOf(std::int64_t hWnd);
    /// Throws `NoDisplay` without one.
    [[nodiscard]] AutomationWindows& requireWindows();
    /// Throws `NoDocument`.
    void requireDocument() const;
    /// Throws `NoDocument`, then `NoFormat`.
    [[nodiscard]] PcmFormat& requireFormat();

  private:
    Application& application_;
    AutomationWindows* windows_;
    AutomationEvents events_;
};

}  // namespace kavu
