#include "app/framework/QtText.h"
#include "app/shell/TreePanel.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"
#include "groups/DocumentTree.h"
#include "support/TestApplication.h"

#include <chrono>
#include <iostream>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>

namespace kavu {
namespace {

constexpr TreeBranches kAll = {.general = true, .conversion = true, .hardware = true, .pam = true};

class TreePanelTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { qRegisterMetaType<TreeItem>(); }

    TreePanelTest() {
        panel.resize(400, 600);
        QObject::connect(&panel, &TreePanel::requested, &panel,
                         [this](TreeAction action, const TreeItem& item) {
                             requests.emplace_back(action, item);
                         });
        QObject::connect(&panel, &TreePanel::activated, &panel,
                         [this](const TreeItem& item) { opened.push_back(item); });
    }

    void openSample() {
        auto& context = app.application.context();
        ASSERT_TRUE(openFromName(context, &app.ui, KAVU_SOURCE_DIR "/samples/flight-test.tma"));
        rebuild();
    }
    void rebuild() {
        panel.rebuild(readDocumentTree(app.application.context(), &app.ui),
                      app.application.conversions().definitionNames(-1).value(), kAll);
    }
    bool selectKind(TreeKind kind, const std::string& name = {}) {
        const auto index = panel.model().indexOf(kind, name);
        panel.view()->setCurrentIndex(index);
        panel.view()->scrollTo(index);
        return index.isValid();
    }
    /// "Edit|-|Expand Branch", an entry that is disabled in brackets.
    std::string menuText() {
        QMenu menu;
        panel.fillMenu(menu);
        std::string text;
        for (const auto* entry : menu.actions()) {
            text += text.empty() ? "" : "|";
            const auto name = entry->isSeparator() ? std::string("-") : toBytes(entry->text());
            text += entry->isEnabled() || entry->isSeparator() ? name : "(" + name + ")";
        }
        return text;
    }
    void chooseEntry(TreeAction action) {
        QMenu menu;
        panel.fillMenu(menu);
        for (auto* entry : menu.actions()) {
            if (entry->text() == treeActionText(action)) {
                entry->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no entry " << toBytes(treeActionText(action));
    }
    bool isOpen(TreeKind kind, const std::string& name = {}) {
        return panel.view()->isExpanded(panel.model().indexOf(kind, name));
    }

    test::TestApplication app;
    TreePanel panel{{}};
    std::vector<std::pair<TreeAction, TreeItem>> requests;
    std::vector<TreeItem> opened;
};

TEST_F(TreePanelTest, F2RenamesAndDeleteDeletesWhatTheItemIs) {
    openSample();
    int refused = 0;
    QObject::connect(&panel, &TreePanel::refused, [&] { ++refused; });
    const auto measurement = app.application.conversions().definitionNames(-1)->front();
    const struct {
        TreeKind kind;
        std::string name;
        std::optional<TreeAction> rename;
        std::optional<TreeAction> remove;
    } cases[] = {
        {TreeKind::Source, "L-Band Telemetry", TreeAction::Rename, TreeAction::Delete},
        {TreeKind::Stream, "PCM Stream 1", TreeAction::RenameStream, std::nullopt},
        {TreeKind::Measurement, measurement, TreeAction::RenameMeasurement,
         TreeAction::DeleteConversion},
        {TreeKind::General, "", std::nullopt, std::nullopt},
    };
    for (const auto& row : cases) {
        ASSERT_TRUE(selectKind(row.kind, row.name));
        for (const auto& [key, action] :
             {std::pair(Qt::Key_F2, row.rename), std::pair(Qt::Key_Delete, row.remove)}) {
            requests.clear();
            refused = 0;
            QTest::keyClick(panel.view(), key);
            ASSERT_EQ(requests.size(), action ? 1U : 0U) << row.name;
            EXPECT_EQ(refused, action ? 0 : 1) << row.name;
            if (action) {
                EXPECT_EQ(requests.front().first, *action);
                EXPECT_EQ(requests.front().second.name, row.name);
            }
        }
    }
    panel.available = [](TreeAction, const TreeItem&) { return false; };
    ASSERT_TRUE(selectKind(TreeKind::Source, "L-Band Telemetry"));
    requests.clear();
    QTest::keyClick(panel.view(), Qt::Key_Delete);
    EXPECT_TRUE(requests.empty()) << "an action whose editor is not there";
}

TEST_F(TreePanelTest, WithoutADocumentAHintIsShown) {
    panel.show();
    auto* hint = panel.findChild<QLabel*>(QStringLiteral("emptyText"));
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(toBytes(hint->text()), "Open or create a TMATS file to begin.");
    openSample();
    EXPECT_FALSE(hint->isVisible());
    EXPECT_TRUE(panel.view()->isVisible());
    panel.clear();
    EXPECT_TRUE(hint->isVisible());
    EXPECT_FALSE(panel.current().has_value());
}

TEST_F(TreePanelTest, EachKindOfItemHasItsEntries) {
    openSample();
    constexpr auto branch =
        "Expand Branch|Expand Branch And Its Children|(Collapse Branch)|Collapse Branch And Its "
        "Children";
    const auto measurement = app.application.conversions().definitionNames(-1)->front();
    const struct {
        TreeKind kind;
        std::string name;
        std::string menu;
    } cases[] = {
        {TreeKind::General, "", std::string("Edit|-|") + branch},
        {TreeKind::TransmissionHead, "",
         std::string("Create New Data Source/Stream Template|Import Data Source/Stream From "
                     "Another TMATS File|-|") +
             branch},
        {TreeKind::RecorderHead, "",
         std::string("Create New Data Source/Stream Template|Import Data Source/Stream From "
                     "Another TMATS File|-|") +
             branch},
        {TreeKind::Source, "L-Band Telemetry",
         std::string("Edit|Rename|Delete|Make A Copy Of This Data Source|-|") + branch},
        {TreeKind::MultiplexDefinition, "L-Band Telemetry", "Edit"},
        {TreeKind::StreamsHead, "L-Band Telemetry", branch},
        {TreeKind::Stream, "PCM Stream 1", "Edit Stream|Rename Stream"},
        {TreeKind::ConversionHead, "",
         std::string("View/Edit/Print Data Conversion Information For All Measurements|Print All "
                     "Calibration Reports|-|") +
             branch},
        {TreeKind::Measurement, measurement,
         "Edit Data Conversion Information|Delete Data Conversion Information|Rename "
         "Measurement"},
        {TreeKind::Hardware, "", "Edit"},
        {TreeKind::Pam, "", "Edit"},
    };
    for (const auto& row : cases) {
        ASSERT_TRUE(selectKind(row.kind, row.name)) << static_cast<int>(row.kind);
        panel.collapseAll();
        ASSERT_TRUE(selectKind(row.kind, row.name));
        panel.collapseBranch(false);
        EXPECT_EQ(menuText(), row.menu) << row.name;
    }
}

TEST_F(TreePanelTest, AStreamThatNothingLeadsToCanGetAHome) {
    DocumentTree tree;
    TreeLink lone{.name = "Lone", .kind = "PCM (Class 1)", .group = 1};
    lone.letter = 'P';
    tree.unlinked.push_back(lone);
    tree.vendors.push_back({"Radio", 1});
    panel.rebuild(tree, {}, {});
    ASSERT_TRUE(selectKind(TreeKind::Stream, "Lone"));
    EXPECT_EQ(menuText(), "Edit Stream|Rename Stream|Create A Home For This Stream...");
    ASSERT_TRUE(selectKind(TreeKind::Vendor, "Radio"));
    EXPECT_EQ(menuText(), "Edit");
}

TEST_F(TreePanelTest, AStreamWithEmbeddedStreamsIsABranch) {
    DocumentTree tree;
    TreeSource source{.name = "Radio", .type = "RF", .sourceClass = 'R'};
    TreeLink link{.name = "One", .kind = "PCM (Class 1)", .group = 1};
    link.embedded = {"Inner"};
    source.links.push_back(link);
    tree.dataSources.push_back(source);
    panel.rebuild(tree, {}, kAll);
    ASSERT_TRUE(selectKind(TreeKind::Stream, "One"));
    EXPECT_NE(menuText().find("|-|Expand Branch|"), std::string::npos) << menuText();
    ASSERT_TRUE(selectKind(TreeKind::EmbeddedStream, "Inner"));
    EXPECT_EQ(menuText(), "Edit Stream|Rename Stream");
}

TEST_F(TreePanelTest, AnEntryWhoseCommandIsNotThereIsDisabled) {
    openSample();
    panel.available = [](TreeAction action, const TreeItem& item) {
        return action == TreeAction::Rename && item.name == "L-Band Telemetry";
    };
    ASSERT_TRUE(selectKind(TreeKind::Source, "L-Band Telemetry"));
    EXPECT_EQ(menuText().substr(0, 61),
              "(Edit)|Rename|(Delete)|(Make A Copy Of This Data Source)|-|Ex");
    ASSERT_TRUE(selectKind(TreeKind::Hardware));
    EXPECT_EQ(menuText(), "(Edit)");
}

TEST_F(TreePanelTest, AnEntryAsksForItsActionOnItsItem) {
    openSample();
    ASSERT_TRUE(selectKind(TreeKind::Source, "Onboard Recorder"));
    chooseEntry(TreeAction::MakeCopy);
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].first, TreeAction::MakeCopy);
    EXPECT_EQ(requests[0].second, (TreeItem{.kind = TreeKind::Source,
                                            .command = 84,
                                            .name = "Onboard Recorder",
                                            .letter = 'R',
                                            .group = 1}));
}

TEST_F(TreePanelTest, ADoubleClickAndEnterOpenTheItemAndLeaveTheBranchAsItIs) {
    openSample();
    panel.show();
    ASSERT_TRUE(selectKind(TreeKind::Source, "L-Band Telemetry"));
    const auto index = panel.view()->currentIndex();
    const auto place = panel.view()->visualRect(index).center();
    QTest::mouseClick(panel.view()->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(panel.view()->viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0].name, "L-Band Telemetry");
    EXPECT_FALSE(panel.view()->isExpanded(index));
    QTest::keyClick(panel.view(), Qt::Key_Return);
    QTest::keyClick(panel.view(), Qt::Key_Enter);
    EXPECT_EQ(opened.size(), 3u);
}

TEST_F(TreePanelTest, TypingGoesToTheItemAndTheArrowsOpenAndClose) {
    openSample();
    panel.show();
    ASSERT_TRUE(selectKind(TreeKind::General));
    panel.collapseAll();
    QTest::keyClicks(panel.view(), QStringLiteral("data"));
    EXPECT_EQ(panel.current()->kind, TreeKind::ConversionHead);
    QTest::keyClick(panel.view(), Qt::Key_Right);
    EXPECT_TRUE(isOpen(TreeKind::ConversionHead));
    EXPECT_TRUE(panel.expansion().conversion);
    QTest::keyClick(panel.view(), Qt::Key_Left);
    EXPECT_FALSE(panel.expansion().conversion);
}

TEST_F(TreePanelTest, TheMenuKeyOpensTheMenuAtTheItem) {
    openSample();
    panel.show();
    panel.activateWindow();
    ASSERT_TRUE(selectKind(TreeKind::Hardware));
    std::string shown;
    QTimer::singleShot(0, &panel, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            shown = toBytes(menu->actions().front()->text());
            menu->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
    QApplication::sendEvent(panel.view(), &event);
    EXPECT_EQ(shown, "Edit");
}

TEST_F(TreePanelTest, ARightClickSelectsTheItemAndOpensItsMenu) {
    openSample();
    panel.show();
    ASSERT_TRUE(selectKind(TreeKind::General));
    const auto place = panel.view()->visualRect(panel.model().indexOf(TreeKind::Hardware)).center();
    std::string shown;
    QTimer::singleShot(0, &panel, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            shown = toBytes(menu->actions().front()->text());
            menu->close();
        }
    });
    QTest::mousePress(panel.view()->viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                            panel.view()->viewport()->mapToGlobal(place));
    QApplication::sendEvent(panel.view()->viewport(), &event);
    EXPECT_EQ(panel.current()->kind, TreeKind::Hardware);
    EXPECT_EQ(shown, "Edit");
}

