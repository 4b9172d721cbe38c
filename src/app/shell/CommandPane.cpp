#include "app/shell/CommandPane.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/CommandModel.h"
#include "app/shell/TreeModel.h"
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"
#include "pcm/structure/StreamSummary.h"

#include <algorithm>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// The tallest row; more of a value is seen in its tool tip and in what is copied.
constexpr int kMostLinesOfRow = 30;

QString counted(std::size_t count, const char16_t* one, const char16_t* many) {
    return QString::number(count) + u' ' + QString::fromUtf16(count == 1 ? one : many);
}

/// "PCM Format (P-1)".
QString fileText(char letter, int group) {
    std::string_view name;
    switch (letter) {
        case 'P':
            name = "PCM Format";
            break;
        case 'D':
            name = "PCM Measurements";
            break;
        case 'B':
            name = "Bus Data";
            break;
        case 'S':
            name = "Message Data";
            break;
        default:
            name = "PAM";
            break;
    }
    return QStringLiteral("%1 (%2-%3)").arg(toQString(name)).arg(QLatin1Char(letter)).arg(group);
}

}  // namespace

CommandPane::CommandPane(Application& application, QWidget* parent)
    : CommandPane(application.context(), &application.conversions(), parent) {}

CommandPane::CommandPane(DocumentContext& context, ConversionStore* conversions, QWidget* parent)
    : QWidget(parent), context_(context), conversions_(conversions) {
    setObjectName(QStringLiteral("CommandPane"));
    model_ = new CommandModel(this);
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    makeHead();
    makeTable();
    makeCountRow();
    connect(model_, &CommandModel::progressed, this, [this] {
        updateCount();
        fitColumns();
        fitVisibleRows();
        findWanted();
    });
    connect(model_, &CommandModel::failed, this,
            [this] { showFailure(IoStatus(model_->commands().status())); });
    setMinimumWidth(look::charactersWide(*this, 36));
    clear();
}

void CommandPane::makeHead() {
    auto* layout = static_cast<QVBoxLayout*>(this->layout());
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("title"));
    title_->setTextFormat(Qt::PlainText);
    title_->setWordWrap(true);
    QFont font = title_->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    title_->setFont(font);
    layout->addWidget(title_);
    summary_ = look::makeNote({}, this);
    summary_->setObjectName(QStringLiteral("summary"));
    layout->addWidget(summary_);

    tableBox_ = new QWidget(this);
    auto* box = new QVBoxLayout(tableBox_);
    look::arrangePart(*box, *this);
    auto* row = new QHBoxLayout;
    row->setSpacing(look::unit(*this));
    fileChoice_ = new QComboBox(tableBox_);
    fileChoice_->setObjectName(QStringLiteral("group"));
    fileLabel_ = look::addLabel(QStringLiteral("Group:"), *fileChoice_);
    row->addWidget(fileLabel_);
    row->addWidget(fileChoice_);
    filter_ = new QLineEdit(tableBox_);
    filter_->setObjectName(QStringLiteral("filter"));
    filter_->setPlaceholderText(QStringLiteral("Code or value"));
    filter_->setClearButtonEnabled(true);
    filter_->installEventFilter(this);
    row->addWidget(look::addLabel(QStringLiteral("Filter:"), *filter_));
    row->addWidget(filter_, 1);
    box->addLayout(row);
    layout->addWidget(tableBox_, 1);
    connect(filter_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_->setFilter(text); });
    connect(fileChoice_, &QComboBox::activated, this, [this] { showFile(); });
    auto* find = new QShortcut(QKeySequence(QKeySequence::Find), this);
    connect(find, &QShortcut::activated, filter_, [this] {
        filter_->setFocus();
        filter_->selectAll();
    });
}

