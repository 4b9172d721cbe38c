#include "core/talk/SettingKeys.h"
#include "pcm/model/PcmFormatFields.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace kavu::test {
namespace {

TEST(PcmFormatFields, SettingsOfNewFormatsAreKeysOfTheSettings) {
    int count = 0;
    const auto keys = settingKeys();
    for (const auto& attribute : pcmAttributes()) {
        if (attribute.setting.empty()) {
            continue;
        }
        ++count;
        EXPECT_TRUE(std::any_of(keys.begin(), keys.end(), [&](const SettingKey& key) {
            return std::visit(
                [&](const auto* one) {
                    return one->name == attribute.setting && one->section == kApplicationName;
                },
                key);
        })) << attribute.setting;
    }
    EXPECT_EQ(count, 21);
}

}  // namespace
}  // namespace kavu::test
