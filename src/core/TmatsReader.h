// The one place where TMATS text is cut into commands and where a field is looked up by
// its code, and the small set of operations through which all group code writes commands.
//
// A command is the run of characters from the first that is not white space up to and
// including the next `;`. It may span lines. There is no escape for `;`.
#pragma once

#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

class UserInterface;

/// What the substitutions of a reader have hit.
namespace substitution {
inline constexpr unsigned kAny = 1;                ///< some command was changed
inline constexpr unsigned kOutsideComments = 2;    ///< one that is not a C or P comment
inline constexpr unsigned kConversionComment = 4;  ///< a "C-" command with "\COM:"
inline constexpr unsigned kPcmComment = 8;         ///< a "P-" command with "\COM:"
}  // namespace substitution

class TmatsReader {
  public:
    /// Reads the next command, comments included, into `command`. False at the end;
    /// `length` is then 0 for a clean end, else the number of characters of the command
    /// that the end cut off. `lineCounter` rises by the line feeds inside the command and
    /// by one for each call: it equals the line number in a file of one command a line,
    /// and falls behind by the blank lines between commands.
    bool nextRawCommand(ByteSource& source, std::string& command, long* lineCounter = nullptr,
                        std::size_t* length = nullptr);
    /// The same, skipping every command that begins with "COMMENT:" in any case.
    bool nextCommand(ByteSource& source, std::string& command, long* lineCounter = nullptr,
                     std::size_t* length = nullptr);
    /// `nextRawCommand` without a copy of a command that is whole in the window of the source
    /// and needs no change; any other is put into `room`. Nothing at the end. The view lives
    /// until the source moves or `room` changes.
    std::optional<std::string_view> viewNextRaw(ByteSource& source, std::string& room,
                                                long* lineCounter = nullptr,
                                                std::size_t* length = nullptr);
    /// `nextCommand` in the same way.
    std::optional<std::string_view> viewNext(ByteSource& source, std::string& room,
                                             long* lineCounter = nullptr,
                                             std::size_t* length = nullptr);
    /// Takes commands that are in the window of the source as a file is written: each on a line
    /// of its own, none a comment, none with a stored line break. The lines live until the
    /// source moves. Nothing, with a `count` of 0, if the next command is not of that kind, or does
    /// not begin with `head`.
    std::string_view takeLines(ByteSource& source, unsigned max, unsigned& count,
                               std::string_view head = {});
    /// The next command, or an empty text at the end.
    [[nodiscard]] std::string nextCommandString(ByteSource& source, long* lineCounter = nullptr);

    /// Reads exactly one command. Returns its value if its code equals `code` without
    /// regard to case and the value is not empty. A limit over 0 cuts a longer value and
    /// reports an error, one below 0 keeps it and warns, 0 is no limit. The value lives
    /// until the next look-up on this reader.
    std::optional<std::string_view> readFieldForward(UserInterface* parent, ByteSource& source,
                                                     std::string_view code, int limit);
    /// The value of the first matching command at or after the position of the source,
    /// wrapping once around the file. A run of look-ups in file order costs one pass.
    template <typename... Args>
    std::optional<std::string_view> findField(UserInterface* parent, ByteSource& source,
                                              std::string_view prefix, std::string_view code,
                                              int limit, const Args&... args) {
        return findCode(parent, source, fullCode(prefix, code, {PrintfArg(args)...}), limit);
    }
    /// True if the field was found; the value is decimal, a negative one counts as 0.
    template <typename... Args>
    bool findIntField(UserInterface* parent, ByteSource& source, std::string_view prefix,
                      std::string_view code, int& value, const Args&... args) {
        return findIntCode(parent, source, fullCode(prefix, code, {PrintfArg(args)...}), value);
    }
    /// As `findField`, and nothing if the value is not a string of 0 and 1 (with `acceptX`
    /// also x and X), which is reported to `log`; it may be null.
    template <typename... Args>
    std::optional<std::string_view> findBinaryField(UserInterface* parent, ByteSource& source,
                                                    FileWriter* log, bool acceptX,
                                                    std::string_view prefix, std::string_view code,
                                                    int limit, const Args&... args) {
        return findBinaryCode(parent, source, log, acceptX, prefix,
                              fullCode({}, code, {PrintfArg(args)...}), limit);
    }
    /// Reads forward until a command's text contains `\`, the code and `:`; the whole
    /// command, or nothing.
    template <typename... Args>
    std::optional<std::string> findCommandContaining(ByteSource& source, std::string_view code,
                                                     const Args&... args) {
        return findContaining(source, fullCode({}, code, {PrintfArg(args)...}));
    }

    /// The log for length messages; with an empty path they are shown in a message box.
    /// `truncated` may be null; it is set to 1 whenever a field was over its limit. A new
    /// path forgets which fields were reported: in one log each field is reported once.
    void setLogFile(const std::string& path, int* truncated = nullptr);

