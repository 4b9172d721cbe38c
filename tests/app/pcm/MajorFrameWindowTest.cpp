// The window around the grid: keys, menus, settings, status texts.
#include "app/pcm/DisplayStage.h"
#include "app/pcm/FrameAccess.h"
#include "app/pcm/MeasurementList.h"
#include "app/shell/HelpTopics.h"
#include "core/talk/ProfileSettings.h"
#include "groups/MeasurementNames.h"
#include "pcm/structure/AsyncEdit.h"

#include <array>

#include <QAccessible>
#include <QClipboard>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QToolTip>
#include <QTreeView>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::DisplayStage;
using test::find;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// --- keys -------------------------------------------------------------------------------------

TEST(MajorFrameWindow, TheHelpKeyOpensTheChapterFromTheGridAndFromAField) {
    DisplayStage s;
    std::vector<std::string> topics;
    s.form.help = [&](const std::string& topic) { topics.push_back(topic); };
    s.show([&](MajorFrameWindow& window) {
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_F1);
        QTest::keyClick(find<QLineEdit>(window, "goToFwp"), Qt::Key_F1);
        DisplayStage::choose(window, "displayHelp");
        test::press(window, "help");
    });
    const std::string topic = "MajorFrameDisplay";
    EXPECT_THAT(topics, ElementsAre(topic, topic, topic, topic));
    EXPECT_EQ(helpPlace(topic).page, "display");
}

TEST(MajorFrameWindow, TheReturnKeyRunsTheButtonThatHasTheFocusAndNoOther) {
    DisplayStage s;
    int helped = 0;
    s.form.help = [&](const std::string&) { ++helped; };
    s.show([&](MajorFrameWindow& window) {
        auto* const zoom = find<QSlider>(window, "zoomBar");
        zoom->setFocus();
        QTest::keyClick(zoom, Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        auto* const help = find<QPushButton>(window, "help");
        help->setFocus();
        QTest::keyClick(help, Qt::Key_Return);
        EXPECT_EQ(helped, 1);
        auto* const close = find<QPushButton>(window, "close");
        close->setFocus();
        QTest::keyClick(close, Qt::Key_Enter);
        EXPECT_FALSE(window.isVisible());
    });
}

TEST(MajorFrameWindow, ControlGGoesToTheFieldOfTheWord) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_G, Qt::ControlModifier);
        auto* const field = find<QLineEdit>(window, "goToFwp");
        EXPECT_EQ(window.focusWidget(), field);
        EXPECT_EQ(field->selectedText(), QStringLiteral("0"));
        QTest::keyClicks(field, QStringLiteral("12 3"));
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{12, 3}));
    });
}

TEST(MajorFrameWindow, KeysFindCopyUndoAndZoom) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        QTest::keyClick(&grid, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(find<QLineEdit>(window, "findText"), QStringLiteral("OIL"));
        QTest::keyClick(&window, Qt::Key_F3);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 3}));
        QTest::keyClick(&window, Qt::Key_F3, Qt::ShiftModifier);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 2}));
        grid.setFocus();
        QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("OIL_T\n"));
        s.onEdit = [&] { s.place(3, 1, "SECOND"); };
        window.editCell(3, 1);
        QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_FALSE(s.format.hasMeasurement("SECOND"));
        QTest::keyClick(&grid, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(s.format.hasMeasurement("SECOND"));
        QTest::keyClick(&grid, Qt::Key_L, Qt::ControlModifier);
        EXPECT_EQ(window.focusWidget(), find<QLineEdit>(window, "filter"));
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(window.focusWidget(), &grid);
        EXPECT_TRUE(window.isVisible());
    });
}

TEST(MajorFrameWindow, DeleteAsksWhichOfSeveralMeasurements) {
    DisplayStage s;
    s.place(3, 1, "SECOND");
    s.ui.byId[117] = Button::Yes;
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 3, 2);
        s.ui.choices = {-1, 1};
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_Delete);
        EXPECT_EQ(s.ui.countBoxes(117), 0) << "none was chosen";
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_Delete);
        EXPECT_EQ(s.ui.countBoxes(117), 1);
    });
    ASSERT_EQ(s.ui.listPrompts.size(), 2U);
    EXPECT_THAT(s.ui.listPrompts[0].second, ElementsAre("SPEED", "SECOND"));
    EXPECT_TRUE(s.format.hasMeasurement("SPEED"));
    EXPECT_FALSE(s.format.hasMeasurement("SECOND"));
}

