// The attributes of a stream, as its sheet has them.
#pragma once

#include "reports/content/ReportContent.h"

namespace kavu {

struct DocumentContext;
class PcmFormat;
class ReportLayout;

/// The report of the stream in memory: sections of captions with the texts of their values.
[[nodiscard]] ReportContent makeFormatReport(const DocumentContext& context,
                                             const ReportLayout& layout, const PcmFormat& format);

}  // namespace kavu
