// What the status bar says of the entries of the menus.
#include "app/shell/Commands.h"
#include "core/talk/Messages.h"
#include "sdk/TranslatorModule.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

using enum CommandId;

/// Prompts that have no text in the table of messages.
struct OwnPrompt {
    CommandId id;
    std::string_view text;
};
constexpr auto kOwnPrompts = std::to_array<OwnPrompt>({
    {Undo, "Take back what was done to the document last"},
    {Redo, "Do again what was undone last"},
    {AddRoot, "Add the root word of a measurement from the database automatically"},
    {DoNotAddRoot, "Do not add the root word of a measurement automatically"},
    {AddChildren, "Add the children of a measurement from the database automatically"},
    {DoNotAddChildren, "Do not add the children of a measurement automatically"},
    {AllowSameNames, "Let measurements of different streams have the same name"},
    {RefuseSameNames, "Report measurements of different streams that have the same name"},
    {MakeBackups, "Copy a TMATS file to a .bak file before it is overwritten"},
    {NoBackups, "Overwrite TMATS files without a backup"},
    {KeepComments, "Keep the COMMENT commands of files that are opened from now on"},
    {SaveInPlace, "Overwrite a file itself when it is saved, not by a complete new file"},
    {ExpandAll, "Expand all branches of the tree"},
    {ExpandBranch, "Expand the selected branch"},
    {ExpandChildren, "Expand the selected branch and all branches below it"},
    {CollapseAll, "Collapse all branches of the tree"},
    {CollapseBranch, "Collapse the selected branch"},
    {CollapseChildren, "Collapse the selected branch and all branches below it"},
    {ShowMessages, "Show what the opening, the streams and the last check have reported"},
    {CheckDocument, "Report what an opening of the document as it is now would report"},
    {AppearanceDesktop, "Use the palette of the desktop"},
    {AppearanceLight, "Use the light palette"},
    {AppearanceDark, "Use the dark palette"},
    {ImportXml, "Convert a TMATS XML file to a TMATS file, and open that"},
    {ExportXml, "Convert the document to a TMATS XML file"},
    {ConvertWyle, "Convert a TMATS file by the translator of Wyle"},
    {ConvertL3Com550, "Convert a TMATS file by the translator of L-3Com 550"},
    {ConvertL3ComVts, "Convert a TMATS file by the translator of L-3Com VTS"},
    {WyleDefaults, "Edit the defaults of the translator of Wyle"},
    {L3Com550Defaults, "Edit the defaults of the translator of L-3Com 550"},
    {L3ComVtsDefaults, "Edit the defaults of the translator of L-3Com VTS"},
    {TranslatorDefaults, "Edit the defaults of a translator, and the viewer of its log"},
    {HelpSelection, "Open the page of the manual about what is selected"},
});

}  // namespace

std::string_view menuPrompt(MenuId menu) {
    constexpr std::string_view kPrompts[] = {
        "Create, open, save and close TMATS files",
        "Edit the groups of the TMATS file",
        "Plots and reports",
        "The measurement database",
        "Choices that hold for all files",
        "The tree of the document, its messages, and how the windows look",
        "Help, and information about KAVU-9",
    };
    return kPrompts[static_cast<std::size_t>(menu)];
}

std::string commandPrompt(CommandId id) {
    if (const auto text = loadText(static_cast<int>(id))) {
        return std::string(*text);
    }
    const auto own = std::find_if(kOwnPrompts.begin(), kOwnPrompts.end(),
                                  [id](const OwnPrompt& row) { return row.id == id; });
    return own == kOwnPrompts.end() ? std::string() : std::string(own->text);
}

std::string promptWithoutEditor(CommandId id) {
    return commandRow(id).topic == "translators" ? std::string(kNoTranslator)
                                                 : commandPrompt(id) + std::string(kNotAvailable);
}

}  // namespace kavu
