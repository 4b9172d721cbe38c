#include "core/document/DocumentVersion.h"

#include "core/TmatsDocument.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"

#include <string>
#include <string_view>

namespace kavu {

namespace {

/// A version key of the settings; a missing or impossible one is written again.
int versionSetting(ProfileSettings& settings, const TextKey& key) {
    constexpr std::size_t kLongest = 10;
    int version = leadingInt(std::string_view(settings.get(key)).substr(0, kLongest));
    if (version > kLatestEdition || version == 0) {
        version = kLatestEdition;
        settings.set(key, std::to_string(version));
    }
    return normalisedEdition(version);
}

}  // namespace

int editionOfSettings(ProfileSettings& settings) {
    // That of the file, or the one to convert to.
    const int input = versionSetting(settings, setting::kInputEdition);
    const int output = versionSetting(settings, setting::kOutputEdition);
    return settings.get(setting::kOutputMethod) == 1 ? input : output;
}

void resetVersionFromSettings(DocumentContext& context) {
    context.document.version = editionOfSettings(context.settings);
}

}  // namespace kavu
