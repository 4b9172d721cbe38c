#include "pcm/write/MeasurementCommands.h"

#include "core/TmatsDocument.h"
#include "core/TmatsReader.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/model/RecordField.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/write/WrittenRange.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>
#include <bitset>
#include <tuple>

namespace kavu {

namespace {

/// Fragments with a higher number are not counted.
constexpr int kMostCountedFragments = 9;

/// Only the first character counts, and anything but "I" lists every location.
bool isInterval(const Measurement& measurement) {
    return measurement.locationMode.view().starts_with('I');
}

}  // namespace

MeasurementCommands::MeasurementCommands(PcmFormat& format, UserInterface* parent,
                                         FileWriter& writer, std::string prefix)
    : format_(format),
      parent_(parent),
      writer_(writer),
      prefix_(std::move(prefix)),
      edition_(format.edition()),
      namesCounter_(edition_ >= 2011 && countIdCounters(format) > 1) {}

void MeasurementCommands::write(int l, int m, CellRef cell, int fwp, int index) {
    measurement_ = format_.cells().measurement(cell);
    fwp_ = fwp;
    index_ = index;
    suffix_ = "-";
    appendNumber(suffix_, l);
    suffix_ += '-';
    appendNumber(suffix_, m);
    text(measurement_field::kName, measurement_.name);
    text(measurement_field::kParity, measurement_.parity);
    text(measurement_field::kParityOrder, measurement_.parityTransferOrder);
    text(measurement_field::kTransferOrder, measurement_.transferOrder);
    if (edition_ == 2009) {
        text(measurement_field::kFilterOverwrite, measurement_.filterOverwrite);
    }
    if (const auto type = replaceAll(measurement_.locationType.view(), " ", "");
        type.size() != measurement_.locationType.size()) {
        measurement_.locationType = type;
        format_.cells().store(cell, measurement_);
    }
    text(measurement_field::kLocationType, measurement_.locationType);
    writeLocations();
}

void MeasurementCommands::setCode(const Field& field, std::initializer_list<int> more) {
    code_.assign(codeHead(field.code)).append(suffix_);
    for (const int index : more) {
        code_ += '-';
        appendNumber(code_, index);
    }
}

void MeasurementCommands::text(const Field& field, std::string_view value,
                               std::initializer_list<int> more) {
    if (!value.empty()) {
        setCode(field, more);
        writeCommand(writer_, prefix_, code_, value);
    }
}

void MeasurementCommands::number(const Field& field, long value, std::initializer_list<int> more) {
    setCode(field, more);
    writeIntCommand(writer_, prefix_, code_, value);
}

void MeasurementCommands::cannotFindOthers(MessageTitle titleId) {
    format_.context().messages.show(parent_, 295, titleId, kErrorBox, measurement_.name.view());
}

std::string_view MeasurementCommands::subframeName(int fwp) const {
    const auto* const subframe = format_.subframeOfWord(fwp);
    return subframe == nullptr ? std::string_view() : subframe->name.view();
}

std::vector<MeasurementCommands::Hit> MeasurementCommands::hits() const {
    const auto& cells = format_.cells();
    auto places = cells.places(measurement_.name);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
        return std::tie(a.index, a.word) < std::tie(b.index, b.word);
    });
    const int number = cells.nameNumber(measurement_.name);
    std::vector<CellRef> here;
    std::vector<Hit> found;
    for (const auto& place : places) {
        const int fwp = place.word;
        const int fn = place.index;
        if (fn > format_.wordDepth(fwp)) {
            continue;
        }
        if (format_.cellAtFrame(fwp, fn)) {
            cells.cellsAt(fwp, fn, number, here);
            for (const auto at : here) {
                found.push_back({at, fwp, fn});
            }
        }
    }
    return found;
}

// --- location types -------------------------------------------------------------------------

void MeasurementCommands::writeLocations() {
    struct Row {
        std::string_view type;
        void (MeasurementCommands::*write)();
    };
    static constexpr Row kRows[] = {
        {location_type::kWordFrame, &MeasurementCommands::writeWordFrame},
        {location_type::kMinorFrame, &MeasurementCommands::writeMinorWord},
        {location_type::kSubframe, &MeasurementCommands::writeSubframe},
        {location_type::kMinorFrameSupercommutated, &MeasurementCommands::writeMinorSupercom},
        {location_type::kMinorFrameFragments, &MeasurementCommands::writeMinorFragmented},
        {location_type::kSubframeSupercommutated, &MeasurementCommands::writeSubframeSupercom},
        {location_type::kSubframeFragments, &MeasurementCommands::writeSubframeFragmented},
    };
    for (const auto& row : kRows) {
        if (measurement_.locationType == row.type) {
            (this->*row.write)();
            return;
        }
    }
    format_.context().messages.show(parent_, 297, title::kErrorSavingMeasurement, kErrorBox,
                                    measurement_.name.view());
}

