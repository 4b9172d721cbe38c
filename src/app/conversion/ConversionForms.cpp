#include "app/conversion/ConversionForms.h"

namespace kavu {

void installConversionForms(MainWindow& /*window*/, Application& /*application*/) {}

void addConversionScreenshots(ScreenshotList& /*list*/) {}

}  // namespace kavu
