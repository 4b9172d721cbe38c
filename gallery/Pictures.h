// Pictures of all windows, for the manual and for checking a change of one.
#pragma once

#include <string>

class QApplication;

namespace kavu {

class Application;
class ScreenshotList;

/// Renders the main window, the help and each window of the list to a PNG file of its resource name
/// in `folder`, and once more in the dark palette with "-dark" after the name. `sample` is the
/// document that fills them. Returns the exit status: 0, or 1 after failures, which are reported on
/// standard error.
int renderPictures(QApplication& toolkit, Application& application, const ScreenshotList& list,
                   const std::string& folder, const std::string& sample);

}  // namespace kavu
