// "Edit Fragment Definition": one fragment of a measurement, in a word of minor frames or at a
// position of a subframe.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <string>
#include <vector>

class QComboBox;

namespace kavu {

class CodeBox;
class MaskControl;
class NumberEdit;
class PcmFormat;

class FragmentDialog : public EditDialog {
    Q_OBJECT
  public:
    struct Setup {
        bool ofSubframe = false;
        MeasurementSpot spot{};
        std::vector<int> numbers{};  ///< that the fragment may have
        bool isNew = false;
    };
    FragmentDialog(FormContext& form, PcmFormat& format, Setup setup, QWidget* parent);

    [[nodiscard]] const MeasurementSpot& spot() const { return setup_.spot; }

  protected:
    /// Messages 330 and 331 for a place that is none.
    [[nodiscard]] bool store() override;

  private:
    void makeFields(QWidget& owner);
    void connectFields();
    [[nodiscard]] int wordHere() const;
    [[nodiscard]] MeasurementSpot entered() const;

    PcmFormat& format_;
    Setup setup_;
    QComboBox* number_ = nullptr;
    CodeBox* order_ = nullptr;
    NumberEdit* place_ = nullptr;
    QComboBox* subframe_ = nullptr;
    MaskControl* mask_ = nullptr;
};

/// The shown form of a transfer order of a fragment.
[[nodiscard]] std::string transferOrderText(std::string_view code);
/// The names of all subframes, in the order of the counters.
[[nodiscard]] std::vector<std::string> subframeNames(const PcmFormat& format);

}  // namespace kavu
