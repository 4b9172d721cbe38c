// The operations on the open document as a whole, for the File menu, the command line and
// programs that drive this one. They ask and report through the user interface, and watch the
// document's file on the disk.
#pragma once

#include "application/DocumentFacts.h"
#include "core/document/ChangedFile.h"
#include "core/document/DocumentChange.h"

#include <string>

namespace kavu {

class Application;
class UserInterface;
struct VersionOptions;

/// A null user interface is silent; each question then gets the answer that the operation
/// documents.
class DocumentService : public DocumentListener {
  public:
    /// The application must outlive the object. REQUIRES: it has been started before any
    /// call.
    explicit DocumentService(Application& application);
    DocumentService(const DocumentService&) = delete;
    DocumentService& operator=(const DocumentService&) = delete;

    bool create(UserInterface* ui);
    /// Asks for a file; false without a user interface.
    bool open(UserInterface* ui);
    /// Opens a file by its name from the command line, a drop or the list of recent
    /// files. An open document is closed first, with its question.
    bool openNamed(UserInterface* ui, const std::string& name);
    /// If another program has changed the document's file, this, `saveAs`, `saveTo` and `close` ask
    /// first; without a user interface it is then not saved.
    bool save(UserInterface* ui);
    bool saveAs(UserInterface* ui);
    /// Saves under another name without a question. False without an open document.
    bool saveTo(UserInterface* ui, const std::string& path);
    /// Asks about changes (message 76, "has been modified. Save file first?"). False if the user
    /// did not let the document be closed. True if there is none.
    bool close(UserInterface* ui);
    /// Closes the document and drops its changes without a question.
    void discard(UserInterface* ui);

    using DiskState = kavu::DiskState;
    /// Whether the document's file is still the one that was opened or saved last.
    [[nodiscard]] DiskState diskState() const;
    /// If another program has changed or removed the file, asks what to do: keep the
    /// document, reopen the file, or save under another name. Asks once for each change; a save
    /// asks again.
    void checkDisk(UserInterface* ui);
    /// Loads the document's file again, and drops what was changed here. If the file looks as if it
    /// was not written to its end, asks first.
    bool reopen(UserInterface* ui);

    /// Opens the document's file again, as one of this edition if it states none. Asks about
    /// changes as `close` does.
    bool readAs(UserInterface* ui, int edition);

    /// Makes a TMATS file of what a crashed run has left, and opens it. False without a user
    /// interface, as the name of the file is asked for.
    bool recover(UserInterface* ui, const std::string& folder);

    /// Applies what the dialog of the editions returned. A document that cannot be brought to its
    /// new edition stays as it was; one that cannot be brought back either is closed.
    /// False if the document is not of the edition that was chosen.
    bool setVersions(UserInterface* ui, const VersionOptions& options);

    /// Undoes the last operation, or redoes the one undone last, as a whole or not at all. False
    /// if there is none, while a stream is in memory, which has an undo of its own, and after a
    /// failure, which is reported.
    bool undo(UserInterface* ui);
    bool redo(UserInterface* ui);

    /// The facts for `allows`; reads the tree of the document.
    [[nodiscard]] DocumentFacts facts() const;
    /// Updates only the facts about undo and redo.
    void updateHistory(DocumentFacts& facts) const;

  private:
    /// Hears of every load and save, whoever has asked for it.
    void documentChanged(const DocumentChange& change) override;
    [[nodiscard]] bool allowsHistory() const;

    Application& application_;
    std::string askedStamp_;  ///< of the change that `checkDisk` has asked about
};

}  // namespace kavu
