// "Measurement Definition Options": how new measurements state their places.
#pragma once

#include <QDialog>

class QRadioButton;

namespace kavu {

class DefinitionOptionsDialog : public QDialog {
    Q_OBJECT
  public:
    DefinitionOptionsDialog(bool wordFrame, QWidget* parent);

    [[nodiscard]] bool wordFrame() const;

  private:
    QRadioButton* wordFrame_ = nullptr;
    QRadioButton* older_ = nullptr;
};

}  // namespace kavu
