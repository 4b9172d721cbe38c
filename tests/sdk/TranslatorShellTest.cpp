// The frame around translators: modules, their settings, and a conversion.
#include "sdk/TranslatorModule.h"
#include "sdk/TranslatorShell.h"
#include "support/TestContext.h"

#include <sys/stat.h>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::string_view kTranslated =
    "G\\106:09;M-1\\BB\\DLN:Link;M-1\\SI\\N:1;M-1\\SI\\DLN-1:Alone;P-1\\DLN:Link;P-1\\TF:ONE;"
    "P-1\\F1:8;P-1\\MF\\N:2;P-1\\MF1:5;D-1\\DLN:Link;D-1\\ML\\N:1;D-1\\MN\\N-1:1;"
    "D-1\\MN-1-1:A,1;D-1\\LT-1-1:MF;D-1\\MF-1-1:3;C-1\\DCN:A,1;C-1\\DCT:COE;";

/// A clock that stands: a conversion that crosses a second must not show one.
class StandingClock : public FixedClock {
  public:
    using FixedClock::FixedClock;
    [[nodiscard]] std::int64_t steadySeconds() const override { return 0; }
};

/// A folder with the example, as a user would put it there.
class TranslatorStage : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directory(modules_);
        std::filesystem::permissions(modules_, std::filesystem::perms(0755));
        path_ = modules_ + "/csv_setup.so";
        std::filesystem::copy_file(KAVU_EXAMPLE_TRANSLATOR, path_);
        ASSERT_EQ(chmod(path_.c_str(), 0644), 0);
        writeFile(folder_ / "in.tma", kTranslated);
    }
    [[nodiscard]] TranslatorShell shell(const TranslatorModule& module) {
        return {module.isLoaded() ? &module.translator() : nullptr,
                work_,
                testEnvironment({{"TEMP", folder_.path()}, {"HOME", folder_.path()}}),
                clock_,
                random_,
                [this](const std::string& path, const std::string& editor) {
                    viewed_ = editor + " " + fileNameOf(path);
                }};
    }

    TempFolder folder_;
    std::string modules_ = folder_ / "TranslatorSupportFiles";
    std::string work_ = folder_ / "work";
    std::string path_;
    std::string viewed_;
    RecordingInterface ui_;
    StandingClock clock_{CivilTime{2026, 1, 2, 3, 4, 5}};
    CountingRandom random_;
};

TEST_F(TranslatorStage, LoadsAModuleThatOnlyTheUserCanWrite) {
    const auto modules = loadTranslators({folder_ / "none", modules_});
    ASSERT_EQ(modules.size(), 1U);
    ASSERT_TRUE(modules[0].isLoaded()) << modules[0].fault();
    EXPECT_EQ(modules[0].vendor(), "CSV Setup");
    EXPECT_STREQ(modules[0].translator().title, "Convert TMATS file To &CSV Setup Format");
}

TEST_F(TranslatorStage, RefusesAModuleThatOthersCanWrite) {
    for (const mode_t mode : {0664U, 0646U}) {
        ASSERT_EQ(chmod(path_.c_str(), mode), 0);
        const auto modules = loadTranslators({modules_});
        ASSERT_EQ(modules.size(), 1U);
        EXPECT_FALSE(modules[0].isLoaded());
        EXPECT_EQ(modules[0].fault(), "others can write it");
    }
}

TEST_F(TranslatorStage, RefusesTheModulesOfAFolderThatOthersCanWrite) {
    std::filesystem::permissions(modules_, std::filesystem::perms(0777));
    const auto modules = loadTranslators({modules_});
    ASSERT_EQ(modules.size(), 1U);
    EXPECT_FALSE(modules[0].isLoaded());
}

TEST_F(TranslatorStage, RefusesAModuleOfAnotherUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a file away";
    }
    ASSERT_EQ(chown(path_.c_str(), 12345, 12345), 0);
    // Root trusts root alone.
    EXPECT_EQ(TranslatorModule::load(path_).fault(), "it belongs to another user");
}

