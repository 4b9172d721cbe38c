#include "app/pcm/CommentDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/TypingRules.h"
#include "core/text/Text.h"
#include "pcm/edit/FrameEditComment.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

CommentDialog::CommentDialog(FormContext& form, PcmFormat& format, std::string comment,
                             QWidget* parent)
    : EditDialog(form, "EditMeasurementSectionComment",
                 QStringLiteral("Edit Measurement Section Comment Field"), parent),
      format_(format),
      comment_(std::move(comment)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    text_ = new LimitedTextEdit(
        kMostComment, [](const QString&) {}, this);
    text_->setObjectName(QStringLiteral("comment"));
    text_->setTabChangesFocus(true);
    text_->setMinimumSize(look::charactersWide(*this, 70), look::unit(*this) * 24);
    text_->setPlainText(toQString(replaceAll(comment_, "\r\n", "\n")));
    layout->addWidget(look::addLabel(QStringLiteral("Comment:"), *text_));
    layout->addWidget(text_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    connect(text_, &QPlainTextEdit::textChanged, this, [this] { markChanged(); });
    text_->setFocus();
}

bool CommentDialog::store() {
    const auto text = replaceAll(toBytes(text_->toPlainText()), "\n", "\r\n");
    return storeMeasurementComment(format_, &form().ui, text);
}

bool editSectionComment(FormContext& form, PcmFormat& format, QWidget* window) {
    auto comment = readMeasurementComment(format, &form.ui);
    if (!comment) {
        return false;
    }
    CommentDialog dialog(form, format, std::move(*comment), window);
    return runDialog(form.door, dialog) == QDialog::Accepted;
}

}  // namespace kavu
