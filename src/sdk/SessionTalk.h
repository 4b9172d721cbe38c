// What the passes of the editor report while they work for a session: nobody sees a box, and
// every text becomes an error of the session.
#pragma once

#include "core/talk/UserInterface.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kavu {

class SessionTalk : public UserInterface {
  public:
    using Report = std::function<void(const std::string& text)>;

    explicit SessionTalk(Report report) : report_(std::move(report)) {}

    /// Who sees the progress and may cancel from now on; null for nobody.
    void setWatcher(UserInterface* watcher) { watcher_ = watcher; }
    [[nodiscard]] UserInterface* watcher() const { return watcher_; }
    /// Takes the logged messages from now on; an empty one lets them be reported.
    void setLog(std::function<void(const LoggedMessage&)> log) { log_ = std::move(log); }
    /// While a session only looks at a stream, what an editor has to say about it is no error.
    void setSilent(bool isSilent) { isSilent_ = isSilent; }

    Button message(const MessageBox& box) override;
    std::optional<std::string> enterText(const TextPrompt&) override { return std::nullopt; }
    std::optional<long> enterInteger(const IntegerPrompt&) override { return std::nullopt; }
    std::optional<double> enterDouble(const DoublePrompt&) override { return std::nullopt; }
    int chooseFromList(const std::string&, const std::vector<std::string>&) override { return -1; }
    int selectFromTable(const TablePrompt&) override { return -1; }
    std::optional<FileChoice> chooseFile(const FilePrompt&) override { return std::nullopt; }
    void logged(const LoggedMessage& message) override;
    void showMessages(const std::string&, const std::string&,
                      const std::vector<std::string>&) override {}
    /// The session has status texts of its own.
    void setStatusText(const std::string&) override {}
    void setProgressBar(double percent) override { kavu::setProgressBar(watcher_, percent); }
    /// The window of the watcher is up.
    bool openProgress(ProgressMode, bool) override { return false; }
    void yieldToInterface() override { kavu::yieldToInterface(watcher_); }
    /// The question of the watcher comes once: its Yes holds for all that follows.
    bool cancelRequested() override;

  private:
    Report report_;
    UserInterface* watcher_ = nullptr;
    std::function<void(const LoggedMessage&)> log_;
    bool isSilent_ = false;
    bool isCancelled_ = false;
};

}  // namespace kavu
