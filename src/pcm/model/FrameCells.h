// The cells of the frame, and the index of measurement names over them.
//
// Each word has a contiguous array of cells; further measurements of a place are chained
// from a pool. A cell holds the number of a record, and copies of a measurement share one
// record until one of them differs. A name is found through an index, ignoring case:
// finding all places of a name costs these places and not the whole frame.
#pragma once

#include "pcm/model/Measurement.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

/// Is notified before a word, or a cell of it, changes, and before words change places.
class WordWatcher {
  public:
    virtual ~WordWatcher() = default;
    virtual void beforeChange(int fwp) = 0;
    /// Each position gets the word of its source.
    virtual void beforeMove(const std::vector<int>& sources) = 0;
};

class FrameCells {
  public:
    /// No more cells are chained than this; a file that needs more is not a stream.
    static constexpr std::uint32_t kMostChained = 12'000'000;
    /// A word's array has at most this many cells.
    static constexpr int kMostIndex = 9999;

    FrameCells();
    FrameCells(const FrameCells&) = delete;
    FrameCells& operator=(const FrameCells&) = delete;

    /// Sets the one watcher, which may be null, and returns the previous one, to which the
    /// new one has to pass on its notifications.
    WordWatcher* watch(WordWatcher* watcher);
    /// Notifies the watcher that a word is about to change.
    void announce(int fwp) {
        if (watcher_ != nullptr) {
            watcher_->beforeChange(fwp);
        }
    }

    /// Chains fewer cells than `kMostChained`, for frames that have to stay small.
    void limitChained(std::uint32_t most) { mostChained_ = std::min(most, kMostChained); }

    /// Frees everything, leaving `words` words without cells. The watcher is not
    /// notified.
    void reset(int words);
    /// Keeps the cells of remaining words, and frees those of removed ones.
    void setWordCount(int words);
    [[nodiscard]] int wordCount() const { return static_cast<int>(words_.size()); }
    /// Gives each position the word of its source, with all that it holds: no cell is copied, and
    /// none counts as changed. REQUIRES: every word is a source once.
    void permuteWords(const std::vector<int>& sources);

    /// Resizes the array of a word: new cells are free, the lists of removed cells are freed.
    void resizeWord(int fwp, int count);
    [[nodiscard]] int cellCount(int fwp) const;
    /// The array cell; none if there is no such cell.
    [[nodiscard]] CellRef cell(int fwp, int index) const;
    /// The next cell in its list, or none.
    [[nodiscard]] CellRef next(CellRef at) const;

    /// The measurement of a cell; an empty one if the cell is free. Valid until the cells
    /// change.
    [[nodiscard]] const Measurement& measurement(CellRef at) const;
    [[nodiscard]] int asyncNumber(CellRef at) const;
    [[nodiscard]] bool isFree(CellRef at) const;
    /// True for a name without an async number.
    [[nodiscard]] bool isMeasurement(CellRef at) const;
    /// True if two cells share one record.
    [[nodiscard]] bool sameRecord(CellRef a, CellRef b) const;
    /// The number of that record; after any change of a cell it may be another's.
    [[nodiscard]] std::uint32_t recordNumber(CellRef at) const;

    /// Stores a measurement. The async number of the cell stays unless `asyncNumber` is
    /// above 0.
    void store(CellRef at, const Measurement& measurement, int asyncNumber = 0);
    void setAsyncNumber(CellRef at, int number);
    /// Makes the cell free; it stays in its list.
    void clear(CellRef at);
    /// The first free cell of the list that begins at `head`, else a new one at its end; none
    /// if there can be no more.
    [[nodiscard]] CellRef freeCell(CellRef head);
    /// Frees the chained cells after `head`.
    void freeChain(CellRef head);
    /// Removes a chained cell from its list; an array cell is only made free.
    void remove(CellRef at);
    /// Sorts the cells of a list by name, up to its first async slot; does nothing if one
    /// of the first two is such a slot. REQUIRES: `prepareSort` since the last new name.
    void sortList(CellRef head);
    void prepareSort();

    // --- by name, ignoring case -----------------------------------------------------------

