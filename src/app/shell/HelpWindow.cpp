#include "app/shell/HelpWindow.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/HelpTopics.h"
#include "core/files/FileIo.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr std::string_view kEnding = ".md";

/// The first heading of a page, else the name of its file.
QString titleOfPage(const QString& text, const QString& otherwise) {
    return text.startsWith(QStringLiteral("# "))
               ? text.mid(2, text.indexOf(QLatin1Char('\n')) - 2).trimmed()
               : otherwise;
}

}  // namespace

std::string manualFolder(const std::string& programFolder) {
    for (const auto* const place :
         {"/../share/doc/kavu/manual", "/../../../docs/manual", "/manual"}) {
        const auto folder = programFolder + place;
        if (isPlainFile(folder + "/index.md")) {
            return folder;
        }
    }
    return {};
}

HelpWindow::HelpWindow(const std::string& folder, QWidget* parent)
    : QWidget(parent, Qt::Window), folder_(toQString(folder)) {
    setObjectName(QStringLiteral("HELP"));
    setWindowTitle(QStringLiteral("KAVU-9 Help"));
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    auto* const tools = new QWidget(this);
    makeTools(tools);
    column->addWidget(tools);
    auto* const splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    pages_ = new QListWidget(splitter);
    pages_->setObjectName(QStringLiteral("pages"));
    pages_->setAccessibleName(QStringLiteral("Pages of the manual"));
    pages_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    pages_->setWordWrap(true);
    browser_ = new QTextBrowser(splitter);
    browser_->setObjectName(QStringLiteral("page"));
    browser_->setAccessibleName(QStringLiteral("Page"));
    browser_->setOpenExternalLinks(false);
    browser_->document()->setDocumentMargin(2 * look::unit(*this));
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({look::charactersWide(*this, 24), look::charactersWide(*this, 80)});
    column->addWidget(splitter, 1);
    readPages();
    listPages();
    connectParts();
    resize(QSize(look::charactersWide(*this, 110), look::unit(*this) * 80)
               .boundedTo(look::roomOnScreen(*this)));
    openPage(QStringLiteral("index"));
    browser_->setFocus();
}

void HelpWindow::makeTools(QWidget* parent) {
    auto* const row = new QHBoxLayout(parent);
    look::arrangePart(*row, *this);
    back_ = look::makeButton("back", QStringLiteral("&Back"), {}, parent);
    forward_ = look::makeButton("forward", QStringLiteral("&Forward"), {}, parent);
    back_->setToolTip(QStringLiteral("The page before (Alt+Left)"));
    forward_->setToolTip(QStringLiteral("The page from which you came back (Alt+Right)"));
    back_->setEnabled(false);
    forward_->setEnabled(false);
    search_ = new QLineEdit(parent);
    search_->setObjectName(QStringLiteral("search"));
    search_->setPlaceholderText(QStringLiteral("Search all pages (Ctrl+F)"));
    search_->setClearButtonEnabled(true);
    search_->addAction(look::icon(QStringLiteral("search")), QLineEdit::LeadingPosition);
    search_->installEventFilter(this);
    count_ = new QLabel(parent);
    count_->setObjectName(QStringLiteral("count"));
    count_->setTextFormat(Qt::PlainText);
    count_->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(back_);
    row->addWidget(forward_);
    row->addSpacing(2 * look::unit(*this));
    row->addWidget(look::addKeyLabel(QStringLiteral("&Search:"), *search_));
    row->addWidget(search_, 1);
    row->addWidget(count_);
}

void HelpWindow::connectParts() {
    connect(back_, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward_, &QPushButton::clicked, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back_, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward_, &QWidget::setEnabled);
    connect(search_, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(pages_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (auto* const item = pages_->item(row)) {
            openPage(item->data(Qt::UserRole).toString());
        }
    });
    connect(browser_, &QTextBrowser::sourceChanged, this, [this] {
        const auto page = openedPage();
        for (int i = 0; i < pages_->count(); ++i) {
            if (pages_->item(i)->data(Qt::UserRole).toString() == page) {
                const QSignalBlocker quiet(pages_);
                pages_->setCurrentRow(i);
            }
        }
        markPlaces();
    });
    const auto onKey = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    onKey(QKeySequence(Qt::Key_Escape), [this] {
        if (search_->text().isEmpty()) {
            close();
        } else {
            search_->clear();
            browser_->setFocus();
        }
    });
    onKey(QKeySequence(Qt::ALT | Qt::Key_Left), [this] { browser_->backward(); });
    onKey(QKeySequence(Qt::ALT | Qt::Key_Right), [this] { browser_->forward(); });
    onKey(QKeySequence(QKeySequence::Find), [this] {
        search_->setFocus();
        search_->selectAll();
    });
    onKey(QKeySequence(Qt::Key_F3), [this] { findNext(false); });
    onKey(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { findNext(true); });
}

