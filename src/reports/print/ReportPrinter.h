// Reports on printed pages.
#pragma once

#include "drawing/CairoSurface.h"
#include "reports/content/ReportContent.h"
#include "reports/print/PaperSetup.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class Clock;
struct DocumentContext;
class ReportLayout;
class UserInterface;

/// The pages of the reports: captions in Arial, values and tables in Courier, an entry of the
/// outline for each report. A table that is wider than the paper is printed smaller, and what does
/// not fit even so goes on in the next line. Stops when `parent`, who may be null, has cancelled;
/// the pages until then stay.
[[nodiscard]] PrintedDocument printReportPages(const DocumentContext& context,
                                               const ReportLayout& layout,
                                               const std::vector<ReportContent>& reports,
                                               int startPage, const PaperSetup& paper,
                                               UserInterface* parent);
/// The same as a PDF on the paper of the settings.
[[nodiscard]] std::string printReports(const DocumentContext& context, const ReportLayout& layout,
                                       const std::vector<ReportContent>& reports, int startPage);
/// The pages of a text in Courier, each form feed beginning another one.
[[nodiscard]] PrintedDocument printText(const DocumentContext& context, const std::string& title,
                                        std::string_view text, const PaperSetup& paper);
/// What a PDF says of itself: this title, the program as its author, the present date.
[[nodiscard]] PdfSetup pdfSetup(const Clock& clock, std::string title);

}  // namespace kavu
