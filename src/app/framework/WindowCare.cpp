#include "app/framework/WindowCare.h"

#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/ToolTip.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitterHandle>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolTip>
#include <QVBoxLayout>

namespace kavu {

namespace {

constexpr char kCared[] = "kavuCared";
constexpr char kFitted[] = "kavuFitted";
constexpr char kHelpTopic[] = "kavuHelpTopic";

/// True the first time.
bool begins(QObject& object, const char* mark) {
    if (object.property(mark).toBool()) {
        return false;
    }
    object.setProperty(mark, true);
    return true;
}

/// A part that the toolkit or a scroll area puts around the fields.
bool isAroundFields(const QWidget& widget) {
    return qobject_cast<const QTabBar*>(&widget) != nullptr ||
           qobject_cast<const QTabWidget*>(&widget) != nullptr ||
           qobject_cast<const QScrollArea*>(&widget) != nullptr ||
           qobject_cast<const QScrollBar*>(&widget) != nullptr ||
           qobject_cast<const QSplitterHandle*>(&widget) != nullptr ||
           qobject_cast<const QDialogButtonBox*>(widget.parentWidget()) != nullptr;
}

bool takesKeyboard(const QWidget& widget, const QWidget& within) {
    if ((widget.focusPolicy() & Qt::TabFocus) == 0 || !widget.isEnabled() ||
        !widget.isVisibleTo(&within) || widget.focusProxy() != nullptr || isAroundFields(widget)) {
        return false;
    }
    // Of radio buttons the one that is chosen stands for all.
    const auto* const radio = qobject_cast<const QRadioButton*>(&widget);
    return radio == nullptr || radio->isChecked() || !radio->autoExclusive();
}

/// A list edits a cell in a control of its own, which is below its view.
bool isInCell(const QWidget* widget) {
    const auto* const viewport = widget == nullptr ? nullptr : widget->parentWidget();
    const auto* const view = viewport == nullptr
                                 ? nullptr
                                 : qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
    return view != nullptr && view->viewport() == viewport;
}

bool isReturn(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

/// A dialog tells its field of the keyboard before it has it, as if by the Tab key, which selects
/// the text: a key that is then hit by mistake would replace it.
class FirstFocus : public QObject {
  public:
    explicit FirstFocus(QWidget& field) : QObject(&field), field_(field) {}

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::FocusIn) {
            return QObject::eventFilter(receiver, event);
        }
        field_.removeEventFilter(this);
        deleteLater();
        return !field_.hasFocus() &&
               static_cast<QFocusEvent*>(event)->reason() == Qt::TabFocusReason;
    }

  private:
    QWidget& field_;
};

/// F1 as it is handed on by a dialog: whoever does not know what to do with it leaves it.
class HelpKey : public QKeyEvent {
  public:
    HelpKey() : QKeyEvent(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier) {}
};

/// A dialog may open the help itself; else those that it belongs to are asked, the next one first.
void askForHelp(QWidget& dialog) {
    std::string topic;
    for (QWidget* window = &dialog;;) {
        HelpKey key;
        if (topic.empty() && QCoreApplication::sendEvent(window, &key) && key.isAccepted()) {
            return;
        }
        if (topic.empty()) {
            topic = toBytes(window->property(kHelpTopic).toString());
        }
        if (window->parentWidget() == nullptr) {
            HelpRequest request(std::move(topic));
            QCoreApplication::sendEvent(window, &request);
            return;
        }
        window = window->parentWidget()->window();
    }
}

class DialogCare : public QObject {
  public:
    explicit DialogCare(QDialog& dialog) : QObject(&dialog), dialog_(dialog) {}

    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (receiver == &dialog_ && event->type() == QEvent::Show && !event->spontaneous()) {
            fitDialogToScreen(dialog_);
            const auto* const focus = dialog_.focusWidget();
            if (focus == nullptr || isAroundFields(*focus)) {
                focusFirstField(dialog_);
            } else {
                dialog_.setAttribute(Qt::WA_KeyboardFocusChange);
            }
        }
        if (receiver == &dialog_ && event->type() == QEvent::KeyPress) {
            const auto& key = *static_cast<QKeyEvent*>(event);
            if (key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier &&
                dynamic_cast<HelpKey*>(event) == nullptr) {
                askForHelp(dialog_);
                return true;
            }
            // A key that is held down since before the dialog opened is not meant for it.
            if (isReturn(key) && (key.isAutoRepeat() || isInCell(dialog_.focusWidget()))) {
                return true;
            }
        }
        return QObject::eventFilter(receiver, event);
    }

  private:
    QDialog& dialog_;
};

class ViewCare : public QObject {
  public:
    explicit ViewCare(QAbstractItemView& view) : QObject(&view), view_(view) {}

    bool eventFilter(QObject* receiver, QEvent* event) override {
        switch (event->type()) {
            case QEvent::FocusIn:
            case QEvent::FocusOut:
                if (receiver == &view_) {
                    view_.update();  // the frame shows who has the keyboard
                }
                break;
            case QEvent::ToolTip:
                if (receiver == view_.viewport() && showElided(*static_cast<QHelpEvent*>(event))) {
                    return true;
                }
                break;
            default:
                break;
        }
        return QObject::eventFilter(receiver, event);
    }

