#include "core/files/FileIo.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr std::size_t kReadBuffer = 256 * 1024;
constexpr std::size_t kWriteBuffer = 64 * 1024;
constexpr std::uint64_t kBehind = 4 * 1024 * 1024;
constexpr std::uint64_t kMostReserved = 256 * 1024 * 1024;

/// True for a path with a NUL, at which the system would cut it: the part before it names
/// another file.
bool isCutBySystem(const std::string& path) {
    return path.find('\0') != std::string::npos;
}

/// read() that goes on after a signal.
ssize_t readSome(int descriptor, char* to, std::size_t count) {
    ssize_t got = 0;
    do {
        got = ::read(descriptor, to, count);
    } while (got < 0 && errno == EINTR);
    return got;
}

/// True for the errors that say that nothing is at a path; all others leave it open.
bool meansMissing(int code) {
    return code == ENOENT || code == ENOTDIR || code == ENAMETOOLONG;
}

int openFile(const std::string& path, int flags, unsigned mode = 0666) {
    if (isCutBySystem(path)) {
        errno = EINVAL;
        return -1;
    }
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

}  // namespace

std::string IoStatus::reason() const {
    // What the system says of a file that is not the one that was read is hard to understand.
    return code_ == ESTALE ? "It was changed by another program meanwhile"
                           : std::generic_category().message(code_);
}

// ---------------------------------------------------------------------------------------
// ByteSource

struct ByteSource::Identity {
    explicit Identity(const struct stat& s)
        : device(s.st_dev), inode(s.st_ino), size(s.st_size), modified(s.st_mtim) {}

    [[nodiscard]] bool equals(const struct stat& s) const {
        return device == s.st_dev && inode == s.st_ino && size == s.st_size &&
               modified.tv_sec == s.st_mtim.tv_sec && modified.tv_nsec == s.st_mtim.tv_nsec;
    }

    dev_t device;
    ino_t inode;
    off_t size;
    timespec modified;
};

ByteSource::ByteSource() = default;

ByteSource::ByteSource(ByteSource&& other) noexcept {
    *this = std::move(other);
}

ByteSource& ByteSource::operator=(ByteSource&& other) noexcept {
    if (this != &other) {
        close();
        descriptor_ = std::exchange(other.descriptor_, -1);
        path_ = std::move(other.path_);
        buffer_ = std::move(other.buffer_);
        data_ = std::exchange(other.data_, nullptr);
        at_ = std::exchange(other.at_, 0);
        filled_ = std::exchange(other.filled_, 0);
        base_ = std::exchange(other.base_, 0);
        size_ = std::exchange(other.size_, 0);
        end_ = std::exchange(other.end_, kNoEnd);
        status_ = std::move(other.status_);
        identity_ = std::move(other.identity_);
    }
    return *this;
}

ByteSource::~ByteSource() {
    close();
}

ByteSource ByteSource::fromMemory(std::string_view bytes) {
    ByteSource source;
    source.data_ = bytes.data() == nullptr ? "" : bytes.data();
    source.filled_ = bytes.size();
    source.size_ = bytes.size();
    return source;
}

IoStatus ByteSource::open(const std::string& path) {
    close();
    path_ = path;
    status_ = {};
    // Not blocking, so that a pipe without a writer is an empty file and not a hang.
    descriptor_ = openFile(path, O_RDONLY | O_NONBLOCK);
    if (descriptor_ >= 0) {
        ::fcntl(descriptor_, F_SETFL, 0);
    }
    struct stat info {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &info) != 0) {
        status_ = {path, errno};
    } else if (S_ISDIR(info.st_mode)) {
        status_ = {path, EISDIR};
    }
    if (!status_.ok()) {
        const IoStatus failure = status_;
        close();
        status_ = failure;
        return failure;
    }
    size_ = static_cast<std::uint64_t>(info.st_size);
    identity_ = std::make_unique<Identity>(info);
    buffer_ = std::make_unique_for_overwrite<char[]>(kReadBuffer);
    data_ = buffer_.get();
    return {};
}

