#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "support/SourceStage.h"

#include <memory>

#include <gmock/gmock.h>

namespace kavu {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kName33 = "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234567";

/// A file to import from: a transmitted source with a PCM stream, a recorder with a bus.
std::string otherDocument() {
    return "COMMENT: somebody else's file;\n"
           "G\\106:09;\nG\\DSI\\N:2;\nG\\DSI-1:Pod;\nG\\DST-1:RFX;\nG\\DSI-2:Box;\n"
           "G\\DST-2:SSR;\n"
           "T-1\\ID:Pod;\nT-1\\RF1:1500;\nT-1\\COM:two\nlines;\n"
           "R-1\\ID:Box;\nR-1\\CDLN-1:Pod Bus;\n"
           "M-1\\ID:Pod;\nM-1\\BSG1:PCM;\nM-1\\BB\\DLN:Pod Link;\nM-1\\SI\\N:0;\n"
           "M-2\\ID:Box;\nM-2\\SI\\N:1;\nM-2\\SI\\DLN-1:Pod Bus;\n"
           "P-1\\DLN:Pod Link;\nP-1\\TF:ONE;\n"
           "P-2\\DLN:Pod Bus;\nP-2\\TF:1553;\n"
           "D-1\\DLN:Pod Link;\nD-1\\MN\\N-1:2;\nD-1\\MN-1-1:DELTA;\nD-1\\MN-1-2:ALPHA;\n"
           "D-1\\SMF\\SMN-1:DELTA;\n"
           "B-1\\DLN:Pod Bus;\nB-1\\MN-1-1-1:SPEED;\n"
           "C-1\\DCN:DELTA;\nC-1\\DCT:COE;\nC-1\\CO\\N:1;\nC-1\\CO:1;\nC-1\\CO-1:3;\n"
           "C-2\\DCN:ALPHA;\nC-2\\DCT:NON;\nC-3\\DCN:SPEED;\nC-3\\DCT:NON;\nC-4\\DCN:ELSE;\n"
           "C-4\\DCT:NON;\n";
}

struct Answers {
    char kind = 'R';
    int row = 0;
    Button conversions = Button::Yes;
    std::string prefix{};
    std::string suffix{};
};

class SourceImportTest : public ::testing::Test {
  protected:
    SourceImportTest() {
        t.open(test::threeSources());
        t.measurements.setChecking(false, false);
    }
    bool import(const std::string& text, const Answers& answers = {}) {
        t.offerFile(t.otherFile(text));
        const bool affixes = !answers.prefix.empty() || !answers.suffix.empty();
        t.ui.rows = {answers.row};
        t.ui.queued = {answers.conversions, affixes ? Button::Yes : Button::No};
        t.ui.texts.clear();
        if (affixes) {
            t.ui.texts = {answers.prefix, answers.suffix};
        }
        return importDataSource(t.parts, &t.ui, answers.kind);
    }
    void expectUntouched(const std::map<std::string, std::string>& before) {
        EXPECT_EQ(t.files(), before);
        EXPECT_FALSE(t.document.changed);
        EXPECT_THAT(t.told, IsEmpty());
    }
    test::SourceStage t;
};

TEST_F(SourceImportTest, ATransmittedSourceComesWithItsStream) {
    EXPECT_TRUE(import(otherDocument()));
    EXPECT_EQ(t.ui.filePrompts.at(0).title, "Import Data Source/Stream From TMATS File:");
    EXPECT_EQ(t.ui.tablePrompts.at(0).title, "Select Which RF Stream To Import");
    EXPECT_EQ(t.ui.tablePrompts.at(0).columns,
              (std::vector<std::string>{"Data Source Name", "Data Link Name", "Stream Type"}));
    EXPECT_EQ(t.ui.tablePrompts.at(0).rows,
              (std::vector<std::vector<std::string>>{{"Pod", "Pod Link", "PCM (Class 1)"}}));
    EXPECT_EQ(t.ui.boxes.at(0).text, "Would you also like to import EU conversions?");
    EXPECT_EQ(t.ui.boxes.at(0).title, "Import Data Source");
    EXPECT_EQ(t.ui.boxes.at(0).buttons, Buttons::YesNoCancel);
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI\\N:4;"));
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI-4:Pod;\r\nG\\DST-4:RFX;\r\n"));
    EXPECT_EQ(t.read(groupFile('T', 3)),
              "T-3\\ID:Pod;\r\nT-3\\RF1:1500;\r\nT-3\\COM:two\x14\x15lines;\r\n");
    EXPECT_EQ(t.read(groupFile('M', 4)),
              "M-4\\ID:Pod;\r\nM-4\\BSG1:PCM;\r\nM-4\\BB\\DLN:Pod Link;\r\nM-4\\SI\\N:0;\r\n");
    EXPECT_EQ(t.read(groupFile('P', 3)), "P-3\\DLN:Pod Link;\r\nP-3\\TF:ONE;\r\n");
    EXPECT_THAT(t.read(groupFile('D', 3)), HasSubstr("D-3\\MN-1-1:DELTA;"));
    EXPECT_FALSE(t.has(groupFile('B', 2)));
    EXPECT_TRUE(t.document.changed);
    EXPECT_THAT(t.told, ElementsAre("Import of Data Source"));
}

TEST_F(SourceImportTest, TakesAFileThatARecorderHasPadded) {
    EXPECT_TRUE(import(otherDocument() + std::string(5000, '\0')));
    EXPECT_FALSE(t.ui.hasBox(157));
}

TEST_F(SourceImportTest, ARecorderComesWithItsBus) {
    EXPECT_TRUE(import(otherDocument(), {.kind = 'T'}));
    EXPECT_EQ(t.ui.tablePrompts.at(0).title, "Select Which Recorder/Reproducer Stream To Import");
    EXPECT_EQ(t.ui.tablePrompts.at(0).rows,
              (std::vector<std::vector<std::string>>{{"Box", "Pod Bus", "1553"}}));
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI-4:Box;\r\nG\\DST-4:SSR;\r\n"));
    EXPECT_EQ(t.read(groupFile('R', 2)), "R-2\\ID:Box;\r\nR-2\\CDLN-1:Pod Bus;\r\n");
    EXPECT_EQ(t.read(groupFile('B', 2)), "B-2\\DLN:Pod Bus;\r\nB-2\\MN-1-1-1:SPEED;\r\n");
    EXPECT_TRUE(t.conversions.locateDefinition("SPEED").found);
}

TEST_F(SourceImportTest, NamesThatAreTakenGetANumberAndTheLogTells) {
    auto text = replaceAll(otherDocument(), "Pod Link", "Link A");
    text = replaceAll(text, ":Pod;", ":First;");
    EXPECT_TRUE(import(text));
    EXPECT_THAT(t.read(groupFile('T', 3)), HasSubstr("T-3\\ID:First 2;"));
    EXPECT_THAT(t.read(groupFile('M', 4)), HasSubstr("M-4\\ID:First 2;"));
    EXPECT_THAT(t.read(groupFile('M', 4)), HasSubstr("M-4\\BB\\DLN:Link A 2;"));
    EXPECT_THAT(t.read(groupFile('P', 3)), HasSubstr("P-3\\DLN:Link A 2;"));
    EXPECT_THAT(t.read(groupFile('D', 3)), HasSubstr("D-3\\DLN:Link A 2;"));
    EXPECT_EQ(t.ui.countLogs(458), 2);
    EXPECT_THAT(t.ui.logs.at(0).text,
                HasSubstr("Data Source 'First' name has been changed to 'First 2'"));
    EXPECT_THAT(t.ui.logs.at(1).text,
                HasSubstr("Data Link 'Link A' name has been changed to 'Link A 2'"));
    ASSERT_EQ(t.ui.shown.size(), 1U);
    EXPECT_TRUE(import(text));
    EXPECT_THAT(t.read(groupFile('T', 4)), HasSubstr("T-4\\ID:First 3;"));
    EXPECT_THAT(t.read(groupFile('P', 4)), HasSubstr("P-4\\DLN:Link A 3;"));
}

TEST_F(SourceImportTest, ConversionsComeAlongIfTheyAreWanted) {
    EXPECT_TRUE(import(otherDocument()));
    const auto place = t.conversions.locateDefinition("DELTA");
    ASSERT_TRUE(place.found);
    EXPECT_EQ(t.conversions.chunk(place.chunk)->value("DELTA", "CO-1", ""), "3");
    EXPECT_FALSE(t.conversions.locateDefinition("ELSE").found);
    // ALPHA has a conversion in the open document.
    ASSERT_EQ(t.ui.countLogs(459), 1);
    EXPECT_THAT(t.ui.logs.back().text, HasSubstr("'ALPHA' were not imported"));
    const auto alpha = t.conversions.locateDefinition("ALPHA");
    EXPECT_EQ(t.conversions.chunk(alpha.chunk)->value("ALPHA", "CO-1", ""), "2.0");
    for (const char* status :
         {"Updating General Information", "Copying Data Source", "Updating Data Source Pointers",
          "Importing Other Data Into TMATS File", "Importing EU Conversion Information",
          "Importing EU Conversion Information (0%)", "Renumbering EU Conversion Information",
          "Searching for Data Sources", "Searching for Data Links"}) {
        EXPECT_TRUE(t.saw(status)) << status;
    }
}

TEST_F(SourceImportTest, ConversionsStayBehindIfTheyAreNotWanted) {
    EXPECT_TRUE(import(otherDocument(), {.conversions = Button::No}));
    EXPECT_FALSE(t.conversions.locateDefinition("DELTA").found);
    EXPECT_EQ(t.ui.countLogs(459), 0);
}

TEST_F(SourceImportTest, PrefixAndSuffixChangeMeasurementsAndTheirConversions) {
    EXPECT_TRUE(import(otherDocument(), {.prefix = "P_", .suffix = "_S"}));
    EXPECT_EQ(t.read(groupFile('D', 3)),
              "D-3\\DLN:Pod Link;\r\nD-3\\MN\\N-1:2;\r\nD-3\\MN-1-1:P_DELTA_S;\r\n"
              "D-3\\MN-1-2:P_ALPHA_S;\r\nD-3\\SMF\\SMN-1:P_DELTA_S;\r\n");
    EXPECT_TRUE(t.conversions.locateDefinition("P_DELTA_S").found);
    EXPECT_TRUE(t.conversions.locateDefinition("P_ALPHA_S").found);
    EXPECT_FALSE(t.conversions.locateDefinition("DELTA").found);
    EXPECT_EQ(t.ui.countLogs(459), 0);
}

TEST_F(SourceImportTest, PacketMeasurementsOfAnSGroupGetThemToo) {
    EXPECT_TRUE(
        import("T-1\\ID:Pod;\nM-1\\ID:Pod;\nM-1\\BB\\DLN:L;\nP-1\\DLN:L;\nP-1\\TF:PKTM;\n"
               "S-4\\DLN:L;\nS-4\\TMN-1:A;\nS-4\\HMN-1-1:B;\nS-4\\SMN-1-1:C;\n"
               "S-4\\MN-1-1-1:D;\nS-4\\APID-1:E;\n",
               {.prefix = "x"}));
    EXPECT_EQ(t.read(groupFile('S', 1)),
              "S-1\\DLN:L;\r\nS-1\\TMN-1:xA;\r\nS-1\\HMN-1-1:xB;\r\nS-1\\SMN-1-1:xC;\r\n"
              "S-1\\MN-1-1-1:xD;\r\nS-1\\APID-1:E;\r\n");
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DST-4:RF;"));
}

TEST_F(SourceImportTest, ASourceWithoutAStreamOnlyAddsTheSource) {
    EXPECT_TRUE(import("R-1\\ID:Alone;\nR-1\\TK1:9;\n", {.kind = 'T'}));
    EXPECT_EQ(t.ui.tablePrompts.at(0).rows,
              (std::vector<std::vector<std::string>>{{"Alone", "", ""}}));
    EXPECT_EQ(t.read(groupFile('R', 2)), "R-2\\ID:Alone;\r\nR-2\\TK1:9;\r\n");
    EXPECT_THAT(t.read(groupFile('G')), HasSubstr("G\\DSI-4:Alone;\r\nG\\DST-4:TAP;"));
    EXPECT_FALSE(t.has(groupFile('M', 4)));
    EXPECT_FALSE(t.has(groupFile('P', 3)));
}

TEST_F(SourceImportTest, TheWalkStopsAtAMultiplexGroupThatHasNotOneLink) {
    const std::string sources = "T-1\\ID:A;\nT-2\\ID:B;\nT-3\\ID:C;\n";
    const std::string first = "M-1\\ID:A;\nM-1\\BB\\DLN:LA;\n";
    const std::string third = "M-3\\ID:C;\nM-3\\BB\\DLN:LC;\n";
    for (const std::string second :
         {"M-2\\ID:B;\nM-2\\BB\\DLN:LB;\nM-2\\SI\\N:1;\nM-2\\SI\\DLN-1:LX;\n", "M-2\\ID:B;\n"}) {
        t.ui.tablePrompts.clear();
        t.offerFile(t.otherFile(sources + first + second + third));
        EXPECT_FALSE(importDataSource(t.parts, &t.ui, 'R'));
        EXPECT_EQ(t.ui.tablePrompts.at(0).rows,
                  (std::vector<std::vector<std::string>>{{"A", "LA", ""}}))
            << second;
    }
}

TEST_F(SourceImportTest, SourcesBehindAGapAreNotFound) {
    t.offerFile(t.otherFile("T-1\\ID:A;\nT-3\\ID:C;\n"));
    EXPECT_FALSE(importDataSource(t.parts, &t.ui, 'R'));
    EXPECT_EQ(t.ui.tablePrompts.at(0).rows.size(), 1U);
}

TEST_F(SourceImportTest, AFileWithoutAnythingToImportIsTold) {
    const auto before = t.files();
    EXPECT_FALSE(import("G\\PN:nothing;\n"));
    EXPECT_TRUE(t.ui.hasText("This file has no RF data source that can be imported."));
    EXPECT_FALSE(import("", {.kind = 'T'}));
    t.offerFile(t.folder / "missing.tma");
    EXPECT_FALSE(importDataSource(t.parts, &t.ui, 'R'));
    expectUntouched(before);
}

TEST_F(SourceImportTest, EveryQuestionCanBeCancelled) {
    const auto before = t.files();
    EXPECT_FALSE(importDataSource(t.parts, &t.ui, 'R'));  // no file
    EXPECT_FALSE(importDataSource(t.parts, nullptr, 'R'));
    EXPECT_FALSE(import(otherDocument(), {.row = -1}));
    EXPECT_FALSE(import(otherDocument(), {.conversions = Button::Cancel}));
    t.offerFile(t.otherFile(otherDocument()));
    t.ui.rows = {0};
    t.ui.queued = {Button::Yes, Button::Cancel};
    EXPECT_FALSE(importDataSource(t.parts, &t.ui, 'R'));
    expectUntouched(before);
}

TEST_F(SourceImportTest, EqualMeasurementNamesAreAllowedWhereTheyAreNotChecked) {
    EXPECT_TRUE(import(otherDocument()));
    EXPECT_THAT(t.read(groupFile('D', 3)), HasSubstr("D-3\\MN-1-2:ALPHA;"));
    EXPECT_FALSE(t.ui.hasBox(455));
    EXPECT_FALSE(t.ui.hasBox(456));
}

TEST_F(SourceImportTest, EqualMeasurementNamesAreRefusedWhereTheyAreChecked) {
    t.measurements.setChecking(true, false);
    const auto before = t.files();
    EXPECT_FALSE(import(otherDocument()));
    ASSERT_EQ(t.ui.countBoxes(455), 1);
    EXPECT_THAT(t.ui.boxes.back().text, HasSubstr("'ALPHA' is already being used in stream #1"));
    expectUntouched(before);
    // With a prefix they are other names.
    EXPECT_TRUE(import(otherDocument(), {.prefix = "X_"}));
    EXPECT_TRUE(t.measurements.checking());
}

TEST_F(SourceImportTest, ANameOf33CharactersIsCutTo32AndLogged) {
    EXPECT_TRUE(import(replaceAll(otherDocument(), ":Pod;", ":" + kName33 + ";")));
    EXPECT_THAT(t.read(groupFile('T', 3)), HasSubstr("T-3\\ID:" + kName33.substr(0, 32) + ";"));
    ASSERT_FALSE(t.ui.logs.empty());
    EXPECT_THAT(t.ui.logs.at(0).text, HasSubstr("This field can only be 32 characters long."));
    EXPECT_EQ(t.ui.shown.size(), 1U);
}

TEST_F(SourceImportTest, MeasurementNamesThatGetTooLongStopTheImport) {
    const auto before = t.files();
    EXPECT_FALSE(import(otherDocument(), {.prefix = std::string(31, 'p')}));
    EXPECT_TRUE(t.ui.hasText("would be longer than 32 characters"));
    expectUntouched(before);
}

// --- broken files ---------------------------------------------------------------------------

TEST_F(SourceImportTest, ACutOffFileIsImportedWholeOrNotAtAll) {
    const auto text = otherDocument();
    std::unique_ptr<test::SourceStage> holder;
    for (std::size_t length = 0; length < text.size(); ++length) {
        if (holder == nullptr) {
            holder = std::make_unique<test::SourceStage>();
            holder->open("G\\106:09;\r\nG\\DSI\\N:0;\r\n");
        }
        auto& stage = *holder;
        stage.ui.boxes.clear();
        stage.ui.rows = {0};
        stage.ui.queued = {Button::Yes, Button::No};
        stage.offerFile(stage.otherFile(text.substr(0, length)));
        const auto before = stage.files();
        const bool imported = importDataSource(stage.parts, &stage.ui, 'R');
        // A file that ends within a command is refused; one that ends behind one is shorter.
        const auto rest = text.find_last_of(';', length == 0 ? 0 : length - 1);
        const auto tail = rest == std::string::npos || rest >= length
                              ? text.substr(0, length)
                              : text.substr(rest + 1, length - rest - 1);
        const bool cut = !trim(tail).empty();
        EXPECT_EQ(imported, !cut &&
                                text.substr(0, length).find("T-1\\ID:Pod;") != std::string::npos &&
                                !(length >= text.find("M-1\\ID:Pod;") + 11 &&
                                  length < text.find("M-1\\BB\\DLN:Pod Link;") + 20))
            << length;
        EXPECT_EQ(stage.ui.countBoxes(157), cut ? 1 : 0) << length;
        if (!imported) {
            EXPECT_EQ(stage.files(), before) << length;
            EXPECT_FALSE(stage.document.changed) << length;
        } else {
            EXPECT_EQ(listDataSources(stage.context, nullptr), 1) << length;
            EXPECT_TRUE(stage.has(groupFile('T', 1))) << length;
            holder.reset();
        }
    }
}

TEST_F(SourceImportTest, ACancelAnywhereLeavesTheDocumentAsItWas) {
    std::string text = otherDocument();
    for (int i = 3; i < 400; ++i) {
        text += formatPrintf("D-1\\MN-1-%d:MEAS%d;\nC-%d\\DCN:MEAS%d;\nC-%d\\DCT:NON;\n", i, i, i,
                             i, i);
    }
    const auto before = t.files();
    bool finished = false;
    int cancelled = 0;
    for (int poll = 1; poll < 400 && !finished; poll += poll < 20 ? 1 : 3) {
        t.ui.polls = 0;
        t.ui.cancelAtPoll = poll;
        finished = import(text);
        if (!finished) {
            ++cancelled;
            ASSERT_EQ(t.files(), before) << poll;
            ASSERT_FALSE(t.conversions.locateDefinition("DELTA").found);
        }
    }
    EXPECT_TRUE(finished);
    EXPECT_GT(cancelled, 15);
}

TEST_F(SourceImportTest, AFileThatCanNotBeWrittenLeavesTheDocumentAsItWas) {
    // Where staged files, new files and raw commands go stands a folder.
    for (const auto& name : {"STAGED" + groupFile('P', 3), groupFile('G') + ".new",
                             std::string("[kavu]00000001.C_O.new"), std::string(working::kData1)}) {
        const auto before = t.files();
        const auto obstacle = t.store.pathOf(name);
        ASSERT_TRUE(makeFolder(obstacle).ok());
        EXPECT_FALSE(import(otherDocument())) << name;
        ASSERT_TRUE(deleteFolder(obstacle).ok());
        expectUntouched(before);
    }
}

TEST_F(SourceImportTest, WhereNothingCanBeKeptTheDocumentStaysAsItWas) {
    const auto before = t.files();
    t.write("TEMP0", "a file in the way of the folder");
    EXPECT_FALSE(import(otherDocument()));
    ASSERT_TRUE(deleteFile(t.store.pathOf("TEMP0")).ok());
    expectUntouched(before);
}

TEST_F(SourceImportTest, AFailureOfTheConversionsTakesTheGroupsBack) {
    const auto before = t.files();
    t.steps.loadConversions = [](UserInterface*, int) { return false; };
    EXPECT_FALSE(import(otherDocument()));
    expectUntouched(before);
    EXPECT_TRUE(t.conversions.locateDefinition("ALPHA").found);
}

TEST_F(SourceImportTest, WhereNoIndexIsFreeNothingIsWritten) {
    for (int index = 3; index <= 99; ++index) {
        t.write(groupFile('P', index), formatPrintf("P-%d\\DLN:X%d;\r\n", index, index));
    }
    const auto before = t.files();
    EXPECT_FALSE(import(otherDocument()));
    EXPECT_TRUE(t.ui.hasBox(303));
    expectUntouched(before);
}

TEST_F(SourceImportTest, IndicesAndCountsOutOfAllReasonAreHarmless) {
    EXPECT_TRUE(
        import("T-1\\ID:A;\nT-0\\ID:Z;\nT-100\\ID:Q;\nT-99999999999999999999\\ID:W;\n"
               "M-1\\ID:A;\nM-1\\SI\\N:2147483647;\nM-1\\SI\\DLN-99999:X;\n"
               "M-1\\SI\\DLN-1:L;\nP-100\\DLN:L;\nP-7\\DLN:L;\nD-7\\DLN:L;\n"
               "C-99999999999\\DCN:A;\nC-\\DCN:B;\n\\\\;\n:;\n"));
    EXPECT_EQ(t.read(groupFile('P', 3)), "P-3\\DLN:L;\r\n");
    EXPECT_EQ(t.read(groupFile('D', 3)), "D-3\\DLN:L;\r\n");
}

}  // namespace
}  // namespace kavu
