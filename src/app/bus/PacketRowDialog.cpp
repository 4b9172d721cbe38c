#include "app/bus/PacketRowDialog.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace kavu {

using Kind = PacketEdit::Node::Kind;

struct PacketRowDialog::Opened {
    const char* resource = "";
    const char* title = "";
    bool isNew = false;
    std::vector<Field> columns{};
    std::vector<std::string> values{};
};

namespace {

Kind childOf(Kind kind) {
    switch (kind) {
        case Kind::Group:
            return Kind::Packet;
        case Kind::Family:
            return Kind::Measurement;
        default:
            return Kind::Location;
    }
}

/// Every form has fields of its own: the comment of a packet is not in the form of the packet.
bool isInForm(PacketForm which, const Field& field) {
    return (which == PacketForm::Comment) == (field.code == packet_field::kPacketComment);
}

}  // namespace

PacketRowDialog::Opened PacketRowDialog::open(PacketEdit& edit, const GroupPlace& place,
                                              PacketForm which) {
    const auto node = edit.find(place);
    Opened opened;
    opened.isNew = which == PacketForm::NewRow;
    const auto fresh = opened.isNew ? PacketEdit::newChildOf(node) : GroupRow();
    const auto kind = opened.isNew ? childOf(node.kind) : node.kind;
    const auto& row = opened.isNew ? fresh : *node.row;
    for (const auto& [name, field] : PacketEdit::fieldsOf(kind, node.family)) {
        if (isInForm(which, *field)) {
            auto& column = opened.columns.emplace_back(*field);
            column.list = {};
            column.code = name;
            opened.values.emplace_back(row.value(field->code));
        }
    }
    if (which == PacketForm::Comment) {
        opened.resource = "EditPacketComment";
        opened.title = "Edit Comment Field";
    } else if (kind == Kind::Packet) {
        opened.resource = "EditSourcePacket";
        opened.title = "Edit Source Packet";
    } else if (kind == Kind::Measurement) {
        opened.resource = "EditPacketMeasurement";
        opened.title = "Edit Measurement";
    } else {
        opened.resource = "EditPacketLocation";
        opened.title = "Edit Measurement Location";
    }
    return opened;
}

PacketRowDialog::PacketRowDialog(FormContext& form, PacketEdit& edit, const GroupPlace& place,
                                 PacketForm which, QWidget* parent)
    : PacketRowDialog(form, edit, place, open(edit, place, which), parent) {}

PacketRowDialog::PacketRowDialog(FormContext& form, PacketEdit& edit, const GroupPlace& place,
                                 const Opened& opened, QWidget* parent)
    : EditDialog(form, opened.resource, QLatin1String(opened.title), parent),
      edit_(edit),
      place_(place),
      isNew_(opened.isNew),
      columns_(opened.columns),
      before_(opened.values) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, columns_, {}, this);
    layout->addWidget(fields_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    FieldValues values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        values[std::string(columns_[i].code)] = before_[i];
    }
    fields_->setValues(values);
    showFirstEntries(*fields_, columns_);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    if (isNew_) {
        setNew();
    }
}

bool PacketRowDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    std::vector<std::pair<std::string, std::string>> values;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        auto now = fields_->value(columns_[i].code);
        if (now != before_[i]) {
            values.emplace_back(columns_[i].code, std::move(now));
        }
    }
    auto* const ui = &form().ui;
    return isNew_ ? edit_.add(ui, place_, values) : edit_.set(ui, place_, values);
}

void showFirstEntries(FieldForm& form, std::span<const Field> fields) {
    for (const auto& field : fields) {
        auto* const box = qobject_cast<QComboBox*>(form.control(field.code));
        if (box != nullptr && form.value(field.code).empty()) {
            box->setPlaceholderText(toQString(field.choices.front().text));
        }
    }
}

}  // namespace kavu
