#include "app/pcm/TaggedDataDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/Messages.h"
#include "pcm/PcmFormat.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kTaggedTitle[] = "Tagged Data Definitions";

ListRow shownRow(const TaggedMeasurement& measurement) {
    const auto length = measurement.values.find(tagged_code::kWordLength);
    return {measurement.name(), length == measurement.values.end() ? "" : length->second,
            std::to_string(measurement.tags.size())};
}

/// The entry of a choice that stands for a stored value; others are shown as they are.
std::string shownCell(const Field& field, const FieldValues& values, int edition) {
    const auto it = values.find(field.code);
    const auto stored = it == values.end() ? std::string() : it->second;
    const auto choices = choicesOf(field, edition);
    const int index = choiceIndex(choices, stored);
    return index < 0 ? stored : std::string(choices[static_cast<std::size_t>(index)].text);
}

std::string storedTag(const Field& field, const std::string& shown, int edition) {
    for (const auto& choice : choicesOf(field, edition)) {
        if (choice.text == shown) {
            return storedChoice(choice, field.limit);
        }
    }
    return shown;
}

}  // namespace

TaggedDataDialog::TaggedDataDialog(FormContext& form, PcmFormat& format,
                                   std::vector<TaggedMeasurement> measurements, QWidget* parent)
    : EditDialog(form, "TaggedDataDefinitions", QLatin1String(kTaggedTitle), parent),
      format_(format),
      measurements_(std::move(measurements)) {
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    ListSetup setup;
    setup.columns = {{.title = "Measurement Name"},
                     {.title = "Word Length", .kind = ColumnKind::Integer},
                     {.title = "Tags", .kind = ColumnKind::Integer}};
    setup.canSort = false;  // the rows go in step with the measurements
    list_ = new EditableList(form, "taggedMeasurements", setup, this);
    list_->setMinimumSize(look::charactersWide(*this, 60), look::unit(*this) * 24);
    layout->addWidget(list_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    std::vector<ListRow> rows;
    for (const auto& measurement : measurements_) {
        rows.push_back(shownRow(measurement));
    }
    list_->setRows(std::move(rows));
    list_->rowEditor = [this](int row, const ListRow&) -> std::optional<ListRow> {
        if (!editMeasurement(row)) {
            return std::nullopt;
        }
        return shownRow(measurements_[static_cast<std::size_t>(row)]);
    };
    list_->mayDelete = [this](int row) {
        if (this->form().messages.showTitled(&this->form().ui, -title::kDeleteEntry, kTaggedTitle,
                                             kYesNoBox) != Button::Yes) {
            return false;
        }
        measurements_.erase(measurements_.begin() + row);
        return true;
    };
    connect(list_, &EditableList::changed, this, [this] { markChanged(); });
}

bool TaggedDataDialog::editMeasurement(int row) {
    const auto at = static_cast<std::size_t>(row);
    const bool isNew = at >= measurements_.size();
    auto measurement = isNew ? TaggedMeasurement{} : measurements_[at];
    auto others = measurements_;
    if (!isNew) {
        others.erase(others.begin() + row);
    }
    TaggedMeasurementDialog dialog(form(), format_, measurement, std::move(others), isNew, this);
    if (runDialog(form().door, dialog) != QDialog::Accepted) {
        return false;
    }
    if (isNew) {
        measurements_.push_back(std::move(measurement));
    } else {
        measurements_[at] = std::move(measurement);
    }
    return true;
}

bool TaggedDataDialog::store() {
    return storeTaggedData(format_, &form().ui, measurements_);
}

// --- one measurement --------------------------------------------------------------------------

TaggedMeasurementDialog::TaggedMeasurementDialog(FormContext& form, const PcmFormat& format,
                                                 TaggedMeasurement& measurement,
                                                 std::vector<TaggedMeasurement> others, bool isNew,
                                                 QWidget* parent)
    : EditDialog(form, "TaggedMeasurement",
                 isNew ? QStringLiteral("New Tagged Measurement")
                       : QStringLiteral("Edit Tagged Measurement"),
                 parent),
      format_(format),
      measurement_(measurement),
      others_(std::move(others)) {
    if (isNew) {
        setNew();
    }
    auto* const layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    fields_ = new FieldForm(form, taggedFields(), {}, this);
    layout->addWidget(fields_);
    makeTagList();
    layout->addWidget(look::makeDialogButtons(*this));
    fields_->setValues(measurement.values);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    fields_->control(tagged_code::kName)->setFocus();
}

void TaggedMeasurementDialog::makeTagList() {
    auto* const box = new QGroupBox(QStringLiteral("Tags"), this);
    auto* const inside = new QVBoxLayout(box);
    ListSetup setup;
    for (const auto& field : taggedTagFields()) {
        ListColumn column{.title = std::string(field.label),
                          .limit = field.limit,
                          .objectName = std::string(field.code)};
        if (field.kind == FieldKind::Choice) {
            column.kind = ColumnKind::Choice;
            column.limit = 0;  // it is that of what is stored
            for (const auto& choice : choicesOf(field, form().edition)) {
                column.choices.emplace_back(choice.text);
            }
        }
        setup.columns.push_back(std::move(column));
    }
    setup.mostRows = static_cast<int>(kMostTags);
    setup.canMove = true;
    setup.canSort = false;
    setup.rowDialogTitle = "Tag";
    tags_ = new EditableList(form(), "tags", setup, box);
    inside->addWidget(tags_);
    layout()->addWidget(box);
    std::vector<ListRow> rows;
    for (const auto& tag : measurement_.tags) {
        auto& cells = rows.emplace_back();
        for (const auto& field : taggedTagFields()) {
            cells.push_back(shownCell(field, tag.values, form().edition));
        }
    }
    tags_->setRows(std::move(rows));
    connect(tags_, &EditableList::changed, this, [this] { markChanged(); });
}

void TaggedMeasurementDialog::storeTags() {
    measurement_.tags.clear();
    const auto fields = taggedTagFields();
    for (const auto& cells : tags_->rows()) {
        auto& tag = measurement_.tags.emplace_back();
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (auto stored = storedTag(fields[i], cells[i], form().edition); !stored.empty()) {
                tag.values[std::string(fields[i].code)] = std::move(stored);
            }
        }
    }
}

bool TaggedMeasurementDialog::store() {
    if (!fields_->validate()) {
        return false;
    }
    const auto name = fields_->value(tagged_code::kName);
    if ((name.empty() || name != measurement_.name()) &&
        !checkTaggedName(format_, &form().ui, others_, name)) {
        fields_->control(tagged_code::kName)->setFocus();
        return false;
    }
    fields_->storeValues(measurement_.values);
    storeTags();
    return true;
}

bool editTaggedData(FormContext& form, PcmFormat& format, QWidget* window) {
    auto measurements = readTaggedData(format, &form.ui);
    if (!measurements) {
        return false;
    }
    TaggedDataDialog dialog(form, format, std::move(*measurements), window);
    return runDialog(form.door, dialog) == QDialog::Accepted;
}

}  // namespace kavu
