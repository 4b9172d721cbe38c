// The rows of the D group: n is the list, m the measurement, and further numbers are those
// of its locations, fragments and subframes, all counted from 1. IRIG 106, Chapter 9, Data
// Group.
#pragma once

#include "vocabulary/Field.h"
#include "vocabulary/LocationTypes.h"
#include "vocabulary/StreamLimits.h"

#include <array>
#include <span>
#include <string_view>

namespace kavu {

/// The location type of measurements that are located by tags.
inline constexpr std::string_view kTaggedType = "TD";

namespace measurement_choice {

inline constexpr auto kParity = std::to_array<Choice>({
    {"EV", "EVEN", "Even"},
    {"OD", "ODD", "Odd"},
    {"NO", "NONE", "None"},
    {"DE", "DEFAULT", "Default"},
});
/// The same as the dialog of the defaults writes them.
inline constexpr auto kParityOfDefaults = std::to_array<Choice>({
    {"EV", "Even"},
    {"OD", "Odd"},
    {"NO", "None"},
    {"DE", "Default"},
});
inline constexpr auto kParityOrder = std::to_array<Choice>({
    {"L", "Leads Word", "Leads Word"},
    {"T", "Trails Word", "Trails Word"},
    {"D", "Default", "Default"},
});
inline constexpr auto kTransferOrder = std::to_array<Choice>({
    {"M", "MSB", "MSB First"},
    {"L", "LSB", "LSB First"},
    {"D", "Default", "Default"},
});
inline constexpr auto kFilterOverwrite = std::to_array<Choice>({
    {"O", "Overwrite", "Overwrite"},
    {"F", "Filter", "Filter"},
    {"N", "No Filtering", "No Filtering"},
});
/// The same as the list of the selected measurements writes them.
inline constexpr auto kFilterOfSelected = std::to_array<Choice>({
    {"O", "Overwrite", "Overwrite"},
    {"F", "Filter", "Filter"},
    {.value = "N", .text = "Neither", .xml = "No Filtering", .schema = "Neither"},
});

/// The order of a fragment, which XML writes by name and reads as it stands.
inline constexpr auto kFragmentOrder = [] {
    auto all = kTransferOrder;
    for (auto& choice : all) {
        choice.isRead = false;
    }
    return all;
}();
/// How XML calls the location types; the others are older than it.
inline constexpr auto kLocationTypes = std::to_array<Choice>({
    {location_type::kWordFrame, {}, "Word and Frame"},
    {kTaggedType, {}, "Tagged Data"},
});

}  // namespace measurement_choice

// Widths of the values.
inline constexpr std::size_t kMaskWidth = 64;
inline constexpr std::size_t kSubframeNameWidth = 32;

/// The mask of all bits of a word.
inline constexpr std::string_view kFullWord = "FW";

/// The measurements that a minor frame filter selects: up to 106-09 in each list, k being the
/// number in it, from 106-11 on in the group.
namespace filter_field {

inline constexpr std::string_view kList = "SMF\\N";

inline constexpr Field kCountInList{.code = "SMF\\N-n",
                                    .kind = FieldKind::Count,
                                    .firstEdition = 2009,
                                    .lastEdition = 2009,
                                    .element = "MeasurementList/SelectedMeasurementName",
                                    .rows = kMostMeasurements,
                                    .elementSchema = kNotInSchema};
inline constexpr Field kNameInList{.code = "SMF\\SMN-n-k",
                                   .limit = 32,
                                   .firstEdition = 2009,
                                   .lastEdition = 2009,
                                   .element = "MeasurementList/SelectedMeasurementName",
                                   .list = kCountInList.code,
                                   .refersTo = Refers::Measurement,
                                   .elementSchema = kNotInSchema};
inline constexpr Field kCount{.code = kList,
                              .kind = FieldKind::Count,
                              .firstEdition = 2011,
                              .element = "MeasurementFilteringAndOverwrite",
                              .rows = kMostMeasurements};
inline constexpr Field kName{.code = "SMF\\SMN-k",
                             .limit = 32,
                             .firstEdition = 2011,
                             .element = "MeasurementFilteringAndOverwrite/MeasurementName",
                             .list = kList,
                             .refersTo = Refers::Measurement};
inline constexpr Field kType{.code = "SMF\\MFOT-k",
                             .limit = 1,
                             .kind = FieldKind::Choice,
                             .firstEdition = 2011,
                             .element = "MeasurementFilteringAndOverwrite/FilterOverwriteTag",
                             .choices = measurement_choice::kFilterOfSelected,
                             .list = kList};

}  // namespace filter_field

/// What every measurement has, whatever its location type.
namespace measurement_field {

inline constexpr std::string_view kList = "ML\\N";
inline constexpr std::string_view kMeasurements = "MN\\N-n";

inline constexpr Field kDataLink{
    .code = "DLN", .limit = 32, .element = "@Name", .refersTo = Refers::LinkName};
inline constexpr Field kListCount{.code = kList,
                                  .kind = FieldKind::Count,
                                  .element = "MeasurementList",
                                  .rows = kMostMeasurementLists};
inline constexpr Field kListName{
    .code = "MLN-n", .limit = 32, .element = "MeasurementList/@Name", .list = kList};
inline constexpr Field kCount{.code = kMeasurements,
                              .kind = FieldKind::Count,
                              .element = "MeasurementList/Measurement",
                              .list = kList,
                              .rows = kMostMeasurements};
inline constexpr Field kName{.code = "MN-n-m",
                             .label = "Measurement Name:",
                             .limit = 32,
                             .element = "MeasurementList/Measurement/@Name",
                             .list = kMeasurements,
                             .refersTo = Refers::MeasurementName};
inline constexpr Field kParity{.code = "MN1-n-m",
                               .label = "Parity:",
                               .limit = 2,
                               .kind = FieldKind::Choice,
                               .element = "MeasurementList/Measurement/Parity",
                               .choices = measurement_choice::kParity,
                               .list = kMeasurements,
                               .missing = "DE"};
inline constexpr Field kParityOrder{.code = "MN2-n-m",
                                    .label = "Parity Transfer Order:",
                                    .limit = 1,
                                    .kind = FieldKind::Choice,
                                    .element = "MeasurementList/Measurement/ParityTransferOrder",
                                    .choices = measurement_choice::kParityOrder,
                                    .list = kMeasurements,
                                    .missing = "D"};
inline constexpr Field kTransferOrder{
    .code = "MN3-n-m",
    .label = "Measurement Transfer Order:",
    .limit = 1,
    .kind = FieldKind::Choice,
    .element = "MeasurementList/Measurement/MeasurementTransferOrder",
    .choices = measurement_choice::kTransferOrder,
    .list = kMeasurements,
    .missing = "D"};
inline constexpr Field kFilterOverwrite{
    .code = "MFOT-n-m",
    .label = "Filtering:",
    .limit = 1,
    .kind = FieldKind::Choice,
    .firstEdition = 2009,
    .lastEdition = 2009,
    .element = "MeasurementList/Measurement/MeasurementFilterOverwriteTag",
    .choices = measurement_choice::kFilterOverwrite,
    .list = kMeasurements,
    .missing = "N",
    .elementSchema = kNotInSchema};
inline constexpr Field kLocationType{.code = "LT-n-m",
                                     .limit = 4,
                                     .element = "MeasurementList/Measurement/LocationType",
                                     .choices = measurement_choice::kLocationTypes,
                                     .list = kMeasurements};
inline constexpr Field kComment{.code = "COM", .element = "Comments"};

/// A command of a location type that word/frame locations have replaced.
constexpr Field older(std::string_view code, std::size_t limit = 0,
                      FieldKind kind = FieldKind::Text) {
    return {.code = code, .limit = limit, .kind = kind, .lastEdition = 2009, .list = kMeasurements};
}
constexpr Field olderNumber(std::string_view code, std::size_t limit = 0) {
    return older(code, limit, FieldKind::Digits);
}
/// The mask of a fragment, which has all bits of its word if the command is missing.
constexpr Field olderFragmentMask(std::string_view code) {
    auto field = older(code, kMaskWidth);
    field.missing = kFullWord;
    return field;
}
/// The transfer order of a fragment.
constexpr Field olderFragmentOrder(std::string_view code) {
    auto field = older(code, 1, FieldKind::Choice);
    field.choices = measurement_choice::kTransferOrder;
    return field;
}

}  // namespace measurement_field

/// "MF": one word of the minor frame.
namespace minor_word_field {
inline constexpr auto kWord = measurement_field::olderNumber("MF-n-m");
inline constexpr auto kMask = measurement_field::older("MFM-n-m", kMaskWidth);
}  // namespace minor_word_field

/// "SF": one position of a subframe.
namespace subframe_word_field {
inline constexpr auto kSubframe = measurement_field::older("SF1-n-m", kSubframeNameWidth);
inline constexpr auto kPosition = measurement_field::olderNumber("SF2-n-m");
inline constexpr auto kMask = measurement_field::older("SFM-n-m", kMaskWidth);
}  // namespace subframe_word_field

/// "MFSC": several words, by an interval or one by one.
namespace minor_supercom_field {
inline constexpr auto kCount = measurement_field::olderNumber("MFS\\N-n-m");
inline constexpr auto kMode = measurement_field::older("MFS1-n-m", 1);
inline constexpr auto kFirst = measurement_field::olderNumber("MFS2-n-m");
inline constexpr auto kMask = measurement_field::older("MFS3-n-m", kMaskWidth);
inline constexpr auto kInterval = measurement_field::olderNumber("MFS4-n-m");
inline constexpr auto kWord = measurement_field::olderNumber("MFSW-n-m-k");
inline constexpr auto kWordMask = measurement_field::older("MFSM-n-m-k", kMaskWidth);
}  // namespace minor_supercom_field

/// "MFFR": a value in several words.
namespace minor_fragment_field {
inline constexpr auto kCount = measurement_field::olderNumber("FMF\\N-n-m");
inline constexpr auto kLength = measurement_field::olderNumber("FMF1-n-m");
inline constexpr auto kMode = measurement_field::older("FMF2-n-m", 1);
inline constexpr auto kFirst = measurement_field::olderNumber("FMF3-n-m");
inline constexpr auto kMask = measurement_field::olderFragmentMask("FMF4-n-m");
inline constexpr auto kInterval = measurement_field::olderNumber("FMF5-n-m");
inline constexpr auto kWord = measurement_field::olderNumber("FMF6-n-m-k");
inline constexpr auto kWordMask = measurement_field::olderFragmentMask("FMF7-n-m-k");
inline constexpr auto kTransferOrder = measurement_field::olderFragmentOrder("FMF8-n-m-k");
inline constexpr auto kFragment = measurement_field::olderNumber("FMF9-n-m-k");
}  // namespace minor_fragment_field

/// "SFSC": several positions of a subframe.
namespace subframe_supercom_field {
inline constexpr auto kSubframe = measurement_field::older("SFS1-n-m", kSubframeNameWidth);
inline constexpr auto kCount = measurement_field::olderNumber("SFS\\N-n-m");
inline constexpr auto kMode = measurement_field::older("SFS2-n-m", 1);
inline constexpr auto kFirst = measurement_field::olderNumber("SFS3-n-m");
inline constexpr auto kMask = measurement_field::older("SFS4-n-m", kMaskWidth);
inline constexpr auto kInterval = measurement_field::olderNumber("SFS5-n-m");
inline constexpr auto kPosition = measurement_field::olderNumber("SFS6-n-m-k");
inline constexpr auto kPositionMask = measurement_field::older("SFS7-n-m-k", kMaskWidth);
}  // namespace subframe_supercom_field

/// "SFFR": a value in positions of subframes; s is the subframe, j the position.
namespace subframe_fragment_field {
inline constexpr auto kCount = measurement_field::olderNumber("FSF\\N-n-m");
inline constexpr auto kLength = measurement_field::olderNumber("FSF1-n-m");
inline constexpr auto kSubframes = measurement_field::olderNumber("FSF2\\N-n-m");
inline constexpr auto kSubframe = measurement_field::older("FSF3-n-m-s", kSubframeNameWidth);
inline constexpr auto kMode = measurement_field::older("FSF4-n-m-s", 1);
inline constexpr auto kFirst = measurement_field::olderNumber("FSF5-n-m-s");
inline constexpr auto kMask = measurement_field::olderFragmentMask("FSF6-n-m-s");
inline constexpr auto kInterval = measurement_field::olderNumber("FSF7-n-m-s", 3);
inline constexpr auto kPosition = measurement_field::olderNumber("FSF8-n-m-s-j");
inline constexpr auto kPositionMask = measurement_field::olderFragmentMask("FSF9-n-m-s-j");
inline constexpr auto kTransferOrder = measurement_field::olderFragmentOrder("FSF10-n-m-s-j");
inline constexpr auto kFragment = measurement_field::olderNumber("FSF11-n-m-s-j");
}  // namespace subframe_fragment_field

/// "WDFR": words and frames; k is the location, f its fragment.
namespace word_frame_field {

inline constexpr int kFirstEdition = 2004;
inline constexpr int kFirstEnds = 2009;  ///< the first edition that states the ends of ranges

/// The same with the path that XML is read from first.
constexpr Field readFrom(std::string_view elementRead, Field field) {
    field.elementRead = elementRead;
    return field;
}
constexpr Field text(std::string_view code, std::size_t limit, int firstEdition = kFirstEdition,
                     FieldKind kind = FieldKind::Text) {
    return {.code = code,
            .limit = limit,
            .kind = kind,
            .firstEdition = firstEdition,
            .list = measurement_field::kMeasurements};
}
constexpr Field number(std::string_view code, int firstEdition = kFirstEdition) {
    return text(code, 0, firstEdition, FieldKind::Digits);
}

inline constexpr auto kCounter = readFrom(
    "MeasurementList/Measurement/IDCounterName",
    inXml(text("IDCN-n-m", 0, 2011), "MeasurementList/Measurement/WordAndFrame/IDCounterName"));
inline constexpr auto kCount = readFrom(
    "MeasurementList/Measurement/MeasurementLocation",
    inXml(number("MML\\N-n-m"), "MeasurementList/Measurement/WordAndFrame/MeasurementLocation"));
inline constexpr auto kFragments = readFrom(
    "MeasurementList/Measurement/MeasurementLocation/MeasurementFragments",
    inXml(number("MNF\\N-n-m-k"),
          "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/MeasurementFragments"));
inline constexpr auto kLength = number("MWL-n-m-k");
inline constexpr auto kWord =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/StartWord",
             inXml(number("WP-n-m-k-f"),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/StartWord"));
inline constexpr auto kWordInterval =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/WordInterval",
             inXml(number("WI-n-m-k-f"),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/WordInterval"));
inline constexpr auto kEndWord =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/EndWord",
             inXml(number("EWP-n-m-k-f", kFirstEnds),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/EndWord"));
inline constexpr auto kFrame =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/StartFrame",
             inXml(number("FP-n-m-k-f"),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/StartFrame"));
inline constexpr auto kFrameInterval =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/FrameInterval",
             inXml(number("FI-n-m-k-f"),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/FrameInterval"));
inline constexpr auto kEndFrame =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/EndFrame",
             inXml(number("EFP-n-m-k-f", kFirstEnds),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/EndFrame"));
inline constexpr auto kMask =
    readFrom("MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/BitMask",
             inXml(text("WFM-n-m-k-f", kMaskWidth),
                   "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/"
                   "MeasurementFragments/BitMask"));
inline constexpr auto kTransferOrder = [] {
    auto field = text("WFT-n-m-k-f", 0, kFirstEdition, FieldKind::Choice);
    field.choices = measurement_choice::kFragmentOrder;
    return readFrom(
        "MeasurementList/Measurement/MeasurementLocation/MeasurementFragments/"
        "@FragmentTransferOrder",
        inXml(field,
              "MeasurementList/Measurement/WordAndFrame/MeasurementLocation/MeasurementFragments/"
              "@FragmentTransferOrder"));
}();
inline constexpr auto kPosition = [] {
    auto field = number("WFP-n-m-k-f");
    field.codeFromXml = "MFP-n-m-k-f";
    return field;
}();

}  // namespace word_frame_field

/// Tagged data; k is the tag.
namespace tagged_field {

inline constexpr int kFirstEdition = 2011;

constexpr Field inMeasurement(Field field) {
    field.firstEdition = kFirstEdition;
    field.list = measurement_field::kMeasurements;
    return field;
}
inline constexpr auto kCount =
    inXml(inMeasurement({.code = "TD\\N-n-m", .kind = FieldKind::Digits}),
          "MeasurementList/Measurement/TaggedData/Fragment");
inline constexpr auto kWordLength = inXml(inMeasurement({.code = "TD1-n-m",
                                                         .label = "Word Length:",
                                                         .limit = 3,
                                                         .kind = FieldKind::Digits,
                                                         .unit = "bits"}),
                                          "MeasurementList/Measurement/TaggedData/WordLength");
inline constexpr auto kTagNumber =
    inXml(inMeasurement({.code = "TD2-n-m-k", .label = "Tag Number", .limit = 10}),
          "MeasurementList/Measurement/TaggedData/Fragment/TagNumber");
inline constexpr auto kMask =
    inXml(inMeasurement({.code = "TD3-n-m-k", .label = "Bit Mask", .limit = kMaskWidth}),
          "MeasurementList/Measurement/TaggedData/Fragment/BitMask");
inline constexpr auto kTransferOrder =
    inXml(inMeasurement({.code = "TD4-n-m-k",
                         .label = "Transfer Order",
                         .limit = 1,
                         .kind = FieldKind::Choice,
                         .choices = measurement_choice::kTransferOrder}),
          "MeasurementList/Measurement/TaggedData/Fragment/FragmentTransferOrder");
inline constexpr auto kPosition =
    inMeasurement({.code = "TD5-n-m-k", .label = "Fragment Position", .limit = 2});

}  // namespace tagged_field

/// All commands of the group: first what all measurements have, then the location types.
[[nodiscard]] std::span<const Field> measurementVocabulary();

}  // namespace kavu
