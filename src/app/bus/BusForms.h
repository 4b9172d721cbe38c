// The editor of a bus group as the ways to it call it.
#pragma once

#include <string>

class QWidget;

namespace kavu {

class Application;
struct FormContext;

/// Edits the bus group of a data link in a window of its own. True if the group was written, which
/// is one operation of the document; with Cancel it is as it was.
bool editBus(FormContext& form, Application& application, const std::string& link,
             QWidget* window = nullptr);
/// The same from within the editor of a stream, which has loaded the group already and copies it
/// back when it is saved. True if the copy was written.
bool editLoadedBus(FormContext& form, Application& application, const std::string& link,
                   QWidget* window = nullptr);

}  // namespace kavu
