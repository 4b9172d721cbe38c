// Files, read through one buffered reader and written through one buffered writer that
// reports every failure with its path and the system's reason.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// A run of bytes that is read from the front, from a file or from memory. Single bytes
/// and whole spans can be taken; the position can be set. A read error looks like the end
/// of the bytes and is kept in `status`.
class ByteSource {
  public:
    ByteSource();
    ByteSource(ByteSource&&) noexcept;
    ByteSource& operator=(ByteSource&&) noexcept;
    ~ByteSource();

    /// Reads from `bytes`, which must outlive the source.
    [[nodiscard]] static ByteSource fromMemory(std::string_view bytes);

    IoStatus open(const std::string& path);
    void close();
    [[nodiscard]] bool isOpen() const;

    /// The bytes that can be taken without reading more. Empty only at the end.
    [[nodiscard]] std::string_view window() {
        if (at_ == filled_) {
            refill();
        }
        return {data_ + at_, filled_ - at_};
    }
    /// Takes `count` bytes of the window. REQUIRES: count <= window().size().
    void take(std::size_t count) { at_ += count; }
    /// The next byte, or -1 at the end.
    int get();
    [[nodiscard]] bool atEnd() { return window().empty(); }

    [[nodiscard]] std::uint64_t position() const { return base_ + at_; }
    void seek(std::uint64_t position);
    /// What is at `position` and after it is no part of the source any more. REQUIRES: no byte
    /// there has been taken.
    void endAt(std::uint64_t position);
    /// The size of the file when it was opened.
    [[nodiscard]] std::uint64_t size() const { return size_; }
    [[nodiscard]] const IoStatus& status() const { return status_; }
    /// True if the file is no longer the one that was opened: another program has changed,
    /// truncated or replaced it since. Also true if that cannot be known; `failure`, if
    /// given, then says why.
    [[nodiscard]] bool changedSinceOpened(IoStatus* failure = nullptr) const;

  private:
    static constexpr std::uint64_t kNoEnd = ~std::uint64_t{0};
    struct Identity;
    void refill();

    int descriptor_ = -1;
    std::string path_;
    std::unique_ptr<char[]> buffer_;
    const char* data_ = nullptr;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    std::uint64_t base_ = 0;
    std::uint64_t size_ = 0;
    std::uint64_t end_ = kNoEnd;
    IoStatus status_;
    std::unique_ptr<Identity> identity_;
};

enum class WriteMode {
    Truncate,  ///< empties the file, or makes it
    Append,    ///< writes after what is there, or makes it
    New,       ///< makes the file, and fails if anything is at the path already
};

/// Frees space on a full disk.
class RoomMaker {
  public:
    virtual ~RoomMaker() = default;
    /// True if something was freed, so that a write is worth another try.
    virtual bool makeRoom() = 0;
};

/// Buffered writing. The first failure sticks: later writes do nothing, and `close`
/// reports it.
class FileWriter {
  public:
    FileWriter() = default;
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;
    FileWriter(FileWriter&&) noexcept;
    FileWriter& operator=(FileWriter&&) noexcept;
    ~FileWriter();

    /// Files are made with the permissions of the user's mask; in the working store,
    /// whose folder is private, that is private as well.
    IoStatus open(const std::string& path, WriteMode mode);
    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    /// Sets the one to free space when the disk is full; null for none. It must outlive
    /// the writing.
    void setRoomMaker(RoomMaker* maker) { roomMaker_ = maker; }
    /// Lets the disk begin while there is more to write, so that a durable close of the file that
    /// is open waits less.
    void writeBehind() { behind_ = position_; }

    void write(std::string_view bytes);
    void put(char c) { write(std::string_view(&c, 1)); }
    /// Bytes written so far through this writer, and, with `Append`, those before them.
    [[nodiscard]] std::uint64_t position() const { return position_; }
    [[nodiscard]] const IoStatus& status() const { return status_; }

    IoStatus flush();
    /// Closes the file. With `durable` it is complete on the disk when this returns.
    IoStatus close(bool durable = false);

  private:
    static constexpr std::uint64_t kNone = ~std::uint64_t{0};
    void writeOut(std::string_view bytes);
    void startWriteBehind();

    int descriptor_ = -1;
    std::string path_;
    std::string buffer_;
    std::uint64_t position_ = 0;
    std::uint64_t behind_ = kNone;  ///< up to where the disk was told to begin
    IoStatus status_;
    RoomMaker* roomMaker_ = nullptr;
};

