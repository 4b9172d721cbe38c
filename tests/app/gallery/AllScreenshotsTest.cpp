#include "app/framework/EditableList.h"
#include "app/framework/Look.h"
#include "app/framework/QtText.h"
#include "app/framework/WindowCare.h"
#include "app/shell/HelpTopics.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"
#include "core/document/OpenDocument.h"
#include "gallery/Makers.h"
#include "gallery/Screenshots.h"
#include "support/TestApplication.h"

#include <set>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace kavu {
namespace {

/// Every window that there is, filled from the sample document.
class AllWindows : public testing::Test {
  protected:
    AllWindows() {
        look::apply(*static_cast<QApplication*>(QCoreApplication::instance()), look::Scheme::Light);
        forms.form.help = [this](const std::string& topic) { topics.insert(topic); };
        EXPECT_TRUE(openFromName(app.application.context(), &app.ui,
                                 KAVU_SOURCE_DIR "/samples/flight-test.tma"));
        addAllScreenshots(list);
    }
    ~AllWindows() override { QApplication::setFont(before_); }

    void enlargeFont(double times) {
        auto font = before_;
        font.setPointSizeF(font.pointSizeF() * times);
        QApplication::setFont(font);
    }

    void forEachWindow(const std::function<void(const std::string& name, QWidget& window)>& visit) {
        ScreenshotStage stage{forms.form, &app.application.context(), &app.application};
        for (const auto& entry : list.entries()) {
            const auto window = entry.make(stage);
            ASSERT_NE(window, nullptr) << entry.name;
            if (qobject_cast<QFileDialog*>(window.get()) == nullptr) {  // the toolkit's own
                visit(entry.name, *window);
            }
        }
    }

    /// Expects the lists of windows whose names begin so to need no scrolling sideways. Their
    /// number.
    int listsWithAllColumns(const std::string& beginning) {
        int lists = 0;
        forEachWindow([&](const std::string& name, QWidget& window) {
            if (!name.starts_with(beginning)) {
                return;
            }
            window.show();
            QApplication::processEvents();
            for (const auto* const shown : window.findChildren<EditableList*>()) {
                if (shown->isVisible()) {
                    ++lists;
                    EXPECT_EQ(shown->view()->horizontalScrollBar()->maximum(), 0)
                        << name << ": " << toBytes(shown->objectName());
                }
            }
            window.hide();
        });
        return lists;
    }

    test::TestApplication app;
    test::FormStage forms;
    ScreenshotList list;
    std::set<std::string> topics;

  private:
    QFont before_ = QApplication::font();
};

void expectNoFindings(const std::string& name, QWidget& window) {
    for (const auto& finding : test::checkWindow(window)) {
        ADD_FAILURE() << name << ": " << finding;
    }
}

TEST_F(AllWindows, HaveNamesForEveryControlAndRoomForEveryText) {
    forEachWindow(expectNoFindings);
}

TEST_F(AllWindows, OfTheMultiplexShowAllColumnsOfTheirListsAtTheirUsualSize) {
    EXPECT_GE(listsWithAllColumns("MULTIPLEX_INFO"), 1);
}

TEST_F(AllWindows, OfTheTracksShowAllColumnsOfTheirListAtTheirUsualSize) {
    EXPECT_GE(listsWithAllColumns("Tape8"), 1);
}

TEST_F(AllWindows, OpenWithTheirFirstFieldReadyForTheKeyboardAndShowIt) {
    int fields = 0;
    forEachWindow([&](const std::string& name, QWidget& window) {
        if (qobject_cast<QDialog*>(&window) == nullptr ||
            qobject_cast<QMessageBox*>(&window) != nullptr || firstField(window) == nullptr) {
            return;  // there is nothing to be filled in
        }
        window.show();
        window.activateWindow();
        QApplication::processEvents();
        auto* const focus = window.focusWidget();
        ASSERT_NE(focus, nullptr) << name << ": nothing has the keyboard";
        EXPECT_EQ(qobject_cast<QTabBar*>(focus), nullptr) << name << ": a tab has the keyboard";
        EXPECT_FALSE(focus->visibleRegion().isEmpty())
            << name << ": '" << toBytes(focus->objectName()) << "' is out of sight";
        if (const auto* const button = qobject_cast<const QPushButton*>(focus);
            focus->objectName() == QStringLiteral("pcm_display_window") ||
            (button != nullptr && button->isDefault())) {
            return;  // the cursor of the grid, and the mark of a default button, are always there
        }
        const auto with = focus->grab().toImage();
        focus->clearFocus();
        QApplication::processEvents();
        EXPECT_NE(focus->grab().toImage(), with)
            << name << ": '" << toBytes(focus->objectName()) << "' looks as it does without it";
        ++fields;
    });
    EXPECT_GT(fields, 60);
}

/// Whether all that is needed to leave a window is on the screen. The screen is the one of the
/// platform that the test runs on: it runs once for each size.
void expectOnScreen(const std::string& name, QWidget& window) {
    window.show();
    QApplication::processEvents();
    const auto room = window.screen()->availableSize();
    EXPECT_LE(window.width(), room.width()) << name;
    EXPECT_LE(window.height(), room.height()) << name;
    for (auto* const button : window.findChildren<QPushButton*>()) {
        if (!button->isVisible() || button->window() != &window ||
            qobject_cast<QDialogButtonBox*>(button->parentWidget()) == nullptr) {
            continue;
        }
        EXPECT_TRUE(window.rect().contains(QRect(button->mapTo(&window, QPoint()), button->size())))
            << name << ": '" << toBytes(button->objectName()) << "' is not in the window";
    }
    window.hide();
}

TEST_F(AllWindows, FitTheScreen) {
    int windows = 0;
    forEachWindow([&](const std::string& name, QWidget& window) {
        ++windows;
        expectOnScreen(name, window);
    });
    EXPECT_GT(windows, 90);
}

/// Fields that lie beyond the side of their window are not found, and lines that have to be
/// scrolled along are not read.
TEST_F(AllWindows, ScrollDownAndNotSideways) {
    int areas = 0;
    forEachWindow([&](const std::string& name, QWidget& window) {
        window.show();
        QApplication::processEvents();
        QApplication::processEvents();
        for (const auto* const area : window.findChildren<QScrollArea*>()) {
            if (area->isVisible()) {
                ++areas;
                EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0)
                    << name << ": '" << toBytes(area->objectName()) << "'";
            }
        }
        window.hide();
    });
    EXPECT_GT(areas, 30);
}

