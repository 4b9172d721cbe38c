// The forms of the conversions to engineering units: gives the main window their editors, and the
// pictures their makers.
#pragma once

namespace kavu {

class Application;
class MainWindow;
class ScreenshotList;

void installConversionForms(MainWindow& window, Application& application);
void addConversionScreenshots(ScreenshotList& list);

}  // namespace kavu
