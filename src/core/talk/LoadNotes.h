// Remarks about a file that is being split: what is left out without a message, or what
// looks like a slip of the author. A remark changes nothing; it shows the user where to
// look.
#pragma once

#include "core/text/Printf.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

class UserInterface;

class LoadNotes {
  public:
    void byteOrderMark() { byteOrderMark_ = true; }
    /// Bytes after the last command that are not part of any, and not kept.
    void filler(std::uint64_t bytes) { filler_ = bytes; }
    /// Ctrl-Z bytes in front of commands, which are not kept.
    void fillerBetween(std::uint64_t bytes) { fillerBetween_ = bytes; }
    /// A command that holds a byte by which the working store knows a line break (20 or 21): it
    /// will be saved as one.
    void standIn(long line, std::string_view command) { standIns_.add(line, command); }
    void nulBytes(long line) { nulBytes_.add(line, {}); }
    /// A command of an unknown group; it is not kept.
    void unknownCommand(long line, std::string_view command) { unknown_.add(line, command); }
    /// A command whose group index is not 1 to 99; it is not saved.
    void indexOutOfRange(long line, std::string_view command) { range_.add(line, command); }
    /// A command with an index that has zeros at its front; the load drops them.
    void leadingZeros(long line, std::string_view command) { zeros_.add(line, command); }
    /// A command without a `:`, or without a `\` in front of it; it is kept as it is, and no
    /// look-up finds it.
    void unsplit(long line, std::string_view command) { unsplit_.add(line, command); }
    /// A comment of the file. One that is kept is remarked only if it holds a command.
    void comment(long line, std::string_view command, bool kept);
    /// A command over several lines; remarked only if a line of its value looks like the
    /// start of another command.
    void severalLines(long line, std::string_view command);

    /// Reports everything that was found. What is left out of a file that was refused is no
    /// message: there is no document that lacks it.
    void tell(UserInterface* parent, bool opened) const;

  private:
    struct Finding {
        long count = 0;
        long line = 0;
        std::string sample;
        void add(long at, std::string_view command);
        /// What is told of it; empty if there is nothing to tell.
        [[nodiscard]] std::string text(PrintfFormat<long, std::string> one,
                                       PrintfFormat<long, long, std::string> many) const;
    };
    void tellLeftOut(UserInterface& parent, bool opened) const;
    void tellKept(UserInterface& parent) const;

    bool byteOrderMark_ = false;
    std::uint64_t filler_ = 0;
    std::uint64_t fillerBetween_ = 0;
    Finding nulBytes_;
    Finding unknown_;
    Finding range_;
    Finding zeros_;
    Finding standIns_;
    Finding unsplit_;
    Finding comments_;
    Finding swallowing_;
    Finding swallowed_;
};

/// The code at the front of a line if the line begins like a command (`P-1\TF:`), else
/// empty.
[[nodiscard]] std::string_view leadingCode(std::string_view line);

}  // namespace kavu
