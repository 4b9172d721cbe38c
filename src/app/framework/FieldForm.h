// Controls made from a vocabulary table: one for each field of a page that the edition
// knows, named by its code, with its label, its limit and its choices.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/PropertySheet.h"
#include "vocabulary/Field.h"
#include "vocabulary/FieldRules.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QString>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace kavu {

class FieldControl;
struct FieldControlHost;

class FieldForm : public QWidget {
    Q_OBJECT
  public:
    /// Takes the fields of the table that are on page `pageName` (all that have a label
    /// if it is empty) and that the edition of the context knows, with the limits of that
    /// edition; the fields of lists are not for a form. The texts of the table must outlive
    /// the form, as those of a `constexpr` one do.
    FieldForm(FormContext& form, std::span<const Field> fields, std::string_view pageName,
              QWidget* parent = nullptr);
    ~FieldForm() override;

    /// Shows the values; a code that is missing shows nothing. Is no edit.
    void setValues(const FieldValues& values);
    /// Writes the values of the form's fields into `values` and leaves other codes alone.
    /// What was not edited has the bytes it was given; a field without a value is removed.
    void storeValues(FieldValues& values) const;

    /// One value as it would be stored.
    [[nodiscard]] std::string value(std::string_view code) const;
    /// The field shows a value that is not entered.
    void makeDisplayOnly(std::string_view code);
    /// Sets a value as an edit of the user would: `edited` is sent if it is another one.
    void editValue(std::string_view code, std::string_view value);
    /// The widget of a field, or null if the form does not have it.
    [[nodiscard]] QWidget* control(std::string_view code) const;
    [[nodiscard]] std::vector<std::string_view> codes() const;
    /// A button of the caller's own after a field, or null if the form does not have the field.
    QPushButton* addButton(std::string_view code, const char* name, const QString& text);
    /// Today in the form of the edition.
    [[nodiscard]] std::string today() const;

    /// Refuses a semi-colon and an invalid date, with the focus on the field.
    [[nodiscard]] bool validate();

  signals:
    /// The user has changed a field.
    void edited(const QString& code);

  private:
    void build(std::span<const Field> fields, std::string_view pageName);
    void placeBoxes(QHBoxLayout& columns);
    void showHint(const QString& text);

    FormContext& form_;
    std::unique_ptr<FieldControlHost> host_;
    std::vector<std::unique_ptr<FieldControl>> controls_;
    std::map<std::string, FieldControl*, std::less<>> byCode_;
    QLabel* hint_ = nullptr;
};

/// A page that is a form of fields over a map of values.
class FieldPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `values` is the model of the sheet and must outlive the page.
    FieldPage(FormContext& form, const char* resourceName, const std::string& title,
              std::span<const Field> fields, FieldValues& values, QWidget* parent = nullptr);

    [[nodiscard]] FieldForm& fields() const { return *fields_; }
    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    FieldValues& values_;
    FieldForm* fields_ = nullptr;
};

}  // namespace kavu
