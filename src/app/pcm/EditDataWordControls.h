// Small controls that the dialogs of a data word share.
#pragma once

#include "app/framework/FormContext.h"
#include "vocabulary/Field.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QComboBox>
#include <QLineEdit>
#include <QWidget>

class QGridLayout;

namespace kavu {

class EditableList;

/// A choice of a table of the vocabulary. A code that is none of the choices is shown as it is and
/// kept until another one is chosen.
class CodeBox : public QComboBox {
    Q_OBJECT
  public:
    CodeBox(const char* name, std::span<const Choice> choices, QWidget* parent);

    /// Shows a code; is no edit.
    void setCode(std::string_view code);
    [[nodiscard]] std::string code() const;

  private:
    [[nodiscard]] int indexOf(std::string_view code) const;

    std::span<const Choice> choices_;
    std::string original_;
};

/// A number without a sign; an empty field is 0.
class NumberEdit : public QLineEdit {
    Q_OBJECT
  public:
    NumberEdit(const char* name, int digits, QWidget* parent);

    void setNumber(int number);
    [[nodiscard]] int number() const;
};

/// A label with its control in the next row of a grid. Gives the row.
int addField(QGridLayout& grid, const char16_t* label, QWidget& control);
/// The grid of such rows.
[[nodiscard]] QGridLayout* makeFieldGrid(const QWidget& owner);

/// The question before an entry of a list is deleted.
[[nodiscard]] bool mayDeleteEntry(FormContext& form);

/// Lets the button of a list say what it deletes: the dialog has a Delete of its own.
void nameDeleteButton(EditableList& list, const QString& text);

/// The heading of a panel next to a dialog.
[[nodiscard]] QWidget* makePanelTitle(const QString& title, QWidget* panel);

}  // namespace kavu
