// Every function of the C interface, with what it is for and with what it must refuse, and the
// owners of the C++ header.
#include "sdk/kavu_sdk.hpp"
#include "support/TestContext.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StrEq;

constexpr std::size_t kHuge = std::numeric_limits<std::size_t>::max();
constexpr std::size_t kWraps = std::size_t{1} << 32U;  // 0 for who counts with 32 bits

constexpr std::string_view kSessionFile =
    "G\\106:09;G\\DSI\\N:1;G\\DSI-1:RF 1;G\\DST-1:RF;M-1\\ID:RF 1;M-1\\BB\\DLN:Link;"
    "M-1\\SI\\N:1;M-1\\SI\\DLN-1:Alone;"
    "P-1\\DLN:Link;P-1\\TF:ONE;P-1\\F1:8;P-1\\MF\\N:2;P-1\\MF1:5;P-1\\MF4:16;"
    "P-1\\MF5:1110101110010000;D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MN\\N-1:2;"
    "D-1\\MN-1-1:Plain;D-1\\LT-1-1:WDFR;D-1\\MML\\N-1-1:1;D-1\\WP-1-1-1-1:1;"
    "D-1\\FP-1-1-1-1:1;D-1\\FI-1-1-1-1:1;D-1\\WFM-1-1-1-1:FW;"
    "D-1\\MN-1-2:Masked;D-1\\LT-1-2:WDFR;D-1\\MML\\N-1-2:1;D-1\\WP-1-2-1-1:2;"
    "D-1\\FP-1-2-1-1:1;D-1\\FI-1-2-1-1:1;D-1\\WFM-1-2-1-1:00111100;"
    "C-7\\DCN:Plain;C-7\\DCT:COE;C-7\\CO\\N:1;C-7\\CO-1:2;C-8\\DCN:Masked;C-8\\DCT:NON;";

struct GroupCloser {
    void operator()(kavu_sdk_group* group) const { kavu_sdk_close_group(group); }
};
using OwnedGroup = std::unique_ptr<kavu_sdk_group, GroupCloser>;

class KavuSdkTest : public testing::Test {
  public:
    KavuSdkTest() {
        ::setenv("TEMP", folder_.path().c_str(), 1);
        writeFile(path_, kSessionFile);
        sdk_ = kavu_sdk_new();
        EXPECT_NE(sdk_, nullptr);
        EXPECT_EQ(kavu_sdk_open(sdk_, path_.c_str()), 0);
    }
    ~KavuSdkTest() override {
        kavu_sdk_free(sdk_);
        ::unsetenv("TEMP");
    }
    [[nodiscard]] std::string lastError() const {
        const auto count = kavu_sdk_error_count(sdk_);
        return count == 0 ? std::string() : kavu_sdk_error(sdk_, count - 1);
    }

  protected:
    TempFolder folder_;
    std::string path_ = folder_ / "in.tma";
    kavu_sdk* sdk_ = nullptr;
};

TEST_F(KavuSdkTest, StatesItsInterface) {
    EXPECT_EQ(kavu_sdk_interface(), KAVU_SDK_INTERFACE);
}

TEST_F(KavuSdkTest, OpensAndClosesAndSaysWhyNot) {
    EXPECT_EQ(kavu_sdk_version(sdk_), 2009);
    EXPECT_EQ(kavu_sdk_error_count(sdk_), 0U);
    EXPECT_EQ(kavu_sdk_open(sdk_, path_.c_str()), -1);
    EXPECT_EQ(lastError(), "ERROR: SDK already active.\n\n");
    EXPECT_EQ(kavu_sdk_stream_count(sdk_), 2) << "the session goes on";
    kavu_sdk_close(sdk_);
    kavu_sdk_close(sdk_);
    EXPECT_EQ(kavu_sdk_stream_count(sdk_), 0);
    EXPECT_EQ(kavu_sdk_open(sdk_, "/none"), -1);
    EXPECT_EQ(lastError(), "Unable to open '/none'. Please check TMATS pathname.\n\n");
    EXPECT_EQ(kavu_sdk_open(sdk_, nullptr), -1);
    EXPECT_EQ(kavu_sdk_error(sdk_, kHuge), nullptr);
}

