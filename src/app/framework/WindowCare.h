// What every dialog and every list gets without asking for it, by the style of the house: a dialog
// opens with its first field ready for the keyboard, and never larger than the screen; the
// Return key that ends the typing in a cell does not close it; F1 on a dialog without help of its
// own opens that of the window it belongs to; and a list shows the names that it has no room for.
#pragma once

#include <string>

#include <QEvent>

class QAbstractItemView;
class QDialog;
class QWidget;

namespace kavu {

/// May be called more than once.
void careForDialog(QDialog& dialog);
void careForView(QAbstractItemView& view);

/// The help of a dialog that cannot open it itself: its topic, as that of `FormContext::help`.
void setHelpTopic(QDialog& dialog, const std::string& topic);

/// Sent to the last window below the dialogs, when F1 was pressed on one and none of them has
/// opened the help: its topic is that of the topmost dialog that has one, and empty if none has.
class HelpRequest : public QEvent {
  public:
    explicit HelpRequest(std::string topic) : QEvent(kind()), topic_(std::move(topic)) {}
    [[nodiscard]] static Type kind();
    [[nodiscard]] const std::string& topic() const { return topic_; }

  private:
    std::string topic_;
};

/// The first control below `within` that takes the keyboard: no tab, and no button of the dialog
/// itself. Null if there is none.
[[nodiscard]] QWidget* firstField(QWidget& within);
/// Gives that control the keyboard, so that one sees it. Nothing happens if there is none.
void focusFirstField(QWidget& within);

/// If the dialog needs more room than the screen has, everything above its buttons scrolls; and it
/// is made no larger than the screen.
void fitDialogToScreen(QDialog& dialog);

}  // namespace kavu
