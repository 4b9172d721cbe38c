// The records of an edited database as the toolkit's views want them: filtered, in any order, a
// column for each field of the form. Only the cells that are painted are converted.
#pragma once

#include "mdb/operations/DatabaseEdit.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <QAbstractTableModel>
#include <QString>

namespace kavu {

class UserInterface;

class RecordModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    /// The edit and the interface must outlive the model; the edit is changed through it or
    /// followed by `refresh`.
    RecordModel(DatabaseEdit& edit, MdbVersion version, int edition, UserInterface* ui,
                QObject* parent = nullptr);

    /// Shows the records in which a field holds the text, in any case: one field by its index, or
    /// any for `kAnyField`. Lists them again, also without another text.
    void setFilter(const QString& text, std::size_t field);
    static constexpr std::size_t kAnyField = mdbfield::kCount;

    /// The row of the edit at a place of the view, and the place of a row; -1 if it is not shown.
    [[nodiscard]] std::size_t rowAt(int place) const { return rows_[asIndex(place)]; }
    [[nodiscard]] int placeOf(std::size_t row) const;
    [[nodiscard]] std::size_t fieldAt(int column) const { return fields_[asIndex(column)]; }
    [[nodiscard]] int columnOf(std::size_t field) const;
    [[nodiscard]] const MdbFieldTable& table() const { return table_; }

    /// Why the value of a field may not stay; empty for a good one.
    [[nodiscard]] std::string faultOf(std::size_t row, std::size_t field) const;
    /// The next place with a fault behind this one, from the end on from the begin; an invalid
    /// index if all is well.
    [[nodiscard]] QModelIndex nextFault(const QModelIndex& from) const;

    /// Takes over what the edit has now. Rows that were changed stay where they are shown; new
    /// ones are at the end, whatever the filter; after a removal or an undo everything is listed
    /// again.
    void follow();
    void refresh();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    /// A column of -1 is the order of the file. Shows its progress.
    void sort(int column, Qt::SortOrder order) override;

    /// The texts of a block as they are shown, with real line breaks.
    [[nodiscard]] std::string textAt(std::size_t row, std::size_t field) const;

  signals:
    /// A cell was edited in place.
    void edited();

  private:
    [[nodiscard]] static std::size_t asIndex(int number) {
        return static_cast<std::size_t>(number);
    }
    void list();
    [[nodiscard]] std::vector<std::size_t> arranged(UserInterface* ui) const;
    void take(std::vector<std::size_t> rows);

    DatabaseEdit& edit_;
    UserInterface* ui_;
    MdbFieldTable table_;
    std::vector<std::size_t> fields_;  ///< by column
    std::vector<std::size_t> rows_;    ///< of the edit, by place
    std::vector<int> places_;          ///< by row, -1 for one that is not shown
    QString filter_;
    std::size_t filterField_ = kAnyField;
    int sorted_ = -1;
    Qt::SortOrder order_ = Qt::AscendingOrder;
};

}  // namespace kavu
