// The pages of the sheet of a conversion record, made from its vocabulary.
#pragma once

#include "app/framework/EditableList.h"
#include "app/framework/PropertySheet.h"
#include "conversion/DefinitionSheet.h"

#include <functional>
#include <memory>
#include <string_view>

class QHBoxLayout;
class QLabel;

namespace kavu {

class FieldForm;
struct DocumentContext;

/// A page of fields with buttons of its own below them.
class EuFieldPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `values` is the model of the sheet and outlives the page.
    EuFieldPage(FormContext& form, const EuPage& page, DefinitionValues::Fields& values,
                bool readOnly);

    [[nodiscard]] FieldForm& fields() const { return *fields_; }
    QPushButton* addButton(const char* name, const QString& text);
    /// Puts what the controls hold into the model, without a check.
    void take();
    /// A line below the fields about what the page has done besides.
    void tell(std::string_view text);

    /// A check of the model that the fields have passed; false keeps the sheet open. May be empty.
    std::function<bool()> check;

    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    DefinitionValues::Fields& values_;
    FieldForm* fields_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    QLabel* told_ = nullptr;
};

/// The page of a list. A list that the edition does not know is shown and closed.
[[nodiscard]] std::unique_ptr<ListPage> makeEuListPage(FormContext& form, const EuPage& page,
                                                       DefinitionValues& values, bool readOnly);

/// "Edit Bit Weight Values": changes the rows; false if it was cancelled.
bool editBitWeights(FormContext& form, DefinitionValues::Rows& rows, QWidget* parent);
/// "Import EU Values": the name of the record to take the values from, or nothing. Without any
/// other record message 435 is shown.
[[nodiscard]] std::optional<std::string> askImportSource(FormContext& form,
                                                         const std::vector<std::string>& names,
                                                         const std::string& preselected,
                                                         QWidget* parent);
/// The chosen code of "Defined Floating Point Types", or nothing.
[[nodiscard]] std::optional<std::string> askFloatingPointFormat(FormContext& form);

}  // namespace kavu
