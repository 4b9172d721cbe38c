// The load of a stream by a translator session, and what it says of the commands that an editor
// would ask about.
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/GroupScan.h"
#include "pcm/PcmLoad.h"
#include "pcm/write/WordFrameConversion.h"
#include "sdk/MeasurementRows.h"
#include "sdk/SdkParts.h"
#include "sdk/StreamMeasurements.h"
#include "sdk/TranslatorSdk.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/PAsyncFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/PSubframeFields.h"
#include "vocabulary/StreamLimits.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_set>
#include <utility>

namespace kavu {

namespace {

/// The last edition whose measurements have the older location types.
constexpr int kLastOlderTypes = 2009;

/// A document that is taken for one of another edition while a stream is read.
class ReadAsEdition {
  public:
    ReadAsEdition(TmatsDocument& document, int edition)
        : document_(document), former_(std::exchange(document.version, edition)) {}
    ReadAsEdition(const ReadAsEdition&) = delete;
    ReadAsEdition& operator=(const ReadAsEdition&) = delete;
    ~ReadAsEdition() { document_.version = former_; }

  private:
    TmatsDocument& document_;
    int former_;
};

bool isWhole(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

/// True for a message of the load of measurements that the session has no text of its own for. What
/// an editor corrects in the attributes of the format is none of a session's.
bool isOfMeasurements(int id) {
    constexpr int kFirst = 242;
    constexpr int kLast = 294;
    constexpr int kNameless = 278;
    constexpr int kRepeated = 281;
    id = std::abs(id);
    return id >= kFirst && id <= kLast && id != kNameless && id != kRepeated;
}

/// True if a text has one of the names in quotes.
bool namesOneOf(const std::string& text, const std::unordered_set<std::string>& names) {
    for (auto open = text.find('\''); open != std::string::npos;) {
        const auto close = text.find('\'', open + 1);
        if (close == std::string::npos) {
            return false;
        }
        if (names.contains(text.substr(open + 1, close - open - 1))) {
            return true;
        }
        open = close;
    }
    return false;
}

/// Reports what a load has left out of the measurements of which nothing has been said.
void reportRest(const std::vector<LoggedMessage>& logged,
                const std::unordered_set<std::string>& reported, const SessionReport& report) {
    for (const auto& message : logged) {
        if (isOfMeasurements(message.id) && !namesOneOf(message.text, reported)) {
            report("ERROR: " + message.text + "\n\n");
        }
    }
}

}  // namespace

int TranslatorSdk::ParseTmatsPcmFormatInfo(int stream) {
    if (stream < 1 || stream > streamCount()) {
        writeError(
            formatPrintf("ERROR: Unable to process stream #%d.\n"
                         "There are only %d streams in this TMATS file.\n\n",
                         stream, streamCount()));
        return -1;
    }
    if (stream == stream_) {
        return 0;
    }
    stream_ = 0;
    measurements_.clear();
    measurementNames_.clear();
    foldedMeasurementNames_.clear();
    parts_->format.closeFormat();
    try {
        if (!loadStream(links_[static_cast<std::size_t>(stream) - 1])) {
            measurements_.clear();
            return -1;
        }
        indexMeasurements();
    } catch (const std::bad_alloc&) {
        measurements_ = {};
        writeError(
            "ERROR: Unable to allocate measurement memory in "
            "ParseTmatsPcmFormatInfo()\n\n");
        return -1;
    }
    stream_ = stream;
    return 0;
}

bool TranslatorSdk::loadStream(const SdkLink& link) {
    auto& context = parts_->document.context;
    auto* const talk = &parts_->talk;
    const ChangeScope scope(context.files);
    const bool hasFormat = link.group('P') > 0;
    const char data = hasFormat             ? dataLetterOf(link.type)
                      : link.group('B') > 0 ? 'B'
                      : link.group('S') > 0 ? 'S'
                                            : 'D';
    if (data == 'B') {
        return readBusMeasurements(context, talk, parts_->talk.watcher(), link.name, measurements_);
    }
    if (data == 'S') {
        return link.group('S') == 0 ||
               readMessageMeasurements(context, talk, link.name, measurements_);
    }
    if (!hasFormat) {
        writeError(formatPrintf("ERROR: Unable to open TMATS Stream File for Data Link '%s'.\n\n",
                                link.name));
        return false;
    }
    return loadFormat(link);
}

bool TranslatorSdk::loadFormat(const SdkLink& link) {
    auto& document = parts_->document;
    const auto formatGroup = readGroup(document.reader, 'P', link.group('P'));
    if (!formatGroup) {
        writeError(formatPrintf("ERROR: Unable to open TMATS Stream File for Data Link '%s'.\n\n",
                                link.name));
        return false;
    }
    if (!checkWords(*formatGroup)) {
        return false;
    }
    auto* const watcher = parts_->talk.watcher();
    checkSubframes(*formatGroup);
    setStatusText(watcher, formatPrintf("...Gathering PCM Async Info (Stream %d)", link.number));
    checkAsyncFormats(*formatGroup);
    const SessionReport report = [this](std::string text) { writeError(std::move(text)); };
    const auto dataGroup = readGroup(document.reader, 'D', link.group('D'));
    const auto rows = dataGroup ? readSdkRows(*dataGroup, report) : std::vector<SdkRow>();

    const ReadAsEdition edition(document.document, editionForStream(rows));
    setStatusText(watcher, formatPrintf("Initializing measurements in TMATS file. (%.0f%%)", 0.0));
    std::vector<LoggedMessage> logged;
    parts_->talk.setLog([&logged](const LoggedMessage& message) { logged.push_back(message); });
    // A box of the load is about the editor; why a stream cannot be read is told below.
    parts_->talk.setSilent(true);
    const bool isLoaded = loadPcmFormat(parts_->format, &parts_->talk, PcmSteps(), link.name);
    parts_->talk.setSilent(false);
    parts_->talk.setLog({});
    if (!isLoaded) {
        writeError(formatPrintf("ERROR: Unable to open TMATS Stream File for Data Link '%s'.\n\n",
                                link.name));
        return false;
    }
    const FrameExtent frame{parts_->format.wordsPerMinorFrame, parts_->format.numberOfFrames};
    std::unordered_set<std::string> reported;
    for (const auto& row : rows) {
        if (checkMeasurementPlaces(*dataGroup, row, frame, report)) {
            reported.insert(row.name);
        }
    }
    reportRest(logged, reported, report);
    {
        const ReadAsEdition wordFrames(document.document,
                                       std::max(document.document.version, kFirstWordFrameEdition));
        parts_->talk.setSilent(true);
        (void)convertToWordFrame(parts_->format, &parts_->talk);
        parts_->talk.setSilent(false);
    }
    if (dataGroup) {
        measurements_ = measurementsOfFormat(parts_->format, *dataGroup, rows, report);
    }
    setStatusText(watcher,
                  formatPrintf("Initializing measurements in TMATS file. (%.0f%%)", 100.0));
    return true;
}

/// The edition in which the location types of a stream exist. A file that states none is taken for
/// one of the latest, which has only word/frame locations, and no subframes.
int TranslatorSdk::editionForStream(const std::vector<SdkRow>& rows) const {
    int edition = version();
    for (const auto& row : rows) {
        const auto is = [&](std::string_view type) {
            return equalsIgnoreCase(row.locationType, type);
        };
        if (is(location_type::kWordFrame)) {
            edition = std::max(edition, kFirstWordFrameEdition);
        } else if (is(location_type::kMinorFrame) || is(location_type::kSubframe) ||
                   is(location_type::kMinorFrameSupercommutated) ||
                   is(location_type::kSubframeSupercommutated) ||
                   is(location_type::kMinorFrameFragments) ||
                   is(location_type::kSubframeFragments)) {
            edition = std::min(edition, kLastOlderTypes);
        }
    }
    return edition;
}

bool TranslatorSdk::checkWords(const SdkGroup& group) {
    const auto words = group.value(p::kMf1.code);
    if (!words) {
        writeError(
            formatPrintf("ERROR: Could not locate PCM Format WORDS PER MINOR FRAME (%sMF1) "
                         "field in TMATS file.\n\n",
                         group.prefix()));
        return false;
    }
    const auto text = trim(*words);
    const bool isValid = isWhole(text) && leadingInt(text) >= 1 && leadingInt(text) <= kMostWords;
    if (!isValid) {
        writeError(
            formatPrintf("ERROR: Invalid 'Words Per Frame' (%sMF1) field found in TMATS file.\n\n",
                         group.prefix()));
    }
    return isValid;
}

void TranslatorSdk::checkSubframes(const SdkGroup& group) {
    for (int counter = 1; counter <= kMostIdCounters; ++counter) {
        const auto code = fieldCode(p::kSfN.code, {counter});
        const int subframes = group.number(code).value_or(0);
        const int kept = std::min(subframes, kMostSubframes);
        for (int subframe = 1; subframe <= kept; ++subframe) {
            if (subframe == 1 || subframe == kept || parts_->document.ticker.secondElapsed()) {
                setStatusText(
                    parts_->talk.watcher(),
                    formatPrintf("Converting PCM subframe definitions - Subframe #%d of %d",
                                 subframe, kept));
            }
        }
        if (subframes > kMostSubframes) {
            writeError(
                formatPrintf("Too many subframe were defined in the PCM stream (%s%s).\n"
                             "This program only allows %d subframe definitions. Number of "
                             "subframes truncated.\n",
                             group.prefix(), code, kMostSubframes));
        }
    }
}

void TranslatorSdk::checkAsyncFormats(const SdkGroup& group) {
    const auto count = group.value(p::kAefN.code);
    if (!count) {
        return;
    }
    const int found = leadingInt(*count);
    if (!isWhole(trim(*count)) || found > kMostAsyncFormats) {
        writeError("ERROR: Invalid number of Async Formats defined in TMATS file.\n");
        writeError(formatPrintf("Value found: %d. This value must be a number between 0 and %d\n",
                                found, kMostAsyncFormats));
        writeError("No Embedded Async definitions will be processed.\n\n");
    }
}

void TranslatorSdk::indexMeasurements() {
    for (unsigned i = 0; i < measurements_.size(); ++i) {
        measurementNames_.try_emplace(measurements_[i].name, i);
        foldedMeasurementNames_.try_emplace(lowerAscii(measurements_[i].name), i);
    }
}

const PcmFormat& TranslatorSdk::format() const {
    return parts_->format;
}

}  // namespace kavu
