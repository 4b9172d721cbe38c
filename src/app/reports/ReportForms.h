// The windows of reports: gives the main window its commands, and the windows of other folders what
// they have printed.
#pragma once

namespace kavu {

class Application;
class MainWindow;

void installReportForms(MainWindow& window, Application& application);

}  // namespace kavu
