// The keys of a report layout: a section of a profile file that says which reports are made, and
// how each of them looks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The section that holds the keys, in a layout file as in the settings.
inline constexpr std::string_view kReportSection = "Reports";

namespace layout_key {

inline constexpr std::string_view kFormat = "Fmt";
inline constexpr std::string_view kFrame = "FrameRpt";
inline constexpr std::string_view kMeasurements = "MesRpt";
inline constexpr std::string_view kDestination = "Dest";
inline constexpr std::string_view kFont = "Font";
inline constexpr std::string_view kFrameDelimited = "FrameDel";
inline constexpr std::string_view kMeasurementsDelimited = "MesDel";
inline constexpr std::string_view kReportPath = "ReportPath";
inline constexpr std::string_view kDelimitedPath = "ASCIIPath";
inline constexpr std::string_view kSort = "MesRptSort";
inline constexpr std::string_view kColumn = "M";         ///< with a number from 1
inline constexpr std::string_view kBusColumn = "M1553";  ///< the same, of a bus stream
inline constexpr std::string_view kMeasurementTitle = "MesReptTitle";
inline constexpr std::string_view kMeasurementLeft = "MesReptLHdr";
inline constexpr std::string_view kMeasurementRight = "MesReptRHdr";
inline constexpr std::string_view kFirstLocationOnly = "MFReptSC";
inline constexpr std::string_view kFormatTitle = "PCMReptTitle";
inline constexpr std::string_view kFormatLeft = "PCMReptLHdr";
inline constexpr std::string_view kFormatRight = "PCMReptRHdr";
inline constexpr std::string_view kFrameTitle = "MFReptTitle";
inline constexpr std::string_view kFrameLeft = "MFReptLHdr";
inline constexpr std::string_view kFrameRight = "MFReptRHdr";
inline constexpr std::string_view kFrameStyle = "MFReptStyle";
inline constexpr std::string_view kFrameAllNames = "MFReptDupMes";
inline constexpr std::string_view kFrameCompact = "MFReptCompact";
inline constexpr std::string_view kPlotTitle = "PlotTitle";
inline constexpr std::string_view kPlotLeft = "PlotLHdr";
inline constexpr std::string_view kPlotRight = "PlotRHdr";
inline constexpr std::string_view kPageNumberPlace = "PNumLoc";
inline constexpr std::string_view kPageNumber = "PNumString";

}  // namespace layout_key

/// The greatest index of a list that a key chooses from.
inline constexpr int kMostDestination = 4;
inline constexpr int kMostFont = 14;
inline constexpr int kMostSort = 2;
inline constexpr int kMostPageNumberPlace = 6;

struct LayoutKey {
    std::string key{};
    std::string otherwise{};  ///< without a value
    bool isText = false;      ///< any text; all others are numbers
    int least = 0;
    int most = 1;
};

/// All keys in the order of a new file. `columns` and `busColumns` are the numbers of columns that
/// can be chosen.
[[nodiscard]] std::vector<LayoutKey> layoutKeys(std::size_t columns, std::size_t busColumns);

/// True if a number key can have the value.
[[nodiscard]] bool canHave(const LayoutKey& key, std::string_view value);

}  // namespace kavu
