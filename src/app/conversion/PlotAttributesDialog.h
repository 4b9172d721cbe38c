// "Edit Plot Attributes": how plots look. And the dialog over one series of it.
#pragma once

#include "app/framework/FormContext.h"
#include "conversion/PlotAttributes.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <QDialog>
#include <QString>

class QButtonGroup;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QWidget;

namespace kavu {

class EditableList;

class PlotAttributesDialog : public QDialog {
    Q_OBJECT
  public:
    /// The first `series` of the series are listed, at most ten, under the lines of `names`.
    PlotAttributesDialog(FormContext& form, const PlotAttributes& attributes, int series,
                         std::string_view names, QWidget* parent = nullptr);

    /// The attributes as the controls have them.
    [[nodiscard]] PlotAttributes attributes() const;

    /// Refuses limits that are none.
    void accept() override;
    /// Asks if something has changed.
    void reject() override;

  private:
    QGroupBox* makeScaling();
    QGroupBox* makeGrid();
    QGroupBox* makePrinting();
    QGroupBox* makeSeries();
    void enableLimits();
    void showSeries();

    FormContext& form_;
    const PlotAttributes before_;
    PlotAttributes edited_;
    std::vector<std::string> titles_;
    QButtonGroup* scale_ = nullptr;
    std::array<QLineEdit*, 4> limits_{};  ///< Min X, Max X, Min Y, Max Y
    QComboBox* xPrecision_ = nullptr;
    QComboBox* yPrecision_ = nullptr;
    QComboBox* xDivisions_ = nullptr;
    QComboBox* yDivisions_ = nullptr;
    QComboBox* borderColour_ = nullptr;
    QComboBox* borderWidth_ = nullptr;
    QButtonGroup* printing_ = nullptr;
    EditableList* list_ = nullptr;
};

class PlotSeriesDialog : public QDialog {
    Q_OBJECT
  public:
    PlotSeriesDialog(FormContext& form, const std::string& title, const SeriesAttributes& series,
                     QWidget* parent = nullptr);

    [[nodiscard]] SeriesAttributes series() const;

    /// Refuses a broken line that is more than 1 wide.
    void accept() override;

  private:
    void showSeries(const SeriesAttributes& series);
    /// Asks about a line style and a width that do not go together; true if they do now.
    bool settle();
    void lineChanged(bool width);

    FormContext& form_;
    bool widthWasChanged_ = false;
    QComboBox* colour_ = nullptr;
    QComboBox* style_ = nullptr;
    QComboBox* width_ = nullptr;
    QComboBox* symbol_ = nullptr;
};

/// Runs the dialog; true if something was changed, and then `attributes` has it.
bool editPlotAttributes(FormContext& form, PlotAttributes& attributes, int series,
                        std::string_view names, QWidget* parent);

}  // namespace kavu
