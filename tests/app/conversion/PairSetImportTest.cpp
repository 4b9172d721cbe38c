// Import, paste and files of pairs, as a user brings them in.
#include "app/conversion/PairSetImportDialog.h"
#include "app/conversion/PairSetStage.h"
#include "app/support/WidgetChecks.h"

#include <functional>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableView>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::find;
using test::PairSetStage;
using test::press;

void setBoxes(QDialog& dialog, const QString& x, const QString& y) {
    find<QPlainTextEdit>(dialog, "tmValues")->setPlainText(x);
    find<QPlainTextEdit>(dialog, "euValues")->setPlainText(y);
}

void copy(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

QString numbers(int count) {
    QString text;
    for (int i = 0; i < count; ++i) {
        text += QString::number(i) + u'\n';
    }
    return text;
}

TEST(PairSetImportForm, BeginsWithTheListAndReplacesIt) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import Pair Sets"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(find<QPlainTextEdit>(dialog, "tmValues")->toPlainText(),
                  QStringLiteral("0\n10\n20\n30\n40\n"));
        EXPECT_EQ(find<QPlainTextEdit>(dialog, "euValues")->toPlainText(),
                  QStringLiteral("1\n21\n41\n61\n81\n"));
        setBoxes(dialog, QStringLiteral(" 1 \n\n2\n3\n4"), QStringLiteral("2\n9\n4 \n6"));
        EXPECT_EQ(find<QLabel>(dialog, "count")->text(),
                  QStringLiteral("4 TM Values, 4 EU Values"));
        press(dialog, "ok");
    });
    press(panel, "import");
    // The blank line and its partner are left out, and the longer box is cut.
    ASSERT_EQ(s.rows().size(), 3U);
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "1");
    EXPECT_EQ(s.rows()[1][kPairEngineering], "4");
    EXPECT_EQ(s.rows()[2][kPairEngineering], "6");
    EXPECT_EQ(s.value("PS\\N"), "3");
    EXPECT_EQ(s.value("PS4-3"), "6");
    EXPECT_EQ(s.value("PS4-4"), "");
    EXPECT_EQ(s.changes, 1);
}

TEST(PairSetImportForm, TheFirstBadValueIsToldAndTheDialogStaysOpen) {
    struct Case {
        const char* x;
        const char* y;
        const char* text;
    };
    const Case cases[] = {
        {"1\nabc", "1\n2", "Error in row #2. X Value found is not a valid floating point number"},
        {"1\n2", "1\nnan", "Error in row #2. Y Value found is not a valid floating point number"},
        {"inf", "1", "Error in row #1. X Value found is not a valid floating point number"},
        {"1", "-infinity", "Error in row #1. Y Value found is not a valid floating point number"},
        {"1e999", "1", "Error in row #1. X Value found is not a valid floating point number"},
        {"1;2", "1", "Error in row #1. X Value found is not a valid floating point number"},
        {"1\n2", "1\n3.5 V", "Error in row #2. Y Value found is not a valid floating point number"},
        {"1\t2", "1", "Error in row #1. X Value found is not a valid floating point number"},
        {"32,768", "1",
         "Error in row #1. X Value found is not a valid floating point number: the comma of "
         "'32,768' can be a decimal comma or separate thousands"},
        {"0.12345678901234567", "1", "Error in row #1. X Value found is longer than 16 characters"},
    };
    PairSetStage s;
    auto& panel = s.open();
    for (const auto& c : cases) {
        s.f.ui.boxes.clear();
        s.door.next([&](QDialog& dialog) {
            setBoxes(dialog, QLatin1String(c.x), QLatin1String(c.y));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible()) << c.text;
            press(dialog, "cancel");
        });
        press(panel, "import");
        ASSERT_EQ(s.f.ui.boxes.size(), 1U) << c.text;
        EXPECT_EQ(s.f.ui.boxes[0].text, c.text);
    }
    EXPECT_EQ(s.rows().size(), 5U);
    EXPECT_EQ(s.value("PS\\N"), "5");
    EXPECT_EQ(s.changes, 0);
}

TEST(PairSetImportForm, TenThousandPairsAreRefusedAnd99AreTaken) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([](QDialog& dialog) {
        setBoxes(dialog, numbers(10000), numbers(10000));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        setBoxes(dialog, numbers(99), numbers(99));
        press(dialog, "ok");
    });
    press(panel, "import");
    ASSERT_EQ(s.f.ui.boxes.size(), 1U);
    EXPECT_EQ(s.f.ui.boxes[0].text, "There are 10000 pairs. A pair set cannot have more than 99.");
    EXPECT_EQ(s.rows().size(), 99U);
    EXPECT_EQ(s.changes, 1);
}

