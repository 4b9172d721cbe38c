// "Tagged Data Definitions": the measurements that are found by their tags.
#pragma once

#include "app/framework/EditDialog.h"
#include "pcm/read/TaggedData.h"

#include <vector>

namespace kavu {

class EditableList;
class FieldForm;
class PcmFormat;

class TaggedDataDialog : public EditDialog {
    Q_OBJECT
  public:
    TaggedDataDialog(FormContext& form, PcmFormat& format,
                     std::vector<TaggedMeasurement> measurements, QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    [[nodiscard]] bool editMeasurement(int row);

    PcmFormat& format_;
    std::vector<TaggedMeasurement> measurements_;
    EditableList* list_ = nullptr;
};

/// One tagged measurement with its tags.
class TaggedMeasurementDialog : public EditDialog {
    Q_OBJECT
  public:
    /// `others` are the measurements whose names are taken.
    TaggedMeasurementDialog(FormContext& form, const PcmFormat& format,
                            TaggedMeasurement& measurement, std::vector<TaggedMeasurement> others,
                            bool isNew, QWidget* parent);

  protected:
    [[nodiscard]] bool store() override;

  private:
    void makeTagList();
    void storeTags();

    const PcmFormat& format_;
    TaggedMeasurement& measurement_;
    std::vector<TaggedMeasurement> others_;
    FieldForm* fields_ = nullptr;
    EditableList* tags_ = nullptr;
};

/// Runs the list over the tagged data of the stream. True if it has changed.
bool editTaggedData(FormContext& form, PcmFormat& format, QWidget* window);

}  // namespace kavu
