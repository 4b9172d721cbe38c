#include "app/reports/ReportWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/WindowCare.h"
#include "app/reports/LayoutFiles.h"
#include "app/reports/PagePreview.h"
#include "app/reports/ReportOptionsSheet.h"
#include "app/reports/TextViewer.h"
#include "core/files/FileIo.h"
#include "core/talk/FilePrompts.h"
#include "core/talk/Messages.h"
#include "core/text/Printf.h"
#include "reports/ReportDesk.h"
#include "reports/layout/ReportColumns.h"
#include "reports/print/ReportPrinter.h"

#include <array>

#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr auto kDestinations =
    std::to_array<const char*>({"Screen (Excel XML)", "File (Excel XML)", "Screen (plain text)",
                                "Printer (plain text)", "File (plain text)"});
constexpr auto kStreamSorts = std::to_array<const char*>({"FWP/FN", "Measurement Name"});
constexpr auto kBusSorts =
    std::to_array<const char*>({"Do Not Sort", "Bus/Msg", "Measurement Name"});

template <typename Texts>
QStringList textsOf(const Texts& texts) {
    QStringList list;
    for (const auto* const text : texts) {
        list << QLatin1String(text);
    }
    return list;
}

/// The first entry prints at a size of its own.
QStringList fontSizes() {
    QStringList sizes{QStringLiteral("Automatic")};
    for (int index = 1; index <= kMostFont; ++index) {
        sizes << QString::number(index + 1);
    }
    return sizes;
}

}  // namespace

ReportWindow::ReportWindow(const ReportWindowSetup& setup, QWidget* parent)
    : QDialog(parent), setup_(setup), startPage_(setup.desk.nextPage) {
    setObjectName(QStringLiteral("PCMReports"));
    setWindowTitle(QStringLiteral("Report Generation"));
    setHelpTopic(*this, "PCMReports");
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    makeMenus(*column);
    layoutName_ = look::makeNote({}, this);
    layoutName_->setObjectName(QStringLiteral("layout"));
    column->addWidget(layoutName_);
    auto* const sides = new QHBoxLayout;
    auto* const left = new QVBoxLayout;
    left->addWidget(makeReports());
    left->addWidget(makeDestination());
    left->addWidget(makeDelimited());
    left->addStretch(1);
    sides->addLayout(left, 1);
    sides->addWidget(makeColumns(), 1);
    column->addLayout(sides, 1);
    makeButtons(*column);
    load();
    if (setup_.checksFormat && !isBus()) {
        boxes_.at(std::string(layout_key::kFormat))->setChecked(true);
    }
}

// --- parts ----------------------------------------------------------------------------------

void ReportWindow::makeMenus(QVBoxLayout& column) {
    auto* const bar = new QMenuBar(this);
    bar->setObjectName(QStringLiteral("REPORTMENU"));
    const auto add = [this](QMenu& menu, const char* name, const QString& text, auto run,
                            const QKeySequence& keys = {}) {
        auto* const action = menu.addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, run);
        return action;
    };
    auto* const file = bar->addMenu(QStringLiteral("&File"));
    add(
        *file, "openLayout", QStringLiteral("&Open Report Layout File..."),
        [this] {
            // What was chosen here belongs to the file that is open.
            if (!setup_.desk.file().isOpen() || store()) {
                if (openLayoutFile(setup_.form, setup_.desk)) {
                    load();
                }
            }
        },
        QKeySequence::Open);
    add(
        *file, "saveLayout", QStringLiteral("&Save Report Layout File"),
        [this] {
            if (store() && saveLayoutFile(setup_.form, setup_.document, setup_.desk)) {
                showLayout();
            }
        },
        QKeySequence::Save);
    add(*file, "saveLayoutAs", QStringLiteral("Save Report Layout File &As..."), [this] {
        if (store() && saveLayoutFileAs(setup_.form, setup_.document, setup_.desk)) {
            showLayout();
        }
    });
    closeAction_ = add(*file, "closeLayout", QStringLiteral("&Close Report Layout File"), [this] {
        if (store() && setup_.desk.close(&setup_.form.ui)) {
            load();
        }
    });
    auto* const options = bar->addMenu(QStringLiteral("&Options"));
    add(*options, "reportOptions", QStringLiteral("&Report Options..."), [this] { editOptions(); });
    pageAction_ = add(*options, "startPage", {}, [this] { chooseStartPage(); });
    column.setMenuBar(bar);
}

