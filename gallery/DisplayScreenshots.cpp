// The display of the sample's first stream, for the pictures.
#include "app/framework/Look.h"
#include "app/mdb/StreamDatabase.h"
#include "app/pcm/FrameKey.h"
#include "app/pcm/MajorFrameDisplay.h"
#include "app/pcm/MajorFrameNewCell.h"
#include "app/pcm/MajorFrameWindow.h"
#include "application/Application.h"
#include "core/WorkingStore.h"
#include "core/talk/ProfileSettings.h"
#include "gallery/Makers.h"
#include "gallery/SampleDatabase.h"
#include "gallery/Screenshots.h"
#include "groups/DataSources.h"
#include "mdb/storage/MeasurementDatabase.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"

#include <functional>
#include <memory>

#include <QAction>

namespace kavu {

namespace {

using Arrange = std::function<void(MajorFrameWindow& window)>;

/// Steps of a picture do nothing; their entries look as they do in the program.
void fillSteps(PcmFormSteps& steps) {
    const auto nothing = [](QWidget&) { return false; };
    steps.generateDataWords = nothing;
    steps.editSectionComment = nothing;
    steps.editFilterList = nothing;
    const auto noWords = [](QWidget&, const SelectedWords&) { return false; };
    steps.insertFwps = noWords;
    steps.deleteFwps = noWords;
    steps.moveFwps = noWords;
    steps.chooseDefinitionMode = nothing;
}

std::unique_ptr<QWidget> makeDisplay(
    ScreenshotStage& stage, const Arrange& arrange,
    const std::function<void(PcmFormSteps&)>& addSteps = [](PcmFormSteps&) {}) {
    if (stage.application == nullptr) {
        return nullptr;
    }
    auto& format = stage.application->pcmFormat();
    std::vector<std::string> links;
    if (!gatherDataLinks(stage.application->context(), nullptr, links) || links.empty() ||
        !loadPcmFormat(format, nullptr, stage.application->pcmSteps(), links.front())) {
        return nullptr;
    }
    const auto steps = std::make_shared<PcmFormSteps>();
    fillSteps(*steps);
    addSteps(*steps);
    steps->conversions = &stage.application->conversions();
    auto window = std::make_unique<MajorFrameWindow>(
        stage.form, format, *steps,
        [](const PcmFormat& stream, QWidget* parent) {
            return std::make_unique<FrameGridAreas>(stream, parent);
        },
        nullptr);
    QObject::connect(window.get(), &QObject::destroyed, [steps] {});
    window->resize(look::charactersWide(*window, 190), look::unit(*window) * 88);
    arrange(*window);
    return window;
}

/// The display with the pane of a database of its own, which no other picture has.
std::unique_ptr<QWidget> makeDisplayWithDatabase(ScreenshotStage& stage) {
    if (stage.document == nullptr) {
        return nullptr;
    }
    auto& settings = stage.form.settings;
    const auto path = settings.get(setting::kDatabasePath);
    const auto version = settings.get(setting::kDatabaseVersion);
    MeasurementDatabase database(stage.document->messages,
                                 stage.document->store.pathOf("GalleryPane.mdb"), MdbVersion::Xml,
                                 SampleRateOptions{});
    fillSampleDatabase(database);
    settings.set(setting::kDatabaseEnabled, true);
    settings.set(setting::kDatabasePath, database.path());
    settings.set(setting::kDatabaseVersion, static_cast<int>(MdbVersion::Xml));
    auto window = makeDisplay(
        stage,
        [](MajorFrameWindow& made) {
            made.areas().setCellWidth(75);
            made.areas().grid().select({3, 2});
            made.findChild<QAction*>(QStringLiteral("viewDatabase"))->trigger();
        },
        [&](PcmFormSteps& steps) {
            installDatabaseEntries(steps, stage.form, *stage.application);
            steps.databaseIsOn = {};  // the menu stays as it is
        });
    settings.set(setting::kDatabaseEnabled, false);
    settings.set(setting::kDatabasePath, path);
    settings.set(setting::kDatabaseVersion, version);
    return window;
}

}  // namespace

void addDisplayScreenshots(ScreenshotList& list) {
    list.add("MajorFrameDisplay", [](ScreenshotStage& stage) {
        return makeDisplay(stage, [](MajorFrameWindow& window) {
            window.areas().setCellWidth(75);
            window.areas().grid().select({3, 2});
        });
    });
    list.add("MajorFrameDisplayAllCells", [](ScreenshotStage& stage) {
        return makeDisplay(stage, [](MajorFrameWindow& window) {
            // Not through its menu entry, which keeps the choice for the next window.
            window.areas().display().showAllCells = true;
            window.findChild<FrameKey*>()->refresh();
            window.areas().setCellWidth(110);
            window.areas().grid().select({1, 1});
            window.areas().grid().select({4, 3}, true);
        });
    });
    list.add("MajorFrameDisplaySmall", [](ScreenshotStage& stage) {
        return makeDisplay(stage, [](MajorFrameWindow& window) {
            window.areas().setCellWidth(14);
            window.areas().grid().select({5, 1});
        });
    });
    list.add("MajorFrameDisplayCalm", [](ScreenshotStage& stage) {
        return makeDisplay(stage, [](MajorFrameWindow& window) {
            auto& display = window.areas().display();
            display.colours = FrameColours::Calm;
            display.showAllCells = true;
            display.highlightEu = true;
            window.findChild<FrameKey*>()->refresh();
            window.areas().setCellWidth(75);
            window.areas().grid().select({3, 2});
            window.areas().grid().select({5, 4}, true);
        });
    });
    list.add("MajorFrameDisplayDatabase", makeDisplayWithDatabase);
    list.add("create_new_cell",
             [](ScreenshotStage&) { return std::make_unique<NewCellDialog>(12, 3, nullptr); });
}

}  // namespace kavu
