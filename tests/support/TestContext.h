// Everything that a pass over a document needs, in a folder that is deleted after the
// test: a fixed date, fixed random numbers, an empty settings file, an active store.
#pragma once

#include "core/document/DocumentParts.h"
#include "core/files/FileIo.h"
#include "support/RecordingInterface.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>

namespace kavu::test {

class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kavu-test-XXXXXX");
        path_ = mkdtemp(pattern.data());
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string operator/(const std::string& name) const {
        return path_ + "/" + name;
    }

  private:
    std::string path_;
};

/// Counts up from 0: the first GUID differs from the second, and each is the same in
/// every run.
class CountingRandom : public RandomSource {
  public:
    [[nodiscard]] std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        std::array<std::uint8_t, 16> bytes{};
        bytes[15] = next_++;
        return bytes;
    }

  private:
    std::uint8_t next_ = 0;
};

inline std::string readFile(const std::string& path) {
    std::string bytes;
    const auto status = readWholeFile(path, bytes);
    EXPECT_TRUE(status.ok()) << path << ": " << status.reason();
    return bytes;
}

inline void writeFile(const std::string& path, std::string_view bytes) {
    const auto status = writeWholeFile(path, bytes);
    ASSERT_TRUE(status.ok()) << path << ": " << status.reason();
}

/// An environment whose variables are those of the map.
inline Environment testEnvironment(const std::map<std::string, std::string>& variables,
                                   const std::string& programFolder = "/nowhere") {
    Environment environment;
    environment.variable = [variables](const std::string& name) -> std::optional<std::string> {
        const auto it = variables.find(name);
        return it == variables.end() ? std::nullopt : std::optional(it->second);
    };
    environment.programFolder = programFolder;
    environment.userName = "tester";
    return environment;
}

/// What the parts of a document stand on.
struct TestGround {
    TempFolder folder;
    RecordingInterface ui;
    FixedClock clock{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random;
};

class TestContext : public TestGround, public DocumentParts {
  public:
    explicit TestContext(int edition = 2011)
        : DocumentParts(testEnvironment({{"TEMP", folder.path()}, {"HOME", folder.path()}}), clock,
                        random, folder / "kavu.ini") {
        EXPECT_TRUE(store.activate(&ui, kApplicationName, random));
        document.version = edition;
    }
    ~TestContext() { store.deactivate(nullptr); }

    void write(std::string_view workingName, std::string_view bytes) {
        writeFile(store.pathOf(workingName), bytes);
    }
    [[nodiscard]] std::string read(std::string_view workingName) {
        return readFile(store.pathOf(workingName));
    }
    [[nodiscard]] bool has(std::string_view workingName) {
        return fileExists(store.pathOf(workingName));
    }
};

}  // namespace kavu::test