TEST(PairSetImportForm, HugeNumbersAreTakenAndTheFitTellsItFailed) {
    PairSetStage s;
    auto& panel = s.open();
    const auto before = s.value("CO-1");
    s.door.next([](QDialog& dialog) {
        setBoxes(dialog, QStringLiteral("1e308\n-1e308\n1"), QStringLiteral("1e308\n-1e308\n1"));
        press(dialog, "ok");
    });
    press(panel, "import");
    EXPECT_EQ(s.rows().size(), 3U);
    EXPECT_EQ(s.rows()[0][kPairComputed], "");
    EXPECT_EQ(s.value("CO-1"), before);
    EXPECT_FALSE(s.window->grab().isNull());
}

// --- Paste -----------------------------------------------------------------------------------

TEST(PairSetPasteForm, TwoColumnsOfASpreadsheetAreShownAndThenReplaceTheList) {
    PairSetStage s;
    s.open();
    copy(QStringLiteral("100\t1.5\n200\t2.5\n300\t3.5\n"));
    s.door.next([](QDialog& dialog) {
        EXPECT_EQ(find<QPlainTextEdit>(dialog, "tmValues")->toPlainText(),
                  QStringLiteral("100\n200\n300\n"));
        press(dialog, "ok");
    });
    QTest::keyClick(s.list().view(), Qt::Key_V, Qt::ControlModifier);
    QApplication::processEvents();
    ASSERT_EQ(s.rows().size(), 3U);
    EXPECT_EQ(s.rows()[2][kPairTelemetry], "300");
    EXPECT_EQ(s.rows()[2][kPairEngineering], "3.5");
    EXPECT_EQ(s.changes, 1);
}

TEST(PairSetPasteForm, WhatIsNoPairsIsToldAndChangesNothing) {
    PairSetStage s;
    auto& panel = s.open();
    QString many;
    for (int i = 0; i < 10000; ++i) {
        many += QStringLiteral("%1\t%1\n").arg(i);
    }
    struct Case {
        QString text;
        const char* told;
    };
    const Case cases[] = {
        {QString(), "The clipboard does not hold two columns of values."},
        {QStringLiteral("one column\nof\nwords"), "not a valid floating point number"},
        {QStringLiteral("1\n2\n3"), "The clipboard does not hold two columns of values."},
        {QStringLiteral("1\tnan\n2\t3"), "Error in row #1. Y Value found"},
        {QStringLiteral("1\t2\n1e999\t3"), "Error in row #2. X Value found"},
        {QStringLiteral("1\t2\n2\t3\t4"), "Error in row #2. There are more than two columns: '4'"},
        {QStringLiteral("1\t2\n2\t3 V"), "Error in row #2. Y Value found"},
        {many, "There are 10000 pairs. A pair set cannot have more than 99."},
    };
    for (const auto& c : cases) {
        s.f.ui.boxes.clear();
        copy(c.text);
        press(panel, "paste");
        ASSERT_EQ(s.f.ui.boxes.size(), 1U) << c.told;
        EXPECT_NE(s.f.ui.boxes[0].text.find(c.told), std::string::npos) << s.f.ui.boxes[0].text;
    }
    EXPECT_EQ(s.value("PS\\N"), "5");
    EXPECT_EQ(s.changes, 0);
}

void pasteInto(QPlainTextEdit& box, const QString& text) {
    copy(text);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
}

TEST(PairSetPasteForm, TwoTabColumnsThatArePastedIntoABoxFillBothIfTheUserWantsIt) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([&](QDialog& dialog) {
        auto* x = find<QPlainTextEdit>(dialog, "tmValues");
        auto* y = find<QPlainTextEdit>(dialog, "euValues");
        const auto before = std::pair(x->toPlainText(), y->toPlainText());
        const auto ask = [&](Button reply) {
            s.f.ui.boxes.clear();
            s.f.ui.queued = {reply};
            pasteInto(*y, QStringLiteral("7\t8\n9\t10"));
            ASSERT_EQ(s.f.ui.boxes.size(), 1U);
            EXPECT_EQ(s.f.ui.boxes[0].text,
                      "The text has two columns. Replace all values in both boxes with them?");
        };
        ask(Button::No);
        EXPECT_EQ(std::pair(x->toPlainText(), y->toPlainText()), before);
        ask(Button::Yes);
        EXPECT_EQ(x->toPlainText(), QStringLiteral("7\n9\n"));
        EXPECT_EQ(y->toPlainText(), QStringLiteral("8\n10\n"));
        x->undo();
        y->undo();
        EXPECT_EQ(std::pair(x->toPlainText(), y->toPlainText()), before) << "Undo of each box";
        // With nothing to lose there is no question.
        s.f.ui.boxes.clear();
        x->clear();
        y->selectAll();
        pasteInto(*y, QStringLiteral("7\t8\n"));
        EXPECT_TRUE(s.f.ui.boxes.empty());
        EXPECT_EQ(x->toPlainText(), QStringLiteral("7\n"));
        EXPECT_EQ(y->toPlainText(), QStringLiteral("8\n"));
        press(dialog, "cancel");
    });
    press(panel, "import");
    EXPECT_EQ(s.changes, 0);
}

