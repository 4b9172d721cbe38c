// Which operations the open document allows. The menus of the window and all other ways to
// start an operation follow these rules.
#pragma once

#include "core/document/Operation.h"

#include <string>

namespace kavu {

struct DocumentContext;
struct DocumentTree;

/// What the rules need to know of the open document.
struct DocumentFacts {
    bool open = false;
    int version = 2011;
    bool hasRadioSource = false;
    bool hasTapeSource = false;
    bool hasDataLink = false;
    bool hasMessageStream = false;  ///< an S file, from 106-09 on
    bool canUndo = false;
    bool canRedo = false;
    std::string undoName{};  ///< of the operation that an undo would take back
    std::string redoName{};
};

/// The facts of a document whose tree has been read, without what can be undone.
[[nodiscard]] DocumentFacts factsOf(const DocumentContext& context, const DocumentTree& tree);

/// True if an operation can be done on a document with these facts, whether or not a program has
/// its editor.
[[nodiscard]] bool allows(OperationId id, const DocumentFacts& facts);

}  // namespace kavu
