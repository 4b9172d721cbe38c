// The forms of the measurement database: gives the main window their editors.
#pragma once

class QWidget;

namespace kavu {

class Application;
struct FormContext;
class MainWindow;

/// Asks which file is the database, and takes it into use. True unless it was cancelled.
bool changeDatabaseLocation(FormContext& form, Application& application, QWidget* parent);

void installDatabaseForms(MainWindow& window, Application& application);

}  // namespace kavu
