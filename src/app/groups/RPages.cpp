#include "app/groups/RPages.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/Messages.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// The first edition in which a page has anything to show.
int firstEditionOf(const RecorderPage& page) {
    int first = kLatestEdition;
    for (const auto table : {recorderFieldsBeforeTracks(), recorderFieldsBehindTracks()}) {
        for (const auto& field : table) {
            if (field.page == page.name) {
                first = std::min(first, field.firstEdition);
            }
        }
    }
    return first;
}

/// The fields that are there once. The date of creation is followed by its format.
std::vector<Field> captionedFields(int edition) {
    const auto all = recorderSingleFields();
    std::vector<Field> fields(all.begin(), all.end());
    for (auto& field : fields) {
        if (field.code == "RI4") {
            field.unit = edition <= 1996 ? "(MM-DD-YY-HH-MM-SS)" : "(MM-DD-YYYY-HH-MM-SS)";
        }
    }
    return fields;
}

std::vector<Field> columnsOf(std::string_view count, int edition) {
    return knownFields(recorderColumns(count), edition);
}

const Field* recorderCount(std::string_view code) {
    for (const auto table : {recorderFieldsBeforeTracks(), recorderFieldsBehindTracks()}) {
        for (const auto& field : table) {
            if (field.code == code) {
                return &field;
            }
        }
    }
    return nullptr;
}

std::vector<ListRow> cellsOfRows(std::span<const GroupRow> rows, std::span<const Field> fields,
                                 int edition) {
    std::vector<ListRow> cells;
    for (const auto& row : rows) {
        cells.push_back(cellsOf(row, fields, edition));
    }
    return cells;
}

/// Stores the rows of a list in the row or record that owns it; `before` has them by their ids.
void storeRows(GroupRow& owner, std::string_view count, const IdentifiedList& list,
               const std::vector<GroupRow>& before, std::span<const Field> fields, int edition) {
    if (list.rowCount() == 0 && !owner.lists.contains(count)) {
        return;
    }
    auto& rows = owner.lists[std::string(count)];
    rows.clear();
    for (int row = 0; row < list.rowCount(); ++row) {
        const auto id = static_cast<std::size_t>(list.idOf(row));
        rows.push_back(id < before.size() ? before[id] : GroupRow{});
        takeCells(rows.back(), list.cellsOfRow(row), fields, edition);
    }
}

ListSetup setupOf(std::span<const Field> fields, int edition, std::size_t mostRows,
                  const std::string& rowDialogTitle, const std::string& deleteTitle) {
    ListSetup setup;
    for (const auto& field : fields) {
        setup.columns.push_back(columnOf(field, edition));
    }
    setup.mostRows = static_cast<int>(mostRows);
    setup.rowDialogTitle = rowDialogTitle;
    setup.name = deleteTitle;
    return setup;
}

QBoxLayout& boxed(QBoxLayout& layout, const std::string& title, QWidget* parent) {
    if (title.empty()) {
        return layout;
    }
    auto* box = new QGroupBox(toQString(title), parent);
    box->setAccessibleName(toQString(title));
    auto* inside = new QVBoxLayout(box);
    const int distance = look::unit(*box);
    inside->setContentsMargins(distance, distance, distance, distance);
    layout.addWidget(box, 1);
    return *inside;
}

}  // namespace

RecorderFieldPage::RecorderFieldPage(FormContext& form, const RecorderPage& page,
                                     RecorderGroup& group, QWidget* parent)
    : FieldPage(form, page.name.data(), std::string(page.title), captionedFields(form.edition),
                group.record.values, parent) {
    const int first = firstEditionOf(page);
    if (form.edition < first) {
        auto* note = look::makeNote(
            toQString(formatPrintf("Documents have this from edition %s on.", editionText(first))),
            this);
        static_cast<QVBoxLayout*>(layout())->insertWidget(0, note);
    }
}

