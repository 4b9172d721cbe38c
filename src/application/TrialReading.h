// Reading a TMATS file only to know what that reports: in an application and a working store of
// its own, which are gone afterwards. The open document is not touched.
#pragma once

#include "application/FindingCollector.h"

#include <memory>
#include <string>

namespace kavu {

class Application;
class UserInterface;

class TrialReading {
  public:
    /// REQUIRES: the application has been started. `parent` may cancel, and may be null; the
    /// progress window is its.
    TrialReading(const Application& application, UserInterface* parent);
    TrialReading(const TrialReading&) = delete;
    TrialReading& operator=(const TrialReading&) = delete;
    ~TrialReading();

    /// Starts the other application; false if it has no working store.
    bool start();
    /// Opens the file and loads all its streams. A file that states no edition is read as one of
    /// `edition`. False if it was cancelled, or the file did not open.
    bool read(const std::string& path, int edition, const std::string& source);

    [[nodiscard]] Application& application() { return *application_; }
    [[nodiscard]] const FindingCollector& collector() const { return collector_; }

  private:
    bool readStreams(const std::string& source);

    std::unique_ptr<Application> application_;
    FindingCollector collector_;
    bool started_ = false;
};

}  // namespace kavu
