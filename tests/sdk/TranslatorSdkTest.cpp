#include "sdk/SessionStage.h"
#include "sdk/TranslatorSdk.h"

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

constexpr std::string_view kDocument =
    "G\\106:09;G\\DSI\\N:2;G\\DSI-1:RF 1;G\\DST-1:RF;G\\DSI-2:Tape;G\\DST-2:TAP;G\\COM:a\r\nb;"
    "T-1\\ID:RF 1;M-2\\ID:Tape;M-2\\BB\\DLN:Second;M-2\\SI\\N:2;M-2\\SI\\DLN-1:Third;"
    "M-2\\SI\\DLN-2:First;M-1\\ID:RF 1;M-1\\BB\\DLN:First;"
    "P-1\\DLN:Free;P-1\\TF:ONE;P-2\\DLN:First;P-2\\TF:TWO;P-2\\MF1:8;"
    "D-1\\DLN:First;D-1\\COM:of D;B-3\\DLN:Third;A-1\\DLN:Pam;S-1\\DLN:Text;B-4\\DLN:Bus;"
    "C-1\\DCN:A;C-1\\DCT:COE;C-2\\CO\\N:1;C-2\\DCN:B;C-1\\CO-1:2;C-5\\DCN:A;H\\TA:x;";

TEST(TranslatorSdkTest, ListsLinksInTheOrderOfTheMGroupsAndThenTheUnnamed) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    EXPECT_THAT(stage.linkNames(),
                ElementsAre("First", "Second", "Third", "Free", "Bus", "Pam", "Text"));
    EXPECT_EQ(stage.sdk.streamCount(), 7);
    const auto& first = stage.sdk.links()[0];
    EXPECT_EQ(first.number, 1);
    EXPECT_TRUE(first.isNamed);
    EXPECT_EQ(first.type, "TWO");
    EXPECT_EQ(first.group('P'), 2);
    EXPECT_EQ(first.group('D'), 1);
    EXPECT_EQ(first.group('B'), 0);
    EXPECT_FALSE(stage.sdk.findLink("Free")->isNamed);
    EXPECT_EQ(stage.sdk.findLink("none"), nullptr);
}

TEST(TranslatorSdkTest, ListsSourcesWithTheirTypes) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    ASSERT_EQ(stage.sdk.sources().size(), 2U);
    EXPECT_EQ(stage.sdk.sources()[1].name, "Tape");
    EXPECT_EQ(stage.sdk.sources()[1].type, "TAP");
}

TEST(TranslatorSdkTest, TakesTheEditionOfTheFileAnd2011WithoutOne) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    EXPECT_EQ(stage.sdk.version(), 2009);
    stage.sdk.close();
    ASSERT_TRUE(stage.open("G\\PN:x;"));
    EXPECT_EQ(stage.sdk.version(), 2011);
}

TEST(TranslatorSdkTest, OpensAGroupByLetterByNumberAndByName) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    const auto general = stage.sdk.openGroup('G');
    ASSERT_TRUE(general);
    EXPECT_EQ(general->prefix(), "G\\");
    EXPECT_EQ(general->number("DSI\\N"), 2);
    const auto multiplex = stage.sdk.openGroup('M', "Tape");
    ASSERT_TRUE(multiplex);
    EXPECT_EQ(multiplex->prefix(), "M-2\\");
    EXPECT_EQ(multiplex->value("si\\dln-2"), "First");
    EXPECT_EQ(stage.sdk.openGroup('P', 2)->value("MF1"), "8");
    EXPECT_EQ(stage.sdk.openGroup('D', 1)->value("COM"), "of D");
    EXPECT_EQ(stage.sdk.openGroup('H')->value("TA"), "x");
    EXPECT_FALSE(stage.sdk.openGroup('P', 7));
    EXPECT_FALSE(stage.sdk.openGroup('P', "none"));
    EXPECT_TRUE(stage.sdk.errors().empty());
}

TEST(TranslatorSdkTest, GivesTheCommandsOfAGroupInTheOrderOfTheFile) {
    SessionStage stage;
    ASSERT_TRUE(stage.open("P-1\\DLN:a;D-1\\Z:1;G\\PN:x;D-1\\A:2;COMMENT: no;D-1\\Z:3;"));
    const auto group = stage.sdk.openGroup('D', 1);
    ASSERT_TRUE(group);
    ASSERT_EQ(group->size(), 3U);
    EXPECT_EQ(group->at(0).field, "Z");
    EXPECT_EQ(group->at(1).value, "2");
    EXPECT_EQ(group->at(2).text, "D-1\\Z:3;");
    EXPECT_EQ(group->value("Z"), "1");
}

TEST(TranslatorSdkTest, FindsConversionRecordsByNumberAndTheFirstOfAName) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    ASSERT_EQ(stage.sdk.conversionCount(), 3U);
    EXPECT_EQ(stage.sdk.findConversion("A"), 0U);
    EXPECT_EQ(stage.sdk.findConversion(5), 2U);
    EXPECT_FALSE(stage.sdk.findConversion("C"));
    // The name is where it is, and a record goes on where another one has been.
    EXPECT_EQ(stage.sdk.conversionName(1), "B");
    const auto record = stage.sdk.openConversion(0);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->prefix(), "C-1\\");
    ASSERT_EQ(record->size(), 3U);
    EXPECT_EQ(record->at(2).text, "C-1\\CO-1:2;");
}

