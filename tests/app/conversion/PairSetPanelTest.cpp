#include "app/conversion/PairSetPanel.h"
#include "app/conversion/PairSetStage.h"
#include "app/conversion/PlotView.h"
#include "app/support/WidgetChecks.h"
#include "conversion/EuVocabulary.h"

#include <algorithm>
#include <utility>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::find;
using test::PairSetStage;
using test::press;
using test::type;

void choose(QWidget& panel, const char* name, int index) {
    auto* box = find<QComboBox>(panel, name);
    ASSERT_TRUE(box->isEnabled()) << name;
    box->setCurrentIndex(index);
    emit box->activated(index);
}

void tick(QWidget& panel, const char* name) {
    auto* check = find<QCheckBox>(panel, name);
    ASSERT_TRUE(check->isEnabled()) << name;
    check->click();
}

TEST(PairSetPanelForm, ShowsPairsFitAndNumbers) {
    PairSetStage s;
    s.f.settings.write("FloatPrecision", "3");
    auto& panel = s.open();
    EXPECT_EQ(test::checkWindow(*s.window), std::vector<std::string>{});
    EXPECT_EQ(panel.objectName(), QStringLiteral("PairSetsPlot"));
    ASSERT_EQ(s.rows().size(), 5U);
    EXPECT_EQ(s.rows()[1], (ListRow{"2", "10", "21", "21.000000", "0.000000"}));
    EXPECT_EQ(s.text<QLabel>("bestFit"), "Best Fit: 1");
    EXPECT_EQ(find<QListWidget>(panel, "coefficients")->item(1)->text(),
              QStringLiteral("c(1) = 2.000E+00"));
    EXPECT_EQ(s.text<QLineEdit>("correlation"), "1.000");
    EXPECT_EQ(s.text<QLineEdit>("rms"), "0.000");
    EXPECT_EQ(s.value("CO1"), "Y");
    EXPECT_EQ(s.value("CO"), "1.000E+00");
    EXPECT_EQ(s.f.value("A", "CO"), "77") << "the record itself waits for OK";
    EXPECT_EQ(s.changes, 0) << "opening is no edit";
    EXPECT_FALSE(find<QLabel>(panel, "trustNote")->isVisible());
}

TEST(PairSetPanelForm, WithoutTheCurveThereAreThreeColumnsAndNoFit) {
    PairSetStage s;
    s.set({{"PS1", "N"}});
    auto& panel = s.open();
    auto* view = s.list().view();
    EXPECT_TRUE(view->isColumnHidden(kPairComputed));
    EXPECT_TRUE(view->isColumnHidden(kPairError));
    EXPECT_EQ(s.value("CO"), "77");
    EXPECT_FALSE(find<QComboBox>(panel, "order")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(panel, "print")->isEnabled());
    tick(panel, "definesCurve");
    EXPECT_EQ(s.value("PS1"), "Y");
    EXPECT_EQ(s.value("CO"), "1.00000000E+00");
    EXPECT_FALSE(view->isColumnHidden(kPairComputed));
    EXPECT_TRUE(find<QComboBox>(panel, "order")->isEnabled());
    EXPECT_EQ(s.changes, 1);
    tick(panel, "definesCurve");
    EXPECT_EQ(s.value("PS1"), "N");
    EXPECT_EQ(s.value("CO-1"), "2.00000000E+00") << "the coefficients stay as they were";
}

// --- The list ------------------------------------------------------------------------------

TEST(PairSetList, AddGoesOnUntilItIsCancelled) {
    PairSetStage s;
    auto& panel = s.open();
    s.enterPair("50", "101");
    s.enterPair("60", "121");
    s.cancelNext();
    press(panel, "add");
    ASSERT_EQ(s.rows().size(), 7U) << "the cancelled row is gone";
    EXPECT_EQ(s.rows()[6], (ListRow{"7", "60", "121", "121.000000", "0.000000"}));
    EXPECT_EQ(s.value("PS\\N"), "7");
    EXPECT_EQ(s.value("PS3-6"), "50");
    EXPECT_EQ(s.value("PS4-7"), "121");
    EXPECT_EQ(s.changes, 2);
}

