#include "app/framework/RowModel.h"

#include "app/framework/QtText.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <utility>

namespace kavu {

namespace {

std::size_t at(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

RowModel::RowModel(std::vector<std::string> columns, QObject* parent)
    : QAbstractTableModel(parent), columns_(std::move(columns)) {}

RowModel::Row RowModel::fitted(Row row) const {
    row.resize(columns_.size());
    return row;
}

void RowModel::setRows(std::vector<Row> rows) {
    beginResetModel();
    order_.clear();
    rows_ = std::move(rows);
    for (auto& row : rows_) {
        row.resize(columns_.size());
    }
    endResetModel();
}

void RowModel::appendRow(Row row) {
    const int last = rowCount();
    beginInsertRows({}, last, last);
    rows_.push_back(fitted(std::move(row)));
    if (!isInOwnOrder()) {
        order_.push_back(last);
    }
    endInsertRows();
}

void RowModel::removeRowAt(int row) {
    const int place = placeOf(row);
    beginRemoveRows({}, place, place);
    rows_.erase(rows_.begin() + row);
    if (!isInOwnOrder()) {
        order_.erase(order_.begin() + place);
        for (auto& other : order_) {
            other -= other > row ? 1 : 0;
        }
    }
    endRemoveRows();
}

void RowModel::replaceRow(int row, Row values) {
    rows_[at(row)] = fitted(std::move(values));
    const int place = placeOf(row);
    emit dataChanged(index(place, 0), index(place, columnCount() - 1));
}

void RowModel::swapRows(int a, int b) {
    std::swap(rows_[at(a)], rows_[at(b)]);
    if (!isInOwnOrder()) {
        std::swap(order_[at(placeOf(a))], order_[at(placeOf(b))]);
        return;
    }
    emit dataChanged(index(std::min(a, b), 0), index(std::max(a, b), columnCount() - 1));
}

void RowModel::showInOrder(std::vector<int> order) {
    beginResetModel();
    order_ = std::move(order);
    endResetModel();
}

int RowModel::rowAt(int place) const {
    return isInOwnOrder() ? place : order_[at(place)];
}

int RowModel::placeOf(int row) const {
    if (isInOwnOrder()) {
        return row;
    }
    return static_cast<int>(std::find(order_.begin(), order_.end(), row) - order_.begin());
}

int RowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        QString text = toQString(rows_[at(rowAt(index.row()))][at(index.column())]);
        // A cell is one line high.
        text.replace(u'\r', u' ').replace(u'\n', u' ');
        text.replace(QLatin1Char(kStoredCarriageReturn), u' ')
            .replace(QLatin1Char(kStoredLineFeed), u' ');
        return text;
    }
    if (role == Qt::TextAlignmentRole && numeric_.count(index.column()) > 0) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return toQString(columns_[at(section)]);
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant((numeric_.count(section) > 0 ? Qt::AlignRight : Qt::AlignLeft) |
                        Qt::AlignVCenter);
    }
    return {};
}

bool cellLess(std::string_view a, std::string_view b, bool numeric) {
    if (numeric) {
        const auto left = parseDouble(a);
        const auto right = parseDouble(b);
        if (left || right) {
            return left && right ? *left < *right : left.has_value();
        }
    }
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return toLowerAscii(x) < toLowerAscii(y);
    });
}

}  // namespace kavu