void CommandPane::makeTable() {
    table_ = new QTableView(tableBox_);
    table_->setObjectName(QStringLiteral("commands"));
    table_->setAccessibleName(QStringLiteral("Commands"));
    table_->setModel(model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setWordWrap(true);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setTabKeyNavigation(false);
    table_->setCornerButtonEnabled(false);
    const int line = table_->fontMetrics().lineSpacing();
    auto* rows = table_->verticalHeader();
    rows->setVisible(false);
    rows->setMinimumSectionSize(line);
    rows->setDefaultSectionSize(line * 3 / 2);
    rows->setMaximumSectionSize(line * kMostLinesOfRow);
    auto* head = table_->horizontalHeader();
    head->setStretchLastSection(true);
    head->setHighlightSections(false);
    table_->setMinimumHeight(line * 6);
    tableBox_->layout()->addWidget(table_);
    connect(table_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { fitVisibleRows(); });
    connect(head, &QHeaderView::sectionResized, this, [this] { fitVisibleRows(); });
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { updateCopy(); });
    connect(model_, &QAbstractItemModel::modelReset, this, [this] { updateCopy(); });

    copyAction_ = new QAction(look::icon(QStringLiteral("copy")), QStringLiteral("&Copy"), table_);
    copyAction_->setShortcut(QKeySequence::Copy);
    copyAction_->setShortcutContext(Qt::WidgetShortcut);
    connect(copyAction_, &QAction::triggered, this, &CommandPane::copySelection);
    table_->addAction(copyAction_);
    table_->installEventFilter(this);
    table_->viewport()->installEventFilter(this);
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);

    empty_ = look::makeNote({}, this);
    empty_->setObjectName(QStringLiteral("emptyText"));
    empty_->setAlignment(Qt::AlignCenter);
    static_cast<QVBoxLayout*>(layout())->addWidget(empty_, 1);
}

void CommandPane::makeCountRow() {
    auto* row = new QHBoxLayout;
    count_ = new QLabel(tableBox_);
    count_->setObjectName(QStringLiteral("count"));
    count_->setTextFormat(Qt::PlainText);
    count_->setForegroundRole(QPalette::PlaceholderText);
    row->addWidget(count_, 1);
    copy_ = look::makeButton("copy", QStringLiteral("&Copy"), QStringLiteral("copy"), tableBox_);
    row->addWidget(copy_);
    connect(copy_, &QPushButton::clicked, this, &CommandPane::copySelection);
    static_cast<QVBoxLayout*>(tableBox_->layout())->addLayout(row);
    updateCopy();
}

// --- What is shown -------------------------------------------------------------------------

void CommandPane::showCommand(char letter, int group, const std::string& code) {
    const auto file = std::find_if(files_.begin(), files_.end(), [&](const File& each) {
        return each.letter == letter && (each.group == group || letter == 'G' || letter == 'H');
    });
    if (file == files_.end() || code.empty()) {
        return;
    }
    filter_->clear();
    if (const int chosen = static_cast<int>(file - files_.begin());
        chosen != fileChoice_->currentIndex()) {
        fileChoice_->setCurrentIndex(chosen);
        showFile();
    }
    wanted_ = code;
    looked_ = 0;
    table_->setFocus();
    findWanted();
}

/// Looks through the rows that have come since the last time.
void CommandPane::findWanted() {
    for (; !wanted_.empty() && looked_ < model_->rowCount(); ++looked_) {
        if (equalsIgnoreCase(model_->commands().code(static_cast<std::size_t>(looked_)), wanted_)) {
            wanted_.clear();
            table_->selectRow(looked_);
            table_->scrollTo(model_->index(looked_, CommandModel::kCode),
                             QAbstractItemView::PositionAtCenter);
            return;
        }
    }
}

void CommandPane::clear() {
    wanted_.clear();
    shown_ = false;
    files_.clear();
    model_->clear();
    title_->hide();
    summary_->hide();
    showEmpty(QStringLiteral("Select an item of the tree to see its commands."));
}

void CommandPane::showEmpty(const QString& text) {
    empty_->setText(text);
    empty_->show();
    tableBox_->hide();
}

void CommandPane::showItem(const TreeItem& item) {
    const bool same = shown_ && item_ == item;
    wanted_.clear();
    const int chosen = same ? fileChoice_->currentIndex() : 0;
    item_ = item;
    shown_ = true;
    if (!same && !filter_->text().isEmpty()) {
        filter_->clear();
    }
    title_->setText(treeLabel(item));
    title_->show();
    listFiles(item);
    offerFiles();
    if (chosen > 0 && chosen < fileChoice_->count()) {
        fileChoice_->setCurrentIndex(chosen);
    }
    const auto summary = summaryOf(item);
    summary_->setText(summary);
    summary_->setVisible(!summary.isEmpty());
    if (item.kind == TreeKind::Measurement) {
        showRecord(item);
    } else if (!files_.empty()) {
        showFile();
    } else {
        model_->clear();
        showEmpty(summary.isEmpty()
                      ? QStringLiteral("Nothing is stored for this item.")
                      : QStringLiteral("Select an item below this one to see its commands."));
    }
    updateCopy();
}

