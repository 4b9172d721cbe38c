// The window of the conversion type next to the sheet, the import of values, and a record
// through create, cancel, edit and save.
#include "app/conversion/EuDialogs.h"
#include "app/conversion/EuStage.h"
#include "app/framework/FieldForm.h"
#include "app/support/WidgetChecks.h"

#include <functional>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class EuDetailTest : public test::EuStage {};

// --- the window of the type --------------------------------------------------------------------

TEST_F(EuDetailTest, TheButtonShowsAndHidesTheWindow) {
    open();
    run("B", [](QDialog& dialog) {
        auto& sheet = sheetOf(dialog);
        sheet.openPage(1);
        EXPECT_EQ(buttonText(dialog), QStringLiteral("Show Conversion Details"));
        press(dialog, "showDetails");
        ASSERT_NE(sheet.details(), nullptr);
        EXPECT_TRUE(sheet.details()->isVisible());
        EXPECT_EQ(buttonText(dialog), QStringLiteral("Hide Conversion Details"));
        press(dialog, "showDetails");
        EXPECT_EQ(sheet.details(), nullptr);
        EXPECT_EQ(buttonText(dialog), QStringLiteral("Show Conversion Details"));
        press(dialog, "showDetails");
        QTest::keyClick(sheet.details(), Qt::Key_Escape);
        QApplication::processEvents();
        EXPECT_EQ(sheet.details(), nullptr) << "Escape hides as the button does";
        press(dialog, "ok");
    });
    EXPECT_FALSE(f->document.changed) << "looking is no change";
}

TEST_F(EuDetailTest, EachTypeHasItsWindowAndEachIsInOrder) {
    open();
    run("B", [](QDialog& dialog) {
        auto& sheet = sheetOf(dialog);
        sheet.openPage(1);
        press(dialog, "showDetails");
        const std::pair<const char*, const char*> rows[] = {
            {"PRS - Pair Set", "PairSets"},
            {"NPC - Coefficients (Negative Powers of X)", "coefficients"},
            {"COE - Coefficients", "coefficients"},
            {"DER - Derived", "derived"},
            {"DIS - Discrete", "discrete"},
            {"PTM - PCM Time", "TimePCM"},
            {"BTM - 1553 Time", "Time1553"},
            {"OTH - Other", "other"},
            {"VID - Video", "DigitalVideo"},
            {"VOI - Voice", "DigitalVoice"}};
        for (const auto& [text, name] : rows) {
            choose(dialog, "DCT", text);
            EXPECT_EQ(nameOf(dialog), name);
            ASSERT_NE(sheet.details(), nullptr);
            EXPECT_EQ(test::checkWindow(*sheet.details()), std::vector<std::string>{}) << text;
        }
        dialog.done(QDialog::Rejected);
    });
}

TEST_F(EuDetailTest, WantsPlotGivesPairSetsTheWindowWithItsPlot) {
    open();
    f->settings.write("WantsPlot", "1");
    run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        EXPECT_EQ(nameOf(dialog), "PairSetsPlot");
        find<QCheckBox>(*sheetOf(dialog).details(), "showPlot")->click();
        press(dialog, "showDetails");
        press(dialog, "showDetails");
        EXPECT_EQ(nameOf(dialog), "PairSets") << "it comes again as it was left";
        EXPECT_FALSE(find<QCheckBox>(*sheetOf(dialog).details(), "showPlot")->isChecked());
        dialog.done(QDialog::Rejected);
    });
}

constexpr const char* kCurve =
    "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS1:Y;C-1\\PS2:1;C-1\\PS3-1:0;C-1\\PS4-1:0;"
    "C-1\\PS3-2:10;C-1\\PS4-2:20;";

/// Leaves a word size in its field as a person does who goes on to another window.
void leaveWordSize(QDialog& dialog, const char* text) {
    auto* const details = dynamic_cast<EuSheet&>(dialog).details();
    ASSERT_NE(details, nullptr);
    auto* const field = find<QLineEdit>(*details, "defaultBits");
    ASSERT_TRUE(field->isEnabled());
    details->activateWindow();
    QApplication::processEvents();
    type(*details, "defaultBits", QLatin1String(text));
    ASSERT_EQ(QApplication::focusWidget(), field);
}

