// The windows that calls of other programs open: the sheets of the editor over the one document.
#pragma once

#include "app/automation/AutomationDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/QtInterface.h"
#include "application/automation/AutomationSession.h"

#include <functional>

namespace kavu {

class Application;

class AutomationForms : public AutomationWindows {
  public:
    /// Both outlive the object.
    AutomationForms(Application& application, AutomationDoor& door);

    [[nodiscard]] UserInterface* parentOf(std::int64_t hWnd) override;
    bool editGeneral(std::int64_t hWnd) override;
    bool editMultiplex(std::int64_t hWnd) override;
    bool editRf(std::int64_t hWnd) override;
    bool editTape(std::int64_t hWnd) override;
    bool editFormat(std::int64_t hWnd) override;
    bool showDisplay(std::int64_t hWnd) override;
    bool editCounter(std::int64_t hWnd, int counter) override;
    bool editSubframe(std::int64_t hWnd, int counter, int subframe) override;
    bool editDataWord(std::int64_t hWnd, int fwp, int fn, const std::string& name) override;
    bool editConversion(std::int64_t hWnd, const std::string& measurement) override;

  private:
    /// Runs an editor over the caller's window. True if it has stored something, or was left with
    /// OK.
    bool run(std::int64_t hWnd, const std::function<bool(FormContext& form)>& edit);

    Application& application_;
    AutomationDoor& door_;
    QtInterface ui_;
};

}  // namespace kavu
