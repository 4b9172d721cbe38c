// The grid of a frame as a screen reader meets it: a table of the rows, and in them the
// cells, that are in view. A frame has half a million places; only those that can be seen are
// objects.
#pragma once

namespace kavu {

/// Makes grids known to assistive technology. May be called again.
void installFrameAccess();

}  // namespace kavu