TEST(MajorFrameWindow, DeleteAsksBeforeAnAsyncStreamGoes) {
    DisplayStage s;
    s.format.asyncFormats.resize(1);
    ASSERT_TRUE(placeAsyncSlots(s.format, nullptr, 1, {9, {{1, 1, 16}}}, "FW"));
    s.show([&](MajorFrameWindow& window) {
        DisplayStage::click(window, 9, 2);
        s.ui.byId[137] = Button::No;
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_Delete);
        EXPECT_EQ(s.ui.countBoxes(137), 1);
        EXPECT_EQ(s.format.asyncCount(), 1);
        EXPECT_FALSE(window.displayChanged());
        s.ui.byId[137] = Button::Yes;
        QTest::keyClick(&DisplayStage::grid(window), Qt::Key_Delete);
        EXPECT_EQ(s.format.asyncCount(), 0);
        EXPECT_TRUE(window.displayChanged());
        DisplayStage::click(window, 10, 1);
        EXPECT_FALSE(DisplayStage::entry(window, "deleteCell")->isEnabled()) << "nothing is there";
    });
}

// --- what is kept -----------------------------------------------------------------------------

TEST(MajorFrameWindow, ThePlaceIsRestoredUnlessBothOfItsValuesAreMissing) {
    struct Row {
        int x, y, width, height;
        bool place, size;
    };
    for (const auto& row : {Row{30, 40, 700, 500, true, true}, Row{30, 40, 0, 500, true, false},
                            Row{30, 40, 700, 0, true, false}, Row{30, 40, -1, -1, true, false},
                            Row{-1, -1, 700, 500, false, false}}) {
        DisplayStage s;
        s.settings.writeInteger("PCMx", row.x);
        s.settings.writeInteger("PCMy", row.y);
        s.settings.writeInteger("PCMdx", row.width);
        s.settings.writeInteger("PCMdy", row.height);
        s.door.next([&](QDialog& window) {
            const auto about = testing::Message() << row.x << " " << row.y << " " << row.width;
            const auto wanted = QSize(row.width, row.height).expandedTo(window.minimumSizeHint());
            EXPECT_EQ(window.size() == wanted, row.size)
                << about << ": " << window.width() << " x " << window.height() << ", at least "
                << window.minimumSizeHint().width() << " x " << window.minimumSizeHint().height();
            // Without a size the window is as wide as the screen here, and is moved for it.
            if (row.size || !row.place) {
                EXPECT_EQ(window.geometry().topLeft() == QPoint(row.x, row.y), row.place) << about;
            }
            test::press(window, "close");
        });
        showMajorFrameDisplay(s.form, s.context, s.format, s.steps);
        if (row.place && row.size) {
            // Its frame must not make it wander.
            EXPECT_EQ(s.settings.integer("PCMx", -7), row.x);
            EXPECT_EQ(s.settings.integer("PCMy", -7), row.y);
        }
    }
}

TEST(MajorFrameWindow, APlaceOnAScreenThatIsGoneIsBroughtBack) {
    DisplayStage s;
    s.settings.writeInteger("PCMx", 50000);
    s.settings.writeInteger("PCMy", -50000);
    s.settings.writeInteger("PCMdx", 90000);
    s.settings.writeInteger("PCMdy", 400);
    s.show([](MajorFrameWindow& window) {
        EXPECT_GE(window.x(), 0);
        EXPECT_LT(window.x(), 3000);
        EXPECT_GE(window.y(), 0);
    });
}

