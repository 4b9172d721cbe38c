// "Word/Frame Locations": the locations of a measurement that is given by ranges of words and
// frames.
#pragma once

#include "app/framework/EditableList.h"
#include "app/pcm/SuperComPanel.h"

#include <optional>
#include <string>

namespace kavu {

class WordFramePanel : public PlacesPanel {
    Q_OBJECT
  public:
    WordFramePanel(FormContext& form, PcmFormat& format, EditedPlace place,
                   QWidget* parent = nullptr);

    void load(const MeasurementDefinition& definition) override;
    void store(MeasurementDefinition& definition) const override;
    void setMeasurementName(const std::string& name) override { name_ = name; }
    [[nodiscard]] std::optional<std::string> maskHere() const override;
    void refreshMasks() override;

  private:
    void showLocations();
    [[nodiscard]] ListRow rowOf(int number, const WordFrameLocation& location) const;
    std::optional<ListRow> editLocation(int row);

    FormContext& form_;
    PcmFormat& format_;
    EditedPlace place_;
    std::string name_;
    WordFrameDefinition ranges_;
    EditableList* list_ = nullptr;
};

}  // namespace kavu
