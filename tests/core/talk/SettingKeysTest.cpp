#include "core/talk/ProfileSettings.h"
#include "core/talk/SettingKeys.h"
#include "core/text/Text.h"
#include "support/TestContext.h"

#include <map>
#include <regex>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

std::string sourceFile(const std::string& path) {
    return readFile(std::string(KAVU_SOURCE_DIR "/") + path);
}

/// What a key is without a value, as the manual writes it.
std::string defaultOf(const SettingKey& key) {
    if (const auto* const* number = std::get_if<const IntKey*>(&key)) {
        return std::to_string((*number)->otherwise);
    }
    if (const auto* const* flag = std::get_if<const FlagKey*>(&key)) {
        return (*flag)->otherwise ? "1" : "0";
    }
    return std::string(std::get<const TextKey*>(key)->otherwise);
}

/// All keys by their names.
std::map<std::string, SettingKey> keysByName() {
    std::map<std::string, SettingKey> keys;
    for (const auto& key : settingKeys()) {
        keys.emplace(std::visit([](const auto* one) { return std::string(one->name); }, key), key);
    }
    return keys;
}

/// What a pattern finds in a text, by its groups.
std::vector<std::smatch> allMatches(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    return {std::sregex_iterator(text.begin(), text.end(), expression), std::sregex_iterator()};
}

