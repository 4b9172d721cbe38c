// The conversion records that go with measurements under new names.
#pragma once

#include "groups/SourceEdit.h"
#include "groups/SourceTransfer.h"

#include <span>

namespace kavu {

/// Records that are copied between two status texts.
inline constexpr std::size_t kTellEvery = 64;

/// True if the records can be looked for. In a store that can not be listed every one would
/// seem to be missing; that is reported.
bool recordsAreKnown(SourceParts& parts, UserInterface* parent);

/// Gives every new name a copy of the record of the old one, with its comment. A new name that
/// has a record keeps it, which is logged (459). Failures are reported; what was made until then
/// stays for the transaction of the caller to take back.
bool copyConversions(SourceParts& parts, UserInterface* parent,
                     std::span<const MeasurementPair> names);

}  // namespace kavu