QWidget* ReportWindow::makeReports() {
    auto* const group = new QGroupBox(QStringLiteral("Reports"), this);
    auto* const column = new QVBoxLayout(group);
    const auto add = [&](std::string_view key, const char* name, const QString& text,
                         bool isOfStream) {
        auto* const box = new QCheckBox(text, group);
        box->setObjectName(QLatin1String(name));
        box->setEnabled(!isOfStream || !isBus());
        column->addWidget(box);
        boxes_[std::string(key)] = box;
    };
    add(layout_key::kFormat, "format", QStringLiteral("&PCM Format Attributes"), true);
    add(layout_key::kFrame, "frame", QStringLiteral("&Major Frame"), true);
    add(layout_key::kMeasurements, "measurements", QStringLiteral("Measurement &List"), false);
    return group;
}

QWidget* ReportWindow::makePath(const char* name, const char* key, const QString& label) {
    auto* const part = new QWidget(this);
    part->setObjectName(QLatin1String(name) + QStringLiteral("Part"));
    auto* const row = new QHBoxLayout(part);
    look::arrangePart(*row, *part);
    auto* const path = new QLineEdit(part);
    path->setObjectName(QLatin1String(name));
    path->setProperty("key", QLatin1String(key));
    row->addWidget(look::addKeyLabel(label, *path));
    row->addWidget(path, 1);
    const auto browseName = std::string(name) + "Browse";
    auto* const button =
        look::makeButton(browseName.c_str(), QStringLiteral("Browse..."), {}, part);
    button->setAccessibleName(QStringLiteral("Browse for ") + look::spokenName(label));
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, path] { browse(*path); });
    return part;
}

QWidget* ReportWindow::makeDestination() {
    auto* const group = new QGroupBox(QStringLiteral("Destination"), this);
    auto* const form = new QFormLayout(group);
    const auto add = [&](QComboBox*& box, const char* name, const QString& label,
                         const QStringList& entries) {
        box = new QComboBox(group);
        box->setObjectName(QLatin1String(name));
        box->addItems(entries);
        form->addRow(look::addKeyLabel(label, *box), box);
    };
    add(destination_, "destination", QStringLiteral("&Destination:"), textsOf(kDestinations));
    add(font_, "font", QStringLiteral("&Font size:"), fontSizes());
    reportPath_ = makePath("reportPath", layout_key::kReportPath.data(), QStringLiteral("Pat&h:"));
    form->addRow(reportPath_);
    connect(destination_, &QComboBox::currentIndexChanged, this, [this] { enableFields(); });
    return group;
}

QWidget* ReportWindow::makeDelimited() {
    auto* const group =
        new QGroupBox(QStringLiteral("Create Semi-Colon Delimited ASCII Files"), this);
    auto* const column = new QVBoxLayout(group);
    auto* const boxes = new QHBoxLayout;
    column->addLayout(boxes);
    const auto add = [&](std::string_view key, const char* name, const QString& text,
                         bool isOfStream) {
        auto* const box = new QCheckBox(text, group);
        box->setObjectName(QLatin1String(name));
        box->setEnabled(!isOfStream || !isBus());
        boxes->addWidget(box);
        boxes_[std::string(key)] = box;
    };
    add(layout_key::kFrameDelimited, "frameDelimited", QStringLiteral("Ma&jor Frame"), true);
    add(layout_key::kMeasurementsDelimited, "measurementsDelimited",
        QStringLiteral("Meas&urement List"), false);
    boxes->addStretch(1);
    delimitedPath_ =
        makePath("delimitedPath", layout_key::kDelimitedPath.data(), QStringLiteral("Pa&th:"));
    column->addWidget(delimitedPath_);
    return group;
}

