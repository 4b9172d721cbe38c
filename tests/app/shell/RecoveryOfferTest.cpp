#include "app/support/MainWindowStage.h"
#include "core/document/StoreRecord.h"

#include <QFileDialog>
#include <QMessageBox>
#include <gmock/gmock.h>

namespace kavu {
namespace {

using testing::HasSubstr;

using RecoveryOfferTest = MainWindowTest;

TEST_F(RecoveryOfferTest, ARecoveredDocumentAsksBeforeItOverwritesAFile) {
    const auto store = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(store, 0700).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\n");
    begin(path);
    const auto before = test::readFile(path);
    door.next([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Save Recovered TMATS File As"));
        answer("no");  // the open document's file is a file as any other here
        typeFileName(dialog, "flight");
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    test::press(window->noteBar(), "recover");
    EXPECT_EQ(test::readFile(path), before);
    EXPECT_EQ(document().path, path);
}

TEST_F(RecoveryOfferTest, AStoreThatWasLeftBehindIsOfferedAndCanBeDismissedForGood) {
    const auto store = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(store, 0700).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\n");
    begin();
    if (!window->noteBar().isVisible()) {
        FAIL() << "the store was not offered";
    }
    EXPECT_THAT(toBytes(window->noteBar().text()), HasSubstr("did not end properly"));
    test::press(window->noteBar(), "never");
    EXPECT_FALSE(window->noteBar().isVisible());
    ASSERT_TRUE(window->quit());
    begin();
    EXPECT_FALSE(window->noteBar().isVisible());
    EXPECT_TRUE(fileExists(store + "/[kavu]GTMP.G"));
}

TEST_F(RecoveryOfferTest, AStoreThatWasRecoveredIsNotOfferedAgain) {
    const auto store = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(store, 0700).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\n");
    StoreRecord record;
    record.source = describeSource(path);
    test::writeFile(store + "/" + std::string(working::kStoreRecord), storeRecordText(record));
    const auto before = test::readFile(path);
    begin();
    // Its run died while it read the file: a part is only taken if it is wanted.
    door.next([](QDialog& dialog) {
        EXPECT_THAT(toBytes(static_cast<QMessageBox&>(dialog).text()), HasSubstr("is incomplete"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    test::press(window->noteBar(), "recover");
    EXPECT_FALSE(document().open);
    ASSERT_TRUE(window->quit());
    begin();
    answer("yes");
    door.next([this](QDialog& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        ASSERT_EQ(files.selectedFiles().size(), 1);
        EXPECT_EQ(files.selectedFiles().at(0), toQString(folder / "flight recovered.tma"));
        dialog.accept();
    });
    answer("ok");  // to the statement that it is incomplete
    test::press(window->noteBar(), "recover");
    EXPECT_EQ(document().path, folder / "flight recovered.tma");
    EXPECT_EQ(test::readFile(path), before);
    ASSERT_TRUE(window->quit());
    begin();
    EXPECT_FALSE(window->noteBar().isVisible());
}

TEST_F(RecoveryOfferTest, AnEmptyStoreIsNotOffered) {
    const auto empty = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(empty, 0700).ok());
    test::writeFile(empty + "/KAVU9TMP.TMP", "scratch");
    begin();
    EXPECT_FALSE(window->noteBar().isVisible());
    EXPECT_TRUE(fileExists(empty + "/KAVU9TMP.TMP")) << "it may be another program's";
}

TEST_F(RecoveryOfferTest, TheNoteNamesTheFileAndStaysBesideTheRemarksOfAnOpening) {
    const auto store = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(store, 0700).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\n");
    StoreRecord record;
    record.source = describeSource(path);
    test::writeFile(store + "/" + std::string(working::kStoreRecord), storeRecordText(record));
    const auto other = folder / "other.tma";
    test::writeFile(other, "G\\PN:X;\r\nG\\106:09;\r\nQ-1\\ID:unknown;\r\n");
    begin(other);
    const auto text = toBytes(window->noteBar().text());
    EXPECT_THAT(text, HasSubstr("What it held of '" + path + "' may be recovered."));
    EXPECT_THAT(text, HasSubstr("no known group"));
    test::press(window->noteBar(), "dismiss");
    EXPECT_TRUE(window->noteBar().has(NoteBar::About::Recovery));
}

TEST_F(RecoveryOfferTest, ARecoveredStoreIsNotOfferedAgainEvenIfItCouldNotBeMarked) {
    const auto store = temp() + "/KAVU-9-00000000-0000-0000-0000-000000000000";
    ASSERT_TRUE(makeFolder(store, 0700).ok());
    test::writeFile(store + "/[kavu]GTMP.G", "G\\PN:LOST;\r\nG\\106:09;\r\n");
    // A folder in the place of the mark.
    ASSERT_TRUE(makeFolder(store + "/" + std::string(working::kRecovered)).ok());
    test::writeFile(store + "/" + std::string(working::kRecovered) + "/x", "x");
    begin();
    const auto output = folder / "recovered.tma";
    door.next([&](QDialog& dialog) { typeFileName(dialog, output.c_str()); });
    test::press(window->noteBar(), "recover");
    EXPECT_TRUE(document().open);
    EXPECT_FALSE(window->noteBar().has(NoteBar::About::Recovery));
    ASSERT_TRUE(window->quit());
    begin();
    EXPECT_FALSE(window->noteBar().has(NoteBar::About::Recovery));
}

TEST_F(RecoveryOfferTest, WhatCouldNotBePutBackIsOfferedByTheNextStart) {
    begin(path);
    settings().set(setting::kCreateBackup, false);
    settings().set(setting::kSaveInPlace, true);
    const auto former = test::readFile(path);
    const auto store = application.context().store.folder();
    document().changed = true;
    // Neither the document can be written to the end, nor the file be put back.
    application.context().steps.saveConversions = [this](UserInterface*, FileWriter&) {
        EXPECT_TRUE(deleteFile(path).ok() && makeFolder(path).ok());
        return false;
    };
    door.next([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    door.next([&](QDialog& dialog) {
        EXPECT_THAT(toBytes(static_cast<QMessageBox&>(dialog).text()),
                    HasSubstr("They are in '" + store + "/FORMER0.TMP'"));
        test::press(dialog, "ok");
    });
    window->run(CommandId::Save);
    answer("no");  // to the question whether the changes are to be saved
    ASSERT_TRUE(window->quit());
    EXPECT_EQ(test::readFile(store + "/FORMER0.TMP"), former);
    EXPECT_TRUE(fileExists(store + "/[kavu]GTMP.G"));
    begin();
    EXPECT_TRUE(window->noteBar().isVisible());
    EXPECT_THAT(toBytes(window->noteBar().text()), HasSubstr("did not end properly"));
}

}  // namespace
}  // namespace kavu
