#include "app/framework/MessagesWindow.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "core/talk/OpenFileChecked.h"
#include "core/talk/UserInterface.h"

#include <algorithm>

#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace kavu {

namespace {

/// The width of the longest text, which is read by scrolling. Its characters show which is the
/// longest, as to measure all takes too long.
int widthOfLongest(const std::vector<Finding>& findings, const QWidget& list) {
    constexpr int kWidest = 100'000;
    const auto longest = std::max_element(
        findings.begin(), findings.end(),
        [](const Finding& a, const Finding& b) { return a.text.size() < b.text.size(); });
    const auto text = longest == findings.end() ? QString() : toQString(longest->text).simplified();
    const int width = list.fontMetrics().horizontalAdvance(text.left(kWidest));
    return std::min(width, kWidest) + 2 * look::unit(list);
}

/// Lines as a model that lives as long as the window.
FindingModel& modelOfLines(const std::vector<std::string>& lines, QObject* owner) {
    auto* const model = new FindingModel(owner);
    std::vector<Finding> findings;
    findings.reserve(lines.size());
    for (const auto& line : lines) {
        findings.push_back(findingOfText(line, {}));
    }
    model->setFindings(std::move(findings));
    return *model;
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

MessagesWindow::MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content, GoTo goTo,
                               QWidget* parent)
    // The model belongs to the window, which is not there yet: the parent is set below.
    : MessagesWindow(ui, door, content, modelOfLines(content.lines, nullptr), std::move(goTo),
                     parent) {
    model_.setParent(this);
}

MessagesWindow::MessagesWindow(UserInterface& ui, DialogDoor& door, MessageLines content,
                               FindingModel& model, GoTo goTo, QWidget* parent)
    : QDialog(parent),
      ui_(ui),
      door_(door),
      content_(std::move(content)),
      model_(model),
      goTo_(std::move(goTo)) {
    setObjectName(QStringLiteral("Messages"));
    setHelpTopic(*this, "Messages");
    setWindowTitle(content_.title.empty() ? QStringLiteral("Messages") : toQString(content_.title));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    subtitle_ = look::makeNote({}, this);
    subtitle_->setObjectName(QStringLiteral("subtitle"));
    subtitle_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(subtitle_);
    setSubtitle(content_.subtitle);
    auto* const parts = new QSplitter(Qt::Vertical, this);
    parts->setChildrenCollapsible(false);
    makeList(parts);
    whole_ = new QPlainTextEdit(parts);
    whole_->setObjectName(QStringLiteral("whole"));
    whole_->setAccessibleName(QStringLiteral("Selected message"));
    whole_->setReadOnly(true);
    whole_->setTabChangesFocus(true);
    whole_->setMinimumHeight(std::max(look::unit(*this) * 5, whole_->minimumSizeHint().height()));
    parts->setStretchFactor(0, 4);
    parts->setStretchFactor(1, 1);
    layout->addWidget(parts, 1);
    makeButtons();
    auto* copyKey = new QShortcut(QKeySequence::Copy, list_);
    copyKey->setContext(Qt::WidgetShortcut);
    connect(copyKey, &QShortcut::activated, this, &MessagesWindow::copyLines);
    resize(QSize(look::charactersWide(*this, 110), look::unit(*this) * 2 * 26)
               .boundedTo(look::roomOnScreen(*this)));
    connect(&model_, &QAbstractItemModel::modelReset, this, [this] {
        fitColumns();
        showWhole();
        updateButtons();
    });
    fitColumns();
    showWhole();
    updateButtons();
    list_->setFocus();
}

void MessagesWindow::makeList(QWidget* parent) {
    list_ = new QTreeView(parent);
    list_->setObjectName(QStringLiteral("lines"));
    list_->setAccessibleName(QStringLiteral("Messages"));
    list_->setModel(&model_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setTextElideMode(Qt::ElideNone);
    list_->setEditTriggers(QTreeView::NoEditTriggers);
    list_->setSelectionMode(QTreeView::ExtendedSelection);
    list_->setHorizontalScrollMode(QTreeView::ScrollPerPixel);
    list_->header()->setStretchLastSection(true);
    list_->setMinimumWidth(look::charactersWide(*this, 40));
    list_->setMinimumHeight(look::unit(*this) * 8);
    connect(list_, &QTreeView::activated, this,
            [this](const QModelIndex& index) { activate(index.row()); });
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        showWhole();
        updateButtons();
    });
}

