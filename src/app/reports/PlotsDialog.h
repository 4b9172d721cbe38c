// "View Plots": the calibrations of up to eight measurements in one plot.
#pragma once

#include "app/framework/FormContext.h"
#include "app/reports/CalibrationDialog.h"
#include "reports/calibration/MultiPlot.h"

#include <optional>
#include <string>
#include <vector>

#include <QDialog>

class QVBoxLayout;

namespace kavu {

class EditableList;
class PlotView;

class PlotsDialog : public QDialog {
    Q_OBJECT
  public:
    /// `names` are the measurements that can be plotted.
    PlotsDialog(const CalibrationSetup& setup, std::vector<std::string> names,
                QWidget* parent = nullptr);

    [[nodiscard]] const std::vector<PlottedRow>& rows() const { return rows_; }
    [[nodiscard]] PlotView& plot() const { return *plot_; }
    [[nodiscard]] EditableList& list() const { return *list_; }

    /// Stores the measurements and the looks of the plot, and closes.
    void reject() override;

  private:
    void makeList();
    void makeButtons(QVBoxLayout& column);
    void showRows();
    void takeList();
    /// The measurement that the user chooses of those that can be plotted.
    [[nodiscard]] std::optional<std::string> choose() const;
    void editAttributes();
    void print();
    void savePicture();
    void saveData();

    CalibrationSetup setup_;
    std::vector<std::string> names_;
    std::vector<PlottedRow> rows_;
    PlotAttributes attributes_;
    EditableList* list_ = nullptr;
    PlotView* plot_ = nullptr;
};

/// Finds the pair sets and runs the dialog; a note if there are none.
void viewMultipleMeasurementPlots(const CalibrationSetup& setup, QWidget* parent);

}  // namespace kavu
