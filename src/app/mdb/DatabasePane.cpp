#include "app/mdb/DatabasePane.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/RowModel.h"
#include "app/mdb/WindowParts.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

#include <algorithm>

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kPaneSection = "ViewMdb";
constexpr std::string_view kPaneX = "X";
constexpr std::string_view kPaneY = "Y";
constexpr std::string_view kPaneWidth = "DX";
constexpr std::string_view kPaneHeight = "DY";
constexpr std::string_view kPaneView = "View";

}  // namespace

// --- the list ------------------------------------------------------------------------------------

void PaneModel::list() {
    shown_.clear();
    const auto wanted = lowerAscii(toBytes(filter_));
    for (std::size_t i = 0; i < records_.size(); ++i) {
        const auto& record = records_[i];
        const bool isChosen =
            which_ == Which::All || record.isInStream == (which_ == Which::InStream);
        if (isChosen &&
            (wanted.empty() || lowerAscii(record.name).find(wanted) != std::string::npos ||
             lowerAscii(record.description).find(wanted) != std::string::npos)) {
            shown_.push_back(i);
        }
    }
    if (sorted_ < 0) {
        return;
    }
    const auto text = [this](std::size_t record) -> std::string {
        const auto& each = records_[record];
        return sorted_ == kName          ? each.name
               : sorted_ == kDescription ? each.description
                                         : (each.isInStream ? "0" : "1");
    };
    std::stable_sort(shown_.begin(), shown_.end(), [&](std::size_t a, std::size_t b) {
        return order_ == Qt::AscendingOrder ? cellLess(text(a), text(b), true)
                                            : cellLess(text(b), text(a), true);
    });
}

void PaneModel::setRecords(std::vector<Record> records) {
    beginResetModel();
    records_ = std::move(records);
    list();
    endResetModel();
}

void PaneModel::setFilter(const QString& text, Which which) {
    beginResetModel();
    filter_ = text;
    which_ = which;
    list();
    endResetModel();
}

void PaneModel::sort(int column, Qt::SortOrder order) {
    beginResetModel();
    sorted_ = column;
    order_ = order;
    list();
    endResetModel();
}

int PaneModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int PaneModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumns;
}

QVariant PaneModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) {
        return {};
    }
    const auto& record = records_[shown_[static_cast<std::size_t>(index.row())]];
    switch (index.column()) {
        case kName:
            return toQString(record.name);
        case kDescription:
            return toQString(record.description).simplified();
        default:
            return record.isInStream ? QStringLiteral("Yes") : QString();
    }
}

QVariant PaneModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) {
        return {};
    }
    constexpr const char* kTitles[] = {"Measurement Name", "Measurement Description", "In Stream"};
    return QLatin1String(kTitles[section]);
}

// --- the pane ------------------------------------------------------------------------------------

DatabasePane::DatabasePane(FormContext& form, std::shared_ptr<StreamDatabase> database,
                           QSplitter& parts)
    : QWidget(&parts),
      form_(form),
      database_(std::move(database)),
      parts_(parts),
      model_(new PaneModel(this)) {
    setObjectName(QStringLiteral("VIEWMEASUREMENTDATABASE"));
    auto* const column = new QVBoxLayout(this);
    look::arrangePart(*column, *this);
    column->addLayout(makeFilter());
    makeList();
    column->addWidget(view_, 1);
    column->addLayout(makeFoot());
    readAgain();
    moveTo(storedSide());
}

QLayout* DatabasePane::makeFilter() {
    auto* const row = new QHBoxLayout;
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("databaseFilter"));
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(QStringLiteral("Filter"));
    filter_->setAccessibleName(QStringLiteral("Filter of the database"));
    which_ = new QComboBox(this);
    which_->setObjectName(QStringLiteral("databaseView"));
    which_->setAccessibleName(QStringLiteral("Records that are shown"));
    which_->addItems(
        {QStringLiteral("All"), QStringLiteral("In Stream"), QStringLiteral("Not In Stream")});
    which_->setCurrentIndex(
        std::clamp(form_.settings.profileInteger(kPaneSection, kPaneView, 0), 0, 2));
    row->addWidget(filter_, 1);
    row->addWidget(which_);
    connect(filter_, &QLineEdit::textChanged, this, &DatabasePane::applyFilter);
    connect(which_, &QComboBox::currentIndexChanged, this, &DatabasePane::applyFilter);
    return row;
}