TEST_F(TreePanelTest, TheFlagsOpenTheirBranches) {
    ProfileSettings settings("");
    EXPECT_EQ(readTreeExpansion(settings), TreeExpansion{});
    const TreeExpansion flags{.general = true, .conversion = false, .radio = false, .tape = true};
    writeTreeExpansion(settings, flags);
    EXPECT_EQ(settings.integer("ExpG", 0), 1);
    EXPECT_EQ(settings.integer("ExpE", 1), 0);
    EXPECT_EQ(settings.integer("ExpR", 1), 0);
    EXPECT_EQ(settings.integer("ExpT", 0), 1);
    EXPECT_EQ(readTreeExpansion(settings), flags);
    TreePanel other(flags);
    openSample();
    other.rebuild(readDocumentTree(app.application.context(), &app.ui), {"ALT"}, kAll);
    const auto open = [&](TreeKind kind) {
        return other.view()->isExpanded(other.model().indexOf(kind));
    };
    EXPECT_TRUE(open(TreeKind::General));
    EXPECT_FALSE(open(TreeKind::ConversionHead));
    EXPECT_FALSE(open(TreeKind::TransmissionHead));
    EXPECT_TRUE(open(TreeKind::RecorderHead));
    EXPECT_EQ(other.expansion(), flags);
}

