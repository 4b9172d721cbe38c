// The start and the exit of the main window.
#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/MessageDesk.h"
#include "app/shell/NoteBar.h"
#include "app/shell/TreePanel.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/StoreFacts.h"
#include "core/WorkingStore.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"

#include <algorithm>
#include <optional>

#include <QApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QSessionManager>
#include <QSplashScreen>
#include <QStyle>
#include <QTimer>

namespace kavu {

namespace {

constexpr int kLeastScreenWidth = 800;
constexpr int kLeastScreenHeight = 600;
constexpr int kSplashMilliseconds = 750;
constexpr std::string_view kDismissedStores = "KAVU_Dismissed_Stores";
constexpr const char* kStillActive =
    "The KAVU-9 TMATS editor is still active. Please close KAVU-9 windows before exiting.";

/// A rectangle moved into a room, and shrunk to it as far as the minimum allows; what then has no
/// room sticks out on the right and below.
QRect placedIn(const QRect& room, QRect wanted, const QSize& minimum) {
    wanted.setSize(wanted.size().boundedTo(room.size()).expandedTo(minimum));
    wanted.moveLeft(std::clamp(wanted.left(), room.left(),
                               std::max(room.left(), room.right() - wanted.width() + 1)));
    wanted.moveTop(std::clamp(wanted.top(), room.top(),
                              std::max(room.top(), room.bottom() - wanted.height() + 1)));
    return wanted;
}

/// The wait cursor for the life of the object.
class WaitCursor {
  public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

QPixmap splashPicture(const QWidget& window) {
    const int unit = look::unit(window);
    const QSize size(unit * 48, unit * 26);
    QPixmap picture(size * window.devicePixelRatioF());
    picture.setDevicePixelRatio(window.devicePixelRatioF());
    const auto palette = window.palette();
    picture.fill(palette.color(QPalette::Base));
    QPainter painter(&picture);
    painter.setPen(palette.color(QPalette::Mid));
    painter.drawRect(QRect({0, 0}, size - QSize(1, 1)));
    look::icon(QStringLiteral("kavu"))
        .paint(&painter, QRect(unit * 3, unit * 8, unit * 10, unit * 10));
    auto font = window.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::Text));
    painter.drawText(QRect(unit * 16, unit * 7, unit * 30, unit * 6), Qt::AlignVCenter,
                     QStringLiteral("KAVU-9"));
    painter.setFont(window.font());
    painter.drawText(QRect(unit * 16, unit * 12, unit * 30, unit * 6), Qt::AlignVCenter,
                     QStringLiteral("Kavu Telemetry Workbench\nTMATS Editor"));
    return picture;
}

}  // namespace

bool MainWindow::screenIsLargeEnough() {
    const auto* const screen = QGuiApplication::primaryScreen();
    // Of the screen itself: at double size it has half as many places for windows.
    const QSize size = screen == nullptr
                           ? QSize()
                           : (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize();
    if (size.width() >= kLeastScreenWidth && size.height() >= kLeastScreenHeight) {
        return true;
    }
    MessageBox box;
    box.id = -153;
    box.titleId = title::kWarning;
    box.title = std::string(loadText(title::kWarning).value_or(""));
    box.text =
        formatMessage(153, size.width(), size.height(), kLeastScreenWidth, kLeastScreenHeight);
    box.icon = Icon::Question;
    box.buttons = Buttons::YesNo;
    return ui_->message(box) == Button::Yes;
}

/// What the frame takes around the window. Before the window manager has said so it is guessed.
QMargins MainWindow::frame() const {
    const auto outer = frameGeometry();
    const auto inner = geometry();
    QMargins margins(inner.left() - outer.left(), inner.top() - outer.top(),
                     outer.right() - inner.right(), outer.bottom() - inner.bottom());
    if (margins.isNull()) {
        margins.setTop(std::max(style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this),
                                look::unit(*this) * 3));
    }
    return margins;
}

void MainWindow::restoreGeometryFromSettings() {
    const auto& settings = application_.context().settings;
    QRect wanted(settings.get(setting::kWindowX), settings.get(setting::kWindowY),
                 settings.get(setting::kWindowWidth), settings.get(setting::kWindowHeight));
    const bool kept = wanted.width() > 0 && wanted.height() > 0;
    // A screen that was taken away since must not keep the window.
    auto* const place = kept ? QGuiApplication::screenAt(wanted.center()) : nullptr;
    const auto* const screen = place != nullptr ? place : QGuiApplication::primaryScreen();
    const QRect room = screen == nullptr ? QRect(0, 0, 1024, 768) : screen->availableGeometry();
    if (!kept) {
        wanted = QRect(room.topLeft(), size());
        wanted.moveCenter(room.center());
    }
    setGeometry(placedIn(room.marginsRemoved(frame()), wanted, minimumSizeHint()));
}

void MainWindow::keepOnScreen() {
    const auto* const own = screen();
    if (own == nullptr || isMaximized() || isFullScreen() || isMinimized()) {
        return;
    }
    const auto room = own->availableGeometry();
    if (!room.contains(frameGeometry())) {
        setGeometry(placedIn(room.marginsRemoved(frame()), geometry(), minimumSizeHint()));
    }
}

void MainWindow::storeWindowSettings() {
    auto& settings = application_.context().settings;
    if (!isMinimized()) {
        const auto place = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
        settings.set(setting::kWindowX, place.x());
        settings.set(setting::kWindowY, place.y());
        settings.set(setting::kWindowWidth, place.width());
        settings.set(setting::kWindowHeight, place.height());
    }
    writeTreeExpansion(settings, tree_->expansion());
}

