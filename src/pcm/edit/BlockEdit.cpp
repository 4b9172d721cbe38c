#include "pcm/edit/BlockEdit.h"

#include "conversion/ConversionStore.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/MeasurementNames.h"
#include "pcm/edit/BlockPlaces.h"
#include "pcm/edit/BlockQuestion.h"
#include "pcm/edit/MeasurementEditAsync.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "pcm/model/DuplicateNames.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/WordFrameConversion.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace kavu {

namespace {

constexpr std::size_t kLongestBlockName = 32;

/// Places, each once.
class SpotSet {
  public:
    SpotSet() = default;
    explicit SpotSet(const std::vector<BlockSpot>& spots) {
        for (const auto& spot : spots) {
            add(spot);
        }
    }
    bool add(const BlockSpot& spot) {
        return spots_.emplace(std::pair(spot.fwp, spot.fn), spot).second;
    }
    [[nodiscard]] bool holds(const BlockSpot& spot) const {
        return spots_.contains({spot.fwp, spot.fn});
    }
    [[nodiscard]] std::size_t size() const { return spots_.size(); }
    [[nodiscard]] std::vector<BlockSpot> list() const {
        std::vector<BlockSpot> all;
        for (const auto& [place, spot] : spots_) {
            all.push_back(spot);
        }
        return all;
    }

  private:
    std::map<std::pair<int, int>, BlockSpot> spots_;
};

/// A measurement as it will be.
struct Pending {
    std::string oldName;  ///< empty for a new one
    MeasurementPlaces places;
};

/// What becomes of the frame, before anything of it is done.
class BlockChange {
  public:
    BlockChange(PcmFormat& format, UserInterface* parent, const EditSteps& steps)
        : format_(format), parent_(parent), steps_(steps) {
        if (steps.names != nullptr && steps.names->checking()) {
            stream_ = streamNumber(format, parent);
        }
    }

    /// The cell under a piece that is put at a place; false, reported, if there is none.
    bool addTarget(const std::string& name, const ClipPiece& piece, int fwp, int fn);
    /// Everything that stands at these places and is not one of `moving`, at its places there.
    void findOccupants(const std::vector<BlockSpot>& targets);
    /// The measurement of a name, as it will be.
    [[nodiscard]] Pending& pending(const std::string& name);
    [[nodiscard]] std::string newName(std::string_view like);
    void takeOccupantsOut();
    void remove(const std::string& name) { deleted_.insert(name); }
    /// True if all of it was done; else the frame is as it was.
    bool apply();
    [[nodiscard]] bool isShared(std::string_view name) const {
        return steps_.names != nullptr && steps_.names->checking() &&
               steps_.names->measurementInOtherStream(name, stream_);
    }

    std::map<std::string, SpotSet> targets;  ///< by the name of the source
    /// Places that are given up by a measurement that moves, by its name in small letters.
    std::map<std::string, SpotSet> leaving;
    BlockQuestion question;

  private:
    [[nodiscard]] std::string fitMask(std::string_view name, const std::string& mask, int fwp);
    void addOccupants(const BlockSpot& target);
    bool drop(const std::string& name);

