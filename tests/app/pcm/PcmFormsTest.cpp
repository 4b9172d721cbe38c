#include "app/bus/GroupTreeEditor.h"
#include "app/framework/FormContext.h"
#include "app/framework/PropertySheet.h"
#include "app/pcm/MajorFrameWindow.h"
#include "app/pcm/PcmForms.h"
#include "app/pcm/SheetStage.h"
#include "conversion/ConversionStore.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/OpenDocument.h"
#include "groups/MeasurementNames.h"
#include "support/TestApplication.h"

#include <algorithm>
#include <map>

#include <QTreeView>

namespace kavu {
namespace {

using test::pick;
using test::press;

/// A document with the streams "PCM 1" (class 2) and "Messages" of one data source.
class PcmFormsTest : public ::testing::Test {
  protected:
    PcmFormsTest() {
        auto& document = t.application.context().document;
        document.version = 2009;
        document.open = true;
        form.edition = 2009;
        put("[kavu]GTMP.G", "G\\DSI\\N:1;\r\nG\\DSI-1:Aircraft;\r\nG\\DST-1:RF;\r\n");
        put("[kavu]MULT.M01",
            "M-1\\ID:Aircraft;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:PCM 1;\r\nM-1\\SI\\N:1;\r\n"
            "M-1\\SI1-1:1;\r\nM-1\\SI\\DLN-1:Messages;\r\n");
        put("[kavu]PCMFMT.P01",
            "P-1\\DLN:PCM 1;\r\nP-1\\TF:TWO;\r\nP-1\\F1:16;\r\nP-1\\MF\\N:4;\r\nP-1\\MF1:8;\r\n"
            "P-1\\MF2:136;\r\nP-1\\MF4:24;\r\nP-1\\MF5:111110101111001100100000;\r\n");
    }
    void put(std::string_view name, std::string_view bytes) {
        test::writeFile(t.application.context().store.pathOf(name), bytes);
    }
    std::string pGroup() {
        return test::readFile(t.application.context().store.pathOf("[kavu]PCMFMT.P01"));
    }
    std::string messageGroup() {
        return test::readFile(t.application.context().store.pathOf("[kavu]PCMS.S01"));
    }
    bool edit(const std::optional<std::string>& name = std::nullopt) {
        return editStream(form, t.application, name);
    }

    /// Files of the conversion records by name, in the working store or in the copies.
    std::map<std::string, std::string> records(const std::string& folder = {}) {
        EXPECT_TRUE(t.application.conversions().writeOut().ok());
        const auto path = t.application.context().store.pathOf(folder.empty() ? "." : folder);
        std::map<std::string, std::string> files;
        std::vector<FolderEntry> entries;
        (void)listFolder(path, entries);
        for (const auto& entry : entries) {
            if (matchesWildcard(entry.name, "[kavu]*.C_*")) {
                files[entry.name] = test::readFile(path + "/" + entry.name);
            }
        }
        return files;
    }
    bool hasCopies() { return folderExists(t.application.context().store.pathOf("EuDefinitions")); }
    /// Records, and a stream that is read without a correction.
    void makeRecords() {
        put("[kavu]PCMMEAS.D01",
            "D-1\\DLN:PCM 1;\r\nD-1\\ML\\N:1;\r\nD-1\\MLN-1:L;\r\nD-1\\MN\\N-1:1;\r\n"
            "D-1\\MN-1-1:M1;\r\nD-1\\LT-1-1:MF;\r\nD-1\\MF-1-1:3;\r\nD-1\\MFM-1-1:FW;\r\n");
        auto& conversions = t.application.conversions();
        const ChangeScope scope(t.application.context().files);
        for (const auto* const name : {"M1", "M2"}) {
            ASSERT_TRUE(conversions.createDefaultDefinition(nullptr, name, false));
        }
        ASSERT_TRUE(conversions.writeEuComment(nullptr, "M2", std::string(40000, 'c'), false));
    }
    /// Stands for what the display does to the records while the sheet is open.
    void changeRecords() {
        auto& conversions = t.application.conversions();
        EXPECT_TRUE(conversions.renameDefinition(nullptr, "Renamed", "M1"));
        EXPECT_TRUE(conversions.deleteDefinition(nullptr, "M2"));
    }