TEST(PairSetList, TheNewRowHasItsNumberWhileItsValuesAreAskedFor) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([&](QDialog& dialog) {
        EXPECT_EQ(s.rows().back(), (ListRow{"6", "", "", "", ""}));
        press(dialog, "cancel");
    });
    press(panel, "add");
    EXPECT_EQ(s.rows().size(), 5U);
}

TEST(PairSetList, At99RowsAddIsDisabled) {
    PairSetStage s;
    std::vector<std::pair<std::string, std::string>> pairs;
    for (int i = 0; i < 98; ++i) {
        pairs.emplace_back(std::to_string(i), std::to_string(i));
    }
    s.setPairs(pairs);
    auto& panel = s.open();
    s.enterPair("98", "98");
    press(panel, "add");  // the last one: nothing is asked for any more
    EXPECT_EQ(s.rows().size(), 99U);
    EXPECT_FALSE(find<QPushButton>(panel, "add")->isEnabled());
}

TEST(PairSetList, EditAsksForBothValuesAndRefits) {
    PairSetStage s;
    auto& panel = s.open();
    s.list().selectRow(2);
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(find<QLineEdit>(dialog, "telemetryValue")->text(), QStringLiteral("20"));
        type(dialog, "euValue", QStringLiteral("51"));
        press(dialog, "ok");
    });
    press(panel, "edit");
    EXPECT_EQ(s.value("PS4-3"), "51");
    EXPECT_EQ(s.rows()[2][kPairError], "-8.000000*") << "more than half a percent away";
    EXPECT_EQ(s.list().currentRow(), 2) << "the selected row is kept";
}

TEST(PairSetList, WhatIsNoNumberIsToldAndChangesNothing) {
    PairSetStage s;
    auto& panel = s.open();
    for (const char* const bad :
         {"abc", "nan", "inf", "-infinity", "1e999", "0x10", "1,5", "1;2"}) {
        const auto boxes = s.f.ui.boxes.size();
        s.door.next([&](QDialog& dialog) {
            type(dialog, "telemetryValue", QLatin1String(bad));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible()) << bad;
            press(dialog, "cancel");
        });
        press(panel, "edit");
        EXPECT_GT(s.f.ui.boxes.size(), boxes) << bad;
    }
    s.door.next([&](QDialog& dialog) {
        find<QLineEdit>(dialog, "euValue")->clear();
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    });
    press(panel, "edit");
    EXPECT_EQ(s.changes, 0);
    EXPECT_EQ(s.value("PS3-1"), "0");
    EXPECT_EQ(s.value("PS\\N"), "5");
}

TEST(PairSetList, ALongValueCanNotBeTyped) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([&](QDialog& dialog) {
        type(dialog, "telemetryValue", QStringLiteral("1234567890123456789"));
        EXPECT_EQ(find<QLineEdit>(dialog, "telemetryValue")->text(),
                  QStringLiteral("1234567890123456"));
        press(dialog, "cancel");
    });
    press(panel, "edit");
}

TEST(PairSetList, HugeValuesAreAFitThatFailsAndNoCoefficients) {
    PairSetStage s;
    auto& panel = s.open();
    const auto before = s.value("CO-1");
    s.enterPair("1e308", "1e308");
    press(panel, "edit");
    EXPECT_EQ(s.value("PS3-1"), "1e308");
    EXPECT_EQ(s.value("CO-1"), before) << "the stored coefficients stay";
    EXPECT_EQ(s.rows()[0][kPairComputed], "");
    EXPECT_EQ(s.text<QLineEdit>("rms"), "");
    EXPECT_EQ(find<QListWidget>(panel, "coefficients")->count(), 0);
    EXPECT_FALSE(panel.grab().isNull());
    EXPECT_TRUE(s.f.ui.boxes.empty()) << "a fit that fails is no message box";
}