QWidget* ReportWindow::makeColumns() {
    auto* const group = new QGroupBox(QStringLiteral("Measurement List Options"), this);
    auto* const column = new QVBoxLayout(group);
    columns_ = new QListWidget(group);
    columns_->setObjectName(QStringLiteral("columns"));
    columns_->setMinimumSize(look::charactersWide(*this, 42), look::unit(*this) * 12);
    column->addWidget(look::addKeyLabel(QStringLiteral("&Columns after the name:"), *columns_));
    column->addWidget(columns_, 1);
    auto* const row = new QHBoxLayout;
    for (const bool all : {true, false}) {
        auto* const button = look::makeButton(
            all ? "selectAll" : "clearAll",
            all ? QStringLiteral("Select &All") : QStringLiteral("Clea&r All"), {}, group);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, all] {
            for (int i = 0; i < columns_->count(); ++i) {
                columns_->item(i)->setCheckState(all ? Qt::Checked : Qt::Unchecked);
            }
        });
    }
    row->addStretch(1);
    column->addLayout(row);
    auto* const form = new QFormLayout;
    sort_ = new QComboBox(group);
    sort_->setObjectName(QStringLiteral("sort"));
    sort_->addItems(isBus() ? textsOf(kBusSorts) : textsOf(kStreamSorts));
    form->addRow(look::addKeyLabel(QStringLiteral("Sort &by:"), *sort_), sort_);
    column->addLayout(form);
    return group;
}

void ReportWindow::makeButtons(QVBoxLayout& column) {
    auto* const buttons = new QDialogButtonBox(this);
    buttons->setObjectName(QStringLiteral("buttons"));
    const auto add = [&](const char* name, const QString& text, QDialogButtonBox::ButtonRole role,
                         auto run) {
        auto* const button = look::makeButton(name, text, {}, this);
        buttons->addButton(button, role);
        connect(button, &QPushButton::clicked, this, run);
        return button;
    };
    add("generate", QStringLiteral("&Generate"), QDialogButtonBox::ActionRole, [this] {
        generate();
    })->setDefault(true);
    add("options", QStringLiteral("Opt&ions..."), QDialogButtonBox::ActionRole,
        [this] { editOptions(); });
    add("startPageButton", QStringLiteral("Starting Page &Number..."), QDialogButtonBox::ActionRole,
        [this] { chooseStartPage(); });
    add("close", QStringLiteral("Close"), QDialogButtonBox::RejectRole, [this] { reject(); });
    column.addWidget(buttons);
}

// --- fields and keys ------------------------------------------------------------------------

void ReportWindow::load() {
    const auto layout = setup_.desk.layout();
    for (const auto& [key, box] : boxes_) {
        box->setChecked(layout.isChecked(key) && box->isEnabled());
    }
    destination_->setCurrentIndex(layout.number(layout_key::kDestination));
    font_->setCurrentIndex(layout.number(layout_key::kFont));
    // A sort that only the other kind of stream has is none here.
    const int sort = layout.number(layout_key::kSort);
    sort_->setCurrentIndex(sort < sort_->count() ? sort : 0);
    for (auto* const part : {reportPath_, delimitedPath_}) {
        auto* const path = part->findChild<QLineEdit*>();
        const auto key = toBytes(path->property("key").toString());
        shown_[key] = ShownText(layout.text(key));
        path->setText(shown_[key].shown());
    }
    columns_->clear();
    std::size_t number = 0;
    for (const auto& column : reportColumns(setup_.document, isBus())) {
        auto* const item = new QListWidgetItem(toQString(column.shownName()), columns_);
        item->setCheckState(layout.isChecked(columnKey(isBus(), ++number)) ? Qt::Checked
                                                                           : Qt::Unchecked);
    }
    columns_->setCurrentRow(0);
    showLayout();
    enableFields();
}

