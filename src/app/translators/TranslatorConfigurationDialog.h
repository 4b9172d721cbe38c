// "Edit Configuration": the settings of the translators and the items of one vendor.
#pragma once

#include "app/framework/EditDialog.h"
#include "sdk/TranslatorConfiguration.h"

class QTreeWidget;

namespace kavu {

class TranslatorConfigurationDialog : public EditDialog {
    Q_OBJECT
  public:
    /// The configuration must outlive the dialog.
    TranslatorConfigurationDialog(FormContext& form, TranslatorConfiguration& configuration,
                                  QWidget* parent);

    /// What a double click on a row, Return on it and the Edit button do.
    void editRow(int row);
    /// What the button for the defaults does.
    void restoreDefaults();

  protected:
    [[nodiscard]] bool store() override;

  private:
    void showRows();

    TranslatorConfiguration& configuration_;
    QTreeWidget* rows_ = nullptr;
};

}  // namespace kavu