  private:
    bool showElided(const QHelpEvent& event) {
        const auto index = view_.indexAt(event.pos());
        const auto text = index.data(Qt::DisplayRole).toString();
        if (text.isEmpty() || !index.data(Qt::ToolTipRole).toString().isEmpty()) {
            return false;
        }
        const auto cell = view_.visualRect(index);
        const auto seen = cell.intersected(view_.viewport()->rect());
        if (view_.sizeHintForIndex(index).width() <= seen.width()) {
            return false;
        }
        QToolTip::showText(event.globalPos(), plainToolTip(text), view_.viewport(), cell);
        return true;
    }

    QAbstractItemView& view_;
};

/// As large as what it holds, if it may be.
class Contents : public QScrollArea {
  public:
    using QScrollArea::QScrollArea;
    [[nodiscard]] QSize sizeHint() const override {
        if (widget() == nullptr) {
            return QScrollArea::sizeHint();
        }
        // A bar that scrolls one way takes room of the other.
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        return widget()->sizeHint().expandedTo(widget()->minimumSizeHint()) + QSize(bar, bar);
    }
};

/// True for the row of the dialog's own buttons.
bool holdsButtons(QLayoutItem& row) {
    if (qobject_cast<const QDialogButtonBox*>(row.widget()) != nullptr) {
        return true;
    }
    const auto* const parts = row.layout();
    for (int i = 0; parts != nullptr && i < parts->count(); ++i) {
        auto* const widget = parts->itemAt(i)->widget();
        if (qobject_cast<const QDialogButtonBox*>(widget) != nullptr ||
            qobject_cast<const QPushButton*>(widget) != nullptr) {
            return true;
        }
    }
    return false;
}

/// Moves all rows of the dialog's column, but for that of its buttons at the end, into an area that
/// scrolls.
void makeContentsScroll(QDialog& dialog) {
    auto* const column = qobject_cast<QVBoxLayout*>(dialog.layout());
    if (column == nullptr || column->count() == 0) {
        return;
    }
    const int buttons = holdsButtons(*column->itemAt(column->count() - 1)) ? 1 : 0;
    auto* const area = new Contents(&dialog);
    area->setObjectName(QStringLiteral("contents"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    // In the window from the start: what moves within it keeps its place in the order of Tab.
    auto* const inside = new QWidget(area);
    auto* const rows = new QVBoxLayout(inside);
    rows->setContentsMargins({});
    rows->setSpacing(column->spacing());
    // A widget that gets another parent is hidden, and is shown only some time later.
    QList<QWidget*> shown = {area, inside};
    for (auto* const child : dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!child->isHidden()) {
            shown << child;
        }
    }
    while (column->count() > buttons) {
        const int stretch = column->stretch(0);
        auto* const item = column->takeAt(0);
        if (auto* const widget = item->widget()) {
            rows->addWidget(widget, stretch, item->alignment());
            delete item;
        } else if (auto* const layout = item->layout()) {
            layout->setParent(nullptr);
            rows->addLayout(layout, stretch);
        } else {
            rows->addItem(item);
        }
    }
    area->setWidget(inside);
    inside->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    column->insertWidget(0, area, 1);
    for (auto* const widget : shown) {
        widget->show();
    }
    // Wide enough that only the height scrolls, if the screen allows.
    area->setMinimumWidth(
        std::min(inside->minimumSizeHint().width() + area->verticalScrollBar()->sizeHint().width(),
                 look::roomOnScreen(dialog).width() / 2));
}

}  // namespace

void careForDialog(QDialog& dialog) {
    if (begins(dialog, kCared)) {
        dialog.installEventFilter(new DialogCare(dialog));
    }
}

void setHelpTopic(QDialog& dialog, const std::string& topic) {
    dialog.setProperty(kHelpTopic, toQString(topic));
}

QEvent::Type HelpRequest::kind() {
    static const auto registered = static_cast<Type>(QEvent::registerEventType());
    return registered;
}

void careForView(QAbstractItemView& view) {
    if (begins(view, kCared)) {
        auto* const care = new ViewCare(view);
        view.installEventFilter(care);
        view.viewport()->installEventFilter(care);
    }
}

QWidget* firstField(QWidget& within) {
    for (auto* widget = within.nextInFocusChain(); widget != nullptr && widget != &within;
         widget = widget->nextInFocusChain()) {
        if (within.isAncestorOf(widget) && takesKeyboard(*widget, within)) {
            return widget;
        }
    }
    return nullptr;
}

void focusFirstField(QWidget& within) {
    if (qobject_cast<QMessageBox*>(&within) != nullptr ||
        qobject_cast<QFileDialog*>(&within) != nullptr) {
        return;  // they know what Return is to do
    }
    if (auto* const field = firstField(within)) {
        within.window()->setAttribute(Qt::WA_KeyboardFocusChange);
        field->setFocus(Qt::OtherFocusReason);
        if (!field->hasFocus()) {
            field->installEventFilter(new FirstFocus(*field));
        }
    }
}

void fitDialogToScreen(QDialog& dialog) {
    const auto room = look::roomOnScreen(dialog);
    // A size that it needs, or that a person has given to it, may take all of the screen's width.
    const auto most = dialog.screen() == nullptr ? room : dialog.screen()->availableSize();
    const auto least = dialog.minimumSizeHint();
    if ((least.width() > most.width() || least.height() > room.height()) &&
        begins(dialog, kFitted)) {
        makeContentsScroll(dialog);
        // What is in the area has no say in the size any more.
        if (dialog.layout() != nullptr) {
            dialog.layout()->activate();
        }
        dialog.resize(dialog.sizeHint().expandedTo(least).boundedTo(room));
        return;
    }
    if (dialog.width() > most.width() || dialog.height() > most.height()) {
        dialog.resize(dialog.size().boundedTo(room));
    }
}

}  // namespace kavu
