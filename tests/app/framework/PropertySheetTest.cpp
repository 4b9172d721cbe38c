#include "app/framework/Look.h"
#include "app/framework/PropertySheet.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"

#include <algorithm>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kavu {
namespace {

using test::find;
using test::press;

/// A page with one field over one text of the model.
class TextPage : public PropertyPage {
  public:
    TextPage(FormContext& form, const char* name, std::string& model)
        : PropertyPage(form, name, std::string("Title of ") + name), model_(model) {
        auto* layout = new QVBoxLayout(this);
        edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("text"));
        layout->addWidget(look::addLabel(QStringLiteral("Text:"), *edit));
        layout->addWidget(edit);
        connect(edit, &QLineEdit::textEdited, this, [this] { markChanged(); });
    }
    void load() override {
        ++loads;
        edit->setText(toQString(model_));
    }
    bool validate() override {
        if (edit->text() == QStringLiteral("bad")) {
            edit->setFocus();
            return false;
        }
        return true;
    }
    bool store() override {
        ++stores;
        model_ = toBytes(edit->text());
        return model_ != "unwritable";
    }
    QLineEdit* edit;
    int loads = 0;
    int stores = 0;

  private:
    std::string& model_;
};

class PropertySheetTest : public testing::Test {
  protected:
    void build(PropertySheet& sheet) {
        first = static_cast<TextPage*>(
            &sheet.addPage(std::make_unique<TextPage>(stage.form, "Page1", one)));
        second = static_cast<TextPage*>(
            &sheet.addPage(std::make_unique<TextPage>(stage.form, "Page2", two)));
        sheet.setWriter([this] {
            ++writes;
            return writable;
        });
    }
    SheetResult run(const test::TestDoor::Driver& driver) {
        PropertySheet sheet(stage.form, "Sheet", "Edit Things", "LastThingPage");
        build(sheet);
        stage.door.next(driver);
        return runPropertySheet(stage.form, sheet);
    }

    test::FormStage stage;
    std::string one = "1";
    std::string two = "2";
    TextPage* first = nullptr;
    TextPage* second = nullptr;
    int writes = 0;
    bool writable = true;
};

constexpr char kCancelQuestion[] =
    "Items have changed. If you cancel, these items will not take effect.\n\n"
    "Do you really want to cancel?";
constexpr char kCloseQuestion[] =
    "Items have changed. If you close this window, all changes will be lost!\n\n"
    "Save changes before closing?";

TEST_F(PropertySheetTest, OkStoresAllPagesAndThenWrites) {
    EXPECT_EQ(run([&](QDialog& sheet) {
                  QTest::keyClicks(first->edit, QStringLiteral("x"));
                  press(sheet, "ok");
              }),
              SheetResult::Stored);
    EXPECT_EQ(one, "1x");
    EXPECT_EQ(two, "2");
    EXPECT_EQ(writes, 1);
    EXPECT_TRUE(stage.ui.boxes.empty());
}

TEST_F(PropertySheetTest, OkWithoutAChangeStoresNothing) {
    EXPECT_EQ(run([](QDialog& sheet) { press(sheet, "ok"); }), SheetResult::Unchanged);
    EXPECT_EQ(writes, 0);
}

TEST_F(PropertySheetTest, CancelWithoutAChangeAsksNothing) {
    EXPECT_EQ(run([](QDialog& sheet) { press(sheet, "cancel"); }), SheetResult::Cancelled);
    EXPECT_EQ(run([](QDialog& sheet) { QTest::keyClick(&sheet, Qt::Key_Escape); }),
              SheetResult::Cancelled);
    EXPECT_EQ(run([](QDialog& sheet) { sheet.close(); }), SheetResult::Cancelled);
    EXPECT_TRUE(stage.ui.boxes.empty());
}

