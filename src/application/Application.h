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

class Application {
  public:
    /// The clock and the random source must outlive the application. With a settings path
    /// that file is used in place of the `kavu.ini` of the support folder.
    Application(Environment environment, const Clock& clock, RandomSource& random,
                std::string settingsPath = {});
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

    /// The order of the start: support folder, settings, working store. False if the
    /// program can not go on; it has been reported.
    bool startUp(UserInterface* parent);
    /// Closes the document, with its question, and removes the working store. False if the
    /// user cancelled. Safe to call again.
    bool shutDown(UserInterface* parent);

    /// From here on opened files go into the list of recent files. The editor asks for it;
    /// a batch run leaves the user's list alone. REQUIRES: `startUp` has succeeded.
    void keepRecentFiles();

    /// REQUIRES: `startUp` has succeeded.
    [[nodiscard]] DocumentContext& context();
    /// What is done to the open document as a whole. Valid as long as the application.
    [[nodiscard]] DocumentService& documents();
    [[nodiscard]] ConversionStore& conversions();
    [[nodiscard]] MeasurementNames& measurementNames();
    /// The one stream that can be in memory, and what its load needs of other folders.
    [[nodiscard]] PcmFormat& pcmFormat();
    [[nodiscard]] const PcmSteps& pcmSteps();
    /// The editor asks by a dialog of its own how new measurements tell of their places. May be
    /// given before the start.
    void setDefinitionModeStep(
        std::function<std::optional<bool>(UserInterface&, bool wordFrame)> choose);

    /// What the dialog of the editions gives on OK: see `editVersionOptions`. A failure may
    /// leave the open document half converted.
    bool changeVersions(UserInterface* parent, const VersionOptions& options,
                        IoStatus* failure = nullptr);

    [[nodiscard]] const std::string& supportFolder() const;
    /// "kavu.hlp" beside the program.
    [[nodiscard]] const std::string& helpPath() const;
    /// The text of "welcome.txt", looked for in the support folder of all users and then
    /// beside the program; empty if there is none that is not blank.
    [[nodiscard]] std::string welcomeText() const;

  private:
    struct Parts;
    void installSteps();
    void installPcmSteps();

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
