// Counters, subframes and async formats as a user edits them: a document's stream is opened,
// edited in its windows, and saved.
#include "app/framework/FormContext.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/PcmForms.h"
#include "app/pcm/SheetStage.h"
#include "pcm/structure/AsyncEdit.h"
#include "support/TestApplication.h"

#include <QAction>
#include <QListWidget>

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::plainFormat;
using test::press;
using test::wordFrame;
using test::operator+;

/// What a stream without measurements asks for when it is opened: new ones are of the types
/// that know subframes.
constexpr int kOlderTypes = 1;

class StreamFormsTest : public ::testing::Test {
  protected:
    void start(int edition, const Commands& pGroup, const Commands& dGroup = listOf({})) {
        auto& document = t.application.context().document;
        document.version = edition;
        document.open = true;
        form.edition = edition;
        put("[kavu]PCMFMT.P01", "P-1\\", pGroup);
        put("[kavu]PCMMEAS.D01", "D-1\\", dGroup);
    }
    void put(std::string_view file, const std::string& prefix, const Commands& commands) {
        std::string text = prefix + "DLN:PCM 1;\r\n";
        for (const auto& command : commands) {
            text += prefix + command + ";\r\n";
        }
        test::writeFile(t.application.context().store.pathOf(file), text);
    }
    /// Opens the sheet of the stream, drives it, and leaves it with OK.
    bool edit(const test::TestDoor::Driver& drive = [](QDialog&) {}) {
        door.next([&](QDialog& sheet) {
            drive(sheet);
            press(sheet, "ok");
        });
        return editStream(form, t.application, "PCM 1");
    }
    /// The same with the display of its major frame, which is closed at the end.
    bool display(const std::function<void(MajorFrameWindow&)>& drive) {
        return edit([&](QDialog& sheet) {
            door.next([&](QDialog& dialog) {
                auto& window = dynamic_cast<MajorFrameWindow&>(dialog);
                window.resize(1000, 700);
                QApplication::processEvents();
                drive(window);
                press(window, "close");
            });
            press(sheet, "viewEditStream");
        });
    }
    static void choose(MajorFrameWindow& window, const char* entry) {
        auto* const action = window.findChild<QAction*>(QLatin1String(entry));
        ASSERT_NE(action, nullptr) << entry;
        EXPECT_TRUE(action->isEnabled()) << entry;
        action->trigger();
        QApplication::processEvents();
    }
    /// The label of a word leads to its counter or subframe.
    static void chooseLabel(MajorFrameWindow& window, int word) {
        window.areas().goToCell(word, 1);
        choose(window, "editSubframe");
    }

    PcmFormat& format() { return t.application.pcmFormat(); }
    std::string pGroup() {
        return test::readFile(t.application.context().store.pathOf("[kavu]PCMFMT.P01"));
    }
    [[nodiscard]] bool wrote(const std::string& command) {
        return pGroup().find("P-1\\" + command + ";") != std::string::npos;
    }
    /// The only box with a number.
    const MessageBox* box(int id) {
        const MessageBox* found = nullptr;
        for (const auto& each : t.ui.boxes) {
            found = std::abs(each.id) == id ? &each : found;
        }
        EXPECT_EQ(t.ui.countBoxes(id), 1) << id;
        return found;
    }
    void expectBox(int id, int titleId, const std::string& part) {
        if (const auto* const found = box(id)) {
            EXPECT_EQ(found->titleId, titleId) << id;
            EXPECT_NE(found->text.find(part), std::string::npos) << found->text;
        }
    }

