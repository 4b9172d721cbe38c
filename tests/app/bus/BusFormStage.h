// The forms of a bus group over a definition of short commands, with a door for their dialogs.
#pragma once

#include "app/bus/BusRowForms.h"
#include "app/bus/GroupTreeEditor.h"
#include "app/framework/EditableList.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "bus/BusStage.h"

#include <string>
#include <vector>

#include <QComboBox>
#include <QTreeView>

namespace kavu::test {

struct BusFormStage {
    explicit BusFormStage(const std::vector<std::string>& commands, int edition = 2011)
        : bus(edition), definition(bus.unpack(commands)) {}

    bool open(const BusPlace& place, const TestDoor::Driver& driver) {
        door.next(driver);
        return editBusRow(setup, place, nullptr);
    }
    bool add(const BusPlace& owner, const TestDoor::Driver& driver) {
        door.next(driver);
        return addBusRow(setup, owner, nullptr).has_value();
    }
    /// The value of a field of a row.
    std::string value(const BusPlace& place, const char* stem) {
        const auto* const row = busRowAt(std::as_const(definition), place);
        return row == nullptr ? "no row" : std::string(busValue(*row, levelOf(place), stem));
    }
    [[nodiscard]] std::vector<int> shown() const { return bus.shown(); }
    RecordingInterface& ui() { return bus.t.ui; }

    BusStage bus;
    TestDoor door;
    BusDefinition definition;
    BusEdit edit{bus.t.context, &bus.t.ui, definition};
    FormContext form = formContext(bus.t.ui, door, bus.t.context);
    std::vector<std::string> conversions{};  ///< the names whose records were opened
    BusFormSetup setup{form, bus.t.context, definition, edit,
                       [this](QWidget&, const std::string& name) { conversions.push_back(name); }};
};

/// A bus with a message, a measurement and a location.
inline std::vector<std::string> smallBus(const std::vector<std::string>& more = {}) {
    std::vector<std::string> commands = {
        "DLN:Bus 1",       "TA:F-1",        "BP:OD",          "NBS\\N:1",      "BID-1:000",
        "BNA-1:Main",      "BT-1:1553",     "TK\\N-1:1",      "TS-1-1:7",      "NMS\\N-1:1",
        "MID-1-1:12",      "MNA-1-1:Speed", "TRN-1-1:RADAR",  "TRA-1-1:00101", "STN-1-1:STATUS",
        "STA-1-1:00010",   "TRM-1-1:0",     "DWC-1-1:4",      "MN\\N-1-1:1",   "MN-1-1-1:SPEED",
        "MT-1-1-1:D",      "MN1-1-1-1:NO",  "NML\\N-1-1-1:1", "MWN-1-1-1-1:1", "MBM-1-1-1-1:FW",
        "MTO-1-1-1-1:MSB", "MFP-1-1-1-1:1"};
    commands.insert(commands.end(), more.begin(), more.end());
    return commands;
}

inline void openPage(QDialog& dialog, int page) {
    dynamic_cast<PropertySheet&>(dialog).openPage(page);
    QApplication::processEvents();
}
inline EditableList& listOf(QDialog& dialog, const char* name) {
    return *find<EditableList>(dialog, name);
}

/// Chooses an entry of a list by the keyboard.
inline void choose(QWidget& parent, const char* name, const QString& text) {
    auto* const box = find<QComboBox>(parent, name);
    ASSERT_NE(box, nullptr);
    const int wanted = box->findText(text);
    ASSERT_GE(wanted, 0) << toBytes(text);
    box->setFocus();
    if (box->currentIndex() < 0) {
        QTest::keyClick(box, Qt::Key_Down);
    }
    for (int i = 0; i < box->count() && box->currentIndex() != wanted; ++i) {
        QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
    }
    EXPECT_EQ(box->currentText(), text);
}

/// A key in the tree of the window.
inline void key(GroupTreeEditor& editor, Qt::Key pressed,
                Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    // A dialog in front of it may have been there.
    editor.window()->activateWindow();
    QApplication::processEvents();
    editor.tree()->setFocus();
    QTest::keyClick(editor.tree(), pressed, modifiers);
}

/// Types into a list with free entry and leaves it.
inline void typeInto(QWidget& parent, const char* name, const QString& text) {
    type(parent, name, text);
    QTest::keyClick(find<QWidget>(parent, name), Qt::Key_Tab);
}

}  // namespace kavu::test
