// The commands of reports and their layouts.
#pragma once

#include "cli/Commands.h"
#include "reports/layout/ReportLayout.h"

#include <memory>
#include <string_view>

namespace kavu::cli {

/// True for a command of `layout` and for `workbook`, which open no document.
[[nodiscard]] bool isLayoutCommand(Command command);
[[nodiscard]] bool layoutCommand(CommandContext& context, CommandOutput& output);
/// `workbook`
[[nodiscard]] bool workbookCommand(CommandContext& context, CommandOutput& output);

/// Whether the output of the line may be written.
[[nodiscard]] bool prepareReport(CommandContext& context);
/// `report`
[[nodiscard]] bool reportCommand(CommandContext& context, CommandOutput& output);

/// The same for a command that may have no output.
[[nodiscard]] bool prepareCalibration(CommandContext& context);
/// `calibration`
[[nodiscard]] bool calibrationCommand(CommandContext& context, CommandOutput& output);
/// `plots`
[[nodiscard]] bool plotsCommand(CommandContext& context, CommandOutput& output);
/// False with message 161 ("a number greater than") for a first page below 1.
[[nodiscard]] bool isFirstPage(CommandContext& context);

/// The layout of the line: that of its file, else that of the settings.
class LineLayout {
  public:
    explicit LineLayout(CommandContext& context);
    /// False if the file of the line could not be read, which has been reported.
    [[nodiscard]] bool isOpen() const { return layout_ != nullptr; }
    /// REQUIRES: open.
    [[nodiscard]] const ReportLayout& layout() const { return *layout_; }

  private:
    LayoutFile file_;
    std::unique_ptr<ReportLayout> layout_;
};

/// Writes the output of the line: message 403 ("Error creating report") if that failed.
[[nodiscard]] bool writeReport(CommandContext& context, CommandOutput& output,
                               std::string_view bytes);

}  // namespace kavu::cli
