// Which operations the open document allows, as it is. The menus of the window follow these
// rules, and so does every other way to give an operation.
#pragma once

#include "core/document/Operation.h"

#include <string>

namespace kavu {

struct DocumentContext;
struct DocumentTree;

/// What the rules ask of the open document.
struct DocumentFacts {
    bool open = false;
    int version = 2011;
    bool hasRadioSource = false;
    bool hasTapeSource = false;
    bool hasDataLink = false;
    bool hasMessageStream = false;  ///< an S file, from 106-09 on
    bool canUndo = false;
    bool canRedo = false;
    std::string undoName{};  ///< of the operation that an undo takes back
    std::string redoName{};
};

/// The facts of a document whose tree has been read, without what can be undone.
[[nodiscard]] DocumentFacts factsOf(const DocumentContext& context, const DocumentTree& tree);

/// Whether an operation can be done on a document with these facts. Whether its editor is part of
/// a program is another question.
[[nodiscard]] bool allows(OperationId id, const DocumentFacts& facts);

}  // namespace kavu
