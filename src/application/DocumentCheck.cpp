#include "application/DocumentCheck.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/TrialReading.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/files/FileIo.h"
#include "core/talk/FileReports.h"
#include "core/text/Text.h"

namespace kavu {

namespace {

constexpr const char* kScratchFile = "CHECKED.TMA";
constexpr const char* kSource = "Check";

/// Copies the files of the document into the other application's store, where they are a document
/// of the same edition that can be saved.
IoStatus copyDocument(Application& from, Application& to) {
    const auto& store = from.context().store;
    auto status = from.conversions().writeOut();
    std::vector<FolderEntry> entries;
    if (status.ok()) {
        status = listFolder(store.folder(), entries);
    }
    auto& other = to.context();
    const LoadScope load(other.files);
    for (const auto& entry : entries) {
        if (status.ok() && !entry.isFolder && entry.name.starts_with("[kavu]")) {
            status = other.files.copyIn(store.pathOf(entry.name), entry.name);
        }
    }
    other.document.kind = DocumentKind::TmatsFile;
    other.document.version = from.context().document.version;
    return status;
}

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
        showBox(parent, "There is no room for a second copy of the document.", "Check Document");
        return std::nullopt;
    }
    auto& other = trial.application().context();
    if (const auto status = copyDocument(application, trial.application()); !status.ok()) {
        reportUnableToRead(parent, status);
        return std::nullopt;
    }
    other.history.markOpened();
    const auto path = other.store.pathOf(kScratchFile);
    if (!saveDocumentTo(other, nullptr, path)) {
        showBox(parent, "The document could not be built for its check.", "Check Document");
        return std::nullopt;
    }
    trial.application().documents().discard(nullptr);
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
