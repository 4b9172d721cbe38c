// The commands of the main window: number, menu entry, prompt, key, and when each of them
// can be given. The menus, the tool bar and the tests walk this one table.
#pragma once

#include "application/DocumentFacts.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// The number of a command is the number of its prompt in the table of messages.
enum class CommandId : int {
    CreateNew = 1,
    Open = 2,
    Save = 4,
    SaveAs = 5,
    Close = 11,
    Exit = 12,
    General = 13,
    Transmission = 14,
    Recorder = 15,
    Multiplex = 16,
    Stream = 17,
    Conversion = 18,
    Hardware = 19,
    Vendor = 20,
    Pam = 21,
    Plots = 22,
    CalibrationReports = 23,
    ReportOptions = 28,
    EditDatabase = 29,
    DatabaseLocation = 30,
    ImportDatabase = 31,
    EnableDatabase = 32,
    DisableDatabase = 33,
    AddRoot = 34,
    DoNotAddRoot = 35,
    AddChildren = 36,
    DoNotAddChildren = 37,
    SampleRateOptions = 38,
    CommentOptions = 39,
    Precision = 40,
    UpdateOptions = 41,
    Versions = 42,
    AllowSameNames = 43,
    RefuseSameNames = 44,
    MakeBackups = 45,
    NoBackups = 46,
    ExpandAll = 49,
    ExpandBranch = 50,
    ExpandChildren = 51,
    CollapseAll = 52,
    CollapseBranch = 53,
    CollapseChildren = 54,
    HelpIndex = 55,
    About = 56,
    // Without a number in the table of messages; the prompts are our own.
    Undo = 1001,
    Redo = 1002,
    KeepComments = 1003,
    SaveInPlace = 1004,
    ShowMessages = 1005,
    CheckDocument = 1006,
    HelpSelection = 1007,
    AppearanceDesktop = 1008,
    AppearanceLight = 1009,
    AppearanceDark = 1010,
    ConvertWyle = 1021,
    ConvertL3Com550 = 1022,
    ConvertL3ComVts = 1023,
    WyleDefaults = 1024,
    L3Com550Defaults = 1025,
    L3ComVtsDefaults = 1026,
    TranslatorDefaults = 1027,
    ImportXml = 1028,
    ExportXml = 1029,
};

enum class MenuId { File, Edit, Reports, Database, Options, View, Help };

struct CommandRow {
    CommandId id;
    MenuId menu;
    /// Entries of one submenu are together; empty is the menu itself.
    std::string_view submenu;
    std::string_view text;  ///< of the menu entry, with "&" in front of its key
    std::string_view icon{};
    std::string_view keys{};  ///< in the portable form of key sequences
    bool checkable = false;
    bool separatorBefore = false;
    bool inToolBar = false;
    /// Done by the main window itself; all others need an editor to be installed.
    bool builtIn = false;
    /// What it does to the document, which must allow it. Nothing for the commands of the
    /// program itself.
    std::optional<OperationId> operation{};
    std::string_view topic{};  ///< of the help, if it is another than that of its menu
};

[[nodiscard]] std::span<const CommandRow> commandTable();
[[nodiscard]] const CommandRow& commandRow(CommandId id);
/// The topic of the help that F1 opens on the entry, and on the dialogs that the command opens.
[[nodiscard]] std::string_view topicOf(const CommandRow& row);
[[nodiscard]] std::string_view menuTitle(MenuId menu);
/// What the status bar says of a menu, and of a submenu by its title.
[[nodiscard]] std::string_view menuPrompt(MenuId menu);
[[nodiscard]] std::string_view submenuPrompt(std::string_view submenu);

/// What decides which commands can be given.
struct WindowFacts {
    DocumentFacts document{};
    bool treeItemSelected = false;
    bool databaseOn = false;  ///< the setting `MDBEnabled`
};
/// Whether the document and the tree allow a command; whether its editor exists is another
/// question.
[[nodiscard]] bool windowAllows(CommandId id, const WindowFacts& facts);

/// The prompt for the status bar: the text of that number, else our own.
[[nodiscard]] std::string commandPrompt(CommandId id);
/// The prompt of an entry whose editor is not there.
[[nodiscard]] std::string promptWithoutEditor(CommandId id);
/// What is added to it for most of them.
inline constexpr std::string_view kNotAvailable = " (not available in this version)";

}  // namespace kavu
