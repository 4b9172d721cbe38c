// Pictures of the pair sets, their import and the dialogs of the plot.
#pragma once

namespace kavu {

class ScreenshotList;

void addPairSetScreenshots(ScreenshotList& list);

}  // namespace kavu
