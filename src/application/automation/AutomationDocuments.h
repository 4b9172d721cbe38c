// Opens, saves and closes the document, and shows the sheets of its groups.
#pragma once

#include <cstdint>
#include <string>

namespace kavu {

class AutomationSession;

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationDocuments {
  public:
    explicit AutomationDocuments(AutomationSession& session) : session_(session) {}

    void OpenTmatsFile(std::int64_t hWnd, const std::string& pathName);
    void SaveTmatsFile(std::int64_t hWnd);
    void CloseTmatsFile(std::int64_t hWnd, bool allowSave);
    [[nodiscard]] bool IsTmatsFileChanged();
    void EditGeneralInfo(std::int64_t hWnd);
    void EditMultiplexInfo(std::int64_t hWnd);
    void EditRFInfo(std::int64_t hWnd);
    void EditTapeInfo(std::int64_t hWnd);

  private:
    AutomationSession& session_;
};

}  // namespace kavu