TEST_F(PropertySheetTest, CancelAfterAChangeAsksAndNoGoesOn) {
    stage.ui.queued = {Button::No, Button::Yes};
    EXPECT_EQ(run([&](QDialog& sheet) {
                  QTest::keyClicks(first->edit, QStringLiteral("x"));
                  press(sheet, "cancel");
                  EXPECT_TRUE(sheet.isVisible());
                  QTest::keyClick(&sheet, Qt::Key_Escape);
              }),
              SheetResult::Cancelled);
    ASSERT_EQ(stage.ui.boxes.size(), 2u);
    EXPECT_EQ(stage.ui.boxes[0].text, kCancelQuestion);
    EXPECT_EQ(stage.ui.boxes[0].title, "Cancel Operation?");
    EXPECT_EQ(stage.ui.boxes[0].buttons, Buttons::YesNo);
    EXPECT_EQ(one, "1");
    EXPECT_EQ(writes, 0);
}

TEST_F(PropertySheetTest, ClosingTheWindowAfterAChangeAsksToSave) {
    const auto changeAndClose = [&](QDialog& sheet) {
        QTest::keyClicks(second->edit, QStringLiteral("x"));
        sheet.close();
    };
    stage.ui.queued = {Button::Yes};
    EXPECT_EQ(run(changeAndClose), SheetResult::Stored);
    EXPECT_EQ(two, "2x");
    stage.ui.queued = {Button::No};
    EXPECT_EQ(run(changeAndClose), SheetResult::Cancelled);
    EXPECT_EQ(two, "2x");
    stage.ui.queued = {Button::Cancel, Button::No};
    EXPECT_EQ(run([&](QDialog& sheet) {
                  changeAndClose(sheet);
                  EXPECT_TRUE(sheet.isVisible());
                  sheet.close();
              }),
              SheetResult::Cancelled);
    EXPECT_EQ(stage.ui.boxes[0].text, kCloseQuestion);
    EXPECT_EQ(stage.ui.boxes[0].title, "Cancel Operation?");
    EXPECT_EQ(stage.ui.boxes[0].buttons, Buttons::YesNoCancel);
}

TEST_F(PropertySheetTest, ARefusedPageComesToTheFrontWithTheFocus) {
    stage.ui.queued = {Button::Yes};
    EXPECT_EQ(run([&](QDialog& dialog) {
                  auto& sheet = static_cast<PropertySheet&>(dialog);
                  sheet.openPage(1);
                  second->edit->setFocus();
                  second->edit->selectAll();
                  QTest::keyClicks(second->edit, QStringLiteral("bad"));
                  sheet.openPage(0);
                  press(sheet, "ok");
                  EXPECT_TRUE(sheet.isVisible());
                  EXPECT_EQ(sheet.openedPage(), 1);
                  EXPECT_EQ(sheet.focusWidget(), second->edit);
                  EXPECT_EQ(first->stores, 0);
                  press(sheet, "cancel");
              }),
              SheetResult::Cancelled);
    EXPECT_EQ(writes, 0);
}

TEST_F(PropertySheetTest, APageThatCanNotStoreAndAWriterThatCanNotWriteKeepTheSheetOpen) {
    EXPECT_EQ(run([&](QDialog& sheet) {
                  first->edit->clear();
                  QTest::keyClicks(first->edit, QStringLiteral("unwritable"));
                  press(sheet, "ok");
                  EXPECT_TRUE(sheet.isVisible());
                  EXPECT_EQ(writes, 0);
                  QTest::keyClicks(first->edit, QStringLiteral("!"));
                  writable = false;
                  press(sheet, "ok");
                  EXPECT_TRUE(sheet.isVisible());
                  EXPECT_EQ(writes, 1);
                  writable = true;
                  press(sheet, "ok");
              }),
              SheetResult::Stored);
}

