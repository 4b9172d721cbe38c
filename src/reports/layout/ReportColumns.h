// The columns that a measurement report can have besides the name, in their order.
#pragma once

#include "reports/layout/LayoutKeys.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

struct DocumentContext;
class ReportLayout;

enum class ReportColumnId {
    Name,
    // Of a place in the frame.
    LocationType,
    FragmentNumber,
    WordLength,
    Mask,
    Parity,
    ParityOrder,
    TransferOrder,
    StartWord,
    StartFrame,
    EndWord,
    EndFrame,
    // Of a place in a bus message.
    BusAddress,
    BusName,
    MessageNumber,
    RemoteAddress,
    RemoteName,
    SubAddress,
    SubName,
    WordNumber,
    // Of the conversion record.
    RecordField,
    CommentString,
    ConversionType,
    ConversionData,
};

/// What is shown after the name of a column that comes from the comment of a record.
inline constexpr std::string_view kFromComment = " (from EU Comment)";

struct ReportColumn {
    ReportColumnId id = ReportColumnId::Name;
    std::string name{};    ///< as the list of columns shows it, without `kFromComment`
    std::string first{};   ///< the two lines of its head
    std::string second{};  ///< empty for a head of one line
    bool isNumber = false;
    std::string_view code{};  ///< of a field of a record
    std::string text{};       ///< that a line of the comment begins with

    /// As the list of columns shows it.
    [[nodiscard]] std::string shownName() const;
};

/// The first column of every report.
[[nodiscard]] ReportColumn nameColumn();
/// The columns that can be chosen, with one for each enabled string of comments.
[[nodiscard]] std::vector<ReportColumn> reportColumns(const DocumentContext& context, bool isBus);
/// "M3", or "M15533" of a bus; counts from 1.
[[nodiscard]] std::string columnKey(bool isBus, std::size_t number);
/// The name, and the columns that a layout has chosen.
[[nodiscard]] std::vector<ReportColumn> chosenColumns(const DocumentContext& context,
                                                      const ReportLayout& layout, bool isBus);
/// All keys of a layout, with those of all columns.
[[nodiscard]] std::vector<LayoutKey> layoutKeys(const DocumentContext& context);

}  // namespace kavu
