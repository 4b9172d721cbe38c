#include "app/groups/GroupForms.h"

namespace kavu {

void installGroupForms(MainWindow& /*window*/, Application& /*application*/) {}

void addGroupScreenshots(ScreenshotList& /*list*/) {}

}  // namespace kavu
