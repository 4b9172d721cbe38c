#include "app/pcm/WordFramePanel.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/EditDataWordControls.h"
#include "app/pcm/FragmentDialog.h"
#include "app/pcm/WordFrameEntryDialog.h"
#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameEditMask.h"
#include "pcm/edit/MeasurementEditWordFrame.h"

#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

WordFramePanel::WordFramePanel(FormContext& form, PcmFormat& format, EditedPlace place,
                               QWidget* parent)
    : PlacesPanel(parent), form_(form), format_(format), place_(std::move(place)) {
    setObjectName(QStringLiteral("WORD_FRAME_LOCATIONS"));
    auto* layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    layout->addWidget(makePanelTitle(QStringLiteral("Word/Frame Locations"), this));
    ListSetup setup;
    const auto numbered = [](int number) { return std::to_string(number); };
    setup.columns = {{.title = "Location #", .kind = ColumnKind::Integer, .numbered = numbered},
                     {.title = "Word Length", .kind = ColumnKind::Integer},
                     {.title = "# Fragments", .kind = ColumnKind::Integer},
                     {.title = "Start Word"},
                     {.title = "Word Interval"},
                     {.title = "End Word"},
                     {.title = "Start Frame"},
                     {.title = "Frame Interval"},
                     {.title = "End Frame"},
                     {.title = "Bit Mask"},
                     {.title = "Fragment Transfer Order"}};
    setup.canSort = false;
    list_ = new EditableList(form, "locations", std::move(setup), this);
    if (auto* add = list_->findChild<QPushButton*>(QStringLiteral("add"))) {
        add->setText(QStringLiteral("&Add Location"));
        add->setAccessibleName(QStringLiteral("Add Location"));
    }
    nameDeleteButton(*list_, QStringLiteral("Delete Location"));
    list_->view()->setMinimumWidth(look::charactersWide(*this, 92));
    list_->view()->setMinimumHeight(look::unit(*this) * 11);
    layout->addWidget(list_, 1);
    list_->rowEditor = [this](int row, const ListRow&) { return editLocation(row); };
    list_->mayDelete = [this](int row) {
        if (!mayDeleteEntry(form_)) {
            return false;
        }
        ranges_.locations.erase(ranges_.locations.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, [this] {
        const int row = list_->currentRow();
        showLocations();  // the ones after a deleted one have other numbers
        list_->selectRow(row);
        emit changed();
    });
}

void WordFramePanel::load(const MeasurementDefinition& definition) {
    ranges_ = definition.wordFrame;
    showLocations();
}

void WordFramePanel::store(MeasurementDefinition& definition) const {
    definition.wordFrame = ranges_;
    // Each place takes the mask of its fragment; another type begins with that of the first.
    if (!ranges_.locations.empty() && !ranges_.locations.front().fragments.empty()) {
        definition.attributes.mask = ranges_.locations.front().fragments.front().mask;
    }
}

ListRow WordFramePanel::rowOf(int number, const WordFrameLocation& location) const {
    ListRow row(11);
    row[0] = std::to_string(number);
    row[1] = std::to_string(location.wordLength);
    row[2] = std::to_string(location.fragmentCount());
    for (const auto& fragment : location.fragments) {
        const auto mask = shownMask(format_.context(), fragment.mask.view(),
                                    format_.wordLength(fragment.startWord));
        const std::string values[] = {
            std::to_string(fragment.startWord),
            std::to_string(fragment.wordInterval),
            std::to_string(fragment.endWord),
            std::to_string(fragment.startFrame),
            std::to_string(fragment.frameInterval),
            std::to_string(fragment.endFrame),
            mask,
            transferOrderText(std::string_view(&fragment.transferOrder, 1))};
        std::size_t column = 3;
        for (const auto& value : values) {
            row[column] += (row[column].empty() ? "" : ", ") + value;
            ++column;
        }
    }
    return row;
}

void WordFramePanel::showLocations() {
    std::vector<ListRow> rows;
    for (const auto& location : ranges_.locations) {
        rows.push_back(rowOf(static_cast<int>(rows.size()) + 1, location));
    }
    list_->setRows(std::move(rows));
}

std::optional<std::string> WordFramePanel::maskHere() const {
    const auto* const here = fragmentAt(format_, ranges_, place_.fwp, place_.fn);
    return here == nullptr ? std::nullopt : std::optional(here->mask.str());
}

void WordFramePanel::refreshMasks() {
    const int row = list_->currentRow();
    showLocations();
    list_->selectRow(row);
}

std::optional<ListRow> WordFramePanel::editLocation(int row) {
    const bool isNew = row >= ranges_.locationCount();
    WordFrameLocation location;
    if (isNew) {
        location.wordLength = format_.wordLength(place_.fwp);
        location.fragments.push_back(newWordFrameFragment(format_, place_.fwp, place_.fn));
        location.fragments.front().mask = format_.context().settings.get(setting::kWordFrameMask);
    } else {
        location = ranges_.locations[static_cast<std::size_t>(row)];
    }
    WordFrameEntryDialog dialog(
        form_, format_, {.name = name_, .location = std::move(location), .isNew = isNew}, window());
    const bool isAccepted = runDialog(form_.door, dialog) == QDialog::Accepted;
    emit formSwitched();
    if (!isAccepted) {
        return std::nullopt;
    }
    if (isNew) {
        ranges_.locations.push_back(dialog.location());
    } else {
        ranges_.locations[static_cast<std::size_t>(row)] = dialog.location();
    }
    return rowOf(row + 1, dialog.location());
}

}  // namespace kavu
