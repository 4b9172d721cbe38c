// A surface that records what is drawn, one line per call, so that a picture can be read
// and compared. Text is 8 pixels per character and 12 high, whatever the font.
#pragma once

#include "core/text/Printf.h"
#include "drawing/DrawingSurface.h"

#include <cmath>
#include <string>
#include <vector>

namespace kavu::test {

class RecordingSurface : public DrawingSurface {
  public:
    explicit RecordingSurface(double width = 400, double height = 300)
        : area_{0, 0, width, height} {}

    bool page = false;
    bool startsPage = true;
    bool makesPens = true;
    double inch = 96;
    double line_ = 0;  ///< the text line of the page
    std::vector<std::string> calls;

    [[nodiscard]] DrawingRect area() const override { return area_; }
    [[nodiscard]] double pixelsPerInch() const override { return inch; }
    [[nodiscard]] bool isPage() const override { return page; }
    bool setPen(const DrawingPen& pen) override {
        add(formatPrintf("pen %6.6X %d %d", static_cast<std::int64_t>(pen.colour), pen.width,
                         static_cast<int>(pen.style)));
        return makesPens;
    }
    void setHollowBrush() override { add("hollow"); }
    void setSolidBrush(DrawingColour colour) override {
        add(formatPrintf("brush %6.6X", static_cast<std::int64_t>(colour)));
    }
    void line(DrawingPoint from, DrawingPoint to) override {
        add("line " + place(from) + " " + place(to));
    }
    void rectangle(const DrawingRect& rect) override { add("rectangle " + box(rect)); }
    void ellipse(const DrawingRect& rect) override { add("ellipse " + box(rect)); }
    void polygon(std::span<const DrawingPoint> points) override {
        std::string text = "polygon";
        for (const auto& point : points) {
            text += " " + place(point);
        }
        add(text);
    }
    [[nodiscard]] DrawingSize textSize(std::string_view text, const DrawingFont&) const override {
        return {8.0 * static_cast<double>(text.size()), 12};
    }
    void text(DrawingPoint at, std::string_view text, const DrawingFont& font) override {
        std::string style = font.family.empty() ? "" : " " + font.family;
        style += font.bold ? " bold" : "";
        style += font.height > 0 ? formatPrintf(" %.0f", font.height) : "";
        style += font.angle != 0 ? formatPrintf(" turned %d", font.angle) : "";
        add("text " + place(at) + style + " \"" + std::string(text) + "\"");
    }
    void clip(const DrawingRect& rect) override { add("clip " + box(rect)); }
    void releaseClip() override { add("unclip"); }
    bool startPage() override {
        add("page");
        return startsPage;
    }
    [[nodiscard]] double textLine() const override { return line_; }
    void setTextLine(double line) override {
        line_ = line;
        add("line at " + number(line));
    }
    [[nodiscard]] double lineHeight() const override { return 15; }

    /// The calls that begin so.
    [[nodiscard]] std::vector<std::string> of(const std::string& head) const {
        std::vector<std::string> found;
        for (const auto& call : calls) {
            if (call.starts_with(head)) {
                found.push_back(call);
            }
        }
        return found;
    }
    [[nodiscard]] bool has(const std::string& part) const {
        for (const auto& call : calls) {
            if (call.find(part) != std::string::npos) {
                return true;
            }
        }
        return false;
    }
    [[nodiscard]] std::string picture() const {
        std::string text;
        for (const auto& call : calls) {
            text += call + "\n";
        }
        return text;
    }

  private:
    static std::string number(double value) {
        const double rounded = std::round(value * 100) / 100;
        return formatPrintf("%g", rounded == 0.0 ? 0.0 : rounded);
    }
    static std::string place(DrawingPoint p) { return number(p.x) + "," + number(p.y); }
    static std::string box(const DrawingRect& r) {
        return place({r.left, r.top}) + " " + place({r.right, r.bottom});
    }
    void add(std::string call) { calls.push_back(std::move(call)); }

    DrawingRect area_;
};

}  // namespace kavu::test
