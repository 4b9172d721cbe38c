// The parts that the sheets and dialogs of a bus group share: a page of fields, a list of rows, a
// page that is such a list, and a dialog over a few fields.
#pragma once

#include "app/bus/BusFormFields.h"
#include "app/bus/BusRowForms.h"
#include "app/framework/EditDialog.h"
#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace kavu {

/// The values of a form: as they were, and as its pages have stored them.
struct BusFormState {
    BusPlace place{};
    FieldValues before{};
    FieldValues now{};

    [[nodiscard]] static BusFormState of(const BusDefinition& definition, const BusPlace& place);
    [[nodiscard]] BusForm changes() const { return changedBusForm(levelOf(place), before, now); }
};

/// Checks what was entered into the fields of a form, with the focus on the one that is refused:
/// 376 (an address), 392 (a command word), 142 (a mask), 402 (a semi-colon).
[[nodiscard]] bool checkBusFields(const BusFormSetup& setup, const BusFormState& state,
                                  FieldForm& fields);

/// Checks them, and sets them in the row: what the OK of a dialog does. False as above, or as in
/// `BusEdit::set`.
[[nodiscard]] bool storeBusFields(const BusFormSetup& setup, BusFormState& state,
                                  FieldForm& fields);

/// A page of fields of a bus or of a message.
class BusFieldPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `state` is the model of the sheet and must outlive the page.
    BusFieldPage(const BusFormSetup& setup, const char* resourceName, const std::string& title,
                 std::span<const Field> fields, BusFormState& state, QWidget* parent = nullptr);

    [[nodiscard]] FieldForm& fields() const { return *fields_; }
    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  protected:
    [[nodiscard]] const BusFormSetup& setup() const { return setup_; }
    [[nodiscard]] BusFormState& state() const { return state_; }

  private:
    const BusFormSetup& setup_;
    BusFormState& state_;
    FieldForm* fields_ = nullptr;
};

/// The rows of a level in a row: Add and Edit open the form of a row, Delete asks. All of it
/// changes the definition at once; the form around it takes that back if it is cancelled.
class BusRowList : public EditableList {
    Q_OBJECT
  public:
    BusRowList(const BusFormSetup& setup, BusPlace owner, const char* name, QWidget* parent);

    /// Shows the rows of the definition.
    void showRows();

  signals:
    /// A row was added, deleted, or has changed somewhere in it.
    void rowsEdited();

  private:
    [[nodiscard]] std::optional<ListRow> editRowOf(int row);

    const BusFormSetup& setup_;
    BusPlace owner_;
    BusLevel level_;
};

/// A page that is the list of the rows in a row.
class BusRowsPage : public PropertyPage {
    Q_OBJECT
  public:
    BusRowsPage(const BusFormSetup& setup, const char* resourceName, const std::string& title,
                BusPlace owner, const char* listName, QWidget* parent = nullptr);

    [[nodiscard]] BusRowList& list() const { return *list_; }
    void load() override { list_->showRows(); }
    [[nodiscard]] bool store() override { return true; }

  private:
    void addDatabaseButton(const BusFormSetup& setup);

    BusPlace owner_;
    BusRowList* list_ = nullptr;
};

/// A dialog over a few values.
class BusFieldDialog : public EditDialog {
    Q_OBJECT
  public:
    /// Takes the values; false (it has been reported) keeps the dialog open.
    using Store = std::function<bool(FieldForm& fields)>;

    BusFieldDialog(FormContext& form, const char* resourceName, const QString& title,
                   std::span<const Field> fields, const FieldValues& values, Store store,
                   QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    FieldForm* fields_ = nullptr;
    Store store_;
};

}  // namespace kavu
