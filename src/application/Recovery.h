// Working stores left by crashed runs: finding them, and building a TMATS file from their
// group files.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kavu {

class Application;
class UserInterface;

/// Builds a TMATS file from the working store of a crashed run. Nothing in `folder` changes.
/// An unfinished operation is left out, which a note reports with its name. False if there
/// is no output; the reason has been reported to `parent`.
bool recoverStore(Application& application, UserInterface* parent, const std::string& folder,
                  const std::string& output);

/// A working store under the temporary root whose process is gone.
struct AbandonedStore {
    std::string folder;
    std::int64_t modified = 0;  ///< seconds since 1970
};
/// The abandoned stores of this user, newest first. Only the folders are examined,
/// nothing in them is read. `failure`, if given, says why the root could not be listed.
[[nodiscard]] std::vector<AbandonedStore> findAbandonedStores(const std::string& temporaryRoot,
                                                              IoStatus* failure = nullptr);

}  // namespace kavu
