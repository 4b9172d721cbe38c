#include "app/bus/BusSheet.h"

#include "app/bus/BusTerminalsPage.h"
#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "bus/definition/BusRows.h"
#include "core/text/Printf.h"

#include <array>

#include <QGroupBox>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kUserWordEdition = 2007;

/// The fields of a user defined word, without the number of the word in their codes.
struct WordField {
    const char* code;
    std::string_view title;
    std::string_view label;
};
constexpr auto kWordFields = std::to_array<WordField>({
    {"UMN%d", "Measurement Name", "Measurement Name:"},
    {"U%dP", "Parity", "Parity:"},
    {"U%dPT", "Parity Transfer Order", "Parity Transfer Order:"},
    {"U%dM", "Bit Mask", "Bit Mask:"},
    {"U%dT", "Transfer Order", "Transfer Order:"},
});

std::vector<Field> fieldsOfWord(int word, bool isForColumns) {
    std::vector<Field> fields;
    for (const auto& each : kWordFields) {
        fields.push_back(busFormField(BusLevel::Bus, formatPrintf(runtimeFormat(each.code), word),
                                      isForColumns ? each.title : each.label));
    }
    return fields;
}

}  // namespace

// --- "Bus Definition" ---------------------------------------------------------------------------

BusDefinitionPage::BusDefinitionPage(const BusFormSetup& setup, BusFormState& state,
                                     QWidget* parent)
    : BusFieldPage(
          setup, "1553_EDIT_BUS1", "Bus Definition",
          std::array{busFormField(BusLevel::Bus, "BID"), busFormField(BusLevel::Bus, "BNA"),
                     busFormField(BusLevel::Bus, "BT")},
          state, parent),
      wordFields_(knownFields(fieldsOfWord(1, true), setup.definition.edition)) {
    if (setup.definition.edition >= kUserWordEdition) {
        makeWordList();
    }
}

void BusDefinitionPage::makeWordList() {
    auto* const box = new QGroupBox(QStringLiteral("User Defined Words"), this);
    auto* const inside = new QVBoxLayout(box);
    look::arrangePart(*inside, *box);
    ListSetup list;
    for (const auto& field : wordFields_) {
        list.columns.push_back({.title = std::string(field.label), .editable = false});
    }
    list.mostRows = kUserDefinedWords;
    list.rowsOnly = true;
    list.canSort = false;
    words_ = new EditableList(setup().form, "userDefinedWords", std::move(list), box);
    words_->view()->setAccessibleName(box->title());
    words_->rowEditor = [this](int row, const ListRow&) { return editWord(row + 1); };
    words_->mayDelete = [this](int row) {
        return setup().edit.removeUserWord(state().place.front(), row + 1);
    };
    connect(words_, &EditableList::changed, this, [this] { markChanged(); });
    inside->addWidget(words_);
    layout()->addWidget(box);
}

void BusDefinitionPage::load() {
    BusFieldPage::load();
    if (words_ != nullptr) {
        words_->setRows(wordRows());
    }
}

std::vector<ListRow> BusDefinitionPage::wordRows() const {
    const auto& bus = *busRowAt(setup().definition, state().place);
    std::vector<ListRow> rows;
    std::size_t used = 0;
    for (int word = 1; word <= kUserDefinedWords; ++word) {
        ListRow cells;
        for (const auto& field : fieldsOfWord(word, true)) {
            if (isKnownIn(setup().definition.edition, field)) {
                cells.push_back(shownBusValue(*findBusField(BusLevel::Bus, field.code), bus));
            }
        }
        const bool isUsed = std::any_of(cells.begin(), cells.end(),
                                        [](const std::string& cell) { return !cell.empty(); });
        rows.push_back(std::move(cells));
        used = isUsed ? rows.size() : used;
    }
    rows.resize(used);
    return rows;
}

