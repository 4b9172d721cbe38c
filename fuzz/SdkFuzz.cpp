// Opens a translator session on any bytes, loads every stream, and asks all that can be asked of
// what is there: nothing may crash, stall, or be left behind.
#include "Check.h"
#include "FuzzScratch.h"
#include "core/files/FileIo.h"
#include "sdk/TranslatorSdk.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

namespace {

using namespace kavu;

class OneRandom : public RandomSource {
  public:
    std::optional<std::array<std::uint8_t, 16>> bytes16() override {
        return std::array<std::uint8_t, 16>{next_++};
    }

  private:
    std::uint8_t next_ = 0;
};

void readGroups(TranslatorSdk& sdk) {
    for (const char letter : std::string_view("GHTRMPDBASV")) {
        for (const int number : sdk.groupNumbers(letter)) {
            const auto group = sdk.openGroup(letter, number);
            KAVU_CHECK(group.has_value());
            for (std::size_t i = 0; i < group->size(); ++i) {
                (void)group->value(group->at(i).field);
            }
        }
    }
    for (std::size_t i = 0; i < sdk.conversionCount(); ++i) {
        const auto record = sdk.openConversion(i);
        KAVU_CHECK(record.has_value() && record->size() > 0);
        KAVU_CHECK(sdk.findConversion(sdk.conversionNumber(i)).has_value());
    }
}

void ask(TranslatorSdk& sdk) {
    constexpr std::size_t kMostAsked = 200;
    for (unsigned i = 0; i < sdk.measurementCount(); ++i) {
        const auto& measurement = sdk.measurement(i);
        KAVU_CHECK(!measurement.name.empty());
        KAVU_CHECK(sdk.findMeasurement(measurement.name).has_value());
        const auto locations = std::min(measurement.locations.size(), kMostAsked);
        for (std::size_t k = 0; k < locations; ++k) {
            const auto count = static_cast<int>(measurement.locations[k].fragments.size());
            KAVU_CHECK(count > 0);
            for (int f = 1; f <= count; ++f) {
                const int location = static_cast<int>(k) + 1;
                SdkRange word;
                SdkRange frame;
                KAVU_CHECK(sdk.GetPcmMeasurementIntervals(i, location, f, word, frame) == 0);
                KAVU_CHECK(word.end >= word.start && frame.end >= frame.start);
                std::array<char, 128> mask{};
                KAVU_CHECK(sdk.GetMeasurementBitMask(i, location, f, mask.data(), mask.size()) ==
                           0);
                std::vector<int> bits;
                KAVU_CHECK(sdk.GetMeasurementBitMaskBitLocations(i, location, f, bits) == 0);
                KAVU_CHECK(bits.size() <= 4 * mask.size());
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto folder = fuzz::makeScratch();
    static const SystemClock clock;
    const auto path = folder + "/in.tma";
    KAVU_CHECK(
        writeWholeFile(path, std::string_view(reinterpret_cast<const char*>(data), size)).ok());
    Environment environment;
    environment.variable = [](const std::string& name) {
        return name == "TEMP" ? std::optional<std::string>(folder) : std::nullopt;
    };
    {
        OneRandom random;
        TranslatorSdk sdk(environment, clock, random);
        if (sdk.open(path, nullptr)) {
            readGroups(sdk);
            for (int stream = 1; stream <= sdk.streamCount(); ++stream) {
                if (sdk.ParseTmatsPcmFormatInfo(stream) == 0) {
                    ask(sdk);
                }
            }
        }
    }
    KAVU_CHECK(std::distance(std::filesystem::directory_iterator(folder), {}) == 1);
    return 0;
}
