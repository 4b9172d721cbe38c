#include "app/conversion/PlotAttributesDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "core/talk/UserInterface.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QRadioButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kMostListed = 20;  ///< of the lists of divisions and digits
constexpr int kWidths = 8;
constexpr std::array kLimitTitles = {"Min X:", "Max X:", "Min Y:", "Max Y:"};
constexpr std::array kLimitNames = {"minX", "maxX", "minY", "maxY"};

/// A list of numbers; one that a settings file has brought beyond them joins it.
QComboBox* makeNumbers(const char* name, int least, int most, int value, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QLatin1String(name));
    for (int i = least; i <= most; ++i) {
        box->addItem(QString::number(i), i);
    }
    if (box->findData(value) < 0) {
        box->addItem(QString::number(value), value);
    }
    box->setCurrentIndex(box->findData(value));
    return box;
}

void selectColour(QComboBox& box, DrawingColour colour) {
    const auto data = QVariant::fromValue(static_cast<uint>(colour));
    if (box.findData(data) < 0) {
        box.addItem(toQString(plotColourName(colour)), data);
    }
    box.setCurrentIndex(box.findData(data));
}

QIcon colourIcon(DrawingColour colour, int size) {
    QPixmap square(size, size);
    square.fill(QColor::fromRgb(static_cast<QRgb>(colour)));
    return QIcon(square);
}

QComboBox* makeColours(const char* name, DrawingColour colour, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QLatin1String(name));
    selectColour(*box, colour);
    box->clear();
    for (const auto& [text, value] : plotColours()) {
        box->addItem(colourIcon(value, look::unit(*box)), toQString(text),
                     QVariant::fromValue(static_cast<uint>(value)));
    }
    selectColour(*box, colour);
    return box;
}

DrawingColour colourOf(const QComboBox& box) {
    return static_cast<DrawingColour>(box.currentData().toUInt());
}

QComboBox* makeTexts(const char* name, std::span<const std::string_view> texts, int index,
                     QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QLatin1String(name));
    for (const auto text : texts) {
        box->addItem(toQString(text));
    }
    box->setCurrentIndex(index);
    return box;
}

void addRow(QGridLayout& grid, int row, int column, const char* label, QWidget* control) {
    grid.addWidget(look::addKeyLabel(QLatin1String(label), *control), row, column);
    grid.addWidget(control, row, column + 1);
}

QRadioButton* addRadio(QButtonGroup& group, int id, std::string_view text, const char* name,
                       QLayout& layout, QWidget* parent) {
    // An ampersand is a letter of the text here and no key.
    auto shown = toQString(text);
    shown.replace(u'&', QStringLiteral("&&"));
    auto* button = new QRadioButton(shown, parent);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(toQString(text));
    group.addButton(button, id);
    layout.addWidget(button);
    return button;
}

}  // namespace

PlotAttributesDialog::PlotAttributesDialog(FormContext& form, const PlotAttributes& attributes,
                                           int series, std::string_view names, QWidget* parent)
    : QDialog(parent),
      form_(form),
      before_(attributes),
      edited_(attributes),
      titles_(seriesTitles(series, names)) {
    setObjectName(QStringLiteral("EditPlotAttributes"));
    setWindowTitle(QStringLiteral("Edit Plot Attributes"));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* columns = new QHBoxLayout;
    look::arrangePart(*columns, *this);
    layout->addLayout(columns);
    columns->addWidget(makeScaling());
    auto* right = new QVBoxLayout;
    look::arrangePart(*right, *this);
    columns->addLayout(right);
    right->addWidget(makeGrid());
    right->addWidget(makePrinting());
    right->addStretch();
    layout->addWidget(makeSeries(), 1);
    layout->addWidget(look::makeDialogButtons(*this));
    enableLimits();
    showSeries();
}

QGroupBox* PlotAttributesDialog::makeScaling() {
    auto* box = new QGroupBox(QStringLiteral("Plot Scaling Method"), this);
    auto* layout = new QVBoxLayout(box);
    scale_ = new QButtonGroup(this);
    constexpr std::array kNames = {"useMinMax", "autoX", "autoY", "autoXY"};
    for (int i = 0; i < static_cast<int>(kNames.size()); ++i) {
        const auto at = static_cast<std::size_t>(i);
        addRadio(*scale_, i, plotScaleNames()[at], kNames[at], *layout, box);
    }
    scale_->button(static_cast<int>(before_.scale))->setChecked(true);
    connect(scale_, &QButtonGroup::idClicked, this, [this] { enableLimits(); });
    auto* grid = new QGridLayout;
    const std::array values = {before_.x.least, before_.x.most, before_.y.least, before_.y.most};
    for (std::size_t i = 0; i < limits_.size(); ++i) {
        limits_[i] = new QLineEdit(toQString(numberText(values[i])), box);
        limits_[i]->setObjectName(QLatin1String(kLimitNames[i]));
        addRow(*grid, static_cast<int>(i), 0, kLimitTitles[i], limits_[i]);
    }
    layout->addLayout(grid);
    layout->addStretch();
    return box;
}

