#include "app/framework/RowDialog.h"

#include "app/framework/ClearChoice.h"
#include "app/framework/Look.h"
#include "app/framework/Refusals.h"
#include "app/framework/ToolTip.h"
#include "app/framework/TypingRules.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// "Sub Carrier #" becomes "subCarrier".
QString camelCase(const std::string& title) {
    QString name;
    bool upper = false;
    for (const QChar c : toQString(title)) {
        if (!c.isLetterOrNumber()) {
            upper = !name.isEmpty();
        } else {
            name.append(upper ? c.toUpper() : name.isEmpty() ? c.toLower() : c);
            upper = false;
        }
    }
    return name;
}

int choiceOf(const ListColumn& column, const std::string& value) {
    const auto it = std::find_if(column.choices.begin(), column.choices.end(),
                                 [&](const auto& text) { return equalsIgnoreCase(text, value); });
    return it == column.choices.end() ? -1 : static_cast<int>(it - column.choices.begin());
}

}  // namespace

RowDialog::RowDialog(FormContext& form, const EditableList& list, const ListSetup& setup, int row,
                     const ListRow& before, bool isNew, QWidget* parent)
    : QDialog(parent),
      form_(form),
      list_(list),
      setup_(setup),
      row_(row),
      before_(before),
      isNew_(isNew) {
    setObjectName(QStringLiteral("EditRow"));
    setWindowTitle(toQString(setup.rowDialogTitle));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(look::unit(*this));
    grid->setVerticalSpacing(look::unit(*this) * 3 / 4);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);
    auto* hint = look::makeNote({}, this);
    hint->setObjectName(QStringLiteral("hint"));
    hint->setMinimumHeight(hint->fontMetrics().height());
    before_.resize(setup.columns.size());
    for (std::size_t i = 0; i < setup.columns.size(); ++i) {
        const auto& column = setup.columns[i];
        auto* control = makeControl(column, before_[i]);
        control->setEnabled(column.editable);
        auto* label = look::addLabel(toQString(column.title + ":"), *control);
        grid->addWidget(label, static_cast<int>(i), 0);
        grid->addWidget(control, static_cast<int>(i), 1);
        controls_.push_back(control);
    }
    layout->addWidget(hint);
    layout->addStretch();
    layout->addWidget(look::makeDialogButtons(*this));
    if (!controls_.empty()) {
        controls_.front()->setFocus();
    }
}

QWidget* RowDialog::makeControl(const ListColumn& column, const std::string& value) {
    const QString name =
        column.objectName.empty() ? camelCase(column.title) : toQString(column.objectName);
    shown_.emplace_back(value);
    if (column.kind == ColumnKind::Choice) {
        auto* box = new QComboBox(this);
        box->setObjectName(name);
        box->addItems(toQStrings(column.choices));
        const int index = choiceOf(column, value);
        box->setPlaceholderText(index < 0 ? toQString(value) : QString());
        box->setCurrentIndex(index);
        if (column.mayBeEmpty) {
            clearOnDelete(*box);
        }
        return box;
    }
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    auto* rule = new TypingRule(
        column.limit, false,
        [this](const QString& text) {
            if (auto* hint = findChild<QLabel*>(QStringLiteral("hint"))) {
                hint->setText(text);
            }
        },
        edit);
    rule->took(shown_.back().shown());
    edit->setText(shown_.back().shown());
    edit->setValidator(rule);
    if (const auto range = toQString(rangeOf(column)); !range.isEmpty()) {
        edit->setPlaceholderText(range);
        edit->setAccessibleDescription(range);
        edit->setToolTip(plainToolTip(range));
    }
    edit->setMinimumWidth(look::charactersWide(*edit, 36));
    connect(edit, &QLineEdit::textEdited, rule, &TypingRule::took);
    return edit;
}

std::string RowDialog::valueAt(int column) const {
    const auto i = static_cast<std::size_t>(column);
    if (const auto* box = qobject_cast<QComboBox*>(controls_[i])) {
        const int index = box->currentIndex();
        if (index < 0) {
            // A value that is no entry is held by its place until it is emptied.
            return box->placeholderText().isEmpty() ? std::string() : before_[i];
        }
        if (index == choiceOf(setup_.columns[i], before_[i])) {
            return before_[i];
        }
        return setup_.columns[i].choices[static_cast<std::size_t>(index)];
    }
    return shown_[i].bytesOf(static_cast<QLineEdit*>(controls_[i])->text());
}

ListRow RowDialog::values() const {
    ListRow row;
    for (int i = 0; i < static_cast<int>(controls_.size()); ++i) {
        row.push_back(valueAt(i));
    }
    return row;
}

void RowDialog::accept() {
    if (checkValues()) {
        QDialog::accept();
    }
}

bool RowDialog::checkValues() {
    for (int i = 0; i < static_cast<int>(controls_.size()); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const auto value = valueAt(i);
        if (!isNew_ && value == before_[at]) {
            continue;
        }
        if (const auto why = list_.refusal(row_, i, value)) {
            showBox(&form_.ui, *why, kIllegalNumber);
            controls_[at]->setFocus();
            return false;
        }
    }
    return true;
}

}  // namespace kavu
