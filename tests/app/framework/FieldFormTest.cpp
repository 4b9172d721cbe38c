#include "app/framework/FieldForm.h"
#include "app/framework/TypingRules.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"

#include <algorithm>
#include <array>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kavu {
namespace {

using test::find;
using test::press;

constexpr auto kAnswers = std::to_array<Choice>({
    {.value = "Y", .text = "Yes"},
    {.value = "N", .text = "No"},
    {.value = "L", .text = "Later", .firstEdition = 2009},
});
constexpr auto kFields = std::to_array<Field>({
    {.code = "PN", .label = "Program Name:", .page = "One", .limit = 8},
    {.code = "RN", .label = "Number:", .box = "Revision", .page = "One", .limit = 4},
    {.code = "RD",
     .label = "Date:",
     .box = "Revision",
     .page = "One",
     .limit = 10,
     .kind = FieldKind::Date},
    {.code = "UN",
     .label = "Number:",
     .box = "Update",
     .page = "One",
     .limit = 3,
     .kind = FieldKind::Digits},
    {.code = "TI",
     .label = "Post-Test:",
     .page = "One",
     .limit = 1,
     .kind = FieldKind::Choice,
     .choices = kAnswers},
    {.code = "RATE", .label = "Rate:", .page = "One", .limit = 6, .unit = "KHz"},
    {.code = "DT", .label = "Closed:", .page = "One", .limit = 19, .kind = FieldKind::DateTime},
    {.code = "106", .label = "", .page = "One", .limit = 2},
    {.code = "NEW", .label = "New:", .page = "One", .limit = 4, .firstEdition = 2009},
    {.code = "COM", .label = "Comments:", .page = "Two", .kind = FieldKind::Comment},
    {.code = "LIM",
     .label = "Short Comment:",
     .page = "Two",
     .limit = 12,
     .kind = FieldKind::Comment},
});

class FieldFormTest : public testing::Test {
  protected:
    FieldForm& make(const FieldValues& values = {}, const char* page = "", int edition = 2011) {
        stage.form.edition = edition;
        form = std::make_unique<FieldForm>(stage.form, kFields, page);
        form->setValues(values);
        QObject::connect(form.get(), &FieldForm::edited,
                         [this](const QString& code) { edits.push_back(toBytes(code)); });
        form->show();
        form->activateWindow();
        QApplication::processEvents();
        return *form;
    }
    FieldValues stored() const {
        FieldValues values;
        form->storeValues(values);
        return values;
    }
    template <typename Widget>
    Widget& control(const char* code) {
        return *static_cast<Widget*>(form->control(code));
    }
    void typeAtEnd(const char* code, const QString& text) {
        auto* widget = form->control(code);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_End);
        QTest::keyClicks(widget, text);
    }
    QString hint() { return find<QLabel>(*form, "hint")->text(); }

    test::FormStage stage;
    std::unique_ptr<FieldForm> form;
    std::vector<std::string> edits;
};

TEST_F(FieldFormTest, HasTheFieldsOfItsPageThatTheEditionKnowsAndThatHaveALabel) {
    using Codes = std::vector<std::string_view>;
    EXPECT_EQ(make({}, "One").codes(), (Codes{"PN", "RN", "RD", "UN", "TI", "RATE", "DT", "NEW"}));
    EXPECT_EQ(make({}, "One", 2007).codes(), (Codes{"PN", "RN", "RD", "UN", "TI", "RATE", "DT"}));
    EXPECT_EQ(make({}, "Two").codes(), (Codes{"COM", "LIM"}));
}

TEST_F(FieldFormTest, TheTabKeyGoesThroughTheBoxesAndNotThroughTheFile) {
    auto& shown = make({}, "One");
    const auto chain = test::tabChain(shown);
    std::vector<std::string> names;
    for (const auto* widget : chain) {
        names.push_back(toBytes(widget->objectName()));
    }
    const auto place = [&names](const char* name) {
        return std::find(names.begin(), names.end(), name) - names.begin();
    };
    // The first box is that without a title: TI stands there, though behind RN in the table.
    EXPECT_LT(place("PN"), place("TI"));
    EXPECT_LT(place("TI"), place("RN"));
    EXPECT_LT(place("RD"), place("UN"));
}

TEST_F(FieldFormTest, AUnitStandsBehindTheValue) {
    auto& shown = make({{"RATE", "2.5"}}, "One");
    const auto* const control = shown.control("RATE");
    EXPECT_EQ(control->accessibleDescription(), QStringLiteral("KHz"));
    const auto labels = shown.findChildren<QLabel*>();
    const auto unit = std::find_if(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text() == QStringLiteral("KHz");
    });
    ASSERT_NE(unit, labels.end());
    shown.show();
    EXPECT_GT((*unit)->mapTo(&shown, QPoint()).x(), control->mapTo(&shown, QPoint()).x());
}

