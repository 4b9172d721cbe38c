#include "app/conversion/EuDialogs.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/Refusals.h"
#include "conversion/EuVocabulary.h"
#include "core/talk/Messages.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

bool mayDeleteUnder(FormContext& form, std::string_view title) {
    return form.messages.showTitled(&form.ui, -message::kAreYouSure, std::string(title),
                                    kYesNoBox) == Button::Yes;
}

QVBoxLayout* beginColumn(QDialog& dialog, const char* name, std::string_view title) {
    dialog.setObjectName(QLatin1String(name));
    dialog.setWindowTitle(toQString(title));
    auto* const column = new QVBoxLayout(&dialog);
    look::arrangeWindow(*column, dialog);
    return column;
}

}  // namespace

// --- weights of the bits -------------------------------------------------------------------

BitWeightDialog::BitWeightDialog(FormContext& form, std::vector<ListRow> rows, QWidget* parent)
    : QDialog(parent), form_(form) {
    const auto& weights = bitWeightList();
    auto* const column = beginColumn(*this, "BIT_WEIGHTS", weights.title);
    ListSetup setup;
    setup.columns = {{.title = std::string(weights.columns[0].label),
                      .kind = ColumnKind::Integer,
                      .limit = weights.columns[0].limit,
                      .least = 1,
                      .most = 999,
                      .unique = true,
                      .required = true,
                      .objectName = "BWTB"},
                     {.title = std::string(weights.columns[1].label),
                      .limit = weights.columns[1].limit,
                      .required = true,
                      .objectName = "BWTV",
                      .check = [](const std::string& text) -> std::optional<std::string> {
                          if (isBitWeight(text)) {
                              return std::nullopt;
                          }
                          return "Value entered is not a valid floating point number. Please "
                                 "re-enter.";
                      }}};
    setup.mostRows = weights.mostRows;
    setup.rowDialogTitle = "Edit Bit Weight";
    list_ = new EditableList(form_, "BWT\\N", std::move(setup), this);
    list_->view()->setAccessibleName(toQString(weights.title));
    list_->view()->setMinimumWidth(look::charactersWide(*this, 64));
    list_->mayDelete = [this](int) { return mayDeleteUnder(form_, eutext::kDeleteBitWeight); };
    list_->setRows(std::move(rows));
    column->addWidget(list_, 1);
    column->addWidget(look::makeDialogButtons(*this));
}

// --- import --------------------------------------------------------------------------------

ImportValuesDialog::ImportValuesDialog(const std::vector<std::string>& names,
                                       const std::string& preselected, QWidget* parent)
    : QDialog(parent), names_(names) {
    auto* const column = beginColumn(*this, "IMPORT_EU_VALUES", eutext::kImport);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("names"));
    list_->setUniformItemSizes(true);
    list_->addItems(toQStrings(names_));
    list_->setMinimumHeight(look::unit(*this) * 24);
    auto* const label = look::addLabel(toQString(eutext::kImportPrompt), *list_);
    label->setWordWrap(true);
    auto* const find = new QLineEdit(this);
    find->setObjectName(QStringLiteral("find"));
    find->setClearButtonEnabled(true);
    column->addWidget(label);
    column->addWidget(list_, 1);
    column->addWidget(look::addLabel(QStringLiteral("Find:"), *find));
    column->addWidget(find);
    auto* const buttons = look::makeDialogButtons(*this);
    column->addWidget(buttons);
    auto* const ok = buttons->button(QDialogButtonBox::Ok);
    const auto last = std::find(names_.begin(), names_.end(), preselected);
    list_->setCurrentRow(
        last == names_.end() || preselected.empty() ? 0 : static_cast<int>(last - names_.begin()));
    connect(find, &QLineEdit::textEdited, this, [this, ok](const QString& text) {
        for (int i = 0; i < list_->count(); ++i) {
            auto* const item = list_->item(i);
            item->setHidden(!item->text().contains(text, Qt::CaseInsensitive));
        }
        const auto* const current = list_->currentItem();
        ok->setEnabled(current != nullptr && !current->isHidden());
    });
    connect(list_, &QListWidget::currentRowChanged, this,
            [ok](int row) { ok->setEnabled(row >= 0); });
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    setMinimumWidth(look::charactersWide(*this, 56));
}

std::string ImportValuesDialog::chosen() const {
    const int row = list_->currentRow();
    return row < 0 ? std::string() : names_[static_cast<std::size_t>(row)];
}

// --- strings of the comment ----------------------------------------------------------------

CommentOptionsDialog::CommentOptionsDialog(FormContext& form, DocumentContext& document,
                                           QWidget* parent)
    : QDialog(parent), form_(form), document_(document) {
    auto* const column = beginColumn(*this, "EUCommentOptions", "Comment Field Options");
    column->addWidget(look::makeNote(
        QStringLiteral("Enabled strings become lines of the comment of every new data conversion "
                       "record."),
        this));
    ListSetup setup;
    const std::vector<std::string> yesNo = {"Yes", "No"};
    setup.columns = {
        {.title = "Enabled?", .kind = ColumnKind::Choice, .choices = yesNo, .initial = "Yes"},
        {.title = "Include In Reports?",
         .kind = ColumnKind::Choice,
         .choices = yesNo,
         .initial = "Yes"},
        {.title = "Text To Be Added To Comment", .required = true},
        {.title = "Default Value"}};
    setup.mostRows = 1000;
    setup.canMove = true;
    setup.rowDialogTitle = "Edit EU Comment String";
    list_ = new EditableList(form_, "strings", std::move(setup), this);
    list_->view()->setAccessibleName(QStringLiteral("Comment strings"));
    list_->view()->setMinimumWidth(look::charactersWide(*this, 112));
    list_->mayDelete = [this](int) { return mayDeleteUnder(form_, eutext::kDeleteCommentString); };
    std::vector<ListRow> rows;
    for (const auto& string : readCommentStrings(document)) {
        rows.push_back({string.enabled ? "Yes" : "No", string.inReports ? "Yes" : "No", string.text,
                        string.value});
    }
    list_->setRows(std::move(rows));
    column->addWidget(list_, 1);
    column->addWidget(look::makeDialogButtons(*this));
}

std::vector<CommentString> CommentOptionsDialog::strings() const {
    std::vector<CommentString> strings;
    for (const auto& row : list_->rows()) {
        strings.push_back({row[0] == "Yes", row[1] == "Yes", row[2], row[3]});
    }
    return strings;
}

void CommentOptionsDialog::accept() {
    writeCommentStrings(document_, strings());
    QDialog::accept();
}

bool editEuCommentOptions(FormContext& form, DocumentContext& document, QWidget* parent) {
    CommentOptionsDialog dialog(form, document, parent);
    return runDialog(form.door, dialog) == QDialog::Accepted;
}

}  // namespace kavu
