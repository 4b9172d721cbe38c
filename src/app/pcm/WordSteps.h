// The windows of the measurements of a stream, and what they need of other folders.
#pragma once

#include "app/framework/FormContext.h"
#include "pcm/edit/FrameEditGenerate.h"
#include "pcm/edit/MeasurementEditSave.h"

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace kavu {

class Application;
class PcmFormat;
struct PcmFormSteps;

/// What the edit of a measurement calls. What is not installed is not offered.
struct WordSteps {
    EditSteps edit;
    /// With the steps of the database, and without them while there is none.
    SaveSteps save;
    GenerateSteps generate;
    /// The sheet of the conversion of a measurement, whose word has so many bits.
    std::function<bool(QWidget& window, const std::string& name, int bits)> editConversion;
    /// Writes the stream to its group files.
    std::function<bool()> saveFormat;
    /// What a pick from the database brings along: the settings `MDBAddRoot`, `MDBAddChildren`.
    std::function<AutoAdd()> autoAdd;
    std::function<void(const AutoAdd&)> keepAutoAdd;

    [[nodiscard]] bool hasDatabase() const { return save.database.available(); }
};

/// "Edit Data Word Definition" for the place. Where there are several measurements the user
/// chooses one, or a new one. True if the stream or the conversion has changed.
bool editMeasurementAt(FormContext& form, PcmFormat& format, const WordSteps& steps,
                       QWidget* window, int fwp, int fn);
/// The same for the measurement of that name there, or for a new one without a name.
bool editMeasurement(FormContext& form, PcmFormat& format, const WordSteps& steps, QWidget* window,
                     int fwp, int fn, const std::string& name);

/// "Measurement Definition Options": true for word/frame locations, nothing after a Cancel.
[[nodiscard]] std::optional<bool> chooseDefinitionMode(FormContext& form, QWidget* window,
                                                       bool wordFrame);

/// The steps of an application. The form and the stream must outlive them.
[[nodiscard]] WordSteps makeWordSteps(FormContext& form, Application& application);

/// Gives the windows of a stream their steps: the edit of a measurement, "Initialize Undefined
/// Measurements", the comment, the filter list, the words, the definition options. Everything
/// must outlive the steps.
void installWordSteps(PcmFormSteps& steps, FormContext& form, PcmFormat& format,
                      const WordSteps& words);

}  // namespace kavu
