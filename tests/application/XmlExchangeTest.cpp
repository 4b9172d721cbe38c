#include "application/DocumentService.h"
#include "application/XmlExchange.h"
#include "core/document/OpenDocument.h"
#include "support/TestApplication.h"

#include <gmock/gmock.h>

namespace kavu::test {
namespace {

using testing::HasSubstr;

constexpr const char* kTwoLinks =
    "G\\PN:Two;G\\106:09;G\\DSI\\N:1;G\\DSI-1:S;G\\DST-1:RF;T-1\\ID:S;M-1\\ID:S;M-1\\BSG1:PCM;"
    "M-1\\BB\\DLN:A;M-1\\SI\\N:1;M-1\\SI\\DLN-1:B;P-1\\DLN:A;P-1\\XX:lost;P-2\\DLN:B;P-2\\XX:lost;"
    "P-2\\YY:lost;";

class XmlExchangeTest : public testing::Test {
  public:
    void openDocument(const char* text) {
        writeFile(app.folder / "in.tma", text);
        ASSERT_TRUE(openFromName(app.application.context(), &app.ui, app.folder / "in.tma"));
        app.application.context().document.changed = false;
    }

    TestApplication app;
};

TEST_F(XmlExchangeTest, TakesTheFileOfAnUnchangedDocumentAndBuildsAnother) {
    openDocument(kTwoLinks);
    {
        DocumentSnapshot snapshot(app.application, &app.ui);
        ASSERT_TRUE(snapshot.make("Title"));
        EXPECT_TRUE(snapshot.isDocumentFile());
        EXPECT_EQ(snapshot.path(), app.folder / "in.tma");
    }
    app.application.context().document.changed = true;
    std::string built;
    {
        DocumentSnapshot snapshot(app.application, &app.ui);
        ASSERT_TRUE(snapshot.make("Title"));
        EXPECT_FALSE(snapshot.isDocumentFile());
        built = snapshot.path();
        EXPECT_THAT(readFile(built), HasSubstr("P-2\\YY:lost;"));
    }
    EXPECT_FALSE(fileExists(built)) << "it goes with the object";
    EXPECT_TRUE(app.application.context().document.changed);
}

TEST_F(XmlExchangeTest, BuildsTheDocumentAnewIfAnotherProgramHasChangedItsFile) {
    openDocument(kTwoLinks);
    writeFile(app.folder / "in.tma", "G\\PN:Foreign;");
    DocumentSnapshot snapshot(app.application, &app.ui);
    ASSERT_TRUE(snapshot.make("Title"));
    EXPECT_FALSE(snapshot.isDocumentFile());
    EXPECT_THAT(readFile(snapshot.path()), HasSubstr("G\\PN:Two;"));
}

TEST_F(XmlExchangeTest, CountsTheLossesOfTheChosenLinks) {
    openDocument(kTwoLinks);
    XmlExport exported(app.application, &app.ui);
    ASSERT_TRUE(exported.open());
    EXPECT_THAT(exported.links(), testing::ElementsAre("A", "B"));
    EXPECT_EQ(exported.proposedOutput(), app.folder / "in.xml");
    const auto all = exported.losses(&app.ui, XmlDialect::Classic, {});
    ASSERT_TRUE(all);
    EXPECT_EQ(all->summary, "5 commands of the document are lost in this form:");
    ASSERT_EQ(all->rows.size(), 3U);
    EXPECT_EQ(all->rows[0].what, "P-1\\XX");
    EXPECT_EQ(all->rows[0].count, "2");
    EXPECT_EQ(all->rows[1].what, "P-1\\DLN") << "groups of a name alone leave no trace";
    EXPECT_EQ(all->rows[2].what, "P-2\\YY");
    EXPECT_TRUE(app.ui.boxes.empty()) << "a count asks and reports nothing";
}

TEST_F(XmlExchangeTest, CountsAgainAfterACountThatWasCancelled) {
    openDocument(kTwoLinks);
    XmlExport exported(app.application, &app.ui);
    ASSERT_TRUE(exported.open());
    app.ui.cancelAtPoll = app.ui.polls + 1;
    const auto cancelled = exported.losses(&app.ui, XmlDialect::Classic, {});
    app.ui.cancelAtPoll = 0;
    const auto counted = exported.losses(&app.ui, XmlDialect::Classic, {});
    ASSERT_TRUE(counted);
    EXPECT_EQ(counted->rows.size(), 3U);
    EXPECT_FALSE(cancelled) << "a count that was cut short is no count";
}

TEST_F(XmlExchangeTest, ImportsAndOpensWhatItHasWritten) {
    writeFile(app.folder / "in.xml", "<Tmats><ProgramName>New</ProgramName></Tmats>");
    XmlImport import(app.application, app.folder / "in.xml");
    ASSERT_TRUE(import.read(&app.ui));
    EXPECT_EQ(import.fault(), "");
    EXPECT_EQ(import.proposedDialect(), XmlDialect::Classic);
    EXPECT_FALSE(import.open(&app.ui)) << "nothing is written yet";
    ASSERT_TRUE(import.run(&app.ui, XmlDialect::Classic, import.proposedOutput()));
    EXPECT_THAT(import.said(), testing::Contains("Creating TMATS 'G' group..."));
    ASSERT_TRUE(import.open(&app.ui));
    EXPECT_EQ(app.application.context().document.path, app.folder / "in.tma");
}

TEST_F(XmlExchangeTest, EndsAnImportThatIsCancelledWithoutAFile) {
    writeFile(app.folder / "in.xml", "<Tmats><ProgramName>New</ProgramName></Tmats>");
    XmlImport import(app.application, app.folder / "in.xml");
    ASSERT_TRUE(import.read(&app.ui));
    app.ui.cancelAtPoll = app.ui.polls + 1;
    EXPECT_FALSE(import.run(&app.ui, XmlDialect::Classic, app.folder / "out.tma"));
    EXPECT_FALSE(fileExists(app.folder / "out.tma"));
    app.ui.cancelAtPoll = app.ui.polls + 1;
    EXPECT_FALSE(XmlImport(app.application, app.folder / "in.xml").read(&app.ui));
}

TEST_F(XmlExchangeTest, RefusesTheInputAndTheOpenDocumentAsOutput) {
    openDocument(kTwoLinks);
    writeFile(app.folder / "in.xml", "<Tmats/>");
    const auto& document = app.application.context().document;
    const auto refusal = [&](const char* output) {
        return whyNotOutput(document, app.folder / "in.xml", app.folder / output);
    };
    EXPECT_THAT(refusal("in.xml"), HasSubstr("is the input"));
    EXPECT_THAT(refusal("in.tma"), HasSubstr("is open in the editor"));
    std::filesystem::create_symlink(app.folder / "in.tma", app.folder / "link.tma");
    EXPECT_THAT(refusal("link.tma"), HasSubstr("is open in the editor"));
    EXPECT_EQ(refusal("other.tma"), "");
}

}  // namespace
}  // namespace kavu::test
