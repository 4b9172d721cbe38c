#include "app/pcm/MeasurementList.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "pcm/SampleRateCheck.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

MeasurementListModel::MeasurementListModel(const PcmFormat& format, UnitsOf unitsOf,
                                           QObject* parent)
    : QAbstractTableModel(parent), format_(format), unitsOf_(std::move(unitsOf)) {
    streamChanged();
}

void MeasurementListModel::streamChanged() {
    beginResetModel();
    rows_ = measurementRows(format_);
    endResetModel();
}

int MeasurementListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int MeasurementListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Columns);
}

QVariant MeasurementListModel::shown(const MeasurementRow& row, int column) const {
    switch (column) {
        case Name:
            return toQString(row.name);
        case Type:
            return toQString(row.locationType);
        case Locations:
            return format_.countMeasurementOccurences(row.name);
        case SampleRate:
            return toQString(calculateSampleRate(format_, row.name));
        case Units:
            return unitsOf_ ? toQString(unitsOf_(row.name)) : QString();
        default:
            return {};
    }
}

QVariant MeasurementListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const auto& row = rows_[static_cast<std::size_t>(index.row())];
    const bool isNumber = index.column() == Locations || index.column() == SampleRate;
    if (role == Qt::DisplayRole) {
        return shown(row, index.column());
    }
    if (role == Qt::TextAlignmentRole && isNumber) {
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (role == kSortRole) {
        const auto value = shown(row, index.column());
        return index.column() == SampleRate ? QVariant(value.toDouble()) : value;
    }
    return {};
}

QVariant MeasurementListModel::headerData(int section, Qt::Orientation orientation,
                                          int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    switch (section) {
        case Name:
            return QStringLiteral("Name");
        case Type:
            return QStringLiteral("Type");
        case Locations:
            return QStringLiteral("Locations");
        case SampleRate:
            return QStringLiteral("Sample Rate");
        case Units:
            return QStringLiteral("Units");
        default:
            return {};
    }
}

// --- the pane ---------------------------------------------------------------------------------

MeasurementList::MeasurementList(const PcmFormat& format, MeasurementListModel::UnitsOf unitsOf,
                                 QWidget* parent)
    : QWidget(parent),
      model_(new MeasurementListModel(format, std::move(unitsOf), this)),
      sorted_(new QSortFilterProxyModel(this)) {
    setObjectName(QStringLiteral("measurementList"));
    sorted_->setSourceModel(model_);
    sorted_->setSortRole(MeasurementListModel::kSortRole);
    sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
    sorted_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    sorted_->setFilterKeyColumn(MeasurementListModel::Name);
    // Sorting needs the values of all rows: nobody has asked for it yet.
    sorted_->setDynamicSortFilter(false);
    makeView();
    auto* const layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    layout->addWidget(look::addKeyLabel(QStringLiteral("&Measurements:"), *filter_));
    layout->addWidget(filter_);
    layout->addWidget(view_, 1);
    layout->addWidget(count_);
    connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
        sorted_->setFilterFixedString(text);
        showCount();
    });
    connect(view_, &QTreeView::clicked, this, &MeasurementList::goTo);
    connect(view_, &QTreeView::activated, this, &MeasurementList::goTo);
    showCount();
}

void MeasurementList::makeView() {
    filter_ = new QLineEdit(this);
    filter_->setObjectName(QStringLiteral("filter"));
    filter_->setClearButtonEnabled(true);
    filter_->setPlaceholderText(QStringLiteral("Part of a name"));
    filter_->installEventFilter(this);
    view_ = new QTreeView(this);
    view_->setObjectName(QStringLiteral("measurements"));
    view_->setAccessibleName(QStringLiteral("Measurements"));
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAllColumnsShowFocus(true);
    view_->setModel(sorted_);
    view_->header()->setSortIndicatorShown(true);
    view_->header()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->setSortingEnabled(true);
    view_->header()->setStretchLastSection(true);
    view_->installEventFilter(this);
    const int letter = look::charactersWide(*this, 1);
    for (const auto& [column, letters] :
         {std::pair{0, 22}, std::pair{1, 8}, std::pair{2, 12}, std::pair{3, 15}}) {
        view_->setColumnWidth(column,
                              std::max(letter * letters, view_->header()->sectionSizeHint(column)));
    }
    // Tab goes around the grid and its fields; here one comes by a key of its own.
    filter_->setFocusPolicy(Qt::ClickFocus);
    view_->setFocusPolicy(Qt::ClickFocus);
    count_ = look::makeNote({}, this);
    count_->setObjectName(QStringLiteral("measurementCount"));
}

QSize MeasurementList::sizeHint() const {
    return {look::charactersWide(*this, 44), look::unit(*this) * 40};
}

void MeasurementList::streamChanged() {
    model_->streamChanged();
    showCount();
}

void MeasurementList::focusFilter() {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

void MeasurementList::showCount() {
    const int all = model_->rowCount();
    const int here = sorted_->rowCount();
    count_->setText(here == all ? QStringLiteral("%1 measurements").arg(all)
                                : QStringLiteral("%1 of %2 measurements").arg(here).arg(all));
}

void MeasurementList::goTo(const QModelIndex& shown) {
    const auto index = sorted_->mapToSource(shown);
    if (index.isValid()) {
        emit goToRequested(model_->rows()[static_cast<std::size_t>(index.row())].first);
    }
}

bool MeasurementList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
        emit left();
        return true;
    }
    const bool enters = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == filter_ && (key == Qt::Key_Down || enters) && sorted_->rowCount() > 0) {
        const auto current = view_->currentIndex();
        view_->setCurrentIndex(current.isValid() ? current : sorted_->index(0, 0));
        if (enters) {
            goTo(view_->currentIndex());
        } else {
            view_->setFocus(Qt::OtherFocusReason);
        }
        return true;
    }
    return watched == filter_ && enters;
}

}  // namespace kavu