    test::TestApplication t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

Commands embedded(const std::string& supercom, const Commands& more) {
    return Commands{"AEF\\N:1", "AEF\\DLN-1:INNER", "AEF1-1:" + supercom} + more;
}

// --- the question for a counter ---------------------------------------------------------------

TEST_F(StreamFormsTest, AStreamWithoutACounterAsksForOneAndItsWordIsChosen) {
    start(2011, plainFormat(8, 4));
    t.ui.byId[357] = Button::Yes;
    t.ui.choices = {4};
    EXPECT_TRUE(edit()) << "the new counter is saved, though nothing else was edited";
    expectBox(357, 78, "Would you like to create an ID Counter now?");
    ASSERT_FALSE(t.ui.listPrompts.empty());
    EXPECT_EQ(t.ui.listPrompts.front().first, "Enter ID Counter FWP");
    EXPECT_EQ(t.ui.listPrompts.front().second,
              (std::vector<std::string>{"2", "3", "4", "5", "6", "7"}))
        << "word 1 is the one that asks";
    EXPECT_TRUE(wrote("ISF\\N:1"));
    EXPECT_TRUE(wrote("ISF1-1:SFID"));
    EXPECT_TRUE(wrote("IDC1-1:6"));
}

TEST_F(StreamFormsTest, ANoToTheQuestionForACounterOpensTheStreamAllTheSame) {
    start(2011, plainFormat(8, 4));
    t.ui.byId[357] = Button::No;
    EXPECT_FALSE(edit());
    expectBox(357, 78, "no ID Counter has been defined yet");
    EXPECT_TRUE(t.ui.listPrompts.empty());
}

TEST_F(StreamFormsTest, AMeasurementInSomeFramesAsksForACounterByItsName) {
    start(2009, plainFormat(16, 8), listOf({wordFrame("TEMP", 5, 2, 2, 8)}));
    t.ui.byId[358] = Button::Yes;
    t.ui.choices = {10};
    EXPECT_TRUE(edit());
    expectBox(358, 78, "Error reading measurement 'TEMP'.");
    ASSERT_FALSE(t.ui.listPrompts.empty());
    EXPECT_EQ(t.ui.listPrompts.front().first, "Enter ID Counter FWP");
    EXPECT_EQ(t.ui.listPrompts.front().second.size(), 14U) << "word 5 is left out";
    EXPECT_TRUE(wrote("IDC1-1:12"));
    EXPECT_TRUE(wrote("SF\\N-1:0")) << "the subframe of the measurement is hidden";
}

// --- what a load has to tell -------------------------------------------------------------------

TEST_F(StreamFormsTest, WhatIsWrongWithCountersAndSubframesIsShownWhenTheStreamIsOpened) {
    start(2009, plainFormat(32, 8) +
                    Commands{"ISF\\N:3", "IDC1-1:30", "IDC2-1:16", "IDC3-1:0", "IDC7-1:0",
                             "IDC8-1:3", "IDC9-1:99", "IDC10-1:INC", "ISF1-2:SFID", "ISF1-3:OUT",
                             "ISF2-3:ID", "IDC1-3:99"} +
                    Commands{"SF\\N-1:6", "SF1-1-1:A", "SF3-1-1:FI", "SF4-1-1-1:2", "SF6-1-1:1",
                             "SF2-1-2:3", "SF4-1-2-1:99", "SF1-1-3:A", "SF1-1-4:C", "SF6-1-4:4",
                             "SF1-1-5:D", "SF4-1-5-1:2", "SF6-1-5:4", "SF1-1-6:E", "SF2-1-6:3",
                             "SF3-1-6:FI", "SF4-1-6-1:28", "SF5-1-6:1", "SF6-1-6:4"});
    t.ui.choices = {kOlderTypes};
    edit();
    for (const int id : {179, 182, 183, 184, 185, 186, 199, 200, 201, 202, 203, 204, 205, 208, 209,
                         210, 211, 212, 213}) {
        EXPECT_EQ(t.ui.countLogs(id), id == 201 ? 2 : 1) << id;
    }
    EXPECT_FALSE(t.ui.shown.empty());
}

TEST_F(StreamFormsTest, CountsBeyondTheirLimitAreShownWhenTheStreamIsOpened) {
    start(2009, plainFormat(32, 8) + Commands{"ISF\\N:120", "SF\\N-1:10000", "AEF\\N:19",
                                              "AEF\\DLN-1:INNER", "AEF3-1-1:7"});
    t.ui.choices = {kOlderTypes};
    display([&](MajorFrameWindow&) {
        EXPECT_EQ(countIdCounters(format()), kMostIdCounters);
        EXPECT_EQ(format().asyncCount(), 0);
    });
    for (const int id : {177, 180, 187}) {
        EXPECT_EQ(t.ui.countLogs(id), 1) << id;
    }
    EXPECT_FALSE(t.ui.shown.empty());
}

TEST_F(StreamFormsTest, WhatIsWrongWithAsyncFormatsIsShownWhenTheStreamIsOpened) {
    start(2011,
          plainFormat(32, 8) + counterAt(30, 8) +
              Commands{"AEF\\N:6", "AEF1-1:3", "AEF\\DLN-2:B", "AEF1-2:3", "AEF2-2:FI",
                       "AEF3-2-1:4", "AEF\\DLN-3:C", "AEF\\DLN-4:D", "AEF3-4-1:99", "AEF\\DLN-5:E",
                       "AEF3-5-1:30", "AEF\\DLN-6:F", "AEF3-6-1:5", "AEF5-6-1:99", "AEF7-6-1:1",
                       "AEF8-6-1-1:9", "AEF9-6-1-1:-1", "AEF10-6-1-1:99"});
    display([&](MajorFrameWindow&) {
        ASSERT_EQ(format().asyncCount(), 1);
        EXPECT_EQ(format().asyncFormats[0].dataLinkName, "F");
    });
    for (const int id : {191, 192, 193, 194, 195, 196, 207, 214}) {
        EXPECT_EQ(t.ui.countLogs(id), id == 214 ? 3 : 1) << id;
    }
    EXPECT_FALSE(t.ui.shown.empty());
}

// --- making counters and subframes ------------------------------------------------------------

TEST_F(StreamFormsTest, ASubframeNeedsACounter) {
    start(2009, plainFormat(16, 8));
    t.ui.choices = {kOlderTypes, 0};
    display([&](MajorFrameWindow& window) { chooseLabel(window, 5); });
    ASSERT_FALSE(t.ui.listPrompts.empty());
    EXPECT_EQ(t.ui.listPrompts.back().first, "Which type of subframe do you wish to create?");
    EXPECT_EQ(t.ui.listPrompts.back().second,
              (std::vector<std::string>{"Create Subframe", "Create ID Counter"}));
    expectBox(355, 78, "there must be at least one ID Counter defined");
}

TEST_F(StreamFormsTest, WhileMeasurementsDoWithoutSubframesOnlyACounterIsOffered) {
    start(2009, plainFormat(16, 8) + counterAt(15, 8), listOf({wordFrame("TEMP", 5, 2, 2, 8)}));
    t.ui.choices = {0};
    display([&](MajorFrameWindow& window) {
        ASSERT_TRUE(format().implicitSubframes);
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Create New ID Counter Definition (FWP: 7)"));
            press(dialog, "cancel");
        });
        chooseLabel(window, 7);
        EXPECT_EQ(format().wordType(7), WordType::Minor);
    });
    expectBox(233, 80, "The 'Create Subframe' function has been disabled");
    EXPECT_EQ(t.ui.listPrompts.front().second, std::vector<std::string>{"Create ID Counter"});
}

