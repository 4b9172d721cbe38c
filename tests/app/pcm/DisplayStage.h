// A stream with a display over it: 32 words, 16 frames, a counter in word 30, the subframe
// ENGINE of depth 4 in word 5, some measurements.
#pragma once

#include "app/framework/FormContext.h"
#include "app/pcm/FrameGrid.h"
#include "app/pcm/MajorFrameDisplay.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/support/TestDoor.h"
#include "pcm/StreamFixture.h"

#include <string>

#include <QAction>
#include <QTest>

namespace kavu::test {

class DisplayStage : public StreamFixture {
  public:
    explicit DisplayStage(int edition = 2009)
        : StreamFixture(edition, 32, 16), form(formContext(ui, door, context)) {
        auto commands = plainCounter(1, 30, 16, "FRAMES");
        for (const auto* command : {"ISF\\N:1", "SF\\N-1:1", "SF1-1-1:ENGINE", "SF2-1-1:NO",
                                    "SF4-1-1-1:5", "SF6-1-1:4"}) {
            commands.emplace_back(command);
        }
        EXPECT_TRUE(read(commands));
        format.streamName = "PCM 1";
        place(3, 1, "SPEED");
        place(4, 1, "ALT");
        place(5, 2, "OIL_T", "SF");
        place(5, 3, "OIL_P", "SF");
        format.changed = false;
        form.edition = edition;
        steps.editMeasurementAt = [this](QWidget&, int fwp, int fn) {
            edits.push_back("measurement " + std::to_string(fwp) + " " + std::to_string(fn));
            if (onEdit) {
                onEdit();
            }
            return accepts;
        };
        steps.editAsyncAt = [this](QWidget&, int fwp, int fn) {
            edits.push_back("async " + std::to_string(fwp) + " " + std::to_string(fn));
            return false;
        };
    }

    using Driver = std::function<void(MajorFrameWindow& window)>;

    /// Shows the display and drives it; it is closed by its button at the end.
    bool show(const Driver& drive) {
        door.next([&](QDialog& dialog) {
            auto& window = dynamic_cast<MajorFrameWindow&>(dialog);
            window.resize(1000, 700);
            QApplication::processEvents();
            drive(window);
            if (window.isVisible()) {
                press(window, "close");
            }
        });
        return showMajorFrameDisplay(form, context, format, steps);
    }

    static FrameGrid& grid(MajorFrameWindow& window) { return window.areas().grid(); }
    static FramePlace selected(MajorFrameWindow& window) {
        return window.areas().view().selected();
    }
    static QPoint middleOf(MajorFrameWindow& window, int word, int frame) {
        return grid(window).cellRect({word, frame}).center();
    }
    static void click(MajorFrameWindow& window, int word, int frame,
                      Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(&grid(window), Qt::LeftButton, modifiers, middleOf(window, word, frame));
    }
    static QAction* entry(MajorFrameWindow& window, const char* name) {
        auto* const action = window.findChild<QAction*>(QLatin1String(name));
        EXPECT_NE(action, nullptr) << "no entry " << name;
        return action;
    }
    /// Chooses an entry of a menu.
    static void choose(MajorFrameWindow& window, const char* name) {
        auto* const action = entry(window, name);
        ASSERT_NE(action, nullptr);
        EXPECT_TRUE(action->isEnabled()) << name;
        action->trigger();
        QApplication::processEvents();
    }

    TestDoor door;
    FormContext form;
    PcmFormSteps steps;
    std::vector<std::string> edits;
    std::function<void()> onEdit;
    bool accepts = true;
};

}  // namespace kavu::test
