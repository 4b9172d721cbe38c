// The editors of the cells of a database: a list where only its values are allowed, else a line
// that takes no more than the field holds, or several lines for a text that has them.
#pragma once

#include "app/mdb/RecordModel.h"

#include <QStyledItemDelegate>

namespace kavu {

class RecordDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    /// The model must outlive the object.
    RecordDelegate(const RecordModel& model, QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

  private:
    const RecordModel& model_;
};

}  // namespace kavu
