#include "application/DocumentService.h"
#include "application/automation/AutomationStage.h"

namespace kavu {
namespace {

using test::AutomationStage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class AutomatedDocuments : public AutomationStage {};

// --- opening --------------------------------------------------------------------------------

TEST_F(AutomatedDocuments, OpensAFileAndTellsItsPath) {
    open();
    EXPECT_TRUE(document().open);
    EXPECT_THAT(signals, ElementsAre("opened " + (test.folder / "in.tma")));
    EXPECT_FALSE(documents->IsTmatsFileChanged());
}

TEST_F(AutomatedDocuments, ANameMayHaveQuotesAndBlanksAndLackItsExtension) {
    test::writeFile(test.folder / "a.tma", test::kAutomationDocument);
    test::writeFile(test.folder / "b.tmt", test::kAutomationDocument);
    documents->OpenTmatsFile(0, "  \"" + (test.folder / "a") + "\" ");
    EXPECT_EQ(document().path, test.folder / "a.tma");
    documents->OpenTmatsFile(0, test.folder / "b");
    EXPECT_EQ(document().path, test.folder / "b.tmt");
}

TEST_F(AutomatedDocuments, ABlankOrRelativeNameIsABadValue) {
    open();
    for (const char* const bad : {"", "  ", "\"\"", "in.tma", "./in.tma", "\" in\""}) {
        EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(0, bad); }), "BadValue") << bad;
    }
}

TEST_F(AutomatedDocuments, AFileThatIsNotThereLeavesTheOpenDocument) {
    open();
    const auto missing = test.folder / "missing.tma";
    EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(0, missing); }), "FileError");
    EXPECT_THAT(text, HasSubstr(missing));
    EXPECT_THAT(text, HasSubstr("Reason"));
    EXPECT_TRUE(document().open);
}

TEST_F(AutomatedDocuments, AFileThatFailsToLoadLeavesNoDocument) {
    open();
    test::writeFile(test.folder / "cut.tma", "G\\PN:A;\nG\\TA:B");
    EXPECT_EQ(failureOf([&] { documents->OpenTmatsFile(0, test.folder / "cut.tma"); }),
              "Refused 157");
    EXPECT_THAT(text, HasSubstr("157: Illegal or partial command"));
    EXPECT_FALSE(document().open);
    EXPECT_EQ(errorOf([&] { (void)documents->IsTmatsFileChanged(); }), "NoDocument");
    EXPECT_THAT(signals, ElementsAre("opened " + (test.folder / "in.tma"),
                                     "closed " + (test.folder / "in.tma")));
}

TEST_F(AutomatedDocuments, ChangesOfTheDocumentOrItsFormatAreNotDroppedUnasked) {
    test::writeFile(test.folder / "other.tma", test::kAutomationDocument);
    load();
    formats->SetBitRate(5);
    EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(0, test.folder / "other.tma"); }), "Unsaved");
    formats->SavePCMFormat(0);
    EXPECT_TRUE(document().changed);
    EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(0, test.folder / "other.tma"); }), "Unsaved");
    EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(kWindow, test.folder / "other.tma"); }),
              "NoDisplay")
        << "it must ask";
    documents->SaveTmatsFile(0);
    documents->OpenTmatsFile(0, test.folder / "other.tma");
    EXPECT_EQ(document().path, test.folder / "other.tma");
}

TEST_F(AutomatedDocuments, WithAWindowTheUserIsAskedWhatToDoWithChanges) {
    test::writeFile(test.folder / "other.tma", test::kAutomationDocument);
    reach(&windows);
    load();
    formats->SetBitRate(5);
    windows.ui.byId[76] = Button::Cancel;
    EXPECT_EQ(errorOf([&] { documents->OpenTmatsFile(kWindow, test.folder / "other.tma"); }),
              "Cancelled");
    EXPECT_EQ(windows.ui.countBoxes(76), 1);
    windows.ui.byId[76] = Button::Yes;
    documents->OpenTmatsFile(kWindow, test.folder / "other.tma");
    EXPECT_EQ(document().path, test.folder / "other.tma");
    EXPECT_THAT(test::readFile(test.folder / "in.tma"), HasSubstr("P-1\\D2:5;"));
    formats->LoadPCMFormat(0, 1);
    formats->SetBitRate(6);
    windows.ui.byId[76] = Button::No;
    documents->OpenTmatsFile(kWindow, test.folder / "in.tma");
    EXPECT_EQ(document().path, test.folder / "in.tma");
    EXPECT_EQ(test::readFile(test.folder / "other.tma"), test::kAutomationDocument);
}