TEST_F(TreePanelTest, ExpandAllSetsAllFlagsAndCollapseAllClearsThem) {
    openSample();
    panel.expandAll();
    EXPECT_EQ(panel.expansion(),
              (TreeExpansion{.general = true, .conversion = true, .radio = true, .tape = true}));
    EXPECT_TRUE(isOpen(TreeKind::StreamsHead, "S-Band Telemetry"));
    panel.collapseAll();
    EXPECT_EQ(panel.expansion(), TreeExpansion{});
    EXPECT_FALSE(isOpen(TreeKind::General));
    EXPECT_FALSE(isOpen(TreeKind::StreamsHead, "S-Band Telemetry"));
}

TEST_F(TreePanelTest, ABranchOpensAloneOrWithItsChildren) {
    openSample();
    panel.collapseAll();
    ASSERT_TRUE(selectKind(TreeKind::General));
    panel.expandBranch(false);
    EXPECT_TRUE(isOpen(TreeKind::General));
    EXPECT_FALSE(isOpen(TreeKind::RecorderHead));
    chooseEntry(TreeAction::ExpandChildren);
    EXPECT_TRUE(isOpen(TreeKind::RecorderHead));
    EXPECT_TRUE(isOpen(TreeKind::StreamsHead, "Onboard Recorder"));
    EXPECT_FALSE(isOpen(TreeKind::ConversionHead));
    panel.collapseBranch(false);
    EXPECT_TRUE(isOpen(TreeKind::RecorderHead));
    EXPECT_FALSE(isOpen(TreeKind::General));
    chooseEntry(TreeAction::CollapseChildren);
    EXPECT_FALSE(isOpen(TreeKind::RecorderHead));
    EXPECT_TRUE(requests.empty());
}

