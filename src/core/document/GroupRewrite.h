// Changes to group files without the parser of their group: command by command, in one
// pass.
#pragma once

#include "core/files/IoStatus.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DocumentFiles;
class TmatsReader;

/// How a file is cut into commands. The two differ in the bytes that they leave in the
/// file.
enum class Cut {
    /// All bytes up to and including the next `;`, without the white space at both ends. Nothing
    /// in between is touched, and the rest after the last `;` is a command as well.
    Runs,
    /// As the reader cuts: line ends become carriage return and line feed, no blank stays
    /// before the `;`, and a command without its `;` is left out.
    Commands,
};

/// A command on its way through a rewrite. Comments are commands.
class CommandEdit {
  public:
    explicit CommandEdit(std::string& text) : text_(text) {}

    [[nodiscard]] const std::string& text() const { return text_; }
    void replace(std::string text);
    /// Puts another value after the first `:`.
    void setValue(std::string_view value);
    void erase() { replace({}); }
    /// Inserts lines, with their line ends, before the command.
    void before(std::string_view lines);

    [[nodiscard]] bool changed() const { return changed_; }
    [[nodiscard]] std::string_view linesBefore() const { return before_; }

  private:
    std::string& text_;
    std::string before_{};
    bool changed_ = false;
};
using Visit = std::function<void(CommandEdit& command)>;
/// Returns the lines that follow the last command. `cutOff` is true for a file that ends
/// within a command, never with `Cut::Runs`.
using Tail = std::function<std::string(bool cutOff)>;

/// Passes the commands of a file of the document through `visit` and then `tail`, which may be
/// empty. The new file replaces the old one when it is complete. If nothing was changed the
/// file is not touched, except with `Cut::Runs`, which always puts each command on a line of
/// its own. True if anything was changed; a failure, also of a missing file, is in `status`.
bool rewriteGroup(DocumentFiles& files, TmatsReader& reader, std::string_view name, Cut cut,
                  const Visit& visit, const Tail& tail, IoStatus& status);

/// Replaces values of a file. `newValue` is called for each field with a value, and returns
/// nothing to leave it. True if any was changed.
bool rewriteValues(
    DocumentFiles& files, TmatsReader& reader, std::string_view name,
    const std::function<std::optional<std::string>(std::string_view field, std::string_view value)>&
        newValue,
    IoStatus& status);

// --- By the text of the commands --------------------------------------------------------

/// One change of `rewriteCommands`: every command that contains `pattern` anywhere in its
/// text (a plain, case-sensitive test) gets the new value, or is deleted if there is
/// none.
struct CommandRewrite {
    std::string pattern;
    std::optional<std::string> newValue;
};

/// Called before a command is changed that is of another code and only holds the pattern in its
/// value: what its author wrote there is lost. `code` is that of the pattern.
using OtherCommand = std::function<void(std::string_view code, std::string_view command)>;

/// Changes or deletes all matching commands of a group file. The pattern is the code, `:`
/// and the old value if there is one: a substring test, not a test of the code, so
/// deleting "COMMENT" removes every command with "COMMENT:" anywhere in it. Comments of the file
/// match no other code. True if any command matched. `status`, if given, reports a file that could
/// not be read or written.
bool rewriteCommands(DocumentFiles& files, std::string_view name, std::string_view code,
                     std::optional<std::string_view> oldValue,
                     std::optional<std::string_view> newValue, IoStatus* status = nullptr,
                     const OtherCommand& other = {});
/// Several changes in one pass, applied to each command in their order as if each were a
/// pass of its own.
bool rewriteCommands(DocumentFiles& files, std::string_view name,
                     const std::vector<CommandRewrite>& rewrites, IoStatus* status = nullptr,
                     const OtherCommand& other = {});

/// How many list indices follow a code. An index is counted up from 1 as long as there is
/// a command of that code; commands after a gap are left alone.
enum class Indices { None, One, Two };

/// A row of a table of changes. The test is that of `rewriteCommands`, so a longer value that
/// begins with the old one matches as well.
struct ValueRule {
    char letter;
    std::string_view code;  ///< after the head of the group; with indices up to the last `-`
    Indices indices = Indices::None;
    std::string_view oldValue = {};                           ///< empty matches any value
    std::optional<std::string_view> newValue = std::nullopt;  ///< nothing deletes the command
};

/// Applies the rules of this letter to a group file: it is read once to find what to change
/// and, only if there is something, written once. True if any command matched; `status`
/// reports a file that could not be read or written (a missing file is no failure).
bool applyRules(TmatsReader& reader, DocumentFiles& files, std::string_view name, char letter,
                int index, std::span<const ValueRule> rules, IoStatus& status,
                const OtherCommand& other = {});

/// Copies an indexed group file, giving every command another group index; commands of a group
/// without one are left out. Semicolons in a value are removed. Comments, and what cannot be taken
/// apart, stay as they are (see CarriedCommands.h). A failure may leave a partial copy.
[[nodiscard]] IoStatus copyWithGroupIndex(const std::string& from, const std::string& to,
                                          int index);

}  // namespace kavu