TEST(PairSetList, DeleteAsksAndRenumbers) {
    PairSetStage s;
    auto& panel = s.open();
    s.list().selectRow(1);
    s.f.ui.otherwise = Button::No;
    press(panel, "delete");
    EXPECT_EQ(s.rows().size(), 5U);
    ASSERT_EQ(s.f.ui.boxes.size(), 1U);
    EXPECT_EQ(s.f.ui.boxes[0].title, "Delete This Entry?");
    EXPECT_NE(s.f.ui.boxes[0].text.find("Are You Sure?"), std::string::npos);
    s.f.ui.otherwise = Button::Yes;
    press(panel, "delete");
    ASSERT_EQ(s.rows().size(), 4U);
    EXPECT_EQ(s.rows()[1][kPairNumber], "2");
    EXPECT_EQ(s.rows()[1][kPairTelemetry], "20");
    EXPECT_EQ(s.value("PS\\N"), "4");
    EXPECT_EQ(s.value("PS3-5"), "");
}

TEST(PairSetList, SortedPairsStaySortedAndCanNotBeUnsorted) {
    PairSetStage s;
    s.setPairs({{"30", "3"}, {"10", "1"}, {"20", "2"}});
    auto& panel = s.open();
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "30");
    s.list().selectRow(0);
    tick(panel, "sorted");
    EXPECT_EQ(s.rows()[0], (ListRow{"1", "10", "1", "1.000000", "0.000000"}));
    EXPECT_EQ(s.list().currentRow(), 2) << "the selected pair is followed";
    EXPECT_EQ(s.value("PS3-1"), "10");
    EXPECT_EQ(s.f.settings.integer("PRSSort", 0), 1);
    s.enterPair("5", "0.5");
    s.cancelNext();
    press(panel, "add");
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "5");
    tick(panel, "sorted");
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "5");
    EXPECT_EQ(s.f.settings.integer("PRSSort", 1), 0);
}

// --- The choices ---------------------------------------------------------------------------

TEST(PairSetChoices, TheOrderIsStoredAndFitted) {
    PairSetStage s;
    s.setPairs({{"0", "0"}, {"1", "1"}, {"2", "4"}, {"3", "9"}});
    auto& panel = s.open();
    choose(panel, "order", 1);
    EXPECT_EQ(s.value("PS2"), "2");
    EXPECT_EQ(s.value("CO\\N"), "2");
    EXPECT_EQ(find<QListWidget>(panel, "coefficients")->count(), 3);
    EXPECT_EQ(s.changes, 1);
    choose(panel, "order", 3);  // order equal to the number of pairs
    EXPECT_EQ(s.value("PS2"), "4");
    EXPECT_EQ(s.value("CO\\N"), "2") << "the fit failed";
    EXPECT_FALSE(find<QPushButton>(panel, "print")->isEnabled());
    EXPECT_FALSE(find<QCheckBox>(panel, "enableSeries")->isEnabled());
}

TEST(PairSetChoices, ListsHaveTheirEntries) {
    PairSetStage s;
    auto& panel = s.open();
    auto* order = find<QComboBox>(panel, "order");
    ASSERT_EQ(order->count(), 9);
    EXPECT_EQ(order->itemText(8), QStringLiteral("9"));
    auto* most = find<QComboBox>(panel, "maxOrder");
    ASSERT_EQ(most->count(), 10);
    EXPECT_EQ(most->itemText(0), QStringLiteral("1st"));
    EXPECT_EQ(most->itemText(1), QStringLiteral("2nd"));
    EXPECT_EQ(most->itemText(2), QStringLiteral("3rd"));
    EXPECT_EQ(most->itemText(9), QStringLiteral("10th"));
    EXPECT_EQ(most->currentIndex(), 4) << "5th";
}

