#include "app/framework/EditableList.h"
#include "app/groups/TSheet.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/document/GroupFiles.h"
#include "groups/GroupSamples.h"
#include "groups/MeasurementNames.h"
#include "support/TestContext.h"
#include "vocabulary/TGroupFields.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

/// Types into the field of a code; there are pages of the same name.
void enterText(QWidget& dialog, const char* code, const QString& text) {
    QWidget* field = dialog.findChild<QLineEdit*>(QLatin1String(code));
    if (field == nullptr) {
        field = find<QPlainTextEdit>(dialog, code);
    }
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

class TSheetTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('T', 1), bytes); }
    [[nodiscard]] std::string file() { return t.read(groupFile('T', 1)); }
    bool edit(int edition, const test::TestDoor::Driver& driver) {
        t.document.version = edition;
        form.edition = edition;
        door.next(driver);
        return editTransmission(form, {t.context, conversions, names}, "Src");
    }
    static PropertySheet& sheetOf(QDialog& dialog) { return dynamic_cast<PropertySheet&>(dialog); }
    static void open(QDialog& dialog, std::string_view page) {
        const auto pages = transmissionPages();
        for (std::size_t i = 0; i < pages.size(); ++i) {
            if (pages[i].name == page) {
                sheetOf(dialog).openPage(static_cast<int>(i));
            }
        }
        QApplication::processEvents();
    }
    static void enter(QDialog& dialog, const Field& field, const std::string& value) {
        const std::string name(field.code);
        if (field.kind == FieldKind::Choice) {
            auto* const box = find<QComboBox>(dialog, name.c_str());
            box->setFocus();
            QTest::keyClick(box, Qt::Key_End);
            return;
        }
        enterText(dialog, name.c_str(), toQString(value));
    }
    static std::vector<std::string> entries(QDialog& dialog, const char* name) {
        std::vector<std::string> texts;
        const auto* const box = find<QComboBox>(dialog, name);
        for (int i = 0; i < box->count(); ++i) {
            texts.push_back(toBytes(box->itemText(i)));
        }
        return texts;
    }

    test::TestContext t;
    ConversionStore conversions{t.context};
    MeasurementNames names{t.context};
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

test::TestDoor::Driver fillRow(const char* number, const char* index) {
    return [=](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        type(dialog, "SCO1", QLatin1String(number));
        type(dialog, "SCO2", QLatin1String(index));
        press(dialog, "ok");
    };
}

TEST_F(TSheetTest, HasItsTitleAndItsPagesInOrder) {
    put("T-1\\ID:Src;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(),
                  QStringLiteral("Edit Transmission Attributes - Data Source: Src"));
        auto& sheet = sheetOf(dialog);
        ASSERT_EQ(sheet.pageCount(), 10);
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(sheet.page(i).objectName(), QStringLiteral("RF%1").arg(i + 1));
            sheet.openPage(i);
            QApplication::processEvents();
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << i;
        }
        press(dialog, "cancel");
    }));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(TSheetTest, EachFieldIsShownChangedAndStored) {
    const int edition = 2011;
    put("T-1\\ID:Src;\r\n");
    auto expected = test::fullRow(transmissionFields(), edition);
    expected.set("ID", "Src");
    expected.lists.clear();
    EXPECT_TRUE(edit(edition, [&](QDialog& dialog) {
        for (const auto& field : knownFields(transmissionFields(), edition)) {
            if (!field.label.empty() && field.list.empty()) {
                open(dialog, field.page);
                enter(dialog, field, std::string(expected.value(field.code)));
            }
        }
        press(dialog, "ok");
    }));
    GroupWriter writer('T', 1);
    writer.writeTable(transmissionFields(), expected, edition);
    EXPECT_EQ(file(), writer.text());
    EXPECT_TRUE(t.document.changed);
    // What was stored is shown again, and OK without a change writes nothing.
    t.document.changed = false;
    EXPECT_FALSE(edit(edition, [&](QDialog& dialog) {
        EXPECT_EQ(find<QLineEdit>(dialog, "RF1")->text(), QStringLiteral("ValueO"));
        EXPECT_EQ(find<QComboBox>(dialog, "AN2")->currentText(), QStringLiteral("LINEAR"));
        press(dialog, "ok");
    }));
    EXPECT_FALSE(t.document.changed);
}

