// Changes of values in group files, told by a table. Each file is read once to see what
// there is to change and, only if there is something, written once.
//
// The tests are those of `rewriteCommands`: a command matches if the code, `:` and the old
// value stand anywhere in its text, so a longer value that begins with the old one matches
// as well.
#pragma once

#include "core/TmatsReader.h"
#include "core/document/DocumentFiles.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

/// How many list indices stand behind a code. An index is counted up from 1 for as long
/// as a command of that code is there; commands behind a gap are left alone.
enum class Indices { None, One, Two };

struct ValueRule {
    char letter;
    std::string_view code;  ///< behind the head of the group; with indices up to the last `-`
    Indices indices = Indices::None;
    std::string_view oldValue = {};                           ///< empty matches any value
    std::optional<std::string_view> newValue = std::nullopt;  ///< nothing deletes the command
};

/// What became of a command.
enum class Rewritten { Same, Changed, Deleted };

/// Applies the rules of this letter to a group file. True if any command matched; `status`
/// tells of a file that could not be read or written (a missing file is no failure).
bool applyRules(TmatsReader& reader, DocumentFiles& files, std::string_view name, char letter,
                int index, std::span<const ValueRule> rules, IoStatus& status);

/// Passes every command of a file through `edit`, which may change its text, and writes
/// `tail` behind them. The new file takes the place of the old one when it is complete;
/// if nothing has changed it is not touched. True if it was changed.
bool rewriteGroupFile(TmatsReader& reader, DocumentFiles& files, std::string_view name,
                      const std::function<Rewritten(std::string& command)>& edit,
                      const std::function<std::string()>& tail, IoStatus& status);

}  // namespace kavu
