// Undo of the operations on a document: the file saved after it is the file from before the
// operation, byte for byte.
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "conversion/DefinitionEdit.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "core/document/Operation.h"
#include "groups/AGroup.h"
#include "groups/AttributeEdit.h"
#include "groups/DataSources.h"
#include "groups/GGroup.h"
#include "groups/GroupText.h"
#include "groups/MGroup.h"
#include "groups/MeasurementNames.h"
#include "groups/Migration.h"
#include "groups/RGroup.h"
#include "groups/SourceEdit.h"
#include "groups/TGroup.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/write/PcmSave.h"
#include "support/SourceStage.h"
#include "support/TestApplication.h"

#include <functional>

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

std::string otherFile() {
    return "G\\106:09;\nG\\DSI\\N:1;\nG\\DSI-1:Pod;\nG\\DST-1:RF;\nT-1\\ID:Pod;\nM-1\\ID:Pod;\n"
           "M-1\\BB\\DLN:Pod Link;\nP-1\\DLN:Pod Link;\nP-1\\TF:ONE;\nD-1\\DLN:Pod Link;\n"
           "D-1\\MN\\N-1:1;\nD-1\\MN-1-1:DELTA;\nC-1\\DCN:DELTA;\nC-1\\DCT:NON;\n";
}

/// The sources of the stage, with a first stream that can be loaded whole.
std::string document() {
    auto text = threeSources();
    const std::string stream = "P-1\\TF:ONE;\r\n";
    text.insert(text.find(stream) + stream.size(),
                "P-1\\D2:64000;P-1\\F1:16;P-1\\MF\\N:1;P-1\\MF1:8;P-1\\MF2:128;P-1\\MF4:24;"
                "P-1\\MF5:111110101111001100100000;");
    const std::string names = "D-1\\MN-1-2:BETA;\r\n";
    text.insert(text.find(names) + names.size(),
                "D-1\\LT-1-1:MF;D-1\\MF-1-1:2;D-1\\LT-1-2:MF;D-1\\MF-1-2:3;");
    return text;
}

class Stage : public TestApplication {
  public:
    Stage() {
        writeFile(folder / "in.tma", document());
        writeFile(folder / "other.tma", otherFile());
        EXPECT_TRUE(loadDocument(context(), &ui, folder / "in.tma"));
        // What the first save writes is what every later one has to be.
        before = saved();
        ui.otherwise = Button::Yes;
    }
    DocumentContext& context() { return application.context(); }
    DocumentHistory& history() { return context().history; }
    SourceParts parts() {
        return {context(), application.conversions(), application.measurementNames()};
    }
    std::string saved() {
        EXPECT_TRUE(saveDocumentTo(context(), &ui, folder / "out.tma"));
        return readFile(folder / "out.tma");
    }

    std::string before;
};

struct Operation {
    std::string name;  ///< of the test
    OperationId id;
    std::function<bool(Stage&)> run;
};

