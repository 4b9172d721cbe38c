// Pictures of the sheet of a conversion record, the windows of its types and its dialogs.
#pragma once

namespace kavu {

class ScreenshotList;

void addEuScreenshots(ScreenshotList& list);

}  // namespace kavu
