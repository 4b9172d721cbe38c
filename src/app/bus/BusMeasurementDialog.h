// "Edit Bus Measurement": a measurement of a bus message with its locations.
#pragma once

#include "app/bus/BusPages.h"

class QLabel;

namespace kavu {

class BusMeasurementDialog : public EditDialog {
    Q_OBJECT
  public:
    /// `setup` must outlive the dialog; a new measurement is in the definition already, and begins
    /// with what the last one was given.
    BusMeasurementDialog(const BusFormSetup& setup, const BusPlace& measurement, bool isNew,
                         QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void takeLastValues();
    void keepLastValues();
    void makeLocations();
    void makeConversionButton();
    void showOverwrite();

    const BusFormSetup& setup_;
    bool isNew_;
    BusFormState state_;
    FieldForm* fields_ = nullptr;
    QLabel* overwrite_ = nullptr;  ///< from the edition on that has it
};

}  // namespace kavu