TEST_F(TranslatorStage, SaysWhyAFileIsNoModule) {
    writeFile(path_, "no library");
    ASSERT_EQ(chmod(path_.c_str(), 0644), 0);
    EXPECT_FALSE(TranslatorModule::load(path_).isLoaded());
    EXPECT_FALSE(TranslatorModule::load(path_).fault().empty());
    EXPECT_FALSE(TranslatorModule::load(folder_ / "none.so").fault().empty());
}

TEST_F(TranslatorStage, TakesOneModuleOfAVendor) {
    std::filesystem::copy_file(path_, modules_ + "/copy.so");
    ASSERT_EQ(chmod((modules_ + "/copy.so").c_str(), 0644), 0);
    EXPECT_EQ(loadTranslators({modules_, modules_}).size(), 1U);
}

TEST_F(TranslatorStage, ConvertsAFileWithALogAndAsksAboutIt) {
    const auto module = TranslatorModule::load(path_);
    ASSERT_TRUE(module.isLoaded()) << module.fault();
    ui_.otherwise = Button::Yes;
    ASSERT_TRUE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
    EXPECT_EQ(readFile(folder_ / "out.csv"),
              "stream,measurement,bits,location,fragment,first word,word interval,last word,first "
              "frame,frame interval,last frame,mask,conversion\n"
              "Link,\"A,1\",8,1,1,3,0,3,1,1,2,FW,COE\n");
    const auto log = readFile(work_ + "/TranslatLog.txt");
    EXPECT_THAT(
        log, testing::StartsWith("KAVU Translator Version 4.00\nDate: 01-02-2026\nTime: "
                                 "03:04:05\nTMATS File: " +
                                 (folder_ / "in.tma") + "\n\nConversion started at: 03:04:05\n"));
    EXPECT_THAT(log, HasSubstr("Stream 'Alone' is left out.\n"));
    EXPECT_THAT(log, HasSubstr("Unable to open TMATS Stream File for Data Link 'Alone'"));
    EXPECT_THAT(log, HasSubstr("Conversion ended at: 03:04:05\nConversion duration: 00:00:00\n"));
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].title, "You Have Messages Waiting");
    EXPECT_EQ(ui_.boxes[0].text, "Do you wish to view, save or print the conversion messages?");
    EXPECT_EQ(viewed_, "xdg-open TranslatLog.txt");
    EXPECT_THAT(ui_.statusTexts, testing::Contains("Translating TMATS file."));
    EXPECT_THAT(ui_.statusTexts, testing::Contains("TMATS translation complete."));
}

TEST_F(TranslatorStage, AsksNothingWithoutMessages) {
    const auto module = TranslatorModule::load(path_);
    writeFile(folder_ / "in.tma", "P-1\\DLN:Link;P-1\\TF:ONE;P-1\\MF\\N:1;P-1\\MF1:5;");
    ASSERT_TRUE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
    EXPECT_TRUE(ui_.boxes.empty());
    EXPECT_TRUE(shell(module).Convert(nullptr, folder_ / "in.tma", folder_ / "out.csv"));
}

TEST_F(TranslatorStage, AsksForTheStreamsIfTheSettingsSaySo) {
    const auto module = TranslatorModule::load(path_);
    std::filesystem::create_directory(work_);
    writeFile(work_ + "/translat.ini", "[Translator]\r\nProcessAllStreams=0\r\n");
    ui_.severalRows = {{0}, {}};
    ASSERT_TRUE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
    ASSERT_EQ(ui_.tablePrompts.size(), 1U);
    EXPECT_THAT(ui_.tablePrompts[0].rows,
                ElementsAre(ElementsAre("1", "Link", "ONE"), ElementsAre("2", "Alone", "")));
    EXPECT_THAT(readFile(work_ + "/TranslatLog.txt"), testing::Not(HasSubstr("Alone")));
    EXPECT_FALSE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
}

