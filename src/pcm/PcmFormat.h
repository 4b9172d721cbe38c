// One PCM stream in memory: the attributes of its format, its words, ID counters, subframes
// and async formats, and the measurements in its major frame.
//
// Word positions (FWP) count from 1, 0 is the sync word, which `wordsPerMinorFrame`
// includes. Frame numbers (FN) count from 1. The indices of counters and subframes count
// from 0. Every accessor tolerates an absent format and positions out of range, and returns
// 0 or nothing for them.
#pragma once

#include "core/talk/MessageFor.h"
#include "pcm/model/AsyncFormat.h"
#include "pcm/model/FixedText.h"
#include "pcm/model/FrameCells.h"
#include "pcm/model/Measurement.h"
#include "pcm/model/StreamKept.h"
#include "pcm/model/Subframe.h"
#include "pcm/model/WordFrame.h"
#include "vocabulary/StreamLimits.h"

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kavu {

struct DocumentContext;
class Occurrences;
class UserInterface;

inline constexpr int kMostWords = 2048;

enum class WordType { Minor = 0, IdCounter = 1, Subframe = 2, Sync = 3 };

/// One word position; its cells are held by the format.
struct FrameWord {
    WordType type = WordType::Minor;
    int length = 0;  ///< bits
    int idCounterIndex = -1;
    int subframeIndex = -1;
    [[nodiscard]] bool operator==(const FrameWord&) const = default;
};

/// The attributes of a format, each with the code that carries it.
struct PcmAttributes {
    int commonWordLength = 0;               ///< F1, bits
    int numberOfFrames = 0;                 ///< MF\N
    int wordsPerMinorFrame = 0;             ///< MF1, the sync word included
    int bitsPerMinorFrame = 0;              ///< MF2, always computed
    int syncLength = 0;                     ///< MF4, bits
    FixedText<65> syncPattern;              ///< MF5, in groups, binary or hexadecimal
    FixedText<4> typeFormat;                ///< TF: ONE, TWO, 1553, BUS, ALTD, PKTM, OTHR
    FixedText<2> inSyncCriteria;            ///< SYNC1
    FixedText<2> inSyncPatternCriteria;     ///< SYNC2
    FixedText<2> outOfSyncDisagrees;        ///< SYNC3
    FixedText<2> outOfSyncPatternCriteria;  ///< SYNC4
    FixedText<6> pcmCode;                   ///< D1
    FixedText<1> encryption;                ///< D3
    FixedText<1> dataDirection;             ///< D6
    FixedText<1> polarity;                  ///< D4
    FixedText<1> autoPolarityCorrection;    ///< D5
    FixedText<1> dataRandomized;            ///< D7
    FixedText<3> randomizerLength;          ///< D8
    FixedText<1> wordTransferOrder;         ///< F2
    FixedText<2> parity;                    ///< F3
    FixedText<1> parityTransferOrder;       ///< F4
    FixedText<3> syncType;                  ///< MF3
    FixedText<32> streamName;               ///< DLN
    bool hexFsp = false;                    ///< the pattern is held in hexadecimal
    bool formatEdited = false;              ///< attributes were edited
    int pGroup = 0;
    int dGroup = 0;
    bool isBusStream = false;
    bool changed = false;  ///< differs from the group files
    std::string comment;   ///< COM, the private record included
    std::string nonStandardCode;
    bool implicitSubframes = false;  ///< measurements get hidden subframes as they need them
    int measurementListCount = 0;    ///< ML\N of the D group
    std::array<FixedText<32>, kMostMeasurementLists> measurementListNames;  ///< MLN
    FixedText<9> bitRate;                                                   ///< D2, as entered
    /// F2 as it was before the type became a bus, which has none; any other type takes it back.
    FixedText<1> orderBeforeBus;
    [[nodiscard]] bool operator==(const PcmAttributes&) const = default;
};

class PcmFormat : public PcmAttributes {
  public:
    explicit PcmFormat(DocumentContext& context);
    PcmFormat(const PcmFormat&) = delete;
    PcmFormat& operator=(const PcmFormat&) = delete;

    [[nodiscard]] DocumentContext& context() const { return context_; }
    /// The edition of the document, as a year.
    [[nodiscard]] int edition() const;
    /// True if a format is in memory.
    [[nodiscard]] bool loaded() const { return !words_.empty(); }
    /// Frees everything, empties all attributes and deletes the side files.
    void closeFormat();
    /// The same without the files.
    void clear();

    /// How often the stream was written to its group files since it came into memory.
    int saveCount = 0;
    std::vector<IdCounter> idCounters;
    std::vector<AsyncFormat> asyncFormats;                  ///< at most 18; record n is at n - 1
    std::vector<WordFrameDefinition> wordFrameDefinitions;  ///< entry n is at n - 1
    StreamKept kept;                                        ///< what the files hold besides

    [[nodiscard]] int asyncCount() const { return static_cast<int>(asyncFormats.size()); }

    // --- attributes; messages of edits go to boxes ----------------------------------------

    /// 4 to 32 bits in class 1 (16 before 106-05), 24 in a bus stream: messages 218 to
    /// 220.
    bool setCommonWordLength(UserInterface* parent, int length);
    /// The same rules for the length of one word.
    [[nodiscard]] bool checkWordLength(UserInterface* parent, int length) const;
    /// 1 to 256: message 216.
    bool setNumberOfFrames(UserInterface* parent, int frames);
    /// At least 1, 128 to 256 in a bus stream, at most 1024 in class 1: messages 161, 222,
    /// 223. Removed words take their counters, subframes and measurements with them.
    bool setWordsPerMinorFrame(UserInterface* parent, int words);
    /// Messages 439, 440.
    bool setFrameSyncPatternByValue(UserInterface* parent, std::string_view pattern);
    /// Takes the recommended pattern of a length.
    bool setFrameSyncPatternByLength(UserInterface* parent, int length);
    /// Switches between binary and hexadecimal notation, and keeps the choice.
    void setHexFsp(bool hexadecimal);
    void setBitRate(std::string_view rate);
    /// Sums the lengths of all words; true if that changed the count.
    bool recalculateBitsPerMinorFrame();
    /// The text for the first attribute that class 1 does not have, or nothing.
    [[nodiscard]] std::optional<std::string> classTwoAttribute() const;

    /// Only the limits of capacity: messages 188 and 189 ("truncated") with their two
    /// numbers go to `report`, which may be null. The number of frames never decreases.
    using Report =
        std::function<void(MessageFor<int, int> id, MessageTitle titleId, int first, int second)>;
    void raiseNumberOfFrames(const Report& report, int frames);
    /// False if the cells could not be allocated. New words have the common length.
    bool allocateWords(const Report& report, int words);

    // --- words ------------------------------------------------------------------------------

    // Positions up to and including `wordsPerMinorFrame` are accepted: the last, which no
    // stream has, is read and written without effect on any other.

    [[nodiscard]] const FrameWord& word(int fwp) const;
    [[nodiscard]] WordType wordType(int fwp) const { return word(fwp).type; }
    void setWordType(int fwp, WordType type);
    [[nodiscard]] int wordLength(int fwp) const { return word(fwp).length; }
    void setWordLength(int fwp, int length);
    /// Makes the word a word of a subframe, of a counter (then `subframe` is -1), or, with
    /// `WordType::Minor` and -1 for both, a plain word. The cells stay as they are.
    void setWord(int fwp, WordType type, int idCounter, int subframe);
    /// Gives each position the word of its source, with all that it holds. REQUIRES: every word is
    /// a source once, and the sync word stays.
    void permuteWords(const std::vector<int>& sources);
    /// True for 1 to `wordsPerMinorFrame` - 1.
    [[nodiscard]] bool isDataWord(int fwp) const { return fwp >= 1 && fwp < wordsPerMinorFrame; }
    [[nodiscard]] int wordDepth(int fwp) const;

    // --- cells ------------------------------------------------------------------------------

    [[nodiscard]] const FrameCells& cells() const { return cells_; }
    [[nodiscard]] FrameCells& cells() { return cells_; }
    [[nodiscard]] CellRef cellAt(int fwp, int index) const;
    [[nodiscard]] CellRef cellAtFrame(int fwp, int fn) const;
    [[nodiscard]] CellRef next(CellRef at) const { return cells_.next(at); }
    /// FN folded by the depth of a word: 1 to the depth.
    [[nodiscard]] int foldedFrame(int fwp, int fn) const;
    /// Message 267 ("Unable to allocate memory") if there can be no more cells.
    [[nodiscard]] CellRef getFreeCell(UserInterface* parent, int fwp, int fn);
    [[nodiscard]] CellRef findInCell(int fwp, int fn, std::string_view name) const;
    [[nodiscard]] int countMeasurementsAt(int fwp, int fn, bool measurementsOnly) const;
    /// The n-th of those, from 1.
    [[nodiscard]] CellRef measurementAt(int fwp, int fn, int n, bool measurementsOnly) const;
    /// Copies the contents of a cell into another one, which keeps its place in its list.
    void storeCell(CellRef to, CellRef from);
    /// Resizes the cells of a word to its depth (1 for a counter). False with message 267.
    bool allocateCells(UserInterface* parent, int fwp);
    /// Message 268 ("Unable to delete") if the word has no cells.
    void freeCells(UserInterface* parent, int fwp);
    /// Sorts every list by name.
    void sortCells();

    // --- measurements by name, ignoring case -----------------------------------------------

    [[nodiscard]] bool hasMeasurement(std::string_view name) const { return cells_.holds(name); }
    [[nodiscard]] bool hasAnyMeasurement() const { return cells_.nameCount() > 0; }
    [[nodiscard]] int countMeasurementOccurences(std::string_view name) const;
    /// True if the word holds a measurement that is in every minor frame.
    [[nodiscard]] bool containsMeasurements(int fwp) const;
    /// The test of that for one cell: a word/frame measurement in every minor frame.
    [[nodiscard]] bool isInEveryFrame(const Measurement& measurement) const;
    /// Removes a measurement from all its cells; chained cells leave their lists.
    void removeMeasurement(std::string_view name);
    /// Calls `visit(cell, fwp, index)` with the first cell of each name, by ascending word,
    /// then index, then place in the list: the order in which measurements are written.
    void forEachMeasurement(const std::function<bool(CellRef, int fwp, int index)>& visit) const;

    // --- subframes --------------------------------------------------------------------------

    [[nodiscard]] const Subframe* subframeOfWord(int fwp) const;
    [[nodiscard]] Subframe* subframeOfWord(int fwp);
    [[nodiscard]] const IdCounter* idCounterOfWord(int fwp) const;
    [[nodiscard]] IdCounter* idCounterOfWord(int fwp);
    /// A subframe by its name; an exact match is preferred.
    [[nodiscard]] std::optional<SubframeRef> findSubframe(std::string_view name) const;
    [[nodiscard]] const Subframe* subframe(SubframeRef ref) const;
    /// The words of a subframe by ascending position.
    [[nodiscard]] const std::vector<int>& wordsOf(SubframeRef ref) const;
    /// The first word at or after `start` that belongs to the subframe, or -1.
    [[nodiscard]] int subframeWord(std::string_view name, int start) const;
    [[nodiscard]] int subframePositions(std::string_view name) const;
    /// 1 found, 0 no such position, the negated number of positions beyond them.
    int subframeLocation(std::string_view name, int position, int& fwp, int& fn) const;
    /// 0 if that place does not belong to the subframe.
    [[nodiscard]] int subframePosition(std::string_view name, int fwp, int fn) const;
    /// To be called after a change of the records of `idCounters` (names, depths,
    /// entries), so that names are indexed again. Changes of words are noticed by
    /// themselves.
    void subframesChanged();
    /// The same for one entry that has just got its name: the others stay indexed, so that
    /// many entries can be made one after the other.
    void subframeNamed(SubframeRef ref);

    // --- masks and word/frame definitions ---------------------------------------------------

    /// The number of bits of a mask; "FW" is the length of the word, or -`fwp`.
    [[nodiscard]] int maskBits(int fwp, std::string_view mask, bool hexadecimalAllowed) const;
    /// Makes an entry with this many empty locations, in place of `entry` or, with -1, after
    /// all others. Returns the entry's number, from 1.
    int addWordFrameDefinition(int entry, int locationCount);
    /// `location` counts from 1.
    void setWordFrameFragments(int entry, int location, int count);
    void freeWordFrameDefinition(int entry);
    [[nodiscard]] const WordFrameDefinition* wordFrameDefinition(int entry) const;
    [[nodiscard]] WordFrameDefinition* wordFrameDefinition(int entry);

  private:
    friend class Occurrences;
    void indexSubframeNames() const;
    void indexSubframeWords() const;

    DocumentContext& context_;
    std::vector<FrameWord> words_;  ///< one more than the words of the frame
    FrameCells cells_;
    /// Built on demand, dropped when a word or a record changes.
    struct SubframeIndex {
        bool namesValid = false;
        bool wordsValid = false;
        std::unordered_map<std::string, SubframeRef> exact;
        std::unordered_map<std::string, SubframeRef> folded;
        std::map<std::pair<int, int>, std::vector<int>> words;
    };
    mutable SubframeIndex subframeIndex_;
};

/// One sample of a measurement in the major frame.
struct Occurrence {
    CellRef cell;
    int fwp = 0;
    int fn = 0;
};

/// The samples of a measurement in the major frame: frame by frame, and within a frame word
/// by word, folded repetitions included. The frame may change meanwhile: a place that no
/// longer holds the name is skipped. The format must outlive it.
class Occurrences {
  public:
    /// With a subframe name only words of that subframe count; with a fragment number of 1 or
    /// more, only cells of that fragment.
    Occurrences(const PcmFormat& format, std::string_view name, std::string_view subframe = {},
                int fragment = 0);
    [[nodiscard]] std::optional<Occurrence> next();

  private:
    struct WordPlaces {
        int fwp;
        std::size_t first;
        std::size_t end;
    };
    void collect(const WordPlaces& word);
    [[nodiscard]] bool stillHolds(CellRef at) const;

    const PcmFormat& format_;
    int name_;
    int fragment_;
    std::vector<FrameCells::Place> places_;
    std::vector<WordPlaces> words_;
    int fn_ = 1;
    std::size_t word_ = 0;
    bool collected_ = false;
    std::vector<CellRef> found_;  ///< the cells of the word that are still to come, reversed
};

}  // namespace kavu
