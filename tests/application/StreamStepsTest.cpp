// The steps that connect a document and its conversion records with the stream in memory.
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/document/Transaction.h"
#include "core/talk/ProfileSettings.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "support/TestApplication.h"

#include <gmock/gmock.h>

namespace kavu {
namespace {

using test::TestApplication;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kDocument =
    "G\\106:09;G\\DSI\\N:1;G\\DSI-1:Source;G\\DST-1:RF;T-1\\ID:Source;"
    "M-1\\ID:Source;M-1\\BB\\DLN:ONE;M-1\\SI\\N:1;M-1\\SI\\DLN-1:TWO;"
    "P-1\\DLN:ONE;P-1\\D2:64000;P-1\\TF:TWO;P-1\\F1:16;P-1\\MF\\N:4;P-1\\MF1:16;P-1\\MF2:264;"
    "P-1\\MF4:24;P-1\\MF5:111110101111001100100000;"
    "P-2\\DLN:TWO;P-2\\TF:TWO;P-2\\F1:8;P-2\\MF\\N:1;P-2\\MF1:4;P-2\\MF2:24;"
    "D-1\\DLN:ONE;D-1\\ML\\N:1;D-1\\MLN-1:L;D-1\\MN\\N-1:1;D-1\\MN-1-1:A;D-1\\LT-1-1:MF;"
    "D-1\\MF-1-1:2;";

class StreamSteps : public ::testing::Test {
  protected:
    bool open() {
        test::writeFile(test.folder / "in.tma", kDocument);
        return loadDocument(test.application.context(), &test.ui, test.folder / "in.tma");
    }
    bool load(std::optional<std::string_view> link) {
        return loadPcmFormat(test.application.pcmFormat(), &test.ui, test.application.pcmSteps(),
                             link);
    }
    TestApplication test;
};

TEST_F(StreamSteps, ClosingTheDocumentReleasesTheStream) {
    ASSERT_TRUE(open());
    ASSERT_TRUE(load("ONE"));
    EXPECT_TRUE(test.application.pcmFormat().loaded());
    test.application.context().document.changed = false;
    (void)closeDocument(test.application.context(), &test.ui);
    EXPECT_FALSE(test.application.pcmFormat().loaded());
}

TEST_F(StreamSteps, OpeningAnotherDocumentReleasesTheStream) {
    ASSERT_TRUE(open());
    ASSERT_TRUE(load("ONE"));
    ASSERT_TRUE(open());
    EXPECT_FALSE(test.application.pcmFormat().loaded());
}

TEST_F(StreamSteps, WithoutANameTheUserChoosesTheStream) {
    ASSERT_TRUE(open());
    test.ui.choices = {1, -1};
    ASSERT_TRUE(load(std::nullopt));
    EXPECT_EQ(test.application.pcmFormat().streamName, "TWO");
    ASSERT_FALSE(test.ui.listPrompts.empty());
    EXPECT_THAT(test.ui.listPrompts.front().second, ElementsAre("ONE", "TWO"));
    test.application.pcmFormat().closeFormat();
    EXPECT_FALSE(load(std::nullopt)) << "none was chosen";
    EXPECT_FALSE(loadPcmFormat(test.application.pcmFormat(), nullptr, test.application.pcmSteps(),
                               std::nullopt));
}

TEST_F(StreamSteps, ANewConversionRecordGetsTheRateOfItsMeasurement) {
    ASSERT_TRUE(open());
    ASSERT_TRUE(load("ONE"));
    test.application.context().settings.write("ChkSR", "1");
    auto& conversions = test.application.conversions();
    Transaction operation(test.application.context(), "Creation");
    ASSERT_TRUE(conversions.createDefaultDefinition(&test.ui, "A", false));
    const auto place = conversions.locateDefinition("A");
    EXPECT_EQ(conversions.chunk(place.chunk)->value("A", "SR", ""), "250");
}

TEST_F(StreamSteps, TheMoveTo106_11ConvertsTheStreams) {
    auto& settings = test.application.context().settings;
    settings.write("IRIGOutputMethod", "2");
    settings.write("IRIGOutputVersion", "2011");
    ASSERT_TRUE(open());
    const auto& store = test.application.context().store;
    const auto measurements = test::readFile(store.pathOf("[kavu]PCMMEAS.D01"));
    EXPECT_THAT(measurements, HasSubstr("D-1\\LT-1-1:WDFR;"));
    EXPECT_THAT(measurements, Not(HasSubstr("D-1\\MF-1-1")));
    EXPECT_TRUE(test.application.context().document.changed);
    EXPECT_FALSE(test.application.pcmFormat().loaded());
    EXPECT_TRUE(test.ui.hasBox(444));
    ASSERT_TRUE(load("ONE"));
    EXPECT_EQ(test.application.pcmFormat().countMeasurementOccurences("A"), 4);
}

}  // namespace
}  // namespace kavu