TEST_F(TranslatorStage, ConvertsSeveralStreamsOfMany) {
    const auto module = TranslatorModule::load(path_);
    std::filesystem::create_directory(work_);
    writeFile(work_ + "/translat.ini", "[Translator]\r\nProcessAllStreams=0\r\n");
    std::string text = "M-1\\BB\\DLN:S1;M-1\\SI\\N:2;M-1\\SI\\DLN-1:S2;M-1\\SI\\DLN-2:S3;";
    for (const std::string n : {"1", "2", "3"}) {
        text += "P-" + n + "\\DLN:S" + n + ";P-" + n + "\\TF:ONE;P-" + n + "\\MF\\N:1;P-" + n +
                "\\MF1:5;D-" + n + "\\DLN:S" + n + ";D-" + n + "\\ML\\N:1;D-" + n +
                "\\MN\\N-1:1;D-" + n + "\\MN-1-1:M" + n + ";D-" + n + "\\LT-1-1:MF;D-" + n +
                "\\MF-1-1:3;";
    }
    writeFile(folder_ / "in.tma", text);
    ui_.severalRows = {{0, 2}};
    ASSERT_TRUE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
    const auto setup = readFile(folder_ / "out.csv");
    EXPECT_THAT(setup, HasSubstr("S1,M1,"));
    EXPECT_THAT(setup, testing::Not(HasSubstr("M2")));
    EXPECT_THAT(setup, HasSubstr("S3,M3,"));
}

TEST_F(TranslatorStage, SaysThatTheLogCannotBeOpened) {
    const auto module = TranslatorModule::load(path_);
    std::filesystem::create_directories(work_ + "/TranslatLog.txt");
    EXPECT_FALSE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "out.csv"));
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].title, "ERROR: Unable To Open Log File");
    EXPECT_EQ(ui_.boxes[0].text, "Unable to open log file: '" + work_ + "/TranslatLog.txt'.");
}

TEST_F(TranslatorStage, NeverWritesOverTheTmatsFile) {
    const auto module = TranslatorModule::load(path_);
    EXPECT_FALSE(shell(module).Convert(&ui_, folder_ / "in.tma", folder_ / "in.tma"));
    EXPECT_EQ(readFile(folder_ / "in.tma"), kTranslated);
}

TEST_F(TranslatorStage, FailsWithoutATranslatorOrAFile) {
    const auto module = TranslatorModule::load(path_);
    EXPECT_FALSE(shell(TranslatorModule()).Convert(&ui_, folder_ / "in.tma", folder_ / "out"));
    EXPECT_FALSE(shell(module).Convert(&ui_, folder_ / "none.tma", folder_ / "out"));
    EXPECT_THAT(readFile(work_ + "/TranslatLog.txt"), HasSubstr("Please check TMATS pathname."));
}

TEST_F(TranslatorStage, ConfigurationHasItsDefaultsAndTheItemsOfTheVendor) {
    const auto module = TranslatorModule::load(path_);
    const auto configuration = shell(module).EditConfiguration(&ui_);
    const auto rows = configuration.rows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].description, "Enter Editor/File Viewer To Use With This Application");
    // The program of the desktop, not that of the system that the settings come from.
    EXPECT_EQ(rows[0].value, "xdg-open");
    EXPECT_EQ(rows[1].description, "Process all streams found in TMATS file");
    EXPECT_EQ(rows[2].description, "Character between two values");
    EXPECT_EQ(rows[2].value, ",");
    EXPECT_THAT(ui_.statusTexts, testing::Contains("Initializing Vendor Configuration Items"));
}

TEST_F(TranslatorStage, ConfigurationWithoutAModuleSaysSo) {
    const auto rows = shell(TranslatorModule()).EditConfiguration(nullptr).rows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[2].description, "(No Vendor configurable items available)");
    EXPECT_FALSE(rows[2].canEdit);
}