void CommandPane::listFiles(const TreeItem& item) {
    files_.clear();
    if (item.kind != TreeKind::Stream && item.kind != TreeKind::EmbeddedStream) {
        if (item.letter != 0) {
            files_.push_back({item.letter, item.group});
        }
        return;
    }
    for (const char letter : {'P', 'D', 'B', 'S', 'A'}) {
        const int group = letter == item.letter ? item.group
                          : item.name.empty()
                              ? 0
                              : GroupNames(context_, nullptr, letter).find(item.name);
        if (group > 0) {
            files_.push_back({letter, group});
        }
    }
}

void CommandPane::offerFiles() {
    fileChoice_->clear();
    for (const auto& file : files_) {
        fileChoice_->addItem(files_.size() > 1 ? fileText(file.letter, file.group) : QString());
    }
    fileLabel_->setVisible(files_.size() > 1);
    fileChoice_->setVisible(files_.size() > 1);
}

void CommandPane::showFailure(const IoStatus& status) {
    showEmpty(isMissing(status) ? QStringLiteral("Nothing is stored for this item.")
                                : QStringLiteral("%1 cannot be read: %2.")
                                      .arg(toQString(status.path()), toQString(status.reason())));
}

void CommandPane::showFile() {
    const auto& file = files_[static_cast<std::size_t>(std::max(0, fileChoice_->currentIndex()))];
    const auto path = context_.store.pathOf(groupFile(file.letter, file.group));
    const auto status = model_->open(path);
    if (!status.ok()) {
        showFailure(status);
        return;
    }
    empty_->hide();
    tableBox_->show();
    table_->scrollToTop();
    fitVisibleRows();
}

void CommandPane::showRecord(const TreeItem& item) {
    std::vector<std::pair<std::string, std::string>> pairs;
    const auto place =
        conversions_ == nullptr ? RecordPlace{} : conversions_->locateDefinition(item.name);
    if (const auto chunk = place.found ? conversions_->chunk(place.chunk) : nullptr) {
        for (const auto& key : chunk->keyNames(place.section)) {
            pairs.emplace_back(key, chunk->value(place.section, key, {}));
        }
    }
    if (pairs.empty()) {
        model_->clear();
        showEmpty(QStringLiteral("Nothing is stored for this item."));
        return;
    }
    model_->setPairs(std::move(pairs));
    empty_->hide();
    tableBox_->show();
    table_->scrollToTop();
    fitVisibleRows();
}

QString CommandPane::summaryOf(const TreeItem& item) const {
    switch (item.kind) {
        case TreeKind::TransmissionHead:
            return sourcesText('R');
        case TreeKind::RecorderHead:
            return sourcesText('T');
        case TreeKind::OtherHead:
            return sourcesText('O');
        case TreeKind::StreamsHead:
            return streamsText(item.name);
        case TreeKind::ConversionHead: {
            const auto names =
                conversions_ == nullptr ? std::nullopt : conversions_->definitionNames(-1);
            return names ? counted(names->size(), u"measurement", u"measurements") : QString();
        }
        case TreeKind::Stream:
        case TreeKind::EmbeddedStream:
            if (!files_.empty() && files_.front().letter == 'P') {
                const auto summary =
                    readStreamSummary(context_, nullptr, files_.front().group, item.measurements);
                auto text = summaryText(summary);
                if (item.kind == TreeKind::EmbeddedStream) {
                    // Only the streams of a data source have been counted.
                    text = text.substr(0, text.rfind(", "));
                }
                return toQString(summary.kind.empty() ? text : summary.kind + ": " + text);
            }
            return item.kind == TreeKind::Stream
                       ? counted(item.measurements, u"measurement", u"measurements")
                       : QString();
        default:
            return {};
    }
}

QString CommandPane::sourcesText(char sourceClass) const {
    std::vector<DataSource> sources;
    readDataSources(context_, nullptr, sources);
    const auto count = std::count_if(sources.begin(), sources.end(), [&](const DataSource& source) {
        return dataSourceClass(source.type) == sourceClass;
    });
    return counted(static_cast<std::size_t>(count), u"data source", u"data sources");
}

