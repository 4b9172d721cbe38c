// The rows of the C group for the loader's limit check and the writer of a record: the order in
// which limits are searched, and the order and the editions of writing.
#pragma once

#include "core/text/Edition.h"
#include "vocabulary/CGroupFields.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kavu {

/// A measurement name is the name of a section; a longer one is cut.
inline constexpr std::size_t kLongestMeasurementName = c::kDcn.limit;
/// The code that names the record. Any code that begins with it counts.
inline constexpr std::string_view kNameCode = c::kDcn.code;
inline constexpr std::string_view kCommentCode = c::kCom.code;
inline constexpr std::string_view kTypeCode = c::kDct.code;
/// The type of a record that does not state one.
inline constexpr std::string_view kNoType = c::kDct.missing;

// Keys of a record that are not TMATS codes.
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
/// if it has none. The search never finds "DP\N" and "DPNO": they are out of order in the
/// table, and files rely on their values being accepted at any length.
[[nodiscard]] int conversionLimit(std::string_view code, int edition);

// --- One look for all ------------------------------------------------------------------------

/// What reading and writing ask of a code. A file has hundreds of thousands of fields, so that
/// each is looked up once.
struct ConversionCode {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    std::string_view code = {};  ///< as the tables spell it
    int limit = 0;               ///< as `conversionLimit` finds it
    int limit1996 = 0;
    std::size_t value = kNone;    ///< its place among the values that a record is written from
    std::size_t list = kNone;     ///< the list that it is an item of
    std::size_t column = kNone;   ///< its place in a row of that list
    bool isOfTheProgram = false;  ///< one of `recordkey`

    [[nodiscard]] int limitIn(int edition) const { return edition == 1996 ? limit1996 : limit; }
};

/// `conversionLimit` of a code whose row has been found, or that has none.
[[nodiscard]] int conversionLimit(std::string_view code, const ConversionCode* row, int edition);
/// The code, without list indices and whatever its case; null for one that no table has.
[[nodiscard]] const ConversionCode* findConversionCode(std::string_view code);
/// The number of places of values.
[[nodiscard]] std::size_t conversionValueCount();

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
    int from = 0;           ///< in older editions the type has the fields of any other
    std::span<const ConversionField> fields;
};

/// The fields before the conversion type, in order.
[[nodiscard]] std::span<const ConversionField> commonConversionFields();
/// The fields of a type, compared without case by its first three characters.
[[nodiscard]] std::span<const ConversionField> typeConversionFields(std::string_view type,
                                                                    int edition);

}  // namespace kavu
