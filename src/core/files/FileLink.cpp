#include "core/files/FileLink.h"

#include "core/files/FileIo.h"

#include <unistd.h>

namespace kavu {

IoStatus linkOrCopyFile(const std::string& from, const std::string& to) {
    if (::link(from.c_str(), to.c_str()) == 0) {
        return {};
    }
    const auto part = to + ".part";
    auto status = copyFile(from, part);
    if (status.ok()) {
        status = renameFile(part, to);
    }
    if (!status.ok()) {
        (void)deleteFile(part);
    }
    return status;
}

}  // namespace kavu
