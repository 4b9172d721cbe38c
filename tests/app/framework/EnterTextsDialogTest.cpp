#include "app/framework/EnterTextsDialog.h"
#include "app/framework/QtInterface.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>

namespace kavu {
namespace {

using test::find;
using test::press;
using test::type;

class EnterTextsDialogTest : public ::testing::Test {
  protected:
    std::optional<std::vector<std::string>> ask() {
        return ui.enterTexts("Both",
                             {{.title = {}, .prompt = "First:", .initial = "K\xF6ln"},
                              {.title = {}, .prompt = "Second:", .initial = "x", .limit = 4}});
    }
    test::TestDoor door;
    QtInterface ui{nullptr, door};
};

TEST_F(EnterTextsDialogTest, EveryTextHasItsFieldAndUneditedOnesKeepTheirBytes) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Both"));
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(find<QLineEdit>(dialog, "value1")->text(), QStringLiteral("x"));
        type(dialog, "value1", QStringLiteral("new"));
        press(dialog, "ok");
    });
    EXPECT_EQ(ask(), (std::vector<std::string>{"K\xF6ln", "new"}));
}

TEST_F(EnterTextsDialogTest, ASemicolonAndATextThatIsTooLongAreRefused) {
    door.next([this](QDialog& dialog) {
        for (const auto* text : {"a;b", "12345"}) {
            door.next([](QDialog& box) { press(box, "ok"); });
            type(dialog, "value1", QLatin1String(text));
            press(dialog, "ok");
            EXPECT_TRUE(dialog.isVisible());
        }
        type(dialog, "value1", QString());
        QTest::keyClick(find<QLineEdit>(dialog, "value1"), Qt::Key_Backspace);
        press(dialog, "ok");
    });
    EXPECT_EQ(ask(), (std::vector<std::string>{"K\xF6ln", ""}));
}

TEST_F(EnterTextsDialogTest, CancelGivesNothing) {
    door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    EXPECT_EQ(ask(), std::nullopt);
}

TEST_F(EnterTextsDialogTest, ANameIsEnteredBelowTheOnesThatThereAre) {
    door.next([](QDialog& dialog) {
        EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
        EXPECT_EQ(find<QListWidget>(dialog, "listed")->count(), 2);
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("value"));
        press(dialog, "cancel");
    });
    TextPrompt prompt{.title = "New", .prompt = "Name:", .initial = {}};
    prompt.listed = {"One", "Two"};
    EXPECT_EQ(ui.enterText(prompt), std::nullopt);
}

}  // namespace
}  // namespace kavu
