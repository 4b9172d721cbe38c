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

/// The sheet over the stream that is in memory, which stays there: Cancel takes it back to where it
/// was written last, or the sheet was opened. True if the document was written to. REQUIRES: a
/// loaded stream.
bool editLoadedStream(FormContext& form, Application& application);
/// The display of the stream that is in memory; what is edited stays in memory. True if something
/// was. REQUIRES: a loaded stream.
bool showLoadedStream(FormContext& form, Application& application);

void installPcmForms(MainWindow& window, Application& application);

}  // namespace kavu
