// A document with records whose sheets, windows and lists are opened as the command opens
// them.
#pragma once

#include "app/conversion/ConversionForms.h"
#include "app/conversion/DefinitionWindow.h"
#include "app/conversion/EuSheet.h"
#include "app/support/TestDoor.h"
#include "conversion/ConversionFixture.h"
#include "core/text/Text.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <QComboBox>
#include <QPushButton>
#include <gtest/gtest.h>

namespace kavu::test {

inline constexpr const char* kTwo =
    "C-1\\DCN:A;C-1\\DCT:PRS;C-1\\PS\\N:2;C-1\\PS1:N;C-1\\PS3-1:0;C-1\\PS4-1:0;C-1\\PS3-2:10;"
    "C-1\\PS4-2:20;C-1\\MN1:first;"
    "C-2\\DCN:B;C-2\\DCT:COE;C-2\\CO\\N:1;C-2\\CO1:N;C-2\\CO:5;C-2\\CO-1:6;C-2\\MN3:PSI;"
    "C-2\\COM:of B;";

class EuStage : public testing::Test {
  protected:
    void open(int edition = 2011, const char* commands = kTwo) {
        f = std::make_unique<ConversionFixture>(edition);
        ASSERT_TRUE(f->load(lines(commands)));
        f->document.changed = false;
        form = std::make_unique<FormContext>(formContext(f->ui, door, f->context));
    }
    bool run(const std::string& name, test::TestDoor::Driver driver) {
        door.next(std::move(driver));
        return editConversion(*form, f->context, f->conversions, name, setup);
    }
    static EuSheet& sheetOf(QDialog& dialog) { return dynamic_cast<EuSheet&>(dialog); }
    static std::string nameOf(QDialog& dialog) {
        auto* const details = sheetOf(dialog).details();
        return details == nullptr ? "" : toBytes(details->objectName());
    }
    static void choose(QWidget& parent, const char* name, const char* text) {
        auto* const box = find<QComboBox>(parent, name);
        const int index = box->findText(QString::fromUtf8(text));
        EXPECT_GE(index, 0) << text;
        box->setCurrentIndex(index);
    }
    static QString buttonText(QDialog& dialog) {
        return find<QPushButton>(dialog, "showDetails")->text();
    }

    std::unique_ptr<ConversionFixture> f;
    test::TestDoor door;
    std::unique_ptr<FormContext> form;
    ConversionSheetSetup setup;
};

}  // namespace kavu::test
