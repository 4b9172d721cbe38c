#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/GroupFiles.h"
#include "core/document/OpenDocument.h"
#include "groups/DataSources.h"
#include "groups/SourceEdit.h"
#include "support/TestApplication.h"

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(SourceStepsTest, ANewDocumentAsksForItsFirstStream) {
    TestApplication t;
    auto& context = t.application.context();
    t.ui.byId[146] = Button::Yes;
    t.ui.otherwise = Button::Yes;
    t.ui.choices = {1, 1};  // tape, 1553
    ASSERT_TRUE(loadDocument(context, &t.ui, {}, {.create = true, .makeTemplate = true}));
    std::vector<std::string> links;
    EXPECT_TRUE(gatherDataLinks(context, nullptr, links));
    EXPECT_THAT(links, ElementsAre("1553 Stream 1"));
    EXPECT_EQ(streamKindOfLink(context, nullptr, links.at(0)), StreamKind::Bus);
    EXPECT_EQ(readFile(context.store.pathOf(groupFile('R', 1))), "R-1\\ID:Tape Data Source;\r\n");
    EXPECT_TRUE(context.document.changed);
}

TEST(SourceStepsTest, AnImportedSourceIsSavedWithItsConversions) {
    TestApplication t;
    auto& context = t.application.context();
    writeFile(t.folder / "a.tma", "G\\106:09;\nG\\DSI\\N:0;\nC-1\\DCN:OLD;\nC-1\\DCT:NON;\n");
    writeFile(t.folder / "b.tma",
              "T-1\\ID:Pod;\nM-1\\ID:Pod;\nM-1\\BB\\DLN:L;\nP-1\\DLN:L;\nP-1\\TF:ONE;\n"
              "D-1\\DLN:L;\nD-1\\MN-1-1:NEW;\nC-1\\DCN:NEW;\nC-1\\DCT:NON;\n");
    ASSERT_TRUE(loadDocument(context, &t.ui, t.folder / "a.tma"));
    t.ui.files = {FileChoice{t.folder / "b.tma", 1}};
    t.ui.rows = {0};
    t.ui.queued = {Button::Yes, Button::No};
    SourceParts parts{context, t.application.conversions(), t.application.measurementNames()};
    ASSERT_TRUE(importDataSource(parts, &t.ui, 'R'));
    ASSERT_TRUE(saveDocumentTo(context, &t.ui, t.folder / "c.tma"));
    const auto saved = readFile(t.folder / "c.tma");
    EXPECT_THAT(saved, HasSubstr("C-1\\DCN:OLD;"));
    EXPECT_THAT(saved, HasSubstr("C-2\\DCN:NEW;"));
    EXPECT_THAT(saved, HasSubstr("D-1\\MN-1-1:NEW;"));
}

}  // namespace
}  // namespace kavu::test