void ByteSource::close() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
    buffer_.reset();
    identity_.reset();
    data_ = nullptr;
    at_ = filled_ = 0;
    base_ = size_ = 0;
    end_ = kNoEnd;
}

bool ByteSource::isOpen() const {
    return data_ != nullptr;
}

int ByteSource::get() {
    const auto bytes = window();
    if (bytes.empty()) {
        return -1;
    }
    ++at_;
    return static_cast<unsigned char>(bytes.front());
}

void ByteSource::refill() {
    if (descriptor_ < 0 || !status_.ok() || base_ + filled_ >= end_) {
        return;
    }
    const ssize_t got = readSome(descriptor_, buffer_.get(), kReadBuffer);
    if (got < 0) {
        status_ = {path_, errno};
        return;
    }
    if (got > 0) {
        base_ += filled_;
        at_ = 0;
        filled_ = static_cast<std::size_t>(std::min(static_cast<std::uint64_t>(got), end_ - base_));
    }
}

void ByteSource::endAt(std::uint64_t position) {
    end_ = position;
    filled_ = static_cast<std::size_t>(std::min<std::uint64_t>(filled_, end_ - base_));
}

void ByteSource::seek(std::uint64_t position) {
    if (position >= base_ && position <= base_ + filled_) {
        at_ = static_cast<std::size_t>(position - base_);
        return;
    }
    if (descriptor_ < 0) {
        at_ = filled_;
        return;
    }
    if (::lseek(descriptor_, static_cast<off_t>(position), SEEK_SET) < 0) {
        status_ = {path_, errno};
        return;
    }
    base_ = position;
    at_ = filled_ = 0;
}

bool ByteSource::changedSinceOpened(IoStatus* failure) const {
    if (identity_ == nullptr) {
        return false;
    }
    struct stat now {};
    const auto isOther = [&](int result) {
        if (result != 0 && !meansMissing(errno) && failure != nullptr) {
            *failure = {path_, errno};
        }
        return result != 0 || !identity_->equals(now);
    };
    return isOther(::fstat(descriptor_, &now)) || isOther(::stat(path_.c_str(), &now));
}

// ---------------------------------------------------------------------------------------
// FileWriter

FileWriter::FileWriter(FileWriter&& other) noexcept {
    *this = std::move(other);
}

FileWriter& FileWriter::operator=(FileWriter&& other) noexcept {
    if (this != &other) {
        (void)close();
        descriptor_ = std::exchange(other.descriptor_, -1);
        path_ = std::move(other.path_);
        buffer_ = std::move(other.buffer_);
        position_ = std::exchange(other.position_, 0);
        behind_ = std::exchange(other.behind_, kNone);
        status_ = std::move(other.status_);
        roomMaker_ = std::exchange(other.roomMaker_, nullptr);
    }
    return *this;
}

FileWriter::~FileWriter() {
    (void)close();
}

IoStatus FileWriter::open(const std::string& path, WriteMode mode) {
    (void)close();
    buffer_.clear();  // what was written after a failed open belongs to no file
    path_ = path;
    status_ = {};
    position_ = 0;
    behind_ = kNone;
    // Not blocking, so that a pipe without a reader is a failure and not a hang.
    const int how = mode == WriteMode::Append ? O_APPEND
                    : mode == WriteMode::New  ? O_EXCL
                                              : O_TRUNC;
    descriptor_ = openFile(path, O_WRONLY | O_CREAT | O_NONBLOCK | how);
    if (descriptor_ < 0) {
        status_ = {path, errno};
        return status_;
    }
    ::fcntl(descriptor_, F_SETFL, mode == WriteMode::Append ? O_APPEND : 0);
    if (mode == WriteMode::Append) {
        struct stat info {};
        if (::fstat(descriptor_, &info) != 0) {
            status_ = {path, errno};
        }
        position_ = static_cast<std::uint64_t>(info.st_size);
    }
    return status_;
}

void FileWriter::write(std::string_view bytes) {
    position_ += bytes.size();
    if (buffer_.size() + bytes.size() <= kWriteBuffer) {
        buffer_.append(bytes);
        return;
    }
    (void)flush();
    if (bytes.size() < kWriteBuffer) {
        buffer_.append(bytes);
    } else {
        writeOut(bytes);
    }
    startWriteBehind();
}

