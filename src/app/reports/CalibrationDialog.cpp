#include "app/reports/CalibrationDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/reports/LayoutFiles.h"
#include "app/reports/PagePreview.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "reports/ReportDesk.h"
#include "reports/calibration/CalibrationSheet.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kCalibrationTitle[] = "Print Calibration Reports";

}  // namespace

CalibrationDialog::CalibrationDialog(const CalibrationSetup& setup, std::vector<std::string> names,
                                     QWidget* parent)
    : QDialog(parent), setup_(setup), names_(std::move(names)) {
    setObjectName(QStringLiteral("PrintCalibrationReports"));
    setWindowTitle(QLatin1String(kCalibrationTitle));
    setHelpTopic(*this, "PrintCalibrationReports");
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    makeList();
    makeLayoutRow();
    makeButtons();
    showLayout();
}

void CalibrationDialog::makeList() {
    auto* const column = static_cast<QVBoxLayout*>(layout());
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("measurements"));
    list_->setMinimumSize(look::charactersWide(*this, 50), look::unit(*this) * 16);
    for (const auto& name : names_) {
        (new QListWidgetItem(toQString(name), list_))->setCheckState(Qt::Checked);
    }
    list_->setCurrentRow(0);
    column->addWidget(look::addKeyLabel(QStringLiteral("&Measurements:"), *list_));
    column->addWidget(list_, 1);
    auto* const row = new QHBoxLayout;
    for (const bool on : {true, false}) {
        auto* const button = look::makeButton(
            on ? "selectAll" : "clearAll",
            on ? QStringLiteral("&Select All") : QStringLiteral("&Clear All"), {}, this);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, on] { markAll(on); });
    }
    row->addStretch(1);
    column->addLayout(row);
}

void CalibrationDialog::makeLayoutRow() {
    auto* const column = static_cast<QVBoxLayout*>(layout());
    layoutName_ = look::makeNote({}, this);
    layoutName_->setObjectName(QStringLiteral("layout"));
    column->addWidget(layoutName_);
    auto* const row = new QHBoxLayout;
    auto* const open =
        look::makeButton("openLayout", QStringLiteral("&Open Layout File..."), {}, this);
    row->addWidget(open);
    connect(open, &QPushButton::clicked, this, [this] {
        (void)openLayoutFile(setup_.form, setup_.desk);
        showLayout();
    });
    closeLayout_ = look::makeButton("closeLayout", QStringLiteral("Close &Layout File"), {}, this);
    row->addWidget(closeLayout_);
    connect(closeLayout_, &QPushButton::clicked, this, [this] {
        (void)setup_.desk.close(&setup_.form.ui);
        showLayout();
    });
    row->addStretch(1);
    column->addLayout(row);
}

void CalibrationDialog::makeButtons() {
    auto* const buttons = new QDialogButtonBox(this);
    buttons->setObjectName(QStringLiteral("buttons"));
    auto* const print =
        look::makeButton("print", QStringLiteral("&Print..."), QStringLiteral("print"), this);
    buttons->addButton(print, QDialogButtonBox::ActionRole);
    print->setDefault(true);
    connect(print, &QPushButton::clicked, this, [this] { this->print(); });
    auto* const close = look::makeButton("close", QStringLiteral("Close"), {}, this);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    static_cast<QVBoxLayout*>(layout())->addWidget(buttons);
}

void CalibrationDialog::markAll(bool on) {
    for (int i = 0; i < list_->count(); ++i) {
        list_->item(i)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    }
}

std::vector<std::string> CalibrationDialog::marked() const {
    std::vector<std::string> marked;
    for (int i = 0; i < list_->count(); ++i) {
        if (list_->item(i)->checkState() == Qt::Checked) {
            marked.push_back(names_[static_cast<std::size_t>(i)]);
        }
    }
    return marked;
}

void CalibrationDialog::showLayout() {
    layoutName_->setText(toQString(layoutLine(setup_.desk)));
    closeLayout_->setEnabled(setup_.desk.file().isOpen());
}

void CalibrationDialog::print() {
    auto& ui = setup_.form.ui;
    const auto names = marked();
    if (names.empty()) {
        showBox(&ui, "There are no calibration reports to print, or none are selected.",
                kCalibrationTitle, Icon::Information);
        return;
    }
    const auto question = formatPrintf(
        "This function will print calibration reports for %d measurements.\n\nContinue?",
        names.size());
    if (showBox(&ui, question, kCalibrationTitle, Icon::Question, Buttons::YesNo) != Button::Yes) {
        return;
    }
    const auto first = askStartPage(setup_.form.messages, ui, setup_.desk.nextPage);
    if (!first) {
        return;
    }
    const auto make = [&](const PaperSetup& paper) {
        const auto layout = setup_.desk.layout();
        const auto sheets =
            makeCalibrationSheets(setup_.document, setup_.conversions, setup_.format, layout, &ui,
                                  names, *first, sheetCharacters(paper));
        // The count of pages goes on where this run ends.
        setup_.desk.nextPage = *first + static_cast<int>(sheets.size());
        return printSheetPages(setup_.document, layout, sheets, paper, &ui);
    };
    previewPages(setup_.form, "Calibration Reports", PaperUse::Sheets, make, this);
}

void printAllCalibrationReports(const CalibrationSetup& setup, QWidget* parent) {
    std::vector<std::string> names;
    {
        const ProgressScope progress(&setup.form.ui, ProgressMode::WithCancel, false);
        setProgressText(&setup.form.ui, "Searching For Measurements");
        names = calibrationNames(setup.conversions, &setup.form.ui);
        if (cancelRequested(&setup.form.ui)) {
            return;
        }
    }
    CalibrationDialog dialog(setup, std::move(names), parent);
    runDialog(setup.form.door, dialog);
}

void printCalibrationSheet(const CalibrationSetup& setup, const Calibration& calibration,
                           QWidget* parent) {
    const auto make = [&](const PaperSetup& paper) {
        const auto layout = setup.desk.layout();
        return printSheetPages(setup.document, layout,
                               {makeCalibrationSheet(setup.document, layout, calibration,
                                                     setup.desk.nextPage, sheetCharacters(paper))},
                               paper, &setup.form.ui);
    };
    previewPages(setup.form, calibration.name, PaperUse::Sheets, make, parent);
}

}  // namespace kavu
