#include "app/mdb/ImportWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/mdb/ProfileDialog.h"
#include "core/talk/ProfileSettings.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/operations/DatabaseWork.h"
#include "mdb/operations/StreamSave.h"
#include "mdb/record/MdbFields.h"

#include <algorithm>

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableWidget>

namespace kavu {

namespace {

constexpr const char* kTargetPrompt = "Enter KAVU-9 Measurement Database To Be Created";

}  // namespace

// --- what is entered -----------------------------------------------------------------------------

ImportKind ImportWindow::kind() const {
    return static_cast<ImportKind>(kind_->currentIndex());
}

MdbVersion ImportWindow::version() const {
    return static_cast<MdbVersion>(version_->currentIndex());
}

std::string ImportWindow::source() const {
    return toBytes(source_->text().trimmed());
}

std::string ImportWindow::target() const {
    return toBytes(target_->text().trimmed());
}

char ImportWindow::delimiter() const {
    return importDelimiters()[static_cast<std::size_t>(std::max(0, delimiter_->currentIndex()))]
        .character;
}

ImportLayout ImportWindow::layoutNow() const {
    ImportLayout layout{.kind = kind(),
                        .delimiter = delimiter(),
                        .hasHeader = header_->isChecked() && kind() == ImportKind::Delimited};
    for (const auto& reference : references_) {
        if (!reference.first.empty()) {
            layout.references.push_back(reference);
        }
    }
    return layout;
}

void ImportWindow::keepSettings() {
    const ImportSettings now{.input = source(),
                             .kind = kind(),
                             .delimiter = delimiter(),
                             .output = target(),
                             .version = version(),
                             .overwrites = overwrite_->isChecked()};
    now.write(form().settings);
}

void ImportWindow::changed() {
    if (filling_) {
        return;
    }
    keepSettings();
    delimiter_->setEnabled(kind() == ImportKind::Delimited);
    header_->setEnabled(kind() == ImportKind::Delimited);
    showPreview();
}

// --- files ---------------------------------------------------------------------------------------

void ImportWindow::openSource() {
    FilePrompt prompt;
    prompt.title = "Open File To Be Imported Into KAVU";
    prompt.filters = {{"Dbase Files", "*.dbf"},
                      {"Comma Delimited Files", "*.csv"},
                      {"Tab Delimited Files", "*.txt"},
                      {"Excel Formatted Text (Space Delimited)", "*.prn"},
                      {"ASCII Fixed Field Files", "*.asc"},
                      {"All Files", "*"}};
    prompt.filterIndex = kind() == ImportKind::Dbase ? 1 : kind() == ImportKind::Delimited ? 2 : 5;
    prompt.path = source();
    if (const auto choice = form().ui.chooseFile(prompt)) {
        takeSource(choice->path);
    }
}

/// A file says by its name what it is, and by the names of its columns where the fields are.
void ImportWindow::takeSource(const std::string& path) {
    filling_ = true;
    source_->setText(toQString(path));
    const auto before = kind();
    if (const auto found = importKindOfFile(path)) {
        kind_->setCurrentIndex(static_cast<int>(*found));
    }
    if (kind() == ImportKind::Delimited) {
        const auto& all = importDelimiters();
        const auto wanted = importDelimiterOfFile(path);
        const auto found = std::find_if(all.begin(), all.end(), [wanted](const auto& each) {
            return each.character == wanted;
        });
        delimiter_->setCurrentIndex(static_cast<int>(found - all.begin()));
    }
    if (kind() != before) {
        readReferences();
    }
    const auto matched =
        matchImportNames(importNames(form().messages, path, kind(), delimiter()), version());
    const bool hasName = !matched.empty() && matched.front().field == mdbfield::kName;
    header_->setChecked(kind() == ImportKind::Delimited && hasName);
    filling_ = false;
    if (hasName) {
        matchNames();
    }
    changed();
}

void ImportWindow::chooseTarget() {
    FilePrompt prompt;
    prompt.title = kTargetPrompt;
    prompt.filters = {{"KAVU Database Files", "*.otb"}, {"KAVU XML Database Files", "*.xml"}};
    prompt.filterIndex = version() == MdbVersion::Xml ? 2 : 1;
    prompt.path = target();
    prompt.forSaving = true;
    prompt.extension = version() == MdbVersion::Xml ? ".xml" : ".otb";
    if (const auto choice = form().ui.chooseFile(prompt)) {
        target_->setText(toQString(choice->path));
        known_.reset();
        changed();
    }
}

void ImportWindow::showFields() {
    showDbaseFields(form().messages, &form().ui, source());
}

// --- the mapping ---------------------------------------------------------------------------------

void ImportWindow::readReferences() {
    references_ = storedReferences(form().settings, kind(), version());
    showReferences();
}

void ImportWindow::showReferences() {
    const bool isFixed = kind() == ImportKind::Fixed;
    const char* const title = kind() == ImportKind::Dbase       ? "Dbase Field Name"
                              : kind() == ImportKind::Delimited ? "Field #"
                                                                : "Start Column";
    const QSignalBlocker quiet(mapping_);
    mapping_->setColumnCount(isFixed ? 4 : 3);
    mapping_->setHorizontalHeaderLabels({QStringLiteral("#"),
                                         QStringLiteral("KAVU-9 Database Field"),
                                         QLatin1String(title), QStringLiteral("Field Size")});
    auto& head = *mapping_->horizontalHeader();
    for (int column = 2; column < mapping_->columnCount(); ++column) {
        head.setSectionResizeMode(column, QHeaderView::Interactive);
        mapping_->setColumnWidth(column, head.sectionSizeHint(column));
    }
    head.setSectionResizeMode(1, QHeaderView::Stretch);
    mapping_->setRowCount(static_cast<int>(references_.size()));
    int row = 0;
    for (const auto& reference : references_) {
        const std::string texts[] = {std::to_string(row + 1),
                                     std::string(mdbFields()[reference.field].label),
                                     reference.first, reference.second};
        for (int column = 0; column < mapping_->columnCount(); ++column) {
            auto* const item = new QTableWidgetItem(toQString(texts[column]));
            item->setFlags(column < 2
                               ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                               : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
            mapping_->setItem(row, column, item);
        }
        ++row;
    }
}

void ImportWindow::setReference(std::size_t field, const std::string& first,
                                const std::string& second) {
    for (auto& reference : references_) {
        if (reference.field == field) {
            reference.first = first;
            reference.second = second;
            storeReference(form().settings, kind(), version(), reference);
        }
    }
}

void ImportWindow::editReference() {
    const int row = mapping_->currentRow();
    if (row < 0) {
        return;
    }
    const auto reference = references_[static_cast<std::size_t>(row)];
    const auto title = std::string(mdbFields()[reference.field].label);
    std::optional<std::vector<std::string>> entered;
    if (kind() == ImportKind::Fixed) {
        entered = form().ui.enterTexts(
            title,
            {{.title = title, .prompt = "Enter Starting Column", .initial = reference.first},
             {.title = title, .prompt = "Enter New Field Size", .initial = reference.second}});
    } else {
        const bool isTable = kind() == ImportKind::Dbase;
        TextPrompt prompt{
            .title = title,
            .prompt = isTable ? "Enter New Dbase Field Name" : "Enter New Field # (1-n)",
            .initial = reference.first};
        if (isTable || header_->isChecked()) {
            prompt.listed = importNames(form().messages, source(), kind(), delimiter());
        }
        if (auto text = form().ui.enterText(prompt)) {
            entered = std::vector<std::string>{std::move(*text), std::string()};
        }
    }
    if (entered && entered->size() == 2) {
        setReference(reference.field, (*entered)[0], (*entered)[1]);
        showReferences();
        mapping_->setCurrentCell(row, 2);
        changed();
    }
}

void ImportWindow::clearReference() {
    const int row = mapping_->currentRow();
    if (row >= 0) {
        setReference(references_[static_cast<std::size_t>(row)].field, {}, {});
        showReferences();
        mapping_->setCurrentCell(row, 2);
        changed();
    }
}

void ImportWindow::matchNames() {
    const auto names = importNames(form().messages, source(), kind(), delimiter());
    const auto matched = matchImportNames(names, version());
    if (matched.empty()) {
        showBox(&form().ui, "No column of the file is named like a field of the database.",
                toBytes(windowTitle()), Icon::Information);
        return;
    }
    // The others are of another file: their columns are not in this one.
    for (const auto& reference : std::vector<ImportReference>(references_)) {
        const auto found = std::find_if(
            matched.begin(), matched.end(),
            [&](const ImportReference& each) { return each.field == reference.field; });
        setReference(reference.field, found == matched.end() ? std::string() : found->first, {});
    }
    if (kind() == ImportKind::Delimited) {
        const QSignalBlocker quiet(header_);
        header_->setChecked(true);
    }
    showReferences();
    changed();
}

// --- profiles ------------------------------------------------------------------------------------

void ImportWindow::loadProfile() {
    ProfileDialog dialog(form(), ProfileDialog::Purpose::Load, {}, this);
    if (runDialog(form().door, dialog) != QDialog::Accepted) {
        return;
    }
    const auto profile = loadImportProfile(form().settings, dialog.title());
    if (!profile) {
        return;
    }
    filling_ = true;
    kind_->setCurrentIndex(static_cast<int>(profile->layout.kind));
    const auto& all = importDelimiters();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].character == profile->layout.delimiter) {
            delimiter_->setCurrentIndex(static_cast<int>(i));
        }
    }
    header_->setChecked(profile->layout.hasHeader);
    readReferences();
    for (const auto& reference : std::vector<ImportReference>(references_)) {
        const auto* const stored = profile->layout.referenceOf(reference.field);
        setReference(reference.field, stored == nullptr ? std::string() : stored->first,
                     stored == nullptr ? std::string() : stored->second);
    }
    showReferences();
    filling_ = false;
    changed();
}

