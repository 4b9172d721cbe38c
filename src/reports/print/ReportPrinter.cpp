#include "reports/print/ReportPrinter.h"

#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/SettingKeys.h"
#include "core/talk/UserInterface.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "reports/layout/ReportLayout.h"
#include "reports/print/PrintedPage.h"
#include "reports/writers/TextWriter.h"

#include <algorithm>
#include <cmath>

namespace kavu {

namespace {

constexpr std::size_t kTabWidth = 8;
/// No line is printed smaller than this, in points, to fit the page.
constexpr int kSmallestPoints = 5;
/// Of the letters of Courier, as a fraction of their height; the font is that of its metrics.
constexpr double kCourierWidth = 0.6001;
constexpr double kLineSpacing = 1.2;

/// Tabs as blanks up to the next stop.
std::string withoutTabs(std::string_view text, std::size_t start = 0) {
    std::string line;
    std::size_t width = start;
    for (const char c : text) {
        if (c == '\t') {
            const auto blanks = kTabWidth - width % kTabWidth;
            line.append(blanks, ' ');
            width += blanks;
        } else {
            line += c;
            width += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
        }
    }
    return line;
}

/// The lines of one report, before it is known how large they are printed.
class PrintedLines : public LineSink {
  public:
    struct Line {
        std::string text{};
        std::size_t caption = 0;  ///< bytes at its start that are a caption
        bool isHead = false;      ///< of a table, repeated on each page
        bool endsHead = false;    ///< the lines that follow have no head
    };

    void startReport(const ReportHead&) override {}
    void line(std::string_view text) override { add({.text = withoutTabs(text)}); }
    void captionLine(const ReportLine& line) override {
        auto text = withoutTabs(line.lead);
        const auto caption = text.size();
        text += withoutTabs(onOneLine(line.value), shownWidth(text));
        add({.text = std::move(text), .caption = caption});
    }
    /// The head has just been written.
    void setTableHead(const std::vector<std::string>& lines) override {
        for (std::size_t i = lines_.size() - std::min(lines.size(), lines_.size());
             i < lines_.size(); ++i) {
            lines_[i].isHead = true;
        }
        if (lines.empty() && !lines_.empty()) {
            lines_.back().endsHead = true;
        }
    }
    [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }
    [[nodiscard]] std::size_t widest() const { return widest_; }

  private:
    void add(Line line) {
        widest_ = std::max(widest_, shownWidth(line.text));
        lines_.push_back(std::move(line));
    }

    std::vector<Line> lines_{};
    std::size_t widest_ = 1;
};

/// Lines between two looks whether the user has cancelled.
constexpr std::size_t kPollLines = 100;

class ReportPrinter {
  public:
    ReportPrinter(PdfSurface& surface, const ReportLayout& layout, int startPage,
                  UserInterface* parent)
        : surface_(surface), layout_(layout), page_(startPage), parent_(parent) {}

    /// False after a cancel.
    bool print(const ReportContent& report) {
        frame_ = pageFrame(layout_, report.head.left, report.head.right);
        const int points = printedPoints(layout_.number(layout_key::kFont));
        PrintedLines lines;
        writeLines(report, charactersAt(points), lines, parent_);
        int size = points;
        while (size > kSmallestPoints && charactersAt(size) < lines.widest()) {
            --size;
        }
        setSize(size);
        beginPage();
        surface_.addOutline(onOneLine(report.head.title));
        std::vector<const PrintedLines::Line*> head;
        bool wasHead = false;
        bool isCancelled = false;
        std::size_t count = 0;
        for (const auto& line : lines.lines()) {
            if (++count % kPollLines == 0 && cancelRequested(parent_)) {
                isCancelled = true;
                break;
            }
            if (line.isHead && !wasHead) {
                head.clear();
            }
            wasHead = line.isHead;
            printLine(line, head);
            if (line.isHead) {
                head.push_back(&line);
            }
            if (line.endsHead) {
                head.clear();
            }
        }
        surface_.endPage();
        return !isCancelled;
    }
    /// Prints a text as it is.
    void printText(std::string_view text) {
        frame_ = {.numberText = "Page ^", .numberPlace = 2};
        setSize(printedPoints(0));
        for (const auto& page : splitAt(text, '\f')) {
            beginPage();
            for (const auto& line : splitLines(page)) {
                printLine({.text = withoutTabs(line)}, {});
            }
        }
        surface_.endPage();
    }

