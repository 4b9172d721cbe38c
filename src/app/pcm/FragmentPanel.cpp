#include "app/pcm/FragmentPanel.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/FragmentDialog.h"
#include "app/pcm/MaskControl.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameEditMask.h"
#include "pcm/edit/MeasurementEditDefinition.h"
#include "pcm/edit/MeasurementEditWordFrame.h"
#include "vocabulary/LocationTypes.h"

#include <algorithm>

#include <QGridLayout>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

FragmentPanel::FragmentPanel(FormContext& form, PcmFormat& format, bool ofSubframe,
                             EditedPlace start, QWidget* parent)
    : PlacesPanel(parent),
      form_(form),
      format_(format),
      ofSubframe_(ofSubframe),
      start_(std::move(start)) {
    setObjectName(ofSubframe ? QStringLiteral("SubframeFragments")
                             : QStringLiteral("MinorFrameFragments"));
    auto* layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    layout->addWidget(makePanelTitle(ofSubframe
                                         ? QStringLiteral("Subframe Fragment Location Definition")
                                         : QStringLiteral("Minor Frame Fragments"),
                                     this));
    auto* grid = makeFieldGrid(*this);
    layout->addLayout(grid);
    length_ = new NumberEdit("reconstructedWordLength", 3, this);
    addField(*grid, u"Reconstructed Word Length:", *length_);
    connect(length_, &QLineEdit::textEdited, this, &FragmentPanel::changed);
    if (!ofSubframe) {
        mode_ = new LocationMode(*grid, *this);
        mask_ = new MaskControl(form, format.context(), "fragmentMask", this);
        maskLabel_ = look::addLabel(QStringLiteral("Bitmask:"), mask_->field());
        const int row = grid->rowCount();
        grid->addWidget(maskLabel_, row, 0);
        grid->addWidget(mask_, row, 1);
        connect(mode_, &LocationMode::changed, this, [this] {
            update();
            emit changed();
        });
        connect(mask_, &MaskControl::changed, this, &FragmentPanel::changed);
        connect(mask_, &MaskControl::formSwitched, this, &FragmentPanel::formSwitched);
    }
    makeList();
    layout->addWidget(list_, 1);
    layout->addStretch();
}

