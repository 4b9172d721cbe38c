#include "app/framework/LookIcon.h"

#include "app/framework/Look.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// The macro must be outside of any namespace.
static void registerResources() {
    Q_INIT_RESOURCE(kavu);
}

namespace kavu {

namespace {

// The two colours that all line drawings are made with; they are replaced.
constexpr char kInk[] = "#1f2430";
constexpr char kAccent[] = "#2f6fba";

QString pathOf(const QString& name) {
    return QStringLiteral(":/kavu/icons/%1.svg").arg(name);
}

struct Colours {
    QColor ink;
    QColor accent;
};

Colours coloursOf(QIcon::Mode mode) {
    const auto palette = QGuiApplication::palette();
    switch (mode) {
        case QIcon::Disabled: {
            const auto grey = palette.color(QPalette::Disabled, QPalette::WindowText);
            return {grey, grey};
        }
        case QIcon::Selected: {
            const auto light = palette.color(QPalette::HighlightedText);
            return {light, light};
        }
        default:
            return {palette.color(QPalette::WindowText), palette.color(QPalette::Link)};
    }
}

/// The boxes' icons have colours of their own, which mean something.
bool hasOwnColours(const QByteArray& drawing) {
    return drawing.contains("#ffffff");
}

}  // namespace

void LookIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) {
    QFile file(pathOf(name_));
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    QByteArray drawing = file.readAll();
    if (!hasOwnColours(drawing)) {
        const auto colours = coloursOf(mode);
        drawing.replace(kAccent, colours.accent.name().toLatin1());
        drawing.replace(kInk, colours.ink.name().toLatin1());
    } else if (mode == QIcon::Disabled) {
        painter->setOpacity(0.4);
    }
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(painter, rect);
}

QPixmap LookIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    const auto colours = coloursOf(mode);
    const QString key = QStringLiteral("kavu/%1/%2x%3/%4/%5/%6")
                            .arg(name_)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(int(mode))
                            .arg(colours.ink.name(), colours.accent.name());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QIconEngine* LookIconEngine::clone() const {
    return new LookIconEngine(name_);
}

namespace look {

QIcon icon(const QString& name) {
    registerResources();
    return QFile::exists(pathOf(name)) ? QIcon(new LookIconEngine(name)) : QIcon();
}

QStringList iconNames() {
    registerResources();
    auto names = QDir(QStringLiteral(":/kavu/icons")).entryList(QDir::Files, QDir::Name);
    for (auto& name : names) {
        name.chop(4);  // ".svg"
    }
    return names;
}

}  // namespace look

}  // namespace kavu
