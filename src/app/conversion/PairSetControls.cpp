#include "app/conversion/PairSetControls.h"

#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "conversion/CurveFit.h"
#include "conversion/PairSet.h"
#include "conversion/PairSetFit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

QCheckBox* makeCheck(const char* name, const char* text, QWidget* parent) {
    auto* check = new QCheckBox(QLatin1String(text), parent);
    check->setObjectName(QLatin1String(name));
    check->setAccessibleName(look::spokenName(QLatin1String(text)));
    return check;
}

/// A value that is computed: it can be copied and not edited.
QLineEdit* makeShown(const char* name, QWidget* parent) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setReadOnly(true);
    edit->setMinimumWidth(look::charactersWide(*edit, 14));
    return edit;
}

QComboBox* makeCombo(const char* name, QWidget* parent) {
    auto* box = new QComboBox(parent);
    box->setObjectName(QLatin1String(name));
    return box;
}

void addLabelled(QGridLayout& grid, int row, int column, const char* label, QWidget* control) {
    grid.addWidget(look::addKeyLabel(QLatin1String(label), *control), row, column);
    grid.addWidget(control, row, column + 1);
}

EditableList* makeList(FormContext& form, QWidget& panel, bool readOnly) {
    ListSetup setup;
    const auto numbered = [](int number) { return std::to_string(number); };
    setup.columns = {
        {.title = "Pair #", .kind = ColumnKind::Integer, .editable = false, .numbered = numbered},
        {.title = "Telemetry Value",
         .kind = ColumnKind::Double,
         .limit = PairSet::kTelemetryLimit,
         .editable = !readOnly,
         .required = true},
        {.title = "EU Value",
         .kind = ColumnKind::Double,
         .limit = PairSet::kEngineeringLimit,
         .editable = !readOnly,
         .required = true},
        {.title = "Corrected EU Value", .kind = ColumnKind::Double, .editable = false},
        {.title = "Error", .kind = ColumnKind::Double, .editable = false}};
    setup.mostRows = static_cast<int>(PairSet::kMostPairs);
    setup.canAdd = !readOnly;
    setup.canEdit = !readOnly;
    setup.canDelete = !readOnly;
    setup.canSort = false;
    auto* list = new EditableList(form, "pairs", std::move(setup), &panel);
    list->view()->setAccessibleName(QStringLiteral("Pair Sets"));
    list->view()->setMinimumWidth(look::charactersWide(panel, 92));
    return list;
}

/// "1st" to "10th"
QString ordinal(int number) {
    const char* const ending = number == 1 ? "st" : number == 2 ? "nd" : number == 3 ? "rd" : "th";
    return QString::number(number) + QLatin1String(ending);
}

QGroupBox* makeFitBox(PairSetControls& made, QWidget& panel) {
    auto* box = new QGroupBox(QStringLiteral("Curve Fit"), &panel);
    auto* layout = new QVBoxLayout(box);
    made.curve = makeCheck("definesCurve", "Define &Polynomial Curve Fit", box);
    layout->addWidget(made.curve);
    made.choices = new QWidget(box);
    made.choices->setObjectName(QStringLiteral("choices"));
    auto* grid = new QGridLayout(made.choices);
    look::arrangePart(*grid, panel);
    grid->setColumnStretch(2, 1);
    layout->addWidget(made.choices);
    made.order = makeCombo("order", box);
    for (int i = 1; i <= kHighestListedOrder; ++i) {
        made.order->addItem(QString::number(i));
    }
    addLabelled(*grid, 0, 0, "Order Of Fit:", made.order);
    made.useBestFit = makeCheck("useBestFit", "Use &Best Fit", box);
    grid->addWidget(made.useBestFit, 0, 2);
    made.maxOrder = makeCombo("maxOrder", box);
    for (int i = 1; i <= kHighestOrder; ++i) {
        made.maxOrder->addItem(ordinal(i));
    }
    addLabelled(*grid, 1, 0, "Highest Order To Try:", made.maxOrder);
    made.bestFit = new QLabel(box);
    made.bestFit->setObjectName(QStringLiteral("bestFit"));
    grid->addWidget(made.bestFit, 1, 2);
    made.defaultBits = new QLineEdit(box);
    made.defaultBits->setObjectName(QStringLiteral("defaultBits"));
    made.defaultBits->setMaximumWidth(look::charactersWide(*made.defaultBits, 10));
    addLabelled(*grid, 2, 0, "Word Size If Unknown:", made.defaultBits);
    made.allCounts = makeCheck("allCounts", "Curve Through &All Counts", box);
    grid->addWidget(made.allCounts, 2, 2);
    return box;
}

SeriesControls addSeriesRow(QGridLayout& grid, int row, const char* label, const char* name,
                            const char* editName, const char* computedName, QWidget* box) {
    SeriesControls made;
    made.value = makeShown(name, box);
    addLabelled(grid, row, 0, label, made.value);
    made.edit = look::makeButton(editName, QStringLiteral("Edit..."), {}, box);
    made.edit->setAccessibleName(QLatin1String(label) + QStringLiteral(" Edit"));
    grid.addWidget(made.edit, row, 2);
    made.computed = makeShown(computedName, box);
    grid.addWidget(look::addLabel(QStringLiteral("="), *made.computed), row, 3);
    made.computed->setAccessibleName(QLatin1String(label) + QStringLiteral(" EU Value"));
    grid.addWidget(made.computed, row, 4);
    return made;
}

