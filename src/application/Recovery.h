// Builds a TMATS file from the group files of a working store that a crashed run has left.
#pragma once

#include <string>

namespace kavu {

class Application;
class UserInterface;

/// Builds a TMATS file from the working store of a crashed run. Of the document in `folder`
/// nothing changes; the store is marked as recovered. An unfinished operation is left out, which
/// a note reports with its name. Group files that are missing, cut off or no files are reported,
/// and so are former contents of a file of the user that the store holds. False if there is no
/// output; the reason has been reported to `parent`.
///
/// A store that is in use is refused, and without `isPartial` so is one whose file was not read
/// to its end.
bool recoverStore(Application& application, UserInterface* parent, const std::string& folder,
                  const std::string& output, bool isPartial = false);

}  // namespace kavu
