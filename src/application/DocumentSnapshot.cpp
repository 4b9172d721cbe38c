#include "application/DocumentSnapshot.h"

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

#include <vector>

namespace kavu {

namespace {

constexpr const char* kUnnamed = "Untitled.tma";

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

std::string buildDocumentIn(Application& from, Application& to, UserInterface* parent,
                            const std::string& name, const std::string& title) {
    auto& other = to.context();
    if (const auto status = copyDocument(from, to); !status.ok()) {
        reportUnableToRead(parent, status);
        return {};
    }
    other.history.markOpened();
    auto path = other.store.pathOf(name);
    if (!saveDocumentTo(other, nullptr, path)) {
        showBox(parent, "The document could not be built.", title);
        return {};
    }
    to.documents().discard(nullptr);
    return path;
}

DocumentSnapshot::DocumentSnapshot(Application& application, UserInterface* parent)
    : application_(application), parent_(parent) {}

DocumentSnapshot::~DocumentSnapshot() = default;

bool DocumentSnapshot::make(const std::string& title) {
    const auto& document = application_.context().document;
    const bool isSaved = !document.changed && !document.created && !document.path.empty() &&
                         application_.documents().diskState() == DocumentService::DiskState::Same;
    if (!isSaved) {
        return build(title);
    }
    path_ = document.path;
    return true;
}

bool DocumentSnapshot::build(const std::string& title) {
    trial_ = std::make_unique<TrialReading>(application_, parent_);
    if (!trial_->start()) {
        showBox(parent_, "There is no room for a second copy of the document.", title);
        return false;
    }
    // The file names itself in a command.
    const auto& own = application_.context().document.path;
    path_ = buildDocumentIn(application_, trial_->application(), parent_,
                            own.empty() ? kUnnamed : fileNameOf(own), title);
    return !path_.empty();
}

}  // namespace kavu
