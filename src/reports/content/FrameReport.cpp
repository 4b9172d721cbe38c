#include "reports/content/FrameReport.h"

#include "core/TmatsDocument.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "pcm/PcmFormat.h"
#include "reports/layout/ReportLayout.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace kavu {

namespace {

constexpr std::string_view kNotSpecified = "(not specified)";
constexpr const char* kSheet = "PCM Major Frame";

std::string orNotSpecified(std::string_view value) {
    return std::string(value.empty() ? kNotSpecified : value);
}

/// The names at the places of a frame.
class FrameNames {
  public:
    explicit FrameNames(const PcmFormat& format) : format_(format) {}

    /// The counter of the word, in frame 1; the measurements, each once; without any the subframe
    /// of the word, in frame 1.
    const std::vector<std::string_view>& at(int fwp, int fn) {
        names_.clear();
        if (const auto* const counter = counterAt(fwp); counter != nullptr && fn == 1) {
            names_.push_back(counter->name);
        }
        addMeasurements(fwp, fn);
        if (const auto* const subframe = subframeAt(fwp);
            names_.empty() && fn == 1 && subframe != nullptr && !subframe->hidden) {
            names_.push_back(subframe->name);
        }
        return names_;
    }
    const std::vector<std::string_view>& measurementsAt(int fwp, int fn) {
        names_.clear();
        addMeasurements(fwp, fn);
        return names_;
    }

    [[nodiscard]] const IdCounter* counterAt(int fwp) const {
        return format_.wordType(fwp) == WordType::IdCounter ? format_.idCounterOfWord(fwp)
                                                            : nullptr;
    }
    [[nodiscard]] const Subframe* subframeAt(int fwp) const {
        return format_.wordType(fwp) == WordType::Subframe ? format_.subframeOfWord(fwp) : nullptr;
    }
    /// In how many frames the word is shown when each goes down to its own depth.
    [[nodiscard]] int shownDepth(int fwp) const {
        return format_.wordType(fwp) == WordType::IdCounter ? 1 : format_.wordDepth(fwp);
    }
    /// True for a word that the frames tell apart. A hidden subframe that has the same in all of
    /// them is a plain word to the reader.
    [[nodiscard]] bool isSubcommutated(int fwp) {
        const auto* const subframe = subframeAt(fwp);
        const int depth = shownDepth(fwp);
        if (format_.wordType(fwp) != WordType::Subframe || depth <= 1) {
            return false;
        }
        if (subframe == nullptr || !subframe->hidden) {
            return true;
        }
        const auto first = measurementsAt(fwp, 1);
        for (int fn = 2; fn <= depth; ++fn) {
            if (measurementsAt(fwp, fn) != first) {
                return true;
            }
        }
        return false;
    }

  private:
    void addMeasurements(int fwp, int fn) {
        const auto& cells = format_.cells();
        numbers_.clear();
        for (auto at = format_.cellAtFrame(fwp, fn); at; at = cells.next(at)) {
            if (!cells.isMeasurement(at)) {
                continue;
            }
            const int number = cells.nameNumber(at);
            if (std::find(numbers_.begin(), numbers_.end(), number) == numbers_.end()) {
                numbers_.push_back(number);
                names_.push_back(cells.measurement(at).name);
            }
        }
    }

    const PcmFormat& format_;
    std::vector<std::string_view> names_{};
    std::vector<int> numbers_{};
};

/// The names with a mark between them; or the first, with a "*" if there are more.
std::string joined(const std::vector<std::string_view>& names, bool showsAll, char mark) {
    std::string text;
    if (names.empty()) {
        return text;
    }
    text = names.front();
    if (!showsAll) {
        return names.size() > 1 ? text + "*" : text;
    }
    for (std::size_t i = 1; i < names.size(); ++i) {
        text += mark;
        text += names[i];
    }
    return text;
}

/// The status of a report that goes through something, and whether it goes on.
class FrameProgress {
  public:
    FrameProgress(UserInterface* parent, int steps) : parent_(parent), steps_(steps) {}

    [[nodiscard]] bool next() {
        if (parent_ == nullptr) {
            return true;
        }
        const double percent = 100.0 * ++done_ / std::max(1, steps_);
        if (static_cast<int>(percent) != shown_) {
            shown_ = static_cast<int>(percent);
            parent_->setStatusText(formatPrintf("Creating Major Frame Report (%.0f%%)", percent));
            parent_->setProgressBar(percent);
        }
        parent_->yieldToInterface();
        return !parent_->cancelRequested();
    }

  private:
    UserInterface* parent_;
    int steps_;
    int done_ = 0;
    int shown_ = -1;
};

class FrameReportMaker {
  public:
    FrameReportMaker(const PcmFormat& format, const FrameReportOptions& options,
                     UserInterface* parent)
        : format_(format), options_(options), parent_(parent), names_(format) {}

    void make(ReportTable& table) {
        table.isGrid = true;
        for (int fwp = 1; fwp < format_.wordsPerMinorFrame; ++fwp) {
            const auto number = std::to_string(fwp);
            table.columns.push_back({.name = number, .head = {number}, .isNumber = true});
        }
        if (options_.style == FrameReportStyle::SingleRow) {
            makeSingleRow(table);
        } else {
            makeGrid(table);
        }
    }

