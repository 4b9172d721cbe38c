// One press of "Generate": the reports that a layout has checked are made and given to where they
// go.
#pragma once

#include "core/files/IoStatus.h"
#include "reports/StreamReports.h"

#include <functional>
#include <string>
#include <string_view>

namespace kavu {

class Messages;
class UserInterface;

/// The numbers are those of the key of a layout.
enum class ReportDestination {
    ScreenWorkbook = 0,
    FileWorkbook,
    ScreenText,
    Printer,
    FileText,
};

/// Reports that are shown are files of the working store.
inline constexpr std::string_view kShownText = "KAVU9Report.txt";
inline constexpr std::string_view kShownWorkbook = "KAVU9Report.xml";

/// What shows reports. What is not set shows nothing.
struct ReportOutlets {
    /// Whether a file of the user may be written; it may be there already.
    std::function<bool(const std::string& path)> mayWrite{};
    std::function<void(const std::string& path)> showText{};
    /// False if no program opens it.
    std::function<bool(const std::string& path)> openWorkbook{};
    std::function<void(std::vector<ReportContent> reports)> print{};
};

/// Makes the delimited files first, then the reports, as the layout has them checked. False if a
/// path is missing ("Please enter a pathname"), if a file cannot be written (message 403, "Can't
/// open") or after a cancel: what was made of the frame until then is written nevertheless.
/// Message 404 drops one report.
bool generateReports(const ReportSource& source, const ReportOutlets& outlets);

/// Message 403 ("Error creating report") with "Can't open '%s'"; true if there was no failure.
bool reportOpened(const Messages& messages, UserInterface* parent, const IoStatus& status);

}  // namespace kavu
