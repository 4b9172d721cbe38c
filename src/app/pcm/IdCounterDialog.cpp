#include "app/pcm/IdCounterDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EntryList.h"
#include "app/pcm/SubframeDialog.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/structure/IdCounterFields.h"
#include "pcm/structure/SubframeEdit.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kCounterForm = "ID Counter Definition";
constexpr auto kName = codeHead(counter_field::kName.field.code);
constexpr auto kEndValue = codeHead(counter_field::kEndValue.field.code);

bool hasSubframes(const PcmFormat& format) {
    return isKnownIn(format.edition(), subframe_field::kName.field);
}

}  // namespace

IdCounterDialog::IdCounterDialog(FormContext& form, PcmFormat& format, int fwp, bool isNew,
                                 QWidget* parent)
    : EditDialog(form, hasSubframes(format) ? "Pre_106_11_IDCounterDialog" : "IDCounterDialog",
                 toQString(definitionTitle(kCounterForm, isNew, fwp)), parent),
      format_(format),
      fwp_(fwp) {
    if (const auto* const counter = format.idCounterOfWord(fwp)) {
        counter_ = *counter;
    }
    if (isNew) {
        setNew();
    }
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(look::unit(*this) * 2);
    layout->addLayout(columns, 1);
    fields_ = new FieldForm(form, idCounterFields(), {}, this);
    columns->addWidget(fields_);
    if (hasSubframes(format)) {
        makeSubframeList();
        columns->addWidget(subframes_->parentWidget(), 1);
    }
    auto* const buttons = look::makeDialogButtons(*this);
    delete_ = look::makeButton("delete", QStringLiteral("&Delete"), QStringLiteral("delete"), this);
    delete_->setAutoDefault(false);
    buttons->addButton(delete_, QDialogButtonBox::ActionRole);
    layout->addWidget(buttons);
    connect(delete_, &QPushButton::clicked, this, &IdCounterDialog::deleteCounter);
    connect(fields_, &FieldForm::edited, this, &IdCounterDialog::takeEdit);
    fields_->makeDisplayOnly(kEndValue);
    fields_->setValues(idCounterValues(counter_));
    refresh();
    fields_->control(kName)->setFocus();
}

void IdCounterDialog::makeSubframeList() {
    auto* const box = new QGroupBox(QStringLiteral("Edit Subframes"), this);
    auto* const inside = new QVBoxLayout(box);
    subframes_ = new EntryList(box);
    subframes_->setObjectName(QStringLiteral("editSubframes"));
    subframes_->setAccessibleName(QStringLiteral("Edit Subframes"));
    subframes_->setToolTip(QStringLiteral("A double click opens the subframe."));
    subframes_->setMinimumWidth(look::charactersWide(*subframes_, 28));
    inside->addWidget(subframes_);
    connect(subframes_, &QListWidget::itemActivated, this, &IdCounterDialog::openSubframe);
    fillSubframes();
}

void IdCounterDialog::fillSubframes() {
    subframes_->clear();
    names_.clear();
    const auto* const counter = format_.idCounterOfWord(fwp_);
    for (std::size_t i = 0; counter != nullptr && i < counter->subframes.size(); ++i) {
        const auto& record = counter->subframes[i];
        if (!record.name.empty() && !record.hidden) {
            subframes_->addItem(toQString(record.name.view()));
            names_.push_back(record.name.str());
        }
    }
    if (subframes_->count() > 0) {
        subframes_->setCurrentRow(0);
    }
}

void IdCounterDialog::takeEdit(const QString& code) {
    if (refreshing_) {
        return;
    }
    const auto name = toBytes(code);
    if (editIdCounterField(format_, &form().ui, counter_, name, fields_->value(name))) {
        markChanged();
    }
    refresh();
}

void IdCounterDialog::refresh() {
    refreshing_ = true;
    for (const auto code : fields_->codes()) {
        const auto value = idCounterValue(counter_, code);
        if (fields_->value(code) != value) {
            fields_->editValue(code, value);
        }
    }
    refreshing_ = false;
    delete_->setEnabled(!counter_.name.empty());
}

void IdCounterDialog::openSubframe(const QListWidgetItem* item) {
    const auto row = static_cast<std::size_t>(subframes_->row(item));
    const int word = row < names_.size() ? format_.subframeWord(names_[row], 1) : -1;
    if (word > 0 && editSubframe(form(), format_, this, word, false)) {
        streamEdited_ = true;
        fillSubframes();
    }
}

void IdCounterDialog::deleteCounter() {
    if (deleteIdCounterAndAdjust(format_, &form().ui, fwp_)) {
        finish();
    }
}

bool IdCounterDialog::store() {
    return fields_->validate() && saveIdCounterAndFrame(format_, &form().ui, fwp_, counter_);
}

bool editIdCounter(FormContext& form, PcmFormat& format, QWidget* window, int fwp, bool isNew) {
    if (format.idCounterOfWord(fwp) == nullptr) {
        return false;
    }
    IdCounterDialog dialog(form, format, fwp, isNew, window);
    if (runDialog(form.door, dialog) == QDialog::Accepted) {
        return true;
    }
    if (isNew) {
        deleteIdCounter(format, nullptr, fwp);
    }
    return dialog.streamEdited();
}

}  // namespace kavu
