#include "core/document/BuildDocument.h"
#include "core/document/DocumentHistory.h"
#include "core/document/DocumentVersion.h"
#include "core/document/OpenDocument.h"
#include "core/talk/RecentFiles.h"
#include "support/TestContext.h"

#include <filesystem>
#include <sys/stat.h>

namespace kavu::test {
namespace {

class OpenDocumentTest : public ::testing::Test {
  protected:
    std::string file(const std::string& name, std::string_view bytes) {
        writeFile(t.folder / name, bytes);
        return t.folder / name;
    }
    TestContext t;
};

TEST_F(OpenDocumentTest, OpensAFileWithNoStepInstalled) {
    const auto path = file("a.tma", "G\\PN:A;");
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_TRUE(t.document.open);
    EXPECT_FALSE(t.document.changed);
    EXPECT_EQ(t.document.kind, DocumentKind::TmatsFile);
    EXPECT_EQ(t.document.path, path);
    EXPECT_EQ(t.document.version, 2011);
    EXPECT_EQ(t.ui.progressOpened, t.ui.progressClosed);
}

TEST_F(OpenDocumentTest, FileOfOnlyCommentsOpensAsAnEmptyDocument) {
    EXPECT_TRUE(loadDocument(t.context, &t.ui, file("a.tma", "COMMENT: a;\nCOMMENT: b;")));
    EXPECT_TRUE(t.document.open);
    EXPECT_FALSE(t.has("[kavu]GTMP.G"));
}

TEST_F(OpenDocumentTest, AFailedLoadLeavesNoHalfOpenDocument) {
    EXPECT_FALSE(loadDocument(t.context, &t.ui, file("a.tma", "G\\PN:A;G\\TA")));
    EXPECT_FALSE(t.document.open);
    EXPECT_EQ(t.document.kind, DocumentKind::None);
    EXPECT_FALSE(t.has("[kavu]GTMP.G"));
    EXPECT_FALSE(t.has("DATA1.TMP"));
}

TEST_F(OpenDocumentTest, AFailedStepFailsTheLoad) {
    const auto path = file("a.tma", "G\\PN:A;");
    const auto fails = [](UserInterface*) { return false; };
    t.steps.gatherMeasurementNames = fails;
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    t.steps = {};
    t.steps.loadConversions = [](UserInterface*, int) { return false; };
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    t.steps = {};
    t.steps.validateDataLinks = fails;
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    EXPECT_FALSE(t.document.open);
}

TEST_F(OpenDocumentTest, ConversionsAreReadForTheEditionOfTheFileAlsoWhenTheDocumentMoves) {
    std::vector<int> editions;
    int target = 2005;
    t.steps.loadConversions = [&](UserInterface*, int edition) {
        editions.push_back(edition);
        return true;
    };
    t.steps.detectVersions = [&](UserInterface*, int& input) {
        input = 2005;
        return target;
    };
    t.steps.migrate = [&](UserInterface*, int input, int to) { return input != to; };
    const auto path = file("a.tma", "G\\PN:A;");
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_FALSE(t.document.changed);
    t.document = {};
    target = 2009;
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_TRUE(t.document.changed);  // by the migration
    EXPECT_EQ(editions, (std::vector<int>{2005, 2005}));
}

TEST_F(OpenDocumentTest, AnEditionThatCanNotBeReadOrAMigrationThatFailsGivesTheLoadUp) {
    int target = 0;
    bool loaded = false;
    t.steps.detectVersions = [&](UserInterface*, int&) { return target; };
    t.steps.loadConversions = [&](UserInterface*, int) { return loaded = true; };
    t.steps.migrate = [](UserInterface*, int, int) { return std::nullopt; };
    const auto path = file("a.tma", "G\\PN:A;");
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    EXPECT_FALSE(loaded);
    EXPECT_FALSE(t.document.open);
    target = 2009;
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    EXPECT_TRUE(loaded);
    EXPECT_FALSE(t.document.open);
}

TEST_F(OpenDocumentTest, WhatIsReportedWhileLoadingIsShownOnceUnderTheFileName) {
    const auto path = file("a.tma", "G\\PN:A;");
    t.steps.gatherMeasurementNames = [&](UserInterface* parent) {
        t.messages.logText(parent, 79, "while gathering");
        return true;
    };
    t.steps.validateDataLinks = [&](UserInterface* parent) {
        t.messages.logText(parent, 79, "while validating");
        return true;
    };
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    ASSERT_EQ(t.ui.shown.size(), 1u);
    EXPECT_EQ(t.ui.shown[0].title, "KAVU-9 Error Messages");
    EXPECT_EQ(t.ui.shown[0].subtitle, "TMATS File: " + path);
    EXPECT_EQ(t.ui.shown[0].lines.at(2), "while gathering");
    EXPECT_EQ(t.ui.shown[0].lines.at(6), "while validating");
}

TEST_F(OpenDocumentTest, ALoadThatFailsShowsWhatItHasReportedAsWell) {
    const auto path = file("a.tma", "G\\PN:A;");
    t.steps.validateDataLinks = [&](UserInterface* parent) {
        t.messages.logText(parent, 79, "while validating");
        return false;
    };
    EXPECT_FALSE(loadDocument(t.context, &t.ui, path));
    ASSERT_EQ(t.ui.shown.size(), 1u);
    EXPECT_EQ(t.ui.shown[0].subtitle, "TMATS File: " + path);
}

TEST_F(OpenDocumentTest, OverLongFieldsGoToTheLogDuringALoad) {
    const auto path = file("a.tma", "G\\PN:ABCDEFG;");
    t.steps.validateDataLinks = [&](UserInterface* parent) {
        for (int i = 0; i < 3; ++i) {
            ByteSource source;
            EXPECT_TRUE(source.open(t.store.pathOf(working::kGeneral)).ok());
            EXPECT_EQ(t.reader.findField(parent, source, "G\\", "PN", 4), "ABCD");
        }
        return true;
    };
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    EXPECT_TRUE(t.ui.boxes.empty());
    EXPECT_EQ(t.ui.logs.size(), 1u);  // each field once per load
}

TEST_F(OpenDocumentTest, EmptyPathIsReported) {
    EXPECT_FALSE(loadDocument(t.context, &t.ui, ""));
    ASSERT_EQ(t.ui.boxes.size(), 1u);
    EXPECT_EQ(t.ui.boxes[0].text, "No pathname was entered");
    EXPECT_EQ(t.ui.boxes[0].title, "Unable To Open File");
}

TEST_F(OpenDocumentTest, NameFromOutsideLosesQuotesAndBlanksAndTriesExtensions) {
    file("flight.tmt", "G\\PN:A;");
    EXPECT_TRUE(openFromName(t.context, &t.ui, "  \"" + (t.folder / "flight") + "\" "));
    EXPECT_EQ(t.document.path, t.folder / "flight.tmt");
    file("flight.tma", "G\\PN:B;");
    EXPECT_TRUE(openFromName(t.context, &t.ui, t.folder / "flight"));
    EXPECT_EQ(t.document.path, t.folder / "flight.tma");
    EXPECT_FALSE(openFromName(t.context, &t.ui, t.folder / "none"));
    EXPECT_NE(t.ui.boxes.back().text.find("none'"), std::string::npos);
}

/// The present folder of the process, for the life of the object.
class PresentFolder {
  public:
    explicit PresentFolder(const std::string& path) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    PresentFolder(const PresentFolder&) = delete;
    PresentFolder& operator=(const PresentFolder&) = delete;
    ~PresentFolder() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_;
};

TEST_F(OpenDocumentTest, QuotesAndBlanksOfAFilesOwnNameStay) {
    for (const char* const name : {" flight.tma", "flight.tma ", "\"flight\".tma"}) {
        const auto path = file(name, "G\\PN:A;");
        EXPECT_TRUE(openFromName(t.context, &t.ui, path)) << path;
        EXPECT_EQ(t.document.path, path);
    }
    const PresentFolder here(t.folder.path());
    EXPECT_EQ(fileOfName(" flight"), " flight.tma");
    EXPECT_EQ(fileOfName("\"flight\""), "\"flight\".tma");
    // Without such a file the name means what it means without them.
    EXPECT_EQ(fileOfName("\" flight\""), "flight");
}

TEST_F(OpenDocumentTest, AFolderAPipeAndADeviceAreRefused) {
    const auto pipe = t.folder / "pipe.tma";
    const auto folder = t.folder / "folder.tma";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_TRUE(makeFolder(folder).ok());
    for (const auto& path : {pipe, folder, std::string("/dev/zero"), std::string("/dev/null")}) {
        EXPECT_FALSE(openFromName(t.context, &t.ui, path)) << path;
        EXPECT_NE(t.ui.boxes.back().text.find("Unable to open '" + path), std::string::npos)
            << path;
        EXPECT_EQ(t.ui.boxes.back().title, "Unable To Open File");
        EXPECT_TRUE(t.ui.notes.empty());
    }
}

TEST_F(OpenDocumentTest, ThePathOfTheDocumentIsAbsoluteWhateverTheNameWas) {
    const auto path = file("flight.tma", "G\\PN:A;");
    const PresentFolder here(t.folder.path());
    for (const char* const name : {"flight.tma", "flight", "./flight.tma", ".//flight"}) {
        EXPECT_TRUE(openFromName(t.context, &t.ui, name)) << name;
        EXPECT_EQ(t.document.path, path) << name;
    }
    EXPECT_TRUE(saveDocumentTo(t.context, &t.ui, "other.tma"));
    EXPECT_EQ(t.document.path, t.folder / "other.tma");
}

TEST_F(OpenDocumentTest, AnOpenOrASaveStartsInTheFolderOfTheOpenElseOfTheLastFile) {
    rememberFile(t.settings, t.folder / "gone/a.tma");
    EXPECT_FALSE(openTmatsFileCommand(t.context, &t.ui));
    EXPECT_EQ(t.ui.filePrompts.back().folder, "") << "no folder that is there";
    ASSERT_TRUE(makeFolder(t.folder / "last").ok());
    rememberFile(t.settings, t.folder / "last/b.tma");
    rememberFile(t.settings, t.folder / "gone/a.tma");
    EXPECT_FALSE(openTmatsFileCommand(t.context, &t.ui));
    EXPECT_EQ(t.ui.filePrompts.back().folder, t.folder / "last");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, file("open.tma", "G\\PN:A;")));
    EXPECT_FALSE(openTmatsFileCommand(t.context, &t.ui));
    EXPECT_EQ(t.ui.filePrompts.back().folder, t.folder.path());
    EXPECT_FALSE(t.ui.filePrompts.back().confirmsOverwrite);
    EXPECT_FALSE(saveDocumentAs(t.context, &t.ui));
    const auto& save = t.ui.filePrompts.back();
    EXPECT_EQ(save.path, t.folder / "open.tma");
    EXPECT_EQ(save.own, t.folder / "open.tma");
    EXPECT_EQ(save.extension, ".tma");
    EXPECT_TRUE(save.confirmsOverwrite);
}

