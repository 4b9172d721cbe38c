// What the sheet of a conversion record offers: its pages, the choices of its fields by
// edition, the detail windows of the conversion types.
#pragma once

#include "core/text/Edition.h"
#include "vocabulary/CGroupFields.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kavu {

class ProfileFile;

/// A list of a record: the code of its count and one column for each code of a row.
struct EuList {
    std::string_view countCode{};
    std::string_view title{};
    std::span<const Field> columns{};
    int mostRows = 0;      ///< the most that the digits of the count allow
    int mostRows1996 = 0;  ///< 0: the same
    int firstEdition = 0;
    /// Prompt for the one value of a row; if empty, a row has a dialog of its own.
    std::string_view prompt{};

    [[nodiscard]] constexpr bool isIn(int edition) const { return edition >= firstEdition; }
    [[nodiscard]] constexpr int rowsIn(int edition) const {
        return edition <= 1996 && mostRows1996 > 0 ? mostRows1996 : mostRows;
    }
};

/// The list of a count with these columns, which must outlive it.
[[nodiscard]] constexpr EuList euListOf(const Field& count, std::span<const Field> columns,
                                        std::string_view prompt = {}) {
    return {.countCode = count.code,
            .title = count.label,
            .columns = columns,
            .mostRows = static_cast<int>(count.rows),
            .mostRows1996 = static_cast<int>(c::rowsOf(count.limit1996)),
            .firstEdition = count.firstEdition,
            .prompt = prompt};
}
/// Rows as the columns of a list: a record has a value of "MC1" for each of its rows.
template <typename... Rows>
[[nodiscard]] constexpr std::array<Field, sizeof...(Rows)> euColumns(const Rows&... rows) {
    std::array<Field, sizeof...(Rows)> columns{rows...};
    for (auto& column : columns) {
        column.code = stemOf(column.code);
        column.list = {};
    }
    return columns;
}

/// A page of the sheet: fields or one list.
struct EuPage {
    const char* resource = nullptr;
    std::string_view title{};
    std::span<const Field> fields{};
    const EuList* list = nullptr;
};
/// The eight pages in order.
[[nodiscard]] std::span<const EuPage> euPages();
/// The field of a page or a detail window. REQUIRES: there is one.
[[nodiscard]] const Field& euField(std::string_view code);
/// The weights of the bits, which are edited in a window of their own.
[[nodiscard]] const EuList& bitWeightList();

/// "Data Conversion Attributes: %s"
[[nodiscard]] std::string euSheetTitle(std::string_view measurement);

/// What is stored for an entry of the classification: the text up to its first blank.
[[nodiscard]] std::string_view storedClassification(std::string_view text);

struct FloatingPointFormat {
    std::string_view text;
    std::string_view code;
};
[[nodiscard]] std::span<const FloatingPointFormat> floatingPointFormats();

/// The detail window of a conversion type.
struct DetailWindow {
    std::string_view type{};
    const char* resource = nullptr;
    std::string_view title{};
    int from = 0;  ///< first edition
    std::span<const Field> fields{};
    std::span<const EuList> lists{};
};
/// Nothing for a type without a window, and for one that the edition does not have. With
/// `plot` pair sets get the window with their plot.
[[nodiscard]] std::optional<DetailWindow> detailWindow(std::string_view type, int edition,
                                                       bool plot);

/// "Show Conversion Details" or "Hide Conversion Details"
[[nodiscard]] std::string_view detailButtonText(bool shown);

/// The display text of a stored type; the type itself if none is known.
[[nodiscard]] std::string typeText(std::string_view stored, int edition);
/// The stored value of a display text: its first three characters without a trailing blank.
[[nodiscard]] std::string storedType(std::string_view text);
/// The same for an edition: 106-96 stores "NON" for voice and video.
[[nodiscard]] std::string storedType(std::string_view text, int edition);
/// The type that a record shows: "NON" is voice or video in 106-96 if it has their fields.
[[nodiscard]] std::string shownType(const ProfileFile& file, std::string_view section, int edition);

// --- Texts of the sheet ------------------------------------------------------------------

namespace eutext {
inline constexpr std::string_view kNoName = "ERROR: No measurement name";
inline constexpr std::string_view kDefaultsOf =
    "Telemetry Value Definition, and Data Conversion Type";
inline constexpr std::string_view kDefaultsNote =
    "Note: If you select \"Coefficients\" as the default conversion type, coefficients with the "
    "values 1.0 for gain, and 0.0 for offset will be created. If you select any other conversion "
    "type as the default, no EU values will be created for that conversion type.";
inline constexpr std::string_view kNothingDerived =
    "The pair sets of this record give no curve. Its coefficients stay as they are.";
inline constexpr std::string_view kDefaultsStored =
    "These values are the defaults of new records now.";
inline constexpr std::string_view kLinkTypeStored =
    "This link type is the default of new records now.";
inline constexpr std::string_view kImport = "Import EU Values";
inline constexpr std::string_view kImportPrompt =
    "Replace this measurement's EU values, with the values from existing measurement:";
inline constexpr std::string_view kAllMeasurements = "All Measurements";
inline constexpr std::string_view kDeleteBitWeight = "Delete Bit Weight Definition";
inline constexpr std::string_view kDeleteCommentString = "Delete EU Comment String";
inline constexpr std::string_view kFloatingPointTypes = "Defined Floating Point Types";
inline constexpr std::string_view kEnterZero = "Enter New Zero Value";
inline constexpr std::string_view kEnterCal = "Enter New 'Cal' Value";
}  // namespace eutext

/// "C(%d)" and "Enter Coefficient 'C(%d)'"
[[nodiscard]] std::string coefficientTerm(int term);
[[nodiscard]] std::string coefficientPrompt(int term);
/// True for a decimal number and for `S`, the sign bit, in any case.
[[nodiscard]] bool isBitWeight(std::string_view text);

}  // namespace kavu
