// Rows of texts as the toolkit's views want them. Values stay bytes; only the cells that
// are painted are converted.
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

    void setRows(std::vector<Row> rows);
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    void appendRow(Row row);
    void removeRowAt(int row);
    void replaceRow(int row, Row values);
    void swapRows(int a, int b);
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
    std::set<int> numeric_;
};

/// Less, for sorting columns: numbers before texts and by their value, texts without regard
/// to the case of their letters.
[[nodiscard]] bool cellLess(const std::string& a, const std::string& b, bool numeric);

}  // namespace kavu
