#include "app/shell/DocumentActions.h"

#include "application/Application.h"
#include "application/Recovery.h"
#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "groups/Migration.h"

#include <vector>

namespace kavu {

DocumentActions::DocumentActions(Application& application, UserInterface& ui)
    : application_(application), ui_(ui) {}

void DocumentActions::rememberDisk() {
    const auto& document = application_.context().document;
    watched_ = document.open ? document.path : std::string();
    stamp_ = watched_.empty() ? std::string() : fileStamp(watched_);
}

bool DocumentActions::settled(bool good) {
    if (good) {
        rememberDisk();
    }
    return good;
}

bool DocumentActions::create() {
    LoadOptions options;
    options.create = true;
    options.makeTemplate = true;
    return settled(loadDocument(application_.context(), &ui_, {}, options));
}

bool DocumentActions::open() {
    return settled(openTmatsFileCommand(application_.context(), &ui_));
}

bool DocumentActions::openNamed(const std::string& name) {
    return settled(openFromName(application_.context(), &ui_, name));
}

bool DocumentActions::save() {
    auto& context = application_.context();
    if (const auto state = diskState(); state == DiskState::Changed) {
        switch (askAboutDisk(state, true)) {
            case DiskChoice::Keep:
                break;
            case DiskChoice::Reopen:
                return reopen();
            case DiskChoice::SaveElsewhere:
                return saveAs();
            case DiskChoice::None:
                return false;
        }
    }
    return settled(saveDocument(context, &ui_));
}

bool DocumentActions::saveAs() {
    return settled(saveDocumentAs(application_.context(), &ui_));
}

bool DocumentActions::close() {
    const bool closed = closeDocument(application_.context(), &ui_) == CloseResult::Closed;
    rememberDisk();
    return closed;
}

DocumentActions::DiskState DocumentActions::diskState() const {
    const auto& document = application_.context().document;
    if (!document.open || watched_.empty() || document.path != watched_) {
        return DiskState::Same;
    }
    const auto now = fileStamp(watched_);
    if (now == stamp_) {
        return DiskState::Same;
    }
    PathKind kind = PathKind::Missing;
    const bool known = probePath(watched_, kind).ok();
    return known && kind == PathKind::Missing ? DiskState::Missing : DiskState::Changed;
}

DocumentActions::DiskChoice DocumentActions::askAboutDisk(DiskState state, bool saving) {
    const auto name = fileNameOf(watched_);
    const bool missing = state == DiskState::Missing;
    const std::string title = missing ? formatPrintf("'%s' is not there any more", name)
                                      : formatPrintf("Another program has changed '%s'", name);
    std::vector<std::string> choices = {saving ? "Save, and overwrite what the other has written"
                                               : "Keep the document as it is here"};
    if (missing) {
        choices.emplace_back("Save the document under another name");
    } else {
        choices.emplace_back("Reopen the file, and lose what was changed here");
        choices.emplace_back("Save the document under another name");
    }
    const int choice = ui_.chooseFromList(title, choices);
    if (missing && choice == 1) {
        return DiskChoice::SaveElsewhere;
    }
    return choice < 0 ? DiskChoice::None : static_cast<DiskChoice>(choice);
}

void DocumentActions::checkDisk() {
    const auto state = diskState();
    if (state == DiskState::Same) {
        return;
    }
    // Whatever the answer is, the same change is not asked about again.
    stamp_ = fileStamp(watched_);
    switch (askAboutDisk(state, false)) {
        case DiskChoice::Reopen:
            reopen();
            break;
        case DiskChoice::SaveElsewhere:
            saveAs();
            break;
        case DiskChoice::Keep:
        case DiskChoice::None:
            // The file is not what is open here any more.
            application_.context().document.changed = true;
            if (const auto& update = application_.context().steps.updateDocumentMenus) {
                update();
            }
            break;
    }
}

bool DocumentActions::reopen() {
    auto& context = application_.context();
    const auto path = watched_;
    context.document.changed = false;
    return settled(loadDocument(context, &ui_, path));
}

bool DocumentActions::recover(const std::string& folder) {
    FilePrompt prompt;
    prompt.title = "Save Recovered TMATS File As";
    prompt.filters = {{"TMATS Files", "*.tma;*.tmt"}, {"All Files", "*"}};
    prompt.forSaving = true;
    const auto choice = ui_.chooseFile(prompt);
    if (!choice || choice->path.empty()) {
        return false;
    }
    // The files of the crashed run go through this run's own store.
    if (application_.context().document.open && !close()) {
        return false;
    }
    return recoverStore(application_, &ui_, folder, choice->path) && openNamed(choice->path);
}

bool DocumentActions::setVersions(const VersionOptions& options) {
    auto& context = application_.context();
    IoStatus failure;
    const bool changed = application_.changeVersions(&ui_, options, &failure);
    if (!failure.ok() && context.document.open) {
        // A migration that ended in the middle has no way back: the document is given up.
        context.document.changed = false;
        close();
    }
    return changed;
}

}  // namespace kavu
