#include "app/groups/GenericEditDialog.h"

#include "app/framework/Look.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"

#include <algorithm>

#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::size_t kMostLines = 10;
constexpr int kColumns = 90;
constexpr int kLines = 24;

std::string dialogTitle(const GroupText& group) {
    return group.letter == 'V' ? "Vendor Specific Information - Data Source: " + group.source
                               : std::string("Airborne Hardware Information");
}

std::string listed(const std::vector<std::string>& commands) {
    std::string text;
    for (std::size_t i = 0; i < std::min(commands.size(), kMostLines); ++i) {
        text += commands[i] + "\n";
    }
    if (commands.size() > kMostLines) {
        text += formatPrintf("and %d more\n", static_cast<int>(commands.size() - kMostLines));
    }
    return text;
}

}  // namespace

GenericEditPage::GenericEditPage(FormContext& form, DocumentContext& document, GroupText group,
                                 QWidget* parent)
    : PropertyPage(form, "GENERIC_EDIT", "Commands", parent),
      document_(document),
      group_(std::move(group)) {
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    auto* const box = new QGroupBox(
        group_.exists ? QStringLiteral("Edit Existing") : QStringLiteral("Create New"), this);
    auto* const inside = new QVBoxLayout(box);
    edit_ = new QPlainTextEdit(box);
    edit_->setObjectName(QStringLiteral("commands"));
    edit_->setAccessibleName(toQString(dialogTitle(group_)));
    edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
    edit_->setTabChangesFocus(true);
    edit_->setPlaceholderText(toQString(group_.letter == 'V'
                                            ? formatPrintf("V-%d\\VN:...;", group_.index)
                                            : std::string("H\\...:...;")));
    edit_->setMinimumWidth(look::charactersWide(*edit_, kColumns));
    edit_->setMinimumHeight(kLines * 2 * look::unit(*edit_));
    inside->addWidget(edit_);
    column->addWidget(box);
    column->addWidget(look::makeNote(
        QStringLiteral("Each command is a code, a colon, a value and a semi-colon. An empty "
                       "text removes the group from the file."),
        this));
    connect(edit_, &QPlainTextEdit::textChanged, this, [this] { markChanged(); });
}

void GenericEditPage::load() {
    lines_.clear();
    QStringList shown;
    for (const auto& line : splitLines(group_.text)) {
        lines_.emplace_back(line);
        shown += lines_.back().shown();
    }
    const QSignalBlocker quiet(edit_);
    edit_->setPlainText(shown.join(QLatin1Char('\n')));
}

std::string GenericEditPage::text() const {
    const auto now = edit_->toPlainText().split(QLatin1Char('\n'));
    const auto count = static_cast<std::size_t>(now.size());
    const auto shared = std::min(count, lines_.size());
    const auto line = [&now](std::size_t i) { return now[static_cast<qsizetype>(i)]; };
    std::size_t front = 0;
    while (front < shared && line(front) == lines_[front].shown()) {
        ++front;
    }
    std::size_t back = 0;
    while (back < shared - front &&
           line(count - 1 - back) == lines_[lines_.size() - 1 - back].shown()) {
        ++back;
    }
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        if (i < front) {
            text += lines_[i].bytes();
        } else if (i >= count - back) {
            text += lines_[i + lines_.size() - count].bytes();
        } else {
            text += toBytes(line(i));
        }
        text += "\r\n";
    }
    return text;
}

bool GenericEditPage::validate() {
    const auto now = text();
    if (const auto rest = unfinishedCommand(now); !rest.empty()) {
        showBox(&form().ui,
                "The last command has no semi-colon:\n\n" + rest +
                    "\n\nPlease end it with one, or remove it.",
                dialogTitle(group_));
        edit_->moveCursor(QTextCursor::End);
        edit_->setFocus();
        return false;
    }
    const auto foreign = foreignCommands(group_, now);
    if (foreign.empty()) {
        return true;
    }
    const auto answer = showBox(
        &form().ui,
        "These commands do not belong to this group. They move to their own, or are lost, when "
        "the file is opened the next time:\n\n" +
            listed(foreign) + "\nKeep them all the same?",
        dialogTitle(group_), Icon::Question, Buttons::YesNo, Button::No);
    if (answer != Button::Yes) {
        edit_->setFocus();
    }
    return answer == Button::Yes;
}

bool GenericEditPage::store() {
    return storeGroupText(document_, &form().ui, group_, text());
}

std::unique_ptr<PropertySheet> makeGenericEditDialog(FormContext& form, DocumentContext& document,
                                                     GroupText group) {
    auto sheet = std::make_unique<PropertySheet>(form, "GenericEditDialog", dialogTitle(group), "");
    sheet->addPage(std::make_unique<GenericEditPage>(form, document, std::move(group)));
    return sheet;
}

bool editGroupText(FormContext& form, DocumentContext& document, char letter,
                   const std::string& source) {
    GroupText group;
    if (!mayEditGroupText(document, &form.ui, letter) ||
        !readGroupText(document, &form.ui, letter, source, group)) {
        return false;
    }
    const auto sheet = makeGenericEditDialog(form, document, std::move(group));
    return runPropertySheet(form, *sheet) == SheetResult::Stored;
}

}  // namespace kavu