TEST_F(KavuSdkTest, ListsSourcesAndStreams) {
    ASSERT_EQ(kavu_sdk_source_count(sdk_), 1U);
    EXPECT_THAT(kavu_sdk_source_name(sdk_, 0), StrEq("RF 1"));
    EXPECT_THAT(kavu_sdk_source_type(sdk_, 0), StrEq("RF"));
    EXPECT_EQ(kavu_sdk_source_name(sdk_, 1), nullptr);
    EXPECT_EQ(kavu_sdk_source_type(sdk_, kHuge), nullptr);
    ASSERT_EQ(kavu_sdk_stream_count(sdk_), 2);
    kavu_sdk_stream stream{};
    ASSERT_EQ(kavu_sdk_get_stream(sdk_, 1, &stream), 0);
    EXPECT_THAT(stream.name, StrEq("Link"));
    EXPECT_THAT(stream.type, StrEq("ONE"));
    EXPECT_EQ(stream.named, 1);
    EXPECT_THAT((std::array{stream.p, stream.d, stream.b, stream.a, stream.s}),
                ElementsAre(1, 1, 0, 0, 0));
    for (const int number : {-1, 0, 3}) {
        EXPECT_EQ(kavu_sdk_get_stream(sdk_, number, &stream), -1);
    }
    EXPECT_EQ(kavu_sdk_get_stream(sdk_, 1, nullptr), -1);
    EXPECT_EQ(kavu_sdk_find_stream(sdk_, "Alone"), 2);
    EXPECT_EQ(kavu_sdk_find_stream(sdk_, "alone"), -1);
    EXPECT_EQ(kavu_sdk_find_stream(sdk_, nullptr), -1);
}

TEST_F(KavuSdkTest, LoadsAStreamWithItsFrame) {
    EXPECT_EQ(kavu_sdk_words_per_frame(sdk_), 0);
    EXPECT_EQ(kavu_sdk_frame_count(sdk_), 0);
    EXPECT_EQ(kavu_sdk_word_length(sdk_, 0), 0);
    ASSERT_EQ(kavu_sdk_load_stream(sdk_, 1), 0);
    EXPECT_EQ(kavu_sdk_words_per_frame(sdk_), 5);
    EXPECT_EQ(kavu_sdk_frame_count(sdk_), 2);
    EXPECT_EQ(kavu_sdk_word_length(sdk_, 0), 16);
    EXPECT_EQ(kavu_sdk_word_length(sdk_, 4), 8);
    EXPECT_EQ(kavu_sdk_word_length(sdk_, 5), 0);
    EXPECT_EQ(kavu_sdk_word_length(sdk_, -1), 0);
    EXPECT_EQ(kavu_sdk_load_stream(sdk_, 3), -1);
    EXPECT_THAT(lastError(), HasSubstr("Unable to process stream #3"));
    EXPECT_EQ(kavu_sdk_load_stream(sdk_, 2), -1);
    EXPECT_EQ(kavu_sdk_measurement_count(sdk_), 0U) << "none is loaded";
}

TEST_F(KavuSdkTest, GivesMeasurements) {
    kavu_sdk_measurement measurement{};
    EXPECT_EQ(kavu_sdk_get_measurement(sdk_, 0, &measurement), -1) << "no stream is loaded";
    ASSERT_EQ(kavu_sdk_load_stream(sdk_, 1), 0);
    ASSERT_EQ(kavu_sdk_measurement_count(sdk_), 2U);
    ASSERT_EQ(kavu_sdk_get_measurement(sdk_, 1, &measurement), 0);
    EXPECT_THAT(measurement.name, StrEq("Masked"));
    EXPECT_THAT(measurement.location_type, StrEq("WDFR"));
    EXPECT_THAT((std::array{measurement.word_length, measurement.locations, measurement.bus,
                            measurement.message}),
                ElementsAre(8, 1, 0, 0));
    for (const auto index : {std::size_t{2}, kWraps, kHuge}) {
        EXPECT_EQ(kavu_sdk_get_measurement(sdk_, index, &measurement), -1) << index;
    }
    EXPECT_EQ(kavu_sdk_get_measurement(sdk_, 0, nullptr), -1);
    EXPECT_EQ(kavu_sdk_find_measurement(sdk_, "Masked"), 1);
    EXPECT_EQ(kavu_sdk_find_measurement(sdk_, "None"), -1);
    EXPECT_EQ(kavu_sdk_find_measurement(sdk_, nullptr), -1);
}

