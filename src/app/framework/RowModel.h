// Rows of texts as the toolkit's views want them. Values stay bytes; only the cells that
// are painted are converted. The rows have an order of their own, which goes to a file; a view may
// show them in another.
#pragma once

#include <set>
#include <string>
#include <vector>

#include <QAbstractTableModel>

namespace kavu {

class RowModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using Row = std::vector<std::string>;

    explicit RowModel(std::vector<std::string> columns, QObject* parent = nullptr);

    /// Takes rows, and shows them in their own order.
    void setRows(std::vector<Row> rows);
    /// The rows in their own order, however they are shown. All operations count rows in it.
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    /// The new row is the last one in both orders.
    void appendRow(Row row);
    void removeRowAt(int row);
    void replaceRow(int row, Row values);
    /// Each row keeps its place where it is shown in an order of the view.
    void swapRows(int a, int b);

    /// Shows the rows in another order: `order` has each row once. Empty is their own.
    void showInOrder(std::vector<int> order);
    [[nodiscard]] bool isInOwnOrder() const { return order_.empty(); }
    /// The row that is shown at a place of the view, and the place of a row.
    [[nodiscard]] int rowAt(int place) const;
    [[nodiscard]] int placeOf(int row) const;

    /// A column of numbers is aligned to the right.
    void setNumeric(int column) { numeric_.insert(column); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    [[nodiscard]] Row fitted(Row row) const;

    std::vector<std::string> columns_;
    std::vector<Row> rows_;
    std::vector<int> order_;  ///< rows by their places, unless they are in their own order
    std::set<int> numeric_;
};

/// Less, for sorting columns: numbers before texts and by their value, texts without regard
/// to the case of their letters.
[[nodiscard]] bool cellLess(std::string_view a, std::string_view b, bool numeric);

}  // namespace kavu
