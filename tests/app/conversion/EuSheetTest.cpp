#include "app/conversion/EuStage.h"
#include "app/framework/EditableList.h"
#include "app/framework/FieldForm.h"
#include "app/support/WidgetChecks.h"
#include "conversion/DefinitionEdit.h"
#include "core/text/Text.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

namespace kavu {
namespace {

using test::ConversionFixture;
using test::find;
using test::kTwo;
using test::lines;
using test::press;
using test::type;

class EuSheetTest : public test::EuStage {
  protected:
    static void page(QDialog& dialog, int number) { sheetOf(dialog).openPage(number - 1); }
};

// --- the sheet -------------------------------------------------------------------------------

TEST_F(EuSheetTest, HasItsEightPages) {
    open();
    run("A", [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Data Conversion Attributes: A"));
        auto* const tabs = find<QTabWidget>(dialog, "pages");
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i) {
            titles << tabs->tabText(i);
        }
        EXPECT_EQ(titles.join(u'|'),
                  QStringLiteral("Measurement Information|EU Information|Limits And Sample Rate|"
                                 "Ambient Value|In Flight Calibration|Transducer Information|"
                                 "Point Of Contact|Comments"));
        for (int number = 1; number <= 8; ++number) {
            page(dialog, number);
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << number;
        }
        dialog.reject();
    });
    EXPECT_EQ(f->settings.profileText("PropSheet", "LastEuPage"), "8") << "the page shown last";
}

TEST_F(EuSheetTest, OpensOnThePageShownLast) {
    open();
    f->settings.writeProfile("PropSheet", "LastEuPage", "6");
    run("A", [](QDialog& dialog) {
        EXPECT_EQ(sheetOf(dialog).openedPage(), 5);
        dialog.reject();
    });
}

TEST_F(EuSheetTest, AnEmptyNameIsReported) {
    open();
    EXPECT_FALSE(editConversion(*form, f->context, f->conversions, ""));
    EXPECT_TRUE(f->ui.hasText("ERROR: No measurement name"));
}

TEST_F(EuSheetTest, StoresEveryFieldAPersonCanChange) {
    for (const auto& shown : euPages()) {
        for (const auto& field : shown.fields) {
            open();
            const std::string code(field.code);
            // A limit is a number.
            std::string value = code.starts_with("MOT") ? "9" : "X9";
            const bool stored = run("B", [&](QDialog& dialog) {
                auto& fields = *find<QWidget>(dialog, shown.resource)->findChild<FieldForm*>();
                if (field.kind == FieldKind::Choice) {
                    const auto& choice = field.choices.back();
                    choose(dialog, code.c_str(), std::string(choice.text).c_str());
                    value = choice.value;
                } else if (field.kind == FieldKind::Date || field.kind == FieldKind::DateTime) {
                    value = field.kind == FieldKind::Date ? "03-04-2025" : "03-04-2025-01-02-03";
                    f->ui.texts = {value};
                    page(dialog, static_cast<int>(&shown - euPages().data()) + 1);
                    press(dialog, code.c_str());
                } else {
                    page(dialog, static_cast<int>(&shown - euPages().data()) + 1);
                    type(dialog, code.c_str(), toQString(value));
                }
                EXPECT_EQ(fields.value(code), value);
                press(dialog, "ok");
            });
            EXPECT_TRUE(stored) << code;
            EXPECT_TRUE(f->document.changed);
            EXPECT_EQ(
                code == "COM" ? f->conversions.readEuComment("B", false) : f->value("B", code),
                value)
                << code;
            EXPECT_EQ(f->value("B", "Chg"), "1");
            EXPECT_FALSE(f->has(working::kData1)) << "the working copy is gone";
        }
    }
}

TEST_F(EuSheetTest, AnUnchangedRecordIsNotStored) {
    open();
    const auto before = f->save();
    EXPECT_FALSE(run("B", [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_FALSE(f->document.changed);
    EXPECT_EQ(f->value("B", "Chg"), "");
    EXPECT_EQ(f->save(), before);
    EXPECT_FALSE(f->has(working::kData1));
}

TEST_F(EuSheetTest, CancelAsksOnlyAfterAChangeAndLeavesNoTrace) {
    open();
    const auto before = f->save();
    EXPECT_FALSE(run("B", [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_TRUE(f->ui.boxes.empty());
    f->ui.queued = {Button::No, Button::Yes};
    EXPECT_FALSE(run("B", [](QDialog& dialog) {
        type(dialog, "MN1", QStringLiteral("other"));
        press(dialog, "cancel");
        EXPECT_TRUE(dialog.isVisible()) << "No stays";
        press(dialog, "cancel");
    }));
    EXPECT_TRUE(f->ui.hasText("Items have changed. If you cancel"));
    EXPECT_EQ(f->save(), before);
    EXPECT_FALSE(f->document.changed);
    EXPECT_FALSE(f->has(working::kData1));
}

TEST_F(EuSheetTest, ACancelledTemplateIsDroppedAndAStoredOneStays) {
    open();
    EXPECT_FALSE(run("NEW", [](QDialog& dialog) { press(dialog, "cancel"); }));
    EXPECT_FALSE(f->conversions.locateDefinition("NEW").found);
    EXPECT_TRUE(run("NEW", [](QDialog& dialog) { press(dialog, "ok"); }));
    EXPECT_TRUE(f->conversions.locateDefinition("NEW").found);
    EXPECT_EQ(f->value("NEW", "EuTemplate"), "");
    EXPECT_EQ(f->value("NEW", "Chg"), "1");
}

TEST_F(EuSheetTest, AReadOnlySheetChangesNothing) {
    open();
    setup.readOnly = true;
    const auto before = f->save();
    EXPECT_FALSE(run("B", [](QDialog& dialog) {
        EXPECT_FALSE(find<QWidget>(dialog, "MN1")->isEnabled());
        page(dialog, 2);
        EXPECT_FALSE(find<QWidget>(dialog, "DCT")->isEnabled());
        EXPECT_FALSE(find<QWidget>(dialog, "importValues")->isEnabled());
        press(dialog, "showDetails");
        ASSERT_NE(sheetOf(dialog).details(), nullptr);
        EXPECT_FALSE(find<QWidget>(*sheetOf(dialog).details(), "CO")->isEnabled());
        page(dialog, 5);
        EXPECT_FALSE(sheetOf(dialog).page(4).findChild<EditableList*>()->isEnabled());
        press(dialog, "ok");
    }));
    EXPECT_EQ(f->save(), before);
}

TEST_F(EuSheetTest, ASemicolonIsRefusedOnItsPage) {
    open();
    run("B", [this](QDialog& dialog) {
        page(dialog, 6);
        type(dialog, "TRD1", QStringLiteral("a;b"));
        const int before = f->ui.countBoxes(402);
        EXPECT_GT(before, 0) << "told while typing";
        page(dialog, 1);
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(sheetOf(dialog).openedPage(), 5);
        type(dialog, "TRD1", QStringLiteral("ab"));
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("B", "TRD1"), "ab");
}

TEST_F(EuSheetTest, AWorkingCopyThatIsGoneKeepsTheSheetOpen) {
    open();
    f->ui.otherwise = Button::Yes;
    EXPECT_FALSE(run("B", [this](QDialog& dialog) {
        type(dialog, "MN1", QStringLiteral("other"));
        EXPECT_TRUE(deleteFile(f->store.pathOf(working::kData1)).ok());
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, "cancel");
    }));
    EXPECT_EQ(f->value("B", "MN1"), "");
}

// --- defaults and the date of release ----------------------------------------------------------

TEST_F(EuSheetTest, TheLinkTypeIsTheNextDefaultAtOnce) {
    open();
    run("B", [](QDialog& dialog) {
        choose(dialog, "MN4", "PAM");
        dialog.done(QDialog::Rejected);
    });
    EXPECT_EQ(f->settings.text("CMN4"), "PAM");
}

TEST_F(EuSheetTest, SavesDefaultsOnRequest) {
    open(2011, "C-1\\DCN:A;C-1\\DCT:COE;C-1\\BFM:TWO;C-1\\TRD4:UB;C-1\\POC1:Ann;C-1\\POC4:5;");
    f->ui.byId[437] = Button::Yes;
    run("A", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "saveAsDefaults");
        page(dialog, 6);
        press(dialog, "saveClassification");
        page(dialog, 7);
        press(dialog, "saveContact");
        press(dialog, "ok");
    });
    EXPECT_TRUE(f->ui.hasBox(437));
    EXPECT_EQ(f->settings.text("CBFM"), "TWO");
    EXPECT_EQ(f->settings.text("CDCT"), "COE");
    EXPECT_EQ(f->settings.text("CTRD4"), "UB");
    EXPECT_EQ(f->settings.text("CPOC1"), "Ann");
    EXPECT_EQ(f->settings.text("CPOC4"), "5");
    EXPECT_FALSE(f->document.changed);
}

TEST_F(EuSheetTest, DefaultsThatWereStoredSaySo) {
    open();
    f->ui.otherwise = Button::Yes;  // to the question of Cancel
    f->ui.byId[437] = Button::Yes;
    run("A", [](QDialog& dialog) {
        const auto told = [&dialog](int number) {
            const auto* const note = find<QLabel>(sheetOf(dialog).page(number - 1), "told");
            return note->isVisible() ? toBytes(note->text()) : std::string();
        };
        page(dialog, 1);
        EXPECT_EQ(told(1), "");
        choose(dialog, "MN4", "PAM");
        EXPECT_EQ(told(1), eutext::kLinkTypeStored);
        for (const auto& [number, button] :
             {std::pair(2, "saveAsDefaults"), {6, "saveClassification"}, {7, "saveContact"}}) {
            page(dialog, number);
            EXPECT_EQ(told(number), "");
            press(dialog, button);
            EXPECT_EQ(told(number), eutext::kDefaultsStored) << number;
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{}) << number;
        }
        dialog.reject();
    });
    f->ui.byId[437] = Button::No;
    run("A", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "saveAsDefaults");
        EXPECT_FALSE(find<QLabel>(sheetOf(dialog).page(1), "told")->isVisible());
        dialog.reject();
    });
}

TEST_F(EuSheetTest, LimitsThatAreNoneAreRefused) {
    open();
    run("A", [this](QDialog& dialog) {
        page(dialog, 3);
        type(dialog, "MOT1", QStringLiteral("ten"));
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(f->ui.hasText("Value High: 'ten' is not a number."));
        type(dialog, "MOT1", QStringLiteral("10"));
        type(dialog, "MOT2", QStringLiteral("20"));
        press(dialog, "ok");
        EXPECT_TRUE(f->ui.hasText("Value Low must be below Value High."));
        EXPECT_EQ(sheetOf(dialog).openedPage(), 2);
        EXPECT_EQ(dialog.focusWidget(), find<QWidget>(dialog, "MOT2"));
        type(dialog, "MOT2", QStringLiteral("-20"));
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("A", "MOT1"), "10");
    EXPECT_EQ(f->value("A", "MOT2"), "-20");
}

TEST_F(EuSheetTest, TheWindowOfPairSetsScrollsOnASmallScreen) {
    open();
    run("A", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "showDetails");
        auto* const details = sheetOf(dialog).details();
        ASSERT_NE(details, nullptr);
        for (const QSize size : {QSize(960, 540), QSize(640, 400)}) {
            details->resize(size);
            QApplication::processEvents();
            EXPECT_EQ(details->size(), size) << "nothing keeps it from being that small";
            const auto* const area = find<QScrollArea>(*details, "scroll");
            EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
        }
        EXPECT_LE(details->minimumSizeHint().height(), 400);
        dialog.reject();
    });
}

TEST_F(EuSheetTest, AnEditOfTheSecondPageStampsTheRelease) {
    open();
    run("B", [](QDialog& dialog) {
        page(dialog, 2);
        choose(dialog, "BFM", "TWO's Complement");
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("B", "CRT"), "01-02-2026-03-04-05");
}

TEST_F(EuSheetTest, AReleaseThatWasSetByHandStays) {
    open();
    f->ui.texts = {"03-04-2020-00-00-00"};
    run("B", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "CRT");
        choose(dialog, "BFM", "TWO's Complement");
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("B", "CRT"), "03-04-2020-00-00-00");
}

TEST_F(EuSheetTest, AnEditOfAnotherPageDoesNotStamp) {
    open();
    run("B", [](QDialog& dialog) {
        type(dialog, "MN1", QStringLiteral("x"));
        press(dialog, "ok");
    });
    EXPECT_EQ(f->value("B", "CRT"), "");
}

TEST_F(EuSheetTest, ADateThatIsNoneIsRefusedWithMessage447) {
    open();
    f->ui.texts = {"13-45-2020-00-00-00", std::nullopt};
    run("B", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "CRT");
        press(dialog, "ok");
    });
    EXPECT_TRUE(f->ui.hasBox(447));
    EXPECT_EQ(f->value("B", "CRT"), "");
}

