#include "app/shell/Commands.h"

#include "core/talk/Messages.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

using enum CommandId;
using enum MenuId;

constexpr std::string_view kAddRoot = "'&Root Word' Of Measurements";
constexpr std::string_view kAddChildren = "'&Children' Of Measurements";
constexpr std::string_view kSameNames = "Same Measurement &Names";
constexpr std::string_view kBackups = "&Backup TMATS Files";
constexpr std::string_view kAppearance = "A&ppearance";

constexpr auto kCommands = std::to_array<CommandRow>({
    {.id = CreateNew,
     .menu = File,
     .submenu = {},
     .text = "&Create New TMATS File",
     .icon = "new",
     .keys = "Ctrl+N",
     .inToolBar = true,
     .builtIn = true,
     .operation = OperationId::Create},
    {.id = Open,
     .menu = File,
     .submenu = {},
     .text = "&Open TMATS File",
     .icon = "open",
     .keys = "Ctrl+O",
     .inToolBar = true,
     .builtIn = true,
     .operation = OperationId::Open,
     .topic = "opening"},
    {.id = Save,
     .menu = File,
     .submenu = {},
     .text = "&Save TMATS File",
     .icon = "save",
     .keys = "Ctrl+S",
     .separatorBefore = true,
     .inToolBar = true,
     .builtIn = true,
     .operation = OperationId::Save,
     .topic = "saving"},
    {.id = SaveAs,
     .menu = File,
     .submenu = {},
     .text = "Save TMATS File &As...",
     .icon = "save-as",
     .keys = "Ctrl+Shift+S",
     .builtIn = true,
     .operation = OperationId::SaveAs,
     .topic = "saving"},
    {.id = Close,
     .menu = File,
     .submenu = {},
     .text = "C&lose TMATS File",
     .icon = "close",
     .keys = "Ctrl+W",
     .builtIn = true,
     .operation = OperationId::Close},
    {.id = Exit,
     .menu = File,
     .submenu = {},
     .text = "E&xit",
     .icon = "exit",
     .keys = "Ctrl+Q",
     .separatorBefore = true,
     .builtIn = true},
    {.id = Undo,
     .menu = Edit,
     .submenu = {},
     .text = "&Undo",
     .icon = "undo",
     .keys = "Ctrl+Z",
     .builtIn = true,
     .operation = OperationId::Undo,
     .topic = "undo"},
    {.id = Redo,
     .menu = Edit,
     .submenu = {},
     .text = "R&edo",
     .icon = "redo",
     .keys = "Ctrl+Shift+Z",
     .builtIn = true,
     .operation = OperationId::Redo,
     .topic = "undo"},
    {.id = General,
     .menu = Edit,
     .submenu = {},
     .text = "&General Information",
     .icon = "general",
     .keys = "Ctrl+1",
     .separatorBefore = true,
     .inToolBar = true,
     .operation = OperationId::EditGeneral,
     .topic = "groups"},
    {.id = Transmission,
     .menu = Edit,
     .submenu = {},
     .text = "&Transmission Attributes",
     .icon = "rf",
     .keys = "Ctrl+2",
     .inToolBar = true,
     .operation = OperationId::EditTransmission,
     .topic = "groups"},
    {.id = Recorder,
     .menu = Edit,
     .submenu = {},
     .text = "&Recorder/Reproducer Attributes",
     .icon = "tape",
     .keys = "Ctrl+3",
     .inToolBar = true,
     .operation = OperationId::EditRecorder,
     .topic = "recorder"},
    {.id = Multiplex,
     .menu = Edit,
     .submenu = {},
     .text = "&Multiplexing/Modulation",
     .icon = "multiplex",
     .keys = "Ctrl+4",
     .inToolBar = true,
     .operation = OperationId::EditMultiplex,
     .topic = "groups"},
    {.id = Stream,
     .menu = Edit,
     .submenu = {},
     .text = "&Stream Format Information",
     .icon = "stream",
     .keys = "Ctrl+5",
     .inToolBar = true,
     .operation = OperationId::EditStream,
     .topic = "streams"},
    {.id = Conversion,
     .menu = Edit,
     .submenu = {},
     .text = "&Data Conversion Information",
     .icon = "conversion",
     .keys = "Ctrl+6",
     .inToolBar = true,
     .operation = OperationId::EditConversion,
     .topic = "conversions"},
    {.id = Hardware,
     .menu = Edit,
     .submenu = {},
     .text = "Airborne &Hardware Information",
     .icon = "hardware",
     .keys = "Ctrl+7",
     .operation = OperationId::EditHardware,
     .topic = "groups"},
    {.id = Vendor,
     .menu = Edit,
     .submenu = {},
     .text = "&Vendor Specific Information",
     .icon = "vendor",
     .keys = "Ctrl+8",
     .operation = OperationId::EditVendor,
     .topic = "groups"},
    {.id = Pam,
     .menu = Edit,
     .submenu = {},
     .text = "&PAM",
     .icon = "pam",
     .keys = "Ctrl+9",
     .operation = OperationId::EditPam,
     .topic = "groups"},
    {.id = Plots,
     .menu = Reports,
     .submenu = {},
     .text = "Display &Plots For Multiple Measurements",
     .icon = "plot",
     .keys = {},
     .operation = OperationId::ShowPlots,
     .topic = "reports"},
    {.id = CalibrationReports,
     .menu = Reports,
     .submenu = {},
     .text = "Print All &Calibration Reports",
     .icon = "print",
     .keys = {},
     .operation = OperationId::PrintCalibrations,
     .topic = "reports"},
    {.id = ReportOptions,
     .menu = Reports,
     .submenu = {},
     .text = "&Report Options",
     .icon = "settings",
     .keys = {},
     .separatorBefore = true,
     .topic = "reports"},
    {.id = EditDatabase,
     .menu = Database,
     .submenu = {},
     .text = "&Edit Measurement Database",
     .icon = "database",
     .keys = {}},
    {.id = DatabaseLocation,
     .menu = Database,
     .submenu = {},
     .text = "Change Measurement Database &Version/Location",
     .icon = {},
     .keys = {}},
    {.id = ImportDatabase,
     .menu = Database,
     .submenu = {},
     .text = "&Import External File Into KAVU Database",
     .icon = "import",
     .keys = {}},
    {.id = EnableDatabase,
     .menu = Database,
     .submenu = {},
     .text = "E&nable Measurement Database",
     .icon = {},
     .keys = {},
     .separatorBefore = true},
    {.id = DisableDatabase,
     .menu = Database,
     .submenu = {},
     .text = "&Disable Measurement Database",
     .icon = {},
     .keys = {}},
    {.id = AddRoot,
     .menu = Database,
     .submenu = kAddRoot,
     .text = "&Automatically Add 'Root Word'",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = DoNotAddRoot,
     .menu = Database,
     .submenu = kAddRoot,
     .text = "&Do Not Add",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = AddChildren,
     .menu = Database,
     .submenu = kAddChildren,
     .text = "&Automatically Add 'Children'",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = DoNotAddChildren,
     .menu = Database,
     .submenu = kAddChildren,
     .text = "&Do Not Add",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = SampleRateOptions,
     .menu = Options,
     .submenu = {},
     .text = "&Sample Rate Options",
     .icon = {},
     .keys = {},
     .builtIn = true},
    {.id = CommentOptions,
     .menu = Options,
     .submenu = {},
     .text = "&Comment Field Options",
     .icon = {},
     .keys = {}},
    {.id = Precision,
     .menu = Options,
     .submenu = {},
     .text = "&Floating Point Precision",
     .icon = {},
     .keys = {},
     .builtIn = true},
    {.id = UpdateOptions,
     .menu = Options,
     .submenu = {},
     .text = "&KAVU-Update Options",
     .icon = {},
     .keys = {},
     .builtIn = true},
    {.id = Versions,
     .menu = Options,
     .submenu = {},
     .text = "&IRIG TMATS File Version Numbers",
     .icon = {},
     .keys = {},
     .builtIn = true,
     .operation = OperationId::ChangeEdition,
     .topic = "editions"},
    {.id = AllowSameNames,
     .menu = Options,
     .submenu = kSameNames,
     .text = "&Allow the same measurement name in different streams",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = RefuseSameNames,
     .menu = Options,
     .submenu = kSameNames,
     .text = "&Do not allow the same measurement name in different streams",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = MakeBackups,
     .menu = Options,
     .submenu = kBackups,
     .text = "&Yes - Backup TMATS files",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = NoBackups,
     .menu = Options,
     .submenu = kBackups,
     .text = "&No - Do not create backup files",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = KeepComments,
     .menu = Options,
     .submenu = {},
     .text = "Keep the &comments of the file",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = SaveInPlace,
     .menu = Options,
     .submenu = {},
     .text = "&Write files in place",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true},
    {.id = ExpandAll,
     .menu = View,
     .submenu = {},
     .text = "&Expand All",
     .icon = "expand",
     .keys = "Ctrl+Alt+Down",
     .builtIn = true},
    {.id = ExpandBranch,
     .menu = View,
     .submenu = {},
     .text = "Expand &Branch",
     .icon = {},
     .keys = "Alt+Right",
     .builtIn = true},
    {.id = ExpandChildren,
     .menu = View,
     .submenu = {},
     .text = "Expand Branch And Its &Children",
     .icon = {},
     .keys = "Alt+Shift+Right",
     .builtIn = true},
    {.id = CollapseAll,
     .menu = View,
     .submenu = {},
     .text = "C&ollapse All",
     .icon = "collapse",
     .keys = "Ctrl+Alt+Up",
     .separatorBefore = true,
     .builtIn = true},
    {.id = CollapseBranch,
     .menu = View,
     .submenu = {},
     .text = "Co&llapse Branch",
     .icon = {},
     .keys = "Alt+Left",
     .builtIn = true},
    {.id = CollapseChildren,
     .menu = View,
     .submenu = {},
     .text = "Collapse Branch &And Its Children",
     .icon = {},
     .keys = "Alt+Shift+Left",
     .builtIn = true},
    {.id = ShowMessages,
     .menu = View,
     .submenu = {},
     .text = "&Messages",
     .icon = "message",
     .keys = "Ctrl+M",
     .separatorBefore = true,
     .builtIn = true,
     .topic = "messages"},
    {.id = CheckDocument,
     .menu = View,
     .submenu = {},
     .text = "Chec&k Document",
     .icon = "search",
     .keys = "F8",
     .builtIn = true,
     .topic = "messages"},
    {.id = AppearanceDesktop,
     .menu = View,
     .submenu = kAppearance,
     .text = "As the &Desktop",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true,
     .topic = "editor"},
    {.id = AppearanceLight,
     .menu = View,
     .submenu = kAppearance,
     .text = "&Light",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true,
     .topic = "editor"},
    {.id = AppearanceDark,
     .menu = View,
     .submenu = kAppearance,
     .text = "Dar&k",
     .icon = {},
     .keys = {},
     .checkable = true,
     .builtIn = true,
     .topic = "editor"},
    {.id = HelpIndex,
     .menu = Help,
     .submenu = {},
     .text = "&Index",
     .icon = "help",
     .keys = "Ctrl+F1",
     .inToolBar = true,
     .builtIn = true},
    {.id = HelpSelection,
     .menu = Help,
     .submenu = {},
     .text = "Help On The &Selection",
     .icon = {},
     .keys = "F1",
     .builtIn = true},
    {.id = About,
     .menu = Help,
     .submenu = {},
     .text = "&About KAVU-9",
     .icon = "about",
     .keys = {},
     .separatorBefore = true,
     .builtIn = true},
});

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
    {HelpSelection, "Open the page of the manual about what is selected"},
});

}  // namespace

