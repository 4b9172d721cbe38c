// What has happened to the open document, told to everybody who shows it or knows something
// of its files: the tree, titles, names, the conversion records.
#pragma once

#include "core/document/DocumentFiles.h"

#include <string>
#include <vector>

namespace kavu {

struct DocumentChange {
    enum Kind {
        Opened,
        Edited,     ///< an operation has ended well
        TakenBack,  ///< an operation has not, and the files are what they were before it
        Undone,
        Redone,
        Saved,
        Closed,
    };
    Kind kind = Edited;
    std::string name;                 ///< of the operation
    std::vector<DocumentFile> files;  ///< that were written; empty for Opened, Saved, Closed

    /// True if a file of the group was written; 'C' for the conversion records.
    [[nodiscard]] bool touches(char letter) const;
    [[nodiscard]] bool touchesConversions() const { return touches('C'); }
};

class DocumentListener {
  public:
    virtual ~DocumentListener() = default;
    /// Called when the files are in their last state, once for an operation with all that it
    /// is made of. The listener may read files; it must not change any.
    virtual void documentChanged(const DocumentChange& change) = 0;
    /// Brings to its files what the running operation has left in memory only. Called before
    /// the operation ends; a failure takes it back.
    virtual IoStatus writePending() { return {}; }
};

}  // namespace kavu
