// The windows next to the dialog of a data word: what a location type needs besides its name.
// And the one for supercommutated measurements.
#pragma once

#include "app/framework/EditableList.h"
#include "app/framework/FormContext.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <optional>
#include <string>
#include <vector>

#include <QWidget>

class QComboBox;
class QGridLayout;
class QLineEdit;

namespace kavu {

class NumberEdit;
class PcmFormat;

class PlacesPanel : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;

    /// Shows the places of a definition; is no edit.
    virtual void load(const MeasurementDefinition& definition) = 0;
    virtual void store(MeasurementDefinition& definition) const = 0;
    /// Another name of the measurement, which messages name.
    virtual void setMeasurementName(const std::string& /*name*/) {}
    /// The mask of the place that is edited, where the panel has it and not the dialog.
    [[nodiscard]] virtual std::optional<std::string> maskHere() const { return std::nullopt; }
    /// Shows masks again: their form was switched.
    virtual void refreshMasks() {}

  signals:
    /// The user has changed something.
    void changed();
    /// The form of masks may have been switched here.
    void formSwitched();
};

/// First word and interval, or every location. Shared by the panels of minor frames.
class LocationMode : public QObject {
    Q_OBJECT
  public:
    /// Adds the three fields to a grid.
    LocationMode(QGridLayout& grid, QWidget& panel);

    void load(const Measurement& attributes, const QString& first);
    void store(Measurement& attributes) const;
    [[nodiscard]] bool isEveryLocation() const;
    [[nodiscard]] bool isInterval() const;

  signals:
    void changed();

  private:
    void update();

    QComboBox* mode_ = nullptr;
    NumberEdit* count_ = nullptr;
    NumberEdit* interval_ = nullptr;
    QLineEdit* first_ = nullptr;
};

/// "SuperComWindow", for "MFSC" with words and for "SFSC" with positions of the subframe.
class SuperComPanel : public PlacesPanel {
    Q_OBJECT
  public:
    /// `start` is where a definition by interval begins.
    SuperComPanel(FormContext& form, PcmFormat& format, bool ofSubframe, EditedPlace start,
                  QWidget* parent = nullptr);

    void load(const MeasurementDefinition& definition) override;
    void store(MeasurementDefinition& definition) const override;

  private:
    [[nodiscard]] int& numberOf(MeasurementSpot& spot) const;
    [[nodiscard]] int numberOf(const MeasurementSpot& spot) const;
    void showSpots();
    std::optional<ListRow> enterLocation(int row);
    void update();

    FormContext& form_;
    PcmFormat& format_;
    bool ofSubframe_;
    EditedPlace start_;
    std::vector<MeasurementSpot> spots_;
    LocationMode* mode_ = nullptr;
    EditableList* list_ = nullptr;
};

}  // namespace kavu
