// Reports on printed pages.
#pragma once

#include "drawing/CairoSurface.h"
#include "reports/content/ReportContent.h"

#include <string>
#include <vector>

namespace kavu {

struct DocumentContext;
class ReportLayout;

/// A PDF of the reports: captions in Arial, values and tables in Courier, an entry of the outline
/// for each report. Pages are A4, landscape; a table that is wider than that is printed smaller,
/// and what does not fit even so goes on in the next line.
[[nodiscard]] std::string printReports(const DocumentContext& context, const ReportLayout& layout,
                                       const std::vector<ReportContent>& reports, int startPage);
/// What a PDF says of itself: this title, the program as its author, the present date.
[[nodiscard]] PdfSetup pdfSetup(const DocumentContext& context, std::string title);

}  // namespace kavu
