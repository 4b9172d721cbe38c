#include "pcm/edit/FrameEditGenerate.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/model/MeasurementCell.h"
#include "pcm/structure/AsyncEdit.h"
#include "pcm/undo/StreamUndo.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <vector>

namespace kavu {

namespace {

constexpr const char* kGenerateTitle = "Generate Data Word Definitions";

std::string upperStart(std::string_view text, std::size_t length) {
    std::string result(text.substr(0, length));
    std::transform(result.begin(), result.end(), result.begin(), toUpperAscii);
    return result;
}

const TextKey& maskKey(const PcmFormat& format) {
    return format.implicitSubframes ? setting::kWordFrameMask : setting::kMask;
}

/// The name for a place; words may have moved since another measurement was named after
/// it.
std::string freeName(const PcmFormat& format, int fwp, int index) {
    const auto base = formatPrintf("FWP%4.4d_FN%3.3d", fwp, index);
    auto name = base;
    for (int n = 2; format.hasMeasurement(name); ++n) {
        name = base + "_" + std::to_string(n);
    }
    return name;
}

/// The word/frame definition of a new measurement: one fragment of this word.
int defineWordFrame(PcmFormat& format, int fwp, int index, const std::string& mask) {
    const int entry = format.addWordFrameDefinition(-1, 1);
    auto& definition = *format.wordFrameDefinition(entry);
    auto& location = definition.locations[0];
    location.wordLength = format.wordLength(fwp);
    WordFrameFragment fragment;
    fragment.startWord = fwp;
    fragment.endWord = fwp;
    const bool isSubframe = format.wordType(fwp) == WordType::Subframe;
    fragment.startFrame = isSubframe ? index : 1;
    fragment.frameInterval = isSubframe ? 0 : 1;
    fragment.endFrame = isSubframe ? index : format.numberOfFrames;
    fragment.mask = mask;
    fragment.fragmentPosition = 1;
    location.fragments.push_back(fragment);
    if (const auto* const counter = format.idCounterOfWord(fwp); isSubframe && counter != nullptr) {
        definition.idCounterName = counter->name.str();
    }
    return entry;
}

Measurement newMeasurement(PcmFormat& format, const DataWordDefaults& defaults, int fwp,
                           int index) {
    Measurement measurement;
    measurement.name = freeName(format, fwp, index);
    measurement.parity = defaults.parity;
    measurement.parityTransferOrder = defaults.parityTransferOrder;
    measurement.transferOrder = defaults.transferOrder;
    // A hidden subframe has no name in the file that another type could refer to.
    if (format.implicitSubframes || isHiddenSubframe(format.subframeOfWord(fwp))) {
        measurement.locationType = location_type::kWordFrame;
        measurement.wordFrameIndex = defineWordFrame(format, fwp, index, defaults.mask);
    } else {
        measurement.locationType = format.wordType(fwp) == WordType::Subframe
                                       ? location_type::kSubframe
                                       : location_type::kMinorFrame;
    }
    measurement.mask = defaults.mask;
    return measurement;
}

bool isUndefined(const PcmFormat& format, int fwp, int index) {
    const auto head = format.cellAt(fwp, index);
    return head && format.cells().isFree(head) && !isAsyncAt(format, fwp, index, 0);
}

/// Makes the measurements of one word.
void fillWord(PcmFormat& format, const DataWordDefaults& defaults, int fwp,
              std::vector<CellRef>& made) {
    const int depth = std::min(format.wordDepth(fwp), format.numberOfFrames);
    for (int index = 1; index <= depth; ++index) {
        if (!isUndefined(format, fwp, index)) {
            continue;
        }
        const auto head = format.cellAt(fwp, index);
        format.cells().store(head, newMeasurement(format, defaults, fwp, index));
        made.push_back(head);
    }
}

/// Creates the records after all measurements, with progress. False after a Cancel.
bool createConversions(const PcmFormat& format, UserInterface* parent, const GenerateSteps& steps,
                       const DataWordDefaults& defaults, const std::vector<CellRef>& made) {
    std::optional<ConversionStore::Batch> batch;
    if (steps.conversions != nullptr) {
        batch.emplace(*steps.conversions);
    }
    double done = 0;
    for (const auto& at : made) {
        if (!steps.createConversion) {
            break;
        }
        if (cancelRequested(parent)) {
            return false;
        }
        steps.createConversion(parent, format.cells().measurement(at).name.str(), defaults);
        ++done;
        if (format.context().ticker.secondElapsed()) {
            const double percent = 100 * done / static_cast<double>(made.size());
            setStatusText(parent, formatPrintf("Creating data conversions (%d%% complete)",
                                               static_cast<int>(percent)));
            setProgressBar(parent, percent);
            yieldToInterface(parent);
        }
    }
    if (batch) {
        batch->write(parent);  // what it could not write is reported
    }
    return true;
}

}  // namespace

DataWordDefaults readDataWordDefaults(const PcmFormat& format) {
    const auto& settings = format.context().settings;
    return {settings.get(setting::kParity),        settings.get(setting::kParityTransferOrder),
            settings.get(setting::kTransferOrder), settings.get(maskKey(format)),
            settings.get(setting::kBinaryFormat),  settings.get(setting::kConversionType)};
}

void keepDataWordDefaults(const PcmFormat& format, UserInterface* parent,
                          DataWordDefaults& defaults) {
    const auto& context = format.context();
    defaults.parity = upperStart(defaults.parity, 2);
    defaults.parityTransferOrder = defaults.parityTransferOrder.substr(0, 1);
    defaults.transferOrder = defaults.transferOrder.substr(0, 1);
    defaults.binaryFormat = upperStart(defaults.binaryFormat, 3);
    defaults.conversionType = upperStart(defaults.conversionType, 3);
    const bool valid =
        defaults.mask == kFullWord || (isBinaryText(defaults.mask) && defaults.mask.size() <= 64);
    if (!valid) {
        context.messages.showTitled(parent, -232, kGenerateTitle, kErrorBox);
        defaults.mask = kFullWord;
    }
    auto& settings = context.settings;
    settings.set(setting::kParity, defaults.parity);
    settings.set(setting::kParityTransferOrder, defaults.parityTransferOrder);
    settings.set(setting::kTransferOrder, defaults.transferOrder);
    settings.set(maskKey(format), defaults.mask);
    settings.set(setting::kBinaryFormat, defaults.binaryFormat);
    settings.set(setting::kConversionType, defaults.conversionType);
}

std::optional<int> createDataWords(PcmFormat& format, UserInterface* parent,
                                   const GenerateSteps& steps, const DataWordDefaults& defaults) {
    ProgressScope progress(parent, ProgressMode::WithCancel);
    setProgressText(parent, "Creating Measurements");
    StreamUndo before(format, {.conversions = steps.conversions});
    std::vector<CellRef> made;
    bool done = true;
    for (int fwp = 1; done && fwp < format.wordsPerMinorFrame; ++fwp) {
        const int percent = fwp * 100 / format.wordsPerMinorFrame;
        setStatusText(parent, formatPrintf("Creating measurements at Frame Word Position #%d "
                                           "(%d%% complete)",
                                           fwp, percent));
        setProgressBar(parent, percent);
        yieldToInterface(parent);
        const auto type = format.wordType(fwp);
        if (type != WordType::IdCounter && type != WordType::Sync) {
            fillWord(format, defaults, fwp, made);
        }
        done = !cancelRequested(parent);
    }
    done = done && createConversions(format, parent, steps, defaults, made);
    setStatusText(parent, {});
    if (!done) {
        if (before.commit()) {
            before.undo(parent);
        }
        return std::nullopt;
    }
    format.changed = format.changed || !made.empty();
    return static_cast<int>(made.size());
}

std::optional<int> generateDataWords(PcmFormat& format, UserInterface* parent,
                                     const GenerateSteps& steps) {
    const auto& messages = format.context().messages;
    if (messages.showTitled(parent, -226, kGenerateTitle, kYesNoBox) != Button::Yes) {
        return std::nullopt;
    }
    auto defaults = readDataWordDefaults(format);
    if (steps.changeDefaults && !steps.changeDefaults(parent, defaults)) {
        return std::nullopt;
    }
    keepDataWordDefaults(format, parent, defaults);
    const auto count = createDataWords(format, parent, steps, defaults);
    if (count) {
        messages.showTitled(parent, -227, kGenerateTitle, kNoteBox, *count);
    }
    return count;
}

}  // namespace kavu
