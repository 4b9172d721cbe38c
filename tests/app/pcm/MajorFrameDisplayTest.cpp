#include "app/pcm/DisplayStage.h"
#include "app/pcm/FrameGridPaint.h"
#include "app/pcm/MajorFrameDisplay.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "groups/MeasurementNames.h"
#include "pcm/structure/AsyncEdit.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::DisplayStage;
using test::find;
using testing::ElementsAre;

QString text(const QWidget& window, const char* name) {
    return find<QLineEdit>(window, name)->text();
}

TEST(MajorFrameDisplay, OpensAsTheSettingsSay) {
    DisplayStage s;
    s.settings.writeInteger("PCMScroll", 40);
    s.settings.writeInteger("ShowAllCells", 1);
    EXPECT_FALSE(s.show([&](MajorFrameWindow& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("PCM Format Display - Data Link: PCM 1"));
        EXPECT_EQ(window.areas().view().cellWidth(), 40);
        EXPECT_EQ(find<QSlider>(window, "zoomBar")->value(), 40);
        EXPECT_EQ(find<QSlider>(window, "zoomBar")->minimum(), 5);
        EXPECT_EQ(find<QSlider>(window, "zoomBar")->maximum(), 150);
        EXPECT_EQ(find<QSlider>(window, "zoomBar")->singleStep(), 1);
        EXPECT_EQ(find<QSlider>(window, "zoomBar")->pageStep(), 10);
        EXPECT_EQ(find<QLabel>(window, "zoomPercent")->text(), QStringLiteral("27%"));
        EXPECT_EQ(text(window, "goToFwp"), QStringLiteral("0"));
        EXPECT_EQ(text(window, "goToFn"), QStringLiteral("1"));
        EXPECT_TRUE(window.areas().display().showAllCells);
        EXPECT_FALSE(window.areas().display().highlightEu);
        EXPECT_FALSE(DisplayStage::selected(window));
        EXPECT_EQ(find<QScrollBar>(window, "wordScroll")->maximum(), 32);
        EXPECT_EQ(find<QScrollBar>(window, "frameScroll")->maximum(), 16);
        for (const char* name :
             {"pcm_display_window", "sub_frame_label", "minor_frame_legend", "sub_frame_legend"}) {
            find<QWidget>(window, name);
        }
        EXPECT_EQ(test::checkWindow(window), std::vector<std::string>{});
    }));
    EXPECT_TRUE(s.ui.boxes.empty());
}

TEST(MajorFrameDisplay, KeepsZoomPlaceAndDatabaseOnClosing) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        window.setGeometry(30, 40, 960, 500);
        find<QSlider>(window, "zoomBar")->setValue(61);
    });
    EXPECT_EQ(s.settings.integer("PCMScroll", 0), 61);
    EXPECT_EQ(s.settings.integer("PCMx", -1), 30);
    EXPECT_EQ(s.settings.integer("PCMy", -1), 40);
    EXPECT_EQ(s.settings.integer("PCMdx", -1), 960);
    EXPECT_EQ(s.settings.integer("PCMdy", -1), 500);
    EXPECT_EQ(s.settings.profileInteger("ViewMdb", "Enabled", -1), 0);
}

TEST(MajorFrameDisplay, TooManyWordsAreRefused) {
    DisplayStage s;
    s.start(2048, 1);
    EXPECT_FALSE(showMajorFrameDisplay(s.form, s.context, s.format, s.steps));
    ASSERT_EQ(s.ui.boxes.size(), 1U);
    EXPECT_EQ(s.ui.boxes[0].id, 224);
    EXPECT_EQ(s.ui.boxes[0].titleId, 78);
}

TEST(MajorFrameDisplay, AreasThatCanNotBeHadEndIt) {
    DisplayStage s;
    EXPECT_FALSE(showMajorFrameDisplay(
        s.form, s.format, s.steps, nullptr,
        [](const PcmFormat&, QWidget*) { return std::unique_ptr<FrameGridAreas>(); }));
    EXPECT_EQ(s.ui.countBoxes(225), 1);
}

TEST(MajorFrameDisplay, WithoutAStreamNothingHappens) {
    DisplayStage s;
    s.format.clear();
    EXPECT_FALSE(showMajorFrameDisplay(s.form, s.context, s.format, s.steps));
    EXPECT_TRUE(s.ui.boxes.empty());
}