void HelpWindow::readPages() {
    std::vector<FolderEntry> entries;
    if (folder_.isEmpty() || !listFolder(toBytes(folder_), entries).ok()) {
        return;
    }
    for (const auto& entry : entries) {
        std::string bytes;
        if (entry.isFolder || !entry.name.ends_with(kEnding)) {
            continue;
        }
        Page page;
        page.name = toQString(entry.name).chopped(static_cast<int>(kEnding.size()));
        (void)readWholeFile(toBytes(pathOf(page.name)), bytes);
        const auto markdown = toQString(bytes);
        page.title = titleOfPage(markdown, page.name);
        // What is searched is what is seen.
        QTextDocument seen;
        seen.setMarkdown(markdown);
        page.text = seen.toPlainText();
        // The index is where one begins.
        const bool isFirst = page.name == QLatin1String("index");
        manual_.insert(isFirst ? manual_.begin() : manual_.end(), std::move(page));
    }
}

void HelpWindow::listPages() {
    if (manual_.empty()) {
        browser_->setPlainText(QStringLiteral("The manual is not installed."));
        search_->setEnabled(false);
        return;
    }
    const auto text = search_->text();
    const auto opened = openedPage();
    const QSignalBlocker quiet(pages_);
    pages_->clear();
    for (const auto& page : manual_) {
        if (!text.isEmpty() && !page.text.contains(text, Qt::CaseInsensitive)) {
            continue;
        }
        auto* const item = new QListWidgetItem(page.title, pages_);
        item->setData(Qt::UserRole, page.name);
        if (page.name == opened) {
            pages_->setCurrentItem(item);
        }
    }
}

void HelpWindow::search(const QString& text) {
    listPages();
    if (!text.isEmpty() && pages_->count() > 0 && pages_->currentItem() == nullptr) {
        openPage(pages_->item(0)->data(Qt::UserRole).toString());
    }
    markPlaces();
    if (!text.isEmpty()) {
        // From the top of the page on, and not from where the last text was found.
        browser_->moveCursor(QTextCursor::Start);
        (void)browser_->find(text);
    }
}

void HelpWindow::showCount() {
    if (search_->text().isEmpty()) {
        count_->clear();
        return;
    }
    const auto pages = pages_->count();
    count_->setText(pages == 0   ? QStringLiteral("Not found")
                    : pages == 1 ? QStringLiteral("On 1 page")
                                 : QStringLiteral("On %1 pages").arg(pages));
}

/// Every place that has the text is marked in the page.
void HelpWindow::markPlaces() {
    showCount();
    QList<QTextEdit::ExtraSelection> places;
    const auto text = search_->text();
    auto* const document = browser_->document();
    for (auto at = document->find(text); !text.isEmpty() && !at.isNull();
         at = document->find(text, at)) {
        QTextEdit::ExtraSelection place;
        place.cursor = at;
        auto ground = palette().color(QPalette::Highlight);
        ground.setAlpha(70);
        place.format.setBackground(ground);
        places.append(place);
    }
    browser_->setExtraSelections(places);
}

QString HelpWindow::besidePage(bool backward) const {
    const int count = pages_->count();
    if (count == 0) {
        return {};
    }
    const int row = std::max(0, pages_->currentRow());
    return pages_->item((row + (backward ? count - 1 : 1)) % count)->data(Qt::UserRole).toString();
}

void HelpWindow::findNext(bool backward) {
    const auto text = search_->text();
    if (text.isEmpty()) {
        return;
    }
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (browser_->find(text, flags)) {
        return;
    }
    if (const auto page = besidePage(backward); !page.isEmpty()) {
        openPage(page);
        browser_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        (void)browser_->find(text, flags);
    }
}

bool HelpWindow::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == search_ && event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            findNext((key.modifiers() & Qt::ShiftModifier) != 0);
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

/// The colours of a page are those of the palette when it was read.
void HelpWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && browser_ != nullptr && !manual_.empty()) {
        const int place = browser_->verticalScrollBar()->value();
        browser_->reload();
        browser_->verticalScrollBar()->setValue(place);
        markPlaces();
    }
}

QString HelpWindow::pathOf(const QString& page) const {
    return folder_ + QLatin1Char('/') + page + QStringLiteral(".md");
}

void HelpWindow::openPage(const QString& page) {
    if (folder_.isEmpty()) {
        return;
    }
    const bool there = isPlainFile(toBytes(pathOf(page)));
    browser_->setSource(QUrl::fromLocalFile(pathOf(there ? page : QStringLiteral("index"))),
                        QTextDocument::MarkdownResource);
}

void HelpWindow::openTopic(const std::string& topic) {
    const auto place = helpPlace(topic);
    openPage(toQString(place.page));
    scrollToHeading(toQString(place.heading));
}

/// The headings of a page in Markdown get no anchors that a link could name.
void HelpWindow::scrollToHeading(const QString& heading) {
    const auto& text = *browser_->document();
    for (auto block = text.begin(); !heading.isEmpty() && block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || block.text() != heading) {
            continue;
        }
        QTextCursor cursor(block);
        browser_->setTextCursor(cursor);
        auto& bar = *browser_->verticalScrollBar();
        bar.setValue(bar.value() + browser_->cursorRect(cursor).top());
        return;
    }
}

QString HelpWindow::openedPage() const {
    return browser_->source().fileName().section(QLatin1Char('.'), 0, 0);
}

}  // namespace kavu
