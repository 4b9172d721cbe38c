// Former contents of files of the document: once a file, before it changes, as a hard link in
// a folder of the working store. No bytes are read or written for it, because a file of the
// document is never written in place: whoever changes it puts another file in its place, and
// the link goes on leading to the former one.
//
// The folder alone is enough to put everything back. What a run that has died left open is
// read from there: see `filesBeforeOpenChanges`.
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

/// A folder of former contents. It is made for the first file and goes with the object, unless
/// it was left to others.
class KeptFiles {
  public:
    KeptFiles() = default;
    /// The folder is a name in the working store of `files`, which must outlive the object.
    /// What is left there from before is cleared away when it is made.
    KeptFiles(DocumentFiles& files, std::string folder);
    KeptFiles(const KeptFiles&) = delete;
    KeptFiles& operator=(const KeptFiles&) = delete;
    KeptFiles(KeptFiles&& other) noexcept;
    KeptFiles& operator=(KeptFiles&& other) noexcept;
    ~KeptFiles();

    /// Makes the folder, private; `note` is what recovery says about it. Nothing is done if it
    /// is there already.
    IoStatus begin();
    void setNote(std::string note) { note_ = std::move(note); }

    /// Keeps a file as it is now: as a link, as a copy where no link can be made, or as the
    /// mark that there is none. One that is kept already is not looked at.
    IoStatus keep(const std::string& name);
    [[nodiscard]] bool has(const std::string& name) const { return kept_.contains(name); }
    [[nodiscard]] bool empty() const { return kept_.empty(); }
    [[nodiscard]] const std::string& folder() const { return folder_; }
    [[nodiscard]] std::vector<std::string> names() const;
    /// Bytes that the kept files hold.
    [[nodiscard]] std::uint64_t bytes() const;

    /// Forgets the files that are again what they were. The same inode has the same bytes; of
    /// others the bytes are compared. A file that cannot be read counts as changed.
    void dropUnchanged();
    /// Puts one file back as it was kept, and no longer keeps it.
    IoStatus putBack(const std::string& name);
    /// Puts one file back, and keeps it as well.
    IoStatus putBackCopy(const std::string& name) const;
    /// No longer keeps a file.
    void release(const std::string& name);
    /// Puts all files back. Goes on after a failure and gives the first one; what could not be
    /// put back stays kept.
    IoStatus putBackAll();
    /// Takes over what `other` keeps, except for files that are kept here already.
    IoStatus join(const KeptFiles& other);

    /// Renames the folder, whole or not at all.
    IoStatus moveTo(const std::string& folder);
    /// Deletes the folder and forgets what it held.
    void drop();
    /// The folder stays when the object goes.
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
    /// Of the folder. A store that has been given up would tell another one.
    std::string path_;
    std::string note_;
    std::map<std::string, Kept> kept_;
    bool made_ = false;
};

/// What happens to the files of the document, from when it was made on: kept so that it can be
/// put back, in parts or as a whole. `DocumentHistory` tells it of the changes.
class FileJournal {
  public:
    using Filter = std::function<bool(std::string_view name)>;

    /// Without a filter all files are of interest. Folders of the journal's levels bear the name
    /// of its own with a number added.
    FileJournal(DocumentFiles& files, std::string folder, Filter filter = {});
    FileJournal(const FileJournal&) = delete;
    FileJournal& operator=(const FileJournal&) = delete;

    IoStatus beforeChange(std::string_view name);
    /// Keeps every file of the store that matches one of the patterns.
    IoStatus keepAll(const std::vector<std::string_view>& patterns);
    /// The files that differ since this was asked last, as they were then.
    KeptFiles take(IoStatus& status);
    /// Puts files back, which then hold what was there until now. What could not be put back
    /// is not among them any more; `status` is the first failure.
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

/// What an operation that did not end has left: the files that it has changed, by name, with
/// the path of the contents from before it; an empty path for one that was not there.
struct OpenChanges {
    std::map<std::string, std::string> former;
    std::vector<std::string> operations;  ///< their names, the outermost first
};
/// Reads the folders of the operations that were open in a working store when its run died;
/// nothing in the store changes. Of nested ones the outermost says what was there first.
[[nodiscard]] IoStatus filesBeforeOpenChanges(const std::string& store, OpenChanges& changes);

}  // namespace kavu