TEST(MajorFrameDisplay, ACellWidthOfFiveGivesAHeightOfTwoAndNoNames) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        find<QSlider>(window, "zoomBar")->setValue(5);
        EXPECT_EQ(window.areas().view().cellHeight(), 2);
        const FrameGridPaint paint(window.areas().grid());
        std::string name = "SPEED";
        const auto* const font = paint.fontFor({5, 2}, name);
        EXPECT_EQ(name, "*");
        EXPECT_EQ(font, nullptr) << "nothing has room";
        EXPECT_EQ(find<QLabel>(window, "zoomPercent")->text(), QStringLiteral("3%"));
    });
}

TEST(MajorFrameDisplay, ZoomingOutAtNineEndsAtFive) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        find<QSlider>(window, "zoomBar")->setValue(9);
        DisplayStage::choose(window, "zoomOut");
        EXPECT_EQ(window.areas().view().cellWidth(), 5);
        DisplayStage::choose(window, "zoomIn");
        EXPECT_EQ(window.areas().view().cellWidth(), 15);
        DisplayStage::choose(window, "zoom25");
        EXPECT_EQ(window.areas().view().cellWidth(), 37);
        DisplayStage::choose(window, "zoom100");
        EXPECT_EQ(window.areas().view().cellWidth(), 150);
    });
}

TEST(MajorFrameDisplay, AClickBelowTheDepthOfAWordSelectsNothing) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        DisplayStage::click(window, 5, 3);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        DisplayStage::click(window, 5, 6);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        DisplayStage::choose(window, "depthOnlyOff");
        DisplayStage::click(window, 5, 6);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
    });
    EXPECT_EQ(s.settings.integer("ShowAllCells", 0), 1);
}

TEST(MajorFrameDisplay, TwoNumbersInTheFrameFieldGoToWordAndFrame) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        auto* const fn = find<QLineEdit>(window, "goToFn");
        test::type(window, "goToFn", QStringLiteral("12 3"));
        QTest::keyClick(fn, Qt::Key_Return);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{12, 3}));
        EXPECT_EQ(text(window, "goToFwp"), QStringLiteral("12"));
        EXPECT_EQ(text(window, "goToFn"), QStringLiteral("3"));
        test::type(window, "goToFwp", QStringLiteral("7"));
        QTest::keyClick(find<QLineEdit>(window, "goToFwp"), Qt::Key_Return);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{7, 3}));
        test::type(window, "goToFwp", QStringLiteral("99"));
        QTest::keyClick(find<QLineEdit>(window, "goToFwp"), Qt::Key_Return);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{7, 3}));
        EXPECT_EQ(text(window, "goToFwp"), QStringLiteral("7"));
        EXPECT_EQ(s.ui.beeps, 1);
        EXPECT_TRUE(window.isVisible()) << "Return presses no button";
    });
}

TEST(MajorFrameDisplay, TheTabKeyGoesAroundInItsOrder) {
    DisplayStage s;
    s.form.help = [](const std::string&) {};
    s.show([](MajorFrameWindow& window) {
        std::vector<std::string> names;
        for (auto* const widget : test::tabChain(window)) {
            names.push_back(toBytes(widget->objectName()));
        }
        EXPECT_THAT(names, ElementsAre("pcm_display_window", "goToFwp", "goToFn", "zoomBar",
                                       "close", "help"));
    });
}

TEST(MajorFrameDisplay, KeysMoveEditAndDelete) {
    DisplayStage s;
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        DisplayStage::click(window, 3, 1);
        QTest::keyClick(&grid, Qt::Key_Right);
        QTest::keyClick(&grid, Qt::Key_Down);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{4, 2}));
        s.accepts = false;
        QTest::keyClick(&grid, Qt::Key_Return);
        EXPECT_THAT(s.edits, ElementsAre("measurement 4 2"));
        EXPECT_FALSE(window.displayChanged());
        QTest::keyClick(&grid, Qt::Key_End);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{31, 2}));
        QTest::keyClick(&grid, Qt::Key_Home, Qt::ControlModifier);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{0, 1}));
        DisplayStage::click(window, 4, 2);
        s.ui.byId[117] = Button::No;
        QTest::keyClick(&window, Qt::Key_Delete);
        EXPECT_EQ(s.ui.countBoxes(117), 1);
        EXPECT_TRUE(s.format.hasMeasurement("ALT"));
        EXPECT_FALSE(window.displayChanged());
        s.ui.byId[117] = Button::Yes;
        QTest::keyClick(&window, Qt::Key_Delete);
        EXPECT_FALSE(s.format.hasMeasurement("ALT"));
        EXPECT_TRUE(window.displayChanged());
    }));
}

TEST(MajorFrameDisplay, TheSyncWordIsNotEdited) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        QTest::mouseDClick(&DisplayStage::grid(window), Qt::LeftButton, {},
                           DisplayStage::middleOf(window, 0, 2));
        EXPECT_EQ(s.ui.countBoxes(230), 1);
        EXPECT_EQ(s.ui.boxes[0].titleId, 78);
    });
    EXPECT_TRUE(s.edits.empty());
}

