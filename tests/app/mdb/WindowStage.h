// A database file with the window to work in it.
#pragma once

#include "app/mdb/DatabaseWindow.h"
#include "app/support/TestDoor.h"
#include "mdb/DatabaseStage.h"

#include <memory>
#include <string>
#include <vector>

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace kavu::test {

class WindowStage : public DatabaseStage {
  public:
    explicit WindowStage(std::string_view bytes = {}, MdbVersion version = MdbVersion::WithBus)
        : DatabaseStage(version) {
        form.help = [this](const std::string& topic) { topics.push_back(topic); };
        writeFile(path, bytes);
        EXPECT_TRUE(edit.begin(&ui));
        window = std::make_unique<DatabaseWindow>(form, edit, database, nullptr);
        window->show();
        QApplication::processEvents();
    }

    /// The names in the order in which they are shown.
    [[nodiscard]] std::vector<std::string> shown() const {
        std::vector<std::string> names;
        for (int place = 0; place < window->model().rowCount(); ++place) {
            names.emplace_back(edit.row(window->model().rowAt(place)).name());
        }
        return names;
    }
    [[nodiscard]] std::vector<std::string> rowNames() const {
        std::vector<std::string> names;
        for (std::size_t row = 0; row < edit.size(); ++row) {
            names.emplace_back(edit.row(row).name());
        }
        return names;
    }
    [[nodiscard]] QModelIndex cell(int place, std::size_t field) const {
        return window->model().index(place, window->model().columnOf(field));
    }
    void selectCell(int place, std::size_t field) {
        window->view().setCurrentIndex(cell(place, field));
    }
    /// Shortcuts are those of the active window, which a dialog before may have been.
    void activate() const {
        window->activateWindow();
        QApplication::processEvents();
        window->view().setFocus();
    }
    /// Types a text into a cell and leaves it by the Return key.
    void typeInto(int place, std::size_t field, const char* text) {
        selectCell(place, field);
        QTest::keyClick(&window->view(), Qt::Key_F2);
        auto* const editor = QApplication::focusWidget();
        ASSERT_NE(editor, &window->view());
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QLatin1String(text));
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }
    [[nodiscard]] std::string state() const {
        return toBytes(find<QLabel>(*window, "state")->text());
    }
    void trigger(const char* name) { window->findChild<QAction*>(QLatin1String(name))->trigger(); }

    TestDoor door;
    FormContext form = formContext(ui, door, context);
    DatabaseEdit edit{context, database};
    std::unique_ptr<DatabaseWindow> window;
    std::vector<std::string> topics;
};

}  // namespace kavu::test
