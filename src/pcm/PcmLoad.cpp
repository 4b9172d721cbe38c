#include "pcm/PcmLoad.h"

#include "core/WorkingStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/GroupFiles.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"
#include "pcm/model/SampleRateCheck.h"
#include "pcm/read/KeptReading.h"
#include "pcm/structure/PcmFormatEdit.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/write/WordFrameConversion.h"
#include "vocabulary/References.h"
#include "vocabulary/StreamType.h"

namespace kavu {

namespace {

/// While a stream is loaded, over-long fields are reported in the log; cutting one is a
/// correction.
class LengthLog {
  public:
    LengthLog(TmatsReader& reader, const std::string& path) : reader_(reader) {
        reader_.setLogFile(path, &cut_);
    }
    LengthLog(const LengthLog&) = delete;
    LengthLog& operator=(const LengthLog&) = delete;
    ~LengthLog() { reader_.setLogFile({}); }
    [[nodiscard]] bool hasCut() const { return cut_ != 0; }

  private:
    TmatsReader& reader_;
    int cut_ = 0;
};

/// The stream of a link name.
struct Stream {
    bool found = false;
    int pGroup = 0;
    bool isBus = false;
};

Stream findStream(PcmFormat& format, UserInterface* parent, std::string_view name,
                  bool makesNewFormats) {
    auto& context = format.context();
    Stream stream;
    stream.pGroup = findStreamGroup(format, parent, 'P', name);
    stream.found = stream.pGroup > 0 ||
                   (format.edition() >= 2009 && findStreamGroup(format, parent, 'S', name) > 0);
    if (stream.found) {
        return stream;
    }
    LinkNames links;
    std::vector<std::string> names;
    (void)gatherDataLinks(context, parent, names);
    for (const auto& link : names) {
        links.add(link);
    }
    const std::string link(name);
    if (!links.has(link)) {
        stream.found = makesNewFormats;
        return stream;
    }
    stream.isBus = findGroupIndex(context, parent, 'B', link) > 0;
    stream.found = stream.isBus || makesNewFormats ||
                   (format.edition() >= 2009 && findGroupIndex(context, parent, 'S', link) > 0);
    return stream;
}

bool runStep(const std::function<bool(UserInterface*, PcmFormat&)>& step, PcmLoad& load) {
    return !step || step(load.parent, load.format);
}

/// Makes the words' cells and reads their contents: the bus or packet definitions or the
/// measurements.
bool readContents(PcmLoad& load, const PcmSteps& steps) {
    auto& format = load.format;
    if (format.isBusStream || isPacketStream(format)) {
        gatherUnreadMeasurements(load);
        return runStep(format.isBusStream ? steps.loadBusDefinitions : steps.loadPacketDefinitions,
                       load);
    }
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        load.status("Initializing PCM Measurement Information. Allocating memory for FWP %d.", fwp);
        if (!format.allocateCells(load.parent, fwp)) {
            return false;
        }
    }
    const int result = readMeasurements(load);
    if (result >= 0 && !format.hasAnyMeasurement()) {
        wordFrameMode(format, load.parent, steps.chooseDefinitionMode);
    }
    return result >= 0;
}

void checkClass(PcmLoad& load) {
    auto& format = load.format;
    const auto attribute = format.classTwoAttribute();
    if (!attribute) {
        return;
    }
    load.log(221, title::kErrorReadingFormat, format.streamName.view(), *attribute);
    format.typeFormat =
        format.edition() <= 2001 ? stream_type::kOther.stored : stream_type::kClassTwo.stored;
    load.corrected();
}

void showMessages(const PcmFormat& format, UserInterface* parent) {
    const auto& context = format.context();
    const auto path = context.messages.logPath();
    std::string text;
    if (!fileExists(path) || !readWholeFile(path, text).ok() || text.empty()) {
        return;
    }
    // The log is shown even without its heading.
    (void)writeWholeFile(path, formatPrintf("Stream: %s\n\n", format.streamName.view()) + text);
    context.messages.showLog(parent, context.document.path, format.streamName);
}

bool loadStream(PcmLoad& load, const PcmSteps& steps, const Stream& stream) {
    auto& format = load.format;
    auto& context = format.context();
    const LengthLog lengths(context.reader, context.messages.logPath());
    if (readPcmGroup(load) < 0) {
        return false;
    }
    const bool isNew = load.isNew;
    const int counters = countIdCounters(format);
    if (stream.isBus && stream.pGroup == 0) {
        format.typeFormat = stream_type::kBus1553.stored;
        format.isBusStream = true;
    }
    if (!readContents(load, steps)) {
        return false;
    }
    if (lengths.hasCut()) {
        load.corrected();
    }
    checkClass(load);
    // Hidden subframes are made again by each load: they are no change.
    format.changed = isNew || load.result > 0 || countIdCounters(format) != counters;
    if (steps.conversions != nullptr && checkSampleRates(format, load.parent, *steps.conversions)) {
        format.changed = true;
    }
    return true;
}

}  // namespace

