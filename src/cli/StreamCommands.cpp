#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/EditionHint.h"
#include "bus/StreamData.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/StreamReport.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
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

#include <algorithm>
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

}  // namespace

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

bool saveStream(CommandContext& context, CommandOutput& output) {
    auto& format = context.application.pcmFormat();
    format.changed = true;
    return savePcmFormat(format, context.ui) && saveOutput(context, output);
}

namespace {

/// The worse of two results of a load.
int worse(int first, int second) {
    return first < 0 || second < 0 ? -1 : std::max(first, second);
}

/// Writes a stream that has message data or packets: its format, if it has one, and its S group, in
/// one operation.
bool rewriteWithData(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    auto& format = context.application.pcmFormat();
    const auto& link = context.line.link;
    output.members["stream"] = jsonText(link);
    output.members["result"] = 0;
    const bool hasFormat = findGroupIndex(document, context.ui, 'P', link) > 0;
    if (hasFormat && !loadStream(context, output)) {
        return false;
    }
    format.changed = hasFormat;
    auto& result = output.members["result"];
    return inTransaction(document, context.ui, OperationId::EditStream,
                         [&] {
                             result = savePcmFormat(format, context.ui)
                                          ? worse(result.get<int>(),
                                                  rewriteStreamData(document, context.ui, link))
                                          : -1;
                             return result >= 0;
                         }) &&
           !context.ui->cancelRequested() && saveOutput(context, output);
}

/// A bus stream without a format of its own: only its bus group is written.
bool rewriteBusAlone(CommandContext& context, CommandOutput& output) {
    output.members["stream"] = jsonText(context.line.link);
    output.members["result"] = 0;
    return rewriteBusGroup(context, context.line.link) && saveOutput(context, output);
}

bool rewriteBus(CommandContext& context, CommandOutput& output) {
    const auto& link = context.line.link;
    if (findGroupIndex(context.application.context(), context.ui, 'P', link) == 0) {
        return rewriteBusAlone(context, output);
    }
    return loadStream(context, output) && rewriteBusGroup(context, link) &&
           saveStream(context, output);
}

/// What the deep check reports of a stream.
class CheckedStreams {
  public:
    void add(const std::string& link, int result) {
        members_.push_back({{"stream", jsonText(link)}, {"result", result}});
        rows_.push_back({terminalLine(link), resultText(result)});
    }
    void give(CommandOutput& output) {
        output.members["streams"] = std::move(members_);
        output.text = alignedTable(rows_);
    }

  private:
    Json members_ = Json::array();
    std::vector<std::vector<std::string>> rows_;
};

/// The result of the load of a stream with a format, with its bus, message data or packets.
int loadForCheck(CommandContext& context, const std::string& link) {
    auto& application = context.application;
    PcmLoadReport report;
    auto& format = application.pcmFormat();
    if (!loadPcmFormat(format, context.ui, application.pcmSteps(), link, &report) ||
        (format.isBusStream && !readBusGroup(context, link))) {
        report.result = -1;
    }
    format.closeFormat();
    auto& document = application.context();
    return streamDataOf(document, context.ui, link) == StreamData::None
               ? report.result
               : worse(report.result, checkStreamData(document, context.ui, link));
}

/// A file without an edition of its own may read better as one of another edition.
void addHint(CommandContext& context, CommandOutput& output) {
    if (const auto hint = findBetterEdition(context.application, context.ui)) {
        const auto text = hintText(*hint);
        output.members["hint"] = jsonText(text);
        context.ui->note(text);
    }
}

}  // namespace

bool saveOutput(CommandContext& context, CommandOutput& output) {
    auto& application = context.application;
    output.changed = application.context().document.changed;  // the save clears it
    if (!application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.text += "Saved as " + terminalLine(context.line.output) + "\n";
    return true;
}

bool checkCommand(CommandContext& context, CommandOutput& output) {
    if (!context.line.deep) {
        addHint(context, output);
        return !cancelRequested(context.ui);
    }
    auto& document = context.application.context();
    CheckedStreams streams;
    std::set<std::string> loaded;
    const auto check = [&](const std::string& link, const auto& load) {
        // A link belongs to the first stream of its name.
        if (link.empty() || !loaded.insert(link).second) {
            return true;
        }
        context.ui->setStream(link);
        const int result = load();
        context.ui->setStream({});
        streams.add(link, result);
        return !cancelRequested(context.ui);
    };
    std::vector<PcmLinks> formats;
    (void)readPcmLinks(document, context.ui, formats);
    for (const auto& format : formats) {
        if (!check(format.link, [&] { return loadForCheck(context, format.link); })) {
            return false;
        }
    }
    const GroupNames buses(document, context.ui, 'B');
    for (const auto& bus : buses.entries()) {
        if (!check(bus.name, [&] { return readBusGroup(context, bus.name) ? 0 : -1; })) {
            return false;
        }
    }
    const GroupNames data(document, context.ui, 'S');
    for (const auto& each : data.entries()) {
        if (!check(each.name, [&] { return checkStreamData(document, context.ui, each.name); })) {
            return false;
        }
    }
    checkGroupCounts(document, context.ui);
    document.messages.showLog(context.ui, document.document.path);
    streams.give(output);
    addHint(context, output);
    return !cancelRequested(context.ui);
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
    auto& document = context.application.context();
    const auto& link = context.line.link;
    if (streamDataOf(document, context.ui, link) != StreamData::None) {
        return rewriteWithData(context, output);
    }
    return streamKindOfLink(document, context.ui, link) == StreamKind::Bus
               ? rewriteBus(context, output)
               : loadStream(context, output) && saveStream(context, output);
}

bool wordFrameCommand(CommandContext& context, CommandOutput& output) {
    return loadStream(context, output) &&
           convertToWordFrame(context.application.pcmFormat(), context.ui) &&
           saveStream(context, output);
}

}  // namespace kavu::cli
