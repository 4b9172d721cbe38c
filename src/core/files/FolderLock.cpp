#include "core/files/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kavu {

namespace {

constexpr int kMostTries = 1000;
constexpr unsigned kPause = 1000;  // microseconds

}  // namespace

FolderLock::FolderLock(const std::string& folder)
    : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    for (int tries = 0;
         descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && tries < kMostTries;
         ++tries) {
        ::usleep(kPause);
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

}  // namespace kavu
