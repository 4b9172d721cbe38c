#include "pcm/AsyncFields.h"

#include "core/Messages.h"
#include "core/Text.h"
#include "core/TmatsDocument.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"
#include "pcm/AsyncCodes.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/SubframeCodes.h"

#include <algorithm>
#include <array>

namespace kavu {

namespace {

constexpr std::string_view head(std::string_view code) {
    return code.substr(0, code.find("-%d"));
}
constexpr std::size_t kTextLimit = 64;

constexpr auto kMergeFields = std::to_array<Field>({
    {.code = head(merge_code::kMergeParity), .label = "Merge Parity:", .limit = kTextLimit},
    {.code = head(merge_code::kOverheadMask), .label = "Overhead Mask:", .limit = kTextLimit},
    {.code = head(merge_code::kFirstDataPosition),
     .label = "First Data Position:",
     .limit = kTextLimit},
    {.code = head(merge_code::kDataOrder), .label = "Data Order:", .limit = kTextLimit},
    {.code = head(merge_code::kSecondDataPosition),
     .label = "Second Data Position:",
     .limit = kTextLimit},
    {.code = head(merge_code::kUserDataPosition),
     .label = "User Data Position:",
     .limit = kTextLimit},
    {.code = head(merge_code::kAdm5), .label = "ADM5:", .limit = 5, .kind = FieldKind::Digits},
    {.code = head(merge_code::kAdm6), .label = "ADM6:", .limit = 5, .kind = FieldKind::Digits},
    {.code = head(merge_code::kAdm7), .label = "ADM7:", .limit = kTextLimit},
});

struct MergeText {
    std::string_view code;
    std::string AsyncFormat::*text;
};
constexpr auto kMergeTexts = std::to_array<MergeText>({
    {head(merge_code::kMergeParity), &AsyncFormat::mergeParity},
    {head(merge_code::kOverheadMask), &AsyncFormat::overheadMask},
    {head(merge_code::kFirstDataPosition), &AsyncFormat::firstDataPosition},
    {head(merge_code::kDataOrder), &AsyncFormat::dataOrder},
    {head(merge_code::kSecondDataPosition), &AsyncFormat::secondDataPosition},
    {head(merge_code::kUserDataPosition), &AsyncFormat::userDataPosition},
    {head(merge_code::kAdm7), &AsyncFormat::adm7},
});

std::string valueOf(const FieldValues& values, std::string_view code) {
    const auto it = values.find(code);
    return it == values.end() ? std::string() : it->second;
}

/// A stream of that name is in the document already.
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
        if (editing.contents.locationMode == kFirstAndInterval && editing.places.size() > 1) {
            editing.places.resize(1);
        }
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

bool saveAsyncEditing(PcmFormat& format, UserInterface* parent, const AsyncEditing& editing) {
    return saveAsyncFormat(format, parent, editing.record, editing.contents, editing.places,
                           [&](std::string_view name) { return linkExists(format, parent, name); });
}

std::span<const Field> dataMergeFields() {
    return kMergeFields;
}

FieldValues dataMergeValues(const AsyncFormat& contents) {
    FieldValues values;
    for (const auto& row : kMergeTexts) {
        if (!(contents.*row.text).empty()) {
            values[std::string(row.code)] = contents.*row.text;
        }
    }
    values[std::string(head(merge_code::kAdm5))] = std::to_string(contents.adm5);
    values[std::string(head(merge_code::kAdm6))] = std::to_string(contents.adm6);
    return values;
}

void setDataMergeValues(AsyncFormat& contents, const FieldValues& values) {
    for (const auto& row : kMergeTexts) {
        contents.*row.text = valueOf(values, row.code);
    }
    const AsyncFormat fresh;
    const auto adm5 = valueOf(values, head(merge_code::kAdm5));
    const auto adm6 = valueOf(values, head(merge_code::kAdm6));
    contents.adm5 = adm5.empty() ? fresh.adm5 : leadingInt(adm5);
    contents.adm6 = adm6.empty() ? fresh.adm6 : leadingInt(adm6);
    if (contents.adm7.empty()) {
        contents.adm7 = fresh.adm7;
    }
}

bool hasAsyncFrames(const PcmFormat& format) {
    constexpr int kFirstEdition = 2011;
    return format.edition() >= kFirstEdition;
}

bool checkFrameRange(const PcmFormat& format, UserInterface* parent, const FrameRange& range) {
    constexpr int kIllegalEntry = 87;
    const int most = format.numberOfFrames;
    const auto refuse = [&](int least) {
        format.context().messages.show(parent, 160, kIllegalEntry, kErrorBox, least, most);
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
