#include "app/bus/BusLocationDialog.h"

#include "app/framework/Look.h"
#include "core/talk/ProfileSettings.h"
#include "vocabulary/DGroupFields.h"

#include <array>

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

std::array<Field, 4> locationFields() {
    return {busFormField(BusLevel::Location, "MBM", "Bitmask:"),
            busFormField(BusLevel::Location, "MWN", "Word Number:"),
            busFormField(BusLevel::Location, "MTO", "Transfer Order:"),
            busFormField(BusLevel::Location, "MFP", "Fragment Position:")};
}

}  // namespace

BusLocationDialog::BusLocationDialog(const BusFormSetup& setup, const BusPlace& location,
                                     bool isNew, QWidget* parent)
    : EditDialog(setup.form, "1553_edit_measurement_location",
                 QStringLiteral("Edit Bus Measurement Location"), parent),
      setup_(setup),
      isNew_(isNew),
      state_(BusFormState::of(setup.definition, location)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    if (isNew) {
        takeLastValues();
        setNew();
    }
    layout->addWidget(makeFullWord());
    fields_ = new FieldForm(setup.form, locationFields(), {}, this);
    fields_->setValues(state_.now);
    layout->addWidget(fields_);
    layout->addWidget(look::makeDialogButtons(*this));
    const bool isFull = valueOf(state_.now, "MBM") == kFullWord;
    (isFull ? full_ : part_)->setChecked(true);
    fields_->control("MBM")->setEnabled(!isFull);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    connect(full_, &QRadioButton::toggled, this, &BusLocationDialog::useFullWord);
}

QGroupBox* BusLocationDialog::makeFullWord() {
    auto* const box = new QGroupBox(QStringLiteral("Full Word Used?"), this);
    auto* const inside = new QHBoxLayout(box);
    look::arrangePart(*inside, *box);
    full_ = new QRadioButton(QStringLiteral("&Yes"), box);
    full_->setObjectName(QStringLiteral("fullWordYes"));
    full_->setAccessibleName(QStringLiteral("Full Word Used: Yes"));
    part_ = new QRadioButton(QStringLiteral("&No"), box);
    part_->setObjectName(QStringLiteral("fullWordNo"));
    part_->setAccessibleName(QStringLiteral("Full Word Used: No"));
    inside->addWidget(full_);
    inside->addWidget(part_);
    inside->addStretch();
    return box;
}

void BusLocationDialog::takeLastValues() {
    const auto& settings = setup_.form.settings;
    const auto take = [&](const char* code, const std::string& value) {
        if (!value.empty()) {
            state_.now[code] = value;
        }
    };
    take("MWN", settings.get(setting::kBusWordNumber));
    take("MTO", settings.get(setting::kBusTransferOrder));
    take("MBM", settings.get(setting::kBusFullWord) ? std::string(kFullWord) : std::string());
}

void BusLocationDialog::keepLastValues() {
    auto& settings = setup_.form.settings;
    settings.set(setting::kBusWordNumber, valueOf(state_.now, "MWN"));
    settings.set(setting::kBusTransferOrder, valueOf(state_.now, "MTO"));
    settings.set(setting::kBusFullWord, valueOf(state_.now, "MBM") == kFullWord);
}

void BusLocationDialog::useFullWord(bool isFull) {
    if (isFull) {
        mask_ = fields_->value("MBM");
    }
    fields_->editValue("MBM", isFull ? kFullWord : std::string_view(mask_));
    fields_->control("MBM")->setEnabled(!isFull);
    if (!isFull) {
        fields_->control("MBM")->setFocus();
    }
    markChanged();
}

bool BusLocationDialog::store() {
    const bool isStored = storeBusFields(setup_, state_, *fields_);
    if (isStored && isNew_) {
        keepLastValues();
    }
    return isStored;
}

}  // namespace kavu