TEST_F(AutomatedDocuments, MessagesOfALoadAreShownOnlyOnAWindow) {
    reach(&windows);
    test::writeFile(test.folder / "cut.tma", "G\\PN:A;\nG\\TA:B");
    EXPECT_EQ(failureOf([&] { documents->OpenTmatsFile(0, test.folder / "cut.tma"); }),
              "Refused 157");
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(failureOf([&] { documents->OpenTmatsFile(kWindow, test.folder / "cut.tma"); }),
              "Refused 157")
        << "number and text are in the error in both cases";
    EXPECT_EQ(windows.ui.countBoxes(157), 1);
}

// --- saving ---------------------------------------------------------------------------------

TEST_F(AutomatedDocuments, ASaveWritesTheChangedFormatFirstAndMakesABackup) {
    load();
    formats->SetBitRate(777);
    signals.clear();
    documents->SaveTmatsFile(0);
    EXPECT_THAT(test::readFile(test.folder / "in.tma"), HasSubstr("P-1\\D2:777;"));
    EXPECT_EQ(test::readFile(test.folder / "in.bak"), test::kAutomationDocument);
    EXPECT_FALSE(formats->IsPCMFormatChanged());
    EXPECT_FALSE(documents->IsTmatsFileChanged());
    EXPECT_THAT(signals, ElementsAre("format ONE unchanged", "saved " + (test.folder / "in.tma")));
}

TEST_F(AutomatedDocuments, AnUnchangedDocumentIsSavedToo) {
    open();
    signals.clear();
    documents->SaveTmatsFile(0);
    EXPECT_THAT(signals, ElementsAre("saved " + (test.folder / "in.tma")));
    EXPECT_THAT(test::readFile(test.folder / "in.tma"), HasSubstr("COMMENT: This file saved on"));
}

TEST_F(AutomatedDocuments, AReadOnlyFileIsRefusedWith144) {
    reach(&windows);
    load();
    formats->SetBitRate(777);
    document().readOnly = true;
    EXPECT_EQ(errorOf([&] { documents->SaveTmatsFile(0); }), "Refused 144");
    EXPECT_THAT(text, HasSubstr("144: The TMATS file"));
    EXPECT_TRUE(windows.ui.boxes.empty());
    EXPECT_EQ(errorOf([&] { documents->SaveTmatsFile(kWindow); }), "Refused 144");
    EXPECT_EQ(windows.ui.countBoxes(144), 1);
    EXPECT_TRUE(windows.ui.filePrompts.empty()) << "no other name is asked for";
}

TEST_F(AutomatedDocuments, AFailedWriteIsAFileErrorAndTheDocumentStaysChanged) {
    std::filesystem::create_directory(test.folder / "sub");
    open(test::kAutomationDocument, "sub/in.tma");
    formats->LoadPCMFormat(0, 1);
    formats->SetBitRate(777);
    formats->SavePCMFormat(0);
    std::filesystem::remove_all(test.folder / "sub");
    EXPECT_EQ(failureOf([&] { documents->SaveTmatsFile(0); }), "FileError");
    EXPECT_THAT(text, HasSubstr("sub/in.tma"));
    EXPECT_TRUE(documents->IsTmatsFileChanged());
    EXPECT_EQ(failureOf([&] { documents->CloseTmatsFile(0, true); }), "FileError");
    EXPECT_TRUE(document().open) << "a close whose save fails keeps it";
    EXPECT_EQ(formats->GetBitRate(), 777);
}

TEST_F(AutomatedDocuments, AFileThatAnotherProgramHasChangedIsNotOverwrittenUnasked) {
    open();
    test::writeFile(test.folder / "in.tma", "G\\PN:Other;");
    EXPECT_EQ(errorOf([&] { documents->SaveTmatsFile(0); }), "FileError");
    EXPECT_EQ(test::readFile(test.folder / "in.tma"), "G\\PN:Other;");
}

// --- closing --------------------------------------------------------------------------------

