// What an empty place of the frame becomes: "create_new_cell".
#pragma once

#include "app/framework/FormContext.h"

#include <optional>

#include <QDialog>

class QRadioButton;

namespace kavu {

enum class NewCell { Measurement, Async };

class NewCellDialog : public QDialog {
    Q_OBJECT
  public:
    NewCellDialog(int fwp, int fn, QWidget* parent);
    [[nodiscard]] NewCell choice() const;

  private:
    QRadioButton* measurement_ = nullptr;
    QRadioButton* async_ = nullptr;
};

/// Nothing after a Cancel.
[[nodiscard]] std::optional<NewCell> chooseNewCell(FormContext& form, QWidget* window, int fwp,
                                                   int fn);

}  // namespace kavu
