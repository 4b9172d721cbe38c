#include "app/framework/QtInterface.h"
#include "app/framework/Refusals.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "core/files/FileIo.h"
#include "support/TestContext.h"

#include <limits>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class QtInterfaceTest : public testing::Test {
  protected:
    Button show(Buttons buttons, const std::function<void(QDialog&)>& driver,
                Button standard = Button::None) {
        MessageBox box;
        box.text = "Text";
        box.title = "Title";
        box.buttons = buttons;
        box.defaultButton = standard;
        door.next(driver);
        return ui.message(box);
    }
    /// Answers the box that tells why a value is refused, and keeps its text and title.
    void expectRefusal() {
        door.next([this](QDialog& box) {
            refusals.push_back(toBytes(static_cast<QMessageBox&>(box).text()));
            refusalTitles.push_back(toBytes(box.windowTitle()));
            press(box, "ok");
        });
    }

    test::TestDoor door;
    QtInterface ui{nullptr, door};
    std::vector<std::string> refusals;
    std::vector<std::string> refusalTitles;
};

TEST_F(QtInterfaceTest, ABoxHasTheButtonsOfItsSetAndGivesTheOnePressed) {
    struct Case {
        Buttons buttons;
        std::vector<std::pair<const char*, Button>> names;
    };
    const std::vector<Case> cases = {
        {Buttons::Ok, {{"ok", Button::Ok}}},
        {Buttons::OkCancel, {{"ok", Button::Ok}, {"cancel", Button::Cancel}}},
        {Buttons::RetryCancel, {{"retry", Button::Retry}, {"cancel", Button::Cancel}}},
        {Buttons::YesNo, {{"yes", Button::Yes}, {"no", Button::No}}},
        {Buttons::YesNoCancel,
         {{"yes", Button::Yes}, {"no", Button::No}, {"cancel", Button::Cancel}}},
    };
    for (const auto& row : cases) {
        for (const auto& [name, button] : row.names) {
            EXPECT_EQ(show(row.buttons,
                           [&, n = name](QDialog& box) {
                               EXPECT_EQ(static_cast<QMessageBox&>(box).buttons().size(),
                                         static_cast<qsizetype>(row.names.size()));
                               press(box, n);
                           }),
                      button)
                << name;
        }
    }
}

TEST_F(QtInterfaceTest, AQuestionOfItsOwnSaysOnItsButtonsWhatTheyDo) {
    MessageBox question;
    question.text = "Text";
    question.buttons = Buttons::YesNoCancel;
    question.defaultButton = Button::Yes;
    question.yesText = "&Adjust";
    question.noText = "&Leave";
    for (const auto& [key, button] :
         {std::pair(Qt::Key_Return, Button::Yes), std::pair(Qt::Key_Escape, Button::Cancel)}) {
        door.next([&, pressed = key](QDialog& box) {
            EXPECT_EQ(find<QPushButton>(box, "yes")->text(), QStringLiteral("&Adjust"));
            EXPECT_EQ(find<QPushButton>(box, "yes")->accessibleName(), QStringLiteral("Adjust"));
            EXPECT_EQ(find<QPushButton>(box, "no")->text(), QStringLiteral("&Leave"));
            EXPECT_EQ(find<QPushButton>(box, "cancel")->text(), QStringLiteral("Cancel"));
            EXPECT_EQ(test::checkWindow(box), std::vector<std::string>{});
            QTest::keyClick(&box, pressed);
        });
        EXPECT_EQ(ui.message(question), button);
    }
}

TEST_F(QtInterfaceTest, EscapeIsTheButtonThatMeansNo) {
    const auto escape = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    EXPECT_EQ(show(Buttons::Ok, escape), Button::Ok);
    EXPECT_EQ(show(Buttons::OkCancel, escape), Button::Cancel);
    EXPECT_EQ(show(Buttons::YesNo, escape), Button::No);
    EXPECT_EQ(show(Buttons::YesNoCancel, escape), Button::Cancel);
}

