#include "xml/bridge/write/MeasurementWriter.h"

#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/DGroupFields.h"
#include "xml/bridge/write/XmlPlan.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace kavu {

/// Where the commands of the group are, by their stems.
struct MeasurementWriter::Stems {
    explicit Stems(const GroupRows& rows) {
        const auto of = [&](const Field& field) { return rows.stem(stemOf(field.code)); };
        filterCount = of(filter_field::kCount);
        filterName = of(filter_field::kName);
        filterType = of(filter_field::kType);
        listCount = of(measurement_field::kListCount);
        listName = of(measurement_field::kListName);
        count = of(measurement_field::kCount);
        name = of(measurement_field::kName);
        parity = of(measurement_field::kParity);
        parityOrder = of(measurement_field::kParityOrder);
        transferOrder = of(measurement_field::kTransferOrder);
        filterOverwrite = of(measurement_field::kFilterOverwrite);
        locationType = of(measurement_field::kLocationType);
        counter = of(word_frame_field::kCounter);
        locations = of(word_frame_field::kCount);
        fragments = of(word_frame_field::kFragments);
        length = of(word_frame_field::kLength);
        word = of(word_frame_field::kWord);
        wordInterval = of(word_frame_field::kWordInterval);
        endWord = of(word_frame_field::kEndWord);
        frame = of(word_frame_field::kFrame);
        frameInterval = of(word_frame_field::kFrameInterval);
        endFrame = of(word_frame_field::kEndFrame);
        mask = of(word_frame_field::kMask);
        order = of(word_frame_field::kTransferOrder);
        position = of(word_frame_field::kPosition);
        tags = of(tagged_field::kCount);
        tagLength = of(tagged_field::kWordLength);
        tagNumber = of(tagged_field::kTagNumber);
        tagMask = of(tagged_field::kMask);
        tagOrder = of(tagged_field::kTransferOrder);
        tagPosition = of(tagged_field::kPosition);
        fragment = {word,     wordInterval, endWord, frame,   frameInterval,
                    endFrame, mask,         order,   position};
        location = fragment;
        location.insert(location.end(), {fragments, length});
        tag = {tagNumber, tagMask, tagOrder, tagPosition};
        measurement = location;
        measurement.insert(measurement.end(),
                           {name, parity, parityOrder, transferOrder, filterOverwrite, locationType,
                            counter, locations, tags, tagLength});
        measurement.insert(measurement.end(), tag.begin(), tag.end());
        list = measurement;
        list.insert(list.end(), {listName, count, filterName, filterCount});
    }

    int filterCount, filterName, filterType, listCount, listName, count, name, parity, parityOrder,
        transferOrder, filterOverwrite, locationType, counter, locations, fragments, length, word,
        wordInterval, endWord, frame, frameInterval, endFrame, mask, order, position, tags,
        tagLength, tagNumber, tagMask, tagOrder, tagPosition;
    std::vector<int> fragment, location, tag, measurement, list;  ///< that a row of these has
};

namespace {

template <class Visit>
void forEachRow(const GroupRows& rows, std::span<const int> stems, const RowNumbers& parents,
                int count, Visit&& visit) {
    for (int row = rows.nextRow(stems, parents, 0); row != 0 && row <= count;
         row = rows.nextRow(stems, parents, row)) {
        visit(parents.row(static_cast<std::size_t>(row)));
    }
}

std::string codeOf(const GroupRows& rows, const Field& field, const RowNumbers& at) {
    std::string text = rows.prefix();
    appendField(text, field.code, std::span(at.at.data(), static_cast<std::size_t>(at.count)));
    return text;
}

/// A list without a count.
constexpr int kAnyCount = 0x7FFFFFFF;

}  // namespace

void MeasurementWriter::writeField(GroupRows& rows, int stem, const Field& field,
                                   std::string_view element, const RowNumbers& at) {
    const auto value = rows.take(stem, at);
    if (!value) {
        return;
    }
    const auto code = codeOf(rows, field, at);
    run_.tags.value(element, run_.values.text(field, element, *value, code), code);
}

