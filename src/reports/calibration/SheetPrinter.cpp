#include "conversion/PairSetFit.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Text.h"
#include "drawing/PartSurface.h"
#include "reports/calibration/CalibrationSheet.h"
#include "reports/content/ReportContent.h"
#include "reports/layout/ReportLayout.h"
#include "reports/print/ReportPrinter.h"
#include "vocabulary/CGroupFields.h"

#include <algorithm>

namespace kavu {

namespace {

constexpr double kTitlePoints = 14;
constexpr double kFilePoints = 9;
constexpr double kSheetGap = 8;
/// What the curve and the errors may take of the room of a page, and what they take at least: a low
/// page has more of its height left for them, as its texts are on the next one then.
struct PlotFractions {
    double share = 0.44;
    double least = 190;
    double width = 0.8;
};
constexpr PlotFractions kPortrait{};
constexpr PlotFractions kLandscape{.share = 0.62, .least = 230, .width = 0.86};
constexpr double kCurveShare = 0.68;  ///< of the plots, the rest is the errors
constexpr double kCurveHeight = 0.7;  ///< of its room, without labels and titles
constexpr double kErrorHeight = 0.68;
constexpr double kTabStop = 40;

DrawingFont fontOf(SheetFont font) {
    switch (font) {
        case SheetFont::Table:
            return {.family = "Courier", .height = 8, .bold = true};
        default:
            return {.family = "Arial", .height = 9, .bold = true};
    }
}

class SheetPrinter {
  public:
    SheetPrinter(PdfSurface& surface, const DocumentContext& context, const ReportLayout& layout,
                 UserInterface* parent)
        : surface_(surface), context_(context), layout_(layout), parent_(parent) {}

    /// False after a cancel, or message 406 ("Printer Error") if the paper has no orientation.
    bool print(const CalibrationSheet& sheet) {
        const auto wide = isLandscape(surface_);
        if (!wide) {
            context_.messages.show(parent_, 406, title::kError, kErrorBox,
                                   "Unable to retrieve paper orientation");
            return false;
        }
        fractions_ = *wide ? kLandscape : kPortrait;
        frame_ = pageFrame(layout_, sheet.left, sheet.right);
        page_ = sheet.page;
        beginPage();
        surface_.addOutline(sheet.calibration.name);
        printTitle(sheet);
        drawPlots(sheet);
        bool isWhole = true;
        for (const auto& part : sheet.texts) {
            isWhole = isWhole && printPart(part);
        }
        surface_.endPage();
        return isWhole;
    }

  private:
    void beginPage() {
        surface_.endPage();
        (void)surface_.startPage();
        room_ = drawPageFrame(surface_, frame_, page_);
        surface_.setTextLine(room_.top);
    }

    void printTitle(const CalibrationSheet& sheet) {
        const DrawingFont font{.family = "Arial", .height = kTitlePoints, .bold = true};
        for (const auto& line : splitLines(replaceAll(sheet.title, "\r\n", "\n"))) {
            const auto size = surface_.textSize(line, font);
            const double left = room_.left + std::max(0.0, (room_.width() - size.width) / 2);
            surface_.text({left, surface_.textLine()}, line, font);
            surface_.setTextLine(surface_.textLine() + size.height);
        }
        const auto head = reportHead(context_, layout_, {}, layout_key::kPlotTitle,
                                     layout_key::kPlotLeft, layout_key::kPlotRight);
        const DrawingFont small{.family = "Arial", .height = kFilePoints};
        const auto date = dateLine(head, "  ");
        surface_.text({room_.left, surface_.textLine()}, head.tmats, small);
        const auto size = surface_.textSize(date, small);
        surface_.text({room_.right - size.width, surface_.textLine()}, date, small);
        surface_.setTextLine(surface_.textLine() + size.height + kSheetGap);
    }

    /// The height of all texts, so that a sheet fits its page where that is possible.
    [[nodiscard]] double heightOfTexts(const CalibrationSheet& sheet) const {
        double height = 0;
        for (const auto& part : sheet.texts) {
            const auto lines = std::count(part.text.begin(), part.text.end(), '\n');
            height += static_cast<double>(lines) * lineHeight(fontOf(part.font));
        }
        return height;
    }
    [[nodiscard]] double lineHeight(const DrawingFont& font) const {
        return surface_.textSize("0", font).height;
    }

    void drawPlots(const CalibrationSheet& sheet) {
        const double top = surface_.textLine();
        const double rest = room_.bottom - top - heightOfTexts(sheet) - kSheetGap;
        const double most = std::max(fractions_.least, fractions_.share * room_.height());
        const double height =
            std::min(room_.bottom - top, std::clamp(rest, fractions_.least, most));
        const double middle = top + kCurveShare * height;
        const auto& calibration = sheet.calibration;
        Plot plot;
        plot.attributes = printedAttributes();
        FitDrawing drawing;
        drawing.units = calibration.field(c::kMn3.code);
        drawing.rescale = true;
        drawing.printing = true;
        drawing.widthFraction = fractions_.width;
        drawing.heightFraction = kCurveHeight;
        PartSurface curve(surface_, {room_.left, top, room_.right, middle});
        const auto scaled = fitScale(plot.attributes, calibration.result, calibration.input,
                                     calibration.options, drawing);
        (void)drawFit(plot, curve, calibration.result, calibration.input, calibration.options,
                      drawing);
        PartSurface errors(surface_, {room_.left, middle, room_.right, top + height});
        Plot residuals;
        residuals.attributes = residualScale(scaled, calibration.result);
        residuals.attributes.series[1].colour = 0;
        drawing.heightFraction = kErrorHeight;
        (void)drawResiduals(residuals, errors, calibration.result, drawing);
        surface_.setTextLine(top + height + kSheetGap);
    }

