// "Edit Measurement Filter List": which measurements an acquisition filters or overwrites.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/edit/FrameEditFilter.h"

#include <vector>

class QLineEdit;

namespace kavu {

class EditableList;
class PcmFormat;

class FilterListDialog : public EditDialog {
    Q_OBJECT
  public:
    FilterListDialog(FormContext& form, PcmFormat& format, std::vector<FilterRow> rows,
                     QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void setSelected(const std::string& setting);

    PcmFormat& format_;
    std::vector<std::string> settings_;
    EditableList* list_ = nullptr;
};

/// Message 340 in place of the dialog. True if the list has changed.
bool editFilterList(FormContext& form, PcmFormat& format, QWidget* window);

}  // namespace kavu