void MeasurementWriter::writeFilters(GroupRows& rows, const Stems& stems) {
    const int count = rows.takeCount(stems.filterCount, {});
    const std::array<int, 2> own{stems.filterName, stems.filterType};
    forEachRow(rows, own, {}, count, [&](const RowNumbers& at) {
        const CheckedPart part(run_, 'D');
        run_.tags.open("MeasurementFilteringAndOverwrite");
        writeField(rows, stems.filterName, filter_field::kName, "MeasurementName", at);
        writeField(rows, stems.filterType, filter_field::kType, "FilterOverwriteTag", at);
        run_.tags.close();
    });
}

bool MeasurementWriter::write(SdkGroup group) {
    GroupRows rows(std::move(group));
    const Stems stems(rows);
    run_.tags.open("PCMMeasurements", "\nD Group");
    writeFilters(rows, stems);
    const auto stated = rows.take(stems.listCount, {});
    const int lists = stated ? std::max(leadingInt(*stated), 1) : 1;
    bool isDone = true;
    forEachRow(rows, stems.list, {}, lists,
               [&](const RowNumbers& list) { isDone = isDone && writeList(rows, stems, list); });
    writeField(rows, rows.stem("COM"), measurement_field::kComment, "Comments", {});
    const auto link = measurement_field::kDataLink.code;
    run_.loseRest(rows, link);
    run_.closeNamed(rows.code(link, {}));
    return isDone;
}

/// The schema wants a name of every list: one without is called as an editor calls it.
std::string MeasurementWriter::listName(std::optional<std::string_view> name, int number) const {
    if (name) {
        return run_.attribute("Name", run_.values.original(*name));
    }
    return run_.isSchema() ? run_.attribute("Name", "Measurement List #" + std::to_string(number))
                           : std::string();
}

bool MeasurementWriter::writeList(GroupRows& rows, const Stems& stems, const RowNumbers& list) {
    const auto name = rows.take(stems.listName, list);
    run_.tags.open("MeasurementList" + listName(name, list.last()));
    const int selected = rows.takeCount(stems.filterCount, list);
    if (!run_.isSchema()) {
        const std::array<int, 1> names{stems.filterName};
        forEachRow(rows, names, list, selected, [&](const RowNumbers& at) {
            writeField(rows, stems.filterName, filter_field::kNameInList, "SelectedMeasurementName",
                       at);
        });
    }
    const int count = rows.takeCount(stems.count, list);
    bool isDone = true;
    unsigned polled = 0;
    forEachRow(rows, stems.measurement, list, count, [&](const RowNumbers& at) {
        if (!isDone) {
            return;
        }
        if (polled++ % kPollEvery == 0) {
            run_.progress(
                formatPrintf("Creating Major Frame (Measurement #%d of %d)", at.last(), count),
                static_cast<std::size_t>(at.last()), static_cast<std::size_t>(count));
            isDone = !run_.isCancelled();
        }
        writeMeasurement(rows, stems, at);
    });
    run_.closeNamed(name ? codeOf(rows, measurement_field::kListName, list) : std::string());
    return isDone;
}

/// Tells a location that is written as it stands from one that the session has to convert.
void MeasurementWriter::writeMeasurement(GroupRows& rows, const Stems& stems,
                                         const RowNumbers& at) {
    const auto name = rows.take(stems.name, at);
    const auto original = run_.values.original(name.value_or(""));
    run_.tags.open("Measurement" + (name ? run_.attribute("Name", original) : std::string()));
    writeDefinition(rows, stems, at, original);
    run_.closeNamed(name ? codeOf(rows, measurement_field::kName, at) : std::string());
}

