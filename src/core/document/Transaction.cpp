#include "core/document/Transaction.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentHistory.h"
#include "core/talk/FileReports.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cerrno>

namespace kavu {

namespace {

std::string folderName(OnCrash onCrash, int depth) {
    return onCrash == OnCrash::Keep ? std::string(working::kEuDefinitions)
                                    : formatPrintf("%s%d", working::kOpenOperation, depth);
}

}  // namespace

Transaction::Transaction(DocumentContext& context, std::string name, OnCrash onCrash)
    : context_(context),
      name_(std::move(name)),
      depth_(context.history.depth_++),
      journal_(context.files, folderName(onCrash, depth_)),
      scope_(context.files),
      wasChanged_(context.document.changed),
      version_(context.document.version) {
    journal_.kept().setNote(name_);
    context_.history.addJournal(journal_);
}

Transaction::~Transaction() {
    takeBack(nullptr);
}

IoStatus Transaction::keepAll(const std::vector<std::string_view>& patterns) {
    return journal_.keepAll(patterns);
}

bool Transaction::hasChanges() const {
    const auto& written = journal_.written();
    return std::any_of(written.begin(), written.end(), [](const std::string& name) {
        const auto kind = describeDocumentFile(name).kind;
        return kind != DocumentFile::Side && kind != DocumentFile::Record;
    });
}

IoStatus Transaction::end(bool asked) {
    auto& history = context_.history;
    auto& kept = journal_.kept();
    if (history.isFrozen()) {
        takeBack(nullptr);
        return {context_.store.folder(), ENOTRECOVERABLE};
    }
    auto status = history.writePending();
    if (status.ok()) {
        // It goes back and forth with the files that it is about.
        status = context_.files.recordState(context_.document.version);
    }
    if (status.ok() && depth_ > 0) {
        // From here on it is a part of the outer operation, whatever becomes of the run.
        status = kept.moveTo(
            formatPrintf("%s/%s%d", working::kUndoLevels, working::kOpenOperation, depth_));
    } else if (status.ok()) {
        status = asked ? history.addLevel(kept, name_, version_) : history.joinNeighbours(kept);
    }
    if (!status.ok()) {
        takeBack(nullptr);
        return status;
    }
    kept.drop();
    if (asked && hasChanges()) {
        context_.document.changed = true;
    }
    close(DocumentChange::Edited,
          depth_ == 0 && (hasChanges() || context_.document.version != version_));
    return {};
}

IoStatus Transaction::commit() {
    return end(true);
}

IoStatus Transaction::commitUnasked() {
    return end(false);
}

bool Transaction::takeBack(UserInterface* parent) {
    if (!open_) {
        return true;
    }
    if (context_.history.isFrozen()) {
        // An operation within this one could not be taken back. To put back what came before
        // it would mix the two: recovery does both, in their order.
        journal_.kept().leave();
        close(DocumentChange::TakenBack, false);
        return false;
    }
    const auto status = context_.history.putBackAll(journal_.kept());
    context_.document.changed = wasChanged_;
    context_.document.version = version_;
    // Also of an inner one: listeners that hold something read from the files follow
    // them.
    close(DocumentChange::TakenBack, true);
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
        reportFrozen(context_, parent);
    }
    return status.ok();
}

void reportFrozen(const DocumentContext& context, UserInterface* parent) {
    showBox(parent,
            formatPrintf("A part of an operation could not be taken back, so the document can be "
                         "neither changed nor saved any more.\n\nClose it, and recover it as it "
                         "was before the operation from the folder '%s'.",
                         context.store.folder()),
            "Unable To Put Document Back");
}

void Transaction::close(DocumentChange::Kind kind, bool isTold) {
    open_ = false;
    context_.history.removeJournal(journal_);
    --context_.history.depth_;
    if (!isTold) {
        return;
    }
    DocumentChange change{kind, name_, {}};
    for (const auto& name : journal_.written()) {
        auto file = describeDocumentFile(name);
        if (file.kind != DocumentFile::Record) {
            change.files.push_back(std::move(file));
        }
    }
    context_.history.tell(change);
}

bool endTransaction(Transaction& transaction, UserInterface* parent, bool good) {
    if (!good) {
        transaction.takeBack(parent);
        return false;
    }
    const auto status = transaction.commit();
    if (!status.ok()) {
        reportUnableToWrite(parent, status);
    }
    return status.ok();
}

}  // namespace kavu
