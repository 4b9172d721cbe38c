#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"

#include <set>

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavu {
namespace {

using test::checkWindow;

class FrameworkWindows : public testing::TestWithParam<double> {
  protected:
    FrameworkWindows() {
        QFont font = QApplication::font();
        before_ = font;
        font.setPointSizeF(font.pointSizeF() * GetParam());
        QApplication::setFont(font);
        look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), look::Scheme::Light);
        stage.form.help = [](const std::string&) {};
    }
    ~FrameworkWindows() override { QApplication::setFont(before_); }

    test::FormStage stage;

  private:
    QFont before_;
};

TEST_P(FrameworkWindows, HaveNamesForEveryControlAndRoomForEveryText) {
    ScreenshotList list;
    addFrameworkScreenshots(list);
    ASSERT_GE(list.entries().size(), 14u);
    ScreenshotStage shots{stage.form};
    for (const auto& entry : list.entries()) {
        const auto window = entry.make(shots);
        ASSERT_NE(window, nullptr) << entry.name;
        if (qobject_cast<QFileDialog*>(window.get()) != nullptr) {
            continue;  // the toolkit's own
        }
        for (const auto& finding : checkWindow(*window)) {
            ADD_FAILURE() << entry.name << ": " << finding;
        }
        EXPECT_FALSE(window->grab().isNull());
    }
}

INSTANTIATE_TEST_SUITE_P(Fonts, FrameworkWindows, testing::Values(1.0, 2.0));

TEST(ScreenshotList, NamesAreUniqueAndSheetsHaveOnePictureForEachPage) {
    ScreenshotList list;
    addFrameworkScreenshots(list);
    std::set<std::string> names;
    for (const auto& entry : list.entries()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
    }
    test::FormStage stage;
    ScreenshotStage shots{stage.form};
    for (const auto& entry : list.entries()) {
        const auto window = entry.make(shots);
        if (const auto* sheet = qobject_cast<const PropertySheet*>(window.get())) {
            EXPECT_EQ(toBytes(sheet->page(sheet->openedPage()).objectName()), entry.name);
        }
    }
}

/// The checks themselves: each planted fault is found, and nothing else.
class WidgetChecksTest : public testing::Test {
  protected:
    WidgetChecksTest() : layout(new QVBoxLayout(&window)) {
        auto* good = new QLineEdit(&window);
        good->setObjectName(QStringLiteral("good"));
        layout->addWidget(look::addLabel(QStringLiteral("Good:"), *good));
        layout->addWidget(good);
    }
    void expectOne(const char* words) {
        const auto found = checkWindow(window);
        ASSERT_EQ(found.size(), 1u) << testing::PrintToString(found);
        EXPECT_NE(found[0].find(words), std::string::npos) << found[0];
    }
    QWidget window;
    QVBoxLayout* layout;
};

TEST_F(WidgetChecksTest, AGoodWindowHasNoFindings) {
    EXPECT_EQ(checkWindow(window), std::vector<std::string>{});
}

TEST_F(WidgetChecksTest, AControlWithoutAnAccessibleNameIsFound) {
    auto* edit = new QLineEdit(&window);
    edit->setObjectName(QStringLiteral("edit"));
    layout->addWidget(edit);
    expectOne("without an accessible name");
}

TEST_F(WidgetChecksTest, AControlWithoutAnObjectNameIsFound) {
    layout->addWidget(new QCheckBox(QStringLiteral("Named"), &window));
    expectOne("without an object name");
}

TEST_F(WidgetChecksTest, ALabelThatBelongsToNothingIsFound) {
    layout->addWidget(new QLabel(QStringLiteral("Alone:"), &window));
    expectOne("a label without a buddy");
}

TEST_F(WidgetChecksTest, ATextThatIsCutIsFound) {
    auto* label = new QLabel(QStringLiteral("A text that has no room"), &window);
    label->setMaximumWidth(20);
    layout->addWidget(label);
    expectOne("its text does not fit");
}

TEST_F(WidgetChecksTest, ATabOrderThatGoesBackIsFound) {
    auto* first = look::makeButton("first", QStringLiteral("First"), {}, &window);
    auto* second = look::makeButton("second", QStringLiteral("Second"), {}, &window);
    layout->addWidget(second);
    layout->addWidget(first);
    QWidget::setTabOrder(first, second);
    expectOne("Tab goes back");
}

}  // namespace
}  // namespace kavu
