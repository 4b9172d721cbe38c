// Undo and redo of the edits of a stream: one level for each, which restores the stream exactly,
// with the conversion records that the edit has changed.
//
// A level keeps one side of an edit, and of that only the words, entries and files that differ on
// the other side; of words that have changed places alone it keeps the places. So its size, and the
// time to make it, depend only on what the edit has touched. All levels together keep to a limit:
// the oldest ones are dropped and can no longer be undone.
#pragma once

#include "conversion/ConversionStore.h"
#include "core/document/FileJournal.h"
#include "pcm/model/WordArchive.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class MeasurementNames;
class UserInterface;

class StreamUndo : private WordWatcher {
  public:
    /// The limit of all levels together; the latest one always stays.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20U;

    /// What the edits of a stream change besides it; both may be null.
    struct Beside {
        ConversionStore* conversions = nullptr;
        MeasurementNames* names = nullptr;
    };

    /// Starts with the stream as it is. The arguments must outlive the object, and of several
    /// for one format the last one must end first.
    explicit StreamUndo(PcmFormat& format) : StreamUndo(format, Beside{}) {}
    StreamUndo(PcmFormat& format, const Beside& beside, std::size_t mostBytes = kMostBytes);
    StreamUndo(const StreamUndo&) = delete;
    StreamUndo& operator=(const StreamUndo&) = delete;
    ~StreamUndo() override;

    /// Ends an edit: what it has changed becomes a level, and what was undone before is lost.
    /// False if it has changed nothing. An edit that was not `accepted` and has changed only
    /// the conversion records, as showing a new one does, does not count. `title` is what the user
    /// calls the edit.
    bool commit(bool accepted = true, std::string_view title = {});
    [[nodiscard]] bool canUndo() const { return !undo_.empty(); }
    [[nodiscard]] bool canRedo() const { return !redo_.empty(); }
    /// The name of the edit that the next call takes back or does again; empty if there is none or
    /// it has no name.
    [[nodiscard]] std::string undoName() const { return undo_.empty() ? "" : undo_.back().title; }
    [[nodiscard]] std::string redoName() const { return redo_.empty() ? "" : redo_.back().title; }
    /// False if there is no level, there can be no more cells, or a file could not be written,
    /// which is reported.
    bool undo(UserInterface* parent = nullptr);
    bool redo(UserInterface* parent = nullptr);

    /// The approximate size of the levels in bytes.
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

  private:
    /// The stream as it was when the last level ended, but for its words and files.
    struct Base {
        PcmAttributes attributes;
        int saveCount = 0;
        std::vector<IdCounter> counters;
        std::vector<AsyncFormat> asyncFormats;
        std::vector<WordFrameDefinition> definitions;
    };
    struct Level {
        std::string title;  ///< what the user calls the edit
        PcmAttributes attributes;
        int saveCount = 0;  ///< decides whether the mark that the stream has changed still holds
        WordArchive words;  ///< by their positions on this side
        std::vector<int> origins;  ///< see `origins_`; empty if no word has moved
        std::optional<std::vector<IdCounter>> counters;
        std::optional<std::vector<AsyncFormat>> asyncFormats;
        std::map<std::size_t, WordFrameDefinition> definitions;
        std::size_t definitionCount = 0;
        KeptFiles files;
        std::vector<std::string> forgotten;  ///< names that the edit has forgotten

        [[nodiscard]] std::size_t bytes() const;
    };
    using Levels = std::deque<Level>;

    void beforeChange(int fwp) override;
    void beforeMove(const std::vector<int>& sources) override;
    [[nodiscard]] bool isFileOfEdits(std::string_view name) const;
    /// What differs from the base, as it was there; the base becomes what there is now.
    [[nodiscard]] bool takeDifference(Level& level);
    [[nodiscard]] bool takeWords(Level& level);
    /// Each word is where it was.
    void settleWords();
    /// The position of the word that was at each position of the base; -1 if it is gone.
    [[nodiscard]] std::vector<int> positionsNow() const;
    [[nodiscard]] bool haveWordsMoved(const std::vector<int>& positions) const;
    [[nodiscard]] bool takeDefinitions(Level& level);
    /// Exchanges the stream with what the level has kept.
    bool exchange(Level& level, UserInterface* parent);
    bool exchangeWords(Level& level);
    void moveBack(Level& level);
    void exchangeDefinitions(Level& level);
    bool exchangeFiles(Level& level, UserInterface* parent);
    void exchangeNames(Level& level, bool isUndo);
    bool go(Levels& from, Levels& to, UserInterface* parent);
    void add(Levels& levels, Level level);
    void clear(Levels& levels);

    PcmFormat& format_;
    Beside beside_;
    std::size_t mostBytes_;
    WordWatcher* outer_ = nullptr;
    /// Of the conversion records, and of what the edits keep next to the groups: the comment of
    /// the section, the filter list, the tagged data.
    FileJournal journal_;
    std::size_t forgottenCount_ = 0;
    Base base_;
    WordArchive touched_;       ///< since the last level, by positions of the base
    std::vector<bool> isKept_;  ///< by position of the base: in `touched_`
    /// By position, the position that the word had in the base; -1 for a word that is new. What is
    /// gone from the frame, or is another word now, is in `touched_`.
    std::vector<int> origins_;
    bool exchanging_ = false;
    Levels undo_;
    Levels redo_;
    std::size_t bytes_ = 0;
};

}  // namespace kavu