  private:
    void makeGrid(ReportTable& table) {
        const bool isToDepth = options_.style == FrameReportStyle::ToDepth;
        FrameProgress progress(parent_, format_.numberOfFrames);
        std::size_t last = 0;  // of the rows that hold something
        for (int fn = 1; fn <= format_.numberOfFrames; ++fn) {
            TableRow row(std::to_string(fn));
            bool holds = false;
            for (int fwp = 1; fwp < format_.wordsPerMinorFrame; ++fwp) {
                const auto text =
                    isToDepth && fn > names_.shownDepth(fwp) ? std::string() : cellText(fwp, fn);
                row.add(text);
                holds = holds || !text.empty();
            }
            if (holds || !options_.isCompact) {
                table.rows.push_back(std::move(row));
            }
            last = holds ? table.rows.size() : last;
            if (!progress.next()) {
                break;
            }
        }
        if (isToDepth) {
            table.rows.resize(last);
        }
    }

    void makeSingleRow(ReportTable& table) {
        FrameProgress progress(parent_, format_.wordsPerMinorFrame - 1);
        TableRow row;
        bool holds = false;
        for (int fwp = 1; fwp < format_.wordsPerMinorFrame; ++fwp) {
            if (names_.isSubcommutated(fwp)) {
                WordList list = listOf(fwp);
                holds = holds || std::any_of(list.lines.begin(), list.lines.end(),
                                             [](const auto& line) { return !line.ends_with('='); });
                row.add(formatPrintf("(Depth=%d)", names_.shownDepth(fwp)));
                table.lists.push_back(std::move(list));
            } else {
                const auto text = singleCell(fwp);
                row.add(text);
                holds = holds || !text.empty();
            }
            if (!progress.next()) {
                table.columns.resize(static_cast<std::size_t>(fwp));
                break;
            }
        }
        if (!holds && options_.isCompact) {
            table.lists.clear();
            return;
        }
        table.rows.push_back(std::move(row));
    }

    std::string cellText(int fwp, int fn) {
        return joined(names_.at(fwp, fn), options_.showsAllNames, '\n');
    }

    /// A word that is the same in all frames.
    std::string singleCell(int fwp) {
        if (names_.counterAt(fwp) == nullptr) {
            return cellText(fwp, 1);
        }
        const auto measurements =
            joined(names_.measurementsAt(fwp, 1), options_.showsAllNames, '\n');
        return "(ID Counter)" + (measurements.empty() ? "" : "\n" + measurements);
    }

    WordList listOf(int fwp) {
        WordList list{.column = static_cast<std::size_t>(fwp) - 1,
                      .heading = formatPrintf("FWP %d:", fwp)};
        for (int fn = 1; fn <= names_.shownDepth(fwp); ++fn) {
            const auto& names = names_.at(fwp, fn);
            const auto start = std::to_string(fn) + "=";
            if (names.empty()) {
                if (!options_.isCompact) {
                    list.lines.push_back(start);
                }
            } else if (!options_.showsAllNames) {
                list.lines.push_back(start + joined(names, false, '\n'));
            } else {
                for (const auto name : names) {
                    list.lines.push_back(start + std::string(name));
                }
            }
        }
        return list;
    }

    const PcmFormat& format_;
    const FrameReportOptions& options_;
    UserInterface* parent_;
    FrameNames names_;
};

}  // namespace

std::optional<FrameReportOptions> readFrameOptions(const ReportLayout& layout,
                                                   const Messages& messages,
                                                   UserInterface* parent) {
    const auto style = layout.option(layout_key::kFrameStyle, messages, parent);
    if (!style) {
        return std::nullopt;
    }
    const auto allNames = layout.option(layout_key::kFrameAllNames, messages, parent);
    if (!allNames) {
        return std::nullopt;
    }
    const auto compact = layout.option(layout_key::kFrameCompact, messages, parent);
    if (!compact) {
        return std::nullopt;
    }
    return FrameReportOptions{static_cast<FrameReportStyle>(*style), *allNames != 0, *compact != 0};
}

ReportContent makeFrameReport(const DocumentContext& context, const ReportLayout& layout,
                              const PcmFormat& format, const FrameReportOptions& options,
                              UserInterface* parent) {
    ReportContent report{
        .kind = ReportKind::Frame,
        .head = reportHead(context, layout, format.streamName, layout_key::kFrameTitle,
                           layout_key::kFrameLeft, layout_key::kFrameRight),
        .sheet = kSheet};
    report.lines = {
        {.lead = "Frame Sync Pattern:\t",
         .value = orNotSpecified(format.syncPattern),
         .isOnPaperOnly = true},
        {.lead = "Bit Rate:\t\t", .value = orNotSpecified(format.bitRate), .isOnPaperOnly = true},
        {.isOnPaperOnly = true}};
    FrameReportMaker(format, options, parent).make(report.table);
    return report;
}

std::string delimitedFrame(const PcmFormat& format, bool showsAllNames, UserInterface* parent) {
    FrameNames names(format);
    FrameProgress progress(parent, format.numberOfFrames);
    std::string text;
    for (int fn = 1; fn <= format.numberOfFrames; ++fn) {
        for (int fwp = 1; fwp < format.wordsPerMinorFrame; ++fwp) {
            text += fwp > 1 ? ";" : "";
            text += onOneLine(joined(names.at(fwp, fn), showsAllNames, '/'));
        }
        text += '\n';
        if (!progress.next()) {
            break;
        }
    }
    return text;
}

}  // namespace kavu
