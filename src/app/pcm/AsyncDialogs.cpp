#include "app/pcm/AsyncDialogs.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/AsyncPlaceDialogs.h"
#include "core/talk/UserInterface.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/SubframeCodes.h"

#include <array>

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kLinkName = "dataLinkName";
constexpr std::string_view kKind = "kind";
constexpr std::string_view kType = "locationType";
constexpr std::string_view kEmbedded = "AEF";
constexpr std::string_view kMerge = "ADM";

constexpr auto kAsyncKinds = std::to_array<Choice>({
    {kEmbedded, "Async Embedded Format", ""},
    {kMerge, "Async Data Merge", ""},
});
constexpr auto kTypes = std::to_array<Choice>({
    {kNotSupercommutated, "One location", ""},
    {kFirstAndInterval, "FI - First word and interval", ""},
    {kEveryLocation, "EL - Every location", ""},
});
constexpr auto kFields = std::to_array<Field>({
    {.code = kLinkName, .label = "Data Link Name:", .limit = 32},
    {.code = kKind,
     .label = "Format:",
     .limit = 3,
     .kind = FieldKind::Choice,
     .choices = kAsyncKinds},
    {.code = kType,
     .label = "Location Type:",
     .limit = 2,
     .kind = FieldKind::Choice,
     .choices = kTypes},
});

bool isSupercommutated(const AsyncFormat& contents) {
    return !(contents.supercom == kNotSupercommutated);
}

}  // namespace

// --- EDIT_ASYNC_FORMAT1 -----------------------------------------------------------------------

AsyncFormatDialog::AsyncFormatDialog(FormContext& form, PcmFormat& format, AsyncEditing editing,
                                     QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT1",
                 editing.record == 0 ? QStringLiteral("New Async Format")
                                     : QStringLiteral("Edit Async Format"),
                 parent),
      format_(format),
      editing_(std::move(editing)) {
    if (editing_.record == 0) {
        setNew();
    }
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, kFields, {}, this);
    layout->addWidget(fields_);
    addButtons();
    const auto& contents = editing_.contents;
    fields_->setValues(
        {{std::string(kLinkName), contents.dataLinkName.str()},
         {std::string(kKind), std::string(contents.isDataMerge ? kMerge : kEmbedded)},
         {std::string(kType), isSupercommutated(contents) ? contents.locationMode.str()
                                                          : std::string(kNotSupercommutated)}});
    updateButtons();
    connect(fields_, &FieldForm::edited, this, &AsyncFormatDialog::takeEdit);
    fields_->control(kLinkName)->setFocus();
}

void AsyncFormatDialog::addButtons() {
    auto* const buttons = look::makeDialogButtons(*this);
    const auto add = [&](const char* name, const QString& text, const QString& icon) {
        auto* const button = look::makeButton(name, text, icon, this);
        button->setAutoDefault(false);
        buttons->addButton(button, QDialogButtonBox::ActionRole);
        return button;
    };
    locations_ = add("locations", QStringLiteral("&Locations..."), QStringLiteral("list"));
    merge_ = add("dataMerge", QStringLiteral("Data &Merge..."), QStringLiteral("edit"));
    auto* const remove = add("delete", QStringLiteral("&Delete"), QStringLiteral("delete"));
    remove->setEnabled(editing_.record > 0);
    layout()->addWidget(buttons);
    connect(locations_, &QPushButton::clicked, this, &AsyncFormatDialog::editLocations);
    connect(merge_, &QPushButton::clicked, this, &AsyncFormatDialog::editMerge);
    connect(remove, &QPushButton::clicked, this, &AsyncFormatDialog::deleteFormat);
}

void AsyncFormatDialog::takeEdit(const QString& code) {
    markChanged();
    if (toBytes(code) != kLinkName) {
        takeChoices();
        updateButtons();
    }
}

void AsyncFormatDialog::takeChoices() {
    auto& contents = editing_.contents;
    contents.isDataMerge = fields_->value(kKind) == kMerge;
    const auto type = fields_->value(kType);
    if (type == kNotSupercommutated) {
        contents.supercom = kNotSupercommutated;
        contents.locationMode = kNoLocationMode;
        return;
    }
    // Without a number yet, and without a type: the stream refuses both when it is stored.
    if (!isSupercommutated(contents)) {
        contents.supercom = "0";
        contents.interval = 0;
    }
    contents.locationMode = type;
}

void AsyncFormatDialog::updateButtons() {
    merge_->setEnabled(editing_.contents.isDataMerge);
    locations_->setEnabled(!fields_->value(kType).empty());
}

void AsyncFormatDialog::editLocations() {
    auto& contents = editing_.contents;
    const auto run = [this](EditDialog& dialog) {
        if (runDialog(form().door, dialog) == QDialog::Accepted) {
            markChanged();
        }
    };
    if (!isSupercommutated(contents)) {
        AsyncPlaceDialog dialog(form(), format_, contents.isDataMerge, editing_.places.front(),
                                false, this);
        run(dialog);
    } else if (contents.locationMode == kEveryLocation) {
        AsyncLocationsDialog dialog(form(), format_, editing_, this);
        run(dialog);
        if (editing_.places.empty()) {
            editing_.places.emplace_back();
        }
    } else {
        AsyncIntervalDialog dialog(form(), format_, editing_, this);
        run(dialog);
    }
}

void AsyncFormatDialog::editMerge() {
    DataMergeDialog dialog(form(), editing_.contents, this);
    if (runDialog(form().door, dialog) == QDialog::Accepted) {
        markChanged();
    }
}

void AsyncFormatDialog::deleteFormat() {
    if (deleteAsyncFormat(format_, &form().ui, editing_.record)) {
        finish();
    }
}

bool AsyncFormatDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    editing_.contents.dataLinkName = fields_->value(kLinkName);
    return saveAsyncEditing(format_, &form().ui, editing_);
}

// --- EDIT_ASYNC_FORMAT6 -----------------------------------------------------------------------

DataMergeDialog::DataMergeDialog(FormContext& form, AsyncFormat& contents, QWidget* parent)
    : EditDialog(form, "EDIT_ASYNC_FORMAT6", QStringLiteral("Data Merge"), parent),
      contents_(contents) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, dataMergeFields(), {}, this);
    layout->addWidget(fields_);
    layout->addWidget(look::makeDialogButtons(*this));
    fields_->setValues(dataMergeValues(contents));
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
}

bool DataMergeDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    auto values = dataMergeValues(contents_);
    fields_->storeValues(values);
    setDataMergeValues(contents_, values);
    return true;
}

// --- at a place -------------------------------------------------------------------------------

bool editAsyncAt(FormContext& form, PcmFormat& format, QWidget* window, int fwp, int fn) {
    const auto records = asyncRecordsAt(format, fwp, fn);
    int record = records.empty() ? 0 : records.front();
    if (records.size() > 1) {
        std::vector<std::string> names;
        for (const int number : records) {
            names.push_back(
                format.asyncFormats[static_cast<std::size_t>(number - 1)].dataLinkName.str());
        }
        const int choice = form.ui.chooseFromList("Select Async Format", names);
        if (choice < 0) {
            return false;
        }
        record = records[static_cast<std::size_t>(choice)];
    }
    AsyncFormatDialog dialog(form, format, asyncEditing(format, record, fwp), window);
    return runDialog(form.door, dialog) == QDialog::Accepted;
}

}  // namespace kavu
