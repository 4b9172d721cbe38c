#include "app/bus/BusMeasurementDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/ProfileSettings.h"

#include <array>

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kOverwrite = "BME\\FOT";

struct KeptValue {
    std::string_view code;
    const TextKey& key;
};
constexpr auto kKeptValues = std::to_array<KeptValue>({
    {"MN1", setting::kBusParity},
    {"MN2", setting::kBusParityOrder},
    {kOverwrite, setting::kBusOverwrite},
});

std::vector<Field> measurementFields() {
    std::vector<Field> fields;
    for (const auto code : {std::string_view("MN"), std::string_view("MN1"),
                            std::string_view("MN2"), std::string_view("MT"), kOverwrite}) {
        fields.push_back(busFormField(BusLevel::Measurement, code));
    }
    return fields;
}

}  // namespace

BusMeasurementDialog::BusMeasurementDialog(const BusFormSetup& setup, const BusPlace& measurement,
                                           bool isNew, QWidget* parent)
    : EditDialog(setup.form, "1553_edit_measurement_info", QStringLiteral("Edit Bus Measurement"),
                 parent),
      setup_(setup),
      isNew_(isNew),
      state_(BusFormState::of(setup.definition, measurement)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    if (isNew) {
        takeLastValues();
        setNew();
    }
    fields_ = new FieldForm(setup.form, measurementFields(), {}, this);
    fields_->setValues(state_.now);
    layout->addWidget(fields_);
    if (fields_->control(kOverwrite) != nullptr) {
        overwrite_ = look::makeNote({}, this);
        overwrite_->setObjectName(QStringLiteral("overwriteNote"));
        layout->addWidget(overwrite_);
        showOverwrite();
    }
    makeLocations();
    makeConversionButton();
    layout->addWidget(look::makeDialogButtons(*this));
    connect(fields_, &FieldForm::edited, this, [this] {
        showOverwrite();
        markChanged();
    });
}

void BusMeasurementDialog::takeLastValues() {
    for (const auto& [code, key] : kKeptValues) {
        const auto value = setup_.form.settings.get(key);
        if (!value.empty() &&
            isKnownIn(setup_.definition.edition, *findBusField(BusLevel::Measurement, code))) {
            state_.now[std::string(code)] = value;
        }
    }
}

void BusMeasurementDialog::keepLastValues() {
    for (const auto& [code, key] : kKeptValues) {
        if (fields_->control(code) != nullptr) {
            setup_.form.settings.set(key, valueOf(state_.now, code));
        }
    }
}

void BusMeasurementDialog::makeLocations() {
    auto* const box = new QGroupBox(QStringLiteral("Measurement Location"), this);
    auto* const inside = new QVBoxLayout(box);
    look::arrangePart(*inside, *box);
    auto* const list = new BusRowList(setup_, state_.place, "locations", box);
    list->view()->setAccessibleName(box->title());
    list->view()->setMinimumHeight(look::unit(*this) * 12);
    list->showRows();
    inside->addWidget(list);
    layout()->addWidget(box);
    connect(list, &BusRowList::rowsEdited, this, [this] { markChanged(); });
}

void BusMeasurementDialog::makeConversionButton() {
    auto* const row = new QHBoxLayout;
    auto* const button = look::makeButton("editConversion",
                                          QStringLiteral("Edit &Conversion Information"), {}, this);
    button->setEnabled(static_cast<bool>(setup_.editConversion));
    connect(button, &QPushButton::clicked, this,
            [this] { setup_.editConversion(*this, fields_->value("MN")); });
    row->addWidget(button);
    row->addStretch();
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void BusMeasurementDialog::showOverwrite() {
    if (overwrite_ != nullptr) {
        overwrite_->setText(fields_->value(kOverwrite) == "T"
                                ? QStringLiteral("Measurement Filter/Overwrite Enabled")
                                : QStringLiteral("Measurement Filter/Overwrite Disabled"));
    }
}

bool BusMeasurementDialog::store() {
    const bool isStored = storeBusFields(setup_, state_, *fields_);
    if (isStored && isNew_) {
        keepLastValues();
    }
    return isStored;
}

}  // namespace kavu
