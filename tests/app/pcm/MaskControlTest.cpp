#include "app/pcm/MaskControl.h"
#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"

#include <QDialog>
#include <QRadioButton>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace kavu {
namespace {

using test::press;
using test::textOf;
using test::WordStage;

struct MaskWindow : WordStage {
    MaskWindow() : control(form, context, "bitmask", &window) {
        control.field().setAccessibleName(QStringLiteral("Bitmask"));
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&control);
        window.show();
    }
    [[nodiscard]] std::string shown() const { return textOf(window, "bitmask"); }

    QDialog window;
    MaskControl control;
};

TEST(MaskControlTest, AShortMaskIsPaddedAtTheLeftAndAllOnesAreAFullWord) {
    MaskWindow w;
    w.control.setMask("1111", 16);
    EXPECT_EQ(w.shown(), "0000000000001111");
    w.control.setMask("111111", 16);
    EXPECT_EQ(w.shown(), "0000000000111111");
    w.control.setMask("1111111111111111", 16);
    EXPECT_EQ(w.shown(), "FW");
    w.control.setMask("1111", 4);
    EXPECT_EQ(w.shown(), "FW");
    w.control.setMask("", 16);
    EXPECT_EQ(w.shown(), "FW");
    // What nobody edited stays as it was.
    EXPECT_EQ(w.control.mask(), "");
}

TEST(MaskControlTest, TheTwoButtonsSwitchTheSettingAndTheForm) {
    MaskWindow w;
    w.control.setMask("000011110000", 12);
    QSignalSpy changed(&w.control, &MaskControl::changed);
    QSignalSpy switched(&w.control, &MaskControl::formSwitched);
    press(w.window, "hex");
    EXPECT_EQ(w.shown(), "0F0");
    EXPECT_EQ(w.settings.integer("HexBM", 0), 1);
    press(w.window, "binary");
    EXPECT_EQ(w.shown(), "000011110000");
    EXPECT_EQ(w.settings.integer("HexBM", 1), 0);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(switched.count(), 2);
}

TEST(MaskControlTest, AHexadecimalFOnATwelveBitWordIsEnteredFromTheLeft) {
    MaskWindow w;
    w.settings.writeInteger("HexBM", 1);
    w.control.setMask("FW", 12);
    w.ui.texts = {"F"};
    QSignalSpy changed(&w.control, &MaskControl::changed);
    press(w.window, "editMask");
    ASSERT_EQ(w.ui.textPrompts.size(), 1U);
    EXPECT_EQ(w.ui.textPrompts[0].prompt, "Enter Hex Bitmask (or FW)");
    EXPECT_EQ(w.control.mask(), "111100000000");
    EXPECT_EQ(w.shown(), "F00");
    EXPECT_EQ(changed.count(), 1);
}

TEST(MaskControlTest, AWrongMaskIsToldAndAskedForAgainUntilCancel) {
    MaskWindow w;
    w.control.setMask("0101", 4);
    w.ui.texts = {"12", "abc", std::nullopt};
    press(w.window, "editMask");
    EXPECT_EQ(w.ui.countBoxes(142), 2);
    EXPECT_EQ(w.ui.textPrompts[0].prompt, "Enter Binary Bitmask (or FW)");
    EXPECT_EQ(w.ui.textPrompts[1].initial, "12");
    EXPECT_EQ(w.control.mask(), "0101");
    press(w.window, "hex");
    w.ui.texts = {"XYZ", "A"};
    press(w.window, "editMask");
    EXPECT_EQ(w.ui.countBoxes(143), 1);
    EXPECT_EQ(w.control.mask(), "1010");
}

TEST(MaskControlTest, TheKeyboardAndADoubleClickOpenTheEntryAndASettingKeepsIt) {
    MaskWindow w;
    w.control.setKey("DMask");
    w.control.setMask("", 8);
    w.ui.texts = {"1100", "FW"};
    QTest::keyClick(&w.control.field(), Qt::Key_F2);
    EXPECT_EQ(w.control.mask(), "11000000");
    EXPECT_EQ(w.settings.text("DMask"), "11000000");
    QTest::mouseDClick(&w.control.field(), Qt::LeftButton);
    EXPECT_EQ(w.settings.text("DMask"), "FW");
    EXPECT_EQ(test::checkWindow(w.window), std::vector<std::string>{});
}

}  // namespace
}  // namespace kavu
