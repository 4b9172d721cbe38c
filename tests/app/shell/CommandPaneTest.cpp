#include "app/framework/QtText.h"
#include "app/shell/CommandModel.h"
#include "app/shell/CommandPane.h"
#include "app/shell/TreeModel.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "groups/DocumentTree.h"
#include "support/TestApplication.h"

#include <chrono>
#include <filesystem>
#include <iostream>

#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace kavu {
namespace {

using test::find;

class CommandPaneTest : public testing::Test {
  protected:
    CommandPaneTest() : pane(app.application) {
        pane.resize(700, 600);
        pane.show();
        pane.activateWindow();
    }
    void openSample() {
        auto& context = app.application.context();
        ASSERT_TRUE(openFromName(context, &app.ui, KAVU_SOURCE_DIR "/samples/flight-test.tma"));
        model.build(readDocumentTree(context, &app.ui),
                    app.application.conversions().definitionNames(-1).value(),
                    {.general = true, .conversion = true, .hardware = true, .pam = true});
    }
    void show(TreeKind kind, const std::string& name = {}) {
        const auto index = model.indexOf(kind, name);
        ASSERT_TRUE(index.isValid());
        pane.showItem(model.item(index));
        settle();
    }
    void settle() {
        QElapsedTimer clock;
        clock.start();
        do {
            QApplication::processEvents();
        } while (pane.model().busy() && clock.elapsed() < 30000);
        QApplication::processEvents();
    }
    std::string cell(int row, int column) {
        return toBytes(pane.model().index(row, column).data().toString());
    }
    /// The row of a code, or -1.
    int rowOf(const std::string& code) {
        for (int row = 0; row < pane.model().rowCount(); ++row) {
            if (cell(row, 0) == code) {
                return row;
            }
        }
        return -1;
    }
    std::string text(const char* label) { return toBytes(find<QLabel>(pane, label)->text()); }
    void filter(const char16_t* words) {
        find<QLineEdit>(pane, "filter")->setText(QString::fromUtf16(words));
        settle();
    }

    test::TestApplication app;
    TreeModel model;
    CommandPane pane;
};

TEST_F(CommandPaneTest, WithoutAnItemAHintIsShown) {
    EXPECT_TRUE(find<QLabel>(pane, "emptyText")->isVisible());
    EXPECT_FALSE(find<QTableView>(pane, "commands")->isVisible());
    EXPECT_EQ(text("emptyText"), "Select an item of the tree to see its commands.");
}

TEST_F(CommandPaneTest, AGroupFileIsShownWithTheLineBreaksOfItsValues) {
    openSample();
    show(TreeKind::General);
    EXPECT_EQ(text("title"), "General Information");
    const int name = rowOf("G\\PN");
    ASSERT_GE(name, 0);
    EXPECT_EQ(cell(name, 1), "KESTREL-7");
    const int comment = rowOf("G\\COM");
    ASSERT_GE(comment, 0);
    EXPECT_EQ(cell(comment, 1),
              "Flutter clearance to 0.95 Mach, first flight of the block.\n\nTest points 1 to 7 "
              "at 10,000 ft, 8 to 14 at 20,000 ft.\n\tChase aircraft: yes.\n\tRecorder on before "
              "taxi: yes.");
    auto* table = find<QTableView>(pane, "commands");
    table->scrollTo(pane.model().index(comment, 0));
    settle();
    EXPECT_GE(table->rowHeight(comment), 5 * table->fontMetrics().height());
    EXPECT_LT(table->rowHeight(name), 3 * table->fontMetrics().height());
    EXPECT_EQ(text("count"), std::to_string(pane.model().rowCount()) + " commands");
}

TEST_F(CommandPaneTest, AValueThatLooksLikeMarkupIsShownAsItStandsAndAVeryLongOneIsCutWhole) {
    CommandModel rows;
    std::string longText;
    for (int i = 0; i < 15000; ++i) {
        longText += "\xC3\xA4";  // "ä": the place of the cut may be inside one
    }
    rows.setPairs({{"A", "<b>5 & 6</b>"}, {"B", "x" + longText}});
    const auto tip = rows.data(rows.index(0, 1), Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QStringLiteral("&lt;b&gt;5 &amp; 6&lt;/b&gt;"))) << toBytes(tip);
    const auto shown = toBytes(rows.data(rows.index(1, 1), Qt::DisplayRole).toString());
    EXPECT_TRUE(("x" + longText).starts_with(shown.substr(0, shown.size() - 3)));
    EXPECT_TRUE(shown.ends_with("\xC3\xA4..."));
    EXPECT_LT(shown.size(), 20010U);
}

