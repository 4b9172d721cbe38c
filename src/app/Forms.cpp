#include "app/Forms.h"

#include "app/bus/StreamDataForms.h"
#include "app/conversion/ConversionForms.h"
#include "app/groups/GroupForms.h"
#include "app/mdb/DatabaseForms.h"
#include "app/pcm/PcmForms.h"
#include "app/reports/ReportForms.h"
#include "app/translators/TranslatorForms.h"
#include "app/xml/XmlForms.h"

namespace kavu {

void installForms(MainWindow& window, Application& application) {
    installGroupForms(window, application,
                      [&application](FormContext& form, const std::string& source) {
                          return editMessagesOf(form, application, source);
                      });
    installConversionForms(window, application);
    installPcmForms(window, application);
    installDatabaseForms(window, application);
    installReportForms(window, application);
    installTranslatorForms(window, application);
    installXmlForms(window, application);
}

}  // namespace kavu
