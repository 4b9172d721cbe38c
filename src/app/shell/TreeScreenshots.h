// Pictures of the tree and of the pane beside it.
#pragma once

namespace kavu {

class ScreenshotList;

void addTreeScreenshots(ScreenshotList& list);

}  // namespace kavu
