#include "app/framework/PropertySheet.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/EditDialog.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "core/talk/ProfileSettings.h"

#include <algorithm>

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kPageSection[] = "PropSheet";
// The size of a sheet, in characters and lines.
constexpr int kNarrowest = 70;
constexpr int kWidestTabs = 212;
constexpr int kLowest = 18;

/// A page larger than the screen scrolls; any other is as large as it wants.
class PageScroller : public QScrollArea {
  public:
    PageScroller(QWidget* page, QWidget* parent) : QScrollArea(parent) {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        setWidget(page);
        page->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
    }
    [[nodiscard]] QSize sizeHint() const override {
        return widget()->sizeHint().expandedTo(widget()->minimumSizeHint());
    }
};

}  // namespace

PropertyPage::PropertyPage(FormContext& form, const char* resourceName, const std::string& title,
                           QWidget* parent)
    : QWidget(parent), form_(form), title_(title) {
    setObjectName(QLatin1String(resourceName));
}

void PropertyPage::markChanged() {
    changed_ = true;
    emit changed();
}

PropertySheet::PropertySheet(FormContext& form, const char* resourceName, const std::string& title,
                             std::string pageKey, QWidget* parent)
    : QDialog(parent), form_(form), pageKey_(std::move(pageKey)) {
    setObjectName(QLatin1String(resourceName));
    setWindowTitle(toQString(title));
    auto* layout = new QVBoxLayout(this);
    look::arrangeWindow(*layout, *this);
    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("pages"));
    tabs_->setAccessibleName(QStringLiteral("Pages"));
    tabs_->tabBar()->setAccessibleName(QStringLiteral("Pages"));
    tabs_->setUsesScrollButtons(true);
    tabs_->setTabBarAutoHide(true);
    layout->addWidget(tabs_, 1);
    buttons_ = look::makeDialogButtons(*this, true);
    layout->addWidget(buttons_);
    auto* help = buttons_->button(QDialogButtonBox::Help);
    help->setEnabled(static_cast<bool>(form_.help));
    connect(help, &QPushButton::clicked, this, &PropertySheet::openHelp);
    connect(tabs_, &QTabWidget::currentChanged, this, &PropertySheet::rememberPage);
}

PropertyPage& PropertySheet::addPage(std::unique_ptr<PropertyPage> page) {
    auto* added = page.release();
    auto* scroller = new PageScroller(added, tabs_);
    tabs_->addTab(scroller, toQString(added->title()).replace(u'&', QStringLiteral("&&")));
    pages_.push_back(added);
    added->load();
    connect(added, &PropertyPage::changed, this, &PropertySheet::showApply);
    return *added;
}

QPushButton* PropertySheet::addButton(const char* name, const QString& text) {
    if (tools_ == nullptr) {
        tools_ = new QHBoxLayout;
        tools_->addStretch();
        auto& rows = *static_cast<QVBoxLayout*>(layout());
        rows.insertLayout(rows.count() - 1, tools_);
    }
    auto* const button = look::makeButton(name, text, {}, this);
    tools_->insertWidget(tools_->count() - 1, button);
    return button;
}

QPushButton* PropertySheet::addApply() {
    apply_ = buttons_->addButton(QDialogButtonBox::Apply);
    apply_->setObjectName(QStringLiteral("apply"));
    apply_->setText(QStringLiteral("&Apply"));
    apply_->setAccessibleName(QStringLiteral("Apply"));
    connect(apply_, &QPushButton::clicked, this, &PropertySheet::apply);
    showApply();
    return apply_;
}

void PropertySheet::markChanged() {
    changedElsewhere_ = true;
    showApply();
}

void PropertySheet::showApply() {
    if (apply_ != nullptr) {
        apply_->setEnabled(isChanged());
    }
}

bool PropertySheet::isChanged() const {
    return changedElsewhere_ || std::any_of(pages_.begin(), pages_.end(),
                                            [](const auto* page) { return page->isChanged(); });
}

void PropertySheet::disableCancel() {
    cancelDisabled_ = true;
    buttons_->button(QDialogButtonBox::Cancel)->setEnabled(false);
}

PropertyPage& PropertySheet::page(int index) const {
    return *pages_[static_cast<std::size_t>(index)];
}

void PropertySheet::openPage(int index) {
    tabs_->setCurrentIndex(std::clamp(index, 0, std::max(0, pageCount() - 1)));
}

void PropertySheet::openFirst(int index) {
    openPage(index);
    pageKey_.clear();
}

int PropertySheet::openedPage() const {
    return tabs_->currentIndex();
}