TEST_F(OpenDocumentTest, CancelOfTheCloseKeepsThePresentDocument) {
    const auto first = file("a.tma", "G\\PN:A;");
    const auto second = file("b.tma", "G\\PN:B;");
    ASSERT_TRUE(loadDocument(t.context, &t.ui, first));
    t.document.changed = true;
    t.ui.byId[76] = Button::Cancel;
    EXPECT_TRUE(loadDocument(t.context, &t.ui, second));
    EXPECT_EQ(t.document.path, first);
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:A;\r\n");
    t.ui.byId[76] = Button::No;
    EXPECT_TRUE(loadDocument(t.context, &t.ui, second));
    EXPECT_EQ(t.document.path, second);
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "G\\PN:B;\r\n");
}

TEST_F(OpenDocumentTest, VersionKeysAreRepaired) {
    t.settings.write("IRIGInputVersion", "4");
    t.settings.write("IRIGOutputVersion", "3000");
    resetVersionFromSettings(t.context);
    EXPECT_EQ(t.document.version, 2004);
    EXPECT_EQ(t.settings.text("IRIGInputVersion"), "4");
    EXPECT_EQ(t.settings.text("IRIGOutputVersion"), "2011");
    t.settings.writeInteger("IRIGOutputMethod", 2);
    resetVersionFromSettings(t.context);
    EXPECT_EQ(t.document.version, 2011);
}

