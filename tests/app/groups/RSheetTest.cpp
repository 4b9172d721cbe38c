#include "app/framework/EditableList.h"
#include "app/groups/RSheet.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "core/document/GroupFiles.h"
#include "support/TestContext.h"

#include <algorithm>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

PropertyPage* pageOf(QDialog& dialog, const char* name) {
    auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
    for (int i = 0; i < sheet.pageCount(); ++i) {
        if (sheet.page(i).objectName() == QLatin1String(name)) {
            sheet.openPage(i);
            QApplication::processEvents();
            return &sheet.page(i);
        }
    }
    ADD_FAILURE() << "no page " << name;
    return nullptr;
}

/// A driver that types into the fields of a row dialog and presses OK.
test::TestDoor::Driver fillRow(std::vector<std::pair<const char*, const char*>> fields) {
    return [fields](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        for (const auto& [name, text] : fields) {
            if (auto* box = dialog.findChild<QComboBox*>(QLatin1String(name))) {
                EXPECT_GE(box->findText(QLatin1String(text)), 0) << name << " " << text;
                box->setCurrentText(QLatin1String(text));
            } else {
                type(dialog, name, QLatin1String(text));
            }
        }
        press(dialog, "ok");
    };
}

class RSheetTest : public ::testing::Test {
  protected:
    void put(const std::string& bytes) { t.write(groupFile('R', 1), bytes); }
    [[nodiscard]] std::string file() { return t.read(groupFile('R', 1)); }
    bool edit(int edition, const test::TestDoor::Driver& driver) {
        t.document.version = edition;
        form.edition = edition;
        door.next(driver);
        return editRecorder(form, t.context, "Deck", around);
    }

    test::TestContext t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.context);
    RecorderSurroundings around{{"Deck", "Radio"}, {"Link 1", "Link 2"}, {}, {}};
};

TEST_F(RSheetTest, AnEventOrAMeasurementOfItTakesItsUnknownCommandsAlong) {
    put("R-1\\ID:Deck;\r\nR-1\\EV\\N:1;\r\nR-1\\EV\\ID-1:A;\r\nR-1\\EV\\PM\\N-1:2;\r\n"
        "R-1\\EV\\PM\\MN-1-1:M1;\r\nR-1\\EV\\PM\\MN-1-2:M2;\r\nR-1\\EV\\PM\\X-1-2:two;\r\n"
        "R-1\\EV\\ID-2:hidden;\r\nR-1\\EV\\X-2:ex;\r\n");
    t.ui.queued = {Button::Yes, Button::Yes};
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto* const page = pageOf(dialog, "Tape6");
        auto* const measurements = find<EditableList>(*page, "measurementsToProcess");
        measurements->selectRow(0);
        press(*measurements, "delete");
        door.next(fillRow({{"EV\\ID", "New"}}));
        press(*find<EditableList>(*page, "events"), "add");
        press(dialog, "ok");
    }));
    const auto text = file();
    for (const auto* const line :
         {"R-1\\EV\\N:3;", "R-1\\EV\\PM\\MN-1-1:M2;", "R-1\\EV\\PM\\X-1-1:two;",
          "R-1\\EV\\ID-2:hidden;", "R-1\\EV\\X-2:ex;", "R-1\\EV\\ID-3:New;"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
    }
}

TEST_F(RSheetTest, HasItsPagesInOrderAndRemembersTheLastOne) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
        EXPECT_EQ(sheet.windowTitle(),
                  QStringLiteral("Edit Recorder/Reproducer Attributes - Data Source: Deck"));
        ASSERT_EQ(sheet.pageCount(), 11);
        for (int i = 0; i < 11; ++i) {
            EXPECT_EQ(sheet.page(i).objectName(), QStringLiteral("Tape%1").arg(i + 1));
        }
        EXPECT_EQ(sheet.openedPage(), 0);
        sheet.openPage(3);
        press(sheet, "cancel");
    }));
    EXPECT_EQ(t.settings.profileInteger("PropSheet", "LastTapePage", 1), 4);
    EXPECT_FALSE(edit(2009, [](QDialog& dialog) {
        auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
        EXPECT_EQ(sheet.pageCount(), 10);
        EXPECT_EQ(sheet.openedPage(), 3);
        press(sheet, "cancel");
    }));
}

