#include "app/pcm/SubframeDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "app/framework/TypingRules.h"
#include "app/pcm/EntryList.h"
#include "app/pcm/IdCounterDialog.h"
#include "pcm/PcmFormat.h"
#include "pcm/edit/FrameAdjust.h"
#include "pcm/model/SubframeFields.h"
#include "pcm/structure/IdCounterFields.h"
#include "pcm/structure/SubframeEdit.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kSubframeForm = "Subframe Definition";
constexpr int kNameWide = 28;
constexpr int kNumberWide = 14;

QGridLayout* addGrid(QVBoxLayout& layout, const QWidget& window) {
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(look::unit(window));
    grid->setVerticalSpacing(look::unit(window) * 3 / 4);
    grid->setColumnStretch(2, 1);
    layout.addLayout(grid);
    return grid;
}

void addRow(QGridLayout& grid, std::string_view text, QWidget& control) {
    const int row = grid.rowCount();
    grid.addWidget(look::addKeyLabel(toQString(text), control), row, 0);
    grid.addWidget(&control, row, 1);
}

QLineEdit* makeText(const char* name, const Field& field, bool digits, int wide, QWidget* parent) {
    auto* const edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    auto* const rule = new TypingRule(
        field.limit, digits, [](const QString&) {}, edit);
    edit->setValidator(rule);
    edit->setMinimumWidth(look::charactersWide(*edit, wide));
    QObject::connect(edit, &QLineEdit::textEdited, rule,
                     [rule](const QString& text) { rule->took(text); });
    return edit;
}

}  // namespace

SubframeDialog::SubframeDialog(FormContext& form, PcmFormat& format, int fwp, bool isNew,
                               QWidget* parent)
    : EditDialog(form, "SubframeDialog", toQString(definitionTitle(kSubframeForm, isNew, fwp)),
                 parent),
      format_(format),
      fwp_(fwp),
      editing_(subframeEditing(format, fwp)) {
    if (isNew) {
        setNew();
    }
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeFields(*layout);
    layout->addStretch();
    auto* const buttons = look::makeDialogButtons(*this);
    const auto add = [&](const char* name, const QString& text, const QString& icon) {
        auto* const button = look::makeButton(name, text, icon, this);
        button->setAutoDefault(false);
        buttons->addButton(button, QDialogButtonBox::ActionRole);
        return button;
    };
    auto* const counter =
        add("editIdCounter", QStringLiteral("&Edit ID Counter"), QStringLiteral("edit"));
    auto* const remove = add("delete", QStringLiteral("&Delete"), QStringLiteral("delete"));
    layout->addWidget(buttons);
    connect(counter, &QPushButton::clicked, this, &SubframeDialog::editCounter);
    connect(remove, &QPushButton::clicked, this, &SubframeDialog::deleteSubframe);
    name_->setFocus();
    name_->selectAll();
}

void SubframeDialog::makeFields(QVBoxLayout& layout) {
    auto* const grid = addGrid(layout, *this);
    const auto& nameField = subframe_field::kName.field;
    const auto& depthField = subframe_field::kDepth.field;
    name_ = makeText("name", nameField, false, kNameWide, this);
    shownName_ = ShownText(editing_.record.name.view());
    name_->setText(shownName_.shown());
    addRow(*grid, nameField.label, *name_);
    counter_ = new QComboBox(this);
    counter_->setObjectName(QStringLiteral("idCounter"));
    fillCounters();
    addRow(*grid, "ID Counter:", *counter_);
    depth_ = makeText("depth", depthField, true, kNameWide, this);
    depth_->setText(toQString(editing_.record.depth.view()));
    addRow(*grid, depthField.label, *depth_);
    auto* const unit = new QLabel(toQString(depthField.unit), this);
    grid->addWidget(unit, grid->rowCount() - 1, 2);
    supercom_ = new QComboBox(this);
    supercom_->setObjectName(QStringLiteral("supercommutated"));
    supercom_->addItems({QStringLiteral("No"), QStringLiteral("Yes")});
    addRow(*grid, "Supercommutated?", *supercom_);
    locations_ = look::makeButton("locations", QStringLiteral("&Locations..."), {}, this);
    locations_->setAutoDefault(false);
    grid->addWidget(locations_, grid->rowCount() - 1, 2, Qt::AlignLeft);
    hint_ = look::makeNote({}, this);
    grid->addWidget(hint_, grid->rowCount(), 1, 1, 2);
    showLocations();
    connect(name_, &QLineEdit::textEdited, this, [this] { markChanged(); });
    connect(depth_, &QLineEdit::textEdited, this, [this] { markChanged(); });
    connect(counter_, &QComboBox::activated, this, [this] { markChanged(); });
    connect(supercom_, &QComboBox::activated, this, &SubframeDialog::takeSupercom);
    connect(locations_, &QPushButton::clicked, this, &SubframeDialog::editLocations);
}

