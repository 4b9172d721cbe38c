// A user interface that nobody sees: it keeps what is reported as findings, and refuses every
// question. For readings of a file that are only made to know what they would report.
#pragma once

#include "core/talk/Findings.h"
#include "core/talk/UserInterface.h"

#include <string>
#include <vector>

namespace kavu {

class FindingCollector : public UserInterface {
  public:
    /// `watcher` is who may cancel, and may be null.
    explicit FindingCollector(UserInterface* watcher) : watcher_(watcher) {}

    /// What is reported from now on comes from here, and is about this stream if there is one.
    void setSource(std::string source, std::string stream = {}) {
        source_ = std::move(source);
        stream_ = std::move(stream);
    }
    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }
    [[nodiscard]] bool isCancelled() const { return cancelled_; }

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
    void loadRemark(const std::string& text) override;
    /// The window of the watcher is up.
    bool openProgress(ProgressMode, bool) override { return false; }
    void yieldToInterface() override { kavu::yieldToInterface(watcher_); }
    bool cancelRequested() override;

  private:
    void keep(int id, const std::string& title, const std::string& text);

    UserInterface* watcher_;
    std::string source_;
    std::string stream_;
    std::vector<Finding> findings_;
    bool cancelled_ = false;
};

}  // namespace kavu