TEST_F(KavuSdkTest, GivesFragmentsAndMasks) {
    ASSERT_EQ(kavu_sdk_load_stream(sdk_, 1), 0);
    EXPECT_EQ(kavu_sdk_fragment_count(sdk_, 1, 1), 1);
    kavu_sdk_fragment fragment{};
    ASSERT_EQ(kavu_sdk_get_fragment(sdk_, 1, 1, 1, &fragment), 0);
    EXPECT_EQ(fragment.word.start, 2);
    EXPECT_THAT((std::array{fragment.frame.start, fragment.frame.interval, fragment.frame.end}),
                ElementsAre(1, 1, 2));
    EXPECT_EQ(fragment.full_word, 0);
    EXPECT_EQ(fragment.transfer_order, 'D');
    std::array<char, 9> mask{};
    ASSERT_EQ(kavu_sdk_mask(sdk_, 1, 1, 1, mask.data(), mask.size()), 0);
    EXPECT_STREQ(mask.data(), "00111100");
    std::array<std::uint32_t, 2> words{};
    ASSERT_EQ(kavu_sdk_mask_words(sdk_, 1, 1, 1, words.data()), 0);
    EXPECT_THAT(words, ElementsAre(0U, 0x3CU));
    std::array<int, 2> bits{};
    EXPECT_EQ(kavu_sdk_mask_bits(sdk_, 1, 1, 1, bits.data(), bits.size()), 4) << "all, if two fit";
    EXPECT_THAT(bits, ElementsAre(3, 4));
    EXPECT_EQ(kavu_sdk_mask_bits(sdk_, 1, 1, 1, nullptr, 0), 4);
}

TEST_F(KavuSdkTest, RefusesPlacesThatAreNotAndSmallBuffers) {
    ASSERT_EQ(kavu_sdk_load_stream(sdk_, 1), 0);
    kavu_sdk_fragment fragment{};
    std::array<char, 9> mask{};
    std::array<std::uint32_t, 2> words{};
    struct Place {
        std::size_t index;
        int location;
        int number;
    };
    for (const auto& [index, location, number] :
         {Place{2, 1, 1}, Place{kWraps, 1, 1}, Place{kHuge, 1, 1}, Place{1, 0, 1}, Place{1, 2, 1},
          Place{1, -1, 1}, Place{1, 1, 0}, Place{1, 1, 2}}) {
        const auto before = kavu_sdk_error_count(sdk_);
        EXPECT_EQ(kavu_sdk_get_fragment(sdk_, index, location, number, &fragment), -1);
        EXPECT_EQ(kavu_sdk_mask(sdk_, index, location, number, mask.data(), mask.size()), -1);
        EXPECT_EQ(kavu_sdk_mask_words(sdk_, index, location, number, words.data()), -1);
        EXPECT_EQ(kavu_sdk_mask_bits(sdk_, index, location, number, nullptr, 0), -1);
        EXPECT_EQ(kavu_sdk_error_count(sdk_), before + 3)
            << "all say why, but for what is got until there is no more";
    }
    EXPECT_EQ(kavu_sdk_fragment_count(sdk_, kWraps, 1), -1);
    EXPECT_EQ(kavu_sdk_fragment_count(sdk_, 1, 2), -1);
    EXPECT_EQ(kavu_sdk_mask(sdk_, 1, 1, 1, mask.data(), 8), -1);
    EXPECT_EQ(lastError(),
              "ERROR: Buffer size too small to hold bitmask for measurement 'Masked'\n\n");
    EXPECT_EQ(kavu_sdk_mask(sdk_, 1, 1, 1, nullptr, 100), -1);
    EXPECT_EQ(kavu_sdk_get_fragment(sdk_, 1, 1, 1, nullptr), -1);
    EXPECT_EQ(kavu_sdk_mask_words(sdk_, 1, 1, 1, nullptr), -1);
}

TEST_F(KavuSdkTest, ReadsGroups) {
    const OwnedGroup group(kavu_sdk_open_group(sdk_, 'P', 1));
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(kavu_sdk_group_number(group.get()), 1);
    ASSERT_EQ(kavu_sdk_group_size(group.get()), 7U);
    EXPECT_THAT(kavu_sdk_group_field(group.get(), 4), StrEq("MF1"));
    EXPECT_THAT(kavu_sdk_group_value(group.get(), 4), StrEq("5"));
    EXPECT_THAT(kavu_sdk_group_find(group.get(), "mf1"), StrEq("5"));
    EXPECT_EQ(kavu_sdk_group_find(group.get(), "MF9"), nullptr);
    EXPECT_EQ(kavu_sdk_group_find(group.get(), nullptr), nullptr);
    EXPECT_EQ(kavu_sdk_group_field(group.get(), 7), nullptr);
    EXPECT_EQ(kavu_sdk_group_value(group.get(), kHuge), nullptr);
    const OwnedGroup named(kavu_sdk_open_named_group(sdk_, 'M', "RF 1"));
    EXPECT_NE(named, nullptr);
    for (const int number : {-1, 0, 2}) {
        EXPECT_EQ(kavu_sdk_open_group(sdk_, 'P', number), nullptr);
    }
    EXPECT_EQ(kavu_sdk_open_group(sdk_, '?', 1), nullptr);
    EXPECT_EQ(kavu_sdk_open_named_group(sdk_, 'M', "none"), nullptr);
    EXPECT_EQ(kavu_sdk_open_named_group(sdk_, 'M', nullptr), nullptr);
    kavu_sdk_close(sdk_);
    EXPECT_THAT(kavu_sdk_group_value(group.get(), 0), StrEq("Link")) << "it outlives the session";
}