void MeasurementCommands::writeMinorWord() {
    number(minor_word_field::kWord, fwp_);
    text(minor_word_field::kMask, measurement_.mask);
}

void MeasurementCommands::writeSubframe() {
    const auto name = subframeName(fwp_);
    text(subframe_word_field::kSubframe, name);
    number(subframe_word_field::kPosition, format_.subframePosition(name, fwp_, index_));
    text(subframe_word_field::kMask, measurement_.mask);
}

void MeasurementCommands::writeMinorSupercom() {
    number(minor_supercom_field::kCount, measurement_.locationCount);
    text(minor_supercom_field::kMode, measurement_.locationMode);
    if (isInterval(measurement_)) {
        number(minor_supercom_field::kFirst, fwp_);
        text(minor_supercom_field::kMask, measurement_.mask);
        number(minor_supercom_field::kInterval, measurement_.interval);
        return;
    }
    Occurrences occurrences(format_, measurement_.name);
    for (int k = 1; k <= measurement_.locationCount; ++k) {
        const auto found = occurrences.next();
        if (!found) {
            cannotFindOthers(title::kErrorSavingSupercomList);
            return;
        }
        number(minor_supercom_field::kWord, found->fwp, {k});
        // The mask is that of the first measurement of the place, whichever that is: files
        // in use were written like this.
        if (const auto head = format_.cellAt(found->fwp, found->fn)) {
            // One of ranges has no mask of its own: its fragments have.
            const auto& first = format_.cells().measurement(head);
            text(minor_supercom_field::kWordMask,
                 isWordFrame(first) ? std::string_view() : first.mask.view(), {k});
        } else {
            cannotFindOthers(title::kErrorSavingSupercomList);
        }
    }
}

void MeasurementCommands::writeMinorFragmented() {
    number(minor_fragment_field::kCount, measurement_.locationCount);
    number(minor_fragment_field::kLength, measurement_.reconstructedLength);
    text(minor_fragment_field::kMode, measurement_.locationMode);
    if (isInterval(measurement_)) {
        number(minor_fragment_field::kFirst, fwp_);
        text(minor_fragment_field::kMask, measurement_.mask);
        number(minor_fragment_field::kInterval, measurement_.interval);
        return;
    }
    Occurrences occurrences(format_, measurement_.name);
    for (int k = 1; k <= measurement_.locationCount; ++k) {
        const auto found = occurrences.next();
        if (!found) {
            cannotFindOthers(title::kErrorSavingWordFragments);
            return;
        }
        const auto& fragment = format_.cells().measurement(found->cell);
        number(minor_fragment_field::kWord, found->fwp, {k});
        if (fragment.mask.empty()) {
            cannotFindOthers(title::kErrorSavingWordFragments);
        }
        text(minor_fragment_field::kWordMask, fragment.mask, {k});
        text(minor_fragment_field::kTransferOrder, fragment.fragmentTransferOrder, {k});
        number(minor_fragment_field::kFragment, fragment.fragmentNumber, {k});
    }
}

void MeasurementCommands::writeSubframeSupercom() {
    const auto name = subframeName(fwp_);
    if (name.empty()) {
        format_.context().messages.show(parent_, 296, title::kUnableToSaveSubframeSupercom,
                                        kErrorBox, measurement_.name.view());
    }
    text(subframe_supercom_field::kSubframe, name);
    number(subframe_supercom_field::kCount, measurement_.locationCount);
    text(subframe_supercom_field::kMode, measurement_.locationMode);
    if (isInterval(measurement_)) {
        if (const int position = format_.subframePosition(name, fwp_, index_); position > 0) {
            number(subframe_supercom_field::kFirst, position);
        }
        text(subframe_supercom_field::kMask, measurement_.mask);
        number(subframe_supercom_field::kInterval, measurement_.interval);
        return;
    }
    int k = 0;
    for (const auto& hit : hits()) {
        if (const int position = format_.subframePosition(name, hit.fwp, hit.fn); position > 0) {
            ++k;
            number(subframe_supercom_field::kPosition, position, {k});
            text(subframe_supercom_field::kPositionMask, format_.cells().measurement(hit.cell).mask,
                 {k});
        }
    }
}

