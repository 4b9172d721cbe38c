// "Edit Bus Measurement Location": the word of a message in which a measurement is, and the bits
// of it.
#pragma once

#include "app/bus/BusPages.h"

class QGroupBox;
class QRadioButton;

namespace kavu {

class BusLocationDialog : public EditDialog {
    Q_OBJECT
  public:
    /// `setup` must outlive the dialog; a new location is in the definition already, and begins
    /// with what the last one was given.
    BusLocationDialog(const BusFormSetup& setup, const BusPlace& location, bool isNew,
                      QWidget* parent);

  protected:
    /// 388 to 391 for a field that is missing, 142 for a mask that is none.
    [[nodiscard]] bool store() override;

  private:
    [[nodiscard]] QGroupBox* makeFullWord();
    void takeLastValues();
    void keepLastValues();
    void useFullWord(bool isFull);

    const BusFormSetup& setup_;
    bool isNew_;
    BusFormState state_;
    std::string mask_{};  ///< that a part of the word had before the full word was chosen
    FieldForm* fields_ = nullptr;
    QRadioButton* full_ = nullptr;
    QRadioButton* part_ = nullptr;
};

}  // namespace kavu