TEST_F(KavuSdkTest, ReadsConversionRecordsAndEvaluatesThem) {
    const OwnedGroup record(kavu_sdk_open_conversion(sdk_, 7));
    ASSERT_NE(record, nullptr);
    const OwnedGroup same(kavu_sdk_open_named_conversion(sdk_, "Plain"));
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(kavu_sdk_group_number(same.get()), 7);
    std::array<double, 1> first{};
    int negative = 1;
    EXPECT_EQ(kavu_sdk_coefficients(sdk_, record.get(), first.data(), first.size(), &negative), 2);
    EXPECT_EQ(negative, 0);
    EXPECT_EQ(kavu_sdk_coefficients(sdk_, record.get(), nullptr, 0, nullptr), 2);
    double value = 0;
    ASSERT_EQ(kavu_sdk_evaluate(sdk_, record.get(), 21, &value), 0);
    EXPECT_EQ(value, 42);
    EXPECT_EQ(kavu_sdk_evaluate(sdk_, record.get(), HUGE_VAL, &value), -1);
    EXPECT_EQ(kavu_sdk_evaluate(sdk_, record.get(), 1, nullptr), -1);
    EXPECT_EQ(kavu_sdk_open_conversion(sdk_, 9), nullptr);
    EXPECT_EQ(lastError(),
              "ERROR: Invalid C-Index value passed to GetMeasurementEUInfoByIndex.\n\n");
    EXPECT_EQ(kavu_sdk_open_named_conversion(sdk_, "none"), nullptr);
    EXPECT_EQ(kavu_sdk_open_named_conversion(sdk_, nullptr), nullptr);
    const OwnedGroup other(kavu_sdk_open_conversion(sdk_, 8));
    EXPECT_EQ(kavu_sdk_coefficients(sdk_, other.get(), nullptr, 0, nullptr), -1);
    EXPECT_EQ(kavu_sdk_evaluate(sdk_, other.get(), 1, &value), -1);
    EXPECT_THAT(lastError(), HasSubstr("ERROR"));
}

TEST_F(KavuSdkTest, SubstitutesAndEndsIt) {
    EXPECT_EQ(kavu_sdk_substitute(sdk_, "RF", "Radio"), 0);
    const auto name = [this] {
        const OwnedGroup group(kavu_sdk_open_group(sdk_, 'M', 1));
        return std::string(kavu_sdk_group_find(group.get(), "ID"));
    };
    EXPECT_EQ(name(), "Radio 1");
    EXPECT_EQ(kavu_sdk_substitute(sdk_, nullptr, "x"), -1);
    EXPECT_EQ(kavu_sdk_substitute(sdk_, "x", nullptr), -1);
    EXPECT_EQ(kavu_sdk_substitute(sdk_, nullptr, nullptr), 0);
    EXPECT_EQ(name(), "RF 1");
}

