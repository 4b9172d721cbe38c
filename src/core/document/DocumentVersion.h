// The edition of a document before its files define one: a load and a close both start
// with that of the settings.
#pragma once

namespace kavu {

struct DocumentContext;

/// Sets `version` from the settings; a missing or impossible key is written again.
void resetVersionFromSettings(DocumentContext& context);

}  // namespace kavu
