// What a rewrite of a group would lose. An editor rewrites a group file from its model, so a
// command that it neither read nor writes would be lost silently: attributes of a newer
// edition or of another program, rows after the end of a list. This records them and asks the
// user. One mechanism for all group, bus and message editors:
//
//     KeptCommands kept;                      // on loading: all commands of the file,
//     kept.add(command);                      //   in their order,
//     kept.markRead(place);                   //   and which of them the editor has read
//     text += keptTail(parent, kept, text);   // on saving, after what the editor writes
//
// `GroupSource` and `storeGroup` (GroupRecord.h) do this for editors with a vocabulary table.
#pragma once

#include "core/document/CommandIndex.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kavu {

class UserInterface;

class KeptCommands {
  public:
    /// Adds the next command of the file, whole, as it is there ("T-1\RF1:2200.5;").
    void add(std::string_view command) { commands_.add(command); }
    /// Marks the command at this place, counted from 0 in the order of `add`, as read.
    /// REQUIRES: place < size().
    void markRead(std::size_t place) { commands_.markRead(place); }
    /// Marks all commands of this code ("G\FN", in any case) as not to be kept: other code
    /// writes them, or they are to be removed.
    void markCode(std::string_view code);
    /// Changes the codes of the commands, as when the rows of a list have moved. `change`
    /// may alter a code ("R-1\TK1-3"); false drops the command, whose row was deleted.
    void recode(const std::function<bool(std::string& code)>& change);
    [[nodiscard]] std::size_t size() const { return commands_.size(); }
    void clear() { *this = {}; }
    /// The commands, to read them from a file and to look them up.
    [[nodiscard]] CommandIndex& commands() { return commands_; }

    /// The commands that would be lost if the file became `rewritten`, in their old order with
    /// their repetitions. These are
    ///  - commands that were not read, unless the new text has a command of their code,
    ///    which replaces them;
    ///  - repetitions of a command that was read, as long as the new text has it: emptying a
    ///    field must not bring its repetition back.
    [[nodiscard]] std::vector<std::string> dropped(std::string_view rewritten) const;

  private:
    CommandIndex commands_;
    std::unordered_set<std::string> markedCodes_;
};

/// Lists what would be dropped and asks whether to keep it, with Yes as default. Returns the
/// lines to append: all with Yes, none with No, without a parent, or, without a question, if
/// nothing would be dropped.
[[nodiscard]] std::string keptTail(UserInterface* parent, const KeptCommands& kept,
                                   std::string_view rewritten);

}  // namespace kavu
