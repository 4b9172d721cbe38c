// How every pass reports a working file that could not be read or written: the path and
// the system's reason, always in the same words.
#pragma once

#include "core/talk/Messages.h"

#include <functional>
#include <string_view>

namespace kavu {

class IoStatus;
class UserInterface;

/// A box without a number under the title of this number. All are silent without a parent.
void reportUnableToRead(UserInterface* parent, const IoStatus& status,
                        MessageTitle titleId = title::kError);
void reportUnableToWrite(UserInterface* parent, const IoStatus& status,
                         MessageTitle titleId = title::kError);

/// Message 313 ("Unable to %s %s"): what could not be done ("Write/Create") with the
/// conversion records. `name` is shown for the file; its path if that is empty.
void reportFailedAction(const Messages& messages, UserInterface* parent, const IoStatus& status,
                        MessageTitle titleId, std::string_view action, std::string_view name = {},
                        const BoxStyle& style = kErrorBox);
/// Logs each command that a change met because its value holds the text of another one, of `code`;
/// `command` is as it was before. REQUIRES: the messages outlive the function.
[[nodiscard]] std::function<void(std::string_view code, std::string_view command)> changedByTextLog(
    const Messages& messages, UserInterface* parent, MessageTitle titleId);
/// Message 407 ("Unable to read"): a group that is being saved, under its name in
/// messages.
void reportUnreadableGroup(const Messages& messages, UserInterface* parent, const IoStatus& status,
                           std::string_view group, std::string_view path);

}  // namespace kavu
