// A loaded stream of 31 words in 8 frames, with the context of its sheet.
#pragma once

#include "app/framework/FormContext.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "pcm/LoadFixture.h"
#include "pcm/structure/SubframeEdit.h"
#include "pcm/undo/StreamUndo.h"

#include <QComboBox>
#include <QLineEdit>

namespace kavu::test {

class SheetStage : public LoadFixture {
  public:
    explicit SheetStage(int edition = 2009, const Commands& more = {},
                        const std::string& type = "TWO")
        : LoadFixture(edition) {
        form.edition = edition;
        EXPECT_TRUE(load(plainFormat(32, 8, type) + more));
        format.changed = false;
        ui.boxes.clear();
        ui.statusTexts.clear();
    }
    [[nodiscard]] int lastBox() const { return ui.boxes.empty() ? 0 : ui.boxes.back().id; }
    [[nodiscard]] bool saved(const std::string& line) {
        const auto lines = LoadFixture::saved("[kavu]PCMFMT.P01");
        return std::find(lines.begin(), lines.end(), "P-1\\" + line + ";") != lines.end();
    }

    TestDoor door;
    FormContext form = formContext(ui, door, context);
};

/// Chooses the entry that begins with a text, as a person does.
inline void pick(const QWidget& parent, const char* name, const QString& text) {
    auto* const box = find<QComboBox>(parent, name);
    const int index = box == nullptr ? -1 : box->findText(text, Qt::MatchStartsWith);
    ASSERT_GE(index, 0) << "no " << toBytes(text) << " in " << name;
    EXPECT_TRUE(box->isEnabled()) << name;
    box->setCurrentIndex(index);
    emit box->activated(index);
}
inline QString chosen(const QWidget& parent, const char* name) {
    const auto* const box = find<QComboBox>(parent, name);
    return box == nullptr ? QString() : box->currentText();
}
inline QString buttonText(const QWidget& parent, const char* name) {
    const auto* const button = find<QAbstractButton>(parent, name);
    return button == nullptr ? QString() : button->text();
}
inline bool enabled(const QWidget& parent, const char* name) {
    const auto* const widget = find<QWidget>(parent, name);
    return widget != nullptr && widget->isEnabled();
}
/// Types into a list with free entry and leaves it.
inline void enter(const QWidget& parent, const char* name, const QString& text) {
    if (auto* const box = find<QComboBox>(parent, name)) {
        box->lineEdit()->setFocus();
        QTest::keyClick(box->lineEdit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box->lineEdit(), text);
        emit box->lineEdit()->editingFinished();
    }
}

}  // namespace kavu::test