QString CommandPane::streamsText(const std::string& source) const {
    std::vector<Multiplex> multiplexes;
    (void)readMultiplexes(context_, nullptr, multiplexes);
    std::size_t count = 0;
    for (const auto& multiplex : multiplexes) {
        count += equalsIgnoreCase(multiplex.source, source) ? multiplex.links.size() : 0;
    }
    return counted(count, u"stream", u"streams");
}

// --- The table -----------------------------------------------------------------------------

void CommandPane::updateCount() {
    const auto total = model_->total();
    const bool record = item_.kind == TreeKind::Measurement;
    auto text =
        record ? counted(total, u"entry", u"entries") : counted(total, u"command", u"commands");
    if (!filter_->text().isEmpty()) {
        text = QStringLiteral("%1 of %2").arg(model_->rowCount()).arg(text);
    }
    if (model_->busy()) {
        text += QStringLiteral("...");
    }
    count_->setText(text);
}

void CommandPane::updateCopy() {
    const bool any = table_->selectionModel()->hasSelection();
    copyAction_->setEnabled(any);
    if (copy_ != nullptr) {
        copy_->setEnabled(any);
    }
}

void CommandPane::copySelection() {
    std::vector<std::pair<int, int>> ranges;
    for (const auto& range : table_->selectionModel()->selection()) {
        ranges.emplace_back(range.top(), range.bottom());
    }
    if (ranges.empty()) {
        return;
    }
    std::sort(ranges.begin(), ranges.end());
    QString text;
    for (const auto& [top, bottom] : ranges) {
        for (int row = top; row <= bottom; ++row) {
            text += model_->rowText(row) + u'\n';
        }
    }
    QGuiApplication::clipboard()->setText(text);
}

void CommandPane::fitColumns() {
    const QFontMetrics metrics(model_->data(model_->index(0, 0), Qt::FontRole).value<QFont>());
    const int wanted = metrics.averageCharWidth() * (model_->longestCode() + 3);
    const int least = table_->horizontalHeader()->sectionSizeHint(CommandModel::kCode);
    const int most = std::max(least, table_->viewport()->width() / 2);
    const int width = std::clamp(wanted, least, most);
    if (table_->columnWidth(CommandModel::kCode) != width && model_->rowCount() > 0) {
        table_->setColumnWidth(CommandModel::kCode, width);
    }
}

void CommandPane::fitVisibleRows() {
    if (!table_->isVisible()) {
        return;
    }
    // Rows that are out of sight keep the height of one line: to measure them all takes as long as
    // to read them all. No position is asked for on the way, as each such question after a
    // change makes the head add up all heights.
    const int pad = table_->fontMetrics().lineSpacing() / 2;
    const int least = table_->verticalHeader()->defaultSectionSize();
    const int most = table_->verticalHeader()->maximumSectionSize();
    int y = 0;
    for (int row = std::max(0, table_->rowAt(0));
         row < model_->rowCount() && y < table_->viewport()->height(); ++row) {
        const auto index = model_->index(row, CommandModel::kValue);
        const int wide = table_->columnWidth(CommandModel::kValue) - pad;
        const auto text = index.data().toString();
        const int needed = table_->fontMetrics()
                               .boundingRect(QRect(0, 0, std::max(wide, 10), most),
                                             Qt::TextWordWrap | Qt::TextWrapAnywhere, text)
                               .height() +
                           pad;
        const int height = std::clamp(needed, least, most);
        if (table_->rowHeight(row) != height) {
            table_->setRowHeight(row, height);
        }
        y += height;
    }
}

void CommandPane::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitColumns();
    fitVisibleRows();
}

bool CommandPane::eventFilter(QObject* receiver, QEvent* event) {
    if (table_ != nullptr && receiver == table_->viewport() && event->type() == QEvent::Resize) {
        fitColumns();
        fitVisibleRows();
    }
    // The table would copy its current cell alone.
    if (receiver == table_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copySelection();
        return true;
    }
    if (receiver == filter_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down && model_->rowCount() > 0) {
            table_->setFocus();
            if (!table_->currentIndex().isValid()) {
                table_->selectRow(0);
            }
            return true;
        }
        if (key == Qt::Key_Escape && !filter_->text().isEmpty()) {
            filter_->clear();
            return true;
        }
    }
    return QWidget::eventFilter(receiver, event);
}

}  // namespace kavu
