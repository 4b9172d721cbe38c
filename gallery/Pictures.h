// Pictures of all windows, for the manual and for everybody who has changed one.
#pragma once

#include <string>

class QApplication;

namespace kavu {

class Application;
class ScreenshotList;

/// Renders the main window, the help and each window of the list to a PNG file of its resource name
/// in `folder`, and once more in the dark palette with "-dark" after the name. `sample` is the
/// document that fills them. The exit status: 0, or 1 after the failures were reported on
/// standard error.
int renderPictures(QApplication& toolkit, Application& application, const ScreenshotList& list,
                   const std::string& folder, const std::string& sample);

}  // namespace kavu
