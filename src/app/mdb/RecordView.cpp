#include "app/mdb/RecordView.h"

#include <algorithm>

#include <QHeaderView>
#include <QScrollBar>

namespace kavu {

RecordView::RecordView(QWidget* parent) : QTableView(parent), names_(new QTableView(this)) {
    // By pixels: by columns, one would be hidden behind the names with each step.
    setHorizontalScrollMode(ScrollPerPixel);
    names_->setObjectName(QStringLiteral("recordNames"));
    names_->setAccessibleName(QStringLiteral("Names of the records"));
    names_->setFocusPolicy(Qt::NoFocus);  // before the proxy, which would get it too
    names_->setFocusProxy(this);
    names_->setFrameShape(QFrame::NoFrame);
    names_->setWordWrap(false);
    names_->setEditTriggers(NoEditTriggers);
    names_->setContextMenuPolicy(Qt::NoContextMenu);  // that of the table is shown
    names_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    names_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    names_->verticalHeader()->setVisible(false);
    names_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    names_->hide();
    connect(names_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(names_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { QTableView::edit(index); });
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (column == 0) {
            placeNames();
        }
    });
    connect(names_->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int width) {
                if (column == 0 && width > 0) {
                    setColumnWidth(0, width);
                }
            });
}

void RecordView::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    names_->setModel(model);
    names_->setSelectionModel(selectionModel());
    for (int column = 1; column < model->columnCount(); ++column) {
        names_->setColumnHidden(column, true);
    }
}

void RecordView::shareSorting() {
    auto& own = *horizontalHeader();
    auto& other = *names_->horizontalHeader();
    other.setSortIndicatorClearable(own.isSortIndicatorClearable());
    other.setSortIndicator(own.sortIndicatorSection(), own.sortIndicatorOrder());
    names_->setSortingEnabled(true);
    connect(&own, &QHeaderView::sortIndicatorChanged, &other, &QHeaderView::setSortIndicator);
    connect(&other, &QHeaderView::sortIndicatorChanged, &own, &QHeaderView::setSortIndicator);
}

void RecordView::placeNames() {
    if (horizontalScrollBar()->value() == 0 || model() == nullptr) {
        names_->hide();
        return;
    }
    const int height = verticalHeader()->defaultSectionSize();
    if (names_->verticalHeader()->defaultSectionSize() != height) {
        names_->verticalHeader()->setMinimumSectionSize(verticalHeader()->minimumSectionSize());
        names_->verticalHeader()->setDefaultSectionSize(height);
    }
    names_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    if (names_->columnWidth(0) != columnWidth(0)) {
        names_->setColumnWidth(0, columnWidth(0));
    }
    names_->setGeometry(viewport()->x(), horizontalHeader()->y(),
                        std::min(columnWidth(0), viewport()->width()),
                        horizontalHeader()->height() + viewport()->height());
    names_->show();
    names_->raise();
    names_->verticalScrollBar()->setValue(verticalScrollBar()->value());
}

void RecordView::updateGeometries() {
    QTableView::updateGeometries();
    placeNames();
}

void RecordView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    placeNames();
}

void RecordView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    auto& bar = *horizontalScrollBar();
    const int before = bar.value();
    QTableView::scrollTo(index, hint);
    if (index.column() == 0) {
        bar.setValue(before);
        return;
    }
    const int hidden = columnWidth(0) - columnViewportPosition(index.column());
    if (bar.value() > 0 && hidden > 0) {
        bar.setValue(bar.value() - hidden);
    }
}

bool RecordView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool isEdited = QTableView::edit(index, trigger, event);
    if (isEdited && index.column() == 0) {
        horizontalScrollBar()->setValue(0);
    }
    return isEdited;
}

}  // namespace kavu