TEST_F(OpenDocumentTest, NewDocumentWithoutATemplateHasAnEmptyGeneralGroup) {
    t.ui.byId[146] = Button::No;
    EXPECT_TRUE(loadDocument(t.context, &t.ui, "", {.create = true, .makeTemplate = true}));
    EXPECT_EQ(t.read("[kavu]GTMP.G"), "");
    EXPECT_TRUE(t.document.open);
    EXPECT_TRUE(t.document.changed);
    EXPECT_TRUE(t.document.created);
    EXPECT_EQ(t.ui.boxes.at(0).id, -146);
}

TEST_F(OpenDocumentTest, TemplatesOfBothKindsAreWritten) {
    t.ui.byId[146] = Button::Yes;
    t.ui.choices = {0, 1};
    std::vector<std::string> sources;
    t.steps.createStream = [&](UserInterface*, const std::string& source) {
        sources.push_back(source);
        return true;
    };
    EXPECT_TRUE(createNewTmatsFile(t.context, &t.ui, true));
    EXPECT_EQ(t.read("[kavu]GTMP.G"),
              "G\\106:11;\r\nG\\OD:01-02-2026;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:RF Data Source;\r\n"
              "G\\DST-1:RF;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.T01"), "T-1\\ID:RF Data Source;\r\nT-1\\SCO\\N:0;\r\n");
    t.document.version = 1996;
    EXPECT_TRUE(createNewTmatsFile(t.context, &t.ui, true));
    EXPECT_EQ(t.read("[kavu]GTMP.G"),
              "G\\OD:01-02-26;\r\nG\\DSI\\N:1;\r\nG\\DSI-1:Tape Data Source;\r\n"
              "G\\DST-1:TAP;\r\n");
    EXPECT_EQ(t.read("[kavu]DSRCE.R01"), "R-1\\ID:Tape Data Source;\r\n");
    EXPECT_EQ(sources, (std::vector<std::string>{"RF Data Source", "Tape Data Source"}));
}

