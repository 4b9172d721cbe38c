// "PCM Format Display": one stream as a grid of word positions and frames, from which its
// measurements are reached and edited.
#pragma once

#include "app/framework/FormContext.h"

#include <functional>
#include <memory>

class QWidget;

namespace kavu {

class FrameGridAreas;
class PcmFormat;
struct DocumentContext;
struct PcmFormSteps;

/// Shows the stream in memory, modally. True if it was edited: the caller then saves it.
/// Message 224 (more words than the display can show), and 225 if the window cannot be made.
/// Nothing happens while no stream is loaded.
bool showMajorFrameDisplay(FormContext& form, DocumentContext& document, PcmFormat& format,
                           PcmFormSteps& steps, QWidget* window = nullptr);

/// The same with another maker of the drawing areas, which gives nothing if they cannot be
/// had.
bool showMajorFrameDisplay(
    FormContext& form, PcmFormat& format, PcmFormSteps& steps, QWidget* window,
    const std::function<std::unique_ptr<FrameGridAreas>(const PcmFormat&, QWidget*)>& makeAreas);

}  // namespace kavu