void MeasurementWriter::writeDefinition(GroupRows& rows, const Stems& stems, const RowNumbers& at,
                                        const std::string& original) {
    const CheckedPart part(run_, 'D', "MeasurementList/Measurement");
    const auto type = rows.take(stems.locationType, at);
    const auto stored = trim(type.value_or(""));
    const bool isTagged = equalsIgnoreCase(stored, kTaggedType);
    const bool isRange = stored.empty() || equalsIgnoreCase(stored, "WDFR");
    const auto* const converted = isTagged || isRange ? nullptr : convertedOf(original);
    if (converted != nullptr) {
        writeConvertedLength(*converted);
    } else {
        writeLength(rows, stems, at);
    }
    writeField(rows, stems.parity, measurement_field::kParity, "Parity", at);
    writeField(rows, stems.parityOrder, measurement_field::kParityOrder, "ParityTransferOrder", at);
    writeField(rows, stems.transferOrder, measurement_field::kTransferOrder,
               "MeasurementTransferOrder", at);
    if (!run_.isSchema()) {
        writeField(rows, stems.filterOverwrite, measurement_field::kFilterOverwrite,
                   "MeasurementFilterOverwriteTag", at);
    }
    if (converted != nullptr) {
        run_.tags.value("LocationType", "Word and Frame");
        writeConverted(*converted);
        takeOlder(rows, at);
    } else if (type) {
        const auto code = codeOf(rows, measurement_field::kLocationType, at);
        run_.tags.value(
            "LocationType",
            run_.values.text(measurement_field::kLocationType, "LocationType", *type, code), code);
    }
    writeRanges(rows, stems, at);
    writeTags(rows, stems, at);
}

/// The length of the value, which the document has once for all locations.
void MeasurementWriter::writeLength(GroupRows& rows, const Stems& stems, const RowNumbers& at) {
    const std::array<int, 1> own{stems.length};
    std::string length;
    forEachRow(rows, own, at, kAnyCount, [&](const RowNumbers& location) {
        const auto value = trim(rows.peek(stems.length, location).value_or(""));
        if (length.empty() || value == length) {
            length = value;
            (void)rows.take(stems.length, location);
        }
    });
    run_.tags.value("Length", run_.values.plain(length));
}

void MeasurementWriter::writeRanges(GroupRows& rows, const Stems& stems, const RowNumbers& at) {
    run_.tags.open("WordAndFrame");
    writeField(rows, stems.counter, word_frame_field::kCounter, "IDCounterName", at);
    const int count = rows.takeCount(stems.locations, at);
    forEachRow(rows, stems.location, at, count, [&](const RowNumbers& location) {
        run_.tags.open("MeasurementLocation");
        writeFragments(rows, stems, location);
        run_.tags.close();
    });
    run_.tags.close();
}

/// The fragments of a location by their position; one without is where its row is.
void MeasurementWriter::writeFragments(GroupRows& rows, const Stems& stems,
                                       const RowNumbers& location) {
    const int count = std::max(rows.takeCount(stems.fragments, location), 1);
    std::vector<std::pair<int, RowNumbers>> fragments;
    forEachRow(rows, stems.fragment, location, count, [&](const RowNumbers& at) {
        const auto position = rows.take(stems.position, at);
        fragments.emplace_back(position ? leadingInt(*position) : at.last(), at);
    });
    std::stable_sort(fragments.begin(), fragments.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [position, at] : fragments) {
        writeFragment(rows, stems, at);
    }
}

void MeasurementWriter::writeFragment(GroupRows& rows, const Stems& stems, const RowNumbers& at) {
    std::string tag = "MeasurementFragments";
    if (const auto order = rows.take(stems.order, at)) {
        tag += run_.attribute("FragmentTransferOrder", word_frame_field::kTransferOrder, *order,
                              codeOf(rows, word_frame_field::kTransferOrder, at));
    }
    run_.tags.open(std::move(tag));
    writeField(rows, stems.word, word_frame_field::kWord, "StartWord", at);
    writeField(rows, stems.wordInterval, word_frame_field::kWordInterval, "WordInterval", at);
    writeField(rows, stems.endWord, word_frame_field::kEndWord, "EndWord", at);
    writeField(rows, stems.frame, word_frame_field::kFrame, "StartFrame", at);
    writeField(rows, stems.frameInterval, word_frame_field::kFrameInterval, "FrameInterval", at);
    writeField(rows, stems.endFrame, word_frame_field::kEndFrame, "EndFrame", at);
    writeField(rows, stems.mask, word_frame_field::kMask, "BitMask", at);
    run_.tags.close();
}

