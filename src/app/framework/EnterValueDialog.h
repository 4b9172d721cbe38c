// The dialog that asks for one value: a text, a whole number, a number or one of a list.
// It checks on OK, says what is wrong and stays open until the value is good.
#pragma once

#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"

#include <optional>
#include <string>
#include <vector>

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QVBoxLayout;

namespace kavu {

struct EnterValueSetup {
    std::string title{};  ///< empty is "Enter Value"
    std::string prompt{};
    std::string initial{};
    /// Shown above the field: what there is already.
    std::vector<std::string> listed{};
    /// With choices the value is one of them, or `initial`; it can be emptied if that is said.
    std::vector<std::string> choices{};
    bool mayBeEmpty = false;
    ValueCheck check{};
    /// What may be entered, in a line below the field (`rangeText`).
    std::string hint{};
    /// Title of the boxes about a refused value.
    std::string errorTitle = kIllegalNumber;
    /// A semi-colon is refused by the numbered message 402; otherwise `check` decides.
    bool refuseSemicolon = true;
    bool offerLock = true;
};

class EnterValueDialog : public QDialog {
    Q_OBJECT
  public:
    EnterValueDialog(UserInterface& ui, EnterValueSetup setup, QWidget* parent);

    /// The value; what was not edited has the bytes of `initial`.
    [[nodiscard]] std::string value() const;
    /// "Lock this window's position on screen"
    [[nodiscard]] bool positionLocked() const;
    void setPositionLocked(bool locked);

    void accept() override;

  private:
    void addListed(QVBoxLayout& layout);
    [[nodiscard]] QWidget& makeControl();

    UserInterface& ui_;
    EnterValueSetup setup_;
    ShownText initial_;
    QLineEdit* edit_ = nullptr;
    QComboBox* choices_ = nullptr;
    QCheckBox* lock_ = nullptr;
};

}  // namespace kavu
