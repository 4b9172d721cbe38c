#include "drawing/CairoSurface.h"

#include "core/text/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cairo-pdf.h>
#include <cairo.h>
#include <map>
#include <numbers>
#include <pango/pangocairo.h>
#include <utility>
#include <vector>

namespace kavu {

namespace {

constexpr double kDefaultHeight = 9;
constexpr std::string_view kEqualWidths = "Courier";

// The characters whose letters a font of equal widths has ready.
constexpr char kFirstReady = ' ';
constexpr char kLastReady = '~';
constexpr std::size_t kReady = kLastReady - kFirstReady + 1;

cairo_status_t append(void* closure, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void setColour(cairo_t* cairo, DrawingColour colour) {
    constexpr double kMost = 255;
    cairo_set_source_rgb(cairo, static_cast<double>((colour >> 16U) & 0xFFU) / kMost,
                         static_cast<double>((colour >> 8U) & 0xFFU) / kMost,
                         static_cast<double>(colour & 0xFFU) / kMost);
}

/// The same metrics, and free to be embedded.
const char* familyOf(const std::string& family) {
    return family == kEqualWidths ? "Liberation Mono" : "Liberation Sans";
}

bool isReady(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= kFirstReady && c <= kLastReady; });
}

/// A font whose letters are all of one width, and neither join nor move together: a table has
/// millions of them, and each is where the number of those before it puts it.
struct ReadyFont {
    cairo_scaled_font_t* font = nullptr;
    std::array<unsigned long, kReady> glyphs{};
    double advance = 0;
    double height = 0;
    double baseline = 0;
};

/// Control characters are no text; a line break would begin a second line.
std::string shownText(std::string_view bytes) {
    auto text = toUtf8(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return text;
}

}  // namespace

std::vector<double> printedDashes(LineStyle style) {
    switch (style) {
        case LineStyle::Dash:
            return {6, 3};
        case LineStyle::Dot:
            return {1.5, 2};
        case LineStyle::DashDot:
            return {6, 3, 1.5, 3};
        case LineStyle::DashDotDot:
            return {6, 3, 1.5, 2, 1.5, 3};
        default:
            return {};
    }
}

struct CairoSurface::Parts {
    Parts() = default;
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() { finish(); }

    std::string bytes{};
    cairo_surface_t* surface = nullptr;
    cairo_t* cairo = nullptr;
    PangoLayout* layout = nullptr;
    DrawingFont font{};
    bool hasFont = false;

