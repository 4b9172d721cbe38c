// What a group file holds and no model has a place for: the comments of the file (where the user
// wants them kept), and commands that cannot be taken apart, for want of a `:` or of a `\` in front
// of it. Whoever writes a group from a model carries them along as they are, each in front of the
// command that followed it:
//
//     auto group = files.writer(name);
//     ...                                             // the model is written
//     status = closeCarrying(files, reader, name, group);
#pragma once

#include "core/command/CommandPath.h"
#include "core/files/IoStatus.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kavu {

class DocumentFiles;
class DocumentWriter;
class TmatsReader;

class CarriedCommands {
  public:
    /// How a command of the old file is known again in the new one.
    enum class Follow {
        Codes,   ///< by its code, which `recode` has changed with its row
        Values,  ///< by its value as well: it is not known which rows have moved
    };
    explicit CarriedCommands(Follow follow) : follow_(follow) {}

    /// True for a command that is carried.
    [[nodiscard]] static bool isCarried(const CommandView& command) { return command.head.empty(); }

    /// Takes the next command of the old file. A file without a command to be carried costs no
    /// memory; one that has some costs a few of the commands after each.
    void add(const CommandView& command);
    [[nodiscard]] bool empty() const { return entries_.empty(); }

    /// Gives the commands that are not carried other codes. `change` may alter a code
    /// ("D-1\LT-1-3"); false says that the command is gone.
    void recode(const std::function<bool(std::string& code)>& change);

    /// Takes each command of the new file, to know which are there.
    void noteWritten(const CommandView& command);
    /// The lines to put in front of a command of the new file: what was in front of it, or of those
    /// between that are gone. They are given once. REQUIRES: all were noted.
    [[nodiscard]] std::string linesBefore(const CommandView& command);
    /// The lines that are left when the new file has ended.
    [[nodiscard]] std::string lastLines();

  private:
    struct Entry {
        std::string text;     ///< the whole command, or the lower-case code of one not carried
        std::string value{};  ///< with `Follow::Values`
        bool carried = false;
        bool gone = false;
    };
    /// Commands of one stem and value, whatever their indices.
    struct Twins {
        int old = 0;
        int written = 0;
        std::string code{};  ///< of the last one written
    };
    void findAnchors();
    [[nodiscard]] std::string placeOf(const Entry& entry) const;
    void place();

    Follow follow_;
    std::vector<Entry> entries_;
    std::size_t sinceCarried_ = 0;
    bool foundAnchors_ = false;
    std::unordered_set<std::string> anchors_;  ///< the codes to look for
    std::unordered_map<std::string, Twins> twins_;
    std::unordered_set<std::string> written_;  ///< codes, and with `Follow::Values` whole commands
    bool placed_ = false;
    std::unordered_map<std::string, std::string> before_;
    std::string last_;
};

/// Reads what a file of the document carries; one that is not there carries nothing.
[[nodiscard]] IoStatus gatherCarried(const DocumentFiles& files, TmatsReader& reader,
                                     std::string_view name, CarriedCommands& carried);
/// Puts it into the file that has taken the place of that one. Writes nothing if nothing is
/// carried.
[[nodiscard]] IoStatus putCarriedBack(DocumentFiles& files, TmatsReader& reader,
                                      std::string_view name, CarriedCommands& carried);
/// Puts a group file that was written from a model in the place of the former one, with what that
/// carries. After a failure the former one, or one that lacks what is carried, is there: REQUIRES
/// an open transaction.
[[nodiscard]] IoStatus closeCarrying(DocumentFiles& files, TmatsReader& reader,
                                     std::string_view name, DocumentWriter& group);
/// The text of a group file with what is carried.
[[nodiscard]] std::string withCarried(std::string_view text, CarriedCommands& carried);

}  // namespace kavu
