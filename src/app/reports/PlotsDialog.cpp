#include "app/reports/PlotsDialog.h"

#include "app/conversion/PlotAttributesDialog.h"
#include "app/conversion/PlotOutput.h"
#include "app/conversion/PlotView.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/WindowCare.h"
#include "app/reports/PagePreview.h"
#include "conversion/ConversionStore.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "drawing/CairoSurface.h"
#include "reports/print/ReportPrinter.h"
#include "vocabulary/CGroupFields.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kPlotsTitle[] = "View Plots";

/// A series for each row, by the name of its line in the form of the attributes.
std::string seriesNames(std::size_t rows) {
    std::string names;
    for (std::size_t i = 1; i <= rows; ++i) {
        names += "Measurement #" + std::to_string(i) + "\n";
    }
    return names;
}

ListRow listRow(const PlottedRow& row) {
    return {row.name, row.date, row.order, row.rms, row.correlation};
}

}  // namespace

PlotsDialog::PlotsDialog(const CalibrationSetup& setup, std::vector<std::string> names,
                         QWidget* parent)
    : QDialog(parent),
      setup_(setup),
      names_(std::move(names)),
      attributes_(plottedAttributes(setup.form.settings)) {
    setObjectName(QStringLiteral("ViewMultipleMeasurementPlots"));
    setWindowTitle(QLatin1String(kPlotsTitle));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setHelpTopic(*this, "ViewMultipleMeasurementPlots");
    std::vector<std::string> kept;
    for (auto& each : readPlotted(setup.form.settings)) {
        kept.push_back(std::move(each.name));
    }
    rows_ = plottedRows(setup_.document, setup_.conversions, kept);
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->setObjectName(QStringLiteral("parts"));
    parts->setChildrenCollapsible(false);
    makeList();
    plot_ = new PlotView(
        "plot", QStringLiteral("Plot"),
        [this](DrawingSurface& surface) {
            if (rows_.empty()) {
                drawMessage(surface, "Add a measurement to see its curve.");
            } else {
                (void)drawMultiPlot(surface, attributes_, rows_, MultiPlotTexts::Legend);
            }
        },
        this);
    plot_->setMinimumHeight(look::unit(*this) * 24);
    parts->addWidget(list_);
    parts->addWidget(plot_);
    parts->setStretchFactor(1, 1);
    column->addWidget(parts, 1);
    makeButtons(*column);
    showRows();
    resize(QSize(look::charactersWide(*this, 110), look::unit(*this) * 80)
               .boundedTo(look::roomOnScreen(*this)));
}

void PlotsDialog::makeList() {
    ListSetup setup;
    setup.columns = {{.title = "Name", .editable = false},
                     {.title = "Date", .editable = false},
                     {.title = "Fit", .editable = false},
                     {.title = "RMS", .editable = false},
                     {.title = "Correlation", .editable = false}};
    setup.mostRows = static_cast<int>(kMostPlotted);
    setup.canSort = false;
    list_ = new EditableList(setup_.form, "rows", std::move(setup), this);
    list_->view()->setAccessibleName(QStringLiteral("Measurements of the plot"));
    list_->view()->setMinimumHeight(look::unit(*this) * 10);
    list_->rowEditor = [this](int, const ListRow&) -> std::optional<ListRow> {
        const auto name = choose();
        if (!name) {
            return std::nullopt;
        }
        const auto rows = plottedRows(setup_.document, setup_.conversions, {*name});
        return rows.empty() ? std::nullopt : std::optional(listRow(rows.front()));
    };
    list_->mayDelete = [this](int) {
        return showBox(&setup_.form.ui, "Delete this measurement from the plot?", kPlotsTitle,
                       Icon::Question, Buttons::YesNo) == Button::Yes;
    };
    connect(list_, &EditableList::changed, this, &PlotsDialog::takeList);
}