TEST_F(StreamFormsTest, ThereAreAtMostNinetyNineCounters) {
    start(2009, plainFormat(128, 8));
    t.ui.choices = {kOlderTypes, 1};
    display([&](MajorFrameWindow& window) {
        for (int word = 1; word <= kMostIdCounters; ++word) {
            ASSERT_TRUE(createIdCounter(format(), nullptr, word));
        }
        chooseLabel(window, 120);
        EXPECT_EQ(format().wordType(120), WordType::Minor);
    });
    expectBox(177, 78, "up to 99 ID Counter definitions");
}

TEST_F(StreamFormsTest, CancelOfANewCounterLeavesWhatStoodInItsWord) {
    start(2011, plainFormat(16, 8) + counterAt(15, 8),
          listOf({wordFrame("TEMP", 5, 2, 2, 8), wordFrame("EVERY", 5, 1, 1, 8)}));
    EXPECT_FALSE(display([&](MajorFrameWindow& window) {
        const auto before = format().cells().places("TEMP").size();
        ASSERT_EQ(before, 4U);
        t.ui.queued = {Button::Yes};  // the counter would take TEMP along
        door.next([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Create New ID Counter Definition (FWP: 5)"));
            press(dialog, "cancel");
        });
        chooseLabel(window, 5);
        EXPECT_EQ(format().wordType(5), WordType::Subframe);
        EXPECT_EQ(format().cells().places("TEMP").size(), before);
        EXPECT_EQ(format().cells().places("EVERY").size(), 8U);
        EXPECT_EQ(countIdCounters(format()), 1);
    }));
}

