// Working stores that a crashed run left behind: finding them, and building a TMATS file
// from what was split.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kavu {

class Application;
class UserInterface;

/// Builds a TMATS file from a working store that a crashed run left behind. Nothing in
/// `folder` changes. An operation that had not ended is left out, which a note says with its
/// name. False if there is no output; `parent` has been told why.
bool recoverStore(Application& application, UserInterface* parent, const std::string& folder,
                  const std::string& output);

/// A working store under the temporary root whose process is gone.
struct AbandonedStore {
    std::string folder;
    std::int64_t modified = 0;  ///< seconds since 1970
};
/// The abandoned stores of this user, newest first. Only their folders are looked at,
/// nothing in them is read. `failure`, if given, tells why the root could not be listed.
[[nodiscard]] std::vector<AbandonedStore> findAbandonedStores(const std::string& temporaryRoot,
                                                              IoStatus* failure = nullptr);

}  // namespace kavu
