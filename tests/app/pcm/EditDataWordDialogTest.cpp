#include "app/pcm/WordStage.h"
#include "app/support/WidgetChecks.h"
#include "groups/MeasurementNames.h"
#include "vocabulary/Vocabularies.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScrollBar>

namespace kavu {
namespace {

using test::choose;
using test::entries;
using test::find;
using test::press;
using test::textOf;
using test::type;
using test::WordStage;

TEST(EditDataWordDialogTest, ANewMeasurementIsStoredAsItWasEntered) {
    WordStage stage;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), QStringLiteral("Pre_106_11_EditDataWord"));
        EXPECT_EQ(toBytes(dialog.windowTitle()), "Edit Data Word Definition (FWP: 3  FN: 2)");
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(textOf(dialog, "wordLength"), "16");
        EXPECT_EQ(textOf(dialog, "bitmask"), "FW");
        type(dialog, "measurementName", QStringLiteral("SPEED"));
        choose(dialog, "parity", QStringLiteral("ODD"));
        choose(dialog, "parityTransferOrder", QStringLiteral("Trails"));
        choose(dialog, "measurementTransferOrder", QStringLiteral("LSB"));
        choose(dialog, "filtering", QStringLiteral("Filter"));
        stage.ui.texts = {"11"};
        press(dialog, "editMask");
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 2));
    const auto& cell = stage.at(3, 1, "SPEED");
    EXPECT_EQ(cell.parity, "OD");
    EXPECT_EQ(cell.parityTransferOrder, "T");
    EXPECT_EQ(cell.transferOrder, "L");
    EXPECT_EQ(cell.filterOverwrite, "F");
    EXPECT_EQ(cell.mask, "1100000000000000");
    EXPECT_EQ(cell.locationType, "MF");
    EXPECT_TRUE(stage.format.changed);
    EXPECT_TRUE(stage.ui.boxes.empty());
}

/// The texts that the vocabulary of the D group has for a command.
QStringList vocabularyTexts(std::string_view code) {
    QStringList texts;
    for (const auto& field : findVocabulary('D')->fields) {
        if (field.code == code) {
            for (const auto& choice : field.choices) {
                texts.append(toQString(choice.text));
            }
        }
    }
    return texts;
}

TEST(EditDataWordDialogTest, OffersTheTextsThatTheVocabularyShows) {
    WordStage stage;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(entries(dialog, "parity"),
                  (QStringList{QStringLiteral("EVEN"), QStringLiteral("ODD"),
                               QStringLiteral("NONE"), QStringLiteral("DEFAULT")}));
        EXPECT_EQ(
            entries(dialog, "measurementTransferOrder"),
            (QStringList{QStringLiteral("MSB"), QStringLiteral("LSB"), QStringLiteral("Default")}));
        EXPECT_EQ(entries(dialog, "parity"), vocabularyTexts("MN1-n-m"));
        EXPECT_EQ(entries(dialog, "parityTransferOrder"), vocabularyTexts("MN2-n-m"));
        EXPECT_EQ(entries(dialog, "measurementTransferOrder"), vocabularyTexts("MN3-n-m"));
        EXPECT_EQ(entries(dialog, "filtering"), vocabularyTexts("MFOT-n-m"));
        EXPECT_EQ(entries(dialog, "measurementTransferOrder"), vocabularyTexts("TD4-n-m-k"));
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.edit(3, 1));
}

TEST(EditDataWordDialogTest, OkWithoutAnEditStoresNothing) {
    WordStage stage;
    stage.place(3, 1, "A");
    EXPECT_TRUE(stage.leavesAlone(3, 1, [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_TRUE(stage.ui.boxes.empty());
}

TEST(EditDataWordDialogTest, CancelAsksOnlyAfterAnEdit) {
    WordStage stage;
    stage.place(3, 1, "A");
    EXPECT_TRUE(stage.leavesAlone(3, 1, [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(stage.ui.boxes.empty());
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("B"));
        stage.ui.otherwise = Button::No;
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(stage.ui.hasText("Do you really want to cancel?"));
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
    EXPECT_EQ(stage.ui.boxes.size(), 2U);
}

TEST(EditDataWordDialogTest, ClosingTheWindowOffersToSave) {
    WordStage stage;
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("B"));
        stage.ui.queued = {Button::Cancel, Button::No};
        dialog.close();
        EXPECT_TRUE(dialog.isVisible());
        dialog.close();
    }));
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("B"));
        stage.ui.queued = {Button::Yes};
        dialog.close();
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("B"), "3/1 ");
}

