#include "app/pcm/GenerateDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/MaskControl.h"
#include "conversion/ConversionStore.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/DGroupFields.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// The entry whose first three letters are a code, or -1.
int indexOf(const QComboBox& box, const std::string& code) {
    for (int i = 0; i < box.count(); ++i) {
        if (startsWithIgnoreCase(toBytes(box.itemText(i)), code)) {
            return i;
        }
    }
    return -1;
}

}  // namespace

GenerateDialog::GenerateDialog(FormContext& form, const PcmFormat& format,
                               const DataWordDefaults& defaults, QWidget* parent)
    : QDialog(parent), before_(defaults) {
    setObjectName(QStringLiteral("ChangeDefaultAttributes"));
    setWindowTitle(QStringLiteral("Change Default Attributes?"));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* grid = makeFieldGrid(*this);
    layout->addLayout(grid);
    parity_ = new CodeBox("measurementParity", measurement_choice::kParityOfDefaults, this);
    parity_->setCode(defaults.parity);
    addField(*grid, u"Measurement Parity", *parity_);
    parityOrder_ = new CodeBox("parityTransferOrder", measurement_choice::kParityOrder, this);
    parityOrder_->setCode(defaults.parityTransferOrder);
    addField(*grid, u"Parity Transfer Order", *parityOrder_);
    order_ = new CodeBox("measurementTransferOrder", measurement_choice::kTransferOrder, this);
    order_->setCode(defaults.transferOrder);
    addField(*grid, u"Measurement Transfer Order", *order_);
    mask_ = new MaskControl(form, format.context(), "bitmask", this);
    mask_->setMask(defaults.mask, format.commonWordLength);
    const int row = grid->rowCount();
    grid->addWidget(look::addLabel(QStringLiteral("Bitmask"), mask_->field()), row, 0);
    grid->addWidget(mask_, row, 1);
    format_ = new QComboBox(this);
    format_->setObjectName(QStringLiteral("euBinaryFormat"));
    for (const auto text : ConversionStore::binaryFormatList(form.edition)) {
        format_->addItem(toQString(text));
    }
    format_->setCurrentIndex(indexOf(*format_, defaults.binaryFormat));
    addField(*grid, u"EU Binary Format", *format_);
    type_ = new QComboBox(this);
    type_->setObjectName(QStringLiteral("euType"));
    type_->addItems({QStringLiteral("None"), QStringLiteral("Coefficients")});
    type_->setCurrentIndex(indexOf(*type_, defaults.conversionType));
    addField(*grid, u"EU Type", *type_);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    parity_->setFocus();
}

DataWordDefaults GenerateDialog::defaults() const {
    auto entered = before_;
    entered.parity = parity_->code();
    entered.parityTransferOrder = parityOrder_->code();
    entered.transferOrder = order_->code();
    entered.mask = mask_->mask();
    // What is no entry of the list stays what it was; the rest is cut to its code when kept.
    if (format_->currentIndex() >= 0) {
        entered.binaryFormat = toBytes(format_->currentText());
    }
    if (type_->currentIndex() >= 0) {
        entered.conversionType = toBytes(type_->currentText());
    }
    return entered;
}

}  // namespace kavu
