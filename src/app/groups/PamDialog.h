// The dialog over the attributes of a PAM stream.
#pragma once

#include "app/framework/PropertySheet.h"
#include "groups/AGroup.h"

#include <memory>

namespace kavu {

class FieldForm;
class IdentifiedList;

class PamPage : public PropertyPage {
    Q_OBJECT
  public:
    /// The group has been read by `loadPam`.
    PamPage(FormContext& form, DocumentContext& document, PamGroup group,
            QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool validate() override;
    [[nodiscard]] bool store() override;

  private:
    DocumentContext& document_;
    PamGroup group_;
    FieldForm* fields_ = nullptr;
    IdentifiedList* rows_ = nullptr;
};

[[nodiscard]] std::unique_ptr<PropertySheet> makePamDialog(FormContext& form,
                                                           DocumentContext& document,
                                                           PamGroup group);
/// Lets the user choose a PAM stream, unless there is just one, and runs the dialog over it.
/// True if it was stored.
bool editPam(FormContext& form, DocumentContext& document);

}  // namespace kavu
