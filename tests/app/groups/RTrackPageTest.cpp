#include "app/framework/EditableList.h"
#include "app/groups/RSheet.h"
#include "app/groups/RTrackPage.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "core/document/GroupFiles.h"
#include "support/TestContext.h"

#include <algorithm>

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

constexpr char kAnalog[] =
    "R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\TK3-1:FWD;\r\nR-1\\CHE-1:T;\r\n"
    "R-1\\CDT-1:ANAIN;\r\n";

void enter(QDialog& dialog, const std::string& title, const std::string& value) {
    EXPECT_EQ(toBytes(dialog.windowTitle()), title);
    EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << title;
    if (auto* box = dialog.findChild<QComboBox*>(QStringLiteral("value"))) {
        EXPECT_GE(box->findText(QString::fromStdString(value)), 0) << title << " " << value;
        box->setCurrentText(QString::fromStdString(value));
    } else {
        type(dialog, "value", QString::fromStdString(value));
    }
    press(dialog, "ok");
}

/// The last choice that has a text; null for a field without choices.
const Choice* lastShown(const Field& field) {
    const auto last = std::find_if(field.choices.rbegin(), field.choices.rend(),
                                   [](const Choice& choice) { return !choice.text.empty(); });
    return last == field.choices.rend() ? nullptr : &*last;
}

class RTrackPageTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('R', 1), bytes); }
    [[nodiscard]] std::string file() { return t.read(groupFile('R', 1)); }
    bool edit(int edition, const std::function<void(RecorderTrackPage&)>& drive,
              const char* end = "ok") {
        t.document.version = edition;
        form.edition = edition;
        door.next([&](QDialog& dialog) {
            auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
            sheet.openPage(7);
            QApplication::processEvents();
            drive(dynamic_cast<RecorderTrackPage&>(sheet.page(7)));
            press(dialog, end);
        });
        return editRecorder(form, t.context, "Deck", {{"Deck", "Radio"}, {"L1", "L2"}, {}, {}});
    }
    void expectPrompt(const std::string& title, const std::string& value) {
        door.next([title, value](QDialog& dialog) { enter(dialog, title, value); });
    }
    /// Fills a row dialog by object names.
    void expectRow(std::vector<std::pair<std::string, std::string>> fields) {
        door.next([fields](QDialog& dialog) {
            for (const auto& [name, value] : fields) {
                if (auto* box = dialog.findChild<QComboBox*>(QString::fromStdString(name))) {
                    EXPECT_GE(box->findText(QString::fromStdString(value)), 0) << name << value;
                    box->setCurrentText(QString::fromStdString(value));
                } else {
                    type(dialog, name.c_str(), QString::fromStdString(value));
                }
            }
            press(dialog, "ok");
        });
    }

    test::TestContext t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(RTrackPageTest, DeletingATrackLeavesOtherListsAndBringsItsOwnCommandsAlong) {
    put("R-1\\ID:Deck;\r\nR-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\nR-1\\TK9-2:nine;\r\n"
        "R-1\\EV\\X-1:event;\r\nR-1\\RMMX-1:medium;\r\nR-1\\RIMX-1:module;\r\n"
        "R-1\\RT9-1:reference;\r\nR-1\\XYZ-1:free;\r\n");
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_TRUE(edit(2009, [](RecorderTrackPage& page) {
        auto* const list = find<EditableList>(page, "tracks");
        list->selectRow(0);
        press(*list, "delete");
    }));
    const auto text = file();
    for (const auto* const line :
         {"R-1\\TK1-1:2;", "R-1\\TK9-1:nine;", "R-1\\EV\\X-1:event;", "R-1\\RMMX-1:medium;",
          "R-1\\RIMX-1:module;", "R-1\\RT9-1:reference;", "R-1\\XYZ-1:free;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
}

TEST_F(RTrackPageTest, RowsThatAreNoTracksAreNotTheNextTracks) {
    put("R-1\\ID:Deck;\r\nR-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\DSI-2:lost;\r\nR-1\\TK1-3:3;\r\n"
        "R-1\\DSI-3:behind;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit(2001, [this](RecorderTrackPage& page) {
        auto* const list = find<EditableList>(page, "tracks");
        ASSERT_EQ(list->rowCount(), 1);
        expectRow({{"TK1", "7"}});
        press(*list, "add");
    }));
    const auto text = file();
    for (const auto* const line : {"R-1\\N:4;", "R-1\\TK1-1:1;", "R-1\\DSI-2:lost;",
                                   "R-1\\TK1-3:3;", "R-1\\DSI-3:behind;", "R-1\\TK1-4:7;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
}

TEST_F(RTrackPageTest, WhatNoTableKnowsOfAnItemGoesWithIt) {
    put(std::string(kAnalog) +
        "R-1\\ACH\\N-1:2;\r\nR-1\\AMN-1-1:A;\r\nR-1\\AMN-1-2:B;\r\nR-1\\AMNX-1-1:a;\r\n"
        "R-1\\AMNX-1-2:b;\r\nR-1\\AMN-1-3:hidden;\r\n");
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_TRUE(edit(2009, [](RecorderTrackPage& page) {
        auto* const items = find<EditableList>(page, "items");
        ASSERT_EQ(items->rowCount(), 2);
        items->selectRow(0);
        press(*items, "delete");
    }));
    const auto text = file();
    for (const auto* const line :
         {"R-1\\ACH\\N-1:1;", "R-1\\AMN-1-1:B;", "R-1\\AMNX-1-1:b;", "R-1\\AMN-1-3:hidden;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
    EXPECT_EQ(text.find("AMNX-1-2"), std::string::npos) << text;
}

TEST_F(RTrackPageTest, AddsATrackWithTheFirstEntryOfEveryList) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_TRUE(edit(2011, [this](RecorderTrackPage& page) {
        expectRow({{"TK1", "7"}, {"CDLN", "L9"}});
        press(*find<QWidget>(page, "tracks"), "add");
        EXPECT_EQ(find<QGroupBox>(page, "details")->title(),
                  QStringLiteral("PCM Input Details (Track Number: 7)"));
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\nR-1\\TK1-1:7;\r\n"
              "R-1\\TK2-1:FM/FM;\r\nR-1\\IDDR-1:Y;\r\nR-1\\DSI-1:Deck;\r\nR-1\\TK3-1:FWD;\r\n"
              "R-1\\CHE-1:F;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\CDLN-1:L9;\r\n");
}

TEST_F(RTrackPageTest, WantsATrackNumberOfDigitsAndADataLink) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_FALSE(edit(
        2007,
        [this](RecorderTrackPage& page) {
            door.next([](QDialog& dialog) {
                press(dialog, "ok");
                EXPECT_TRUE(dialog.isVisible());
                type(dialog, "TK1", QStringLiteral("x"));
                press(dialog, "ok");
                EXPECT_TRUE(dialog.isVisible());
                type(dialog, "TK1", QStringLiteral("12"));
                press(dialog, "ok");
                EXPECT_TRUE(dialog.isVisible());
                type(dialog, "CDLN", QStringLiteral("L1"));
                for (const auto* text : {"+5", "-0", " 5", "1."}) {
                    type(dialog, "TK1", QLatin1String(text));
                    press(dialog, "ok");
                    EXPECT_TRUE(dialog.isVisible()) << text;
                }
                press(dialog, "cancel");
            });
            press(*find<QWidget>(page, "tracks"), "add");
        },
        "cancel"));
    ASSERT_EQ(t.ui.boxes.size(), 7u);
    EXPECT_TRUE(t.ui.hasText("'Track Number'"));
    EXPECT_TRUE(t.ui.hasText("'Data Link Name'"));
}

TEST_F(RTrackPageTest, StopsAddingAt99Rows) {
    std::string tracks = "R-1\\ID:Deck;\r\nR-1\\N:99;\r\n";
    for (int n = 1; n <= 99; ++n) {
        tracks += "R-1\\TK1-" + std::to_string(n) + ":" + std::to_string(n) + ";\r\n";
    }
    put(tracks);
    EXPECT_FALSE(edit(
        2011,
        [](RecorderTrackPage& page) {
            auto* list = find<QWidget>(page, "tracks");
            EXPECT_FALSE(find<QPushButton>(*list, "add")->isEnabled());
        },
        "cancel"));
}

TEST_F(RTrackPageTest, ShowsAnEmptyTypeForAnUnknownOneAndKeepsIt) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:XYZ;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit(2004, [this](RecorderTrackPage& page) {
        auto* list = find<EditableList>(page, "tracks");
        EXPECT_EQ(list->rows()[0][5], "");
        EXPECT_FALSE(find<QGroupBox>(page, "details")->isEnabled());
        EXPECT_EQ(find<EditableList>(page, "attributes")->rowCount(), 0);
        expectRow({{"TK1", "2"}});
        press(*list, "edit");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:2;\r\nR-1\\TK3-1:FWD;\r\nR-1\\CHE-1:F;\r\n"
              "R-1\\CDT-1:XYZ;\r\n");
}

TEST_F(RTrackPageTest, ShowsTheOldDetailsOfADeletedTrackForANewOneOfItsNumber) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:8;\r\nR-1\\CDT-1:PCMIN;\r\nR-1\\PDP-1:TM;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_FALSE(edit(
        2011,
        [this](RecorderTrackPage& page) {
            auto* list = find<EditableList>(page, "tracks");
            press(*list, "delete");
            EXPECT_EQ(list->rowCount(), 0);
            expectRow({{"TK1", "8"}, {"CDLN", "x"}});
            press(*list, "add");
            EXPECT_EQ(find<EditableList>(page, "attributes")->rows()[1][1], "Throughput Mode");
        },
        "cancel"));
    EXPECT_EQ(t.ui.boxes[0].title, "Delete Data Track Definition");
}

/// Every detail of every type is edited through its prompt and lands in the file.
TEST_F(RTrackPageTest, EditsEveryDetailThroughItsPrompt) {
    for (const int edition : {2004, 2005, 2007, 2009, 2011}) {
        for (const auto& channel : channelTypes()) {
            if (channelType(channel.value, edition) == nullptr) {
                continue;
            }
            put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\CDT-1:" +
                std::string(channel.value) + ";\r\n");
            std::string expected;
            bool anything = false;
            (void)edit(edition, [&](RecorderTrackPage& page) {
                auto* list = find<EditableList>(page, "attributes");
                int row = 0;
                for (const auto* field : detailFields(channel, edition)) {
                    if (isHiddenDetail(*field, edition)) {
                        continue;
                    }
                    const bool isLink = field->code == "CDLN-n";
                    const auto* last = lastShown(*field);
                    const auto value = isLink ? "L2" : last ? std::string(last->text) : "77";
                    EXPECT_EQ(list->rows()[static_cast<std::size_t>(row)][0], field->label);
                    expectPrompt(std::string(field->prompt), value);
                    list->selectRow(row++);
                    list->editRow();
                    expected += "R-1\\" + fieldCode(field->code, {1, 0}) + ":" +
                                (last ? std::string(last->value) : value) + ";\r\n";
                    anything = true;
                }
                EXPECT_EQ(list->rowCount(), row) << channel.value << " " << edition;
            });
            EXPECT_NE(file().find(expected), std::string::npos)
                << channel.value << " " << edition << "\n"
                << expected << file();
            EXPECT_TRUE(anything || edition < 2007) << channel.value;
        }
    }
}

TEST_F(RTrackPageTest, EmptiesAChoiceWithTheDeleteKey) {
    const auto clear = [](const char* name) {
        return [name](QDialog& dialog) {
            QTest::keyClick(find<QComboBox>(dialog, name), Qt::Key_Delete);
            press(dialog, "ok");
        };
    };
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\TK2-1:HDDR;\r\n"
        "R-1\\TK3-1:REV;\r\nR-1\\CHE-1:T;\r\nR-1\\CDT-1:DISIN;\r\nR-1\\CDLN-1:L1;\r\n"
        "R-1\\DTF-1:1;\r\nR-1\\DMOD-1:EV;\r\nR-1\\NDM\\N-1:1;\r\nR-1\\DMN-1-1:Door;\r\n"
        "R-1\\DMTO-1-1:M;\r\n");
    EXPECT_TRUE(edit(2007, [&](RecorderTrackPage& page) {
        door.next(clear("TK2"));
        find<EditableList>(page, "tracks")->editRow();
        auto* details = find<EditableList>(page, "attributes");
        details->selectRow(1);
        door.next(clear("value"));
        details->editRow();
        EXPECT_EQ(details->rows()[1], (ListRow{"Discrete Mode", ""}));
        door.next(clear("value"));
        find<EditableList>(page, "items")->editCell(3);
        // There is no direction that is none: a missing command is "Forward" again.
        door.next(clear("TK3"));
        find<EditableList>(page, "tracks")->editRow();
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\nR-1\\TK1-1:5;\r\n"
              "R-1\\TK3-1:REV;\r\nR-1\\CHE-1:T;\r\nR-1\\CDT-1:DISIN;\r\nR-1\\CDLN-1:L1;\r\n"
              "R-1\\DTF-1:1;\r\nR-1\\NDM\\N-1:1;\r\nR-1\\DMN-1-1:Door;\r\n");
}

TEST_F(RTrackPageTest, EditsAnAnalogItemByFivePrompts) {
    put(kAnalog);
    EXPECT_TRUE(edit(2009, [this](RecorderTrackPage& page) {
        auto* items = find<EditableList>(page, "items");
        EXPECT_EQ(find<QPushButton>(*items, "add")->text(), QStringLiteral("Add Measurement"));
        expectPrompt("Enter Measurement Name", "Volts");
        expectPrompt("Enter Data Length", "12");
        expectPrompt("Enter BitMask", "0110");
        expectPrompt("Select Measurement Transfer Order", "LSB");
        expectPrompt("Select Sample Factor", "15");
        press(*items, "add");
        EXPECT_EQ(items->rows()[0][0], "Measurement");
        EXPECT_EQ(items->rows()[0][1], "Volts");
    }));
    EXPECT_NE(file().find("R-1\\ACH\\N-1:1;\r\nR-1\\AMN-1-1:Volts;\r\nR-1\\ADL-1-1:12;\r\n"
                          "R-1\\AMSK-1-1:0110;\r\nR-1\\AMTO-1-1:L;\r\nR-1\\ASF-1-1:15;\r\n"),
              std::string::npos)
        << file();
}

TEST_F(RTrackPageTest, AsksForAMaskUntilItIsOneWith142) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\CDT-1:DISIN;\r\n");
    EXPECT_TRUE(edit(2009, [this](RecorderTrackPage& page) {
        expectPrompt("Enter Measurement Name", "Door");
        expectPrompt("Enter BitMask", "012");
        expectPrompt("Enter BitMask", "01");
        expectPrompt("Select Measurement Transfer Order", "Default");
        press(*find<QWidget>(page, "items"), "add");
    }));
    EXPECT_EQ(t.ui.countBoxes(142), 1);
    EXPECT_NE(file().find("R-1\\NDM\\N-1:1;\r\nR-1\\DMN-1-1:Door;\r\nR-1\\DMSK-1-1:01;\r\n"
                          "R-1\\DMTO-1-1:D;\r\n"),
              std::string::npos);
}

TEST_F(RTrackPageTest, ACancelledPromptAddsNoItem) {
    put(kAnalog);
    EXPECT_FALSE(edit(
        2009,
        [this](RecorderTrackPage& page) {
            auto* items = find<EditableList>(page, "items");
            expectPrompt("Enter Measurement Name", "Volts");
            door.next([](QDialog& dialog) { press(dialog, "cancel"); });
            press(*items, "add");
            EXPECT_EQ(items->rowCount(), 0);
        },
        "cancel"));
}

TEST_F(RTrackPageTest, EditsSubchannelsByPrompts) {
    for (const auto& [channel, count, number, name] :
         {std::tuple{"429IN", "NAS", "ASN", "ANM"}, std::tuple{"MSGIN", "NMS", "MSCN", "MCNM"}}) {
        put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\CDT-1:" + std::string(channel) +
            ";\r\n");
        EXPECT_TRUE(edit(2011, [this](RecorderTrackPage& page) {
            auto* items = find<EditableList>(page, "items");
            EXPECT_EQ(find<QPushButton>(*items, "add")->text(), QStringLiteral("Add SubChannel"));
            expectPrompt("Enter SubChannel Number", "3");
            expectPrompt("Enter SubChannel Name", "Bus");
            press(*items, "add");
        }));
        const std::string start = std::string("R-1\\") + count + "\\N-1:1;\r\nR-1\\" + number +
                                  "-1-1:3;\r\nR-1\\" + name + "-1-1:Bus;\r\n";
        EXPECT_NE(file().find(start), std::string::npos) << file();
    }
}

/// UART, 1553 and Ethernet items have a dialog over all their fields.
TEST_F(RTrackPageTest, EditsOtherItemsByADialogOverAllFields) {
    for (const int edition : {2007, 2009, 2011}) {
        for (const auto* value : {"UARTIN", "1553IN", "ETHIN"}) {
            const auto& channel = *channelType(value, edition);
            put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\CDT-1:" + std::string(value) +
                ";\r\n");
            std::string expected;
            (void)edit(edition, [&](RecorderTrackPage& page) {
                const bool hasItems = itemCount(channel, edition) != nullptr;
                EXPECT_EQ(page.findChild<QWidget*>(QStringLiteral("items")) != nullptr, hasItems);
                if (!hasItems) {
                    return;
                }
                std::vector<std::pair<std::string, std::string>> row;
                expected =
                    "R-1\\" + fieldCode(itemCount(channel, edition)->code, {1, 0}) + ":1;\r\n";
                for (const auto* field : itemFields(channel, edition)) {
                    const auto* last = lastShown(*field);
                    row.emplace_back(field->code.substr(0, field->code.find("-n")),
                                     last ? std::string(last->text) : "6");
                    expected += "R-1\\" + fieldCode(field->code, {1, 1}) + ":" +
                                (last ? std::string(last->value) : "6") + ";\r\n";
                }
                expectRow(row);
                press(*find<QWidget>(page, "items"), "add");
            });
            EXPECT_NE(file().find(expected), std::string::npos)
                << value << " " << edition << expected << file();
        }
    }
}