TEST_F(PropertySheetTest, ThePageThatWasOpenLastIsOpenedFirst) {
    EXPECT_EQ(run([&](QDialog& dialog) {
                  auto& sheet = static_cast<PropertySheet&>(dialog);
                  EXPECT_EQ(sheet.openedPage(), 0);
                  sheet.openPage(1);
                  press(dialog, "cancel");
              }),
              SheetResult::Cancelled);
    EXPECT_EQ(stage.settings.profileText("PropSheet", "LastThingPage"), "2");
    run([](QDialog& dialog) {
        EXPECT_EQ(static_cast<PropertySheet&>(dialog).openedPage(), 1);
        press(dialog, "ok");
    });
    // Looking through the pages on OK is no choice of the user.
    run([&](QDialog& dialog) {
        QTest::keyClicks(second->edit, QStringLiteral("x"));
        press(dialog, "ok");
    });
    EXPECT_EQ(stage.settings.profileText("PropSheet", "LastThingPage"), "2");
}

TEST_F(PropertySheetTest, ARememberedPageThatIsNotThereIsTheNearest) {
    for (const auto& [text, page] : {std::pair("99", 1), std::pair("0", 0), std::pair("abc", 0)}) {
        stage.settings.writeProfile("PropSheet", "LastThingPage", text);
        run([p = page](QDialog& dialog) {
            EXPECT_EQ(static_cast<PropertySheet&>(dialog).openedPage(), p);
            press(dialog, "cancel");
        });
    }
}

TEST_F(PropertySheetTest, WhatCanNotBeTakenBackDisablesCancelAndClosingIsOk) {
    EXPECT_EQ(run([&](QDialog& dialog) {
                  auto& sheet = static_cast<PropertySheet&>(dialog);
                  QTest::keyClicks(first->edit, QStringLiteral("x"));
                  sheet.disableCancel();
                  EXPECT_FALSE(find<QPushButton>(sheet, "cancel")->isEnabled());
                  QTest::keyClick(&sheet, Qt::Key_Escape);
                  EXPECT_TRUE(sheet.isVisible());
                  sheet.close();
              }),
              SheetResult::Stored);
    EXPECT_EQ(one, "1x");
    EXPECT_TRUE(stage.ui.boxes.empty());
}

TEST_F(PropertySheetTest, ApplyStoresAndLeavesTheSheetOpen) {
    PropertySheet sheet(stage.form, "Sheet", "Edit Things", "LastThingPage");
    build(sheet);
    sheet.addApply();
    stage.ui.queued = {Button::Yes};
    stage.door.next([&](QDialog& dialog) {
        const auto* const apply = find<QPushButton>(dialog, "apply");
        EXPECT_FALSE(apply->isEnabled()) << "nothing has changed";
        QTest::keyClicks(first->edit, QStringLiteral("x"));
        EXPECT_TRUE(apply->isEnabled());
        writable = false;
        test::press(dialog, "apply");
        EXPECT_TRUE(sheet.isChanged()) << "what could not be written is still to be stored";
        writable = true;
        test::press(dialog, "apply");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(one, "1x");
        EXPECT_EQ(writes, 2);
        EXPECT_FALSE(sheet.isChanged());
        EXPECT_FALSE(apply->isEnabled());
        sheet.markChanged();
        EXPECT_TRUE(apply->isEnabled());
        test::press(dialog, "apply");
        EXPECT_EQ(writes, 3);
        EXPECT_TRUE(stage.ui.boxes.empty());
        QTest::keyClicks(second->edit, QStringLiteral("y"));
        test::press(dialog, "cancel");
    });
    EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::Cancelled);
    EXPECT_EQ(stage.ui.boxes.size(), 1U) << "the question of what came after";
    EXPECT_EQ(one, "1x");
    EXPECT_EQ(two, "2");
}

TEST_F(PropertySheetTest, ApplyAndThenOkStoresNothingTwice) {
    PropertySheet sheet(stage.form, "Sheet", "Edit Things", "LastThingPage");
    build(sheet);
    sheet.addApply();
    stage.door.next([&](QDialog& dialog) {
        QTest::keyClicks(first->edit, QStringLiteral("x"));
        test::press(dialog, "apply");
        test::press(dialog, "ok");
    });
    EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::Unchanged);
    EXPECT_EQ(writes, 1);
}

