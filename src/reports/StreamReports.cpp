#include "reports/StreamReports.h"

#include "core/TmatsDocument.h"
#include "core/talk/UserInterface.h"
#include "pcm/PcmFormat.h"
#include "reports/content/FormatReport.h"
#include "reports/content/FrameReport.h"
#include "reports/layout/ReportLayout.h"
#include "reports/writers/TextWriter.h"

#include <array>

namespace kavu {

namespace {

struct CheckedKind {
    ReportKind kind;
    std::string_view key;
    std::string_view delimitedKey;
};
constexpr auto kCheckedKinds = std::to_array<CheckedKind>({
    {ReportKind::Format, layout_key::kFormat, {}},
    {ReportKind::Frame, layout_key::kFrame, layout_key::kFrameDelimited},
    {ReportKind::Measurements, layout_key::kMeasurements, layout_key::kMeasurementsDelimited},
});

/// The list of measurements; nothing after a cancel.
std::optional<ReportContent> makeMeasurements(const ReportSource& source) {
    const MeasurementReportParts parts{source.context, source.layout, source.conversions,
                                       source.parent};
    auto report = source.bus != nullptr ? makeBusReport(parts, *source.bus)
                                        : makeMeasurementReport(parts, *source.format);
    return cancelRequested(source.parent) ? std::nullopt : std::optional(std::move(report));
}

}  // namespace

std::vector<ReportKind> checkedReports(const ReportLayout& layout, bool isDelimited, bool isBus) {
    std::vector<ReportKind> kinds;
    for (const auto& each : kCheckedKinds) {
        const auto key = isDelimited ? each.delimitedKey : each.key;
        if (!key.empty() && layout.isChecked(key) &&
            (!isBus || each.kind == ReportKind::Measurements)) {
            kinds.push_back(each.kind);
        }
    }
    return kinds;
}

std::optional<ReportContent> makeReport(const ReportSource& source, ReportKind kind) {
    if (kind == ReportKind::Measurements) {
        setStatusText(source.parent, "Creating Measurement Report");
        return makeMeasurements(source);
    }
    if (source.format == nullptr) {
        return std::nullopt;
    }
    if (kind == ReportKind::Format) {
        setStatusText(source.parent, "Creating PCM Format Report");
        return makeFormatReport(source.context, source.layout, *source.format);
    }
    setStatusText(source.parent, "Creating Major Frame Report");
    const auto options = readFrameOptions(source.layout, source.context.messages, source.parent);
    return options ? std::optional(makeFrameReport(source.context, source.layout, *source.format,
                                                   *options, source.parent))
                   : std::nullopt;
}

std::optional<std::string> makeDelimitedReport(const ReportSource& source, ReportKind kind) {
    if (kind == ReportKind::Measurements) {
        setStatusText(source.parent, "Creating ASCII Measurement Report");
        const auto report = makeMeasurements(source);
        return report ? std::optional(delimitedTable(report->table)) : std::nullopt;
    }
    if (kind == ReportKind::Format || source.format == nullptr) {
        return std::nullopt;
    }
    setStatusText(source.parent, "Creating ASCII Major Frame Report");
    const auto allNames =
        source.layout.option(layout_key::kFrameAllNames, source.context.messages, source.parent);
    return allNames ? std::optional(delimitedFrame(*source.format, *allNames != 0, source.parent))
                    : std::nullopt;
}

}  // namespace kavu
