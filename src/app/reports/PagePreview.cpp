#include "app/reports/PagePreview.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/reports/FindRow.h"
#include "core/talk/UserInterface.h"

#include <algorithm>
#include <array>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr auto kZooms = std::to_array({50, 75, 100, 125, 150, 200, 300, 400});

}  // namespace

PagePreview::PagePreview(FormContext& form, const std::string& title, PaperUse use, MakePages make,
                         QWidget* parent)
    : QDialog(parent),
      form_(form),
      title_(title),
      use_(use),
      make_(std::move(make)),
      paper_(readPaper(form.settings, use)) {
    setObjectName(QStringLiteral("PagePreview"));
    setWindowTitle(toQString("Print Preview: " + title));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setHelpTopic(*this, "PagePreview");
    auto* const column = new QVBoxLayout(this);
    look::arrangeWindow(*column, *this);
    makePageRow();
    makeFindRow();
    view_ = new PageView(this);
    column->addWidget(view_, 1);
    makeButtons();
    makeDocument();
    for (auto* const button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    connect(view_, &PageView::zoomChanged, this, [this](int percent) {
        const auto text = QStringLiteral("%1%").arg(percent);
        zoom_->setToolTip(text);
        zoom_->setCurrentIndex(std::max(0, zoom_->findText(text)));
    });
    connect(view_, &PageView::pageChanged, this, &PagePreview::showPage);
    connect(view_, &PageView::selectionChanged, this,
            [this] { copy_->setEnabled(!view_->selectedText().isEmpty()); });
    resize(QSize(look::charactersWide(*this, 120), look::unit(*this) * 90)
               .boundedTo(look::roomOnScreen(*this)));
}

void PagePreview::makePageRow() {
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    page_ = new QSpinBox(this);
    page_->setObjectName(QStringLiteral("page"));
    row->addWidget(look::addKeyLabel(QStringLiteral("&Page:"), *page_));
    row->addWidget(page_);
    pages_ = new QLabel(this);
    pages_->setObjectName(QStringLiteral("pageCount"));
    row->addWidget(pages_);
    row->addStretch(1);
    const auto addChoice = [&](QComboBox*& box, const char* name, const QString& label,
                               const QStringList& entries) {
        box = new QComboBox(this);
        box->setObjectName(QLatin1String(name));
        box->addItems(entries);
        row->addWidget(look::addKeyLabel(label, *box));
        row->addWidget(box);
    };
    QStringList zooms{QStringLiteral("Width")};
    for (const int zoom : kZooms) {
        zooms << QStringLiteral("%1%").arg(zoom);
    }
    addChoice(zoom_, "zoom", QStringLiteral("&Zoom:"), zooms);
    addChoice(size_, "paper", QStringLiteral("Pape&r:"),
              {QStringLiteral("A4"), QStringLiteral("Letter")});
    orientation_ = new QComboBox(this);
    orientation_->setObjectName(QStringLiteral("orientation"));
    orientation_->setAccessibleName(QStringLiteral("Orientation"));
    orientation_->addItems({QStringLiteral("Portrait"), QStringLiteral("Landscape")});
    row->addWidget(orientation_);
    size_->setCurrentIndex(static_cast<int>(paper_.size));
    orientation_->setCurrentIndex(paper_.isLandscape ? 1 : 0);
    connect(page_, &QSpinBox::valueChanged, this, [this](int page) {
        if (page != view_->currentPage()) {
            view_->goToPage(page);
        }
    });
    connect(zoom_, &QComboBox::activated, this, [this](int index) {
        if (index == 0) {
            view_->fitWidth();
        } else {
            view_->setZoom(kZooms[static_cast<std::size_t>(index) - 1]);
        }
    });
    connect(size_, &QComboBox::activated, this, &PagePreview::choosePaper);
    connect(orientation_, &QComboBox::activated, this, &PagePreview::choosePaper);
}

void PagePreview::makeFindRow() {
    auto* const row = new FindRow(
        [this](const QString& text, bool forward) { return view_->find(text, forward); }, *this);
    copy_ = look::makeButton("copy", QStringLiteral("C&opy"), {}, this);
    copy_->setEnabled(false);
    connect(copy_, &QPushButton::clicked, this, [this] { view_->copy(); });
    row->addWidget(copy_);
    layout()->addWidget(row);
}

void PagePreview::makeButtons() {
    auto* const row = new QHBoxLayout;
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    const auto add = [&](const char* name, const QString& text, const char* icon, auto run) {
        auto* const button = look::makeButton(name, text, QLatin1String(icon), this);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, run);
    };
    add("print", QStringLiteral("Pr&int..."), "print", [this] { print(); });
    add("savePdf", QStringLiteral("&Save As PDF..."), "save-as", [this] { save(); });
    row->addStretch(1);
    add("close", QStringLiteral("&Close"), "", [this] { reject(); });
    connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, this,
            &PagePreview::print);
}

void PagePreview::makeDocument() {
    auto made = std::make_shared<PrintedDocument>(make_(paper_));
    view_->setDocument(made);
    document_ = std::move(made);
    const int count = view_->pageCount();
    page_->setRange(std::min(1, count), count);
    pages_->setText(QStringLiteral("of %1").arg(count));
    showPage(view_->currentPage());
}

void PagePreview::choosePaper() {
    const PaperSetup chosen{.size = static_cast<PaperSize>(size_->currentIndex()),
                            .isLandscape = orientation_->currentIndex() == 1};
    if (chosen != paper_) {
        paper_ = chosen;
        writePaper(form_.settings, use_, paper_);
        makeDocument();
        view_->fitWidth();
    }
}

void PagePreview::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!wasShown_) {
        wasShown_ = true;
        view_->fitWidth();
    }
}

void PagePreview::showPage(int page) {
    page_->setValue(page);
}

void PagePreview::print() {
    printPages(form_, *document_, this);
}

void PagePreview::save() {
    saveReportFile(form_, title_, {"PDF Files", "*.pdf"}, ".pdf", document_->pdf);
}

void previewPages(FormContext& form, const std::string& title, PaperUse use, const MakePages& make,
                  QWidget* parent) {
    const auto under = [&form, make](const PaperSetup& paper) {
        const ProgressScope progress(&form.ui, ProgressMode::WithCancel, false);
        return make(paper);
    };
    PagePreview preview(form, title, use, under, parent);
    if (preview.view().pageCount() > 0) {
        runDialog(form.door, preview);
    }
}

}  // namespace kavu
