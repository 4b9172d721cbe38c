#include "app/bus/BusFormStage.h"
#include "app/bus/BusRowsPanel.h"
#include "app/bus/BusWindow.h"
#include "app/bus/GroupTreeEditor.h"
#include "groups/MeasurementNames.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>

namespace kavu {
namespace {

using test::BusFormStage;
using test::choose;
using test::find;
using test::key;
using test::press;
using test::smallBus;
using test::type;
using test::typeInto;

/// The window over a definition, which it packs into the working store.
struct WindowStage : BusFormStage {
    using BusFormStage::BusFormStage;

    /// True if it was packed.
    bool show(const std::function<void(BusWindow&)>& driver) {
        BusWindow window(
            setup, [this] { return packBusGroup(bus.t.context, &ui(), definition); }, nullptr);
        door.next([&](QDialog& dialog) { driver(static_cast<BusWindow&>(dialog)); });
        return runDialog(door, window) == QDialog::Accepted;
    }
    std::string group() { return bus.t.read(kBusGroupFile); }
};

std::vector<std::string> labels(const BusWindow& window, const QModelIndex& parent = {}) {
    const auto& model = *window.editor().tree()->model();
    std::vector<std::string> all;
    for (int i = 0; i < model.rowCount(parent); ++i) {
        all.push_back(toBytes(model.index(i, 0, parent).data().toString()));
    }
    return all;
}

void run(BusWindow& window, const char* action) {
    auto* const found = window.editor().findChild<QAction*>(QLatin1String(action));
    ASSERT_NE(found, nullptr) << action;
    found->trigger();
}

std::vector<std::string> menuTexts(BusWindow& window, const TreePath& at) {
    window.editor().select(at);
    QMenu menu;
    window.editor().fillMenu(menu);
    std::vector<std::string> texts;
    for (const auto* const action : menu.actions()) {
        if (!action->isSeparator()) {
            texts.push_back(toBytes(action->text()));
        }
    }
    return texts;
}

TEST(BusWindow, ShowsTheGroupAsATree) {
    WindowStage stage(smallBus());
    stage.show([](BusWindow& window) {
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Edit Bus Attributes"));
        EXPECT_EQ(test::checkWindow(window), std::vector<std::string>{});
        auto at = window.editor().tree()->model()->index(0, 0);
        EXPECT_EQ(toBytes(at.data().toString()), "Bus 1");
        std::vector<std::string> path;
        while (window.editor().tree()->model()->rowCount(at) > 0) {
            at = window.editor().tree()->model()->index(0, 0, at);
            path.push_back(toBytes(at.data().toString()));
        }
        EXPECT_EQ(path, (std::vector<std::string>{"000 Main (1553)", "12 Speed", "SPEED", "1 FW"}));
        press(window, "cancel");
    });
    EXPECT_EQ(stage.ui().statusTexts.back(), "Edit Bus Format Information.");
}

TEST(BusWindow, TheMenusAreThoseOfTheKindOfTheRow) {
    WindowStage stage(smallBus());
    stage.show([](BusWindow& window) {
        const auto first = [&](const TreePath& at, std::size_t count) {
            auto texts = menuTexts(window, at);
            texts.resize(count);
            return texts;
        };
        EXPECT_EQ(first({}, 1), (std::vector<std::string>{"Add New Bus"}));
        EXPECT_EQ(first({0}, 3), (std::vector<std::string>{"Add New Message", "Edit This Bus",
                                                           "Delete This Bus"}));
        EXPECT_EQ(first({0, 0}, 3),
                  (std::vector<std::string>{"Add New Measurement", "Edit This Message",
                                            "Delete This Message"}));
        EXPECT_EQ(first({0, 0, 0}, 3),
                  (std::vector<std::string>{"Add New Location", "Edit This Measurement",
                                            "Delete This Measurement"}));
        EXPECT_EQ(first({0, 0, 0, 0}, 2),
                  (std::vector<std::string>{"Edit This Location", "Delete This Location"}));
        press(window, "cancel");
    });
}

TEST(BusWindow, AMessageIsAddedAndPacked) {
    WindowStage stage(smallBus());
    EXPECT_TRUE(stage.show([&](BusWindow& window) {
        window.editor().select({0});
        stage.door.next([](QDialog& message) {
            type(message, "MNA", QStringLiteral("Height"));
            typeInto(message, "TRA", QStringLiteral("1"));
            typeInto(message, "STA", QStringLiteral("1"));
            type(message, "DWC", QStringLiteral("2"));
            press(message, "ok");
        });
        key(window.editor(), Qt::Key_Insert);
        EXPECT_EQ(window.editor().current(), (TreePath{0, 1}));
        press(window, "ok");
    }));
    EXPECT_NE(stage.group().find("B-1\\NMS\\N-1:2;"), std::string::npos);
    EXPECT_NE(stage.group().find("B-1\\MNA-1-2:Height;"), std::string::npos);
    EXPECT_FALSE(stage.bus.t.has(kBusProfile));
    EXPECT_FALSE(stage.bus.t.has(kTerminalProfile));
}

TEST(BusWindow, EachStepCanBeUndoneAndDoneAgain) {
    WindowStage stage(smallBus());
    const auto before = stage.definition.group;
    stage.ui().otherwise = Button::Yes;
    stage.show([&](BusWindow& window) {
        window.editor().select({0, 0, 0});
        key(window.editor(), Qt::Key_Delete);
        window.editor().select({0});
        key(window.editor(), Qt::Key_Delete);
        EXPECT_TRUE(stage.definition.buses().empty());
        EXPECT_TRUE(stage.definition.listKnownTerminals(1).remote.empty());
        key(window.editor(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(stage.definition.listKnownTerminals(1).remote.size(), 1U);
        EXPECT_EQ(stage.value({1, 1}, "MID"), "12");
        key(window.editor(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(stage.definition.group, before);
        key(window.editor(), Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(stage.value({1, 1, 1}, "MN"), "no row");
        press(window, "cancel");
    });
    EXPECT_EQ(stage.ui().boxes[0].title, "Delete This Measurement");
    EXPECT_EQ(stage.ui().boxes[1].title, "Delete 1553 Bus Definition");
}

TEST(BusWindow, ARefusedDeleteChangesNothing) {
    WindowStage stage(smallBus());
    const auto before = stage.definition.group;
    stage.show([&](BusWindow& window) {
        window.editor().select({0, 0});
        key(window.editor(), Qt::Key_Delete);
        EXPECT_EQ(stage.definition.group, before);
        EXPECT_FALSE(window.isChanged());
        press(window, "cancel");
    });
    EXPECT_EQ(stage.ui().boxes.size(), 1U);
}

TEST(BusWindow, ParityTestArticleAndCommentsAreOfTheGroup) {
    WindowStage stage(smallBus({"COM:old"}));
    EXPECT_TRUE(stage.show([&](BusWindow& window) {
        EXPECT_EQ(find<QComboBox>(window, "BP")->currentText(), QStringLiteral("ODD"));
        choose(window, "BP", QStringLiteral("EVEN"));
        type(window, "TA", QStringLiteral("Glider"));
        stage.door.next([](QDialog& comments) {
            EXPECT_EQ(test::checkWindow(comments), std::vector<std::string>{});
            type(comments, "COM", QStringLiteral("new"));
            press(comments, "ok");
        });
        press(window, "comments");
        press(window, "ok");
    }));
    for (const auto* const command : {"B-1\\TA:Glider;", "B-1\\BP:EV;", "B-1\\COM:new;"}) {
        EXPECT_NE(stage.group().find(command), std::string::npos) << command;
    }
}

TEST(BusWindow, TheParityIsOneOfAllItsEntriesFrom2007On) {
    WindowStage stage(smallBus());
    stage.show([](BusWindow& window) {
        std::vector<std::string> entries;
        const auto* const list = find<QComboBox>(window, "BP");
        for (int i = 0; i < list->count(); ++i) {
            entries.push_back(toBytes(list->itemText(i)));
        }
        EXPECT_EQ(entries, (std::vector<std::string>{"NONE", "ODD", "EVEN"}));
        press(window, "cancel");
    });
    WindowStage before(smallBus(), 2005);
    before.show([](BusWindow& window) {
        EXPECT_EQ(window.findChild<QWidget*>(QStringLiteral("BP")), nullptr);
        press(window, "cancel");
    });
}

TEST(BusWindow, ASemicolonInTheTestArticleIsRefused) {
    WindowStage stage(smallBus());
    stage.show([&](BusWindow& window) {
        type(window, "TA", QStringLiteral("a;b"));
        stage.ui().boxes.clear();
        press(window, "ok");
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(stage.shown(), std::vector{402});
        stage.ui().otherwise = Button::Yes;
        press(window, "cancel");
    });
}

TEST(BusWindow, TheListShowsTheRowsOfTheSelectedBranchAndOpensThem) {
    WindowStage stage(smallBus({"NMS\\N-1:2", "MID-1-2:13"}));
    stage.ui().otherwise = Button::Yes;
    stage.show([&](BusWindow& window) {
        const auto cells = [&] {
            const auto& model = *window.panel().list().model();
            std::vector<std::string> row;
            for (int i = 0; i < model.columnCount(); ++i) {
                row.push_back(toBytes(model.index(0, i).data().toString()));
            }
            return row;
        };
        EXPECT_EQ(cells(), (std::vector<std::string>{"000", "Main", "1553"}));
        window.editor().select({0});
        EXPECT_EQ(find<QLabel>(window, "listTitle")->text(), QStringLiteral("Messages"));
        EXPECT_EQ(window.panel().list().model()->rowCount(), 2);
        window.editor().select({0, 0, 0, 0});
        EXPECT_EQ(cells(), (std::vector<std::string>{"1", "FW", "MSB First", "1"}));
        window.editor().select({0});
        stage.door.next([](QDialog& message) {
            EXPECT_EQ(find<QPushButton>(message, "MID")->text(), QStringLiteral("13"));
            press(message, "cancel");
        });
        auto& list = window.panel().list();
        list.setCurrentIndex(list.model()->index(1, 0));
        QTest::keyClick(&list, Qt::Key_Return);
        EXPECT_EQ(window.editor().current(), (TreePath{0, 1}));
        EXPECT_TRUE(window.isVisible()) << "the key that opens a row does not close the window";
        press(window, "cancel");
    });
}

TEST(BusWindow, AMessageIsCopiedToAnotherBusWithAllInIt) {
    WindowStage stage(smallBus({"NBS\\N:2", "BID-2:001"}));
    EXPECT_TRUE(stage.show([&](BusWindow& window) {
        window.editor().select({0, 0});
        key(window.editor(), Qt::Key_C, Qt::ControlModifier);
        window.editor().select({1});
        key(window.editor(), Qt::Key_V, Qt::ControlModifier);
        window.editor().select({0, 0, 0});
        key(window.editor(), Qt::Key_C, Qt::ControlModifier);
        key(window.editor(), Qt::Key_V, Qt::ControlModifier);
        press(window, "ok");
    }));
    for (const auto* const command : {"MNA-2-1:Speed;", "TRA-2-1:00101;", "MN-2-1-1:SPEED;",
                                      "MWN-2-1-1-1:1;", "MN\\N-1-1:2;", "MN-1-1-2:SPEED;"}) {
        EXPECT_NE(stage.group().find(command), std::string::npos) << command;
    }
    EXPECT_EQ(stage.definition.listKnownTerminals(2).remote.size(), 1U);
}

TEST(BusWindow, AMessageIsCopiedToAnotherDocument) {
    WindowStage from(smallBus());
    from.show([](BusWindow& window) {
        window.editor().select({0, 0});
        run(window, "copy");
        press(window, "cancel");
    });
    WindowStage to({"NBS\\N:1", "BID-1:111", "NMS\\N-1:0"}, 2009);
    EXPECT_TRUE(to.show([](BusWindow& window) {
        window.editor().select({0});
        run(window, "paste");
        EXPECT_EQ(labels(window, window.editor().tree()->currentIndex().parent()),
                  (std::vector<std::string>{"12 Speed"}));
        press(window, "ok");
    }));
    EXPECT_NE(to.group().find("MN-1-1-1:SPEED;"), std::string::npos);
}

TEST(BusWindow, WhatIsNoRowOfTheGroupIsNotPasted) {
    WindowStage stage(smallBus());
    const auto before = stage.definition.group;
    const std::vector<TableRows> wrong = {
        {},
        {{"0"}},
        {{"0", "2", "MNA"}},
        {{"0", "2", "XYZ", "1"}},
        {{"0", "2", "MNA", "a;B-1\\DLN:x"}},
        {{"0", "3", "MN", "A"}},
        {{"0", "2", "MNA", "A"}, {"7", "3", "MN", "A"}},
        {{"0", "2", "MNA", "A"}, {"0", "2", "MNA", "B"}},
    };
    stage.show([&](BusWindow& window) {
        window.editor().select({0});
        for (const auto& own : wrong) {
            stage.ui().boxes.clear();
            copyTable({.rows = {{"x"}}, .kind = "bus-message", .own = own});
            run(window, "paste");
            EXPECT_EQ(stage.definition.group, before);
        }
        EXPECT_FALSE(window.isChanged());
        press(window, "cancel");
    });
}

TEST(BusWindow, ASearchGoesFromNameToName) {
    WindowStage stage(smallBus({"MN\\N-1-1:2", "MN-1-1-2:ALTITUDE"}));
    stage.show([](BusWindow& window) {
        type(window, "find", QStringLiteral("altitude"));
        QTest::keyClick(find<QWidget>(window, "find"), Qt::Key_Return);
        EXPECT_EQ(window.editor().current(), (TreePath{0, 0, 1}));
        EXPECT_TRUE(window.isVisible());
        press(window, "cancel");
    });
}

TEST(BusWindow, EscapeAsksOnlyIfSomethingHasChanged) {
    WindowStage stage(smallBus());
    stage.show([](BusWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); });
    EXPECT_TRUE(stage.ui().boxes.empty());
    stage.show([&](BusWindow& window) {
        type(window, "TA", QStringLiteral("x"));
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_TRUE(window.isVisible());
        stage.ui().otherwise = Button::Yes;
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    EXPECT_EQ(stage.ui().boxes.size(), 2U);
}

TEST(BusWindow, AGroupThatCannotBeWrittenKeepsTheWindowOpen) {
    WindowStage stage(smallBus());
    bool packs = false;
    BusWindow window(
        stage.setup, [&] { return packs; }, nullptr);
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("x"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        packs = true;
        press(dialog, "ok");
    });
    EXPECT_EQ(runDialog(stage.door, window), QDialog::Accepted);
}

}  // namespace
}  // namespace kavu
