#include "vocabulary/AGroupFields.h"

#include "vocabulary/ListFields.h"

#include <array>
#include <vector>

namespace kavu {

namespace {

constexpr std::string_view kPage = "pam_info";
constexpr std::string_view kRows = "SF\\N";
constexpr std::string_view kSignal = "Signal";
constexpr std::string_view kFrame = "Frame";
constexpr std::string_view kReference = "Reference Channels";

constexpr auto kInputCodes = std::to_array<Choice>({
    {"RZ", "RZ - 50% Duty Cycle", "50% Duty Cycle"},
    {"NR", "NR - 100% Duty Cycle", "100% Duty Cycle"},
});
constexpr auto kPolarities = std::to_array<Choice>({
    {"N", "Normal", "Normal"},
    {"I", "Inverted", "Inverted"},
});
constexpr auto kPatternTypes = std::to_array<Choice>({
    {"STD", "STD - IRIG 106", "IRIG 106"},
    {"OTH", "OTHer", "Other"},
});
// A pattern of several channels is a text of these.
constexpr auto kScales = std::to_array<Choice>({
    {"0", "0", "Zero Scale"},
    {"H", "H", "Half Scale"},
    {"F", "F", "Full Scale"},
    {"X", "X", "Don't Care"},
});
constexpr auto kSubframeScales = std::to_array<Choice>({
    {"0", "0", "Zero Scale"},
    {"H", "H", "Half Scale"},
    {"F", "F", "Full Scale"},
    {"X", "X", "Don't Care"},
    {"OTH", "OTH", "Other"},
});

constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", {}, "Yes"},
    {"N", {}, "No"},
});
constexpr auto kNoOrNumber = std::to_array<Choice>({{"NO", {}, "No"}});

constexpr auto kFields = std::to_array<Field>({
    {.code = "DLN", .limit = 32, .element = "@Name", .refersTo = Refers::LinkName},
    {.code = "A1",
     .label = "Input Code:",
     .box = kSignal,
     .page = kPage,
     .limit = 2,
     .kind = FieldKind::Choice,
     .element = "InputCode",
     .choices = kInputCodes},
    {.code = "A2",
     .label = "Polarity:",
     .box = kSignal,
     .page = kPage,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "Polarity",
     .choices = kPolarities},
    {.code = "A3",
     .label = "Sync Pattern Type:",
     .box = kSignal,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "SyncPatternType",
     .choices = kPatternTypes},
    {.code = "A4",
     .label = "Other Sync Pattern:",
     .box = kSignal,
     .page = kPage,
     .limit = 5,
     .element = "SyncPatternOther",
     .choices = kScales},
    {.code = "A5",
     .label = "Channel Rate:",
     .box = kFrame,
     .page = kPage,
     .limit = 6,
     .element = "ChannelRate",
     .unit = "channels/s"},
    {.code = "A\\N",
     .label = "Channels Per Frame:",
     .box = kFrame,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Digits,
     .element = "ChannelsPerFrame"},
    {.code = "RC1",
     .label = "0% Scale Channel Number:",
     .box = kReference,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Digits,
     .element = "ReferenceChannels/ZeroScaleChannelNumber"},
    {.code = "RC2",
     .label = "50% Scale Channel Number:",
     .box = kReference,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Digits,
     .element = "ReferenceChannels/FiftyScaleChannelNumber"},
    {.code = "RC3",
     .label = "Full Scale Channel Number:",
     .box = kReference,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Digits,
     .element = "ReferenceChannels/FullScaleChannelNumber"},
    {.code = kRows,
     .kind = FieldKind::Count,
     .element = "Subframe",
     .rows = kMostPamSubframes,
     .isRead = false},
    {.code = "SF1-n",
     .label = "Location",
     .limit = 3,
     .element = "Subframe/Location",
     .list = kRows,
     .isRead = false},
    {.code = "SF2-n",
     .label = "Synchronization",
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "Subframe/Synchronization",
     .choices = kPatternTypes,
     .list = kRows,
     .isRead = false},
    {.code = "SF3-n",
     .label = "Synchronization Pattern",
     .limit = 5,
     .element = "Subframe/SynchronizationPattern",
     .choices = kSubframeScales,
     .list = kRows,
     .isRead = false},
    {.code = "COM",
     .label = "Comments:",
     .page = kPage,
     .kind = FieldKind::Comment,
     .element = "Comments"},
});
constexpr auto kBridgeFields = std::to_array<Field>({
    // The schema has one assignment only, whose row is the first.
    {.code = "MN1-n", .bridgeOnly = true, .elementSchema = "ChannelAssignment/Measurement"},
    {.code = "MN2-n",
     .kind = FieldKind::Choice,
     .choices = kYesNo,
     .bridgeOnly = true,
     .elementSchema = "ChannelAssignment/Subcom"},
    {.code = "MN3-n",
     .kind = FieldKind::Choice,
     .choices = kNoOrNumber,
     .bridgeOnly = true,
     .elementSchema = "ChannelAssignment/Supercom"},
    {.code = "LCW-n-m", .bridgeOnly = true, .elementSchema = "ChannelAssignment/ChannelNumber"},
    // One of the channels has the subframe; which one, the schema does not say: the first.
    {.code = "LCN-n-m-k",
     .bridgeOnly = true,
     .elementSchema = "ChannelAssignment/SubframeChannelNumber"},
});

}  // namespace

std::span<const Field> pamFields() {
    return kFields;
}

std::span<const Field> pamVocabulary() {
    static const auto fields = [] {
        std::vector<Field> all(kFields.begin(), kFields.end());
        all.insert(all.end(), kBridgeFields.begin(), kBridgeFields.end());
        return all;
    }();
    return fields;
}

std::span<const Field> pamSubframeFields() {
    return listFields(kFields, kRows);
}

}  // namespace kavu
