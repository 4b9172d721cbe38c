// The open document as a TMATS file, for an operation that reads files: what it is now, whether or
// not it has been saved.
#pragma once

#include <memory>
#include <string>

namespace kavu {

class Application;
class TrialReading;
class UserInterface;

class DocumentSnapshot {
  public:
    /// REQUIRES: a document is open. The application must outlive the object; `parent` may cancel,
    /// and may be null.
    DocumentSnapshot(Application& application, UserInterface* parent);
    DocumentSnapshot(const DocumentSnapshot&) = delete;
    DocumentSnapshot& operator=(const DocumentSnapshot&) = delete;
    ~DocumentSnapshot();

    /// Finds or makes the file: that of the document if it holds what is open here, else one in a
    /// working store of its own, as a save would write it. False, with a box of this title, if
    /// there is no room for it, or it could not be built.
    bool make(const std::string& title);
    /// The path of the file, which is there as long as the object. REQUIRES: made.
    [[nodiscard]] const std::string& path() const { return path_; }
    /// True if the file is that of the document itself.
    [[nodiscard]] bool isDocumentFile() const { return trial_ == nullptr; }

  private:
    bool build(const std::string& title);

    Application& application_;
    UserInterface* parent_;
    std::unique_ptr<TrialReading> trial_;
    std::string path_;
};

/// Builds the open document as a file in the working store of another application, which has been
/// started, and closes it there. Empty, with a box of this title, if that failed. Nothing of the
/// document changes.
[[nodiscard]] std::string buildDocumentIn(Application& from, Application& to, UserInterface* parent,
                                          const std::string& name, const std::string& title);

}  // namespace kavu
