#include "app/framework/EditableList.h"
#include "app/groups/GSheet.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "conversion/ConversionStore.h"
#include "core/document/GroupFiles.h"
#include "groups/MeasurementNames.h"
#include "support/TestContext.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

constexpr char kSources[] =
    "G\\DSI\\N:3;\r\nG\\DSI-1:Radio;\r\nG\\DST-1:RF;\r\nG\\DSI-2:Deck;\r\nG\\DST-2:TAP;\r\n"
    "G\\DSI-3:Lab;\r\nG\\DST-3:OTH;\r\n";

class GSheetTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(working::kGeneral, bytes); }
    [[nodiscard]] std::string file() { return t.read(working::kGeneral); }
    bool edit(int edition, const test::TestDoor::Driver& driver) {
        t.document.version = edition;
        form.edition = edition;
        door.next(driver);
        return editGeneral(form, {t.context, conversions, names});
    }
    static void open(QDialog& dialog, int page) {
        dynamic_cast<PropertySheet&>(dialog).openPage(page);
        QApplication::processEvents();
    }
    static EditableList& contacts(QDialog& dialog) {
        open(dialog, 1);
        return *find<EditableList>(dialog, "contacts");
    }
    static EditableList& sources(QDialog& dialog) {
        open(dialog, 2);
        return *find<EditableList>(dialog, "sources");
    }
    static void select(EditableList& list, const std::string& name) {
        for (int row = 0; row < list.rowCount(); ++row) {
            if (list.rows()[static_cast<std::size_t>(row)][1] == name) {
                list.selectRow(row);
            }
        }
    }
    static void choose(QDialog& dialog, const char* name, const char* text) {
        auto* const box = find<QComboBox>(dialog, name);
        ASSERT_GE(box->findText(QLatin1String(text)), 0) << text;
        box->setCurrentText(QLatin1String(text));
    }
    static test::TestDoor::Driver nameRow(const char* name) {
        return [name](QDialog& dialog) {
            type(dialog, "DSI", QLatin1String(name));
            press(dialog, "ok");
        };
    }

    test::TestContext t;
    ConversionStore conversions{t.context};
    MeasurementNames names{t.context};
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
};

TEST_F(GSheetTest, ContactsBehindTheCountAreNotTheNewContacts) {
    put("G\\POC\\N:1;\r\nG\\POC1-1:Ann;\r\nG\\POC1-2:Bob;\r\nG\\POC2-2:Lab;\r\nG\\POC9-1:x;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = contacts(dialog);
        ASSERT_EQ(list.rowCount(), 1);
        door.next([](QDialog& row) {
            type(row, "POC1", QStringLiteral("New"));
            press(row, "ok");
        });
        press(list, "add");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "G\\POC\\N:3;\r\nG\\POC1-1:Ann;\r\nG\\POC1-2:Bob;\r\nG\\POC2-2:Lab;\r\n"
              "G\\POC1-3:New;\r\nG\\POC9-1:x;\r\n");
}

TEST_F(GSheetTest, WhatNoTableKnowsOfARowGoesWithItAndWithNoOther) {
    put(std::string(kSources) +
        "G\\DSIX-1:radio;\r\nG\\DSIX-3:lab;\r\nG\\POC9-1:contact;\r\nG\\XYZ-2:free;\r\n");
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) {
        auto& list = sources(dialog);
        select(list, "Deck");
        press(list, "delete");
        press(dialog, "ok");
    }));
    const auto text = file();
    for (const auto* const line : {"G\\DSI\\N:2;", "G\\POC9-1:contact;", "G\\XYZ-2:free;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
    }
    // The sheet shows them by their types: Lab (OTH) is before Radio (RF).
    EXPECT_NE(text.find("G\\DSI-1:Lab;"), std::string::npos) << text;
    EXPECT_NE(text.find("G\\DSIX-1:lab;"), std::string::npos) << text;
    EXPECT_NE(text.find("G\\DSIX-2:radio;"), std::string::npos) << text;
}

