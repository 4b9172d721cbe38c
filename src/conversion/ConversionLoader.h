// The load of the C group: raw commands become conversion records.
#pragma once

namespace kavu {

struct DocumentContext;
class ConversionStore;
class KeyValueStore;
class UserInterface;

/// Turns the commands in "DATA1.TMP" into chunks of sections, behind the chunks that are
/// there. `names` is used for the measurement names that were met, and is closed at the
/// end. `edition` rules the limits of the values.
///
/// False if it was cancelled, or if a file has failed: then 313 or 314 was shown, and the
/// files so far remain. Logs 315, 317 and 318 (see ChunkConverter); the document counts as
/// changed where a value or a record was not kept as it stands in the file.
bool loadConversionGroup(DocumentContext& context, KeyValueStore& names, ConversionStore& store,
                         UserInterface* parent, int edition);

}  // namespace kavu
