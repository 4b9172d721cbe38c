// A stream with the context of its dialogs: words 1 to 31 in 8 frames, a counter in 30, and,
// before edition 106-11, the subframes S (word 5, depth 4) and T (words 6 and 16, depth 4).
#pragma once

#include "app/pcm/WordSteps.h"
#include "app/support/TestDoor.h"
#include "pcm/StreamFixture.h"
#include "pcm/undo/StreamUndo.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace kavu::test {

class WordStage : public StreamFixture {
  public:
    explicit WordStage(int edition = 2009) : StreamFixture(edition) {
        EXPECT_TRUE(createIdCounter(format, nullptr, 30));
        format.implicitSubframes = edition >= 2011;
        if (edition < 2011) {
            EXPECT_TRUE(createSubframe(format, nullptr, {.fwp = 5, .name = "S", .depth = 4}));
            EXPECT_TRUE(createSubframe(
                format, nullptr,
                {.fwp = 6, .name = "T", .depth = 4, .locations = 2, .interval = 10}));
        }
        format.changed = false;
    }

    bool edit(int fwp, int fn) { return editMeasurementAt(form, format, steps, nullptr, fwp, fn); }
    /// Opens the dialog, drives it, and tells if the stream is as it was.
    bool leavesAlone(int fwp, int fn, const TestDoor::Driver& driver) {
        StreamUndo before(format);
        door.next(driver);
        EXPECT_FALSE(edit(fwp, fn));
        EXPECT_FALSE(format.changed);
        return !before.commit();
    }
    /// "fwp/index fwp/index" of a name.
    [[nodiscard]] std::string places(const std::string& name) const {
        std::string text;
        for (const auto& at : format.cells().places(name)) {
            text += std::to_string(at.word) + "/" + std::to_string(at.index) + " ";
        }
        return text;
    }
    [[nodiscard]] const Measurement& at(int fwp, int fn, const std::string& name) const {
        return format.cells().measurement(format.findInCell(fwp, fn, name));
    }
    [[nodiscard]] int lastBox() const { return ui.boxes.empty() ? 0 : ui.boxes.back().id; }

    TestDoor door;
    FormContext form = formContext(ui, door, context);
    WordSteps steps;
};

/// Chooses the entry of a box that begins with a text, as a person does.
inline void choose(const QWidget& parent, const char* name, const QString& text) {
    if (auto* box = find<QComboBox>(parent, name)) {
        int index = -1;
        for (int i = 0; i < box->count(); ++i) {
            index = index < 0 && box->itemText(i).startsWith(text) ? i : index;
        }
        ASSERT_GE(index, 0) << "no " << toBytes(text) << " in " << name;
        box->setFocus();
        if (box->currentIndex() != index) {
            box->setCurrentIndex(index);
            emit box->activated(index);
        }
    }
}

/// The texts of a box.
inline QStringList entries(const QWidget& parent, const char* name) {
    QStringList texts;
    if (const auto* box = find<QComboBox>(parent, name)) {
        for (int i = 0; i < box->count(); ++i) {
            texts.append(box->itemText(i));
        }
    }
    return texts;
}

/// The rows of the list of that name, cells apart by " | ", rows by a line feed.
inline std::string listText(const QWidget& parent, const char* name) {
    std::string text;
    const auto* list = find<QWidget>(parent, name);
    const auto* view = list == nullptr ? nullptr : find<QTableView>(*list, "rows");
    for (int row = 0; view != nullptr && row < view->model()->rowCount(); ++row) {
        text += row > 0 ? "\n" : "";
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            text += (column > 0 ? " | " : "") +
                    toBytes(view->model()->index(row, column).data().toString());
        }
    }
    return text;
}

/// Selects a row of the list of that name by a click.
inline void selectRow(const QWidget& parent, const char* name, int row) {
    const auto* list = find<QWidget>(parent, name);
    if (auto* view = list == nullptr ? nullptr : find<QTableView>(*list, "rows")) {
        const auto cell = view->visualRect(view->model()->index(row, 0));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
    }
}

inline std::string textOf(const QWidget& parent, const char* name) {
    if (const auto* label = parent.findChild<QLabel*>(QLatin1String(name))) {
        return toBytes(label->text());
    }
    const auto* edit = find<QLineEdit>(parent, name);
    return edit == nullptr ? std::string() : toBytes(edit->text());
}

}  // namespace kavu::test
