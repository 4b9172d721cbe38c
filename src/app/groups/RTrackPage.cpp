#include "app/groups/RTrackPage.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/text/Printf.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

RecorderTrackPage::RecorderTrackPage(const TrackPrompts& prompts, const RecorderPage& page,
                                     RecorderGroup& group, const std::vector<std::string>& sources,
                                     QWidget* parent)
    : PropertyPage(prompts.form, page.name.data(), std::string(page.title), parent),
      prompts_(prompts),
      group_(group),
      columns_(knownFields(trackFields(), prompts.form.edition)) {
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    list_ = new IdentifiedList(form(), "tracks", trackSetup(sources), this);
    list_->view()->setMinimumWidth(look::charactersWide(*this, 100));
    layout->addWidget(list_, 1);
    connect(list_, &EditableList::changed, this, [this] {
        takeTracks();
        markChanged();
    });
    if (form().edition >= kFirstEditionOfChannelTypes) {
        makeDetails();
        layout->addWidget(details_, 1);
        connect(list_, &EditableList::currentRowChanged, this, [this] { showDetails(); });
    }
}

ListSetup RecorderTrackPage::trackSetup(const std::vector<std::string>& sources) const {
    ListSetup setup;
    for (const auto& field : columns_) {
        auto column = columnOf(field, form().edition);
        if (field.code == "DSI-n") {
            column.kind = ColumnKind::Choice;
            column.choices = sources;
            column.mayBeEmpty = true;
        } else if (field.code == "CHE-n") {
            std::reverse(column.choices.begin(), column.choices.end());
        } else if (field.kind == FieldKind::Digits) {
            column.kind = ColumnKind::Integer;
            column.check = digitsCheck(field.limit);
        }
        column.required = field.code == "TK1-n" || field.code == "CDLN-n";
        // A new track has the first entry of every list.
        column.initial = column.choices.empty() ? std::string() : column.choices.front();
        setup.columns.push_back(std::move(column));
    }
    setup.mostRows = static_cast<int>(kMostTracks);
    setup.rowDialogTitle = "Data Track";
    setup.name = "Delete Data Track Definition";
    return setup;
}

void RecorderTrackPage::makeDetails() {
    details_ = new QGroupBox(QStringLiteral("Details"), this);
    details_->setObjectName(QStringLiteral("details"));
    details_->setAccessibleName(QStringLiteral("Details"));
    auto* inside = new QHBoxLayout(details_);
    const int distance = look::unit(*details_);
    inside->setContentsMargins(distance, distance, distance, distance);
    inside->setSpacing(distance);
    ListSetup setup;
    setup.columns = {{.title = "Attribute", .editable = false}, {.title = "Value"}};
    setup.canAdd = false;
    setup.canDelete = false;
    setup.canSort = false;
    attributes_ = new EditableList(form(), "attributes", std::move(setup), details_);
    attributes_->rowEditor = [this](int row, const ListRow& before) -> std::optional<ListRow> {
        const auto entered = promptDetail(prompts_, *shownFields_[static_cast<std::size_t>(row)],
                                          before.back(), window());
        return entered ? std::optional(ListRow{before.front(), *entered}) : std::nullopt;
    };
    connect(attributes_, &EditableList::changed, this, [this] {
        takeAttributes();
        markChanged();
    });
    inside->addWidget(attributes_, 1);
}

ListRow RecorderTrackPage::cellsOfTrack(const Track& track) const {
    ListRow cells;
    for (const auto& field : columns_) {
        cells.push_back(textOfValue(field, form().edition, trackValue(track, field.code), {}));
    }
    return cells;
}

void RecorderTrackPage::load() {
    std::vector<ListRow> rows;
    ids_.clear();
    for (const auto& track : group_.tracks) {
        ids_.push_back(static_cast<int>(rows.size()));
        rows.push_back(cellsOfTrack(track));
    }
    list_->setIdentifiedRows(rows);
    showDetails();
}

std::size_t RecorderTrackPage::placeOf(int id) const {
    return static_cast<std::size_t>(std::find(ids_.begin(), ids_.end(), id) - ids_.begin());
}

Track* RecorderTrackPage::currentTrack() {
    const auto place = placeOf(list_->currentId());
    return place < group_.tracks.size() ? &group_.tracks[place] : nullptr;
}

