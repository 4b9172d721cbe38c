// The result and the plot of the panel.
#include "app/conversion/PairSetParts.h"

#include "app/conversion/PlotAttributesDialog.h"
#include "app/conversion/PlotOutput.h"
#include "app/conversion/PlotView.h"
#include "app/framework/EditableList.h"
#include "app/framework/QtText.h"
#include "conversion/EuNumbers.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <cmath>

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>

namespace kavu {

namespace {

/// Pixels from a pair within which the pointer is at it.
constexpr double kNear = 8;
constexpr std::string_view kSeriesNames = "Pair Sets\nCurve Fit\nSeries Plot";
constexpr int kSeries = 3;
constexpr std::string_view kNoCurve = "No polynomial curve fit is defined";

/// A number that is longer than its field shows its leading digits, not its last ones.
void showFromFront(QLineEdit& field, const QString& text) {
    field.setText(text);
    field.setCursorPosition(0);
    field.setToolTip(text);
}

void clear(DrawingSurface& surface) {
    (void)surface.setPen({0xFFFFFF, 1, LineStyle::Solid});
    surface.setSolidBrush(0xFFFFFF);
    surface.rectangle(surface.area());
}

}  // namespace

// --- The result --------------------------------------------------------------------------

void PairSetParts::refit(bool rescale) {
    rescaled_ = rescaled_ || rescale;
    options_ = FitOptions::read(document_.settings);
    input_ = page_.input(setup_.bits);
    input_.order = order_;
    input_.series = series_.on;
    input_.zero = series_.zero;
    input_.cal = series_.cal;
    units_ = page_.units();
    curve_ = page_.definesCurve();
    if (setup_.readOnly) {
        result_ = curve_ ? refitPairs(input_, options_) : FitResult{};
    } else {
        result_ = page_.refresh(&form_.ui, input_);
    }
    if (curve_) {
        series_.on = result_.series;
        if (!result_.orderListEnabled && result_.order != order_) {
            order_ = result_.order;
            noteStored(setup_.readOnly || page_.storeOrder(&form_.ui, order_));
        }
    }
    showResult();
    redraw();
}

void PairSetParts::showResult() {
    auto& c = controls_;
    showPairs(static_cast<std::size_t>(std::max(0, c.list->currentRow())));
    c.curve->setChecked(curve_);
    // The list of orders ends below 10, which a best fit may have.
    c.order->setCurrentIndex(order_ >= 1 && order_ <= kHighestListedOrder ? order_ - 1 : -1);
    c.bestFit->setText(curve_ && result_.pairs > 0 ? toQString(bestFitText(result_.bestFit))
                                                   : QString());
    c.coefficients->clear();
    c.coefficients->addItems(toQStrings(coefficientLines(result_, options_.precision)));
    showFromFront(*c.correlation, toQString(correlationText(result_, options_.precision)));
    showFromFront(*c.rms, toQString(rmsText(result_, options_.precision)));
    c.series->setChecked(series_.on);
    showFromFront(*c.zero.value, toQString(series_.zero));
    showFromFront(*c.cal.value, toQString(series_.cal));
    const auto computed = [](const std::optional<double>& value) {
        return value ? toQString(fixedText(*value)) : QString();
    };
    showFromFront(*c.zero.computed, computed(result_.zeroY));
    showFromFront(*c.cal.computed, computed(result_.calY));
    showTrust();
    enableControls();
}

void PairSetParts::showTrust() {
    const auto stale = page_.staleNote(result_);
    const auto note = stale.empty() ? trustNote(judgeResult(result_, input_, options_),
                                                result_.order, options_.precision)
                                    : stale;
    controls_.trust->setText(toQString(note));
    controls_.trust->setVisible(!note.empty());
}

void PairSetParts::enableControls() {
    auto& c = controls_;
    const bool edits = !setup_.readOnly;
    c.import->setEnabled(edits);
    c.paste->setEnabled(edits);
    c.copy->setEnabled(pairs_.size() > 0);
    c.savePairs->setEnabled(pairs_.size() > 0);
    c.curve->setEnabled(edits);
    c.sorted->setEnabled(edits);
    c.choices->setEnabled(curve_ && edits);
    c.order->setEnabled(result_.orderListEnabled);
    c.series->setEnabled(edits && curve_ && result_.seriesEnabled);
    for (auto* const of : {&c.zero, &c.cal}) {
        of->value->setEnabled(result_.boxesEnabled);
        of->edit->setEnabled(edits && result_.boxesEnabled);
    }
    c.print->setEnabled(result_.printingEnabled && result_.fitted && form_.reports.sheet);
    c.save->setEnabled(result_.printingEnabled);
}

// --- The plot ----------------------------------------------------------------------------

void PairSetParts::connectPlot() {
    auto& c = controls_;
    QObject::connect(c.showPlot, &QCheckBox::clicked, &panel_, [this](bool on) {
        document_.settings.set(setting::kShowPlot, on);
        setPlotShown(on);
    });
    QObject::connect(c.attributes, &QPushButton::clicked, &panel_, [this] { editAttributes(); });
    const auto page = [this](DrawingSurface& surface) { return drawPage(surface); };
    QObject::connect(c.print, &QPushButton::clicked, &panel_, [this] {
        form_.reports.sheet(*panel_.window(), name_, input_, options_, result_);
    });
    QObject::connect(c.save, &QPushButton::clicked, &panel_,
                     [this, page] { savePlot(form_, name_, page); });
    QObject::connect(curveView_, &PlotView::pointedAt, &panel_,
                     [this](QPointF place) { pointAt(place); });
    QObject::connect(curveView_, &PlotView::pointerLeft, &panel_,
                     [this] { controls_.pointer->clear(); });
    QObject::connect(curveView_, &PlotView::clickedAt, &panel_, [this](QPointF place) {
        if (const auto pair = pairAt(place)) {
            controls_.list->selectRow(static_cast<int>(*pair));
        }
    });
}

void PairSetParts::setPlotShown(bool shown) {
    panel_.setObjectName(shown ? QStringLiteral("PairSetsPlot") : QStringLiteral("PairSets"));
    controls_.showPlot->setChecked(shown);
    controls_.plotSide->setVisible(shown);
    controls_.columns->setStretch(0, shown ? 0 : 1);
    controls_.columns->setStretch(1, shown ? 1 : 0);
}

int PairSetParts::columnWidth(int column) const {
    return controls_.columns->itemAt(column)->minimumSize().width();
}

int PairSetParts::leastWidth() const {
    const auto margins = controls_.columns->contentsMargins();
    return std::max(columnWidth(0), columnWidth(1)) + margins.left() + margins.right();
}

void PairSetParts::arrangeFor(int width) {
    auto& columns = *controls_.columns;
    const auto margins = columns.contentsMargins();
    const int needed =
        columnWidth(0) + columns.spacing() + columnWidth(1) + margins.left() + margins.right();
    columns.setDirection(needed <= width ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void PairSetParts::redraw() {
    curveView_->redraw();
    residualView_->redraw();
}

FitDrawing PairSetParts::drawingOn(const DrawingSurface& surface, bool errors) {
    FitDrawing drawing;
    drawing.units = units_;
    drawing.rescale = rescaled_;
    drawing.showMarked = true;
    if (const int row = controls_.list->currentRow(); row >= 0) {
        drawing.selected = static_cast<std::size_t>(row);
    }
    const auto curve = fitScale(chosen_, result_, input_, options_, drawing);
    FitDrawing other = drawing;
    leaveRoomForLabels(errors ? other : drawing, surface, curve, true);
    residuals_.attributes = residualScale(curve, result_);
    leaveRoomForLabels(errors ? drawing : other, surface, residuals_.attributes, false);
    drawing.widthFraction = std::min(drawing.widthFraction, other.widthFraction);
    return drawing;
}

void PairSetParts::drawCurve(DrawingSurface& surface) {
    plot_.endFrame();
    if (!curve_) {
        clear(surface);
        drawMessage(surface, kNoCurve);
        return;
    }
    const auto drawing = drawingOn(surface, false);
    plot_.attributes = chosen_;
    (void)drawFit(plot_, surface, result_, input_, options_, drawing);
    plot_.releaseSurface();
}

void PairSetParts::drawErrors(DrawingSurface& surface) {
    const auto drawing = drawingOn(surface, true);
    (void)drawResiduals(residuals_, surface, result_, drawing);
    residuals_.releaseSurface();
}

bool PairSetParts::drawPage(DrawingSurface& surface) const {
    Plot plot;
    plot.attributes = chosen_;
    FitDrawing drawing;
    drawing.units = units_;
    drawing.rescale = rescaled_;
    return drawFitPage(plot, surface, name_, result_, input_, options_, drawing);
}

void PairSetParts::editAttributes() {
    // An axis that scales itself offers the range that it has as its minimum and maximum.
    auto edited = chosen_;
    FitDrawing drawing;
    drawing.rescale = rescaled_;
    const auto shown = fitScale(chosen_, result_, input_, options_, drawing);
    edited.x = scalesX(chosen_.scale) ? shown.x : chosen_.x;
    edited.y = scalesY(chosen_.scale) ? shown.y : chosen_.y;
    if (editPlotAttributes(form_, edited, kSeries, kSeriesNames, panel_.window())) {
        edited.x = scalesX(edited.scale) ? chosen_.x : edited.x;
        edited.y = scalesY(edited.scale) ? chosen_.y : edited.y;
        chosen_ = edited;
        chosen_.save(document_.settings, kApplicationName);
        rescaled_ = false;
        redraw();
    }
}

std::optional<std::size_t> PairSetParts::pairAt(QPointF place) const {
    std::optional<std::size_t> nearest;
    double least = kNear;
    for (std::size_t i = 0; i < std::min(result_.x.size(), result_.y.size()); ++i) {
        const auto at = plot_.map(result_.x[i], result_.y[i]);
        const double away = at ? std::hypot(at->x - place.x(), at->y - place.y()) : kNear + 1;
        if (away <= least) {
            least = away;
            nearest = i;
        }
    }
    return nearest;
}

void PairSetParts::pointAt(QPointF place) {
    const auto values = plot_.valuesAt({place.x(), place.y()});
    if (!values) {
        controls_.pointer->clear();
        return;
    }
    auto text = formatPrintf("TM Value: %.6g   EU Value: %.6g", values->x, values->y);
    if (result_.fitted) {
        text += formatPrintf(
            "   Curve: %.6g",
            evaluatePolynomial(values->x, result_.fittedCoefficients(), result_.order));
    }
    if (const auto pair = pairAt(place)) {
        text += formatPrintf("   Pair #%d", *pair + 1);
    }
    controls_.pointer->setText(toQString(text));
}

}  // namespace kavu
