#include "app/framework/Look.h"
#include "app/pcm/PcmFormSteps.h"
#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/document/Transaction.h"
#include "core/files/ProfileFile.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "pcm/PcmLoad.h"
#include "pcm/edit/FrameEditComment.h"
#include "pcm/write/WordFrameConversion.h"
#include "support/TestApplication.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableView>

namespace kavu {
namespace {

using test::choose;
using test::entries;
using test::find;
using test::listText;
using test::press;
using test::textOf;
using test::WordStage;

/// A stream with its steps installed, and a window to give them.
struct StepsStage : WordStage {
    explicit StepsStage(int edition = 2009) : WordStage(edition) {
        installWordSteps(installed, form, format, steps);
    }
    PcmFormSteps installed;
    QWidget window;
};

// --- "Initialize Undefined Measurements" -----------------------------------------------------

TEST(GenerateWordsForm, EveryFreeWordGetsAMeasurementWithTheChosenAttributesAndASecondRunNone) {
    StepsStage stage;
    stage.start(4, 1);
    stage.format.implicitSubframes = false;
    ASSERT_TRUE(createIdCounter(stage.format, nullptr, 1));
    stage.ui.byId[226] = Button::Yes;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(toBytes(dialog.windowTitle()), "Change Default Attributes?");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        choose(dialog, "measurementParity", QStringLiteral("Odd"));
        choose(dialog, "parityTransferOrder", QStringLiteral("Leads"));
        choose(dialog, "measurementTransferOrder", QStringLiteral("LSB"));
        choose(dialog, "euBinaryFormat", QStringLiteral("INT"));
        choose(dialog, "euType", QStringLiteral("Coefficients"));
        stage.ui.texts = {"1111"};
        press(dialog, "editMask");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.installed.generateDataWords(stage.window));
    EXPECT_EQ(stage.places("FWP0002_FN001"), "2/1 ");
    EXPECT_EQ(stage.places("FWP0003_FN001"), "3/1 ");
    EXPECT_EQ(stage.places("FWP0001_FN001"), "");
    const auto& cell = stage.at(2, 1, "FWP0002_FN001");
    EXPECT_EQ(cell.parity, "OD");
    EXPECT_EQ(cell.parityTransferOrder, "L");
    EXPECT_EQ(cell.transferOrder, "L");
    EXPECT_EQ(cell.mask, "1111000000000000");
    EXPECT_EQ(stage.settings.text("DMN1"), "OD");
    EXPECT_EQ(stage.settings.text("CBFM"), "INT");
    EXPECT_EQ(stage.settings.text("CDCT"), "COE");
    EXPECT_NE(stage.ui.boxes.back().text.find("2 new measurement"), std::string::npos);
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "bitmask"), "1111000000000000");
        press(dialog, "ok");
    });
    EXPECT_FALSE(stage.installed.generateDataWords(stage.window));
    EXPECT_NE(stage.ui.boxes.back().text.find("0 new measurement"), std::string::npos);
}

TEST(GenerateWordsForm, TheDefaultsOfParityHaveTextsOfTheirOwn) {
    StepsStage stage;
    stage.ui.byId[226] = Button::Yes;
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(entries(dialog, "measurementParity"),
                  (QStringList{QStringLiteral("Even"), QStringLiteral("Odd"),
                               QStringLiteral("None"), QStringLiteral("Default")}));
        EXPECT_EQ(
            entries(dialog, "measurementTransferOrder"),
            (QStringList{QStringLiteral("MSB"), QStringLiteral("LSB"), QStringLiteral("Default")}));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.installed.generateDataWords(stage.window));
}