TEST_F(FieldFormTest, ControlsAreNamedByTheirCodeAndLabelledByTheirLabel) {
    make();
    for (const auto& field : kFields) {
        if (field.label.empty()) {
            EXPECT_EQ(form->control(field.code), nullptr);
            continue;
        }
        const auto* widget = form->control(field.code);
        ASSERT_NE(widget, nullptr) << field.code;
        EXPECT_EQ(toBytes(widget->objectName()), field.code);
        EXPECT_EQ(toBytes(widget->accessibleName()) + ":", field.label);
    }
    const auto labels = form->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
        return label->buddy() == form->control("PN");
    }));
    const auto boxes = form->findChildren<QGroupBox*>();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[0]->title(), QStringLiteral("Revision"));
    EXPECT_TRUE(boxes[0]->isAncestorOf(form->control("RN")));
    EXPECT_TRUE(boxes[1]->isAncestorOf(form->control("UN")));
}

TEST_F(FieldFormTest, WhatNobodyEditedKeepsItsBytes) {
    const FieldValues given = {{"PN", "longer than its limit"},
                               {"RN", "K\xF6ln"},
                               {"RD", "not a date"},
                               {"UN", "12x"},
                               {"TI", "Q"},
                               {"DT", " "},
                               {"NEW",
                                "a\x14\x15"
                                "b"},
                               {"COM",
                                "a\x15"
                                "b\x14\x14 \x81"},
                               {"LIM", "x\r\ny"}};
    make(given);
    EXPECT_EQ(stored(), given);
    EXPECT_TRUE(edits.empty());
    EXPECT_TRUE(form->validate());
}

TEST_F(FieldFormTest, OtherCodesAreLeftAloneAndEmptyOnesAreRemoved) {
    make({{"PN", "x"}});
    FieldValues values = {{"106", "11"}, {"ZZ", "1"}, {"RN", "old"}};
    form->storeValues(values);
    EXPECT_EQ(values, (FieldValues{{"106", "11"}, {"ZZ", "1"}, {"PN", "x"}}));
}

TEST_F(FieldFormTest, TypingEditsAFieldAndUndoingItGivesTheBytesBack) {
    make({{"RN", "\xF6"}});
    typeAtEnd("RN", QStringLiteral("x"));
    EXPECT_EQ(form->value("RN"), "\xC3\xB6x");
    EXPECT_EQ(edits, std::vector<std::string>{"RN"});
    QTest::keyClick(form->control("RN"), Qt::Key_Backspace);
    EXPECT_EQ(form->value("RN"), "\xF6");
}

TEST_F(FieldFormTest, TypingStopsAtTheLimitWithAHint) {
    make({}, "One");
    typeAtEnd("RN", QStringLiteral("12345"));
    EXPECT_EQ(form->value("RN"), "1234");
    EXPECT_EQ(hint(), limitHint(4));
    QTest::keyClick(form->control("RN"), Qt::Key_Backspace);
    EXPECT_EQ(hint(), QString());
    // Two bytes in the file count as two.
    QKeyEvent umlaut(QEvent::KeyPress, 0, {}, QStringLiteral("ö"));
    QApplication::sendEvent(form->control("RN"), &umlaut);
    EXPECT_EQ(form->value("RN"), "123");
}

TEST_F(FieldFormTest, AValueBeyondTheLimitCanBeMadeShorterOnly) {
    make({{"RN", "123456"}}, "One");
    typeAtEnd("RN", QStringLiteral("7"));
    EXPECT_EQ(form->value("RN"), "123456");
    QTest::keyClick(form->control("RN"), Qt::Key_Backspace);
    EXPECT_EQ(form->value("RN"), "12345");
    typeAtEnd("RN", QStringLiteral("7"));
    EXPECT_EQ(form->value("RN"), "12345");
}

TEST_F(FieldFormTest, APasteBeyondTheLimitIsRefusedWhole) {
    make({{"RN", "1"}}, "One");
    QApplication::clipboard()->setText(QStringLiteral("23456"));
    form->control("RN")->setFocus();
    QTest::keyClick(form->control("RN"), Qt::Key_End);
    QTest::keySequence(form->control("RN"), QKeySequence::Paste);
    EXPECT_EQ(form->value("RN"), "1");
    EXPECT_EQ(hint(), limitHint(4));
}

