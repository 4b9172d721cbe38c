#include "pcm/write/WordFrameConversion.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/command/CommandPath.h"
#include "core/document/CommandIndex.h"
#include "core/document/GroupFiles.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "core/text/Edition.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/read/MeasurementPlacing.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/write/PcmSave.h"
#include "pcm/write/WordFrameBuild.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

namespace kavu {

namespace {

/// Calls `visit(head, fwp, fn)` for every array cell, each once: word by word, as they are in
/// memory. A frame of full size that is walked frame by frame takes three times as long.
template <typename Visit>
void forEachConvertedHead(const PcmFormat& format, const Visit& visit) {
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        const bool folds = format.wordType(fwp) == WordType::Subframe;
        const int depth =
            std::min(format.cells().cellCount(fwp), folds ? format.wordDepth(fwp) : 1);
        for (int fn = 1; fn <= std::min(depth, format.numberOfFrames); ++fn) {
            visit(format.cells().cell(fwp, fn), fwp, fn);
        }
    }
}

/// Where a name is met first, frame by frame and within a frame word by word: the order in which
/// measurements are converted and reported.
struct MetFirst {
    int fn = 0;
    int fwp = 0;
    int position = 0;  ///< in the list
    std::size_t name = 0;
    [[nodiscard]] auto operator<=>(const MetFirst&) const = default;
};

/// The measurements of all words in all frames, folded repetitions included.
int countPlaces(const PcmFormat& format) {
    std::int64_t count = 0;
    forEachConvertedHead(format, [&](CellRef, int fwp, int fn) {
        const int depth = format.wordType(fwp) == WordType::Subframe ? format.wordDepth(fwp) : 1;
        const std::int64_t repetitions = (format.numberOfFrames - fn) / std::max(1, depth) + 1;
        count += repetitions * format.countMeasurementsAt(fwp, fn, true);
    });
    return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

/// One conversion of a stream. All definitions are made before the first cell changes, so
/// that a list of many measurements is walked once, and a cancel leaves all as it was.
class Conversion {
  public:
    Conversion(PcmFormat& format, UserInterface* parent, std::vector<std::string>* unconverted)
        : format_(format),
          parent_(parent),
          unconverted_(unconverted),
          load_(format, parent),
          held_(static_cast<std::size_t>(format.cells().nameNumberEnd())) {}

    bool run() {
        const int before = countPlaces(format_);
        gather();
        if (!build()) {
            return false;
        }
        keepWhatBlocks();
        tellRepetitions();
        if (!converted_.empty()) {
            splitSupercommutated();
            takeOut();
            place();
            format_.sortCells();
            format_.changed = true;
        }
        report(before);
        return true;
    }

  private:
    struct Converted {
        std::size_t name;
        Measurement measurement;
        WordFrameDefinition definition;
    };

    /// Collects the cells of each measurement that is not of this type yet, and the order
    /// in which they are found.
    void gather() {
        std::vector<MetFirst> first(held_.size());
        const auto& cells = format_.cells();
        forEachConvertedHead(format_, [&](CellRef head, int fwp, int fn) {
            int position = 0;
            for (auto at = head; at; at = cells.next(at)) {
                ++position;
                if (!cells.isMeasurement(at) || isWordFrame(cells.measurement(at))) {
                    continue;
                }
                const auto name = static_cast<std::size_t>(cells.nameNumber(at));
                const MetFirst place{fn, fwp, position, name};
                if (held_[name].empty() || place < first[name]) {
                    first[name] = place;
                }
                held_[name].push_back({at, fwp, fn});
            }
        });
        std::erase_if(first, [](const MetFirst& place) { return place.fn == 0; });
        std::sort(first.begin(), first.end());
        for (const auto& place : first) {
            order_.push_back(place.name);
            auto& held = held_[place.name];
            const auto byFrame = [](const HeldPlace& a, const HeldPlace& b) {
                return std::tie(a.fn, a.fwp) < std::tie(b.fn, b.fwp);
            };
            if (!std::is_sorted(held.begin(), held.end(), byFrame)) {
                std::stable_sort(held.begin(), held.end(), byFrame);
            }
        }
    }

    bool build() {
        taken_.resize(held_.size());
        double done = 0;
        std::vector<std::optional<WordFrameDefinition>> made(held_.size());
        auto byWord = order_;
        std::stable_sort(byWord.begin(), byWord.end(), [this](std::size_t a, std::size_t b) {
            return held_[a].front().fwp < held_[b].front().fwp;
        });
        for (const auto name : byWord) {
            if (format_.context().ticker.secondElapsed()) {
                setProgressBar(parent_, 100 * done / static_cast<double>(order_.size()));
                yieldToInterface(parent_);
            }
            if (cancelRequested(parent_)) {
                return false;
            }
            ++done;
            made[name] = buildWordFrame(format_, held_[name]);
        }
        for (const auto name : order_) {
            if (auto& definition = made[name]) {
                const auto measurement = converted(held_[name].front().cell, *definition);
                converted_.push_back({name, measurement, std::move(*definition)});
                taken_[name] = true;
            }
        }
        return true;
    }

    /// The supercommutated subframe of a word, in editions where subframes are written.
    [[nodiscard]] std::optional<std::pair<int, int>> supercommutatedAt(int fwp) const {
        const auto* const subframe = format_.subframeOfWord(fwp);
        if (subframe == nullptr || !subframe->isSupercommutated() ||
            format_.edition() >= kHiddenSubframesEdition) {
            return std::nullopt;
        }
        return std::pair(format_.word(fwp).idCounterIndex, format_.word(fwp).subframeIndex);
    }

    /// Word/frame locations in a supercommutated subframe would not be read again, so such
    /// subframes become several ordinary ones. One with a measurement that is not converted
    /// has to stay, too, and so do its other measurements.
    void keepWhatBlocks() {
        for (bool changed = true; changed;) {
            changed = false;
            std::set<std::pair<int, int>> blocked;
            for (const auto name : order_) {
                for (const auto& place : held_[name]) {
                    if (const auto subframe = supercommutatedAt(place.fwp);
                        subframe && !taken_[name]) {
                        blocked.insert(*subframe);
                    }
                }
            }
            for (const auto& entry : converted_) {
                const auto& held = held_[entry.name];
                const bool stays = std::any_of(held.begin(), held.end(), [&](const auto& place) {
                    const auto subframe = supercommutatedAt(place.fwp);
                    return subframe && blocked.contains(*subframe);
                });
                changed = changed || (stays && taken_[entry.name]);
                taken_[entry.name] = taken_[entry.name] && !stays;
            }
        }
        std::erase_if(converted_, [this](const auto& entry) { return !taken_[entry.name]; });
    }

    void splitSupercommutated() {
        std::set<std::pair<int, int>> subframes;
        for (const auto& entry : converted_) {
            for (const auto& place : held_[entry.name]) {
                if (const auto subframe = supercommutatedAt(place.fwp)) {
                    subframes.insert(*subframe);
                }
            }
        }
        for (const auto& [counter, index] : subframes) {
            const auto words = format_.wordsOf({counter, index});
            auto& array = format_.idCounters[static_cast<std::size_t>(counter)].subframes;
            auto record = array[static_cast<std::size_t>(index)];
            record.supercommutated = kNotSupercommutated;
            record.locationMode = kNoLocationMode;
            record.interval = "0";
            array[static_cast<std::size_t>(index)] = record;
            for (std::size_t i = 1; i < words.size(); ++i) {
                const auto slot = getSubframeSlot(format_, parent_, counter);
                if (!slot) {
                    return;
                }
                record.name = freeSubframeName(words[i]);
                array[static_cast<std::size_t>(*slot)] = record;
                format_.subframeNamed({counter, *slot});
                format_.setWord(words[i], WordType::Subframe, counter, *slot);
            }
        }
    }

    /// The depth of the subframes that a location is in, if it is less than the major frame is
    /// deep and the same for all of its words; else 0.
    [[nodiscard]] int shallowDepth(const WordFrameLocation& location) const {
        int depth = 0;
        for (const auto& fragment : location.fragments) {
            for (int fwp = fragment.startWord; fwp <= fragment.endWord;
                 fwp += std::max(1, fragment.wordInterval)) {
                const int here = format_.wordDepth(fwp);
                if (format_.wordType(fwp) != WordType::Subframe || here < 1 ||
                    here >= format_.numberOfFrames || (depth != 0 && depth != here)) {
                    return 0;
                }
                depth = here;
            }
        }
        return depth;
    }

    /// Where subframes are not written, a word/frame location in one that is less deep than the
    /// major frame no longer includes its repetitions: they become locations of their own.
    void tellRepetitions() {
        if (format_.edition() < kHiddenSubframesEdition) {
            return;
        }
        std::vector<std::pair<std::string, int>> counts;
        format_.forEachMeasurement([&](CellRef cell, int, int) {
            const auto& measurement = format_.cells().measurement(cell);
            auto* const definition = format_.wordFrameDefinition(measurement.wordFrameIndex);
            const int before = definition == nullptr ? 0 : definition->locationCount();
            for (int k = 0; k < before; ++k) {
                auto location = definition->locations[static_cast<std::size_t>(k)];
                const int depth = shallowDepth(location);
                for (int frame = depth; depth > 0 && frame < format_.numberOfFrames;
                     frame += depth) {
                    bool within = true;
                    for (auto& fragment : location.fragments) {
                        fragment.startFrame += depth;
                        fragment.endFrame =
                            std::min(fragment.endFrame + depth, format_.numberOfFrames);
                        within = within && fragment.startFrame <= format_.numberOfFrames;
                    }
                    if (!within) {
                        break;
                    }
                    definition->locations.push_back(location);
                }
            }
            if (definition != nullptr && definition->locationCount() != before) {
                counts.emplace_back(measurement.name.str(), definition->locationCount());
            }
            return true;
        });
        for (const auto& [name, count] : counts) {
            format_.cells().updateAll(name, [count = count](Measurement& measurement) {
                measurement.locationCount = count;
            });
            format_.changed = true;
        }
    }

    [[nodiscard]] std::string freeSubframeName(int fwp) const {
        auto name = formatPrintf("SF-%d", fwp);
        for (int n = 1; subframeNameExists(format_, name); ++n) {
            name = formatPrintf("SF-%d-%d", fwp, n);
        }
        return name;
    }

    /// A measurement without its places, which the definition states from now on.
    [[nodiscard]] Measurement converted(CellRef cell, const WordFrameDefinition& definition) const {
        const auto& old = format_.cells().measurement(cell);
        Measurement result;
        result.name = old.name;
        result.parity = old.parity;
        result.parityTransferOrder = old.parityTransferOrder;
        result.transferOrder = old.transferOrder;
        result.filterOverwrite = old.filterOverwrite;
        result.locationType = location_type::kWordFrame;
        result.locationCount = definition.locationCount();
        result.kept = old.kept;
        return result;
    }

    void takeOut() {
        auto& cells = format_.cells();
        struct Kept {
            Measurement measurement;
            int asyncNumber;
        };
        std::vector<Kept> kept;
        forEachConvertedHead(format_, [&](CellRef head, int, int) {
            bool anyTaken = false;
            kept.clear();
            for (auto at = head; at; at = cells.next(at)) {
                const bool taken = cells.isMeasurement(at) &&
                                   taken_[static_cast<std::size_t>(cells.nameNumber(at))];
                anyTaken = anyTaken || taken;
                if (!taken && !cells.isFree(at)) {
                    kept.push_back({cells.measurement(at), cells.asyncNumber(at)});
                }
            }
            if (!anyTaken) {
                return;
            }
            cells.freeChain(head);
            cells.clear(head);
            for (const auto& entry : kept) {
                cells.store(cells.freeCell(head), entry.measurement, entry.asyncNumber);
            }
        });
    }

    /// Lists are sorted by name afterwards, but for those with async slots, which keep the order in
    /// which they were filled; other streams are filled word by word.
    void place() {
        std::vector<const Converted*> order;
        for (auto& entry : converted_) {
            const int number = format_.addWordFrameDefinition(-1, entry.definition.locationCount());
            *format_.wordFrameDefinition(number) = std::move(entry.definition);
            entry.measurement.wordFrameIndex = number;
            order.push_back(&entry);
        }
        if (format_.asyncCount() == 0) {
            std::stable_sort(order.begin(), order.end(), [this](const auto* a, const auto* b) {
                return held_[a->name].front().fwp < held_[b->name].front().fwp;
            });
        }
        for (const auto* const entry : order) {
            const auto& measurement = entry->measurement;
            for (const auto& location :
                 format_.wordFrameDefinition(measurement.wordFrameIndex)->locations) {
                for (const auto& fragment : location.fragments) {
                    placeWordFrameFragment(load_, measurement, fragment);
                }
            }
        }
    }

    void report(int before) {
        const auto& cells = format_.cells();
        std::vector<CellRef> found;
        for (const auto name : order_) {
            if (taken_[name]) {
                continue;
            }
            const auto& place = held_[name].front();
            // Its cell may be another one now: the lists of converted measurements were made again.
            cells.cellsAt(place.fwp, place.fn, static_cast<int>(name), found);
            if (found.empty()) {
                continue;
            }
            const auto& measurement = cells.measurement(found.front());
            if (unconverted_ != nullptr) {
                unconverted_->push_back(measurement.name.str());
            }
            load_.log(460, title::kErrorReadingMeasurement, measurement.name.view(), place.fwp,
                      place.fn, measurement.locationType.view());
        }
        if (const int after = countPlaces(format_); after != before) {
            load_.log(461, title::kErrorReadingMeasurement, before, after);
        }
    }

    PcmFormat& format_;
    UserInterface* parent_;
    std::vector<std::string>* unconverted_;
    PcmLoad load_;
    std::vector<std::vector<HeldPlace>> held_;  ///< by the number of the name
    std::vector<std::size_t> order_;
    std::vector<bool> taken_;
    std::vector<Converted> converted_;
};

/// Sets aside what an enclosing operation has logged so far.
class LogAside {
  public:
    explicit LogAside(const Messages& messages) : path_(messages.logPath()) {
        if (fileExists(path_)) {
            (void)readWholeFile(path_, bytes_);
            (void)deleteFile(path_);
        }
    }
    LogAside(const LogAside&) = delete;
    LogAside& operator=(const LogAside&) = delete;
    ~LogAside() {
        if (!bytes_.empty()) {
            (void)writeWholeFile(path_, bytes_);
        }
    }

  private:
    std::string path_;
    std::string bytes_;
};

/// Adds the measurements that the load has left out of the frame and that are not located by words
/// and frames: nothing converts them, whether they are kept or not.
void addLeftOut(const PcmFormat& format, std::vector<std::string>& names) {
    for (const auto& row : format.kept.rows) {
        std::string name = "(without a name)";
        std::string type;
        for (const auto& text : row.commands) {
            const auto command = viewCommand(text);
            if (isOfPattern(command.code, measurement_field::kName.code)) {
                name = command.value;
            } else if (isOfPattern(command.code, measurement_field::kLocationType.code)) {
                type = command.value;
            }
        }
        if (!type.empty() && !equalsIgnoreCase(type, location_type::kWordFrame)) {
            names.push_back(name);
        }
    }
}

}  // namespace

bool convertToWordFrame(PcmFormat& format, UserInterface* parent,
                        std::vector<std::string>* unconverted) {
    auto& context = format.context();
    if (!format.loaded()) {
        return false;
    }
    if (format.edition() < kFirstWordFrameEdition) {
        showBox(parent,
                formatPrintf("The measurements of stream '%s' cannot be converted. The "
                             "'Word/Frame' Method of describing measurement locations is only "
                             "available on TMATS files written to 106-04 and later "
                             "specifications. This TMATS file is a 106-%2.2d file.",
                             format.streamName.view(), editionNumber(format.edition())),
                std::string(loadText(title::kError).value_or("")));
        return false;
    }
    const ProgressScope progress(parent, ProgressMode::WithCancel);
    const auto text = formatPrintf("Converting measurements in stream '%s' to Word/Frame",
                                   format.streamName.view());
    setStatusText(parent, text);
    setProgressBar(parent, 0);
    const LogAside aside(context.messages);
    const bool done = Conversion(format, parent, unconverted).run();
    context.messages.showLog(parent, context.document.path, format.streamName);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    return done;
}

StreamConversion migrateStream(PcmFormat& format, UserInterface* parent, const PcmSteps& steps,
                               int pIndex, int inputEdition) {
    auto& context = format.context();
    const LogAside aside(context.messages);
    CommandIndex fields;
    (void)fields.readFile(context.reader, context.store.pathOf(groupFile('P', pIndex)),
                          Comments::Skip, {&p::kDln.code, 1});
    const auto found = fields.findField(
        context.reader, nullptr, groupHead('P', pIndex) + std::string(p::kDln.code), kNameLimit);
    const auto name = std::string(found.value_or(""));
    format.closeFormat();
    if (name.empty() || findStreamGroup(format, parent, 'P', name) != pIndex) {
        return {};  // a link belongs to the first stream of its name
    }
    auto& version = context.document.version;
    const int target = version;
    version = inputEdition;
    const bool loaded = loadPcmFormat(format, parent, steps, name);
    version = target;
    StreamConversion made;
    if (loaded && convertToWordFrame(format, parent, &made.unconverted)) {
        addLeftOut(format, made.unconverted);
        made.changed = format.changed && savePcmFormat(format, parent);
        made.converted = made.changed || !format.changed;
    }
    format.closeFormat();
    return made;
}

}  // namespace kavu
