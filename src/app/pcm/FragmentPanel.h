// The windows next to the dialog of a data word for fragmented measurements: "Minor Frame
// Fragments" and "Subframe Fragment Location Definition".
#pragma once

#include "app/framework/EditableList.h"
#include "app/pcm/SuperComPanel.h"

#include <optional>
#include <vector>

namespace kavu {

class MaskControl;

class FragmentPanel : public PlacesPanel {
    Q_OBJECT
  public:
    FragmentPanel(FormContext& form, PcmFormat& format, bool ofSubframe, EditedPlace start,
                  QWidget* parent = nullptr);

    void load(const MeasurementDefinition& definition) override;
    void store(MeasurementDefinition& definition) const override;
    void refreshMasks() override;

  private:
    void makeList();
    void showSpots();
    void update();
    [[nodiscard]] ListRow rowOf(const MeasurementSpot& spot) const;
    [[nodiscard]] std::vector<int> freeNumbers(int row) const;
    [[nodiscard]] MeasurementSpot newSpot() const;
    std::optional<ListRow> editFragment(int row);

    FormContext& form_;
    PcmFormat& format_;
    bool ofSubframe_;
    EditedPlace start_;
    std::vector<MeasurementSpot> spots_;
    NumberEdit* length_ = nullptr;
    LocationMode* mode_ = nullptr;  ///< of minor frames
    QWidget* maskLabel_ = nullptr;
    MaskControl* mask_ = nullptr;  ///< of all fragments of an interval
    EditableList* list_ = nullptr;
};

}  // namespace kavu
