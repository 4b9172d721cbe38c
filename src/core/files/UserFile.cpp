#include "core/files/UserFile.h"

#include "core/files/FileAttributes.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kavu {

namespace {

constexpr int kMostLockTries = 2000;
constexpr unsigned kLockPause = 5000;  // microseconds
constexpr int kMostLinks = 40;
constexpr std::size_t kMostNameBytes = 255;

/// Where a path leads when its links are followed, also if there is nothing at the end.
std::string endOfLinks(std::string path) {
    char buffer[4096];
    for (int links = 0; links < kMostLinks; ++links) {
        const auto length = ::readlink(path.c_str(), buffer, sizeof buffer);
        if (length <= 0 || length == static_cast<ssize_t>(sizeof buffer)) {
            break;
        }
        const std::string to(buffer, static_cast<std::size_t>(length));
        path = to.front() == '/' ? to : folderOf(path) + "/" + to;
    }
    return path;
}

/// A hidden name beside a file; one that would be too long is made of a sum of the name.
std::string nameBeside(const std::string& path, const char* ending) {
    auto name = fileNameOf(path);
    if (name.size() + 16 > kMostNameBytes) {
        std::uint64_t sum = 14695981039346656037U;
        for (const char c : name) {
            sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211U;
        }
        name = std::to_string(sum);
    }
    return folderOf(path) + "/." + name + ending;
}

/// True for a failure to make a file beside another one that says nothing about the other one.
bool forbidsFilesBeside(int code) {
    return code == EACCES || code == EPERM || code == EROFS || code == ENAMETOOLONG ||
           code == ELOOP;
}

bool isSameFile(int descriptor, const std::string& path) {
    struct stat open {};
    struct stat there {};
    return ::fstat(descriptor, &open) == 0 && ::lstat(path.c_str(), &there) == 0 &&
           open.st_dev == there.st_dev && open.st_ino == there.st_ino;
}

/// Locks an open file; EWOULDBLOCK if another one has it. A file system without locks has
/// nobody else's either.
int lockFile(int descriptor) {
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        return 0;
    }
    return errno == EWOULDBLOCK || errno == EINTR ? EWOULDBLOCK : 0;
}

/// Opens and locks the file of this name, whatever others do with the name meanwhile. Returns
/// the descriptor, or -1 and the system's error number in `code`.
int openLocked(const std::string& path, int flags, const std::function<bool()>& goesOn, int& code) {
    for (int tries = 0; tries < kMostLockTries; ++tries) {
        const int descriptor =
            ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW, 0666);
        if (descriptor < 0) {
            code = errno;
            return -1;
        }
        if (lockFile(descriptor) != 0) {
            ::close(descriptor);
            if (goesOn && !goesOn()) {
                break;
            }
            ::usleep(kLockPause);
            continue;
        }
        // The one before us may have removed or replaced the file while we waited.
        if (isSameFile(descriptor, path)) {
            code = 0;
            return descriptor;
        }
        ::close(descriptor);
    }
    code = EBUSY;
    return -1;
}

/// What a killed run has left in its lock file.
std::string readMark(int descriptor) {
    char buffer[4096];
    const auto length = ::pread(descriptor, buffer, sizeof buffer, 0);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

}  // namespace

UserFile::~UserFile() {
    release();
}

void UserFile::release() {
    (void)writer_.close();
    if (!beside_.empty()) {
        (void)deleteFile(beside_);
        beside_.clear();
    }
    if (lock_ >= 0) {
        // Before the lock goes: nobody may lock a file that is about to vanish. A mark stays.
        if (!lockPath_.empty() && !isMarked_) {
            (void)deleteFile(lockPath_);
        }
        ::close(lock_);
        lock_ = -1;
    }
    path_.clear();
}

IoStatus UserFile::named(const IoStatus& status) const {
    return status.ok() ? status : IoStatus(path_, status.code());
}

IoStatus UserFile::claim(const std::string& path, const std::function<bool()>& goesOn) {
    release();
    if (path.find('\0') != std::string::npos) {
        return {path, EINVAL};  // the system would see only the part before the NUL
    }
    path_ = path;
    target_ = endOfLinks(path);
    struct stat info {};
    exists_ = ::stat(target_.c_str(), &info) == 0;
    if (!exists_ && errno != ENOENT) {
        const IoStatus failure(path, errno);
        release();
        return failure;
    }
    isPlain_ = !exists_ || S_ISREG(info.st_mode);
    if (!isPlain_) {
        return {};
    }
    auto status = lockBeside(goesOn);
    if (status.ok() && lock_ < 0 && exists_) {
        status = lockItself(goesOn);
    }
    // The one that we waited for may have made or removed the file.
    exists_ = ::stat(target_.c_str(), &info) == 0;
    if (status.ok() && !exists_ && errno != ENOENT) {
        status = {path, errno};
    }
    if (!status.ok()) {
        release();
    }
    return status;
}

