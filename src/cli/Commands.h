// The commands that work on an open document. Each is a row of one table: what is checked
// or set before the document is opened, and what is then done with it.
#pragma once

#include "cli/CommandLine.h"
#include "cli/JsonReport.h"

#include <string>

namespace kavu {
class Application;
struct DocumentTree;
}  // namespace kavu

namespace kavu::cli {

/// What a command reports besides the messages.
struct CommandOutput {
    Json members = Json::object();  ///< follow the members of the file
    std::string text;               ///< the same as terminal text
    bool changed = false;           ///< the document was changed before the command saved it
    bool isReported = false;        ///< something was reported that is none of the messages
};

struct CommandContext {
    Application& application;
    ScriptedInterface* ui;
    const CommandLine& line;
};

struct DocumentCommand {
    /// Runs before the file is opened; false if the command cannot be done.
    bool (*prepare)(CommandContext&);
    /// Runs on the open document; false if there is no result.
    bool (*run)(CommandContext&, CommandOutput&);
};

/// The row of a command. REQUIRES: a command that opens a file (not `recover`, `fit`,
/// `vocabulary`).
[[nodiscard]] const DocumentCommand& documentCommand(Command command);

/// `recover STORE -o OUT`
[[nodiscard]] bool recoverCommand(CommandContext& context, CommandOutput& output);
/// `recover --list`
[[nodiscard]] bool listAbandonedCommand(CommandContext& context, CommandOutput& output);

/// `check --deep`; does nothing without the option.
[[nodiscard]] bool checkCommand(CommandContext& context, CommandOutput& output);
/// `stream`
[[nodiscard]] bool streamCommand(CommandContext& context, CommandOutput& output);
/// `rewrite`
[[nodiscard]] bool rewriteCommand(CommandContext& context, CommandOutput& output);
/// Loads the stream of the line; what it is goes to the output. False, which is reported, if it
/// cannot be loaded, or after a cancel.
[[nodiscard]] bool loadStream(CommandContext& context, CommandOutput& output);
/// Writes the stream to its groups, and the document to its new file.
[[nodiscard]] bool saveStream(CommandContext& context, CommandOutput& output);
/// `word-frame`
[[nodiscard]] bool wordFrameCommand(CommandContext& context, CommandOutput& output);

/// `bus`
[[nodiscard]] bool busCommand(CommandContext& context, CommandOutput& output);
/// Packs the bus group of the loaded stream from its model, for `rewrite`; or, for a link without a
/// format of its own, of that link. False if it could not be read or written, which is reported.
[[nodiscard]] bool rewriteBusGroup(CommandContext& context, const std::string& link);
/// Unpacks the bus group of a link, for `check`; false as above.
[[nodiscard]] bool readBusGroup(CommandContext& context, const std::string& link);
/// `conversions`
[[nodiscard]] bool conversionsCommand(CommandContext& context, CommandOutput& output);
/// `evaluate`
[[nodiscard]] bool evaluateCommand(CommandContext& context, CommandOutput& output);
/// `fit`, which opens no document.
[[nodiscard]] bool fitCommand(CommandContext& context, CommandOutput& output);

/// `vocabulary`, which opens no document.
[[nodiscard]] bool vocabularyCommand(CommandContext& context, CommandOutput& output);
/// `get`
[[nodiscard]] bool getCommand(CommandContext& context, CommandOutput& output);
/// `set`
[[nodiscard]] bool setCommand(CommandContext& context, CommandOutput& output);

/// `source list`
[[nodiscard]] bool sourceListCommand(CommandContext& context, CommandOutput& output);
/// The other `source` commands and `link rename`, which change the document and save it.
[[nodiscard]] bool sourceCommand(CommandContext& context, CommandOutput& output);

/// Saves the document as the output of the command line, and reports that.
[[nodiscard]] bool saveOutput(CommandContext& context, CommandOutput& output);

/// `message`
[[nodiscard]] bool messageCommand(CommandContext& context, CommandOutput& output);
/// `packet`
[[nodiscard]] bool packetCommand(CommandContext& context, CommandOutput& output);

/// "T-1", or nothing for an index of 0.
[[nodiscard]] std::string groupName(char letter, int index);

/// `tree`
[[nodiscard]] bool treeCommand(CommandContext& context, CommandOutput& output);
/// The member `dataSources`.
[[nodiscard]] Json dataSourcesJson(const DocumentTree& tree);

}  // namespace kavu::cli
