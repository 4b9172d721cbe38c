#include "app/framework/FormContext.h"
#include "app/pcm/PcmForms.h"
#include "app/pcm/SheetStage.h"
#include "core/OpenDocument.h"
#include "support/TestApplication.h"

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
    bool edit(const std::optional<std::string>& name = std::nullopt) {
        return editStream(form, t.application, name);
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

TEST_F(PcmFormsTest, MessageDataHasNoEditorAndSaysSo) {
    put("[kavu]PCMS.S01", "S-1\\DLN:Messages;\r\n");
    EXPECT_FALSE(edit("Messages"));
    EXPECT_TRUE(door.names.empty());
    ASSERT_FALSE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.boxes.back().title, "Edit Stream Format Information");
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

TEST_F(PcmFormsTest, ABusStreamHasItsAttributesButNoViewYet) {
    put("[kavu]PCMFMT.P01",
        "P-1\\DLN:PCM 1;\r\nP-1\\TF:1553;\r\nP-1\\F1:24;\r\nP-1\\MF\\N:1;\r\nP-1\\MF1:128;\r\n"
        "P-1\\MF2:3072;\r\nP-1\\MF4:24;\r\nP-1\\MF5:111110101111001100100000;\r\n");
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bus Attributes - Data Link: PCM 1"));
        EXPECT_FALSE(test::enabled(dialog, "viewEditStream"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(edit("PCM 1"));
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