[[nodiscard]] IoStatus readWholeFile(const std::string& path, std::string& bytes);
/// Replaces a working file, whole or not at all: through a file next to it that replaces
/// it when it is complete. Quick: it need not have reached the disk on return.
[[nodiscard]] IoStatus replaceWorkingFile(const std::string& path, std::string_view bytes);
/// Replaces a file of the user, complete on the disk when it returns: a link stays and its
/// target is written, mode and owner stay, and so do other names of the file. Where
/// replacing it by a file next to it would break that, it is written in place.
[[nodiscard]] IoStatus replaceUserFile(const std::string& path, std::string_view bytes);
/// The same for a file that several programs write: fails with ESTALE if the file is no longer
/// the one of which `fileStamp` gave this stamp (empty for none).
[[nodiscard]] IoStatus replaceUnchangedFile(const std::string& path, std::string_view bytes,
                                            const std::string& stamp);
/// Writes a file in place, in one go.
[[nodiscard]] IoStatus writeWholeFile(const std::string& path, std::string_view bytes);
/// Copies the bytes of a file, overwriting the target. The status names the file that failed;
/// copying a file over itself fails (EEXIST). With `durable` the copy is complete on the disk
/// when this returns.
[[nodiscard]] IoStatus copyFile(const std::string& from, const std::string& to,
                                bool durable = false);
[[nodiscard]] IoStatus deleteFile(const std::string& path);
[[nodiscard]] IoStatus renameFile(const std::string& from, const std::string& to);
/// Makes one folder. One that exists already is no failure; anything else at the path is
/// (ENOTDIR).
[[nodiscard]] IoStatus makeFolder(const std::string& path, unsigned mode = 0777);
/// Makes a folder with all its parents.
[[nodiscard]] IoStatus makeFolders(const std::string& path, unsigned mode = 0777);
/// Deletes a folder with all it holds, depth first. Goes on after a failure and returns
/// the first one.
[[nodiscard]] IoStatus deleteFolder(const std::string& path);
/// Makes the entries of a folder durable, if the folder may be read.
[[nodiscard]] IoStatus syncFolder(const std::string& path);

enum class PathKind { Missing, PlainFile, Folder, Other };
/// Finds what a path leads to; links are followed. `Missing` means that there is certainly
/// nothing: if that cannot be known it is a failure. Code that would overwrite or skip
/// what is missing must ask here, not the functions below.
[[nodiscard]] IoStatus probePath(const std::string& path, PathKind& kind);
/// Finds whether both paths lead to one existing file, links included.
[[nodiscard]] IoStatus probeSameFile(const std::string& one, const std::string& other, bool& same);

[[nodiscard]] bool fileExists(const std::string& path);
/// True for an existing file that is not a folder, device or pipe; links are followed.
[[nodiscard]] bool isPlainFile(const std::string& path);
/// The same, but a link is none.
[[nodiscard]] bool isOwnPlainFile(const std::string& path);
[[nodiscard]] bool folderExists(const std::string& path);
[[nodiscard]] bool canRead(const std::string& path);
/// True if an existing file can be opened for writing; nothing in it changes.
[[nodiscard]] bool canWrite(const std::string& path);
/// True if no permission bit allows writing to the file.
[[nodiscard]] bool hasReadOnlyAttribute(const std::string& path);
/// The size of a file; a missing one is a failure.
[[nodiscard]] IoStatus probeSize(const std::string& path, std::uint64_t& size);
/// The size of a file, 0 if there is none.
[[nodiscard]] std::uint64_t fileSize(const std::string& path);

/// A text that differs once the file has been written, replaced, made or deleted.
[[nodiscard]] std::string fileStamp(const std::string& path);

struct FolderEntry {
    std::string name;
    bool isFolder = false;
};
/// The entries of a folder without "." and "..", sorted by name.
[[nodiscard]] IoStatus listFolder(const std::string& path, std::vector<FolderEntry>& entries);

/// True if a name matches a pattern in which `*` stands for any run of characters and
/// every other character for itself.
[[nodiscard]] bool matchesWildcard(std::string_view name, std::string_view pattern);

/// The part of a path after its last separator.
[[nodiscard]] std::string fileNameOf(const std::string& path);
/// The part before it, "." if there is none.
[[nodiscard]] std::string folderOf(const std::string& path);
/// The path from the root, which holds wherever the program goes: a relative one is of the present
/// folder. Links and ".." stay as they are. An empty path stays empty; so does a relative one, as
/// it is, if the present folder is gone.
[[nodiscard]] std::string absolutePath(const std::string& path);

}  // namespace kavu
