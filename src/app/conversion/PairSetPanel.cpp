#include "app/conversion/PairSetPanel.h"

#include "app/conversion/PairSetImportDialog.h"
#include "app/conversion/PairSetParts.h"
#include "app/conversion/PlotOutput.h"
#include "app/conversion/PlotView.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/RowDialog.h"
#include "conversion/EuNumbers.h"
#include "conversion/EuVocabulary.h"
#include "conversion/PairFile.h"
#include "conversion/PairTable.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <limits>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>

namespace kavu {

namespace {

constexpr char kPasteTitle[] = "Paste Pair Sets";

std::size_t rowOf(const EditableList& list) {
    return static_cast<std::size_t>(std::max(0, list.currentRow()));
}

}  // namespace

PairSetPanel::PairSetPanel(FormContext& form, DocumentContext& document,
                           ConversionStore& conversions, std::string name,
                           const PairSetSetup& setup, QWidget* parent)
    : QWidget(parent),
      parts_(std::make_unique<PairSetParts>(*this, form, document, conversions, std::move(name),
                                            setup)) {
    load();
}

PairSetPanel::~PairSetPanel() {
    // The controls go after the parts: nothing listens any more to a field that loses the focus
    // then.
    for (auto* const child : findChildren<QObject*>()) {
        child->disconnect(this);
    }
}

void PairSetPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    parts_->arrangeFor(width());
}

QSize PairSetPanel::minimumSizeHint() const {
    const auto least = QWidget::minimumSizeHint();
    return parts_ ? QSize(parts_->leastWidth(), least.height()) : least;
}

void PairSetPanel::load() {
    parts_->load();
}

void PairSetPanel::refit() {
    parts_->refit(true);
}

bool PairSetPanel::validate() {
    return parts_->validate();
}

bool PairSetPanel::store() {
    return parts_->store();
}

PairSetParts::PairSetParts(PairSetPanel& panel, FormContext& form, DocumentContext& document,
                           ConversionStore& conversions, std::string name,
                           const PairSetSetup& setup)
    : panel_(panel),
      form_(form),
      document_(document),
      name_(std::move(name)),
      setup_(setup),
      page_(document, conversions, name_) {
    curveView_ = new PlotView(
        "curve", QStringLiteral("Plot"), [this](DrawingSurface& s) { drawCurve(s); }, &panel_);
    residualView_ = new PlotView(
        "residuals", QStringLiteral("Errors"), [this](DrawingSurface& s) { drawErrors(s); },
        &panel_);
    chosen_.load(document_.settings, kApplicationName);
    controls_ = makePairSetControls(form, panel_, curveView_, residualView_, setup_.readOnly);
    connectList();
    connectChoices();
    connectPlot();
    setPlotShown(setup_.plot);
}

void PairSetParts::load() {
    options_ = FitOptions::read(document_.settings);
    pairs_ = page_.pairs();
    order_ = page_.input(setup_.bits).order;
    series_ = page_.openSeries();
    rescaled_ = false;
    showChoices();
    showPairs(0);
    refit(false);
}

bool PairSetParts::store() {
    if (unstored_ && !setup_.readOnly) {
        unstored_ = false;
        noteStored(page_.storePairs(&form_.ui, pairs_) && page_.storeCurve(&form_.ui, curve_) &&
                   page_.storeOrder(&form_.ui, order_) && page_.storeSeries(&form_.ui, series_));
    }
    return !unstored_;
}

void PairSetParts::changed() {
    emit panel_.changed();
}

// --- The list ----------------------------------------------------------------------------

void PairSetParts::connectList() {
    auto* list = controls_.list;
    list->rowEditor = [this](int row, const ListRow& before) -> std::optional<ListRow> {
        const bool isNew = static_cast<std::size_t>(row) >= pairs_.size();
        const auto pair = askForPair({before[kPairTelemetry], before[kPairEngineering]}, isNew);
        if (!pair) {
            return std::nullopt;
        }
        adding_ = isNew;
        auto edited = before;
        edited[kPairTelemetry] = pair->telemetry;
        edited[kPairEngineering] = pair->engineering;
        return edited;
    };
    list->mayDelete = [this](int) { return page_.confirmDelete(&form_.ui); };
    QObject::connect(list, &EditableList::changed, &panel_, [this] { takeList(); });
    QObject::connect(list, &EditableList::currentRowChanged, &panel_, [this] {
        if (!filling_) {
            redraw();
        }
    });
    QObject::connect(controls_.import, &QPushButton::clicked, &panel_,
                     [this] { importPairs(pairs_.boxTexts()); });
    QObject::connect(controls_.paste, &QPushButton::clicked, &panel_, [this] { pastePairs(); });
    QObject::connect(controls_.copy, &QPushButton::clicked, &panel_, [this] {
        QApplication::clipboard()->setText(toQString(pairTable(pairs_, result_, '\t')));
    });
    QObject::connect(controls_.savePairs, &QPushButton::clicked, &panel_,
                     [this] { savePairTable(form_, name_, pairTable(pairs_, result_, ',')); });
    auto* pasteKey = new QShortcut(QKeySequence::Paste, list->view());
    pasteKey->setContext(Qt::WidgetShortcut);
    QObject::connect(pasteKey, &QShortcut::activated, &panel_, [this] {
        if (!setup_.readOnly) {
            pastePairs();
        }
    });
}

