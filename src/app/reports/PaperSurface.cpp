#include "app/reports/PaperSurface.h"

#include "app/framework/QtText.h"
#include "drawing/CairoSurface.h"

#include <algorithm>
#include <cmath>

#include <QList>
#include <QPen>

namespace kavu {

namespace {

constexpr double kPenPoints = 0.5;

QFont paperFont() {
    QFont font;
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferOutline);
    font.setPixelSize(9);
    return font;
}

/// The fonts of the same metrics that the library of pages embeds.
DrawingFont printed(const DrawingFont& font) {
    auto made = font;
    made.family = font.family == "Courier" ? "Liberation Mono" : "Liberation Sans";
    return made;
}

}  // namespace

PaperSurface::PaperSurface(QPainter& painter, const DrawingSize& paper)
    : QtSurface(painter, QRectF(0, 0, paper.width, paper.height), paperFont()), onPaper_(painter) {}

bool PaperSurface::setPen(const DrawingPen& pen) {
    const bool isSet = QtSurface::setPen(pen);
    auto set = onPaper_.pen();
    const double width = kPenPoints * std::max(pen.width, 1);
    set.setWidthF(width);
    // A pattern of the toolkit counts widths of its pen.
    QList<qreal> pattern;
    for (const double dash : printedDashes(pen.style)) {
        pattern << dash / width;
    }
    if (!pattern.isEmpty()) {
        set.setDashPattern(pattern);
    }
    onPaper_.setPen(set);
    return isSet;
}

DrawingSize PaperSurface::textSize(std::string_view text, const DrawingFont& font) const {
    return QtSurface::textSize(text, printed(font));
}

void PaperSurface::text(DrawingPoint at, std::string_view text, const DrawingFont& font) {
    QtSurface::text(at, text, printed(font));
}

QFont PaperSurface::fontOf(const DrawingFont& font) {
    auto made = paperFont();
    made.setFamily(toQString(printed(font).family));
    if (font.height > 0) {
        made.setPixelSize(std::max(1, static_cast<int>(std::lround(font.height))));
    }
    made.setBold(font.bold);
    return made;
}

}  // namespace kavu
