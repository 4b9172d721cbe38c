// A user interface that nobody sees: no prompt gets an answer. For passes that work for somebody
// else, who may watch them and cancel. What is done with boxes is left to the kinds of it.
#pragma once

#include "core/talk/UserInterface.h"

namespace kavu {

class SilentInterface : public UserInterface {
  public:
    /// `watcher` is who may cancel, and may be null.
    explicit SilentInterface(UserInterface* watcher = nullptr) : watcher_(watcher) {}

    /// Who watches from now on; nothing is cancelled then.
    void setWatcher(UserInterface* watcher) {
        watcher_ = watcher;
        isCancelled_ = false;
    }
    [[nodiscard]] UserInterface* watcher() const { return watcher_; }
    [[nodiscard]] bool isCancelled() const { return isCancelled_; }

    std::optional<std::string> enterText(const TextPrompt&) override { return std::nullopt; }
    std::optional<long> enterInteger(const IntegerPrompt&) override { return std::nullopt; }
    std::optional<double> enterDouble(const DoublePrompt&) override { return std::nullopt; }
    int chooseFromList(const std::string&, const std::vector<std::string>&) override { return -1; }
    int selectFromTable(const TablePrompt&) override { return -1; }
    std::optional<FileChoice> chooseFile(const FilePrompt&) override { return std::nullopt; }
    void showMessages(const std::string&, const std::string&,
                      const std::vector<std::string>&) override {}
    /// The window of the watcher is up.
    bool openProgress(ProgressMode, bool) override { return false; }
    void yieldToInterface() override { kavu::yieldToInterface(watcher_); }
    /// The question of the watcher comes once: its Yes holds for all that follows.
    bool cancelRequested() override {
        isCancelled_ = isCancelled_ || kavu::cancelRequested(watcher_);
        return isCancelled_;
    }

  private:
    UserInterface* watcher_;
    bool isCancelled_ = false;
};

}  // namespace kavu
