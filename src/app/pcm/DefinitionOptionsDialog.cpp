#include "app/pcm/DefinitionOptionsDialog.h"

#include "app/framework/Look.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavu {

DefinitionOptionsDialog::DefinitionOptionsDialog(bool wordFrame, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("MeasurementDefinitionOptions"));
    setWindowTitle(QStringLiteral("Measurement Definition Options"));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    const auto make = [&](const char* name, const char16_t* text) {
        auto* button = new QRadioButton(QString::fromUtf16(text), this);
        button->setObjectName(QLatin1String(name));
        button->setAccessibleName(look::spokenName(button->text()));
        layout->addWidget(button);
        return button;
    };
    wordFrame_ = make("wordFrame", u"New measurements have &word/frame locations");
    older_ = make("olderTypes", u"New measurements have the &older location types");
    auto* note = look::makeNote(
        QStringLiteral("Word/frame locations need no subframe definitions. A stream that has "
                       "shown subframes or measurements of older types stays with these."),
        this);
    note->setMinimumWidth(look::charactersWide(*this, 56));
    layout->addWidget(note);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    (wordFrame ? wordFrame_ : older_)->setChecked(true);
    (wordFrame ? wordFrame_ : older_)->setFocus();
}

bool DefinitionOptionsDialog::wordFrame() const {
    return wordFrame_->isChecked();
}

}  // namespace kavu