TEST_F(OpenDocumentTest, OpenCommandKeepsTheFilterIndex) {
    t.ui.files = {FileChoice{file("a.tma", "G\\PN:A;"), 2}};
    EXPECT_TRUE(openTmatsFileCommand(t.context, &t.ui));
    EXPECT_EQ(t.settings.integer("OpenFilterIndex", 1), 2);
    EXPECT_EQ(t.ui.filePrompts.at(0).title, "Open TMATS File");
    EXPECT_FALSE(openTmatsFileCommand(t.context, &t.ui));  // cancelled
}

TEST_F(OpenDocumentTest, WorksWithoutAParent) {
    EXPECT_TRUE(loadDocument(t.context, nullptr, file("a.tma", "G\\PN:A;X;")));
    t.document.changed = true;
    EXPECT_EQ(closeDocument(t.context, nullptr), CloseResult::Closed);
    EXPECT_FALSE(loadDocument(t.context, nullptr, t.folder / "none"));
    EXPECT_TRUE(loadDocument(t.context, nullptr, "", {.create = true, .makeTemplate = true}));
}

TEST_F(OpenDocumentTest, RecentFilesAreNewestFirstAndAtMostNine) {
    for (int i = 1; i <= 11; ++i) {
        rememberFile(t.settings, formatPrintf("/tmp/none/%d.tma", i));
    }
    rememberFile(t.settings, "/tmp/none/5.tma");
    const auto files = recentFiles(t.settings);
    ASSERT_EQ(files.size(), 9u);
    EXPECT_EQ(files[0], "/tmp/none/5.tma");
    EXPECT_EQ(files[1], "/tmp/none/11.tma");
    EXPECT_EQ(files[8], "/tmp/none/3.tma");
    // Missing files are kept, but not offered.
    rememberFile(t.settings, file("there.tma", ""));
    EXPECT_EQ(offeredRecentFiles(t.settings), std::vector<std::string>{t.folder / "there.tma"});
    EXPECT_EQ(recentFiles(t.settings).size(), 9u);
    const PresentFolder here(t.folder.path());
    rememberFile(t.settings, "there.tma");
    EXPECT_EQ(recentFiles(t.settings)[0], t.folder / "there.tma");
    EXPECT_EQ(recentFiles(t.settings)[1], "/tmp/none/5.tma") << "one entry by two names";
}