TEST_F(TSheetTest, TheModulationsFollowTheEdition) {
    put("T-1\\ID:Src;\r\n");
    const std::pair<int, std::vector<std::string>> cases[] = {
        {1996, {"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHER"}},
        {1999, {"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHR"}},
        {2000, {"FM", "PM", "BPSK", "DPSK", "QPSK", "OTHR", "FQPSK-B"}}};
    for (const auto& [edition, texts] : cases) {
        EXPECT_FALSE(edit(edition, [&, expected = texts, year = edition](QDialog& dialog) {
            EXPECT_EQ(entries(dialog, "RF4"), expected);
            EXPECT_EQ(entries(dialog, "GST7").back(), year == 1996 ? "OTH" : "OTHER");
            press(dialog, "cancel");
        }));
    }
}

TEST_F(TSheetTest, LimitsHoldWhileTyping) {
    put("T-1\\ID:Src;\r\n");
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        enterText(dialog, "RF1", QStringLiteral("12345678"));
        EXPECT_EQ(find<QLineEdit>(dialog, "RF1")->text(), QStringLiteral("123456"));
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
}

TEST_F(TSheetTest, ASemicolonIsRefused) {
    put("T-1\\ID:Src;\r\n");
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        enterText(dialog, "RF1", QStringLiteral("1;"));
        EXPECT_TRUE(t.ui.hasBox(402));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(t.ui.countBoxes(402), 2);
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\n");
}

TEST_F(TSheetTest, AMissingGroupIsToldAndMade) {
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        EXPECT_TRUE(t.ui.hasBox(145));
        enterText(dialog, "TID", QStringLiteral("A1"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\nT-1\\TID:A1;\r\n");
}

TEST_F(TSheetTest, ANewGroupIsWrittenByOkAloneAndCancelAsks) {
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
    EXPECT_TRUE(t.ui.hasText("Items have changed."));
    EXPECT_FALSE(t.has(groupFile('T', 1)));
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\n");
}

TEST_F(TSheetTest, SubcarriersAreAddedEditedAndDeleted) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:10;\r\nT-1\\SCO2-2:b;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        open(dialog, "RF9");
        auto* const list = find<EditableList>(dialog, "subcarriers");
        ASSERT_EQ(list->rowCount(), 2);
        EXPECT_EQ(list->rows()[0][1], "?");
        EXPECT_EQ(list->rows()[1][0], "?");
        door.next(fillRow("12", "1.5"));
        press(*list, "add");
        EXPECT_EQ(list->rowCount(), 3);
        door.next([](QDialog& row) { press(row, "cancel"); });
        press(*list, "add");
        EXPECT_EQ(list->rowCount(), 3);
        EXPECT_EQ(list->currentRow(), 2);
        list->selectRow(1);
        door.next(fillRow("11", "2"));
        press(*list, "edit");
        list->selectRow(0);
        t.ui.byId[83] = Button::No;
        press(*list, "delete");
        EXPECT_EQ(list->rowCount(), 3);
        EXPECT_EQ(t.ui.boxes.back().title, "Subcarriers");
        press(dialog, "ok");
    }));
    // The cell that was never filled is no value.
    EXPECT_EQ(file(),
              "T-1\\ID:Src;\r\nT-1\\SCO\\N:3;\r\nT-1\\SCO1-1:10;\r\nT-1\\SCO1-2:11;\r\n"
              "T-1\\SCO2-2:2;\r\nT-1\\SCO1-3:12;\r\nT-1\\SCO2-3:1.5;\r\n");
    t.ui.byId[83] = Button::Yes;
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) {
        open(dialog, "RF9");
        auto* const list = find<EditableList>(dialog, "subcarriers");
        press(*list, "delete");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:11;\r\nT-1\\SCO2-1:2;\r\n"
              "T-1\\SCO1-2:12;\r\nT-1\\SCO2-2:1.5;\r\n");
}

