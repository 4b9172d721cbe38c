// The form of an async embedded format or a data merge.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/structure/AsyncFields.h"

class QPushButton;

namespace kavu {

class FieldForm;

class AsyncFormatDialog : public EditDialog {
    Q_OBJECT
  public:
    AsyncFormatDialog(FormContext& form, PcmFormat& format, AsyncEditing editing, QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void addButtons();
    void takeEdit(const QString& code);
    /// Takes kind and location type as they are chosen now.
    void takeChoices();
    void updateButtons();
    void editLocations();
    void editMerge();
    void deleteFormat();

    PcmFormat& format_;
    AsyncEditing editing_;
    FieldForm* fields_ = nullptr;
    QPushButton* merge_ = nullptr;
    QPushButton* locations_ = nullptr;
};

/// What only a data merge has.
class DataMergeDialog : public EditDialog {
    Q_OBJECT
  public:
    DataMergeDialog(FormContext& form, AsyncFormat& contents, QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    AsyncFormat& contents_;
    FieldForm* fields_ = nullptr;
};

/// The form of the async format that takes a place, or of a new one there. True if the stream
/// has changed.
bool editAsyncAt(FormContext& form, PcmFormat& format, QWidget* window, int fwp, int fn);

}  // namespace kavu
