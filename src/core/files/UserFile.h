// A file of the user that is written again: the new file is complete on the disk before it
// takes the place of the old one, or the old one stays. Where that would break something the
// file is written in place instead.
#pragma once

#include "core/files/FileIo.h"

#include <functional>
#include <string>
#include <string_view>

namespace kavu {

/// One writing of one file: `claim`, `prepare`, `open`, then `writer`, then `commit`. An object
/// that goes without a commit leaves the file as it was, except one in place after `open`.
class UserFile {
  public:
    UserFile() = default;
    UserFile(const UserFile&) = delete;
    UserFile& operator=(const UserFile&) = delete;
    ~UserFile();

    /// Follows the links of the path and keeps every other claim of the file out, by a locked
    /// file beside it or, in a folder that takes none, by a lock on the file itself; the system
    /// releases both when the process dies. Waits up to ten seconds for another claim, then fails
    /// with EBUSY. `goesOn`, if given, is asked between two tries, which are a few milliseconds
    /// apart; false ends the waiting. A device or pipe is not locked.
    IoStatus claim(const std::string& path, const std::function<bool()>& goesOn = {});
    [[nodiscard]] bool isClaimed() const { return !path_.empty(); }
    /// What a run gave to `open` that was killed while it wrote this file in place; empty if
    /// there was none. The file is then cut short. This is remembered on the disk until a
    /// commit.
    [[nodiscard]] const std::string& killedOwner() const { return killedOwner_; }

    /// What `killedOwner` would give after a claim of this path; nothing is locked.
    [[nodiscard]] static std::string killedOwnerOf(const std::string& path);

    /// Chooses the way and, unless in place, makes the empty new file beside the old one, with
    /// its owner, mode and extended attributes. Nothing about the file itself changes.
    /// The new file has a hidden name, or, with an ending, that of the file with it.
    /// REQUIRES: claimed.
    IoStatus prepare(bool wantsInPlace, std::string_view ending = {});
    [[nodiscard]] bool isInPlace() const { return inPlace_; }
    /// Why the file is written in place though that was not wanted; else empty.
    [[nodiscard]] const std::string& reasonInPlace() const { return reason_; }
    /// Opens for writing; in place this empties the file. `owner` is what a later claim gives
    /// as `killedOwner` if this run is killed meanwhile; empty to leave no trace.
    /// REQUIRES: prepared.
    IoStatus open(const std::string& owner = {});
    [[nodiscard]] FileWriter& writer() { return writer_; }
    /// Closes the writer: all bytes are on the disk. REQUIRES: opened.
    IoStatus finish();
    /// Puts the new file in its place, durably. REQUIRES: finished without a failure.
    IoStatus commit();
    /// The file is whole again, by whatever means: no later claim gives a `killedOwner`.
    void markWhole() { isMarked_ = false; }
    /// Writes the file in place after all, from the complete new file beside it. For a commit
    /// that failed with `isRefusedRename`.
    IoStatus commitInPlace(const std::string& owner);
    /// True for a failure of a commit that says that this file cannot be replaced, as one that
    /// is a mount point.
    [[nodiscard]] static bool isRefusedRename(const IoStatus& status);

  private:
    IoStatus lockBeside(const std::function<bool()>& goesOn);
    IoStatus lockItself(const std::function<bool()>& goesOn);
    bool makeBeside(int& code, std::string_view ending);
    [[nodiscard]] IoStatus named(const IoStatus& status) const;
    IoStatus writeMark(const std::string& owner);
    void release();

    std::string path_;    ///< as it was given
    std::string target_;  ///< where its links lead
    std::string lockPath_;
    std::string beside_;
    std::string killedOwner_;
    std::string reason_;
    int lock_ = -1;
    int noLockBeside_ = 0;  ///< why the folder takes no files
    bool isPlain_ = true;
    bool exists_ = false;
    bool inPlace_ = false;
    bool isMarked_ = false;  ///< the file may be cut short, and the lock file says so
    FileWriter writer_;
};

/// Copies a file with its mode, and where they can be given its owner and attributes, to the place
/// of `to`, which is replaced when the copy is complete on the disk; a link there is replaced, not
/// followed. The status names the one of the two that failed. `isChanged` says that another program
/// has changed `from` meanwhile; nothing is replaced then.
IoStatus replaceWithCopy(const std::string& from, const std::string& to, bool& isChanged);

/// Copies a file that is about to be overwritten though it could not be read: to its name with
/// ".unreadable", or with a number after that if there is such a file already. `kept` is where.
IoStatus keepUnreadableFile(const std::string& path, std::string& kept);

}  // namespace kavu
