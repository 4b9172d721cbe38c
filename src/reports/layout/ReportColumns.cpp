#include "reports/layout/ReportColumns.h"

#include "conversion/DefinitionEdit.h"
#include "core/TmatsDocument.h"
#include "reports/layout/ReportLayout.h"
#include "vocabulary/CGroupFields.h"

#include <array>

namespace kavu {

namespace {

/// A column whose texts are fixed.
struct FixedColumn {
    ReportColumnId id = ReportColumnId::Name;
    std::string_view name{};
    std::string_view first{};
    std::string_view second{};
    bool isNumber = false;
    std::string_view code{};
};

using ColumnId = ReportColumnId;

constexpr auto kFrameColumns = std::to_array<FixedColumn>({
    {ColumnId::LocationType, "Measurement Location Type", "Loc", "Type"},
    {ColumnId::FragmentNumber, "Fragment Number", "Frag", "Number", true},
    {ColumnId::WordLength, "Word Length", "Meas", "Len", true},
    {ColumnId::Mask, "Bit Mask", "Bitmask"},
    {ColumnId::Parity, "Parity", "Parity"},
    {ColumnId::ParityOrder, "Parity Transfer Order", "Parity", "Xfer"},
    {ColumnId::TransferOrder, "Measurement Transfer Order", "Meas", "Xfer"},
    {ColumnId::StartWord, "Start Word", "Start", "Word", true},
    {ColumnId::StartFrame, "Start Frame", "Start", "Frame", true},
    {ColumnId::EndWord, "End Word", "End", "Word", true},
    {ColumnId::EndFrame, "End Frame", "End", "Frame", true},
});

constexpr auto kBusColumns = std::to_array<FixedColumn>({
    {ColumnId::BusAddress, "Bus Address", "Bus", "Addr"},
    {ColumnId::BusName, "Bus Name", "Bus", "Name"},
    {ColumnId::MessageNumber, "Message Number", "Message", "Number"},
    {ColumnId::RemoteAddress, "Remote Terminal Address", "RT", "Addr"},
    {ColumnId::RemoteName, "Remote Terminal Name", "RT", "Name"},
    {ColumnId::SubAddress, "Sub Terminal Address", "ST", "Addr"},
    {ColumnId::SubName, "Sub Terminal Name", "ST", "Name"},
    {ColumnId::WordNumber, "Word Number", "Word", "Number", true},
    {ColumnId::FragmentNumber, "Fragment Number", "Frag", "Number", true},
    {ColumnId::Mask, "Bit Mask", "Bitmask"},
    {ColumnId::Parity, "Parity", "Parity"},
    {ColumnId::ParityOrder, "Parity Transfer Order", "Parity", "Xfer"},
    {ColumnId::TransferOrder, "Measurement Transfer Order", "Meas", "Xfer"},
});

constexpr auto kRecordColumns = std::to_array<FixedColumn>({
    {ColumnId::RecordField, "Description", "Description", {}, false, c::kMn1.code},
    {ColumnId::RecordField, "Sample Rate", "Sample", "Rate", false, c::kSr.code},
    {ColumnId::RecordField, "Telemetry Format", "Telem", "Format", false, c::kBfm.code},
    {ColumnId::RecordField, "EU Units", "EU", "Units", false, c::kMn3.code},
    {ColumnId::RecordField, "Origination Date", "Create", "Date", false, c::kTrd5.code},
    {ColumnId::RecordField, "High Value", "Hi Val", {}, false, c::kMot1.code},
    {ColumnId::RecordField, "Low Value", "Lo Val", {}, false, c::kMot2.code},
    {ColumnId::RecordField, "High Limit", "Hi Lim", {}, false, c::kMot3.code},
    {ColumnId::RecordField, "Low Limit", "Lo Lim", {}, false, c::kMot4.code},
});

constexpr auto kLastColumns = std::to_array<FixedColumn>({
    {ColumnId::ConversionType, "EU Conversion Type", "Conv", "Type"},
    {ColumnId::ConversionData, "EU Conversion Arguments", "Conv", "Data"},
});

void addFixed(std::vector<ReportColumn>& columns, std::span<const FixedColumn> fixed) {
    for (const auto& each : fixed) {
        columns.push_back({.id = each.id,
                           .name = std::string(each.name),
                           .first = std::string(each.first),
                           .second = std::string(each.second),
                           .isNumber = each.isNumber,
                           .code = each.code});
    }
}

}  // namespace

std::string ReportColumn::shownName() const {
    return id == ColumnId::CommentString ? name + std::string(kFromComment) : name;
}

ReportColumn nameColumn() {
    return {.id = ColumnId::Name, .name = "Name", .first = "Name"};
}

std::vector<ReportColumn> reportColumns(const DocumentContext& context, bool isBus) {
    std::vector<ReportColumn> columns;
    if (isBus) {
        addFixed(columns, kBusColumns);
    } else {
        addFixed(columns, kFrameColumns);
    }
    addFixed(columns, kRecordColumns);
    for (const auto& row : readCommentStrings(context)) {
        if (row.enabled) {
            columns.push_back({.id = ColumnId::CommentString,
                               .name = row.text,
                               .first = row.text,
                               .text = row.text});
        }
    }
    addFixed(columns, kLastColumns);
    return columns;
}

std::string columnKey(bool isBus, std::size_t number) {
    return std::string(isBus ? layout_key::kBusColumn : layout_key::kColumn) +
           std::to_string(number);
}

std::vector<ReportColumn> chosenColumns(const DocumentContext& context, const ReportLayout& layout,
                                        bool isBus) {
    std::vector<ReportColumn> chosen = {nameColumn()};
    std::size_t number = 0;
    for (auto& column : reportColumns(context, isBus)) {
        if (layout.isChecked(columnKey(isBus, ++number))) {
            chosen.push_back(std::move(column));
        }
    }
    return chosen;
}

std::vector<LayoutKey> layoutKeys(const DocumentContext& context) {
    return layoutKeys(reportColumns(context, false).size(), reportColumns(context, true).size());
}

}  // namespace kavu