    PcmFormat& format_;
    UserInterface* parent_;
    const EditSteps& steps_;
    int stream_ = 0;
    std::map<std::string, Pending> pending_;
    std::map<std::string, SpotSet> occupants_;  ///< by name
    std::set<std::string> deleted_;
    std::set<std::string> newNames_;
};

std::string BlockChange::fitMask(std::string_view name, const std::string& mask, int fwp) {
    const auto length = static_cast<std::size_t>(std::max(0, format_.wordLength(fwp)));
    if (isWholeWord(mask) || mask.size() == length) {
        return isWholeWord(mask) ? std::string(kFullWord) : mask;
    }
    if (mask.size() < length) {
        return std::string(length - mask.size(), '0') + mask;
    }
    const auto cut = mask.size() - length;
    if (mask.find('1') < cut) {
        question.cutMasks.insert(std::string(name));
    }
    return mask.substr(cut);
}

bool BlockChange::addTarget(const std::string& name, const ClipPiece& piece, int fwp, int fn) {
    const auto type = format_.wordType(fwp);
    if (type == WordType::Sync) {
        showBox(parent_, "FWP 0 is the sync word. Nothing can be put there.", "Paste");
        return false;
    }
    if (!format_.isDataWord(fwp) || (type == WordType::Subframe && fn > format_.numberOfFrames)) {
        showBox(parent_,
                formatPrintf("The block does not fit there: the frame ends at FWP %d, FN %d.",
                             format_.wordsPerMinorFrame - 1, format_.numberOfFrames),
                "Paste");
        return false;
    }
    if (type == WordType::IdCounter) {
        showBox(parent_,
                formatPrintf("FWP %d is the word of an ID counter. Nothing can be put there.", fwp),
                "Paste");
        return false;
    }
    auto spot = blockSpotAt(format_, fwp, std::min(fn, format_.numberOfFrames));
    // Where word/frame locations make the subframes that they need, one frame stays one frame.
    const bool mayBeOneFrame = format_.implicitSubframes || format_.edition() >= 2011;
    if (spot.everyFrame && mayBeOneFrame && !piece.everyFrame &&
        !piece.values.locationType.empty() && fn <= format_.numberOfFrames) {
        spot.everyFrame = false;
        spot.fn = fn;
    }
    spot.mask = fitMask(name, piece.values.mask.str(), fwp);
    if (const auto async = asyncNameAt(format_, fwp, fn); !async.empty()) {
        question.asyncStreams.insert(async);
    }
    targets[name].add(spot);
    return true;
}

void BlockChange::addOccupants(const BlockSpot& target) {
    const auto& cells = format_.cells();
    for (auto at = format_.cellAtFrame(target.fwp, target.fn); at; at = cells.next(at)) {
        if (!cells.isMeasurement(at)) {
            continue;
        }
        const auto name = cells.measurement(at).name.str();
        const auto spot = blockSpotAt(format_, target.fwp, target.fn);
        const auto moving = leaving.find(lowerAscii(name));
        const auto own = targets.find(name);
        const bool stays =
            moving != leaving.end() && own != targets.end() && own->second.holds(spot);
        if (!stays && (moving == leaving.end() || !moving->second.holds(spot))) {
            occupants_[name].add(spot);
        }
    }
}

void BlockChange::findOccupants(const std::vector<BlockSpot>& wanted) {
    for (const auto& target : wanted) {
        addOccupants(target);
    }
    question.inTheWay.clear();
    for (const auto& [name, spots] : occupants_) {
        const auto places = placesOf(format_, name);
        const auto all = places.spots.size();
        const bool goes =
            !leaving.contains(lowerAscii(name)) && (places.isFragmented || spots.size() >= all);
        question.inTheWay.push_back({name, spots.size(), all, goes, isShared(name)});
    }
}

Pending& BlockChange::pending(const std::string& name) {
    const auto [at, isNew] = pending_.try_emplace(lowerAscii(name));
    if (isNew && format_.hasMeasurement(name)) {
        at->second = {name, placesOf(format_, name)};
    }
    return at->second;
}

std::string BlockChange::newName(std::string_view like) {
    auto name = unusedName(format_, like, newNames_);
    for (int tries = 0; tries < 1000 && isShared(name); ++tries) {
        newNames_.insert(lowerAscii(name));
        name = unusedName(format_, like, newNames_);
    }
    newNames_.insert(lowerAscii(name));
    return name;
}

void BlockChange::takeOccupantsOut() {
    for (const auto& [name, spots] : occupants_) {
        auto& places = pending(name).places;
        std::erase_if(places.spots,
                      [&spots = spots](const BlockSpot& spot) { return spots.holds(spot); });
        // One that moves is still to get its new places.
        if ((places.spots.empty() && !leaving.contains(lowerAscii(name))) || places.isFragmented) {
            pending_.erase(lowerAscii(name));
            deleted_.insert(name);
        }
    }
}

bool BlockChange::drop(const std::string& name) {
    auto quiet = steps_;
    quiet.names = nullptr;  // the question has told of the other streams already
    if (isShared(name)) {
        quiet.deleteConversion = {};
    }
    dropMeasurement(format_, nullptr, quiet, name);
    if (steps_.names != nullptr) {
        steps_.names->forget(name);
    }
    return true;
}

bool BlockChange::apply() {
    StreamUndo before(format_, {.conversions = steps_.conversions, .names = steps_.names});
    {
        std::optional<ConversionStore::Batch> batch;
        if (steps_.conversions != nullptr) {
            batch.emplace(*steps_.conversions);
        }
        for (const auto& name : deleted_) {
            drop(name);
        }
    }
    bool done = true;
    for (const auto& [name, change] : pending_) {
        done = done && placeMeasurement(format_, parent_, change.oldName, change.places);
    }
    removeEmptyHiddenSubframes(format_);
    if (!done && before.commit()) {
        before.undo();
    }
    return done;
}

/// The block in the order of its words and frames: every piece at each place that it takes.
bool addTargets(BlockChange& change, const PcmFormat& format, const FrameClip& clip, int fwp,
                int fn) {
    for (const auto& piece : clip.pieces) {
        const int word = fwp + piece.column;
        const bool isDeep = format.wordType(word) == WordType::Subframe;
        const int rows = piece.everyFrame && isDeep ? clip.rows : 1;
        for (int row = 0; row < rows; ++row) {
            if (!change.addTarget(piece.values.name.str(), piece, word, fn + piece.row + row)) {
                return false;
            }
        }
    }
    return true;
}

std::vector<BlockSpot> allTargets(const BlockChange& change) {
    std::vector<BlockSpot> all;
    for (const auto& [name, spots] : change.targets) {
        const auto some = spots.list();
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

/// The values of a copy; a name alone gets those of a new measurement at its first place.
Measurement copyValues(const PcmFormat& format, const Measurement& values, const BlockSpot& first) {
    if (!values.locationType.empty()) {
        auto copy = values;
        if (format.edition() < kFirstWordFrameEdition) {
            copy.locationType = location_type::kMinorFrame;  // a clip of another edition
        }
        return copy;
    }
    const auto word = wordToEdit(format, nullptr, first.fwp, first.fn, {});
    auto fresh = word ? word->definition.attributes : Measurement{};
    fresh.name = values.name;
    return fresh;
}

/// The reply to the question, if there is something to ask.
bool mayChange(BlockChange& change, UserInterface* parent, const char* title,
               const std::string& what) {
    const auto answer = change.question.ask(parent, title, what);
    if (answer == BlockAnswer::Cancel) {
        return false;
    }
    if (answer == BlockAnswer::Replace) {
        change.takeOccupantsOut();
    }
    return true;
}

std::string countText(std::size_t count, const char* one, const char* more) {
    return formatPrintf("%d %s", static_cast<int>(count), count == 1 ? one : more);
}

}  // namespace

std::string unusedName(const PcmFormat& format, std::string_view name,
                       const std::set<std::string>& taken) {
    const auto isFree = [&](const std::string& candidate) {
        return !taken.contains(lowerAscii(candidate)) && !format.hasMeasurement(candidate) &&
               !checkMeasurementName(format, nullptr, candidate);
    };
    std::string candidate(cutToBytes(name, kLongestBlockName));
    // "ALT_2" counts on as "ALT_3".
    std::string_view stem = name;
    while (!stem.empty() && isDigit(stem.back())) {
        stem.remove_suffix(1);
    }
    stem = stem.size() > 1 && stem.size() < name.size() && stem.back() == '_'
               ? stem.substr(0, stem.size() - 1)
               : name;
    for (int number = 2; !isFree(candidate); ++number) {
        const auto ending = formatPrintf("_%d", number);
        candidate = std::string(cutToBytes(stem, kLongestBlockName - ending.size())) + ending;
    }
    return candidate;
}

bool deleteBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                 const BlockArea& area) {
    BlockChange change(format, parent, steps);
    std::map<std::string, std::set<std::pair<int, int>>> inside;
    std::set<int> records;
    const auto& cells = format.cells();
    for (int fwp = area.firstWord; fwp <= area.lastWord; ++fwp) {
        const int last =
            format.wordType(fwp) == WordType::Subframe ? area.lastFrame : area.firstFrame;
        for (int fn = area.firstFrame; fn <= last; ++fn) {
            for (auto at = format.cellAtFrame(fwp, fn); at; at = cells.next(at)) {
                if (cells.isMeasurement(at)) {
                    inside[cells.measurement(at).name.str()].emplace(fwp,
                                                                     format.foldedFrame(fwp, fn));
                } else if (cells.asyncNumber(at) > 0) {
                    records.insert(cells.asyncNumber(at));
                }
            }
        }
    }
    for (const auto& [name, spots] : inside) {
        change.remove(name);
        change.question.inTheWay.push_back(
            {name, spots.size(), placesOf(format, name).spots.size(), true, change.isShared(name)});
    }
    for (const int record : records) {
        if (record <= format.asyncCount()) {
            change.question.asyncStreams.insert(
                format.asyncFormats[static_cast<std::size_t>(record - 1)].dataLinkName.str());
        }
    }
    if ((inside.empty() && records.empty()) || !change.question.mayDelete(parent)) {
        return false;
    }
    // From the last one on, whose removal leaves the numbers of the others.
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        removeAsyncFormat(format, nullptr, *record, -1, -1);
    }
    format.changed = true;
    return change.apply();
}

