// A session on a TMATS file in a folder that is deleted after the test.
#pragma once

#include "sdk/TranslatorSdk.h"
#include "support/TestContext.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace kavu::test {

class SessionStage {
  public:
    /// Writes the file and opens it.
    bool open(std::string_view text) {
        const auto path = folder / "in.tma";
        writeFile(path, text);
        return sdk.open(path, &ui);
    }
    /// The names of the files of the session.
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
            if (const auto name = entry.path().filename().string();
                name.find("KavuTSDK_") != std::string::npos) {
                names.push_back(name);
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    [[nodiscard]] std::vector<std::string> linkNames() const {
        std::vector<std::string> names;
        for (const auto& link : sdk.links()) {
            names.push_back(link.name);
        }
        return names;
    }

    TempFolder folder;
    RecordingInterface ui;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random;
    TranslatorSdk sdk{testEnvironment({{"TEMP", folder.path()}, {"HOME", folder.path()}}), clock,
                      random};
};

}  // namespace kavu::test
