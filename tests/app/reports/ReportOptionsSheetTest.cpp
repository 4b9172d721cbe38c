// "Report Options": its pages, the keys they store, and which layout they edit.
#include "app/framework/Look.h"
#include "app/reports/ReportFormsStage.h"
#include "app/reports/ReportOptionsSheet.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>

namespace kavu {
namespace {

using test::find;
using test::press;

class ReportOptionsTest : public test::ReportFormsStage {
  protected:
    [[nodiscard]] ReportDesk& desk() { return t.application.reportDesk(); }
    bool edit(const test::TestDoor::Driver& drive, bool isBus = false) {
        door.next(drive);
        return editReportOptions(form, desk(), isBus, nullptr);
    }
    /// A click into the middle of a button may be beside its text.
    static void check(QWidget& page, const char* name) { find<QRadioButton>(page, name)->click(); }
    static PropertySheet& sheetOf(QDialog& dialog) { return dynamic_cast<PropertySheet&>(dialog); }
    static QWidget& page(QDialog& dialog, int index) {
        sheetOf(dialog).openPage(index);
        QApplication::processEvents();
        return sheetOf(dialog).page(index);
    }
};

TEST_F(ReportOptionsTest, HasSixPagesWithNamesAndRoom) {
    EXPECT_FALSE(edit([](QDialog& dialog) {
        auto& sheet = sheetOf(dialog);
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Report Options (Using default settings)"));
        ASSERT_EQ(sheet.pageCount(), 6);
        const char* const titles[] = {"Measurement Report",         "PCM Format Report",
                                      "Calibration Plots",          "Major Frame Report Headers",
                                      "Major Frame Report Options", "General Report Options"};
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(sheet.page(i).title(), titles[i]);
            EXPECT_EQ(sheet.page(i).objectName(), QStringLiteral("ReportOptions%1").arg(i + 1));
            sheet.openPage(i);
            QApplication::processEvents();
            EXPECT_EQ(test::checkWindow(sheet), std::vector<std::string>{}) << titles[i];
        }
        dialog.reject();
    }));
}

TEST_F(ReportOptionsTest, AllTabsAreInSightAndTheirTitlesAreWhole) {
    look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), look::Scheme::Light);
    EXPECT_FALSE(edit([](QDialog& dialog) {
        QApplication::processEvents();
        const auto* const tabs = find<QTabWidget>(dialog, "pages");
        const auto* const bar = tabs->tabBar();
        ASSERT_EQ(bar->count(), 6);
        for (int i = 0; i < bar->count(); ++i) {
            EXPECT_TRUE(bar->rect().contains(bar->tabRect(i))) << i;
            const auto room = bar->fontMetrics().size(0, bar->tabText(i));
            EXPECT_LE(room.height(), bar->tabRect(i).height()) << i;
            EXPECT_LT(room.width(), bar->tabRect(i).width()) << i;
            EXPECT_EQ(bar->tabText(i).replace(u'\n', u' '),
                      toQString(sheetOf(dialog).page(i).title()));
        }
        EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width());
        dialog.reject();
    }));
}

TEST_F(ReportOptionsTest, StoresTitlesHeadersAndChoices) {
    EXPECT_TRUE(edit([](QDialog& dialog) {
        auto& first = page(dialog, 0);
        find<QPlainTextEdit>(first, "title")->setPlainText(QStringLiteral("One\nTwo"));
        test::type(first, "left", QStringLiteral("left"));
        test::type(first, "right", QStringLiteral("right"));
        check(first, "locations1");
        auto& frame = page(dialog, 4);
        check(frame, "style3");
        check(frame, "names0");
        check(frame, "blankLines0");
        auto& last = page(dialog, 5);
        find<QComboBox>(last, "place")->setCurrentIndex(6);
        emit find<QComboBox>(last, "place")->activated(6);
        test::type(last, "text", QStringLiteral("^ of many"));
        press(dialog, "ok");
    }));
    EXPECT_EQ(key("MesReptTitle"), "One\x14\x15Two") << "line breaks in their stored form";
    EXPECT_EQ(key("MesReptLHdr"), "left");
    EXPECT_EQ(key("MesReptRHdr"), "right");
    EXPECT_EQ(key("MFReptSC"), "1");
    EXPECT_EQ(key("MFReptStyle"), "3");
    EXPECT_EQ(key("MFReptDupMes"), "0");
    EXPECT_EQ(key("MFReptCompact"), "0");
    EXPECT_EQ(key("PNumLoc"), "6");
    EXPECT_EQ(key("PNumString"), "^ of many");
    EXPECT_EQ(desk().layout().text("MesReptTitle"), "One\r\nTwo");
}

