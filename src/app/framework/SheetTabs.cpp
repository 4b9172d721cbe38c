#include "app/framework/SheetTabs.h"

#include "app/framework/Look.h"
#include "app/framework/PropertySheet.h"

#include <algorithm>
#include <cstdlib>

#include <QTabBar>
#include <QTabWidget>

namespace kavu {

namespace {

/// The words on two lines of about the same length; a single word as it is.
QString onTwoLines(QString title) {
    qsizetype best = -1;
    for (qsizetype at = title.indexOf(u' '); at >= 0; at = title.indexOf(u' ', at + 1)) {
        if (best < 0 || std::abs(2 * at - title.size()) < std::abs(2 * best - title.size())) {
            best = at;
        }
    }
    if (best >= 0) {
        title[best] = u'\n';
    }
    return title;
}

}  // namespace

void showAllTabs(PropertySheet& sheet) {
    auto* const tabs = sheet.findChild<QTabWidget*>(QStringLiteral("pages"));
    auto* const bar = tabs->tabBar();
    const int most = look::roomOnScreen(sheet).width() * 9 / 10;
    const auto wanted = [&] { return bar->sizeHint().width() + look::unit(sheet); };
    for (int i = 0; wanted() > most && i < bar->count(); ++i) {
        bar->setTabText(i, onTwoLines(bar->tabText(i)));
    }
    tabs->setMinimumWidth(std::min(wanted(), most));
}

}  // namespace kavu