// --- edge cases of counters -------------------------------------------------------------------

TEST_F(StreamFormsTest, DeletingTheSecondOfThreeCountersLeavesAHoleAndTheLastIsLostWhenReadAgain) {
    start(2009, plainFormat(16, 8) + counterAt(1, 8));
    t.ui.choices = {kOlderTypes};
    t.ui.byId[129] = Button::Yes;
    EXPECT_TRUE(display([&](MajorFrameWindow& window) {
        for (const int word : {2, 3}) {
            t.ui.choices = {1};
            door.next([](QDialog& dialog) { press(dialog, "ok"); });
            chooseLabel(window, word);
        }
        door.next([](QDialog& dialog) { press(dialog, "delete"); });
        chooseLabel(window, 2);
        EXPECT_EQ(format().wordType(2), WordType::Minor);
    }));
    expectBox(129, 128, "You are about to permanently delete this ID Counter definition");
    for (const auto* const line : {"ISF\\N:2", "ISF1-1:SFID", "ISF1-3:SFID3", "IDC1-3:3"}) {
        EXPECT_TRUE(wrote(line)) << line;
    }
    EXPECT_EQ(pGroup().find("ISF1-2"), std::string::npos);
    t.ui.choices = {kOlderTypes};
    edit();
    EXPECT_EQ(t.ui.countLogs(203), 1);
    ASSERT_FALSE(t.ui.shown.empty()) << "what a load has to tell is shown before the sheet";
    EXPECT_TRUE(wrote("ISF\\N:1"));
}

TEST_F(StreamFormsTest, ACounterDownFromThreeOverEightFramesEndsAtOne) {
    auto commands = plainFormat(16, 8) + counterAt(1, 8);
    for (auto& command : commands) {
        command = command == "IDC6-1:1"      ? "IDC6-1:3"
                  : command == "IDC10-1:INC" ? "IDC10-1:DEC"
                                             : command;
    }
    start(2009, commands);
    EXPECT_TRUE(display([&](MajorFrameWindow& window) {
        EXPECT_EQ(t.ui.countLogs(209), 1);
        t.ui.integers = {12, 3};
        door.next([&](QDialog& dialog) {
            const auto endValue = [&] { return test::find<QLineEdit>(dialog, "IDC8")->text(); };
            EXPECT_EQ(endValue(), QStringLiteral("1"));
            press(dialog, "IDC6");
            EXPECT_EQ(endValue(), QStringLiteral("5"));
            press(dialog, "IDC6");
            EXPECT_EQ(endValue(), QStringLiteral("1")) << "minus four is no value of a counter";
            press(dialog, "ok");
        });
        chooseLabel(window, 1);
    }));
    EXPECT_TRUE(wrote("IDC8-1:1"));
    EXPECT_TRUE(wrote("IDC10-1:DEC"));
}

// --- async formats ----------------------------------------------------------------------------

