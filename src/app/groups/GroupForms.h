// The forms of the attribute groups and the data sources: gives the main window their editors, and
// the pictures their makers.
#pragma once

namespace kavu {

class Application;
class MainWindow;

void installGroupForms(MainWindow& window, Application& application);

}  // namespace kavu
