// The control of a bit mask: shows it in binary or in hexadecimal, as the setting says and the
// two buttons switch, and asks for another one.
#pragma once

#include "app/framework/FormContext.h"

#include <string>
#include <string_view>

#include <QWidget>

class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kavu {

struct DocumentContext;

class MaskControl : public QWidget {
    Q_OBJECT
  public:
    /// `name` is that of the field that shows the mask, and the buttons are below this widget.
    MaskControl(FormContext& form, const DocumentContext& document, const char* name,
                QWidget* parent = nullptr);

    /// Shows a mask of the model (binary, "FW" or empty), for a word of so many bits; a length
    /// of 0 is an unknown one. Is no edit.
    void setMask(std::string_view mask, int wordLength);
    void setWordLength(int wordLength);
    /// As it was given if it was not edited; else in binary or "FW".
    [[nodiscard]] const std::string& mask() const { return mask_; }
    /// The setting that an entered mask is kept in; empty keeps none.
    void setKey(std::string key) { key_ = std::move(key); }
    /// The field, for its label.
    [[nodiscard]] QLineEdit& field() const { return *field_; }
    /// Shows the mask again: another control may have switched the form.
    void refresh();

  public slots:
    void editMask();

  signals:
    /// The user has entered another mask.
    void changed();
    /// The user has switched between binary and hexadecimal.
    void formSwitched();

  protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    void switchForm(bool hexadecimal);

    FormContext& form_;
    const DocumentContext& document_;
    std::string mask_;
    std::string key_;
    int wordLength_ = 0;
    QLineEdit* field_ = nullptr;
    QPushButton* edit_ = nullptr;
    QRadioButton* binary_ = nullptr;
    QRadioButton* hex_ = nullptr;
};

}  // namespace kavu
