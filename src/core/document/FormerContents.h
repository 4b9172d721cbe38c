// The contents of a file before a build overwrites it. A failed build leaves a partial
// file; the user can have these contents put back.
#pragma once

#include <string>

namespace kavu {

class UserInterface;
class WorkingStore;

class FormerContents {
  public:
    explicit FormerContents(WorkingStore& store) : store_(store) {}
    FormerContents(const FormerContents&) = delete;
    FormerContents& operator=(const FormerContents&) = delete;
    ~FormerContents();

    /// Keeps the contents of an existing target: as its backup, or without `backup` as a
    /// copy in the working store. False if the save is to stop, which has been reported.
    bool keep(UserInterface* parent, const std::string& target, bool backup);
    /// Asks whether the former contents are to be put back, and does so unless the answer is
    /// no: true if the file is as it was. If that fails, and they are in no backup, the working
    /// store is kept for recovery.
    bool offerToPutBack(UserInterface* parent);

  private:
    WorkingStore& store_;
    std::string target_;
    std::string kept_;
    bool inStore_ = false;
};

}  // namespace kavu