TEST(MajorFrameDisplay, ACounterIsEditedInFrameOneAndAMeasurementAtOnce) {
    DisplayStage s;
    s.place(30, 1, "COUNT");
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        window.editCell(30, 9);
        window.editCell(5, 2);
        QTest::mouseDClick(&DisplayStage::grid(window), Qt::LeftButton, {},
                           DisplayStage::middleOf(window, 3, 5));
    }));
    EXPECT_THAT(s.edits, ElementsAre("measurement 30 1", "measurement 5 2", "measurement 3 5"));
}

TEST(MajorFrameDisplay, AnEmptyPlaceAsksWhatItBecomes) {
    DisplayStage s;
    s.accepts = false;
    s.show([&](MajorFrameWindow& window) {
        s.door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("create_new_cell"));
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            test::press(dialog, "ok");
        });
        window.editCell(9, 2);
        s.door.next([](QDialog& dialog) { test::press(dialog, "cancel"); });
        window.editCell(9, 2);
        EXPECT_FALSE(window.displayChanged());
        s.door.next([](QDialog& dialog) {
            find<QAbstractButton>(dialog, "async")->click();
            test::press(dialog, "ok");
        });
        window.editCell(9, 2);
        EXPECT_TRUE(window.displayChanged()) << "also after a Cancel in the form of the stream";
        window.editCell(5, 1);  // no plain word: a measurement is assumed
    });
    EXPECT_THAT(s.edits, ElementsAre("measurement 9 2", "async 9 2", "measurement 5 1"));
}

TEST(MajorFrameDisplay, EighteenAsyncStreamsAreNoMoreAskedForBeforeTheEditionOfEleven) {
    for (const int edition : {2009, 2011}) {
        DisplayStage s(edition);
        s.format.asyncFormats.resize(18);
        s.show([&](MajorFrameWindow& window) {
            if (edition >= 2011) {
                s.door.next([](QDialog& dialog) { test::press(dialog, "ok"); });
            }
            window.editCell(9, 2);
        });
        EXPECT_THAT(s.edits, ElementsAre("measurement 9 2"));
    }
}

TEST(MajorFrameDisplay, APlaceOfAnAsyncStreamOpensItsForm) {
    DisplayStage s;
    s.format.asyncFormats.resize(1);
    ASSERT_TRUE(placeAsyncSlots(s.format, nullptr, 1, {9, {{1, 1, 16}}}, "FW"));
    EXPECT_TRUE(s.show([](MajorFrameWindow& window) { window.editCell(9, 4); }));
    EXPECT_THAT(s.edits, ElementsAre("async 9 4"));
}

TEST(MajorFrameDisplay, SearchesTellWhatTheyMiss) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        s.ui.texts = {"oil_p", "NOBODY", "ENGINE", "FRAMES", "engine", std::nullopt};
        DisplayStage::choose(window, "goToMeasurement");
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        DisplayStage::choose(window, "goToMeasurement");
        ASSERT_EQ(s.ui.boxes.size(), 1U);
        EXPECT_EQ(s.ui.boxes[0].id, 229);
        EXPECT_EQ(s.ui.boxes[0].text, "Unable to locate Measurement by this name.");
        DisplayStage::choose(window, "goToSubframe");
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 1}));
        DisplayStage::choose(window, "goToSubframe");
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{30, 1}));
        DisplayStage::choose(window, "goToSubframe");
        EXPECT_EQ(s.ui.boxes[1].text, "Unable to locate Subframe by this name.");
        DisplayStage::choose(window, "goToSubframe");
        EXPECT_EQ(s.ui.boxes.size(), 2U);
    });
    EXPECT_EQ(s.ui.textPrompts[0].prompt, "Find Measurement Name:");
    EXPECT_EQ(s.ui.textPrompts[2].prompt, "Enter Subframe Name");
}

TEST(MajorFrameDisplay, EveryEditIsALevelThatIsUndoneAndRedone) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
        s.onEdit = [&] { s.place(3, 1, "SECOND"); };
        window.editCell(3, 1);
        s.onEdit = [&] { s.place(4, 1, "THIRD"); };
        window.editCell(4, 1);
        EXPECT_EQ(find<QLabel>(window, "measurementCount")->text(),
                  QStringLiteral("6 measurements"));
        DisplayStage::choose(window, "undo");
        EXPECT_FALSE(s.format.hasMeasurement("THIRD"));
        EXPECT_TRUE(s.format.hasMeasurement("SECOND"));
        DisplayStage::choose(window, "undo");
        EXPECT_FALSE(s.format.hasMeasurement("SECOND"));
        EXPECT_FALSE(DisplayStage::entry(window, "undo")->isEnabled());
        EXPECT_EQ(find<QLabel>(window, "measurementCount")->text(),
                  QStringLiteral("4 measurements"));
        DisplayStage::choose(window, "redo");
        DisplayStage::choose(window, "redo");
        EXPECT_TRUE(s.format.hasMeasurement("THIRD"));
        EXPECT_FALSE(DisplayStage::entry(window, "redo")->isEnabled());
        EXPECT_TRUE(window.displayChanged());
    });
}

