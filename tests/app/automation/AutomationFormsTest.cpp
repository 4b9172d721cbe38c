#include "app/automation/AutomationForms.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "application/Application.h"
#include "application/DocumentService.h"
#include "core/files/FileIo.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "support/TestContext.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace kavu {
namespace {

using test::press;

/// The flight test sample with its first stream in memory, and the windows of calls.
class AutomationFormsTest : public testing::Test {
  protected:
    AutomationFormsTest() {
        std::filesystem::copy_file(std::string(KAVU_SOURCE_DIR) + "/samples/flight-test.tma", path);
        EXPECT_TRUE(application.startUp(nullptr));
        EXPECT_TRUE(application.documents().openNamed(nullptr, path));
        EXPECT_TRUE(loadPcmFormat(format(), nullptr, application.pcmSteps(), "PCM Stream 1"));
        forms = std::make_unique<AutomationForms>(application, door);
    }
    ~AutomationFormsTest() override {
        format().closeFormat();
        application.documents().discard(nullptr);
        application.shutDown(nullptr);
    }
    PcmFormat& format() { return application.pcmFormat(); }
    void answer(const char* button) {
        shown.next([button](QDialog& dialog) { press(dialog, button); });
    }
    std::string temp() {
        EXPECT_TRUE(makeFolder(folder / "temp").ok());
        return folder / "temp";
    }

    test::TempFolder folder;
    std::string path = folder / "flight.tma";
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    test::CountingRandom random;
    Application application{test::testEnvironment({{"TEMP", temp()}, {"HOME", folder.path()}}),
                            clock, random, folder / "kavu.ini"};
    test::TestDoor shown;
    AutomationDoor door{&shown};
    std::unique_ptr<AutomationForms> forms;
};

TEST_F(AutomationFormsTest, OkOfASheetWithoutAChangeIsNoCancel) {
    answer("ok");
    EXPECT_TRUE(forms->editGeneral(0));
    answer("cancel");
    EXPECT_FALSE(forms->editGeneral(0));
    EXPECT_EQ(shown.names, (std::vector<std::string>{"GeneralInfo", "GeneralInfo"}));
}

TEST_F(AutomationFormsTest, SheetsOfDataSourcesAskForTheSource) {
    answer("close");
    EXPECT_FALSE(forms->editRf(0));
    answer("edit");
    answer("ok");
    EXPECT_TRUE(forms->editRf(0));
    answer("edit");
    answer("cancel");
    EXPECT_FALSE(forms->editTape(0));
    answer("edit");
    answer("ok");
    EXPECT_TRUE(forms->editMultiplex(0));
}

TEST_F(AutomationFormsTest, CancelOfTheStreamsSheetTakesBackWhatWasEditedThere) {
    const auto before = format().bitRate;
    shown.next([this](QDialog& sheet) {
        format().setBitRate("777");
        format().changed = true;
        press(sheet, "cancel");
    });
    EXPECT_FALSE(forms->editFormat(0));
    ASSERT_TRUE(format().loaded());
    EXPECT_EQ(format().bitRate, before);
    EXPECT_FALSE(format().changed);
}

TEST_F(AutomationFormsTest, OkOfTheStreamsSheetSavesTheStreamWhichStaysLoaded) {
    shown.next([](QDialog& sheet) { press(sheet, "ok"); });
    EXPECT_TRUE(forms->editFormat(0));
    EXPECT_TRUE(format().loaded());
}

TEST_F(AutomationFormsTest, TheDisplayIsClosedWithoutACancel) {
    answer("close");
    EXPECT_TRUE(forms->showDisplay(0));
    EXPECT_EQ(shown.names.back(), "MajorFrameDisplay");
    EXPECT_TRUE(format().loaded());
    EXPECT_FALSE(format().changed);
}

TEST_F(AutomationFormsTest, FormsOfCountersSubframesAndMeasurementsOpenOnWhatTheyAreCalledFor) {
    ASSERT_FALSE(format().idCounters.empty());
    answer("cancel");
    EXPECT_FALSE(forms->editCounter(0, 0));
    EXPECT_EQ(shown.names.back(), "Pre_106_11_IDCounterDialog");
    answer("cancel");
    EXPECT_FALSE(forms->editSubframe(0, 0, 0));
    EXPECT_EQ(shown.names.back(), "SubframeDialog");
    const auto place = Occurrences(format(), "ENG1-N1").next();
    ASSERT_TRUE(place);
    answer("cancel");
    EXPECT_FALSE(forms->editDataWord(0, place->fwp, place->fn, "ENG1-N1"));
    EXPECT_EQ(shown.names.back(), "Pre_106_11_EditDataWord");
    answer("ok");
    EXPECT_TRUE(forms->editDataWord(0, place->fwp, place->fn, ""));
    EXPECT_FALSE(forms->editSubframe(0, 0, 99));
}

TEST_F(AutomationFormsTest, TheSheetOfAConversionOpensOnItsMeasurement) {
    answer("cancel");
    EXPECT_FALSE(forms->editConversion(0, "ENG1-N1"));
    answer("ok");
    EXPECT_TRUE(forms->editConversion(0, "ENG1-N1"));
}

TEST_F(AutomationFormsTest, AWindowIdThatNoWindowHasIsNoParent) {
    for (const std::int64_t id :
         {std::int64_t{1}, std::int64_t{1} << 31, std::int64_t{1} << 40, std::int64_t{-5}}) {
        answer("cancel");
        EXPECT_FALSE(forms->editGeneral(id));
        EXPECT_NE(forms->parentOf(id), nullptr);
    }
}

}  // namespace
}  // namespace kavu
