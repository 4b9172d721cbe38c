#include "application/DocumentCheck.h"

#include "application/Application.h"
#include "application/DocumentSnapshot.h"
#include "application/TrialReading.h"
#include "core/TmatsDocument.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr const char* kScratchFile = "CHECKED.TMA";
constexpr const char* kSource = "Check";
constexpr const char* kCheckTitle = "Check Document";

}  // namespace

std::optional<std::vector<Finding>> checkDocument(Application& application, UserInterface* parent) {
    auto& document = application.context().document;
    if (!document.open) {
        return std::nullopt;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel, false);
    setProgressText(parent, "Checking the document");
    TrialReading trial(application, parent);
    if (!trial.start()) {
        showBox(parent, "There is no room for a second copy of the document.", kCheckTitle);
        return std::nullopt;
    }
    const auto path =
        buildDocumentIn(application, trial.application(), parent, kScratchFile, kCheckTitle);
    if (path.empty()) {
        return std::nullopt;
    }
    if (!trial.read(path, document.version, kSource) && trial.collector().isCancelled()) {
        return std::nullopt;
    }
    auto findings = trial.collector().findings();
    for (auto& finding : findings) {
        finding.text = replaceAll(finding.text, path, document.path);
    }
    return findings;
}

}  // namespace kavu
