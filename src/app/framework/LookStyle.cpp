#include "app/framework/LookStyle.h"

#include "app/framework/WindowCare.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace kavu {

LookStyle::LookStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (auto* const dialog = qobject_cast<QDialog*>(widget)) {
        careForDialog(*dialog);
    } else if (auto* const view = qobject_cast<QAbstractItemView*>(widget)) {
        careForView(*view);
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    switch (hint) {
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_DialogButtonLayout:
            return QDialogButtonBox::WinLayout;
        case SH_EtchDisabledText:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    const int height = option != nullptr   ? option->fontMetrics.height()
                       : widget != nullptr ? widget->fontMetrics().height()
                                           : 16;
    switch (metric) {
        case PM_SmallIconSize:
        case PM_ButtonIconSize:
        case PM_ListViewIconSize:
        case PM_TabBarIconSize:
            // Icons are next to text: they are as large as it is.
            return std::max(16, height);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return std::max(14, height * 7 / 8);
        case PM_HeaderMargin:
            // Many columns stand next to each other.
            return std::max(3, height / 6);
        case PM_ScrollBarExtent:
            return std::max(12, height * 4 / 5);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    auto wanted = QProxyStyle::sizeFromContents(type, option, size, widget);
    const int height = option == nullptr ? 16 : option->fontMetrics.height();
    switch (type) {
        case CT_PushButton:
            return wanted + QSize(height * 3 / 4, height / 8);
        case CT_LineEdit:
        case CT_ComboBox:
            return wanted + QSize(0, height / 8);
        case CT_ItemViewItem:
            // Rows with some air are read without a ruler.
            return wanted + QSize(height / 3, height / 4);
        case CT_TabBarTab:
            // The toolkit gives every tab the height of one line.
            if (const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
                wanted.rheight() += static_cast<int>(tab->text.count(u'\n')) * height;
            }
            return wanted;
        default:
            return wanted;
    }
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_Frame && widget != nullptr && widget->hasFocus() &&
        qobject_cast<const QAbstractItemView*>(widget) != nullptr) {
        // A list with the keyboard looks like one without it but for its frame.
        painter->save();
        painter->setPen(option->palette.color(QPalette::Highlight));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        return;
    }
    const bool isBox = element == PE_IndicatorCheckBox;
    if (!isBox && element != PE_IndicatorRadioButton) {
        return;
    }
    // On a dark ground the plain style's own outline cannot be seen.
    auto colour = option->palette.color(QPalette::WindowText);
    // The colour of what is disabled is faint already.
    colour.setAlpha((option->state & State_Enabled) != 0 ? 130 : 200);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, !isBox);
    painter->setPen(colour);
    painter->setBrush(Qt::NoBrush);
    const auto inside = option->rect.adjusted(0, 0, -1, -1);
    if (isBox) {
        painter->drawRect(inside);
    } else {
        const int size = std::min(inside.width(), inside.height()) - 1;
        QRect circle(0, 0, size, size);
        circle.moveCenter(inside.center());
        painter->drawEllipse(circle);
    }
    painter->restore();
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option,
                                const QWidget* widget) const {
    const auto rect = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? rect.adjusted(3, 0, -3, 0) : rect;
}

}  // namespace kavu