std::optional<ValuePair> PairSetParts::askForPair(const ValuePair& before, bool isNew) {
    ListSetup setup;
    setup.columns = {{.title = std::string(PairSet::kEnterTelemetry),
                      .kind = ColumnKind::Double,
                      .limit = PairSet::kTelemetryLimit,
                      .required = true,
                      .objectName = "telemetryValue"},
                     {.title = std::string(PairSet::kEnterEngineering),
                      .kind = ColumnKind::Double,
                      .limit = PairSet::kEngineeringLimit,
                      .required = true,
                      .objectName = "euValue"}};
    setup.rowDialogTitle = isNew ? "Add Pair Set" : "Edit Pair Set";
    // Never shown: it knows what is refused in these columns.
    const EditableList rules(form_, "rules", setup);
    RowDialog dialog(form_, rules, setup, 0, {before.telemetry, before.engineering}, isNew,
                     panel_.window());
    if (runDialog(form_.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    auto values = dialog.values();
    return ValuePair{std::move(values[0]), std::move(values[1])};
}

void PairSetParts::takeList() {
    const auto row = rowOf(*controls_.list);
    pairs_ = PairSet(false);
    for (const auto& values : controls_.list->rows()) {
        (void)pairs_.add({values[kPairTelemetry], values[kPairEngineering]});
    }
    storePairs(pairs_.setSorted(options_.sorted, row));
    // Add goes on until it is cancelled.
    if (std::exchange(adding_, false) && pairs_.canAdd()) {
        controls_.list->addRow();
    }
}

void PairSetParts::importPairs(const std::pair<std::string, std::string>& boxes) {
    PairSetImportDialog dialog(form_, pairs_, boxes, panel_.window());
    if (runDialog(form_.door, dialog) == QDialog::Accepted) {
        pairs_ = dialog.pairs();
        storePairs(0);
    }
}

void PairSetParts::pastePairs() {
    const auto columns = splitPairFile(toBytes(QApplication::clipboard()->text()));
    // What cannot be imported is reported at once; what can is shown first, as it replaces the
    // list.
    auto trial = pairs_;
    if (columns.isOneColumn) {
        showBox(&form_.ui, "The clipboard does not hold two columns of values.", kPasteTitle);
    } else if (!columns.error.empty()) {
        showBox(&form_.ui, columns.error, kPasteTitle);
    } else if (const auto error = trial.import(columns.telemetry, columns.engineering)) {
        showBox(&form_.ui, *error, kPasteTitle);
    } else {
        importPairs({columns.telemetry, columns.engineering});
    }
}

void PairSetParts::storePairs(std::size_t selected) {
    noteStored(page_.storePairs(&form_.ui, pairs_));
    showPairs(selected);
    refit(true);
    changed();
}

void PairSetParts::showPairs(std::size_t selected) {
    const auto computed = fitRows(result_);
    std::vector<ListRow> rows;
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
        const auto& pair = pairs_.pairs()[i];
        const FitRow row = i < computed.size() ? computed[i] : FitRow{};
        rows.push_back(
            {std::to_string(i + 1), pair.telemetry, pair.engineering, row.computed, row.error});
    }
    filling_ = true;
    // A hidden column would get no width.
    controls_.list->view()->setColumnHidden(kPairComputed, !curve_);
    controls_.list->view()->setColumnHidden(kPairError, !curve_);
    controls_.list->setRows(std::move(rows));
    controls_.list->selectRow(static_cast<int>(selected));
    filling_ = false;
}

// --- The choices -------------------------------------------------------------------------

void PairSetParts::connectChoices() {
    const auto choice = [this](const FlagKey& key) {
        return [this, &key](bool on) {
            document_.settings.set(key, on);
            optionChanged();
        };
    };
    auto& c = controls_;
    QObject::connect(c.curve, &QCheckBox::clicked, &panel_, [this](bool on) {
        noteStored(page_.storeCurve(&form_.ui, on));
        refit(false);
        changed();
    });
    QObject::connect(c.order, &QComboBox::activated, &panel_, [this](int index) {
        order_ = index + 1;
        noteStored(page_.storeOrder(&form_.ui, order_));
        refit(false);
        changed();
    });
    QObject::connect(c.useBestFit, &QCheckBox::clicked, &panel_, choice(setting::kUseBestFit));
    QObject::connect(c.allCounts, &QCheckBox::clicked, &panel_, choice(setting::kCurveAllCounts));
    QObject::connect(c.maxOrder, &QComboBox::activated, &panel_, [this](int index) {
        document_.settings.set(setting::kFitOrderLimit, index + 1);
        optionChanged();
    });
    QObject::connect(c.defaultBits, &QLineEdit::editingFinished, &panel_, [this] {
        // A value that the user leaves for another window may be cancelled there; it is taken
        // when this one closes.
        const auto* const focus = QApplication::focusWidget();
        if (panel_.isVisible() && (focus == nullptr || focus->window() == panel_.window())) {
            setDefaultBits();
        }
    });
    QObject::connect(c.sorted, &QCheckBox::clicked, &panel_, [this](bool on) { setSorted(on); });
    QObject::connect(c.series, &QCheckBox::clicked, &panel_, [this](bool on) { enableSeries(on); });
    QObject::connect(c.zero.edit, &QPushButton::clicked, &panel_,
                     [this] { editSeries(series_.zero, eutext::kEnterZero); });
    QObject::connect(c.cal.edit, &QPushButton::clicked, &panel_,
                     [this] { editSeries(series_.cal, eutext::kEnterCal); });
}

void PairSetParts::showChoices() {
    controls_.useBestFit->setChecked(options_.useBestFit);
    controls_.allCounts->setChecked(options_.curveAllPairs);
    controls_.maxOrder->setCurrentIndex(options_.maxOrder - 1);
    controls_.defaultBits->setText(QString::number(options_.defaultBits));
    controls_.sorted->setChecked(options_.sorted);
}

void PairSetParts::optionChanged() {
    const auto before = result_;
    refit(false);
    if (before.order != result_.order || before.coefficients != result_.coefficients) {
        changed();
    }
}

bool PairSetParts::setDefaultBits() {
    const auto text = toBytes(controls_.defaultBits->text());
    if (text == std::to_string(options_.defaultBits)) {
        return true;
    }
    // The text goes first: a box takes the focus, which ends the edit once more.
    controls_.defaultBits->setText(QString::number(options_.defaultBits));
    constexpr long kMostBits = 64;
    const auto bits = parseInteger(text);
    if (!bits || *bits > kMostBits) {
        const auto why = integerCheck(1, kMostBits)(text);
        showBox(&form_.ui, why.value_or(""), kIllegalNumber);
        return false;
    }
    const long held = std::max<long>(*bits, std::numeric_limits<int>::min());
    if (!writeCurveDefaultBits(form_.messages, document_.settings, &form_.ui,
                               static_cast<int>(held))) {
        return false;
    }
    controls_.defaultBits->setText(toQString(text));
    refit(false);
    return true;
}

void PairSetParts::setSorted(bool sorted) {
    document_.settings.set(setting::kSortPairs, sorted);
    options_.sorted = sorted;
    const auto row = pairs_.setSorted(sorted, rowOf(*controls_.list));
    if (sorted && !setup_.readOnly) {
        storePairs(row);
    } else {
        refit(false);
    }
}

void PairSetParts::enableSeries(bool on) {
    noteStored(page_.enableSeries(&form_.ui, on, series_));
    refit(true);
    changed();
}

void PairSetParts::editSeries(std::string& value, std::string_view prompt) {
    const auto entered = form_.ui.enterText({.title = "Series Plot",
                                             .prompt = std::string(prompt),
                                             .initial = value,
                                             .limit = PairSetPage::kSeriesLimit});
    if (!entered || *entered == value) {
        return;
    }
    if (const auto why = doubleCheck(std::numeric_limits<double>::lowest(),
                                     std::numeric_limits<double>::max())(*entered)) {
        showBox(&form_.ui, *why, kIllegalNumber);
        return;
    }
    value = *entered;
    noteStored(page_.storeSeries(&form_.ui, series_));
    refit(true);
    changed();
}

}  // namespace kavu
