#include "app/Forms.h"

#include "app/conversion/ConversionForms.h"
#include "app/groups/GroupForms.h"
#include "app/pcm/PcmForms.h"

namespace kavu {

void installForms(MainWindow& window, Application& application) {
    installGroupForms(window, application);
    installConversionForms(window, application);
    installPcmForms(window, application);
}

}  // namespace kavu