TEST(TranslatorSdkTest, BeginsARecordWithASecondNameUnderOneNumber) {
    SessionStage stage;
    ASSERT_TRUE(stage.open("C-1\\DCN:A;C-1\\CO-1:1;C-1\\DCN:B;C-1\\CO-1:2;"));
    ASSERT_EQ(stage.sdk.conversionCount(), 2U);
    EXPECT_EQ(stage.sdk.openConversion(*stage.sdk.findConversion("B"))->value("CO-1"), "2");
    EXPECT_EQ(stage.sdk.findConversion(1), 0U);
}

TEST(TranslatorSdkTest, KeepsTheSemicolonOfASubstitutedValue) {
    SessionStage stage;
    ASSERT_TRUE(stage.open("G\\COM:a & b<c;C-1\\DCN:X&Y;"));
    stage.sdk.addSubstitution("&", "&amp;");
    stage.sdk.addSubstitution("<", "&lt;");
    EXPECT_EQ(stage.sdk.openGroup('G')->value("COM"), "a &amp; b&lt;c");
    EXPECT_EQ(stage.sdk.openConversion(0)->value("DCN"), "X&amp;Y");
    EXPECT_EQ(stage.sdk.substituted("<&"), "&lt;&amp;");
    stage.sdk.clearSubstitutions();
    EXPECT_EQ(stage.sdk.openGroup('G')->value("COM"), "a & b<c");
}

TEST(TranslatorSdkTest, RefusesASecondOpenAndStaysAsItIs) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    EXPECT_FALSE(stage.sdk.open(stage.folder / "other.tma", &stage.ui));
    EXPECT_THAT(stage.sdk.errors(), ElementsAre("ERROR: SDK already active.\n\n"));
    EXPECT_EQ(readFile(stage.sdk.errorPath()), "ERROR: SDK already active.\n\n");
    EXPECT_EQ(stage.sdk.streamCount(), 7);
}

TEST(TranslatorSdkTest, NamesAFileThatCannotBeOpened) {
    SessionStage stage;
    EXPECT_FALSE(stage.sdk.open("/none.tma", &stage.ui));
    ASSERT_EQ(stage.ui.boxes.size(), 1U);
    EXPECT_EQ(stage.ui.boxes[0].text, "Unable to open '/none.tma'. Please check TMATS pathname.");
    EXPECT_EQ(stage.ui.boxes[0].title, "Unable To Open TMATS File");
    EXPECT_FALSE(stage.sdk.isActive());
    EXPECT_FALSE(stage.sdk.openGroup('G'));
}

TEST(TranslatorSdkTest, RefusesAFileThatEndsWithinACommandAndSaysWhy) {
    SessionStage stage;
    EXPECT_FALSE(stage.open("G\\PN:x;G\\106:0"));
    EXPECT_TRUE(stage.ui.hasText("Unable to parse TMATS '"));
    ASSERT_EQ(stage.sdk.errors().size(), 2U);
    EXPECT_THAT(stage.sdk.errors()[0], testing::HasSubstr("partial"));
    EXPECT_FALSE(stage.sdk.isActive());
    EXPECT_TRUE(stage.files().empty());
    EXPECT_TRUE(stage.open("G\\PN:x;"));
}

TEST(TranslatorSdkTest, HasItsFilesUnderItsNumberAndDeletesThemAtClose) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(kDocument));
    const auto files = stage.files();
    EXPECT_THAT(files, Contains("1KavuTSDK_P.2"));
    EXPECT_THAT(files, Contains("1KavuTSDK_G.0"));
    EXPECT_THAT(files, Contains("1KavuTSDK_0.C_T"));
    stage.sdk.close();
    EXPECT_TRUE(stage.files().empty());
    EXPECT_TRUE(stage.sdk.links().empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(stage.folder.path()), {}), 1)
        << "only the TMATS file is left";
    EXPECT_TRUE(stage.open(kDocument));
}

TEST(TranslatorSdkTest, ReportsItsStatusTexts) {
    SessionStage stage;
    ASSERT_TRUE(stage.open("M-1\\BB\\DLN:a;M-1\\SI\\N:1;M-1\\SI\\DLN-1:b;"));
    EXPECT_THAT(stage.ui.statusTexts,
                ElementsAre("Parsing TMATS file", "...Gathering PCM Stream Info (Stream 1)",
                            "...Gathering PCM Stream Info (Stream 2)", "TMATS file parsed"));
}

TEST(TranslatorSdkTest, OpensWithoutAProgressWindow) {
    SessionStage stage;
    writeFile(stage.folder / "in.tma", kDocument);
    EXPECT_TRUE(stage.sdk.open(stage.folder / "in.tma", nullptr));
    EXPECT_FALSE(stage.sdk.open("/none", nullptr));
}

TEST(TranslatorSdkTest, EndsWithoutASessionWhenItIsCancelled) {
    SessionStage stage;
    stage.ui.cancelAtPoll = 1;
    EXPECT_FALSE(stage.open(kDocument));
    EXPECT_FALSE(stage.sdk.isActive());
    EXPECT_TRUE(stage.files().empty());
}

TEST(TranslatorSdkTest, OpensAfterOneThatWasCancelled) {
    SessionStage stage;
    stage.ui.cancelAtPoll = 1;
    ASSERT_FALSE(stage.open(kDocument));
    stage.ui.cancelAtPoll = 0;
    EXPECT_TRUE(stage.open(kDocument));
}

TEST(TranslatorSdkTest, OpensAnEmptyFile) {
    SessionStage stage;
    ASSERT_TRUE(stage.open(""));
    EXPECT_EQ(stage.sdk.streamCount(), 0);
    EXPECT_EQ(stage.sdk.conversionCount(), 0U);
    EXPECT_FALSE(stage.sdk.openGroup('G'));
}

}  // namespace
}  // namespace kavu::test
