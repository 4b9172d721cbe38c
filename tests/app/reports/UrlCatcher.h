// Stands for the desktop: keeps the files that it is asked to open.
#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

namespace kavu::test {

class UrlCatcher : public QObject {
    Q_OBJECT
  public:
    UrlCatcher();
    UrlCatcher(const UrlCatcher&) = delete;
    UrlCatcher& operator=(const UrlCatcher&) = delete;
    ~UrlCatcher() override;

    QList<QUrl> urls;

  public slots:
    void open(const QUrl& url) { urls << url; }
};

}  // namespace kavu::test
