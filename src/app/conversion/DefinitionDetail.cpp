#include "app/conversion/DefinitionDetail.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EnterValueDialog.h"
#include "app/framework/FieldForm.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "conversion/DefinitionEdit.h"
#include "core/talk/UserInterface.h"

#include <limits>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr double kMost = std::numeric_limits<double>::max();

/// A number of at most so many characters.
ValueCheck coefficientCheck(std::size_t limit) {
    return [number = doubleCheck(-kMost, kMost), length = textCheck(limit)](const auto& text) {
        auto why = number(text);
        return why ? why : length(text);
    };
}

}  // namespace

// --- the form of a table -------------------------------------------------------------------

DetailForm::DetailForm(FormContext& form, DefinitionEdit& edit, const DetailWindow& window,
                       QWidget* parent)
    : DefinitionDetail(parent), form_(form), edit_(edit), window_(window) {}

void DetailForm::build() {
    auto* const layout = new QVBoxLayout(this);
    look::arrangePart(*layout, *this);
    fields_ = new FieldForm(form_, window_.fields, {}, this);
    auto* const row = new QBoxLayout(QBoxLayout::LeftToRight);
    for (const auto& list : window_.lists) {
        if (!list.isIn(form_.edition)) {
            continue;
        }
        auto* const box = new QGroupBox(toQString(list.title), this);
        auto* const inside = new QVBoxLayout(box);
        auto* const made = makeList(list);
        inside->addWidget(made);
        row->addWidget(box, 1);
        lists_.push_back(made);
        connect(made, &EditableList::changed, this, &DefinitionDetail::changed);
    }
    // On a screen without room for them next to each other the lists are one below the other.
    if (row->minimumSize().width() > look::roomForPage(*this)) {
        row->setDirection(QBoxLayout::TopToBottom);
    }
    layout->addWidget(fields_, lists_.empty() ? 1 : 0);
    layout->addLayout(row, lists_.empty() ? 0 : 1);
    connect(fields_, &FieldForm::edited, this, [this](const QString& code) {
        emit changed();
        fieldEdited(toBytes(code));
    });
    load();
}

EditableList* DetailForm::makeList(const EuList& list) {
    ListSetup setup;
    for (const auto& column : list.columns) {
        setup.columns.push_back({.title = std::string(column.label), .limit = column.limit});
    }
    setup.mostRows = list.rowsIn(form_.edition);
    setup.canMove = true;
    setup.rowDialogTitle = "Edit " + std::string(list.title);
    auto* const made =
        new EditableList(form_, std::string(list.countCode).c_str(), std::move(setup), this);
    made->view()->setAccessibleName(toQString(list.title));
    if (!list.prompt.empty()) {
        made->rowEditor = [this, &list](int, const ListRow& before) -> std::optional<ListRow> {
            TextPrompt prompt;
            prompt.prompt = list.prompt;
            prompt.initial = before.empty() ? "" : before[0];
            prompt.limit = list.columns[0].limit;
            const auto entered = form_.ui.enterText(prompt);
            return entered && !entered->empty() ? std::optional(ListRow{*entered}) : std::nullopt;
        };
    }
    return made;
}

DefinitionValues::Rows DetailForm::shownRows(const DefinitionValues::Rows& stored) {
    return stored;
}

DefinitionValues::Rows DetailForm::storedRows(const DefinitionValues::Rows& shown) {
    return shown;
}

void DetailForm::load() {
    values_ = readDetail(edit_, window_);
    fields_->setValues(values_.fields);
    std::size_t next = 0;
    for (const auto& list : window_.lists) {
        if (list.isIn(form_.edition)) {
            lists_[next++]->setRows(shownRows(values_.lists[std::string(list.countCode)]));
        }
    }
}

bool DetailForm::validate() {
    return fields_->validate();
}

bool DetailForm::store() {
    fields_->storeValues(values_.fields);
    std::size_t next = 0;
    for (const auto& list : window_.lists) {
        if (list.isIn(form_.edition)) {
            values_.lists[std::string(list.countCode)] = storedRows(lists_[next++]->rows());
        }
    }
    return storeDetail(edit_, &form_.ui, window_, values_);
}

// --- coefficients --------------------------------------------------------------------------

CoefficientDetail::CoefficientDetail(FormContext& form, DefinitionEdit& edit,
                                     const DetailWindow& window, Derive derive, QWidget* parent)
    : DetailForm(form, edit, window, parent), derive_(std::move(derive)) {}

EditableList* CoefficientDetail::makeList(const EuList& list) {
    ListSetup setup;
    setup.columns = {
        {.title = "Term", .editable = false, .numbered = coefficientTerm},
        {.title = "Value", .kind = ColumnKind::Double, .limit = list.columns[0].limit}};
    setup.mostRows = list.rowsIn(form_.edition);
    // The place of a row is its power.
    setup.canSort = false;
    setup.canMove = true;
    auto* const made =
        new EditableList(form_, std::string(list.countCode).c_str(), std::move(setup), this);
    made->view()->setAccessibleName(toQString(list.title));
    made->rowEditor = [this](int row, const ListRow& before) { return askTerm(row, before); };
    connect(made, &EditableList::changed, this, &CoefficientDetail::numberTerms);
    return made;
}

std::optional<ListRow> CoefficientDetail::askTerm(int row, const ListRow& before) {
    const auto limit = window_.lists[0].columns[0].limit;
    EnterValueDialog dialog(form_.ui,
                            {.prompt = coefficientPrompt(row + 1),
                             .initial = before.at(1),
                             .check = coefficientCheck(limit)},
                            window());
    if (runDialog(form_.door, dialog) != QDialog::Accepted) {
        return std::nullopt;
    }
    return ListRow{coefficientTerm(row + 1), dialog.value()};
}

/// After a row has gone or moved, the rows after it have other powers.
void CoefficientDetail::numberTerms() {
    const int current = list(0).currentRow();
    auto numbered = shownRows(storedRows(list(0).rows()));
    if (numbered != list(0).rows()) {
        list(0).setRows(std::move(numbered));
        list(0).selectRow(current);
    }
}

DefinitionValues::Rows CoefficientDetail::shownRows(const DefinitionValues::Rows& stored) {
    DefinitionValues::Rows rows;
    for (const auto& row : stored) {
        rows.push_back({coefficientTerm(static_cast<int>(rows.size()) + 1), row.at(0)});
    }
    return rows;
}

DefinitionValues::Rows CoefficientDetail::storedRows(const DefinitionValues::Rows& shown) {
    DefinitionValues::Rows rows;
    for (const auto& row : shown) {
        rows.push_back({row.at(1)});
    }
    return rows;
}

void CoefficientDetail::fieldEdited(const std::string& code) {
    // Only coefficients by positive powers come from a fit of the pairs.
    if (code != "CO1" || fields().value(code) != "Y" || !store()) {
        return;
    }
    if (derive_()) {
        load();
    } else {
        showBox(&form_.ui, std::string(eutext::kNothingDerived), toBytes(window()->windowTitle()));
    }
}

bool CoefficientDetail::validate() {
    const auto& offset = window_.fields.back();
    const auto text = fields().value(offset.code);
    if (!text.empty() && text != edit_.value(offset.code)) {
        if (const auto why = coefficientCheck(offset.limit)(text)) {
            showBox(&form_.ui, *why, kIllegalNumber);
            fields().control(offset.code)->setFocus();
            return false;
        }
    }
    return DetailForm::validate();
}

}  // namespace kavu
