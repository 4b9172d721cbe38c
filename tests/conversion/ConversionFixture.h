// A document whose C group is loaded from and saved to a text.
#pragma once

#include "conversion/ConversionLoader.h"
#include "conversion/ConversionStore.h"
#include "conversion/ConversionWriter.h"
#include "core/document/KeyValueStore.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

#include <string>
#include <vector>

namespace kavu::test {

class ConversionFixture : public TestContext {
  public:
    explicit ConversionFixture(int edition = 2011)
        : TestContext(edition), names(store), conversions(context) {}

    /// Loads commands; the edition is the document's.
    bool load(std::string_view commands) {
        write(working::kData1, commands);
        return loadConversionGroup(context, names, conversions, &ui, document.version);
    }
    bool loadSilently(std::string_view commands) {
        write(working::kData1, commands);
        return loadConversionGroup(context, names, conversions, nullptr, document.version);
    }
    /// The saved C group, or "<failed>".
    std::string save() {
        const auto path = folder / "saved.tma";
        FileWriter output;
        EXPECT_TRUE(output.open(path, WriteMode::Truncate).ok());
        const bool good = saveConversionGroup(context, conversions, &ui, output);
        EXPECT_TRUE(output.close().ok());
        return good ? readFile(path) : "<failed>";
    }
    /// Loads, saves, and gives the saved group.
    std::string roundTrip(std::string_view commands) {
        return load(commands) ? save() : "<not loaded>";
    }
    [[nodiscard]] std::vector<std::int64_t> chunks() {
        EXPECT_TRUE(conversions.writeOut().ok());
        ConversionFiles listed;
        EXPECT_TRUE(listConversionFiles(store, listed).ok());
        std::vector<std::int64_t> numbers;
        for (const auto& chunk : listed.chunks) {
            numbers.push_back(chunk.number);
        }
        return numbers;
    }
    [[nodiscard]] std::string chunkText(std::int64_t number) {
        EXPECT_TRUE(conversions.writeOut().ok());
        return readFile(chunkPath(store, number));
    }
    [[nodiscard]] std::string value(const std::string& name, std::string_view key) {
        const auto place = conversions.locateDefinition(name);
        return place.found ? conversions.chunk(place.chunk)->value(place.section, key, "")
                           : "<no record>";
    }
    [[nodiscard]] std::vector<std::string> savedNames() {
        std::vector<std::string> found;
        const auto text = save();
        for (auto at = text.find("\\DCN:"); at != std::string::npos;
             at = text.find("\\DCN:", at + 1)) {
            found.push_back(text.substr(at + 5, text.find(';', at) - at - 5));
        }
        return found;
    }

    KeyValueStore names;
    ConversionStore conversions;
};

using Numbers = std::vector<std::int64_t>;
using Names = std::vector<std::string>;

/// Commands one to a line, as a load takes them.
inline std::string lines(std::string_view commands) {
    return replaceAll(commands, ";", ";\n");
}

}  // namespace kavu::test