void FragmentPanel::makeList() {
    ListSetup setup;
    const auto numbered = [this](int) { return std::to_string(newSpot().fragmentNumber); };
    if (ofSubframe_) {
        setup.columns = {{.title = "Fragment #", .kind = ColumnKind::Integer, .numbered = numbered},
                         {.title = "Subframe"},
                         {.title = "Loc In SF", .kind = ColumnKind::Integer},
                         {.title = "Xfer Order"},
                         {.title = "BitMask"}};
    } else {
        setup.columns = {{.title = "Fragment #", .kind = ColumnKind::Integer, .numbered = numbered},
                         {.title = "FWP", .kind = ColumnKind::Integer},
                         {.title = "Xfer Order"},
                         {.title = "BitMask"}};
    }
    setup.canSort = false;
    list_ = new EditableList(form_, "fragments", std::move(setup), this);
    nameDeleteButton(*list_, QStringLiteral("Delete Fragment"));
    list_->view()->setMinimumWidth(look::charactersWide(*this, ofSubframe_ ? 60 : 58));
    list_->rowEditor = [this](int row, const ListRow&) { return editFragment(row); };
    list_->mayDelete = [this](int row) {
        if (!mayDeleteEntry(form_)) {
            return false;
        }
        spots_.erase(spots_.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, &FragmentPanel::changed);
}

void FragmentPanel::load(const MeasurementDefinition& definition) {
    spots_ = definition.spots;
    length_->setNumber(definition.attributes.reconstructedLength);
    if (mode_ != nullptr) {
        mode_->load(definition.attributes, QString::number(start_.fwp));
        const bool isHeld =
            definition.attributes.locationType == location_type::kMinorFrameFragments;
        mask_->setMask(isHeld ? definition.attributes.mask.str() : newFragmentMask(format_),
                       format_.wordLength(start_.fwp));
    }
    showSpots();
    update();
}

void FragmentPanel::store(MeasurementDefinition& definition) const {
    definition.attributes.reconstructedLength = length_->number();
    definition.spots = spots_;
    if (mode_ != nullptr) {
        mode_->store(definition.attributes);
        if (mode_->isInterval()) {
            definition.attributes.mask = mask_->mask();
        }
    } else {
        definition.attributes.locationMode = "E";
    }
}

void FragmentPanel::update() {
    const bool byInterval = mode_ != nullptr && !mode_->isEveryLocation();
    list_->setVisible(!byInterval);
    if (mask_ != nullptr) {
        mask_->setVisible(byInterval);
        maskLabel_->setVisible(byInterval);
    }
}

ListRow FragmentPanel::rowOf(const MeasurementSpot& spot) const {
    int fwp = spot.fwp;
    int fn = 0;
    if (ofSubframe_ && format_.subframeLocation(spot.subframe, spot.position, fwp, fn) != 1) {
        fwp = start_.fwp;
    }
    const auto mask = shownMask(format_.context(), spot.mask, format_.wordLength(fwp));
    const auto order = transferOrderText(spot.transferOrder);
    if (ofSubframe_) {
        return {std::to_string(spot.fragmentNumber), spot.subframe, std::to_string(spot.position),
                order, mask};
    }
    return {std::to_string(spot.fragmentNumber), std::to_string(spot.fwp), order, mask};
}

void FragmentPanel::showSpots() {
    std::vector<ListRow> rows;
    for (const auto& spot : spots_) {
        rows.push_back(rowOf(spot));
    }
    list_->setRows(std::move(rows));
    if (mask_ != nullptr) {
        mask_->refresh();
    }
}

void FragmentPanel::refreshMasks() {
    const int row = list_->currentRow();
    showSpots();
    list_->selectRow(row);
}

/// A fragment of subframes has many places, one of minor frames only one.
std::vector<int> FragmentPanel::freeNumbers(int row) const {
    std::vector<int> numbers;
    for (int number = 1; number <= kMostFragments; ++number) {
        const bool taken = std::any_of(spots_.begin(), spots_.end(), [&](const auto& spot) {
            return spot.fragmentNumber == number && &spot - spots_.data() != row;
        });
        if (ofSubframe_ || !taken) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

MeasurementSpot FragmentPanel::newSpot() const {
    MeasurementSpot spot;
    spot.mask = newFragmentMask(format_);
    spot.fwp = start_.fwp;
    if (const auto* const subframe = format_.subframeOfWord(start_.fwp); ofSubframe_ && subframe) {
        spot.subframe = subframe->name.str();
    }
    const auto numbers = freeNumbers(-1);
    spot.fragmentNumber = numbers.empty() ? 0 : numbers.front();
    if (ofSubframe_ && !spots_.empty()) {
        spot.fragmentNumber = std::min(kMostFragments, spots_.back().fragmentNumber + 1);
    }
    return spot;
}

std::optional<ListRow> FragmentPanel::editFragment(int row) {
    const bool isNew = row >= static_cast<int>(spots_.size());
    auto numbers = freeNumbers(isNew ? -1 : row);
    if (!isNew) {  // its own one, whatever the file had
        const int own = spots_[static_cast<std::size_t>(row)].fragmentNumber;
        if (std::find(numbers.begin(), numbers.end(), own) == numbers.end()) {
            numbers.push_back(own);
        }
    }
    if (numbers.empty()) {
        form_.ui.beep();  // nine fragments are all there can be
        return std::nullopt;
    }
    FragmentDialog dialog(form_, format_,
                          {.ofSubframe = ofSubframe_,
                           .spot = isNew ? newSpot() : spots_[static_cast<std::size_t>(row)],
                           .numbers = numbers,
                           .isNew = isNew},
                          window());
    const bool isAccepted = runDialog(form_.door, dialog) == QDialog::Accepted;
    emit formSwitched();
    if (!isAccepted) {
        return std::nullopt;
    }
    if (isNew) {
        spots_.push_back(dialog.spot());
    } else {
        spots_[static_cast<std::size_t>(row)] = dialog.spot();
    }
    return rowOf(dialog.spot());
}

}  // namespace kavu
