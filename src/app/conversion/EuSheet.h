// The sheet of one conversion record: eight pages over its working copy, and the window of its
// conversion type next to them.
#pragma once

#include "app/conversion/ConversionForms.h"
#include "app/conversion/EuPages.h"
#include "app/framework/PropertySheet.h"
#include "conversion/DefinitionSheet.h"

#include <optional>

namespace kavu {

class DefinitionEdit;
class DefinitionWindow;

class EuSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// `edit` is the open edit of the record; it is stored on OK, and left to the caller
    /// otherwise. All of the arguments outlive the sheet.
    EuSheet(FormContext& form, DocumentContext& document, ConversionStore& store,
            DefinitionEdit& edit, const ConversionSheetSetup& setup, QWidget* parent);

    /// The window of the conversion type, or null while the details are hidden.
    [[nodiscard]] DefinitionWindow* details() const { return details_; }
    void showDetails(bool shown);
    /// Takes the values of another record.
    void importValues();

    void accept() override;

  private:
    void addPages();
    void addInformationButtons(EuFieldPage& page);
    void addOtherButtons();
    EuFieldPage& fieldPage(std::size_t index) const;
    void informationEdited(const QString& code);
    void fitFieldEdited();
    /// Reports a limit that cannot be stored.
    [[nodiscard]] bool checkLimits();
    void openFormats();
    void openBitWeights();
    [[nodiscard]] std::string type() const;
    [[nodiscard]] std::optional<DetailWindow> windowOfType() const;
    void followType();
    /// Stores what the window holds and closes it; false leaves it up.
    bool closeDetails();
    void openDetails(const DetailWindow& window);
    void updateButtons();
    void reload();
    [[nodiscard]] bool store();

    FormContext& form_;
    DocumentContext& document_;
    ConversionStore& store_;
    DefinitionEdit& edit_;
    ConversionSheetSetup setup_;
    DefinitionValues values_;
    std::vector<EuFieldPage*> fieldPages_;  ///< by the number of the page; null for lists
    DefinitionWindow* details_ = nullptr;
    std::string detailType_;
    bool wantsDetails_ = false;
    bool releasedByHand_ = false;
    bool stamping_ = false;
    QPushButton* showDetails_ = nullptr;
    QPushButton* formats_ = nullptr;
    QPushButton* bitWeights_ = nullptr;
};

}  // namespace kavu