std::vector<Operation> operations() {
    return {
        {"DeleteSource", OperationId::DeleteSource,
         [](Stage& t) {
             auto parts = t.parts();
             return deleteDataSource(parts, &t.ui, "First");
         }},
        {"CopySource", OperationId::CopySource,
         [](Stage& t) {
             auto parts = t.parts();
             t.ui.texts = {"Twin", "X_", ""};
             t.ui.queued = {Button::Yes, Button::Yes};
             return copyDataSource(parts, &t.ui, "First");
         }},
        {"ImportSource", OperationId::ImportSource,
         [](Stage& t) {
             auto parts = t.parts();
             t.ui.files = {FileChoice{t.folder / "other.tma", 1}};
             t.ui.rows = {0};
             t.ui.queued = {Button::Yes, Button::No};
             return importDataSource(parts, &t.ui, 'R');
         }},
        {"RenameSource", OperationId::RenameSource,
         [](Stage& t) {
             auto parts = t.parts();
             return renameDataSource(parts, &t.ui, "First", "Primus");
         }},
        {"RenameLink", OperationId::RenameLink,
         [](Stage& t) {
             auto parts = t.parts();
             return renameDataLink(parts, &t.ui, "Link A", "Link Z");
         }},
        {"CreateSource", OperationId::CreateSource,
         [](Stage& t) {
             auto parts = t.parts();
             t.ui.texts = {"New"};
             t.ui.choices = {0, 0};
             return createDataSource(parts, &t.ui);
         }},
        {"CreateStream", OperationId::CreateSource,
         [](Stage& t) {
             t.ui.choices = {0};
             return createStream(t.context(), &t.ui, "Second");
         }},
        {"SetAttributes", OperationId::SetAttribute,
         [](Stage& t) {
             const AttributeChange changes[] = {{*parseCommandCode("G\\PN"), "Other"},
                                                {*parseCommandCode("T-1\\RF1"), "1450.5"}};
             return setAttributes(t.context(), &t.ui, changes);
         }},
        {"StoreGeneral", OperationId::EditGeneral,
         [](Stage& t) {
             auto group = readGeneral(t.context(), &t.ui);
             group->record.set("PN", "Sheet");
             return storeGeneral(t.context(), &t.ui, *group);
         }},
        {"StoreTransmission", OperationId::EditTransmission,
         [](Stage& t) {
             auto group = readTransmission(t.context(), &t.ui, "Second");
             group->record.set("TID", "Sheet");
             return storeTransmission(t.context(), &t.ui, *group);
         }},
        {"StoreRecorder", OperationId::EditRecorder,
         [](Stage& t) {
             auto group = readRecorder(t.context(), &t.ui, "Recorder");
             group->record.set("R1", "Sheet");
             return storeRecorder(t.context(), &t.ui, *group);
         }},
        {"StoreMultiplex", OperationId::EditMultiplex,
         [](Stage& t) {
             MultiplexGroup group;
             const int index = multiplexIndex(t.context(), &t.ui, "First");
             loadMultiplex(t.context(), &t.ui, "First", index, group);
             group.record.set("BB3", "1234");
             return storeMultiplex(t.context(), &t.ui, group);
         }},
        {"StorePam", OperationId::EditPam,
         [](Stage& t) {
             PamGroup group;
             const bool loaded = loadPam(t.context(), &t.ui, {.link = "Link B"}, group);
             group.record.set("A5", "900");
             return loaded && storePam(t.context(), &t.ui, group);
         }},
        {"StoreStream", OperationId::EditStream,
         [](Stage& t) {
             auto& format = t.application.pcmFormat();
             if (!loadPcmFormat(format, &t.ui, t.application.pcmSteps(), "Link A")) {
                 return false;
             }
             format.comment = "Sheet";
             format.changed = true;
             return savePcmFormat(format, &t.ui);
         }},
        {"StoreConversion", OperationId::EditConversion,
         [](Stage& t) {
             auto edit =
                 DefinitionEdit::open(t.context(), t.application.conversions(), &t.ui, "ALPHA");
             return edit && edit->setValues(&t.ui, {{"MN1", "Sheet"}}) && edit->store(&t.ui);
         }},
        {"StoreHardwareText", OperationId::EditHardware,
         [](Stage& t) { return storeGroupText(t.context(), &t.ui, {.letter = 'H'}, "H\\NEW:1;"); }},
        {"StoreVendorText", OperationId::EditVendor,
         [](Stage& t) {
             const GroupText vendor{.letter = 'V', .index = 1, .source = "First"};
             return storeGroupText(t.context(), &t.ui, vendor, "V-1\\ID:First;\r\nV-1\\VN:ABC;");
         }},
        {"RenameConversion", OperationId::RenameConversion,
         [](Stage& t) {
             t.ui.texts = {"HEADING 2"};
             return renameDefinitionAsked(t.context(), t.application.conversions(), &t.ui,
                                          "HEADING")
                 .has_value();
         }},
        {"DeleteConversion", OperationId::DeleteConversion,
         [](Stage& t) {
             return deleteDefinitionAsked(t.context(), t.application.conversions(), &t.ui, "ALPHA");
         }},
        {"ChangeEdition", OperationId::ChangeEdition,
         [](Stage& t) {
             return t.application.changeVersions(&t.ui, {2011, 2, 2004});
         }},
        {"ChangeEditionOfTheStreams", OperationId::ChangeEdition,
         [](Stage& t) {
             return t.application.changeVersions(&t.ui, {2011, 2, 2011});
         }},
    };
}

class UndoTest : public testing::TestWithParam<std::size_t> {
  protected:
    Operation operation = operations().at(GetParam());
};

