// The door of the dialogs in a test: each dialog that opens is shown and handed to the next
// driver in the queue, which presses real keys and buttons. An unexpected dialog fails the
// test and is discarded, so no test waits.
#pragma once

#include "app/framework/DialogDoor.h"
#include "app/framework/QtText.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace kavu::test {

class TestDoor : public DialogDoor {
  public:
    using Driver = std::function<void(QDialog&)>;

    ~TestDoor() override {
        EXPECT_TRUE(drivers_.empty()) << drivers_.size() << " dialogs did not open";
    }

    TestDoor& next(Driver driver) {
        drivers_.push_back(std::move(driver));
        return *this;
    }

    int run(QDialog& dialog) override {
        names.push_back(toBytes(dialog.objectName()));
        titles.push_back(toBytes(dialog.windowTitle()));
        dialog.setModal(true);
        dialog.show();
        dialog.activateWindow();
        QApplication::processEvents();
        if (drivers_.empty()) {
            ADD_FAILURE() << "unexpected dialog " << names.back() << ": " << titles.back();
        } else {
            const auto driver = std::move(drivers_.front());
            drivers_.pop_front();
            driver(dialog);
            EXPECT_FALSE(dialog.isVisible()) << "left open: " << toBytes(dialog.objectName());
        }
        const int result = dialog.result();
        dialog.setVisible(false);
        return result;
    }

    std::vector<std::string> names;
    std::vector<std::string> titles;

  private:
    std::deque<Driver> drivers_;
};

/// The widget of a name below another; fails the test if there is none.
template <typename Widget = QWidget>
Widget* find(const QWidget& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(found, nullptr) << "no " << name << " in " << toBytes(parent.objectName());
    return found;
}

/// Clicks a button by its object name.
inline void press(QWidget& parent, const char* name) {
    if (auto* button = find<QAbstractButton>(parent, name)) {
        EXPECT_TRUE(button->isEnabled()) << name << " is disabled";
        QTest::mouseClick(button, Qt::LeftButton);
    }
}

/// Replaces the text of a field by typing.
inline void type(QWidget& parent, const char* name, const QString& text) {
    if (auto* field = find<QWidget>(parent, name)) {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
    }
}

}  // namespace kavu::test