TEST(MajorFrameWindow, AnyWidthInTheSettingsIsBroughtWithinItsLimits) {
    for (const auto& [kept, width] :
         {std::pair{4, 5}, std::pair{0, 5}, std::pair{-30, 5}, std::pair{151, 150}}) {
        DisplayStage s;
        s.settings.writeInteger("PCMScroll", kept);
        s.show(
            [&](MajorFrameWindow& window) { EXPECT_EQ(window.areas().view().cellWidth(), width); });
        EXPECT_EQ(s.settings.integer("PCMScroll", 0), width);
    }
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        EXPECT_EQ(window.areas().view().cellWidth(), 30);
        EXPECT_EQ(find<QLabel>(window, "zoomPercent")->text(), QStringLiteral("20%"));
    });
}

TEST(MajorFrameWindow, CheckMarksFollowTheSettingsAndWriteThem) {
    DisplayStage s;
    s.settings.writeInteger("HLMesWEU", 1);
    s.settings.writeInteger("ShowAllCells", 1);
    MeasurementNames names(s.context);
    names.setChecking(true, false);
    s.steps.edit.names = &names;
    s.show([&](MajorFrameWindow& window) {
        const auto isOn = [&](const char* name) {
            return DisplayStage::entry(window, name)->isChecked();
        };
        EXPECT_TRUE(window.areas().display().highlightEu);
        EXPECT_TRUE(isOn("highlightEuOn"));
        EXPECT_FALSE(isOn("highlightEuOff"));
        EXPECT_TRUE(isOn("depthOnlyOff"));
        EXPECT_FALSE(isOn("depthOnlyOn"));
        EXPECT_TRUE(isOn("sameNamesOff"));
        EXPECT_FALSE(isOn("sameNamesOn"));
        DisplayStage::choose(window, "highlightEuOff");
        EXPECT_FALSE(window.areas().display().highlightEu);
        EXPECT_EQ(s.settings.integer("HLMesWEU", 7), 0);
        DisplayStage::choose(window, "highlightEuOn");
        EXPECT_TRUE(window.areas().display().highlightEu);
        EXPECT_EQ(s.settings.integer("HLMesWEU", 7), 1);
        const auto* const key = find<QWidget>(window, "frameKey");
        EXPECT_TRUE(key->accessibleName().endsWith(QStringLiteral("EU definition, Repetition")));
        EXPECT_GT(key->width(), window.areas().width()) << "it has the width of the window";
        DisplayStage::choose(window, "depthOnlyOn");
        EXPECT_TRUE(key->accessibleName().endsWith(QStringLiteral("EU definition")));
        EXPECT_FALSE(window.areas().display().showAllCells);
        EXPECT_EQ(s.settings.integer("ShowAllCells", 7), 0);
        DisplayStage::choose(window, "sameNamesOn");
        EXPECT_FALSE(names.checking());
        DisplayStage::choose(window, "sameNamesOff");
        EXPECT_TRUE(names.checking());
    });
}

// --- the database -----------------------------------------------------------------------------

TEST(MajorFrameWindow, ThePaneOfTheDatabaseOpensAsItWasLeft) {
    DisplayStage s;
    s.steps.databaseEntries = {{"&Store Stream", [](QWidget&) { return false; }}};
    s.steps.makeDatabasePane = [](QSplitter& parts) {
        auto* const pane = new QLabel(QStringLiteral("database"), &parts);
        pane->setObjectName(QStringLiteral("databasePane"));
        return pane;
    };
    const auto pane = [](MajorFrameWindow& window) {
        return window.findChild<QLabel*>(QStringLiteral("databasePane"));
    };
    s.show([&](MajorFrameWindow& window) {
        EXPECT_EQ(pane(window), nullptr);
        EXPECT_FALSE(DisplayStage::entry(window, "viewDatabase")->isChecked());
        DisplayStage::choose(window, "viewDatabase");
        ASSERT_NE(pane(window), nullptr);
        EXPECT_TRUE(pane(window)->isVisible());
    });
    EXPECT_EQ(s.settings.profileInteger("ViewMdb", "Enabled", -1), 1);
    s.show([&](MajorFrameWindow& window) {
        ASSERT_NE(pane(window), nullptr);
        EXPECT_TRUE(pane(window)->isVisible());
        EXPECT_TRUE(DisplayStage::entry(window, "viewDatabase")->isChecked());
        DisplayStage::choose(window, "viewDatabase");
        EXPECT_FALSE(pane(window)->isVisible());
    });
    EXPECT_EQ(s.settings.profileInteger("ViewMdb", "Enabled", -1), 0);
}

