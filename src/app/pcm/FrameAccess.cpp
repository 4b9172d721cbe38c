#include "app/pcm/FrameAccess.h"

#include "app/framework/QtText.h"
#include "app/pcm/FrameGrid.h"

#include <map>
#include <utility>
#include <vector>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>

namespace kavu {

namespace {

/// What a screen reader says of a place.
QString spokenPlace(const FrameGrid& grid, FramePlace at) {
    const auto& display = grid.display();
    if (!display.isShown(at)) {
        return QStringLiteral("no cell");
    }
    const auto text = display.cellText(FrameArea::Grid, at.word, at.frame).text;
    return QStringLiteral("FWP %1 FN %2: %3")
        .arg(at.word)
        .arg(at.frame)
        .arg(text.empty() ? QStringLiteral("empty") : toQString(text));
}

class GridAccess;

/// A part of the table that is no widget. It is made, and ended, by its table.
class PartAccess : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    PartAccess(FrameGrid& grid, const GridAccess& table) : grid_(&grid), table_(table) {}

    [[nodiscard]] bool isValid() const override { return grid_ != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override {}
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] QAccessibleInterface* table() const override {
        return QAccessible::queryAccessibleInterface(grid_);
    }

  protected:
    [[nodiscard]] QRect onScreen(const QRect& area) const {
        return {grid_->mapToGlobal(area.topLeft()), area.size()};
    }

    QPointer<FrameGrid> grid_;
    const GridAccess& table_;
};

class CellAccess : public PartAccess {
  public:
    CellAccess(FrameGrid& grid, const GridAccess& table, FramePlace at)
        : PartAccess(grid, table), at_(at) {}

    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text text) const override {
        if (!isValid()) {
            return {};
        }
        return text == QAccessible::Name          ? spokenPlace(*grid_, at_)
               : text == QAccessible::Description ? toQString(grid_->display().tipText(at_))
                                                  : QString();
    }
    [[nodiscard]] QRect rect() const override { return onScreen(grid_->cellRect(at_)); }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.selectable = grid_->display().isWithin(at_);
        state.focusable = state.selectable;
        state.selected = isSelected();
        state.focused = grid_->hasFocus() && grid_->view().selected() == at_;
        state.invisible = !grid_->display().isShown(at_);
        return state;
    }

    // --- as a cell of the table in view ---------------------------------------------------

    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int columnIndex() const override { return at_.word - grid_->view().firstWord; }
    [[nodiscard]] int rowIndex() const override {
        return at_.frame - 1 - grid_->view().scrolledRows;
    }
    [[nodiscard]] bool isSelected() const override { return grid_->view().block().holds(at_); }

    [[nodiscard]] FramePlace at() const { return at_; }

  private:
    FramePlace at_;
};

/// The cells of a frame that are in view. At a small zoom there are so many cells that one
/// list of all of them would keep a reader waiting; the list of a row is always short.
class RowAccess : public PartAccess {
  public:
    RowAccess(FrameGrid& grid, const GridAccess& table, int frame)
        : PartAccess(grid, table), frame_(frame) {}

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* parent() const override { return table(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override { return columnExtent(); }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const cell = dynamic_cast<const CellAccess*>(child);
        return cell != nullptr && cell->at().frame == frame_ ? cell->columnIndex() : -1;
    }
    [[nodiscard]] QString text(QAccessible::Text text) const override {
        return text == QAccessible::Name ? QStringLiteral("FN %1").arg(frame_) : QString();
    }
    [[nodiscard]] QRect rect() const override {
        auto row = grid_->cellRect({grid_->view().firstWord, frame_});
        row.setWidth(row.width() * columnExtent());
        return onScreen(row);
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Row; }
    [[nodiscard]] QAccessible::State state() const override { return {}; }

    // --- as what is at a row of the table: one cell over all of its columns -------------

    [[nodiscard]] int columnExtent() const override { return grid_->columnsInView(); }
    [[nodiscard]] int columnIndex() const override { return 0; }
    [[nodiscard]] int rowIndex() const override { return frame_ - 1 - grid_->view().scrolledRows; }
    [[nodiscard]] bool isSelected() const override { return false; }

  private:
    int frame_;
};

class GridAccess : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit GridAccess(FrameGrid& grid)
        : QAccessibleWidget(&grid, QAccessible::Table), grid_(grid) {
        connections_ = {
            QObject::connect(&grid, &FrameGrid::viewRefreshed, &grid, [this] { forgetParts(); }),
            QObject::connect(&grid, &FrameGrid::selectionMoved, &grid, [this] { tellFocus(); })};
    }
    GridAccess(const GridAccess&) = delete;
    GridAccess& operator=(const GridAccess&) = delete;
    ~GridAccess() override {
        for (const auto& connection : connections_) {
            QObject::disconnect(connection);
        }
        forgetParts();
    }

