#include "pcm/structure/AsyncFields.h"

#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/model/AsyncCodes.h"
#include "vocabulary/SubframeCodes.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

/// The fields of the dialog, with codes without indices, in the order of the file.
constexpr auto kMergeFields = [] {
    std::array<Field, kMergeTexts.size() + kMergeValues.size()> fields{};
    std::size_t count = 0;
    const auto add = [&](const MergeField& row) {
        fields[count] = row.field;
        fields[count].code = codeHead(row.field.code);
        fields[count++].list = {};  // a single record is not in a list
    };
    for (const auto& row : kMergeTexts) {
        add(row);
    }
    for (const auto& row : kMergeValues) {
        add(row);
    }
    return fields;
}();

template <typename Visit>
void forEachMergeField(const Visit& visit) {
    std::for_each(kMergeTexts.begin(), kMergeTexts.end(), visit);
    std::for_each(kMergeValues.begin(), kMergeValues.end(), visit);
}

std::string valueOf(const FieldValues& values, std::string_view code) {
    const auto it = values.find(code);
    return it == values.end() ? std::string() : it->second;
}

/// True if a stream of that name is in the document already.
bool linkExists(PcmFormat& format, UserInterface* parent, std::string_view name) {
    if (findStreamGroup(format, parent, 'P', name) > 0) {
        return true;
    }
    std::vector<std::string> names;
    LinkNames links;
    (void)gatherDataLinks(format.context(), parent, names);
    for (const auto& link : names) {
        links.add(link);
    }
    return links.has(name);
}

}  // namespace

AsyncEditing asyncEditing(const PcmFormat& format, int record, int fwp) {
    AsyncEditing editing;
    editing.record = record;
    if (record >= 1 && record <= format.asyncCount()) {
        const auto at = static_cast<std::size_t>(record - 1);
        editing.contents = format.asyncFormats[at];
        editing.places = asyncPlaces(format)[at];
    } else {
        editing.record = 0;
        editing.contents.supercom = kNotSupercommutated;
        editing.contents.locationMode = kNoLocationMode;
    }
    if (editing.places.empty()) {
        editing.places.push_back({fwp, {}, {}});
    }
    return editing;
}

std::vector<int> asyncRecordsAt(const PcmFormat& format, int fwp, int fn) {
    std::vector<int> records;
    for (auto at = format.cellAtFrame(fwp, fn); at; at = format.next(at)) {
        if (const int number = format.cells().asyncNumber(at); number > 0) {
            records.push_back(number);
        }
    }
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    return records;
}

void editFirstPlace(AsyncEditing& editing, const AsyncPlace& first) {
    if (editing.places.empty()) {
        editing.places.emplace_back();
    }
    const auto before = editing.places.front();
    editing.places.front() = first;
    const bool stepped = editing.contents.locationMode == kFirstAndInterval;
    for (std::size_t k = 1; k < editing.places.size() && stepped; ++k) {
        auto& place = editing.places[k];
        if (place.mask == before.mask) {
            place.mask = first.mask;
        }
        if (place.frames == before.frames) {
            place.frames = first.frames;
        }
    }
}

bool saveAsyncEditing(PcmFormat& format, UserInterface* parent, const AsyncEditing& editing) {
    const auto before = asyncEditing(format, editing.record, 0);
    const auto& now = editing.contents;
    const auto& old = before.contents;
    const bool sameKind = now.isDataMerge == old.isDataMerge && now.supercom == old.supercom &&
                          now.locationMode == old.locationMode && now.interval == old.interval;
    const auto isLink = [&](std::string_view name) { return linkExists(format, parent, name); };
    return before.record > 0 && sameKind && editing.places == before.places
               ? saveAsyncAttributes(format, parent, editing.record, now, isLink)
               : saveAsyncFormat(format, parent, editing.record, now, editing.places, isLink);
}

std::span<const Field> dataMergeFields() {
    return kMergeFields;
}

FieldValues dataMergeValues(const AsyncFormat& contents) {
    FieldValues values;
    forEachMergeField([&](const MergeField& row) {
        auto value =
            row.number != nullptr ? std::to_string(contents.*row.number) : contents.*row.text;
        if (!value.empty()) {
            values[std::string(codeHead(row.field.code))] = std::move(value);
        }
    });
    return values;
}

void setDataMergeValues(AsyncFormat& contents, const FieldValues& values) {
    const AsyncFormat fresh;
    forEachMergeField([&](const MergeField& row) {
        const auto value = valueOf(values, codeHead(row.field.code));
        if (row.number != nullptr) {
            contents.*row.number = value.empty() ? fresh.*row.number : leadingInt(value);
        } else {
            contents.*row.text = value.empty() ? fresh.*row.text : value;
        }
    });
}

bool hasAsyncFrames(const PcmFormat& format) {
    return isKnownIn(format.edition(), kAsyncEmbeddedCodes.ranges);
}

bool checkFrameRange(const PcmFormat& format, UserInterface* parent, const FrameRange& range) {
    const int most = format.numberOfFrames;
    const auto refuse = [&](int least) {
        format.context().messages.show(parent, 160, title::kIllegalValueEntered, kErrorBox, least,
                                       most);
        return false;
    };
    if (range.start < 1 || range.start > most) {
        return refuse(1);
    }
    return (range.end >= range.start && range.end <= most) || refuse(range.start);
}

std::string framesText(const PcmFormat& format, const std::vector<FrameRange>& frames) {
    if (frames.empty() || frames == std::vector<FrameRange>{{1, 1, format.numberOfFrames}}) {
        return "All";
    }
    std::string text;
    for (const auto& range : frames) {
        text += text.empty() ? "" : ", ";
        text += formatPrintf("%d - %d", range.start, range.end);
        text += range.interval == 1 ? "" : formatPrintf(" by %d", range.interval);
    }
    return text;
}

}  // namespace kavu
