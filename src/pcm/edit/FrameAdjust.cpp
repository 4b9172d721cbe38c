#include "pcm/edit/FrameAdjust.h"

#include "core/talk/BoxLines.h"
#include "core/talk/QuestionNames.h"
#include "core/text/Printf.h"
#include "pcm/edit/CounterRefit.h"
#include "pcm/edit/IntervalRefit.h"
#include "pcm/edit/RangeRefit.h"
#include "pcm/edit/SentValues.h"
#include "pcm/edit/SideLocations.h"
#include "pcm/model/FrameEditLists.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/undo/StreamUndo.h"
#include "pcm/write/WrittenRange.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

namespace kavu {

namespace {

constexpr const char* kNoPlaceLeft = "none of its places is left";

/// Calls `visit(name)` for every measurement. The stream may be changed meanwhile.
template <typename Visit>
void forEachName(const PcmFormat& format, const Visit& visit) {
    std::vector<std::string> names;
    format.forEachMeasurement([&](CellRef at, int, int) {
        names.push_back(format.cells().measurement(at).name.str());
        return true;
    });
    for (const auto& name : names) {
        visit(name);
    }
}

/// The first cell of a measurement as it is written from: the lowest word, and its first frame.
FrameCells::Place firstPlace(const PcmFormat& format, std::string_view name) {
    const auto places = format.cells().places(name);
    return places.empty() ? FrameCells::Place{} : places.front();
}

/// Nothing if it is the same: each word that holds the measurement would count as changed.
void setLocationCount(PcmFormat& format, std::string_view name, int count) {
    auto& cells = format.cells();
    const auto at = firstPlace(format, name);
    if (cells.measurement(cells.firstAt(at.word, at.index, name)).locationCount != count) {
        cells.updateAll(name, [count](Measurement& copy) { copy.locationCount = count; });
    }
}

std::vector<int> sentWords(const PcmFormat& format, std::string_view name) {
    std::vector<int> words;
    for (const auto& place : format.cells().places(name)) {
        if (words.empty() || words.back() != place.word) {
            words.push_back(place.word);
        }
    }
    return words;
}

/// A stream before an edit of its frame.
struct Before {
    FrameShape shape;
    std::set<std::string> notFound;                 ///< by a load, whatever the edit does
    std::map<std::string, std::vector<int>> words;  ///< in which each measurement is
    std::set<int> asyncNotFound;
    std::vector<std::string> countersNotFound;
};

/// What a load makes of the stream as it is now.
struct Loaded {
    Loaded(const PcmFormat& format, int hiddenDepth)
        : now(shapeOf(format)), shape(loadedShape(format, hiddenDepth)), subframes(format) {}
    FrameShape now;
    FrameShape shape;
    LoadedSubframes subframes;
};

/// Finds and adjusts what an edit of the frame has left behind.
class Adjustment {
  public:
    explicit Adjustment(PcmFormat& format) : format_(format), side_(format) {
        before_.shape = shapeOf(format);
        const Loaded loaded(format, loadedHiddenDepth(format));
        forEachName(format, [&](const std::string& name) {
            before_.words[name] = sentWords(format, name);
            if (!isFoundNow(name, loaded)) {
                before_.notFound.insert(name);
            }
        });
        const auto async = asyncLeftBehind(format);
        before_.asyncNotFound.insert(async.begin(), async.end());
        before_.countersNotFound = countersLeftBehind(format);
    }

    /// Lists what is left behind; false if nothing is.
    bool find(const WordMoves& moves) {
        moves_ = moves;
        extendsCounters_ = counterCoveredAll() && format_.numberOfFrames > before_.shape.frames;
        const Loaded loaded(format_,
                            extendsCounters_ ? format_.numberOfFrames : loadedHiddenDepth(format_));
        for (const auto& [name, words] : before_.words) {
            if (!before_.notFound.contains(name)) {
                findOne(name, words, loaded);
            }
        }
        for (const int record : asyncLeftBehind(format_)) {
            if (!before_.asyncNotFound.contains(record)) {
                async_.emplace(record, std::string());
            }
        }
        findAsyncOfOtherDepth(loaded);
        for (auto& name : countersLeftBehind(format_)) {
            const auto& known = before_.countersNotFound;
            if (std::find(known.begin(), known.end(), name) == known.end()) {
                counters_.push_back(std::move(name));
            }
        }
        sideLeft_ = side_.left(moves_);
        return !left_.empty() || !async_.empty() || !counters_.empty() || !sideLeft_.empty();
    }

