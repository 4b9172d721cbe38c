#include "app/framework/DialogDoor.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QToolTip>
#include <QVBoxLayout>

namespace kavu {
namespace {

class WindowCareTest : public testing::Test {
  protected:
    WindowCareTest() {
        look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), look::Scheme::Light);
        layout = new QVBoxLayout(&dialog);
    }
    void show() {
        layout->addWidget(look::makeDialogButtons(dialog));
        dialog.show();
        dialog.activateWindow();
        QApplication::processEvents();
    }
    template <typename Widget>
    Widget* add(const char* name) {
        auto* const widget = new Widget(&dialog);
        widget->setObjectName(QLatin1String(name));
        layout->addWidget(widget);
        return widget;
    }

    QDialog dialog;
    QVBoxLayout* layout = nullptr;
};

TEST_F(WindowCareTest, TheFirstFieldHasTheKeyboard) {
    auto* const first = add<QComboBox>("first");
    add<QLineEdit>("second");
    show();
    EXPECT_EQ(dialog.focusWidget(), first);
}

TEST_F(WindowCareTest, WhatADialogHasChosenItselfStays) {
    add<QLineEdit>("first");
    auto* const second = add<QLineEdit>("second");
    second->setFocus();
    show();
    EXPECT_EQ(dialog.focusWidget(), second);
}

TEST_F(WindowCareTest, WhatIsDisabledOrHiddenIsNoField) {
    add<QLineEdit>("disabled")->setEnabled(false);
    add<QLineEdit>("hidden")->hide();
    auto* const box = add<QCheckBox>("box");
    show();
    EXPECT_EQ(dialog.focusWidget(), box);
}

TEST_F(WindowCareTest, AListWithTheKeyboardLooksUnlikeOneWithoutIt) {
    auto* const list = add<QListWidget>("list");
    list->addItems({QStringLiteral("one"), QStringLiteral("two")});
    add<QLineEdit>("edit");
    show();
    ASSERT_TRUE(list->hasFocus());
    const auto with = list->grab().toImage();
    test::find<QLineEdit>(dialog, "edit")->setFocus();
    QApplication::processEvents();
    EXPECT_NE(list->grab().toImage(), with);
}

TEST_F(WindowCareTest, ReturnInACellEndsItsEditAndNotTheDialog) {
    auto* const table = new QTableWidget(2, 1, &dialog);
    table->setItem(0, 0, new QTableWidgetItem(QStringLiteral("old")));
    layout->addWidget(table);
    show();
    table->editItem(table->item(0, 0));
    QApplication::processEvents();
    auto* const editor = QApplication::focusWidget();
    ASSERT_NE(qobject_cast<QLineEdit*>(editor), nullptr);
    QTest::keyClicks(editor, QStringLiteral("new"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(table->item(0, 0)->text(), QStringLiteral("new"));
}

TEST_F(WindowCareTest, AReturnKeyThatIsHeldDownDoesNotCloseTheDialogItHasOpened) {
    auto* const edit = add<QLineEdit>("value");
    show();
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(edit, &repeated);
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(WindowCareTest, ADialogThatIsTooLargeForTheScreenScrollsAboveItsButtons) {
    for (int i = 0; i < 60; ++i) {
        add<QLineEdit>(("field" + std::to_string(i)).c_str());
    }
    show();
    const auto room = look::roomOnScreen(dialog);
    EXPECT_LE(dialog.height(), room.height());
    EXPECT_LE(dialog.width(), room.width());
    auto* const ok = test::find<QPushButton>(dialog, "ok");
    EXPECT_TRUE(dialog.rect().contains(QRect(ok->mapTo(&dialog, QPoint()), ok->size())));
    EXPECT_NE(dialog.findChild<QScrollArea*>(QStringLiteral("contents")), nullptr);
    EXPECT_EQ(test::checkTabOrder(dialog), std::vector<std::string>{});
    EXPECT_EQ(toBytes(dialog.focusWidget()->objectName()), "field0");
}

TEST_F(WindowCareTest, ADialogThatFitsIsLeftAsItIs) {
    add<QLineEdit>("field");
    show();
    EXPECT_EQ(dialog.findChild<QScrollArea*>(QStringLiteral("contents")), nullptr);
}

TEST_F(WindowCareTest, ANameThatIsElidedHasATip) {
    auto* const list = add<QListWidget>("list");
    list->addItem(QStringLiteral("short"));
    list->addItem(QString(200, QLatin1Char('W')) + QStringLiteral("<b>"));
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    show();
    const auto ask = [&](int row) {
        QToolTip::hideText();
        const auto at = list->visualItemRect(list->item(row)).center();
        QHelpEvent event(QEvent::ToolTip, {20, at.y()}, list->viewport()->mapToGlobal(at));
        QApplication::sendEvent(list->viewport(), &event);
        return QToolTip::text();
    };
    EXPECT_EQ(ask(0), QString());
    EXPECT_TRUE(ask(1).contains(QStringLiteral("WWW&lt;b&gt;"))) << toBytes(ask(1));
    QToolTip::hideText();
}

}  // namespace
}  // namespace kavu
