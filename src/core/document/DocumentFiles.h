// The gate through which the files of the open document change. Readers open these files by
// their path; every write, deletion and renaming goes through here, so that one place knows
// of each change before it happens and can have the former contents kept.
#pragma once

#include "core/document/StoreRecord.h"
#include "core/files/FileIo.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class DocumentFiles;
class UserInterface;
class WorkingStore;

/// What a file of a document is, by its name.
struct DocumentFile {
    enum Kind {
        Group,    ///< the commands of one group
        Chunk,    ///< conversion records, or the raw commands they are made from
        Comment,  ///< the comment of a conversion record
        Side,     ///< what an editor keeps next to the groups
        Record,   ///< what the store says of itself
    };
    Kind kind = Side;
    char letter = 0;          ///< the letter of a group, 'C' for a chunk or comment, else 0
    std::int64_t number = 0;  ///< the index of a group, the number of a chunk, else 0
    std::string name;
};
[[nodiscard]] DocumentFile describeDocumentFile(std::string_view name);

/// Keeps former contents so that they can be put back.
class FormerFileKeeper {
  public:
    virtual ~FormerFileKeeper() = default;
    /// Called each time before a file changes, is made or is deleted, also if it was called
    /// for the name before. A failure stops the change, which then returns this status.
    virtual IoStatus beforeChange(std::string_view name) = 0;
};

/// A file of the document that is written piece by piece. It replaces the one of its name on
/// `close`; one that is not closed, or has failed, is dropped.
class DocumentWriter {
  public:
    DocumentWriter(const DocumentWriter&) = delete;
    DocumentWriter& operator=(const DocumentWriter&) = delete;
    DocumentWriter(DocumentWriter&& other) noexcept;
    DocumentWriter& operator=(DocumentWriter&&) = delete;
    ~DocumentWriter();

    /// Where the bytes go. Only `close` of this object closes it.
    [[nodiscard]] FileWriter& out() { return out_; }
    void write(std::string_view bytes) { out_.write(bytes); }
    /// The first failure so far, that of the open included.
    [[nodiscard]] const IoStatus& status() const { return status_.ok() ? out_.status() : status_; }
    /// Puts the file in its place. After a failure the former file is as it was. A second
    /// call does nothing and returns the status of the first.
    IoStatus close(bool isDurable = false);
    /// Discards what was written; the former file stays.
    void drop();

  private:
    friend class DocumentFiles;
    DocumentWriter(DocumentFiles& files, std::string_view name);

    DocumentFiles* files_;
    std::string name_;
    FileWriter out_;
    IoStatus status_;
    bool open_ = false;
};

/// The working files of one document. The contract that kept links rely on: an inode that
/// may have another link is never written in place; a file is replaced by another one, whole
/// or not at all, and after a failure the former file is still there and no temporary file
/// is left. A name must be plain: one that is empty, leads to another folder, holds a NUL or
/// ends like the temporary file of a write gives EINVAL.
class DocumentFiles {
  public:
    /// The store must outlive the object.
    explicit DocumentFiles(WorkingStore& store) : store_(store) {}
    DocumentFiles(const DocumentFiles&) = delete;
    DocumentFiles& operator=(const DocumentFiles&) = delete;

    /// The path by which a file is read.
    [[nodiscard]] std::string path(std::string_view name) const;

    IoStatus put(std::string_view name, std::string_view bytes);
    /// A failure to make the file is in the writer's status.
    [[nodiscard]] DocumentWriter writer(std::string_view name);
    /// Appends to a file, or makes it: for a load, which gathers many groups at once. A file
    /// that has another link is copied first. After a failure it is as long as before.
    IoStatus append(std::string_view name, std::string_view bytes);
    /// Copies a file from outside the document, or of it, to `name`.
    IoStatus copyIn(const std::string& path, std::string_view name);
    /// Moves a file from elsewhere on the store's disk to `name`. One that is a link to the
    /// file it would replace is only deleted.
    IoStatus adopt(const std::string& path, std::string_view name);
    /// Deletes a file; a missing one is a failure (ENOENT).
    IoStatus remove(std::string_view name);
    /// Deletes a file if there is one.
    IoStatus removeIfThere(std::string_view name);
    /// Deletes all files that match, `*` being a wildcard. Goes on after a failure and returns
    /// the first one.
    IoStatus removeAll(std::string_view pattern);
    /// Renames a file; one that has the new name is replaced.
    IoStatus move(std::string_view from, std::string_view to);