void PropertySheet::showEvent(QShowEvent* event) {
    if (!pageRestored_) {
        if (!pageKey_.empty()) {
            openPage(form_.settings.profileInteger(kPageSection, pageKey_, 1) - 1);
        }
        pageRestored_ = true;
        putButtonsLast();
        fitToScreen();
        if (pageCount() > 0) {
            focusFirstField(page(openedPage()));
        }
    }
    QDialog::showEvent(event);
}

/// The pages came after the buttons; the Tab key goes through them first.
void PropertySheet::putButtonsLast() {
    QWidget* last = tabs_;
    for (auto* widget = nextInFocusChain(); widget != this; widget = widget->nextInFocusChain()) {
        if (tabs_->isAncestorOf(widget) && widget->focusPolicy() != Qt::NoFocus) {
            last = widget;
        }
    }
    for (int i = 0; tools_ != nullptr && i < tools_->count(); ++i) {
        if (auto* const button = tools_->itemAt(i)->widget()) {
            setTabOrder(last, button);
            last = button;
        }
    }
    for (const char* name : {"ok", "cancel", "apply", "help"}) {
        if (auto* const button = buttons_->findChild<QPushButton*>(QLatin1String(name))) {
            setTabOrder(last, button);
            last = button;
        }
    }
}

void PropertySheet::fitToScreen() {
    // Tabs that one has to scroll to are not found; only very many of them may be hidden.
    const int tabs = std::min(tabs_->tabBar()->sizeHint().width() + look::unit(*this) * 8,
                              look::charactersWide(*this, kWidestTabs));
    const auto wanted = sizeHint().expandedTo(QSize(
        std::max(tabs, look::charactersWide(*this, kNarrowest)), look::unit(*this) * 2 * kLowest));
    resize(look::scrollingSize(*this, wanted));
}

void PropertySheet::rememberPage(int index) {
    // Pages that are being added open the first one; that is no choice of the user.
    if (pageRestored_ && !checking_ && !pageKey_.empty() && index >= 0) {
        form_.settings.writeProfile(kPageSection, pageKey_, std::to_string(index + 1));
    }
}

void PropertySheet::accept() {
    if (!isChanged()) {
        result_ = SheetResult::Unchanged;
        QDialog::accept();
        return;
    }
    if (storePages()) {
        result_ = SheetResult::Stored;
        QDialog::accept();
    }
}

/// Checks the pages in their order. Each comes to the front for it: what is wrong on it
/// takes the focus there.
bool PropertySheet::validatePages() {
    const int before = openedPage();
    checking_ = true;
    for (int i = 0; i < pageCount(); ++i) {
        openPage(i);
        if (!page(i).validate()) {
            checking_ = false;
            rememberPage(i);
            return false;
        }
    }
    openPage(before);
    checking_ = false;
    return true;
}

bool PropertySheet::storePages() {
    if (!validatePages()) {
        return false;
    }
    const bool stored =
        std::all_of(pages_.begin(), pages_.end(), [](PropertyPage* page) { return page->store(); });
    return stored && (!writer_ || writer_());
}

void PropertySheet::apply() {
    if (!isChanged() || !storePages()) {
        return;
    }
    for (auto* const page : pages_) {
        page->markStored();
    }
    changedElsewhere_ = false;
    showApply();
}

Button PropertySheet::ask(const char* question, Buttons buttons) {
    return showBox(&form_.ui, question, kCancelTitle, Icon::Question, buttons);
}

void PropertySheet::reject() {
    if (cancelDisabled_) {
        return;
    }
    if (isChanged() &&
        ask("Items have changed. If you cancel, these items will not take effect.\n\n"
            "Do you really want to cancel?",
            Buttons::YesNo) != Button::Yes) {
        return;
    }
    result_ = SheetResult::Cancelled;
    QDialog::reject();
}

void PropertySheet::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (cancelDisabled_) {
        accept();
        return;
    }
    if (!isChanged()) {
        reject();
        return;
    }
    const auto answer =
        ask("Items have changed. If you close this window, all changes will be lost!\n\n"
            "Save changes before closing?",
            Buttons::YesNoCancel);
    if (answer == Button::Yes) {
        accept();
    } else if (answer == Button::No) {
        result_ = SheetResult::Cancelled;
        QDialog::reject();
    }
}

void PropertySheet::openHelp() {
    if (form_.help) {
        form_.help(toBytes(pages_.empty() ? objectName() : page(openedPage()).objectName()));
    }
}

void PropertySheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        openHelp();
        return;
    }
    QDialog::keyPressEvent(event);
}

SheetResult runPropertySheet(FormContext& form, PropertySheet& sheet) {
    if (!form.door.enterSheet()) {
        showBox(&form.ui, "Too many property sheets defined", "Unable To Create Property Sheet");
        return SheetResult::NotCreated;
    }
    runDialog(form.door, sheet);
    form.door.leaveSheet();
    return sheet.sheetResult();
}

}  // namespace kavu
