// Where an async format is in the frame: the windows below its form.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/structure/AsyncFields.h"

#include <vector>

namespace kavu {

class EditableList;
class FieldForm;

/// The first word, the number of locations and the interval of an "FI".
class AsyncIntervalDialog : public EditDialog {
    Q_OBJECT
  public:
    AsyncIntervalDialog(FormContext& form, const PcmFormat& format, AsyncEditing& editing,
                        QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void editFirst();

    const PcmFormat& format_;
    AsyncEditing& editing_;
    AsyncPlace first_;
    FieldForm* fields_ = nullptr;
};

/// The words of an "EL".
class AsyncLocationsDialog : public EditDialog {
    Q_OBJECT
  public:
    AsyncLocationsDialog(FormContext& form, const PcmFormat& format, AsyncEditing& editing,
                         QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    [[nodiscard]] std::vector<std::string> shownRow(const AsyncPlace& place) const;

    const PcmFormat& format_;
    AsyncEditing& editing_;
    std::vector<AsyncPlace> places_;
    EditableList* list_ = nullptr;
};

/// One location: its word, its mask, and from 106-11 on its frames.
class AsyncPlaceDialog : public EditDialog {
    Q_OBJECT
  public:
    AsyncPlaceDialog(FormContext& form, const PcmFormat& format, bool isDataMerge,
                     AsyncPlace& place, bool isNew, QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeFrameList();

    const PcmFormat& format_;
    AsyncPlace& place_;
    std::vector<FrameRange> frames_;
    FieldForm* fields_ = nullptr;
    EditableList* list_ = nullptr;
};

/// A range of frames.
class AsyncFramesDialog : public EditDialog {
    Q_OBJECT
  public:
    AsyncFramesDialog(FormContext& form, const PcmFormat& format, FrameRange& range, bool isNew,
                      QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    const PcmFormat& format_;
    FrameRange& range_;
    FieldForm* fields_ = nullptr;
};

}  // namespace kavu