    /// The group files that were written here and have vanished without being removed here: to
    /// save without them would lose what they held. Sorted. Groups of an index that is not
    /// saved are not checked.
    [[nodiscard]] std::vector<std::string> missing() const;
    /// For the close of a document: deletes all its files, as
    /// `WorkingStore::clearDocumentFiles`, and forgets them. Their contents are not kept.
    void clear(UserInterface* parent, int edition);
    /// Says in the store that a load from this file has begun; with an empty path, that a new
    /// document is made.
    IoStatus beginRecord(DocumentSource source);
    /// Says that every command of the source is in the store. REQUIRES: the record was begun.
    IoStatus recordSplit();
    /// Says what edition the group files are of, which are not loaded yet. All that the record says
    /// is on the disk on return.
    IoStatus recordEdition(int edition);
    /// Says that the document is loaded, or what an operation has made of it. The record is
    /// written only if it differs, and not if none was begun.
    IoStatus recordState(int edition);
    /// The same after a save: from here on the document is that file.
    IoStatus recordState(int edition, DocumentSource source);
    /// See `WorkingStore::keepForRecovery`.
    void keepForRecovery();

    /// Sets the keeper to call before a change; null for none. Returns the previous one,
    /// to be set again. REQUIRES: the keeper lives until another one is set.
    FormerFileKeeper* setKeeper(FormerFileKeeper* keeper);
    /// Sets the one to free space when the disk is full, so that the write is tried again;
    /// null for none.
    void setRoomMaker(RoomMaker* maker) { roomMaker_ = maker; }

    /// True while a document is being loaded: nothing of it has a former state to return to.
    [[nodiscard]] bool isLoading() const { return loads_ > 0; }
    /// Whether a change outside every scope, a fault of the program that could be neither rolled
    /// back nor undone, aborts the program. An application asks for it in debug builds, and tests
    /// in all: a user would rather have such a change than lose his work.
    void demandScopes(bool demanded) { scopesDemanded_ = demanded; }

  private:
    friend class ChangeScope;
    friend class LoadScope;
    friend class DocumentWriter;

    [[nodiscard]] IoStatus check(std::string_view name) const;
    [[nodiscard]] IoStatus announce(std::string_view name) const;
    IoStatus replace(const std::string& beside, std::string_view name);
    IoStatus appendTo(const std::string& path, std::string_view bytes, bool exists);
    void recordFiles();
    IoStatus writeRecord(bool isDurable);
    void remember(std::string_view name);
    void forget(std::string_view name);
    void noteChunk(const DocumentFile& file, bool isThere);

    WorkingStore& store_;
    FormerFileKeeper* keeper_ = nullptr;
    RoomMaker* roomMaker_ = nullptr;
    /// Group files only: a document has thousands of chunks, but a group at most one file
    /// per index.
    std::set<std::string, std::less<>> made_;
    std::set<std::string, std::less<>> rawGroups_;
    std::vector<bool> chunks_;  ///< by number
    std::optional<StoreRecord> record_;
    /// The record as it is in the store; empty if that is not known.
    std::string writtenRecord_;
    int scopes_ = 0;
    int loads_ = 0;
    bool scopesDemanded_ = false;
};

/// A stretch in which files of the document may change. Scopes nest.
class ChangeScope {
  public:
    explicit ChangeScope(DocumentFiles& files) : files_(files) { ++files_.scopes_; }
    ChangeScope(const ChangeScope&) = delete;
    ChangeScope& operator=(const ChangeScope&) = delete;
    ~ChangeScope() { --files_.scopes_; }

  private:
    DocumentFiles& files_;
};

/// The load of a document: a failed one is cleared away as a whole, so nothing is kept.
class LoadScope {
  public:
    explicit LoadScope(DocumentFiles& files) : files_(files), scope_(files) { ++files_.loads_; }
    LoadScope(const LoadScope&) = delete;
    LoadScope& operator=(const LoadScope&) = delete;
    ~LoadScope() { --files_.loads_; }

  private:
    DocumentFiles& files_;
    ChangeScope scope_;
};

/// The save of a document: its banner and its file name belong to the file that is written,
/// not to what the user has edited.
using SaveScope = ChangeScope;

}  // namespace kavu
