// The calibration data sheet: what it says, and how it is printed.
#pragma once

#include "drawing/RecordedPage.h"
#include "reports/calibration/Calibration.h"
#include "reports/print/PaperSetup.h"
#include "reports/print/PrintedPage.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class PdfSurface;
class ReportLayout;

/// The fonts of a sheet.
enum class SheetFont { Caption, Table, Result };

struct SheetText {
    SheetFont font = SheetFont::Caption;
    std::string text{};  ///< whole lines
};

/// The number of characters of the table that a line of a paper has room for.
[[nodiscard]] std::size_t sheetCharacters(const PaperSetup& paper);

/// The texts of a sheet in their order; `width` is the number of characters that the two halves of
/// the table of pairs must fit into. REQUIRES: the fit has not failed.
[[nodiscard]] std::vector<SheetText> sheetTexts(const DocumentContext& context,
                                                const Calibration& calibration, std::size_t width);

struct CalibrationSheet {
    Calibration calibration{};
    int page = 1;
    std::string title{};
    std::string left{};
    std::string right{};
    std::string pageText{};
    int pageLocation = 0;
    std::vector<SheetText> texts{};

    [[nodiscard]] std::string text() const;
};

/// The sheet of one calibration. REQUIRES: its fit has not failed.
[[nodiscard]] CalibrationSheet makeCalibrationSheet(const DocumentContext& context,
                                                    const ReportLayout& layout,
                                                    Calibration calibration, int page,
                                                    std::size_t width);
/// The sheets of these measurements. One whose fit fails is left out without a word, and takes no
/// page number. Stops when `parent`, who may be null, has cancelled; the sheets until then stay.
[[nodiscard]] std::vector<CalibrationSheet> makeCalibrationSheets(
    const DocumentContext& context, ConversionStore& store, const PcmFormat* format,
    const ReportLayout& layout, UserInterface* parent, const std::vector<std::string>& names,
    int startPage, std::size_t width);

/// The sheets as text, a form feed between them.
[[nodiscard]] std::string calibrationText(const std::vector<CalibrationSheet>& sheets);
/// The pages of the sheets, each on one of its own with its curve, its pairs and their errors.
/// Stops when `parent`, who may be null, has cancelled, at each row of a table and between sheets;
/// the pages until then stay. Message 406 ("Printer Error") if the paper has no orientation.
[[nodiscard]] PrintedDocument printSheetPages(const DocumentContext& context,
                                              const ReportLayout& layout,
                                              const std::vector<CalibrationSheet>& sheets,
                                              const PaperSetup& paper, UserInterface* parent);
/// The same as a PDF on the paper of the settings.
[[nodiscard]] std::string printCalibrationSheets(const DocumentContext& context,
                                                 const ReportLayout& layout,
                                                 const std::vector<CalibrationSheet>& sheets);

}  // namespace kavu
