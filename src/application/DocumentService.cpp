#include "application/DocumentService.h"

#include "application/Application.h"
#include "application/Recovery.h"
#include "application/StoreFacts.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/OpenDocument.h"
#include "core/files/FileIo.h"
#include "core/files/UserFile.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "groups/DocumentTree.h"
#include "groups/Migration.h"
#include "pcm/PcmFormat.h"

#include <string_view>
#include <vector>

namespace kavu {

namespace {

constexpr std::size_t kTail = 65536;

/// What tells that a file was not written to its end; empty if nothing does.
std::string signOfLoss(const std::string& path) {
    ByteSource file;
    if (const auto status = file.open(path); !status.ok()) {
        return "cannot be read (" + status.reason() + ")";
    }
    if (file.size() == 0) {
        return "is empty";
    }
    if (!UserFile::killedOwnerOf(path).empty()) {
        return "was left cut short by a run that was killed";
    }
    file.seek(file.size() > kTail ? file.size() - kTail : 0);
    std::string tail;
    for (auto window = file.window(); !window.empty(); window = file.window()) {
        tail += window;
        file.take(window.size());
    }
    // What recorders fill the space behind the last command with.
    const auto last = tail.find_last_not_of(std::string_view("\0\t\n\v\f\r \x1A", 8));
    return last != std::string::npos && tail[last] != ';' ? "ends within a command" : std::string();
}

/// The document in memory may be the only whole one.
bool wantsReopened(UserInterface* ui, const std::string& path) {
    const auto sign = signOfLoss(path);
    return sign.empty() ||
           showBox(
               ui,
               formatPrintf("The file '%s' %s.\n\nReopen it all the same, and lose the document "
                            "that is open here?",
                            path, sign),
               "Reopen File", Icon::Warning, Buttons::YesNo, Button::No) == Button::Yes;
}

}  // namespace

DocumentService::DocumentService(Application& application) : application_(application) {}

void DocumentService::rememberDisk() {
    const auto& document = application_.context().document;
    watched_ = document.open ? document.path : std::string();
    stamp_ = watched_.empty() ? std::string() : fileStamp(watched_);
}

void DocumentService::documentChanged(const DocumentChange& change) {
    switch (change.kind) {
        case DocumentChange::Opened:
        case DocumentChange::Saved:
        case DocumentChange::Closed:
            rememberDisk();
            break;
        case DocumentChange::CutShort:
            // That was us, and no other program.
            if (change.path == watched_) {
                stamp_ = fileStamp(watched_);
            }
            break;
        case DocumentChange::Edited:
        case DocumentChange::TakenBack:
        case DocumentChange::Undone:
        case DocumentChange::Redone:
            break;
    }
}

bool DocumentService::create(UserInterface* ui) {
    LoadOptions options;
    options.create = true;
    options.makeTemplate = true;
    return loadDocument(application_.context(), ui, {}, options);
}

bool DocumentService::open(UserInterface* ui) {
    return openTmatsFileCommand(application_.context(), ui);
}

bool DocumentService::openNamed(UserInterface* ui, const std::string& name) {
    return openFromName(application_.context(), ui, name);
}

bool DocumentService::save(UserInterface* ui) {
    auto& context = application_.context();
    if (const auto state = diskState(); state == DiskState::Changed) {
        switch (askAboutDisk(ui, state, true)) {
            case DiskChoice::Keep:
                break;
            case DiskChoice::Reopen:
                return reopen(ui);
            case DiskChoice::SaveElsewhere:
                return saveAs(ui);
            case DiskChoice::None:
                return false;
        }
    }
    return saveDocument(context, ui);
}

bool DocumentService::saveAs(UserInterface* ui) {
    return saveDocumentAs(application_.context(), ui);
}

bool DocumentService::saveTo(UserInterface* ui, const std::string& path) {
    auto& context = application_.context();
    return context.document.open && saveDocumentTo(context, ui, path);
}

bool DocumentService::close(UserInterface* ui) {
    auto& context = application_.context();
    return !context.document.open || closeDocument(context, ui) == CloseResult::Closed;
}

void DocumentService::discard(UserInterface* ui) {
    auto& context = application_.context();
    if (context.document.open) {
        dropDocument(context, ui);
    }
    rememberDisk();
}

DocumentService::DiskState DocumentService::diskState() const {
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

DocumentService::DiskChoice DocumentService::askAboutDisk(UserInterface* ui, DiskState state,
                                                          bool saving) {
    if (ui == nullptr) {
        return DiskChoice::None;
    }
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
    const int choice = ui->chooseFromList(title, choices);
    if (missing && choice == 1) {
        return DiskChoice::SaveElsewhere;
    }
    return choice < 0 ? DiskChoice::None : static_cast<DiskChoice>(choice);
}

void DocumentService::checkDisk(UserInterface* ui) {
    const auto state = diskState();
    if (state == DiskState::Same) {
        return;
    }
    // Whatever the answer is, there is no second question for the same change.
    stamp_ = fileStamp(watched_);
    switch (askAboutDisk(ui, state, false)) {
        case DiskChoice::Reopen:
            reopen(ui);
            break;
        case DiskChoice::SaveElsewhere:
            saveAs(ui);
            break;
        case DiskChoice::Keep:
        case DiskChoice::None:
            // The file is no longer what is open here.
            application_.context().history.markCorrected();
            application_.context().history.tell({DocumentChange::Edited, {}, {}});
            break;
    }
}

bool DocumentService::reopen(UserInterface* ui) {
    auto& context = application_.context();
    const auto path = watched_;
    if (!wantsReopened(ui, path)) {
        // The file is no longer what is open here.
        context.history.markCorrected();
        context.history.tell({DocumentChange::Edited, {}, {}});
        return false;
    }
    // What was changed in it has been given up.
    dropDocument(context, ui);
    return loadDocument(context, ui, path);
}

bool DocumentService::recover(UserInterface* ui, const std::string& folder) {
    if (ui == nullptr) {
        return false;
    }
    const auto facts = describeStore(folder);
    if (facts.isIncomplete() &&
        showBox(ui, incompleteText(folder, facts) + "\n\nDo you want what was read of it?",
                "Recover Working Store", Icon::Warning, Buttons::YesNo,
                Button::No) != Button::Yes) {
        return false;
    }
    const auto& context = application_.context();
    // Neither the open document nor the recovered one is a file of this one: both are asked about
    // as any other.
    auto prompt = saveTmatsPrompt(context.document, context.settings,
                                  "Save Recovered TMATS File As", proposedName(facts));
    prompt.own.clear();
    const auto choice = ui->chooseFile(prompt);
    if (!choice || choice->path.empty()) {
        return false;
    }
    // The files of the crashed run go through this run's own store.
    if (application_.context().document.open && !close(ui)) {
        return false;
    }
    return recoverStore(application_, ui, folder, choice->path, facts.isIncomplete()) &&
           openNamed(ui, choice->path);
}

bool DocumentService::setVersions(UserInterface* ui, const VersionOptions& options) {
    auto& context = application_.context();
    IoStatus failure;
    const bool changed = application_.changeVersions(ui, options, &failure);
    if (!failure.ok() && context.document.open) {
        // The migration could not be undone: the document is abandoned.
        discard(ui);
    }
    return changed && failure.ok();
}

bool DocumentService::undo(UserInterface* ui) {
    return allowsHistory() && application_.context().history.undo(ui);
}

bool DocumentService::redo(UserInterface* ui) {
    return allowsHistory() && application_.context().history.redo(ui);
}

/// A stream in memory would overwrite what an undo restores in its files.
bool DocumentService::allowsHistory() const {
    return application_.context().document.open && !application_.pcmFormat().loaded();
}

DocumentFacts DocumentService::facts() const {
    auto& context = application_.context();
    auto facts = factsOf(
        context, context.document.open ? readDocumentTree(context, nullptr) : DocumentTree{});
    updateHistory(facts);
    return facts;
}

void DocumentService::updateHistory(DocumentFacts& facts) const {
    const auto& history = application_.context().history;
    facts.canUndo = allowsHistory() && history.canUndo();
    facts.canRedo = allowsHistory() && history.canRedo();
    facts.undoName = history.undoName();
    facts.redoName = history.redoName();
}

}  // namespace kavu
