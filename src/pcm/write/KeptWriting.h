// Keeping what the groups of a stream hold and its model has no place for (see StreamKept.h).
#pragma once

#include "core/files/IoStatus.h"

namespace kavu {

class PcmFormat;
class UserInterface;

/// What has become of it.
struct KeptOutcome {
    IoStatus status{};
    bool isDropped = false;  ///< the user does not want it, or there is no one to be asked
};

/// Lists what the groups of the stream have lost now that they are written, and asks whether to
/// keep it, as the editors of the other groups do (see groups/KeptCommands.h): with Yes it is
/// appended to them. What belongs to a row or a measurement has its number now, and is gone with
/// it. Rows that the model does not have are after those that it has. A note lists what the stream
/// states itself by now. REQUIRES: an open transaction.
[[nodiscard]] KeptOutcome keepBeyondModel(PcmFormat& format, UserInterface* parent);
/// Forgets what has been dropped, once the groups are written without it.
void forgetKept(PcmFormat& format);

}  // namespace kavu