/// What was told, each with the path and how many listeners could see of the document then.
struct Told : DocumentListener {
    explicit Told(TestContext& context) : t(context) { t.history.addListener(*this); }
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;
    ~Told() override { t.history.removeListener(*this); }
    void documentChanged(const DocumentChange& change) override {
        events.push_back({change.kind, change.path, t.document.open, t.document.changed,
                          t.has(working::kGeneral)});
    }
    struct Event {
        DocumentChange::Kind kind;
        std::string path;
        bool open;
        bool changed;
        bool hasFiles;
        bool operator==(const Event&) const = default;
    };
    TestContext& t;
    std::vector<Event> events;
};

TEST_F(OpenDocumentTest, OpenedSavedAndClosedAreToldOnceWhenTheyHaveHappened) {
    const Told told(t);
    const auto path = file("a.tma", "G\\PN:A;");
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    t.document.changed = true;
    const auto other = t.folder / "other.tma";
    EXPECT_TRUE(saveDocumentTo(t.context, &t.ui, other));
    EXPECT_EQ(closeDocument(t.context, &t.ui), CloseResult::Closed);
    using Kind = DocumentChange::Kind;
    EXPECT_EQ(told.events, (std::vector<Told::Event>{{Kind::Opened, path, true, false, true},
                                                     {Kind::Saved, other, true, false, true},
                                                     {Kind::Closed, other, false, false, false}}));
}

TEST_F(OpenDocumentTest, AFailedLoadIsToldAsACloseOfNoFile) {
    const Told told(t);
    EXPECT_FALSE(loadDocument(t.context, &t.ui, file("a.tma", "G\\PN:A;G\\TA")));
    EXPECT_EQ(told.events,
              (std::vector<Told::Event>{{DocumentChange::Closed, {}, false, false, false}}));
}

TEST_F(OpenDocumentTest, ACorrectedLoadIsToldWithItsMarkAndANewDocumentWithNoFile) {
    t.steps.migrate = [](UserInterface*, int, int) { return true; };
    const Told told(t);
    const auto path = file("a.tma", "G\\PN:A;");
    EXPECT_TRUE(loadDocument(t.context, &t.ui, path));
    dropDocument(t.context, &t.ui);
    EXPECT_TRUE(loadDocument(t.context, &t.ui, t.folder / "new.tma", {.create = true}));
    using Kind = DocumentChange::Kind;
    EXPECT_EQ(told.events, (std::vector<Told::Event>{{Kind::Opened, path, true, true, true},
                                                     {Kind::Closed, path, false, false, false},
                                                     {Kind::Opened, {}, true, true, true}}));
    EXPECT_EQ(t.ui.countBoxes(76), 0) << "what is dropped is not asked about";
}

}  // namespace
}  // namespace kavu::test
