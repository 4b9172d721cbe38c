// Replacing a file of the user: the new bytes are complete before they replace the old
// ones, and everything about the file but its bytes stays.
#include "core/files/FileIo.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

IoStatus writeInPlace(const std::string& path, std::string_view bytes) {
    FileWriter writer;
    if (auto status = writer.open(path, WriteMode::Truncate); !status.ok()) {
        return status;
    }
    writer.write(bytes);
    return writer.close(true);
}

/// Where a path leads when all links are followed; the path itself if there is nothing.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    return real == nullptr ? path : std::string(real.get());
}

/// Gives the file next to it the owner and the mode of the one it replaces.
bool takesOver(const std::string& beside, const struct stat& former) {
    struct stat made {};
    if (::stat(beside.c_str(), &made) != 0) {
        return false;
    }
    const bool sameOwner = made.st_uid == former.st_uid && made.st_gid == former.st_gid;
    // The owner first: a change of it may clear bits of the mode.
    if (!sameOwner && ::chown(beside.c_str(), former.st_uid, former.st_gid) != 0) {
        return false;
    }
    return ::chmod(beside.c_str(), former.st_mode & 07777) == 0;
}

/// True for a failure to make a file next to another one that says nothing about the
/// other one.
bool forbidsFilesBeside(int code) {
    return code == EACCES || code == EPERM || code == EROFS || code == ENAMETOOLONG;
}

}  // namespace

IoStatus replaceUserFile(const std::string& path, std::string_view bytes) {
    if (path.find('\0') != std::string::npos) {
        return {path, EINVAL};  // the system would see only the part before the NUL
    }
    const auto target = resolved(path);
    struct stat former {};
    const bool exists = ::stat(target.c_str(), &former) == 0;
    struct stat link {};
    const bool leadsNowhere = !exists && ::lstat(target.c_str(), &link) == 0;
    if (leadsNowhere || (exists && (!S_ISREG(former.st_mode) || former.st_nlink > 1))) {
        return writeInPlace(target, bytes);
    }
    // A file without write permission is not to be written, though its folder would let us.
    if (exists && !canWrite(target)) {
        return {path, EACCES};
    }
    const auto beside = target + "." + std::to_string(::getpid()) + ".new";
    FileWriter writer;
    auto status = writer.open(beside, WriteMode::New);
    if (status.code() == EEXIST) {
        // Left by a killed process of the same number.
        (void)deleteFile(beside);
        status = writer.open(beside, WriteMode::New);
    }
    if (!status.ok()) {
        return exists && forbidsFilesBeside(status.code()) ? writeInPlace(target, bytes) : status;
    }
    writer.write(bytes);
    status = writer.close(true);
    if (status.ok() && exists && !takesOver(beside, former)) {
        (void)deleteFile(beside);
        return writeInPlace(target, bytes);
    }
    if (status.ok()) {
        status = renameFile(beside, target);
    }
    if (!status.ok()) {
        (void)deleteFile(beside);
    }
    return status;
}

}  // namespace kavu