TEST_F(CommandPaneTest, BlanksInFrontOfTheEndOfACommandTakeNothingFromItsCode) {
    auto& context = app.application.context();
    test::writeFile(context.store.pathOf(groupFile('H')), "H\\A:one   ;\r\nH\\B;\r\nH\\C:2;;half");
    pane.showItem({.kind = TreeKind::Hardware, .command = 19, .letter = 'H'});
    settle();
    ASSERT_EQ(pane.model().rowCount(), 4);
    EXPECT_EQ(cell(0, 0), "H\\A");
    EXPECT_EQ(cell(0, 1), "one");
    EXPECT_EQ(cell(1, 0), "H\\B");
    EXPECT_EQ(cell(1, 1), "");
    EXPECT_EQ(cell(2, 0), "H\\C");
    EXPECT_EQ(cell(2, 1), "2");
}

TEST_F(CommandPaneTest, AFileThatCannotBeReadIsNamedWithTheReason) {
    auto& context = app.application.context();
    const auto path = context.store.pathOf(groupFile('H'));
    ASSERT_TRUE(std::filesystem::create_directory(path));
    pane.showItem({.kind = TreeKind::Hardware, .command = 19, .letter = 'H'});
    settle();
    EXPECT_TRUE(find<QLabel>(pane, "emptyText")->isVisible());
    EXPECT_EQ(text("emptyText"), path + " cannot be read: Is a directory.");
    EXPECT_FALSE(find<QTableView>(pane, "commands")->isVisible());
}

TEST_F(CommandPaneTest, TheFilterFindsCodesAndValuesInAnyCase) {
    openSample();
    show(TreeKind::General);
    const auto all = pane.model().rowCount();
    filter(u"kestrel-");
    ASSERT_EQ(pane.model().rowCount(), 1);
    EXPECT_EQ(cell(0, 0), "G\\PN");
    EXPECT_EQ(text("count"), "1 of " + std::to_string(all) + " commands");
    filter(u"g\\dst");
    EXPECT_EQ(pane.model().rowCount(), 3);
    filter(u"no such thing");
    EXPECT_EQ(pane.model().rowCount(), 0);
    filter(u"");
    EXPECT_EQ(pane.model().rowCount(), all);
}

TEST_F(CommandPaneTest, AnotherItemBeginsWithoutAFilter) {
    openSample();
    show(TreeKind::General);
    filter(u"kestrel");
    show(TreeKind::General);
    EXPECT_EQ(toBytes(find<QLineEdit>(pane, "filter")->text()), "kestrel");
    show(TreeKind::Source, "L-Band Telemetry");
    EXPECT_EQ(toBytes(find<QLineEdit>(pane, "filter")->text()), "");
    EXPECT_EQ(cell(rowOf("T-1\\RF1"), 1), "1485.5");
}

TEST_F(CommandPaneTest, AStreamHasItsSummaryAndAChoiceOfItsFiles) {
    openSample();
    show(TreeKind::Stream, "PCM Stream 1");
    EXPECT_NE(text("summary").find("PCM (Class"), std::string::npos) << text("summary");
    EXPECT_NE(text("summary").find("words"), std::string::npos);
    EXPECT_NE(text("summary").find("measurements"), std::string::npos);
    auto* choice = find<QComboBox>(pane, "group");
    ASSERT_EQ(choice->count(), 2);
    EXPECT_EQ(cell(0, 0).substr(0, 2), "P-");
    choice->setFocus();
    QTest::keyClick(choice, Qt::Key_Down);
    settle();
    EXPECT_EQ(cell(0, 0).substr(0, 2), "D-");
    show(TreeKind::Stream, "1553 Bus 1");
    EXPECT_EQ(toBytes(choice->itemText(choice->count() - 1)).substr(0, 13), "Bus Data (B-1");
    choice->setFocus();
    QTest::keyClick(choice, Qt::Key_End);
    settle();
    EXPECT_EQ(cell(0, 0).substr(0, 2), "B-");
}

