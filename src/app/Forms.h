// All forms there are. The one place that knows the main window and every folder of forms.
#pragma once

namespace kavu {

class Application;
class MainWindow;

/// Gives every command and every entry of the tree's menus its editor.
void installForms(MainWindow& window, Application& application);

}  // namespace kavu
