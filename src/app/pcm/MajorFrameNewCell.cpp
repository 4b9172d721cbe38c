#include "app/pcm/MajorFrameNewCell.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavu {

NewCellDialog::NewCellDialog(int fwp, int fn, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("create_new_cell"));
    setWindowTitle(QStringLiteral("Define (FWP: %1  FN: %2)").arg(fwp).arg(fn));
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* const question = new QLabel(QStringLiteral("What shall be defined at this place?"), this);
    question->setTextFormat(Qt::PlainText);
    layout->addWidget(question);
    const auto add = [&](const char* name, const QString& text) {
        auto* const button = new QRadioButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setAccessibleName(look::spokenName(text));
        layout->addWidget(button);
        return button;
    };
    measurement_ = add("measurement", QStringLiteral("A &measurement"));
    async_ = add("async", QStringLiteral("An &async stream"));
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    measurement_->setChecked(true);
    measurement_->setFocus();
}

NewCell NewCellDialog::choice() const {
    return async_->isChecked() ? NewCell::Async : NewCell::Measurement;
}

std::optional<NewCell> chooseNewCell(FormContext& form, QWidget* window, int fwp, int fn) {
    NewCellDialog dialog(fwp, fn, window);
    return runDialog(form.door, dialog) == QDialog::Accepted ? std::optional(dialog.choice())
                                                             : std::nullopt;
}

}  // namespace kavu