TEST_F(QtInterfaceTest, EscapeOfAQuestionWithANameIsItsDefault) {
    MessageBox box;
    box.text = "Text";
    box.name = "restore";
    box.buttons = Buttons::YesNo;
    const auto escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    for (const auto standard : {Button::Yes, Button::No}) {
        box.defaultButton = standard;
        door.next(escape);
        EXPECT_EQ(ui.message(box), standard);
    }
    box.buttons = Buttons::YesNoCancel;
    door.next(escape);
    EXPECT_EQ(ui.message(box), Button::Cancel) << "where there is a button for it";
}

TEST_F(QtInterfaceTest, ABoxThatIsTakenAwayHasNoAnswer) {
    EXPECT_EQ(show(Buttons::YesNo, [](QDialog& box) { box.hide(); }), Button::None);
}

TEST_F(QtInterfaceTest, EnterIsTheDefaultButton) {
    const auto enter = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Return); };
    EXPECT_EQ(show(Buttons::YesNoCancel, enter, Button::No), Button::No);
    EXPECT_EQ(show(Buttons::YesNoCancel, enter, Button::Cancel), Button::Cancel);
    EXPECT_EQ(show(Buttons::YesNo, enter), Button::Yes);
}

TEST_F(QtInterfaceTest, ABoxShowsItsNumberAndNeverReadsItsTextAsMarkup) {
    MessageBox box;
    box.id = 402;
    box.text = "a <b>bold</b> name";
    box.icon = Icon::Error;
    door.next([](QDialog& dialog) {
        auto& shown = static_cast<QMessageBox&>(dialog);
        EXPECT_EQ(shown.text(), QStringLiteral("KAVU Error #402\n\na <b>bold</b> name"));
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        EXPECT_FALSE(shown.iconPixmap().isNull());
        press(shown, "ok");
    });
    EXPECT_EQ(ui.message(box), Button::Ok);
}

TEST_F(QtInterfaceTest, ATextIsEnteredByTyping) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("New Name"));
        EXPECT_EQ(find<QLineEdit>(dialog, "value")->text(), QStringLiteral("old"));
        // The old value is selected: typing replaces it.
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("new"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(ui.enterText({"New Name", "Name:", "old", 0}), "new");
}

TEST_F(QtInterfaceTest, ATextThatNobodyEditedKeepsItsBytes) {
    door.next([](QDialog& dialog) { press(dialog, "ok"); });
    EXPECT_EQ(ui.enterText({"", "Name:", "K\xF6ln", 0}), "K\xF6ln");
    EXPECT_EQ(door.titles.back(), "Enter Value");
}

TEST_F(QtInterfaceTest, APromptThatIsCancelledHasNoValue) {
    door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_EQ(ui.enterText({"", "Name:", "x", 0}), std::nullopt);
    door.next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(ui.enterInteger({"", "Number:", 1, 0, 9}), std::nullopt);
    door.next([](QDialog& dialog) { dialog.close(); });
    EXPECT_EQ(ui.enterDouble({"", "Number:", 1, 0, 9}), std::nullopt);
}

