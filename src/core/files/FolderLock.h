// Keeps other processes out of a folder's files between a read and the write that follows
// from it. Only those that ask for the lock as well are kept out.
#pragma once

#include <string>

namespace kavu {

class FolderLock {
  public:
    /// Waits for the lock for about a second: a program that hangs with it must not make
    /// this one hang. A folder that cannot be opened is not locked.
    explicit FolderLock(const std::string& folder);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    /// Releases the lock, as does the end of the process.
    ~FolderLock();

  private:
    int descriptor_ = -1;
};

}  // namespace kavu
