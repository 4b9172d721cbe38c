#include "application/Application.h"
#include "application/DocumentService.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/StreamReport.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/talk/Messages.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/CountCheck.h"
#include "groups/DataSources.h"
#include "groups/GroupScan.h"
#include "pcm/PcmFormat.h"
#include "pcm/PcmLoad.h"
#include "pcm/write/PcmSave.h"
#include "pcm/write/WordFrameConversion.h"

#include <set>

namespace kavu::cli {

namespace {

const char* resultText(int result) {
    return result < 0 ? "failed" : result > 0 ? "corrected" : "clean";
}

/// The letter of the first group that bears the link, or 0. What has nearly its name goes to
/// `similar`.
char groupOfLink(DocumentContext& context, ScriptedInterface* ui, const std::string& link,
                 std::string& similar) {
    for (const char letter : {'P', 'S', 'B', 'A'}) {
        const GroupNames names(context, ui, letter);
        if (names.find(link) > 0) {
            return letter;
        }
        for (const auto& entry : names.entries()) {
            if (similar.empty() && equalsIgnoreCase(entry.name, link)) {
                similar = entry.name;
            }
        }
    }
    return 0;
}

/// Why there is no such stream to load, for a load that has not said so itself.
std::string whyNotLoaded(DocumentContext& context, ScriptedInterface* ui, const std::string& link) {
    std::string similar;
    switch (groupOfLink(context, ui, link, similar)) {
        case 'P':
            return formatPrintf("The stream '%s' cannot be loaded.", link);
        case 'S':
            return formatPrintf(
                "'%s' is a packet stream, and no PCM stream. This file is 106-%2.2d; streams of "
                "messages are known from 106-%2.2d on.",
                link, editionNumber(context.document.version), editionNumber(kMessageDataEdition));
        case 'B':
            return formatPrintf("The bus stream '%s' is not a data link of any data source.", link);
        case 'A':
            return formatPrintf("'%s' is a PAM stream, and no PCM stream.", link);
        default:
            break;
    }
    return similar.empty()
               ? formatPrintf("There is no stream '%s' in this document.", link)
               : formatPrintf("There is no stream '%s' in this document, but there is a '%s'.",
                              link, similar);
}

std::size_t saidBy(const ScriptedInterface& ui) {
    return ui.messages().size() + ui.questions().size();
}

bool loadStream(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    auto& ui = *context.ui;
    const auto& link = context.line.link;
    const auto saidBefore = saidBy(ui);
    PcmLoadReport report;
    const bool loaded =
        loadPcmFormat(application.pcmFormat(), &ui, application.pcmSteps(), link, &report);
    output.members["stream"] = jsonText(link);
    output.members["result"] = loaded ? report.result : -1;
    const bool cancelled = cancelRequested(&ui);
    if (!loaded && !cancelled && saidBy(ui) == saidBefore) {
        showBox(&ui, whyNotLoaded(application.context(), &ui, link), "Unable To Load Stream");
    }
    return loaded && !cancelled;
}

/// Writes the stream to its groups and the document to its new file.
bool saveStream(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    auto& format = application.pcmFormat();
    format.changed = true;
    if (!savePcmFormat(format, context.ui)) {
        return false;
    }
    output.changed = true;
    if (!application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.text += "Saved as " + terminalLine(context.line.output) + "\n";
    return true;
}

}  // namespace

bool checkCommand(CommandContext& context, CommandOutput& output) {
    if (!context.line.deep) {
        return true;
    }
    auto& application = context.application;
    std::vector<PcmLinks> formats;
    (void)readPcmLinks(application.context(), context.ui, formats);
    Json streams = Json::array();
    std::vector<std::vector<std::string>> rows;
    std::set<std::string> loaded;
    for (const auto& format : formats) {
        // A link belongs to the first stream of its name.
        if (format.link.empty() || !loaded.insert(format.link).second) {
            continue;
        }
        context.ui->setStream(format.link);
        PcmLoadReport report;
        if (!loadPcmFormat(application.pcmFormat(), context.ui, application.pcmSteps(), format.link,
                           &report)) {
            report.result = -1;
        }
        application.pcmFormat().closeFormat();
        context.ui->setStream({});
        if (cancelRequested(context.ui)) {
            return false;
        }
        streams.push_back({{"stream", jsonText(format.link)}, {"result", report.result}});
        rows.push_back({terminalLine(format.link), resultText(report.result)});
    }
    checkGroupCounts(application.context(), context.ui);
    application.context().messages.showLog(context.ui, application.context().document.path);
    output.members["streams"] = std::move(streams);
    output.text = alignedTable(rows);
    return true;
}

bool streamCommand(CommandContext& context, CommandOutput& output) {
    if (!loadStream(context, output)) {
        return false;
    }
    if (context.line.json) {
        addStreamMembers(output.members, context.application.pcmFormat());
    } else {
        output.text = streamText(context.application.pcmFormat());
    }
    return true;
}

bool rewriteCommand(CommandContext& context, CommandOutput& output) {
    return loadStream(context, output) && saveStream(context, output);
}

bool wordFrameCommand(CommandContext& context, CommandOutput& output) {
    return loadStream(context, output) &&
           convertToWordFrame(context.application.pcmFormat(), context.ui) &&
           saveStream(context, output);
}

}  // namespace kavu::cli
