#include "app/shell/OptionDialogs.h"
#include "app/support/FormStage.h"
#include "app/support/WidgetChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::IsEmpty;

TEST(VersionDialog, OffersAllEditionsAndEnablesTheOutputForTheSecondChoice) {
    VersionOptions options;
    options.inputVersion = 2007;
    VersionDialog dialog(options, 2004, nullptr);
    EXPECT_EQ(dialog.windowTitle(),
              QStringLiteral("TMATS Version Numbers (Current file is 106-04)"));
    EXPECT_THAT(test::checkWindow(dialog), IsEmpty());
    auto* const output = test::find<QComboBox>(dialog, "outputVersion");
    EXPECT_EQ(output->count(), 9);
    EXPECT_FALSE(output->isEnabled());
    test::find<QRadioButton>(dialog, "saveAsSelected")->click();
    EXPECT_TRUE(output->isEnabled());
    output->setCurrentIndex(0);
    const auto chosen = dialog.options();
    EXPECT_EQ(chosen.inputVersion, 2007);
    EXPECT_EQ(chosen.method, 2);
    EXPECT_EQ(chosen.outputVersion, 1996);
}

TEST(VersionDialog, WithoutADocumentTheTitleStandsAlone) {
    const VersionDialog dialog({}, 0, nullptr);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("TMATS Version Numbers"));
}

struct UpdateDialogTest : testing::Test {
    test::FormStage stage;
};

TEST_F(UpdateDialogTest, KeepsWhatWasChosen) {
    UpdateDialog dialog(stage.form, nullptr);
    dialog.show();
    EXPECT_THAT(test::checkWindow(dialog), IsEmpty());
    EXPECT_FALSE(test::find<QLineEdit>(dialog, "UpdPath")->isEnabled());
    test::find<QCheckBox>(dialog, "EnableUpd")->click();
    test::type(dialog, "UpdPath", QStringLiteral("/data/update.txt"));
    test::find<QRadioButton>(dialog, "overwrite")->click();
    test::press(dialog, "ok");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    dialog.store();
    EXPECT_EQ(stage.settings.integer("EnableUpd", 0), 1);
    EXPECT_EQ(stage.settings.text("UpdPath"), "/data/update.txt");
    EXPECT_EQ(stage.settings.integer("UpdAppend", 1), 0);
}

TEST_F(UpdateDialogTest, RefusesToWriteToNoFile) {
    UpdateDialog dialog(stage.form, nullptr);
    dialog.show();
    test::find<QCheckBox>(dialog, "EnableUpd")->click();
    test::press(dialog, "ok");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(stage.ui.hasText("Enter the path of the update file"));
}

TEST_F(UpdateDialogTest, BrowsesForTheFile) {
    UpdateDialog dialog(stage.form, nullptr);
    dialog.show();
    test::find<QCheckBox>(dialog, "EnableUpd")->click();
    stage.ui.files.push_back(FileChoice{"/data/chosen.txt", 1});
    test::press(dialog, "browse");
    EXPECT_EQ(test::find<QLineEdit>(dialog, "UpdPath")->text(), QStringLiteral("/data/chosen.txt"));
}

TEST(SampleRateDialog, OffersNoneToFiveDigits) {
    SampleRateDialog dialog(false, 9, nullptr);
    EXPECT_THAT(test::checkWindow(dialog), IsEmpty());
    auto* const digits = test::find<QComboBox>(dialog, "SRPrec");
    EXPECT_EQ(digits->count(), 6);
    EXPECT_EQ(dialog.digits(), 5) << "a setting out of range is the nearest there is";
    EXPECT_FALSE(digits->isEnabled());
    test::find<QCheckBox>(dialog, "ChkSR")->click();
    EXPECT_TRUE(digits->isEnabled());
    EXPECT_TRUE(dialog.calculate());
}

}  // namespace
}  // namespace kavu
