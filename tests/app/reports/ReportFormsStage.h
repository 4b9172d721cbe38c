// The windows of reports over the sample document, with its first stream in memory.
#pragma once

#include "app/framework/FormContext.h"
#include "app/reports/CalibrationDialog.h"
#include "app/reports/ReportWindow.h"
#include "app/support/TestDoor.h"
#include "app/support/WidgetChecks.h"
#include "application/DocumentService.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "reports/ReportDesk.h"
#include "support/TestApplication.h"

#include <gtest/gtest.h>

namespace kavu::test {

/// The sample, whose pair sets define curves.
inline std::string sampleWithCurves() {
    return replaceAll(readFile(KAVU_SOURCE_DIR "/samples/flight-test.tma"), "\\PS1:N;", "\\PS1:Y;");
}

class ReportFormsStage : public testing::Test {
  protected:
    ReportFormsStage() {
        auto& application = t.application;
        EXPECT_TRUE(
            application.documents().openNamed(&t.ui, made("flight-test.tma", sampleWithCurves())));
        std::vector<std::string> links;
        EXPECT_TRUE(gatherDataLinks(application.context(), nullptr, links));
        EXPECT_TRUE(
            loadPcmFormat(application.pcmFormat(), nullptr, application.pcmSteps(), links.front()));
        t.ui.boxes.clear();
        t.ui.progressTexts.clear();
    }
    [[nodiscard]] ReportWindowSetup setup(const BusDefinition* bus = nullptr,
                                          bool checksFormat = false) {
        auto& application = t.application;
        return {form,
                application.context(),
                application.conversions(),
                application.reportDesk(),
                bus == nullptr ? &application.pcmFormat() : nullptr,
                bus,
                checksFormat};
    }
    [[nodiscard]] CalibrationSetup calibrations() {
        auto& application = t.application;
        return {form, application.context(), application.conversions(), application.reportDesk()};
    }
    [[nodiscard]] std::string key(std::string_view name) {
        return t.application.context().settings.profileText("Reports", name);
    }
    void set(std::string_view name, std::string_view value) {
        EXPECT_TRUE(t.application.reportDesk().set(nullptr, name, value));
    }
    [[nodiscard]] std::string made(const char* name, std::string_view text) {
        auto path = t.folder / name;
        writeFile(path, text);
        return path;
    }

    TestApplication t;
    TestDoor door;
    FormContext form = formContext(t.ui, door, t.application.context());
};

}  // namespace kavu::test
