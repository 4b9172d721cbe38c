// What edition 2011 changed in the B and D groups, and which streams it requires to be
// described by words and frames.
#pragma once

#include "core/files/IoStatus.h"

#include <string>

namespace kavu {

struct DocumentContext;
class UserInterface;

/// Removes the third list index from the commands of remote terminals and data words of a
/// B file: those of the first entry keep their first two indices, those of further
/// entries are deleted. True if the file changed.
bool dropThirdBusIndex(DocumentContext& context, const std::string& name, IoStatus& status);

/// Joins the lists of filtered and overwritten measurements, which edition 2009 kept for
/// each measurement list of a D file, into one. True if the file changed.
bool joinFilterLists(DocumentContext& context, const std::string& name, int index,
                     IoStatus& status);

/// True if any P file has subframes, or any D file locates a measurement other than by
/// words and frames or tags.
bool needsWordFrames(DocumentContext& context, UserInterface* parent, IoStatus& status);

}  // namespace kavu