    test::TestApplication t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

TEST_F(PcmFormsTest, AStreamIsChosenFromAllLinksWithTheirKinds) {
    t.ui.rows = {0};
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit PCM Attributes - Data Link: PCM 1"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit());
    ASSERT_EQ(t.ui.tablePrompts.size(), 1U);
    EXPECT_EQ(t.ui.tablePrompts[0].title, "Select Data Link");
    ASSERT_EQ(t.ui.tablePrompts[0].rows.size(), 2U);
    EXPECT_EQ(t.ui.tablePrompts[0].rows[0],
              (std::vector<std::string>{"PCM 1", "PCM (Class 2)", "Aircraft"}));
    EXPECT_FALSE(t.application.pcmFormat().loaded()) << "Cancel closes the stream";
}

TEST_F(PcmFormsTest, OkWritesTheStreamAndClosesIt) {
    door.next([](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(edit("PCM 1"));
    EXPECT_NE(pGroup().find("P-1\\D3:E;"), std::string::npos);
    EXPECT_TRUE(t.application.context().document.changed);
    EXPECT_FALSE(t.application.pcmFormat().loaded());
}

TEST_F(PcmFormsTest, TheDisplayReachesTheListOfConversions) {
    bool listed = false;
    door.next([&](QDialog& sheet) {
        door.next([&](QDialog& display) {
            door.next([&](QDialog& list) {
                listed = list.objectName() == QStringLiteral("edit_data_conversion_from_menu");
                list.reject();
            });
            auto* const entry = display.findChild<QAction*>(QStringLiteral("conversions"));
            ASSERT_NE(entry, nullptr);
            EXPECT_TRUE(entry->isEnabled());
            entry->trigger();
            display.close();
        });
        press(sheet, "viewEditStream");
        press(sheet, "cancel");
    });
    edit("PCM 1");
    EXPECT_TRUE(listed);
}

TEST_F(PcmFormsTest, CancelAfterAnEditWritesNothing) {
    const auto before = pGroup();
    t.ui.otherwise = Button::Yes;
    door.next([](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_EQ(pGroup(), before);
}

TEST_F(PcmFormsTest, ConversionRecordsAreCopiedAtTheStartAndPutBackByCancelWithoutAChange) {
    makeRecords();
    const auto before = records();
    ASSERT_EQ(before.size(), 2U) << "a chunk and a comment";
    door.next([&](QDialog& dialog) {
        EXPECT_TRUE(records("EuDefinitions") == before);
        changeRecords();
        EXPECT_FALSE(records() == before);
        t.application.context().document.changed = true;
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_FALSE(t.application.context().document.changed) << "it is what it was";
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_TRUE(records() == before);
    EXPECT_FALSE(hasCopies());
    EXPECT_TRUE(t.application.conversions().locateDefinition("M2").found);
    EXPECT_NE(std::find(t.ui.statusTexts.begin(), t.ui.statusTexts.end(), "Restoring EU files"),
              t.ui.statusTexts.end());
}

TEST_F(PcmFormsTest, CancelAfterAChangeThatWasNotSavedPutsTheRecordsBackToo) {
    makeRecords();
    const auto before = records();
    t.ui.otherwise = Button::Yes;
    door.next([&](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        changeRecords();
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_TRUE(records() == before) << "what was cancelled takes no effect";
    EXPECT_FALSE(hasCopies());
}

TEST_F(PcmFormsTest, ClosingTheWindowWithoutSavingPutsTheRecordsBack) {
    makeRecords();
    const auto before = records();
    t.ui.otherwise = Button::No;
    door.next([&](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        changeRecords();
        dialog.close();
    });
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_TRUE(records() == before);
}

TEST_F(PcmFormsTest, OkKeepsWhatWasDoneToTheRecordsAndDeletesTheCopies) {
    for (const bool change : {true, false}) {
        makeRecords();
        std::map<std::string, std::string> changed;
        door.next([&](QDialog& dialog) {
            if (change) {
                pick(dialog, "D3", QStringLiteral("Encrypted"));
            }
            changeRecords();
            changed = records();
            press(dialog, "ok");
        });
        EXPECT_EQ(edit("PCM 1"), change);
        EXPECT_TRUE(records() == changed) << change;
        EXPECT_FALSE(hasCopies());
        EXPECT_TRUE(t.application.conversions().locateDefinition("Renamed").found);
        const ChangeScope scope(t.application.context().files);
        ASSERT_TRUE(t.application.conversions().deleteDefinition(nullptr, "Renamed"));
    }
}

TEST_F(PcmFormsTest, CancelAfterApplyKeepsWhatWasAppliedAndTakesBackTheRest) {
    makeRecords();
    std::map<std::string, std::string> applied;
    t.ui.otherwise = Button::Yes;
    door.next([&](QDialog& dialog) {
        pick(dialog, "D3", QStringLiteral("Encrypted"));
        changeRecords();
        applied = records();
        press(dialog, "apply");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_NE(pGroup().find("P-1\\D3:E;"), std::string::npos) << "Apply saves";
        EXPECT_TRUE(records("EuDefinitions") == applied);
        pick(dialog, "D3", QStringLiteral("Unencrypted"));
        EXPECT_TRUE(t.application.conversions().createDefaultDefinition(nullptr, "After", false));
        press(dialog, "cancel");
    });
    EXPECT_TRUE(edit("PCM 1")) << "the stream was written";
    EXPECT_NE(pGroup().find("P-1\\D3:E;"), std::string::npos);
    EXPECT_TRUE(t.application.context().document.changed);
    EXPECT_TRUE(records() == applied);
    EXPECT_FALSE(t.application.conversions().locateDefinition("After").found);
}

TEST_F(PcmFormsTest, NamesThatWereForgottenAreKnownAgainAfterCancel) {
    put("[kavu]PCMMEAS.D01", "D-1\\DLN:PCM 1;\r\nD-1\\MN-1-1:M1;\r\n");
    auto& names = t.application.measurementNames();
    ASSERT_TRUE(names.checkForDuplicates(nullptr));
    for (const bool ok : {false, true}) {
        door.next([&](QDialog& dialog) {
            names.forget("M1");
            press(dialog, ok ? "ok" : "cancel");
        });
        edit("PCM 1");
        EXPECT_EQ(names.names().size(), ok ? 0U : 1U);
    }
}

TEST_F(PcmFormsTest, ALoadThatIsCancelledLeavesTheRecordsAndNoCopies) {
    makeRecords();
    const auto before = records();
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_TRUE(door.names.empty());
    EXPECT_FALSE(hasCopies());
    EXPECT_TRUE(records() == before);
}

TEST_F(PcmFormsTest, AMoveThatSavesTheStreamKeepsItsRecordsWhenTheSheetIsCancelled) {
    makeRecords();
    std::map<std::string, std::string> moved;
    t.ui.otherwise = Button::Yes;
    t.ui.choices = {4};
    door.next([&](QDialog& sheet) {
        door.next([&](QDialog& display) {
            changeRecords();
            moved = records();
            door.next([](QDialog& word) { press(word, "move"); });
            static_cast<MajorFrameWindow&>(display).editCell(3, 1);
            EXPECT_TRUE(
                t.application.conversions().createDefaultDefinition(nullptr, "After", false));
            display.close();
        });
        press(sheet, "viewEditStream");
        press(sheet, "cancel");
    });
    EXPECT_TRUE(edit("PCM 1"));
    EXPECT_NE(
        test::readFile(t.application.context().store.pathOf("[kavu]PCMMEAS.D01")).find("MF-1-1:5"),
        std::string::npos);
    EXPECT_TRUE(records() == moved) << "as they were when the stream was saved";
}

TEST_F(PcmFormsTest, MessageDataWithoutAFormatOpensItsEditorAtOnce) {
    put("[kavu]PCMS.S01", "S-1\\DLN:Messages;\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("Edit Message Attributes - Data Link: Messages"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("Messages"));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(PcmFormsTest, PacketsWithoutAFormatOpenTheirEditorAtOnce) {
    t.application.context().document.version = 2007;
    form.edition = 2007;
    put("[kavu]PCMS.S01", "S-1\\DLN:Messages;\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("Edit Packet Attributes - Data Link: Messages"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("Messages"));
}

TEST_F(PcmFormsTest, AFormatWithMessageDataHasAButtonForIt) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("editMessages")), nullptr);
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1")) << "a stream without message data has none";
    put("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\nS-1\\TA:X1;\r\nS-1\\NS\\N:0;\r\n");
    door.next([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit PCM Attributes - Data Link: PCM 1"));
        EXPECT_EQ(test::buttonText(dialog, "editMessages"), QStringLiteral("Edit Message &Data"));
        door.next([](QDialog& messages) {
            EXPECT_EQ(messages.windowTitle(),
                      QStringLiteral("Edit Message Attributes - Data Link: PCM 1"));
            dynamic_cast<PropertySheet&>(messages).openPage(1);
            test::type(messages, "TA", QStringLiteral("Y2"));
            press(messages, "ok");
        });
        press(dialog, "editMessages");
        press(dialog, "ok");
    });
    EXPECT_TRUE(edit("PCM 1"));
    EXPECT_NE(messageGroup().find("TA:Y2"), std::string::npos);
    EXPECT_TRUE(t.application.context().history.canUndo());
}

TEST_F(PcmFormsTest, CancelOfTheSheetTakesBackItsMessageDataAfterAQuestion) {
    put("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\nS-1\\TA:X1;\r\nS-1\\NS\\N:0;\r\n");
    t.ui.queued = {Button::Yes};
    door.next([this](QDialog& dialog) {
        door.next([](QDialog& messages) {
            dynamic_cast<PropertySheet&>(messages).openPage(1);
            test::type(messages, "TA", QStringLiteral("Y2"));
            press(messages, "ok");
        });
        press(dialog, "editMessages");
        EXPECT_NE(messageGroup().find("TA:Y2"), std::string::npos);
        press(dialog, "cancel");
        EXPECT_NE(t.ui.boxes.back().text.find("Items have changed"), std::string::npos);
    });
    EXPECT_FALSE(edit("PCM 1"));
    EXPECT_NE(messageGroup().find("TA:X1"), std::string::npos);
    EXPECT_FALSE(t.application.context().history.canUndo());
}

TEST_F(PcmFormsTest, AStreamOfPacketsShowsItsPackets) {
    t.application.context().document.version = 2007;
    form.edition = 2007;
    put("[kavu]PCMFMT.P01",
        "P-1\\DLN:PCM 1;\r\nP-1\\TF:PKTM;\r\nP-1\\F1:16;\r\nP-1\\MF\\N:1;\r\nP-1\\MF1:8;\r\n"
        "P-1\\MF2:136;\r\nP-1\\MF4:24;\r\nP-1\\MF5:111110101111001100100000;\r\n");
    put("[kavu]PCMS.S01", "S-1\\DLN:PCM 1;\r\nS-1\\TFL:100;\r\n");
    door.next([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("Edit Packet Attributes - Data Link: PCM 1"));
        door.next([](QDialog& packets) {
            dynamic_cast<PropertySheet&>(packets).openPage(1);
            test::type(packets, "TFL", QStringLiteral("200"));
            press(packets, "ok");
        });
        press(dialog, "viewEditStream");
        press(dialog, "ok");
    });
    EXPECT_TRUE(edit("PCM 1"));
    EXPECT_NE(messageGroup().find("TFL:200"), std::string::npos);
}

TEST_F(PcmFormsTest, ALinkWithoutAStreamIsTold) {
    EXPECT_FALSE(edit("Nobody"));
    EXPECT_TRUE(t.ui.hasText("No stream bears the data link name 'Nobody'."));
}

TEST_F(PcmFormsTest, NothingChosenOpensNothing) {
    t.ui.rows = {-1};
    EXPECT_FALSE(edit());
    EXPECT_TRUE(door.names.empty());
    EXPECT_TRUE(t.ui.boxes.empty());
}

constexpr const char* kBusFormat =
    "P-1\\DLN:PCM 1;\r\nP-1\\TF:1553;\r\nP-1\\F1:24;\r\nP-1\\MF\\N:1;\r\nP-1\\MF1:128;\r\n"
    "P-1\\MF2:3072;\r\nP-1\\MF4:24;\r\nP-1\\MF5:111110101111001100100000;\r\n";
constexpr const char* kBusGroup =
    "B-1\\DLN:PCM 1;\r\nB-1\\TA:X1;\r\nB-1\\NBS\\N:1;\r\nB-1\\BID-1:001;\r\nB-1\\BNA-1:Left;\r\n"
    "B-1\\TK\\N-1:0;\r\nB-1\\NMS\\N-1:0;\r\n";

TEST_F(PcmFormsTest, ABusIsCopiedBackToItsGroupWhenTheStreamIsSaved) {
    put("[kavu]PCMFMT.P01", kBusFormat);
    put("[kavu]PCM1553.B01", kBusGroup);
    t.ui.otherwise = Button::Yes;
    const auto bus = [this] {
        return test::readFile(t.application.context().store.pathOf("[kavu]PCM1553.B01"));
    };
    const auto deleteBus = [](QDialog& dialog) {
        auto* const editor = dialog.findChild<GroupTreeEditor*>();
        ASSERT_NE(editor, nullptr);
        editor->select({0});
        editor->tree()->setFocus();
        QTest::keyClick(editor->tree(), Qt::Key_Delete);
        press(dialog, "ok");
    };
    for (const auto* const button : {"cancel", "ok"}) {
        door.next([&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(),
                      QStringLiteral("Edit Bus Attributes - Data Link: PCM 1"));
            door.next(deleteBus);
            press(dialog, "viewEditStream");
            EXPECT_NE(bus().find("BNA-1:Left"), std::string::npos) << "not before the stream";
            press(dialog, button);
        });
        (void)edit("PCM 1");
        EXPECT_EQ(bus().find("BNA-1:Left") == std::string::npos, button == std::string("ok"));
    }
    EXPECT_NE(bus().find("NBS\\N:0;"), std::string::npos) << bus();
}

TEST_F(PcmFormsTest, ABusWithoutAFormatOpensItsEditorAtOnce) {
    put("[kavu]PCM1553.B01", "B-1\\DLN:Messages;\r\nB-1\\NBS\\N:0;\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("1553_select_bus"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("Messages"));
}

TEST_F(PcmFormsTest, AStreamThatHasStayedInMemoryIsReadAnew) {
    auto& format = t.application.pcmFormat();
    ASSERT_TRUE(loadPcmFormat(format, nullptr, t.application.pcmSteps(), "PCM 1"));
    format.encryption = "E";
    door.next([](QDialog& dialog) {
        EXPECT_EQ(test::chosen(dialog, "D3"), QString());
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1"));
}

}  // namespace
}  // namespace kavu