TEST_F(QtInterfaceTest, ATextBeyondItsLimitIsAskedForAgain) {
    door.next([this](QDialog& dialog) {
        type(dialog, "value", QStringLiteral("12345"));
        expectRefusal();
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        type(dialog, "value", QStringLiteral("1234"));
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.enterText({"", "Name:", "", 4}), "1234");
    EXPECT_EQ(refusals.at(0), "This string must be no more than 4 characters long.");
    EXPECT_EQ(refusalTitles.at(0), "Illegal Value Entered");
}

TEST_F(QtInterfaceTest, ATextWithASemicolonIsRefusedByMessage402) {
    door.next([this](QDialog& dialog) {
        type(dialog, "value", QStringLiteral("a;b"));
        expectRefusal();
        press(dialog, "ok");
        press(dialog, "cancel");
    });
    EXPECT_EQ(ui.enterText({"", "Name:", "", 0}), std::nullopt);
    EXPECT_EQ(refusals.at(0),
              "KAVU Error #402\n\nYou are not allowed to use a semi-colon (;) as part of any "
              "field. Please remove the semi-colon.");
}

TEST_F(QtInterfaceTest, AnIntegerIsAskedForUntilItIsOne) {
    door.next([this](QDialog& dialog) {
        for (const char16_t* bad : {u"", u"12x", u"1.5", u"0", u"100"}) {
            type(dialog, "value", QString::fromUtf16(bad));
            if (*bad == 0) {
                QTest::keyClick(find<QLineEdit>(dialog, "value"), Qt::Key_Delete);
            }
            expectRefusal();
            press(dialog, "ok");
        }
        type(dialog, "value", QStringLiteral("99"));
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.enterInteger({"", "Number:", 5, 1, 99}), 99);
    const std::string invalid = "Value entered is not a valid integer. Please re-enter.";
    const std::string range =
        "Integer number out of range. You must enter a number between 1 and 99";
    EXPECT_EQ(refusals, (std::vector<std::string>{invalid, invalid, invalid, range, range}));
    EXPECT_EQ(refusalTitles, std::vector<std::string>(5, "ERROR: Illegal Value Entered"));
}

TEST_F(QtInterfaceTest, ANumberIsAskedForUntilItIsOne) {
    door.next([this](QDialog& dialog) {
        EXPECT_EQ(find<QLineEdit>(dialog, "value")->text(), QStringLiteral("0.5"));
        for (const char16_t* bad : {u"1,5", u"2.5"}) {
            type(dialog, "value", QString::fromUtf16(bad));
            expectRefusal();
            press(dialog, "ok");
        }
        type(dialog, "value", QStringLiteral("1.5"));
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.enterDouble({"", "Number:", 0.5, 0, 2}), 1.5);
    EXPECT_EQ(refusals.at(0),
              "Value entered is not a valid floating point number. Please re-enter.");
    EXPECT_EQ(refusals.at(1),
              "Floating point number out of range. You must enter a number between 0 and 2");
}

TEST_F(QtInterfaceTest, ALockedPromptComesBackWhereItStood) {
    door.next([](QDialog& dialog) {
        auto* lock = find<QCheckBox>(dialog, "lockPosition");
        EXPECT_EQ(lock->accessibleName(), QStringLiteral("Lock this window's position on screen"));
        EXPECT_FALSE(lock->isChecked());
        lock->click();
        dialog.move(123, 45);
        press(dialog, "ok");
    });
    door.next([](QDialog& dialog) {
        EXPECT_TRUE(find<QCheckBox>(dialog, "lockPosition")->isChecked());
        EXPECT_EQ(dialog.pos(), QPoint(123, 45));
        find<QCheckBox>(dialog, "lockPosition")->click();
        press(dialog, "ok");
    });
    door.next([](QDialog& dialog) {
        EXPECT_FALSE(find<QCheckBox>(dialog, "lockPosition")->isChecked());
        press(dialog, "ok");
    });
    for (int i = 0; i < 3; ++i) {
        (void)ui.enterText({"Same", "Name:", "x", 0});
    }
}

TEST_F(QtInterfaceTest, TwoChoicesAreTwoButtons) {
    for (const int wanted : {0, 1}) {
        door.next([wanted](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QListWidget*>(), nullptr);
            press(dialog, wanted == 0 ? "choice0" : "choice1");
        });
        EXPECT_EQ(ui.chooseFromList("Which?", {"This", "That"}), wanted);
    }
    door.next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(ui.chooseFromList("Which?", {"This", "That"}), -1);
}

TEST_F(QtInterfaceTest, MoreChoicesAreAListForTheKeyboard) {
    door.next([](QDialog& dialog) {
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.chooseFromList("Which?", {"a", "b", "c", "d"}), 2);
    door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_EQ(ui.chooseFromList("Which?", {"a", "b", "c", "d"}), -1);
}

ChoicePrompt sampleQuestion() {
    return {.name = {},
            .title = "A Title",
            .text = "What is to become of the file '/somewhere/a & b <i>.tma'?",
            .choices = {"&Overwrite it", "&Save the document under quite another name of its own"}};
}

TEST_F(QtInterfaceTest, AQuestionStandsInItsDialogAboveButtonsThatCanBeRead) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("A Title"));
        EXPECT_EQ(test::find<QLabel>(dialog, "text")->text(),
                  QStringLiteral("What is to become of the file '/somewhere/a & b <i>.tma'?"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        const auto* const longest = test::find<QPushButton>(dialog, "choice1");
        EXPECT_GE(longest->width(), longest->sizeHint().width());
        press(dialog, "choice1");
    });
    EXPECT_EQ(ui.choose(sampleQuestion()), 1);
}

TEST_F(QtInterfaceTest, EnterAndEscapeCancelAQuestionWithoutADefault) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        door.next([key](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), key); });
        EXPECT_EQ(ui.choose(sampleQuestion()), -1);
    }
    door.next([](QDialog& dialog) {
        auto* const first = test::find<QPushButton>(dialog, "choice0");
        EXPECT_EQ(first->shortcut(), QKeySequence(Qt::ALT | Qt::Key_O));
        first->setFocus();
        QTest::keyClick(first, Qt::Key_Return);
    });
    EXPECT_EQ(ui.choose(sampleQuestion()), 0) << "Enter takes what has the keyboard";
}

