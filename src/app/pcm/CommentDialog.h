// "Edit Measurement Section Comment Field".
#pragma once

#include "app/framework/EditDialog.h"

#include <string>

namespace kavu {

class LimitedTextEdit;
class PcmFormat;

class CommentDialog : public EditDialog {
    Q_OBJECT
  public:
    CommentDialog(FormContext& form, PcmFormat& format, std::string comment, QWidget* parent);

  protected:
    /// Messages 332, 333, 402.
    [[nodiscard]] bool store() override;

  private:
    PcmFormat& format_;
    std::string comment_;
    LimitedTextEdit* text_ = nullptr;
};

/// Messages 324 and 325 in place of the dialog. True if the comment has changed.
bool editSectionComment(FormContext& form, PcmFormat& format, QWidget* window);

}  // namespace kavu
