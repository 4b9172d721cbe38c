#include "cli/StreamReport.h"
#include "cli/TerminalText.h"
#include "pcm/PcmFormat.h"
#include "pcm/structure/StreamSummary.h"

#include <algorithm>
#include <optional>

namespace kavu::cli {

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::string number(int value) {
    return std::to_string(value);
}

/// Right-aligned columns of numbers: all cells of these columns get the width of the widest.
void alignRight(Rows& rows, std::initializer_list<std::size_t> columns) {
    for (const auto column : columns) {
        std::size_t width = 0;
        for (const auto& row : rows) {
            width = std::max(width, column < row.size() ? row[column].size() : 0);
        }
        for (auto& row : rows) {
            if (column < row.size()) {
                row[column].insert(0, width - row[column].size(), ' ');
            }
        }
    }
}

/// A heading followed by its rows, indented; empty without rows.
std::string section(const std::string& heading, Rows rows) {
    if (rows.empty()) {
        return {};
    }
    for (auto& row : rows) {
        row.front().insert(0, "  ");
    }
    return "\n" + heading + "\n" + alignedTable(rows);
}

/// "3", "3-7", "3,5,9"
std::string ranges(const std::vector<int>& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size();) {
        std::size_t last = i;
        while (last + 1 < values.size() && values[last + 1] == values[last] + 1) {
            ++last;
        }
        text += (text.empty() ? "" : ",") + number(values[i]);
        if (last > i) {
            text += "-" + number(values[last]);
        }
        i = last + 1;
    }
    return text;
}

// --- attributes -----------------------------------------------------------------------------

std::string attributeSection(const PcmFormat& format) {
    Rows rows;
    const auto add = [&rows](const char* label, std::string value) {
        if (!value.empty()) {
            rows.push_back({label, terminalLine(value)});
        }
    };
    add("PCM code", format.pcmCode.str());
    add("Non-standard code", format.nonStandardCode);
    add("Bit rate", format.bitRate.str());
    add("Encryption", format.encryption.str());
    add("Data direction", format.dataDirection.str());
    add("Polarity", format.polarity.str());
    add("Auto polarity correction", format.autoPolarityCorrection.str());
    add("Data randomized", format.dataRandomized.str());
    add("Randomizer length", format.randomizerLength.str());
    add("Type format", format.typeFormat.str());
    add("Common word length", number(format.commonWordLength));
    add("Word transfer order", format.wordTransferOrder.str());
    add("Parity", format.parity.str());
    add("Parity transfer order", format.parityTransferOrder.str());
    add("Minor frames", number(format.numberOfFrames));
    add("Words per minor frame", number(format.wordsPerMinorFrame));
    add("Bits per minor frame", number(format.bitsPerMinorFrame));
    add("Sync type", format.syncType.str());
    add("Sync pattern", format.syncPattern.str() + " (" + number(format.syncLength) + " bits)");
    add("In sync criteria", format.inSyncCriteria.str());
    add("In sync pattern criteria", format.inSyncPatternCriteria.str());
    add("Out of sync disagrees", format.outOfSyncDisagrees.str());
    add("Out of sync pattern criteria", format.outOfSyncPatternCriteria.str());
    add("Implicit subframes", format.implicitSubframes ? "yes" : "");
    add("Comment", format.comment);
    return section("Attributes", std::move(rows));
}

std::string listSection(const PcmFormat& format) {
    Rows rows;
    const auto count = std::clamp(format.measurementListCount, 0, kMostMeasurementLists);
    for (int l = 1; l <= count; ++l) {
        const auto& name = format.measurementListNames[static_cast<std::size_t>(l) - 1];
        rows.push_back({number(l), terminalLine(name)});
    }
    return section("Measurement lists", std::move(rows));
}

// --- words ----------------------------------------------------------------------------------

std::string wordText(const PcmFormat& format, int fwp) {
    const auto& word = format.word(fwp);
    switch (word.type) {
        case WordType::Sync:
            return "Sync";
        case WordType::IdCounter: {
            const auto* const counter = format.idCounterOfWord(fwp);
            return "ID counter " + (counter == nullptr ? std::string() : counter->name.str());
        }
        case WordType::Subframe: {
            const auto* const subframe = format.subframeOfWord(fwp);
            if (subframe == nullptr || subframe->hidden) {
                return "Hidden subframe";
            }
            return "Subframe " + subframe->name.str();
        }
        case WordType::Minor:
            break;
    }
    return "Minor word";
}

