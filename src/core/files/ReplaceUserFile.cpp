// Files of the user that are replaced in one call.
#include "core/files/FileAttributes.h"
#include "core/files/FileIo.h"
#include "core/files/UserFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

/// Makes an empty file that only its owner may read, in place of what a killed process of the
/// same number may have left.
IoStatus makePrivateFile(const std::string& path) {
    (void)deleteFile(path);
    const int descriptor =
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        return {path, errno};
    }
    ::close(descriptor);
    return {};
}

/// Copies a file to a new one beside it.
IoStatus copyWhole(const std::string& from, const std::string& beside, bool& isChanged) {
    struct stat info {};
    ByteSource source;
    if (auto status = source.open(from); !status.ok()) {
        return status;
    }
    if (::stat(from.c_str(), &info) != 0) {
        return {from, errno};
    }
    auto status = makePrivateFile(beside);
    status = status.ok() ? copyFile(from, beside, true) : status;
    if (!status.ok()) {
        return status;
    }
    IoStatus failure;
    if (source.changedSinceOpened(&failure)) {
        isChanged = failure.ok();
        return failure.ok() ? IoStatus(from, EBUSY) : failure;
    }
    std::uint64_t size = 0;
    if (status = probeSize(beside, size); status.ok() && size != source.size()) {
        status = {beside, EIO};
    }
    // Another owner's attributes are not always ours to give; the mode is.
    if (status.ok() && !copyAttributes(from, info, beside) &&
        ::chmod(beside.c_str(), info.st_mode & 0777) != 0) {
        status = {beside, errno};
    }
    return status;
}

/// Replaces a file that was claimed.
IoStatus writeClaimed(UserFile& file, std::string_view bytes) {
    auto status = file.prepare(false);
    status = status.ok() ? file.open() : status;
    if (!status.ok()) {
        return status;
    }
    file.writer().write(bytes);
    status = file.finish();
    if (!status.ok()) {
        return status;
    }
    status = file.commit();
    return UserFile::isRefusedRename(status) && !file.isInPlace() ? file.commitInPlace({}) : status;
}

}  // namespace

IoStatus replaceUserFile(const std::string& path, std::string_view bytes) {
    UserFile file;
    const auto status = file.claim(path);
    return status.ok() ? writeClaimed(file, bytes) : status;
}

IoStatus replaceUnchangedFile(const std::string& path, std::string_view bytes,
                              const std::string& stamp) {
    UserFile file;
    if (auto status = file.claim(path); !status.ok()) {
        return status;
    }
    return fileStamp(path) == stamp ? writeClaimed(file, bytes) : IoStatus(path, ESTALE);
}

IoStatus replaceWithCopy(const std::string& from, const std::string& to, bool& isChanged) {
    isChanged = false;
    const auto beside =
        folderOf(to) + "/.kavu-" + std::to_string(::getpid()) + ".bak";  // never too long
    auto status = copyWhole(from, beside, isChanged);
    status = status.ok() ? renameFile(beside, to) : status;
    if (!status.ok()) {
        (void)deleteFile(beside);
        return status.path() == from ? status : IoStatus(to, status.code());
    }
    return syncFolder(folderOf(to));
}

IoStatus keepUnreadableFile(const std::string& path, std::string& kept) {
    constexpr int kMostCopies = 1000;
    kept = path + ".unreadable";
    PathKind kind = PathKind::Missing;
    for (int i = 2; i < kMostCopies; ++i) {
        if (auto status = probePath(kept, kind); !status.ok()) {
            return status;
        }
        if (kind == PathKind::Missing) {
            bool isChanged = false;
            return replaceWithCopy(path, kept, isChanged);
        }
        kept = path + ".unreadable-" + std::to_string(i);
    }
    return {kept, EEXIST};
}

}  // namespace kavu
