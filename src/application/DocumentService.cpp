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
#include "core/talk/ProfileSettings.h"
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
        return "was left cut short by a save that was not completed";
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

/// The file is no longer what is open here.
void keepUnlikeDisk(DocumentContext& context) {
    context.history.markCorrected();
    context.history.tell({DocumentChange::Edited, {}, {}});
}

enum class DiskChoice { Keep, Reopen, SaveElsewhere };

DiskChoice askAboutDisk(UserInterface* ui, DiskState state, const std::string& path) {
    const bool missing = state == DiskState::Missing;
    std::vector<DiskChoice> meanings = {DiskChoice::Keep};
    ChoicePrompt prompt;
    prompt.title = missing ? "File Not There" : "File Changed By Another Program";
    prompt.text = missing ? formatPrintf("The file '%s' is not there any more.", path)
                          : formatPrintf(
                                "Another program has changed the file '%s' since it was "
                                "opened or saved here.",
                                path);
    prompt.choices = {"&Keep the document as it is here"};
    prompt.defaultChoice = 0;
    if (!missing) {
        meanings.push_back(DiskChoice::Reopen);
        prompt.choices.emplace_back("&Reopen the file, and lose what was changed here");
    }
    meanings.push_back(DiskChoice::SaveElsewhere);
    prompt.choices.emplace_back("&Save the document under another name");
    const int choice = ui == nullptr ? -1 : ui->choose(prompt);
    return choice < 0 ? DiskChoice::Keep : meanings[static_cast<std::size_t>(choice)];
}

}  // namespace

DocumentService::DocumentService(Application& application) : application_(application) {}

void DocumentService::documentChanged(const DocumentChange& change) {
    switch (change.kind) {
        case DocumentChange::Opened:
        case DocumentChange::Saved:
        case DocumentChange::Closed:
        case DocumentChange::CutShort:
            askedStamp_.clear();
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
    return saveDocument(application_.context(), ui);
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
}

DocumentService::DiskState DocumentService::diskState() const {
    return kavu::diskState(application_.context().document);
}

void DocumentService::checkDisk(UserInterface* ui) {
    const auto state = diskState();
    const auto& path = application_.context().document.path;
    const auto stamp = "now " + fileStamp(path);
    if (state == DiskState::Same || stamp == askedStamp_) {
        return;
    }
    // Whatever the answer is, there is no second question for the same change.
    askedStamp_ = stamp;
    switch (askAboutDisk(ui, state, path)) {
        case DiskChoice::Reopen:
            reopen(ui);
            break;
        case DiskChoice::SaveElsewhere:
            saveAs(ui);
            break;
        case DiskChoice::Keep:
            keepUnlikeDisk(application_.context());
            break;
    }
}

bool DocumentService::reopen(UserInterface* ui) {
    auto& context = application_.context();
    const auto path = context.document.path;
    if (!wantsReopened(ui, path)) {
        keepUnlikeDisk(context);
        return false;
    }
    // What was changed in it has been given up.
    dropDocument(context, ui);
    return loadDocument(context, ui, path);
}

bool DocumentService::readAs(UserInterface* ui, int edition) {
    auto& context = application_.context();
    const auto path = context.document.path;
    if (path.empty() || !close(ui)) {
        return false;
    }
    context.settings.overrideForThisRun(setting::kInputEdition, std::to_string(edition));
    const bool opened = loadDocument(context, ui, path);
    context.settings.endOverride(setting::kInputEdition);
    return opened;
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
