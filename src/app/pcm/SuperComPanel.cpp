#include "app/pcm/SuperComPanel.h"

#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "pcm/PcmFormat.h"

#include <algorithm>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char16_t kInterval[] = u"I - First Word & Interval";
constexpr char16_t kEveryPlace[] = u"E - Every Location";

}  // namespace

LocationMode::LocationMode(QGridLayout& grid, QWidget& panel) : QObject(&panel) {
    mode_ = new QComboBox(&panel);
    mode_->setObjectName(QStringLiteral("locationDefinition"));
    mode_->addItem(QString::fromUtf16(kInterval));
    mode_->addItem(QString::fromUtf16(kEveryPlace));
    mode_->setPlaceholderText(QStringLiteral("Please select"));
    addField(grid, u"Location Definition:", *mode_);
    first_ = new QLineEdit(&panel);
    first_->setObjectName(QStringLiteral("firstLocation"));
    first_->setReadOnly(true);
    addField(grid, u"First Location:", *first_);
    count_ = new NumberEdit("numberOfLocations", 4, &panel);
    addField(grid, u"Number Of Locations:", *count_);
    interval_ = new NumberEdit("interval", 3, &panel);
    addField(grid, u"Interval:", *interval_);
    connect(mode_, &QComboBox::currentIndexChanged, this, [this] {
        update();
        emit changed();
    });
    for (auto* edit : {count_, interval_}) {
        connect(edit, &QLineEdit::textEdited, this, &LocationMode::changed);
    }
}

void LocationMode::load(const Measurement& attributes, const QString& first) {
    const QSignalBlocker quiet(mode_);
    mode_->setCurrentIndex(attributes.locationMode == "I"   ? 0
                           : attributes.locationMode == "E" ? 1
                                                            : -1);
    count_->setNumber(std::max(1, attributes.locationCount));
    interval_->setNumber(std::max(1, attributes.interval));
    first_->setText(first);
    update();
}

void LocationMode::store(Measurement& attributes) const {
    const int index = mode_->currentIndex();
    attributes.locationMode = index == 0 ? "I" : index == 1 ? "E" : "";
    attributes.locationCount = count_->number();
    attributes.interval = interval_->number();
}

bool LocationMode::isEveryLocation() const {
    return mode_->currentIndex() == 1;
}

bool LocationMode::isInterval() const {
    return mode_->currentIndex() == 0;
}

void LocationMode::update() {
    const bool everyLocation = isEveryLocation();
    count_->setEnabled(!everyLocation);
    interval_->setEnabled(!everyLocation);
    first_->setEnabled(!everyLocation);
}

SuperComPanel::SuperComPanel(FormContext& form, PcmFormat& format, bool ofSubframe,
                             EditedPlace start, QWidget* parent)
    : PlacesPanel(parent),
      form_(form),
      format_(format),
      ofSubframe_(ofSubframe),
      start_(std::move(start)) {
    setObjectName(QStringLiteral("SuperComWindow"));
    auto* layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    layout->addWidget(makePanelTitle(ofSubframe ? QStringLiteral("Subframe Supercommutated")
                                                : QStringLiteral("Minor Frame Supercommutated"),
                                     this));
    auto* grid = makeFieldGrid(*this);
    layout->addLayout(grid);
    mode_ = new LocationMode(*grid, *this);
    ListSetup setup;
    setup.columns = {{.title = ofSubframe ? "Location In Subframe" : "Frame Word Position",
                      .kind = ColumnKind::Integer}};
    setup.canSort = false;
    list_ = new EditableList(form, "locations", std::move(setup), this);
    nameDeleteButton(*list_, QStringLiteral("Delete Location"));
    layout->addWidget(list_, 1);
    list_->rowEditor = [this](int row, const ListRow&) -> std::optional<ListRow> {
        return enterLocation(row);
    };
    list_->mayDelete = [this](int row) {
        if (!mayDeleteEntry(form_)) {
            return false;
        }
        spots_.erase(spots_.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, [this] {
        showSpots();  // the entries stay sorted
        emit changed();
    });
    connect(mode_, &LocationMode::changed, this, [this] {
        update();
        emit changed();
    });
}

int& SuperComPanel::numberOf(MeasurementSpot& spot) const {
    return ofSubframe_ ? spot.position : spot.fwp;
}

int SuperComPanel::numberOf(const MeasurementSpot& spot) const {
    return ofSubframe_ ? spot.position : spot.fwp;
}

void SuperComPanel::load(const MeasurementDefinition& definition) {
    spots_ = definition.spots;
    const auto* const subframe = format_.subframeOfWord(start_.fwp);
    const int first = ofSubframe_ && subframe != nullptr
                          ? format_.subframePosition(subframe->name.view(), start_.fwp,
                                                     format_.foldedFrame(start_.fwp, start_.fn))
                          : start_.fwp;
    mode_->load(definition.attributes, QString::number(first));
    showSpots();
    update();
}

void SuperComPanel::store(MeasurementDefinition& definition) const {
    mode_->store(definition.attributes);
    definition.spots = spots_;
}

/// The list of locations belongs to "E" only.
void SuperComPanel::update() {
    list_->setVisible(mode_->isEveryLocation());
}

void SuperComPanel::showSpots() {
    std::stable_sort(spots_.begin(), spots_.end(),
                     [this](const auto& a, const auto& b) { return numberOf(a) < numberOf(b); });
    std::vector<ListRow> rows;
    for (const auto& spot : spots_) {
        rows.push_back({std::to_string(numberOf(spot))});
    }
    list_->setRows(std::move(rows));
}

/// Asks for the number of a row, or of a new one after all rows.
std::optional<ListRow> SuperComPanel::enterLocation(int row) {
    const bool isNew = row >= static_cast<int>(spots_.size());
    const auto number = form_.ui.enterInteger(
        {.title = "Enter New FWP Location",
         .prompt = "Enter New FWP Location",
         .initial = isNew ? 0 : numberOf(spots_[static_cast<std::size_t>(row)]),
         .least = INT32_MIN,
         .most = INT32_MAX});
    if (!number) {
        return std::nullopt;
    }
    if (*number < 1) {
        format_.context().messages.show(&form_.ui, 161, title::kIllegalValueEntered, kErrorBox, 0);
        return std::nullopt;
    }
    MeasurementSpot spot = isNew ? MeasurementSpot{} : spots_[static_cast<std::size_t>(row)];
    numberOf(spot) = static_cast<int>(std::min<long>(*number, INT32_MAX));
    if (std::any_of(spots_.begin(), spots_.end(),
                    [&](const auto& held) { return numberOf(held) == numberOf(spot); })) {
        form_.ui.beep();  // it is in the list already
        return std::nullopt;
    }
    if (isNew) {
        spots_.push_back(spot);
    } else {
        spots_[static_cast<std::size_t>(row)] = spot;
    }
    return ListRow{std::to_string(numberOf(spot))};
}

}  // namespace kavu
