// The measurements of a stream as a table: a row for each place, with the columns of a layout.
#pragma once

#include "reports/content/ReportContent.h"
#include "reports/layout/ReportColumns.h"

#include <vector>

namespace kavu {

struct BusDefinition;
struct DocumentContext;
class ConversionStore;
class PcmFormat;
class ReportLayout;
class UserInterface;

/// What both kinds of the report are made with.
struct MeasurementReportParts {
    const DocumentContext& context;
    const ReportLayout& layout;
    ConversionStore& conversions;
    UserInterface* parent = nullptr;  ///< may be null
};

/// The report of the stream in memory. A cancel, which the parent knows, leaves a part of it.
/// Status "Sorting Measurement Names" and "Generating Report: (%.0f%%)".
[[nodiscard]] ReportContent makeMeasurementReport(const MeasurementReportParts& parts,
                                                  const PcmFormat& format);
/// The report of the measurements of a bus group.
[[nodiscard]] ReportContent makeBusReport(const MeasurementReportParts& parts,
                                          const BusDefinition& definition);

}  // namespace kavu