TEST_F(TSheetTest, SubcarriersBehindTheCountAreNotTheNewOnes) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:1;\r\nT-1\\SCO1-1:10;\r\nT-1\\SCO2-2:hidden;\r\n"
        "T-1\\SCO9-1:first;\r\nT-1\\SCO9-2:second;\r\nT-1\\EV\\X-2:free;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        open(dialog, "RF9");
        auto* const list = find<EditableList>(dialog, "subcarriers");
        ASSERT_EQ(list->rowCount(), 1);
        door.next(fillRow("12", "1.5"));
        press(*list, "add");
        press(dialog, "ok");
    }));
    const auto text = file();
    for (const auto* const line :
         {"T-1\\SCO\\N:3;", "T-1\\SCO1-1:10;", "T-1\\SCO2-2:hidden;", "T-1\\SCO1-3:12;",
          "T-1\\SCO2-3:1.5;", "T-1\\SCO9-1:first;", "T-1\\SCO9-2:second;", "T-1\\EV\\X-2:free;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
}

TEST_F(TSheetTest, WhatNoTableKnowsOfASubcarrierGoesWithItAndWithNoOther) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:2;\r\nT-1\\SCO1-1:10;\r\nT-1\\SCO1-2:11;\r\n"
        "T-1\\SCO9-1:first;\r\nT-1\\SCO9-2:second;\r\nT-1\\RMM-1:free;\r\n"
        "T-1\\EV\\X-2:free;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) {
        open(dialog, "RF9");
        press(*find<EditableList>(dialog, "subcarriers"), "delete");
        press(dialog, "ok");
    }));
    const auto text = file();
    for (const auto* const line : {"T-1\\SCO\\N:1;", "T-1\\SCO1-1:11;", "T-1\\SCO9-1:second;",
                                   "T-1\\RMM-1:free;", "T-1\\EV\\X-2:free;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
    EXPECT_EQ(text.find("first"), std::string::npos) << text;
    EXPECT_TRUE(t.ui.hasText("T-1\\SCO9-1:second;")) << "the question lists what it becomes";
}

TEST_F(TSheetTest, AddIsDisabledAtNinetyNineRowsAndEditWithoutARow) {
    put("T-1\\ID:Src;\r\nT-1\\SCO\\N:120;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        open(dialog, "RF9");
        auto* const list = find<EditableList>(dialog, "subcarriers");
        EXPECT_EQ(list->rowCount(), 99);
        EXPECT_FALSE(find<QPushButton>(*list, "add")->isEnabled());
        EXPECT_TRUE(find<QPushButton>(*list, "edit")->isEnabled());
        press(dialog, "cancel");
    }));
    put("T-1\\ID:Src;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        open(dialog, "RF9");
        auto* const list = find<EditableList>(dialog, "subcarriers");
        EXPECT_TRUE(find<QPushButton>(*list, "add")->isEnabled());
        EXPECT_FALSE(find<QPushButton>(*list, "edit")->isEnabled());
        EXPECT_FALSE(find<QPushButton>(*list, "delete")->isEnabled());
        press(dialog, "cancel");
    }));
}

TEST_F(TSheetTest, TheUserIsAskedAboutCommandsThatTheSheetDoesNotKnow) {
    const std::string before = "T-1\\ID:Src;\r\nT-1\\Z:1;\r\nT-1\\Y:2;\r\nT-1\\Z:3;\r\n";
    const auto change = [](QDialog& dialog) {
        enterText(dialog, "RF1", QStringLiteral("5"));
        press(dialog, "ok");
    };
    put(before);
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2011, change));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].defaultButton, Button::Yes);
    EXPECT_NE(t.ui.boxes[0].text.find("T-1\\Z:1;\nT-1\\Y:2;\nT-1\\Z:3;\n"), std::string::npos);
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\nT-1\\RF1:5;\r\nT-1\\Z:1;\r\nT-1\\Y:2;\r\nT-1\\Z:3;\r\n");
    put(before);
    t.ui.otherwise = Button::No;
    EXPECT_TRUE(edit(2011, change));
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\nT-1\\RF1:5;\r\n");
}

TEST_F(TSheetTest, AValueThatOnlyXmlKnowsShowsAnUnselectedChoice) {
    put("T-1\\ID:Src;\r\nT-1\\RF4:FQPSK-JR;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        EXPECT_EQ(find<QComboBox>(dialog, "RF4")->currentIndex(), -1);
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "T-1\\ID:Src;\r\nT-1\\RF4:FQPSK-JR;\r\n");
}

TEST_F(TSheetTest, TheButtonOpensTheMultiplexOfTheSource) {
    put("T-1\\ID:Src;\r\n");
    t.write(groupFile('M', 1), "M-1\\ID:Src;\r\nM-1\\BSG1:PCM;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        door.next([](QDialog& multiplex) {
            EXPECT_EQ(multiplex.windowTitle(),
                      QStringLiteral("Multiplex/Modulation - Data Source: Src"));
            type(multiplex, "RC", QStringLiteral("240"));
            press(multiplex, "ok");
        });
        press(dialog, "editMultiplex");
        press(dialog, "cancel");
    }));
    EXPECT_NE(t.read(groupFile('M', 1)).find("M-1\\RC:240;"), std::string::npos);
}

}  // namespace
}  // namespace kavu