bool ReportWindow::store() {
    auto& desk = setup_.desk;
    auto* const ui = &setup_.form.ui;
    bool isStored = true;
    const auto set = [&](std::string_view key, const std::string& value) {
        isStored = isStored && desk.set(ui, key, value);
    };
    for (const auto& [key, box] : boxes_) {
        // What a bus does not have keeps what a stream wants of it.
        if (box->isEnabled()) {
            set(key, box->isChecked() ? "1" : "0");
        }
    }
    set(layout_key::kDestination, std::to_string(destination_->currentIndex()));
    set(layout_key::kFont, std::to_string(font_->currentIndex()));
    set(layout_key::kSort, std::to_string(sort_->currentIndex()));
    for (auto* const part : {reportPath_, delimitedPath_}) {
        const auto* const path = part->findChild<QLineEdit*>();
        const auto key = toBytes(path->property("key").toString());
        set(key, shown_[key].bytesOf(path->text().trimmed()));
    }
    for (int i = 0; i < columns_->count(); ++i) {
        set(columnKey(isBus(), static_cast<std::size_t>(i) + 1),
            columns_->item(i)->checkState() == Qt::Checked ? "1" : "0");
    }
    return isStored;
}

void ReportWindow::showLayout() {
    layoutName_->setText(toQString(layoutLine(setup_.desk)));
    closeAction_->setEnabled(setup_.desk.file().isOpen());
    pageAction_->setText(
        toQString(formatPrintf("&Set Starting Page Number (Current Page: %d)", startPage_)));
}

void ReportWindow::enableFields() {
    const auto destination = static_cast<ReportDestination>(destination_->currentIndex());
    reportPath_->setEnabled(destination == ReportDestination::FileText ||
                            destination == ReportDestination::FileWorkbook);
}

void ReportWindow::browse(QLineEdit& path) {
    FilePrompt prompt;
    prompt.title = "Select Report File";
    prompt.filters = {{"All Files", "*"}};
    prompt.forSaving = true;
    prompt.path = toBytes(path.text());
    if (const auto choice = setup_.form.ui.chooseFile(prompt)) {
        shown_[toBytes(path.property("key").toString())] = ShownText(choice->path);
        path.setText(toQString(choice->path));
    }
}

void ReportWindow::chooseStartPage() {
    if (const auto page = askStartPage(setup_.form.messages, setup_.form.ui, startPage_)) {
        startPage_ = setup_.desk.nextPage = *page;
        showLayout();
    }
}

void ReportWindow::editOptions() {
    (void)editReportOptions(setup_.form, setup_.desk, isBus(), this);
    showLayout();
}

// --- the reports ----------------------------------------------------------------------------

void ReportWindow::generate() {
    if (!store()) {
        return;
    }
    const auto layout = setup_.desk.layout();
    const ReportSource source{.context = setup_.document,
                              .layout = layout,
                              .conversions = setup_.conversions,
                              .parent = &setup_.form.ui,
                              .format = setup_.format,
                              .bus = setup_.bus};
    const ReportOutlets outlets{
        .mayWrite = [this](const std::string& path) { return mayWrite(path); },
        .showText = [this](const std::string& path) { showText(path); },
        .openWorkbook =
            [](const std::string& path) {
                return QDesktopServices::openUrl(QUrl::fromLocalFile(toQString(path)));
            },
        .print = [this](std::vector<ReportContent> reports) { print(std::move(reports)); }};
    (void)generateReports(source, outlets);
}

bool ReportWindow::mayWrite(const std::string& path) {
    const auto question = overwriteQuestion(path, {});
    if (question && !written_.contains(path) &&
        showBox(&setup_.form.ui, *question, kFileExistsTitle, Icon::Question, Buttons::YesNo) !=
            Button::Yes) {
        return false;
    }
    written_.insert(path);
    return true;
}

void ReportWindow::showText(const std::string& path) {
    std::string text;
    if (reportOpened(setup_.form.messages, &setup_.form.ui, readWholeFile(path, text))) {
        TextViewer viewer(setup_.form, setup_.document, "Report", std::move(text), this);
        runDialog(setup_.form.door, viewer);
    }
}

void ReportWindow::print(std::vector<ReportContent> reports) {
    const auto title = reports.empty() ? std::string() : onOneLine(reports.front().head.title);
    previewPages(
        setup_.form, title, PaperUse::Reports,
        [this, &reports](const PaperSetup& paper) {
            return printReportPages(setup_.document, setup_.desk.layout(), reports, startPage_,
                                    paper, &setup_.form.ui);
        },
        this);
}

}  // namespace kavu
