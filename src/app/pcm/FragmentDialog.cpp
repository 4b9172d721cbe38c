#include "app/pcm/FragmentDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/MaskControl.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/DGroupFields.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

FragmentDialog::FragmentDialog(FormContext& form, PcmFormat& format, Setup setup, QWidget* parent)
    : EditDialog(form, "EditFragmentDefinition", QStringLiteral("Edit Fragment Definition"),
                 parent),
      format_(format),
      setup_(std::move(setup)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeFields(*this);
    auto* grid = makeFieldGrid(*this);
    layout->addLayout(grid);
    addField(*grid, u"Fragment Number:", *number_);
    if (subframe_ != nullptr) {
        addField(*grid, u"Subframe Name:", *subframe_);
        addField(*grid, u"Location In Subframe:", *place_);
        addField(*grid, u"Fragment Transfer Order:", *order_);
    } else {
        addField(*grid, u"Fragment Transfer Order:", *order_);
        addField(*grid, u"Frame Word Position:", *place_);
    }
    const int row = grid->rowCount();
    grid->addWidget(look::addLabel(QStringLiteral("Bit Mask:"), mask_->field()), row, 0);
    grid->addWidget(mask_, row, 1);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    if (subframe_ == nullptr) {
        setTabOrder(number_, order_);
        setTabOrder(order_, place_);
        setTabOrder(place_, &mask_->field());
    }
    connectFields();
    number_->setFocus();
    if (setup_.isNew) {
        setNew();
    }
}

void FragmentDialog::makeFields(QWidget& owner) {
    const auto& spot = setup_.spot;
    number_ = new QComboBox(&owner);
    number_->setObjectName(QStringLiteral("fragmentNumber"));
    for (const int number : setup_.numbers) {
        number_->addItem(QString::number(number), number);
    }
    number_->setCurrentIndex(number_->findData(spot.fragmentNumber));
    if (setup_.ofSubframe) {
        subframe_ = new QComboBox(&owner);
        subframe_->setObjectName(QStringLiteral("subframeName"));
        subframe_->addItems(toQStrings(subframeNames(format_)));
        subframe_->setCurrentIndex(subframe_->findText(toQString(spot.subframe)));
    }
    place_ = new NumberEdit(setup_.ofSubframe ? "locationInSubframe" : "frameWordPosition",
                            setup_.ofSubframe ? 6 : 4, &owner);
    place_->setNumber(setup_.ofSubframe ? spot.position : spot.fwp);
    order_ = new CodeBox("fragmentTransferOrder", measurement_choice::kTransferOrder, &owner);
    order_->setCode(spot.transferOrder.empty() ? measurement_field::kTransferOrder.missing
                                               : std::string_view(spot.transferOrder));
    mask_ = new MaskControl(form(), format_.context(), "bitMask", &owner);
    mask_->setMask(spot.mask, format_.wordLength(wordHere()));
}

void FragmentDialog::connectFields() {
    const auto edited = [this] {
        mask_->setWordLength(format_.wordLength(wordHere()));
        markChanged();
    };
    connect(number_, &QComboBox::currentIndexChanged, this, edited);
    connect(order_, &QComboBox::currentIndexChanged, this, edited);
    connect(place_, &QLineEdit::textEdited, this, edited);
    connect(mask_, &MaskControl::changed, this, edited);
    if (subframe_ != nullptr) {
        connect(subframe_, &QComboBox::currentIndexChanged, this, edited);
    }
}

/// The word that the entered place is in, or 0.
int FragmentDialog::wordHere() const {
    const auto spot = entered();
    int fwp = spot.fwp;
    int fn = 0;
    if (setup_.ofSubframe && format_.subframeLocation(spot.subframe, spot.position, fwp, fn) != 1) {
        return 0;
    }
    return fwp;
}

MeasurementSpot FragmentDialog::entered() const {
    auto spot = setup_.spot;
    spot.fragmentNumber = number_->currentData().toInt();
    (setup_.ofSubframe ? spot.position : spot.fwp) = place_->number();
    if (subframe_ != nullptr && subframe_->currentIndex() >= 0) {
        const auto names = subframeNames(format_);
        spot.subframe = names[static_cast<std::size_t>(subframe_->currentIndex())];
    }
    if (order_ != nullptr) {
        spot.transferOrder = order_->code();
    }
    if (mask_ != nullptr) {
        spot.mask = mask_->mask();
    }
    return spot;
}

bool FragmentDialog::store() {
    const auto spot = entered();
    const auto& messages = format_.context().messages;
    int fwp = spot.fwp;
    int fn = 0;
    if (!setup_.ofSubframe) {
        if (!format_.isDataWord(fwp) || format_.wordType(fwp) != WordType::Minor) {
            messages.show(&form().ui, 330, title::kError, kErrorBox, fwp);
            place_->setFocus();
            return false;
        }
    } else if (format_.subframeLocation(spot.subframe, spot.position, fwp, fn) != 1) {
        messages.show(&form().ui, 331, title::kError, kErrorBox,
                      format_.subframeWord(spot.subframe, 1), spot.position);
        place_->setFocus();
        return false;
    }
    setup_.spot = spot;
    return true;
}

std::string transferOrderText(std::string_view code) {
    const auto wanted = code.empty() ? measurement_field::kTransferOrder.missing : code;
    for (const auto& choice : measurement_choice::kTransferOrder) {
        if (choice.value == wanted) {
            return std::string(choice.text);
        }
    }
    return std::string(code);
}

std::vector<std::string> subframeNames(const PcmFormat& format) {
    std::vector<std::string> names;
    for (const auto& counter : format.idCounters) {
        for (const auto& subframe : counter.subframes) {
            if (!subframe.name.empty() && !subframe.hidden) {
                names.push_back(subframe.name.str());
            }
        }
    }
    return names;
}

}  // namespace kavu
