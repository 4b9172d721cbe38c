#include "cli/StreamReport.h"
#include "pcm/PcmFormat.h"

#include <algorithm>

namespace kavu::cli {

namespace {

template <std::size_t Width>
Json text(const FixedText<Width>& value) {
    return jsonText(value.str());
}

const char* typeName(WordType type) {
    switch (type) {
        case WordType::IdCounter:
            return "IdCounterWord";
        case WordType::Subframe:
            return "SubframeWord";
        case WordType::Sync:
            return "SyncWord";
        case WordType::Minor:
            break;
    }
    return "MinorWord";
}

Json attributes(const PcmFormat& format) {
    return {
        {"CommonWordLength", format.commonWordLength},
        {"NumberOfFrames", format.numberOfFrames},
        {"WordsPerMinorFrame", format.wordsPerMinorFrame},
        {"BitsPerMinorFrame", format.bitsPerMinorFrame},
        {"SyncLength", format.syncLength},
        {"SyncPattern", text(format.syncPattern)},
        {"TypeFormat", text(format.typeFormat)},
        {"InSyncCriteria", text(format.inSyncCriteria)},
        {"InSyncPatternCriteria", text(format.inSyncPatternCriteria)},
        {"OutOfSyncDisagrees", text(format.outOfSyncDisagrees)},
        {"OutOfSyncPatternCriteria", text(format.outOfSyncPatternCriteria)},
        {"PcmCode", text(format.pcmCode)},
        {"Encryption", text(format.encryption)},
        {"DataDirection", text(format.dataDirection)},
        {"Polarity", text(format.polarity)},
        {"AutoPolarityCorrection", text(format.autoPolarityCorrection)},
        {"DataRandomized", text(format.dataRandomized)},
        {"RandomizerLength", text(format.randomizerLength)},
        {"WordTransferOrder", text(format.wordTransferOrder)},
        {"Parity", text(format.parity)},
        {"ParityTransferOrder", text(format.parityTransferOrder)},
        {"SyncType", text(format.syncType)},
        {"StreamName", text(format.streamName)},
        {"HexFsp", format.hexFsp},
        {"PGroup", format.pGroup},
        {"DGroup", format.dGroup},
        {"IsBusStream", format.isBusStream},
        {"Comment", jsonText(format.comment)},
        {"NonStandardCode", jsonText(format.nonStandardCode)},
        {"AsyncCount", format.asyncCount()},
        {"MeasurementListCount", format.measurementListCount},
        {"BitRate", text(format.bitRate)},
    };
}

Json measurementLists(const PcmFormat& format) {
    Json lists = Json::array();
    const auto count = std::clamp(format.measurementListCount, 0, kMostMeasurementLists);
    for (int l = 0; l < count; ++l) {
        lists.push_back(text(format.measurementListNames[static_cast<std::size_t>(l)]));
    }
    return lists;
}

Json words(const PcmFormat& format) {
    Json list = Json::array();
    for (int fwp = 0; fwp < format.wordsPerMinorFrame; ++fwp) {
        const auto& word = format.word(fwp);
        list.push_back({{"fwp", fwp},
                        {"type", typeName(word.type)},
                        {"length", word.length},
                        {"depth", format.wordDepth(fwp)},
                        {"idCounterIndex", word.idCounterIndex},
                        {"subframeIndex", word.subframeIndex}});
    }
    return list;
}

Json subframes(const PcmFormat& format, int counter) {
    Json list = Json::array();
    const auto& entries = format.idCounters[static_cast<std::size_t>(counter)].subframes;
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const auto& subframe = entries[static_cast<std::size_t>(i)];
        if (subframe.name.empty()) {
            continue;
        }
        list.push_back({{"index", i},
                        {"fwps", format.wordsOf({counter, i})},
                        {"Name", text(subframe.name)},
                        {"Hidden", subframe.hidden},
                        {"Supercommutated", text(subframe.supercommutated)},
                        {"LocationMode", text(subframe.locationMode)},
                        {"Interval", text(subframe.interval)},
                        {"Depth", text(subframe.depth)}});
    }
    return list;
}

/// The word of each counter, the first if there are several; -1 if there is none.
std::vector<int> counterWords(const PcmFormat& format) {
    std::vector<int> result(format.idCounters.size(), -1);
    for (int fwp = format.wordsPerMinorFrame - 1; fwp >= 0; --fwp) {
        const auto& word = format.word(fwp);
        if (word.type == WordType::IdCounter && word.idCounterIndex >= 0 &&
            word.idCounterIndex < static_cast<int>(result.size())) {
            result[static_cast<std::size_t>(word.idCounterIndex)] = fwp;
        }
    }
    return result;
}

Json idCounters(const PcmFormat& format) {
    Json list = Json::array();
    const auto fwps = counterWords(format);
    for (std::size_t i = 0; i < fwps.size(); ++i) {
        const auto& counter = format.idCounters[i];
        if (counter.name.empty()) {
            continue;
        }
        list.push_back({{"index", i},
                        {"fwp", fwps[i]},
                        {"Name", text(counter.name)},
                        {"Type", text(counter.type)},
                        {"WordLength", text(counter.wordLength)},
                        {"MsbStartBit", text(counter.msbStartBit)},
                        {"CounterLength", text(counter.counterLength)},
                        {"TransferOrder", text(counter.transferOrder)},
                        {"InitialValue", text(counter.initialValue)},
                        {"StartFrame", text(counter.startFrame)},
                        {"EndValue", text(counter.endValue)},
                        {"EndFrame", text(counter.endFrame)},
                        {"CountDirection", text(counter.countDirection)},
                        {"Subframes", subframes(format, static_cast<int>(i))}});
    }
    return list;
}

/// The mask of the first slot of a record at a word.
std::string slotMask(const PcmFormat& format, int fwp, int record) {
    const auto& cells = format.cells();
    for (int index = 1; index <= cells.cellCount(fwp); ++index) {
        for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
            if (cells.asyncNumber(at) == record) {
                return cells.measurement(at).mask.str();
            }
        }
    }
    return {};
}