TEST_P(UndoTest, GivesBackTheBytesOfBefore) {
    Stage t;
    const auto names = t.application.measurementNames().names();
    ASSERT_TRUE(operation.run(t));
    EXPECT_EQ(t.history().undoName(), operationName(operation.id));
    EXPECT_EQ(t.history().levels(), 1U) << "one operation, one level";
    EXPECT_TRUE(t.context().document.changed);
    const auto namesAfter = t.application.measurementNames().names();

    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_FALSE(t.context().document.changed) << "it is what is on the disk";
    EXPECT_EQ(t.application.measurementNames().names(), names);
    EXPECT_EQ(t.saved(), t.before);

    ASSERT_TRUE(t.history().redo(&t.ui));
    EXPECT_TRUE(t.context().document.changed);
    EXPECT_EQ(t.application.measurementNames().names(), namesAfter);
    const auto after = t.saved();
    EXPECT_NE(after, t.before);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_EQ(t.saved(), t.before);

    // The settings of the editions are none of the document, and do not come back with it.
    t.context().settings.writeInteger("IRIGOutputMethod", 1);
    ASSERT_TRUE(loadDocument(t.context(), &t.ui, t.folder / "out.tma"));
    EXPECT_FALSE(t.history().canUndo());
    EXPECT_EQ(t.saved(), t.before) << "and so it is when it is opened again";
}

TEST_P(UndoTest, ComesAfterASaveAsWell) {
    Stage t;
    ASSERT_TRUE(operation.run(t));
    const auto after = t.saved();
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_TRUE(t.context().document.changed);
    EXPECT_EQ(t.saved(), t.before);
    ASSERT_TRUE(t.history().redo(&t.ui));
    EXPECT_EQ(t.saved(), after);
}

INSTANTIATE_TEST_SUITE_P(Operations, UndoTest, testing::Range(std::size_t{0}, operations().size()),
                         [](const auto& about) { return operations().at(about.param).name; });

TEST(UndoSequenceTest, GoesThroughAllOperationsBackAndForth) {
    Stage t;
    std::vector<std::string> states{t.before};
    for (const auto* const name : {"CopySource", "RenameLink", "ImportSource", "DeleteSource"}) {
        for (auto& operation : operations()) {
            if (operation.name == name) {
                ASSERT_TRUE(operation.run(t)) << name;
                states.push_back(t.saved());
            }
        }
    }
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = states.size() - 1; i-- > 0;) {
            ASSERT_TRUE(t.history().undo(&t.ui));
            EXPECT_EQ(t.saved(), states[i]) << "undo to " << i;
        }
        for (std::size_t i = 1; i < states.size(); ++i) {
            ASSERT_TRUE(t.history().redo(&t.ui));
            EXPECT_EQ(t.saved(), states[i]) << "redo to " << i;
        }
    }
}

TEST(UndoSequenceTest, TheEditionComesBackWithItsFiles) {
    Stage t;
    const int edition = t.context().document.version;
    ASSERT_TRUE(t.application.changeVersions(&t.ui, {2011, 2, 2004}));
    EXPECT_EQ(t.context().document.version, 2004);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_EQ(t.context().document.version, edition);
    ASSERT_TRUE(t.history().redo(&t.ui));
    EXPECT_EQ(t.context().document.version, 2004);
}

TEST(UndoSequenceTest, AChangeOfEditionThatFailsLeavesTheDocumentAsItWas) {
    Stage t;
    auto& context = t.context();
    writeFile(t.folder / "in.tma",
              "G\\106:99;\nG\\DSI\\N:2;\nG\\DSI-1:A;\nG\\DST-1:RF;\nG\\DSI-2:B;\n"
              "G\\DST-2:TAP;\nT-1\\ID:A;\nT-1\\RF4:OTHR;\nR-1\\ID:B;\nR-1\\TC1:OTHR;\n");
    ASSERT_TRUE(loadDocument(context, &t.ui, t.folder / "in.tma"));
    const auto before = t.saved();
    ASSERT_NE(before.find("T-1\\RF4:OTHR;"), std::string::npos);
    // The general file is the last to change; those of the sources have by then.
    const auto obstacle = context.store.pathOf("[kavu]GTMP.G.new");
    ASSERT_TRUE(makeFolder(obstacle).ok());
    (void)t.application.changeVersions(&t.ui, {2011, 2, 1996});
    ASSERT_TRUE(deleteFolder(obstacle).ok());
    EXPECT_TRUE(context.document.open);
    EXPECT_FALSE(context.document.changed);
    EXPECT_EQ(context.document.version, 1999);
    EXPECT_FALSE(t.history().canUndo());
    EXPECT_EQ(t.saved(), before);
    // Without the obstacle it goes well, and back.
    context.settings.writeInteger("IRIGOutputMethod", 1);
    ASSERT_TRUE(t.application.changeVersions(&t.ui, {2011, 2, 1996}));
    EXPECT_NE(readFile(context.store.pathOf(groupFile('T', 1))).find("RF4:OTHER;"),
              std::string::npos);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_EQ(context.document.version, 1999);
    EXPECT_EQ(t.saved(), before);
}