TEST(MajorFrameWindow, WithoutADatabaseItsMenuIsDisabledAndNoPaneOpens) {
    DisplayStage s;
    s.settings.writeProfile("ViewMdb", "Enabled", "1");
    bool made = false;
    s.steps.makeDatabasePane = [&](QSplitter& parts) {
        made = true;
        return new QLabel(&parts);
    };
    s.show([](MajorFrameWindow& window) {
        EXPECT_FALSE(find<QMenu>(window, "databaseMenu")->menuAction()->isEnabled());
    });
    EXPECT_FALSE(made);
}

// --- menus ------------------------------------------------------------------------------------

TEST(MajorFrameWindow, EachEntryOfAnOperationRunsItAndAnAcceptedOneChangesTheDisplay) {
    struct Row {
        const char* entry;
        const char* text;
        PcmFormSteps::Edit PcmFormSteps::*step;
        int edition;
    };
    for (const auto& row :
         {Row{"generate", "&Initialize Undefined Measurements...", &PcmFormSteps::generateDataWords,
              2009},
          Row{"sectionComment", "Measurement &Section Comment Field...",
              &PcmFormSteps::editSectionComment, 2009},
          Row{"filterList", "Measurement Selected &Filter/Overwrite List...",
              &PcmFormSteps::editFilterList, 2009},
          Row{"taggedData", "&Tagged Data Definitions...", &PcmFormSteps::editTaggedData, 2011},
          Row{"conversions", "Data C&onversion Information...", &PcmFormSteps::editConversions,
              2009},
          Row{"definitionMode", "&Measurement Definition Options...",
              &PcmFormSteps::chooseDefinitionMode, 2009},
          Row{"reports", "&Generate Reports...", &PcmFormSteps::generateReports, 2009}}) {
        for (const bool accepted : {true, false}) {
            DisplayStage s(row.edition);
            int runs = 0;
            s.steps.*row.step = [&](QWidget&) {
                ++runs;
                return accepted;
            };
            EXPECT_EQ(s.show([&](MajorFrameWindow& window) {
                EXPECT_EQ(toBytes(DisplayStage::entry(window, row.entry)->text()), row.text);
                DisplayStage::choose(window, row.entry);
            }),
                      accepted)
                << row.entry;
            EXPECT_EQ(runs, 1) << row.entry;
        }
    }
}

TEST(MajorFrameWindow, EntriesOfWordsAreGivenTheSelectedOnes) {
    struct Row {
        const char* entry;
        const char* text;
        PcmFormSteps::EditWords PcmFormSteps::*step;
        const char* undo;
    };
    for (const auto& row :
         {Row{"insertFwps", "I&nsert New FWPs...", &PcmFormSteps::insertFwps, "&Undo Insert Words"},
          Row{"deleteFwps", "De&lete FWPs...", &PcmFormSteps::deleteFwps, "&Undo Delete Words"},
          Row{"moveFwps", "&Move FWPs...", &PcmFormSteps::moveFwps, "&Undo Move Words"}}) {
        DisplayStage s;
        std::vector<std::pair<int, int>> runs;
        s.steps.*row.step = [&](QWidget&, const SelectedWords& selected) {
            runs.emplace_back(selected.first, selected.last);
            s.place(20, 1, "N" + std::to_string(runs.size()));
            return true;
        };
        EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
            EXPECT_EQ(toBytes(DisplayStage::entry(window, row.entry)->text()), row.text);
            DisplayStage::click(window, 8, 2);
            DisplayStage::click(window, 6, 2, Qt::ShiftModifier);
            DisplayStage::choose(window, row.entry);
            EXPECT_EQ(toBytes(DisplayStage::entry(window, "undo")->text()), row.undo);
            DisplayStage::choose(window, ("word_" + std::string(row.entry)).c_str());
        }));
        EXPECT_THAT(runs, ElementsAre(std::pair(6, 8), std::pair(6, 8))) << row.entry;
    }
}

