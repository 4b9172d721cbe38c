// What the methods of the automation do with unsaved changes.
#pragma once

#include <cstdint>

namespace kavu {

class AutomationSession;

/// What a call is about to leave.
enum class Leaving {
    Document,  ///< the file with its loaded format
    Format,    ///< only the loaded format
};
/// True if there are changes that leaving would drop.
[[nodiscard]] bool hasUnsavedChanges(AutomationSession& session, Leaving what);
/// Asks whether to save them first (76, "has been modified"), and saves. Throws `Unsaved` without
/// a window, `NoDisplay` without a display, `Cancelled`, and what a save throws. After it, changes
/// that are left are those that the user gave up.
void settleChanges(AutomationSession& session, std::int64_t hWnd, Leaving what);

/// Writes a changed format to its groups: one operation of the document. Throws `FileError`.
void saveFormat(AutomationSession& session, std::int64_t hWnd);
/// Writes a changed format, and then the file with its backup. Throws `Refused` 144 ("is READ
/// ONLY"), and `FileError`: the document then stays open and changed.
void saveFile(AutomationSession& session, std::int64_t hWnd);

}  // namespace kavu