QGroupBox* PlotAttributesDialog::makeGrid() {
    auto* box = new QGroupBox(QStringLiteral("Axes And Border"), this);
    auto* grid = new QGridLayout(box);
    // In the order of the page, which the Tab key follows.
    yPrecision_ = makeNumbers("yPrecision", 0, kMostListed, before_.yPrecision, box);
    xPrecision_ = makeNumbers("xPrecision", 0, kMostListed, before_.xPrecision, box);
    borderColour_ = makeColours("borderColour", before_.borderColour, box);
    borderWidth_ = makeNumbers("borderWidth", 1, kWidths, before_.borderWidth, box);
    xDivisions_ = makeNumbers("xDivisions", 0, kMostListed, before_.xDivisions, box);
    yDivisions_ = makeNumbers("yDivisions", 0, kMostListed, before_.yDivisions, box);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    addRow(*grid, 0, 0, "Y Label Precision:", yPrecision_);
    addRow(*grid, 0, 2, "X Label Precision:", xPrecision_);
    addRow(*grid, 1, 0, "Border Color:", borderColour_);
    addRow(*grid, 1, 2, "Border Width:", borderWidth_);
    addRow(*grid, 2, 0, "X Divisions:", xDivisions_);
    addRow(*grid, 2, 2, "Y Divisions:", yDivisions_);
    return box;
}

QGroupBox* PlotAttributesDialog::makePrinting() {
    auto* box = new QGroupBox(QStringLiteral("If Printing Graphs"), this);
    auto* layout = new QVBoxLayout(box);
    printing_ = new QButtonGroup(this);
    addRadio(*printing_, 0, plottext::kUseColours, "useColours", *layout, box);
    addRadio(*printing_, 1, plottext::kBlackAndWhite, "blackAndWhite", *layout, box);
    printing_->button(before_.blackAndWhite ? 1 : 0)->setChecked(true);
    return box;
}

QGroupBox* PlotAttributesDialog::makeSeries() {
    auto* box = new QGroupBox(QStringLiteral("Data Attributes (double-click to edit)"), this);
    auto* layout = new QVBoxLayout(box);
    ListSetup setup;
    setup.columns = {{.title = "Plot #"},
                     {.title = "Color"},
                     {.title = "Line Style"},
                     {.title = "Line Width", .kind = ColumnKind::Integer},
                     {.title = "Symbol"}};
    setup.canAdd = false;
    setup.canDelete = false;
    setup.canSort = false;
    list_ = new EditableList(form_, "series", std::move(setup), box);
    list_->view()->setAccessibleName(QStringLiteral("Data Attributes"));
    list_->rowEditor = [this](int row, const ListRow& before) -> std::optional<ListRow> {
        const auto at = static_cast<std::size_t>(row);
        PlotSeriesDialog dialog(form_, titles_[at], edited_.series[at], this);
        if (runDialog(form_.door, dialog) != QDialog::Accepted) {
            return before;
        }
        edited_.series[at] = dialog.series();
        showSeries();
        return list_->rows()[at];
    };
    layout->addWidget(list_);
    return box;
}

void PlotAttributesDialog::showSeries() {
    std::vector<ListRow> rows;
    for (std::size_t i = 0; i < titles_.size(); ++i) {
        const auto& series = edited_.series[i];
        rows.push_back(
            {titles_[i], plotColourName(series.colour),
             std::string(lineStyleNames()[static_cast<std::size_t>(series.style)]),
             std::to_string(series.width),
             std::string(plotSymbolNames()[static_cast<std::size_t>(series.symbol) - 1])});
    }
    const int row = std::max(0, list_->currentRow());
    list_->setRows(std::move(rows));
    list_->selectRow(row);
}

void PlotAttributesDialog::enableLimits() {
    const auto scale = static_cast<PlotScale>(scale_->checkedId());
    for (std::size_t i = 0; i < limits_.size(); ++i) {
        const bool scales = i < 2 ? scalesX(scale) : scalesY(scale);
        limits_[i]->setEnabled(!scales);
    }
}