TEST_F(GSheetTest, HasItsTitleAndItsPagesInOrder) {
    put("G\\PN:P;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit General Information"));
        auto& sheet = dynamic_cast<PropertySheet&>(dialog);
        ASSERT_EQ(sheet.pageCount(), 4);
        const char* titles[] = {"Program Information", "Points Of Contact", "Data Sources",
                                "Comments"};
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(sheet.page(i).objectName(), QStringLiteral("GeneralInfo%1").arg(i + 1));
            EXPECT_EQ(sheet.page(i).title(), titles[i]);
            open(dialog, i);
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << i;
        }
        press(dialog, "cancel");
    }));
    EXPECT_TRUE(t.ui.boxes.empty());
}

TEST_F(GSheetTest, EachFieldIsChangedAndStored) {
    put("G\\106:09;\r\nG\\OD:01-01-2000;\r\nG\\RD:01-01-2000;\r\nG\\UD:01-01-2000;\r\n");
    EXPECT_TRUE(edit(2009, [](QDialog& dialog) {
        for (const auto& [name, text] :
             {std::pair{"PN", "Program"}, std::pair{"TA", "Item"}, std::pair{"RN", "1"},
              std::pair{"UN", "2"}, std::pair{"TN", "T"}, std::pair{"TI1", "30"}}) {
            type(dialog, name, QLatin1String(text));
        }
        choose(dialog, "TI2", "Yes");
        choose(dialog, "TI3", "No");
        choose(dialog, "SC", "Top Secret");
        open(dialog, 3);
        find<QPlainTextEdit>(dialog, "COM")->setPlainText(QStringLiteral("one\ntwo"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "G\\PN:Program;\r\nG\\TA:Item;\r\nG\\106:09;\r\nG\\OD:01-01-2000;\r\nG\\RN:1;\r\n"
              "G\\RD:01-01-2000;\r\nG\\UN:2;\r\nG\\UD:01-01-2000;\r\nG\\TN:T;\r\nG\\TI1:30;\r\n"
              "G\\TI2:Y;\r\nG\\TI3:N;\r\nG\\SC:T;\r\nG\\COM:one\x14\x15two;\r\n");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(GSheetTest, AChangeFillsTheEmptyDates) {
    put("G\\PN:P;\r\n");
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("x"));
        EXPECT_EQ(find<QPushButton>(dialog, "OD")->text(), QStringLiteral("01-02-2026"));
        EXPECT_EQ(find<QPushButton>(dialog, "RD")->text(), QString());
        type(dialog, "RN", QStringLiteral("1"));
        EXPECT_EQ(find<QPushButton>(dialog, "RD")->text(), QStringLiteral("01-02-2026"));
        EXPECT_EQ(find<QPushButton>(dialog, "UD")->text(), QString());
        type(dialog, "UN", QStringLiteral("1"));
        EXPECT_EQ(find<QPushButton>(dialog, "UD")->text(), QStringLiteral("01-02-2026"));
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("G\\OD:01-02-2026;"), std::string::npos);
}

TEST_F(GSheetTest, AChoiceFillsTheOriginationDateInTheFormOfItsEdition) {
    put("G\\PN:P;\r\n");
    EXPECT_TRUE(edit(1996, [](QDialog& dialog) {
        choose(dialog, "SC", "Secret");
        EXPECT_EQ(find<QPushButton>(dialog, "OD")->text(), QStringLiteral("01-02-26"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "G\\PN:P;\r\nG\\OD:01-02-26;\r\nG\\SC:S;\r\n");
}

TEST_F(GSheetTest, ADateIsAskedForUntilItIsOne) {
    put("G\\OD:12-31-99;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        t.ui.texts = {"12-31-99", "13-01-2011", "12-31-1999"};
        press(dialog, "OD");
        EXPECT_EQ(t.ui.textPrompts[0].title, "Enter Date (MM-DD-YYYY)");
        EXPECT_EQ(t.ui.textPrompts[0].initial, "12-31-99");
        EXPECT_EQ(t.ui.countBoxes(447), 2);
        EXPECT_EQ(find<QPushButton>(dialog, "OD")->text(), QStringLiteral("12-31-1999"));
        // Nothing fills itself when a date is entered.
        EXPECT_EQ(find<QPushButton>(dialog, "RD")->text(), QString());
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "G\\OD:12-31-1999;\r\n");
    EXPECT_FALSE(edit(1996, [this](QDialog& dialog) {
        press(dialog, "RD");
        EXPECT_EQ(t.ui.textPrompts.back().title, "Enter Date (MM-DD-YY)");
        EXPECT_EQ(t.ui.textPrompts.back().initial, "01-02-26");
        press(dialog, "cancel");
    }));
}

TEST_F(GSheetTest, AMissingGroupIsTold) {
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        EXPECT_TRUE(t.ui.hasBox(145));
        press(dialog, "ok");
    }));
    EXPECT_FALSE(t.has(working::kGeneral));
}

TEST_F(GSheetTest, ASemicolonIsRefused) {
    put("G\\PN:P;\r\n");
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("a;"));
        EXPECT_TRUE(t.ui.hasBox(402));
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
}

TEST_F(GSheetTest, ContactsAreAddedEditedAndDeleted) {
    put("G\\POC\\N:1;\r\nG\\POC1-1:Ann;\r\nG\\POC42-1:1;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = contacts(dialog);
        door.next([](QDialog& row) {
            EXPECT_EQ(test::checkWindow(row), std::vector<std::string>{});
            type(row, "POC1", QStringLiteral("Bob"));
            type(row, "POC2", QStringLiteral("Agency"));
            type(row, "POC3", QStringLiteral("Street"));
            type(row, "POC4", QStringLiteral("123456789012345678901"));
            EXPECT_EQ(find<QLineEdit>(row, "POC4")->text().size(), 20);
            press(row, "ok");
        });
        press(list, "add");
        door.next([](QDialog& row) { press(row, "cancel"); });
        press(list, "add");
        EXPECT_EQ(list.currentRow(), 1);
        list.selectRow(0);
        t.ui.byId[83] = Button::Yes;
        press(list, "delete");
        EXPECT_EQ(t.ui.boxes.back().title, "Points Of Contact");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "G\\POC\\N:1;\r\nG\\POC1-1:Bob;\r\nG\\POC2-1:Agency;\r\nG\\POC3-1:Street;\r\n"
              "G\\POC4-1:12345678901234567890;\r\n");
}

TEST_F(GSheetTest, ATelephoneThatIsKeptStaysWithItsPerson) {
    put("G\\POC\\N:2;\r\nG\\POC1-1:Zoe;\r\nG\\POC4-1:111;\r\nG\\POC1-2:Ann;\r\n"
        "G\\POC4-2:222;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = contacts(dialog);
        door.next([](QDialog& row) {
            type(row, "POC2", QStringLiteral("Agency"));
            press(row, "ok");
        });
        press(list, "edit");
        list.sortBy(0);
        list.sortBy(0);
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "G\\POC\\N:2;\r\nG\\POC1-1:Ann;\r\nG\\POC2-1:Agency;\r\nG\\POC1-2:Zoe;\r\n"
              "G\\POC4-2:111;\r\nG\\POC4-1:222;\r\n")
        << "the order of the list and not that of the view";
}

TEST_F(GSheetTest, AddIsDisabledAtNineContacts) {
    put("G\\POC\\N:12;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        auto& list = contacts(dialog);
        EXPECT_EQ(list.rowCount(), 9);
        EXPECT_EQ(list.rows()[0][0], "Unknown");
        EXPECT_FALSE(find<QPushButton>(list, "add")->isEnabled());
        press(dialog, "cancel");
    }));
}

TEST_F(GSheetTest, TheTypesOfSourcesFollowTheEdition) {
    put("G\\DSI\\N:1;\r\nG\\DSI-1:S;\r\nG\\DST-1:DRS;\r\n");
    for (const int edition : {2001, 2004, 2009}) {
        EXPECT_FALSE(edit(edition, [this, edition](QDialog& dialog) {
            auto& list = sources(dialog);
            EXPECT_EQ(list.rows()[0][0], edition == 2009 ? "Direct Source" : "Other");
            door.next([edition](QDialog& row) {
                EXPECT_EQ(find<QComboBox>(row, "DST")->count(), edition == 2001   ? 3
                                                                : edition == 2004 ? 4
                                                                                  : 7);
                press(row, "cancel");
            });
            press(list, "edit");
            press(dialog, "cancel");
        }));
    }
}

TEST_F(GSheetTest, ANewSourceStartsAsRadioAndATypeOfANewerEditionStays) {
    put("G\\DSI\\N:1;\r\nG\\DSI-1:Old;\r\nG\\DST-1:DRS;\r\n");
    EXPECT_TRUE(edit(2004, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        door.next([](QDialog& row) {
            EXPECT_EQ(row.windowTitle(), QStringLiteral("Edit Data Source"));
            EXPECT_EQ(find<QComboBox>(row, "DST")->currentText(), QStringLiteral("RF"));
            type(row, "DSI", QStringLiteral("New"));
            press(row, "ok");
        });
        press(list, "add");
        select(list, "Old");
        door.next(nameRow("Older"));
        press(list, "edit");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "G\\DSI\\N:2;\r\nG\\DSI-1:Older;\r\nG\\DST-1:DRS;\r\nG\\DSI-2:New;\r\n"
              "G\\DST-2:RF;\r\n");
}

TEST_F(GSheetTest, TwoSourcesCanNotHaveOneName) {
    put(kSources);
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        door.next([this](QDialog& row) {
            type(row, "DSI", QStringLiteral("radio"));
            press(row, "ok");
            EXPECT_TRUE(row.isVisible());
            EXPECT_FALSE(t.ui.boxes.empty());
            press(row, "cancel");
        });
        press(list, "add");
        EXPECT_EQ(list.rowCount(), 3);
        press(dialog, "cancel");
    }));
}