void PlotsDialog::makeButtons(QVBoxLayout& column) {
    auto* const buttons = new QDialogButtonBox(this);
    buttons->setObjectName(QStringLiteral("buttons"));
    const auto add = [&](const char* name, const QString& text, QDialogButtonBox::ButtonRole role,
                         auto run) {
        auto* const button = look::makeButton(name, text, {}, this);
        buttons->addButton(button, role);
        connect(button, &QPushButton::clicked, this, run);
    };
    using enum QDialogButtonBox::ButtonRole;
    add("attributes", QStringLiteral("Edit &Graph Attributes..."), ActionRole,
        [this] { editAttributes(); });
    add("print", QStringLiteral("&Print..."), ActionRole, [this] { print(); });
    add("savePlot", QStringLiteral("&Save Plot..."), ActionRole, [this] { savePicture(); });
    add("saveData", QStringLiteral("Save Da&ta..."), ActionRole, [this] { saveData(); });
    add("close", QStringLiteral("Close"), RejectRole, [this] { reject(); });
    column.addWidget(buttons);
}

void PlotsDialog::showRows() {
    std::vector<ListRow> rows;
    for (const auto& row : rows_) {
        rows.push_back(listRow(row));
    }
    list_->setRows(std::move(rows));
    plot_->redraw();
}

void PlotsDialog::takeList() {
    std::vector<std::string> names;
    for (const auto& row : list_->rows()) {
        names.push_back(row.front());
    }
    rows_ = plottedRows(setup_.document, setup_.conversions, names);
    plot_->redraw();
}

std::optional<std::string> PlotsDialog::choose() const {
    TablePrompt prompt;
    prompt.title = "Select Measurement To Be Plotted";
    prompt.columns = {"Measurement Name", "Date"};
    for (const auto& name : names_) {
        const auto place = setup_.conversions.locateDefinition(name);
        prompt.rows.push_back(
            {name,
             place.found
                 ? setup_.conversions.chunk(place.chunk)->value(place.section, c::kTrd5.code, "")
                 : std::string()});
    }
    const int row = setup_.form.ui.selectFromTable(prompt);
    return row < 0 ? std::nullopt : std::optional(names_[static_cast<std::size_t>(row)]);
}

void PlotsDialog::editAttributes() {
    if (editPlotAttributes(setup_.form, attributes_, static_cast<int>(kMostPlotted),
                           seriesNames(kMostPlotted), this)) {
        plot_->redraw();
    }
}

void PlotsDialog::print() {
    const auto make = [this](const PaperSetup& paper) {
        auto setup = pdfSetup(setup_.document.clock, std::string(multiplot::kTitle));
        setup.paper = paperPoints(paper);
        setup.keepsPages = true;
        PdfSurface surface(setup);
        (void)surface.startPage();
        surface.addOutline(multiplot::kTitle);
        (void)drawMultiPlot(surface, attributes_, rows_, MultiPlotTexts::Fits);
        return surface.printed();
    };
    previewPages(setup_.form, std::string(multiplot::kTitle), PaperUse::Sheets, make, this);
}

void PlotsDialog::savePicture() {
    savePlot(setup_.form, kPlotsTitle, [this](DrawingSurface& surface) {
        return drawMultiPlot(surface, attributes_, rows_, MultiPlotTexts::Fits);
    });
}

void PlotsDialog::saveData() {
    (void)saveReportFile(
        setup_.form, "Plot Data", {"Comma Separated Values", "*.csv"}, ".csv",
        multiPlotData(rows_, setup_.form.settings.get(setting::kFloatPrecision), ','));
}

void PlotsDialog::reject() {
    writePlotted(setup_.form.settings, rows_);
    attributes_.save(setup_.form.settings, multiplot::kSection);
    QDialog::reject();
}

void viewMultipleMeasurementPlots(const CalibrationSetup& setup, QWidget* parent) {
    auto& ui = setup.form.ui;
    std::vector<std::string> names;
    {
        const ProgressScope progress(&ui, ProgressMode::WithCancel, false);
        setProgressText(&ui, "Searching For Measurements");
        names = calibrationNames(setup.conversions, &ui);
        if (cancelRequested(&ui)) {
            return;
        }
    }
    if (names.empty()) {
        showBox(&ui,
                "There are no measurements that are defined as Pair Sets (with \"defining "
                "polynomial fit\" option set)",
                kPlotsTitle, Icon::Information);
        return;
    }
    PlotsDialog dialog(setup, std::move(names), parent);
    runDialog(setup.form.door, dialog);
}

}  // namespace kavu