// --- floating point formats, bit weights, sample rates -----------------------------------------

TEST_F(EuSheetTest, TheFloatingPointFormatIsChosenFromAList) {
    open();
    f->ui.rows = {-1, 4};
    run("B", [](QDialog& dialog) {
        page(dialog, 2);
        press(dialog, "floatingPointFormats");
        press(dialog, "floatingPointFormats");
        press(dialog, "ok");
    });
    ASSERT_EQ(f->ui.tablePrompts.size(), 2U);
    EXPECT_EQ(f->ui.tablePrompts[0].title, "Defined Floating Point Types");
    EXPECT_EQ(f->ui.tablePrompts[0].rows.size(), 11U);
    EXPECT_EQ(f->value("B", "FPF"), "DEC_32");
}

TEST_F(EuSheetTest, BitWeightsAreEditedForTheirFormat) {
    open();
    f->ui.byId[82] = Button::Yes;
    door.next([this](QDialog& dialog) {
        page(dialog, 2);
        EXPECT_FALSE(find<QPushButton>(dialog, "editBitWeights")->isEnabled());
        choose(dialog, "BFM", "BWT - Bit Weight");
        press(dialog, "editBitWeights");
        press(dialog, "editBitWeights");
        press(dialog, "ok");
    });
    const auto add = [](const char* bit, const char* weight, bool good) {
        return [=](QDialog& row) {
            type(row, "BWTB", QString::fromUtf8(bit));
            type(row, "BWTV", QString::fromUtf8(weight));
            press(row, "ok");
            EXPECT_EQ(row.isVisible(), !good) << bit << " " << weight;
            if (!good) {
                press(row, "cancel");
            }
        };
    };
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Edit Bit Weight Values"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        for (int i = 0; i < 5; ++i) {
            press(dialog, "add");
        }
        press(dialog, "ok");
    });
    door.next(add("1", "S", true)).next(add("2", "0.5", true)).next(add("2", "3", false));
    door.next(add("x", "3", false)).next(add("3", "half", false));
    door.next([](QDialog& dialog) {
        find<EditableList>(dialog, "BWT\\N")->selectRow(1);
        press(dialog, "delete");
        press(dialog, "ok");
    });
    EXPECT_TRUE(editConversion(*form, f->context, f->conversions, "B"));
    EXPECT_EQ(f->value("B", "BWT\\N"), "1");
    EXPECT_EQ(f->value("B", "BWTV-1"), "S");
    EXPECT_EQ(f->value("B", "BWTB-2"), "");
    ASSERT_TRUE(f->ui.hasBox(82));
    EXPECT_EQ(f->ui.boxes.back().title, "Delete Bit Weight Definition");
    EXPECT_TRUE(f->ui.hasText("Value entered is not a valid floating point number."));
}

TEST_F(EuSheetTest, SampleRateOptionsAreOfferedWhereThereIsTheirDialog) {
    open();
    run("B", [](QDialog& dialog) {
        EXPECT_FALSE(find<QPushButton>(dialog, "sampleRateOptions")->isEnabled());
        dialog.reject();
    });
    int asked = 0;
    form->sampleRates = [&asked] { ++asked; };
    run("B", [](QDialog& dialog) {
        page(dialog, 3);
        press(dialog, "sampleRateOptions");
        dialog.reject();
    });
    EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace kavu
