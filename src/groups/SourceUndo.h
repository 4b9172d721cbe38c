// The way back: copies of group files that stand beside them, under their names with "TEMP"
// in front, while an operation changes them.
#pragma once

#include "core/files/IoStatus.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

class SourceUndo {
  public:
    explicit SourceUndo(DocumentContext& context) : context_(context) {}
    SourceUndo(const SourceUndo&) = delete;
    SourceUndo& operator=(const SourceUndo&) = delete;
    /// Deletes the copies.
    ~SourceUndo();

    /// Copies a file of the working store; one that is not there is deleted by the way back.
    [[nodiscard]] IoStatus keep(const std::string& name);
    /// Copies every group file that is there. The way back then also deletes all that there
    /// are not now.
    [[nodiscard]] IoStatus keepAllGroups();
    /// The same for the files of the conversion records. Their store has to be told to
    /// forget what it knows of them after the way back.
    [[nodiscard]] IoStatus keepConversions();

    /// Puts everything back. What can not be put back is reported, and its copy stays.
    void takeBack(UserInterface* parent);

  private:
    [[nodiscard]] IoStatus keepAll(std::vector<std::string_view> patterns);
    [[nodiscard]] IoStatus matchingFiles(const std::vector<std::string_view>& patterns,
                                         std::vector<std::string>& names) const;
    [[nodiscard]] IoStatus deleteOthers() const;

    DocumentContext& context_;
    std::vector<std::string_view> families_;      ///< patterns of which all files are kept
    std::unordered_map<std::string, bool> kept_;  ///< name to whether there is a copy
};

}  // namespace kavu