TEST_F(GSheetTest, ANewNameOfAnExistingSourceIsChangedEverywhereAtOnce) {
    put(kSources);
    t.write(groupFile('T', 1), "T-1\\ID:Radio;\r\n");
    t.write(groupFile('M', 1), "M-1\\ID:Radio;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        select(list, "Radio");
        t.ui.byId[299] = Button::No;
        door.next(nameRow("Pod"));
        press(list, "edit");
        EXPECT_EQ(list.rows()[static_cast<std::size_t>(list.currentRow())][1], "Radio");
        t.ui.byId[299] = Button::Yes;
        door.next(nameRow("Pod"));
        press(list, "edit");
        EXPECT_EQ(list.rows()[static_cast<std::size_t>(list.currentRow())][1], "Pod");
        EXPECT_EQ(t.ui.countBoxes(299), 2);
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:Pod;\r\n");
    EXPECT_EQ(t.read(groupFile('M', 1)), "M-1\\ID:Pod;\r\n");
    EXPECT_NE(file().find("G\\DSI-1:Pod;"), std::string::npos);
}

TEST_F(GSheetTest, AnotherCaseOfANameIsARename) {
    put("G\\DSI\\N:1;\r\nG\\DSI-1:Pod;\r\nG\\DST-1:RF;\r\n");
    t.write(groupFile('T', 1), "T-1\\ID:Pod;\r\n");
    t.ui.byId[299] = Button::Yes;
    edit(2011, [this](QDialog& dialog) {
        door.next([](QDialog& row) {
            type(row, "DSI", QStringLiteral("POD"));
            press(row, "ok");
        });
        press(sources(dialog), "edit");
        press(dialog, "ok");
    });
    EXPECT_EQ(t.ui.countBoxes(299), 1);
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:POD;\r\n");
}

TEST_F(GSheetTest, F2OpensTheRowOfASourceSoThatNoNamePassesTheRename) {
    put("G\\DSI\\N:1;\r\nG\\DSI-1:Pod;\r\nG\\DST-1:RF;\r\n");
    edit(2011, [this](QDialog& dialog) {
        door.next([](QDialog& row) {
            EXPECT_EQ(row.objectName(), QStringLiteral("EditRow"));
            press(row, "cancel");
        });
        QTest::keyClick(sources(dialog).view(), Qt::Key_F2);
        press(dialog, "cancel");
    });
}

TEST_F(GSheetTest, ASourceOfTheDocumentIsDeletedWithItsGroups) {
    put(kSources);
    t.write(groupFile('T', 1), "T-1\\ID:Radio;\r\n");
    t.write(groupFile('M', 1), "M-1\\ID:Radio;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        select(list, "Radio");
        t.ui.byId[140] = Button::No;
        press(list, "delete");
        EXPECT_EQ(list.rowCount(), 3);
        t.ui.byId[140] = Button::Yes;
        press(list, "delete");
        EXPECT_EQ(list.rowCount(), 2);
        press(dialog, "ok");
    }));
    EXPECT_FALSE(t.has(groupFile('T', 1)));
    EXPECT_FALSE(t.has(groupFile('M', 1)));
    EXPECT_EQ(file().find("Radio"), std::string::npos);
    EXPECT_NE(file().find("G\\DSI\\N:2;"), std::string::npos);
}

