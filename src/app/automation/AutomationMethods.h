// All methods that are served on the bus, of both interfaces, under their names there.
#pragma once

#include "app/automation/AutomationStart.h"
#include "application/automation/AutomationConversions.h"
#include "application/automation/AutomationCounters.h"
#include "application/automation/AutomationDocuments.h"
#include "application/automation/AutomationFormats.h"
#include "application/automation/AutomationMeasurements.h"
#include "application/automation/AutomationSubframes.h"

#include <string>
#include <utility>

namespace kavu {

struct AutomationMethods : AutomationDocuments,
                           AutomationFormats,
                           AutomationCounters,
                           AutomationSubframes,
                           AutomationMeasurements,
                           AutomationConversions,
                           AutomationStart {
    /// `settingsPath` is that of this process, for the editors that it starts. The session must
    /// outlive the object.
    AutomationMethods(AutomationSession& session, std::string settingsPath)
        : AutomationDocuments(session),
          AutomationFormats(session),
          AutomationCounters(session),
          AutomationSubframes(session),
          AutomationMeasurements(session),
          AutomationConversions(session),
          AutomationStart(session, std::move(settingsPath)) {}
};

}  // namespace kavu
