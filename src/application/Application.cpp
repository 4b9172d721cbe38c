#include "application/Application.h"

#include "application/DocumentService.h"
#include "bus/definition/BusFiles.h"
#include "bus/packet/PacketGroup.h"
#include "conversion/ConversionLoader.h"
#include "conversion/ConversionStore.h"
#include "conversion/ConversionWriter.h"
#include "conversion/DefinitionEdit.h"
#include "core/document/ConversionRuns.h"
#include "core/document/DocumentParts.h"
#include "core/document/DocumentVersion.h"
#include "core/document/KeyValueStore.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/RecentFiles.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/LinkValidation.h"
#include "groups/MeasurementNames.h"
#include "groups/Migration.h"
#include "groups/SourceEdit.h"
#include "mdb/operations/DatabaseWork.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/SampleRateCheck.h"
#include "pcm/write/WordFrameConversion.h"
#include "reports/ReportDesk.h"

#include <optional>
#include <utility>

namespace kavu {

namespace {

constexpr std::uint64_t kLongestWelcome = 64 * 1024;
constexpr const char* kVerifying = "Verifying no KAVU temporary files exist";

/// The name of the stream that the user chooses, or nothing.
std::string selectStream(DocumentContext& context, UserInterface* parent) {
    std::vector<std::string> links;
    if (parent == nullptr || !gatherDataLinks(context, parent, links) || links.empty()) {
        return {};
    }
    const int choice = parent->chooseFromList("Select Data Link", links);
    return choice < 0 ? std::string() : links.at(static_cast<std::size_t>(choice));
}

}  // namespace

/// Everything the application owns, in the order in which it is made.
struct Application::Parts : DocumentParts, private DocumentListener {
    Parts(const Environment& environment, const Clock& clock, RandomSource& random,
          const std::string& settingsPath)
        : DocumentParts(environment, clock, random, settingsPath),
          names(store),
          conversions(context),
          measurements(context),
          pcmFormat(context),
          reportDesk(context) {
        history.addListener(*this);
#ifndef NDEBUG
        files.demandScopes(true);
#endif
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() override {
        history.removeListener(*this);
    }

    KeyValueStore names;
    ConversionRuns conversionRuns;
    ConversionStore conversions;
    MeasurementNames measurements;
    PcmFormat pcmFormat;
    PcmSteps pcmSteps;
    ReportDesk reportDesk;
    bool keepsRecentFiles = false;

  private:
    void documentChanged(const DocumentChange& change) override {
        switch (change.kind) {
            case DocumentChange::Undone:
            case DocumentChange::Redone:
                // What is in memory of a stream may no longer be what is in its files.
                pcmFormat.closeFormat();
                break;
            case DocumentChange::Closed:
                names.closeStore(nullptr);
                rememberPath(change.path);
                break;
            case DocumentChange::Opened:
                rememberPath(change.path);
                break;
            case DocumentChange::Edited:
            case DocumentChange::TakenBack:
            case DocumentChange::Saved:
            case DocumentChange::CutShort:
                break;
        }
    }
    void rememberPath(const std::string& path) {
        if (keepsRecentFiles) {
            rememberFile(settings, path);
        }
    }
};

Application::Application(Environment environment, const Clock& clock, RandomSource& random,
                         std::string settingsPath)
    : environment_(std::move(environment)),
      clock_(clock),
      random_(random),
      settingsPath_(std::move(settingsPath)),
      documents_(std::make_unique<DocumentService>(*this)) {}

Application::~Application() {
    if (parts_ != nullptr) {
        parts_->history.removeListener(*documents_);
    }
}

std::unique_ptr<Application> Application::makeAnother() const {
    return std::make_unique<Application>(environment_, clock_, random_, settingsPath_);
}

bool Application::startUp(UserInterface* parent, const std::function<void()>& ready) {
    helpPath_ = environment_.programFolder + "/kavu.hlp";
    supportFolder_ =
        supportFolderPath(environment_, kSupportFolderName, environment_.userName, true);
    // With a settings file of its own a run needs no support folder, and makes none.
    if (settingsPath_.empty()) {
        settingsPath_ = supportFolder_ + "kavu.ini";
        if (const auto status = prepareSupportFolder(supportFolder_);
            !status.ok() && parent != nullptr) {
            parent->note(
                formatPrintf("Settings cannot be stored: '%s': %s. They are held in "
                             "memory for this run.",
                             status.path(), status.reason()));
        }
    }
    if (parts_ == nullptr) {
        parts_ = std::make_unique<Parts>(environment_, clock_, random_, settingsPath_);
        installSteps();
        parts_->history.addListener(*documents_);
    }
    auto& settings = parts_->settings;
    parts_->measurements.setChecking(settings.get(setting::kCheckDuplicates), false);
    resetVersionFromSettings(parts_->context);
    if (settings.get(setting::kDatabasePath).empty()) {
        settings.set(setting::kDatabasePath, defaultDatabasePath());
    }
    setStatusText(parent, kVerifying);
    if (ready) {
        ready();
    }
    if (++starts_ == 1) {
        if (!parts_->store.activate(parent, kApplicationName, random_)) {
            starts_ = 0;
            return false;
        }
        parts_->store.verifyNoDocumentFiles(parent);
    }
    setStatusText(parent, {});
    return true;
}

bool Application::shutDown(UserInterface* parent) {
    if (parts_ == nullptr || starts_ == 0) {
        return true;
    }
    // Without a parent to be asked a layout that has changed stays as it is on the disk.
    if (!documents_->close(parent) || !parts_->reportDesk.close(parent)) {
        return false;
    }
    // The choices of this run, including those of the menu, are kept when it ends.
    auto& settings = parts_->settings;
    for (const auto& key : {setting::kDatabaseAddsRoot, setting::kDatabaseAddsChildren}) {
        const int chosen = settings.get(key);
        settings.endOverride(TextKey{key.name});
        if (chosen != settings.get(key)) {
            settings.set(key, chosen);
        }
    }
    parts_->names.closeStore(nullptr);
    parts_->store.deactivate(parent);
    --starts_;
    return true;
}

void Application::installSteps() {
    auto& parts = *parts_;
    auto& steps = parts.steps;
    steps.reopenDocument = [this](UserInterface* parent) { return documents_->reopen(parent); };
    steps.gatherMeasurementNames = [&parts](UserInterface* parent) {
        // For each document the settings decide again whether names are checked.
        parts.measurements.setChecking(parts.settings.get(setting::kCheckDuplicates), false);
        return parts.measurements.checkForDuplicates(parent);
    };
    steps.noteConversions = [&parts](ConversionRuns&& runs) {
        parts.conversionRuns = std::move(runs);
    };
    steps.loadConversions = [&parts](UserInterface* parent, int edition) {
        return loadConversionGroup(parts.context, parts.names, parts.conversions, parent, edition,
                                   std::exchange(parts.conversionRuns, {}));
    };
    steps.saveConversions = [&parts](UserInterface* parent, FileWriter& writer) {
        return saveConversionGroup(parts.context, parts.conversions, parent, writer);
    };
    steps.detectVersions = [&parts](UserInterface* parent, int& input) {
        IoStatus failure;
        const int target = detectVersions(parts.context, parent, input, &failure);
        return failure.ok() ? target : 0;
    };
    steps.migrate = [&parts](UserInterface* parent, int input, int target) {
        IoStatus failure;
        const auto convertStream = [&parts, input](UserInterface* window, int pIndex) {
            return migrateStream(parts.pcmFormat, window, parts.pcmSteps, pIndex, input);
        };
        const bool changed = migrateDocument(parts.context, parts.conversions, parent, input,
                                             target, convertStream, &failure);
        return failure.ok() ? std::optional(changed) : std::nullopt;
    };
    steps.validateDataLinks = [&parts](UserInterface* parent) {
        return validateDataLinks(parts.context, parent);
    };
    steps.createStream = [&parts](UserInterface* parent, const std::string& source) {
        return createStream(parts.context, parent, source);
    };
    installPcmSteps();
}

void Application::installPcmSteps() {
    auto& parts = *parts_;
    parts.steps.releasePcmFormat = [&parts] { parts.pcmFormat.closeFormat(); };
    parts.pcmSteps.conversions = &parts.conversions;
    parts.pcmSteps.chooseDefinitionMode = definitionModeStep_;
    parts.pcmSteps.loadBusDefinitions = [&parts](UserInterface* parent, PcmFormat& format) {
        return loadBusGroup(parts.context, parent, format.streamName.str());
    };
    parts.pcmSteps.loadPacketDefinitions = [&parts](UserInterface* parent, PcmFormat& format) {
        return bringInPackets(parts.context, parent, format.streamName.str());
    };
    parts.pcmSteps.selectStream = [&parts](UserInterface* parent) {
        return selectStream(parts.context, parent);
    };
    parts.conversions.defaultCommentStep = [&parts](UserInterface* parent,
                                                    const std::string& name) {
        if (auto comment = defaultComment(readCommentStrings(parts.context)); !comment.empty()) {
            (void)parts.conversions.writeEuComment(parent, name, std::move(comment), false);
        }
    };
    parts.conversions.sampleRateStep = [&parts](std::string_view measurement) {
        return calculateSampleRate(parts.pcmFormat, measurement);
    };
}

bool Application::changeVersions(UserInterface* parent, const VersionOptions& options,
                                 IoStatus* failure) {
    auto& parts = *parts_;
    const auto convertStream = [&parts, input = parts.document.version](UserInterface* window,
                                                                        int pIndex) {
        return migrateStream(parts.pcmFormat, window, parts.pcmSteps, pIndex, input);
    };
    const bool changed = editVersionOptions(parts.context, parts.conversions, parent, options,
                                            convertStream, failure);
    if (changed && parts.document.open) {
        // A stream that was read and stored may have other measurements now.
        parts.measurements.checkForDuplicates(nullptr);
    }
    return changed;
}

void Application::checkDatabase(UserInterface* parent) {
    auto& parts = *parts_;
    if (!parts.settings.get(setting::kDatabaseEnabled)) {
        return;
    }
    const auto database = settingsDatabase(parts.context);
    if (database->path() != defaultDatabasePath() || fileExists(database->path())) {
        (void)validateDatabase(parts.context, parent, *database, parts.document.version,
                               OnFailure::SwitchOff);
    }
}

void Application::keepRecentFiles() {
    parts_->keepsRecentFiles = true;
}

DocumentContext& Application::context() {
    return parts_->context;
}
DocumentService& Application::documents() {
    return *documents_;
}
ConversionStore& Application::conversions() {
    return parts_->conversions;
}
MeasurementNames& Application::measurementNames() {
    return parts_->measurements;
}
PcmFormat& Application::pcmFormat() {
    return parts_->pcmFormat;
}
const PcmSteps& Application::pcmSteps() {
    return parts_->pcmSteps;
}
ReportDesk& Application::reportDesk() {
    return parts_->reportDesk;
}
void Application::setDefinitionModeStep(
    std::function<std::optional<bool>(UserInterface&, bool wordFrame)> choose) {
    definitionModeStep_ = std::move(choose);
    if (parts_ != nullptr) {
        parts_->pcmSteps.chooseDefinitionMode = definitionModeStep_;
    }
}
const std::string& Application::supportFolder() const {
    return supportFolder_;
}
const std::string& Application::helpPath() const {
    return helpPath_;
}

std::string Application::welcomeText() const {
    const auto shared = supportFolderPath(environment_, kSupportFolderName, {}, true);
    for (const auto& folder : {shared, environment_.programFolder + "/"}) {
        std::string text;
        const auto path = folder + "welcome.txt";
        if (!isPlainFile(path) || fileSize(path) > kLongestWelcome ||
            !readWholeFile(path, text).ok()) {
            continue;
        }
        return trim(text).empty() ? std::string() : text;
    }
    return {};
}

}  // namespace kavu
