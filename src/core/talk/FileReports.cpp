#include "core/talk/FileReports.h"

#include "core/files/IoStatus.h"
#include "core/talk/UserInterface.h"

#include <string>

namespace kavu {

namespace {

void reportFile(UserInterface* parent, PrintfFormat<std::string, std::string> text,
                const IoStatus& status, MessageTitle titleId) {
    showBox(parent, formatPrintf(text, status.path(), status.reason()),
            std::string(loadText(titleId.id()).value_or("")));
}

}  // namespace

void reportUnableToRead(UserInterface* parent, const IoStatus& status, MessageTitle titleId) {
    reportFile(parent, "Unable to read '%s'\n\nReason: %s", status, titleId);
}

void reportUnableToWrite(UserInterface* parent, const IoStatus& status, MessageTitle titleId) {
    reportFile(parent, "Unable to write '%s'\n\nReason: %s", status, titleId);
}

void reportFailedAction(const Messages& messages, UserInterface* parent, const IoStatus& status,
                        MessageTitle titleId, std::string_view action, std::string_view name,
                        const BoxStyle& style) {
    messages.showFailure(parent, status, 313, titleId, style, action,
                         name.empty() ? std::string_view(status.path()) : name);
}

std::function<void(std::string_view code, std::string_view command)> changedByTextLog(
    const Messages& messages, UserInterface* parent, MessageTitle titleId) {
    return [&messages, parent, titleId](std::string_view code, std::string_view command) {
        messages.logText(
            parent, titleId,
            formatPrintf("This command holds the text '%s:' in its value, and was changed or "
                         "removed with the commands of that code. It was:\n%s",
                         code, command));
    };
}

void reportUnreadableGroup(const Messages& messages, UserInterface* parent, const IoStatus& status,
                           std::string_view group, std::string_view path) {
    messages.showFailure(parent, status, 407, title::kErrorSaving, kWarningBox, group, path);
}

}  // namespace kavu