TEST(SettingKeysTest, NamesAreNotUsedTwiceInASection) {
    std::set<std::string> names;
    for (const auto& key : settingKeys()) {
        const auto name = std::visit(
            [](const auto* one) { return lowerAscii(one->section) + "/" + lowerAscii(one->name); },
            key);
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

TEST(SettingKeysTest, DefaultsAreWithinTheRange) {
    for (const auto& key : settingKeys()) {
        if (const auto* const* number = std::get_if<const IntKey*>(&key)) {
            EXPECT_LE((*number)->least, (*number)->otherwise) << (*number)->name;
            EXPECT_GE((*number)->most, (*number)->otherwise) << (*number)->name;
        }
    }
}

TEST(SettingKeysTest, EveryKeyOfTheHeaderIsInTheTable) {
    const auto header = sourceFile("src/core/talk/SettingKeys.h");
    const auto keys = keysByName();
    const auto defined =
        allMatches(header, R"(inline constexpr (?:Int|Flag|Text)Key k\w+\{"(\w+)\")");
    ASSERT_FALSE(defined.empty());
    EXPECT_EQ(defined.size(), settingKeys().size());
    for (const auto& match : defined) {
        EXPECT_TRUE(keys.contains(match[1])) << match[1];
    }
}

TEST(SettingKeysTest, TheManualTellsTheDefaultsOfKeysThatExist) {
    const auto page = sourceFile("docs/manual/settings.md");
    const auto keys = keysByName();
    // An edition that is missing is put into the file, so its key has none of its own.
    const std::set<std::string> written{"IRIGInputVersion", "IRIGOutputVersion"};
    int count = 0;
    for (const auto& row : allMatches(page, R"(\n\| (`[^|]*`) \| ([^|]*) \|)")) {
        const std::string names = row[1];
        const std::string otherwise = row[2] == "empty" ? "" : row[2].str();
        for (const auto& name : allMatches(names, R"(`(\w+)`)")) {
            ++count;
            const auto found = keys.find(name[1]);
            ASSERT_NE(found, keys.end()) << name[1];
            EXPECT_EQ(written.contains(name[1]) ? otherwise : defaultOf(found->second), otherwise)
                << name[1];
        }
    }
    EXPECT_EQ(count, 40);
    for (const auto& name : allMatches(page, R"(`(P\w+)`\s\(`?([^`)]*)`?\))")) {
        ++count;
        const auto found = keys.find(name[1]);
        ASSERT_NE(found, keys.end()) << name[1];
        EXPECT_EQ(defaultOf(found->second), name[2]) << name[1];
    }
    EXPECT_EQ(count, 60);
}

// --- through the settings --------------------------------------------------------------------

class SettingsByKeyTest : public ::testing::Test {
  protected:
    [[nodiscard]] ProfileSettings settingsWith(std::string_view lines) const {
        writeFile(path_, "[KAVU-9]\r\n" + std::string(lines));
        return ProfileSettings(path_);
    }

    TempFolder folder_;
    std::string path_ = folder_ / "kavu.ini";
};

TEST_F(SettingsByKeyTest, AMissingKeyHasItsDefault) {
    const ProfileSettings settings(path_);
    EXPECT_EQ(settings.get(setting::kFloatPrecision), 8);
    EXPECT_TRUE(settings.get(setting::kCreateBackup));
    EXPECT_FALSE(settings.get(setting::kWriteUpdates));
    EXPECT_EQ(settings.get(setting::kMask), "FW");
    EXPECT_EQ(settings.stored(setting::kDefinitionMode), std::nullopt);
    EXPECT_FALSE(fileExists(path_)) << "reading must not make the file";
}

TEST_F(SettingsByKeyTest, ANumberOutsideOfItsRangeReadsAsTheNearestOne) {
    const auto settings = settingsWith(
        "FloatPrecision=41\r\nLSBFMaxOrder=0\r\nPCMScroll=4\r\nSRPrec=-1\r\nCurveDefBits=-3\r\n");
    EXPECT_EQ(settings.get(setting::kFloatPrecision), 40);
    EXPECT_EQ(settings.get(setting::kFitOrderLimit), 1);
    EXPECT_EQ(settings.get(setting::kCellWidth), 5);
    EXPECT_EQ(settings.get(setting::kSampleRatePrecision), 0);
    EXPECT_EQ(settings.get(setting::kCountBits), -3) << "a key without a range";
    EXPECT_EQ(settings.stored(setting::kFloatPrecision), 41);
}

TEST_F(SettingsByKeyTest, AnyNumberButZeroIsYes) {
    const auto settings =
        settingsWith("CreateBackup=0\r\nChkSR=-2\r\nHexBM=text\r\nEnableUpd=7\r\n");
    EXPECT_FALSE(settings.get(setting::kCreateBackup));
    EXPECT_TRUE(settings.get(setting::kCheckSampleRates));
    EXPECT_FALSE(settings.get(setting::kHexadecimalMasks));
    EXPECT_TRUE(settings.get(setting::kWriteUpdates));
}

TEST_F(SettingsByKeyTest, ValuesAreWrittenAsTheyAreToTheSectionOfTheirKey) {
    ProfileSettings settings(path_);
    settings.set(setting::kFloatPrecision, 99);
    settings.set(setting::kCreateBackup, false);
    settings.set(setting::kHighlightConversions, true);
    settings.set(setting::kMask, "0011");
    settings.set(setting::kImportPrefix, "A_");
    settings.set(setting::kViewDatabase, true);
    EXPECT_EQ(readFile(path_),
              "[KAVU-9]\r\nFloatPrecision=99\r\nCreateBackup=0\r\nHLMesWEU=1\r\nDMask=0011\r\n"
              "[StreamImport]\r\nPrefix=A_\r\n[ViewMdb]\r\nEnabled=1\r\n");
    EXPECT_EQ(settings.get(setting::kImportPrefix), "A_");
    EXPECT_TRUE(settings.get(setting::kViewDatabase));
}

TEST_F(SettingsByKeyTest, AValueOfThisRunHidesThatOfTheFile) {
    auto settings = settingsWith("MDBAddRoot=1\r\nIRIGInputVersion=1996\r\n");
    const auto before = readFile(path_);
    settings.overrideForThisRun(setting::kDatabaseAddsRoot, 0);
    settings.overrideForThisRun(setting::kInputEdition, "2005");
    EXPECT_EQ(settings.get(setting::kDatabaseAddsRoot), 0);
    EXPECT_EQ(settings.stored(setting::kDatabaseAddsRoot), 0);
    EXPECT_EQ(settings.get(setting::kInputEdition), "2005");
    EXPECT_EQ(readFile(path_), before);
}

}  // namespace
}  // namespace kavu::test
