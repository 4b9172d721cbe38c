// The entries of File, Translators: those with a name of their own, and one for every other module.
#pragma once

namespace kavu {

class Application;
class MainWindow;

/// Loads the modules, and gives the entries that have one their editors. Modules that are not
/// loaded are noted.
void installTranslatorForms(MainWindow& window, Application& application);

}  // namespace kavu
