// Starts the editor itself for another program.
#pragma once

#include <string>

namespace kavu {

class AutomationSession;

/// Methods of the automation by their names and arguments there. Every one throws
/// `AutomationError` on failure.
class AutomationStart {
  public:
    /// With a settings path the editors that are started use that file, too.
    AutomationStart(AutomationSession& session, std::string settingsPath);

    [[nodiscard]] std::string GetKAVU9ModulePathname() const;
    void StartKAVU9(const std::string& tmatsFile);

  private:
    AutomationSession& session_;
    std::string settingsPath_;
};

}  // namespace kavu
