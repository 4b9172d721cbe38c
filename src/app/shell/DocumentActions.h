// What the File menu does to the open document, free of windows: it asks and tells through
// the user interface seam, and keeps an eye on the document's file on the disk.
#pragma once

#include "core/TmatsDocument.h"

#include <string>

namespace kavu {

class Application;
struct VersionOptions;

class DocumentActions {
  public:
    /// REQUIRES: the application has been started. Both outlive the object.
    DocumentActions(Application& application, UserInterface& ui);

    bool create();
    /// Asks for a file.
    bool open();
    /// Opens a file by the name that the command line, a drop or the list of recent files
    /// gives.
    bool openNamed(const std::string& name);
    bool save();
    bool saveAs();
    /// False if the user did not let the document be closed.
    bool close();

    enum class DiskState { Same, Changed, Missing };
    /// Whether the document's file is still the one that was opened or saved last.
    [[nodiscard]] DiskState diskState() const;
    /// If another program has changed or removed the file, asks what to do: keep the
    /// document, reopen the file, or save under another name. Asks once for each change.
    void checkDisk();

    /// Makes a TMATS file of what a crashed run left behind, and opens it.
    bool recover(const std::string& folder);

    /// Takes what the dialog of the editions gave. A document that could not be brought to
    /// its new edition is closed.
    bool setVersions(const VersionOptions& options);

  private:
    enum class DiskChoice { Keep = 0, Reopen = 1, SaveElsewhere = 2, None = -1 };
    [[nodiscard]] DiskChoice askAboutDisk(DiskState state, bool saving);
    bool reopen();
    /// Remembers the file as it is now.
    void rememberDisk();
    /// Passes a result through, with the file remembered if it is true.
    bool settled(bool good);

    Application& application_;
    UserInterface& ui_;
    std::string watched_;
    std::string stamp_;
};

}  // namespace kavu
