// A dialog whose resource name is its topic in the help, which F1 opens.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/QtText.h"

#include <QDialog>
#include <QKeyEvent>

namespace kavu {

class HelpedDialog : public QDialog {
  public:
    HelpedDialog(FormContext& form, const char* resourceName, const QString& title, QWidget* parent)
        : QDialog(parent), form_(form) {
        setObjectName(QLatin1String(resourceName));
        setWindowTitle(title);
    }

  protected:
    [[nodiscard]] FormContext& form() const { return form_; }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_F1 && form_.help) {
            form_.help(toBytes(objectName()));
            return;
        }
        QDialog::keyPressEvent(event);
    }

  private:
    FormContext& form_;
};

}  // namespace kavu
