// The context of a sheet or dialog in a test: settings in memory, a fixed clock, the
// recorder for the user's answers and a door for real dialogs.
#pragma once

#include "app/framework/FormContext.h"
#include "app/support/TestDoor.h"
#include "core/WorkingStore.h"
#include "core/files/Environment.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "support/RecordingInterface.h"

#include <memory>

namespace kavu::test {

class FormStage {
  public:
    explicit FormStage(int edition = 2011)
        : store(Environment{}), messages(store), form{ui,    door,    settings, messages,
                                                      clock, edition, {}} {}

    RecordingInterface ui;
    TestDoor door;
    ProfileSettings settings{""};
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    WorkingStore store;
    Messages messages;
    FormContext form;
};

}  // namespace kavu::test
