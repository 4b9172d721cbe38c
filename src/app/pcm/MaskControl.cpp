#include "app/pcm/MaskControl.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/edit/FrameEditMask.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace kavu {

MaskControl::MaskControl(FormContext& form, const DocumentContext& document, const char* name,
                         QWidget* parent)
    : QWidget(parent), form_(form), document_(document) {
    setObjectName(QLatin1String(name) + QStringLiteral("Control"));
    auto* layout = new QHBoxLayout(this);
    look::arrangePart(*layout, *this);
    field_ = new QLineEdit(this);
    field_->setObjectName(QLatin1String(name));
    field_->setReadOnly(true);
    field_->setMinimumWidth(look::charactersWide(*this, 20));
    field_->installEventFilter(this);
    edit_ =
        look::makeButton("editMask", QStringLiteral("Chan&ge..."), QStringLiteral("edit"), this);
    binary_ = new QRadioButton(QStringLiteral("&Binary"), this);
    binary_->setObjectName(QStringLiteral("binary"));
    hex_ = new QRadioButton(QStringLiteral("He&x"), this);
    hex_->setObjectName(QStringLiteral("hex"));
    for (auto* button : {binary_, hex_}) {
        button->setAccessibleName(look::spokenName(button->text()));
    }
    layout->addWidget(field_, 1);
    layout->addWidget(edit_);
    layout->addWidget(binary_);
    layout->addWidget(hex_);
    refresh();
    connect(edit_, &QPushButton::clicked, this, &MaskControl::editMask);
    connect(hex_, &QRadioButton::toggled, this, &MaskControl::switchForm);
}

void MaskControl::setMask(std::string_view mask, int wordLength) {
    mask_ = std::string(mask);
    wordLength_ = wordLength;
    refresh();
}

void MaskControl::setWordLength(int wordLength) {
    wordLength_ = wordLength;
    refresh();
}

void MaskControl::refresh() {
    const QSignalBlocker quietHex(hex_);
    const QSignalBlocker quietBinary(binary_);
    const bool hexadecimal = document_.settings.get(setting::kHexadecimalMasks);
    hex_->setChecked(hexadecimal);
    binary_->setChecked(!hexadecimal);
    field_->setText(toQString(shownMask(document_, mask_, wordLength_)));
    field_->setCursorPosition(0);
    field_->setToolTip(field_->text());
}

void MaskControl::switchForm(bool hexadecimal) {
    document_.settings.set(setting::kHexadecimalMasks, hexadecimal);
    refresh();
    emit formSwitched();
}

void MaskControl::editMask() {
    const auto entered = editBitmask(document_, &form_.ui, mask_, key_, wordLength_);
    if (!entered || *entered == mask_) {
        return;
    }
    mask_ = *entered;
    refresh();
    emit changed();
}

bool MaskControl::eventFilter(QObject* receiver, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    if (receiver == field_ && isEnabled() &&
        (event->type() == QEvent::MouseButtonDblClick ||
         (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F2))) {
        editMask();
        return true;
    }
    return QWidget::eventFilter(receiver, event);
}

}  // namespace kavu
