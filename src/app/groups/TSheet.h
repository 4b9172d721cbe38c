// The sheet over the transmission group of a data source.
#pragma once

#include "app/framework/PropertySheet.h"
#include "groups/SourceEdit.h"
#include "groups/TGroup.h"

#include <functional>
#include <memory>
#include <string>

namespace kavu {

class IdentifiedList;

/// The list of subcarriers.
class SubcarrierPage : public PropertyPage {
    Q_OBJECT
  public:
    /// `record` is the model of the sheet and must outlive the page.
    SubcarrierPage(FormContext& form, const char* resourceName, const std::string& title,
                   GroupRow& record, QWidget* parent = nullptr);

    void load() override;
    [[nodiscard]] bool store() override;

  private:
    GroupRow& record_;
    std::vector<GroupRow> before_;
    IdentifiedList* list_ = nullptr;
};

class TransmissionSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// `editMultiplex` opens the multiplex definition of the data source and gives true if it
    /// has changed the document.
    TransmissionSheet(FormContext& form, DocumentContext& document, EditedGroup group,
                      std::function<bool()> editMultiplex, QWidget* parent = nullptr);

    /// The button has changed the document, whatever became of the sheet.
    [[nodiscard]] bool changedElsewhere() const { return changedElsewhere_; }

  private:
    EditedGroup group_;
    bool changedElsewhere_ = false;
};

/// Reads the group of a data source and runs the sheet over it. True if the document has
/// changed.
bool editTransmission(FormContext& form, SourceParts parts, const std::string& source);

}  // namespace kavu