TEST_F(QtInterfaceTest, EnterTakesTheDefaultOfAQuestionWhichThenHasNoCancel) {
    auto question = sampleQuestion();
    question.defaultChoice = 0;
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("cancel")), nullptr);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(ui.choose(question), 0);
}

TablePrompt samplePrompt() {
    return {"", {"Name", "Size"}, {{"beta", "10"}, {"alpha", "9"}, {"gamma", "100"}}};
}

TEST_F(QtInterfaceTest, ARowOfATableIsChosenByOkOrByADoubleClick) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Make Selection"));
        EXPECT_NE(dialog.findChild<QLabel*>(), nullptr);
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(),
                  QStringLiteral("Select one of the following:"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.selectFromTable(samplePrompt()), 1);
    door.next([](QDialog& dialog) {
        auto* view = find<QTreeView>(dialog, "rows");
        const auto place = view->visualRect(view->model()->index(2, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    });
    EXPECT_EQ(ui.selectFromTable(samplePrompt()), 2);
    door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_EQ(ui.selectFromTable(samplePrompt()), -1);
}

TEST_F(QtInterfaceTest, ATableSortsNumbersByValueAndGivesTheRowOfTheCaller) {
    door.next([](QDialog& dialog) {
        auto* view = find<QTreeView>(dialog, "rows");
        view->sortByColumn(1, Qt::AscendingOrder);
        EXPECT_EQ(view->model()->index(0, 0).data().toString(), QStringLiteral("alpha"));
        EXPECT_EQ(view->model()->index(2, 0).data().toString(), QStringLiteral("gamma"));
        view->setCurrentIndex(view->model()->index(0, 0));
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.selectFromTable(samplePrompt()), 1);
}

TEST_F(QtInterfaceTest, AFilterLeavesARowSelectedThatEnterTakes) {
    TablePrompt prompt{"", {"Name"}, {}};
    for (int i = 1; i <= 40; ++i) {
        prompt.rows.push_back({"M" + std::to_string(i)});
    }
    door.next([](QDialog& dialog) {
        auto* const filter = find<QLineEdit>(dialog, "filter");
        filter->setFocus();
        QTest::keyClicks(filter, QStringLiteral("m37"));
        QTest::keyClick(filter, Qt::Key_Return);
    });
    EXPECT_EQ(ui.selectFromTable(prompt), 36);
    door.next([](QDialog& dialog) {
        auto* const filter = find<QLineEdit>(dialog, "filter");
        QTest::keyClicks(filter, QStringLiteral("nothing"));
        EXPECT_FALSE(find<QPushButton>(dialog, "ok")->isEnabled());
        press(dialog, "cancel");
    });
    EXPECT_EQ(ui.selectFromTable(prompt), -1);
}

TEST_F(QtInterfaceTest, SeveralRowsOfATableComeInTheOrderOfTheCaller) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(),
                  QStringLiteral("Select one or more of the following:"));
        auto* view = find<QTreeView>(dialog, "rows");
        view->sortByColumn(0, Qt::DescendingOrder);
        view->selectAll();
        press(dialog, "ok");
    });
    EXPECT_EQ(ui.selectRowsFromTable(samplePrompt()), (std::vector<int>{0, 1, 2}));
}

TEST_F(QtInterfaceTest, AnEmptyTableHasNothingToChoose) {
    door.next([](QDialog& dialog) {
        EXPECT_FALSE(find<QPushButton>(dialog, "ok")->isEnabled());
        press(dialog, "cancel");
    });
    EXPECT_EQ(ui.selectFromTable({"", {"Name"}, {}}), -1);
}