TEST(PairSetChoices, TheBestFitSetsTheOrderAndDisablesItsList) {
    PairSetStage s;
    s.setPairs({{"0", "0"}, {"1", "1"}, {"2", "4"}, {"3", "9"}, {"4", "16"}, {"5", "25"}});
    auto& panel = s.open();
    tick(panel, "useBestFit");
    EXPECT_EQ(s.f.settings.integer("UseLSBFSolution", 0), 1);
    EXPECT_EQ(s.text<QLabel>("bestFit"), "Best Fit: 2");
    EXPECT_EQ(find<QComboBox>(panel, "order")->currentIndex(), 1);
    EXPECT_FALSE(find<QComboBox>(panel, "order")->isEnabled());
    EXPECT_EQ(s.value("PS2"), "2");
    EXPECT_EQ(s.value("CO\\N"), "2");
    EXPECT_EQ(s.changes, 1);
    choose(panel, "maxOrder", 0);
    EXPECT_EQ(s.f.settings.integer("LSBFMaxOrder", 5), 1);
    EXPECT_EQ(s.text<QLabel>("bestFit"), "Best Fit: 1");
    EXPECT_EQ(s.value("CO\\N"), "1");
    tick(panel, "useBestFit");
    EXPECT_TRUE(find<QComboBox>(panel, "order")->isEnabled());
}

TEST(PairSetChoices, TheWordSizeMustBeAtLeast1) {
    PairSetStage s;
    auto& panel = s.open();
    const auto enter = [&](const char* text) {
        type(panel, "defaultBits", QLatin1String(text));
        QTest::keyClick(find<QLineEdit>(panel, "defaultBits"), Qt::Key_Return);
    };
    enter("0");
    EXPECT_EQ(s.f.ui.countBoxes(405), 1);
    EXPECT_EQ(s.text<QLineEdit>("defaultBits"), "16");
    enter("-3");
    EXPECT_EQ(s.f.ui.countBoxes(405), 2);
    enter("abc");
    enter("99999999999999999999");
    enter("65");
    EXPECT_EQ(s.f.ui.boxes.size(), 5U);
    EXPECT_EQ(s.f.settings.integer("CurveDefBits", 16), 16);
    enter("12");
    EXPECT_EQ(s.f.settings.integer("CurveDefBits", 16), 12);
    EXPECT_EQ(s.text<QLineEdit>("defaultBits"), "12");
    EXPECT_EQ(s.f.ui.boxes.size(), 5U);
    tick(panel, "allCounts");
    EXPECT_EQ(s.f.settings.integer("CurveAllPairs", 0), 1);
    EXPECT_EQ(s.changes, 0) << "how it is drawn is nothing of the record";
}

// --- The series ----------------------------------------------------------------------------

TEST(PairSetSeries, EnablingFillsEmptyBoxesWith0AndShowsTheirValues) {
    PairSetStage s;
    auto& panel = s.open();
    EXPECT_FALSE(find<QCheckBox>(panel, "enableSeries")->isChecked());
    EXPECT_FALSE(find<QPushButton>(panel, "editZero")->isEnabled());
    tick(panel, "enableSeries");
    EXPECT_EQ(s.f.settings.integer("DoRCal", 0), 1);
    EXPECT_EQ(s.text<QLineEdit>("zero"), "0");
    EXPECT_EQ(s.text<QLineEdit>("cal"), "0");
    EXPECT_EQ(s.text<QLineEdit>("zeroValue"), "1.000000");
    EXPECT_EQ(s.f.conversions.commentRecordGet("A", "ZeroCal"), "0");
    s.f.ui.texts = {std::string("40")};
    press(panel, "editCal");
    EXPECT_EQ(s.f.ui.textPrompts.back().prompt, eutext::kEnterCal);
    EXPECT_EQ(s.f.ui.textPrompts.back().limit, 20U);
    EXPECT_EQ(s.text<QLineEdit>("calValue"), "81.000000");
    EXPECT_EQ(s.f.conversions.commentRecordGet("A", "RCal"), "40");
    EXPECT_EQ(s.changes, 2);
    tick(panel, "enableSeries");
    EXPECT_EQ(s.f.settings.integer("DoRCal", 1), 0);
    EXPECT_EQ(s.text<QLineEdit>("calValue"), "") << "both outputs are cleared";
}