bool PcmLoad::mayLog() {
    if (parent == nullptr || messages_ > kMostMessages) {
        return false;
    }
    if (++messages_ > kMostMessages) {
        format.context().messages.logText(parent, title::kWarning,
                                          "There are more messages than can be shown. The rest "
                                          "of them is left out.");
        return false;
    }
    return true;
}

void PcmLoad::logLeftOut(MessageTitle titleId, const std::string& text) {
    leavesOut = true;
    if (report) {
        report(0, titleId, text);
    } else if (mayLog()) {
        format.context().messages.logText(parent, titleId, text);
    }
}

void PcmLoad::logLastCommands(std::string_view commands) {
    constexpr std::size_t kMostBytes = std::size_t{16} << 20U;
    commandBytes_ += commands.size();
    if (parent != nullptr && !logIsFull() && commandBytes_ < kMostBytes) {
        format.context().messages.logLastCommands(commands);
    }
}

std::optional<CommandIndex::Found> PcmLoad::take(std::string_view field) {
    yieldToInterface(parent);
    auto found = fields->find(prefix + std::string(field));
    if (found) {
        fields->markRead(found->place);
        read_.push_back(found->place);
    }
    return found;
}

void PcmLoad::leaveOut(std::size_t from) {
    for (; read_.size() > from; read_.pop_back()) {
        fields->markRead(read_.back(), false);
    }
}

std::optional<std::string_view> PcmLoad::text(std::string_view field, int limit) {
    const auto found = take(field);
    return found ? std::optional(
                       format.context().reader.applyLimit(parent, found->code, found->value, limit))
                 : std::nullopt;
}

std::optional<int> PcmLoad::number(std::string_view field) {
    const auto found = take(field);
    return found ? std::optional(std::max(0, leadingInt(found->value))) : std::nullopt;
}

std::optional<int> PcmLoad::limitedNumber(std::string_view field, int limit) {
    const auto value = text(field, limit);
    return value ? std::optional(std::max(0, leadingInt(*value))) : std::nullopt;
}

bool PcmLoad::cancelled() {
    yieldToInterface(parent);
    abort = abort || cancelRequested(parent);
    return abort;
}

bool PcmLoad::statusDue() {
    return format.context().ticker.secondElapsed();
}

int findStreamGroup(PcmFormat& format, UserInterface* parent, char letter,
                    std::string_view streamName) {
    auto& context = format.context();
    for (int index = kLeastGroupIndex; index <= kMostGroupIndex; ++index) {
        const auto file = groupFileName(letter, index, format.edition());
        ByteSource source;
        if (file.empty() || !source.open(context.store.pathOf(file)).ok()) {
            continue;
        }
        // No message for a long name here: the load of that stream has its own.
        const auto name = context.reader.findField(parent, source, groupHead(letter, index),
                                                   ownNameOf(letter), 0);
        if (name && name->substr(0, kNameLimit) == streamName.substr(0, kNameLimit)) {
            return index;
        }
    }
    return 0;
}

void giveMeasurementGroup(PcmFormat& format, UserInterface* parent) {
    if (format.dGroup == 0) {
        format.dGroup = findStreamGroup(format, parent, 'D', format.streamName);
    }
    if (format.dGroup == 0) {
        const auto& context = format.context();
        const int index = firstFreeIndex(context, 'D');
        // What another stream has left under this number is not this one's, to no undo either.
        (void)context.files.removeIfThere(formatPrintf(kSmfFormat, index));
        (void)context.files.removeIfThere(formatPrintf(kTagFormat, index));
        format.dGroup = index;
    }
}

bool loadPcmFormat(PcmFormat& format, UserInterface* parent, const PcmSteps& steps,
                   std::optional<std::string_view> streamName, PcmLoadReport* report) {
    PcmLoadReport ignored;
    auto& outcome = report == nullptr ? ignored : *report;
    outcome.result = -1;
    std::string name(streamName.value_or(std::string_view()));
    if (!streamName && steps.selectStream) {
        name = steps.selectStream(parent);
    }
    const auto stream =
        name.empty() ? Stream{} : findStream(format, parent, name, steps.makesNewFormats);
    if (!stream.found) {
        return false;
    }
    if (format.loaded() && format.streamName == FixedText<32>(name)) {
        outcome.result = 0;
        return true;
    }
    auto& context = format.context();
    // What a load puts next to the groups is no change of the document.
    const ChangeScope scope(context.files);
    format.closeFormat();
    format.hexFsp = context.settings.get(setting::kHexadecimalPattern);
    format.streamName = name;
    format.pGroup = stream.pGroup;
    ProgressScope progress(parent, ProgressMode::WithCancel);
    if (fileExists(context.messages.logPath())) {
        (void)deleteFile(context.messages.logPath());
    }
    PcmLoad load(format, parent);
    const bool loaded = loadStream(load, steps, stream);
    setProgressBar(parent, -1);
    setStatusText(parent, {});
    progress.close();
    showMessages(format, parent);
    if (!loaded) {
        format.closeFormat();
        return false;
    }
    outcome.result = load.leavesOut ? 1 : load.result;
    return true;
}

}  // namespace kavu