void MessagesWindow::makeButtons() {
    auto* row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    const auto add = [&](const char* name, const char16_t* text, const char16_t* icon,
                         auto action) {
        auto* button =
            look::makeButton(name, QString::fromUtf16(text), QString::fromUtf16(icon), this);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
        return button;
    };
    needContent_ = {add("print", u"&Print", u"print", &MessagesWindow::printLines),
                    add("saveAs", u"&Save As", u"save-as", &MessagesWindow::saveLines),
                    add("copy", u"C&opy", u"copy", &MessagesWindow::copyLines)};
    goToButton_ = add("goTo", u"&Go To", u"search", [this] {
        if (list_->currentIndex().isValid()) {
            activate(list_->currentIndex().row());
        }
    });
    goToButton_->setVisible(static_cast<bool>(goTo_));
    row->addStretch();
    add("close", u"&Close Window", u"", &QDialog::accept);
}

void MessagesWindow::setSubtitle(const std::string& subtitle) {
    content_.subtitle = subtitle;
    subtitle_->setText(toQString(subtitle));
    subtitle_->setVisible(!subtitle.empty());
}

/// Plain lines need no head: they have nothing but their text.
void MessagesWindow::fitColumns() {
    using Column = FindingModel::Column;
    bool isPlain = true;
    for (const int column : {Column::kNumber, Column::kSource}) {
        const bool isEmpty = model_.isEmptyColumn(column);
        list_->setColumnHidden(column, isEmpty);
        isPlain = isPlain && isEmpty;
    }
    list_->setColumnHidden(Column::kPlace, isPlain || model_.isEmptyColumn(Column::kPlace));
    list_->setHeaderHidden(isPlain);
    auto& head = *list_->header();
    head.setResizeContentsPrecision(100);
    for (const int column : {Column::kNumber, Column::kPlace, Column::kSource}) {
        list_->resizeColumnToContents(column);
        list_->setColumnWidth(column, std::min(list_->columnWidth(column) + look::unit(*this),
                                               look::charactersWide(*this, 24)));
    }
    list_->setColumnWidth(Column::kText, widthOfLongest(model_.findings(), *list_));
}

void MessagesWindow::updateButtons() {
    for (auto* const button : needContent_) {
        button->setEnabled(model_.rowCount() > 0);
    }
    const auto index = list_->currentIndex();
    goToButton_->setEnabled(
        index.isValid() &&
        model_.findings()[static_cast<std::size_t>(index.row())].place.isKnown());
}

void MessagesWindow::showWhole() {
    const auto index = list_->currentIndex();
    if (index.isValid()) {
        whole_->setPlainText(
            toQString(wholeFinding(model_.findings()[static_cast<std::size_t>(index.row())])));
    } else {
        whole_->setPlainText(model_.rowCount() > 0
                                 ? QStringLiteral("The selected message stands here in full.")
                                 : QStringLiteral("There are no messages."));
    }
}

void MessagesWindow::activate(int row) {
    if (!goTo_ || !goTo_(model_.findings()[static_cast<std::size_t>(row)])) {
        ui_.beep();
    }
}

MessageLines MessagesWindow::content() const {
    auto all = content_;
    if (all.lines.empty()) {
        all.lines = linesOfFindings(model_.findings());
    }
    return all;
}

void MessagesWindow::copyLines() {
    auto rows = list_->selectionModel()->selectedRows(FindingModel::kText);
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const auto& index : rows) {
        lines.append(toQString(model_.findings()[static_cast<std::size_t>(index.row())].text));
    }
    if (rows.isEmpty()) {
        lines = toQStrings(content().lines);
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
    for (const auto& line : content().lines) {
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
    if (runDialog(door_, dialog) == QDialog::Accepted && !printMessageLines(printer, content())) {
        showBox(&ui_, "The messages could not be printed.", "Print Messages");
    }
}

}  // namespace kavu