/// Equal words share a row.
std::string wordSection(const PcmFormat& format) {
    Rows rows{{"Words", "Type", "Bits", "Depth"}};
    for (int fwp = 0; fwp < format.wordsPerMinorFrame;) {
        int last = fwp;
        const auto kind = wordText(format, fwp);
        const int depth = format.wordDepth(fwp);
        while (last + 1 < format.wordsPerMinorFrame && wordText(format, last + 1) == kind &&
               format.wordLength(last + 1) == format.wordLength(fwp) &&
               format.wordDepth(last + 1) == depth) {
            ++last;
        }
        rows.push_back({number(fwp) + (last > fwp ? "-" + number(last) : ""), terminalLine(kind),
                        number(format.wordLength(fwp)), number(depth)});
        fwp = last + 1;
    }
    alignRight(rows, {2, 3});
    return section("Words", std::move(rows));
}

std::string counterSection(const PcmFormat& format) {
    Rows rows{{"Name", "Word", "Frames", "Values", "Length", "Direction"}};
    for (int c = 0; c < static_cast<int>(format.idCounters.size()); ++c) {
        const auto& counter = format.idCounters[static_cast<std::size_t>(c)];
        if (counter.name.empty()) {
            continue;
        }
        std::vector<int> fwps;
        for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
            if (format.wordType(fwp) == WordType::IdCounter &&
                format.word(fwp).idCounterIndex == c) {
                fwps.push_back(fwp);
            }
        }
        rows.push_back({terminalLine(counter.name), ranges(fwps),
                        terminalLine(counter.startFrame.str() + "-" + counter.endFrame.str()),
                        terminalLine(counter.initialValue.str() + "-" + counter.endValue.str()),
                        terminalLine(counter.counterLength), terminalLine(counter.countDirection)});
    }
    return rows.size() == 1 ? std::string() : section("ID counters", std::move(rows));
}

std::string subframeSection(const PcmFormat& format) {
    Rows rows{{"Name", "Words", "Depth", "Supercommutated", "ID counter"}};
    for (int c = 0; c < static_cast<int>(format.idCounters.size()); ++c) {
        const auto& counter = format.idCounters[static_cast<std::size_t>(c)];
        for (int i = 0; i < static_cast<int>(counter.subframes.size()); ++i) {
            const auto& subframe = counter.subframes[static_cast<std::size_t>(i)];
            if (subframe.name.empty() || subframe.hidden) {
                continue;
            }
            rows.push_back({terminalLine(subframe.name), ranges(format.wordsOf({c, i})),
                            terminalLine(subframe.depth), terminalLine(subframe.supercommutated),
                            terminalLine(counter.name)});
        }
    }
    return rows.size() == 1 ? std::string() : section("Subframes", std::move(rows));
}

std::string asyncSection(const PcmFormat& format) {
    Rows rows{{"No.", "Data link", "Kind", "Words"}};
    for (int i = 0; i < format.asyncCount(); ++i) {
        const auto& record = format.asyncFormats[static_cast<std::size_t>(i)];
        std::vector<int> fwps;
        for (const auto& location : record.locations) {
            fwps.push_back(location.fwp);
        }
        rows.push_back({number(i + 1), terminalLine(record.dataLinkName),
                        record.isDataMerge ? "data merge" : "embedded format", ranges(fwps)});
    }
    return rows.size() == 1 ? std::string() : section("Async formats", std::move(rows));
}

// --- measurements ---------------------------------------------------------------------------

std::string orderOf(const Measurement& measurement) {
    return measurement.transferOrder.str() + "/" + measurement.parity.str() + "/" +
           measurement.parityTransferOrder.str();
}

std::string measurementSection(const PcmFormat& format) {
    Rows rows{{"Name", "Location", "Word", "Frame", "Samples", "Order", "Mask"}};
    format.forEachMeasurement([&](CellRef cell, int fwp, int index) {
        const auto& measurement = format.cells().measurement(cell);
        const bool every =
            format.wordType(fwp) != WordType::Subframe || format.isInEveryFrame(measurement);
        rows.push_back({terminalLine(measurement.name), terminalLine(measurement.locationType),
                        number(fwp), every ? "all" : number(index),
                        number(format.countMeasurementOccurences(measurement.name)),
                        terminalLine(orderOf(measurement)), terminalLine(measurement.mask)});
        return true;
    });
    if (rows.size() == 1) {
        return {};
    }
    alignRight(rows, {2, 3, 4});
    return section("Measurements", std::move(rows));
}

}  // namespace

std::string streamText(const PcmFormat& format) {
    const auto summary = summariseStream(format);
    return terminalLine(format.streamName) + ": " + terminalLine(summary.kind) + "\n" +
           terminalLine(summaryText(summary)) + "\n" + attributeSection(format) +
           listSection(format) + wordSection(format) + counterSection(format) +
           subframeSection(format) + asyncSection(format) + measurementSection(format) + "\n";
}

}  // namespace kavu::cli