TEST(KavuSdkNullTest, TakesANullSessionAsOneThatIsNotOpen) {
    kavu_sdk_stream stream{};
    kavu_sdk_measurement measurement{};
    kavu_sdk_fragment fragment{};
    std::array<char, 4> text{};
    std::array<std::uint32_t, 2> words{};
    double number = 0;
    kavu_sdk_free(nullptr);
    kavu_sdk_close(nullptr);
    kavu_sdk_close_group(nullptr);
    EXPECT_EQ(kavu_sdk_open(nullptr, "x"), -1);
    EXPECT_EQ(kavu_sdk_error_count(nullptr), 0U);
    EXPECT_EQ(kavu_sdk_error(nullptr, 0), nullptr);
    EXPECT_EQ(kavu_sdk_version(nullptr), 0);
    EXPECT_EQ(kavu_sdk_substitute(nullptr, "a", "b"), -1);
    EXPECT_EQ(kavu_sdk_source_count(nullptr), 0U);
    EXPECT_EQ(kavu_sdk_source_name(nullptr, 0), nullptr);
    EXPECT_EQ(kavu_sdk_source_type(nullptr, 0), nullptr);
    EXPECT_EQ(kavu_sdk_stream_count(nullptr), 0);
    EXPECT_EQ(kavu_sdk_get_stream(nullptr, 1, &stream), -1);
    EXPECT_EQ(kavu_sdk_find_stream(nullptr, "a"), -1);
    EXPECT_EQ(kavu_sdk_load_stream(nullptr, 1), -1);
    EXPECT_EQ(kavu_sdk_words_per_frame(nullptr), 0);
    EXPECT_EQ(kavu_sdk_frame_count(nullptr), 0);
    EXPECT_EQ(kavu_sdk_word_length(nullptr, 0), 0);
    EXPECT_EQ(kavu_sdk_measurement_count(nullptr), 0U);
    EXPECT_EQ(kavu_sdk_get_measurement(nullptr, 0, &measurement), -1);
    EXPECT_EQ(kavu_sdk_find_measurement(nullptr, "a"), -1);
    EXPECT_EQ(kavu_sdk_fragment_count(nullptr, 0, 1), -1);
    EXPECT_EQ(kavu_sdk_get_fragment(nullptr, 0, 1, 1, &fragment), -1);
    EXPECT_EQ(kavu_sdk_mask(nullptr, 0, 1, 1, text.data(), text.size()), -1);
    EXPECT_EQ(kavu_sdk_mask_words(nullptr, 0, 1, 1, words.data()), -1);
    EXPECT_EQ(kavu_sdk_mask_bits(nullptr, 0, 1, 1, nullptr, 0), -1);
    EXPECT_EQ(kavu_sdk_open_group(nullptr, 'P', 1), nullptr);
    EXPECT_EQ(kavu_sdk_open_named_group(nullptr, 'P', "a"), nullptr);
    EXPECT_EQ(kavu_sdk_open_conversion(nullptr, 1), nullptr);
    EXPECT_EQ(kavu_sdk_open_named_conversion(nullptr, "a"), nullptr);
    EXPECT_EQ(kavu_sdk_coefficients(nullptr, nullptr, nullptr, 0, nullptr), -1);
    EXPECT_EQ(kavu_sdk_evaluate(nullptr, nullptr, 0, &number), -1);
    EXPECT_EQ(kavu_sdk_group_number(nullptr), 0);
    EXPECT_EQ(kavu_sdk_group_size(nullptr), 0U);
    EXPECT_EQ(kavu_sdk_group_field(nullptr, 0), nullptr);
    EXPECT_EQ(kavu_sdk_group_value(nullptr, 0), nullptr);
    EXPECT_EQ(kavu_sdk_group_find(nullptr, "a"), nullptr);
}

TEST_F(KavuSdkTest, HasOwnersInCpp) {
    kavu_sdk_cpp::Session session(path_);
    EXPECT_EQ(session.version(), 2009);
    EXPECT_EQ(session.streamCount(), 2);
    EXPECT_THAT(session.stream(1).name, StrEq("Link"));
    EXPECT_THROW((void)session.stream(3), kavu_sdk_cpp::SdkError);
    session.loadStream(1);
    EXPECT_EQ(session.measurementCount(), 2U);
    EXPECT_THAT(session.measurement(0).name, StrEq("Plain"));
    EXPECT_THROW((void)session.measurement(2), kavu_sdk_cpp::SdkError);
    ASSERT_EQ(session.fragments(1, 1).size(), 1U);
    EXPECT_EQ(session.fragments(1, 1)[0].word.start, 2);
    EXPECT_THROW((void)session.fragments(1, 2), kavu_sdk_cpp::SdkError);
    const auto group = session.openGroup('P', 1);
    ASSERT_TRUE(group);
    EXPECT_EQ(group->field(4), "MF1");
    EXPECT_EQ(group->value(4), "5");
    EXPECT_EQ(group->find("MF1"), "5");
    EXPECT_EQ(group->find("MF9"), std::nullopt);
    EXPECT_FALSE(session.openGroup('P', 2));
    EXPECT_EQ(session.openConversion("Plain")->number(), 7);
    EXPECT_FALSE(session.openConversion("none"));
    const auto before = session.errors().size();
    try {
        session.loadStream(9);
        FAIL() << "there is no such stream";
    } catch (const kavu_sdk_cpp::SdkError& error) {
        EXPECT_THAT(error.what(), HasSubstr("Unable to process stream #9"));
    }
    EXPECT_EQ(session.errors().size(), before + 1);
    EXPECT_THROW(kavu_sdk_cpp::Session("/none"), kavu_sdk_cpp::SdkError);
}

}  // namespace
}  // namespace kavu::test
