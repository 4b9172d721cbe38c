// An operation that changes the open document: as a whole or not at all, even if the program
// is killed in the middle.
#pragma once

#include "core/document/DocumentChange.h"
#include "core/document/FileJournal.h"
#include "core/document/Operation.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// What recovery does with an operation during which the program has crashed.
enum class OnCrash {
    TakeBack,  ///< as if the operation had never begun
    Keep,      ///< what was accepted in it stays: the sheet of a stream, open for hours
};

/// From its construction on, the former contents of all files that change are kept, and so is
/// the edition of the document. Without a `commit` the destructor puts them back. One that is
/// made while another is open is part of it: it can be taken back alone, and ends with it.
class Transaction {
  public:
    /// The name is what follows "Undo ", such as "Rename of Data Source".
    Transaction(DocumentContext& context, std::string name, OnCrash onCrash = OnCrash::TakeBack);
    /// The same under the name of the table.
    Transaction(DocumentContext& context, OperationId id, OnCrash onCrash = OnCrash::TakeBack)
        : Transaction(context, std::string(operationName(id)), onCrash) {}
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    /// Ends the operation with success. If any file was written the document counts as
    /// changed, and there is a level to undo if any byte differs. After a failure everything
    /// is as before the operation.
    IoStatus commit();
    /// The same for an operation that the user has not asked for, such as the record that is
    /// made when a new one is shown: the document does not count as changed, and what was
    /// written joins the levels before and after it.
    IoStatus commitUnasked();
    /// Ends the operation and puts everything back. What cannot be put back is reported, and
    /// freezes the document.
    bool takeBack(UserInterface* parent);

    /// Keeps all files that match, changed or not.
    IoStatus keepAll(const std::vector<std::string_view>& patterns);
    [[nodiscard]] bool isOpen() const { return open_; }
    /// True if a file was written, not counting what editors keep next to the groups: showing
    /// a stream makes such files without changing the document.
    [[nodiscard]] bool hasChanges() const;

  private:
    IoStatus end(bool asked);
    void close(DocumentChange::Kind kind, bool isTold);

    DocumentContext& context_;
    std::string name_;
    int depth_;
    FileJournal journal_;
    ChangeScope scope_;
    bool wasChanged_;
    int version_;  ///< of the document before the operation
    bool open_ = true;
};

/// Commits if `good`, else takes everything back. A failure to commit is reported and also
/// takes everything back. True if the operation was committed.
bool endTransaction(Transaction& transaction, UserInterface* parent, bool good);
/// States that the document is frozen (see `DocumentHistory::isFrozen`), and where it can be
/// recovered from.
void reportFrozen(const DocumentContext& context, UserInterface* parent);

/// Runs `work` as an operation of this name; it is committed if `work` returns true.
template <class F>
bool inTransaction(DocumentContext& context, UserInterface* parent, std::string name, F&& work) {
    Transaction transaction(context, std::move(name));
    const bool good = std::forward<F>(work)();
    return endTransaction(transaction, parent, good);
}
template <class F>
bool inTransaction(DocumentContext& context, UserInterface* parent, OperationId id, F&& work) {
    return inTransaction(context, parent, std::string(operationName(id)), std::forward<F>(work));
}

}  // namespace kavu
