#include "gallery/Makers.h"
namespace kavu {

void addAllScreenshots(ScreenshotList& list) {
    addFrameworkScreenshots(list);
    addQuestionScreenshots(list);
    addOptionScreenshots(list);
    addTreeScreenshots(list);
    addGroupScreenshots(list);
    addEuScreenshots(list);
    addPairSetScreenshots(list);
    addSheetScreenshots(list);
    addWordScreenshots(list);
    addDisplayScreenshots(list);
    addStreamDataScreenshots(list);
    addBusScreenshots(list);
    addDatabaseScreenshots(list);
    addReportScreenshots(list);
    addExchangeScreenshots(list);
}

}  // namespace kavu
