// The common way to open files that the user names: asks before it overwrites, makes the
// backup, and reports why a file cannot be opened.
#pragma once

#include "core/files/FileIo.h"

#include <string>

namespace kavu {

class UserInterface;

enum class OverwritePolicy {
    Ask = 0,           ///< ask before overwriting
    AskAndBackUp = 1,  ///< and back the file up
    BackUpOnly = -1,   ///< only back it up
};

/// Opens a file for reading; reports a failure to the parent. A folder, a pipe and a device are
/// none.
bool openFileChecked(UserInterface* parent, const std::string& path, ByteSource& source);
/// Opens for writing, with the question and the backup of the policy. Without a parent the
/// answer is No. An existing file is overwritten in place, so its links, owner and mode
/// stay.
bool openFileChecked(UserInterface* parent, const std::string& path, WriteMode mode,
                     OverwritePolicy policy, FileWriter& writer);

/// "Unable to open '%s'", with the reason.
void reportUnableToOpen(UserInterface* parent, const IoStatus& status);

/// The name of a file's backup: its path up to the last `.` (wherever that is in the
/// path), and ".bak".
[[nodiscard]] std::string backupName(const std::string& path);
/// Copies a file to its backup name, with its mode. The backup is complete on the disk before it
/// takes the place of an older one, or of a link of that name.
/// False if the save is to stop. `made`, if given, says whether there is a backup now: the
/// user may choose to go on without one. Without a parent the save stops.
bool makeBackup(UserInterface* parent, const std::string& path, bool* made = nullptr);

}  // namespace kavu