TEST_F(QtInterfaceTest, AFileIsChosenWithItsFilter) {
    test::TempFolder folder;
    test::writeFile(folder / "one.tma", "x");
    FilePrompt prompt;
    prompt.title = "Open TMATS File";
    prompt.filters = {{"TMATS Files", "*.tma;*.tmt"}, {"All Files", "*"}};
    prompt.filterIndex = 2;
    prompt.path = folder.path();
    door.next([](QDialog& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        EXPECT_EQ(files.nameFilters().at(0), QStringLiteral("TMATS Files (*.tma *.tmt)"));
        EXPECT_EQ(files.selectedNameFilter(), QStringLiteral("All Files (*)"));
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
        auto* name = find<QLineEdit>(dialog, "fileNameEdit");
        name->setText(QStringLiteral("one.tma"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    const auto choice = ui.chooseFile(prompt);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->path, folder / "one.tma");
    EXPECT_EQ(choice->filterIndex, 2);
}

TEST_F(QtInterfaceTest, AFileToSaveStartsWithItsNameAndIsNotAskedAbout) {
    test::TempFolder folder;
    test::writeFile(folder / "there.tma", "x");
    FilePrompt prompt;
    prompt.filters = {{"TMATS Files", "*.tma;*.tmt"}};
    prompt.path = folder / "there.tma";
    prompt.forSaving = true;
    door.next([](QDialog& dialog) {
        EXPECT_EQ(find<QLineEdit>(dialog, "fileNameEdit")->text(), QStringLiteral("there.tma"));
        dialog.accept();
    });
    const auto choice = ui.chooseFile(prompt);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->path, folder / "there.tma");
    EXPECT_EQ(choice->filterIndex, 1);
    door.next([](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(ui.chooseFile(prompt).has_value());
}

/// A prompt as that of Save As: with ".tma", a question, and a file of its own.
FilePrompt savePrompt(const test::TempFolder& folder) {
    FilePrompt prompt;
    prompt.filters = {{"TMATS Files", "*.tma;*.tmt"}, {"All Files", "*"}};
    prompt.path = folder / "own.tma";
    prompt.forSaving = true;
    prompt.extension = ".tma";
    prompt.confirmsOverwrite = true;
    prompt.own = folder / "own.tma";
    return prompt;
}

/// Types a name, and Enter.
void typeName(QDialog& dialog, const char* text) {
    auto* const name = find<QLineEdit>(dialog, "fileNameEdit");
    name->setText(QLatin1String(text));
    QTest::keyClick(name, Qt::Key_Return);
}

TEST_F(QtInterfaceTest, ANameWithoutAnExtensionGetsOneAndAnotherFileIsAskedAbout) {
    test::TempFolder folder;
    test::writeFile(folder / "own.tma", "x");
    test::writeFile(folder / "other.tma", "12345");
    int asked = 0;
    const auto answer = [&](const char* button) {
        return [&asked, button](QDialog& box) {
            ++asked;
            EXPECT_EQ(box.windowTitle(), QStringLiteral("File Already Exists"));
            const auto text = static_cast<QMessageBox&>(box).text();
            EXPECT_TRUE(text.contains(QStringLiteral("other.tma' already exists")))
                << text.toStdString();
            EXPECT_TRUE(text.contains(QStringLiteral("5 bytes, last changed on ")))
                << text.toStdString();
            EXPECT_EQ(static_cast<QMessageBox&>(box).defaultButton()->objectName(),
                      QStringLiteral("no"))
                << "Enter alone loses nothing";
            press(box, button);
        };
    };
    door.next([&](QDialog& dialog) {
        door.next(answer("no"));
        typeName(dialog, "other");
        EXPECT_TRUE(dialog.isVisible()) << "No leaves the choice open";
        door.next(answer("yes"));
        typeName(dialog, "other.tma");
    });
    const auto choice = ui.chooseFile(savePrompt(folder));
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->path, folder / "other.tma");
    EXPECT_EQ(asked, 2);
}

TEST_F(QtInterfaceTest, ANewNameAndTheOwnFileAreNotAskedAbout) {
    test::TempFolder folder;
    test::writeFile(folder / "own.tma", "x");
    for (const auto& [typed, path] :
         {std::pair("new", "new.tma"), std::pair("own", "own.tma"), std::pair("own.tma", "own.tma"),
          std::pair("report.txt", "report.txt")}) {
        door.next([typed = typed](QDialog& dialog) { typeName(dialog, typed); });
        const auto choice = ui.chooseFile(savePrompt(folder));
        ASSERT_TRUE(choice) << typed;
        EXPECT_EQ(choice->path, folder / path);
    }
}

TEST_F(QtInterfaceTest, AFolderThatIsTypedIsOpenedAndNotAskedAbout) {
    test::TempFolder folder;
    ASSERT_TRUE(makeFolder(folder / "sub").ok());
    door.next([&](QDialog& dialog) {
        typeName(dialog, "sub");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(static_cast<QFileDialog&>(dialog).directory().absolutePath().toStdString(),
                  folder / "sub");
        dialog.reject();
    });
    EXPECT_FALSE(ui.chooseFile(savePrompt(folder)));
}

TEST_F(QtInterfaceTest, WithoutAPathAFileDialogStartsInItsFolder) {
    test::TempFolder folder;
    FilePrompt prompt;
    prompt.folder = folder.path();
    door.next([&](QDialog& dialog) {
        EXPECT_EQ(static_cast<QFileDialog&>(dialog).directory().absolutePath().toStdString(),
                  folder.path());
        EXPECT_EQ(find<QLineEdit>(dialog, "fileNameEdit")->text(), QString());
        dialog.reject();
    });
    EXPECT_FALSE(ui.chooseFile(prompt));
}

TEST_F(QtInterfaceTest, PromptsTellTheirRange) {
    const auto expectHint = [this](const char* text) {
        door.next([text](QDialog& dialog) {
            EXPECT_EQ(toBytes(test::find<QLabel>(dialog, "hint")->text()), text);
            dialog.reject();
        });
    };
    expectHint("A whole number from 1 to 64");
    (void)ui.enterInteger({.title = "T", .prompt = "P:", .initial = 1, .least = 1, .most = 64});
    expectHint("A number from -0.5 to 2");
    (void)ui.enterDouble({.title = "T", .prompt = "P:", .initial = 1, .least = -0.5, .most = 2});
    expectHint("At most 32 characters");
    (void)ui.enterText({.title = "T", .prompt = "P:", .initial = "", .limit = 32});
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("hint")), nullptr) << "no limit";
        dialog.reject();
    });
    (void)ui.enterText({.title = "T", .prompt = "P:", .initial = ""});
}

