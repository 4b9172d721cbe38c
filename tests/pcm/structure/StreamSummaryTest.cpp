#include "pcm/LoadFixture.h"
#include "pcm/structure/StreamSummary.h"

namespace kavu {
namespace {

using test::Commands;
using test::counterAt;
using test::listOf;
using test::LoadFixture;
using test::plainFormat;
using test::subframeAt;
using test::operator+;

Commands format() {
    return plainFormat(16, 4) + Commands{"D2:64000"} +
           counterAt(1, 4,
                     Commands{"SF\\N-1:2"} + subframeAt(1, "S", 3, 4) + subframeAt(2, "T", 4, 2));
}
const auto kMeasurement = listOf({Commands{"MN@:A", "LT@:MF", "MF@:2"}});

TEST(StreamSummary, ALoadedStreamAndItsFilesGiveTheSame) {
    for (const int edition : {1996, 2009, 2011}) {
        LoadFixture stream(edition);
        ASSERT_TRUE(stream.load(format(), edition < 2011 ? kMeasurement : listOf({})));
        const auto summary = summariseStream(stream.format);
        const std::size_t measurements = edition < 2011 ? 1 : 0;
        EXPECT_EQ(summary, (StreamSummary{"PCM (Class 2)", 16, 4, "64000", 1,
                                          edition < 2011 ? 2 : 0, measurements}))
            << edition;
        EXPECT_EQ(readStreamSummary(stream.context, &stream.ui, 1, measurements), summary)
            << edition;
    }
}

TEST(StreamSummary, HiddenSubframesDoNotCount) {
    LoadFixture stream(2011);
    ASSERT_TRUE(stream.load(format()));
    ASSERT_FALSE(stream.format.idCounters[0].subframes.empty());
    EXPECT_EQ(summariseStream(stream.format).subframes, 0);
}

TEST(StreamSummary, WildNumbersOfAFileStayWithinTheLimits) {
    LoadFixture stream;
    stream.writeGroup('P', {"MF1:99999999999", "MF\\N:4000", "ISF\\N:1000000000",
                            "SF\\N-1:1000000000", "D2:123456789012345"});
    EXPECT_EQ(readStreamSummary(stream.context, &stream.ui, 1, 0),
              (StreamSummary{"PCM (Class 1)", 2048, 256, "123456789", 99, 9999, 0}));
    EXPECT_TRUE(stream.ui.boxes.empty());
}

TEST(StreamSummary, AFileThatIsNotThereIsReportedAndEmpty) {
    LoadFixture stream;
    EXPECT_EQ(readStreamSummary(stream.context, &stream.ui, 9, 3), StreamSummary{});
    EXPECT_EQ(stream.ui.boxes.size(), 1U);
}

TEST(StreamSummary, TheTextLeavesOutWhatThereIsNoneOf) {
    EXPECT_EQ(summaryText({"", 128, 8, "1000000", 1, 4, 20}),
              "128 words, 8 frames, 1000000 bit/s, 1 ID counter, 4 subframes, 20 measurements");
    EXPECT_EQ(summaryText({"", 1, 1, "", 0, 0, 1}), "1 word, 1 frame, 1 measurement");
    EXPECT_EQ(summaryText({}), "0 words, 0 frames, 0 measurements");
}

}  // namespace
}  // namespace kavu
