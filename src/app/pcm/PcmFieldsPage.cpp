#include "app/pcm/PcmFieldsPage.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/PcmAttributes.h"
#include "pcm/PcmFormat.h"
#include "pcm/model/FrameSyncPattern.h"
#include "pcm/model/PcmFormatFields.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListView>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kLeastRecommended = 7;

}  // namespace

PcmFieldsPage::PcmFieldsPage(PcmAttributesModel& model, const char* resourceName,
                             const std::string& title, QWidget* parent)
    : PcmFieldsPage(model, resourceName, title, Bare{}, parent) {
    addFields();
}

PcmFieldsPage::PcmFieldsPage(PcmAttributesModel& model, const char* resourceName,
                             const std::string& title, Bare, QWidget* parent)
    : PropertyPage(model.form, resourceName, title, parent), model_(model) {
    column_ = new QVBoxLayout(this);
    look::arrangeWindow(*column_, *this);
}

void PcmFieldsPage::addFields() {
    const auto table = pcmPageFields(toBytes(objectName()));
    fields_ = new FieldForm(form(), table, {}, this);
    column_->addWidget(fields_, 1);
    fields_->makeDisplayOnly("MF2");
    connect(fields_, &FieldForm::edited, this, &PcmFieldsPage::takeEdit);
    connect(&model_, &PcmAttributesModel::changed, this, [this] { refresh(); });
}

void PcmFieldsPage::load() {
    FieldValues values;
    for (const auto code : fields_->codes()) {
        if (auto value = attributeValue(model_.format, code); !value.empty()) {
            values[std::string(code)] = std::move(value);
        }
    }
    fields_->setValues(values);
    refresh();
}

void PcmFieldsPage::refresh() {
    refreshing_ = true;
    for (const auto code : fields_->codes()) {
        // A comment that is being typed is not set again.
        const auto value = attributeValue(model_.format, code);
        if (code != "COM" && fields_->value(code) != value) {
            fields_->editValue(code, value);
        }
    }
    refreshing_ = false;
    updateControls();
}

void PcmFieldsPage::takeEdit(const QString& code) {
    if (refreshing_) {
        return;
    }
    markChanged();
    const auto name = toBytes(code);
    refused_ = !model_.edit(name, fields_->value(name));
}

void PcmFieldsPage::updateControls() {
    const auto& format = model_.format;
    for (const auto code : fields_->codes()) {
        fields_->control(code)->setEnabled(isAttributeEnabled(format, code));
    }
    if (auto* const order = qobject_cast<QComboBox*>(fields_->control("F2"));
        order != nullptr && format.wordTransferOrder.empty()) {
        // A list without a placeholder selects its first entry, which nobody has chosen.
        const QSignalBlocker quiet(order);
        order->setPlaceholderText(format.isBusStream ? QStringLiteral("Default") : QString());
        order->setCurrentIndex(-1);
    }
    offerCodes();
}

void PcmFieldsPage::offerCodes() {
    auto* const box = qobject_cast<QComboBox*>(fields_->control("D1"));
    auto* const items = box == nullptr ? nullptr : qobject_cast<QStandardItemModel*>(box->model());
    for (int row = 0; items != nullptr && row < items->rowCount(); ++row) {
        const bool offered = offersPcmCode(model_.format, toBytes(box->itemText(row)));
        items->item(row)->setEnabled(offered);
        if (auto* const view = qobject_cast<QListView*>(box->view())) {
            view->setRowHidden(row, !offered);
        }
    }
}

bool PcmFieldsPage::validate() {
    refused_ = false;
    return fields_->validate() && !refused_;
}

// --- Frame Sync Pattern -----------------------------------------------------------------------

PcmSyncPage::PcmSyncPage(PcmAttributesModel& model, QWidget* parent)
    : PcmFieldsPage(model, pcm_page::kSyncPattern, "Frame Sync Pattern", Bare{}, parent) {
    auto* const row = new QHBoxLayout;
    const auto make = [&](const char* name, const QString& text) {
        auto* const button = new QRadioButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setAccessibleName(look::spokenName(text));
        row->addWidget(button);
        return button;
    };
    binary_ = make("binary", QStringLiteral("&Binary"));
    hexadecimal_ = make("hexadecimal", QStringLiteral("He&x"));
    row->addStretch();
    row->setContentsMargins(look::unit(*this) + 3, 0, 0, 0);
    row->setSpacing(look::unit(*this) * 2);
    column().addLayout(row);
    addFields();
    connect(hexadecimal_, &QRadioButton::clicked, this, [this] {
        this->model().setHexadecimal(true);
        markChanged();
    });
    connect(binary_, &QRadioButton::clicked, this, [this] {
        this->model().setHexadecimal(false);
        markChanged();
    });
}

void PcmSyncPage::refresh() {
    const auto& format = model().format;
    (format.hexFsp ? hexadecimal_ : binary_)->setChecked(true);
    fillPatterns();
    PcmFieldsPage::refresh();
}

void PcmSyncPage::fillPatterns() {
    auto* const box = qobject_cast<QComboBox*>(fields().control("MF5"));
    const bool hexadecimal = model().format.hexFsp;
    const auto first = toQString(recommendedPattern(kLeastRecommended, hexadecimal));
    if (box == nullptr || box->itemText(0) == first) {
        return;
    }
    const QSignalBlocker quiet(box);
    const auto shown = box->currentText();
    box->clear();
    for (int length = kLeastRecommended; length <= kMostSyncBits; ++length) {
        box->addItem(toQString(recommendedPattern(length, hexadecimal)));
    }
    box->setEditText(shown);
}

}  // namespace kavu