void FileWriter::writeOut(std::string_view bytes) {
    while (status_.ok() && !bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            const int code = written < 0 ? errno : ENOSPC;
            if (code == ENOSPC && roomMaker_ != nullptr && roomMaker_->makeRoom()) {
                continue;
            }
            status_ = {path_, code};
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void FileWriter::startWriteBehind() {
    const auto written = position_ - buffer_.size();
    if (behind_ != kNone && written >= behind_ + kBehind && status_.ok()) {
        // Only a hint: what it does not do is left for the close.
        (void)::sync_file_range(descriptor_, static_cast<off_t>(behind_),
                                static_cast<off_t>(written - behind_), SYNC_FILE_RANGE_WRITE);
        behind_ = written;
    }
}

IoStatus FileWriter::flush() {
    writeOut(buffer_);
    buffer_.clear();
    return status_;
}

IoStatus FileWriter::close(bool durable) {
    if (descriptor_ < 0) {
        return status_;
    }
    (void)flush();
    // A pipe or a device cannot be synchronised, and need not be.
    if (durable && status_.ok() && ::fsync(descriptor_) != 0 && errno != EINVAL && errno != EROFS) {
        status_ = {path_, errno};
    }
    if (::close(descriptor_) != 0 && status_.ok() && errno != EINTR) {
        status_ = {path_, errno};
    }
    descriptor_ = -1;
    return status_;
}

// ---------------------------------------------------------------------------------------
// Whole files and folders

IoStatus readWholeFile(const std::string& path, std::string& bytes) {
    bytes.clear();
    ByteSource source;
    if (auto status = source.open(path); !status.ok()) {
        return status;
    }
    // The size that the file system reports saves copies, but is not trusted.
    bytes.reserve(static_cast<std::size_t>(std::min(source.size(), kMostReserved)));
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        bytes.append(window);
        source.take(window.size());
    }
    return source.status();
}

IoStatus writeWholeFile(const std::string& path, std::string_view bytes) {
    FileWriter writer;
    if (auto status = writer.open(path, WriteMode::Truncate); !status.ok()) {
        return status;
    }
    writer.write(bytes);
    return writer.close();
}

IoStatus replaceWorkingFile(const std::string& path, std::string_view bytes) {
    const std::string beside = path + ".new";
    auto status = writeWholeFile(beside, bytes);
    if (status.ok()) {
        status = renameFile(beside, path);
    }
    if (!status.ok()) {
        (void)deleteFile(beside);
    }
    return status;
}

IoStatus copyFile(const std::string& from, const std::string& to, bool durable) {
    ByteSource source;
    if (auto status = source.open(from); !status.ok()) {
        return status;
    }
    // The open of the target would empty the source.
    bool same = false;
    if (auto status = probeSameFile(from, to, same); !status.ok() || same) {
        return status.ok() ? IoStatus(to, EEXIST) : status;
    }
    FileWriter writer;
    if (auto status = writer.open(to, WriteMode::Truncate); !status.ok()) {
        return status;
    }
    for (auto window = source.window(); !window.empty(); window = source.window()) {
        writer.write(window);
        source.take(window.size());
    }
    const auto written = writer.close(durable);
    return source.status().ok() ? written : source.status();
}

IoStatus deleteFile(const std::string& path) {
    if (isCutBySystem(path)) {
        return {path, EINVAL};
    }
    return ::unlink(path.c_str()) == 0 ? IoStatus() : IoStatus(path, errno);
}

IoStatus renameFile(const std::string& from, const std::string& to) {
    if (isCutBySystem(from) || isCutBySystem(to)) {
        return {to, EINVAL};
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? IoStatus() : IoStatus(to, errno);
}

IoStatus makeFolder(const std::string& path, unsigned mode) {
    if (isCutBySystem(path)) {
        return {path, EINVAL};
    }
    if (::mkdir(path.c_str(), mode) == 0) {
        return {};
    }
    if (errno != EEXIST) {
        return {path, errno};
    }
    PathKind kind = PathKind::Missing;
    const auto status = probePath(path, kind);
    // "File exists" would not say that a file is in the way of a folder.
    return !status.ok() || kind == PathKind::Folder ? status : IoStatus(path, ENOTDIR);
}

IoStatus makeFolders(const std::string& path, unsigned mode) {
    for (std::size_t at = 1; at < path.size(); ++at) {
        if (path[at] == '/') {
            const auto parent = path.substr(0, at);
            if (folderExists(parent)) {
                continue;
            }
            if (auto status = makeFolder(parent, mode); !status.ok()) {
                return status;
            }
        }
    }
    return makeFolder(path, mode);
}

IoStatus deleteFolder(const std::string& path) {
    std::vector<FolderEntry> entries;
    IoStatus first = listFolder(path, entries);
    const auto keepFirst = [&first](const IoStatus& status) {
        if (first.ok()) {
            first = status;
        }
    };
    for (const bool folders : {true, false}) {
        for (const auto& entry : entries) {
            if (entry.isFolder == folders) {
                const auto full = path + "/" + entry.name;
                keepFirst(folders ? deleteFolder(full) : deleteFile(full));
            }
        }
    }
    if (::rmdir(path.c_str()) != 0) {
        keepFirst({path, errno});
    }
    return first;
}

IoStatus syncFolder(const std::string& path) {
    const int descriptor = openFile(path, O_RDONLY | O_DIRECTORY);
    if (descriptor < 0) {
        // A folder may be writable but not readable; its files are no worse for that.
        return errno == EACCES ? IoStatus() : IoStatus(path, errno);
    }
    const int code = ::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS ? 0 : errno;
    ::close(descriptor);
    return {path, code};
}

IoStatus probePath(const std::string& path, PathKind& kind) {
    kind = PathKind::Missing;
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return meansMissing(errno) ? IoStatus() : IoStatus(path, errno);
    }
    kind = S_ISREG(info.st_mode)   ? PathKind::PlainFile
           : S_ISDIR(info.st_mode) ? PathKind::Folder
                                   : PathKind::Other;
    return {};
}

IoStatus probeSameFile(const std::string& one, const std::string& other, bool& same) {
    struct stat info[2]{};
    const std::string* const paths[2] = {&one, &other};
    same = false;
    for (std::size_t i = 0; i < 2; ++i) {
        if (::stat(paths[i]->c_str(), &info[i]) != 0) {
            return meansMissing(errno) ? IoStatus() : IoStatus(*paths[i], errno);
        }
    }
    same = info[0].st_dev == info[1].st_dev && info[0].st_ino == info[1].st_ino;
    return {};
}

bool fileExists(const std::string& path) {
    struct stat info {};
    // What is in front of a zero byte names another file.
    return path.find('\0') == std::string::npos && ::stat(path.c_str(), &info) == 0;
}

bool isPlainFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

bool folderExists(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool canRead(const std::string& path) {
    const int descriptor = openFile(path, O_RDONLY | O_NONBLOCK);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return descriptor >= 0;
}

bool canWrite(const std::string& path) {
    // Not blocking: a pipe without a reader cannot be written, and there is no waiting
    // for one.
    const int descriptor = openFile(path, O_WRONLY | O_NONBLOCK);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return descriptor >= 0;
}

bool hasReadOnlyAttribute(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode) &&
           (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

IoStatus probeSize(const std::string& path, std::uint64_t& size) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return {path, errno};
    }
    size = static_cast<std::uint64_t>(info.st_size);
    return {};
}

std::uint64_t fileSize(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

std::string fileStamp(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return {};
    }
    std::string stamp;
    for (const auto number :
         {static_cast<std::int64_t>(info.st_dev), static_cast<std::int64_t>(info.st_ino),
          static_cast<std::int64_t>(info.st_size), static_cast<std::int64_t>(info.st_mtim.tv_sec),
          static_cast<std::int64_t>(info.st_mtim.tv_nsec)}) {
        stamp += std::to_string(number) + " ";
    }
    return stamp;
}

}  // namespace kavu
