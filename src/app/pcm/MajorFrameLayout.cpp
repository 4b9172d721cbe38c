// What the window remembers: its place, the widths of its parts, the order of the list, and where
// each stream was left.
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/MeasurementList.h"
#include "core/talk/ProfileSettings.h"

#include <algorithm>

#include <QGuiApplication>
#include <QScreen>
#include <QSplitter>

namespace kavu {

void MajorFrameWindow::restorePlace() {
    const auto& settings = form_.settings;
    const QPoint corner(settings.get(setting::kDisplayX), settings.get(setting::kDisplayY));
    const QSize size(settings.get(setting::kDisplayWidth), settings.get(setting::kDisplayHeight));
    if (corner == QPoint(-1, -1)) {
        resize(sizeHint().boundedTo(look::roomOnScreen(*this)));
        return;
    }
    const auto* const screen = QGuiApplication::screenAt(corner);
    const auto* const place = screen != nullptr ? screen : QGuiApplication::primaryScreen();
    const QRect room = place == nullptr ? QRect(0, 0, 1024, 768) : place->availableGeometry();
    const auto wanted = size.width() >= 1 && size.height() >= 1 ? size : sizeHint();
    const auto kept = wanted.boundedTo(room.size());
    // A screen that was taken away since must not keep the window. What was kept is the place
    // without the frame.
    const auto within = [](int value, int least, int most) {
        return std::clamp(value, least, std::max(least, most));
    };
    setGeometry(QRect(QPoint(within(corner.x(), room.left(), room.right() - kept.width()),
                             within(corner.y(), room.top(), room.bottom() - kept.height())),
                      kept));
}

void MajorFrameWindow::storePlace() {
    auto& settings = form_.settings;
    const auto place = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
    settings.set(setting::kCellWidth, areas_->view().cellWidth());
    settings.set(setting::kDisplayX, place.x());
    settings.set(setting::kDisplayY, place.y());
    settings.set(setting::kDisplayWidth, place.width());
    settings.set(setting::kDisplayHeight, place.height());
    const bool shown = database_ != nullptr && !database_->isHidden();
    settings.set(setting::kViewDatabase, shown);
}

void MajorFrameWindow::restoreLayout() {
    const auto& settings = form_.settings;
    list_->restoreLayout(settings.get(setting::kDisplayList));
    QList<int> sizes;
    for (const auto& part : toQString(settings.get(setting::kDisplayLayout)).split(u',')) {
        sizes.append(std::clamp(part.toInt(), 0, 10000));
    }
    if (sizes.size() == splitter_->count() && sizes.front() > 0) {
        splitter_->setSizes(sizes);
    }
    areas_->restore(displayPlace(settings.get(setting::kDisplayPlaces), format_.streamName.view()));
}

void MajorFrameWindow::storeLayout() {
    auto& settings = form_.settings;
    std::string sizes;
    for (const int size : splitter_->sizes()) {
        sizes += (sizes.empty() ? "" : ",") + std::to_string(size);
    }
    settings.set(setting::kDisplayLayout, sizes);
    settings.set(setting::kDisplayList, list_->layoutText());
    settings.set(setting::kDisplayPlaces,
                 withDisplayPlace(settings.get(setting::kDisplayPlaces), format_.streamName.view(),
                                  areas_->place()));
}

}  // namespace kavu