TEST_F(EuDetailTest, AWordSizeThatWasLeftInItsFieldIsTakenWithTheWindow) {
    open(2011, kCurve);
    run("A", [&](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        leaveWordSize(dialog, "12");
        press(dialog, "showDetails");
        EXPECT_EQ(sheetOf(dialog).details(), nullptr);
        EXPECT_EQ(f->settings.integer("CurveDefBits", 16), 12);
        press(dialog, "showDetails");
        leaveWordSize(dialog, "0");
        press(dialog, "showDetails");
        EXPECT_EQ(f->ui.countBoxes(405), 1);
        ASSERT_NE(sheetOf(dialog).details(), nullptr) << "the refused value is looked at first";
        leaveWordSize(dialog, "-1");
        press(dialog, "ok");
        EXPECT_EQ(f->ui.countBoxes(405), 2);
        EXPECT_TRUE(dialog.isVisible());
        leaveWordSize(dialog, "14");
        press(dialog, "ok");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(f->settings.integer("CurveDefBits", 16), 14);
    EXPECT_EQ(f->ui.boxes.size(), 2U);
}

TEST_F(EuDetailTest, AWordSizeThatWasLeftInItsFieldIsNobodysAfterACancel) {
    open(2011, kCurve);
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& dialog) { press(dialog, "cancel"); },
        [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
        [](QDialog& dialog) { dialog.close(); }};
    for (const auto& leave : ways) {
        run("A", [&](QDialog& dialog) {
            sheetOf(dialog).openPage(1);
            press(dialog, "showDetails");
            leaveWordSize(dialog, "0");
            leave(dialog);
            EXPECT_FALSE(dialog.isVisible());
        });
    }
    EXPECT_TRUE(f->ui.boxes.empty());
    EXPECT_EQ(f->settings.integer("CurveDefBits", 16), 16);
}

TEST_F(EuDetailTest, SpecialProcessingShowsNoWindowAndKeepsTheButtonDisabled) {
    open(2011, "C-1\\DCN:A;C-1\\DCT:SP;");
    run("A", [](QDialog& dialog) {
        auto& sheet = sheetOf(dialog);
        sheet.openPage(1);
        EXPECT_EQ(find<QComboBox>(dialog, "DCT")->currentText(),
                  QStringLiteral("SP  - Special Processing"));
        EXPECT_FALSE(find<QPushButton>(dialog, "showDetails")->isEnabled());
        choose(dialog, "DCT", "COE - Coefficients");
        press(dialog, "showDetails");
        choose(dialog, "DCT", "SP  - Special Processing");
        EXPECT_EQ(sheet.details(), nullptr);
        EXPECT_FALSE(find<QPushButton>(dialog, "showDetails")->isEnabled());
        choose(dialog, "DCT", "NON - None");
        EXPECT_FALSE(find<QPushButton>(dialog, "showDetails")->isEnabled());
        dialog.done(QDialog::Rejected);
    });
}

TEST_F(EuDetailTest, NegativePowersAreNeitherOfferedNorShownBefore2007) {
    open(2005, "C-1\\DCN:A;C-1\\DCT:NPC;");
    run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        auto* const types = find<QComboBox>(dialog, "DCT");
        EXPECT_EQ(types->findText(QStringLiteral("NPC"), Qt::MatchStartsWith), -1);
        EXPECT_EQ(types->placeholderText(), QStringLiteral("NPC"));
        EXPECT_FALSE(find<QPushButton>(dialog, "showDetails")->isEnabled());
        EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("editBitWeights")), nullptr);
        type(dialog, "FPF", QStringLiteral("IEEE_32"));
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("A", "DCT"), "NPC") << "what is not known is kept";
}