/// The fragment positions of tagged data count the elements.
void MeasurementWriter::writeTags(GroupRows& rows, const Stems& stems, const RowNumbers& at) {
    run_.tags.open("TaggedData");
    writeField(rows, stems.tagLength, tagged_field::kWordLength, "WordLength", at);
    const int count = rows.takeCount(stems.tags, at);
    std::vector<std::pair<int, RowNumbers>> tags;
    forEachRow(rows, stems.tag, at, count, [&](const RowNumbers& tag) {
        const auto position = rows.take(stems.tagPosition, tag);
        tags.emplace_back(position ? leadingInt(*position) : tag.last(), tag);
    });
    std::stable_sort(tags.begin(), tags.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [position, tag] : tags) {
        run_.tags.open("Fragment");
        writeField(rows, stems.tagNumber, tagged_field::kTagNumber, "TagNumber", tag);
        writeField(rows, stems.tagMask, tagged_field::kMask, "BitMask", tag);
        writeField(rows, stems.tagOrder, tagged_field::kTransferOrder, "FragmentTransferOrder",
                   tag);
        run_.tags.close();
    }
    run_.tags.close();
}

// --- Older location types -----------------------------------------------------------------

const SdkMeasurement* MeasurementWriter::convertedOf(const std::string& name) const {
    if (run_.session.loadedStream() != link_.number) {
        return nullptr;
    }
    const auto index = run_.session.findMeasurement(name);
    if (!index) {
        return nullptr;
    }
    const auto& measurement = run_.session.measurement(*index);
    // What no range could be made of comes as samples, each of them one fragment.
    const bool isRanges = std::all_of(measurement.locations.begin(), measurement.locations.end(),
                                      [](const SdkLocation& location) {
                                          return location.fragments.size() != 1 ||
                                                 location.fragments.front().number == 1;
                                      });
    return measurement.locations.empty() || measurement.name != name || !isRanges ? nullptr
                                                                                  : &measurement;
}

void MeasurementWriter::writeConvertedLength(const SdkMeasurement& measurement) {
    if (measurement.isFragmented() && measurement.wordLength > 0) {
        run_.tags.value("Length", std::to_string(measurement.wordLength));
    }
}

void MeasurementWriter::writeConverted(const SdkMeasurement& measurement) {
    run_.tags.open("WordAndFrame");
    run_.tags.value("IDCounterName", run_.values.plain(measurement.idCounterName));
    for (const auto& location : measurement.locations) {
        run_.tags.open("MeasurementLocation");
        for (const auto& fragment : location.fragments) {
            writeConvertedFragment(fragment);
        }
        run_.tags.close();
    }
    run_.tags.close();
}

void MeasurementWriter::writeConvertedFragment(const SdkFragment& fragment) {
    std::string tag = "MeasurementFragments";
    if (fragment.transferOrder != 'D') {
        tag += run_.attribute("FragmentTransferOrder", word_frame_field::kTransferOrder,
                              std::string_view(&fragment.transferOrder, 1), {});
    }
    run_.tags.open(std::move(tag));
    const auto number = [&](std::string_view element, int value) {
        run_.tags.value(element, std::to_string(value));
    };
    number("StartWord", fragment.word.start);
    number("WordInterval", fragment.word.interval);
    number("EndWord", fragment.word.end);
    number("StartFrame", fragment.frame.start);
    number("FrameInterval", fragment.frame.interval);
    number("EndFrame", fragment.frame.end);
    run_.tags.value("BitMask", run_.values.text(word_frame_field::kMask, "BitMask", fragment.mask,
                                                word_frame_field::kMask.code));
    run_.tags.close();
}

/// The commands of the older location types, which the ranges stand for.
void MeasurementWriter::takeOlder(GroupRows& rows, const RowNumbers& at) {
    for (const auto& field : measurementVocabulary()) {
        if (field.lastEdition != 0 && field.list == measurement_field::kMeasurements &&
            field.code != measurement_field::kFilterOverwrite.code) {
            rows.takeBelow(rows.stem(stemOf(field.code)), at);
        }
    }
}

}  // namespace kavu