void SubframeDialog::fillCounters() {
    counters_.clear();
    counter_->clear();
    for (std::size_t i = 0; i < format_.idCounters.size(); ++i) {
        if (!format_.idCounters[i].name.empty()) {
            counters_.push_back(static_cast<int>(i));
            counter_->addItem(toQString(format_.idCounters[i].name.view()));
        }
    }
    const auto at = std::find(counters_.begin(), counters_.end(), editing_.counter);
    counter_->setCurrentIndex(at == counters_.end() ? -1
                                                    : static_cast<int>(at - counters_.begin()));
}

void SubframeDialog::showLocations() {
    const auto& record = editing_.record;
    const bool several = record.isSupercommutated();
    supercom_->setCurrentIndex(several ? 1 : 0);
    locations_->setEnabled(several);
    QString text;
    if (several && record.locationMode == kEveryLocation) {
        QStringList words;
        for (const int word : editing_.everyLocation) {
            words.append(QString::number(word));
        }
        text = QStringLiteral("Words ") + words.join(QStringLiteral(", "));
    } else if (several) {
        text = toQString(record.supercommutated.view()) + QStringLiteral(" locations, interval ") +
               toQString(record.interval.view());
    }
    hint_->setText(text);
}

void SubframeDialog::takeSupercom() {
    const bool several = supercom_->currentIndex() == 1;
    if (several == editing_.record.isSupercommutated()) {
        return;
    }
    if (several) {
        editLocations();
        return;
    }
    editing_.record.supercommutated = kNotSupercommutated;
    editing_.record.locationMode = kNoLocationMode;
    editing_.record.interval = "0";
    markChanged();
    showLocations();
}

void SubframeDialog::editLocations() {
    SubframeLocationsDialog dialog(form(), format_, editing_, this);
    if (runDialog(form().door, dialog) == QDialog::Accepted) {
        markChanged();
    }
    showLocations();
}

void SubframeDialog::editCounter() {
    const int row = counter_->currentIndex();
    const int word =
        row < 0 ? -1 : wordOfIdCounter(format_, counters_[static_cast<std::size_t>(row)]);
    if (word < 1 || !editIdCounter(form(), format_, this, word, false)) {
        return;
    }
    streamEdited_ = true;
    const int chosen = row < counter_->count() ? row : -1;
    fillCounters();
    counter_->setCurrentIndex(chosen < counter_->count() ? chosen : -1);
    if (format_.subframeOfWord(fwp_) == nullptr) {
        finish();  // it has gone with its counter
    }
}

void SubframeDialog::deleteSubframe() {
    if (kavu::deleteSubframe(format_, &form().ui, fwp_, true)) {
        finish();
    }
}

bool SubframeDialog::store() {
    auto edited = editing_;
    const auto name = shownName_.bytesOf(name_->text());
    if (holdsSemicolon(name)) {
        showSemicolonRefused(form().ui);
        name_->setFocus();
        return false;
    }
    edited.record.name = name;
    edited.record.depth = toBytes(depth_->text());
    if (const int row = counter_->currentIndex(); row >= 0) {
        edited.counter = counters_[static_cast<std::size_t>(row)];
    }
    return saveSubframeAndFrame(format_, &form().ui, fwp_, edited);
}

bool editSubframe(FormContext& form, PcmFormat& format, QWidget* window, int fwp, bool isNew) {
    const auto* const record = format.subframeOfWord(fwp);
    if (record == nullptr || record->hidden) {
        return false;
    }
    if (record->locationMode == kFirstAndInterval) {
        // The interval counts from the first word, whichever of them was pointed at.
        fwp = subframeEditing(format, fwp).everyLocation.front();
    }
    SubframeDialog dialog(form, format, fwp, isNew, window);
    if (runDialog(form.door, dialog) == QDialog::Accepted) {
        return true;
    }
    if (isNew) {
        deleteSubframe(format, nullptr, fwp, true);
    }
    return dialog.streamEdited();
}

// --- the locations of a supercommutated subframe ----------------------------------------------

SubframeLocationsDialog::SubframeLocationsDialog(FormContext& form, const PcmFormat& format,
                                                 SubframeEditing& editing, QWidget* parent)
    : EditDialog(form, "SupercomSubframeDialog", QStringLiteral("Supercommutated Subframe"),
                 parent),
      format_(format),
      editing_(editing),
      words_(editing.everyLocation) {
    if (!editing.record.isSupercommutated()) {
        setNew();
    }
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeFields(*layout);
    makeList(*layout);
    layout->addWidget(look::makeDialogButtons(*this));
    showWords(0);
    updateControls();
    mode_->setFocus();
}

