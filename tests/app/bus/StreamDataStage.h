// A document with a recorder "Deck" whose links have message data or packets, and the editors over
// them.
#pragma once

#include "app/bus/GroupTreeEditor.h"
#include "app/framework/FormContext.h"
#include "app/framework/PropertySheet.h"
#include "app/support/TestDoor.h"
#include "app/support/TreeLines.h"
#include "app/support/WidgetChecks.h"
#include "core/document/DocumentFiles.h"
#include "core/document/DocumentHistory.h"
#include "core/document/OpenDocument.h"
#include "groups/MeasurementNames.h"
#include "support/TestApplication.h"

#include <algorithm>

#include <QComboBox>
#include <QMenu>
#include <QTreeView>

namespace kavu::test {

class StreamDataStage : public ::testing::Test {
  protected:
    explicit StreamDataStage(int edition) {
        auto& document = t.application.context().document;
        document.version = edition;
        document.open = true;
        form.edition = edition;
        put("[kavu]GTMP.G", "G\\DSI\\N:1;\r\nG\\DSI-1:Deck;\r\nG\\DST-1:TAP;\r\n");
        put("[kavu]DSRCE.R01", "R-1\\ID:Deck;\r\n");
        put("[kavu]MULT.M01",
            "M-1\\ID:Deck;\r\nM-1\\BSG1:PCM;\r\nM-1\\BB\\DLN:Link;\r\nM-1\\SI\\N:1;\r\n"
            "M-1\\SI1-1:1;\r\nM-1\\SI\\DLN-1:Other;\r\n");
    }
    void put(std::string_view name, std::string_view bytes) {
        test::writeFile(t.application.context().store.pathOf(name), bytes);
    }
    [[nodiscard]] std::string file(std::string_view name = "[kavu]PCMS.S01") {
        return test::readFile(t.application.context().store.pathOf(name));
    }
    /// Writes the S group of the link: its commands without their prefix.
    void putGroup(const std::string& commands) {
        std::string text = "S-1\\DLN:Link;\r\n";
        for (std::size_t from = 0; from < commands.size();) {
            const auto end = commands.find(';', from);
            text += "S-1\\" + commands.substr(from, end - from) + ";\r\n";
            from = end + 1;
        }
        put("[kavu]PCMS.S01", text);
    }
    [[nodiscard]] bool has(const std::string& command) {
        return file().find("S-1\\" + command + ";\r\n") != std::string::npos;
    }
    /// Gives the other link a measurement, and has names checked.
    void takeName(const std::string& name) {
        put("[kavu]PCMMEAS.D01", "D-1\\DLN:Other;\r\nD-1\\MN-1-1:" + name + ";\r\n");
        auto& names = t.application.measurementNames();
        ASSERT_TRUE(names.checkForDuplicates(&t.ui));
        names.setChecking(true, false);
    }
    /// There is a level of the history of the document.
    [[nodiscard]] bool canUndo() { return t.application.context().history.canUndo(); }

    static GroupTreeEditor& editorOf(QDialog& dialog) {
        return *dialog.findChild<GroupTreeEditor*>();
    }
    /// All lines of the tree, opened.
    static std::vector<std::string> lines(QDialog& dialog) {
        auto* const tree = editorOf(dialog).tree();
        tree->expandAll();
        return openLines(*tree);
    }
    static void key(QDialog& dialog, const TreePath& at, Qt::Key key,
                    Qt::KeyboardModifiers with = {}) {
        // A form that was open has the keyboard until it is gone.
        dialog.activateWindow();
        QApplication::processEvents();
        editorOf(dialog).select(at);
        editorOf(dialog).tree()->setFocus();
        QTest::keyClick(editorOf(dialog).tree(), key, with);
    }
    /// The entries of the menu of a row that are its own.
    static std::vector<std::string> menuOf(QDialog& dialog, const TreePath& at) {
        editorOf(dialog).select(at);
        QMenu menu;
        editorOf(dialog).fillMenu(menu);
        std::vector<std::string> texts;
        for (const auto* action : menu.actions()) {
            if (action->isSeparator()) {
                break;
            }
            texts.push_back(toBytes(action->text()));
        }
        return texts;
    }
    /// A driver that types into the fields of a form, chooses in its lists, and presses OK.
    static TestDoor::Driver fill(std::vector<std::pair<const char*, const char*>> fields) {
        return [fields](QDialog& dialog) {
            EXPECT_EQ(test::checkWindow(dialog), std::vector<std::string>{});
            enter(dialog, fields);
            press(dialog, "ok");
        };
    }
    static void enter(QDialog& dialog,
                      const std::vector<std::pair<const char*, const char*>>& fields) {
        for (const auto& [name, text] : fields) {
            if (auto* const box = dialog.findChild<QComboBox*>(QLatin1String(name))) {
                EXPECT_GE(box->findText(QLatin1String(text)), 0) << name << " " << text;
                EXPECT_TRUE(box->isEnabled()) << name;
                box->setCurrentText(QLatin1String(text));
            } else {
                EXPECT_TRUE(find<QWidget>(dialog, name)->isEnabled()) << name;
                type(dialog, name, QLatin1String(text));
            }
        }
    }

    test::TestApplication t;
    test::TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

}  // namespace kavu::test
