#include "app/mdb/WindowParts.h"

#include <algorithm>

#include <QHeaderView>
#include <QTableView>

namespace kavu {

QTableView* makeLongTable(const char* name, const QString& spoken, QAbstractItemModel& model,
                          int rows, QWidget* parent) {
    auto* const table = new QTableView(parent);
    arrangeLongTable(*table, name, spoken, model, rows);
    return table;
}

void arrangeLongTable(QTableView& table, const char* name, const QString& spoken,
                      QAbstractItemModel& model, int rows) {
    table.setObjectName(QLatin1String(name));
    table.setAccessibleName(spoken);
    table.setModel(&model);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    const int height = table.fontMetrics().height() + look::unit(table);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(height);
    table.setMinimumHeight(height * rows);
}

void makeSortable(QTableView& table) {
    auto& head = *table.horizontalHeader();
    head.setSortIndicatorClearable(true);
    head.setSortIndicator(-1, Qt::AscendingOrder);
    table.setSortingEnabled(true);
}

void widenColumns(QTableView& table, int characters) {
    const auto& head = *table.horizontalHeader();
    for (int column = 0; column < head.count(); ++column) {
        table.setColumnWidth(column, std::max(look::charactersWide(table, characters),
                                              head.sectionSizeHint(column)));
    }
}

}  // namespace kavu
