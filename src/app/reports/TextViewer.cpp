#include "app/reports/TextViewer.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/reports/FindRow.h"
#include "app/reports/PagePreview.h"
#include "reports/print/ReportPrinter.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr int kPageRule = 60;  ///< characters of the line between two pages

QString shownText(const std::string& bytes) {
    auto text = toQString(bytes);
    // A form feed is no character that a screen shows.
    text.replace(QLatin1Char('\f'), QString(kPageRule, QChar(0x2500)) + QLatin1Char('\n'));
    return text;
}

}  // namespace

TextViewer::TextViewer(FormContext& form, const DocumentContext& document, std::string title,
                       std::string text, QWidget* parent)
    : QDialog(parent),
      form_(form),
      document_(document),
      title_(std::move(title)),
      bytes_(std::move(text)) {
    setObjectName(QStringLiteral("TextViewer"));
    setWindowTitle(toQString(title_));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setHelpTopic(*this, "TextViewer");
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    column->addWidget(new FindRow(
        [this](const QString& wanted, bool forward) { return find(wanted, forward); }, *this));
    view_ = new QPlainTextEdit(this);
    view_->setObjectName(QStringLiteral("text"));
    view_->setAccessibleName(QStringLiteral("Report"));
    view_->setReadOnly(true);
    view_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view_->setLineWrapMode(QPlainTextEdit::NoWrap);
    view_->setTabChangesFocus(true);
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QWidget::font().pointSizeF());
    view_->setFont(font);
    constexpr int kTabWidth = 8;
    view_->setTabStopDistance(QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')) * kTabWidth);
    view_->setPlainText(shownText(bytes_));
    column->addWidget(view_, 1);
    makeButtons();
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    resize(QSize(look::charactersWide(*this, 150), look::unit(*this) * 80)
               .boundedTo(look::roomOnScreen(*this)));
}

void TextViewer::makeButtons() {
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    const auto add = [&](const char* name, const QString& text, const char* icon, auto run) {
        auto* const button = look::makeButton(name, text, QLatin1String(icon), this);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, run);
    };
    add("print", QStringLiteral("Pr&int..."), "print", [this] {
        previewPages(
            form_, title_, PaperUse::Reports,
            [this](const PaperSetup& paper) { return printText(document_, title_, bytes_, paper); },
            this);
    });
    add("saveAs", QStringLiteral("&Save As..."), "save-as", [this] {
        (void)saveReportFile(form_, title_, {"Text Files", "*.txt"}, ".txt", bytes_);
    });
    row->addStretch(1);
    add("close", QStringLiteral("&Close"), "", [this] { reject(); });
}

bool TextViewer::find(const QString& text, bool forward) {
    const auto flags = forward ? QTextDocument::FindFlags() : QTextDocument::FindBackward;
    if (view_->find(text, flags)) {
        return true;
    }
    // From the other end.
    const auto before = view_->textCursor();
    view_->moveCursor(forward ? QTextCursor::Start : QTextCursor::End);
    const bool isFound = view_->find(text, flags);
    if (!isFound) {
        view_->setTextCursor(before);
    }
    return isFound;
}

}  // namespace kavu
