#include "app/Forms.h"

#include "app/conversion/ConversionForms.h"
#include "app/framework/Screenshots.h"
#include "app/groups/GroupForms.h"
#include "app/pcm/PcmForms.h"
#include "app/shell/OptionDialogs.h"
#include "app/shell/TreeScreenshots.h"

namespace kavu {

void installForms(MainWindow& window, Application& application) {
    installGroupForms(window, application);
    installConversionForms(window, application);
    installPcmForms(window, application);
}

void addAllScreenshots(ScreenshotList& list) {
    addFrameworkScreenshots(list);
    addOptionScreenshots(list);
    addTreeScreenshots(list);
    addGroupScreenshots(list);
    addConversionScreenshots(list);
    addPcmScreenshots(list);
}

}  // namespace kavu
