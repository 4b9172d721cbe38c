// The load of the C group: raw commands become conversion records.
#pragma once

#include "core/document/ConversionRuns.h"

namespace kavu {

struct DocumentContext;
class ConversionStore;
class KeyValueStore;
class UserInterface;

/// Turns the commands in "DATA1.TMP" into chunks of sections, after the existing chunks.
/// `names` collects the measurement names, and is closed at the end. `edition` decides
/// the limits of the values. `noted` tells where the commands are, if that is known.
///
/// False if it was cancelled, or if a file has failed: then 313 or 314 ("Unable to ...")
/// was shown, and the files made so far remain. Logs 315, 317 and 318 (see
/// RecordCheck); the document counts as changed if a value or a record was not kept as
/// it is in the file.
bool loadConversionGroup(DocumentContext& context, KeyValueStore& names, ConversionStore& store,
                         UserInterface* parent, int edition, ConversionRuns noted = {});

}  // namespace kavu
