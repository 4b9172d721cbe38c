// "Edit Word/Frame Entry": one location of a measurement, given by the ranges of words and
// frames of its fragments.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/model/WordFrame.h"

#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QVBoxLayout;

namespace kavu {

class CodeBox;
class MaskControl;
class NumberEdit;
class PcmFormat;
class WordFrameMap;

class WordFrameEntryDialog : public EditDialog {
    Q_OBJECT
  public:
    struct Setup {
        std::string name{};  ///< of the measurement, for messages
        WordFrameLocation location{};
        bool isNew = false;
    };
    WordFrameEntryDialog(FormContext& form, PcmFormat& format, Setup setup, QWidget* parent);

    [[nodiscard]] const WordFrameLocation& location() const { return setup_.location; }

  protected:
    /// Messages 276, 285 to 287, 292 to 294, 328, 336.
    [[nodiscard]] bool store() override;

  private:
    [[nodiscard]] QWidget* makeFields();
    [[nodiscard]] QWidget* makeMapSide();
    void connectFields();
    void setFragmentCount(int count);
    void showFragment(int index);
    void keepFragment();
    void followStartWord(int before);
    void edited();
    void check();
    void tellCovered(const std::vector<std::pair<int, int>>& places);

    PcmFormat& format_;
    Setup setup_;
    int shown_ = 0;
    bool showing_ = false;
    NumberEdit* length_ = nullptr;
    QComboBox* count_ = nullptr;
    QComboBox* fragments_ = nullptr;
    NumberEdit* startWord_ = nullptr;
    NumberEdit* wordInterval_ = nullptr;
    NumberEdit* endWord_ = nullptr;
    NumberEdit* startFrame_ = nullptr;
    NumberEdit* frameInterval_ = nullptr;
    NumberEdit* endFrame_ = nullptr;
    MaskControl* mask_ = nullptr;
    CodeBox* order_ = nullptr;
    QLabel* problem_ = nullptr;
    QLabel* covered_ = nullptr;
    WordFrameMap* map_ = nullptr;
};

}  // namespace kavu