TEST_F(FieldFormTest, AFieldOfDigitsTakesDigits) {
    make({}, "One");
    typeAtEnd("UN", QStringLiteral("1a2"));
    EXPECT_EQ(form->value("UN"), "12");
    typeAtEnd("UN", QStringLiteral("-"));
    EXPECT_EQ(hint(), QStringLiteral("Digits only."));
}

TEST_F(FieldFormTest, ASemicolonIsRefusedByMessage402OnEveryChangeAndOnOk) {
    make();
    typeAtEnd("PN", QStringLiteral("a;"));
    EXPECT_EQ(stage.ui.countBoxes(402), 1);
    EXPECT_EQ(stage.ui.boxes.back().id, 402);
    // The check does not change the text, and it is made again with every key.
    EXPECT_EQ(control<QLineEdit>("PN").text(), QStringLiteral("a;"));
    typeAtEnd("PN", QStringLiteral("b"));
    EXPECT_EQ(stage.ui.countBoxes(402), 2);
    form->control("RN")->setFocus();
    EXPECT_FALSE(form->validate());
    EXPECT_EQ(stage.ui.countBoxes(402), 3);
    EXPECT_EQ(form->focusWidget(), form->control("PN"));
}

TEST_F(FieldFormTest, AChoiceIsLoadedByTheFirstEntryThatBeginsWithTheValue) {
    for (const auto& [value, index] : {std::pair("Y", 0), std::pair("y", 0), std::pair("no", 1),
                                       std::pair("L", 2), std::pair("Q", -1), std::pair("", -1)}) {
        make({{"TI", value}}, "One");
        EXPECT_EQ(control<QComboBox>("TI").currentIndex(), index) << value;
    }
    make({{"TI", "L"}}, "One", 2007);
    EXPECT_EQ(control<QComboBox>("TI").currentIndex(), -1);
    EXPECT_EQ(control<QComboBox>("TI").count(), 2);
    EXPECT_EQ(form->value("TI"), "L");
}

TEST_F(FieldFormTest, AChoiceIsStoredAsItsLeftmostCharacters) {
    make({{"TI", "yes"}}, "One");
    QTest::keyClick(form->control("TI"), Qt::Key_Down);
    EXPECT_EQ(form->value("TI"), "N");
    EXPECT_EQ(edits, std::vector<std::string>{"TI"});
    QTest::keyClick(form->control("TI"), Qt::Key_Up);
    EXPECT_EQ(form->value("TI"), "yes");
    QTest::keyClick(form->control("TI"), Qt::Key_Delete);
    EXPECT_EQ(form->value("TI"), "");
    EXPECT_FALSE(stored().contains("TI"));
}

TEST_F(FieldFormTest, AChoiceDoesNotTurnWithTheWheelUnlessItHasTheFocus) {
    make({{"TI", "Y"}}, "One");
    form->control("PN")->setFocus();
    auto* box = form->control("TI");
    QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                      Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    EXPECT_EQ(form->value("TI"), "Y");
}

TEST_F(FieldFormTest, ADateButtonAsksUntilTheDateIsValid) {
    make({{"RD", "12-31-99"}}, "One");
    auto& button = control<QPushButton>("RD");
    EXPECT_EQ(button.text(), QStringLiteral("12-31-99"));
    stage.ui.texts = {"12-31-99", "13-01-1999", "12-31-1999"};
    button.click();
    EXPECT_EQ(button.text(), QStringLiteral("12-31-1999"));
    EXPECT_EQ(button.accessibleDescription(), QStringLiteral("12-31-1999"));
    EXPECT_EQ(form->value("RD"), "12-31-1999");
    ASSERT_EQ(stage.ui.textPrompts.size(), 3u);
    EXPECT_EQ(stage.ui.textPrompts[0].title, "Enter Date (MM-DD-YYYY)");
    EXPECT_EQ(stage.ui.textPrompts[0].initial, "12-31-99");
    EXPECT_EQ(stage.ui.countBoxes(447), 2);
    EXPECT_EQ(stage.ui.boxes[0].text,
              "You have entered an invalid date field. Please re-enter this field, in the form: "
              "MM-DD-YYYY");
    EXPECT_EQ(edits, std::vector<std::string>{"RD"});
}

TEST_F(FieldFormTest, ADateButtonThatIsCancelledStaysAsItWas) {
    make({{"RD", "01-02-2003"}}, "One");
    control<QPushButton>("RD").click();
    EXPECT_EQ(form->value("RD"), "01-02-2003");
    EXPECT_TRUE(edits.empty());
}