TEST_F(TranslatorStage, ConfigurationIsEditedAndSavedAndRewritesItsVersion) {
    const auto module = TranslatorModule::load(path_);
    std::filesystem::create_directory(work_);
    writeFile(work_ + "/translat.ini", "[Translator]\r\nVersion=VERSION\r\nOther=1\r\n");
    auto configuration = shell(module).EditConfiguration(&ui_);
    ui_.texts = {"|"};
    EXPECT_TRUE(configuration.edit(2, &ui_));
    ui_.choices = {1};
    EXPECT_TRUE(configuration.edit(1, &ui_));
    EXPECT_EQ(configuration.rows()[1].description,
              "Ask which streams to process, in multi-stream TMATS file");
    ui_.files = {FileChoice{"/usr/bin/less", 1}};
    EXPECT_TRUE(configuration.edit(0, &ui_));
    EXPECT_EQ(ui_.filePrompts[0].filters[0].first, "Programs (*.EXE)");
    EXPECT_FALSE(configuration.edit(9, &ui_));
    ASSERT_TRUE(configuration.save(&ui_).ok());
    EXPECT_THAT(ui_.statusTexts, testing::Contains("Saving Vendor Configuration Items"));
    EXPECT_EQ(readFile(work_ + "/translat.ini"),
              "[Translator]\r\nVersion=Version 4.00\r\nOther=1\r\nEditorName=/usr/bin/less\r\n"
              "ProcessAllStreams=0\r\n");
    const auto again = shell(module).EditConfiguration(nullptr);
    EXPECT_EQ(*again.value("CSV Setup", "Separator"), "|");
    EXPECT_FALSE(again.processesAllStreams());
    EXPECT_FALSE(fileExists(work_ + "/[trans]KAVUTRN1.TMP"));
    EXPECT_FALSE(fileExists(work_ + "/[trans]KAVUTRN2.TMP"));
}

TEST_F(TranslatorStage, ConfigurationRestoresTheDefaultsOfTheVendorAfterAQuestion) {
    const auto module = TranslatorModule::load(path_);
    auto configuration = shell(module).EditConfiguration(&ui_);
    ui_.texts = {"|"};
    ASSERT_TRUE(configuration.edit(2, &ui_));
    ui_.queued = {Button::Cancel};
    EXPECT_FALSE(configuration.restoreDefaults(&ui_));
    EXPECT_EQ(*configuration.value("CSV Setup", "Separator"), "|");
    ui_.queued = {Button::Ok};
    EXPECT_TRUE(configuration.restoreDefaults(&ui_));
    EXPECT_EQ(*configuration.value("CSV Setup", "Separator"), ",");
    EXPECT_EQ(ui_.boxes[0].title, "Restore Vendor Defaults?");
    EXPECT_EQ(ui_.boxes[0].text,
              "This feature will restore all vendor configuration items to their original default "
              "values.");
}

TEST_F(TranslatorStage, ConfigurationReportsItemsOfAModuleThatCannotBeKept) {
    const kavu_translator_item items[] = {{"A", "=bad", "d", "v"}, {"A", "good", "d", "v"}};
    const kavu_translator translator = {KAVU_TRANSLATOR_INTERFACE,
                                        "V",
                                        "t",
                                        ".x",
                                        items,
                                        2,
                                        [](const kavu_translator_run*) { return 0; }};
    const TranslatorConfiguration configuration(work_, &translator, &ui_);
    EXPECT_EQ(configuration.items().size(), 1U);
    ASSERT_EQ(ui_.boxes.size(), 1U);
    EXPECT_EQ(ui_.boxes[0].title, "KAVU Translator Error");
    EXPECT_EQ(ui_.boxes[0].text,
              "Internal error attempting to initialize vendor information. "
              "Conversion may be invalid");
}

TEST(SetupFileTest, HasTheNameOfTheFileWithTheEndingOfTheTranslator) {
    kavu_translator translator{};
    translator.extension = ".csv";
    EXPECT_EQ(setupFileOf("/a.b/in.tma", translator), "/a.b/in.csv");
    EXPECT_EQ(setupFileOf("/a.b/in", translator), "/a.b/in.csv");
    EXPECT_EQ(setupFileOf("/a/.hidden", translator), "/a/.hidden.csv");
}

}  // namespace
}  // namespace kavu::test
