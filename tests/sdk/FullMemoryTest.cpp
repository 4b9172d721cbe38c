// A session whose measurements find no memory. The program's own allocation is replaced: it refuses
// what a test says.
#include "sdk/SdkMeasurement.h"
#include "sdk/SessionStage.h"

#include <cstdlib>
#include <new>

#include <gmock/gmock.h>

namespace {

std::size_t refusedSize = 0;  // 0 refuses nothing

void* allocate(std::size_t size) {
    void* const room = size == refusedSize && size != 0 ? nullptr : std::malloc(size);
    if (room == nullptr) {
        throw std::bad_alloc();
    }
    return room;
}

/// Refuses memory of exactly this size while it lives.
class Refusal {
  public:
    explicit Refusal(std::size_t size) { refusedSize = size; }
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;
    ~Refusal() { refusedSize = 0; }
};

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}
void* operator new[](std::size_t size) {
    return allocate(size);
}
// A sorting takes its room so. Whatever is freed below must come from here.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return size == refusedSize && size != 0 ? nullptr : std::malloc(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return size == refusedSize && size != 0 ? nullptr : std::malloc(size);
}
void operator delete(void* room) noexcept {
    std::free(room);
}
void operator delete[](void* room) noexcept {
    std::free(room);
}
void operator delete(void* room, std::size_t) noexcept {
    std::free(room);
}
void operator delete[](void* room, std::size_t) noexcept {
    std::free(room);
}

namespace kavu::test {
namespace {

/// "A" in one word, and "B" in parts so many that the list of them grows to a size of its own.
constexpr int kParts = 9;
constexpr std::size_t kGrown = 16;

std::string document() {
    std::string text =
        "G\\106:11;M-1\\BB\\DLN:Link;P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:8;P-1\\MF\\N:1;"
        "P-1\\MF1:101;D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MN\\N-1:2;D-1\\MN-1-1:A;"
        "D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\MNF\\N-1-1-1:1;D-1\\WP-1-1-1-1:70;"
        "D-1\\WI-1-1-1-1:0;D-1\\FP-1-1-1-1:1;D-1\\FI-1-1-1-1:1;D-1\\MN-1-2:B;"
        "D-1\\LT-1-2:WDFR;D-1\\MML\\N-1-2:1;D-1\\MNF\\N-1-2-1:" +
        std::to_string(kParts) + ";";
    for (int k = 1; k <= kParts; ++k) {
        const auto n = std::to_string(k);
        text += "D-1\\WP-1-2-1-" + n + ":" + n + ";D-1\\WI-1-2-1-" + n + ":0;D-1\\FP-1-2-1-" + n +
                ":1;D-1\\FI-1-2-1-" + n + ":1;D-1\\WFM-1-2-1-" + n + ":10000000;D-1\\WFP-1-2-1-" +
                n + ":" + n + ";";
    }
    return text;
}

TEST(FullMemoryTest, LeavesAMeasurementWithoutPlacesAndSaysWhereItIs) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(document()));
    {
        const Refusal refusal(kGrown * sizeof(SdkFragment));
        ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    }
    ASSERT_EQ(stage.sdk.measurementCount(), 2U);
    EXPECT_EQ(stage.sdk.measurement(0).locations.size(), 1U);
    EXPECT_EQ(stage.sdk.measurement(1).name, "B");
    EXPECT_TRUE(stage.sdk.measurement(1).locations.empty());
    EXPECT_THAT(
        stage.sdk.errors(),
        testing::ElementsAre("ERROR: Unable to allocate memory for measurement at FWP:1 FN:1.\n"));
}

TEST(FullMemoryTest, HasThePlacesOfTheSameMeasurementWithMemory) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(document()));
    ASSERT_EQ(stage.sdk.ParseTmatsPcmFormatInfo(1), 0);
    ASSERT_EQ(stage.sdk.measurement(1).locations.size(), 1U);
    EXPECT_EQ(stage.sdk.measurement(1).locations[0].fragments.size(),
              static_cast<std::size_t>(kParts));
    EXPECT_THAT(stage.sdk.errors(), testing::IsEmpty());
}

}  // namespace
}  // namespace kavu::test
