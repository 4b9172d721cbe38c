// The major frame of a stream: which measurement is at each word and frame.
#pragma once

#include "reports/content/ReportContent.h"

#include <optional>
#include <string>

namespace kavu {

struct DocumentContext;
class Messages;
class PcmFormat;
class ReportLayout;
class UserInterface;

enum class FrameReportStyle {
    WholeFrame = 1,  ///< a grid of all words and frames
    ToDepth,         ///< a grid in which a word is shown down to its own depth
    SingleRow,       ///< one row, and lists of the frames of subcommutated words
};

struct FrameReportOptions {
    FrameReportStyle style = FrameReportStyle::WholeFrame;
    bool showsAllNames = true;  ///< of a place; else the first with a "*"
    bool isCompact = true;      ///< without the rows of frames that hold nothing
};

/// The options of a layout; nothing, with message 404 ("Unable able to detect"), if one of them
/// cannot be read.
[[nodiscard]] std::optional<FrameReportOptions> readFrameOptions(const ReportLayout& layout,
                                                                 const Messages& messages,
                                                                 UserInterface* parent);

/// The report of the stream in memory. After a cancel, which `parent` knows, it has what was
/// made until then. Status "Creating Major Frame Report (%.0f%%)".
[[nodiscard]] ReportContent makeFrameReport(const DocumentContext& context,
                                            const ReportLayout& layout, const PcmFormat& format,
                                            const FrameReportOptions& options,
                                            UserInterface* parent);

/// The frame as delimited text: a line for each frame, a field for each word, names divided by "/".
/// No line is left out. Status and cancel as above.
[[nodiscard]] std::string delimitedFrame(const PcmFormat& format, bool showsAllNames,
                                         UserInterface* parent);

}  // namespace kavu
