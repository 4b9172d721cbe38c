// What a file held before a build overwrites it. The build itself leaves a partial file
// when it fails; this is what the user can have put back.
#pragma once

#include <string>

namespace kavu {

class UserInterface;
class WorkingStore;

class FormerContents {
  public:
    explicit FormerContents(const WorkingStore& store) : store_(store) {}
    FormerContents(const FormerContents&) = delete;
    FormerContents& operator=(const FormerContents&) = delete;
    ~FormerContents();

    /// Keeps the contents of an existing target: as its backup, or without `backup` as a
    /// copy in the working store. False if the save is to stop; it has been reported.
    bool keep(UserInterface* parent, const std::string& target, bool backup);
    /// Asks whether the former contents are to be put back (default Yes), and does so.
    /// Without a parent, or when there were none, the target stays as it is.
    void offerToPutBack(UserInterface* parent);

  private:
    const WorkingStore& store_;
    std::string target_;
    std::string kept_;
    bool inStore_ = false;
};

}  // namespace kavu
