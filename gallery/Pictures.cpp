#include "gallery/Pictures.h"

#include "app/framework/DialogDoor.h"
#include "app/framework/FormContext.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/shell/HelpWindow.h"
#include "app/shell/MainWindow.h"
#include "app/shell/TreePanel.h"
#include "application/Application.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "gallery/Screenshots.h"

#include <iostream>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>

namespace kavu {

namespace {

/// There is no user to answer a dialog.
class ClosedDoor : public DialogDoor {
  public:
    int run(QDialog&) override { return QDialog::Rejected; }
};

class Renderer {
  public:
    explicit Renderer(std::string folder) : folder_(std::move(folder)) {}

    void render(QWidget& window, const std::string& name) {
        window.show();
        QApplication::processEvents();
        const auto path = folder_ + "/" + name + ".png";
        if (!window.grab().save(toQString(path), "PNG")) {
            fail("Unable to write '" + path + "'");
        }
    }
    void fail(const std::string& what) {
        failed_ = true;
        std::cerr << what << '\n';
    }
    [[nodiscard]] bool failed() const { return failed_; }

  private:
    std::string folder_;
    bool failed_ = false;
};

void renderAll(Renderer& renderer, MainWindow& window, Application& application,
               const ScreenshotList& list, const std::string& suffix) {
    renderer.render(window, "MainWindow" + suffix);
    for (auto* const menu : window.menuBar()->findChildren<QMenu*>()) {
        if (!menu->objectName().isEmpty()) {
            renderer.render(*menu, toBytes(menu->objectName()) + suffix);
            menu->hide();
        }
    }
    HelpWindow help(manualFolder(toBytes(QApplication::applicationDirPath())));
    renderer.render(help, "HELP" + suffix);
    auto form = window.formContext();
    for (const auto& entry : list.entries()) {
        ScreenshotStage stage{form, window.document(), &application};
        const auto picture = entry.make(stage);
        if (picture == nullptr) {
            renderer.fail("There is nothing to show of " + entry.name);
            continue;
        }
        renderer.render(*picture, entry.name + suffix);
        picture->hide();
    }
}

}  // namespace

int renderPictures(QApplication& toolkit, Application& application, const ScreenshotList& list,
                   const std::string& folder, const std::string& sample) {
    Renderer renderer(folder);
    if (const auto status = makeFolders(folder); !status.ok()) {
        renderer.fail(formatPrintf("Unable to make '%s': %s", status.path(), status.reason()));
        return 1;
    }
    ClosedDoor door;
    {
        MainWindow window(application, door);
        if (!window.begin({.splash = false, .file = sample})) {
            renderer.fail("The editor did not start.");
            return 1;
        }
        window.tree().expandAll();
        window.tree().select('P', 1);
        for (const auto scheme : {look::Scheme::Light, look::Scheme::Dark}) {
            look::apply(toolkit, scheme);
            renderAll(renderer, window, application, list,
                      scheme == look::Scheme::Dark ? "-dark" : "");
        }
        window.quit();
    }
    return renderer.failed() ? 1 : 0;
}

}  // namespace kavu