TEST(MajorFrameWindow, EntriesOfTheDatabaseRunTheirStep) {
    DisplayStage s;
    int runs = 0;
    s.steps.databaseEntries = {{"&Store Stream", [&](QWidget&) { return ++runs > 0; }},
                               {"&Not Yet", {}}};
    EXPECT_TRUE(s.show([](MajorFrameWindow& window) {
        DisplayStage::choose(window, "database0");
        EXPECT_FALSE(DisplayStage::entry(window, "database1")->isEnabled());
    }));
    EXPECT_EQ(runs, 1);
}

// --- what it tells ----------------------------------------------------------------------------

TEST(MajorFrameWindow, TheLineBelowTheGridTellsOfTheSelectedCell) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        auto* const status = find<QLabel>(window, "cellStatus");
        EXPECT_EQ(status->text(), QStringLiteral("No cell is selected"));
        DisplayStage::click(window, 5, 2);
        EXPECT_EQ(status->text(),
                  QStringLiteral("FWP 5, FN 2, word of 16 bits, subframe ENGINE  |  "
                                 "OIL_T: SF, mask FW, 16 bits"));
        DisplayStage::click(window, 30, 4);
        EXPECT_EQ(status->text(),
                  QStringLiteral("FWP 30, FN 4, word of 16 bits, ID counter FRAMES"));
    });
}

TEST(MajorFrameWindow, TheTipOfACellIsPlainTextEvenIfANameLooksLikeAPage) {
    DisplayStage s;
    s.place(6, 1, "<b>X</b>");
    s.format.idCounters[0].subframes[0].name = "A & B <C>";
    s.show([](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        const auto tip = [&](int word, int frame) {
            const auto point = grid.cellRect({word, frame}).center();
            QHelpEvent event(QEvent::ToolTip, point, grid.mapToGlobal(point));
            QApplication::sendEvent(&grid, &event);
            return toBytes(QToolTip::text());
        };
        EXPECT_THAT(tip(3, 2), HasSubstr("FWP 3, FN 2, word of 16 bits\nSPEED: MF, mask FW"));
        EXPECT_THAT(tip(6, 1), HasSubstr("&lt;b&gt;X&lt;/b&gt;"));
        auto* const labels = find<QWidget>(window, "sub_frame_label");
        const QPoint point(grid.cellRect({5, 1}).center().x(), 3);
        QHelpEvent event(QEvent::ToolTip, point, labels->mapToGlobal(point));
        QApplication::sendEvent(labels, &event);
        EXPECT_THAT(toBytes(QToolTip::text()), HasSubstr(">A &amp; B &lt;C&gt;</p>"));
        tip(5, 9);
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000))
            << "below the depth of the word is nothing";
    });
}

// Ranges were shown as full words, which hid that two measurements share bits and that they do not.
TEST(MajorFrameWindow, APlaceOfRangesShowsTheMaskOfItsFragment) {
    DisplayStage s;
    s.placeFragments(
        "PARTS", {{6, 0, 6, 1, 1, 16, "11110000", 'D', 1}, {7, 0, 7, 1, 1, 16, "1111", 'D', 2}});
    Measurement low;
    low.name = "LOW";
    low.mask = "1111";
    s.place(6, 1, low);
    s.place(7, 1, low);
    installFrameAccess();
    s.show([](MajorFrameWindow& window) {
        auto& grid = DisplayStage::grid(window);
        const auto textsOf = [&](int word) {
            DisplayStage::click(window, word, 2);
            const auto point = grid.cellRect({word, 2}).center();
            QHelpEvent event(QEvent::ToolTip, point, grid.mapToGlobal(point));
            QApplication::sendEvent(&grid, &event);
            auto* const access = QAccessible::queryAccessibleInterface(&grid);
            const auto middle = grid.mapToGlobal(point);
            auto* const cell = access->childAt(middle.x(), middle.y());
            return std::array{
                toBytes(QToolTip::text()), toBytes(find<QLabel>(window, "cellStatus")->text()),
                cell == nullptr ? std::string() : toBytes(cell->text(QAccessible::Description))};
        };
        for (const auto& text : textsOf(6)) {
            EXPECT_THAT(text, HasSubstr("PARTS: WDFR, mask 11110000, 4 bits"));
            EXPECT_THAT(text, Not(HasSubstr("same bits")));
        }
        for (const auto& text : textsOf(7)) {
            EXPECT_THAT(text, HasSubstr("PARTS: WDFR, mask 1111, 4 bits"));
            EXPECT_THAT(text, HasSubstr("Some of them take the same bits"));
        }
    });
}

