#include "app/support/WidgetChecks.h"

#include "app/framework/QtText.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTextEdit>

namespace kavu::test {

namespace {

/// Parts that the toolkit makes inside its own controls.
bool isInner(const QWidget& widget) {
    const auto* parent = widget.parentWidget();
    return widget.objectName().startsWith(QStringLiteral("qt_")) ||
           qobject_cast<const QScrollBar*>(&widget) != nullptr ||
           qobject_cast<const QHeaderView*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(parent) != nullptr ||
           qobject_cast<const QLineEdit*>(parent) != nullptr ||
           qobject_cast<const QComboBox*>(parent) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(parent) != nullptr ||
           (qobject_cast<const QAbstractItemView*>(parent) != nullptr &&
            qobject_cast<const QAbstractButton*>(&widget) != nullptr) ||
           widget.inherits("QComboBoxPrivateContainer");
}

bool isControl(const QWidget& widget) {
    return !isInner(widget) && (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                                qobject_cast<const QLineEdit*>(&widget) != nullptr ||
                                qobject_cast<const QComboBox*>(&widget) != nullptr ||
                                qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
                                qobject_cast<const QTextEdit*>(&widget) != nullptr ||
                                qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
                                qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
                                qobject_cast<const QProgressBar*>(&widget) != nullptr ||
                                qobject_cast<const QTabBar*>(&widget) != nullptr);
}

std::string described(const QWidget& widget) {
    std::string text = widget.metaObject()->className();
    text += " '" + toBytes(widget.objectName()) + "'";
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        text += " \"" + toBytes(label->text()) + "\"";
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        text += " \"" + toBytes(button->text()) + "\"";
    }
    return text;
}

template <typename Visit>
void forEachVisible(const QWidget& window, Visit visit) {
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && !isInner(*widget)) {
            visit(*widget);
        }
    }
}

void append(std::vector<std::string>& all, const std::vector<std::string>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

void checkLabel(const QLabel& label, std::vector<std::string>& found) {
    if (label.text().endsWith(u':') && label.buddy() == nullptr) {
        found.push_back(described(label) + ": a label without a buddy");
    } else if (label.buddy() != nullptr && !label.buddy()->isVisible()) {
        found.push_back(described(label) + ": its buddy is not there");
    }
}

void checkHead(const QHeaderView& head, std::vector<std::string>& found) {
    for (int i = 0; head.isVisible() && i < head.count(); ++i) {
        if (head.sectionSize(i) < head.sectionSizeHint(i) && !head.isSectionHidden(i)) {
            found.push_back(described(*head.parentWidget()) + ": the head of column " +
                            std::to_string(i) + " is cut");
        }
    }
}

const QScrollArea* scrollerOf(const QWidget& widget) {
    const QWidget* above = widget.parentWidget();
    while (above != nullptr && qobject_cast<const QScrollArea*>(above) == nullptr) {
        above = above->parentWidget();
    }
    return static_cast<const QScrollArea*>(above);
}

bool isCut(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->wordWrap()) {
            return label->height() < label->heightForWidth(label->width());
        }
        // One that ignores the height of its text is made to be cut where there is no room.
        const bool mayBeLow = label->sizePolicy().verticalPolicy() == QSizePolicy::Ignored;
        return label->width() < label->sizeHint().width() ||
               (!mayBeLow && label->height() < label->sizeHint().height());
    }
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr) {
        return widget.width() < widget.sizeHint().width() ||
               widget.height() < widget.sizeHint().height();
    }
    if (qobject_cast<const QGroupBox*>(&widget) != nullptr || isControl(widget)) {
        const auto least = widget.minimumSizeHint();
        return widget.width() < least.width() || widget.height() < least.height();
    }
    return false;
}

}  // namespace

std::vector<std::string> checkNames(const QWidget& window) {
    std::vector<std::string> found;
    forEachVisible(window, [&](const QWidget& widget) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            checkLabel(*label, found);
        }
        if (!isControl(widget)) {
            return;
        }
        if (widget.objectName().isEmpty()) {
            found.push_back(described(widget) + ": a control without an object name");
        }
        auto* spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
        if (spoken == nullptr || spoken->text(QAccessible::Name).trimmed().isEmpty()) {
            found.push_back(described(widget) + ": a control without an accessible name");
        }
    });
    return found;
}

std::vector<std::string> checkText(const QWidget& window) {
    std::vector<std::string> found;
    forEachVisible(window, [&](const QWidget& widget) {
        if (isCut(widget)) {
            found.push_back(described(widget) + ": its text does not fit into " +
                            std::to_string(widget.width()) + " x " +
                            std::to_string(widget.height()));
        }
    });
    for (const auto* head : window.findChildren<QHeaderView*>()) {
        if (head->orientation() == Qt::Horizontal) {
            checkHead(*head, found);
        }
    }
    return found;
}

std::vector<QWidget*> tabChain(const QWidget& window) {
    std::vector<QWidget*> chain;
    for (auto* widget = window.nextInFocusChain(); widget != &window && widget != nullptr;
         widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isVisible() &&
            widget->isEnabled() && widget->focusProxy() == nullptr && !isInner(*widget)) {
            chain.push_back(widget);
        }
    }
    return chain;
}

std::vector<std::string> checkTabOrder(const QWidget& window) {
    std::vector<std::string> found;
    const auto chain = tabChain(window);
    const auto place = [&](const QWidget& widget) {
        return QRect(widget.mapTo(&window, QPoint(0, 0)), widget.size());
    };
    for (std::size_t i = 1; i < chain.size(); ++i) {
        // What is scrolled out of sight has no place that could be compared with one outside.
        if (scrollerOf(*chain[i - 1]) != scrollerOf(*chain[i]) &&
            (chain[i - 1]->visibleRegion().isEmpty() || chain[i]->visibleRegion().isEmpty())) {
            continue;
        }
        const auto before = place(*chain[i - 1]);
        const auto after = place(*chain[i]);
        const bool sameRow = after.top() < before.bottom() && before.top() < after.bottom();
        const bool goesBack = sameRow
                                  ? after.left() < before.left()
                                  : after.bottom() <= before.top() && after.left() < before.right();
        if (goesBack) {
            found.push_back(described(*chain[i]) + ": Tab goes back to it from " +
                            described(*chain[i - 1]));
        }
    }
    return found;
}

std::vector<std::string> checkWindow(QWidget& window) {
    window.show();
    QApplication::processEvents();
    QApplication::processEvents();
    std::vector<std::string> found;
    append(found, checkNames(window));
    append(found, checkText(window));
    append(found, checkTabOrder(window));
    return found;
}

}  // namespace kavu::test