TEST_F(EuDetailTest, ChangingTheTypeAndBackKeepsThePairs) {
    open();
    EXPECT_TRUE(run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        choose(dialog, "DCT", "COE - Coefficients");
        type(*sheetOf(dialog).details(), "CO", QStringLiteral("3"));
        choose(dialog, "DCT", "PRS - Pair Set");
        EXPECT_EQ(nameOf(dialog), "PairSets");
        press(dialog, "ok");
    }));
    EXPECT_EQ(f->value("A", "PS4-2"), "20");
    EXPECT_EQ(f->value("A", "DCT"), "PRS");
    EXPECT_NE(f->save().find("C-1\\PS4-2:20;"), std::string::npos);
}

TEST_F(EuDetailTest, CoefficientsAreEditedTermByTerm) {
    open();
    f->ui.otherwise = Button::Yes;
    door.next([](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        type(window, "CO", QStringLiteral("-0.5"));
        press(window, "add");
        press(window, "add");
        auto& list = *find<EditableList>(window, "CO\\N");
        EXPECT_EQ(list.rows(),
                  (std::vector<ListRow>{{"C(1)", "6"}, {"C(2)", "1e-3"}, {"C(3)", "7"}}));
        list.selectRow(0);
        press(window, "delete");
        EXPECT_EQ(list.rows(), (std::vector<ListRow>{{"C(1)", "1e-3"}, {"C(2)", "7"}}));
        press(dialog, "ok");
    });
    const auto enter = [](const char* prompt, const char* bad, const char* good) {
        return [=](QDialog& dialog) {
            const auto labels = dialog.findChildren<QLabel*>();
            EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
                return label->text().contains(QString::fromUtf8(prompt));
            })) << prompt;
            auto* const edit = dialog.findChild<QLineEdit*>();
            edit->setText(QString::fromUtf8(bad));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible()) << bad;
            edit->setText(QString::fromUtf8(good));
            press(dialog, "ok");
        };
    };
    door.next(enter("Enter Coefficient 'C(2)'", "nan", "1e-3"));
    door.next(enter("Enter Coefficient 'C(3)'", "1;2", "7"));
    EXPECT_TRUE(editConversion(*form, f->context, f->conversions, "B"));
    EXPECT_TRUE(f->ui.hasText("Value entered is not a valid floating point number."));
    const auto saved = f->save();
    for (const char* const part : {"CO\\N:2;", "CO:-0.5;", "CO-1:1e-3;", "CO-2:7;"}) {
        EXPECT_NE(saved.find(std::string("C-2\\") + part), std::string::npos) << part << saved;
    }
}

TEST_F(EuDetailTest, ANewTermIsNamedWhileItsValueIsAskedFor) {
    open();
    EXPECT_FALSE(run("B", [&](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        door.next([&](QDialog& prompt) {
            EXPECT_EQ(find<EditableList>(window, "CO\\N")->rows().back(), (ListRow{"C(2)", ""}));
            press(prompt, "cancel");
        });
        press(window, "add");
        press(dialog, "cancel");
    }));
}

TEST_F(EuDetailTest, AnOffsetThatIsNoNumberIsRefused) {
    open();
    f->ui.otherwise = Button::Yes;
    for (const char* const bad : {"five", "nan", "inf", "1e999", "1 2"}) {
        EXPECT_FALSE(run("B", [&](QDialog& dialog) {
            sheetOf(dialog).openPage(1);
            press(dialog, "showDetails");
            type(*sheetOf(dialog).details(), "CO", QString::fromUtf8(bad));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible()) << bad;
            press(dialog, "showDetails");
            EXPECT_NE(sheetOf(dialog).details(), nullptr) << "hiding would store it";
            press(dialog, "cancel");
        })) << bad;
        EXPECT_EQ(f->value("B", "CO"), "5") << bad;
    }
}

TEST_F(EuDetailTest, CoefficientsDerivedFromPairsAreFitted) {
    open();
    EXPECT_TRUE(run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        choose(dialog, "DCT", "COE - Coefficients");
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        choose(window, "CO1", "Yes");
        EXPECT_EQ(find<EditableList>(window, "CO\\N")->rows(),
                  (std::vector<ListRow>{{"C(1)", "2.00000000E+00"}}));
        press(dialog, "ok");
    }));
    EXPECT_EQ(f->value("A", "CO1"), "Y");
    EXPECT_EQ(f->value("A", "CO-1"), "2.00000000E+00");
    EXPECT_EQ(f->value("A", "PS\\N"), "2") << "the pairs stay";
}

