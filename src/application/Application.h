// The composition root of the logic. One `Application` owns everything a document needs
// and installs the steps by which opening and saving reach the higher folders; `main` of
// both programs makes one and passes it on. There is no global, so a test may make many.
#pragma once

#include "core/TmatsDocument.h"
#include "core/files/Environment.h"
#include "core/text/Clock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kavu {

class ConversionStore;
class DocumentService;
class IoStatus;
class MeasurementNames;
struct VersionOptions;
class PcmFormat;
struct PcmSteps;
class ReportDesk;

class Application {
  public:
    /// The clock and the random source must outlive the application. With a settings path
    /// that file is used instead of the `kavu.ini` of the support folder.
    Application(Environment environment, const Clock& clock, RandomSource& random,
                std::string settingsPath = {});
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

    /// One that is not started yet, of the same environment and settings file, with a working store
    /// of its own. It may not outlive this one's clock and random source.
    [[nodiscard]] std::unique_ptr<Application> makeAnother() const;

    /// Starts, in this order, support folder, settings and working store. False if the
    /// program cannot go on, which has been reported. `ready` is called between settings and
    /// store, with the status text of the latter: an editor shows its window.
    bool startUp(UserInterface* parent, const std::function<void()>& ready = {});
    /// Closes the document and the report layout that is open, with their questions, and removes
    /// the working store. False if the user has cancelled. Safe to call again.
    bool shutDown(UserInterface* parent);

    /// From here on opened files go into the list of recent files. Only the editor calls
    /// it; a batch run leaves the user's list alone. REQUIRES: `startUp` has succeeded.
    void keepRecentFiles();

    /// Checks the measurement database of the settings if it is switched on, as an editor does
    /// when it starts, and switches it off without a usable one: messages 428 and 429. The file of
    /// the default path that was never made is no fault. REQUIRES: `startUp` has succeeded.
    void checkDatabase(UserInterface* parent);

    /// REQUIRES: `startUp` has succeeded.
    [[nodiscard]] DocumentContext& context();
    /// The operations on the open document as a whole. Valid as long as the application.
    [[nodiscard]] DocumentService& documents();
    [[nodiscard]] ConversionStore& conversions();
    [[nodiscard]] MeasurementNames& measurementNames();
    /// The one stream that can be in memory, and what its load needs of other folders.
    [[nodiscard]] PcmFormat& pcmFormat();
    [[nodiscard]] const PcmSteps& pcmSteps();
    /// The report layout that is open, and the number of the next page.
    [[nodiscard]] ReportDesk& reportDesk();
    /// Sets how the user is asked how new measurements state their places; the editor has a
    /// dialog for it. May be called before the start.
    void setDefinitionModeStep(
        std::function<std::optional<bool>(UserInterface&, bool wordFrame)> choose);

    /// Applies what the dialog of the editions returns on OK: see `editVersionOptions`. If
    /// `failure` is set, the open document may be half converted.
    bool changeVersions(UserInterface* parent, const VersionOptions& options,
                        IoStatus* failure = nullptr);

    /// What the program gets from the system, also before the start.
    [[nodiscard]] const Environment& environment() const { return environment_; }
    [[nodiscard]] const std::string& supportFolder() const;
    /// "kavu.hlp" next to the program.
    [[nodiscard]] const std::string& helpPath() const;
    /// The text of "welcome.txt" in the support folder of all users, else next to the
    /// program; empty if there is none or it is blank.
    [[nodiscard]] std::string welcomeText() const;

  private:
    struct Parts;
    void installSteps();
    void installPcmSteps();
    [[nodiscard]] std::string defaultDatabasePath() const { return supportFolder_ + "kavu.mdb"; }

    Environment environment_;
    const Clock& clock_;
    RandomSource& random_;
    std::string settingsPath_;
    std::string supportFolder_;
    std::string helpPath_;
    std::function<std::optional<bool>(UserInterface&, bool wordFrame)> definitionModeStep_;
    int starts_ = 0;
    std::unique_ptr<Parts> parts_;
    std::unique_ptr<DocumentService> documents_;
};

}  // namespace kavu
