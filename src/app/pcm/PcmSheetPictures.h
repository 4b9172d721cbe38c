// The pictures of the sheet of a stream and of the windows around it.
#pragma once

namespace kavu {

class ScreenshotList;

void addSheetScreenshots(ScreenshotList& list);

}  // namespace kavu
