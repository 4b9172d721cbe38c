#include "app/shell/HelpWindow.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/HelpTopics.h"
#include "core/files/FileIo.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>

namespace kavu {

namespace {

constexpr std::string_view kEnding = ".md";

/// The heading of a page, else the name of its file.
QString titleOfPage(const std::string& path, const QString& otherwise) {
    ByteSource source;
    if (!source.open(path).ok()) {
        return otherwise;
    }
    const auto window = source.window();
    if (!window.starts_with("# ")) {
        return otherwise;
    }
    return toQString(window.substr(2, window.find('\n') - 2)).trimmed();
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
    auto* const row = new QHBoxLayout(this);
    look::arrangeWindow(*row, *this);
    auto* const splitter = new QSplitter(this);
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
    row->addWidget(splitter);
    listPages();
    connect(pages_, &QListWidget::currentRowChanged, this, [this](int row_) {
        if (auto* const item = pages_->item(row_)) {
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
    });
    auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    resize(look::charactersWide(*this, 110), look::unit(*this) * 80);
    openPage(QStringLiteral("index"));
}

void HelpWindow::listPages() {
    std::vector<FolderEntry> entries;
    if (folder_.isEmpty() || !listFolder(toBytes(folder_), entries).ok()) {
        browser_->setPlainText(QStringLiteral("The manual is not installed."));
        return;
    }
    for (const auto& entry : entries) {
        if (entry.isFolder || !entry.name.ends_with(kEnding)) {
            continue;
        }
        const auto page = toQString(entry.name).chopped(static_cast<int>(kEnding.size()));
        auto* const item = new QListWidgetItem(titleOfPage(toBytes(pathOf(page)), page));
        item->setData(Qt::UserRole, page);
        // The index is where one begins.
        pages_->insertItem(page == QLatin1String("index") ? 0 : pages_->count(), item);
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