TEST(GenerateWordsForm, NoAndCancelMakeNothing) {
    StepsStage stage;
    StreamUndo before(stage.format);
    EXPECT_FALSE(stage.installed.generateDataWords(stage.window));  // No to question 226
    stage.ui.byId[226] = Button::Yes;
    stage.door.next([](QDialog& dialog) {
        choose(dialog, "measurementParity", QStringLiteral("Odd"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.installed.generateDataWords(stage.window));
    EXPECT_FALSE(before.commit());
    EXPECT_EQ(stage.settings.text("DMN1"), "");
}

TEST(GenerateWordsForm, CancelAmongTheConversionsTakesTheMeasurementsBack) {
    WordStage stage;
    stage.start(4, 1);
    stage.format.implicitSubframes = false;
    ConversionStore conversions(stage.context);
    stage.steps.generate.conversions = &conversions;
    stage.steps.generate.createConversion = [&](UserInterface* parent, std::string_view name,
                                                const DataWordDefaults&) {
        EXPECT_TRUE(conversions.createDefaultDefinition(parent, std::string(name), false));
    };
    PcmFormSteps installed;
    installWordSteps(installed, stage.form, stage.format, stage.steps);
    QWidget window;
    stage.ui.byId[226] = Button::Yes;
    stage.ui.cancelAtPoll = 5;  // 3 words, and then the second conversion
    stage.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_FALSE(installed.generateDataWords(window));
    EXPECT_FALSE(stage.format.hasAnyMeasurement());
    EXPECT_FALSE(conversions.locateDefinition("FWP0001_FN001").found);
    EXPECT_FALSE(stage.ui.hasBox(227));
}

TEST(GenerateWordsForm, AMaskOfTheSettingsThatIsInvalidBecomesAFullWord) {
    StepsStage stage;
    stage.settings.write("DMask", "12");
    stage.ui.byId[226] = Button::Yes;
    stage.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_TRUE(stage.installed.generateDataWords(stage.window));
    EXPECT_TRUE(stage.ui.hasBox(232));
    EXPECT_EQ(stage.settings.text("DMask"), "FW");
}

// --- the words ---------------------------------------------------------------------------------

// The question named the hidden subframe, which is of no file and of no window.
TEST(DeleteWordsForm, AWordOfSingleFramesNamesItsMeasurementsAndNoKeepsThem) {
    StepsStage stage(2011);
    stage.placeFragments("ONCE", {{8, 0, 8, 3, 0, 3, "1", 'D', 1}});
    stage.placeFragments("OTHER", {{8, 1, 9, 5, 0, 5, "1", 'D', 1}});
    ASSERT_TRUE(stage.format.subframeOfWord(8)->hidden);
    StreamUndo before(stage.format);
    stage.ui.integers = {8, 8};
    stage.ui.queued = {Button::No};
    EXPECT_FALSE(stage.installed.deleteFwps(stage.window, {}));
    EXPECT_FALSE(before.commit());
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    const auto& text = stage.ui.boxes[0].text;
    EXPECT_NE(text.find("Measurement 'ONCE'\nMeasurement 'OTHER'\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("SF-"), std::string::npos) << text;
    stage.ui.integers = {8, 8};
    stage.ui.queued = {Button::Yes};
    EXPECT_TRUE(stage.installed.deleteFwps(stage.window, {}));
    EXPECT_FALSE(stage.format.hasAnyMeasurement());
    EXPECT_EQ(stage.format.wordsPerMinorFrame, 31);
}

TEST(DeleteCounterForm, AHiddenSubframeThatKeepsACounterIsToldByItsWord) {
    StepsStage stage(2011);
    stage.placeFragments("ONCE", {{8, 0, 8, 3, 0, 3, "1", 'D', 1}});
    EXPECT_FALSE(deleteIdCounter(stage.format, stage.parent, 30));
    EXPECT_EQ(stage.lastBox(), 360);
    EXPECT_EQ(stage.ui.boxes.back().text,
              "You cannot delete this ID Counter. Frame Word Position 8 references this ID "
              "Counter.");
}

// --- the comment -----------------------------------------------------------------------------

TEST(SectionCommentForm, TheCommentIsEditedWithItsLines) {
    StepsStage stage;
    stage.write(kMeasurementComment, "one\x14\x15two");
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(toBytes(dialog.windowTitle()), "Edit Measurement Section Comment Field");
        auto* text = find<QPlainTextEdit>(dialog, "comment");
        EXPECT_EQ(toBytes(text->toPlainText()), "one\ntwo");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("three"));
        QTest::keyClick(text, Qt::Key_Return);
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.installed.editSectionComment(stage.window));
    EXPECT_EQ(stage.TestContext::read(kMeasurementComment), "three\x14\x15");
    EXPECT_TRUE(stage.format.changed);
}

TEST(SectionCommentForm, CancelAndARefusedTextKeepTheOldComment) {
    StepsStage stage;
    stage.write(kMeasurementComment, "old");
    stage.door.next([&](QDialog& dialog) {
        auto* text = find<QPlainTextEdit>(dialog, "comment");
        QTest::keyClicks(text, QStringLiteral(";"));
        press(dialog, "ok");
        EXPECT_TRUE(stage.ui.hasBox(402));
        EXPECT_TRUE(dialog.isVisible());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.installed.editSectionComment(stage.window));
    EXPECT_EQ(stage.TestContext::read(kMeasurementComment), "old");
    stage.door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_FALSE(stage.installed.editSectionComment(stage.window));
    EXPECT_FALSE(stage.format.changed);
}

TEST(SectionCommentForm, ACommentThatCanNotBeShownOrKeptIsTold) {
    StepsStage stage;
    std::filesystem::create_directory(stage.store.pathOf(kMeasurementComment));
    EXPECT_FALSE(stage.installed.editSectionComment(stage.window));  // no dialog
    EXPECT_EQ(stage.lastBox(), 325);
    std::filesystem::remove(stage.store.pathOf(kMeasurementComment));
    stage.write(kMeasurementComment, std::string(kMostComment + 1, 'x'));
    EXPECT_FALSE(stage.installed.editSectionComment(stage.window));
    EXPECT_EQ(stage.lastBox(), 324);
    stage.write(kMeasurementComment, "old");
    stage.door.next([&](QDialog& dialog) {
        QTest::keyClicks(find<QPlainTextEdit>(dialog, "comment"), QStringLiteral("new "));
        std::filesystem::remove(stage.store.pathOf(kMeasurementComment));
        std::filesystem::create_directory(stage.store.pathOf(kMeasurementComment));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 333);
        EXPECT_TRUE(dialog.isVisible());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.installed.editSectionComment(stage.window));
    EXPECT_FALSE(stage.format.changed);
}

// --- the filter list -------------------------------------------------------------------------

TEST(FilterListForm, In2009MeasurementsAreSelected) {
    StepsStage stage;
    stage.format.dGroup = 1;
    EXPECT_FALSE(stage.installed.editFilterList(stage.window));
    EXPECT_EQ(stage.lastBox(), 340);
    stage.place(3, 1, "A");
    stage.place(4, 1, "B");
    stage.format.changed = false;
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(toBytes(dialog.windowTitle()), "Edit Measurement Filter List");
        EXPECT_EQ(listText(dialog, "list"), "A | No\nB | No");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "setYes");
        EXPECT_EQ(listText(dialog, "list"), "A | Yes\nB | No");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.installed.editFilterList(stage.window));
    EXPECT_EQ(stage.TestContext::read("[kavu]DSMF0000.D01"),
              "D-1\\SMF\\N-1:1;\r\nD-1\\SMF\\SMN-1-1:A;\r\n");
    EXPECT_TRUE(stage.format.changed);
}

TEST(FilterListForm, From2011OnEachMeasurementHasItsSetting) {
    StepsStage stage(2011);
    stage.format.dGroup = 1;
    stage.placeInEveryFrame(3, "A");
    stage.placeInEveryFrame(4, "B");
    stage.format.changed = false;
    stage.door.next([&](QDialog& dialog) {
        press(dialog, "setOverwrite");
        press(dialog, "setFilter");
        EXPECT_EQ(listText(dialog, "list"), "A | Overwrite\nB | Filter");
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.installed.editFilterList(stage.window));
    EXPECT_FALSE(stage.has("[kavu]DSMF0000.D01"));
    EXPECT_FALSE(stage.format.changed);
    stage.door.next([](QDialog& dialog) {
        press(dialog, "setOverwrite");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.installed.editFilterList(stage.window));
    EXPECT_EQ(stage.TestContext::read("[kavu]DSMF0000.D01"),
              "D-1\\SMF\\N:2;\r\nD-1\\SMF\\SMN-1:A;\r\nD-1\\SMF\\MFOT-1:O;\r\n"
              "D-1\\SMF\\SMN-2:B;\r\nD-1\\SMF\\MFOT-2:N;\r\n");
}

TEST(FilterListForm, OlderEditionsHaveNone) {
    StepsStage stage(2007);
    EXPECT_FALSE(stage.installed.editFilterList);
}

// --- words -----------------------------------------------------------------------------------

TEST(WordPrompts, InsertingTwoWordsAfterZeroMovesAllMeasurementsUpByTwo) {
    StepsStage stage;
    stage.place(3, 1, "A");
    stage.ui.integers = {0, 2};
    EXPECT_TRUE(stage.installed.insertFwps(stage.window, {}));
    EXPECT_EQ(stage.places("A"), "5/1 ");
    EXPECT_EQ(stage.format.wordType(32), WordType::IdCounter);
    stage.ui.integers = {99};
    EXPECT_FALSE(stage.installed.insertFwps(stage.window, {}));
    EXPECT_EQ(stage.lastBox(), 160);
    stage.ui.integers = {1, 0};
    EXPECT_FALSE(stage.installed.insertFwps(stage.window, {}));
    EXPECT_EQ(stage.lastBox(), 161);
}

TEST(WordPrompts, DeletingWithANoInTheMiddleKeepsThatWordAndGoesOn) {
    StepsStage stage;
    stage.place(8, 1, "A");
    stage.place(9, 1, "B");
    stage.place(10, 1, "C");
    stage.ui.integers = {8, 10};
    stage.ui.queued = {Button::Yes, Button::No, Button::Yes};
    EXPECT_TRUE(stage.installed.deleteFwps(stage.window, {}));
    EXPECT_EQ(stage.places("A") + stage.places("B") + stage.places("C"), "8/1 ");
    EXPECT_EQ(stage.format.wordsPerMinorFrame, 30);
    stage.ui.integers = {0};
    EXPECT_FALSE(stage.installed.deleteFwps(stage.window, {}));
    EXPECT_EQ(stage.lastBox(), 160);
}

TEST(WordPrompts, MovingThreeToFiveAfterTenPutsOldSixAtThreeAndOldThreeAtEight) {
    StepsStage stage;
    stage.place(3, 1, "THREE");
    stage.place(7, 1, "SEVEN");
    stage.ui.integers = {3, 5, 10};
    EXPECT_TRUE(stage.installed.moveFwps(stage.window, {}));
    EXPECT_EQ(stage.places("THREE"), "8/1 ");
    EXPECT_EQ(stage.places("SEVEN"), "4/1 ");
    EXPECT_EQ(stage.format.wordType(3), WordType::Subframe);  // old word 6
    stage.ui.integers = {3, 5, 4};
    EXPECT_FALSE(stage.installed.moveFwps(stage.window, {}));
    EXPECT_EQ(stage.lastBox(), 228);
}

TEST(WordPrompts, ABusStreamKeepsItsLeastNumberOfWords) {
    StepsStage stage;
    stage.start(129, 1, 24);
    stage.format.isBusStream = true;
    stage.ui.integers = {1, 3};
    EXPECT_TRUE(stage.installed.deleteFwps(stage.window, {}));  // one of them went
    EXPECT_EQ(stage.lastBox(), 222);
    EXPECT_EQ(stage.format.wordsPerMinorFrame, 128);
    stage.format.changed = false;
    stage.ui.integers = {1, 1};
    EXPECT_FALSE(stage.installed.deleteFwps(stage.window, {}));
    EXPECT_EQ(stage.ui.countBoxes(222), 2);
    EXPECT_FALSE(stage.format.changed);
    // No more than it may have, either.
    stage.start(256, 1, 24);
    stage.format.isBusStream = true;
    stage.ui.integers = {0, 1};
    EXPECT_FALSE(stage.installed.insertFwps(stage.window, {}));
    EXPECT_EQ(stage.ui.countBoxes(222), 3);
    EXPECT_EQ(stage.format.wordsPerMinorFrame, 256);
}

// --- the option of new measurements ----------------------------------------------------------

TEST(DefinitionOptionsForm, AChangedChoiceIsKeptAndDecidesAnew) {
    StepsStage stage;
    stage.start(8, 1);
    stage.settings.writeInteger("WdFrCreation", 1);
    const auto run = [&](const char* press1, const char* press2) {
        stage.door.next([=](QDialog& dialog) {
            EXPECT_EQ(toBytes(dialog.windowTitle()), "Measurement Definition Options");
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            find<QRadioButton>(dialog, press1)->click();
            press(dialog, press2);
        });
        return stage.installed.chooseDefinitionMode(stage.window);
    };
    stage.format.implicitSubframes = true;
    EXPECT_FALSE(run("olderTypes", "cancel"));
    EXPECT_FALSE(run("wordFrame", "ok"));
    EXPECT_EQ(stage.settings.integer("WdFrCreation", -1), 1);
    EXPECT_TRUE(run("olderTypes", "ok"));
    EXPECT_EQ(stage.settings.integer("WdFrCreation", -1), 0);
    EXPECT_FALSE(stage.format.implicitSubframes);
    EXPECT_TRUE(run("wordFrame", "ok"));
    EXPECT_TRUE(stage.format.implicitSubframes);
}

TEST(DefinitionOptionsForm, AFormatWithoutMeasurementsShowsTheDialogOnce) {
    WordStage stage;
    stage.start(8, 1);
    const auto choose = [&](UserInterface&, bool wordFrame) {
        EXPECT_TRUE(wordFrame);
        return chooseDefinitionMode(stage.form, nullptr, wordFrame);
    };
    stage.door.next([](QDialog& dialog) {
        find<QRadioButton>(dialog, "olderTypes")->click();
        press(dialog, "ok");
    });
    wordFrameMode(stage.format, stage.parent, choose);
    EXPECT_EQ(stage.settings.integer("WdFrCreation", -1), 0);
    EXPECT_FALSE(stage.format.implicitSubframes);
    wordFrameMode(stage.format, stage.parent, choose);  // no dialog any more
    EXPECT_EQ(stage.door.titles.size(), 1u);
}

TEST(DefinitionOptionsForm, OtherEditionsHaveNoChoice) {
    EXPECT_FALSE(StepsStage(2001).installed.chooseDefinitionMode);
    EXPECT_FALSE(StepsStage(2011).installed.chooseDefinitionMode);
    EXPECT_TRUE(StepsStage(2004).installed.chooseDefinitionMode);
}

// --- an application's steps ------------------------------------------------------------------

TEST(ApplicationWordSteps, ConversionsFollowTheEditsAndTheOptionsAreHeld) {
    test::TestApplication app;
    test::TestDoor door;
    auto form = formContext(app.ui, door, app.application.context());
    const auto steps = makeWordSteps(form, app.application);
    auto& conversions = app.application.conversions();
    const Transaction sheet(app.application.context(), OperationId::EditStream, OnCrash::Keep);
    steps.generate.createConversion(&app.ui, "A", {});
    EXPECT_TRUE(conversions.locateDefinition("A").found);
    steps.save.renameConversion(&app.ui, "A", "B");
    EXPECT_FALSE(conversions.locateDefinition("A").found);
    EXPECT_TRUE(conversions.locateDefinition("B").found);
    door.next([](QDialog& dialog) {
        EXPECT_NE(toBytes(dialog.windowTitle()).find("B"), std::string::npos);
        press(dialog, "cancel");
    });
    QWidget window;
    EXPECT_FALSE(steps.editConversion(window, "B", 16));
    steps.edit.deleteConversion(&app.ui, "B");
    EXPECT_FALSE(conversions.locateDefinition("B").found);
    EXPECT_FALSE(steps.hasDatabase());
    steps.keepAutoAdd({true, false});
    EXPECT_TRUE(steps.autoAdd().root);
    EXPECT_FALSE(steps.autoAdd().children);
    EXPECT_EQ(app.application.context().settings.get(setting::kDatabaseAddsRoot), 1);
}

// --- pictures --------------------------------------------------------------------------------

class WordPictures : public testing::TestWithParam<std::pair<look::Scheme, double>> {};

/// With KAVU_PICTURES set to a folder the pictures stay there, to be looked at.
TEST_P(WordPictures, HaveNamesForEveryControlAndRoomForEveryText) {
    const auto [scheme, scale] = GetParam();
    const auto before = QApplication::font();
    auto font = before;
    font.setPointSizeF(font.pointSizeF() * scale);
    QApplication::setFont(font);
    look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), scheme);
    WordStage stage;
    ScreenshotStage shots{stage.form, &stage.context};
    ScreenshotList list;
    addWordScreenshots(list);
    ASSERT_EQ(list.entries().size(), 11u);
    for (const auto& entry : list.entries()) {
        const auto window = entry.make(shots);
        ASSERT_NE(window, nullptr) << entry.name;
        EXPECT_EQ(test::checkWindow(*window), std::vector<std::string>{}) << entry.name;
        const auto picture = window->grab();
        EXPECT_FALSE(picture.isNull());
        if (const auto folder = qEnvironmentVariable("KAVU_PICTURES"); !folder.isEmpty()) {
            EXPECT_TRUE(picture.save(QStringLiteral("%1/%2-%3-%4.png")
                                         .arg(folder, QString::fromStdString(entry.name))
                                         .arg(int(scheme))
                                         .arg(scale)));
        }
    }
    QApplication::setFont(before);
}

INSTANTIATE_TEST_SUITE_P(Looks, WordPictures,
                         testing::Values(std::pair{look::Scheme::Light, 1.0},
                                         std::pair{look::Scheme::Dark, 1.0},
                                         std::pair{look::Scheme::Light, 2.0}));

}  // namespace
}  // namespace kavu