TEST_F(RTrackPageTest, WantsNumberAndNameOfANetwork) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:5;\r\nR-1\\CDT-1:ETHIN;\r\n");
    EXPECT_FALSE(edit(
        2011,
        [this](RecorderTrackPage& page) {
            door.next([](QDialog& dialog) {
                type(dialog, "ENBR", QStringLiteral("1"));
                press(dialog, "ok");
                EXPECT_TRUE(dialog.isVisible());
                press(dialog, "cancel");
            });
            press(*find<QWidget>(page, "items"), "add");
        },
        "cancel"));
    EXPECT_TRUE(t.ui.hasText("'Network Name'"));
}

TEST_F(RTrackPageTest, KeepsEachTracksOwnDetailsWhenTheListIsSorted) {
    put("R-1\\ID:Deck;\r\nR-1\\N:2;\r\nR-1\\TK1-1:9;\r\nR-1\\CDT-1:TIMEIN;\r\nR-1\\TFMT-1:B;\r\n"
        "R-1\\TK1-2:3;\r\nR-1\\CDT-2:TIMEIN;\r\nR-1\\TFMT-2:G;\r\n");
    EXPECT_TRUE(edit(2004, [this](RecorderTrackPage& page) {
        auto* list = find<EditableList>(page, "tracks");
        list->sortBy(0);
        list->selectRow(1);
        EXPECT_EQ(list->view()->currentIndex().row(), 0);
        EXPECT_EQ(find<EditableList>(page, "attributes")->rows()[0][1], "IRIG-G");
        expectPrompt("Enter Time Format", "Internal");
        press(*find<QWidget>(page, "attributes"), "edit");
    }));
    EXPECT_NE(file().find("R-1\\TK1-2:3;"), std::string::npos);
    EXPECT_NE(file().find("R-1\\TFMT-2:I;"), std::string::npos);
    EXPECT_NE(file().find("R-1\\TFMT-1:B;"), std::string::npos);
}

TEST_F(RTrackPageTest, HasNoDetailsBelow2004) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\n");
    EXPECT_FALSE(edit(
        2001,
        [](RecorderTrackPage& page) {
            EXPECT_EQ(page.findChild<QWidget*>(QStringLiteral("details")), nullptr);
            EXPECT_EQ(find<EditableList>(page, "tracks")->rows()[0].size(), 5u);
        },
        "cancel"));
}

TEST_F(RTrackPageTest, SetsTheNumberOfTracksWithEveryTrack) {
    put("R-1\\ID:Deck;\r\nR-1\\N:9;\r\nR-1\\TK1-1:1;\r\n");
    EXPECT_TRUE(edit(2001, [this](RecorderTrackPage& page) {
        auto* count = page.window()->findChild<QPushButton*>(QStringLiteral("N"));
        EXPECT_EQ(count->text(), QStringLiteral("9"));
        expectRow({{"TK1", "2"}});
        press(*find<QWidget>(page, "tracks"), "add");
        EXPECT_EQ(count->text(), QStringLiteral("2"));
    }));
    EXPECT_NE(file().find("R-1\\N:2;"), std::string::npos);
}

}  // namespace
}  // namespace kavu