    /// A place that holds a name; a place is listed once for each of its cells.
    struct Place {
        std::uint16_t word;
        std::uint16_t index;
        [[nodiscard]] auto operator<=>(const Place&) const = default;
    };
    [[nodiscard]] bool holds(std::string_view name) const;
    /// All places by ascending word and index.
    [[nodiscard]] std::vector<Place> places(std::string_view name) const;
    /// The first cell of that name in a list, from `from` on; async slots are skipped.
    [[nodiscard]] CellRef findFrom(CellRef from, std::string_view name) const;
    /// The cells of a name in a list, in their order; `nameNumber` is that of the name. Walks
    /// the list only if there are several.
    void cellsAt(int fwp, int index, int nameNumber, std::vector<CellRef>& cells) const;
    /// The first of them, or none.
    [[nodiscard]] CellRef firstAt(int fwp, int index, std::string_view name) const;
    [[nodiscard]] bool holdsAt(int fwp, int index, std::string_view name) const {
        return static_cast<bool>(firstAt(fwp, index, name));
    }
    /// Changes every copy of a measurement; the name stays what it is.
    void updateAll(std::string_view name, const std::function<void(Measurement&)>& change);
    /// True if any measurement of the frame passes the test.
    [[nodiscard]] bool any(const std::function<bool(const Measurement&)>& test) const;
    /// Number of different names.
    [[nodiscard]] int nameCount() const;
    /// A number for a name that is in use, the same for every spelling; -1 for any other.
    [[nodiscard]] int nameNumber(std::string_view name) const;
    /// The same for the measurement of a cell.
    [[nodiscard]] int nameNumber(CellRef at) const;
    /// One more than the highest number of a name.
    [[nodiscard]] int nameNumberEnd() const { return static_cast<int>(names_.size()); }

    /// Bytes that the cells, records and the index take, for the benchmark.
    [[nodiscard]] std::size_t memory() const;

  private:
    struct Cell {
        std::uint32_t record = 0;
        std::uint32_t next = 0;
        std::uint8_t async = 0;
    };
    struct HeadCell {
        Cell cell;
        std::uint32_t tail = 0;  ///< the last chained cell, 0 if there is none
        std::uint32_t free = 1;  ///< free cells of the list, this one included
    };
    struct Word {
        std::vector<HeadCell> heads;
    };
    /// Apart from the measurement: a walk through the frame looks at these, and they are small
    /// enough to stay at hand.
    struct Record {
        std::uint32_t uses = 0;
        std::uint32_t name = 0;
        std::uint32_t next = 0;  ///< the records of a name are a list
        std::uint32_t previous = 0;
    };
    /// Where a name is: the place, with a mark once it is removed, and the chained cell
    /// or 0.
    struct Entry {
        std::uint32_t place;
        std::uint32_t chained;
    };
    struct Name {
        std::string folded;
        mutable std::vector<Entry> places;  ///< sorted up to `sorted`
        mutable std::size_t sorted = 0;
        std::size_t dead = 0;  ///< entries that are marked as removed
        std::size_t live = 0;
        std::uint32_t firstRecord = 0;
        std::uint32_t lastRecord = 0;  ///< the one that was made last
        std::uint32_t rank = 0;
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };
    static constexpr std::uint32_t kBlock = 1U << 16U;

    [[nodiscard]] Cell& cellOf(CellRef at);
    [[nodiscard]] const Cell& cellOf(CellRef at) const;
    [[nodiscard]] HeadCell& headOf(CellRef at);
    [[nodiscard]] const HeadCell& headOf(CellRef at) const;
    [[nodiscard]] Cell& chained(std::uint32_t number);
    [[nodiscard]] const Cell& chained(std::uint32_t number) const;
    [[nodiscard]] std::uint32_t takeChained();
    void giveChained(std::uint32_t number);

    [[nodiscard]] bool isFreeCell(const Cell& cell) const {
        return cell.async == 0 && records_[cell.record].name == 0;
    }
    [[nodiscard]] bool isMeasurementCell(const Cell& cell) const {
        return cell.async == 0 && records_[cell.record].name != 0;
    }
    [[nodiscard]] std::uint32_t recordFor(const Measurement& measurement);
    [[nodiscard]] std::uint32_t newRecord(Measurement measurement, std::uint32_t name);
    [[nodiscard]] std::uint32_t nameFor(std::string_view name);
    [[nodiscard]] std::uint32_t findName(std::string_view name) const;
    void release(std::uint32_t record);
    void setContents(CellRef at, std::uint32_t record, std::uint8_t async);
    void enter(CellRef at, std::uint32_t name);
    void leave(CellRef at, std::uint32_t name);
    void freeHead(HeadCell& head, CellRef at);
    static void settle(const Name& name);
    static bool placeLess(const Entry& a, const Entry& b);
    void relocate(CellRef head, const std::vector<CellRef>& moved);
    [[nodiscard]] std::vector<Entry>::iterator entryOf(Name& name, CellRef at);

    WordWatcher* watcher_ = nullptr;
    std::vector<Word> words_;
    std::vector<std::unique_ptr<Cell[]>> blocks_;
    std::uint32_t chainedEnd_ = 1;  ///< 0 is no cell
    std::uint32_t freeChained_ = 0;
    std::uint32_t chainedUsed_ = 0;
    std::uint32_t mostChained_ = kMostChained;
    std::vector<Record> records_;            ///< 0 is the empty measurement
    std::vector<Measurement> measurements_;  ///< by the number of the record
    std::vector<std::uint32_t> freeRecords_;
    std::vector<Name> names_;  ///< 0 is the empty name
    std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> nameIndex_;
    int liveNames_ = 0;
    std::uint32_t lastStored_ = 0;  ///< the record of the last store, 0 once it is released
};

}  // namespace kavu
