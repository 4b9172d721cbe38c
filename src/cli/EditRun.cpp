#include "cli/EditRun.h"

#include "application/Application.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "groups/SourceNames.h"

namespace kavu::cli {

bool isKnownLink(CommandContext& context) {
    LinkNames links;
    if (!gatherLinkNames(context.application.context(), context.ui, links)) {
        return false;
    }
    if (!links.has(context.line.link)) {
        showBox(context.ui,
                formatPrintf("There is no data link '%s' in this document.", context.line.link),
                "Unable To Load Stream");
        return false;
    }
    return true;
}

bool saveEdited(CommandContext& context, CommandOutput& output,
                const std::function<bool()>& store) {
    if (context.line.output.empty()) {
        return true;
    }
    return store() && saveOutput(context, output);
}

std::string treeLine(int level, std::string_view text) {
    return std::string(static_cast<std::size_t>(level) * 2, ' ') + terminalLine(text) + "\n";
}

}  // namespace kavu::cli