TEST(MajorFrameWindow, TheLabelOfAWordOpensItsSubframeOrAsksForOne) {
    DisplayStage s;
    s.steps.editSubframeAt = [&](QWidget&, int fwp, int) {
        s.edits.push_back("edit " + std::to_string(fwp));
        return true;
    };
    s.steps.createSubframeAt = [&](QWidget&, int fwp, int) {
        s.edits.push_back("create " + std::to_string(fwp));
        return false;
    };
    EXPECT_TRUE(s.show([&](MajorFrameWindow& window) {
        auto* const labels = find<QWidget>(window, "sub_frame_label");
        const auto click = [&](int word) {
            const QPoint point(DisplayStage::middleOf(window, word, 1).x(), 4);
            QTest::mouseClick(labels, Qt::LeftButton, {}, point);
            QTest::mouseDClick(labels, Qt::LeftButton, {}, point);
        };
        click(5);
        EXPECT_EQ(DisplayStage::selected(window), (FramePlace{5, 1}));
        click(7);
        click(0);
        EXPECT_EQ(s.ui.countBoxes(230), 1);
        find<QScrollBar>(window, "wordScroll")->setValue(29);
        click(30);
        click(35);  // where there is no word
    }));
    EXPECT_THAT(s.edits, ElementsAre("edit 5", "create 7", "edit 30"));
}

TEST(MajorFrameWindow, AnEmptyListSaysWhyItIsEmpty) {
    DisplayStage s;
    s.show([](MajorFrameWindow& window) {
        auto* const none = find<QLabel>(window, "noMeasurements");
        EXPECT_FALSE(none->isVisible());
        test::type(window, "filter", QStringLiteral("zz"));
        EXPECT_TRUE(none->isVisible());
        EXPECT_EQ(none->text(), QStringLiteral("No name has this text in it."));
        find<QLineEdit>(window, "filter")->clear();
        EXPECT_FALSE(none->isVisible());
    });
    DisplayStage empty;
    for (const auto* name : {"SPEED", "ALT", "OIL_T", "OIL_P"}) {
        empty.format.removeMeasurement(name);
    }
    empty.show([](MajorFrameWindow& window) {
        EXPECT_THAT(toBytes(find<QLabel>(window, "noMeasurements")->text()),
                    HasSubstr("No measurements yet"));
    });
}

TEST(MajorFrameWindow, TheListIsSortedByNumbersAndFollowsTheStream) {
    DisplayStage s;
    s.show([&](MajorFrameWindow& window) {
        auto* const view = find<QTreeView>(window, "measurements");
        view->sortByColumn(MeasurementListModel::Locations, Qt::AscendingOrder);
        const auto at = [&](int row, int column) {
            return toBytes(view->model()->index(row, column).data().toString());
        };
        EXPECT_EQ(at(0, MeasurementListModel::Locations), "4") << "not 16, which begins with 1";
        EXPECT_EQ(at(3, MeasurementListModel::Locations), "16");
        s.onEdit = [&] { s.place(7, 1, "SPEED"); };
        window.editCell(3, 1);
        EXPECT_EQ(at(3, MeasurementListModel::Name), "SPEED");
        EXPECT_EQ(at(3, MeasurementListModel::Locations), "32") << "counted anew";
    });
}

}  // namespace
}  // namespace kavu