    /// Rebuilds all definitions, and notes what each has become.
    void adjust(UserInterface* parent) {
        if (!counters_.empty()) {
            closeCounterGaps(format_);
        }
        side_.adjust(parent, moves_);
        extendCounters();
        fitHiddenSubframes();
        refitSubframes(format_);
        const Loaded loaded(format_, loadedHiddenDepth(format_));
        for (auto& entry : left_) {
            if (!format_.hasMeasurement(entry.name)) {  // cut with the depth of its words
                entry.isGone = true;
                entry.fate = kNoPlaceLeft;
            } else {
                entry.becomes = refit(entry.name, loaded);
            }
        }
        const auto byInterval = asyncLeftBehind(format_);
        for (auto& [record, becomes] : async_) {
            const bool refits =
                std::find(byInterval.begin(), byInterval.end(), record) != byInterval.end();
            becomes = refits ? refitAsync(format_, record)
                             : formatPrintf("the frames up to %d", loadedHiddenDepth(format_));
        }
        format_.changed = true;
    }

    [[nodiscard]] MessageBox question() const {
        MessageBox box;
        box.name = question::kAdjust;
        box.title = "Adjust Measurements?";
        box.icon = Icon::Question;
        box.buttons = Buttons::YesNoCancel;
        box.defaultButton = Button::Yes;
        box.yesText = "&Adjust";
        box.noText = "&Leave";
        const auto count = left_.size() + async_.size();
        if (count > 0) {
            box.text = formatPrintf(
                "%d %s located by ranges or by an interval, or %s places that this edit takes "
                "away. ",
                static_cast<int>(count), count == 1 ? "measurement is" : "measurements are",
                count == 1 ? "has" : "have");
        }
        box.text += "After the next load:\n\n";
        std::vector<std::string> lines;
        for (const auto& entry : left_) {
            lines.push_back(lineOf(entry));
        }
        for (const auto& [number, becomes] : async_) {
            const auto& record = format_.asyncFormats[static_cast<std::size_t>(number - 1)];
            lines.push_back(formatPrintf("Async format %s: elsewhere. Adjusted: %s",
                                         record.dataLinkName.view(), becomes));
        }
        for (const auto& name : counters_) {
            lines.push_back(formatPrintf("ID counter %s: lost. Adjusted: it is found", name));
        }
        for (const auto& side : sideLeft_) {
            const auto line = formatPrintf("%s %d: elsewhere. ", side.label, side.before);
            lines.push_back(side.now > 0 ? line + formatPrintf("Adjusted: %d", side.now)
                                         : line + "Cannot be adjusted");
        }
        addLines(box, lines);
        box.text +=
            "\nAdjust stores each where the display shows it. Leave keeps the definitions "
            "as they are.";
        return box;
    }

  private:
    struct Left {
        std::string name;
        bool isGone = false;  ///< no place is left
        std::string fate;     ///< with the definition as it is
        std::string becomes;  ///< by the adjustment; empty for what cannot be adjusted
    };

    [[nodiscard]] const WordFrameDefinition* definitionOf(std::string_view name) const {
        return format_.wordFrameDefinition(wordFrameEntry(format_, name));
    }
    [[nodiscard]] bool isRanged(std::string_view name) const {
        const auto at = firstPlace(format_, name);
        return isWordFrame(
            format_.cells().measurement(format_.cells().firstAt(at.word, at.index, name)));
    }

    /// True if a load finds a measurement where its cells are.
    [[nodiscard]] bool isFoundNow(const std::string& name, const Loaded& loaded) const {
        const auto at = firstPlace(format_, name);
        const auto first = format_.cells().firstAt(at.word, at.index, name);
        if (!isWordFrame(format_.cells().measurement(first))) {
            return isFoundByLoad(format_, loaded.subframes, first, at.word, at.index);
        }
        const auto* const definition = definitionOf(name);
        if (definition == nullptr) {
            return false;
        }
        MaskNumbers masks;
        const SentValues found(loadedPlaces(format_, *definition, loaded.shape), loaded.shape,
                               masks);
        return found.parts(loaded.now.frames, false) ==
               shownParts(format_, name, loaded.now, masks);
    }

