// Every modal dialog of the editor is run through one door, so that a test (or a renderer
// of pictures) can take its place: it gets the real dialog, drives it by real keys and object
// names, and nothing ever waits for a person.
#pragma once

#include "app/framework/WindowCare.h"

#include <QCursor>
#include <QDialog>
#include <QGuiApplication>

namespace kavu {

class DialogDoor {
  public:
    DialogDoor() = default;
    DialogDoor(const DialogDoor&) = delete;
    DialogDoor& operator=(const DialogDoor&) = delete;
    virtual ~DialogDoor() = default;

    /// Shows the dialog modally and gives its result (`QDialog::Accepted`, ...).
    virtual int run(QDialog& dialog) { return dialog.exec(); }

    /// How many dialogs are inside `run` now. The main window refuses the end of the
    /// session while it is not 0.
    [[nodiscard]] int depth() const { return depth_; }

    /// The property sheets that are up at once, at most `kMostSheets`.
    static constexpr int kMostSheets = 10;
    bool enterSheet() { return sheets_ < kMostSheets && ++sheets_ > 0; }
    void leaveSheet() { --sheets_; }

  private:
    friend int runDialog(DialogDoor& door, QDialog& dialog);

    /// Counts a dialog, also if it ends by an exception.
    class Inside {
      public:
        explicit Inside(DialogDoor& door) : door_(door) { ++door_.depth_; }
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;
        ~Inside() { --door_.depth_; }

      private:
        DialogDoor& door_;
    };

    int depth_ = 0;
    int sheets_ = 0;
};

/// The call by which all windows run a dialog: counts it and passes it to the door.
inline int runDialog(DialogDoor& door, QDialog& dialog) {
    const DialogDoor::Inside inside(door);
    careForDialog(dialog);
    // Work under a wait cursor may ask: then it is the program that waits.
    const bool waits = QGuiApplication::overrideCursor() != nullptr;
    if (waits) {
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    const int result = door.run(dialog);
    if (waits) {
        QGuiApplication::restoreOverrideCursor();
    }
    return result;
}

}  // namespace kavu