std::optional<ListRow> BusDefinitionPage::editWord(int word) {
    const auto fields = fieldsOfWord(word, false);
    auto state = BusFormState::of(setup().definition, this->state().place);
    BusFieldDialog dialog(
        setup().form, "1553_EDIT_USER_WORD", QStringLiteral("Edit User Defined Word"), fields,
        state.now, [&](FieldForm& form) { return storeBusFields(setup(), state, form); }, window());
    if (runDialog(setup().form.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    const auto rows = wordRows();
    const auto at = static_cast<std::size_t>(word) - 1;
    return at < rows.size() ? std::optional(rows[at]) : std::nullopt;
}

// --- "Recording Description" --------------------------------------------------------------------

BusTracksPage::BusTracksPage(const BusFormSetup& setup, BusPlace bus, QWidget* parent)
    : PropertyPage(setup.form, "1553_EDIT_BUS4", "Recording Description", parent),
      setup_(setup),
      bus_(std::move(bus)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    ListSetup list;
    list.columns = {{.title = "Track Sequence", .editable = false}};
    list.rowsOnly = true;
    list.canSort = false;
    tracks_ = new EditableList(setup.form, "trackSequences", std::move(list), this);
    tracks_->view()->setAccessibleName(QStringLiteral("Track Sequences"));
    tracks_->rowEditor = [this](int row, const ListRow& before) {
        return editTrack(row, before.front());
    };
    tracks_->mayDelete = [this](int row) {
        return setup_.edit.removeTrack(bus_.front(), static_cast<std::size_t>(row) + 1);
    };
    connect(tracks_, &EditableList::changed, this, [this] { markChanged(); });
    layout->addWidget(tracks_);
}

void BusTracksPage::load() {
    tracks_->setRows(trackRows());
}

std::vector<ListRow> BusTracksPage::trackRows() const {
    std::vector<ListRow> rows;
    for (const auto& track :
         rowsOf(std::as_const(*busRowAt(setup_.definition, bus_)), BusLevel::Track)) {
        rows.push_back(busCells(BusLevel::Track, track, setup_.definition.edition));
    }
    return rows;
}

std::optional<ListRow> BusTracksPage::editTrack(int row, const std::string& before) {
    const auto& field = busFields(BusLevel::Track).front();
    std::vector<std::string> tracks;
    for (const auto& track : trackRows()) {
        tracks.push_back(track.front());
    }
    const auto at = static_cast<std::size_t>(row);
    const bool isNew = at >= tracks.size();
    tracks.resize(std::max(tracks.size(), at + 1));
    TextPrompt prompt;
    prompt.title = isNew ? std::string(field.prompt) : "Edit Track Sequence";
    prompt.prompt = std::string(field.label) + ":";
    prompt.initial = before;
    prompt.limit = field.limit;
    while (auto entered = setup_.form.ui.enterText(prompt)) {
        if (entered->empty()) {
            return std::nullopt;
        }
        tracks[at] = *entered;
        if (setup_.edit.set(bus_, {.tracks = tracks})) {
            return trackRows()[at];
        }
        prompt.initial = *entered;
    }
    return std::nullopt;
}

// --- The sheet ----------------------------------------------------------------------------------

BusSheet::BusSheet(const BusFormSetup& setup, const BusPlace& bus, bool isNew, QWidget* parent)
    : PropertySheet(setup.form, "1553_EDIT_BUS",
                    isNew ? busRowTitle(BusLevel::Bus, bus.back()) : "Edit Bus", "Last1553BusPage",
                    parent),
      state_(BusFormState::of(setup.definition, bus)) {
    addPage(std::make_unique<BusDefinitionPage>(setup, state_));
    addPage(std::make_unique<BusRowsPage>(setup, "1553_EDIT_BUS2", "Messages", bus, "messages"));
    addPage(std::make_unique<BusTerminalsPage>(setup, bus.front()));
    addPage(std::make_unique<BusTracksPage>(setup, bus));
    setWriter([this, &setup] { return setup.edit.set(state_.place, state_.changes()); });
    if (isNew) {
        markChanged();
    }
}

}  // namespace kavu