  private:
    static std::vector<std::string_view> splitAt(std::string_view text, char divider) {
        std::vector<std::string_view> parts;
        for (auto end = text.find(divider); end != std::string_view::npos;
             end = text.find(divider)) {
            parts.push_back(text.substr(0, end));
            text.remove_prefix(end + 1);
        }
        parts.push_back(text);
        return parts;
    }
    [[nodiscard]] std::size_t charactersAt(int points) const {
        return static_cast<std::size_t>(
            std::max(1.0, std::floor(surface_.area().width() / (points * kCourierWidth))));
    }

    void setSize(int points) {
        captions_ = {.family = "Arial", .height = static_cast<double>(points), .bold = true};
        values_ = {.family = "Courier", .height = static_cast<double>(points)};
        perLine_ = charactersAt(points);
        lineHeight_ = points * kLineSpacing;
    }

    void beginPage() {
        surface_.endPage();
        (void)surface_.startPage();
        room_ = drawPageFrame(surface_, frame_, page_++);
        surface_.setTextLine(room_.top);
    }

    void printLine(const PrintedLines::Line& line,
                   const std::vector<const PrintedLines::Line*>& head) {
        std::string_view rest = line.text;
        std::size_t caption = line.caption;
        do {
            if (surface_.textLine() + lineHeight_ > room_.bottom &&
                surface_.textLine() > room_.top) {
                beginPage();
                for (const auto* const each : head) {
                    drawPart(each->text, each->caption);
                }
            }
            const auto part = cutToShown(rest);
            drawPart(part, std::min(caption, part.size()));
            caption -= std::min(caption, part.size());
            rest.remove_prefix(part.size());
        } while (!rest.empty());
    }

    /// As many characters as a line has room for.
    [[nodiscard]] std::string_view cutToShown(std::string_view text) const {
        std::size_t count = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool begins = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
            if (begins && count++ == perLine_) {
                return text.substr(0, i);
            }
        }
        return text;
    }

    void drawPart(std::string_view text, std::size_t caption) {
        const double top = surface_.textLine();
        const auto first = text.find_first_not_of(' ');
        if (first != std::string_view::npos) {
            const double character = values_.height * kCourierWidth;
            if (caption > first) {
                surface_.text({room_.left + static_cast<double>(first) * character, top},
                              trimTrailingBlanks(text.substr(first, caption - first)), captions_);
            }
            const auto value = trimTrailingBlanks(text.substr(caption));
            if (!value.empty()) {
                const auto before = static_cast<double>(shownWidth(text.substr(0, caption)));
                surface_.text({room_.left + before * character, top}, value, values_);
            }
        }
        surface_.setTextLine(top + lineHeight_);
    }

    PdfSurface& surface_;
    const ReportLayout& layout_;
    int page_;
    UserInterface* parent_;
    PageFrame frame_{};
    DrawingFont captions_{};
    DrawingFont values_{};
    std::size_t perLine_ = 1;
    double lineHeight_ = 12;
    DrawingRect room_{};
};

}  // namespace

PdfSetup pdfSetup(const Clock& clock, std::string title) {
    const auto now = clock.now();
    return {.title = std::move(title),
            .author = std::string(kApplicationName),
            .created = formatPrintf("%4.4d-%2.2d-%2.2dT%2.2d:%2.2d:%2.2d", now.year, now.month,
                                    now.day, now.hour, now.minute, now.second)};
}

PrintedDocument printReportPages(const DocumentContext& context, const ReportLayout& layout,
                                 const std::vector<ReportContent>& reports, int startPage,
                                 const PaperSetup& paper, UserInterface* parent) {
    auto setup = pdfSetup(context.clock,
                          reports.empty() ? std::string() : onOneLine(reports.front().head.title));
    setup.paper = paperPoints(paper);
    setup.keepsPages = true;
    PdfSurface surface(setup);
    int page = startPage;
    for (const auto& report : reports) {
        setProgressText(parent, formatPrintf("Printing %s", onOneLine(report.head.title)));
        if (!ReportPrinter(surface, layout, page, parent).print(report)) {
            break;
        }
        page = startPage + surface.pages();
    }
    return surface.printed();
}

std::string printReports(const DocumentContext& context, const ReportLayout& layout,
                         const std::vector<ReportContent>& reports, int startPage) {
    return printReportPages(context, layout, reports, startPage,
                            readPaper(context.settings, PaperUse::Reports), nullptr)
        .pdf;
}

PrintedDocument printText(const DocumentContext& context, const std::string& title,
                          std::string_view text, const PaperSetup& paper) {
    auto setup = pdfSetup(context.clock, title);
    setup.paper = paperPoints(paper);
    setup.keepsPages = true;
    PdfSurface surface(setup);
    // The text is its own head; nothing of a layout is asked for.
    ProfileSettings none("");
    const ReportLayout layout(none);
    ReportPrinter(surface, layout, 1, nullptr).printText(text);
    return surface.printed();
}

}  // namespace kavu