QGroupBox* makeSeriesBox(PairSetControls& made, QWidget& panel) {
    auto* box = new QGroupBox(QStringLiteral("Series Plot"), &panel);
    auto* grid = new QGridLayout(box);
    made.series = makeCheck("enableSeries", "E&nable", box);
    grid->addWidget(made.series, 0, 0, 1, 2);
    made.zero = addSeriesRow(*grid, 1, "Zero:", "zero", "editZero", "zeroValue", box);
    made.cal = addSeriesRow(*grid, 2, "Cal:", "cal", "editCal", "calValue", box);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(4, 1);
    return box;
}

QGroupBox* makeResultBox(PairSetControls& made, QWidget& panel) {
    auto* box = new QGroupBox(QStringLiteral("Result"), &panel);
    box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* grid = new QGridLayout(box);
    made.coefficients = new QListWidget(box);
    made.coefficients->setObjectName(QStringLiteral("coefficients"));
    made.coefficients->setMinimumHeight(look::unit(panel) * 2 * 5);
    made.coefficients->setMaximumHeight(look::unit(panel) * 2 * 6);
    made.coefficients->setMinimumWidth(look::charactersWide(panel, 34));
    grid->addWidget(look::addLabel(QStringLiteral("Coefficients:"), *made.coefficients), 0, 0);
    grid->addWidget(made.coefficients, 1, 0, 3, 1);
    made.correlation = makeShown("correlation", box);
    made.rms = makeShown("rms", box);
    addLabelled(*grid, 1, 1, "Correlation Coefficient:", made.correlation);
    addLabelled(*grid, 2, 1, "RMS:", made.rms);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    made.trust = new QLabel(box);
    made.trust->setObjectName(QStringLiteral("trustNote"));
    made.trust->setAccessibleName(QStringLiteral("Trust"));
    made.trust->setTextFormat(Qt::PlainText);
    made.trust->setWordWrap(true);
    made.trust->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto font = made.trust->font();
    font.setBold(true);
    made.trust->setFont(font);
    grid->addWidget(made.trust, 4, 0, 1, 3);
    return box;
}

QWidget* makePlotSide(PairSetControls& made, QWidget& panel, QWidget* curveView,
                      QWidget* residualView) {
    auto* side = new QWidget(&panel);
    side->setObjectName(QStringLiteral("plotSide"));
    auto* layout = new QVBoxLayout(side);
    look::arrangePart(*layout, panel);
    layout->addWidget(curveView, 3);
    layout->addWidget(residualView, 1);
    made.pointer = look::makeNote({}, side);
    made.pointer->setObjectName(QStringLiteral("pointer"));
    made.pointer->setWordWrap(false);
    made.pointer->setMinimumHeight(made.pointer->fontMetrics().height());
    made.pointer->setMinimumWidth(1);
    layout->addWidget(made.pointer);
    auto* buttons = new QHBoxLayout;
    look::arrangePart(*buttons, panel);
    made.attributes = look::makeButton("plotAttributes", QStringLiteral("Plot A&ttributes..."),
                                       QStringLiteral("plot"), side);
    made.print =
        look::makeButton("print", QStringLiteral("P&rint..."), QStringLiteral("print"), side);
    made.save =
        look::makeButton("savePlot", QStringLiteral("Sa&ve Plot..."), QStringLiteral("save"), side);
    for (auto* const button : {made.attributes, made.print, made.save}) {
        buttons->addWidget(button);
    }
    buttons->addStretch();
    layout->addLayout(buttons);
    made.plotSide = side;
    return side;
}

}  // namespace

PairSetControls makePairSetControls(FormContext& form, QWidget& panel, QWidget* curveView,
                                    QWidget* residualView, bool readOnly) {
    PairSetControls made;
    auto* columns = new QHBoxLayout(&panel);
    look::arrangePart(*columns, panel);
    auto* left = new QVBoxLayout;
    look::arrangePart(*left, panel);
    columns->addLayout(left);
    made.columns = columns;
    made.list = makeList(form, panel, readOnly);
    made.import = made.list->addButton("import", QStringLiteral("&Import..."));
    made.paste = made.list->addButton("paste", QStringLiteral("Pa&ste..."));
    made.copy = made.list->addButton("copyPairs", QStringLiteral("&Copy"));
    made.savePairs = made.list->addButton("savePairs", QStringLiteral("Save &Pairs..."));
    left->addWidget(made.list, 1);
    made.sorted = makeCheck("sorted", "&Keep Sorted By Telemetry Value", &panel);
    left->addWidget(made.sorted);
    left->addWidget(makeFitBox(made, panel));
    left->addWidget(makeSeriesBox(made, panel));
    made.showPlot = makeCheck("showPlot", "Sho&w Plot", &panel);
    auto* right = new QVBoxLayout;
    look::arrangePart(*right, panel);
    columns->addLayout(right);
    right->addWidget(makePlotSide(made, panel, curveView, residualView), 1);
    right->addWidget(makeResultBox(made, panel));
    right->addStretch();
    left->addWidget(made.showPlot);
    return made;
}

}  // namespace kavu