std::span<const CommandRow> commandTable() {
    return kCommands;
}

const CommandRow& commandRow(CommandId id) {
    const auto found = std::find_if(kCommands.begin(), kCommands.end(),
                                    [id](const CommandRow& row) { return row.id == id; });
    return found == kCommands.end() ? kCommands.front() : *found;
}

std::string_view topicOf(const CommandRow& row) {
    if (!row.topic.empty()) {
        return row.topic;
    }
    switch (row.menu) {
        case MenuId::File:
        case MenuId::View:
            return "editor";
        case MenuId::Database:
            return "database";
        case MenuId::Options:
            return "Options";
        case MenuId::Edit:
        case MenuId::Reports:
        case MenuId::Help:
            break;
    }
    return "index";
}

std::string_view menuTitle(MenuId menu) {
    constexpr std::string_view kTitles[] = {"&File",    "&Edit", "&Reports", "&Database",
                                            "&Options", "&View", "&Help"};
    return kTitles[static_cast<std::size_t>(menu)];
}

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

std::string_view submenuPrompt(std::string_view submenu) {
    if (submenu == kAddRoot) {
        return "Choose if root words are added from the database";
    }
    if (submenu == kAddChildren) {
        return "Choose if children are added from the database";
    }
    if (submenu == kSameNames) {
        return "Choose if streams may share the names of measurements";
    }
    if (submenu == kAppearance) {
        return "Choose the palette of all windows";
    }
    return submenu == kBackups ? "Choose if a file is copied before it is overwritten" : "";
}

bool windowAllows(CommandId id, const WindowFacts& facts) {
    switch (id) {
        case ExpandAll:
        case CollapseAll:
        case CheckDocument:
            return facts.document.open;
        case ExpandBranch:
        case ExpandChildren:
        case CollapseBranch:
        case CollapseChildren:
            return facts.document.open && facts.treeItemSelected;
        case EditDatabase:
        case ImportDatabase:
        case DisableDatabase:
        case AddRoot:
        case DoNotAddRoot:
        case AddChildren:
        case DoNotAddChildren:
            return facts.databaseOn;
        case EnableDatabase:
            return !facts.databaseOn;
        default: {
            const auto& operation = commandRow(id).operation;
            return !operation || allows(*operation, facts.document);
        }
    }
}

std::string commandPrompt(CommandId id) {
    if (const auto text = loadText(static_cast<int>(id))) {
        return std::string(*text);
    }
    const auto own = std::find_if(kOwnPrompts.begin(), kOwnPrompts.end(),
                                  [id](const OwnPrompt& row) { return row.id == id; });
    return own == kOwnPrompts.end() ? std::string() : std::string(own->text);
}

}  // namespace kavu
