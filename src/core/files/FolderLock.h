// Keeps other processes out of a folder's files between a read and the write that follows
// from it. Only those that ask for the lock as well are kept out.
#pragma once

#include <string>

namespace kavu {

class FolderLock {
  public:
    /// Waits for the lock, but not for ever (about a second): a program that hangs with it
    /// must not make this one hang. A folder that can not be opened is not locked.
    explicit FolderLock(const std::string& folder);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    /// Gives the lock back; it also goes with the process.
    ~FolderLock();

  private:
    int descriptor_ = -1;
};

}  // namespace kavu
