// An application in a folder of its own.
#pragma once

#include "application/Application.h"
#include "core/document/DocumentFiles.h"
#include "support/TestContext.h"

namespace kavu::test {

struct TestApplication {
    TestApplication()
        : application(testEnvironment({{"TEMP", temp()}, {"HOME", folder.path()}}), clock, random,
                      folder / "kavu.ini") {
        EXPECT_TRUE(application.startUp(&ui));
        application.context().files.demandScopes(true);
    }
    ~TestApplication() { application.shutDown(nullptr); }
    std::string temp() {
        EXPECT_TRUE(makeFolder(folder / "temp").ok());
        return folder / "temp";
    }

    TempFolder folder;
    RecordingInterface ui;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random;
    Application application;
};

}  // namespace kavu::test