TEST(PairSetSeries, TextIsRefused) {
    PairSetStage s;
    auto& panel = s.open();
    tick(panel, "enableSeries");
    const int before = s.changes;
    for (const char* const bad : {"abc", "nan", "1e400", ""}) {
        s.f.ui.texts = {std::string(bad)};
        press(panel, "editZero");
        EXPECT_EQ(s.text<QLineEdit>("zero"), "0") << bad;
    }
    EXPECT_EQ(s.f.ui.boxes.size(), 4U);
    EXPECT_EQ(s.changes, before);
}

TEST(PairSetSeries, WithTooFewPairsTheCheckIsForcedOff) {
    PairSetStage s;
    auto& panel = s.open();
    tick(panel, "enableSeries");
    ASSERT_TRUE(find<QCheckBox>(panel, "enableSeries")->isChecked());
    choose(panel, "order", 4);
    EXPECT_FALSE(find<QCheckBox>(panel, "enableSeries")->isChecked());
    EXPECT_FALSE(find<QCheckBox>(panel, "enableSeries")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(panel, "editZero")->isEnabled());
    choose(panel, "order", 0);
    EXPECT_FALSE(find<QCheckBox>(panel, "enableSeries")->isChecked()) << "off stays off";
    EXPECT_TRUE(find<QCheckBox>(panel, "enableSeries")->isEnabled());
}

// --- What comes from elsewhere ---------------------------------------------------------------

TEST(PairSetPanelForm, RefitsWithLimitsThatThePagesHaveStored) {
    PairSetStage s;
    s.setPairs({{"0", "0"}, {"10", "10.2"}, {"20", "20"}});
    auto& panel = s.open();
    EXPECT_NE(s.rows()[1][kPairError].find('*'), std::string::npos);
    s.set({{"MOT1", "1000"}});
    panel.refit();
    EXPECT_EQ(s.rows()[1][kPairError].find('*'), std::string::npos)
        << "0.2 are little of a thousand";
    EXPECT_EQ(s.changes, 0);
}

TEST(PairSetPanelForm, LoadsValuesThatWereImportedFromAnotherRecord) {
    PairSetStage s;
    auto& panel = s.open();
    s.setPairs({{"1", "1"}, {"2", "2"}});
    s.set({{"PS2", "3"}});
    panel.load();
    EXPECT_EQ(s.rows().size(), 2U);
    EXPECT_EQ(find<QComboBox>(panel, "order")->currentIndex(), 2);
}

TEST(PairSetPanelForm, AReadOnlyPanelShowsAndChangesNothing) {
    PairSetStage s;
    auto& panel = s.open({.bits = 8, .plot = true, .readOnly = true});
    EXPECT_EQ(s.value("CO"), "77") << "no coefficient is written";
    EXPECT_EQ(s.rows()[4][kPairComputed], "81.000000");
    EXPECT_FALSE(find<QPushButton>(panel, "import")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(panel, "add")->isVisible());
    EXPECT_FALSE(find<QCheckBox>(panel, "definesCurve")->isEnabled());
    EXPECT_FALSE(find<QCheckBox>(panel, "useBestFit")->isEnabled());
    EXPECT_TRUE(panel.store());
}

TEST(PairSetPanelForm, LongStatisticsShowTheirLeadingDigits) {
    PairSetStage s;
    s.setPairs({{"0", "0"}, {"1", "30000000"}, {"2", "0"}, {"3", "30000000"}});
    s.f.settings.write("FloatPrecision", "30");
    auto& panel = s.open();
    for (const char* const name : {"correlation", "rms"}) {
        const auto* const field = find<QLineEdit>(panel, name);
        EXPECT_GT(field->text().size(), 30) << name;
        EXPECT_EQ(field->cursorPosition(), 0) << name;
        EXPECT_EQ(field->toolTip(), field->text()) << name;
    }
}