RecorderCharacteristicsPage::RecorderCharacteristicsPage(FormContext& form,
                                                         const RecorderPage& page,
                                                         RecorderGroup& group, QWidget* parent)
    : RecorderFieldPage(form, page, group, parent), group_(group) {
    auto* control = fields().control("N");
    count_ = look::makeButton("N", {}, QStringLiteral("edit"), control->parentWidget());
    count_->setMinimumWidth(control->minimumWidth());
    count_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (auto* label : fields().findChildren<QLabel*>()) {
        if (label->buddy() == control) {
            label->setBuddy(count_);
        }
    }
    count_->setAccessibleName(control->accessibleName());
    // The field goes on holding the value, without being seen.
    control->setObjectName(QString());
    control->parentWidget()->layout()->replaceWidget(control, count_, Qt::FindChildrenRecursively);
    QWidget::setTabOrder(control, count_);
    control->hide();
    control->setFocusPolicy(Qt::NoFocus);
    connect(count_, &QPushButton::clicked, this, &RecorderCharacteristicsPage::askTrackCount);
}

void RecorderCharacteristicsPage::load() {
    RecorderFieldPage::load();
    showTrackCount();
}

void RecorderCharacteristicsPage::showTrackCount() {
    fields().editValue("N", group_.record.value("N"));
    const auto shown = toQString(group_.record.value("N"));
    count_->setText(shown);
    count_->setAccessibleDescription(shown);
}

void RecorderCharacteristicsPage::askTrackCount() {
    const auto entered =
        form().ui.enterInteger({.title = "Enter Number Of Tracks",
                                .prompt = "Number Of Tracks:",
                                .initial = parseInteger(group_.record.value("N")).value_or(0),
                                .least = 0,
                                .most = static_cast<long>(kMostTracks)});
    if (entered && setTrackCount(form().messages, &form().ui, group_, std::to_string(*entered))) {
        showTrackCount();
    }
}

RecorderDatePage::RecorderDatePage(FormContext& form, const RecorderPage& page,
                                   RecorderGroup& group, std::string_view dateCode, QWidget* parent)
    : RecorderFieldPage(form, page, group, parent) {
    connect(&fields(), &FieldForm::edited, this, [this, dateCode](const QString& code) {
        if (toBytes(code) != dateCode && fields().value(dateCode).empty()) {
            const auto& context = this->form();
            fields().editValue(dateCode,
                               presentDate(context.clock, FieldKind::DateTime, context.edition));
        }
    });
}

// --- Lists ------------------------------------------------------------------------------------

RecorderListsPage::RecorderListsPage(FormContext& form, const RecorderPage& page,
                                     RecorderGroup& group, const std::vector<List>& lists,
                                     QWidget* parent)
    : RecorderFieldPage(form, page, group, parent), group_(group) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(look::unit(*this));
    static_cast<QVBoxLayout*>(layout())->addLayout(row, 1);
    for (const auto& list : lists) {
        addList(list, *row);
    }
}

void RecorderListsPage::addList(const List& list, QBoxLayout& layout) {
    const auto* const count = recorderCount(list.count);
    if (!isKnownIn(form().edition, *count)) {
        return;
    }
    auto fields = columnsOf(list.count, form().edition);
    auto setup =
        setupOf(fields, form().edition, count->rows, list.rowDialogTitle, list.deleteTitle);
    for (std::size_t i = 0; i < list.limits.size(); ++i) {
        setup.columns[i].limit = list.limits[i];
    }
    auto* shown = new IdentifiedList(form(), list.name, setup, this);
    connect(shown, &EditableList::changed, this, [this] { markChanged(); });
    boxed(layout, list.box, this).addWidget(shown, 1);
    lists_.push_back({count, std::move(fields), shown, {}});
}

void RecorderListsPage::load() {
    RecorderFieldPage::load();
    for (auto& [count, fields, list, before] : lists_) {
        const auto rows = group_.record.rows(count->code);
        before.assign(rows.begin(), rows.end());
        list->setIdentifiedRows(cellsOfRows(before, fields, form().edition));
    }
}

void RecorderListsPage::storeList(const Shown& shown) {
    storeRows(group_.record, shown.count->code, *shown.list, shown.before, shown.fields,
              form().edition);
}

