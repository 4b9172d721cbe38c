// What the sheet of a conversion record offers: its pages, the choices of its fields by
// edition, the detail windows of the conversion types.
#pragma once

#include "core/Edition.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class ProfileFile;

/// One field of a page; the code is its key in the record.
struct EuField {
    std::string_view label;
    std::string_view code;
    int limit = 0;  ///< characters; 0 is none
};

struct EuPage {
    std::string_view resource;
    std::string_view title;
    std::span<const EuField> fields;
    /// Codes of the columns of the page's list, with their limits.
    std::span<const EuField> columns;
    std::string_view countCode;  ///< of the list
    int listFrom = 0;            ///< first edition of the list
};
/// The eight pages in order.
[[nodiscard]] std::span<const EuPage> euPages();

/// "Data Conversion Attributes: %s"
[[nodiscard]] std::string euSheetTitle(std::string_view measurement);

/// The entries of the classification. What is stored stands in front of the first blank.
[[nodiscard]] std::vector<std::string_view> classificationList(int edition);
/// What is stored for an entry: the text up to its first blank.
[[nodiscard]] std::string_view storedClassification(std::string_view text);
/// The entry of a stored value, or -1.
[[nodiscard]] int classificationIndex(std::span<const std::string_view> list,
                                      std::string_view stored);

[[nodiscard]] std::span<const std::string_view> linkTypeList();

struct FloatingPointFormat {
    std::string_view text;
    std::string_view code;
};
[[nodiscard]] std::span<const FloatingPointFormat> floatingPointFormats();

/// An entry whose stored value is not the front of its text.
struct EuChoice {
    std::string_view value;
    std::string_view text;
};
[[nodiscard]] std::span<const EuChoice> busTimeChoices();    ///< "BTM"
[[nodiscard]] std::span<const EuChoice> pcmTimeChoices();    ///< "PTM"
[[nodiscard]] std::span<const EuChoice> algorithmChoices();  ///< "DPAT"
[[nodiscard]] std::span<const EuChoice> voiceEncodings();    ///< "VOI\E"

/// The detail window of a conversion type.
struct DetailWindow {
    std::string_view type;
    std::string_view resource;
    std::string_view title;  ///< empty: the window's own
    int from = 0;            ///< first edition
};
/// Nothing for a type without a window, and for one that the edition does not know. With
/// `plot` pair sets have the window with their plot.
[[nodiscard]] std::optional<DetailWindow> detailWindow(std::string_view type, int edition,
                                                       bool plot);

/// "Show Conversion Details" or "Hide Conversion Details"
[[nodiscard]] std::string_view detailButtonText(bool shown);

/// The display text of a stored type; the type itself if none is known.
[[nodiscard]] std::string typeText(std::string_view stored, int edition);
/// The stored value of a display text: its first three characters without a blank at the end.
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
inline constexpr std::string_view kImportPrompt =
    "Replace this measurement's EU values, with the values from existing measurement:";
inline constexpr std::string_view kAllMeasurements = "All Measurements";
inline constexpr std::string_view kDeleteBitWeight = "Delete Bit Weight Definition";
inline constexpr std::string_view kDeleteCommentString = "Delete EU Comment String";
inline constexpr std::string_view kFloatingPointTypes = "Defined Floating Point Types";
inline constexpr std::string_view kEnterIndicators = "Enter Number Of Indicators";
inline constexpr std::string_view kEnterMeasurand = "Enter Measurand Name";
inline constexpr std::string_view kEnterConstant = "Enter Constant Name";
inline constexpr std::string_view kBitNumber = "Bit Number";
inline constexpr std::string_view kBitValue = "Bit Value (Enter 'S' for sign bit)";
inline constexpr std::string_view kEnterZero = "Enter New Zero Value";
inline constexpr std::string_view kEnterCal = "Enter New 'Cal' Value";
}  // namespace eutext

/// "C(%d)" and "Enter Coefficient 'C(%d)'"
[[nodiscard]] std::string coefficientTerm(int term);
[[nodiscard]] std::string coefficientPrompt(int term);
/// True for a decimal number and for `S`, the sign bit, in any case.
[[nodiscard]] bool isBitWeight(std::string_view text);

}  // namespace kavu
