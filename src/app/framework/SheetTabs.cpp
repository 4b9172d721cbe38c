#include "app/framework/SheetTabs.h"

#include "app/framework/Look.h"
#include "app/framework/PropertySheet.h"

#include <algorithm>

#include <QTabBar>
#include <QTabWidget>

namespace kavu {

void showAllTabs(PropertySheet& sheet) {
    auto* const tabs = sheet.findChild<QTabWidget*>(QStringLiteral("pages"));
    const int wanted = tabs->tabBar()->sizeHint().width() + look::unit(sheet);
    tabs->setMinimumWidth(std::min(wanted, look::roomOnScreen(sheet).width() * 9 / 10));
}

}  // namespace kavu