bool RecorderListsPage::store() {
    for (const auto& shown : lists_) {
        storeList(shown);
    }
    return RecorderFieldPage::store();
}

// --- Events -----------------------------------------------------------------------------------

RecorderEventsPage::RecorderEventsPage(FormContext& form, const RecorderPage& page,
                                       RecorderGroup& group, QWidget* parent)
    : RecorderFieldPage(form, page, group, parent),
      group_(group),
      eventFields_(columnsOf("EV\\N", std::max(form.edition, kFirstEditionOfEvents))),
      measurementFields_(columnsOf("EV\\PM\\N-n", form.edition)) {
    auto& layout = *static_cast<QVBoxLayout*>(this->layout());
    list_ = new IdentifiedList(form, "events",
                               setupOf(eventFields_, form.edition, kMostEvents, "Recording Event",
                                       "Delete Recording Event Definition"),
                               this);
    list_->setEnabled(form.edition >= kFirstEditionOfEvents);
    list_->view()->setMinimumWidth(look::charactersWide(*this, 90));
    layout.addWidget(list_, 1);
    connect(list_, &EditableList::changed, this, [this] {
        takeEvents();
        markChanged();
    });
    if (!measurementFields_.empty()) {
        addMeasurements(layout);
    }
}

void RecorderEventsPage::addMeasurements(QVBoxLayout& layout) {
    measurements_ = new IdentifiedList(
        form(), "measurementsToProcess",
        setupOf(measurementFields_, form().edition, kMostEventMeasurements,
                "Measurement to Process", "Delete 'Measurement to Process' Entry?"),
        this);
    boxed(layout, "Measurements to Process", this).addWidget(measurements_, 1);
    connect(measurements_, &EditableList::changed, this, [this] {
        takeMeasurements();
        markChanged();
    });
    connect(list_, &EditableList::currentRowChanged, this, [this] { showMeasurements(); });
}

void RecorderEventsPage::load() {
    RecorderFieldPage::load();
    const auto events = group_.record.rows("EV\\N");
    events_.assign(events.begin(), events.end());
    list_->setIdentifiedRows(cellsOfRows(events_, eventFields_, form().edition));
    showMeasurements();
}

/// Gives new rows an event of their own; deleted ones just have no row any more.
void RecorderEventsPage::takeEvents() {
    for (int row = 0; row < list_->rowCount(); ++row) {
        const auto id = static_cast<std::size_t>(list_->idOf(row));
        if (id >= events_.size()) {
            events_.resize(id + 1);
        }
        takeCells(events_[id], list_->cellsOfRow(row), eventFields_, form().edition);
    }
    showMeasurements();
}

void RecorderEventsPage::showMeasurements() {
    if (measurements_ == nullptr) {
        return;
    }
    const int id = list_->currentId();
    const bool known = id >= 0 && static_cast<std::size_t>(id) < events_.size();
    measurements_->setEnabled(known);
    shownMeasurements_.clear();
    if (known) {
        const auto rows = events_[static_cast<std::size_t>(id)].rows("EV\\PM\\N-n");
        shownMeasurements_.assign(rows.begin(), rows.end());
    }
    measurements_->setIdentifiedRows(
        cellsOfRows(shownMeasurements_, measurementFields_, form().edition));
}

void RecorderEventsPage::takeMeasurements() {
    const int id = list_->currentId();
    if (id >= 0) {
        storeRows(events_[static_cast<std::size_t>(id)], "EV\\PM\\N-n", *measurements_,
                  shownMeasurements_, measurementFields_, form().edition);
    }
}

bool RecorderEventsPage::store() {
    if (list_->rowCount() > 0 || group_.record.lists.contains("EV\\N")) {
        std::vector<GroupRow> events;
        for (int row = 0; row < list_->rowCount(); ++row) {
            events.push_back(events_[static_cast<std::size_t>(list_->idOf(row))]);
        }
        group_.record.lists["EV\\N"] = std::move(events);
    }
    return RecorderFieldPage::store();
}

}  // namespace kavu
