// The forms of a PCM stream: gives the main window their editors, and the pictures their makers.
#pragma once

namespace kavu {

class Application;
class MainWindow;
class ScreenshotList;

void installPcmForms(MainWindow& window, Application& application);
void addPcmScreenshots(ScreenshotList& list);

}  // namespace kavu