PlotAttributes PlotAttributesDialog::attributes() const {
    PlotAttributes now = edited_;
    now.scale = static_cast<PlotScale>(scale_->checkedId());
    const std::array values = {&now.x.least, &now.x.most, &now.y.least, &now.y.most};
    for (std::size_t i = 0; i < values.size(); ++i) {
        // A field that was not touched keeps its number, whatever its text can show of it.
        const auto text = toBytes(limits_[i]->text());
        if (limits_[i]->isEnabled() && text != numberText(*values[i])) {
            *values[i] = parseDouble(text).value_or(0.0);
        }
    }
    now.xPrecision = xPrecision_->currentData().toInt();
    now.yPrecision = yPrecision_->currentData().toInt();
    now.xDivisions = xDivisions_->currentData().toInt();
    now.yDivisions = yDivisions_->currentData().toInt();
    now.borderColour = colourOf(*borderColour_);
    now.borderWidth = borderWidth_->currentData().toInt();
    now.blackAndWhite = printing_->checkedId() == 1;
    return now;
}

void PlotAttributesDialog::accept() {
    for (auto* const limit : limits_) {
        if (!limit->isEnabled()) {
            continue;
        }
        if (const auto why =
                doubleCheck(std::numeric_limits<double>::lowest(),
                            std::numeric_limits<double>::max())(toBytes(limit->text()))) {
            showBox(&form_.ui, *why, kIllegalNumber);
            limit->setFocus();
            return;
        }
    }
    const auto now = attributes();
    if (!plotLimitsHold(now)) {
        showBox(&form_.ui, std::string(plottext::kLimits), std::string(plottext::kLimitsTitle));
        limits_[scalesX(now.scale) || now.x.least < now.x.most ? 2 : 0]->setFocus();
        return;
    }
    QDialog::accept();
}

void PlotAttributesDialog::reject() {
    if (attributes() != before_ &&
        showBox(&form_.ui, std::string(plottext::kCancel), std::string(plottext::kCancelTitle),
                Icon::Question, Buttons::YesNo) != Button::Yes) {
        return;
    }
    QDialog::reject();
}

// --- One series --------------------------------------------------------------------------

PlotSeriesDialog::PlotSeriesDialog(FormContext& form, const std::string& title,
                                   const SeriesAttributes& series, QWidget* parent)
    : QDialog(parent), form_(form) {
    setObjectName(QStringLiteral("EditPlotSeries"));
    setWindowTitle(toQString("Data Attributes: " + title));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);
    colour_ = makeColours("colour", series.colour, this);
    style_ = makeTexts("lineStyle", lineStyleNames(), 0, this);
    width_ = makeNumbers("lineWidth", 1, kWidths, series.width, this);
    symbol_ = makeTexts("symbol", plotSymbolNames(), 0, this);
    addRow(*grid, 0, 0, "Color:", colour_);
    addRow(*grid, 1, 0, "Line Style:", style_);
    addRow(*grid, 2, 0, "Line Width:", width_);
    addRow(*grid, 3, 0, "Symbol:", symbol_);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    showSeries(series);
    connect(style_, &QComboBox::activated, this, [this] { lineChanged(false); });
    connect(width_, &QComboBox::activated, this, [this] { lineChanged(true); });
}

void PlotSeriesDialog::showSeries(const SeriesAttributes& series) {
    selectColour(*colour_, series.colour);
    style_->setCurrentIndex(static_cast<int>(series.style));
    width_->setCurrentIndex(width_->findData(series.width));
    symbol_->setCurrentIndex(static_cast<int>(series.symbol) - 1);
}

SeriesAttributes PlotSeriesDialog::series() const {
    SeriesAttributes series;
    series.colour = colourOf(*colour_);
    series.style = static_cast<LineStyle>(style_->currentIndex());
    series.width = width_->currentData().toInt();
    series.symbol = static_cast<PlotSymbol>(symbol_->currentIndex() + 1);
    return series;
}

bool PlotSeriesDialog::settle() {
    auto now = series();
    if (styleFitsWidth(now)) {
        return true;
    }
    const auto title = std::string(plottext::kSelectionTitle);
    if (showBox(&form_.ui, styleConflictText(widthWasChanged_), title, Icon::Question,
                Buttons::YesNo) != Button::Yes) {
        showBox(&form_.ui, std::string(plottext::kSelectAnother), title, Icon::Information);
        return false;
    }
    settleStyleConflict(now, widthWasChanged_);
    showSeries(now);
    return true;
}

void PlotSeriesDialog::lineChanged(bool width) {
    widthWasChanged_ = width;
    (void)settle();
}

void PlotSeriesDialog::accept() {
    if (settle()) {
        QDialog::accept();
    }
}

bool editPlotAttributes(FormContext& form, PlotAttributes& attributes, int series,
                        std::string_view names, QWidget* parent) {
    PlotAttributesDialog dialog(form, attributes, series, names, parent);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return false;
    }
    const auto now = dialog.attributes();
    const bool changed = now != attributes;
    attributes = now;
    return changed;
}

}  // namespace kavu