TEST_F(EuDetailTest, CoefficientsThatNoPairsGiveStayAndAreTold) {
    open();
    EXPECT_TRUE(run("B", [this](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        choose(window, "CO1", "Yes");
        EXPECT_TRUE(f->ui.hasText(std::string(eutext::kNothingDerived)));
        EXPECT_EQ(find<EditableList>(window, "CO\\N")->rows(),
                  (std::vector<ListRow>{{"C(1)", "6"}}));
        press(dialog, "ok");
    }));
    EXPECT_EQ(f->value("B", "CO-1"), "6");
}

TEST_F(EuDetailTest, MeasurandsAndConstantsAskForTheirNames) {
    open(2011, "C-1\\DCN:A;C-1\\DCT:DER;");
    f->ui.texts = {"SPEED", "", "G"};
    EXPECT_TRUE(run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        press(*find<EditableList>(window, "DP\\N"), "add");
        press(*find<EditableList>(window, "DP\\N"), "add");
        press(*find<EditableList>(window, "DPC\\N"), "add");
        choose(window, "DPAT", "Name Of Algorithm");
        type(window, "DPA", QStringLiteral("FALL"));
        press(dialog, "ok");
    }));
    ASSERT_EQ(f->ui.textPrompts.size(), 3U);
    EXPECT_EQ(f->ui.textPrompts[0].prompt, "Enter Measurand Name");
    EXPECT_EQ(f->ui.textPrompts[0].limit, 32U);
    EXPECT_EQ(f->ui.textPrompts[2].prompt, "Enter Constant Name");
    const auto saved = f->save();
    for (const char* const part :
         {"DPAT:N;", "DPA:FALL;", "DP\\N:1;", "DP-1:SPEED;", "DPC\\N:1;", "DPC-1:G;"}) {
        EXPECT_NE(saved.find(std::string("C-1\\") + part), std::string::npos) << part << saved;
    }
}

TEST_F(EuDetailTest, OtherTypesStoreTheirFields) {
    struct Row {
        const char* type;
        const char* code;
        const char* entry;  // typed, or the text of a choice
        const char* stored;
    };
    const Row rows[] = {{"OTH - Other", "OTH", "free text", "OTH:free text;"},
                        {"VOI - Voice", "VOI\\E", "CVSD", "VOI\\E:CVSD;"},
                        {"VOI - Voice", "VOI\\D", "intercom", "VOI\\D:intercom;"},
                        {"VID - Video", "VID\\E", "RS-170", "VID\\E:RS-170;"},
                        {"VID - Video", "VID\\D", "camera", "VID\\D:camera;"},
                        {"BTM - 1553 Time", "BTM", "Low Order Time", "BTM:L;"},
                        {"PTM - PCM Time", "PTM", "High Order Time", "PTM:H;"}};
    for (const auto& row : rows) {
        open(2011, "C-1\\DCN:A;C-1\\DCT:NON;");
        EXPECT_TRUE(run("A", [&](QDialog& dialog) {
            sheetOf(dialog).openPage(1);
            choose(dialog, "DCT", row.type);
            press(dialog, "showDetails");
            auto& window = *sheetOf(dialog).details();
            if (window.findChild<QComboBox*>(QString::fromUtf8(row.code)) != nullptr) {
                choose(window, row.code, row.entry);
            } else {
                type(window, row.code, QString::fromUtf8(row.entry));
            }
            press(dialog, "ok");
        }));
        EXPECT_NE(f->save().find(std::string("C-1\\") + row.stored), std::string::npos)
            << row.stored;
    }
}

