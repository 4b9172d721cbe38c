// The panel of pair sets on the working copy of a record, in a window as users see it.
#pragma once

#include "app/conversion/PairSetControls.h"
#include "app/conversion/PairSetPanel.h"
#include "app/framework/EditableList.h"
#include "app/support/TestDoor.h"
#include "conversion/ConversionFixture.h"
#include "conversion/DefinitionEdit.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>
#include <QVBoxLayout>

namespace kavu::test {

class PairSetStage {
  public:
    /// Five pairs on y = 1 + 2 x without an error, order 1.
    PairSetStage() {
        std::string commands =
            "C-1\\DCN:A;\nC-1\\DCT:PRS;\nC-1\\MN3:PSI;\nC-1\\PS1:Y;\n"
            "C-1\\PS2:1;\nC-1\\PS\\N:5;\nC-1\\CO:77;\n";
        for (int i = 0; i < 5; ++i) {
            const auto n = std::to_string(i + 1);
            commands += "C-1\\PS3-" + n + ":" + std::to_string(i * 10) + ";\n";
            commands += "C-1\\PS4-" + n + ":" + std::to_string(1 + 20 * i) + ";\n";
        }
        EXPECT_TRUE(f.load(commands));
        edit = DefinitionEdit::open(f.context, f.conversions, &f.ui, "A");
        EXPECT_TRUE(edit);
    }

    /// Puts keys into the working copy before the panel opens.
    void set(const DefinitionEdit::Values& values) { EXPECT_TRUE(edit->setValues(&f.ui, values)); }
    /// Makes the panel of these pairs.
    void setPairs(const std::vector<std::pair<std::string, std::string>>& pairs) {
        std::vector<std::vector<std::string>> rows;
        for (const auto& [x, y] : pairs) {
            rows.push_back({x, y});
        }
        const std::string_view codes[] = {"PS3", "PS4"};
        EXPECT_TRUE(edit->setRows(&f.ui, "PS\\N", codes, rows));
    }
    PairSetPanel& open(const PairSetSetup& setup = {.bits = 0, .plot = true}) {
        window = std::make_unique<QDialog>();
        window->setObjectName(QStringLiteral("Window"));
        auto* layout = new QVBoxLayout(window.get());
        panel = new PairSetPanel(form, f.context, f.conversions, "A", setup, window.get());
        layout->addWidget(panel);
        QObject::connect(panel, &PairSetPanel::changed, [this] { ++changes; });
        window->show();
        QApplication::processEvents();
        return *panel;
    }

    [[nodiscard]] EditableList& list() { return *find<EditableList>(*panel, "pairs"); }
    [[nodiscard]] const std::vector<ListRow>& rows() { return list().rows(); }
    [[nodiscard]] std::string value(std::string_view code) { return edit->value(code); }
    /// What a field or a label shows.
    template <typename Widget>
    [[nodiscard]] std::string text(const char* name) {
        return toBytes(find<Widget>(*panel, name)->text());
    }
    /// The next dialog gets both values and OK.
    void enterPair(const char* x, const char* y) {
        door.next([x, y](QDialog& dialog) {
            type(dialog, "telemetryValue", QLatin1String(x));
            type(dialog, "euValue", QLatin1String(y));
            press(dialog, "ok");
        });
    }
    void cancelNext() {
        door.next([](QDialog& dialog) { press(dialog, "cancel"); });
    }

    ConversionFixture f;
    TestDoor door;
    FormContext form{f.ui, door, f.settings, f.messages, f.clock, 2011, {}};
    std::optional<DefinitionEdit> edit;
    std::unique_ptr<QDialog> window;
    PairSetPanel* panel = nullptr;
    int changes = 0;
};

}  // namespace kavu::test