TEST_F(ReportOptionsTest, UseDefaultGivesTheTitleBack) {
    set("MFReptTitle", "Mine");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        auto& frame = page(dialog, 3);
        EXPECT_EQ(find<QPlainTextEdit>(frame, "title")->toPlainText(), QStringLiteral("Mine"));
        press(frame, "useDefault");
        press(dialog, "ok");
    }));
    EXPECT_EQ(key("MFReptTitle"), "PCM Major Frame Report");
}

TEST_F(ReportOptionsTest, ABusCannotChooseItsLocations) {
    EXPECT_FALSE(edit(
        [](QDialog& dialog) {
            auto& first = page(dialog, 0);
            EXPECT_FALSE(find<QRadioButton>(first, "locations0")->isEnabled());
            EXPECT_FALSE(find<QRadioButton>(first, "locations1")->isEnabled());
            dialog.reject();
        },
        true));
}

TEST_F(ReportOptionsTest, CancelLeavesTheWorkingCopyAsItWas) {
    const auto path = made("own.rpt", "[Reports]\nMFReptTitle=Mine\n");
    ASSERT_TRUE(desk().open(&t.ui, path));
    t.ui.otherwise = Button::Yes;  // it asks
    EXPECT_FALSE(edit([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Report Options (own.rpt)"));
        find<QPlainTextEdit>(page(dialog, 3), "title")->setPlainText(QStringLiteral("Other"));
        press(dialog, "cancel");
    }));
    EXPECT_EQ(desk().layout().text("MFReptTitle"), "Mine");
    EXPECT_FALSE(desk().file().isChanged());
}

TEST_F(ReportOptionsTest, RemembersItsPage) {
    (void)edit([](QDialog& dialog) {
        (void)page(dialog, 3);
        dialog.reject();
    });
    EXPECT_EQ(t.application.context().settings.profileText("PropSheet", "LastReptOpt"), "4");
    (void)edit([](QDialog& dialog) {
        EXPECT_EQ(sheetOf(dialog).openedPage(), 3);
        dialog.reject();
    });
}

TEST_F(ReportOptionsTest, AValueThatCannotBeReadIsMendedByOk) {
    t.application.context().settings.writeProfile("Reports", "MFReptStyle", "nine");
    EXPECT_TRUE(edit([](QDialog& dialog) {
        EXPECT_TRUE(find<QRadioButton>(page(dialog, 4), "style1")->isChecked());
        press(dialog, "ok");
    }));
    EXPECT_EQ(key("MFReptStyle"), "1");
}

// --- from the main menu ---------------------------------------------------------------------

TEST_F(ReportOptionsTest, TheMainMenuAsksForTheSettingsOrAFile) {
    t.ui.choices = {0};
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Report Options (Using default settings)"));
        dialog.reject();
    });
    EXPECT_FALSE(editReportOptionsAsked(form, desk(), nullptr));
    ASSERT_EQ(t.ui.choicePrompts.size(), 1U);
    EXPECT_EQ(t.ui.choicePrompts[0].text,
              "Do you want to edit your default report settings, or report settings that have been "
              "stored in a Report Layout File?");
    EXPECT_EQ(t.ui.choicePrompts[0].choices, (std::vector<std::string>{"&Default", "&File"}));
}

TEST_F(ReportOptionsTest, AFileOfTheMainMenuIsSavedByOkAndClosed) {
    const auto path = made("own.rpt", "[Reports]\nPNumString=^\n");
    t.ui.choices = {1};
    t.ui.files = {FileChoice{path, 1}};
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Report Options (own.rpt)"));
        test::type(page(dialog, 5), "text", QStringLiteral("No. ^"));
        press(dialog, "ok");
    });
    EXPECT_TRUE(editReportOptionsAsked(form, desk(), nullptr));
    EXPECT_NE(test::readFile(path).find("PNumString=No. ^\n"), std::string::npos);
    EXPECT_FALSE(desk().file().isOpen());
    EXPECT_EQ(key("PNumString"), "");
}

TEST_F(ReportOptionsTest, WithALayoutOpenTheMainMenuAsksNothing) {
    const auto path = made("own.rpt", "[Reports]\n");
    ASSERT_TRUE(desk().open(&t.ui, path));
    door.next([](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(editReportOptionsAsked(form, desk(), nullptr));
    EXPECT_TRUE(t.ui.choicePrompts.empty());
    EXPECT_TRUE(desk().file().isOpen());
}

TEST_F(ReportOptionsTest, AnEscapeFromTheQuestionOpensNothing) {
    EXPECT_FALSE(editReportOptionsAsked(form, desk(), nullptr));
    EXPECT_TRUE(door.names.empty());
}

}  // namespace
}  // namespace kavu