void RecorderTrackPage::dropDeleted() {
    std::vector<int> left;
    for (int row = 0; row < list_->rowCount(); ++row) {
        left.push_back(list_->idOf(row));
    }
    for (std::size_t place = ids_.size(); place-- > 0;) {
        if (std::find(left.begin(), left.end(), ids_[place]) == left.end()) {
            deleteTrack(group_, place);
            ids_.erase(ids_.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }
}

/// Brings the tracks of the group up to date with the list.
void RecorderTrackPage::takeTracks() {
    const auto before = group_.record.values;
    dropDeleted();
    for (int row = 0; row < list_->rowCount(); ++row) {
        const int id = list_->idOf(row);
        const auto cells = list_->cellsOfRow(row);
        const auto place = placeOf(id);
        const bool isNew = place == ids_.size();
        Track track = isNew ? Track{} : group_.tracks[place];
        const auto shown = isNew ? ListRow(cells.size()) : cellsOfTrack(track);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (cells[i] != shown[i]) {
                setTrackValue(track, columns_[i].code,
                              valueOfText(columns_[i], form().edition, cells[i]));
            }
        }
        if (isNew) {
            ids_.push_back(id);
            addTrack(group_, std::move(track));
        } else {
            group_.tracks[place] = std::move(track);
        }
    }
    if (group_.record.values != before) {
        emit trackCountChanged();
    }
    showDetails();
}

// --- The details of the selected track ----------------------------------------------------------

void RecorderTrackPage::showDetails() {
    if (details_ == nullptr) {
        return;
    }
    const auto* const track = currentTrack();
    const auto* const type = track == nullptr ? nullptr : typeOf(*track, form().edition);
    details_->setEnabled(type != nullptr);
    details_->setTitle(type == nullptr
                           ? QStringLiteral("Details")
                           : toQString(formatPrintf("%s Details (Track Number: %s)", type->text,
                                                    trackValue(*track, "TK1-n"))));
    details_->setAccessibleName(details_->title());
    shownFields_.clear();
    if (type != nullptr) {
        for (const auto* field : detailFields(*type, form().edition)) {
            if (!isHiddenDetail(*field, form().edition)) {
                shownFields_.push_back(field);
            }
        }
    }
    if (type != shownType_) {
        shownType_ = type;
        delete items_;
        items_ = nullptr;
        if (type != nullptr && itemCount(*type, form().edition) != nullptr) {
            makeItems(*type);
        }
    }
    attributes_->setRows(type == nullptr ? std::vector<ListRow>() : attributeRows(*type, *track));
    if (items_ != nullptr) {
        showItems(*type, *track);
    }
}

std::vector<ListRow> RecorderTrackPage::attributeRows(const ChannelType& type,
                                                      const Track& track) const {
    std::vector<ListRow> rows;
    for (const auto* field : shownFields_) {
        const auto value = track.details.values.find(detailKey(type, *field));
        const auto stored = value == track.details.values.end() ? std::string() : value->second;
        rows.push_back(
            {std::string(field->label), textOfValue(*field, form().edition, stored, stored)});
    }
    return rows;
}

void RecorderTrackPage::makeItems(const ChannelType& type) {
    items_ = new IdentifiedList(form(), "items", itemSetup(type, form().edition), details_);
    if (auto* add = items_->findChild<QPushButton*>(QStringLiteral("add"))) {
        add->setText(toQString(type.addText));
        add->setAccessibleName(add->text());
        add->setMinimumWidth(add->sizeHint().width());
    }
    items_->rowEditor = [this, &type](int row, const ListRow& before) {
        const auto* const track = currentTrack();
        const auto known = track->details.items.find(itemCount(type, form().edition)->code);
        const auto size = known == track->details.items.end() ? 0 : known->second.size();
        // The last cell is the id, which an item has from the file or not at all.
        ListRow cells(before.begin(), before.end() - 1);
        auto entered = editItem(prompts_, type, *items_, row, cells,
                                static_cast<std::size_t>(row) >= size, window());
        if (entered) {
            entered->push_back(before.back());
        }
        return entered;
    };
    connect(items_, &EditableList::changed, this, [this] {
        takeItems();
        markChanged();
    });
    static_cast<QHBoxLayout*>(details_->layout())->addWidget(items_, 1);
}

void RecorderTrackPage::showItems(const ChannelType& type, const Track& track) {
    const auto fields = itemFields(type, form().edition);
    std::vector<ListRow> rows;
    const auto numbers = track.details.itemRows.find(itemCount(type, form().edition)->code);
    shownItemRows_ =
        numbers == track.details.itemRows.end() ? std::vector<std::size_t>() : numbers->second;
    const auto items = track.details.items.find(itemCount(type, form().edition)->code);
    if (items != track.details.items.end()) {
        for (const auto& item : items->second) {
            ListRow row = {std::string(type.itemName)};
            for (std::size_t i = 0; i < fields.size(); ++i) {
                row.push_back(textOfValue(*fields[i], form().edition, item[i], item[i]));
            }
            rows.push_back(std::move(row));
        }
    }
    items_->setIdentifiedRows(rows);
}

void RecorderTrackPage::takeAttributes() {
    auto* const track = currentTrack();
    if (track == nullptr || shownType_ == nullptr) {
        return;
    }
    const auto before = attributeRows(*shownType_, *track);
    const auto& rows = attributes_->rows();
    for (std::size_t i = 0; i < shownFields_.size(); ++i) {
        if (rows[i].back() != before[i].back()) {
            track->details.values[detailKey(*shownType_, *shownFields_[i])] =
                valueOfText(*shownFields_[i], form().edition, rows[i].back());
        }
    }
}

void RecorderTrackPage::takeItems() {
    auto* const track = currentTrack();
    if (track == nullptr || shownType_ == nullptr) {
        return;
    }
    const auto fields = itemFields(*shownType_, form().edition);
    auto& items = track->details.items[std::string(itemCount(*shownType_, form().edition)->code)];
    auto& numbers =
        track->details.itemRows[std::string(itemCount(*shownType_, form().edition)->code)];
    items.clear();
    numbers.clear();
    for (int shown = 0; shown < items_->rowCount(); ++shown) {
        const auto row = items_->cellsOfRow(shown);
        const auto id = static_cast<std::size_t>(items_->idOf(shown));
        numbers.push_back(id < shownItemRows_.size() ? shownItemRows_[id] : 0);
        auto& item = items.emplace_back();
        for (std::size_t i = 0; i < fields.size(); ++i) {
            item.push_back(valueOfText(*fields[i], form().edition, row[i + 1]));
        }
    }
}

bool RecorderTrackPage::store() {
    std::vector<Track> tracks;
    for (int row = 0; row < list_->rowCount(); ++row) {
        tracks.push_back(group_.tracks[placeOf(list_->idOf(row))]);
    }
    group_.tracks = std::move(tracks);
    load();
    return true;
}

}  // namespace kavu