TEST_F(GSheetTest, ANewRowIsDeletedAsEveryOther) {
    put(kSources);
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        door.next(nameRow("New"));
        press(list, "add");
        t.ui.byId[83] = Button::Yes;
        press(list, "delete");
        EXPECT_EQ(t.ui.boxes.back().title, "Data Sources");
        EXPECT_EQ(list.rowCount(), 3);
        t.ui.queued = {Button::Yes};
        press(dialog, "cancel");
    }));
    EXPECT_EQ(file(), kSources);
}

TEST_F(GSheetTest, TheDefinitionOfASourceIsEditedByItsType) {
    put(kSources);
    t.write(groupFile('T', 1), "T-1\\ID:Radio;\r\n");
    t.write(groupFile('R', 1), "R-1\\ID:Deck;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto& list = sources(dialog);
        auto* const button = find<QPushButton>(dialog, "editSourceDefinition");
        select(list, "Lab");
        EXPECT_FALSE(button->isEnabled());
        select(list, "Deck");
        door.next([](QDialog& sheet) {
            EXPECT_EQ(sheet.windowTitle(),
                      QStringLiteral("Edit Recorder/Reproducer Attributes - Data Source: Deck"));
            press(sheet, "cancel");
        });
        press(dialog, "editSourceDefinition");
        select(list, "Radio");
        door.next([](QDialog& sheet) {
            EXPECT_EQ(sheet.windowTitle(),
                      QStringLiteral("Edit Transmission Attributes - Data Source: Radio"));
            // There is a page of the same name.
            QTest::keyClicks(find<QLineEdit>(sheet, "RF1"), QStringLiteral("5"));
            press(sheet, "ok");
        });
        press(dialog, "editSourceDefinition");
        press(dialog, "cancel");
    }));
    EXPECT_EQ(t.read(groupFile('T', 1)), "T-1\\ID:Radio;\r\nT-1\\RF1:5;\r\n");
}

TEST_F(GSheetTest, TheUserIsAskedAboutCommandsThatTheSheetDoesNotKnow) {
    put("G\\PN:P;\r\nG\\OD:01-01-2000;\r\nG\\X-1:a;\r\nG\\X-1:b;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2011, [](QDialog& dialog) {
        type(dialog, "TA", QStringLiteral("t"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(file(), "G\\PN:P;\r\nG\\TA:t;\r\nG\\OD:01-01-2000;\r\nG\\X-1:a;\r\nG\\X-1:b;\r\n");
}

TEST_F(GSheetTest, ACancelledLoadOpensNothing) {
    put("G\\PN:P;\r\n");
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(editGeneral(form, {t.context, conversions, names}));
}

}  // namespace
}  // namespace kavu
