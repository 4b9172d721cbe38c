// The dialog over one row of an editable list, with a control for each column.
#pragma once

#include "app/framework/EditableList.h"
#include "app/framework/QtText.h"

#include <vector>

#include <QDialog>

namespace kavu {

class RowDialog : public QDialog {
    Q_OBJECT
  public:
    /// `row` is the number of the row in the list, whose other rows a unique value is
    /// compared with. A value that stays as it was is not checked again.
    RowDialog(FormContext& form, const EditableList& list, const ListSetup& setup, int row,
              const ListRow& before, bool isNew, QWidget* parent);

    /// The row with what was edited; other values have the bytes they had.
    [[nodiscard]] ListRow values() const;

    void accept() override;

  protected:
    /// Checks what was edited; false after the reason has been shown, with the focus there.
    [[nodiscard]] bool checkValues();

  private:
    QWidget* makeControl(const ListColumn& column, const std::string& value);
    [[nodiscard]] std::string valueAt(int column) const;

    FormContext& form_;
    const EditableList& list_;
    const ListSetup& setup_;
    int row_;
    ListRow before_;
    bool isNew_;
    std::vector<QWidget*> controls_;
    std::vector<ShownText> shown_;
};

}  // namespace kavu
