#include "app/pcm/AsyncPlaceDialogs.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/Messages.h"
#include "core/text/Text.h"
#include "pcm/PcmFormat.h"

#include <array>

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr auto kDigitsOnly = FieldKind::Digits;
constexpr auto kIntervalFields = std::to_array<Field>({
    {.code = "firstFrameWordPosition",
     .label = "First Frame Word Position:",
     .limit = 4,
     .kind = kDigitsOnly},
    {.code = "numberOfLocations", .label = "Number Of Locations:", .limit = 3, .kind = kDigitsOnly},
    {.code = "interval", .label = "Interval:", .limit = 4, .kind = kDigitsOnly, .unit = "words"},
});
constexpr auto kPlaceFields = std::to_array<Field>({
    {.code = "frameWordPosition", .label = "Frame Word Position:", .limit = 4, .kind = kDigitsOnly},
    {.code = "mask", .label = "Bit Mask:", .limit = 64},
});
constexpr auto kFrameFields = std::to_array<Field>({
    {.code = "startFrame", .label = "Start Frame:", .limit = 3, .kind = kDigitsOnly},
    {.code = "frameInterval", .label = "Frame Interval:", .limit = 3, .kind = kDigitsOnly},
    {.code = "endFrame", .label = "End Frame:", .limit = 3, .kind = kDigitsOnly},
});
constexpr std::size_t kMostPlaces = 999;
constexpr int kMostRanges = 99;

/// The shape of a small dialog: a form of fields over the buttons.
FieldForm* makeForm(FormContext& form, std::span<const Field> fields, QDialog& dialog) {
    auto* const layout = new QVBoxLayout(&dialog);
    look::arrangeWindow(*layout, dialog);
    auto* const made = new FieldForm(form, fields, {}, &dialog);
    layout->addWidget(made);
    return made;
}
void closeForm(QDialog& dialog) {
    dialog.layout()->addWidget(look::makeDialogButtons(dialog));
}

bool askDelete(FormContext& form, const char* list) {
    return form.messages.showTitled(&form.ui, -title::kDeleteEntry, list, kYesNoBox) == Button::Yes;
}

}  // namespace

// --- EDIT_ASYNC_FORMAT2 -----------------------------------------------------------------------

