// Copies of conversion records for measurements under new names.
#pragma once

#include "groups/SourceEdit.h"
#include "groups/SourceTransfer.h"

#include <span>

namespace kavu {

/// Records that are copied between two status texts.
inline constexpr std::size_t kTellEvery = 64;

/// True if the records can be looked up. In a store that cannot be listed every one would
/// seem to be missing, which is reported.
bool recordsAreKnown(SourceParts& parts, UserInterface* parent);

/// Gives every new name a copy of the record of the old one, with its comment. A new name that
/// has a record keeps it, which is logged (459 "not imported"). Failures are reported; what was
/// made until then is left for the caller's transaction to take back.
bool copyConversions(SourceParts& parts, UserInterface* parent,
                     std::span<const MeasurementPair> names);

}  // namespace kavu
