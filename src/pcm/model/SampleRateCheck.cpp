#include "pcm/model/SampleRateCheck.h"

#include "conversion/ConversionStore.h"
#include "conversion/LoadReports.h"
#include "conversion/SampleRate.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

#include <charconv>
#include <cmath>

namespace kavu {

namespace {

constexpr std::string_view kRateKey = "SR";
constexpr std::size_t kLongestRate = 32;

/// Bits per second, 0 without a number.
double bitRateOf(const PcmFormat& format) {
    const auto text = trim(format.bitRate);
    double rate = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rate);
    return error == std::errc() ? rate : 0;
}

/// Samples per second of what is once in the major frame; 0 if that cannot be known.
double majorFrameRate(const PcmFormat& format) {
    if (format.commonWordLength == 0) {
        return 0;
    }
    // The sync pattern counts as words of the common length.
    const int words = format.wordsPerMinorFrame + format.syncLength / format.commonWordLength - 1;
    const double bits = bitRateOf(format);
    if (words <= 0 || format.numberOfFrames <= 0 || !(bits > 0) || !std::isfinite(bits)) {
        return 0;
    }
    return bits / format.commonWordLength / words / format.numberOfFrames;
}

}  // namespace

std::string calculateSampleRate(const PcmFormat& format, std::string_view measurement) {
    const double frames = majorFrameRate(format);
    if (!(frames > 0)) {
        return {};
    }
    auto rate = formatPrintf("%f", format.countMeasurementOccurences(measurement) * frames);
    rate.resize(std::min(rate.size(), kLongestRate));
    trimSampleRate(rate, sampleRateOptions(format.context().settings));
    return rate;
}

bool checkSampleRates(PcmFormat& format, UserInterface* parent, ConversionStore& conversions) {
    auto& context = format.context();
    if (!sampleRateOptions(context.settings).check || !(majorFrameRate(format) > 0)) {
        return false;
    }
    bool anyChanged = false;
    int count = 0;
    for (const auto number : conversions.chunkNumbers()) {
        if (cancelRequested(parent)) {
            context.messages.log(parent, 433, title::kWarning);
            break;
        }
        const auto chunk = conversions.chunk(number);
        std::vector<std::pair<std::string, std::string>> rates;
        for (const auto& record : chunk->sections()) {
            if (!format.hasMeasurement(record.name())) {
                continue;
            }
            ++count;
            if (parent != nullptr && context.ticker.secondElapsed()) {
                setProgressText(parent, formatPrintf("Calculating Sample Rate #%d", count));
                parent->yieldToInterface();
            }
            auto rate = calculateSampleRate(format, record.name());
            if (record.get(kRateKey) != rate) {
                rates.emplace_back(record.name(), std::move(rate));
            }
        }
        for (const auto& [name, rate] : rates) {
            chunk->setValue(name, kRateKey, rate);
        }
        if (rates.empty()) {
            continue;
        }
        anyChanged = true;
        if (const auto status = conversions.store(number, *chunk); !status.ok()) {
            reportUnwritable(context, parent, status, "Write/Create");
            break;
        }
    }
    return anyChanged;
}

}  // namespace kavu