AsyncIntervalDialog::AsyncIntervalDialog(FormContext& form, const PcmFormat& format,
                                         AsyncEditing& editing, QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT2", QStringLiteral("First Word And Interval"), parent),
      format_(format),
      editing_(editing),
      first_(editing.places.front()) {
    fields_ = makeForm(form, kIntervalFields, *this);
    auto* const buttons = look::makeDialogButtons(*this);
    auto* const place =
        look::makeButton("maskAndFrames", QStringLiteral("&Mask And Frames..."), {}, this);
    place->setAutoDefault(false);
    buttons->addButton(place, QDialogButtonBox::ActionRole);
    layout()->addWidget(buttons);
    FieldValues values{{"firstFrameWordPosition", std::to_string(first_.fwp)}};
    if (editing.contents.supercom.number() > 0) {
        values["numberOfLocations"] = editing.contents.supercom.str();
        values["interval"] = std::to_string(editing.contents.interval);
    }
    fields_->setValues(values);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    connect(place, &QPushButton::clicked, this, &AsyncIntervalDialog::editFirst);
}

void AsyncIntervalDialog::editFirst() {
    first_.fwp = leadingInt(fields_->value("firstFrameWordPosition"));
    AsyncPlaceDialog dialog(form(), format_, editing_.contents.isDataMerge, first_, false, this);
    if (runDialog(form().door, dialog) == QDialog::Accepted) {
        fields_->editValue("firstFrameWordPosition", std::to_string(first_.fwp));
        markChanged();
    }
}

bool AsyncIntervalDialog::store() {
    // An empty count is none, and is refused when the format is stored.
    const auto count = fields_->value("numberOfLocations");
    editing_.contents.supercom = count.empty() ? std::string("0") : count;
    editing_.contents.interval = leadingInt(fields_->value("interval"));
    first_.fwp = leadingInt(fields_->value("firstFrameWordPosition"));
    editFirstPlace(editing_, first_);
    return true;
}

// --- EDIT_ASYNC_FORMAT3 -----------------------------------------------------------------------

AsyncLocationsDialog::AsyncLocationsDialog(FormContext& form, const PcmFormat& format,
                                           AsyncEditing& editing, QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT3", QStringLiteral("Every Location"), parent),
      format_(format),
      editing_(editing),
      places_(editing.places) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    ListSetup setup;
    setup.columns = {{.title = "Frame Word Position", .kind = ColumnKind::Integer},
                     {.title = "Bit Mask"},
                     {.title = "Frames"}};
    setup.mostRows = static_cast<int>(kMostPlaces);
    setup.canSort = false;  // the rows go in step with the places
    list_ = new EditableList(form, "locations", setup, this);
    list_->setMinimumWidth(look::charactersWide(*this, 76));
    layout->addWidget(list_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    std::vector<ListRow> rows;
    for (const auto& place : places_) {
        rows.push_back(shownRow(place));
    }
    list_->setRows(std::move(rows));
    list_->rowEditor = [this](int row, const ListRow&) -> std::optional<ListRow> {
        const auto at = static_cast<std::size_t>(row);
        const bool isNew = at >= places_.size();
        auto place = isNew ? AsyncPlace{} : places_[at];
        AsyncPlaceDialog dialog(this->form(), format_, editing_.contents.isDataMerge, place, isNew,
                                this);
        if (runDialog(this->form().door, dialog) != QDialog::Accepted) {
            return std::nullopt;
        }
        if (isNew) {
            places_.push_back(place);
        } else {
            places_[at] = place;
        }
        return shownRow(place);
    };
    list_->mayDelete = [this](int row) {
        if (!askDelete(this->form(), "Async Format Locations")) {
            return false;
        }
        places_.erase(places_.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

std::vector<std::string> AsyncLocationsDialog::shownRow(const AsyncPlace& place) const {
    return {std::to_string(place.fwp), place.mask, framesText(format_, place.frames)};
}

bool AsyncLocationsDialog::store() {
    editing_.places = places_;
    return true;
}

// --- EDIT_ASYNC_FORMAT4 -----------------------------------------------------------------------

AsyncPlaceDialog::AsyncPlaceDialog(FormContext& form, const PcmFormat& format, bool isDataMerge,
                                   AsyncPlace& place, bool isNew, QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT4", QStringLiteral("Async Format Location"), parent),
      format_(format),
      place_(place),
      frames_(place.frames) {
    if (isNew) {
        setNew();
    }
    // A data merge always takes the whole word.
    fields_ = makeForm(form, std::span(kPlaceFields).first(isDataMerge ? 1 : 2), *this);
    if (hasAsyncFrames(format)) {
        makeFrameList();
    }
    closeForm(*this);
    FieldValues values{{"mask", place.mask}};
    if (place.fwp > 0) {
        values["frameWordPosition"] = std::to_string(place.fwp);
    }
    fields_->setValues(values);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

void AsyncPlaceDialog::makeFrameList() {
    auto* const box = new QGroupBox(QStringLiteral("Frames"), this);
    auto* const inside = new QVBoxLayout(box);
    ListSetup setup;
    setup.columns = {{.title = "Start Frame", .kind = ColumnKind::Integer},
                     {.title = "Frame Interval", .kind = ColumnKind::Integer},
                     {.title = "End Frame", .kind = ColumnKind::Integer}};
    setup.mostRows = kMostRanges;
    setup.canSort = false;
    list_ = new EditableList(form(), "frames", setup, box);
    inside->addWidget(list_);
    inside->addWidget(look::makeNote(QStringLiteral("Without a range it is every frame."), box));
    layout()->addWidget(box);
    const auto shown = [](const FrameRange& range) {
        return ListRow{std::to_string(range.start), std::to_string(range.interval),
                       std::to_string(range.end)};
    };
    std::vector<ListRow> rows;
    for (const auto& range : frames_) {
        rows.push_back(shown(range));
    }
    list_->setRows(std::move(rows));
    list_->rowEditor = [this, shown](int row, const ListRow&) -> std::optional<ListRow> {
        const auto at = static_cast<std::size_t>(row);
        const bool isNew = at >= frames_.size();
        auto range = isNew ? FrameRange{1, 1, format_.numberOfFrames} : frames_[at];
        AsyncFramesDialog dialog(form(), format_, range, isNew, this);
        if (runDialog(form().door, dialog) != QDialog::Accepted) {
            return std::nullopt;
        }
        if (isNew) {
            frames_.push_back(range);
        } else {
            frames_[at] = range;
        }
        return shown(range);
    };
    list_->mayDelete = [this](int row) {
        if (!askDelete(form(), "Async Format Frames")) {
            return false;
        }
        frames_.erase(frames_.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

bool AsyncPlaceDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    place_.fwp = leadingInt(fields_->value("frameWordPosition"));
    if (fields_->control("mask") != nullptr) {
        place_.mask = fields_->value("mask");
    }
    place_.frames = frames_;
    return true;
}

// --- EDIT_ASYNC_FORMAT5 -----------------------------------------------------------------------

AsyncFramesDialog::AsyncFramesDialog(FormContext& form, const PcmFormat& format, FrameRange& range,
                                     bool isNew, QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT5", QStringLiteral("Range Of Frames"), parent),
      format_(format),
      range_(range) {
    if (isNew) {
        setNew();
    }
    fields_ = makeForm(form, kFrameFields, *this);
    closeForm(*this);
    fields_->setValues({{"startFrame", std::to_string(range.start)},
                        {"frameInterval", std::to_string(range.interval)},
                        {"endFrame", std::to_string(range.end)}});
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

bool AsyncFramesDialog::store() {
    const FrameRange entered{leadingInt(fields_->value("startFrame")),
                             leadingInt(fields_->value("frameInterval")),
                             leadingInt(fields_->value("endFrame"))};
    if (!checkFrameRange(format_, &form().ui, entered)) {
        return false;
    }
    range_ = entered;
    return true;
}

}  // namespace kavu