TEST(UndoSequenceTest, AChangeOfEditionThatIsCancelledLeavesTheDocumentAsItWas) {
    Stage t;
    const int edition = t.context().document.version;
    t.ui.polls = 0;
    t.ui.cancelAtPoll = 1;
    (void)t.application.changeVersions(&t.ui, {2011, 2, 2004});
    t.ui.cancelAtPoll = 0;
    EXPECT_GT(t.ui.polls, 0);
    EXPECT_TRUE(t.context().document.open);
    EXPECT_EQ(t.context().document.version, edition);
    EXPECT_EQ(t.saved(), t.before);
}

TEST(UndoSequenceTest, ALookAtANewRecordIsNoOperation) {
    Stage t;
    auto& conversions = t.application.conversions();
    bool isTemplate = false;
    ASSERT_TRUE(conversions.openDefinitionForEdit(&t.ui, "BETA", isTemplate));
    EXPECT_TRUE(isTemplate);
    EXPECT_TRUE(conversions.locateDefinition("BETA").found);
    EXPECT_FALSE(t.context().document.changed);
    EXPECT_FALSE(t.history().canUndo());
}

TEST(UndoSequenceTest, ALookIsNoOperation) {
    Stage t;
    auto& context = t.context();
    EXPECT_TRUE(readGeneral(context, &t.ui));
    EXPECT_TRUE(readTransmission(context, &t.ui, "First"));
    EXPECT_TRUE(readRecorder(context, &t.ui, "Recorder"));
    MultiplexGroup multiplex;
    loadMultiplex(context, &t.ui, "First", 1, multiplex);
    GroupText vendor;
    EXPECT_TRUE(readGroupText(context, &t.ui, 'V', "First", vendor));
    auto& format = t.application.pcmFormat();
    EXPECT_TRUE(loadPcmFormat(format, &t.ui, t.application.pcmSteps(), "Link A"));
    format.changed = false;
    EXPECT_TRUE(savePcmFormat(format, &t.ui));
    format.closeFormat();
    for (const auto* const name : {"ALPHA", "BETA"}) {
        auto edit = DefinitionEdit::open(context, t.application.conversions(), &t.ui, name);
        EXPECT_TRUE(edit && edit->cancel(&t.ui)) << name;
    }
    EXPECT_FALSE(context.document.changed);
    EXPECT_FALSE(t.history().canUndo());
    EXPECT_EQ(t.saved(), t.before);
}

TEST(UndoSequenceTest, AStreamThatIsStoredTwiceIsTwoLevels) {
    Stage t;
    auto& format = t.application.pcmFormat();
    ASSERT_TRUE(loadPcmFormat(format, &t.ui, t.application.pcmSteps(), "Link A"));
    const auto store = [&](const char* comment) {
        format.comment = comment;
        format.changed = true;
        EXPECT_TRUE(savePcmFormat(format, &t.ui));
        return t.saved();
    };
    const auto first = store("First");
    EXPECT_EQ(t.history().levels(), 1U) << "its P and its D group are one";
    store("Second");
    EXPECT_EQ(t.history().levels(), 2U);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_FALSE(format.loaded()) << "its files tell of another one";
    EXPECT_EQ(t.saved(), first);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_EQ(t.saved(), t.before);
}

TEST(UndoSequenceTest, KnowsTheRecordsThatAreThereAgain) {
    Stage t;
    auto& conversions = t.application.conversions();
    auto imports = operations().at(2);
    ASSERT_TRUE(imports.run(t));
    EXPECT_TRUE(conversions.locateDefinition("DELTA").found);
    ASSERT_TRUE(t.history().undo(&t.ui));
    EXPECT_FALSE(conversions.locateDefinition("DELTA").found);
    EXPECT_TRUE(conversions.locateDefinition("ALPHA").found);
    EXPECT_EQ(conversions.readEuComment("HEADING", false), "true\r\nheading");
    ASSERT_TRUE(t.history().redo(&t.ui));
    EXPECT_TRUE(conversions.locateDefinition("DELTA").found);
}

}  // namespace
}  // namespace kavu::test
