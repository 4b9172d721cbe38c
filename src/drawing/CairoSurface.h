// Drawing surfaces that write files: a PDF with selectable text, and a picture. The fonts of the
// logic, Arial and Courier, are drawn in the free ones of the same metrics, and embedded.
#pragma once

#include "drawing/DrawingSurface.h"
#include "drawing/RecordedPage.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

/// The dashes and gaps of a printed line, in points; none for a line without gaps.
[[nodiscard]] std::vector<double> printedDashes(LineStyle style);

/// What both have in common; the unit is a point of 1/72 inch, or a pixel.
class CairoSurface : public DrawingSurface {
  public:
    ~CairoSurface() override;

    [[nodiscard]] DrawingRect area() const override { return area_; }
    [[nodiscard]] double pixelsPerInch() const override { return 72; }
    bool setPen(const DrawingPen& pen) override;
    void setHollowBrush() override;
    void setSolidBrush(DrawingColour colour) override;
    void line(DrawingPoint from, DrawingPoint to) override;
    void rectangle(const DrawingRect& rect) override;
    void ellipse(const DrawingRect& rect) override;
    void polygon(std::span<const DrawingPoint> points) override;
    [[nodiscard]] DrawingSize textSize(std::string_view text,
                                       const DrawingFont& font) const override;
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override;
    void clip(const DrawingRect& rect) override;
    void releaseClip() override;

  protected:
    struct Parts;
    explicit CairoSurface(std::unique_ptr<Parts> parts);
    [[nodiscard]] Parts& parts() { return *parts_; }
    void setArea(const DrawingRect& area) { area_ = area; }

  private:
    void fillAndStroke();

    std::unique_ptr<Parts> parts_;
    DrawingRect area_{};
    DrawingPen pen_{};
    bool hasBrush_ = false;
    DrawingColour brush_ = 0;
    bool isClipped_ = false;
};

/// What a PDF says of itself, and its paper in points.
struct PdfSetup {
    std::string title{};
    std::string author{};
    std::string created{};              ///< "YYYY-MM-DDTHH:MM:SS"
    DrawingSize paper{595.28, 841.89};  ///< A4
    double margin = 42;                 ///< on all sides
    bool keepsPages = false;            ///< `printed` has the pages as well
};

/// A print job: pages within their margins, with a line of text that moves down.
class PdfSurface : public CairoSurface {
  public:
    explicit PdfSurface(const PdfSetup& setup);

    [[nodiscard]] bool isPage() const override { return true; }
    bool setPen(const DrawingPen& pen) override;
    void setHollowBrush() override;
    void setSolidBrush(DrawingColour colour) override;
    void line(DrawingPoint from, DrawingPoint to) override;
    void rectangle(const DrawingRect& rect) override;
    void ellipse(const DrawingRect& rect) override;
    void polygon(std::span<const DrawingPoint> points) override;
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override;
    void clip(const DrawingRect& rect) override;
    void releaseClip() override;
    bool startPage() override;
    bool nextPage() override;
    [[nodiscard]] double textLine() const override { return textLine_; }
    void setTextLine(double line) override { textLine_ = line; }
    [[nodiscard]] double lineHeight() const override { return lineHeight_; }
    void setLineHeight(double height) { lineHeight_ = height; }

    /// Ends the page if there is one: the next `startPage` begins another.
    void endPage();
    [[nodiscard]] int pages() const { return pages_; }
    /// The whole sheet of paper, margins included.
    [[nodiscard]] DrawingRect paper() const { return paper_; }
    /// An entry of the outline that leads to the present page. REQUIRES: a page is begun.
    void addOutline(std::string_view text);
    /// The whole file; nothing can be drawn after that.
    [[nodiscard]] std::string document();
    /// The same with its pages, if the setup keeps them.
    [[nodiscard]] PrintedDocument printed();

  private:
    /// The page that remembers what is drawn; null if none does.
    [[nodiscard]] RecordedPage* record();

    std::string title_;
    bool keepsPages_ = false;
    std::vector<RecordedPage> recorded_{};
    DrawingRect paper_{};
    bool inPage_ = false;
    int pages_ = 0;
    double textLine_ = 0;
    double lineHeight_ = 12;
};

/// A picture with a white background.
class PngSurface : public CairoSurface {
  public:
    PngSurface(int width, int height);
    /// The whole file; nothing can be drawn after that.
    [[nodiscard]] std::string document();
};

}  // namespace kavu