TEST_F(RSheetTest, IsReadableOnEveryPageInEveryEdition) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:ANAIN;\r\n"
        "R-1\\ACH\\N-1:1;\r\nR-1\\AMN-1-1:V;\r\n");
    around.editMultiplex = [](FormContext&, const std::string&) { return false; };
    for (const int edition : {1996, 2001, 2004, 2005, 2007, 2009, 2011}) {
        EXPECT_FALSE(edit(edition, [edition](QDialog& dialog) {
            auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
            for (int i = 0; i < sheet.pageCount(); ++i) {
                sheet.openPage(i);
                EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{})
                    << edition << " " << i;
            }
            press(sheet, "cancel");
        }));
    }
}

TEST_F(RSheetTest, SaysOnAPageThatIsEmptyInThisEditionWhenItCame) {
    put("R-1\\ID:Deck;\r\n");
    using Pages = std::vector<std::string>;
    const Pages gated = {"Tape6", "Tape7"};
    for (const auto& [edition, told] : {std::pair{1996, gated}, {2004, gated}, {2005, Pages{}}}) {
        EXPECT_FALSE(edit(edition, [&told = told](QDialog& dialog) {
            auto& sheet = dynamic_cast<RecorderSheet&>(dialog);
            Pages found;
            for (int i = 0; i < sheet.pageCount(); ++i) {
                for (const auto* label : sheet.page(i).findChildren<QLabel*>()) {
                    if (label->text().startsWith(QStringLiteral("Documents have this"))) {
                        EXPECT_EQ(
                            label->text(),
                            QStringLiteral("Documents have this from edition 106-05 (2005) on."));
                        found.push_back(toBytes(sheet.page(i).objectName()));
                    }
                }
            }
            EXPECT_EQ(found, told);
            press(sheet, "cancel");
        }));
    }
}

/// Each field that stands once: changed, stored, and compared with the file.
TEST_F(RSheetTest, StoresEveryFieldThatIsChanged) {
    put("R-1\\ID:Deck;\r\n");
    t.ui.integers = {7};
    t.ui.texts = {"02-03-2004-05-06-07", "03-04-2005-06-07-08"};
    const auto fields = recorderSingleFields();
    EXPECT_TRUE(edit(2011, [&](QDialog& dialog) {
        for (const auto& field : fields) {
            if (field.label.empty()) {
                continue;
            }
            auto* page = pageOf(dialog, std::string(field.page).c_str());
            const auto name = std::string(field.code);
            auto* control = find<QWidget>(*page, name.c_str());
            ASSERT_NE(control, nullptr) << name;
            if (auto* box = qobject_cast<QComboBox*>(control)) {
                box->setCurrentIndex(0);
            } else if (qobject_cast<QPushButton*>(control) != nullptr) {
                press(*page, name.c_str());
            } else if (auto* text = qobject_cast<QPlainTextEdit*>(control)) {
                text->setPlainText(QStringLiteral("two\nlines"));
            } else {
                type(*page, name.c_str(), QStringLiteral("8"));
            }
        }
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\RID:8;\r\nR-1\\R1:8;\r\nR-1\\TC1:ANAL;\r\nR-1\\TC2:8;\r\n"
              "R-1\\TC3:8;\r\nR-1\\RML:I;\r\nR-1\\ERBS:AUTO;\r\nR-1\\TC4:8;\r\nR-1\\TC5:10.5;\r\n"
              "R-1\\TT:LO;\r\nR-1\\N:7;\r\nR-1\\TC6:8;\r\nR-1\\TC7:IM;\r\nR-1\\TC8:Y;\r\n"
              "R-1\\NSB:8;\r\nR-1\\RI1:8;\r\nR-1\\RI2:8;\r\nR-1\\RI3:8;\r\n"
              "R-1\\RI4:02-03-2004-05-06-07;\r\nR-1\\POC1:8;\r\nR-1\\POC2:8;\r\nR-1\\POC3:8;\r\n"
              "R-1\\POC4:8;\r\nR-1\\RI5:03-04-2005-06-07-08;\r\nR-1\\DPOC1:8;\r\nR-1\\DPOC2:8;\r\n"
              "R-1\\DPOC3:8;\r\nR-1\\DPOC4:8;\r\nR-1\\RI6:8;\r\nR-1\\RI7:8;\r\nR-1\\UD\\TK1:8;\r\n"
              "R-1\\EV\\E:T;\r\nR-1\\EV\\TK1:8;\r\nR-1\\IDX\\E:T;\r\nR-1\\IDX\\TK1:8;\r\n"
              "R-1\\IDX\\IT:T;\r\nR-1\\IDX\\ITV:8;\r\nR-1\\IDX\\ICV:8;\r\n"
              "R-1\\COM:two\x14\x15lines;\r\n");
    EXPECT_EQ(t.ui.textPrompts[0].title, "Enter Date & Time (MM-DD-YYYY-HH-MM-SS)");
    EXPECT_TRUE(t.document.changed);
}

TEST_F(RSheetTest, ShowsTheFieldsOfItsEditionOnly) {
    put("R-1\\ID:Deck;\r\n");
    for (const int edition : {1996, 1999, 2004, 2005, 2007, 2009, 2011}) {
        EXPECT_FALSE(edit(edition, [edition](QDialog& dialog) {
            for (const auto& field : recorderSingleFields()) {
                if (!field.label.empty()) {
                    auto* control =
                        dialog.findChild<QWidget*>(QString::fromStdString(std::string(field.code)));
                    EXPECT_EQ(control != nullptr, isKnownIn(edition, field))
                        << field.code << " " << edition;
                }
            }
            EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("modules")) != nullptr,
                      edition >= 2009);
            EXPECT_EQ(
                dialog.findChild<QWidget*>(QStringLiteral("measurementsToProcess")) != nullptr,
                edition >= 2011);
            EXPECT_EQ(find<QWidget>(dialog, "events")->isEnabledTo(&dialog), edition >= 2005);
            press(dialog, "cancel");
        }));
    }
}