TEST(RangeText, LeavesOutWhatHasNoEnd) {
    EXPECT_EQ(rangeText(std::numeric_limits<long>::min(), std::numeric_limits<long>::max()),
              "A whole number");
    EXPECT_EQ(rangeText(0L, std::numeric_limits<long>::max()), "A whole number, at least 0");
    EXPECT_EQ(rangeText(std::numeric_limits<long>::min(), 5L), "A whole number, at most 5");
    EXPECT_EQ(rangeText(std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max()),
              "A number");
    EXPECT_EQ(rangeText(0.0, std::numeric_limits<double>::max()), "A number, at least 0");
    EXPECT_EQ(limitText(0), "");
    EXPECT_EQ(limitText(1), "At most 1 character");
}

TEST_F(QtInterfaceTest, WhatHasNoWindowGoesToTheHooks) {
    std::vector<std::string> told;
    ui.setStatusText("silent without a hook");
    ui.hooks.statusText = [&](const std::string& text) { told.push_back("status " + text); };
    ui.hooks.progressBar = [&](double percent) {
        told.push_back("bar " + std::to_string(static_cast<int>(percent)));
    };
    ui.hooks.note = [&](const std::string& text) { told.push_back("note " + text); };
    ui.hooks.logged = [&](const LoggedMessage& m) { told.push_back("log " + m.text); };
    ui.hooks.beep = [&] { told.push_back("beep"); };
    ui.setStatusText("s");
    ui.setProgressBar(-1);
    ui.note("n");
    ui.logged({1, 0, "", "m"});
    ui.beep();
    EXPECT_EQ(told, (std::vector<std::string>{"status s", "bar -1", "note n", "log m", "beep"}));
}

}  // namespace
}  // namespace kavu