TEST_F(FieldFormTest, AnEmptyDateIsOfferedAsToday) {
    make({}, "One", 1996);
    stage.ui.texts = {std::nullopt};
    control<QPushButton>("RD").click();
    EXPECT_EQ(stage.ui.textPrompts[0].title, "Enter Date (MM-DD-YY)");
    EXPECT_EQ(stage.ui.textPrompts[0].initial, "01-02-26");
    make({}, "One");
    stage.ui.texts = {"01-02-2003-04-05-06"};
    control<QPushButton>("DT").click();
    EXPECT_EQ(stage.ui.textPrompts[1].initial, "01-02-2026-03-04-05");
    EXPECT_EQ(form->value("DT"), "01-02-2003-04-05-06");
    EXPECT_EQ(form->today(), "01-02-2026");
}

TEST_F(FieldFormTest, ADateIsMadeEmptyByAnEmptyEntry) {
    make({{"RD", "01-02-2003"}}, "One");
    stage.ui.texts = {""};
    control<QPushButton>("RD").click();
    EXPECT_EQ(form->value("RD"), "");
    EXPECT_EQ(edits, std::vector<std::string>{"RD"});
}

TEST_F(FieldFormTest, ACommentShowsItsLinesAndStoresThemOnOneLine) {
    make({{"COM", "one\x14\x15two"}}, "Two");
    auto& edit = control<QPlainTextEdit>("COM");
    EXPECT_EQ(edit.toPlainText(), QStringLiteral("one\ntwo"));
    edit.moveCursor(QTextCursor::End);
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, QStringLiteral("three"));
    EXPECT_EQ(form->value("COM"), "one\x14\x15two\x14\x15three");
    make({{"COM", "one\x15two"}}, "Two");
    control<QPlainTextEdit>("COM").moveCursor(QTextCursor::End);
    QTest::keyClicks(form->control("COM"), QStringLiteral("!"));
    EXPECT_EQ(form->value("COM"), "one\x15two!");
}

TEST_F(FieldFormTest, ACommentStopsAtItsLimitAndKeepsWhatWasTyped) {
    make({}, "Two");
    auto& edit = control<QPlainTextEdit>("LIM");
    QTest::keyClicks(&edit, QStringLiteral("1234567890"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, QStringLiteral("x"));
    EXPECT_EQ(form->value("LIM"), "1234567890\x14\x15");
    EXPECT_EQ(hint(), limitHint(12));
    QApplication::clipboard()->setText(QStringLiteral("too long to fit"));
    QTest::keySequence(&edit, QKeySequence::Paste);
    EXPECT_EQ(form->value("LIM"), "1234567890\x14\x15");
    // What is replaced makes room.
    QTest::keySequence(&edit, QKeySequence::SelectAll);
    QTest::keyClicks(&edit, QStringLiteral("y"));
    EXPECT_EQ(form->value("LIM"), "y");
}

TEST_F(FieldFormTest, TabLeavesAComment) {
    make({}, "Two");
    form->control("COM")->setFocus();
    QTest::keyClick(form->control("COM"), Qt::Key_Tab);
    EXPECT_EQ(form->focusWidget(), form->control("LIM"));
    EXPECT_EQ(form->value("COM"), "");
}

TEST_F(FieldFormTest, AFormMayEditItsFieldsItself) {
    make({{"RD", "01-02-2003"}}, "One");
    form->editValue("RD", "01-02-2003");
    EXPECT_TRUE(edits.empty());
    form->editValue("RD", form->today());
    form->editValue("TI", "N");
    form->editValue("no such code", "x");
    EXPECT_EQ(edits, (std::vector<std::string>{"RD", "TI"}));
    EXPECT_EQ(form->value("RD"), "01-02-2026");
    EXPECT_EQ(control<QComboBox>("TI").currentText(), QStringLiteral("No"));
}

TEST_F(FieldFormTest, APageOfFieldsMovesItsValuesInAndOut) {
    FieldValues values = {{"PN", "old"}, {"106", "11"}};
    PropertySheet sheet(stage.form, "Sheet", "Edit", "");
    auto& page = static_cast<FieldPage&>(
        sheet.addPage(std::make_unique<FieldPage>(stage.form, "One", "Title", kFields, values)));
    stage.door.next([&](QDialog& dialog) {
        EXPECT_FALSE(sheet.isChanged());
        test::type(dialog, "PN", QStringLiteral("new;"));
        EXPECT_TRUE(sheet.isChanged());
        press(dialog, "ok");
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClick(page.fields().control("PN"), Qt::Key_Backspace);
        press(dialog, "ok");
    });
    EXPECT_EQ(runPropertySheet(stage.form, sheet), SheetResult::Stored);
    EXPECT_EQ(values, (FieldValues{{"PN", "new"}, {"106", "11"}}));
}

}  // namespace
}  // namespace kavu