TEST_F(RSheetTest, RefusesFewerTracksThanThereAreRowsWith312) {
    put("R-1\\ID:Deck;\r\nR-1\\N:2;\r\nR-1\\TK1-1:1;\r\nR-1\\TK1-2:2;\r\n");
    t.ui.integers = {1};
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        auto* page = pageOf(dialog, "Tape2");
        press(*page, "N");
        EXPECT_EQ(find<QPushButton>(*page, "N")->text(), QStringLiteral("2"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(t.ui.countBoxes(312), 1);
}

TEST_F(RSheetTest, FillsTheDateOfCreationAndOfTheDubOnAnyChange) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_TRUE(edit(1996, [](QDialog& dialog) {
        type(*pageOf(dialog, "Tape4"), "POC1", QStringLiteral("A"));
        type(*pageOf(dialog, "Tape5"), "DPOC1", QStringLiteral("B"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\RI4:01-02-26-03-04-05;\r\nR-1\\POC1:A;\r\n"
              "R-1\\RI5:01-02-26-03-04-05;\r\nR-1\\DPOC1:B;\r\n");
}

TEST_F(RSheetTest, ShowsTheFormOfTheDateOfCreation) {
    put("R-1\\ID:Deck;\r\n");
    for (const auto& [edition, shape] :
         {std::pair(1996, "(MM-DD-YY-HH-MM-SS)"), std::pair(1999, "(MM-DD-YYYY-HH-MM-SS)")}) {
        EXPECT_FALSE(edit(edition, [shape = shape](QDialog& dialog) {
            const auto labels = pageOf(dialog, "Tape4")->findChildren<QLabel*>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
                return label->text() == QLatin1String(shape);
            })) << shape;
            press(dialog, "cancel");
        }));
    }
}

TEST_F(RSheetTest, AsksForADateUntilItIsOneWith447) {
    put("R-1\\ID:Deck;\r\n");
    t.ui.texts = {"13-02-26-03-04-05", "12-02-26-03-04-05"};
    EXPECT_TRUE(edit(1996, [](QDialog& dialog) {
        press(*pageOf(dialog, "Tape4"), "RI4");
        press(dialog, "ok");
    }));
    EXPECT_EQ(t.ui.textPrompts[0].title, "Enter Date & Time (MM-DD-YY-HH-MM-SS)");
    ASSERT_EQ(t.ui.countBoxes(447), 1);
    EXPECT_TRUE(t.ui.hasText("MM-DD-YY-HH-MM-SS"));
    EXPECT_EQ(file(), "R-1\\ID:Deck;\r\nR-1\\RI4:12-02-26-03-04-05;\r\n");
}

TEST_F(RSheetTest, RefusesASemicolonWith402) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_FALSE(edit(2011, [](QDialog& dialog) {
        type(*pageOf(dialog, "Tape1"), "R1", QStringLiteral("a;b"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
        if (dialog.isVisible()) {
            dialog.done(QDialog::Rejected);
        }
    }));
    EXPECT_GE(t.ui.countBoxes(402), 1);
}

TEST_F(RSheetTest, EditsModulesMediaAndReferenceTracks) {
    put("R-1\\ID:Deck;\r\nR-1\\RIM\\N:1;\r\nR-1\\RIMI-1:LONGER;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2009, [this](QDialog& dialog) {
        auto* information = pageOf(dialog, "Tape3");
        door.next(fillRow({{"RIMS", "s"}, {"RIMF", "f"}}));
        press(*find<QWidget>(*information, "modules"), "edit");
        door.next(fillRow({{"RMMID", "1"}, {"RMMS", "m"}}));
        press(*find<QWidget>(*information, "media"), "add");
        door.next(fillRow({{"RMMID", "2"}}));
        press(*find<QWidget>(*information, "media"), "add");
        press(*find<QWidget>(*information, "media"), "delete");
        auto* reference = pageOf(dialog, "Tape9");
        door.next(fillRow({{"RT1", "3"}, {"RT2", "100"}}));
        press(*find<QWidget>(*reference, "referenceTracks"), "add");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\RIM\\N:1;\r\nR-1\\RIMI-1:LONGER;\r\nR-1\\RIMS-1:s;\r\n"
              "R-1\\RIMF-1:f;\r\nR-1\\RMM\\N:1;\r\nR-1\\RMMID-1:1;\r\nR-1\\RMMS-1:m;\r\n"
              "R-1\\EV\\E:F;\r\nR-1\\IDX\\E:F;\r\nR-1\\RT\\N:1;\r\nR-1\\RT1-1:3;\r\n"
              "R-1\\RT2-1:100;\r\n");
    ASSERT_EQ(t.ui.countBoxes(83), 1);
    EXPECT_EQ(t.ui.boxes[0].title, "Delete Recorder Removable Media Module Definition");
    EXPECT_EQ(t.ui.boxes[0].shownText(), "Delete This Entry?");
}

TEST_F(RSheetTest, AsksUnderTheNameOfEachListBeforeItDeletes) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDT-1:ETHIN;\r\n"
        "R-1\\NNET\\N-1:1;\r\nR-1\\ENBR-1-1:1;\r\nR-1\\ENAM-1-1:net;\r\nR-1\\RIM\\N:1;\r\n"
        "R-1\\RIMI-1:A;\r\nR-1\\RMM\\N:1;\r\nR-1\\RMMID-1:B;\r\nR-1\\EV\\N:1;\r\n"
        "R-1\\EV\\PM\\N-1:1;\r\nR-1\\EV\\PM\\MN-1-1:M;\r\nR-1\\RT\\N:1;\r\nR-1\\RT1-1:1;\r\n");
    const auto before = file();
    const std::vector<std::pair<const char*, const char*>> lists = {
        {"Tape3", "modules"},        {"Tape3", "media"}, {"Tape6", "measurementsToProcess"},
        {"Tape6", "events"},         {"Tape8", "items"}, {"Tape8", "tracks"},
        {"Tape9", "referenceTracks"}};
    const auto deleteAll = [&](QDialog& dialog) {
        for (const auto& [page, list] : lists) {
            press(*find<QWidget>(*pageOf(dialog, page), list), "delete");
        }
    };
    EXPECT_FALSE(edit(2011, [&](QDialog& dialog) {
        deleteAll(dialog);
        EXPECT_FALSE(dynamic_cast<RecorderSheet&>(dialog).isChanged());
        press(dialog, "cancel");
    }));
    std::vector<std::string> titles;
    for (const auto& box : t.ui.boxes) {
        EXPECT_EQ(box.id, -83);
        titles.push_back(box.title);
    }
    EXPECT_EQ(titles,
              (std::vector<std::string>{
                  "Delete Recorder Module Definition",
                  "Delete Recorder Removable Media Module Definition",
                  "Delete 'Measurement to Process' Entry?", "Delete Recording Event Definition",
                  "Delete This Channel Data Definition", "Delete Data Track Definition",
                  "Delete Reference Track Definition"}));
    EXPECT_EQ(file(), before);
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2011, [&](QDialog& dialog) {
        deleteAll(dialog);
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\N:0;\r\nR-1\\RIM\\N:0;\r\nR-1\\RMM\\N:0;\r\nR-1\\EV\\E:F;\r\n"
              "R-1\\EV\\N:0;\r\nR-1\\IDX\\E:F;\r\nR-1\\RT\\N:0;\r\n");
}

TEST_F(RSheetTest, WhatTheListsDoNotKnowOfARowGoesWithIt) {
    put("R-1\\ID:Deck;\r\nR-1\\RMM\\N:2;\r\nR-1\\RMMID-1:1;\r\nR-1\\RMMID-2:2;\r\n"
        "R-1\\RIMMID-1:a;\r\nR-1\\RIMMID-2:b;\r\n");
    t.ui.otherwise = Button::Yes;
    EXPECT_TRUE(edit(2009, [](QDialog& dialog) {
        press(*find<QWidget>(*pageOf(dialog, "Tape3"), "media"), "delete");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\RMM\\N:1;\r\nR-1\\RMMID-1:2;\r\nR-1\\EV\\E:F;\r\n"
              "R-1\\IDX\\E:F;\r\nR-1\\RIMMID-1:b;\r\n");
}

TEST_F(RSheetTest, ACancelledRowIsGoneAgain) {
    put("R-1\\ID:Deck;\r\n");
    EXPECT_FALSE(edit(2011, [this](QDialog& dialog) {
        auto* list = find<EditableList>(*pageOf(dialog, "Tape6"), "events");
        door.next([](QDialog& row) { press(row, "cancel"); });
        press(*list, "add");
        EXPECT_EQ(list->rowCount(), 0);
        press(dialog, "cancel");
    }));
}

TEST_F(RSheetTest, EditsEventsAndTheirMeasurements) {
    put("R-1\\ID:Deck;\r\nR-1\\EV\\N:2;\r\nR-1\\EV\\ID-1:B;\r\nR-1\\EV\\T-1:Q;\r\n"
        "R-1\\EV\\PM\\N-1:1;\r\nR-1\\EV\\PM\\MN-1-1:M;\r\n");
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        auto* page = pageOf(dialog, "Tape6");
        auto* events = find<EditableList>(*page, "events");
        auto* measurements = find<EditableList>(*page, "measurementsToProcess");
        EXPECT_EQ(events->rows()[0][3], "");  // a type that is no entry
        EXPECT_EQ(events->rows()[1][0], "ID2");
        EXPECT_EQ(measurements->rowCount(), 1);
        door.next(fillRow({{"EV\\ID", "A"},
                           {"EV\\D", "new"},
                           {"EV\\EDP", "True"},
                           {"EV\\T", "Recorder"},
                           {"EV\\P", "Priority 5"},
                           {"EV\\CM", "Mode 6"},
                           {"EV\\IC", "False"},
                           {"EV\\LC", "9"},
                           {"EV\\MS", "src"},
                           {"EV\\MN", "name"},
                           {"EV\\DLN", "link"}}));
        press(*events, "add");
        EXPECT_EQ(measurements->rowCount(), 0);
        door.next(fillRow({{"EV\\PM\\MN", "X"}, {"EV\\PM\\PRE", "1"}, {"EV\\PM\\PST", "2"}}));
        press(*measurements, "add");
        // Sorted, the new event is shown first; it stays the third of the file.
        events->sortBy(0);
        events->selectRow(2);
        EXPECT_EQ(events->view()->currentIndex().row(), 0);
        EXPECT_EQ(measurements->rows()[0][0], "X");
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(),
              "R-1\\ID:Deck;\r\nR-1\\EV\\E:F;\r\nR-1\\EV\\N:3;\r\nR-1\\EV\\ID-1:B;\r\n"
              "R-1\\EV\\T-1:Q;\r\nR-1\\EV\\PM\\N-1:1;\r\nR-1\\EV\\PM\\MN-1-1:M;\r\n"
              "R-1\\EV\\ID-2:ID2;\r\nR-1\\EV\\ID-3:A;\r\n"
              "R-1\\EV\\D-3:new;\r\nR-1\\EV\\EDP-3:T;\r\nR-1\\EV\\T-3:R;\r\nR-1\\EV\\P-3:5;\r\n"
              "R-1\\EV\\CM-3:6;\r\nR-1\\EV\\IC-3:F;\r\nR-1\\EV\\LC-3:9;\r\nR-1\\EV\\MS-3:src;\r\n"
              "R-1\\EV\\MN-3:name;\r\nR-1\\EV\\DLN-3:link;\r\nR-1\\EV\\PM\\N-3:1;\r\n"
              "R-1\\EV\\PM\\MN-3-1:X;\r\nR-1\\EV\\PM\\PRE-3-1:1;\r\nR-1\\EV\\PM\\PST-3-1:2;\r\n"
              "R-1\\IDX\\E:F;\r\n");
}

TEST_F(RSheetTest, OffersTheButtonsOfItsSurroundings) {
    put("R-1\\ID:Deck;\r\n");
    std::vector<std::string> opened;
    around.editMultiplex = [&](FormContext&, const std::string& source) {
        opened.push_back("multiplex " + source);
        return true;
    };
    around.editMessages = [&](FormContext&, const std::string& source) {
        opened.push_back("messages " + source);
        return false;
    };
    EXPECT_TRUE(edit(2009, [](QDialog& dialog) {
        press(dialog, "editMultiplex");
        press(dialog, "editMessages");
        press(dialog, "cancel");
    }));
    EXPECT_EQ(opened, (std::vector<std::string>{"multiplex Deck", "messages Deck"}));
    EXPECT_TRUE(edit(2007, [](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QWidget*>(QStringLiteral("editMessages")), nullptr);
        press(dialog, "editMultiplex");
        press(dialog, "cancel");
    }));
}

TEST_F(RSheetTest, DoesNotBringBackTheOldNameOfALinkThatWasRenamedMeanwhile) {
    put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDLN-1:Old;\r\n");
    around.editMultiplex = [this](FormContext&, const std::string&) {
        put("R-1\\ID:Deck;\r\nR-1\\N:1;\r\nR-1\\TK1-1:1;\r\nR-1\\CDLN-1:New;\r\n");
        return true;
    };
    EXPECT_TRUE(edit(2007, [](QDialog& dialog) {
        type(*pageOf(dialog, "Tape1"), "R1", QStringLiteral("x"));
        press(dialog, "editMultiplex");
        EXPECT_EQ(find<EditableList>(*pageOf(dialog, "Tape8"), "tracks")->rows()[0][7], "New");
        press(dialog, "ok");
    }));
    EXPECT_NE(file().find("R-1\\R1:x;"), std::string::npos);
    EXPECT_NE(file().find("R-1\\CDLN-1:New;"), std::string::npos);
}

TEST_F(RSheetTest, ANewGroupIsWrittenByOkAlone) {
    EXPECT_TRUE(edit(2011, [this](QDialog& dialog) {
        EXPECT_TRUE(t.ui.hasBox(310));
        press(dialog, "ok");
    }));
    EXPECT_TRUE(file().starts_with("R-1\\ID:Deck;\r\n")) << file();
    EXPECT_NE(file().find("R-1\\RI4:"), std::string::npos) << "with the present date";
}

TEST_F(RSheetTest, KeepsWhatItDoesNotKnowIfTheUserWants) {
    put("R-1\\ID:Deck;\r\nR-1\\CRE:F;\r\n");
    t.ui.queued = {Button::Yes};
    EXPECT_TRUE(edit(2004, [](QDialog& dialog) {
        type(*pageOf(dialog, "Tape1"), "R1", QStringLiteral("x"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(file(), "R-1\\ID:Deck;\r\nR-1\\R1:x;\r\nR-1\\CRE:F;\r\n");
}

TEST_F(RSheetTest, TellsWith159ThatItCanNotBeShown) {
    put("R-1\\ID:Deck;\r\n");
    for (int i = 0; i < DialogDoor::kMostSheets; ++i) {
        ASSERT_TRUE(door.enterSheet());
    }
    EXPECT_FALSE(editRecorder(form, t.context, "Deck", around));
    ASSERT_EQ(t.ui.countBoxes(159), 1);
    EXPECT_TRUE(t.ui.hasText("INTERNAL ERROR: Unable to display dialog"));
}

TEST_F(RSheetTest, DoesNotOpenAfterACancelledLoad) {
    put("R-1\\ID:Deck;\r\n");
    t.ui.cancelAtPoll = 1;
    EXPECT_FALSE(editRecorder(form, t.context, "Deck", around));
    EXPECT_TRUE(door.names.empty());
}

}  // namespace
}  // namespace kavu