    /// Where the values of a measurement are now, each with its parts as before the edit.
    [[nodiscard]] std::vector<LocationPlaces> moved(const std::string& name,
                                                    const WordFrameDefinition& definition,
                                                    const FrameShape& now) const {
        std::vector<LocationPlaces> locations;
        const int number = format_.cells().nameNumber(name);
        for (const auto& location : definition.locations) {
            auto places =
                movedPlaces(placesOf(location, before_.shape), moves_, before_.shape, now);
            for (auto& step : places.steps) {
                for (auto& part : step) {
                    keepHeld(part, number);
                }
            }
            locations.push_back(std::move(places));
        }
        return locations;
    }

    /// A subframe that has gone with the edit has taken its cells along.
    void keepHeld(WordFrames& part, int nameNumber) const {
        if (part.fwp < 0) {
            return;
        }
        std::vector<CellRef> found;
        std::erase_if(part.frames, [&](int cell) {
            format_.cells().cellsAt(part.fwp, std::max(1, cell), nameNumber, found);
            return found.empty();
        });
        if (part.frames.empty()) {
            part = {};
        }
    }

    /// Those in some frames of a hidden subframe, which a load gives another depth.
    void findAsyncOfOtherDepth(const Loaded& loaded) {
        for (std::size_t i = 0; i < format_.asyncFormats.size(); ++i) {
            const auto& locations = format_.asyncFormats[i].locations;
            const int record = static_cast<int>(i) + 1;
            const bool differs =
                std::any_of(locations.begin(), locations.end(), [&](const auto& location) {
                    return loaded.now.isDataWord(location.fwp) &&
                           loaded.now.word(location.fwp).hidden &&
                           loaded.now.word(location.fwp).depth !=
                               loaded.shape.word(location.fwp).depth &&
                           !isAsyncInEveryCell(location.fwp, record);
                });
            if (differs) {
                async_.emplace(record, std::string());
            }
        }
    }
    [[nodiscard]] bool isAsyncInEveryCell(int fwp, int record) const {
        int fn = 1;
        while (fn <= format_.cells().cellCount(fwp) && isAsyncAt(format_, fwp, fn, record)) {
            ++fn;
        }
        return fn > format_.cells().cellCount(fwp);
    }

    void findOne(const std::string& name, const std::vector<int>& wordsBefore,
                 const Loaded& loaded) {
        if (!format_.hasMeasurement(name)) {
            // What a deletion has taken was asked for by itself.
            if (std::none_of(wordsBefore.begin(), wordsBefore.end(),
                             [&](int fwp) { return isDeleted(fwp); })) {
                left_.push_back({name, true, kNoPlaceLeft, {}});
            }
            return;
        }
        const auto wordsNow = sentWords(format_, name).size();
        auto fate = isRanged(name) ? fateOfRanges(name, loaded) : fateOfOlder(name, loaded);
        if (fate.empty() && wordsNow < wordsBefore.size()) {
            fate = formatPrintf("%d of %d words", static_cast<int>(wordsNow),
                                static_cast<int>(wordsBefore.size()));
        }
        if (!fate.empty()) {
            left_.push_back({name, false, fate, {}});
        }
    }

    [[nodiscard]] bool isDeleted(int fwp) const {
        const auto at = static_cast<std::size_t>(fwp);
        return at < moves_.size() && moves_[at] < 0;
    }

    [[nodiscard]] std::string fateOfRanges(const std::string& name, const Loaded& loaded) const {
        const auto* const definition = definitionOf(name);
        if (definition == nullptr) {
            return {};
        }
        MaskNumbers masks;
        const SentValues stored(loadedPlaces(format_, *definition, loaded.shape), loaded.shape,
                                masks);
        const SentValues shown(moved(name, *definition, loaded.now), loaded.now, masks);
        if (stored == shown) {
            return {};
        }
        if (stored.empty()) {
            return "lost";
        }
        const auto same = stored.countCommon(shown);
        return same == stored.size() ? formatPrintf("%d of %d places", static_cast<int>(same),
                                                    static_cast<int>(shown.size()))
                                     : "elsewhere";
    }