bool pasteBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
                const FrameClip& clip, int fwp, int fn) {
    BlockChange change(format, parent, steps);
    change.question.leftOut = clip.fragmented;
    if (!addTargets(change, format, clip, fwp, fn)) {
        return false;
    }
    if (change.targets.empty()) {
        showBox(parent, "There are no measurements to paste.", "Paste", Icon::Information);
        return false;
    }
    change.findOccupants(allTargets(change));
    std::map<std::string, const Measurement*> values;
    for (const auto& piece : clip.pieces) {
        values.emplace(piece.values.name.str(), &piece.values);
    }
    std::map<std::string, std::string> names;
    for (const auto& [name, spots] : change.targets) {
        const auto wanted = change.newName(name);
        names[name] = wanted;
        if (wanted != name) {
            change.question.renamed.emplace_back(name, wanted);
        }
    }
    if (!mayChange(change, parent, "Paste",
                   "Paste " + countText(change.targets.size(), "measurement", "measurements") +
                       formatPrintf(" at FWP %d, FN %d?", fwp, fn))) {
        return false;
    }
    for (const auto& [name, spots] : change.targets) {
        auto& places = change.pending(names[name]).places;
        places.spots = spots.list();
        places.attributes = copyValues(format, *values[name], places.spots.front());
        places.attributes.name = names[name];
    }
    return change.apply();
}