TEST(EditDataWordDialogTest, WhatIsRefusedKeepsTheDialogAndTheStream) {
    WordStage stage;
    stage.place(9, 1, "TAKEN");
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("X"));
        QTest::keyClick(find<QLineEdit>(dialog, "measurementName"), Qt::Key_Backspace);
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 326);
        type(dialog, "measurementName", QStringLiteral("taken"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 334);
        type(dialog, "measurementName", QStringLiteral("a;b"));
        press(dialog, "ok");
        EXPECT_TRUE(stage.ui.hasBox(402));
        type(dialog, "measurementName", QStringLiteral("FREE"));
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 328);
        choose(dialog, "locationDefinition", QStringLiteral("I - "));
        type(dialog, "interval", QStringLiteral("0"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 337);
        type(dialog, "interval", QStringLiteral("2"));
        type(dialog, "numberOfLocations", QStringLiteral("2"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 330);  // word 5 is a subframe
        choose(dialog, "measurementLocationType", QStringLiteral("MFFR"));
        choose(dialog, "locationDefinition", QStringLiteral("I - "));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 336);
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(EditDataWordDialogTest, ATaggedNameIsRefusedFrom2011On) {
    WordStage stage(2011);
    stage.format.dGroup = 1;
    stage.write("[kavu]DTAG0000.D01", "D-1\\MN-1-1:TAGGED;\r\n");
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("tagged"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 339);
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
}

TEST(EditDataWordDialogTest, TheLocationTypesAreThoseOfTheWordAndTheEdition) {
    const auto types = [](WordStage& stage, int fwp) {
        QStringList found;
        EXPECT_TRUE(stage.leavesAlone(fwp, 1, [&](QDialog& dialog) {
            found = test::entries(dialog, "measurementLocationType");
            press(dialog, "cancel");
        }));
        return toBytes(found.join(u','));
    };
    WordStage stage;
    EXPECT_EQ(types(stage, 5),
              "SF    - Sub Frame,SFSC  - Sub Frame Supercommutated,SFFR  - Sub Frame "
              "Fragmented,WDFR  - Word/Frame");
    EXPECT_EQ(types(stage, 30), "MF    - Minor Frame,WDFR  - Word/Frame");
    EXPECT_EQ(types(stage, 3),
              "MF    - Minor Frame,MFSC  - Minor Frame Supercommutated,MFFR  - Minor Frame "
              "Fragmented,WDFR  - Word/Frame");
    WordStage old(2001);
    EXPECT_EQ(types(old, 30), "MF    - Minor Frame");
    stage.format.implicitSubframes = true;
    EXPECT_EQ(types(stage, 3), "WDFR  - Word/Frame");
}

TEST(EditDataWordDialogTest, FilteringIsShownFrom2009OnAndEditableInThatEditionOnly) {
    for (const auto& [edition, isShown, isEnabled] :
         {std::tuple{2007, false, false}, {2009, true, true}, {2011, true, false}}) {
        WordStage stage(edition);
        EXPECT_TRUE(
            stage.leavesAlone(3, 1, [&, shown = isShown, enabled = isEnabled](QDialog& dialog) {
                const auto* box = dialog.findChild<QComboBox*>(QStringLiteral("filtering"));
                EXPECT_EQ(box != nullptr, shown);
                EXPECT_EQ(box != nullptr && box->isEnabled(), enabled);
                EXPECT_EQ(dialog.findChild<QComboBox*>(QStringLiteral("measurementLocationType")) !=
                              nullptr,
                          dialog.objectName() != QStringLiteral("EditDataWord"));
                press(dialog, "cancel");
            }));
    }
}

TEST(EditDataWordDialogTest, WithoutADatabaseItsControlsAreUnavailable) {
    WordStage stage;
    EXPECT_TRUE(stage.leavesAlone(3, 1, [](QDialog& dialog) {
        for (const auto* name :
             {"storeInDatabase", "autoAddRoot", "autoAddChildren", "selectFromDatabase",
              "editConversion", "deleteMeasurement", "move"}) {
            EXPECT_FALSE(find<QWidget>(dialog, name)->isEnabled()) << name;
        }
        press(dialog, "cancel");
    }));
}

TEST(EditDataWordDialogTest, APickFromTheDatabaseFillsTheFieldsAndBringsItsRoot) {
    WordStage stage;
    const DatabaseRecord record{"PICKED", "WHOLE", "1111000000000000", "L", "T", "EV"};
    stage.steps.save.database.find = [&](UserInterface*, std::string_view name) {
        return name == "PICKED"
                   ? std::optional(record)
                   : std::optional(DatabaseRecord{std::string(name), "", "FW", "M", "D", "DE"});
    };
    stage.steps.save.database.forEachChild = [](UserInterface*, std::string_view, const auto&) {
        return true;
    };
    stage.steps.save.database.select = [&](UserInterface*) { return std::optional(record); };
    std::string stored;
    stage.steps.save.storeInDatabase = [&](UserInterface*, std::string_view name) {
        stored = name;
    };
    AutoAdd kept;
    stage.steps.autoAdd = [&] { return kept; };
    stage.steps.keepAutoAdd = [&](const AutoAdd& wanted) { kept = wanted; };
    stage.door.next([](QDialog& dialog) {
        press(dialog, "selectFromDatabase");
        EXPECT_EQ(textOf(dialog, "measurementName"), "PICKED");
        EXPECT_EQ(textOf(dialog, "bitmask"), "1111000000000000");
        find<QCheckBox>(dialog, "storeInDatabase")->click();
        find<QCheckBox>(dialog, "autoAddRoot")->click();
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.at(3, 1, "PICKED").parity, "EV");
    EXPECT_EQ(stage.at(3, 1, "PICKED").transferOrder, "L");
    EXPECT_EQ(stage.places("WHOLE"), "3/1 ");
    EXPECT_EQ(stored, "PICKED");
    EXPECT_TRUE(kept.root);
    EXPECT_EQ(stage.settings.integer("SaveMDB", 0), 1);
}

TEST(EditDataWordDialogTest, ARootIsNotAddedForASupercommutatedPick) {
    WordStage stage;
    stage.steps.save.database.find = [](UserInterface*, std::string_view name) {
        return std::optional(DatabaseRecord{std::string(name), "WHOLE", "FW", "M", "D", "DE"});
    };
    stage.steps.save.database.forEachChild = [](UserInterface*, std::string_view, const auto&) {
        return true;
    };
    stage.steps.save.database.select = [](UserInterface*) {
        return std::optional(DatabaseRecord{"PICKED", "WHOLE", "FW", "M", "D", "DE"});
    };
    stage.steps.autoAdd = [] { return AutoAdd{true, false}; };
    stage.door.next([](QDialog& dialog) {
        press(dialog, "selectFromDatabase");
        choose(dialog, "measurementLocationType", QStringLiteral("MFSC"));
        choose(dialog, "locationDefinition", QStringLiteral("I - "));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.lastBox(), 412);
    EXPECT_EQ(stage.places("PICKED"), "3/1 ");
    EXPECT_EQ(stage.places("WHOLE"), "");
}

TEST(EditDataWordDialogTest, TheConversionOfAStoredMeasurementIsEdited) {
    WordStage stage;
    stage.place(3, 1, "A");
    stage.place(30, 1, "COUNT");
    std::string edited;
    stage.steps.editConversion = [&](QWidget&, const std::string& name, int bits) {
        edited = name + " " + std::to_string(bits);
        return false;  // left with Cancel
    };
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        press(dialog, "editConversion");
        type(dialog, "measurementName", QStringLiteral("B"));
        EXPECT_FALSE(find<QPushButton>(dialog, "editConversion")->isEnabled());
        EXPECT_FALSE(find<QPushButton>(dialog, "move")->isEnabled());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
    EXPECT_EQ(edited, "A 16");
    // A counter has no conversion to edit.
    EXPECT_TRUE(stage.leavesAlone(30, 1, [](QDialog& dialog) {
        EXPECT_FALSE(find<QPushButton>(dialog, "editConversion")->isEnabled());
        press(dialog, "cancel");
    }));
}

TEST(EditDataWordDialogTest, ANewNameGoesToTheConversion) {
    WordStage stage;
    stage.place(3, 1, "A");
    std::string renamed;
    stage.steps.save.renameConversion = [&](UserInterface*, std::string_view from,
                                            std::string_view to) {
        renamed = std::string(from) + " " + std::string(to);
    };
    stage.door.next([](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("B"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(renamed, "A B");
    EXPECT_EQ(stage.places("B"), "3/1 ");
    EXPECT_EQ(stage.places("A"), "");
}

TEST(EditDataWordDialogTest, MoveOffersEveryWordAndFrameAndSavesTheFormat) {
    WordStage stage;
    stage.place(3, 1, "A");
    int saves = 0;
    stage.steps.saveFormat = [&] { return ++saves > 0; };
    stage.ui.choices = {-1};
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        press(dialog, "move");
        EXPECT_TRUE(dialog.isVisible());
        ASSERT_EQ(stage.ui.listPrompts.size(), 1U);
        EXPECT_EQ(stage.ui.listPrompts[0].first, "Move This Measurement To:");
        EXPECT_EQ(stage.ui.listPrompts[0].second[0], "Word #1 (every frame)\n");
        EXPECT_EQ(stage.ui.listPrompts[0].second[5], "Word #5 Frame #2\n");
        press(dialog, "cancel");
    }));
    stage.ui.choices = {5};
    stage.door.next([](QDialog& dialog) { press(dialog, "move"); });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("A"), "5/2 ");
    EXPECT_EQ(stage.at(5, 2, "A").locationType, "SF");
    EXPECT_EQ(saves, 1);
}

TEST(EditDataWordDialogTest, DeleteAsksAndForgetsTheConversion) {
    WordStage stage;
    stage.place(3, 1, "A");
    std::string deleted;
    stage.steps.edit.deleteConversion = [&](UserInterface*, std::string_view name) {
        deleted = name;
    };
    EXPECT_TRUE(stage.leavesAlone(3, 1, [&](QDialog& dialog) {
        press(dialog, "deleteMeasurement");
        EXPECT_EQ(stage.lastBox(), 117);
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    stage.ui.byId[117] = Button::Yes;
    stage.door.next([](QDialog& dialog) { press(dialog, "deleteMeasurement"); });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.places("A"), "");
    EXPECT_EQ(deleted, "A");
}

TEST(EditDataWordDialogTest, AtAPlaceOfSeveralMeasurementsOneIsChosenOrANewOne) {
    WordStage stage;
    stage.place(3, 1, "A");
    stage.place(3, 1, "B");
    EXPECT_FALSE(stage.edit(3, 1));  // none chosen
    stage.ui.choices = {1, 2};
    EXPECT_TRUE(stage.leavesAlone(3, 1, [](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "measurementName"), "B");
        press(dialog, "cancel");
    }));
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(textOf(dialog, "measurementName"), "");
        type(dialog, "measurementName", QStringLiteral("C"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.format.countMeasurementsAt(3, 1, true), 3);
}

TEST(EditDataWordDialogTest, AnUnknownCodeOfAFileStaysUntilAnotherIsChosen) {
    WordStage stage;
    Measurement odd;
    odd.name = "A";
    odd.locationType = "MF";
    odd.parity = "XX";
    odd.transferOrder = "Q";
    odd.mask = "FW";
    stage.place(3, 1, odd);
    stage.door.next([](QDialog& dialog) {
        choose(dialog, "measurementTransferOrder", QStringLiteral("MSB"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.at(3, 1, "A").parity, "XX");
    EXPECT_EQ(stage.at(3, 1, "A").transferOrder, "M");
}

/// The stream in memory is the first one, "One"; another one has A and TAKEN.
struct TwoStreams : WordStage {
    TwoStreams() : names(context) {
        write("[kavu]MULT.M01", "M-1\\BB\\DLN:One;\r\n");
        write("[kavu]MULT.M02", "M-2\\BB\\DLN:Two;\r\n");
        write("[kavu]PCMMEAS.D02", "D-2\\DLN:Two;\r\nD-2\\MN-1-1:A;\r\nD-2\\MN-1-2:TAKEN;\r\n");
        format.streamName = "One";
        EXPECT_TRUE(names.checkForDuplicates(nullptr));
        EXPECT_TRUE(names.checking());
        steps.edit.names = &names;
        steps.save.renameConversion = [this](UserInterface*, std::string_view from,
                                             std::string_view to) {
            renamed += std::string(from) + ">" + std::string(to) + " ";
        };
        place(3, 1, "A");
        format.changed = false;
    }
    MeasurementNames names;
    std::string renamed;
};

TEST(EditDataWordDialogTest, ANameOfAnotherStreamIsRefusedWhileThatIsChecked) {
    TwoStreams stage;
    EXPECT_TRUE(stage.leavesAlone(4, 1, [&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("TAKEN"));
        press(dialog, "ok");
        EXPECT_EQ(stage.lastBox(), 455);
        EXPECT_EQ(stage.ui.boxes.back().titleId, 78);
        EXPECT_EQ(stage.ui.boxes.back().text,
                  "Measurement 'TAKEN' is already being used in stream #2. Please select another "
                  "name.");
        EXPECT_TRUE(dialog.isVisible());
        stage.ui.otherwise = Button::Yes;
        press(dialog, "cancel");
    }));
    stage.names.setChecking(false, false);
    stage.door.next([](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("TAKEN"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(4, 1));
    EXPECT_EQ(stage.places("TAKEN"), "4/1 ");
}

TEST(EditDataWordDialogTest, AConversionOfAnotherStreamTooIsRenamedOnRequest) {
    TwoStreams stage;
    const auto rename = [&](const char16_t* name, Button answer) {
        stage.ui.byId[457] = answer;
        stage.door.next([&](QDialog& dialog) {
            type(dialog, "measurementName", QString::fromUtf16(name));
            press(dialog, "ok");
        });
        EXPECT_TRUE(stage.edit(3, 1));
        EXPECT_EQ(stage.lastBox(), 457);
        EXPECT_EQ(stage.ui.boxes.back().titleId, 80);
        EXPECT_NE(stage.ui.boxes.back().text.find("about to rename the EU conversions"),
                  std::string::npos);
    };
    rename(u"B", Button::No);
    EXPECT_EQ(stage.places("B"), "3/1 ");
    EXPECT_EQ(stage.renamed, "");
    auto back = stage.at(3, 1, "B");
    clearMeasurement(stage.format, "B");
    back.name = "A";
    stage.place(3, 1, back);
    rename(u"C", Button::Yes);
    EXPECT_EQ(stage.places("C"), "3/1 ");
    EXPECT_EQ(stage.renamed, "A>C ");
}

TEST(EditDataWordDialogTest, AConversionOfAnotherStreamTooIsDeletedOnRequest) {
    TwoStreams stage;
    std::string deleted;
    stage.steps.edit.deleteConversion = [&](UserInterface*, std::string_view name) {
        deleted += std::string(name);
    };
    stage.ui.byId[117] = Button::Yes;
    stage.ui.byId[457] = Button::No;
    stage.door.next([](QDialog& dialog) { press(dialog, "deleteMeasurement"); });
    EXPECT_TRUE(stage.edit(3, 1));
    EXPECT_EQ(stage.lastBox(), 457);
    EXPECT_EQ(stage.ui.boxes.back().text,
              "Warning: You are about to delete the EU conversions for measurement 'A'. This "
              "measurement is defined in another stream. If you delete this measurement, the EU "
              "conversions for this measurement will also be deleted. This may affect the "
              "measurement EU conversions with the same name that are defined in other streams."
              "\n\nIs it ok to delete this measurement's EU conversions?\n\n(Yes = delete, No = "
              "Do not alter existing EU conversions");
    EXPECT_EQ(stage.places("A"), "");
    EXPECT_EQ(deleted, "");
}

TEST(EditDataWordDialogTest, AWordOfASubframeWithoutARecordIsTold) {
    WordStage stage;
    stage.format.setWord(9, WordType::Subframe, 0, 7);
    EXPECT_FALSE(stage.edit(9, 1));
    EXPECT_EQ(stage.lastBox(), 323);
}

TEST(EditDataWordDialogTest, AWordOfAHiddenSubframeOffersWordsAndFramesOnly) {
    WordStage stage;
    ASSERT_TRUE(createSubframe(stage.format, nullptr,
                               {.fwp = 8, .hidden = HiddenMode::Hidden, .depth = 8}));
    stage.format.changed = false;
    stage.door.next([&](QDialog& dialog) {
        EXPECT_EQ(test::entries(dialog, "measurementLocationType"),
                  QStringList{QStringLiteral("WDFR  - Word/Frame")});
        EXPECT_FALSE(find<QWidget>(dialog, "move")->isVisible());
        EXPECT_EQ(test::listText(dialog, "locations"),
                  "1 | 16 | 1 | 8 | 0 | 8 | 2 | 0 | 2 | FW | Default");
        type(dialog, "measurementName", QStringLiteral("A"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(8, 2));
    EXPECT_EQ(stage.places("A"), "8/2 ");
    EXPECT_EQ(stage.at(8, 2, "A").locationType, "WDFR");
}

// Only the place that was edited went along, and the others were lost with the older type.
TEST(EditDataWordDialogTest, ChangingAnOlderTypeToWordFrameTakesAllPlacesAlong) {
    WordStage stage;
    for (const int fwp : {3, 7, 12}) {
        Measurement cell;
        cell.name = "SPEED";
        cell.locationType = "MFSC";
        cell.locationMode = "E";
        cell.locationCount = 3;
        cell.mask = "FW";
        stage.place(fwp, 1, cell);
    }
    stage.door.next([](QDialog& dialog) {
        choose(dialog, "measurementLocationType", QStringLiteral("WDFR"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(7, 1));
    EXPECT_EQ(stage.places("SPEED"), "3/1 7/1 12/1 ");
    EXPECT_EQ(stage.at(12, 1, "SPEED").locationType, "WDFR");
}

TEST(EditDataWordDialogTest, EachDeleteSaysWhatItDeletes) {
    for (const auto& [edition, type, expected] :
         {std::tuple{2011, "", "Delete Location"}, std::tuple{2009, "MFSC", "Delete Location"},
          std::tuple{2009, "MFFR", "Delete Fragment"}}) {
        WordStage stage(edition);
        stage.door.next([&, type = std::string(type), expected = expected](QDialog& dialog) {
            if (!type.empty()) {
                choose(dialog, "measurementLocationType", toQString(type));
            }
            EXPECT_EQ(find<QPushButton>(dialog, "deleteMeasurement")->text(),
                      QStringLiteral("&Delete Measurement..."));
            EXPECT_EQ(toBytes(find<QPushButton>(dialog, "delete")->text()), expected);
            stage.ui.otherwise = Button::Yes;
            press(dialog, "cancel");
        });
        EXPECT_FALSE(stage.edit(3, 1));
    }
}

TEST(EditDataWordDialogTest, AllColumnsOfTheLocationsAreVisibleOnASmallScreen) {
    WordStage stage(2011);
    stage.placeFragments(
        "WIDE", {{8, 0, 8, 1, 1, 8, "FW", 'M', 1}, {9, 0, 9, 1, 1, 8, "0000000011111111", 'L', 2}});
    stage.door.next([](QDialog& dialog) {
        EXPECT_LE(dialog.minimumSizeHint().width(), 960);
        EXPECT_LE(dialog.minimumSizeHint().height(), 520);
        dialog.resize(960, 520);
        QApplication::processEvents();
        const auto* const view = find<QTableView>(*find<QWidget>(dialog, "locations"), "rows");
        EXPECT_EQ(view->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        press(dialog, "cancel");
    });
    EXPECT_FALSE(stage.edit(8, 1));
}

TEST(EditDataWordDialogTest, AWholeWordOverAnAsyncStreamAsksFirst) {
    WordStage stage;
    stage.format.asyncFormats.resize(1);
    stage.format.asyncFormats[0].dataLinkName = "VIDEO";
    ASSERT_TRUE(placeAsyncSlots(stage.format, nullptr, 1, {9, {{1, 1, 8}}}, "FW"));
    stage.door.next([&](QDialog& dialog) {
        type(dialog, "measurementName", QStringLiteral("SPEED"));
        stage.ui.otherwise = Button::No;
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(stage.ui.hasText("'VIDEO'"));
        EXPECT_FALSE(stage.format.hasMeasurement("SPEED"));
        stage.ui.otherwise = Button::Yes;
        press(dialog, "ok");
    });
    EXPECT_TRUE(stage.edit(9, 1));
    EXPECT_TRUE(stage.format.hasMeasurement("SPEED"));
    EXPECT_EQ(stage.format.asyncCount(), 1);
}

}  // namespace
}  // namespace kavu
