#include "app/conversion/ConversionForms.h"

#include "app/conversion/PairSetScreenshots.h"

namespace kavu {

void installConversionForms(MainWindow& /*window*/, Application& /*application*/) {}

void addConversionScreenshots(ScreenshotList& list) {
    addPairSetScreenshots(list);
}

}  // namespace kavu
