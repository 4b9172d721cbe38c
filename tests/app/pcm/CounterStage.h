// A stream with counters and subframes, and the context of their dialogs.
#pragma once

#include "app/pcm/IdCounterDialog.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/SheetStage.h"
#include "app/pcm/SheetSteps.h"
#include "app/pcm/SubframeDialog.h"

namespace kavu::test {

/// Counter SFID in word 1, and before 106-11 the subframes S (word 5, depth 4) and T (word 6,
/// depth 8).
class CounterStage : public SheetStage {
  public:
    explicit CounterStage(int edition = 2009) : SheetStage(edition) {
        if (format.idCounters.empty()) {
            EXPECT_TRUE(createIdCounter(format, nullptr, 1));
        }
        format.implicitSubframes = edition >= 2011;
        if (edition < 2011) {
            EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
            EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 6, .name = "T", .depth = 8}));
        }
        installSheetSteps(steps, form, format);
        format.changed = false;
    }
    bool counter(const test::TestDoor::Driver& driver, int fwp = 1, bool isNew = false) {
        door.next(driver);
        return editIdCounter(form, format, nullptr, fwp, isNew);
    }
    bool subframe(const test::TestDoor::Driver& driver, int fwp = 5) {
        door.next(driver);
        return editSubframe(form, format, nullptr, fwp, false);
    }
    PcmFormSteps steps;
    QWidget window;
};

}  // namespace kavu::test
