// The list of all conversion records of the document, by type, from which they are edited and
// deleted.
#pragma once

#include "app/framework/EditableList.h"
#include "conversion/DefinitionEdit.h"

#include <functional>
#include <string>
#include <vector>

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;

namespace kavu {

class DefinitionListDialog : public QDialog {
    Q_OBJECT
  public:
    /// `edit` runs the sheet of a record and gives true if it was stored.
    DefinitionListDialog(FormContext& form, DocumentContext& document, ConversionStore& store,
                         std::function<bool(const std::string& name)> edit, QWidget* parent);

    /// Something was stored or deleted.
    [[nodiscard]] bool changedRecords() const { return changedRecords_; }
    [[nodiscard]] EditableList& list() const { return *list_; }

  private:
    void makeFilters(QLayout& column);
    /// Reads the records of the type that is chosen, and shows them.
    void rebuild(const std::string& select);
    /// Shows those of the records that hold the text to find.
    void showFound(const std::string& select);
    void showCount();
    void editRecord(int row);
    bool deleteRecord(int row);

    FormContext& form_;
    DocumentContext& document_;
    ConversionStore& store_;
    std::function<bool(const std::string& name)> edit_;
    QComboBox* display_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel* count_ = nullptr;
    EditableList* list_ = nullptr;
    std::vector<DefinitionRow> records_;  ///< of the type that is chosen
    bool changedRecords_ = false;
};

}  // namespace kavu
