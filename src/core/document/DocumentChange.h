// A change of the open document, reported to all that show it or hold something read from
// its files: the tree, titles, names, the conversion records.
#pragma once

#include "core/document/DocumentFiles.h"

#include <string>
#include <vector>

namespace kavu {

struct DocumentChange {
    enum Kind {
        Opened,
        Edited,     ///< an operation has succeeded
        TakenBack,  ///< an operation was rolled back, and the files are as before it
        Undone,
        Redone,
        Saved,
        Closed,
        CutShort,  ///< a save in place has failed: the file at the path may be partial
    };
    Kind kind = Edited;
    std::string name;                 ///< of the operation
    std::vector<DocumentFile> files;  ///< that were written; empty for Opened, Saved, Closed
    /// Of the file that was opened, saved, closed or cut short; empty for a document that has none, and for
    /// one that could not be opened.
    std::string path{};

    /// True if a file of the group was written; 'C' for the conversion records.
    [[nodiscard]] bool touches(char letter) const;
    [[nodiscard]] bool touchesConversions() const { return touches('C'); }
};

class DocumentListener {
  public:
    virtual ~DocumentListener() = default;
    /// Called when the files are in their final state, once for an operation and all its
    /// parts. The listener may read files; it must not change any but those that an editor
    /// keeps next to the groups.
    virtual void documentChanged(const DocumentChange& change) = 0;
    /// Writes what the running operation has left in memory only. Called before the
    /// operation ends; a failure rolls it back.
    virtual IoStatus writePending() { return {}; }
};

}  // namespace kavu
