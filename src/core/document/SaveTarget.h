// The file that a document is saved to, from the lock that keeps other runs out to the new
// contents in their place.
#pragma once

#include "core/TmatsDocument.h"
#include "core/document/FormerContents.h"
#include "core/files/UserFile.h"

#include <string>
#include <utility>

namespace kavu {

class UserInterface;

/// One save. A save that is not ended well leaves the file and its backup as they were; only one
/// in place leaves a partial file, whose former contents can be put back. Failures and remarks
/// go to the parent.
class SaveTarget {
  public:
    /// All must outlive the object.
    SaveTarget(DocumentContext& context, UserInterface* parent, std::string path)
        : context_(context), parent_(parent), path_(std::move(path)), former_(context.store) {}
    SaveTarget(const SaveTarget&) = delete;
    SaveTarget& operator=(const SaveTarget&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Keeps other runs away from the file until the end of the object. False if one of them is
    /// saving it, or it cannot be saved at all.
    bool claim();
    /// Opens the file for writing, beside the one that is there or in place. REQUIRES: claimed.
    bool begin();
    [[nodiscard]] FileWriter& writer() { return file_.writer(); }
    /// With `built`, makes the backup, if the setting says so, and puts the new contents in their
    /// place, unless another program has changed the file since the claim. After a failure that has
    /// touched the file the parent is asked whether its former contents are to be put back.
    /// REQUIRES: begun.
    bool end(bool built);
    /// True once bytes of the file itself may have changed.
    [[nodiscard]] bool hasTouchedFile() const { return hasTouched_; }

  private:
    bool keepWholeBackup();
    bool checkUnchanged();
    IoStatus putInPlace();

    DocumentContext& context_;
    UserInterface* parent_;
    std::string path_;
    bool backup_ = false;
    bool hasTouched_ = false;
    std::string claimedStamp_;
    UserFile file_;
    FormerContents former_;
};

}  // namespace kavu
