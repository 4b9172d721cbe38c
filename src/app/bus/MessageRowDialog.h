// The form of one row of message data: a stream, a message, a field, a measurement, a location.
#pragma once

#include "app/framework/EditDialog.h"
#include "bus/message/MessageEdit.h"
#include "vocabulary/Field.h"

#include <string>
#include <vector>

namespace kavu {

class FieldForm;

class MessageRowDialog : public EditDialog {
    Q_OBJECT
  public:
    /// The form of the row at a place, or of a new one in it. Both have one.
    MessageRowDialog(FormContext& form, MessageEdit& edit, const GroupPlace& place, bool isNew,
                     QWidget* parent);

    [[nodiscard]] FieldForm& fields() const { return *fields_; }

  protected:
    [[nodiscard]] bool store() override;

  private:
    MessageRowDialog(FormContext& form, MessageEdit& edit, const GroupPlace& place, bool isNew,
                     MessageForm opened, QWidget* parent);
    /// Which texts can be entered changes with the lists.
    void enableFields();
    /// The text of a column as the controls have it.
    [[nodiscard]] std::string text(std::size_t column) const;

    MessageEdit& edit_;
    GroupPlace place_;
    bool isNew_;
    MessageForm opened_;  ///< as it was opened
    std::vector<Field> columns_;
    FieldForm* fields_ = nullptr;
};

}  // namespace kavu
