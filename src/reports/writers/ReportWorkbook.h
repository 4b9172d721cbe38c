// Reports as the sheets of a workbook.
#pragma once

#include "reports/content/ReportContent.h"
#include "reports/writers/WorkbookWriter.h"

namespace kavu {

/// The most words of a frame on one sheet.
inline constexpr std::size_t kMostSheetWords = 254;

/// Writes a report as a sheet of its own; the frame of a stream of more than 254 words as several.
void writeSheets(const ReportContent& report, WorkbookWriter& workbook);

}  // namespace kavu
