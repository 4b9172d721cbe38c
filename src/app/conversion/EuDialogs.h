// The small dialogs of the conversions: the weights of the bits, the record to import values
// from, the strings of the comment.
#pragma once

#include "app/framework/EditableList.h"
#include "conversion/DefinitionEdit.h"

#include <optional>
#include <string>
#include <vector>

#include <QDialog>

class QListWidget;

namespace kavu {

class BitWeightDialog : public QDialog {
    Q_OBJECT
  public:
    BitWeightDialog(FormContext& form, std::vector<ListRow> rows, QWidget* parent);
    [[nodiscard]] const std::vector<ListRow>& rows() const { return list_->rows(); }
    [[nodiscard]] EditableList& list() const { return *list_; }

  private:
    FormContext& form_;
    EditableList* list_ = nullptr;
};

class ImportValuesDialog : public QDialog {
    Q_OBJECT
  public:
    ImportValuesDialog(const std::vector<std::string>& names, const std::string& preselected,
                       QWidget* parent);
    [[nodiscard]] std::string chosen() const;

  private:
    std::vector<std::string> names_;
    QListWidget* list_ = nullptr;
};

/// The form `EUCommentOptions`. OK writes the strings to the settings.
class CommentOptionsDialog : public QDialog {
    Q_OBJECT
  public:
    CommentOptionsDialog(FormContext& form, DocumentContext& document, QWidget* parent);
    [[nodiscard]] std::vector<CommentString> strings() const;
    void accept() override;

  private:
    FormContext& form_;
    DocumentContext& document_;
    EditableList* list_ = nullptr;
};

/// True if the strings were written.
bool editEuCommentOptions(FormContext& form, DocumentContext& document, QWidget* parent);

}  // namespace kavu