void DatabasePane::makeList() {
    view_ =
        makeLongTable("databaseRecords", QStringLiteral("Measurement database"), *model_, 2, this);
    view_->setSelectionBehavior(QTableView::SelectRows);
    view_->verticalHeader()->setVisible(false);
    view_->horizontalHeader()->setStretchLastSection(true);
    makeSortable(*view_);
    view_->horizontalHeader()->moveSection(PaneModel::kInStream, PaneModel::kDescription);
    widenColumns(*view_, 10);
}

QLayout* DatabasePane::makeFoot() {
    auto* const row = new QHBoxLayout;
    state_ = look::makeNote({}, this);
    state_->setObjectName(QStringLiteral("databaseState"));
    row->addWidget(state_, 1);
    side_ = new QComboBox(this);
    side_->setObjectName(QStringLiteral("databaseSide"));
    side_->setAccessibleName(QStringLiteral("Place of the pane"));
    side_->setToolTip(side_->accessibleName());
    side_->addItems({QStringLiteral("Right"), QStringLiteral("Below"), QStringLiteral("Left")});
    side_->setCurrentIndex(static_cast<int>(storedSide()));
    row->addWidget(side_);
    auto* const again = look::makeButton("databaseRefresh", QStringLiteral("Re&fresh"),
                                         QStringLiteral("refresh"), this);
    again->setAutoDefault(false);
    row->addWidget(again);
    connect(side_, &QComboBox::currentIndexChanged, this,
            [this](int index) { moveTo(static_cast<Side>(index)); });
    connect(again, &QPushButton::clicked, this, &DatabasePane::readAgain);
    return row;
}

DatabasePane::~DatabasePane() {
    // Its place says at which side it was: the left one begins at 0 both ways.
    const auto side = static_cast<Side>(side_->currentIndex());
    const std::pair<std::string_view, int> kept[] = {
        {kPaneX, side == Side::Right ? std::max(x(), 1) : 0},
        {kPaneY, side == Side::Below ? std::max(y(), 1) : 0},
        {kPaneWidth, width()},
        {kPaneHeight, height()},
        {kPaneView, which_->currentIndex()}};
    for (const auto& [key, value] : kept) {
        form_.settings.writeProfile(kPaneSection, key, std::to_string(value));
    }
}

DatabasePane::Side DatabasePane::storedSide() const {
    const int left = form_.settings.profileInteger(kPaneSection, kPaneX, -1);
    const int top = form_.settings.profileInteger(kPaneSection, kPaneY, -1);
    if (left < 0 && top < 0) {
        // The list of measurements keeps its width, so that the grid alone would pay.
        const bool isWide = parts_.width() >= look::charactersWide(*this, 220);
        return isWide ? Side::Right : Side::Below;
    }
    return top > 0 ? Side::Below : left == 0 && top == 0 ? Side::Left : Side::Right;
}

void DatabasePane::moveTo(Side side) {
    auto* const around = qobject_cast<QSplitter*>(parts_.parentWidget());
    if (side == Side::Below && around != nullptr) {
        around->addWidget(this);
    } else if (side == Side::Left) {
        parts_.insertWidget(0, this);
    } else {
        parts_.addWidget(this);
    }
}

QSize DatabasePane::sizeHint() const {
    const auto& settings = form_.settings;
    return {std::clamp(settings.profileInteger(kPaneSection, kPaneWidth, 0),
                       look::charactersWide(*this, 40), look::charactersWide(*this, 90)),
            std::clamp(settings.profileInteger(kPaneSection, kPaneHeight, 0),
                       look::unit(*this) * 20, look::unit(*this) * 60)};
}

void DatabasePane::readAgain() {
    std::vector<PaneModel::Record> records;
    if (auto* const work = database_->reopen()) {
        for (auto record = work->database.first(); record; record = work->database.next()) {
            auto description = (*record)[mdbfield::kDescription];
            fromStoredForm(description);
            const bool isInStream = work->format.hasMeasurement(record->name());
            records.push_back({record->name(), std::move(description), isInStream});
        }
    }
    model_->setRecords(std::move(records));
    applyFilter();
}

void DatabasePane::applyFilter() {
    model_->setFilter(filter_->text(), static_cast<PaneModel::Which>(which_->currentIndex()));
    const auto shown = static_cast<std::size_t>(model_->rowCount());
    state_->setText(
        shown == model_->recordCount()
            ? QStringLiteral("%L1 records").arg(shown)
            : QStringLiteral("%L1 of %L2 records").arg(shown).arg(model_->recordCount()));
}

}  // namespace kavu
