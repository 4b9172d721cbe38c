// The dialog that asks for one value: a text, a whole number, a number or one of a list.
// It checks on OK, says what is wrong and stays open until the value is good.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>
#include <QString>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace kavu {

class UserInterface;

/// Checks a value; gives the text of the error, or nothing.
using ValueCheck = std::function<std::optional<std::string>(const std::string&)>;

/// The title of the boxes about a refused value.
inline constexpr char kIllegalValue[] = "ERROR: Illegal Value Entered";

[[nodiscard]] ValueCheck textCheck(std::size_t limit);
[[nodiscard]] ValueCheck integerCheck(long least, long most);
[[nodiscard]] ValueCheck doubleCheck(double least, double most);

struct EnterValueSetup {
    std::string title;  ///< empty is "Enter Value"
    std::string prompt;
    std::string initial;
    /// Characters beyond which the field takes no more; 0 is no limit.
    std::size_t limit = 0;
    /// With choices the value is one of them.
    std::vector<std::string> choices;
    ValueCheck check;
    /// Title of the boxes about a refused value.
    std::string errorTitle = kIllegalValue;
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
    UserInterface& ui_;
    EnterValueSetup setup_;
    QString initial_;
    QLineEdit* edit_ = nullptr;
    QComboBox* choices_ = nullptr;
    QCheckBox* lock_ = nullptr;
};

}  // namespace kavu