TEST_F(TreePanelTest, WhatWasOpenAndSelectedSurvivesARebuild) {
    openSample();
    panel.collapseAll();
    ASSERT_TRUE(selectKind(TreeKind::Stream, "PCM Stream 3"));  // opens what is above it
    const auto before = panel.expansion();
    rebuild();
    EXPECT_EQ(panel.current()->name, "PCM Stream 3");
    EXPECT_TRUE(isOpen(TreeKind::StreamsHead, "S-Band Telemetry"));
    EXPECT_FALSE(isOpen(TreeKind::RecorderHead));
    EXPECT_FALSE(isOpen(TreeKind::ConversionHead));
    EXPECT_EQ(panel.expansion(), before);
}

TEST_F(TreePanelTest, AFlagOutlivesADocument) {
    openSample();
    ASSERT_TRUE(selectKind(TreeKind::ConversionHead));
    panel.expandBranch(false);
    panel.clear();
    EXPECT_TRUE(panel.expansion().conversion);
    rebuild();
    EXPECT_TRUE(isOpen(TreeKind::ConversionHead));
}

TEST_F(TreePanelTest, APlaceIsFoundByItsGroupOrItsMeasurement) {
    openSample();
    EXPECT_TRUE(panel.select('P', 2));
    const auto stream = panel.current();
    EXPECT_EQ(stream->kind, TreeKind::Stream);
    EXPECT_TRUE(panel.select('G', 0));
    EXPECT_FALSE(panel.select('D', 2)) << "an item stands for one group";
    EXPECT_TRUE(panel.selectStream(stream->name));
    EXPECT_EQ(panel.current(), stream);
    EXPECT_FALSE(panel.selectStream("no such stream"));
    EXPECT_FALSE(panel.select('P', 99));
    const auto name = app.application.conversions().definitionNames(-1)->back();
    EXPECT_TRUE(panel.selectMeasurement(name));
    EXPECT_EQ(panel.current()->name, name);
    EXPECT_FALSE(panel.selectMeasurement("no such name"));
}

TEST_F(TreePanelTest, EveryControlCanBeReachedAndRead) {
    EXPECT_EQ(test::checkWindow(panel), std::vector<std::string>{});
    openSample();
    panel.expandAll();
    EXPECT_EQ(test::checkWindow(panel), std::vector<std::string>{});
}

TEST_F(TreePanelTest, TwentyThousandMeasurementsAreShownAndScrolledWithoutAWait) {
    std::vector<std::string> names;
    for (int i = 0; i < 20000; ++i) {
        names.push_back("MEASUREMENT-" + std::to_string(i));
    }
    panel.show();
    using Clock = std::chrono::steady_clock;
    const auto since = [](Clock::time_point start) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
    };
    auto start = Clock::now();
    panel.rebuild({}, names, kAll);
    panel.expandAll();
    panel.grab();
    const auto built = since(start);
    auto* bar = panel.view()->verticalScrollBar();
    start = Clock::now();
    for (int step = 0; step < 20; ++step) {
        bar->setValue(bar->maximum() * step / 20);
        panel.grab();
    }
    const auto scrolled = since(start) / 20;
    std::cout << "20000 measurements: shown after " << built << " ms, a step of scrolling takes "
              << scrolled << " ms\n";
    EXPECT_LE(built, 300);
    EXPECT_LE(scrolled, 50);
}

}  // namespace
}  // namespace kavu
