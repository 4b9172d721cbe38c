// What every dialog and every list gets without asking for it, by the style of the house: a dialog
// opens with its first field ready for the keyboard, and never larger than the screen; the
// Return key that ends the typing in a cell does not close it; and a list shows the names
// that it has no room for.
#pragma once

class QAbstractItemView;
class QDialog;
class QWidget;

namespace kavu {

/// May be called more than once.
void careForDialog(QDialog& dialog);
void careForView(QAbstractItemView& view);

/// The first control below `within` that takes the keyboard: no tab, and no button of the dialog
/// itself. Null if there is none.
[[nodiscard]] QWidget* firstField(QWidget& within);
/// Gives that control the keyboard, so that one sees it. Nothing happens if there is none.
void focusFirstField(QWidget& within);

/// If the dialog needs more room than the screen has, everything above its buttons scrolls; and it
/// is made no larger than the screen.
void fitDialogToScreen(QDialog& dialog);

}  // namespace kavu
