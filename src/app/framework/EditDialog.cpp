#include "app/framework/EditDialog.h"

#include "app/framework/QtText.h"
#include "core/talk/UserInterface.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace kavu {

namespace {}  // namespace

EditDialog::EditDialog(FormContext& form, const char* resourceName, const QString& title,
                       QWidget* parent)
    : QDialog(parent), form_(form) {
    setObjectName(QLatin1String(resourceName));
    setWindowTitle(title);
}

void EditDialog::markChanged() {
    changed_ = true;
    emit changed();
}

void EditDialog::accept() {
    if (!changed_ && !new_) {
        done(kNothingToStore);
    } else if (store()) {
        QDialog::accept();
    }
}

void EditDialog::reject() {
    if (!changed_ ||
        showBox(&form_.ui,
                "Items have changed. If you cancel, these items will not take effect.\n\n"
                "Do you really want to cancel?",
                kCancelTitle, Icon::Question, Buttons::YesNo) == Button::Yes) {
        QDialog::reject();
    }
}

void EditDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!changed_) {
        QDialog::reject();
        return;
    }
    const auto answer =
        showBox(&form_.ui,
                "Items have changed. If you close this window, all changes will be lost!\n\n"
                "Save changes before closing?",
                kCancelTitle, Icon::Question, Buttons::YesNoCancel);
    if (answer == Button::Yes) {
        accept();
    } else if (answer == Button::No) {
        QDialog::reject();
    }
}

void EditDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1 && form_.help) {
        form_.help(toBytes(objectName()));
        return;
    }
    QDialog::keyPressEvent(event);
}

}  // namespace kavu