    [[nodiscard]] std::string fateOfOlder(const std::string& name, const Loaded& loaded) const {
        return isFoundNow(name, loaded) ? "" : "elsewhere";
    }

    static std::string lineOf(const Left& entry) {
        const auto line = entry.name + ": " + entry.fate;
        return entry.isGone            ? line
               : entry.becomes.empty() ? line + ". Cannot be adjusted"
                                       : line + ". Adjusted: " + entry.becomes;
    }

    // --- adjusting --------------------------------------------------------------------------

    /// From 106-11 on hidden subframes are as deep as the first counter, so that it has to count
    /// the frames that are new.
    [[nodiscard]] bool counterCoveredAll() const {
        return before_.shape.edition >= kHiddenSubframesEdition && countIdCounters(format_) > 0 &&
               loadedHiddenDepth(format_) == before_.shape.frames;
    }
    void extendCounters() {
        if (!extendsCounters_) {
            return;
        }
        for (auto& counter : format_.idCounters) {
            if (!counter.name.empty() && counter.endFrame.number() == before_.shape.frames) {
                counter.endFrame = std::to_string(format_.numberOfFrames);
                updateEndValue(counter);
            }
        }
    }

    /// Gives hidden subframes the depth that a load gives them. Cells are repeated or cut.
    void fitHiddenSubframes() {
        const int depth = loadedHiddenDepth(format_);
        const auto now = shapeOf(format_);
        for (int fwp = 1; fwp < now.words; ++fwp) {
            if (now.word(fwp).hidden && now.word(fwp).depth != depth) {
                keepAsyncFrames(fwp, depth);
                auto contents = takeWord(format_, fwp);
                const auto period = contents.lists.size();
                contents.lists.resize(static_cast<std::size_t>(std::max(1, depth)));
                for (std::size_t i = period; period > 0 && i < contents.lists.size(); ++i) {
                    contents.lists[i] = contents.lists[i - period];
                }
                format_.subframeOfWord(fwp)->depth = std::to_string(depth);
                putWord(format_, fwp, contents);
            }
        }
        format_.subframesChanged();
    }

    /// The frames of async formats are those that were shown, as far as the subframe has them: a
    /// frame after these would be another cell.
    void keepAsyncFrames(int fwp, int depth) {
        for (std::size_t i = 0; i < format_.asyncFormats.size(); ++i) {
            for (auto& location : format_.asyncFormats[i].locations) {
                if (location.fwp != fwp) {
                    continue;
                }
                const int record = static_cast<int>(i) + 1;
                const int last = isAsyncInEveryCell(fwp, record)
                                     ? format_.numberOfFrames
                                     : std::min(depth, format_.numberOfFrames);
                std::vector<FrameRange> ranges;
                for (int fn = 1; fn <= last; ++fn) {
                    if (!isAsyncAt(format_, fwp, fn, record)) {
                        continue;
                    }
                    if (!ranges.empty() && ranges.back().end == fn - 1) {
                        ranges.back().end = fn;
                    } else {
                        ranges.push_back({fn, 1, fn});
                    }
                }
                location.frames = ranges.empty() ? location.frames : ranges;
            }
        }
    }

    std::string refit(const std::string& name, const Loaded& loaded) {
        if (!isRanged(name)) {
            const auto at = firstPlace(format_, name);
            const auto first = format_.cells().firstAt(at.word, at.index, name);
            return isFoundByLoad(format_, loaded.subframes, first, at.word, at.index)
                       ? "the places of its subframe"
                       : refitOlderType(format_, name);
        }
        auto* const definition = format_.wordFrameDefinition(wordFrameEntry(format_, name));
        if (definition == nullptr) {
            return {};
        }
        auto made =
            refitRanges(format_, moved(name, *definition, loaded.now), loaded.now, loaded.shape);
        if (!made || made->locations.empty()) {
            return {};
        }
        made->idCounterName = definition->idCounterName;
        *definition = std::move(*made);
        const int count = definition->locationCount();
        setLocationCount(format_, name, count);
        return formatPrintf("%d %s", count, count == 1 ? "location" : "locations");
    }

