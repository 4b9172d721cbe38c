#include "app/pcm/MeasurementList.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/text/Text.h"
#include "pcm/model/SampleRateCheck.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

bool isFigure(int column) {
    return column == MeasurementListModel::Locations || column == MeasurementListModel::SampleRate;
}

}  // namespace

MeasurementListModel::MeasurementListModel(const PcmFormat& format, UnitsOf unitsOf,
                                           QObject* parent)
    : QAbstractTableModel(parent), format_(format), unitsOf_(std::move(unitsOf)) {
    streamChanged();
}

void MeasurementListModel::streamChanged() {
    beginResetModel();
    rows_ = measurementRows(format_);
    byName_.clear();
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        byName_.emplace(lowerAscii(rows_[row].name), static_cast<int>(row));
    }
    figures_.assign(rows_.size(), {});
    endResetModel();
}

int MeasurementListModel::rowOf(std::string_view name) const {
    const auto it = byName_.find(lowerAscii(name));
    return it == byName_.end() ? -1 : it->second;
}

int MeasurementListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int MeasurementListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Columns);
}

const MeasurementListModel::Figures& MeasurementListModel::figuresOf(std::size_t row) const {
    auto& figures = figures_[row];
    if (!figures.known) {
        const auto& name = rows_[row].name;
        figures = {.known = true,
                   .locations = format_.countMeasurementOccurences(name),
                   .sampleRate = toQString(calculateSampleRate(format_, name)),
                   .units = unitsOf_ ? toQString(unitsOf_(name)) : QString()};
    }
    return figures;
}

QVariant MeasurementListModel::shown(std::size_t row, int column) const {
    switch (column) {
        case Name:
            return toQString(rows_[row].name);
        case Type:
            return toQString(rows_[row].locationType);
        case Locations:
            return figuresOf(row).locations;
        case SampleRate:
            return figuresOf(row).sampleRate;
        case Units:
            return figuresOf(row).units;
        default:
            return {};
    }
}

QVariant MeasurementListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return {};
    }
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::DisplayRole) {
        return shown(row, index.column());
    }
    if (role == Qt::TextAlignmentRole && isFigure(index.column())) {
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
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && isFigure(section)) {
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    }
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
    // Sorting needs the values of all rows: it has not been asked for yet.
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
    connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!following_) {
            emit currentChanged(current());
        }
    });
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
    view_->installEventFilter(this);
    view_->header()->setStretchLastSection(false);
    setColumnWidths();
    view_->header()->setStretchLastSection(true);
    // Tab goes around the grid and its fields; here one comes by a key of its own.
    filter_->setFocusPolicy(Qt::ClickFocus);
    view_->setFocusPolicy(Qt::ClickFocus);
    count_ = look::makeNote({}, this);
    count_->setObjectName(QStringLiteral("measurementCount"));
    none_ = look::makeNote({}, view_->viewport());
    none_->setObjectName(QStringLiteral("noMeasurements"));
    none_->setAlignment(Qt::AlignCenter);
    auto* const over = new QVBoxLayout(view_->viewport());
    over->addWidget(none_);
}

/// All columns have their room next to the grid, and what is wider can be widened.
int MeasurementList::usualWidth(int column) const {
    constexpr std::array<int, MeasurementListModel::Columns> kLetters = {15, 7, 6, 10, 8};
    return std::max(look::charactersWide(*this, kLetters[static_cast<std::size_t>(column)]),
                    view_->header()->sectionSizeHint(column));
}

void MeasurementList::setColumnWidths() {
    for (int column = 0; column < MeasurementListModel::Columns; ++column) {
        view_->setColumnWidth(column, usualWidth(column));
    }
}

QSize MeasurementList::sizeHint() const {
    int width = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + look::unit(*this);
    for (int column = 0; column < MeasurementListModel::Columns; ++column) {
        width += usualWidth(column);
    }
    return {width, look::unit(*this) * 40};
}

void MeasurementList::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange && view_ != nullptr) {
        setColumnWidths();
        updateGeometry();
    }
}

void MeasurementList::streamChanged() {
    const auto before = current();
    following_ = true;
    model_->streamChanged();
    following_ = false;
    follow(before);
    showCount();
}

void MeasurementList::follow(const std::string& name) {
    following_ = true;
    const int row = name.empty() ? -1 : model_->rowOf(name);
    const auto index = row < 0 ? QModelIndex() : sorted_->mapFromSource(model_->index(row, 0));
    if (index.isValid()) {
        view_->setCurrentIndex(index);
        view_->scrollTo(index);
    } else {
        view_->setCurrentIndex({});
    }
    following_ = false;
}

std::string MeasurementList::current() const {
    const auto index = sorted_->mapToSource(view_->currentIndex());
    return index.isValid() ? model_->rows()[static_cast<std::size_t>(index.row())].name
                           : std::string();
}

std::string MeasurementList::layoutText() const {
    const auto* const header = view_->header();
    auto text = std::to_string(header->sortIndicatorSection()) +
                (header->sortIndicatorOrder() == Qt::DescendingOrder ? ",1" : ",0");
    for (int column = 0; column < MeasurementListModel::Columns; ++column) {
        text += "," + std::to_string(view_->columnWidth(column));
    }
    return text;
}

void MeasurementList::restoreLayout(std::string_view text) {
    const auto parts = toQString(text).split(u',');
    if (parts.size() != MeasurementListModel::Columns + 2) {
        return;
    }
    const int column = std::clamp(parts[0].toInt(), -1, MeasurementListModel::Columns - 1);
    view_->sortByColumn(column,
                        parts[1] == QLatin1String("1") ? Qt::DescendingOrder : Qt::AscendingOrder);
    for (int i = 0; i < MeasurementListModel::Columns; ++i) {
        const int least = look::charactersWide(*this, 3);
        view_->setColumnWidth(i, std::clamp(parts[i + 2].toInt(), least, 20 * least));
    }
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
    none_->setText(all == 0 ? QStringLiteral("No measurements yet. Choose a cell of the grid and "
                                             "press Return to define one.")
                            : QStringLiteral("No name has this text in it."));
    none_->setVisible(here == 0);
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
