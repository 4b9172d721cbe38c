// The operations on the open document that can be undone, and the listeners to its
// changes.
//
// A level is the set of files that an operation has changed, as they were before it, kept as
// links: it takes no memory, and on the disk the size of these files. Undo is an operation
// of its own, which exchanges the files; like all others it happens as a whole or not at
// all.
#pragma once

#include "core/document/DocumentChange.h"
#include "core/document/FileJournal.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace kavu {

struct TmatsDocument;
class UserInterface;

class DocumentHistory : private FormerFileKeeper, private RoomMaker {
  public:
    static constexpr std::size_t kMaxLevels = 100;
    /// For the files of all levels together. The latest level always stays.
    static constexpr std::uint64_t kMaxBytes = std::uint64_t{128} << 20U;

    /// The arguments must outlive the object.
    DocumentHistory(DocumentFiles& files, TmatsDocument& document);
    DocumentHistory(const DocumentHistory&) = delete;
    DocumentHistory& operator=(const DocumentHistory&) = delete;
    ~DocumentHistory() override;

    /// False while an operation is open: its editor has an undo of its own.
    [[nodiscard]] bool canUndo() const { return depth_ == 0 && !undo_.empty(); }
    [[nodiscard]] bool canRedo() const { return depth_ == 0 && !redo_.empty(); }
    /// The name of the operation that would be undone or redone; empty if there is none.
    [[nodiscard]] const std::string& undoName() const;
    [[nodiscard]] const std::string& redoName() const;
    /// True from the begin of an operation to its end.
    [[nodiscard]] bool isInOperation() const { return depth_ > 0; }
    /// True after former contents could not be put back: the files are neither what they were
    /// nor what they were to become. Until the document is closed nothing changes any more
    /// (ENOTRECOVERABLE), so that recovery finds them as if the program had died there.
    [[nodiscard]] bool isFrozen() const { return isFrozen_; }
    [[nodiscard]] std::size_t levels() const { return undo_.size() + redo_.size(); }
    /// False if there is no level or a file could not be written, which is reported; then
    /// the document is as it was.
    bool undo(UserInterface* parent);
    bool redo(UserInterface* parent);

    /// Forgets all levels: another document is going to be loaded, and nothing has changed yet.
    void clear();
    /// The load has ended well: the document is open. All listeners are told.
    void markOpened();
    /// The file on the disk is the document as it is now. All listeners are told.
    void markSaved();
    /// A save has failed after it had touched the file at the path: what is there differs from
    /// the document if it is the document's. All listeners are told.
    void markCutShort(const std::string& path);
    /// The document has been closed, and its files are gone; the next one begins with this
    /// edition. All listeners are told, of a load that has failed with no path.
    void markClosed(int nextEdition);
    /// Notes that the document differs from its file for a reason that cannot be undone,
    /// such as the corrections of its load. Within an operation it is a change like any
    /// other.
    void markCorrected();

    /// A listener must stay until it is removed.
    void addListener(DocumentListener& listener);
    void removeListener(DocumentListener& listener);
    void tell(const DocumentChange& change) const;

    /// From here on the journal is called before a file changes, after those added earlier.
    /// It must stay until it is removed.
    void addJournal(FileJournal& journal);
    void removeJournal(FileJournal& journal);
    /// The name of a new folder for former contents.
    [[nodiscard]] std::string folderFor(std::string_view kind);

    /// Replaces the limits above.
    void setLimits(std::size_t levels, std::uint64_t bytes);

  private:
    friend class Transaction;

    struct Level {
        KeptFiles files;
        std::string name;
        std::int64_t state = 0;  ///< number of the state that the files belong to
        int version = 0;         ///< of the document in that state
    };
    using Levels = std::deque<Level>;

    IoStatus beforeChange(std::string_view name) override;
    /// Drops even the latest level if there is no other: to complete an operation is worth
    /// more than to undo the one before it.
    bool makeRoom() override { return dropFarthest(nullptr); }
    [[nodiscard]] IoStatus writePending() const;
    /// Makes a level of an operation that has ended; none if all bytes are as they were.
    IoStatus addLevel(KeptFiles& files, const std::string& name, int version);
    /// Makes an operation that the user has not asked for a part of its neighbours.
    IoStatus joinNeighbours(KeptFiles& files);
    /// Puts everything back. If that fails, what is left stays where recovery takes it back
    /// from, and the document is frozen.
    IoStatus putBackAll(KeptFiles& files);
    bool go(Levels& from, Levels& to, DocumentChange::Kind kind, UserInterface* parent);
    IoStatus exchange(const Level& wanted, KeptFiles& held);
    bool dropFarthest(const Level* except);
    void keepToLimits(const Level* except);

    DocumentFiles& files_;
    TmatsDocument& document_;
    std::vector<DocumentListener*> listeners_;
    std::vector<FileJournal*> journals_;
    int depth_ = 0;  ///< of open operations
    Levels undo_;
    Levels redo_;
    std::size_t maxLevels_ = kMaxLevels;
    std::uint64_t maxBytes_ = kMaxBytes;
    std::int64_t folders_ = 0;
    std::int64_t states_ = 0;  ///< the highest number given so far
    std::int64_t state_ = 0;
    std::int64_t saved_ = 0;
    bool corrected_ = false;
    bool isFrozen_ = false;
};

}  // namespace kavu
