#include "app/bus/MessageRowDialog.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace kavu {

namespace {

const char* resourceOf(MessageKind kind) {
    switch (kind) {
        case MessageKind::Stream:
            return "EditMessageStream";
        case MessageKind::Message:
            return "EditMessage";
        case MessageKind::Field:
            return "EditMessageField";
        case MessageKind::Measurement:
            return "EditMessageMeasurement";
        default:
            return "EditMessageLocation";
    }
}

/// The columns of a row as fields of a form, which are in no list.
std::vector<Field> formFields(MessageKind kind) {
    std::vector<Field> fields;
    for (const auto& column : factsOf(kind).columns) {
        auto& field = fields.emplace_back(*column.field);
        field.list = {};
        field.code = column.name;
    }
    return fields;
}

}  // namespace

MessageRowDialog::MessageRowDialog(FormContext& form, MessageEdit& edit, const GroupPlace& place,
                                   bool isNew, QWidget* parent)
    : MessageRowDialog(form, edit, place, isNew, isNew ? edit.formOfNew(place) : edit.formOf(place),
                       parent) {}

MessageRowDialog::MessageRowDialog(FormContext& form, MessageEdit& edit, const GroupPlace& place,
                                   bool isNew, MessageForm opened, QWidget* parent)
    : EditDialog(form, resourceOf(opened.kind), toQString(opened.title), parent),
      edit_(edit),
      place_(place),
      isNew_(isNew),
      opened_(std::move(opened)),
      columns_(formFields(opened_.kind)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, columns_, {}, this);
    layout->addWidget(fields_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    FieldValues values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        values[std::string(columns_[i].code)] =
            storedValue(*factsOf(opened_.kind).columns[i].field, opened_.texts[i]);
    }
    fields_->setValues(values);
    enableFields();
    connect(fields_, &FieldForm::edited, this, [this] {
        enableFields();
        markChanged();
    });
    // What a list showed for a value that is no entry of it is stored on OK.
    if (isNew_ || opened_.texts != opened_.former) {
        setNew();
    }
}

std::string MessageRowDialog::text(std::size_t column) const {
    const auto& field = *factsOf(opened_.kind).columns[column].field;
    const auto now = fields_->value(columns_[column].code);
    return now == storedValue(field, opened_.texts[column]) ? opened_.texts[column]
                                                            : shownValue(field, now);
}

void MessageRowDialog::enableFields() {
    auto now = opened_;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        now.texts[i] = text(i);
    }
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        fields_->control(columns_[i].code)->setEnabled(now.isEnabled(i));
    }
}

bool MessageRowDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    std::vector<std::pair<std::string, std::string>> values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const bool isChanged = text(i) != opened_.texts[i];
        if (isChanged && fields_->control(columns_[i].code)->isEnabled()) {
            values.emplace_back(columns_[i].code, text(i));
        }
    }
    auto* const ui = &form().ui;
    return isNew_ ? edit_.add(ui, place_, values) : edit_.set(ui, place_, values);
}

}  // namespace kavu
