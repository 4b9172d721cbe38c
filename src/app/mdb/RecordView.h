// The table of the window of a database. Its first column, the names, stays in sight when the table
// is scrolled sideways: a second view of that column alone covers it then.
#pragma once

#include <QTableView>

namespace kavu {

class RecordView : public QTableView {
    Q_OBJECT
  public:
    explicit RecordView(QWidget* parent);

    /// REQUIRES: called once, with a model whose number of columns stays.
    void setModel(QAbstractItemModel* model) override;
    /// Lets the heads of both views sort, with one arrow. REQUIRES: the table is sortable.
    void shareSorting();
    /// The column that covers the first one; hidden while that one is in sight itself.
    [[nodiscard]] QTableView& names() const { return *names_; }

    using QTableView::edit;
    /// A cell is in sight when neither the edge nor the column of names covers it.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    /// A name is edited in its own place, which is scrolled into sight.
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

  private:
    void placeNames();

    QTableView* names_ = nullptr;
};

}  // namespace kavu