IoStatus UserFile::lockBeside(const std::function<bool()>& goesOn) {
    lockPath_ = nameBeside(target_, ".kavu-lock");
    int code = 0;
    lock_ = openLocked(lockPath_, O_RDWR | O_CREAT, goesOn, code);
    if (lock_ < 0 && code == EACCES) {
        // Another user's, perhaps; a lock needs no right to write.
        int again = 0;
        lock_ = openLocked(lockPath_, O_RDONLY, goesOn, again);
    }
    if (lock_ < 0) {
        lockPath_.clear();
        if (!exists_ || !forbidsFilesBeside(code)) {
            return {path_, code};
        }
        noLockBeside_ = code;
        return {};
    }
    killedOwner_ = readMark(lock_);
    isMarked_ = !killedOwner_.empty();
    return {};
}

std::string UserFile::killedOwnerOf(const std::string& path) {
    const auto lock = nameBeside(endOfLinks(path), ".kavu-lock");
    const int descriptor = ::open(lock.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (descriptor < 0) {
        return {};
    }
    // A run that lives has it locked.
    const auto owner = lockFile(descriptor) == 0 ? readMark(descriptor) : std::string();
    ::close(descriptor);
    return owner;
}

IoStatus UserFile::lockItself(const std::function<bool()>& goesOn) {
    int code = 0;
    lock_ = openLocked(target_, O_RDWR, goesOn, code);
    // A file that cannot be opened is reported when it is to be written.
    return code == EBUSY ? IoStatus(path_, code) : IoStatus();
}

IoStatus UserFile::prepare(bool wantsInPlace, std::string_view ending) {
    inPlace_ = true;
    reason_.clear();
    struct stat former {};
    if (!isPlain_) {
        return {};
    }
    if (exists_) {
        // A file without write permission is not to be written, though its folder would let us.
        const int descriptor = ::open(target_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (descriptor < 0 || ::fstat(descriptor, &former) != 0) {
            const IoStatus failure(path_, errno);
            if (descriptor >= 0) {
                ::close(descriptor);
            }
            return failure;
        }
        ::close(descriptor);
    }
    if (wantsInPlace) {
        return {};
    }
    if (exists_ && former.st_nlink > 1) {
        reason_ = "the file has other names (hard links), which would keep the old contents";
        return {};
    }
    int code = noLockBeside_;
    if (code != 0 || !makeBeside(code, ending)) {
        if (exists_ && forbidsFilesBeside(code)) {
            reason_ = "its folder takes no new file (" + IoStatus(path_, code).reason() + ")";
            return {};
        }
        return {path_, code};
    }
    if (exists_ && !copyAttributes(target_, former, beside_)) {
        (void)deleteFile(beside_);
        beside_.clear();
        reason_ = "its owner, mode or attributes cannot be given to a new file";
        return {};
    }
    inPlace_ = false;
    return {};
}

bool UserFile::makeBeside(int& code, std::string_view ending) {
    const auto beside =
        ending.empty() ? nameBeside(target_, ".kavu-new") : target_ + std::string(ending);
    // What is there was left by a killed run: we have the lock.
    (void)deleteFile(beside);
    // Nobody who may not read the old file gets to open the new one meanwhile.
    const int descriptor =
        ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, exists_ ? 0600 : 0666);
    if (descriptor < 0) {
        code = errno;
        return false;
    }
    ::close(descriptor);
    beside_ = beside;
    return true;
}

IoStatus UserFile::writeMark(const std::string& owner) {
    if (owner.empty() || lockPath_.empty()) {
        return {};
    }
    isMarked_ = true;
    const auto length = static_cast<ssize_t>(owner.size());
    if (::ftruncate(lock_, 0) != 0 || ::pwrite(lock_, owner.data(), owner.size(), 0) != length ||
        ::fsync(lock_) != 0) {
        return {lockPath_, errno};
    }
    return {};
}

IoStatus UserFile::open(const std::string& owner) {
    if (!inPlace_) {
        const auto status = writer_.open(beside_, WriteMode::Truncate);
        writer_.writeBehind();
        return named(status);
    }
    // A new file has no contents that could be cut short.
    if (exists_ && isPlain_) {
        (void)writeMark(owner);  // without it the file is written no worse
    }
    return named(writer_.open(isPlain_ ? target_ : path_, WriteMode::Truncate));
}

IoStatus UserFile::finish() {
    return named(writer_.close(true));
}

IoStatus UserFile::commit() {
    if (!inPlace_) {
        if (::renameat2(AT_FDCWD, beside_.c_str(), AT_FDCWD, target_.c_str(),
                        exists_ ? 0 : RENAME_NOREPLACE) != 0) {
            // Not every file system knows the flag.
            if (exists_ || errno != EINVAL) {
                return {path_, errno};
            }
            if (auto status = renameFile(beside_, target_); !status.ok()) {
                return named(status);
            }
        }
        beside_.clear();
    }
    isMarked_ = false;
    return isPlain_ ? named(syncFolder(folderOf(target_))) : IoStatus();
}

IoStatus UserFile::commitInPlace(const std::string& owner) {
    (void)writeMark(owner);
    if (auto status = copyFile(beside_, target_, true); !status.ok()) {
        return named(status);
    }
    isMarked_ = false;
    return {};
}

bool UserFile::isRefusedRename(const IoStatus& status) {
    return status.code() == EBUSY || status.code() == EPERM || status.code() == EACCES ||
           status.code() == EXDEV;
}

}  // namespace kavu
