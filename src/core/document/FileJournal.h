// Former contents of files of the document: a file is kept once, before it changes, as a hard
// link in a folder of the working store. No bytes are copied, because a file of the document
// is never written in place: a change replaces it by another file, and the link still leads
// to the former one.
//
// The folder alone is enough to put everything back. What a crashed run left open is read
// from there: see `filesBeforeOpenChanges`.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DocumentFiles;

/// A folder of former contents. It is made for the first file and deleted with the object,
/// unless `leave` was called.
class KeptFiles {
  public:
    KeptFiles() = default;
    /// The folder is a name in the working store of `files`, which must outlive the object.
    /// Remains in it are cleared away when it is made.
    KeptFiles(DocumentFiles& files, std::string folder);
    KeptFiles(const KeptFiles&) = delete;
    KeptFiles& operator=(const KeptFiles&) = delete;
    KeptFiles(KeptFiles&& other) noexcept;
    KeptFiles& operator=(KeptFiles&& other) noexcept;
    ~KeptFiles();

    /// Makes the folder, private, with the note that recovery shows for it. Does nothing if it
    /// is made already.
    IoStatus begin();
    void setNote(std::string note) { note_ = std::move(note); }

    /// Keeps a file as it is now: as a link, as a copy where no link can be made, or as a
    /// mark that it does not exist. Does nothing for one that is kept already.
    IoStatus keep(const std::string& name);
    [[nodiscard]] bool has(const std::string& name) const { return kept_.contains(name); }
    [[nodiscard]] bool empty() const { return kept_.empty(); }
    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] std::vector<std::string> names() const;
    /// The size of the kept files in bytes.
    [[nodiscard]] std::uint64_t bytes() const;

    /// Forgets the files that equal what was kept. The same inode has the same bytes;
    /// otherwise the bytes are compared. A file that cannot be read counts as changed.
    void dropUnchanged();
    /// Puts one file back as it was kept, and no longer keeps it.
    IoStatus putBack(const std::string& name);
    /// Puts one file back, and keeps it as well.
    IoStatus putBackCopy(const std::string& name) const;
    /// Stops keeping a file.
    void release(const std::string& name);
    /// Puts all files back. Goes on after a failure and returns the first one; what could not
    /// be put back stays kept.
    IoStatus putBackAll();
    /// Takes over what `other` keeps, except for files that are kept here already.
    IoStatus join(const KeptFiles& other);

    /// Renames the folder, whole or not at all.
    IoStatus moveTo(const std::string& folder);
    /// Deletes the folder and forgets what it held.
    void drop();
    /// Leaves the folder in place when the object is destroyed.
    void leave();

  private:
    struct Kept {
        bool there = false;
        std::uint64_t bytes = 0;
    };
    [[nodiscard]] std::string pathOf(const std::string& name) const;
    [[nodiscard]] std::string markOf(const std::string& name) const;
    [[nodiscard]] bool isUnchanged(const std::string& name, const Kept& kept) const;

    DocumentFiles* files_ = nullptr;
    std::string folder_;
    /// Of the folder. A store that was deactivated would give another one.
    std::string path_;
    std::string note_;
    std::map<std::string, Kept> kept_;
    bool made_ = false;
};

/// The changes of the document's files since the journal was made, kept so that they can be
/// put back, in parts or as a whole. `DocumentHistory` reports them to it.
class FileJournal {
  public:
    using Filter = std::function<bool(std::string_view name)>;

    /// Without a filter all files are kept. The folders of the journal's levels have the name of
    /// its own with a number added.
    FileJournal(DocumentFiles& files, std::string folder, Filter filter = {});
    FileJournal(const FileJournal&) = delete;
    FileJournal& operator=(const FileJournal&) = delete;

    IoStatus beforeChange(std::string_view name);
    /// Keeps every file of the store that matches one of the patterns.
    IoStatus keepAll(const std::vector<std::string_view>& patterns);
    /// The files that have changed since the last call, as they were then.
    KeptFiles take(IoStatus& status);
    /// Puts files back; `files` then holds what they replaced. What could not be put back is
    /// dropped from it; `status` is the first failure.
    void exchange(KeptFiles& files, IoStatus& status);
    [[nodiscard]] KeptFiles& kept() { return kept_; }
    /// The files that were written so far, whether they differ or not.
    [[nodiscard]] const std::set<std::string>& written() const { return written_; }

  private:
    [[nodiscard]] std::string nextFolder();

    DocumentFiles& files_;
    std::string folder_;
    Filter filter_;
    KeptFiles kept_;
    std::set<std::string> written_;
    int folders_ = 0;
    bool paused_ = false;
};

/// What an unfinished operation has left: the files that it has changed, by name, with the
/// path of their contents before it; an empty path for one that did not exist.
struct OpenChanges {
    std::map<std::string, std::string> former;
    std::vector<std::string> operations;  ///< their names, the outermost first
};
/// Reads the folders of the operations that were open in a working store when its run
/// crashed; nothing in the store changes. Of nested operations the outermost decides.
[[nodiscard]] IoStatus filesBeforeOpenChanges(const std::string& store, OpenChanges& changes);

}  // namespace kavu
