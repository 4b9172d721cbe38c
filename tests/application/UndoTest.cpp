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
#include "groups/AttributeEdit.h"
#include "groups/DataSources.h"
#include "groups/GroupRecord.h"
#include "groups/GroupText.h"
#include "groups/MeasurementNames.h"
#include "groups/Migration.h"
#include "groups/SourceEdit.h"
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

class Stage : public TestApplication {
  public:
    Stage() {
        writeFile(folder / "in.tma", threeSources());
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
             return renameDataLink(parts, &t.ui, "Link A", "Link Z", true);
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
         [](Stage& t) { return storeGroup(t.context(), &t.ui, 'G', 0, "G\\PN:Sheet;\r\n", {}); }},
        {"StoreGroupText", OperationId::EditVendor,
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
