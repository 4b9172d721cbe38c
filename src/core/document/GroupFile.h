// One group file of the document in memory, to change some of its commands: all others keep
// their place, their repeats and their bytes. A value of one operation, never shared and never
// kept; the file stays the truth.
#pragma once

#include "core/document/CommandIndex.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kavu {

class DocumentFiles;

class GroupFile {
  public:
    /// Reads the file of a group, comments included; `index` is of no meaning for G and H. A
    /// group that is not there is a failure (`isMissing`), and then there are no commands and
    /// `store` makes the file. A D file is passed through, and not read whole.
    static IoStatus open(const DocumentFiles& files, TmatsReader& reader, char letter, int index,
                         GroupFile& group);

    [[nodiscard]] bool exists() const { return exists_; }
    [[nodiscard]] CommandIndex& commands() { return commands_; }
    [[nodiscard]] const CommandIndex& commands() const { return commands_; }

    // Codes are compared without regard to case and to white space at the end of a command's.

    /// The first value of the code that is not empty; empty if there is none.
    [[nodiscard]] std::string_view value(std::string_view code) const;
    /// The code gets this one value, in the bytes of a group file, where its first command is;
    /// further ones go. One that is not there yet comes in front of the command at the place
    /// that `place` gives (0 to the number of commands). REQUIRES: `stored` is not empty.
    void set(std::string_view code, std::string_view stored,
             const std::function<std::size_t()>& place);
    /// Takes all commands of the code out.
    void erase(std::string_view code);
    [[nodiscard]] bool changed() const { return changed_; }

    /// Puts the commands, one a line, in place of the file. After a failure that is as it was.
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
