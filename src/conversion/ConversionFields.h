// The vocabulary of the C group: the codes of a conversion record with their limits, and
// the order and the editions in which they are written. The loader's limit check and the
// writer walk these tables.
#pragma once

#include "core/text/Edition.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kavu {

/// A measurement name is the name of a section; a longer one is cut.
inline constexpr std::size_t kLongestMeasurementName = 32;
/// The code that names the record. Any code that begins with it counts.
inline constexpr std::string_view kNameCode = "DCN";
inline constexpr std::string_view kCommentCode = "COM";
inline constexpr std::string_view kTypeCode = "DCT";

// Keys of a record that are no TMATS codes.
namespace recordkey {
inline constexpr std::string_view kTemplate = "EuTemplate";
inline constexpr std::string_view kChanged = "Chg";
inline constexpr std::string_view kCommentRecord = "KavuCmd";
}  // namespace recordkey

// --- Limits ------------------------------------------------------------------------------

/// One row of the limits: characters, 0 for none. Edition 1996 has limits of its own.
struct ConversionLimit {
    std::string_view code;
    int limit = 0;
    int limit1996 = -1;  ///< -1: the same
};

/// The rows in the order in which they are searched.
[[nodiscard]] std::span<const ConversionLimit> conversionLimits();

/// The limit of a code, with or without list indices ("MC1-2" is looked up as "MC1"), or 0
/// when it has none. The search never finds "DP\N" and "DPNO": they stand out of order in
/// the table, and files rely on their values being taken at any length.
[[nodiscard]] int conversionLimit(std::string_view code, int edition);

// --- Order of writing --------------------------------------------------------------------

enum class WrittenForm {
    Value,         ///< the text, left out if it is empty
    Count,         ///< the text; a negative number becomes "0"
    IntegerCount,  ///< always written, as a number
    List,          ///< the items of a list, one row after the other
    SampleRate,    ///< the text, cut to the precision of the settings
};

/// One step of the writing of a record.
struct ConversionField {
    std::string_view code;  ///< for a list the code of its count
    WrittenForm form = WrittenForm::Value;
    std::string_view otherwise = {};  ///< written for a missing value
    int from = 0;                     ///< first edition
    int until = kLatestEdition;       ///< last edition
    std::string_view needs = {};      ///< written only if this key is a number over 0
    bool bitWeights = false;          ///< written only if the binary format is bit weights
    std::array<std::string_view, 3> items = {};
};

/// The fields of one conversion type.
struct ConversionType {
    std::string_view type;  ///< the first three characters, upper case
    int from = 0;           ///< before it the type has the fields of any other
    std::span<const ConversionField> fields;
};

/// The fields in front of the conversion type, in order.
[[nodiscard]] std::span<const ConversionField> commonConversionFields();
/// The fields of a type, compared without case by its first three characters.
[[nodiscard]] std::span<const ConversionField> typeConversionFields(std::string_view type,
                                                                    int edition);

// --- Choices -----------------------------------------------------------------------------

/// An entry of a choice. The stored value is the first three characters of the text.
struct ConversionChoice {
    std::string_view text{};
    int from = 0;
    int until = kLatestEdition;

    [[nodiscard]] constexpr std::string_view stored() const { return text.substr(0, 3); }
};

/// "BFM" and "DCT", in list order.
inline constexpr auto kBinaryFormats = std::to_array<ConversionChoice>({
    {.text = "INTeger"},
    {.text = "UNSigned Binary"},
    {.text = "SIG - Sign And Magnitude (+=0)", .from = 2000},
    {.text = "SIM - Sign And Magnitude (+=1)", .from = 2000},
    {.text = "SIGn And Magnitude", .until = 1999},
    {.text = "ONE's Complement"},
    {.text = "TWO's Complement"},
    {.text = "OFFset Binary"},
    {.text = "FPT - Float", .from = 1997},
    {.text = "BCD - Binary Coded Decimal", .from = 2000},
    {.text = "BWT - Bit Weight", .from = 2007},
    {.text = "OTHer"},
});

inline constexpr auto kConversionTypes = std::to_array<ConversionChoice>({
    {.text = "NON - None"},
    {.text = "PRS - Pair Set"},
    {.text = "COE - Coefficients"},
    {.text = "NPC - Coefficients (Negative Powers of X)", .from = 2007},
    {.text = "DER - Derived"},
    {.text = "DIS - Discrete"},
    {.text = "PTM - PCM Time", .from = 1997},
    {.text = "BTM - 1553 Time", .from = 1997},
    {.text = "OTH - Other"},
    {.text = "SP  - Special Processing"},
    {.text = "VID - Video"},
    {.text = "VOI - Voice"},
});

}  // namespace kavu