void ImportWindow::saveProfile() {
    ProfileDialog dialog(form(), ProfileDialog::Purpose::Save, {}, this);
    if (runDialog(form().door, dialog) == QDialog::Accepted) {
        (void)saveImportProfile(form().settings, {dialog.title(), layoutNow()}, version());
    }
}

// --- the import ----------------------------------------------------------------------------------

void ImportWindow::showPreview() {
    const auto layout = layoutNow();
    if (known_ == nullptr && !target().empty()) {
        known_ = std::make_unique<MeasurementDatabase>(form().messages, target(), version(),
                                                       sampleRateOptions(form().settings));
        (void)known_->open();
    }
    const ImportInput input{source(), layout, version()};
    const auto rows = source().empty()
                          ? std::vector<ImportPreviewRow>()
                          : previewImport(document_, input, known_.get(), overwrite_->isChecked());
    QStringList titles = {QStringLiteral("Row"), QStringLiteral("Not Imported Because")};
    for (const auto& reference : layout.references) {
        titles.append(toQString(mdbFields()[reference.field].label));
    }
    preview_->clear();
    preview_->setColumnCount(static_cast<int>(titles.size()));
    preview_->setHorizontalHeaderLabels(titles);
    preview_->setRowCount(static_cast<int>(rows.size()));
    std::size_t skipped = 0;
    for (int row = 0; row < preview_->rowCount(); ++row) {
        const auto& shown = rows[static_cast<std::size_t>(row)];
        skipped += shown.skipped.empty() ? 0 : 1;
        std::vector<std::string> texts = {std::to_string(shown.number), shown.skipped};
        for (const auto& reference : layout.references) {
            fromStoredForm(texts.emplace_back(shown.record[reference.field]));
        }
        for (std::size_t column = 0; column < texts.size(); ++column) {
            auto* const item = new QTableWidgetItem(toQString(texts[column]).simplified());
            item->setFlags(shown.skipped.empty() || column < 2
                               ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                               : Qt::ItemIsSelectable);
            preview_->setItem(row, static_cast<int>(column), item);
        }
    }
    preview_->resizeColumnsToContents();
    for (int column = 0; column < preview_->columnCount(); ++column) {
        const int most = std::max(look::charactersWide(*this, 30),
                                  preview_->horizontalHeader()->sectionSizeHint(column));
        preview_->setColumnWidth(column, std::min(preview_->columnWidth(column), most));
    }
    state_->setText(rows.empty() ? QStringLiteral("There is nothing to import yet.")
                    : skipped == 0
                        ? QStringLiteral("The first %1 rows").arg(rows.size())
                        : QStringLiteral("The first %1 rows; %2 of them are not imported")
                              .arg(rows.size())
                              .arg(skipped));
}

void ImportWindow::convert() {
    if (target().empty()) {
        showBox(&form().ui, "Enter the database that takes the file.", toBytes(windowTitle()),
                Icon::Warning);
        target_->setFocus();
        return;
    }
    const bool hasRecords = known_ != nullptr && known_->isOpen() && known_->recordCount() > 0;
    if (overwrite_->isChecked() && hasRecords &&
        showBox(&form().ui, kEraseDatabaseText, kDeleteDatabaseTitle, Icon::Question,
                Buttons::YesNo, Button::No) != Button::Yes) {
        return;
    }
    const auto layout = layoutNow();
    MeasurementDatabase database(form().messages, target(), version(),
                                 sampleRateOptions(form().settings));
    (void)importFile(document_, &form().ui, {source(), layout, version()}, database,
                     overwrite_->isChecked());
    known_.reset();
    showPreview();
}

void importExternalFile(FormContext& form, DocumentContext& document, QWidget* parent) {
    ImportWindow window(form, document, parent);
    runDialog(form.door, window);
}

}  // namespace kavu
