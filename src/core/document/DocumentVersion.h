// The edition of a document before its files define one: a load and a close both start
// with that of the settings.
#pragma once

namespace kavu {

struct DocumentContext;

class ProfileSettings;

/// The edition of the settings; a missing or impossible key is written again.
[[nodiscard]] int editionOfSettings(ProfileSettings& settings);
/// Sets `version` to it.
void resetVersionFromSettings(DocumentContext& context);

}  // namespace kavu
