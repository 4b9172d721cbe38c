// The functions that fill the list of windows: one for each folder of forms, or, where a
// folder has many windows, for each family of them.
#pragma once

namespace kavu {

class ScreenshotList;

void addFrameworkScreenshots(ScreenshotList& list);
/// The questions before something is lost.
void addQuestionScreenshots(ScreenshotList& list);
void addOptionScreenshots(ScreenshotList& list);
void addTreeScreenshots(ScreenshotList& list);
void addGroupScreenshots(ScreenshotList& list);
void addEuScreenshots(ScreenshotList& list);
void addPairSetScreenshots(ScreenshotList& list);
/// The sheet of a stream and the dialogs that it opens.
void addSheetScreenshots(ScreenshotList& list);
/// The windows of measurements.
void addWordScreenshots(ScreenshotList& list);
void addDisplayScreenshots(ScreenshotList& list);
/// The editors of message data and packets.
void addStreamDataScreenshots(ScreenshotList& list);
/// The windows of a bus group.
void addBusScreenshots(ScreenshotList& list);
/// The windows of the measurement database.
void addDatabaseScreenshots(ScreenshotList& list);
/// The windows of reports, plots and calibration sheets.
void addReportScreenshots(ScreenshotList& list);
/// The windows of import and export, and the choice of several streams.
void addExchangeScreenshots(ScreenshotList& list);

/// Every window, page and dialog of the program.
void addAllScreenshots(ScreenshotList& list);

}  // namespace kavu
