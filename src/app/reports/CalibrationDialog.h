// "Print Calibration Reports": the pair sets of the document, of which those that are marked are
// printed as calibration sheets.
#pragma once

#include "app/framework/FormContext.h"
#include "reports/calibration/Calibration.h"

#include <string>
#include <vector>

#include <QDialog>

class QLabel;
class QListWidget;
class QPushButton;

namespace kavu {

class ReportDesk;

/// What calibrations are printed from; all of it outlives the windows.
struct CalibrationSetup {
    FormContext& form;
    DocumentContext& document;
    ConversionStore& conversions;
    ReportDesk& desk;
    const PcmFormat* format = nullptr;  ///< the stream in memory, if there is one
};

class CalibrationDialog : public QDialog {
    Q_OBJECT
  public:
    CalibrationDialog(const CalibrationSetup& setup, std::vector<std::string> names,
                      QWidget* parent = nullptr);

    /// The names that are marked, in the order of the list.
    [[nodiscard]] std::vector<std::string> marked() const;

  private:
    void makeList();
    void makeLayoutRow();
    void makeButtons();
    void markAll(bool on);
    void showLayout();
    void print();

    CalibrationSetup setup_;
    std::vector<std::string> names_;
    QListWidget* list_ = nullptr;
    QLabel* layoutName_ = nullptr;
    QPushButton* closeLayout_ = nullptr;
};

/// Finds the pair sets and runs the dialog.
void printAllCalibrationReports(const CalibrationSetup& setup, QWidget* parent);
/// The sheet of one calibration, as it is being edited, in a preview.
void printCalibrationSheet(const CalibrationSetup& setup, const Calibration& calibration,
                           QWidget* parent);

}  // namespace kavu
