// Reports as the sheets of a workbook.
#pragma once

#include "reports/content/ReportContent.h"
#include "reports/writers/WorkbookWriter.h"

namespace kavu {

class UserInterface;

/// The most words of a frame on one sheet.
inline constexpr std::size_t kMostSheetWords = 254;

/// Writes a report as a sheet of its own; the frame of a stream of more than 254 words as several.
/// Stops when `parent`, who may be null, has cancelled; the rows until then stay.
void writeSheets(const ReportContent& report, WorkbookWriter& workbook,
                 UserInterface* parent = nullptr);

}  // namespace kavu
