#include "pcm/PcmFormat.h"

#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/FrameSyncPattern.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>
#include <utility>

namespace kavu {

int WordFrameDefinition::mostFragments() const {
    int most = 0;
    for (const auto& location : locations) {
        most = std::max(most, location.fragmentCount());
    }
    return most;
}

PcmFormat::PcmFormat(DocumentContext& context) : context_(context) {}

int PcmFormat::edition() const {
    return context_.document.version;
}

void PcmFormat::clear() {
    static_cast<PcmAttributes&>(*this) = PcmAttributes{};
    saveCount = 0;
    idCounters.clear();
    asyncFormats.clear();
    wordFrameDefinitions.clear();
    kept = {};
    words_.clear();
    cells_.reset(0);
    subframesChanged();
}

void PcmFormat::closeFormat() {
    const ChangeScope scope(context_.files);
    clear();
    for (const auto name :
         {kMeasurementComment, kFrameFilterFile, kFormatSwitchFile, kAltTagFile}) {
        // What cannot be deleted goes with the working store.
        (void)context_.files.removeIfThere(name);
    }
}

// --- words ----------------------------------------------------------------------------------

const FrameWord& PcmFormat::word(int fwp) const {
    static const FrameWord kNone{};
    return fwp >= 0 && fwp < static_cast<int>(words_.size()) ? words_[static_cast<std::size_t>(fwp)]
                                                             : kNone;
}

void PcmFormat::setWordType(int fwp, WordType type) {
    setWord(fwp, type, word(fwp).idCounterIndex, word(fwp).subframeIndex);
}

void PcmFormat::setWordLength(int fwp, int length) {
    if (fwp >= 0 && fwp < static_cast<int>(words_.size())) {
        cells_.announce(fwp);
        words_[static_cast<std::size_t>(fwp)].length = length;
    }
}

void PcmFormat::setWord(int fwp, WordType type, int idCounter, int subframe) {
    if (fwp >= 0 && fwp < static_cast<int>(words_.size())) {
        cells_.announce(fwp);
        auto& word = words_[static_cast<std::size_t>(fwp)];
        word.type = type;
        word.idCounterIndex = idCounter;
        word.subframeIndex = subframe;
        subframeIndex_.wordsValid = false;
    }
}

void PcmFormat::permuteWords(const std::vector<int>& sources) {
    cells_.permuteWords(sources);
    const auto before = words_;
    for (std::size_t fwp = 0; fwp < sources.size(); ++fwp) {
        words_[fwp] = before[static_cast<std::size_t>(sources[fwp])];
    }
    subframeIndex_.wordsValid = false;
}

int PcmFormat::wordDepth(int fwp) const {
    if (fwp < 0 || fwp >= wordsPerMinorFrame) {
        return 0;
    }
    switch (wordType(fwp)) {
        case WordType::Subframe: {
            const auto* const record = subframeOfWord(fwp);
            return record == nullptr ? numberOfFrames : std::max(0, record->depth.number());
        }
        case WordType::IdCounter: {
            const auto* const counter = idCounterOfWord(fwp);
            return counter == nullptr ? numberOfFrames : counter->depth();
        }
        default:
            return 1;
    }
}

// --- cells ----------------------------------------------------------------------------------

CellRef PcmFormat::cellAt(int fwp, int index) const {
    if (wordType(fwp) == WordType::IdCounter && index > 1) {
        return {};
    }
    return cells_.cell(fwp, index);
}

int PcmFormat::foldedFrame(int fwp, int fn) const {
    if (wordType(fwp) != WordType::Subframe) {
        return 1;
    }
    const int depth = wordDepth(fwp);
    return depth < 1 || fn < 1 ? 0 : (fn - 1) % depth + 1;
}

CellRef PcmFormat::cellAtFrame(int fwp, int fn) const {
    if (!isDataWord(fwp) || fn < 1 || fn > numberOfFrames || wordType(fwp) == WordType::Sync) {
        return {};
    }
    return cells_.cell(fwp, foldedFrame(fwp, fn));
}

CellRef PcmFormat::getFreeCell(UserInterface* parent, int fwp, int fn) {
    const auto head = cellAtFrame(fwp, fn);
    const auto cell = head ? cells_.freeCell(head) : CellRef{};
    if (!cell) {
        context_.messages.show(parent, 267, title::kError, kErrorBox);
    }
    return cell;
}

CellRef PcmFormat::findInCell(int fwp, int fn, std::string_view name) const {
    const auto head = cellAtFrame(fwp, fn);
    return head ? cells_.firstAt(fwp, head.index, name) : CellRef{};
}

int PcmFormat::countMeasurementsAt(int fwp, int fn, bool measurementsOnly) const {
    int count = 0;
    for (auto at = cellAtFrame(fwp, fn); at; at = cells_.next(at)) {
        const bool slot = cells_.asyncNumber(at) > 0;
        count += (slot ? !measurementsOnly : cells_.isMeasurement(at)) ? 1 : 0;
    }
    return count;
}

CellRef PcmFormat::measurementAt(int fwp, int fn, int n, bool measurementsOnly) const {
    for (auto at = cellAtFrame(fwp, fn); at; at = cells_.next(at)) {
        const bool slot = cells_.asyncNumber(at) > 0;
        if ((slot ? !measurementsOnly : cells_.isMeasurement(at)) && --n == 0) {
            return at;
        }
    }
    return {};
}

void PcmFormat::storeCell(CellRef to, CellRef from) {
    cells_.store(to, cells_.measurement(from), cells_.asyncNumber(from));
}

bool PcmFormat::allocateCells(UserInterface* parent, int fwp) {
    const int wanted = wordType(fwp) == WordType::IdCounter ? 1 : wordDepth(fwp);
    if (!loaded() || fwp < 0 || fwp >= cells_.wordCount() || wanted > FrameCells::kMostIndex) {
        context_.messages.show(parent, 267, title::kError, kErrorBox);
        return false;
    }
    cells_.resizeWord(fwp, wanted);
    return true;
}

void PcmFormat::freeCells(UserInterface* parent, int fwp) {
    if (cells_.cellCount(fwp) == 0) {
        context_.messages.show(parent, 268, title::kInternalError, kErrorBox, fwp);
        return;
    }
    cells_.resizeWord(fwp, 0);
}

void PcmFormat::sortCells() {
    cells_.prepareSort();
    for (int fwp = 1; fwp < wordsPerMinorFrame; ++fwp) {
        for (int index = 1; index <= cells_.cellCount(fwp); ++index) {
            cells_.sortList(cells_.cell(fwp, index));
        }
    }
}

// --- measurements ---------------------------------------------------------------------------

bool PcmFormat::isInEveryFrame(const Measurement& measurement) const {
    const auto* const definition = wordFrameDefinition(measurement.wordFrameIndex);
    if (!isWordFrame(measurement) || definition == nullptr || definition->mostFragments() == 0) {
        return false;
    }
    for (const auto& location : definition->locations) {
        for (const auto& fragment : location.fragments) {
            if (fragment.startFrame != 1 || fragment.frameInterval != 1 ||
                fragment.endFrame != numberOfFrames) {
                return false;
            }
        }
    }
    return true;
}

bool PcmFormat::containsMeasurements(int fwp) const {
    const auto head = cellAtFrame(fwp, 1);
    if (edition() < 2011) {
        return wordType(fwp) == WordType::Minor && countMeasurementsAt(fwp, 1, true) > 0;
    }
    for (auto at = head; at; at = cells_.next(at)) {
        if (cells_.isMeasurement(at) && isInEveryFrame(cells_.measurement(at))) {
            return true;
        }
    }
    return false;
}

int PcmFormat::countMeasurementOccurences(std::string_view name) const {
    std::int64_t count = 0;
    for (const auto& place : cells_.places(name)) {
        if (!isDataWord(place.word) || wordType(place.word) == WordType::Sync) {
            continue;
        }
        if (wordType(place.word) != WordType::Subframe) {
            count += place.index == 1 ? numberOfFrames : 0;
        } else if (const int depth = wordDepth(place.word);
                   place.index <= std::min(depth, numberOfFrames)) {
            count += (numberOfFrames - place.index) / depth + 1;
        }
    }
    if (const auto first = count == 0 ? std::nullopt : Occurrences(*this, name).next()) {
        const auto& measurement = cells_.measurement(first->cell);
        const auto* const definition = wordFrameDefinition(measurement.wordFrameIndex);
        if (isWordFrame(measurement)) {
            count /= std::max(1, definition == nullptr ? 1 : definition->mostFragments());
        } else if (isFragmented(measurement.locationType)) {
            count /= std::max(1, measurement.locationCount);
        }
    }
    return static_cast<int>(std::min<std::int64_t>(count, INT32_MAX));
}

void PcmFormat::removeMeasurement(std::string_view name) {
    auto places = cells_.places(name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    for (const auto& place : places) {
        while (const auto at = cells_.firstAt(place.word, place.index, name)) {
            cells_.remove(at);
        }
    }
}

void PcmFormat::forEachMeasurement(
    const std::function<bool(CellRef, int fwp, int index)>& visit) const {
    std::vector<bool> seen(static_cast<std::size_t>(cells_.nameNumberEnd()));
    for (int fwp = 0; fwp < wordsPerMinorFrame; ++fwp) {
        const int count = std::min(wordDepth(fwp), cells_.cellCount(fwp));
        for (int index = 1; index <= count; ++index) {
            for (auto at = cellAtFrame(fwp, index); at; at = cells_.next(at)) {
                const auto name = static_cast<std::size_t>(cells_.nameNumber(at));
                if (!cells_.isMeasurement(at) || seen[name]) {
                    continue;
                }
                seen[name] = true;
                if (!visit(at, fwp, index)) {
                    return;
                }
            }
        }
    }
}

// --- masks and word/frame definitions -------------------------------------------------------

int PcmFormat::maskBits(int fwp, std::string_view mask, bool hexadecimalAllowed) const {
    if (mask == kFullWord) {
        return fwp < 0 ? -fwp : wordLength(fwp);
    }
    if (hexadecimalAllowed && context_.settings.get(setting::kHexadecimalMasks)) {
        const auto binary = hexToBinary(mask);
        return static_cast<int>(std::count(binary.begin(), binary.end(), '1'));
    }
    return static_cast<int>(std::count(mask.begin(), mask.end(), '1'));
}

int PcmFormat::addWordFrameDefinition(int entry, int locationCount) {
    if (entry < 1 || entry > static_cast<int>(wordFrameDefinitions.size())) {
        wordFrameDefinitions.emplace_back();
        entry = static_cast<int>(wordFrameDefinitions.size());
    }
    auto& definition = wordFrameDefinitions[static_cast<std::size_t>(entry) - 1];
    definition = {};
    definition.locations.resize(static_cast<std::size_t>(std::max(0, locationCount)));
    return entry;
}

void PcmFormat::setWordFrameFragments(int entry, int location, int count) {
    auto* const definition = wordFrameDefinition(entry);
    if (definition != nullptr && location >= 1 && location <= definition->locationCount()) {
        definition->locations[static_cast<std::size_t>(location) - 1].fragments.assign(
            static_cast<std::size_t>(std::max(0, count)), {});
    }
}

void PcmFormat::freeWordFrameDefinition(int entry) {
    if (auto* const definition = wordFrameDefinition(entry)) {
        *definition = {};
    }
}

const WordFrameDefinition* PcmFormat::wordFrameDefinition(int entry) const {
    return entry >= 1 && entry <= static_cast<int>(wordFrameDefinitions.size())
               ? &wordFrameDefinitions[static_cast<std::size_t>(entry) - 1]
               : nullptr;
}
WordFrameDefinition* PcmFormat::wordFrameDefinition(int entry) {
    return const_cast<WordFrameDefinition*>(std::as_const(*this).wordFrameDefinition(entry));
}

}  // namespace kavu
