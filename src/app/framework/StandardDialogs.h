// The toolkit's own dialogs, set up as the house wants them: the message box and the file
// dialog. Forms do not use them; they ask the user interface.
#pragma once

#include "core/talk/UserInterface.h"

#include <memory>
#include <optional>

class QFileDialog;
class QMessageBox;
class QWidget;

namespace kavu {

/// Buttons are named "ok", "yes", "no", "retry", "cancel".
[[nodiscard]] std::unique_ptr<QMessageBox> makeMessageBox(const MessageBox& box, QWidget* parent);
/// The button that closed the box; closed without one it is the button that means no.
[[nodiscard]] Button pressedButton(const QMessageBox& box);

/// The same dialog on every desktop. It does not ask before an existing file is chosen to be
/// written: who writes does.
[[nodiscard]] std::unique_ptr<QFileDialog> makeFileDialog(const FilePrompt& prompt,
                                                          QWidget* parent);
[[nodiscard]] std::optional<FileChoice> chosenFile(const QFileDialog& dialog);

}  // namespace kavu
