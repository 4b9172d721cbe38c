// A dialog whose resource name is its topic in the help, which F1 opens.
#pragma once

#include "app/framework/FormContext.h"
#include "app/framework/WindowCare.h"

#include <QDialog>

namespace kavu {

class HelpedDialog : public QDialog {
  public:
    HelpedDialog(FormContext& form, const char* resourceName, const QString& title, QWidget* parent)
        : QDialog(parent), form_(form) {
        setObjectName(QLatin1String(resourceName));
        setWindowTitle(title);
        setHelpTopic(*this, resourceName);
    }

  protected:
    [[nodiscard]] FormContext& form() const { return form_; }

  private:
    FormContext& form_;
};

}  // namespace kavu
