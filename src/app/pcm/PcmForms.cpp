#include "app/pcm/PcmForms.h"

namespace kavu {

void installPcmForms(MainWindow& /*window*/, Application& /*application*/) {}

void addPcmScreenshots(ScreenshotList& /*list*/) {}

}  // namespace kavu
