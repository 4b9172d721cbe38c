// The small dialogs of the Options menu: editions, sample rates, the update file.
#pragma once

#include "app/framework/FormContext.h"
#include "groups/Migration.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;

namespace kavu {

/// "TMATS Version Numbers": the edition of files that do not state theirs, and the edition
/// in which documents are saved.
class VersionDialog : public QDialog {
    Q_OBJECT
  public:
    /// `openEdition` is the edition of the open document, 0 without one.
    VersionDialog(const VersionOptions& options, int openEdition, QWidget* parent);
    [[nodiscard]] VersionOptions options() const;

  private:
    QComboBox* input_ = nullptr;
    QRadioButton* asRead_ = nullptr;
    QRadioButton* asSelected_ = nullptr;
    QComboBox* output_ = nullptr;
};

/// "KAVU-Update Options": the file to which changed calibrations are written.
class UpdateDialog : public QDialog {
    Q_OBJECT
  public:
    UpdateDialog(FormContext& form, QWidget* parent);
    /// Writes the settings.
    void store() const;
    void accept() override;

  private:
    void browse();
    void enableParts();

    FormContext& form_;
    QCheckBox* enabled_ = nullptr;
    QLineEdit* path_ = nullptr;
    QPushButton* browse_ = nullptr;
    QRadioButton* append_ = nullptr;
    QRadioButton* overwrite_ = nullptr;
};

/// "Sample Rate Options": whether sample rates are kept calculated, and with how many
/// digits after the decimal point.
class SampleRateDialog : public QDialog {
    Q_OBJECT
  public:
    static constexpr int kMostDigits = 5;

    SampleRateDialog(bool calculate, int digits, QWidget* parent);
    [[nodiscard]] bool calculate() const;
    [[nodiscard]] int digits() const;

  private:
    QCheckBox* calculate_ = nullptr;
    QComboBox* digits_ = nullptr;
};

}  // namespace kavu