TEST(PairSetPanelForm, PairsAreCopiedAndSavedWithCorrectedValuesAndErrors) {
    PairSetStage s;
    auto& panel = s.open();
    press(panel, "copyPairs");
    const auto copied = toBytes(QGuiApplication::clipboard()->text());
    EXPECT_TRUE(
        copied.starts_with("Pair #\tTelemetry Value\tEU Value\tCorrected EU Value\tError\t"))
        << copied;
    EXPECT_NE(copied.find("\n2\t10\t21\t"), std::string::npos) << copied;
    s.f.ui.files = {FileChoice{s.f.folder / "pairs.csv", 1}, std::nullopt};
    press(panel, "savePairs");
    press(panel, "savePairs");
    EXPECT_EQ(s.f.ui.filePrompts.front().extension, ".csv");
    const auto saved = test::readFile(s.f.folder / "pairs.csv");
    EXPECT_TRUE(saved.starts_with("Pair #,Telemetry Value,EU Value,Corrected EU Value,Error,"));
    EXPECT_NE(saved.find("\n2,10,21,"), std::string::npos) << saved;
    EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 6);
    EXPECT_TRUE(s.f.ui.boxes.empty());
    EXPECT_EQ(s.changes, 0);
    tick(panel, "definesCurve");
    s.f.ui.files = {FileChoice{s.f.folder / "pairs.csv", 1}};
    press(panel, "savePairs");
    EXPECT_EQ(s.f.ui.boxes.size(), 1U) << "asked before the file is overwritten";
    EXPECT_EQ(test::readFile(s.f.folder / "pairs.csv"), saved);
}

TEST(PairSetPanelForm, CoefficientsThatThePairsDoNotGiveAreTold) {
    PairSetStage s;
    s.set({{"CO1", "Y"}});
    s.setPairs({});
    auto& panel = s.open();
    const auto* const note = find<QLabel>(panel, "trustNote");
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().contains(QStringLiteral("earlier fit"))) << toBytes(note->text());
    EXPECT_FALSE(find<QPushButton>(panel, "copyPairs")->isEnabled());
    EXPECT_FALSE(find<QPushButton>(panel, "savePairs")->isEnabled());
    EXPECT_EQ(s.value("CO"), "77");
}

TEST(PairSetPanelForm, InANarrowWindowThePlotIsBelowThePairs) {
    PairSetStage s;
    auto& panel = s.open();
    const auto* const plot = find<QWidget>(panel, "plotSide");
    const auto leftOf = [&](const QWidget& widget) { return widget.mapTo(&panel, QPoint(0, 0)); };
    s.window->resize(2400, 1200);
    QApplication::processEvents();
    EXPECT_GT(leftOf(*plot).x(), leftOf(s.list()).x());
    s.window->resize(panel.minimumSizeHint().width() + 60, 1200);
    QApplication::processEvents();
    EXPECT_EQ(leftOf(*plot).x(), leftOf(s.list()).x());
    EXPECT_GT(leftOf(*plot).y(), leftOf(s.list()).y());
}

TEST(PairSetPanelForm, GoesWithAFieldHalfEdited) {
    PairSetStage s;
    auto& panel = s.open();
    s.window->activateWindow();
    type(panel, "defaultBits", QStringLiteral("0"));
    // The sheet destroys it when another type is chosen; the field then loses the focus.
    delete std::exchange(s.panel, nullptr);
    EXPECT_TRUE(s.f.ui.boxes.empty());
    EXPECT_EQ(s.f.settings.integer("CurveDefBits", 16), 16);
}

TEST(PairSetPanelForm, AFileThatFailsIsReportedAndStoreTriesAgain) {
    PairSetStage s;
    auto& panel = s.open();
    const auto path = s.f.store.pathOf(working::kData1);
    const auto bytes = test::readFile(path);
    std::filesystem::remove(path);
    choose(panel, "order", 1);
    EXPECT_FALSE(panel.store());
    test::writeFile(path, bytes);
    EXPECT_TRUE(panel.store());
    EXPECT_EQ(s.value("PS2"), "2");
}

}  // namespace
}  // namespace kavu
