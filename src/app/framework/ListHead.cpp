#include "app/framework/ListHead.h"

#include <cstdlib>

#include <QFontMetrics>
#include <QStyle>
#include <QStyleOptionHeader>

namespace kavu {

namespace {

/// A title up to this length is no wider than most values.
constexpr qsizetype kShortTitle = 8;

}  // namespace

QString brokenTitle(const QString& title) {
    if (title.size() <= kShortTitle) {
        return title;
    }
    qsizetype best = -1;
    for (auto at = title.indexOf(u' '); at >= 0; at = title.indexOf(u' ', at + 1)) {
        if (best < 0 || std::abs(2 * at - title.size()) < std::abs(2 * best - title.size())) {
            best = at;
        }
    }
    return best < 0 ? title : title.left(best) + u'\n' + title.mid(best + 1);
}

ListHead::ListHead(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

void ListHead::setBreaksTitles(bool breaks) {
    breaksTitles_ = breaks;
    updateGeometry();
    viewport()->update();
}

void ListHead::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    if (breaksTitles_) {
        option->text = brokenTitle(option->text);
    }
}

/// Only the column that is sorted by has to have room for the arrow.
QSize ListHead::sectionSizeFromContents(int section) const {
    if (model() == nullptr) {
        return QHeaderView::sectionSizeFromContents(section);
    }
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = section;
    // No title is ever set in bold: sections are not highlighted.
    option.fontMetrics = fontMetrics();
    const auto title = model()->headerData(section, orientation(), Qt::DisplayRole).toString();
    option.text = breaksTitles_ ? brokenTitle(title) : title;
    if (isSortIndicatorShown() && section == sortIndicatorSection()) {
        option.sortIndicator = QStyleOptionHeader::SortDown;
    }
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}

}  // namespace kavu
