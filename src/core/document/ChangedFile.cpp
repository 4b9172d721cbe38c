#include "core/document/ChangedFile.h"

#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/QuestionNames.h"
#include "core/talk/SettingKeys.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

namespace kavu {

namespace {

/// Where what the other program has written would be found after an overwrite.
std::string fateOf(const DocumentContext& context, const std::string& path) {
    const auto backup = backupName(path);
    return context.settings.get(setting::kCreateBackup) && backup != path
               ? formatPrintf("what it has written is then only in the backup '%s'", backup)
               : std::string("what it has written is then lost");
}

}  // namespace

DiskState diskState(const TmatsDocument& document) {
    if (!document.open || document.path.empty() || fileStamp(document.path) == document.diskStamp) {
        return DiskState::Same;
    }
    PathKind kind = PathKind::Missing;
    const bool known = probePath(document.path, kind).ok();
    return known && kind == PathKind::Missing ? DiskState::Missing : DiskState::Changed;
}

bool isChangedByAnother(const TmatsDocument& document, const std::string& path) {
    bool same = absolutePath(path) == document.path;
    // Two names of one file; of none if it cannot be told.
    (void)(same || probeSameFile(path, document.path, same).ok());
    return same && diskState(document) == DiskState::Changed;
}

ChangedFileChoice askAboutChangedFile(const DocumentContext& context, UserInterface* parent,
                                      const std::string& path) {
    if (parent == nullptr) {
        return ChangedFileChoice::Cancel;
    }
    using enum ChangedFileChoice;
    std::vector<ChangedFileChoice> meanings = {Overwrite, SaveElsewhere};
    ChoicePrompt prompt;
    prompt.name = question::kChangedFile;
    prompt.title = "File Changed By Another Program";
    prompt.text = formatPrintf(
        "Another program has changed the file '%s' since it was opened or saved here.\n\nIf you "
        "overwrite it, %s.",
        path, fateOf(context, path));
    prompt.choices = {"&Overwrite the file", "&Save the document under another name"};
    if (context.steps.reopenDocument) {
        meanings.push_back(Reopen);
        prompt.choices.emplace_back("&Reopen the file, and lose what was changed here");
    }
    const int choice = parent->choose(prompt);
    return choice < 0 ? Cancel : meanings[static_cast<std::size_t>(choice)];
}

}  // namespace kavu