TEST_F(AutomatedDocuments, ACloseSavesOnlyWhenItMay) {
    load();
    formats->SetBitRate(777);
    documents->CloseTmatsFile(0, false);
    EXPECT_EQ(test::readFile(test.folder / "in.tma"), test::kAutomationDocument);
    load();
    formats->SetBitRate(777);
    documents->CloseTmatsFile(0, true);
    EXPECT_THAT(test::readFile(test.folder / "in.tma"), HasSubstr("P-1\\D2:777;"));
    EXPECT_FALSE(document().open);
}

TEST_F(AutomatedDocuments, TheFormatIsGoneAfterAClose) {
    load();
    documents->CloseTmatsFile(0, true);
    EXPECT_FALSE(format().loaded());
    EXPECT_EQ(errorOf([&] { (void)formats->IsPCMFormatChanged(); }), "NoDocument");
    open();
    EXPECT_EQ(errorOf([&] { (void)formats->IsPCMFormatChanged(); }), "NoFormat");
    EXPECT_EQ(signals.back(), "opened " + (test.folder / "in.tma"));
}

TEST_F(AutomatedDocuments, ACloseWithAWindowAsksBeforeItSaves) {
    reach(&windows);
    load();
    formats->SetBitRate(777);
    windows.ui.byId[76] = Button::Cancel;
    EXPECT_EQ(errorOf([&] { documents->CloseTmatsFile(kWindow, true); }), "Cancelled");
    windows.ui.byId[76] = Button::No;
    documents->CloseTmatsFile(kWindow, true);
    EXPECT_FALSE(document().open);
    EXPECT_EQ(test::readFile(test.folder / "in.tma"), test::kAutomationDocument);
    reach(nullptr);
    load();
    formats->SetBitRate(777);
    EXPECT_EQ(errorOf([&] { documents->CloseTmatsFile(kWindow, true); }), "NoDisplay");
    documents->CloseTmatsFile(kWindow, false);
    EXPECT_FALSE(document().open);
}

// --- the changed mark, and the sheets -------------------------------------------------------

TEST_F(AutomatedDocuments, AnUnsavedFormatIsNoChangeOfTheDocument) {
    load();
    formats->SetBitRate(777);
    EXPECT_TRUE(formats->IsPCMFormatChanged());
    EXPECT_FALSE(documents->IsTmatsFileChanged());
    formats->SavePCMFormat(0);
    EXPECT_TRUE(documents->IsTmatsFileChanged());
}

TEST_F(AutomatedDocuments, TheSheetsNeedADocumentAndThenADisplay) {
    const std::vector<std::function<void()>> sheets{
        [this] { documents->EditGeneralInfo(0); }, [this] { documents->EditMultiplexInfo(0); },
        [this] { documents->EditRFInfo(0); }, [this] { documents->EditTapeInfo(0); }};
    for (const auto& sheet : sheets) {
        EXPECT_EQ(errorOf(sheet), "NoDocument");
    }
    load();
    for (const auto& sheet : sheets) {
        EXPECT_EQ(errorOf(sheet), "NoDisplay");
    }
    reach(&windows);
    for (const auto& sheet : sheets) {
        sheet();
    }
    EXPECT_THAT(windows.opened, ElementsAre("general", "multiplex", "rf", "tape"));
    windows.answer = false;
    for (const auto& sheet : sheets) {
        EXPECT_EQ(errorOf(sheet), "Cancelled");
    }
}

TEST_F(AutomatedDocuments, ASheetThatMayReleaseTheFormatIsNotOpenedOverItsChanges) {
    reach(&windows);
    load();
    formats->SetBitRate(777);
    EXPECT_EQ(errorOf([&] { documents->EditMultiplexInfo(0); }), "Unsaved");
    EXPECT_TRUE(windows.opened.empty());
}

TEST_F(AutomatedDocuments, EveryMethodNeedsADocument) {
    EXPECT_EQ(errorOf([&] { documents->SaveTmatsFile(0); }), "NoDocument");
    EXPECT_EQ(errorOf([&] { documents->CloseTmatsFile(0, true); }), "NoDocument");
    EXPECT_EQ(errorOf([&] { (void)documents->IsTmatsFileChanged(); }), "NoDocument");
}

}  // namespace
}  // namespace kavu