void MeasurementCommands::writeSubframeFragmented() {
    const auto all = hits();
    std::bitset<kMostCountedFragments + 1> fragments;
    std::vector<std::string_view> subframes;
    for (const auto& hit : all) {
        const int fragment = format_.cells().measurement(hit.cell).fragmentNumber;
        if (fragment >= 1 && fragment <= kMostCountedFragments) {
            fragments.set(static_cast<std::size_t>(fragment));
        }
        const auto name = subframeName(hit.fwp);
        if (!name.empty() &&
            std::find(subframes.begin(), subframes.end(), name) == subframes.end()) {
            subframes.push_back(name);
        }
    }
    number(subframe_fragment_field::kCount, static_cast<long>(fragments.count()));
    number(subframe_fragment_field::kLength, measurement_.reconstructedLength);
    number(subframe_fragment_field::kSubframes, static_cast<long>(subframes.size()));
    int s = 0;
    for (const auto subframe : subframes) {
        writeFragmentsOf(++s, subframe, all);
    }
}

void MeasurementCommands::writeFragmentsOf(int s, std::string_view subframe,
                                           const std::vector<Hit>& all) {
    int j = 0;
    bool named = false;
    for (const auto& hit : all) {
        if (subframeName(hit.fwp) != subframe) {
            continue;
        }
        const auto& fragment = format_.cells().measurement(hit.cell);
        if (!named) {
            named = true;
            text(subframe_fragment_field::kSubframe, subframe, {s});
            text(subframe_fragment_field::kMode, fragment.locationMode, {s});
            // The model does not keep the first position and the interval of this mode: a
            // save loses them.
            if (isInterval(measurement_)) {
                return;
            }
        }
        ++j;
        number(subframe_fragment_field::kPosition,
               format_.subframePosition(subframe, hit.fwp, hit.fn), {s, j});
        text(subframe_fragment_field::kPositionMask, fragment.mask, {s, j});
        text(subframe_fragment_field::kTransferOrder, fragment.fragmentTransferOrder, {s, j});
        number(subframe_fragment_field::kFragment, fragment.fragmentNumber, {s, j});
    }
}

void MeasurementCommands::writeWordFrame() {
    const auto* const definition = format_.wordFrameDefinition(measurement_.wordFrameIndex);
    if (namesCounter_ && definition != nullptr) {
        text(word_frame_field::kCounter, definition->idCounterName);
    }
    const auto written =
        definition == nullptr ? WordFrameDefinition{} : writtenDefinition(format_, *definition);
    number(word_frame_field::kCount, written.locationCount());
    int k = 0;
    for (const auto& location : written.locations) {
        ++k;
        number(word_frame_field::kFragments, location.fragmentCount(), {k});
        if (location.fragmentCount() > 1) {
            number(word_frame_field::kLength, location.wordLength, {k});
        }
        int f = 0;
        for (const auto& fragment : location.fragments) {
            writeWordFrameFragment(fragment, k, ++f);
        }
    }
}

void MeasurementCommands::writeWordFrameFragment(const WordFrameFragment& fragment, int k, int f) {
    const bool writesEnds = writesFragmentEnds(format_);
    number(word_frame_field::kWord, fragment.startWord, {k, f});
    number(word_frame_field::kWordInterval, fragment.wordInterval, {k, f});
    if (writesEnds) {
        number(word_frame_field::kEndWord, fragment.endWord, {k, f});
    }
    number(word_frame_field::kFrame, fragment.startFrame, {k, f});
    number(word_frame_field::kFrameInterval, fragment.frameInterval, {k, f});
    if (writesEnds) {
        number(word_frame_field::kEndFrame, fragment.endFrame, {k, f});
    }
    text(word_frame_field::kMask, fragment.mask, {k, f});
    const bool known = fragment.transferOrder == 'M' || fragment.transferOrder == 'L';
    const char order = known ? fragment.transferOrder : 'D';
    text(word_frame_field::kTransferOrder, std::string_view(&order, 1), {k, f});
    number(word_frame_field::kPosition, fragment.fragmentPosition, {k, f});
}

}  // namespace kavu