    [[nodiscard]] int childCount() const override { return rowCount(); }
    /// After the rows come the cells: older readers ask a table for a cell by its index.
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        const int rows = rowCount();
        const int columns = columnCount();
        if (index < 0 || columns < 1) {
            return nullptr;
        }
        return index < rows ? rowOf(grid_.view().scrolledRows + 1 + index)
                            : cellAt((index - rows) / columns, (index - rows) % columns);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const part = dynamic_cast<const PartAccess*>(child);
        if (part == nullptr) {
            return -1;
        }
        return part->role() == QAccessible::Row
                   ? part->rowIndex()
                   : rowCount() + part->rowIndex() * columnCount() + part->columnIndex();
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto point = grid_.mapFromGlobal(QPoint(x, y));
        return cellOf(grid_.view().cellAtPoint(point.x(), point.y()));
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return grid_.hasFocus() ? cellOf(grid_.view().selected()) : nullptr;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    // --- the table of what is in view -----------------------------------------------------

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        return row < 0 || column < 0 || row >= rowCount() || column >= columnCount()
                   ? nullptr
                   : cellOf({grid_.view().firstWord + column, grid_.view().scrolledRows + 1 + row});
    }
    [[nodiscard]] int selectedCellCount() const override {
        return static_cast<int>(selectedCells().size());
    }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        auto* const cell = cellOf(grid_.view().selected());
        return cell == nullptr ? QList<QAccessibleInterface*>()
                               : QList<QAccessibleInterface*>{cell};
    }
    [[nodiscard]] QString columnDescription(int column) const override {
        const int word = grid_.view().firstWord + column;
        const auto label = grid_.display().cellText(FrameArea::Labels, word, 0).text;
        return QStringLiteral("FWP %1 %2").arg(word).arg(toQString(label)).trimmed();
    }
    [[nodiscard]] QString rowDescription(int row) const override {
        return QStringLiteral("FN %1").arg(grid_.view().scrolledRows + 1 + row);
    }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return 0; }
    [[nodiscard]] int columnCount() const override { return grid_.columnsInView(); }
    [[nodiscard]] int rowCount() const override { return grid_.rowsInView(); }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override { return {}; }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { forgetParts(); }

    // --- the objects of the parts, made when they are asked for ----------------------------

    [[nodiscard]] QAccessibleInterface* cellOf(FramePlace at) const {
        const auto& view = grid_.view();
        if (!at || at.word < view.firstWord || at.word >= view.firstWord + columnCount() ||
            !isInView(at.frame)) {
            return nullptr;
        }
        auto& id = cells_[{at.word, at.frame}];
        if (id == 0) {
            id = QAccessible::registerAccessibleInterface(new CellAccess(grid_, *this, at));
        }
        return QAccessible::accessibleInterface(id);
    }
    [[nodiscard]] QAccessibleInterface* rowOf(int frame) const {
        if (!isInView(frame)) {
            return nullptr;
        }
        auto& id = rows_[frame];
        if (id == 0) {
            id = QAccessible::registerAccessibleInterface(new RowAccess(grid_, *this, frame));
        }
        return QAccessible::accessibleInterface(id);
    }

  private:
    [[nodiscard]] bool isInView(int frame) const {
        const int above = grid_.view().scrolledRows;
        return frame > above && frame <= above + rowCount();
    }
    void forgetParts() {
        for (const auto& [place, id] : std::exchange(cells_, {})) {
            QAccessible::deleteAccessibleInterface(id);
        }
        for (const auto& [frame, id] : std::exchange(rows_, {})) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
    void tellFocus() {
        if (auto* const cell = focusChild()) {
            QAccessibleEvent event(cell, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
    }

    FrameGrid& grid_;
    std::vector<QMetaObject::Connection> connections_;
    mutable std::map<std::pair<int, int>, QAccessible::Id> cells_;
    mutable std::map<int, QAccessible::Id> rows_;
};

QAccessibleInterface* CellAccess::parent() const {
    return table_.rowOf(at_.frame);
}

QAccessibleInterface* RowAccess::child(int index) const {
    return index < 0 ? nullptr : table_.cellOf({grid_->view().firstWord + index, frame_});
}

QAccessibleInterface* RowAccess::childAt(int x, int y) const {
    return rect().contains(x, y) ? table_.childAt(x, y) : nullptr;
}

QAccessibleInterface* makeAccess(const QString& /*key*/, QObject* object) {
    auto* const grid = qobject_cast<FrameGrid*>(object);
    return grid == nullptr ? nullptr : new GridAccess(*grid);
}

}  // namespace

void installFrameAccess() {
    QAccessible::removeFactory(makeAccess);
    QAccessible::installFactory(makeAccess);
}

}  // namespace kavu
