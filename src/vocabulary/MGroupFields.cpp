#include "vocabulary/MGroupFields.h"

#include "core/text/Text.h"
#include "vocabulary/ListFields.h"

#include <array>

namespace kavu {

namespace {

constexpr std::string_view kPage = "multiplex_info";
constexpr std::string_view kComposite = "Composite Signal Structure";
constexpr std::string_view kBaseband = "Baseband Signal";
constexpr std::string_view kFilter = "Low Pass Filter";
constexpr std::string_view kSubcarriers = "Sub Carriers";

constexpr auto kStructures = std::to_array<Choice>({
    {"PCM", "PCM", "PCM"},
    {"PAM", "PAM", "PAM"},
    {"ANALOG", "ANALOG", "Analog"},
    {"SCO's", "SCO's", "SCO's"},
    {"OTHER", "OTHER", "Other"},
    {"ANA/SCO", "ANA/SCO", "ANA/SCO"},
    {"PAM/SCO", "PAM/SCO", "PAM/SCO"},
    {"PCM/SCO", "PCM/SCO", "PCM/SCO"},
});
// The lower-case tails are not stored: only the leftmost characters are.
constexpr auto kSenses = std::to_array<Choice>({
    {"POS", "POSitive", "Positive"},
    {"NEG", "NEGative", "Negative"},
});
constexpr auto kSignals = std::to_array<Choice>({
    {"PCM", "PCM", "PCM"},
    {"ANA", "ANALOG", "Analog"},
    {"PAM", "PAM", "PAM"},
    {"OTH", "OTHER", "Other"},
    {"NON", "NONE", "None"},
});
constexpr auto kDataTypes = std::to_array<Choice>({
    {"PCM", "PCM", "PCM"},
    {"ANA", "ANAlog", "Analog"},
    {"PAM", "PAM", "PAM"},
    {"OTH", "OTHer", "Other"},
});
constexpr auto kFilterTypes = std::to_array<Choice>({
    {"CA", "CA - Constant Amplitude", "Constant Amplitude"},
    {"CD", "CD - Constant Delay", "Constant Delay"},
    {"OTH", "OTH - Other", "", 0, 1996},
    {"OT", "OT - Other", "Other", 1999},
});
constexpr auto kYesNo = std::to_array<Choice>({
    {"Y", "Yes", "Yes"},
    {"N", "No", "No"},
});

constexpr auto kFields = std::to_array<Field>({
    {.code = "ID", .limit = 32, .element = "../@Name", .refersTo = Refers::Source},
    {.code = "BB1",
     .label = "Type:",
     .box = kComposite,
     .page = kPage,
     .limit = 7,
     .kind = FieldKind::Choice,
     .element = "CompositeSignalStructure/SignalStructureType",
     .elementRead = "CompositeSignalStructures/SignalStructureType",
     .choices = kStructures,
     .readsExactly = true},
    {.code = "BB2",
     .label = "Modulation Sense:",
     .box = kComposite,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "CompositeSignalStructure/ModulationSense",
     .elementRead = "CompositeSignalStructures/ModulationSense",
     .choices = kSenses,
     .readsExactly = true},
    {.code = "BB3",
     .label = "Composite LPF Bandwidth:",
     .box = kComposite,
     .page = kPage,
     .limit = 6,
     .element = "CompositeSignalStructure/CompositeLPFBandwidth",
     .elementRead = "CompositeSignalStructures/CompositeLPFBandwidth",
     .unit = "KHz",
     .readsExactly = true},
    {.code = kSignalType,
     .label = "Signal Type",
     .box = kBaseband,
     .page = kPage,
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "BasebandSignal/SignalType",
     .choices = kSignals},
    {.code = "BSF1",
     .label = "Bandwidth:",
     .box = kFilter,
     .page = kPage,
     .limit = 6,
     .element = "BasebandSignal/LowPassFilter/Bandwidth",
     .unit = "KHz"},
    {.code = "BSF2",
     .label = "Type:",
     .box = kFilter,
     .page = kPage,
     .limit = 2,
     .kind = FieldKind::Choice,
     .element = "BasebandSignal/LowPassFilter/Type",
     .choices = kFilterTypes,
     .limit1996 = 3},
    {.code = kBasebandMeasurement, .limit = 32, .element = "BasebandSignal/MeasurementName"},
    {.code = kBasebandLink,
     .limit = 32,
     .element = "BasebandSignal/DataLinkName",
     .refersTo = Refers::Link},
    {.code = "SCO\\N",
     .label = "Total Number Of Sub Carriers:",
     .box = kSubcarriers,
     .page = kPage,
     .limit = 2},
    {.code = kSubcarrierCount,
     .kind = FieldKind::Count,
     .element = "Subcarriers/IRIGSubcarrier",
     .rows = kMostSubcarriers,
     .writesZero = true},
    {.code = "SI1-n",
     .label = "SCO Number",
     .limit = 5,
     .element = "Subcarriers/IRIGSubcarrier/Number",
     .list = kSubcarrierCount},
    {.code = kSubcarrierType,
     .label = "Data Type",
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "Subcarriers/IRIGSubcarrier/DataType",
     .choices = kDataTypes,
     .list = kSubcarrierCount,
     .missing = "OTH"},
    {.code = "SI3-n",
     .label = "Modulation Sense",
     .limit = 3,
     .kind = FieldKind::Choice,
     .element = "Subcarriers/IRIGSubcarrier/ModulationSense",
     .choices = kSenses,
     .list = kSubcarrierCount,
     .missing = "NEG"},
    {.code = "SIF1-n",
     .label = "Low Pass Filter Bandwidth",
     .limit = 6,
     .element = "Subcarriers/IRIGSubcarrier/LowPassFilter/Bandwidth",
     .list = kSubcarrierCount},
    {.code = kSubcarrierFilter,
     .label = "Low Pass Filter Type",
     .limit = 2,
     .kind = FieldKind::Choice,
     .element = "Subcarriers/IRIGSubcarrier/LowPassFilter/Type",
     .choices = kFilterTypes,
     .limit1996 = 3,
     .list = kSubcarrierCount,
     .missing = "OT"},
    {.code = kSubcarrierMeasurement,
     .label = "Measurement Name",
     .limit = 32,
     .element = "Subcarriers/IRIGSubcarrier/MeasurementName",
     .list = kSubcarrierCount},
    {.code = kSubcarrierLink,
     .label = "Data Link Name",
     .limit = 32,
     .element = "Subcarriers/IRIGSubcarrier/DataLinkName",
     .list = kSubcarrierCount,
     .refersTo = Refers::Link},
    {.code = "SO",
     .label = "Other Non-Standard Subcarriers?",
     .box = kSubcarriers,
     .page = kPage,
     .limit = 1,
     .kind = FieldKind::Choice,
     .element = "Subcarriers/Other",
     .choices = kYesNo,
     .codeFromXml = "SO-n"},
    {.code = "RC",
     .label = "Frequency:",
     .box = "Reference Channel",
     .page = kPage,
     .limit = 6,
     .element = "ReferenceChannel",
     .unit = "KHz"},
    {.code = "COM",
     .label = "Comments:",
     .page = kPage,
     .kind = FieldKind::Comment,
     .element = "Comments"},
});

}  // namespace

std::span<const Field> multiplexFields() {
    return kFields;
}

std::span<const Field> subcarrierFields() {
    return listFields(kFields, kSubcarrierCount);
}

SignalName signalNameOf(std::string_view type) {
    if (startsWithIgnoreCase(type, "PCM") || startsWithIgnoreCase(type, "PAM")) {
        return SignalName::DataLink;
    }
    return startsWithIgnoreCase(type, "ANA") ? SignalName::Measurement : SignalName::None;
}

}  // namespace kavu
