// What edition 2011 changed in the B and D groups, and which streams it wants described by
// words and frames.
#pragma once

#include "core/files/IoStatus.h"

#include <string>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Takes the third list index off the commands of remote terminals and data words of a B
/// file: those of the first entry keep their first two indices, those of further entries
/// go. True if the file changed.
bool dropThirdBusIndex(DocumentContext& context, const std::string& name, IoStatus& status);

/// Makes one list of filtered and overwritten measurements of the lists that edition 2009
/// kept for each measurement list of a D file. True if the file changed.
bool joinFilterLists(DocumentContext& context, const std::string& name, int index,
                     IoStatus& status);

/// True if any P file has subframes, or any D file places a measurement by anything but
/// words and frames or tags.
bool needsWordFrames(DocumentContext& context, UserInterface* parent, IoStatus& status);

}  // namespace kavu