TEST_F(PropertySheetTest, PagesAreTabsNamedByTheirResource) {
    run([&](QDialog& sheet) {
        auto* tabs = find<QTabWidget>(sheet, "pages");
        EXPECT_EQ(tabs->count(), 2);
        EXPECT_EQ(tabs->tabText(0), QStringLiteral("Title of Page1"));
        EXPECT_EQ(sheet.findChild<PropertyPage*>(QStringLiteral("Page2")), second);
        EXPECT_EQ(first->loads, 1);
        press(sheet, "ok");
    });
}

TEST_F(PropertySheetTest, TheKeyboardChangesThePage) {
    run([&](QDialog& dialog) {
        auto& sheet = static_cast<PropertySheet&>(dialog);
        first->edit->setFocus();
        QTest::keyClick(sheet.focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(sheet.openedPage(), 1);
        QTest::keyClick(sheet.focusWidget(), Qt::Key_Return);
    });
}

TEST_F(PropertySheetTest, AButtonOfTheSheetStandsBetweenThePagesAndOk) {
    PropertySheet sheet(stage.form, "Sheet", "Edit Things", "");
    build(sheet);
    int pressed = 0;
    auto* const button = sheet.addButton("more", QStringLiteral("&More"));
    QObject::connect(button, &QPushButton::clicked, &sheet, [&] { ++pressed; });
    stage.door.next([](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        const auto chain = test::tabChain(dialog);
        ASSERT_GE(chain.size(), 3u);
        const auto more = std::find(chain.begin(), chain.end(), find(dialog, "more"));
        ASSERT_NE(more, chain.end());
        EXPECT_EQ(*std::next(more), find(dialog, "ok"));
        press(dialog, "more");
        press(dialog, "cancel");
    });
    runPropertySheet(stage.form, sheet);
    EXPECT_EQ(pressed, 1);
}

TEST_F(PropertySheetTest, HelpOpensThePageThatIsOpen) {
    run([](QDialog& sheet) {
        EXPECT_FALSE(find<QPushButton>(sheet, "help")->isEnabled());
        press(sheet, "ok");
    });
    std::vector<std::string> topics;
    stage.form.help = [&](const std::string& topic) { topics.push_back(topic); };
    run([](QDialog& dialog) {
        static_cast<PropertySheet&>(dialog).openPage(1);
        press(dialog, "help");
        QTest::keyClick(&dialog, Qt::Key_F1);
        press(dialog, "ok");
    });
    EXPECT_EQ(topics, (std::vector<std::string>{"Page2", "Page2"}));
}

TEST_F(PropertySheetTest, TooManySheetsAtOnceAreRefused) {
    std::function<void(int)> open = [&](int depth) {
        PropertySheet sheet(stage.form, "Sheet", "Edit Things", "");
        build(sheet);
        if (depth < DialogDoor::kMostSheets) {
            stage.door.next([&, depth](QDialog& dialog) {
                open(depth + 1);
                dialog.reject();
            });
            EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::Cancelled);
        } else {
            EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::NotCreated);
        }
    };
    open(0);
    ASSERT_EQ(stage.ui.boxes.size(), 1u);
    EXPECT_EQ(stage.ui.boxes[0].text, "Too many property sheets defined");
    EXPECT_EQ(stage.ui.boxes[0].title, "Unable To Create Property Sheet");
    // They are all closed: there is room again.
    EXPECT_EQ(run([](QDialog& sheet) { press(sheet, "ok"); }), SheetResult::Unchanged);
}

TEST_F(PropertySheetTest, APageLargerThanTheScreenScrolls) {
    PropertySheet sheet(stage.form, "Sheet", "Edit Things", "");
    build(sheet);
    first->setMinimumHeight(5000);
    sheet.show();
    QApplication::processEvents();
    EXPECT_LE(sheet.height(), look::roomOnScreen(sheet).height());
    const auto* scroller = find<QTabWidget>(sheet, "pages")->currentWidget();
    EXPECT_GT(qobject_cast<const QScrollArea*>(scroller)->verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(find<QPushButton>(sheet, "ok")->isVisible());
}

}  // namespace
}  // namespace kavu