TEST_F(AllWindows, HaveRoomForTextOfTwiceTheSize) {
    enlargeFont(2.0);
    forEachWindow(expectNoFindings);
}

/// The headings of a manual page; empty if there is no such page.
QStringList headingsOf(std::string_view page) {
    QFile file(QStringLiteral(KAVU_SOURCE_DIR "/docs/manual/%1.md").arg(toQString(page)));
    QStringList headings;
    if (file.open(QIODevice::ReadOnly)) {
        for (const auto& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1Char('#'))) {
                headings << line.section(QLatin1Char(' '), 1);
            }
        }
    }
    return headings;
}

/// Stands for the main window: dialogs without help of their own ask it.
class Asked : public QWidget {
  public:
    std::vector<std::string> topics;

  protected:
    void customEvent(QEvent* event) override {
        if (event->type() == HelpRequest::kind()) {
            topics.push_back(static_cast<HelpRequest*>(event)->topic());
        }
    }
};

TEST_F(AllWindows, OpenTheirChapterOfTheManualByTheHelpKey) {
    std::set<std::string> withoutHelp;
    int dialogs = 0;
    forEachWindow([&](const std::string& name, QWidget& window) {
        if (qobject_cast<QDialog*>(&window) == nullptr) {
            return;
        }
        Asked main;
        window.setParent(&main, window.windowFlags());
        window.show();
        QApplication::processEvents();
        ++dialogs;
        const auto before = topics;
        topics.clear();
        auto* const focus = window.focusWidget();
        QTest::keyClick(focus == nullptr ? &window : focus, Qt::Key_F1);
        EXPECT_EQ(topics.size() + main.topics.size(), 1U) << name;
        if (topics.empty()) {
            withoutHelp.insert(name);
        }
        topics.insert(before.begin(), before.end());
        if (!main.topics.empty() && !main.topics.front().empty()) {
            topics.insert(main.topics.front());
        }
        window.setParent(nullptr);
    });
    EXPECT_GE(dialogs, 90);
    EXPECT_GE(topics.size(), 50U);
    for (const auto& topic : topics) {
        if (topic.starts_with("Sample")) {
            continue;  // pages that only show what the framework can do
        }
        const auto place = helpPlace(topic);
        const auto headings = headingsOf(place.page);
        EXPECT_FALSE(headings.isEmpty()) << topic << " has no page '" << place.page << "'";
        if (!place.heading.empty()) {
            EXPECT_TRUE(headings.contains(toQString(place.heading)))
                << topic << ": '" << place.heading << "'";
        }
    }
    for (const auto* const name : {"GeneralInfo1", "Tape3", "RF9", "DataConversion2",
                                   "PcmInputData", "MajorFrameDisplay", "EditDataWord"}) {
        EXPECT_FALSE(withoutHelp.contains(name)) << name;
    }
}

}  // namespace
}  // namespace kavu