TEST_F(EuDetailTest, DiscreteEventsAreRows) {
    open(2011, "C-1\\DCN:A;C-1\\DCT:DIS;");
    f->ui.integers = {2};
    door.next([](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        auto& window = *sheetOf(dialog).details();
        press(window, "DICI\\N");
        press(window, "add");
        press(dialog, "ok");
    });
    door.next([](QDialog& row) {
        type(row, "conversionData", QStringLiteral("1"));
        type(row, "eventDefinition", QStringLiteral("Pump on"));
        press(row, "ok");
    });
    EXPECT_TRUE(editConversion(*form, f->context, f->conversions, "A"));
    const auto saved = f->save();
    for (const char* const part : {"DIC\\N:1;", "DICI\\N:2;", "DICC-1:1;", "DICP-1:Pump on;"}) {
        EXPECT_NE(saved.find(std::string("C-1\\") + part), std::string::npos) << part << saved;
    }
}

TEST_F(EuDetailTest, AWindowThatIsNotAvailableIsToldWithMessage159) {
    open();
    run("B", [this](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        choose(dialog, "BFM", "TWO's Complement");
        EXPECT_TRUE(deleteFile(f->store.pathOf(working::kData1)).ok());
        press(dialog, "showDetails");
        EXPECT_EQ(sheetOf(dialog).details(), nullptr);
        dialog.done(QDialog::Rejected);
    });
    ASSERT_TRUE(f->ui.hasBox(159));
    EXPECT_EQ(f->ui.boxes.back().titleId, 78);
}

// --- import ------------------------------------------------------------------------------------

TEST_F(EuDetailTest, ImportFromARecordOfAnotherTypeRebuildsTheWindow) {
    open();
    door.next([](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        EXPECT_EQ(nameOf(dialog), "PairSets");
        press(dialog, "importValues");
        EXPECT_EQ(nameOf(dialog), "coefficients");
        EXPECT_EQ(find<QLineEdit>(*sheetOf(dialog).details(), "CO")->text(), QStringLiteral("5"));
        EXPECT_EQ(find<QLineEdit>(dialog, "MN3")->text(), QStringLiteral("PSI"));
        press(dialog, "ok");
    });
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import EU Values"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(find<QListWidget>(dialog, "names")->count(), 1) << "not the record itself";
        press(dialog, "ok");
    });
    EXPECT_TRUE(editConversion(*form, f->context, f->conversions, "A"));
    EXPECT_EQ(f->settings.text("CopyEUDefsFrom"), "B");
    EXPECT_EQ(f->value("A", "CO-1"), "6");
    EXPECT_EQ(f->conversions.readEuComment("A", false), "of B");
}

TEST_F(EuDetailTest, ImportFromARecordOfTheSameTypeFillsTheWindowAnew) {
    open(2011,
         "C-1\\DCN:A;C-1\\DCT:COE;C-1\\CO\\N:1;C-1\\CO:1;C-1\\CO-1:2;"
         "C-2\\DCN:B;C-2\\DCT:COE;C-2\\CO\\N:1;C-2\\CO:5;C-2\\CO-1:6;");
    door.next([](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "showDetails");
        const auto* const window = sheetOf(dialog).details();
        press(dialog, "importValues");
        EXPECT_EQ(sheetOf(dialog).details(), window);
        EXPECT_EQ(find<QLineEdit>(*window, "CO")->text(), QStringLiteral("5"));
        dialog.done(QDialog::Rejected);
    });
    door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_FALSE(editConversion(*form, f->context, f->conversions, "A"));
    EXPECT_EQ(f->value("A", "CO"), "1");
}

TEST_F(EuDetailTest, WithoutAnotherRecordImportTellsWithMessage435) {
    open(2011, "C-1\\DCN:A;C-1\\DCT:COE;");
    run("A", [](QDialog& dialog) {
        sheetOf(dialog).openPage(1);
        press(dialog, "importValues");
        dialog.done(QDialog::Rejected);
    });
    ASSERT_TRUE(f->ui.hasBox(435));
    EXPECT_EQ(f->ui.boxes[0].titleId, 80);
}

// --- a record through everything ---------------------------------------------------------------

