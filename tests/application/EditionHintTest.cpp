#include "application/DocumentService.h"
#include "application/EditionHint.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "support/TestApplication.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kavu {
namespace {

using testing::HasSubstr;

struct EditionHintTest : testing::Test {
    /// Opens a sample without its `G\106`, as one of the edition of the settings.
    void open(const std::string& sample, const char* edition) {
        auto text = test::readFile(std::string(KAVU_SOURCE_DIR) + "/samples/" + sample);
        if (const auto at = text.find("G\\106:"); at != std::string::npos) {
            text.erase(at, text.find(';', at) + 1 - at);
        }
        openText(text, edition);
    }
    void openText(const std::string& text, const char* edition) {
        test::writeFile(path, text);
        t.application.context().settings.set(setting::kInputEdition, edition);
        ASSERT_TRUE(t.application.documents().openNamed(&t.ui, path));
    }

    test::TestApplication t;
    std::string path = t.folder / "flight.tma";
};

TEST_F(EditionHintTest, NamesTheEditionThatReadsWithFewerMessages) {
    open("flight-test.tma", "2011");
    const auto hint = findBetterEdition(t.application, &t.ui);
    ASSERT_TRUE(hint);
    EXPECT_EQ(hint->readAs, 2011);
    EXPECT_GT(hint->reports, 0U);
    EXPECT_EQ(hint->better, 2009);
    EXPECT_EQ(hint->betterReports, 0U);
    EXPECT_THAT(hintText(*hint), HasSubstr("was read as 106-11 (2011) of the settings"));
    EXPECT_THAT(hintText(*hint), HasSubstr("Read as 106-09 (2009) it has none."));
}

TEST_F(EditionHintTest, AFileThatStatesItsEditionIsNotTried) {
    openText(test::readFile(std::string(KAVU_SOURCE_DIR) + "/samples/mistakes.tma"), "2011");
    EXPECT_FALSE(findBetterEdition(t.application, &t.ui));
}

TEST_F(EditionHintTest, AnEditionBefore1999IsNoneThatIsStated) {
    auto text = test::readFile(std::string(KAVU_SOURCE_DIR) + "/samples/flight-test-96.tma");
    openText("G\\106:96;" + text, "2011");
    const auto hint = findBetterEdition(t.application, &t.ui);
    ASSERT_TRUE(hint);
    EXPECT_EQ(hint->better, 1996);
}

TEST_F(EditionHintTest, AReadingWithoutMessagesNeedsNoOther) {
    open("flight-test.tma", "2009");
    EXPECT_FALSE(findBetterEdition(t.application, &t.ui));
}

TEST_F(EditionHintTest, ADocumentWithoutAFileAndALargeOneAreNotTried) {
    EXPECT_FALSE(findBetterEdition(t.application, &t.ui));
    openText("G\\PN:" + std::string(kLargestTried, 'x') + ";", "2011");
    EXPECT_FALSE(findBetterEdition(t.application, &t.ui));
}

TEST_F(EditionHintTest, NeitherTheDocumentNorTheSettingsChange) {
    open("flight-test.tma", "2011");
    const auto settings = test::readFile(t.folder / "kavu.ini");
    const auto stores = std::distance(std::filesystem::directory_iterator(t.temp()), {});
    ASSERT_TRUE(findBetterEdition(t.application, &t.ui));
    EXPECT_EQ(t.application.context().document.version, 2011);
    EXPECT_EQ(test::readFile(t.folder / "kavu.ini"), settings);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(t.temp()), {}), stores);
}

TEST_F(EditionHintTest, TheFileIsReadAgainAsTheEditionThatWasChosenAndTheNextOneIsNot) {
    open("flight-test.tma", "2011");
    ASSERT_TRUE(t.application.documents().readAs(&t.ui, 2009));
    EXPECT_EQ(t.application.context().document.version, 2009);
    EXPECT_EQ(t.application.context().document.path, path);
    ASSERT_TRUE(t.application.documents().openNamed(&t.ui, path));
    EXPECT_EQ(t.application.context().document.version, 2011);
}

TEST_F(EditionHintTest, ReadingAgainAsksAboutChangesFirst) {
    open("flight-test.tma", "2011");
    t.application.context().document.changed = true;
    t.ui.byId[76] = Button::Cancel;
    EXPECT_FALSE(t.application.documents().readAs(&t.ui, 2009));
    EXPECT_EQ(t.application.context().document.version, 2011);
    EXPECT_TRUE(t.application.context().document.open);
    t.application.context().document.changed = false;
}

}  // namespace
}  // namespace kavu
