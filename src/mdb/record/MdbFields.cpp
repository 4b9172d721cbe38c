#include "mdb/record/MdbFields.h"

#include "core/text/Text.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>
#include <charconv>

namespace kavu {

namespace {

constexpr auto kTransferOrders = std::to_array<MdbWord>({
    {"M", "MSB First"},
    {"L", "LSB First"},
    {"D", "Default"},
});
constexpr auto kParityTransferOrders = std::to_array<MdbWord>({
    {"L", "Leads Word"},
    {"T", "Trails Word"},
    {"D", "Default"},
});
constexpr auto kParities = std::to_array<MdbWord>({
    {"EV", "Even"},
    {"OD", "Odd"},
    {"NO", "None"},
    {"DE", "Default"},
});
constexpr auto kTransmitReceive = std::to_array<MdbWord>({
    {"1", "Transmit"},
    {"0", "Receive"},
});
constexpr auto kSecurity = std::to_array<MdbWord>({
    {"U", "Unclassified"},
    {"C", "Confidential"},
    {"S", "Secret"},
    {"T", "Top Secret"},
    {"O", "Other"},
    {"UR", "Counts Unclassified"},
    {"CR", "Counts Confidential"},
    {"SR", "Counts Secret"},
    {"TR", "Counts Top Secret"},
    {"OR", "Counts Other"},
    {"UE", "EU Unclassified"},
    {"CE", "EU Confidential"},
    {"SE", "EU Secret"},
    {"TE", "EU Top Secret"},
    {"OE", "EU Other"},
    {"UB", "Counts And EU Unclassified"},
    {"CB", "Counts And EU Confidential"},
    {"SB", "Counts And EU Secret"},
    {"TB", "Counts And EU Top Secret"},
    {"OB", "Counts And EU Other"},
});
constexpr auto kInputFormats = std::to_array<MdbWord>({
    {"INT", "Integer"},
    {"UNS", "Unsigned Binary"},
    {"SIG", "Sign and Magnitude Binary (+=0)"},
    {"SIM", "Sign and Magnitude Binary (+=1)"},
    {"ONE", "One's Complement"},
    {"TWO", "Two's Complement"},
    {"OFF", "Offset Binary"},
    {"FPT", "Floating Point"},
    {"BCD", "Binary Coded Decimal"},
    {"BWT", "Bit Weight"},
    {"OTH", "Other"},
});
constexpr auto kConversionTypes = std::to_array<MdbWord>({
    {"NON", "None"},
    {"PRS", "Pair Sets"},
    {"COE", "Coefficients"},
    {"DER", "Derived"},
    {"DIS", "Discrete"},
    {"PTM", "PCM Time"},
    {"BTM", "1553 Time"},
    {"VOI", "Voice"},
    {"VID", "Video"},
    {"SP", "Special Processing"},
    {"OTH", "Other"},
});

constexpr auto kFields = std::to_array<MdbField>({
    {.label = "Measurement Name", .limit = 32, .element = "Name"},
    {.label = "Root Word Name", .limit = 32, .element = "Root"},
    {.label = "Word Length", .limit = 2, .element = "Length"},
    {.label = "BitMask", .limit = 64, .element = "BitMask"},
    {.label = "Measurement Transfer Order",
     .limit = 1,
     .allowed = "M L D",
     .element = "MeasurementTransferOrder",
     .words = kTransferOrders},
    {.label = "Parity Transfer Order",
     .limit = 1,
     .allowed = "L T D",
     .element = "ParityTransferOrder",
     .words = kParityTransferOrders},
    {.label = "Measurement Parity",
     .limit = 2,
     .allowed = "EV OD NO DE",
     .element = "Parity",
     .words = kParities},
    {.label = "1553 Bus Name", .limit = 32, .element = "BusAttributes/Name"},
    {.label = "1553 Bus Number", .limit = 4, .element = "BusAttributes/Number"},
    {.label = "1553 RT Name", .limit = 32, .element = "BusAttributes/RemoteTerminal/Name"},
    {.label = "1553 RT Address", .limit = 5, .element = "BusAttributes/RemoteTerminal/Address"},
    {.label = "1553 ST Name", .limit = 32, .element = "BusAttributes/SubTerminal/Name"},
    {.label = "1553 ST Address", .limit = 5, .element = "BusAttributes/SubTerminal/Address"},
    {.label = "1553 T/R Mode",
     .limit = 1,
     .allowed = "0 1",
     .element = "BusAttributes/TransmitReceiveMode",
     .words = kTransmitReceive},
    {.label = "1553 Word Number", .limit = 3, .element = "BusAttributes/WordNumber"},
    {.label = "Transducer Type",
     .key = c::kTrd1.code,
     .element = "DataConversionAttributes/TransducerInformation/Type"},
    {.label = "Transducer Model",
     .key = c::kTrd2.code,
     .element = "DataConversionAttributes/TransducerInformation/ModelNumber"},
    {.label = "Transducer Serial",
     .key = c::kTrd3.code,
     .element = "DataConversionAttributes/TransducerInformation/SerialNumber"},
    {.label = "Transducer Security",
     .limit = 2,
     .key = c::kTrd4.code,
     .element = "DataConversionAttributes/TransducerInformation/SecurityClassification",
     .words = kSecurity},
    {.label = "Transducer Origination",
     .key = c::kTrd5.code,
     .element = "DataConversionAttributes/TransducerInformation/OriginationDate"},
    {.label = "Transducer Revision",
     .key = c::kTrd6.code,
     .element = "DataConversionAttributes/TransducerInformation/RevisionNumber"},
    {.label = "Transducer Orientation",
     .key = c::kTrd7.code,
     .element = "DataConversionAttributes/TransducerInformation/Orientation"},
    {.label = "Point Of Contact Name",
     .key = c::kPoc1.code,
     .element = "DataConversionAttributes/PointOfContact/Name"},
    {.label = "Point Of Contact Agency",
     .key = c::kPoc2.code,
     .element = "DataConversionAttributes/PointOfContact/Agency"},
    {.label = "Point Of Contact Address",
     .key = c::kPoc3.code,
     .element = "DataConversionAttributes/PointOfContact/Address"},
    {.label = "Point Of Contact Phone",
     .key = c::kPoc4.code,
     .element = "DataConversionAttributes/PointOfContact/Telephone"},
    {.label = "Measurement Description",
     .key = c::kMn1.code,
     .element = "DataConversionAttributes/Measurand/Description"},
    {.label = "EU Units",
     .key = c::kMn3.code,
     .element = "DataConversionAttributes/Measurand/EngineeringUnits"},
    {.label = "Low Value",
     .limit = 32,
     .key = c::kMot2.code,
     .element = "DataConversionAttributes/OtherInformation/MeasurementValue/Low"},
    {.label = "High Value",
     .limit = 32,
     .key = c::kMot1.code,
     .element = "DataConversionAttributes/OtherInformation/MeasurementValue/High"},
    {.label = "Low Warning",
     .limit = 32,
     .key = c::kMot4.code,
     .element = "DataConversionAttributes/OtherInformation/AlertValue/Low"},
    {.label = "High Warning",
     .limit = 32,
     .key = c::kMot3.code,
     .element = "DataConversionAttributes/OtherInformation/AlertValue/High"},
    {.label = "Input Format",
     .limit = 3,
     .key = c::kBfm.code,
     .element = "DataConversionAttributes/TelemetryValueDefinition/BinaryFormat",
     .words = kInputFormats},
    {.label = "Sample Rate",
     .limit = 32,
     .key = c::kSr.code,
     .element = "DataConversionAttributes/OtherInformation/SampleRate"},
    {.label = "EU Type", .limit = 3, .key = c::kDct.code, .words = kConversionTypes},
    {.label = "Eu Conversion Data"},
});
static_assert(kFields.size() == mdbfield::kCount);

struct EditionLists {
    int from;
    std::string_view inputFormats;
    std::string_view types;
};
/// Editions between two rows have the lists of the earlier one.
constexpr auto kEditionLists = std::to_array<EditionLists>({
    {0, "INT UNS SIG ONE TWO OFF OTH", "NON PRS COE OTH DER DIS SP"},
    {1999, "INT UNS SIG ONE TWO OFF OTH FPT", "NON PRS COE OTH DER DIS SP PTM BTM VOI VID"},
    {2000, "INT UNS SIG SIM ONE TWO OFF OTH FPT BCD", "NON PRS COE OTH DER DIS SP PTM BTM VOI VID"},
    {2007, "INT UNS SIG SIM ONE TWO OFF OTH FPT BCD BWT",
     "NON PRS COE OTH DER DIS SP PTM BTM VOI VID"},
});

constexpr std::size_t kSecurityField = 18;
constexpr std::size_t kSecurityLimit1996 = 4;
static_assert(kFields[kSecurityField].key == c::kTrd4.code);

bool isListed(std::string_view list, std::string_view value) {
    while (!list.empty()) {
        const auto end = list.find(' ');
        if (list.substr(0, end) == value) {
            return true;
        }
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return false;
}

}  // namespace

std::span<const MdbField, mdbfield::kCount> mdbFields() {
    return kFields;
}

std::optional<std::size_t> mdbFieldIndex(std::string_view labelOrIndex) {
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (equalsIgnoreCase(kFields[i].label, labelOrIndex)) {
            return i;
        }
    }
    std::size_t index = 0;
    const auto* const end = labelOrIndex.data() + labelOrIndex.size();
    const auto [stop, error] = std::from_chars(labelOrIndex.data(), end, index);
    return error == std::errc() && stop == end && index < kFields.size() ? std::optional(index)
                                                                         : std::nullopt;
}

MdbFieldTable::MdbFieldTable(int edition) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i] = {kFields[i].limit, kFields[i].allowed};
    }
    for (const auto& lists : kEditionLists) {
        if (edition >= lists.from) {
            rows_[mdbfield::kInputFormat].allowed = lists.inputFormats;
            rows_[mdbfield::kType].allowed = lists.types;
        }
    }
    if (edition <= 1996) {
        rows_[kSecurityField].limit = kSecurityLimit1996;
    }
}

void MdbFieldTable::check(std::size_t index, std::string_view value,
                          std::vector<MdbFault>& faults) const {
    const auto& row = rows_[index];
    if (row.limit > 0 && value.size() > row.limit) {
        faults.push_back({.kind = MdbFault::Kind::TooLong, .index = index, .limit = row.limit});
    }
    if (!value.empty() && !row.allowed.empty() && !isListed(row.allowed, value)) {
        faults.push_back(
            {.kind = MdbFault::Kind::NotAllowed, .index = index, .allowed = row.allowed});
    }
}

std::string_view toXmlWord(const MdbField& field, std::string_view code) {
    const auto* const end = field.words.data() + field.words.size();
    const auto* const found = std::find_if(
        field.words.data(), end, [code](const MdbWord& word) { return word.code == code; });
    return found == end ? code : found->text;
}

std::string_view fromXmlWord(const MdbField& field, std::string_view text) {
    const auto* const end = field.words.data() + field.words.size();
    const auto* const found = std::find_if(
        field.words.data(), end, [text](const MdbWord& word) { return word.text == text; });
    return found == end ? text : found->code;
}

}  // namespace kavu
