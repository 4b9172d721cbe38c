// The forms of a PCM stream: gives the main window their editors.
#pragma once

#include <optional>
#include <string>

namespace kavu {

class Application;
struct FormContext;
class MainWindow;

/// "Edit Stream Format Information": loads a stream, or without a name the one that the user
/// chooses, and opens its sheet. The stream leaves the memory again when that closes. Of a stream
/// without a format its messages, packets or buses are edited. True if the document was written to.
bool editStream(FormContext& form, Application& application,
                const std::optional<std::string>& name = std::nullopt);

void installPcmForms(MainWindow& window, Application& application);

}  // namespace kavu