TEST_F(CommandPaneTest, AMeasurementShowsItsConversionRecord) {
    openSample();
    const auto name = app.application.conversions().definitionNames(-1)->front();
    show(TreeKind::Measurement, name);
    ASSERT_GT(pane.model().rowCount(), 0);
    const auto place = app.application.conversions().locateDefinition(name);
    const auto chunk = app.application.conversions().chunk(place.chunk);
    const auto keys = chunk->keyNames(place.section);
    ASSERT_EQ(pane.model().rowCount(), static_cast<int>(keys.size()));
    EXPECT_EQ(cell(0, 0), keys[0]);
    EXPECT_EQ(cell(0, 1), chunk->value(place.section, keys[0], "?"));
}

TEST_F(CommandPaneTest, ABranchHasAShortSummary) {
    openSample();
    show(TreeKind::TransmissionHead);
    EXPECT_EQ(text("summary"), "2 data sources");
    show(TreeKind::RecorderHead);
    EXPECT_EQ(text("summary"), "1 data source");
    show(TreeKind::StreamsHead, "S-Band Telemetry");
    EXPECT_EQ(text("summary"), "2 streams");
    EXPECT_FALSE(find<QTableView>(pane, "commands")->isVisible());
}

TEST_F(CommandPaneTest, TheSelectedRowsAreCopied) {
    openSample();
    show(TreeKind::General);
    filter(u"G\\DST");
    auto* table = find<QTableView>(pane, "commands");
    EXPECT_FALSE(find<QWidget>(pane, "copy")->isEnabled());
    table->setFocus();
    table->selectAll();
    test::press(pane, "copy");
    EXPECT_EQ(toBytes(QGuiApplication::clipboard()->text()),
              "G\\DST-1\tRF\nG\\DST-2\tRF\nG\\DST-3\tSTO\n");
    table->selectRow(1);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(toBytes(QGuiApplication::clipboard()->text()), "G\\DST-2\tRF\n");
}

TEST_F(CommandPaneTest, EveryControlCanBeReachedAndRead) {
    EXPECT_EQ(test::checkWindow(pane), std::vector<std::string>{});
    openSample();
    show(TreeKind::Stream, "PCM Stream 1");
    EXPECT_EQ(test::checkWindow(pane), std::vector<std::string>{});
}

TEST_F(CommandPaneTest, SixHundredThousandCommandsNeverHoldTheWindow) {
    std::string bytes;
    for (int i = 0; i < 600000; ++i) {
        bytes +=
            "P-1\\MN-" + std::to_string(i) + ":value of some length " + std::to_string(i) + ";\r\n";
    }
    auto& context = app.application.context();
    test::writeFile(context.store.pathOf(groupFile('H')), bytes);
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
    };
    auto start = Clock::now();
    pane.showItem({.kind = TreeKind::Hardware, .command = 19, .letter = 'H'});
    const auto first = since(start);
    EXPECT_GT(pane.model().rowCount(), 0);
    long long longest = 0;
    while (pane.model().busy() && since(start) < 60000) {
        const auto turn = Clock::now();
        QApplication::processEvents(QEventLoop::AllEvents, 1);
        longest = std::max<long long>(longest, since(turn));
    }
    const auto loaded = since(start);
    ASSERT_EQ(pane.model().rowCount(), 600000);
    start = Clock::now();
    find<QLineEdit>(pane, "filter")->setText(QStringLiteral("LENGTH 599999"));
    while (pane.model().busy() && since(start) < 60000) {
        const auto turn = Clock::now();
        QApplication::processEvents(QEventLoop::AllEvents, 1);
        longest = std::max<long long>(longest, since(turn));
    }
    std::cout << "600000 commands: first rows after " << first << " ms, all after " << loaded
              << " ms, filtered in " << since(start) << " ms, longest turn " << longest << " ms\n";
    EXPECT_EQ(pane.model().rowCount(), 1);
    EXPECT_LE(first, 1000);
    EXPECT_LE(longest, 300);
}

}  // namespace
}  // namespace kavu
