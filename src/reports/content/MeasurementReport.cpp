#include "reports/content/MeasurementReport.h"

#include "bus/definition/BusPlaces.h"
#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "reports/content/MeasurementRows.h"
#include "reports/content/RecordValues.h"
#include "reports/layout/ReportLayout.h"

#include <algorithm>
#include <unordered_set>

namespace kavu {

namespace {

constexpr const char* kMeasurementSheet = "Measurement Report";

/// The value of a column that is not of the conversion record.
std::string placeValue(const MeasurementPlace& place, ReportColumnId column) {
    switch (column) {
        case ReportColumnId::Name:
            return std::string(place.name);
        case ReportColumnId::LocationType:
            return std::string(place.type);
        case ReportColumnId::FragmentNumber:
            return std::to_string(place.fragment);
        case ReportColumnId::WordLength:
            return std::to_string(place.length);
        case ReportColumnId::Mask:
            return std::string(place.mask);
        case ReportColumnId::Parity:
            return std::string(place.parity);
        case ReportColumnId::ParityOrder:
            return std::string(place.parityOrder);
        case ReportColumnId::TransferOrder:
            return std::string(place.transferOrder);
        case ReportColumnId::StartWord:
            return std::to_string(place.startWord);
        case ReportColumnId::StartFrame:
            return std::to_string(place.startFrame);
        case ReportColumnId::EndWord:
            return std::to_string(place.endWord);
        case ReportColumnId::EndFrame:
            return std::to_string(place.endFrame);
        default:
            return {};
    }
}

std::string placeValue(const BusMeasurementPlace& place, ReportColumnId column) {
    switch (column) {
        case ReportColumnId::Name:
            return place.name;
        case ReportColumnId::BusAddress:
            return place.busAddress;
        case ReportColumnId::BusName:
            return place.busName;
        case ReportColumnId::MessageNumber:
            return shownBusNumber(place.messageNumber);
        case ReportColumnId::RemoteAddress:
            return place.remoteAddress;
        case ReportColumnId::RemoteName:
            return place.remoteName;
        case ReportColumnId::SubAddress:
            return place.subAddress;
        case ReportColumnId::SubName:
            return place.subName;
        case ReportColumnId::WordNumber:
            return shownBusNumber(place.wordNumber);
        case ReportColumnId::FragmentNumber:
            return shownBusNumber(place.fragment);
        case ReportColumnId::Mask:
            return place.mask;
        case ReportColumnId::Parity:
            return place.parity;
        case ReportColumnId::ParityOrder:
            return place.parityOrder;
        case ReportColumnId::TransferOrder:
            return place.transferOrder;
        default:
            return {};
    }
}

/// The columns of the table, with heads of two lines unless none has a second one.
void addTableColumns(ReportTable& table, const std::vector<ReportColumn>& columns) {
    table.headLines = 2;
    for (const auto& column : columns) {
        table.columns.push_back({.name = column.name,
                                 .head = {onOneLine(column.first), column.second},
                                 .isNumber = column.isNumber});
    }
}

/// The rows of places of either kind.
template <typename Place>
void addTableRows(ReportTable& table, const MeasurementReportParts& parts,
                  const std::vector<ReportColumn>& columns, const std::vector<Place>& places) {
    std::unordered_set<std::string_view> spellings;
    for (const auto& place : places) {
        spellings.insert(place.name);
    }
    std::unordered_set<std::string> names;
    for (const auto spelling : spellings) {
        names.insert(lowerAscii(spelling));
    }
    const RecordValues records(
        parts.conversions, columns, floatPrecision(parts.context.settings),
        [&](const std::string& lower) { return names.contains(lower); }, parts.parent);
    int shown = -1;
    table.rows.reserve(places.size());
    TableRow row;  // the copies of it have no more room than they need
    for (const auto& place : places) {
        const auto* const values = records.find(place.name);
        std::size_t next = 0;
        row.clearCells();
        for (const auto& column : columns) {
            if (!isOfRecord(column)) {
                row.add(placeValue(place, column.id));
            } else if (values != nullptr) {
                row.add((*values)[next++]);
            } else {
                row.add({});
            }
        }
        table.rows.push_back(row);
        const double percent =
            100.0 * static_cast<double>(table.rows.size()) / static_cast<double>(places.size());
        if (table.rows.size() % kRowsOfAPoll == 0 && cancelRequested(parts.parent)) {
            return;
        }
        if (static_cast<int>(percent) != shown) {
            shown = static_cast<int>(percent);
            setStatusText(parts.parent, formatPrintf("Generating Report: (%.0f%%)", percent));
            setProgressBar(parts.parent, percent);
            yieldToInterface(parts.parent);
            if (cancelRequested(parts.parent)) {
                return;
            }
        }
    }
}

ReportContent emptyReport(const MeasurementReportParts& parts, std::string_view link) {
    return {
        .kind = ReportKind::Measurements,
        .head = reportHead(parts.context, parts.layout, link, layout_key::kMeasurementTitle,
                           layout_key::kMeasurementLeft, layout_key::kMeasurementRight),
        .sheet = kMeasurementSheet,
    };
}

}  // namespace

ReportContent makeMeasurementReport(const MeasurementReportParts& parts, const PcmFormat& format) {
    auto report = emptyReport(parts, format.streamName);
    const auto columns = chosenColumns(parts.context, parts.layout, false);
    addTableColumns(report.table, columns);
    auto places =
        collectPlaces(format, parts.layout.isChecked(layout_key::kFirstLocationOnly), parts.parent);
    setStatusText(parts.parent, "Sorting Measurement Names");
    const auto sort = parts.layout.number(layout_key::kSort) == 1 ? MeasurementSort::Name
                                                                  : MeasurementSort::Place;
    if (sortPlaces(places, sort, parts.parent) && mergePlaces(places, parts.parent)) {
        addTableRows(report.table, parts, columns, places);
    }
    return report;
}

ReportContent makeBusReport(const MeasurementReportParts& parts, const BusDefinition& definition) {
    auto report = emptyReport(parts, definition.link);
    const auto columns = chosenColumns(parts.context, parts.layout, true);
    addTableColumns(report.table, columns);
    auto places = listBusPlaces(definition);
    setStatusText(parts.parent, "Sorting Measurement Names");
    sortBusPlaces(places, static_cast<BusPlaceSort>(parts.layout.number(layout_key::kSort)));
    addTableRows(report.table, parts, columns, places);
    return report;
}

}  // namespace kavu