    /// REQUIRES: the surface is made.
    void begin() {
        cairo = cairo_create(surface);
        layout = pango_cairo_create_layout(cairo);
        pango_layout_set_single_paragraph_mode(layout, 1);
        // Letters as wide as their font has them, not as wide as whole points.
        auto* const context = pango_layout_get_context(layout);
        pango_context_set_round_glyph_positions(context, 0);
        auto* const options = cairo_font_options_create();
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(context, options);
        cairo_font_options_destroy(options);
        pango_layout_context_changed(layout);
    }
    void finish() {
        for (auto& [height, ready] : readyFonts) {
            cairo_scaled_font_destroy(ready.font);
        }
        readyFonts.clear();
        if (layout != nullptr) {
            g_object_unref(std::exchange(layout, nullptr));
        }
        if (cairo != nullptr) {
            cairo_destroy(std::exchange(cairo, nullptr));
        }
        if (surface != nullptr) {
            cairo_surface_finish(surface);
            cairo_surface_destroy(std::exchange(surface, nullptr));
        }
    }
    /// Puts a text into the layout.
    void set(std::string_view text, const DrawingFont& wanted) {
        if (!hasFont || font.family != wanted.family || font.height != wanted.height ||
            font.bold != wanted.bold) {
            auto* const description = pango_font_description_new();
            pango_font_description_set_family(description, familyOf(wanted.family));
            pango_font_description_set_absolute_size(
                description, (wanted.height > 0 ? wanted.height : kDefaultHeight) * PANGO_SCALE);
            pango_font_description_set_weight(
                description, wanted.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
            pango_layout_set_font_description(layout, description);
            pango_font_description_free(description);
            font = wanted;
            hasFont = true;
        }
        const auto shown = shownText(text);
        pango_layout_set_text(layout, shown.data(), static_cast<int>(shown.size()));
    }

    /// The font of a text that needs no layout; null for every other one.
    [[nodiscard]] const ReadyFont* readyFor(std::string_view text, const DrawingFont& wanted) {
        if (wanted.family != kEqualWidths || wanted.bold || text.empty() || !isReady(text)) {
            return nullptr;
        }
        const auto [found, isNew] = readyFonts.try_emplace(wanted.height);
        if (isNew) {
            found->second = makeReady(wanted);
        }
        return found->second.font == nullptr ? nullptr : &found->second;
    }
    /// Draws a text with its left end of the base line there.
    void show(std::string_view text, const ReadyFont& ready, DrawingPoint at) {
        glyphs.clear();
        for (const char c : text) {
            glyphs.push_back({ready.glyphs[static_cast<std::size_t>(c - kFirstReady)],
                              at.x + static_cast<double>(glyphs.size()) * ready.advance, at.y});
        }
        clusters.resize(std::max(clusters.size(), text.size()), {1, 1});
        const auto count = static_cast<int>(text.size());
        cairo_set_scaled_font(cairo, ready.font);
        cairo_show_text_glyphs(cairo, text.data(), count, glyphs.data(), count, clusters.data(),
                               count, cairo_text_cluster_flags_t{});
    }

  private:
    /// Without a font if this one is not what is expected of it.
    ReadyFont makeReady(const DrawingFont& wanted) {
        std::string all;
        for (char c = kFirstReady; c <= kLastReady; ++c) {
            all += c;
        }
        set(all, wanted);
        ReadyFont ready;
        const auto* const line = pango_layout_get_line_readonly(layout, 0);
        std::size_t known = 0;
        int advance = -1;
        PangoFont* used = nullptr;
        for (const GSList* run = line == nullptr ? nullptr : line->runs; run != nullptr;
             run = run->next) {
            const auto* const item = static_cast<const PangoGlyphItem*>(run->data);
            used = used == nullptr ? item->item->analysis.font : used;
            for (int i = 0; i < item->glyphs->num_glyphs; ++i) {
                const auto& glyph = item->glyphs->glyphs[i];
                advance = advance < 0 ? glyph.geometry.width : advance;
                if (known == kReady || glyph.geometry.width != advance ||
                    item->item->analysis.font != used ||
                    (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0 ||
                    item->glyphs->log_clusters[i] != i) {
                    return {};
                }
                ready.glyphs[known++] = glyph.glyph;
            }
        }
        if (known != kReady || used == nullptr) {
            return {};
        }
        int height = 0;
        pango_layout_get_size(layout, nullptr, &height);
        ready.height = static_cast<double>(height) / PANGO_SCALE;
        ready.baseline = static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE;
        ready.advance = static_cast<double>(advance) / PANGO_SCALE;
        ready.font = cairo_scaled_font_reference(
            pango_cairo_font_get_scaled_font(reinterpret_cast<PangoCairoFont*>(used)));
        return ready;
    }

    std::map<double, ReadyFont> readyFonts{};  ///< by their height
    std::vector<cairo_glyph_t> glyphs{};
    std::vector<cairo_text_cluster_t> clusters{};
};

CairoSurface::CairoSurface(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

CairoSurface::~CairoSurface() = default;

bool CairoSurface::setPen(const DrawingPen& pen) {
    pen_ = pen;
    return true;
}

void CairoSurface::setHollowBrush() {
    hasBrush_ = false;
}

void CairoSurface::setSolidBrush(DrawingColour colour) {
    hasBrush_ = true;
    brush_ = colour;
}

void CairoSurface::fillAndStroke() {
    auto* const cairo = parts_->cairo;
    if (hasBrush_) {
        setColour(cairo, brush_);
        cairo_fill_preserve(cairo);
    }
    if (pen_.style != LineStyle::None) {
        setColour(cairo, pen_.colour);
        // A line of a pixel on a screen is half a point on paper.
        cairo_set_line_width(cairo, pen_.width * 0.5);
        const auto dashes = printedDashes(pen_.style);
        cairo_set_dash(cairo, dashes.data(), static_cast<int>(dashes.size()), 0);
        cairo_stroke_preserve(cairo);
    }
    cairo_new_path(cairo);
}

void CairoSurface::line(DrawingPoint from, DrawingPoint to) {
    cairo_move_to(parts_->cairo, from.x, from.y);
    cairo_line_to(parts_->cairo, to.x, to.y);
    const bool hadBrush = std::exchange(hasBrush_, false);
    fillAndStroke();
    hasBrush_ = hadBrush;
}

void CairoSurface::rectangle(const DrawingRect& rect) {
    cairo_rectangle(parts_->cairo, rect.left, rect.top, rect.width(), rect.height());
    fillAndStroke();
}

void CairoSurface::ellipse(const DrawingRect& rect) {
    auto* const cairo = parts_->cairo;
    if (rect.width() <= 0 || rect.height() <= 0) {
        return;
    }
    cairo_save(cairo);
    cairo_translate(cairo, (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    cairo_scale(cairo, rect.width() / 2, rect.height() / 2);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_restore(cairo);
    fillAndStroke();
}

void CairoSurface::polygon(std::span<const DrawingPoint> points) {
    for (const auto& point : points) {
        cairo_line_to(parts_->cairo, point.x, point.y);
    }
    cairo_close_path(parts_->cairo);
    fillAndStroke();
}

DrawingSize CairoSurface::textSize(std::string_view text, const DrawingFont& font) const {
    if (const auto* const ready = parts_->readyFor(text, font)) {
        return {static_cast<double>(text.size()) * ready->advance, ready->height};
    }
    parts_->set(text, font);
    int width = 0;
    int height = 0;
    pango_layout_get_size(parts_->layout, &width, &height);
    return {static_cast<double>(width) / PANGO_SCALE, static_cast<double>(height) / PANGO_SCALE};
}

void CairoSurface::text(DrawingPoint at, std::string_view text, const DrawingFont& font) {
    auto* const cairo = parts_->cairo;
    if (const auto* const ready = parts_->readyFor(text, font);
        ready != nullptr && font.angle == 0) {
        setColour(cairo, 0);
        parts_->show(text, *ready, {at.x, at.y + ready->baseline});
        return;
    }
    parts_->set(text, font);
    cairo_save(cairo);
    setColour(cairo, 0);
    cairo_translate(cairo, at.x, at.y);
    cairo_rotate(cairo, -font.angle * std::numbers::pi / 180);
    cairo_move_to(cairo, 0, 0);
    pango_cairo_show_layout(cairo, parts_->layout);
    cairo_restore(cairo);
    cairo_new_path(cairo);
}

void CairoSurface::clip(const DrawingRect& rect) {
    CairoSurface::releaseClip();
    cairo_save(parts_->cairo);
    cairo_rectangle(parts_->cairo, rect.left, rect.top, rect.width(), rect.height());
    cairo_clip(parts_->cairo);
    isClipped_ = true;
}

void CairoSurface::releaseClip() {
    if (isClipped_) {
        cairo_restore(parts_->cairo);
        isClipped_ = false;
    }
}

// --- PDF --------------------------------------------------------------------------------------

PdfSurface::PdfSurface(const PdfSetup& setup)
    : CairoSurface(std::make_unique<Parts>()), title_(setup.title), keepsPages_(setup.keepsPages) {
    auto& made = parts();
    made.surface = cairo_pdf_surface_create_for_stream(append, &made.bytes, setup.paper.width,
                                                       setup.paper.height);
    const auto put = [&](cairo_pdf_metadata_t kind, const std::string& text) {
        cairo_pdf_surface_set_metadata(made.surface, kind, toUtf8(text).c_str());
    };
    put(CAIRO_PDF_METADATA_TITLE, setup.title);
    put(CAIRO_PDF_METADATA_AUTHOR, setup.author);
    put(CAIRO_PDF_METADATA_CREATE_DATE, setup.created);
    made.begin();
    paper_ = {0, 0, setup.paper.width, setup.paper.height};
    setArea({setup.margin, setup.margin, setup.paper.width - setup.margin,
             setup.paper.height - setup.margin});
}

bool PdfSurface::startPage() {
    if (!inPage_) {
        inPage_ = true;
        ++pages_;
        textLine_ = area().top;
        if (keepsPages_) {
            recorded_.emplace_back();
        }
    }
    return true;
}

RecordedPage* PdfSurface::record() {
    return inPage_ && keepsPages_ ? &recorded_.back() : nullptr;
}

bool PdfSurface::setPen(const DrawingPen& pen) {
    if (auto* const page = record()) {
        page->addPen(pen);
    }
    return CairoSurface::setPen(pen);
}

void PdfSurface::setHollowBrush() {
    if (auto* const page = record()) {
        page->addBrush(std::nullopt);
    }
    CairoSurface::setHollowBrush();
}

void PdfSurface::setSolidBrush(DrawingColour colour) {
    if (auto* const page = record()) {
        page->addBrush(colour);
    }
    CairoSurface::setSolidBrush(colour);
}

void PdfSurface::line(DrawingPoint from, DrawingPoint to) {
    if (auto* const page = record()) {
        page->addLine(from, to);
    }
    CairoSurface::line(from, to);
}

void PdfSurface::rectangle(const DrawingRect& rect) {
    if (auto* const page = record()) {
        page->addBox(rect, false);
    }
    CairoSurface::rectangle(rect);
}

void PdfSurface::ellipse(const DrawingRect& rect) {
    if (auto* const page = record()) {
        page->addBox(rect, true);
    }
    CairoSurface::ellipse(rect);
}

void PdfSurface::polygon(std::span<const DrawingPoint> points) {
    if (auto* const page = record()) {
        page->addPolygon(points);
    }
    CairoSurface::polygon(points);
}

void PdfSurface::text(DrawingPoint at, std::string_view text, const DrawingFont& font) {
    if (auto* const page = record()) {
        page->addText({at, textSize(text, font), std::string(text), font});
    }
    CairoSurface::text(at, text, font);
}

void PdfSurface::clip(const DrawingRect& rect) {
    if (auto* const page = record()) {
        page->addClip(rect);
    }
    CairoSurface::clip(rect);
}

void PdfSurface::releaseClip() {
    if (auto* const page = record()) {
        page->addClip(std::nullopt);
    }
    CairoSurface::releaseClip();
}

bool PdfSurface::nextPage() {
    endPage();
    return startPage();
}

void PdfSurface::endPage() {
    if (inPage_) {
        CairoSurface::releaseClip();
        cairo_show_page(parts().cairo);
        inPage_ = false;
    }
}

void PdfSurface::addOutline(std::string_view text) {
    const auto target = "page=" + std::to_string(pages_);
    cairo_pdf_surface_add_outline(parts().surface, CAIRO_PDF_OUTLINE_ROOT, shownText(text).c_str(),
                                  target.c_str(), CAIRO_PDF_OUTLINE_FLAG_OPEN);
}

std::string PdfSurface::document() {
    endPage();
    parts().finish();
    return std::move(parts().bytes);
}

PrintedDocument PdfSurface::printed() {
    PrintedDocument made{.title = title_, .paper = {paper_.width(), paper_.height()}};
    made.pdf = document();
    made.pages = std::move(recorded_);
    return made;
}

// --- PNG --------------------------------------------------------------------------------------

PngSurface::PngSurface(int width, int height) : CairoSurface(std::make_unique<Parts>()) {
    auto& made = parts();
    made.surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    made.begin();
    setColour(made.cairo, 0xFFFFFF);
    cairo_paint(made.cairo);
    setArea({0, 0, static_cast<double>(width), static_cast<double>(height)});
}

std::string PngSurface::document() {
    auto& made = parts();
    (void)cairo_surface_write_to_png_stream(made.surface, append, &made.bytes);
    made.finish();
    return std::move(made.bytes);
}

}  // namespace kavu
