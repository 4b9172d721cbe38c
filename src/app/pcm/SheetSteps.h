// The windows of ID counters, subframes, async formats and tagged data, as steps of the windows
// of a stream.
#pragma once

#include "app/framework/FormContext.h"

namespace kavu {

class PcmFormat;
struct PcmFormSteps;

/// Everything must outlive the steps. Tagged data is known from 106-11 on.
void installSheetSteps(PcmFormSteps& steps, FormContext& form, PcmFormat& format);

}  // namespace kavu
