// The reports of one stream, each made by its own generator.
#pragma once

#include "reports/content/MeasurementReport.h"
#include "reports/content/ReportContent.h"

#include <optional>
#include <string>
#include <vector>

namespace kavu {

/// What the reports are made of: a stream in memory, or a bus group.
struct ReportSource {
    DocumentContext& context;
    const ReportLayout& layout;
    ConversionStore& conversions;
    UserInterface* parent = nullptr;     ///< may be null
    const PcmFormat* format = nullptr;   ///< null for a bus
    const BusDefinition* bus = nullptr;  ///< null for a stream with a format
};

/// The reports that a layout has checked, in the order in which they are made; those as delimited
/// files have boxes of their own. A bus has only the list of its measurements.
[[nodiscard]] std::vector<ReportKind> checkedReports(const ReportLayout& layout, bool isDelimited,
                                                     bool isBus);

/// Makes one report, with its status text. Nothing if the layout has a key that cannot be read
/// (message 404, "Unable able to detect"), if a bus has no such report, or after a cancel; but of
/// the frame what was made until then stays.
[[nodiscard]] std::optional<ReportContent> makeReport(const ReportSource& source, ReportKind kind);
/// The same as delimited text, which the attributes of a format do not have.
[[nodiscard]] std::optional<std::string> makeDelimitedReport(const ReportSource& source,
                                                             ReportKind kind);

}  // namespace kavu
