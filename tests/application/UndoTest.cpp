// Undo of the operations on a document: the file that is saved after it is the file from before
// the operation, byte for byte.
#include "application/Application.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "core/document/Operation.h"
#include "groups/DataSources.h"
#include "groups/MeasurementNames.h"
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