std::unique_ptr<QSplashScreen> MainWindow::showSplash() {
    const auto picture = splashPicture(*this);
    if (picture.isNull()) {
        showBox(ui_.get(), "Unable to display Splash Screen",
                std::string(loadText(title::kError).value_or("")));
        return nullptr;
    }
    auto splash = std::make_unique<QSplashScreen>(picture);
    splash->setObjectName(QStringLiteral("splash"));
    splash->show();
    return splash;
}

void MainWindow::waitWithSplash() {
    const auto splash = showSplash();
    if (splash == nullptr) {
        return;
    }
    QEventLoop wait;
    QTimer::singleShot(kSplashMilliseconds, &wait, &QEventLoop::quit);
    wait.exec(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::present() {
    makeDocumentArea();
    restoreGeometryFromSettings();
    show();
    // Window managers that have their say later than this are followed as well.
    for (const int milliseconds : {0, 100, 500}) {
        QTimer::singleShot(milliseconds, this, &MainWindow::keepOnScreen);
    }
    // The work that follows lets nothing be painted.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (splash_) {
        waitWithSplash();
    }
}

bool MainWindow::begin(const BeginOptions& options) {
    if (!screenIsLargeEnough()) {
        return false;
    }
    splash_ = options.splash;
    scheme_ = options.scheme;
    std::optional<WaitCursor> waiting;
    const auto whenReady = [this, &waiting] {
        waiting.emplace();
        applyAppearance();
        present();
    };
    beginning_ = true;
    const bool good = application_.startUp(ui_.get(), whenReady);
    beginning_ = false;
    if (!good) {
        hide();
        return false;
    }
    started_ = true;
    application_.keepRecentFiles();
    application_.checkDatabase(ui_.get());
    listen(true);
    rebuildTree();
    updateTitle();
    updateChecks();
    waiting.reset();
    connect(
        qApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager& manager) {
            // A session manager lets no program ask unless it has given leave.
            const bool asks = application_.context().document.changed;
            if ((asks && !manager.allowsInteraction()) || !maySessionEnd()) {
                manager.cancel();
            }
            if (asks) {
                manager.release();
            }
        },
        Qt::DirectConnection);
    showWelcome();
    offerRecovery();
    if (!options.file.empty()) {
        openNamed(options.file);
    }
    return true;
}

void MainWindow::showWelcome() {
    const auto text = application_.welcomeText();
    if (!text.empty()) {
        showBox(ui_.get(), text, "Message", Icon::Information);
    }
}

void MainWindow::offerRecovery() {
    auto& settings = application_.context().settings;
    const auto dismissed = settings.profileKeys(kDismissedStores);
    auto stores = findAbandonedStores(application_.context().store.temporaryRoot());
    std::erase_if(stores, [&](const AbandonedStore& store) {
        if (std::ranges::find(dismissed, fileNameOf(store.folder)) != dismissed.end()) {
            return true;
        }
        const auto facts = describeStore(store.folder);
        return facts.isRecovered || facts.isEmpty;
    });
    if (stores.empty()) {
        return;
    }
    const auto folder = stores.front().folder;
    const auto when = QDateTime::fromSecsSinceEpoch(stores.front().modified)
                          .toString(QStringLiteral("MM-dd-yyyy HH:mm:ss"));
    const auto facts = describeStore(folder);
    const auto document =
        facts.record && !facts.record->source.path.empty()
            ? QStringLiteral("What it held of '%1'").arg(toQString(facts.record->source.path))
            : QStringLiteral("Its document");
    const auto never = [this, folder] {
        application_.context().settings.writeProfile(kDismissedStores, fileNameOf(folder), "1");
        offerRecovery();
    };
    noteBar_->showNote(NoteBar::About::Recovery,
                       QStringLiteral("A session of %1 did not end properly. %2 may be recovered.")
                           .arg(when, document),
                       {{"recover", QStringLiteral("Re&cover..."),
                         [this, folder] {
                             if (application_.documents().recover(ui_.get(), folder)) {
                                 // Also if it could not be marked.
                                 application_.context().settings.writeProfile(
                                     kDismissedStores, fileNameOf(folder), "1");
                             }
                             endCommand();
                             // One of another session, or the same one if it was given up.
                             offerRecovery();
                         }},
                        {"later", QStringLiteral("Not &Now"), {}},
                        {"never", QStringLiteral("Ne&ver For This One"), never}});
}

bool MainWindow::mayBeClosed() const {
    return !beginning_ && ui_->progressWindow() == nullptr;
}

bool MainWindow::maySessionEnd() {
    if (door_.depth() > 0) {
        // Said when the session manager has its answer: it does not wait for a person.
        QTimer::singleShot(0, this, [this] {
            showBox(ui_.get(), kStillActive, std::string(loadText(title::kNote).value_or("")),
                    Icon::Information);
        });
        return false;
    }
    return !application_.context().document.changed || application_.documents().close(ui_.get());
}

bool MainWindow::quit() {
    if (!started_) {
        return true;
    }
    if (door_.depth() > 0) {
        showBox(ui_.get(), kStillActive, std::string(loadText(title::kNote).value_or("")),
                Icon::Information);
        return false;
    }
    if (application_.context().document.open) {
        // It goes away with the question's Cancel as with the program's end.
        const auto splash = splash_ ? showSplash() : nullptr;
        if (!application_.documents().close(ui_.get())) {
            return false;
        }
    }
    storeWindowSettings();
    if (!application_.shutDown(ui_.get())) {
        return false;
    }
    listen(false);
    started_ = false;
    quitting_ = true;
    desk_->clear();
    delete help_;
    help_ = nullptr;
    close();
    QApplication::quit();
    return true;
}

}  // namespace kavu
