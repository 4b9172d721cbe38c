#include "app/mdb/UpdateStreamDialog.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/mdb/ChangesDialog.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <set>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr const char* kUpdateTitle = "Update Stream From Database";

std::string shownText(std::string stored) {
    fromStoredForm(stored);
    return stored;
}

std::vector<ShownChange> shownChanges(const std::vector<StreamUpdateRow>& rows) {
    std::vector<ShownChange> changes;
    changes.reserve(rows.size());
    for (const auto& row : rows) {
        changes.push_back({.name = row.name,
                           .field = std::string(mdbFields()[row.place.second].label),
                           .before = shownText(row.before),
                           .after = shownText(row.after)});
    }
    return changes;
}

std::string previewText(const std::vector<StreamUpdateRow>& rows,
                        const StreamUpdateChoice& choice) {
    std::set<std::string> names;
    for (const auto& row : rows) {
        names.insert(row.name);
    }
    auto text = rows.empty() ? std::string("No value will change.")
                             : formatPrintf(
                                   "%d values of %d measurements will change. What has no "
                                   "tick stays as it is.",
                                   rows.size(), names.size());
    text += " Measurements without an EU definition get one.";
    if (choice.autoAdd.root || choice.autoAdd.children) {
        text += choice.autoAdd.root && choice.autoAdd.children
                    ? " Root words and children are added."
                : choice.autoAdd.root ? " Root words are added."
                                      : " Children are added.";
    }
    return text;
}

/// Takes out of the choice what has lost its tick. A record that keeps none of its changes is left
/// alone, and without any tick at all nothing changes but what comes with the family.
void leaveOutUnticked(const std::vector<StreamUpdateRow>& rows,
                      const std::vector<ShownChange>& changes, StreamUpdateChoice& choice) {
    std::set<std::size_t> ticked;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (changes[i].isTicked) {
            ticked.insert(rows[i].place.first);
        } else {
            choice.without.insert(rows[i].place);
        }
    }
    for (const auto& row : rows) {
        if (!ticked.contains(row.place.first)) {
            choice.withoutRecords.insert(row.place.first);
        }
    }
    if (ticked.empty() && !rows.empty()) {
        choice.fields.reset();
    }
}

}  // namespace

UpdateStreamDialog::UpdateStreamDialog(FormContext& form, const std::string& database,
                                       const StreamUpdateChoice& choice, QWidget* parent)
    : HelpedDialog(form, "MDB_UPDATE", QLatin1String(kUpdateTitle), parent) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    auto* const path =
        look::makeNote(QStringLiteral("Database in use: ") + toQString(database), this);
    path->setObjectName(QStringLiteral("database"));
    column->addWidget(path);
    auto* const grid = new QGridLayout;
    column->addLayout(grid);
    grid->addWidget(makeBox(QStringLiteral("Word"), mdbfield::kMask, mdbfield::kParity, 2, choice),
                    0, 0);
    grid->addWidget(makeBox(QStringLiteral("Point Of Contact"), 22, 25, 2, choice), 0, 1);
    grid->addWidget(
        makeBox(QStringLiteral("Transducer"), mdbfield::kFirstConversion, 21, 2, choice), 1, 0);
    grid->addWidget(makeBox(QStringLiteral("Measurement"), mdbfield::kDescription,
                            mdbfield::kSampleRate, 2, choice),
                    1, 1);
    grid->addWidget(
        makeBox(QStringLiteral("Conversion"), mdbfield::kType, mdbfield::kData, 2, choice), 2, 0);
    grid->addWidget(makeFamily(choice), 2, 1);
    auto* const row = new QHBoxLayout;
    for (const bool on : {true, false}) {
        auto* const button = look::makeButton(
            on ? "all" : "none",
            on ? QStringLiteral("Choose &All") : QStringLiteral("Choose &None"), {}, this);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, on] {
            for (const auto& [field, box] : fields_) {
                box->setChecked(on);
            }
        });
        row->addWidget(button);
    }
    row->addStretch(1);
    column->addLayout(row);
    column->addWidget(
        look::makeNote(QStringLiteral("What will change is shown before it is done."), this));
    column->addStretch(1);
    column->addWidget(look::makeDialogButtons(*this));
}

QWidget* UpdateStreamDialog::makeBox(const QString& title, std::size_t first, std::size_t last,
                                     int columns, const StreamUpdateChoice& choice) {
    auto* const box = new QGroupBox(title, this);
    auto* const grid = new QGridLayout(box);
    int count = 0;
    for (auto field = first; field <= last; ++field) {
        const auto label = toQString(mdbFields()[field].label);
        auto* const made = new QCheckBox(label, box);
        made->setObjectName(toQString(formatPrintf("MDBU%d", field)));
        made->setChecked(choice.fields.test(field));
        grid->addWidget(made, count / columns, count % columns);
        ++count;
        fields_.emplace_back(field, made);
    }
    return box;
}

QWidget* UpdateStreamDialog::makeFamily(const StreamUpdateChoice& choice) {
    auto* const box = new QGroupBox(QStringLiteral("Automatically Add"), this);
    auto* const row = new QHBoxLayout(box);
    addRoot_ = new QCheckBox(QStringLiteral("'&Root Word'"), box);
    addRoot_->setObjectName(QStringLiteral("MDBAddRoot"));
    addRoot_->setChecked(choice.autoAdd.root);
    addChildren_ = new QCheckBox(QStringLiteral("'&Children'"), box);
    addChildren_->setObjectName(QStringLiteral("MDBAddChildren"));
    addChildren_->setChecked(choice.autoAdd.children);
    row->addWidget(addRoot_);
    row->addWidget(addChildren_);
    return box;
}

StreamUpdateChoice UpdateStreamDialog::choice() const {
    StreamUpdateChoice chosen;
    for (const auto& [field, box] : fields_) {
        chosen.fields.set(field, box->isChecked());
    }
    chosen.autoAdd.root = addRoot_->isChecked();
    chosen.autoAdd.children = addChildren_->isChecked();
    return chosen;
}

bool runStreamUpdate(FormContext& form, DatabaseWork& work, QWidget* parent) {
    UpdateStreamDialog dialog(form, work.database.path(), storedUpdateChoice(form.settings),
                              parent);
    if (runDialog(form.door, dialog) != QDialog::Accepted) {
        return false;
    }
    auto choice = dialog.choice();
    storeUpdateFields(form.settings, choice);
    form.settings.overrideForThisRun(setting::kDatabaseAddsRoot, choice.autoAdd.root ? 1 : 0);
    form.settings.overrideForThisRun(setting::kDatabaseAddsChildren,
                                     choice.autoAdd.children ? 1 : 0);
    const auto rows = previewStreamUpdate(work, &form.ui, choice);
    if (!rows) {
        return false;
    }
    ChangesSetup setup;
    setup.resourceName = "MDB_UPDATE_PREVIEW";
    setup.title = kUpdateTitle;
    setup.text = previewText(*rows, choice);
    setup.hasTicks = true;
    ChangesDialog preview(form, setup, shownChanges(*rows), parent);
    if (runDialog(form.door, preview) != QDialog::Accepted) {
        return false;
    }
    leaveOutUnticked(*rows, preview.changes(), choice);
    return updateStreamFromDatabase(work, &form.ui, choice).done && !choice.isIdle();
}

}  // namespace kavu