TEST_F(StreamFormsTest, AnEmbeddedFormatAtACounterIsToldWhenTheStreamIsOpened) {
    start(2009, plainFormat(16, 8) + counterAt(15, 8) +
                    Commands{"AEF\\N:2", "AEF\\DLN-1:FIRST", "AEF1-1:NO", "AEF3-1-1:15",
                             "AEF\\DLN-2:SECOND", "AEF1-2:NO", "AEF3-2-1:6"});
    display([&](MajorFrameWindow&) {
        EXPECT_EQ(t.ui.countLogs(196), 1);
        EXPECT_EQ(format().asyncCount(), 1);
        EXPECT_FALSE(isAsyncAt(format(), 15, 1, 0));
        EXPECT_TRUE(isAsyncAt(format(), 6, 1, 1)) << "the next record has moved up";
    });
    EXPECT_FALSE(t.ui.shown.empty());
}

TEST_F(StreamFormsTest, TooManyMergesAreToldWhenTheStreamIsOpened) {
    start(2009, plainFormat(32, 8) + Commands{"ADM\\N:18", "ADM\\DMN-1:M", "ADM3-1-1:7"});
    display([&](MajorFrameWindow&) { EXPECT_EQ(format().asyncCount(), 0); });
    EXPECT_EQ(t.ui.countLogs(215), 1);
    EXPECT_FALSE(t.ui.shown.empty());
}

TEST_F(StreamFormsTest, AStepThatHasMovedOutOfItsIntervalIsToldWhenTheStreamIsSaved) {
    start(2009, plainFormat(32, 8) + embedded("3", {"AEF2-1:FI", "AEF3-1-1:7", "AEF4-1:5"}));
    EXPECT_TRUE(display([&](MajorFrameWindow& window) {
        ASSERT_TRUE(isAsyncAt(format(), 12, 1, 1));
        t.ui.integers = {12, 12, 25};
        choose(window, "moveFwps");
    }));
    expectBox(236, 136,
              "(Frame Word Position: 12 Interval: 5 number of locations: 3) This Frame Word "
              "Position was not found to be part of this Async Format 'INNER'");
    EXPECT_TRUE(wrote("AEF3-1-1:7"));
}

/// From the newest edition on a counter may take a word of an async format: the question names the
/// format, which goes with it.
class AsyncUnderCounterTest : public StreamFormsTest {
  protected:
    void makeCounterAt(int word) {
        EXPECT_TRUE(display([&](MajorFrameWindow& window) {
            ASSERT_TRUE(isAsyncAt(format(), word, 5, 1));
            t.ui.queued = {Button::No};
            chooseLabel(window, word);
            ASSERT_FALSE(t.ui.boxes.empty());
            EXPECT_NE(t.ui.boxes.back().text.find("INNER"), std::string::npos)
                << t.ui.boxes.back().text;
            EXPECT_EQ(format().asyncCount(), 1);
            EXPECT_TRUE(isAsyncAt(format(), word, 5, 1)) << "No leaves all as it was";
            t.ui.queued = {Button::Yes};
            door.next([](QDialog& dialog) { press(dialog, "ok"); });
            chooseLabel(window, word);
            EXPECT_EQ(format().wordType(word), WordType::IdCounter);
            EXPECT_EQ(format().asyncCount(), 0);
        }));
        EXPECT_TRUE(wrote("AEF\\N:0"));
    }
};

TEST_F(AsyncUnderCounterTest, AFormatWithOneSlotIsNamedAndGoes) {
    start(2011, plainFormat(16, 8) + counterAt(15, 8) +
                    embedded("NO", {"AEF3-1-1:5", "AEF7-1-1:1", "AEF8-1-1-1:5", "AEF9-1-1-1:1",
                                    "AEF10-1-1-1:8"}));
    makeCounterAt(5);
}

