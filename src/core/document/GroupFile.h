// One group file of the document in memory, to change some of its commands: all others keep
// their place, their repetitions and their bytes. It belongs to one operation, and an editor has
// it while it is open, to know what of the file it has read; it is never shared, and the file
// stays the truth.
#pragma once

#include "core/document/CommandIndex.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DocumentFiles;

class GroupFile {
  public:
    /// Reads the file of a group, with its comments unless they are to be skipped; `index` is
    /// ignored for G and H. A missing group is a failure (`isMissing`); it then has no commands,
    /// and `store` makes the file. Not for a D file, which may be too large to be read whole.
    static IoStatus open(const DocumentFiles& files, TmatsReader& reader, char letter, int index,
                         GroupFile& group, Comments comments = Comments::Keep);

    /// The same for a working file of this name, which holds a group while it is edited.
    static IoStatus openNamed(const DocumentFiles& files, TmatsReader& reader, std::string name,
                              GroupFile& group, Comments comments = Comments::Keep);

    [[nodiscard]] bool exists() const { return exists_; }
    [[nodiscard]] CommandIndex& commands() { return commands_; }
    [[nodiscard]] const CommandIndex& commands() const { return commands_; }

    // Codes are compared without regard to case and to trailing white space of a command's
    // code.

    /// The first value of the code that is not empty; empty if there is none.
    [[nodiscard]] std::string_view value(std::string_view code) const;
    /// Sets the one value of the code, in stored form, in its first command; further ones are
    /// removed. A new command is inserted before the one at the index that `place` returns (0
    /// to the number of commands). REQUIRES: `stored` is not empty.
    void set(std::string_view code, std::string_view stored,
             const std::function<std::size_t()>& place);
    /// Removes all commands of the code.
    void erase(std::string_view code);
    /// Gives the commands other codes, as when the rows of a list have moved. `change` may modify
    /// a code ("R-1\TK1-3"); false drops the command, whose row is gone.
    void recode(const std::function<bool(std::string& code)>& change);
    [[nodiscard]] bool changed() const { return changed_; }

    /// The commands that would be lost if the file became `rewritten`, in their former order with
    /// their repetitions. These are
    ///  - commands that were not read (`CommandIndex::markRead`), unless the new text has a command
    ///    of their code: what the editor writes replaces them;
    ///  - repetitions of a command that was read, as long as the new text has it: a user who
    ///  empties
    ///    a field does not want a repetition to take its place.
    /// Comments, and commands that cannot be taken apart, are not among them: they belong to no
    /// model (see CarriedCommands.h).
    [[nodiscard]] std::vector<std::string> leftovers(std::string_view rewritten) const;

    /// Replaces the file by the commands, one per line. After a failure the file is as it was.
    IoStatus store(DocumentFiles& files) const;

  private:
    [[nodiscard]] std::size_t firstOf(std::string_view code) const;
    void rebuild(std::string_view withoutCode, std::size_t at, std::string_view added);

    std::string name_;
    CommandIndex commands_;
    bool exists_ = false;
    bool changed_ = false;
};

}  // namespace kavu