void SubframeLocationsDialog::makeFields(QVBoxLayout& layout) {
    const auto& record = editing_.record;
    auto* const grid = addGrid(layout, *this);
    mode_ = new QComboBox(this);
    mode_->setObjectName(QStringLiteral("locationMode"));
    const auto& modeField = subframe_field::kLocationMode.field;
    const auto& countField = subframe_field::kSupercommutated.field;
    const auto& intervalField = subframe_field::kInterval.field;
    for (const auto& choice : modeField.choices) {
        mode_->addItem(toQString(choice.text));
    }
    mode_->setCurrentIndex(record.locationMode == kEveryLocation ? 1 : 0);
    addRow(*grid, modeField.label, *mode_);
    count_ = makeText("numberOfLocations", countField, true, kNumberWide, this);
    count_->setText(record.isSupercommutated() ? toQString(record.supercommutated.view())
                                               : QString());
    addRow(*grid, countField.label, *count_);
    interval_ = makeText("interval", intervalField, true, kNumberWide, this);
    interval_->setText(record.isSupercommutated() ? toQString(record.interval.view()) : QString());
    addRow(*grid, intervalField.label, *interval_);
    connect(mode_, &QComboBox::activated, this, [this] {
        markChanged();
        updateControls();
    });
    connect(count_, &QLineEdit::textEdited, this, [this] { markChanged(); });
    connect(interval_, &QLineEdit::textEdited, this, [this] { markChanged(); });
}

void SubframeLocationsDialog::makeList(QVBoxLayout& layout) {
    list_ = new EntryList(this);
    list_->setObjectName(QStringLiteral("wordPositions"));
    layout.addWidget(look::addLabel(QStringLiteral("Word Positions:"), *list_));
    layout.addWidget(list_, 1);
    auto* const row = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, const QString& icon) {
        auto* const button = look::makeButton(name, text, icon, this);
        button->setAutoDefault(false);
        row->addWidget(button);
        return button;
    };
    add_ = add("add", QStringLiteral("&Add"), QStringLiteral("add"));
    edit_ = add("edit", QStringLiteral("&Edit"), QStringLiteral("edit"));
    delete_ = add("delete", QStringLiteral("&Delete"), QStringLiteral("delete"));
    row->addStretch();
    layout.addLayout(row);
    connect(add_, &QPushButton::clicked, this, &SubframeLocationsDialog::addWord);
    connect(edit_, &QPushButton::clicked, this, &SubframeLocationsDialog::editWord);
    connect(delete_, &QPushButton::clicked, this, &SubframeLocationsDialog::deleteWord);
    connect(list_, &QListWidget::itemActivated, this, &SubframeLocationsDialog::editWord);
    connect(list_, &QListWidget::currentRowChanged, this, &SubframeLocationsDialog::updateControls);
}

bool SubframeLocationsDialog::everyLocation() const {
    return mode_->currentIndex() == 1;
}

void SubframeLocationsDialog::showWords(int selected) {
    list_->clear();
    for (const int word : words_) {
        list_->addItem(QString::number(word));
    }
    list_->setCurrentRow(std::min(selected, list_->count() - 1));
}

void SubframeLocationsDialog::updateControls() {
    const bool every = everyLocation();
    count_->setEnabled(!every);
    interval_->setEnabled(!every);
    list_->setEnabled(every);
    add_->setEnabled(every && words_.size() < std::size_t(kMostSupercomLocations));
    edit_->setEnabled(every && list_->currentRow() >= 0);
    delete_->setEnabled(every && list_->currentRow() >= 0);
}

namespace {

std::optional<long> askWord(UserInterface& ui, long initial) {
    IntegerPrompt prompt;
    prompt.title = "Enter New FWP Location";
    prompt.prompt = "Frame Word Position:";
    prompt.initial = initial;
    prompt.least = 0;  // what is too small has a message of its own
    prompt.most = kMostWords;
    return ui.enterInteger(prompt);
}

}  // namespace

void SubframeLocationsDialog::addWord() {
    const auto word = askWord(form().ui, words_.empty() ? 1 : words_.back());
    if (word && addLocation(format_, &form().ui, words_, static_cast<int>(*word))) {
        markChanged();
        showWords(0);
        updateControls();
    }
}

void SubframeLocationsDialog::editWord() {
    const int row = list_->currentRow();
    if (row < 0) {
        return;
    }
    auto edited = words_;
    const auto word = askWord(form().ui, edited[static_cast<std::size_t>(row)]);
    edited.erase(edited.begin() + row);
    if (word && addLocation(format_, &form().ui, edited, static_cast<int>(*word))) {
        words_ = std::move(edited);
        markChanged();
        showWords(row);
        updateControls();
    }
}

void SubframeLocationsDialog::deleteWord() {
    const int row = list_->currentRow();
    if (row >= 0) {
        words_.erase(words_.begin() + row);
        markChanged();
        showWords(row);
        updateControls();
    }
}

bool SubframeLocationsDialog::store() {
    auto& record = editing_.record;
    if (everyLocation()) {
        record.locationMode = kEveryLocation;
        record.supercommutated = std::to_string(words_.size());
        record.interval = "0";
        editing_.everyLocation = words_;
    } else {
        // An empty count is none, and is refused when the subframe is stored.
        const auto count = toBytes(count_->text());
        record.locationMode = kFirstAndInterval;
        record.supercommutated = count.empty() ? std::string("0") : count;
        record.interval = toBytes(interval_->text());
    }
    return true;
}

}  // namespace kavu
