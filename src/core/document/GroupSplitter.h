// Sorts the commands of a TMATS file into group files.
#pragma once

#include "core/TmatsDocument.h"
#include "core/document/Banner.h"
#include "core/document/ConversionComments.h"
#include "core/document/ConversionRuns.h"
#include "core/files/FileIo.h"
#include "core/talk/LoadNotes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kavu {

class CommandBlock;
struct CutCommand;
struct GroupKind;

/// One pass over a file. Commands are buffered per group file, so that groups that
/// alternate in the file do not cost an open and a close for every command.
class GroupSplitter {
  public:
    GroupSplitter(DocumentContext& context, UserInterface* parent);

    /// True unless it was cancelled or has failed; a failure has been reported, with
    /// message 157 ("partial command") for a command that the end of the file cuts off
    /// and 158 ("error ... writing") for a working file that could not be written.
    bool run(const std::string& path);

  private:
    struct Target {
        std::string name;   ///< of the working file
        std::string title;  ///< section title of the status line
        std::string lines;
        bool isSaved = true;  ///< what goes there comes out on saving
    };

    bool splitCommands(ByteSource& source);
    /// Sorts the commands of a block, and forgets them.
    bool sortBlock(CommandBlock& block, const ByteSource& source);
    bool sortCommand(const CutCommand& cut, long line);
    /// Gives a command whose indices have zeros at their front without them; false if it has none.
    bool dropZeros(std::string_view command, long line, std::string& changed);
    /// Takes comments that are in no banner.
    void takeComments(const std::vector<FileComment>& comments);
    /// Puts the comments that wait for a command in front of it.
    void putComments(Target& target, std::string_view command);
    /// Puts the comments that no command follows at the end of the last group.
    void endComments();
    /// The target of a command, or null for a command that is not kept.
    Target* targetOf(std::string_view command, long line);
    Target& target(const GroupKind& kind, std::int64_t index);
    bool flush(Target& target);
    IoStatus write(const Target& target);
    bool closeConversions();
    bool flushAll();
    /// `rest` is what no command ends.
    bool endOfFile(ByteSource& source, std::string_view rest);
    void reportWriteFailure(const IoStatus& status);
    void showProgress(std::uint64_t position, std::uint64_t size);

    DocumentContext& context_;
    UserInterface* parent_;
    LoadNotes notes_;
    bool keepComments_;
    BannerFilter banner_;
    ConversionComments conversionComments_;
    ConversionRunNotes conversionRuns_;
    std::string comments_;  ///< that wait for the command that follows them
    Target* last_ = nullptr;
    std::unordered_map<std::string, Target> targets_;
    Target conversions_;
    FileWriter conversionsFile_;
    Target unsplit_;  ///< commands of the C group that no record can hold
    Target* current_ = nullptr;
    std::string currentPrefix_;
    std::size_t buffered_ = 0;
    unsigned count_ = 0;  ///< commands so far
    long line_ = 1;
    std::uint64_t filler_ = 0;  ///< bytes between commands that are left out
};

}  // namespace kavu
