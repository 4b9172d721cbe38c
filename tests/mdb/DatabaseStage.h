// A database file in a folder of its own, opened in one of its forms.
#pragma once

#include "core/text/Text.h"
#include "mdb/storage/MeasurementDatabase.h"
#include "support/TestContext.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kavu::test {

/// The fields with semicolons between, as a line of so many columns.
inline std::string mdbLine(std::vector<std::string> fields, std::size_t columns = 36) {
    fields.resize(columns);
    std::string line;
    for (const auto& field : fields) {
        line += (line.empty() && &field == &fields.front() ? "" : ";") + field;
    }
    return line + "\r\n";
}

class DatabaseStage : public TestContext {
  public:
    explicit DatabaseStage(MdbVersion version, int edition = 2011)
        : TestContext(edition),
          path(folder / "test.mdb"),
          database(messages, path, version, SampleRateOptions{}) {}

    MeasurementDatabase::Opening openWith(std::string_view bytes) {
        writeFile(path, bytes);
        return database.open();
    }
    [[nodiscard]] std::string bytes() const { return readFile(path); }
    [[nodiscard]] std::vector<std::string> names() {
        std::vector<std::string> found;
        for (auto record = database.first(); record; record = database.next()) {
            found.push_back(record->name());
        }
        return found;
    }
    static MdbRecord record(const std::string& name, const std::string& description = {}) {
        MdbRecord made(name);
        made[mdbfield::kDescription] = description;
        return made;
    }

    std::string path;
    MeasurementDatabase database;
};

}  // namespace kavu::test
