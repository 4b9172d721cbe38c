#include "app/groups/PamDialog.h"

#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/groups/GroupRows.h"
#include "core/talk/UserInterface.h"
#include "groups/RTracks.h"

#include <utility>

#include <QGroupBox>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kSubframes = "SF\\N";
constexpr char kPamTitle[] = "PAM Attributes";

ListSetup subframeList(int edition) {
    ListSetup setup;
    for (const auto& field : pamSubframeFields()) {
        setup.columns.push_back(columnOf(field, edition));
        if (field.kind != FieldKind::Choice) {
            // A pattern is a text of several entries.
            setup.columns.back().kind = ColumnKind::Text;
            setup.columns.back().limit = field.limit;
            setup.columns.back().choices.clear();
        }
    }
    setup.mostRows = static_cast<int>(kMostPamSubframes);
    setup.canMove = true;
    setup.rowDialogTitle = "Subframe";
    setup.name = "Subframes";
    return setup;
}

bool isChoice(const Field& field) {
    return field.kind == FieldKind::Choice;
}

}  // namespace

PamPage::PamPage(FormContext& form, DocumentContext& document, PamGroup group, QWidget* parent)
    : PropertyPage(form, "pam_info", kPamTitle, parent),
      document_(document),
      group_(std::move(group)) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    fields_ = new FieldForm(form, pamFields(), "pam_info", this);
    column->addWidget(fields_, 1);
    auto* const box = new QGroupBox(QStringLiteral("Subframes"), this);
    auto* const inside = new QVBoxLayout(box);
    rows_ = new IdentifiedList(form, "SF", subframeList(form.edition), box);
    inside->addWidget(rows_);
    column->addWidget(box, 1);
    connect(fields_, &FieldForm::edited, this, [this] { markChanged(); });
    connect(rows_, &EditableList::changed, this, [this] { markChanged(); });
}

void PamPage::load() {
    fields_->setValues(group_.record.values);
    std::vector<ListRow> rows;
    for (const auto& row : group_.record.rows(kSubframes)) {
        auto& cells = rows.emplace_back();
        for (const auto& field : pamSubframeFields()) {
            const auto value = row.value(field.code);
            cells.push_back(isChoice(field) ? textOfValue(field, form().edition, value, value)
                                            : std::string(value));
        }
    }
    rows_->setIdentifiedRows(rows);
}

bool PamPage::validate() {
    return fields_->validate();
}

bool PamPage::store() {
    fields_->storeValues(group_.record.values);
    auto& rows = group_.record.lists[std::string(kSubframes)];
    const auto before = std::exchange(rows, {});
    for (int at = 0; at < rows_->rowCount(); ++at) {
        const auto cells = rows_->cellsOfRow(at);
        auto& row = rows.emplace_back();
        const auto id = static_cast<std::size_t>(rows_->idOf(at));
        row.fileRow = id < before.size() ? before[id].fileRow : 0;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const auto& field = pamSubframeFields()[i];
            row.set(field.code,
                    isChoice(field) ? valueOfText(field, form().edition, cells[i]) : cells[i]);
        }
    }
    return storePam(document_, &form().ui, group_);
}

std::unique_ptr<PropertySheet> makePamDialog(FormContext& form, DocumentContext& document,
                                             PamGroup group) {
    auto sheet = std::make_unique<PropertySheet>(
        form, "PAM_INFO", std::string(kPamTitle) + " - Data Link: " + group.link, "");
    sheet->addPage(std::make_unique<PamPage>(form, document, std::move(group)));
    return sheet;
}

bool editPam(FormContext& form, DocumentContext& document) {
    const auto streams = pamStreams(document, &form.ui);
    if (streams.empty()) {
        showBox(&form.ui,
                "This file has no PAM stream.\n\nGive a signal of a data source the type PAM and "
                "a data link, under Multiplex/Modulation.",
                kPamTitle, Icon::Information);
        return false;
    }
    std::size_t chosen = 0;
    if (streams.size() > 1) {
        TablePrompt prompt{.title = "Select PAM Stream", .columns = {"Data Link Name"}, .rows = {}};
        for (const auto& stream : streams) {
            prompt.rows.push_back({stream.link});
        }
        const int row = form.ui.selectFromTable(prompt);
        if (row < 0 || static_cast<std::size_t>(row) >= streams.size()) {
            return false;
        }
        chosen = static_cast<std::size_t>(row);
    }
    PamGroup group;
    if (!loadPam(document, &form.ui, streams[chosen], group)) {
        return false;
    }
    const auto sheet = makePamDialog(form, document, std::move(group));
    return runPropertySheet(form, *sheet) == SheetResult::Stored;
}

}  // namespace kavu