bool moveBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
               const BlockArea& from, int fwp, int fn) {
    const auto clip = copyBlock(format, from);
    BlockChange change(format, parent, steps);
    change.question.leftOut = clip.fragmented;
    if (!addTargets(change, format, clip, fwp, fn)) {
        return false;
    }
    if (change.targets.empty()) {
        showBox(parent, "There are no measurements to move.", "Move Cells", Icon::Information);
        return false;
    }
    for (const auto& piece : clip.pieces) {
        change.leaving[lowerAscii(piece.values.name.view())].add(
            blockSpotAt(format, from.firstWord + piece.column, from.firstFrame + piece.row));
    }
    change.findOccupants(allTargets(change));
    if (!mayChange(change, parent, "Move Cells",
                   "Move " + countText(change.targets.size(), "measurement", "measurements") +
                       formatPrintf(" to FWP %d, FN %d?", fwp, fn))) {
        return false;
    }
    for (const auto& [name, spots] : change.targets) {
        auto& places = change.pending(name).places;
        const auto& left = change.leaving[lowerAscii(name)];
        std::erase_if(places.spots, [&](const BlockSpot& spot) { return left.holds(spot); });
        const auto wanted = spots.list();
        places.spots.insert(places.spots.end(), wanted.begin(), wanted.end());
    }
    return change.apply();
}

namespace {

/// One line of cells that a fill makes from the first one.
struct FilledLine {
    std::map<std::string, std::vector<BlockSpot>> spots;
};

std::vector<FilledLine> fillLines(BlockChange& change, const PcmFormat& format,
                                  const FrameClip& clip, const BlockArea& area, bool right,
                                  bool& fits) {
    std::vector<FilledLine> lines;
    const int count = right ? area.columns() : area.rows();
    for (int line = 1; line < count && fits; ++line) {
        change.targets.clear();
        fits = addTargets(change, format, clip, area.firstWord + (right ? line : 0),
                          area.firstFrame + (right ? 0 : line));
        FilledLine filled;
        for (const auto& [name, spots] : change.targets) {
            const SpotSet own(placesOf(format, name).spots);
            for (const auto& spot : spots.list()) {
                if (!own.holds(spot)) {
                    filled.spots[name].push_back(spot);
                }
            }
        }
        lines.push_back(std::move(filled));
    }
    return lines;
}

}  // namespace

bool fillBlock(PcmFormat& format, UserInterface* parent, const EditSteps& steps,
               const BlockArea& area, FillDirection direction) {
    const bool right = direction == FillDirection::Right;
    auto first = area;
    (right ? first.lastWord : first.lastFrame) = right ? area.firstWord : area.firstFrame;
    const auto clip = copyBlock(format, first);
    BlockChange change(format, parent, steps);
    change.question.leftOut = clip.fragmented;
    bool fits = true;
    const auto lines = fillLines(change, format, clip, area, right, fits);
    if (!fits) {
        return false;
    }
    std::vector<BlockSpot> targets;
    for (const auto& line : lines) {
        for (const auto& [name, spots] : line.spots) {
            targets.insert(targets.end(), spots.begin(), spots.end());
        }
    }
    if (targets.empty()) {
        showBox(parent, "There is nothing to fill the block with.", "Fill", Icon::Information);
        return false;
    }
    change.findOccupants(targets);
    const auto answer = change.question.askFill(parent);
    if (answer == FillAnswer::Cancel) {
        return false;
    }
    change.takeOccupantsOut();
    for (const auto& line : lines) {
        for (const auto& [name, spots] : line.spots) {
            const bool isCopy = answer == FillAnswer::NewNames;
            const auto source = placesOf(format, name);
            const auto wanted = isCopy ? change.newName(name) : name;
            auto& places = change.pending(wanted).places;
            if (isCopy) {
                places.attributes = source.attributes;
                places.attributes.name = wanted;
                places.attributes.kept = 0;
                places.attributes.wordFrameIndex = 0;
            }
            places.spots.insert(places.spots.end(), spots.begin(), spots.end());
        }
    }
    return change.apply();
}

}  // namespace kavu
