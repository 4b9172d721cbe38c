// The toolkit's own dialogs, set up as the house wants them: the message box and the file
// dialog. Forms do not use them; they ask the user interface.
#pragma once

#include "core/talk/UserInterface.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QFileDialog;
class QMessageBox;
class QWidget;

namespace kavu {

/// Buttons are named "ok", "yes", "no", "retry", "cancel", and "details".
[[nodiscard]] std::unique_ptr<QMessageBox> makeMessageBox(const MessageBox& box, QWidget* parent);
/// The button that closed the box; closed without one it is the button that means no.
[[nodiscard]] Button pressedButton(const QMessageBox& box);

/// The same dialog on every desktop. For a prompt that confirms an overwrite it passes the question
/// to `ask` and stays open if that is false; for another one who writes asks.
[[nodiscard]] std::unique_ptr<QFileDialog> makeFileDialog(
    const FilePrompt& prompt, std::function<bool(const std::string& question)> ask,
    QWidget* parent);
/// What was chosen in a dialog that was made for this prompt.
[[nodiscard]] std::optional<FileChoice> chosenFile(const QFileDialog& dialog,
                                                   const FilePrompt& prompt);

}  // namespace kavu
