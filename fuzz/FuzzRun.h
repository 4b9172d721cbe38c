// An application in a folder of its own, for the targets that need all of it.
#pragma once

#include "Check.h"
#include "FuzzScratch.h"
#include "application/Application.h"
#include "core/files/FileIo.h"
#include "support/RecordingInterface.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace kavu::fuzz {

class CountingRandom : public RandomSource {
  public:
    std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        return std::array<std::uint8_t, 16>{next_++};
    }

  private:
    std::uint8_t next_ = 0;
};

struct Run {
    explicit Run(const std::string& folder)
        : application(environment(folder), clock, random, folder + "/kavu.ini") {
        KAVU_CHECK(application.startUp(&ui));
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() { application.shutDown(nullptr); }

    static Environment environment(const std::string& folder) {
        Environment environment;
        environment.variable = [folder](const std::string& name) {
            return name == "TEMP" || name == "HOME" ? std::optional(folder) : std::nullopt;
        };
        environment.userName = "fuzz";
        return environment;
    }

    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random;
    test::RecordingInterface ui;
    Application application;
};

inline std::string read(const std::string& path) {
    std::string bytes;
    KAVU_CHECK(readWholeFile(path, bytes).ok());
    return bytes;
}

}  // namespace kavu::fuzz
