#include "app/pcm/PcmForms.h"

#include "app/pcm/WordSteps.h"
#include "app/shell/MainWindow.h"
#include "application/Application.h"

namespace kavu {

void installPcmForms(MainWindow& window, Application& application) {
    application.setDefinitionModeStep([&window](UserInterface&, bool wordFrame) {
        auto form = window.formContext();
        return chooseDefinitionMode(form, window.ui().dialogParent(), wordFrame);
    });
}

void addPcmScreenshots(ScreenshotList& list) {
    addWordScreenshots(list);
}

}  // namespace kavu