TEST_F(EuDetailTest, ARecordIsFollowedThroughCreateCancelEditAndSave) {
    open(2011,
         "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:1;C-1\\PS3-1:1;C-1\\PS4-1:2;"
         "C-1\\COM:[KAVU:ZeroCal=5 RCal=9]seen;");
    const auto updates = f->folder / "update.txt";
    f->settings.write("EnableUpd", "1");
    f->settings.write("UpdPath", updates);
    f->settings.write("CDCT", "COE");
    const auto asLoaded = f->save();
    // A template that nobody edits leaves no conversion.
    ASSERT_TRUE(f->conversions.createDefaultDefinition(&f->ui, "T", true));
    EXPECT_NE(f->save().find("C-2\\DCT:NON;"), std::string::npos);
    ASSERT_TRUE(f->conversions.deleteDefinition(&f->ui, "T"));
    // Cancelled sheets leave nothing.
    EXPECT_FALSE(run("T", [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_FALSE(run("A", [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_EQ(f->save(), asLoaded);
    EXPECT_EQ(test::readFile(updates), "") << "nothing was changed from the pages";
    // Edited, with a comment that goes to a file of its own; the private pairs stay.
    const std::string longComment(40000, 'x');
    EXPECT_TRUE(run("A", [&](QDialog& dialog) {
        auto* const comment = find<QWidget>(dialog, "COM")->parentWidget();
        auto* const fields =
            qobject_cast<FieldForm*>(sheetOf(dialog).page(7).findChild<FieldForm*>());
        ASSERT_NE(comment, nullptr);
        ASSERT_NE(fields, nullptr);
        EXPECT_EQ(fields->value("COM"), "seen");
        fields->editValue("COM", longComment);
        press(dialog, "ok");
    }));
    EXPECT_TRUE(fileExists(commentPath(f->store, "A")));
    EXPECT_EQ(f->value("A", "KavuCmd"), "ZeroCal=5 RCal=9");
    EXPECT_EQ(f->value("A", "Chg"), "1");
    const auto saved = f->save();
    EXPECT_NE(saved.find("COM:[KAVU:ZeroCal=5 RCal=9]" + longComment + ";"), std::string::npos);
    EXPECT_NE(test::readFile(updates).find("A, TABLE\n1, 2\nEND\n\n"), std::string::npos);
    EXPECT_EQ(f->value("A", "Chg"), "") << "used up";
    // Short again: the file goes.
    EXPECT_TRUE(run("A", [](QDialog& dialog) {
        sheetOf(dialog).page(7).findChild<FieldForm*>()->editValue("COM", "seen");
        press(dialog, "ok");
    }));
    EXPECT_FALSE(fileExists(commentPath(f->store, "A")));
    EXPECT_EQ(f->save(), asLoaded);
}

// --- the list of all records -------------------------------------------------------------------

// --- strings of the comment --------------------------------------------------------------------

TEST_F(EuDetailTest, CommentStringsAreWrittenOnOkOnly) {
    open();
    f->ui.byId[82] = Button::Yes;
    const auto fill = [](QDialog& row) {
        type(row, "textToBeAddedToComment", QStringLiteral("Sensor:"));
        type(row, "defaultValue", QStringLiteral("S-1"));
        choose(row, "includeInReports", "No");
        press(row, "ok");
    };
    for (const char* const button : {"cancel", "ok"}) {
        door.next([button](QDialog& dialog) {
            EXPECT_EQ(toBytes(dialog.objectName()), "EUCommentOptions");
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            press(dialog, "add");
            press(dialog, button);
        });
        door.next(fill);
        EXPECT_EQ(editEuCommentOptions(*form, f->context, nullptr), std::string(button) == "ok");
        EXPECT_EQ(readCommentStrings(f->context).size(), std::string(button) == "ok" ? 1U : 0U);
    }
    EXPECT_EQ(readCommentStrings(f->context)[0], (CommentString{true, false, "Sensor:", "S-1"}));
    door.next([](QDialog& dialog) {
        press(dialog, "delete");
        press(dialog, "ok");
    });
    EXPECT_TRUE(editEuCommentOptions(*form, f->context, nullptr));
    EXPECT_EQ(f->ui.boxes.back().title, "Delete EU Comment String");
    EXPECT_TRUE(readCommentStrings(f->context).empty());
}

}  // namespace
}  // namespace kavu