    /// Ctrl-Z bytes in front of commands that were skipped since the last call.
    [[nodiscard]] std::uint64_t takeSkippedFiller() { return std::exchange(filler_, 0); }

    void addSubstitution(std::string_view search, std::string_view replacement);
    [[nodiscard]] bool hasSubstitutions() const { return !substitutions_.empty(); }
    /// Empties the table and the flags.
    void clearSubstitutions();
    [[nodiscard]] unsigned substitutionFlags() const { return substitutionFlags_; }

    /// Reports a value over its limit and returns the part to be used. For look-ups that
    /// do not read a stream (see CommandIndex).
    std::string_view applyLimit(UserInterface* parent, std::string_view code,
                                std::string_view value, int limit);

  private:
    [[nodiscard]] static std::string fullCode(std::string_view prefix, std::string_view code,
                                              PrintfArgs args);
    std::optional<std::string_view> findCode(UserInterface* parent, ByteSource& source,
                                             const std::string& code, int limit);
    bool findIntCode(UserInterface* parent, ByteSource& source, const std::string& code,
                     int& value);
    std::optional<std::string_view> findBinaryCode(UserInterface* parent, ByteSource& source,
                                                   FileWriter* log, bool acceptX,
                                                   std::string_view prefix, const std::string& code,
                                                   int limit);
    std::optional<std::string> findContaining(ByteSource& source, const std::string& code);
    bool readRaw(ByteSource& source, std::string& command, long* lineCounter, std::size_t* length);
    void substitute(std::string& command);
    void reportLimit(UserInterface* parent, std::string_view code, std::string_view value,
                     int limit);

    std::uint64_t filler_ = 0;
    std::string current_;
    std::string logPath_;
    int* truncated_ = nullptr;
    std::set<std::string> reported_;
    std::vector<std::pair<std::string, std::string>> substitutions_;
    unsigned substitutionFlags_ = 0;
};

/// Lets a source end where its last command does, if NUL bytes or Ctrl-Z follow, alone or among
/// white space: recorders fill a file up to the length of a block, old systems mark its end. Gives
/// the number of bytes that were cut off; 0 leaves all as it is. What has been read counts as no
/// command. The position stays.
std::uint64_t cutFiller(ByteSource& source);

/// True for a command that begins with "COMMENT:" in any case.
[[nodiscard]] inline bool isComment(std::string_view command) {
    return command.size() > 1 && (command[0] == 'C' || command[0] == 'c') && command[1] != '-' &&
           startsWithIgnoreCase(command, "COMMENT:");
}

/// The numbers of a command's code: `D-2\MN-3-4:X;` gives D, 2 and the field indices 3, 4.
/// A number that does not fit becomes the nearest end of the range, which is no valid
/// index.
struct CommandIndices {
    char letter = 0;
    std::int64_t group = 0;
    int fields[4] = {0, 0, 0, 0};
    int count = 0;  ///< the number of field indices read
};
[[nodiscard]] CommandIndices parseCommandIndices(std::string_view command);

/// The parts of a command: `P-1\MF1:8;` is "P-1", "MF1" and "8".
struct CommandParts {
    std::string group;
    std::string code;
    std::string value;  ///< with every `;` removed
};
[[nodiscard]] CommandParts splitCommand(std::string_view command);

// --- Private record in a comment value -------------------------------------------------
// A comment may carry data of this system between "[KAVU:" and "]", which other software
// sees as comment text: "[KAVU: D1=x D2=y]".

struct CommentRecord {
    std::string record;  ///< "[KAVU:" to "]", or empty
    std::string plain;   ///< the rest of the comment
};
[[nodiscard]] CommentRecord splitCommentRecord(std::string_view comment);
[[nodiscard]] std::optional<std::string> commentRecordValue(std::string_view comment,
                                                            std::string_view key);
/// Sets a key of a record text, or drops it for an empty value. An empty record text is
/// taken as "[KAVU:]"; a record without pairs becomes empty.
void setCommentRecordValue(std::string& record, std::string_view key, std::string_view value);

// --- Writing commands -------------------------------------------------------------------
// Each writes one line that ends in carriage return and line feed.

/// Writes nothing for an empty value: that is how optional attributes are omitted. Line
/// breaks are stored as their two bytes, trailing blanks are removed. True if a line was
/// written.
bool writeCommand(FileWriter& writer, std::string_view prefix, std::string_view code,
                  std::string_view value);
/// The same with real line breaks in the value, and without trimming.
bool writeCommandPlain(FileWriter& writer, std::string_view prefix, std::string_view code,
                       std::string_view value);
/// Always writes the line, even for 0.
void writeIntCommand(FileWriter& writer, std::string_view prefix, std::string_view code,
                     long value);

}  // namespace kavu
