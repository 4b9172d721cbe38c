// The forms of the attribute groups and the data sources: gives the main window their editors, and
// the pictures their makers.
#pragma once

#include <functional>
#include <string>

namespace kavu {

class Application;
struct FormContext;
class MainWindow;

/// `editMessages` opens the message data of a data source, which the sheet of a recorder offers;
/// true if it has changed the document.
void installGroupForms(
    MainWindow& window, Application& application,
    const std::function<bool(FormContext& form, const std::string& source)>& editMessages = {});

}  // namespace kavu
