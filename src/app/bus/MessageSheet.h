// "Edit Message Attributes": the sheet over the message data of a link. Its pages edit the group in
// memory; OK writes it, if it is another one than before.
#pragma once

#include "app/framework/PropertySheet.h"
#include "bus/message/MessageEdit.h"
#include "vocabulary/FieldRules.h"

#include <memory>

namespace kavu {

class GroupTreeEditor;
class MessageTree;

class MessageSheet : public PropertySheet {
    Q_OBJECT
  public:
    /// All must outlive the sheet; `group` was loaded.
    MessageSheet(FormContext& form, DocumentContext& document, MessageGroup& group,
                 const MeasurementNames* names, QWidget* parent = nullptr);
    ~MessageSheet() override;

    [[nodiscard]] GroupTreeEditor& editor() const { return *editor_; }
    /// The group was written.
    [[nodiscard]] bool isWritten() const { return isWritten_; }

  private:
    bool write();

    FormContext& form_;
    DocumentContext& document_;
    MessageGroup& group_;
    MessageGroup before_;
    MessageEdit edit_;
    std::unique_ptr<MessageTree> tree_;
    FieldValues misc_;
    GroupTreeEditor* editor_ = nullptr;
    bool isWritten_ = false;
};

}  // namespace kavu