TEST_F(AsyncUnderCounterTest, AFormatOfSeveralLocationsIsNamedAndGoes) {
    start(2011, plainFormat(16, 8) + counterAt(15, 8) +
                    embedded("2", {"AEF2-1:EL", "AEF3-1-1:4", "AEF3-1-2:5", "AEF7-1-2:1",
                                   "AEF8-1-2-1:5", "AEF9-1-2-1:1", "AEF10-1-2-1:8"}));
    makeCounterAt(5);
}

// --- what the groups hold and the model does not
// ---------------------------------------------------

/// A stream with commands of another program and a measurement that is left out; the second
/// measurement of its list is the first one of the frame.
struct KeptStream {
    Commands format = plainFormat(32, 8) + Commands{"VND:1"};
    Commands measurements = listOf({{"MN@:LATE", "LT@:MF", "MF@:9", "VND@:own"},
                                    {"MN@:EARLY", "LT@:MF", "MF@:5"},
                                    {"MN@:LEFT", "LT@:MF", "MFM@:0011"}});
};

TEST_F(StreamFormsTest, OkAsksWhetherToKeepWhatTheStreamDoesNotKnow) {
    for (const bool keeps : {true, false}) {
        start(2009, KeptStream().format, KeptStream().measurements);
        t.ui.boxes.clear();
        t.ui.otherwise = keeps ? Button::Yes : Button::No;
        EXPECT_TRUE(edit([](QDialog& sheet) { test::pick(sheet, "D3", QStringLiteral("E")); }));
        ASSERT_EQ(t.ui.boxes.size(), 1U);
        const auto& asked = t.ui.boxes.front();
        EXPECT_EQ(asked.title, "Keep Commands?");
        EXPECT_EQ(asked.defaultButton, Button::Yes);
        const auto group =
            pGroup() + test::readFile(t.application.context().store.pathOf("[kavu]PCMMEAS.D01"));
        EXPECT_TRUE(wrote("D3:E"));
        for (const auto* const command :
             {"P-1\\VND:1;", "D-1\\VND-1-2:own;", "D-1\\MN-1-3:LEFT;", "D-1\\MFM-1-3:0011;"}) {
            EXPECT_NE(asked.text.find(command), std::string::npos) << asked.text;
            EXPECT_EQ(group.find(command) != std::string::npos, keeps) << command << group;
        }
        EXPECT_NE(group.find(keeps ? "D-1\\MN\\N-1:3;" : "D-1\\MN\\N-1:2;"), std::string::npos);
    }
}

TEST_F(StreamFormsTest, TheSaveOfTheDisplayAsksTheSame) {
    for (const bool keeps : {true, false}) {
        start(2009, KeptStream().format, KeptStream().measurements);
        t.ui.boxes.clear();
        t.ui.otherwise = keeps ? Button::Yes : Button::No;
        t.ui.choices = {1};  // word 2
        door.next([&](QDialog& sheet) {
            door.next([&](QDialog& display) {
                door.next([](QDialog& word) { press(word, "move"); });
                dynamic_cast<MajorFrameWindow&>(display).editCell(9, 1);
                display.close();
            });
            press(sheet, "viewEditStream");
            t.ui.otherwise = Button::Yes;  // to the question of Cancel
            press(sheet, "cancel");
        });
        editStream(form, t.application, "PCM 1");
        EXPECT_TRUE(t.ui.hasText("D-1\\VND-1-1:own;")) << "LATE is the first one now";
        const auto group =
            test::readFile(t.application.context().store.pathOf("[kavu]PCMMEAS.D01"));
        EXPECT_NE(group.find("D-1\\MF-1-1:2;"), std::string::npos) << group;
        EXPECT_EQ(group.find("D-1\\VND-1-1:own;") != std::string::npos, keeps) << group;
        EXPECT_EQ(group.find("D-1\\MN-1-3:LEFT;") != std::string::npos, keeps) << group;
        EXPECT_EQ(wrote("VND:1"), keeps);
    }
}

}  // namespace
}  // namespace kavu