Json asyncFormats(const PcmFormat& format) {
    Json list = Json::array();
    int number = 0;
    for (const auto& record : format.asyncFormats) {
        ++number;
        Json locations = Json::array();
        for (const auto& location : record.locations) {
            Json frames = Json::array();
            for (const auto& range : location.frames) {
                frames.push_back({range.start, range.interval, range.end});
            }
            locations.push_back({{"fwp", location.fwp},
                                 {"mask", jsonText(slotMask(format, location.fwp, number))},
                                 {"frames", std::move(frames)}});
        }
        list.push_back({{"number", number},
                        {"IsDataMerge", record.isDataMerge},
                        {"DataLinkName", text(record.dataLinkName)},
                        {"Supercom", text(record.supercom)},
                        {"LocationMode", text(record.locationMode)},
                        {"Interval", record.interval},
                        {"Adm5", record.adm5},
                        {"Adm6", record.adm6},
                        {"Adm7", jsonText(record.adm7)},
                        {"MergeParity", jsonText(record.mergeParity)},
                        {"OverheadMask", jsonText(record.overheadMask)},
                        {"FirstDataPosition", jsonText(record.firstDataPosition)},
                        {"DataOrder", jsonText(record.dataOrder)},
                        {"SecondDataPosition", jsonText(record.secondDataPosition)},
                        {"UserDataPosition", jsonText(record.userDataPosition)},
                        {"locations", std::move(locations)}});
    }
    return list;
}

Json measurement(const PcmFormat& format, CellRef cell) {
    const auto& record = format.cells().measurement(cell);
    return {{"Name", text(record.name)},
            {"Parity", text(record.parity)},
            {"ParityTransferOrder", text(record.parityTransferOrder)},
            {"TransferOrder", text(record.transferOrder)},
            {"FilterOverwrite", text(record.filterOverwrite)},
            {"LocationType", text(record.locationType)},
            {"AsyncNumber", format.cells().asyncNumber(cell)},
            {"Mask", text(record.mask)},
            {"LocationMode", text(record.locationMode)},
            {"LocationCount", record.locationCount},
            {"Interval", record.interval},
            {"ReconstructedLength", record.reconstructedLength},
            {"FragmentTransferOrder", text(record.fragmentTransferOrder)},
            {"FragmentNumber", record.fragmentNumber},
            {"WordFrameIndex", record.wordFrameIndex}};
}

Json cellList(const PcmFormat& format) {
    Json list = Json::array();
    const auto& cells = format.cells();
    for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
        for (int index = 1; index <= cells.cellCount(fwp); ++index) {
            Json held = Json::array();
            for (auto at = cells.cell(fwp, index); at; at = cells.next(at)) {
                if (!cells.isFree(at)) {
                    held.push_back(measurement(format, at));
                }
            }
            if (!held.empty()) {
                list.push_back({{"fwp", fwp}, {"index", index}, {"measurements", std::move(held)}});
            }
        }
    }
    return list;
}

Json fragment(const WordFrameFragment& value) {
    return {{"StartWord", value.startWord},
            {"WordInterval", value.wordInterval},
            {"EndWord", value.endWord},
            {"StartFrame", value.startFrame},
            {"FrameInterval", value.frameInterval},
            {"EndFrame", value.endFrame},
            {"Mask", text(value.mask)},
            {"TransferOrder", std::string(1, value.transferOrder)},
            {"FragmentPosition", value.fragmentPosition}};
}

Json wordFrameDefinitions(const PcmFormat& format) {
    Json list = Json::array();
    int number = 0;
    for (const auto& definition : format.wordFrameDefinitions) {
        ++number;
        Json locations = Json::array();
        for (const auto& location : definition.locations) {
            Json fragments = Json::array();
            for (const auto& entry : location.fragments) {
                fragments.push_back(fragment(entry));
            }
            locations.push_back({{"FragmentCount", location.fragmentCount()},
                                 {"WordLength", location.wordLength},
                                 {"Fragments", std::move(fragments)}});
        }
        list.push_back({{"number", number},
                        {"IdCounterName", jsonText(definition.idCounterName)},
                        {"Locations", std::move(locations)}});
    }
    return list;
}

}  // namespace

void addStreamMembers(Json& members, const PcmFormat& format) {
    members["implicitSubframes"] = format.implicitSubframes;
    members["attributes"] = attributes(format);
    members["measurementLists"] = measurementLists(format);
    members["words"] = words(format);
    members["idCounters"] = idCounters(format);
    members["asyncFormats"] = asyncFormats(format);
    members["cells"] = cellList(format);
    members["wordFrameDefinitions"] = wordFrameDefinitions(format);
}

}  // namespace kavu::cli
