#include "app/mdb/RecordModel.h"

#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/RowModel.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/record/DiscreteText.h"

#include <algorithm>
#include <cmath>

#include <QBrush>
#include <QColor>

namespace kavu {

namespace {

constexpr const char* kDiscreteRule =
    "Must be in the form 0=\"Value0\" 1=\"Value1\" (etc), each value inside double-quotes";

constexpr std::size_t kComparisonsOfAPoll = 4096;

/// Letters of both cases are the same; what is no ASCII has to be the same character.
bool holds(std::string_view text, std::string_view lowered) {
    return std::search(text.begin(), text.end(), lowered.begin(), lowered.end(),
                       [](char c, char low) { return toLowerAscii(c) == low; }) != text.end();
}

/// Behind the text of a cell that has a fault, in both palettes.
QColor faultColour() {
    return {220, 60, 50, 90};
}

}  // namespace

RecordModel::RecordModel(DatabaseEdit& edit, MdbVersion version, int edition, UserInterface* ui,
                         QObject* parent)
    : QAbstractTableModel(parent), edit_(edit), ui_(ui), table_(edition) {
    for (std::size_t column = 0; column < kavu::columnCount(version); ++column) {
        fields_.push_back(columnIndex(column, version));
    }
    list();
}

// --- what is shown -----------------------------------------------------------------------------

void RecordModel::list() {
    rows_.clear();
    const auto wanted = lowerAscii(toBytes(filter_));
    for (std::size_t row = 0; row < edit_.size(); ++row) {
        const auto& record = edit_.row(row);
        const bool isShown =
            wanted.empty() ||
            (filterField_ == kAnyField
                 ? std::any_of(fields_.begin(), fields_.end(),
                               [&](std::size_t field) { return holds(record[field], wanted); })
                 : holds(record[filterField_], wanted));
        if (isShown) {
            rows_.push_back(row);
        }
    }
    // Without its progress: keys that are typed into the filter meanwhile would get lost.
    take(arranged(nullptr));
}

/// The rows that are shown in the order that is wanted now.
std::vector<std::size_t> RecordModel::arranged(UserInterface* ui) const {
    auto rows = rows_;
    if (sorted_ < 0) {
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    const auto field = fieldAt(sorted_);
    const bool isRising = order_ == Qt::AscendingOrder;
    const ProgressScope progress(ui, ProgressMode::WithoutCancel);
    setProgressText(ui, formatPrintf("Sorting by '%s'", mdbFields()[field].label));
    const auto count = static_cast<double>(rows.size());
    const double expected = count * std::max(1.0, std::log2(count));
    std::size_t compared = 0;
    std::stable_sort(rows.begin(), rows.end(), [&](std::size_t a, std::size_t b) {
        if (++compared % kComparisonsOfAPoll == 0) {
            setProgressBar(ui, std::min(100.0, 100.0 * static_cast<double>(compared) / expected));
            yieldToInterface(ui);
        }
        return cellLess(edit_.row(isRising ? a : b)[field], edit_.row(isRising ? b : a)[field],
                        true);
    });
    return rows;
}

void RecordModel::take(std::vector<std::size_t> rows) {
    rows_ = std::move(rows);
    places_.assign(edit_.size(), -1);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        places_[rows_[i]] = static_cast<int>(i);
    }
}

void RecordModel::setFilter(const QString& text, std::size_t field) {
    beginResetModel();
    filter_ = text;
    filterField_ = field;
    list();
    endResetModel();
}

void RecordModel::refresh() {
    setFilter(filter_, filterField_);
}

void RecordModel::follow() {
    const auto known = places_.size();
    if (edit_.size() < known) {
        refresh();
        return;
    }
    if (edit_.size() > known) {
        const auto first = static_cast<int>(rows_.size());
        const auto added = static_cast<int>(edit_.size() - known);
        beginInsertRows({}, first, first + added - 1);
        for (auto row = known; row < edit_.size(); ++row) {
            places_.push_back(static_cast<int>(rows_.size()));
            rows_.push_back(row);
        }
        endInsertRows();
    }
    if (!rows_.empty()) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void RecordModel::sort(int column, Qt::SortOrder order) {
    if (column == sorted_ && order == order_) {
        return;
    }
    sorted_ = column;
    order_ = order;
    // The views may paint the former order meanwhile.
    auto rows = arranged(ui_);
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const auto before = persistentIndexList();
    std::vector<std::size_t> kept;
    for (const auto& each : before) {
        kept.push_back(rowAt(each.row()));
    }
    take(std::move(rows));
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i) {
        after.append(index(placeOf(kept[static_cast<std::size_t>(i)]), before[i].column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int RecordModel::placeOf(std::size_t row) const {
    return row < places_.size() ? places_[row] : -1;
}

int RecordModel::columnOf(std::size_t field) const {
    const auto found = std::find(fields_.begin(), fields_.end(), field);
    return found == fields_.end() ? -1 : static_cast<int>(found - fields_.begin());
}

std::string RecordModel::textAt(std::size_t row, std::size_t field) const {
    std::string text(edit_.row(row)[field]);
    fromStoredForm(text);
    return text;
}

// --- faults --------------------------------------------------------------------------------------

std::string RecordModel::faultOf(std::size_t row, std::size_t field) const {
    const auto& record = edit_.row(row);
    if (field == mdbfield::kName && record.name().empty()) {
        return "A record has a name";
    }
    std::vector<MdbFault> faults;
    table_.check(field, record[field], faults);
    if (!faults.empty()) {
        const auto& fault = faults.front();
        return fault.kind == MdbFault::Kind::TooLong
                   ? formatPrintf("At most %d characters", fault.limit)
                   : formatPrintf("Must be one of: %s", fault.allowed);
    }
    const bool isDiscrete = field == mdbfield::kData && record[mdbfield::kType] == "DIS";
    return isDiscrete && !isQuotedDiscrete(record[field]) ? kDiscreteRule : "";
}

QModelIndex RecordModel::nextFault(const QModelIndex& from) const {
    const auto columns = static_cast<std::size_t>(columnCount());
    const auto cells = rows_.size() * columns;
    const auto start = from.isValid() ? asIndex(from.row()) * columns + asIndex(from.column()) + 1
                                      : std::size_t{0};
    for (std::size_t i = 0; i < cells; ++i) {
        const auto cell = (start + i) % cells;
        if (!faultOf(rows_[cell / columns], fields_[cell % columns]).empty()) {
            return index(static_cast<int>(cell / columns), static_cast<int>(cell % columns));
        }
    }
    return {};
}

// --- the model -----------------------------------------------------------------------------------

int RecordModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto row = rowAt(index.row());
    const auto field = fieldAt(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return toQString(textAt(row, field)).simplified();
        case Qt::EditRole:
            return toQString(textAt(row, field));
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole: {
            const auto fault = faultOf(row, field);
            return fault.empty() ? QVariant() : QVariant(toQString(fault));
        }
        case Qt::BackgroundRole:
            return faultOf(row, field).empty() ? QVariant() : QVariant(QBrush(faultColour()));
        default:
            return {};
    }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    }
    const auto field = fieldAt(section);
    if (role == Qt::DisplayRole) {
        return toQString(mdbFields()[field].label);
    }
    if (role == Qt::ToolTipRole) {
        const auto allowed = table_.allowed(field);
        const auto limit = table_.limit(field);
        return toQString(!allowed.empty() ? formatPrintf("One of: %s", allowed)
                         : limit > 0      ? formatPrintf("At most %d characters", limit)
                                          : std::string("Any text"));
    }
    return {};
}

Qt::ItemFlags RecordModel::flags(const QModelIndex& index) const {
    auto flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable : flags;
}

bool RecordModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) {
        return false;
    }
    const auto row = rowAt(index.row());
    const auto field = fieldAt(index.column());
    // Bytes that are no characters stay as long as nobody edits them.
    if (value.toString() == toQString(textAt(row, field))) {
        return false;
    }
    edit_.set(row, field, toBytes(value.toString()));
    // A type decides what its data may be.
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
    emit edited();
    return true;
}

}  // namespace kavu
