#include "app/pcm/DisplayStage.h"
#include "app/pcm/SheetSteps.h"

namespace kavu {
namespace {

using test::DisplayStage;
using test::find;
using test::press;

class LabelStage : public DisplayStage {
  public:
    explicit LabelStage(int edition = 2009) : DisplayStage(edition) {
        installSheetSteps(steps, form, format);
    }
    static void doubleClickLabel(MajorFrameWindow& window, int word) {
        auto* const labels = find<QWidget>(window, "sub_frame_label");
        const QPoint at(middleOf(window, word, 1).x(), labels->height() / 2);
        QTest::mouseDClick(labels, Qt::LeftButton, {}, at);
    }
};

QAction* action(const QWidget& window) {
    auto* const found = window.findChild<QAction*>(QStringLiteral("editSubframe"));
    EXPECT_NE(found, nullptr);
    return found;
}

TEST(SubframeLabels, ADoubleClickOpensTheFormOfTheWord) {
    LabelStage s;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        s.door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("SubframeDialog"));
            test::type(dialog, "name", QStringLiteral("MOTOR"));
            press(dialog, "ok");
        });
        LabelStage::doubleClickLabel(window, 5);
    }));
    EXPECT_EQ(s.format.subframeOfWord(5)->name, "MOTOR");
}

TEST(SubframeLabels, AFreeWordBecomesWhatIsChosen) {
    LabelStage s;
    s.ui.choices = {1};
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        s.door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Create New ID Counter Definition (FWP: 2)"));
            press(dialog, "ok");
        });
        LabelStage::doubleClickLabel(window, 2);
        EXPECT_EQ(s.format.wordType(2), WordType::IdCounter);
    }));
}

TEST(SubframeLabels, TheMenuDoesTheSameForTheSelectedWord) {
    LabelStage s;
    s.ui.choices = {0};
    s.show([&](MajorFrameWindow& window) {
        window.areas().goToCell(6, 1);
        s.door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Create New Subframe Definition (FWP: 6)"));
            press(dialog, "cancel");
        });
        action(window)->trigger();
    });
    EXPECT_EQ(s.format.wordType(6), WordType::Minor) << "Cancel takes it back";
}

TEST(SubframeLabels, AWordWithMeasurementsAndTheSyncWordAreRefused) {
    LabelStage s;
    EXPECT_FALSE(s.show([&](MajorFrameWindow& window) {
        LabelStage::doubleClickLabel(window, 3);
        EXPECT_TRUE(s.ui.hasBox(231));
        LabelStage::doubleClickLabel(window, 0);
        EXPECT_TRUE(s.ui.hasBox(230));
    }));
}

TEST(SubframeLabels, WithoutTheStepsTheEntryIsDisabled) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) { EXPECT_FALSE(action(window)->isEnabled()); });
}

}  // namespace
}  // namespace kavu
