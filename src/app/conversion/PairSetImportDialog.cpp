#include "app/conversion/PairSetImportDialog.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "conversion/PairFile.h"
#include "conversion/PairText.h"
#include "core/files/FileIo.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"
#include "core/text/Printf.h"

#include <functional>

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kImportTitle[] = "Import Pair Sets";
/// What comes after this is not read: there are more pairs than any list holds.
constexpr std::uint64_t kMostFileBytes = 64U << 20U;

std::size_t filledLines(const QPlainTextEdit& box) {
    std::size_t count = 0;
    for (const auto& line : box.toPlainText().split(u'\n')) {
        count += line.trimmed().isEmpty() ? 0U : 1U;
    }
    return count;
}

/// Text of two columns that is pasted or dropped here is offered to both boxes, any other
/// changes this box alone.
class ColumnBox : public QPlainTextEdit {
  public:
    using Take = std::function<void(const QPlainTextEdit& box,
                                    const std::pair<std::string, std::string>& columns)>;

    ColumnBox(Take take, QWidget* parent) : QPlainTextEdit(parent), take_(std::move(take)) {}

  protected:
    void insertFromMimeData(const QMimeData* source) override {
        if (const auto columns = tabColumns(toBytes(source->text()))) {
            take_(*this, *columns);
        } else {
            QPlainTextEdit::insertFromMimeData(source);
        }
    }

  private:
    Take take_;
};

/// Replaces the text of a box in a way that Undo of the box takes back.
void replaceText(QPlainTextEdit& box, const std::string& text) {
    QTextCursor cursor(box.document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(toQString(text));
}

/// Nothing in the box goes that its user has not selected.
bool holdsMoreThanItsSelection(const QPlainTextEdit& box) {
    return filledLines(box) > 0 &&
           box.textCursor().selectedText().trimmed().size() < box.toPlainText().trimmed().size();
}

}  // namespace

PairSetImportDialog::PairSetImportDialog(FormContext& form, const PairSet& pairs,
                                         const std::pair<std::string, std::string>& boxes,
                                         QWidget* parent)
    : QDialog(parent), form_(form), pairs_(pairs) {
    setObjectName(QStringLiteral("ImportPairSets"));
    setWindowTitle(QLatin1String(kImportTitle));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    layout->addWidget(look::makeNote(
        QStringLiteral("One value a line. Two columns of a spreadsheet that are pasted into a box "
                       "can fill both. OK replaces the list."),
        this));
    auto* grid = new QGridLayout;
    layout->addLayout(grid, 1);
    telemetry_ = makeBox("tmValues", "TM Values:", boxes.first, *grid, 0);
    engineering_ = makeBox("euValues", "EU Values:", boxes.second, *grid, 1);
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    auto* file =
        look::makeButton("fromFile", QStringLiteral("From &File..."), QStringLiteral("open"), this);
    connect(file, &QPushButton::clicked, this, &PairSetImportDialog::readPairFile);
    row->addWidget(file);
    count_ = new QLabel(this);
    count_->setObjectName(QStringLiteral("count"));
    row->addWidget(count_, 1);
    layout->addWidget(look::makeDialogButtons(*this));
    showCount();
    resize(sizeHint() + QSize(0, look::unit(*this) * 2 * 6));
    telemetry_->setFocus();
}

QPlainTextEdit* PairSetImportDialog::makeBox(const char* name, const char* label,
                                             const std::string& text, QGridLayout& grid,
                                             int column) {
    auto* box = new ColumnBox(
        [this](const auto& where, const auto& columns) { takeColumns(where, columns); }, this);
    box->setPlainText(toQString(text));
    box->setObjectName(QLatin1String(name));
    box->setTabChangesFocus(true);
    box->setLineWrapMode(QPlainTextEdit::NoWrap);
    // The note above may take more lines than the minimum height of the window knows of.
    box->setMinimumSize(look::charactersWide(*box, 24), look::unit(*box) * 2 * 8);
    auto* title = look::addKeyLabel(QLatin1String(label), *box);
    grid.addWidget(title, 0, column);
    grid.addWidget(box, 1, column);
    connect(box, &QPlainTextEdit::textChanged, this, &PairSetImportDialog::showCount);
    return box;
}

void PairSetImportDialog::fill(const std::pair<std::string, std::string>& boxes) {
    replaceText(*telemetry_, boxes.first);
    replaceText(*engineering_, boxes.second);
}

void PairSetImportDialog::takeColumns(const QPlainTextEdit& box,
                                      const std::pair<std::string, std::string>& columns) {
    const auto& other = &box == telemetry_ ? *engineering_ : *telemetry_;
    const bool losesText = filledLines(other) > 0 || holdsMoreThanItsSelection(box);
    if (losesText &&
        showBox(&form_.ui, "The text has two columns. Replace all values in both boxes with them?",
                kImportTitle, Icon::Question, Buttons::YesNo) != Button::Yes) {
        return;
    }
    fill(columns);
}

void PairSetImportDialog::showCount() {
    if (count_ != nullptr) {
        count_->setText(toQString(formatPrintf(
            "%d TM Values, %d EU Values", filledLines(*telemetry_), filledLines(*engineering_))));
    }
}

void PairSetImportDialog::readPairFile() {
    FilePrompt prompt;
    prompt.title = kImportTitle;
    prompt.filters = {{"Text Files", "*.csv;*.txt;*.tsv;*.dat"}, {"All Files", "*"}};
    const auto choice = form_.ui.chooseFile(prompt);
    if (!choice) {
        return;
    }
    ByteSource source;
    if (!openFileChecked(&form_.ui, choice->path, source)) {
        return;
    }
    std::string bytes;
    while (!source.atEnd() && bytes.size() <= kMostFileBytes) {
        const auto window = source.window();
        bytes.append(window);
        source.take(window.size());
    }
    if (!source.status().ok()) {
        showBox(&form_.ui,
                "Unable to read '" + choice->path + "'\n\nReason: " + source.status().reason(),
                kImportTitle);
        return;
    }
    auto columns = splitPairFile(bytes);
    if (columns.error.empty() && columns.count > PairSet::kMostPairs) {
        columns.error = formatPrintf("There are %d pairs. A pair set cannot have more than %d.",
                                     columns.count, PairSet::kMostPairs);
    }
    if (!columns.error.empty()) {
        showBox(&form_.ui, columns.error, kImportTitle);
        return;
    }
    fill({columns.telemetry, columns.engineering});
}

void PairSetImportDialog::accept() {
    auto imported = pairs_;
    if (const auto error = imported.import(toBytes(telemetry_->toPlainText()),
                                           toBytes(engineering_->toPlainText()))) {
        showBox(&form_.ui, *error, kImportTitle);
        return;
    }
    pairs_ = std::move(imported);
    QDialog::accept();
}

}  // namespace kavu
