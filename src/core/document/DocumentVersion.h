// The edition that a document has before its files say more: both a load and a close begin
// with that of the settings.
#pragma once

namespace kavu {

struct DocumentContext;

/// Sets `version` from the settings; a missing or impossible key is written again.
void resetVersionFromSettings(DocumentContext& context);

}  // namespace kavu