TEST(PairSetPasteForm, AnyOtherTextChangesTheBoxWhereItIsPastedAlone) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([&](QDialog& dialog) {
        auto* x = find<QPlainTextEdit>(dialog, "tmValues");
        auto* y = find<QPlainTextEdit>(dialog, "euValues");
        const auto before = x->toPlainText();
        for (const char* const text : {"1,5\n2,5", "5\n6", "7; 8\n9; 10", "1, 2\n3, 4", "1 V\n2 V",
                                       "1\t2\t3\n4\t5\t6", "1\t2\n3"}) {
            y->selectAll();
            pasteInto(*y, QLatin1String(text));
            EXPECT_EQ(x->toPlainText(), before) << text;
            EXPECT_EQ(y->toPlainText(), QLatin1String(text));
        }
        EXPECT_TRUE(s.f.ui.boxes.empty());
        press(dialog, "cancel");
    });
    press(panel, "import");
    EXPECT_EQ(s.changes, 0);
}

TEST(PairSetPasteForm, DecimalCommasOfOneColumnAreStoredAsPoints) {
    PairSetStage s;
    auto& panel = s.open();
    s.door.next([](QDialog& dialog) {
        auto* y = find<QPlainTextEdit>(dialog, "euValues");
        y->selectAll();
        pasteInto(*y, QStringLiteral("1,5\n2,5\n3\n4\n5"));
        press(dialog, "ok");
    });
    press(panel, "import");
    EXPECT_TRUE(s.f.ui.boxes.empty());
    ASSERT_EQ(s.rows().size(), 5U);
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "0");
    EXPECT_EQ(s.rows()[1][kPairEngineering], "2.5");
    EXPECT_EQ(s.value("PS4-1"), "1.5");
}

// --- Files -----------------------------------------------------------------------------------

TEST(PairSetFileForm, FillsTheBoxesFromAFile) {
    PairSetStage s;
    auto& panel = s.open();
    const auto path = s.f.folder / "pairs.csv";
    test::writeFile(path, "counts,psi\r\n\"1.50\",2.10\r\n3,4\r\n");
    s.f.ui.files = {FileChoice{path, 1}};
    s.door.next([](QDialog& dialog) {
        press(dialog, "fromFile");
        EXPECT_EQ(find<QPlainTextEdit>(dialog, "tmValues")->toPlainText(),
                  QStringLiteral("1.50\n3\n"));
        press(dialog, "ok");
    });
    press(panel, "import");
    ASSERT_EQ(s.rows().size(), 2U);
    EXPECT_EQ(s.rows()[0][kPairTelemetry], "1.50") << "as it is in the file";
    EXPECT_EQ(s.rows()[0][kPairEngineering], "2.10");
}

TEST(PairSetFileForm, AFileThatIsWrongLeavesTheBoxesAlone) {
    PairSetStage s;
    auto& panel = s.open();
    std::string many;
    for (int i = 0; i < 10000; ++i) {
        many += std::to_string(i) + "," + std::to_string(i) + "\n";
    }
    struct Case {
        const char* name;
        std::string bytes;
        const char* told;
    };
    const Case cases[] = {
        {"text", "1,2\nabc,3\n", "Error in row #2. X Value found"},
        {"nan", "1,nan\n", "Error in row #1. Y Value found"},
        {"three", "1,2\n3,4,5\n", "Error in row #2. There are more than two columns: '5'"},
        {"unit", "1;2\n3;4 V\n", "Error in row #2. Y Value found"},
        {"many", many, "There are 10000 pairs."},
        {"binary", "1,1\n" + std::string("\0\xFF\x01", 3), "Error in row #2. X Value found"},
    };
    for (const auto& c : cases) {
        s.f.ui.boxes.clear();
        const auto path = s.f.folder / c.name;
        test::writeFile(path, c.bytes);
        s.f.ui.files = {FileChoice{path, 1}};
        s.door.next([&](QDialog& dialog) {
            press(dialog, "fromFile");
            ASSERT_EQ(s.f.ui.boxes.size(), 1U) << c.name;
            EXPECT_NE(s.f.ui.boxes[0].text.find(c.told), std::string::npos)
                << c.name << ": " << s.f.ui.boxes[0].text;
            EXPECT_EQ(find<QPlainTextEdit>(dialog, "tmValues")->toPlainText(),
                      QStringLiteral("0\n10\n20\n30\n40\n"));
            press(dialog, "cancel");
        });
        press(panel, "import");
    }
    s.f.ui.boxes.clear();
    s.f.ui.files = {FileChoice{s.f.folder / "missing", 1}, std::nullopt};
    s.door.next([&](QDialog& dialog) {
        press(dialog, "fromFile");
        EXPECT_EQ(s.f.ui.boxes.size(), 1U) << "with the path and the reason";
        press(dialog, "fromFile");
        EXPECT_EQ(s.f.ui.boxes.size(), 1U) << "no file was chosen";
        press(dialog, "cancel");
    });
    press(panel, "import");
    EXPECT_EQ(s.changes, 0);
}

}  // namespace
}  // namespace kavu
