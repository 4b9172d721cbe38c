#include "core/talk/ProfileSettings.h"
#include "mdb/import/ImportProfiles.h"
#include "support/TestContext.h"

namespace kavu::test {
namespace {

class ImportProfilesTest : public testing::Test {
  protected:
    /// As the next run reads them.
    [[nodiscard]] ProfileSettings again() const { return ProfileSettings(path_); }

    TempFolder folder_;
    std::string path_ = folder_ / "kavu.ini";
    ProfileSettings settings_{path_};
};

ImportProfile example(const std::string& title) {
    ImportProfile profile{title};
    profile.layout = {ImportKind::Fixed, ';', true, {{0, "1", "8"}, {26, "9", "20"}}};
    return profile;
}

TEST_F(ImportProfilesTest, AProfileComesBackAsItWasSaved) {
    for (const char* const title : {"Plain", "a]b[=;c", "100 %", "K\xC3\xB6ln"}) {
        EXPECT_TRUE(saveImportProfile(settings_, example(title), MdbVersion::WithBus)) << title;
        const auto loaded = loadImportProfile(again(), title);
        ASSERT_TRUE(loaded) << title;
        EXPECT_EQ(loaded->title, title);
        EXPECT_EQ(loaded->layout.kind, ImportKind::Fixed);
        EXPECT_EQ(loaded->layout.delimiter, ';');
        EXPECT_TRUE(loaded->layout.hasHeader);
        ASSERT_EQ(loaded->layout.references.size(), 2U);
        EXPECT_EQ(loaded->layout.references[1].field, 26U);
        EXPECT_EQ(loaded->layout.references[1].first, "9");
        EXPECT_EQ(loaded->layout.references[1].second, "20");
    }
    EXPECT_EQ(listImportProfiles(settings_).size(), 4U);
}

TEST_F(ImportProfilesTest, ReferencesAreKeptByTheNumberOfTheirRow) {
    EXPECT_TRUE(saveImportProfile(settings_, example("One"), MdbVersion::Basic));
    EXPECT_NE(readFile(path_).find("D1_19=9"), std::string::npos) << readFile(path_);
    const auto loaded = loadImportProfile(settings_, "One");
    ASSERT_EQ(loaded->layout.references.size(), 2U);
    EXPECT_EQ(loaded->layout.references[1].field, 26U);
}

TEST_F(ImportProfilesTest, ASaveReplacesAProfileOfTheSameTitle) {
    EXPECT_TRUE(saveImportProfile(settings_, example("One"), MdbVersion::Xml));
    ImportProfile other{"ONE"};
    other.layout.references = {{0, "NAME"}};
    other.layout.kind = ImportKind::Dbase;
    EXPECT_TRUE(saveImportProfile(settings_, other, MdbVersion::Xml));
    const auto listed = listImportProfiles(again());
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0].title, "ONE");
    EXPECT_EQ(listed[0].layout.kind, ImportKind::Dbase);
    EXPECT_EQ(loadImportProfile(settings_, "one")->layout.references.size(), 1U);
}

TEST_F(ImportProfilesTest, ADeletedProfileLeavesNothingBehind) {
    EXPECT_TRUE(saveImportProfile(settings_, example("One"), MdbVersion::Xml));
    EXPECT_TRUE(deleteImportProfile(settings_, "One"));
    EXPECT_FALSE(deleteImportProfile(settings_, "One"));
    EXPECT_FALSE(loadImportProfile(settings_, "One"));
    EXPECT_TRUE(listImportProfiles(settings_).empty());
    EXPECT_EQ(readFile(path_).find("D1_"), std::string::npos);
    EXPECT_FALSE(saveImportProfile(settings_, example("  "), MdbVersion::Xml));
}

TEST_F(ImportProfilesTest, ReferencesAreKeptByKindVersionAndField) {
    storeReference(settings_, ImportKind::Dbase, MdbVersion::Basic, {26, "DESCR"});
    storeReference(settings_, ImportKind::Fixed, MdbVersion::Xml, {26, "4", "12"});
    EXPECT_NE(readFile(path_).find("D1_0_0_26=DESCR"), std::string::npos);
    EXPECT_NE(readFile(path_).find("D2_1_2_26"), 0U);
    auto references = storedReferences(again(), ImportKind::Dbase, MdbVersion::Basic);
    ASSERT_EQ(references.size(), 28U);
    EXPECT_EQ(references[18].first, "DESCR");
    EXPECT_EQ(references[0].first, "");
    references = storedReferences(again(), ImportKind::Fixed, MdbVersion::Xml);
    EXPECT_EQ(references[26].second, "12");
    EXPECT_EQ(storedReferences(again(), ImportKind::Dbase, MdbVersion::Xml)[26].first, "");
}

TEST_F(ImportProfilesTest, AFieldOfADelimitedFileHasTheNumberOfItsRowAtFirst) {
    auto references = storedReferences(settings_, ImportKind::Delimited, MdbVersion::Basic);
    EXPECT_EQ(references[0].first, "1");
    EXPECT_EQ(references[27].field, 35U);
    EXPECT_EQ(references[27].first, "28");
    storeReference(settings_, ImportKind::Delimited, MdbVersion::Basic, {35, ""});
    references = storedReferences(again(), ImportKind::Delimited, MdbVersion::Basic);
    EXPECT_EQ(references[27].first, "");
}

TEST_F(ImportProfilesTest, TheFormStartsWithWhatItHadLast) {
    const auto first = ImportSettings::read(settings_);
    EXPECT_EQ(first.kind, ImportKind::Dbase);
    EXPECT_EQ(first.version, MdbVersion::Xml);
    EXPECT_EQ(first.delimiter, ',');
    for (const auto& delimiter : importDelimiters()) {
        ImportSettings chosen{"/in put.prn", ImportKind::Delimited, delimiter.character,
                              "/out",        MdbVersion::Basic,     true};
        chosen.write(settings_);
        const auto loaded = ImportSettings::read(again());
        EXPECT_EQ(loaded.input, "/in put.prn");
        EXPECT_EQ(loaded.kind, ImportKind::Delimited);
        EXPECT_EQ(loaded.delimiter, delimiter.character);
        EXPECT_EQ(loaded.output, "/out");
        EXPECT_EQ(loaded.version, MdbVersion::Basic);
        EXPECT_TRUE(loaded.overwrites);
    }
}

}  // namespace
}  // namespace kavu::test
