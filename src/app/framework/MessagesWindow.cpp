#include "app/framework/MessagesWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"

#include <algorithm>

#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QStringListModel>
#include <QVBoxLayout>

namespace kavu {

namespace {

QPushButton* addButton(QHBoxLayout& row, QWidget* parent, const char* name, const char16_t* text,
                       const char16_t* icon) {
    auto* button =
        look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), parent);
    row.addWidget(button);
    return button;
}

/// The size of the longest line, which all of them get: a line is not broken, and is read by
/// scrolling. Its characters show which is the longest, as to measure all takes too long.
QSize sizeOfLongest(const std::vector<std::string>& lines, const QWidget& list) {
    constexpr int kWidest = 100'000;
    const auto longest = std::max_element(
        lines.begin(), lines.end(),
        [](const std::string& a, const std::string& b) { return a.size() < b.size(); });
    const auto metrics = list.fontMetrics();
    const int width =
        longest == lines.end() ? 0 : metrics.horizontalAdvance(toQString(*longest).left(kWidest));
    const int space = look::unit(list);
    return {std::min(width, kWidest) + 2 * space, metrics.height() + space / 2};
}

/// Puts texts one below the other, over as many pages as it takes.
class PageWriter {
  public:
    explicit PageWriter(QPagedPaintDevice& device) : device_(device) {}

    bool begin() {
        if (!painter_.begin(&device_)) {
            return false;
        }
        painter_.setFont(QFont(QStringLiteral("Arial"), 10, QFont::Normal));
        area_ = QRectF(QPointF(0, 0), QSizeF(painter_.viewport().size()));
        lineHeight_ = QFontMetricsF(painter_.font(), &device_).lineSpacing();
        area_.setHeight(area_.height() - lineHeight_ * 2);
        return true;
    }

    bool write(const QString& text, double spaceBehind = 0) {
        constexpr int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;
        const QRectF rest(area_.left(), 0, area_.width(), area_.height());
        const double height =
            std::max(lineHeight_, painter_.boundingRect(rest, flags, text).height());
        if (y_ + height > area_.height() && y_ > 0 && !nextPage()) {
            return false;
        }
        painter_.drawText(QRectF(area_.left(), y_, area_.width(), area_.height() - y_), flags,
                          text);
        y_ += height + spaceBehind * lineHeight_;
        return true;
    }

    bool end() {
        writePageNumber();
        return painter_.end();
    }

  private:
    bool nextPage() {
        writePageNumber();
        ++page_;
        y_ = 0;
        return device_.newPage();
    }

    void writePageNumber() {
        painter_.drawText(QRectF(area_.left(), area_.height(), area_.width(), lineHeight_ * 2),
                          Qt::AlignRight | Qt::AlignBottom, QStringLiteral("Page %1").arg(page_));
    }

    QPagedPaintDevice& device_;
    QPainter painter_;
    QRectF area_;
    double lineHeight_ = 0;
    double y_ = 0;
    int page_ = 1;
};

}  // namespace

bool printMessageLines(QPagedPaintDevice& device, const MessageLines& content) {
    PageWriter writer(device);
    if (!writer.begin() || !writer.write(toQString(content.title)) ||
        !writer.write(toQString(content.subtitle), 1)) {
        return false;
    }
    for (const auto& line : content.lines) {
        if (!writer.write(toQString(line))) {
            return false;
        }
    }
    return writer.end();
}

MessagesWindow::MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content,
                               std::function<bool(const std::string&)> goToLine, QWidget* parent)
    : QDialog(parent),
      ui_(ui),
      door_(door),
      content_(std::move(content)),
      goToLine_(std::move(goToLine)) {
    setObjectName(QStringLiteral("Messages"));
    setWindowTitle(content_.title.empty() ? QStringLiteral("Messages") : toQString(content_.title));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    if (!content_.subtitle.empty()) {
        auto* subtitle = look::makeNote(toQString(content_.subtitle), this);
        subtitle->setObjectName(QStringLiteral("subtitle"));
        subtitle->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(subtitle);
    }
    list_ = new QListView(this);
    list_->setObjectName(QStringLiteral("lines"));
    list_->setAccessibleName(QStringLiteral("Messages"));
    list_->setModel(new QStringListModel(toQStrings(content_.lines), list_));
    list_->setUniformItemSizes(true);
    list_->setGridSize(sizeOfLongest(content_.lines, *list_));
    list_->setTextElideMode(Qt::ElideNone);
    list_->setEditTriggers(QListView::NoEditTriggers);
    list_->setSelectionMode(QListView::ExtendedSelection);
    layout->addWidget(list_, 1);

    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    auto* print = addButton(*row, this, "print", u"&Print", u"print");
    auto* save = addButton(*row, this, "saveAs", u"&Save As", u"save-as");
    auto* copy = addButton(*row, this, "copy", u"C&opy", u"copy");
    auto* goTo = addButton(*row, this, "goTo", u"&Go To", u"search");
    goTo->setVisible(static_cast<bool>(goToLine_));
    connect(goTo, &QPushButton::clicked, this, [this] {
        if (list_->currentIndex().isValid()) {
            activate(list_->currentIndex().row());
        }
    });
    row->addStretch();
    auto* close = addButton(*row, this, "close", u"&Close Window", u"");
    close->setDefault(true);
    connect(print, &QPushButton::clicked, this, &MessagesWindow::printLines);
    connect(save, &QPushButton::clicked, this, &MessagesWindow::saveLines);
    connect(copy, &QPushButton::clicked, this, &MessagesWindow::copyLines);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(list_, &QListView::doubleClicked, this,
            [this](const QModelIndex& index) { activate(index.row()); });
    auto* copyKey = new QShortcut(QKeySequence::Copy, this);
    connect(copyKey, &QShortcut::activated, this, &MessagesWindow::copyLines);
    resize(look::charactersWide(*this, 96), look::unit(*this) * 2 * 24);
    list_->setMinimumWidth(look::charactersWide(*this, 50));
    list_->setFocus();
}

std::string MessagesWindow::lineAt(int row) const {
    return content_.lines[static_cast<std::size_t>(row)];
}

void MessagesWindow::activate(int row) {
    if (!goToLine_ || !goToLine_(lineAt(row))) {
        ui_.beep();
    }
}

void MessagesWindow::copyLines() {
    auto rows = list_->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const auto& index : rows) {
        lines.append(toQString(lineAt(index.row())));
    }
    if (rows.isEmpty()) {
        lines = toQStrings(content_.lines);
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void MessagesWindow::saveLines() {
    FilePrompt prompt;
    prompt.title = "Save Messages";
    prompt.filters = {{"Text Files", "*.txt"}};
    prompt.forSaving = true;
    const auto choice = ui_.chooseFile(prompt);
    FileWriter file;
    if (!choice ||
        !openFileChecked(&ui_, choice->path, WriteMode::Truncate, OverwritePolicy::Ask, file)) {
        return;
    }
    for (const auto& line : content_.lines) {
        file.write(line);
        file.put('\n');
    }
    if (const auto status = file.close(); !status.ok()) {
        showBox(&ui_, "Unable to save '" + status.path() + "'\n\nReason: " + status.reason(),
                "Save Messages");
    }
}

void MessagesWindow::printLines() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName(QStringLiteral("Print"));
    dialog.setWindowTitle(QStringLiteral("Print Messages"));
    if (runDialog(door_, dialog) == QDialog::Accepted && !printMessageLines(printer, content_)) {
        showBox(&ui_, "The messages could not be printed.", "Print Messages");
    }
}

}  // namespace kavu
