// A stream with measurements and their conversions, and a database next to it.
#pragma once

#include "conversion/ConversionLoader.h"
#include "conversion/ConversionStore.h"
#include "conversion/ConversionWriter.h"
#include "core/document/KeyValueStore.h"
#include "mdb/DatabaseStage.h"
#include "mdb/operations/DatabaseWork.h"
#include "pcm/StreamFixture.h"

#include <string>

namespace kavu::test {

class StreamStage : public StreamFixture {
  public:
    explicit StreamStage(MdbVersion version = MdbVersion::WithBus)
        : path(folder / "test.mdb"), database(messages, path, version, SampleRateOptions{}) {
        EXPECT_NE(database.open(), MeasurementDatabase::Opening::Failed);
    }
    bool load(std::string_view commands) {
        TestContext::write(working::kData1, commands);
        return loadConversionGroup(context, names, conversions, &ui, document.version);
    }
    void fill(const std::vector<MdbRecord>& records) {
        MeasurementDatabase::Batch batch(database, &ui);
        for (const auto& record : records) {
            EXPECT_TRUE(database.add(&ui, record));
        }
        EXPECT_TRUE(batch.commit(&ui));
    }
    [[nodiscard]] std::string value(const std::string& name, std::string_view key) {
        const auto at = conversions.locateDefinition(name);
        return at.found ? conversions.chunk(at.chunk)->value(at.section, key, "") : "<no record>";
    }
    [[nodiscard]] const Measurement& measurement(int fwp, const std::string& name, int fn = 1) {
        return format.cells().measurement(format.findInCell(fwp, fn, name));
    }
    static MdbRecord record(const std::string& name,
                            const std::vector<std::pair<std::size_t, std::string>>& fields = {}) {
        MdbRecord made(name);
        for (const auto& [index, text] : fields) {
            made[index] = text;
        }
        return made;
    }

    KeyValueStore names{store};
    ConversionStore conversions{context};
    std::string path;
    MeasurementDatabase database;
    DatabaseWork work{context, conversions, format, database};
};

}  // namespace kavu::test