    /// As the settings have it; what they leave alike is told apart by marks and dashes.
    [[nodiscard]] PlotAttributes printedAttributes() const {
        PlotAttributes attributes;
        attributes.series[0] = {0, LineStyle::None, 1, PlotSymbol::FilledCircle};
        attributes.series[2] = {0x00FF00, LineStyle::Dash, 1, PlotSymbol::Cross};
        attributes.load(context_.settings, kApplicationName);
        auto& pairs = attributes.series[0];
        if (pairs.symbol == PlotSymbol::None) {
            pairs.symbol = PlotSymbol::FilledCircle;
            pairs.style = LineStyle::None;
        }
        return attributes;
    }

    bool printPart(const SheetText& part) {
        const auto font = fontOf(part.font);
        const double height = lineHeight(font);
        std::string_view rest = part.text;
        while (!rest.empty()) {
            if (part.font == SheetFont::Table && cancelRequested(parent_)) {
                return false;
            }
            const auto end = std::min(rest.find('\n'), rest.size());
            if (surface_.textLine() + height > room_.bottom) {
                beginPage();
            }
            printLine(rest.substr(0, end), font);
            rest.remove_prefix(std::min(rest.size(), end + 1));
        }
        return true;
    }

    /// The parts between tabs, each at the next stop; what has no room goes on in the next line,
    /// under its beginning.
    void printLine(std::string_view line, const DrawingFont& font) {
        double left = room_.left;
        while (true) {
            const auto end = line.find('\t');
            auto text = line.substr(0, end);
            while (true) {
                const auto part = cutToWidth(text, room_.right - left, font);
                if (!part.empty()) {
                    surface_.text({left, surface_.textLine()}, part, font);
                }
                text.remove_prefix(part.size());
                if (text.empty()) {
                    text = part;
                    break;
                }
                nextLine(font);
            }
            if (end == std::string_view::npos) {
                break;
            }
            left += surface_.textSize(text, font).width;
            const double stops =
                static_cast<double>(static_cast<int>((left - room_.left) / kTabStop) + 1);
            left = room_.left + stops * kTabStop;
            line.remove_prefix(end + 1);
        }
        surface_.setTextLine(surface_.textLine() + lineHeight(font));
    }

    void nextLine(const DrawingFont& font) {
        surface_.setTextLine(surface_.textLine() + lineHeight(font));
        if (surface_.textLine() + lineHeight(font) > room_.bottom) {
            beginPage();
        }
    }

    /// As much of a text as fits, up to a blank if there is one; a character at least.
    [[nodiscard]] std::string_view cutToWidth(std::string_view text, double width,
                                              const DrawingFont& font) const {
        if (text.empty() || surface_.textSize(text, font).width <= width) {
            return text;
        }
        std::size_t least = 1;
        std::size_t most = text.size();
        while (least < most) {
            const auto middle = (least + most + 1) / 2;
            if (surface_.textSize(text.substr(0, middle), font).width <= width) {
                least = middle;
            } else {
                most = middle - 1;
            }
        }
        while (least < text.size() && (static_cast<unsigned char>(text[least]) & 0xC0U) == 0x80U &&
               least > 1) {
            --least;  // not within a character
        }
        const auto blank = text.substr(0, least).rfind(' ');
        return text.substr(0, blank == std::string_view::npos || blank == 0 ? least : blank + 1);
    }

    PdfSurface& surface_;
    const DocumentContext& context_;
    const ReportLayout& layout_;
    UserInterface* parent_;
    PlotFractions fractions_{};
    PageFrame frame_{};
    int page_ = 1;
    DrawingRect room_{};
};

}  // namespace

PrintedDocument printSheetPages(const DocumentContext& context, const ReportLayout& layout,
                                const std::vector<CalibrationSheet>& sheets,
                                const PaperSetup& paper, UserInterface* parent) {
    auto setup = pdfSetup(context.clock, onOneLine(layout.text(layout_key::kPlotTitle)));
    setup.paper = paperPoints(paper);
    setup.keepsPages = true;
    PdfSurface surface(setup);
    SheetPrinter printer(surface, context, layout, parent);
    for (const auto& sheet : sheets) {
        setProgressText(parent, sheet.calibration.name);
        yieldToInterface(parent);
        if (cancelRequested(parent) || !printer.print(sheet)) {
            break;
        }
    }
    return surface.printed();
}

std::size_t sheetCharacters(const PaperSetup& paper) {
    // Of the letters of Courier, as a fraction of their height.
    constexpr double kCharacter = 0.6001;
    const double room = paperPoints(paper).width - 2 * PdfSetup{}.margin;
    return static_cast<std::size_t>(
        std::max(1.0, room / (fontOf(SheetFont::Table).height * kCharacter)));
}

std::string printCalibrationSheets(const DocumentContext& context, const ReportLayout& layout,
                                   const std::vector<CalibrationSheet>& sheets) {
    return printSheetPages(context, layout, sheets, readPaper(context.settings, PaperUse::Sheets),
                           nullptr)
        .pdf;
}

}  // namespace kavu
