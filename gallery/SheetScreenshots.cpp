#include "app/pcm/AsyncDialogs.h"
#include "app/pcm/AsyncPlaceDialogs.h"
#include "app/pcm/IdCounterDialog.h"
#include "app/pcm/PcmAttributes.h"
#include "app/pcm/SubframeDialog.h"
#include "app/pcm/TaggedDataDialog.h"
#include "gallery/EditionStage.h"
#include "gallery/Makers.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/PcmFormatFields.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/SubframeCodes.h"

#include <memory>

namespace kavu {

namespace {

constexpr int kCounterWord = 1;
constexpr int kSubframeWord = 12;
constexpr int kSupercomWord = 13;
constexpr int kAsyncWord = 20;

/// A small stream.
struct SampleStream : EditionStage {
    SampleStream(ScreenshotStage& stage, int edition)
        : EditionStage(stage, edition), format(context) {
        format.streamName = "PCM Stream 1";
        format.typeFormat = "TWO";
        format.pcmCode = "RNRZ-L";
        format.encryption = "U";
        format.bitRate = "2000000";
        format.dataDirection = "N";
        format.polarity = "N";
        format.dataRandomized = "N";
        format.randomizerLength = "N/A";
        format.autoPolarityCorrection = "N";
        format.parity = "NO";
        format.wordTransferOrder = "M";
        format.commonWordLength = 16;
        format.raiseNumberOfFrames({}, 16);
        format.allocateWords({}, 33);
        format.setWord(0, WordType::Sync, -1, -1);
        format.setFrameSyncPatternByLength(nullptr, 24);
        format.syncType = "FPT";
        format.inSyncCriteria = "2";
        format.outOfSyncDisagrees = "NS";
        format.comment =
            "Forward compartment. Words 20 to 23 carry the recorder of the\r\n"
            "second aircraft.";
        createIdCounter(format, nullptr, kCounterWord);
        format.implicitSubframes = edition >= 2011;
        if (edition < 2011) {
            createSubframe(format, nullptr, {.fwp = kSubframeWord, .name = "ENGINE", .depth = 8});
            createSubframe(format, nullptr,
                           {.fwp = kSupercomWord,
                            .name = "HYDRAULICS",
                            .depth = 16,
                            .locations = 2,
                            .interval = 10});
        }
        AsyncFormat record;
        record.dataLinkName = "PCM Stream 2";
        record.supercom = "2";
        record.locationMode = "EL";
        const std::vector<FrameRange> second{{2, 2, 16}};
        saveAsyncFormat(format, nullptr, 0, record,
                        {{kAsyncWord, {}, {}}, {22, "11111111", second}});
        async = asyncEditing(format, 1, kAsyncWord);
        tagged.values = {{"MN", "AIRSPEED"}, {"MN1", "NO"}, {"MN3", "M"}, {"TD1", "16"}};
        tagged.tags = {{{{"TD2", "12"}, {"TD3", "1111111111111111"}, {"TD4", "M"}, {"TD5", "1"}}}};
    }

    PcmFormat format;
    SubframeEditing subframe;
    AsyncEditing async;
    TaggedMeasurement tagged;
};

using Sample = std::shared_ptr<SampleStream>;

/// The window keeps its stream.
template <typename Window, typename... Args>
std::unique_ptr<Window> makeOver(const Sample& sample, Args&&... args) {
    auto window = std::make_unique<Window>(sample->form, std::forward<Args>(args)..., nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [sample] {});
    return window;
}

template <typename Make>
void add(ScreenshotList& list, const char* name, int edition, const Make& make) {
    list.add(name, [edition, make](ScreenshotStage& stage) -> std::unique_ptr<QWidget> {
        if (stage.document == nullptr) {
            return nullptr;
        }
        return make(std::make_shared<SampleStream>(stage, edition));
    });
}

void addSheet(ScreenshotList& list) {
    list.addSheet(
        {pcm_page::kInputData, pcm_page::kStream, pcm_page::kSyncPattern, pcm_page::kSyncCriteria,
         pcm_page::kFormatSwitch, pcm_page::kAltTag, pcm_page::kComments, pcm_page::kFrameFilter},
        [](ScreenshotStage& stage) -> std::unique_ptr<PropertySheet> {
            if (stage.document == nullptr) {
                return nullptr;
            }
            const auto sample = std::make_shared<SampleStream>(stage, 2009);
            PcmSheetCalls calls;
            calls.viewFrame = [](QWidget&) { return false; };
            return makeOver<PcmAttributesSheet>(sample, sample->format, std::move(calls));
        });
}

void addSubframes(ScreenshotList& list) {
    add(list, "Pre_106_11_IDCounterDialog", 2009, [](const Sample& sample) {
        return makeOver<IdCounterDialog>(sample, sample->format, kCounterWord, false);
    });
    add(list, "IDCounterDialog", 2011, [](const Sample& sample) {
        return makeOver<IdCounterDialog>(sample, sample->format, kCounterWord, true);
    });
    add(list, "SubframeDialog", 2009, [](const Sample& sample) {
        return makeOver<SubframeDialog>(sample, sample->format, kSupercomWord, false);
    });
    add(list, "SupercomSubframeDialog", 2009, [](const Sample& sample) {
        sample->subframe = subframeEditing(sample->format, kSupercomWord);
        sample->subframe.record.locationMode = kEveryLocation;
        return makeOver<SubframeLocationsDialog>(sample, sample->format, sample->subframe);
    });
}

void addAsync(ScreenshotList& list) {
    add(list, "EDIT_ASYNC_FORMAT1", 2011, [](const Sample& sample) {
        return makeOver<AsyncFormatDialog>(sample, sample->format, sample->async);
    });
    add(list, "EDIT_ASYNC_FORMAT2", 2011, [](const Sample& sample) {
        sample->async.contents.interval = 8;
        return makeOver<AsyncIntervalDialog>(sample, sample->format, sample->async);
    });
    add(list, "EDIT_ASYNC_FORMAT3", 2011, [](const Sample& sample) {
        return makeOver<AsyncLocationsDialog>(sample, sample->format, sample->async);
    });
    add(list, "EDIT_ASYNC_FORMAT4", 2011, [](const Sample& sample) {
        return makeOver<AsyncPlaceDialog>(sample, sample->format, false,
                                          sample->async.places.front(), false);
    });
    add(list, "EDIT_ASYNC_FORMAT5", 2011, [](const Sample& sample) {
        return makeOver<AsyncFramesDialog>(sample, sample->format,
                                           sample->async.places.front().frames.front(), false);
    });
    add(list, "EDIT_ASYNC_FORMAT6", 2011, [](const Sample& sample) {
        return makeOver<DataMergeDialog>(sample, sample->async.contents);
    });
}

void addTagged(ScreenshotList& list) {
    add(list, "TaggedDataDefinitions", 2011, [](const Sample& sample) {
        auto second = sample->tagged;
        second.values["MN"] = "ALTITUDE";
        return makeOver<TaggedDataDialog>(sample, sample->format,
                                          std::vector{sample->tagged, second});
    });
    add(list, "TaggedMeasurement", 2011, [](const Sample& sample) {
        return makeOver<TaggedMeasurementDialog>(sample, sample->format, sample->tagged,
                                                 std::vector<TaggedMeasurement>{}, false);
    });
}

}  // namespace

void addSheetScreenshots(ScreenshotList& list) {
    addSheet(list);
    addSubframes(list);
    addAsync(list);
    addTagged(list);
}

}  // namespace kavu
