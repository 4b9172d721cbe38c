// The profiles of imports: one is chosen to be loaded, or saved as, and any can be deleted.
#pragma once

#include "app/framework/HelpedDialog.h"

#include <string>

class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace kavu {

class ProfileDialog : public HelpedDialog {
    Q_OBJECT
  public:
    enum class Purpose { Load, Save };
    ProfileDialog(FormContext& form, Purpose purpose, const std::string& title, QWidget* parent);

    /// Of the profile that was chosen, or that a new one is to have.
    [[nodiscard]] std::string title() const;

    /// A title is needed; question "Overwrite Existing Entry?" for a new profile of a title that
    /// is there.
    void accept() override;
    /// Asks, and deletes the selected profile.
    void deleteProfile();

  private:
    void fill();
    void updateState();
    [[nodiscard]] std::string selected() const;
    [[nodiscard]] bool isNew() const;

    QTableWidget* list_ = nullptr;
    QRadioButton* replace_ = nullptr;  ///< only to save
    QRadioButton* saveNew_ = nullptr;
    QLineEdit* title_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* ok_ = nullptr;
};

}  // namespace kavu
