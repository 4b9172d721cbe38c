#include "core/files/FilePatch.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavu {

namespace {

int writeAt(int descriptor, std::uint64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written =
            ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return written < 0 ? errno : EIO;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
        offset += static_cast<std::uint64_t>(written);
    }
    return 0;
}

/// Writes the bytes, or what was there before them.
int writeOrRestore(int descriptor, std::uint64_t offset, std::string_view bytes) {
    struct stat info {};
    if (::fstat(descriptor, &info) != 0) {
        return errno;
    }
    std::string former(bytes.size(), '\0');
    const auto got = ::pread(descriptor, former.data(), former.size(), static_cast<off_t>(offset));
    if (got < 0) {
        return errno;
    }
    former.resize(static_cast<std::size_t>(got));
    const int code = writeAt(descriptor, offset, bytes);
    if (code != 0) {
        (void)writeAt(descriptor, offset, former);
        (void)(::ftruncate(descriptor, info.st_size) == 0);
    }
    return code;
}

}  // namespace

IoStatus overwriteBytes(const std::string& path, std::uint64_t offset, std::string_view bytes) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor < 0) {
        return {path, errno};
    }
    const int code = writeOrRestore(descriptor, offset, bytes);
    const int closed = ::close(descriptor) == 0 ? 0 : errno;
    return code != 0 || closed != 0 ? IoStatus(path, code != 0 ? code : closed) : IoStatus();
}

}  // namespace kavu
