// What the passes of the editor report while they work for a session: nobody sees a box, and
// every text becomes an error of the session.
#pragma once

#include "core/talk/SilentInterface.h"

#include <functional>
#include <string>
#include <utility>

namespace kavu {

class SessionTalk : public SilentInterface {
  public:
    using Report = std::function<void(const std::string& text)>;

    explicit SessionTalk(Report report) : report_(std::move(report)) {}

    /// Takes the logged messages from now on; an empty one lets them be reported.
    void setLog(std::function<void(const LoggedMessage&)> log) { log_ = std::move(log); }
    /// While a session only looks at a stream, what an editor has to say about it is no error.
    void setSilent(bool isSilent) { isSilent_ = isSilent; }

    Button message(const MessageBox& box) override;
    void logged(const LoggedMessage& message) override;
    /// The session has status texts of its own.
    void setStatusText(const std::string&) override {}
    void setProgressBar(double percent) override { kavu::setProgressBar(watcher(), percent); }

  private:
    Report report_;
    std::function<void(const LoggedMessage&)> log_;
    bool isSilent_ = false;
};

}  // namespace kavu
