#include "drawing/SvgSurface.h"

#include "core/text/Markup.h"
#include "core/text/Printf.h"
#include "core/text/TextEncoding.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace kavu {

namespace {

constexpr double kTextHeight = 12;
/// Widths and the position of the base line as fractions of the height of the text.
constexpr double kMeanWidth = 0.56;
constexpr double kAscent = 0.8;

/// At most two digits after the point.
std::string number(double value) {
    if (!std::isfinite(value)) {
        return "0";
    }
    std::array<char, 32> buffer{};
    const double rounded = std::round(value * 100) / 100;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded == 0.0 ? 0.0 : rounded)
            .ptr;
    return {buffer.data(), end};
}

std::string attribute(const char* name, double value) {
    return formatPrintf(" %s=\"%s\"", name, number(value));
}

std::string colourText(DrawingColour colour) {
    return formatPrintf("#%6.6x", static_cast<std::int64_t>(colour & 0xFFFFFFU));
}

std::string dashes(const DrawingPen& pen) {
    switch (pen.style) {
        case LineStyle::Dash:
            return "12 6";
        case LineStyle::Dot:
            return "3 3";
        case LineStyle::DashDot:
            return "9 6 3 6";
        case LineStyle::DashDotDot:
            return "9 3 3 3 3 3";
        case LineStyle::Solid:
        case LineStyle::None:
            break;
    }
    return {};
}

/// Escapes the text; control characters are not allowed in such a file at all.
std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char c : toUtf8(bytes)) {
        // A quote is none in the text of an element.
        if (const auto entity = markupEntity(c); !entity.empty() && c != '"') {
            text += entity;
        } else {
            text += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return text;
}

double heightOf(const DrawingFont& font) {
    return font.height > 0 ? font.height : kTextHeight;
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    for (const char c : text) {
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1U : 0U;
    }
    return count;
}

}  // namespace

DrawingRect SvgSurface::area() const {
    return {0, 0, static_cast<double>(width_), static_cast<double>(height_)};
}

bool SvgSurface::setPen(const DrawingPen& pen) {
    endPath();
    pen_ = pen;
    return true;
}

void SvgSurface::setHollowBrush() {
    endPath();
    fill_ = "none";
}

void SvgSurface::setSolidBrush(DrawingColour colour) {
    endPath();
    fill_ = colourText(colour);
}

std::string SvgSurface::look() const {
    if (pen_.style == LineStyle::None) {
        return formatPrintf(" fill=\"%s\"", fill_);
    }
    std::string text = formatPrintf(" fill=\"%s\" stroke=\"%s\" stroke-width=\"%d\"", fill_,
                                    colourText(pen_.colour), pen_.width);
    if (const auto pattern = dashes(pen_); !pattern.empty()) {
        text += formatPrintf(" stroke-dasharray=\"%s\"", pattern);
    }
    return text;
}

void SvgSurface::endPath() {
    if (!path_.empty()) {
        // Lines enclose nothing, whatever the brush.
        const auto brush = std::exchange(fill_, "none");
        body_ += "<path d=\"" + path_ + "\"" + look() + "/>\n";
        fill_ = brush;
        path_.clear();
    }
}

void SvgSurface::line(DrawingPoint from, DrawingPoint to) {
    if (path_.empty() || from.x != pathEnd_.x || from.y != pathEnd_.y) {
        endPath();
        path_ = "M" + number(from.x) + " " + number(from.y);
    }
    path_ += "L" + number(to.x) + " " + number(to.y);
    pathEnd_ = to;
}

void SvgSurface::rectangle(const DrawingRect& rect) {
    endPath();
    body_ += "<rect" + attribute("x", rect.left) + attribute("y", rect.top) +
             attribute("width", rect.width()) + attribute("height", rect.height()) + look() +
             "/>\n";
}

void SvgSurface::ellipse(const DrawingRect& rect) {
    endPath();
    body_ += "<ellipse" + attribute("cx", (rect.left + rect.right) / 2) +
             attribute("cy", (rect.top + rect.bottom) / 2) + attribute("rx", rect.width() / 2) +
             attribute("ry", rect.height() / 2) + look() + "/>\n";
}

void SvgSurface::polygon(std::span<const DrawingPoint> points) {
    endPath();
    body_ += "<polygon points=\"";
    for (std::size_t i = 0; i < points.size(); ++i) {
        body_ += (i == 0 ? "" : " ") + number(points[i].x) + "," + number(points[i].y);
    }
    body_ += "\"" + look() + "/>\n";
}

DrawingSize SvgSurface::textSize(std::string_view text, const DrawingFont& font) const {
    const double height = heightOf(font);
    return {static_cast<double>(countCharacters(toUtf8(text))) * height * kMeanWidth, height};
}

void SvgSurface::text(DrawingPoint at, std::string_view text, const DrawingFont& font) {
    endPath();
    if (text.empty()) {
        return;
    }
    const double height = heightOf(font);
    body_ += "<text" + attribute("x", at.x) + attribute("y", at.y + height * kAscent) +
             attribute("textLength", textSize(text, font).width) + " lengthAdjust=\"spacing" +
             "AndGlyphs\"" + attribute("font-size", height);
    if (font.bold) {
        body_ += " font-weight=\"bold\"";
    }
    if (font.angle != 0) {
        body_ += formatPrintf(" transform=\"rotate(%d %s %s)\"", -font.angle, number(at.x),
                              number(at.y));
    }
    body_ += ">" + escaped(text) + "</text>\n";
}

void SvgSurface::clip(const DrawingRect& rect) {
    releaseClip();
    ++clips_;
    body_ += formatPrintf("<clipPath id=\"clip%d\"><rect", clips_) + attribute("x", rect.left) +
             attribute("y", rect.top) + attribute("width", rect.width()) +
             attribute("height", rect.height()) +
             formatPrintf("/></clipPath>\n<g clip-path=\"url(#clip%d)\">\n", clips_);
    clipped_ = true;
}

void SvgSurface::releaseClip() {
    endPath();
    if (clipped_) {
        body_ += "</g>\n";
        clipped_ = false;
    }
}

std::string SvgSurface::document() {
    releaseClip();
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" +
           formatPrintf(
               "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" "
               "viewBox=\"0 0 %d %d\" font-family=\"Arial, Helvetica, sans-serif\">\n",
               width_, height_, width_, height_) +
           body_ + "</svg>\n";
}

}  // namespace kavu
