#include "app/reports/UrlCatcher.h"

#include <QDesktopServices>

namespace kavu::test {

UrlCatcher::UrlCatcher() {
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
}

UrlCatcher::~UrlCatcher() {
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

}  // namespace kavu::test