TEST(MajorFrameDisplay, NamesWithAConversionAreHighlightedOnRequest) {
    DisplayStage s;
    ConversionStore conversions(s.context);
    ASSERT_TRUE(conversions.createDefaultDefinition(nullptr, "SPEED", false));
    s.steps.conversions = &conversions;
    s.show([&](MajorFrameWindow& window) {
        const auto inkOf = [&](int word) {
            return window.areas().display().cellText(FrameArea::Grid, word, 1).ink;
        };
        const auto picture = [&](int word) {
            auto& grid = DisplayStage::grid(window);
            return grid.grab(grid.cellRect({word, 1})).toImage();
        };
        find<QSlider>(window, "zoomBar")->setValue(100);
        EXPECT_TRUE(DisplayStage::entry(window, "highlightEuOff")->isChecked());
        EXPECT_EQ(inkOf(3), FrameInk::Plain);
        const auto plain = picture(3);
        const auto other = picture(4);
        DisplayStage::choose(window, "highlightEuOn");
        EXPECT_TRUE(DisplayStage::entry(window, "highlightEuOn")->isChecked());
        EXPECT_FALSE(DisplayStage::entry(window, "highlightEuOff")->isChecked());
        EXPECT_EQ(s.settings.integer("HLMesWEU", -1), 1);
        EXPECT_EQ(inkOf(3), FrameInk::Conversion);
        EXPECT_EQ(inkOf(4), FrameInk::Plain) << "without a conversion";
        EXPECT_NE(picture(3), plain);
        EXPECT_EQ(picture(4), other);
        DisplayStage::choose(window, "highlightEuOff");
        EXPECT_EQ(s.settings.integer("HLMesWEU", -1), 0);
        EXPECT_EQ(picture(3), plain);
        EXPECT_FALSE(window.displayChanged());
        DisplayStage::choose(window, "highlightEuOn");
    });
    s.show([&](MajorFrameWindow& window) {
        EXPECT_TRUE(DisplayStage::entry(window, "highlightEuOn")->isChecked());
        EXPECT_TRUE(window.areas().display().highlightEu);
    });
}

TEST(MajorFrameDisplay, TheSameNameInDifferentStreamsIsAllowedAndRefused) {
    DisplayStage s;
    MeasurementNames names(s.context);
    s.steps.edit.names = &names;
    ASSERT_TRUE(names.checking());
    s.show([&](MajorFrameWindow& window) {
        auto* const allow = DisplayStage::entry(window, "sameNamesOn");
        auto* const refuse = DisplayStage::entry(window, "sameNamesOff");
        EXPECT_EQ(allow->text(),
                  QStringLiteral("&Allow the same measurement name in different streams"));
        EXPECT_EQ(refuse->text(),
                  QStringLiteral("Do &not allow the same measurement name in different streams"));
        EXPECT_TRUE(refuse->isChecked());
        DisplayStage::choose(window, "sameNamesOn");
        EXPECT_TRUE(allow->isChecked());
        EXPECT_FALSE(refuse->isChecked());
        EXPECT_FALSE(names.checking());
        EXPECT_EQ(s.settings.integer("CheckForDupMeasurements", -1), 0);
        DisplayStage::choose(window, "sameNamesOff");
        EXPECT_TRUE(names.checking());
        EXPECT_EQ(s.settings.integer("CheckForDupMeasurements", -1), 1);
        EXPECT_FALSE(window.displayChanged());
    });
    // Off for this document only: what the settings say does not count here.
    names.setChecking(false, false);
    s.show([&](MajorFrameWindow& window) {
        EXPECT_TRUE(DisplayStage::entry(window, "sameNamesOn")->isChecked());
    });
    s.steps.edit.names = nullptr;
    s.show([&](MajorFrameWindow& window) {
        EXPECT_FALSE(DisplayStage::entry(window, "sameNamesOn")->isEnabled());
        EXPECT_FALSE(DisplayStage::entry(window, "sameNamesOff")->isEnabled());
    });
}

}  // namespace
}  // namespace kavu