    PcmFormat& format_;
    SideLocations side_;
    Before before_;
    WordMoves moves_;
    bool extendsCounters_ = false;
    std::vector<Left> left_;
    std::map<int, std::string> async_;   ///< numbers, and what they become
    std::vector<std::string> counters_;  ///< names
    std::vector<SideLocations::Left> sideLeft_;
};

/// Whether any location is given by a range, an interval or the number of a word, or a counter that
/// goes could leave a gap before others.
bool canLeaveBehind(PcmFormat& format) {
    if (countIdCounters(format) > 1 || !SideLocations(format).empty()) {
        return true;
    }
    const auto isStepped = [](const Measurement& measurement) {
        return isWordFrame(measurement) || measurement.locationMode.view().starts_with('I');
    };
    const auto isSteppedFormat = [](const AsyncFormat& record) {
        return record.locationMode == kFirstAndInterval;
    };
    return format.cells().any(isStepped) ||
           std::any_of(format.asyncFormats.begin(), format.asyncFormats.end(), isSteppedFormat) ||
           std::any_of(format.idCounters.begin(), format.idCounters.end(), [](const auto& counter) {
               return std::any_of(
                   counter.subframes.begin(), counter.subframes.end(),
                   [](const Subframe& record) { return record.locationMode == kFirstAndInterval; });
           });
}

/// Ranges that the edit has cut end with the frame, as they are written.
void trimRanges(PcmFormat& format) {
    forEachName(format, [&](const std::string& name) {
        auto* const definition = format.wordFrameDefinition(wordFrameEntry(format, name));
        if (definition == nullptr) {
            return;
        }
        auto written = writtenDefinition(format, *definition);
        if (written == *definition) {
            return;
        }
        *definition = std::move(written);
        setLocationCount(format, name, definition->locationCount());
    });
}

}  // namespace

bool changeFrame(PcmFormat& format, UserInterface* parent, const EditSteps& steps, FrameEdit kind,
                 const std::function<bool(WordMoves& moves)>& edit) {
    WordMoves moves(static_cast<std::size_t>(std::max(0, format.wordsPerMinorFrame)));
    std::iota(moves.begin(), moves.end(), 0);
    if (parent == nullptr || (kind == FrameEdit::MovesWords && !canLeaveBehind(format))) {
        return edit(moves);
    }
    Adjustment adjustment(format);
    StreamUndo undo(format, {steps.conversions, steps.names});
    if (!edit(moves)) {
        return false;
    }
    undo.commit();
    if (!adjustment.find(moves)) {
        trimRanges(format);
        return true;
    }
    adjustment.adjust(parent);
    trimRanges(format);
    const bool adjusted = undo.commit();
    const auto answer = parent->message(adjustment.question());
    if (answer != Button::Yes && adjusted) {
        undo.undo(parent);
    }
    while (answer != Button::Yes && answer != Button::No && undo.canUndo()) {
        undo.undo(parent);
    }
    return answer == Button::Yes || answer == Button::No;
}

bool editFrameAttribute(PcmFormat& format, UserInterface* parent, std::string_view code,
                        std::string_view value) {
    const auto edit = [&](WordMoves&) { return editAttribute(format, parent, code, value); };
    WordMoves unused;
    const bool isSize = code == "MF\\N" || code == "MF1" || code == "TF";
    return isSize ? changeFrame(format, parent, {}, FrameEdit::ChangesSize, edit) : edit(unused);
}

bool saveIdCounterAndFrame(PcmFormat& format, UserInterface* parent, int fwp,
                           const IdCounter& record) {
    return changeFrame(format, parent, {}, FrameEdit::ChangesSize,
                       [&](WordMoves&) { return saveIdCounter(format, parent, fwp, record); });
}

bool deleteIdCounterAndAdjust(PcmFormat& format, UserInterface* parent, int fwp) {
    return changeFrame(format, parent, {}, FrameEdit::MovesWords,
                       [&](WordMoves&) { return deleteIdCounter(format, parent, fwp); });
}

bool saveSubframeAndFrame(PcmFormat& format, UserInterface* parent, int fwp,
                          const SubframeEditing& editing) {
    return changeFrame(format, parent, {}, FrameEdit::ChangesSize, [&](WordMoves&) {
        return saveSubframeEditing(format, parent, fwp, editing);
    });
}

}  // namespace kavu
