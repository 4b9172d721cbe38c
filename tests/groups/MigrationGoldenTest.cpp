// Every folder of tests/golden/groups/migration is a test.
#include "conversion/ConversionStore.h"
#include "core/text/Text.h"
#include "groups/Migration.h"
#include "support/TestContext.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kavu {
namespace {

const std::string kFolder = std::string(KAVU_SOURCE_DIR) + "/tests/golden/groups/migration/";

std::vector<std::string> entriesOf(const std::string& folder, bool folders) {
    std::vector<FolderEntry> entries;
    EXPECT_TRUE(listFolder(folder, entries).ok()) << folder;
    std::vector<std::string> names;
    for (const auto& entry : entries) {
        if (entry.isFolder == folders) {
            names.push_back(entry.name);
        }
    }
    return names;
}

class MigrationGolden : public testing::TestWithParam<std::string> {};

TEST_P(MigrationGolden, RewritesTheFilesOfTheStore) {
    const auto folder = kFolder + GetParam();
    const int input = leadingInt(GetParam());
    const int target = leadingInt(GetParam().substr(GetParam().rfind('-') + 1));
    test::TestContext t(input);
    for (const auto& name : entriesOf(folder + "/before", false)) {
        t.write(name, replaceAll(test::readFile(folder + "/before/" + name), "\n", "\r\n"));
    }
    ConversionStore conversions(t.context);

    IoStatus failure;
    EXPECT_TRUE(migrateDocument(t.context, conversions, &t.ui, input, target, {}, &failure));

    EXPECT_TRUE(failure.ok()) << failure.path();
    EXPECT_EQ(t.document.version, target);
    EXPECT_EQ(t.ui.countBoxes(444), 1);
    EXPECT_TRUE(t.ui.logs.empty());
    const auto expected = entriesOf(folder + "/after", false);
    auto found = entriesOf(t.store.folder(), false);
    std::erase_if(found, [](const std::string& name) { return !name.starts_with("[kavu]"); });
    EXPECT_EQ(found, expected);
    for (const auto& name : expected) {
        EXPECT_EQ(t.read(name), replaceAll(test::readFile(folder + "/after/" + name), "\n", "\r\n"))
            << name;
    }
}

std::string caseName(const testing::TestParamInfo<std::string>& info) {
    return replaceAll(info.param, "-", "_");
}

INSTANTIATE_TEST_SUITE_P(Cases, MigrationGolden, testing::ValuesIn(entriesOf(kFolder, true)),
                         caseName);

}  // namespace
}  // namespace kavu
