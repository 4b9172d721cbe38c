// The keys of `kavu.ini`: their names, defaults and ranges. Keys whose names are composed at
// run time are not among them: the files opened last, the pages of sheets, the strings of
// comments, the looks of plots.
#pragma once

#include <limits>
#include <span>
#include <string_view>
#include <variant>

namespace kavu {

/// The main section of `kavu.ini`, and the head of the working store's name.
inline constexpr std::string_view kApplicationName = "KAVU-9";

/// A number. One outside `least` to `most` reads as the nearer of the two.
struct IntKey {
    std::string_view name;
    int otherwise = 0;  ///< without a value
    int least = std::numeric_limits<int>::min();
    int most = std::numeric_limits<int>::max();
    std::string_view section = kApplicationName;
};
/// A choice of two: 0 is no, any other number yes. Written as 0 or 1.
struct FlagKey {
    std::string_view name;
    bool otherwise = false;  ///< without a value
    std::string_view section = kApplicationName;
};
struct TextKey {
    std::string_view name;
    std::string_view otherwise = {};  ///< without a value
    std::string_view section = kApplicationName;
};

namespace setting {

// --- Documents
inline constexpr FlagKey kCreateBackup{"CreateBackup", true};
/// Comments of a file, its `COMMENT:` commands, stay where they are.
inline constexpr FlagKey kKeepComments{"KeepComments"};
/// 1: a save overwrites the file itself, 0: a complete new file takes its place.
inline constexpr FlagKey kSaveInPlace{"SaveInPlace"};
inline constexpr FlagKey kCheckDuplicates{"CheckForDupMeasurements", true};
inline constexpr IntKey kOpenFilter{"OpenFilterIndex", 1};
/// A year or its two digits. Without a value the latest, which is then written to the
/// file.
inline constexpr TextKey kInputEdition{"IRIGInputVersion"};
inline constexpr TextKey kOutputEdition{"IRIGOutputVersion"};
/// 1: save in the edition of the file, 2: in `kOutputEdition`.
inline constexpr IntKey kOutputMethod{"IRIGOutputMethod", 1};
inline constexpr TextKey kImportPrefix{"Prefix", {}, "StreamImport"};
inline constexpr TextKey kImportSuffix{"Suffix", {}, "StreamImport"};

// --- Conversion records
inline constexpr IntKey kFloatPrecision{"FloatPrecision", 8, 0, 40};
inline constexpr FlagKey kCheckSampleRates{"ChkSR"};
inline constexpr IntKey kSampleRatePrecision{"SRPrec", 2, 0};
inline constexpr FlagKey kWriteUpdates{"EnableUpd"};
inline constexpr FlagKey kAppendUpdates{"UpdAppend", true};
inline constexpr TextKey kUpdatePath{"UpdPath"};
inline constexpr IntKey kCommentStrings{"C", 0, 0, 1000, "EUComment"};
// The values of a new record.
inline constexpr TextKey kConversionClassification{"CTRD4"};
inline constexpr TextKey kContactName{"CPOC1"};
inline constexpr TextKey kContactAgency{"CPOC2"};
inline constexpr TextKey kContactAddress{"CPOC3"};
inline constexpr TextKey kContactTelephone{"CPOC4"};
inline constexpr TextKey kConversionLinkType{"CMN4"};
inline constexpr TextKey kBinaryFormat{"CBFM", "UNS"};
inline constexpr TextKey kConversionType{"CDCT", "NON"};
/// The record that another one was copied from last.
inline constexpr TextKey kLastCopied{"CopyEUDefsFrom"};

// --- Fits and plots
inline constexpr IntKey kFitOrderLimit{"LSBFMaxOrder", 5, 1, 10};
inline constexpr FlagKey kUseBestFit{"UseLSBFSolution"};
inline constexpr FlagKey kCurveAllCounts{"CurveAllPairs"};
inline constexpr IntKey kCountBits{"CurveDefBits", 16};
inline constexpr FlagKey kSortPairs{"PRSSort"};
inline constexpr FlagKey kShowSeries{"DoRCal"};
inline constexpr FlagKey kShowPlot{"WantsPlot"};

// --- Measurements
/// 1: new measurements have word/frame locations, 0: the older types.
inline constexpr IntKey kDefinitionMode{"WdFrCreation", 1};
inline constexpr TextKey kParity{"DMN1", "DE"};
inline constexpr TextKey kParityTransferOrder{"DMN2", "D"};
inline constexpr TextKey kTransferOrder{"DMN3", "D"};
inline constexpr TextKey kFilterOverwrite{"DMFOT", "N"};
inline constexpr TextKey kMask{"DMask", "FW"};
inline constexpr TextKey kWordFrameMask{"DFragWDFR", "FW"};
inline constexpr TextKey kFragmentMask{"DFragM"};  ///< without a value that of `kMask`
inline constexpr FlagKey kHexadecimalMasks{"HexBM"};
inline constexpr FlagKey kHexadecimalPattern{"HexFSP"};

// --- A new measurement of a bus, and its location
inline constexpr TextKey kBusParity{"BMN1"};
inline constexpr TextKey kBusParityOrder{"BMN2"};
inline constexpr TextKey kBusOverwrite{"BBMEFOT"};
inline constexpr TextKey kBusWordNumber{"BMWN"};
inline constexpr TextKey kBusTransferOrder{"BMTO"};
inline constexpr FlagKey kBusFullWord{"BMBMYes", true};

// --- The measurement database
inline constexpr TextKey kDatabasePath{"MDB"};
/// 0: delimited text of 28 columns, 1: of 36, 2: XML.
inline constexpr IntKey kDatabaseVersion{"MDBVer", 2, 0, 2};
/// The functions of the database are offered.
inline constexpr FlagKey kDatabaseEnabled{"MDBEnabled"};
inline constexpr FlagKey kStoreInDatabase{"SaveMDB"};
inline constexpr IntKey kDatabaseAddsRoot{"MDBAddRoot"};
inline constexpr IntKey kDatabaseAddsChildren{"MDBAddChildren"};
inline constexpr FlagKey kViewDatabase{"Enabled", false, "ViewMdb"};

// --- A new stream, by the field of the P group
inline constexpr TextKey kStreamType{"PTF", "ONE"};
inline constexpr TextKey kStreamCode{"PD1", "NRZ-L"};
inline constexpr TextKey kStreamBitRate{"PD2", "0"};
inline constexpr TextKey kStreamEncryption{"PD3", "U"};
inline constexpr TextKey kStreamPolarity{"PD4", "N"};
inline constexpr TextKey kStreamPolarityCorrection{"PD5", "Y"};
inline constexpr TextKey kStreamDirection{"PD6", "N"};
inline constexpr TextKey kStreamRandomized{"PD7", "N"};
inline constexpr TextKey kStreamRandomizerLength{"PD8", "N/A"};
inline constexpr IntKey kStreamWordLength{"PF1", 16};
inline constexpr TextKey kStreamTransferOrder{"PF2", "M"};
inline constexpr TextKey kStreamParity{"PF3", "NO"};
inline constexpr TextKey kStreamParityOrder{"PF4", "T"};
inline constexpr IntKey kStreamFrames{"PMFN", 1};
inline constexpr IntKey kStreamWords{"PMF1", 1};
inline constexpr TextKey kStreamSyncType{"PMF3", "FPT"};
inline constexpr TextKey kStreamSyncPattern{"PMF5", "11111110011010110010100001000000"};
inline constexpr TextKey kStreamSyncCriteria{"PSYNC1", "NS"};
inline constexpr TextKey kStreamSyncBits{"PSYNC2", "0"};
inline constexpr TextKey kStreamUnsyncCriteria{"PSYNC3", "NS"};
inline constexpr TextKey kStreamUnsyncBits{"PSYNC4", "0"};

// --- Reports on paper
/// Who calibrates, for the calibration sheets; a number, of a former use of the key, is no name.
inline constexpr TextKey kCalibratedBy{"CalBy"};
inline constexpr IntKey kPaper{"Paper", 0, 0, 1};  ///< 0: A4, 1: Letter
inline constexpr FlagKey kLandscapeReports{"ReportLandscape", true};
inline constexpr FlagKey kLandscapeSheets{"SheetLandscape"};

// --- Windows: where they were closed, and what they showed
/// The palette: "desktop", "light" or "dark".
inline constexpr TextKey kAppearance{"Appearance", "desktop"};
inline constexpr IntKey kWindowX{"X"};
inline constexpr IntKey kWindowY{"Y"};
inline constexpr IntKey kWindowWidth{"DX"};
inline constexpr IntKey kWindowHeight{"DY"};
inline constexpr FlagKey kExpandGeneral{"ExpG"};
inline constexpr FlagKey kExpandConversions{"ExpE"};
inline constexpr FlagKey kExpandRadio{"ExpR"};
inline constexpr FlagKey kExpandTape{"ExpT"};
inline constexpr IntKey kDisplayX{"PCMx", -1};
inline constexpr IntKey kDisplayY{"PCMy", -1};
inline constexpr IntKey kDisplayWidth{"PCMdx", -1};
inline constexpr IntKey kDisplayHeight{"PCMdy", -1};
inline constexpr IntKey kCellWidth{"PCMScroll", 30, 5, 150};  ///< in pixels
inline constexpr FlagKey kShowAllCells{"ShowAllCells"};
inline constexpr FlagKey kHighlightConversions{"HLMesWEU"};
inline constexpr IntKey kDisplayColours{"PCMColours", 0, 0, 1};  ///< 0: classic, 1: calm
/// Widths of the grid, the list and the database, in pixels.
inline constexpr TextKey kDisplayLayout{"PCMLayout"};
/// Of the list: the sorted column, and 1 for descending; then the widths of the columns.
inline constexpr TextKey kDisplayList{"PCMList"};
inline constexpr TextKey kDisplayPlaces{"PCMPlaces"};  ///< see `displayPlace`

}  // namespace setting

using SettingKey = std::variant<const IntKey*, const FlagKey*, const TextKey*>;
/// All of them, in the order in which they are defined.
[[nodiscard]] std::span<const SettingKey> settingKeys();

}  // namespace kavu
