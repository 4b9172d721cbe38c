#include "cli/Commands.h"

#include "application/Application.h"
#include "application/DocumentService.h"
#include "application/Recovery.h"
#include "application/StoreFacts.h"
#include "cli/MdbCommands.h"
#include "cli/ReportCommands.h"
#include "cli/TerminalText.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Clock.h"
#include "core/text/Printf.h"

#include <array>

namespace kavu::cli {

namespace {

constexpr const char* kCopyTitle = "Unable To Copy Working Store";

bool nothingToPrepare(CommandContext&) {
    return true;
}

// --- save ---------------------------------------------------------------------------------

bool prepareSave(CommandContext& context) {
    if (context.line.edition) {
        // As if the user had chosen "always save in this version", for this run only.
        auto& settings = context.application.context().settings;
        settings.overrideForThisRun(setting::kOutputMethod, 2);
        settings.overrideForThisRun(setting::kOutputEdition, std::to_string(*context.line.edition));
    }
    return true;
}

bool saveCommand(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    output.changed = document.document.changed;  // the save clears it
    if (!context.application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.text = "Saved as " + terminalLine(context.line.output) + "\n";
    return true;
}

// --- store --------------------------------------------------------------------------------

void reportFolder(UserInterface* ui, const IoStatus& status) {
    showBox(ui, formatPrintf("'%s': %s", status.path(), status.reason()), kCopyTitle);
}

bool prepareStore(CommandContext& context) {
    const std::string& folder = context.line.into;
    if (!fileExists(folder) && !folderExists(folder)) {
        return true;
    }
    std::vector<FolderEntry> entries;
    if (const auto status = listFolder(folder, entries); !status.ok()) {
        reportFolder(context.ui, status);
        return false;
    }
    if (!entries.empty()) {
        showBox(context.ui, formatPrintf("The folder '%s' is not empty.", folder), kCopyTitle);
        return false;
    }
    return true;
}

bool storeCommand(CommandContext& context, CommandOutput& output) {
    const auto& store = context.application.context().store;
    const std::string& into = context.line.into;
    std::vector<FolderEntry> entries;
    IoStatus status = context.application.conversions().writeOut();
    if (status.ok()) {
        status = makeFolders(into);
    }
    if (status.ok()) {
        status = listFolder(store.folder(), entries);
    }
    Json names = Json::array();
    for (const auto& entry : entries) {
        // The folders of the store are scratch places of editors; an opened document has none.
        // The record is about this folder and this run, and of no use in another one.
        if (!entry.isFolder && entry.name != working::kStoreRecord && status.ok()) {
            status = copyFile(store.pathOf(entry.name), into + "/" + entry.name);
            names.push_back(jsonText(entry.name));
            output.text += terminalLine(entry.name) + "\n";
        }
    }
    if (!status.ok()) {
        reportFolder(context.ui, status);
        return false;
    }
    output.text += std::to_string(names.size()) + (names.size() == 1 ? " file" : " files") +
                   " copied into " + terminalLine(into) + "\n";
    output.members["into"] = jsonText(into);
    output.members["files"] = std::move(names);
    return true;
}

// --- recover ------------------------------------------------------------------------------

std::string isoTime(std::int64_t seconds) {
    const auto time = localTime(seconds);
    return formatPrintf("%4.4d-%2.2d-%2.2dT%2.2d:%2.2d:%2.2d", time.year, time.month, time.day,
                        time.hour, time.minute, time.second);
}

Json storeMembers(const AbandonedStore& found, const StoreFacts& facts) {
    Json members{{"folder", jsonText(found.folder)}, {"modified", isoTime(found.modified)}};
    if (facts.record) {
        members["source"] = jsonText(facts.record->source.path);
        members["complete"] = facts.record->isSplit;
    }
    members["recovered"] = facts.isRecovered;
    return members;
}

std::string stateText(const StoreFacts& facts) {
    std::string text = facts.record ? facts.record->source.path : std::string();
    if (facts.isIncomplete()) {
        text += " (incomplete)";
    }
    return facts.isRecovered ? text + " (recovered as " + facts.recoveredAs + ")" : text;
}

// --- the table ----------------------------------------------------------------------------

constexpr DocumentCommand kCheck{nothingToPrepare, checkCommand};
constexpr DocumentCommand kSave{prepareSave, saveCommand};
constexpr DocumentCommand kStore{prepareStore, storeCommand};
constexpr DocumentCommand kTree{nothingToPrepare, treeCommand};
constexpr DocumentCommand kStream{nothingToPrepare, streamCommand};
constexpr DocumentCommand kRewrite{nothingToPrepare, rewriteCommand};
constexpr DocumentCommand kWordFrame{nothingToPrepare, wordFrameCommand};
constexpr DocumentCommand kBus{nothingToPrepare, busCommand};
constexpr DocumentCommand kConversions{nothingToPrepare, conversionsCommand};
constexpr DocumentCommand kEvaluate{nothingToPrepare, evaluateCommand};
constexpr DocumentCommand kGet{nothingToPrepare, getCommand};
constexpr DocumentCommand kSet{nothingToPrepare, setCommand};
constexpr DocumentCommand kSourceList{nothingToPrepare, sourceListCommand};
constexpr DocumentCommand kSource{nothingToPrepare, sourceCommand};
constexpr DocumentCommand kMessage{nothingToPrepare, messageCommand};
constexpr DocumentCommand kPacket{nothingToPrepare, packetCommand};
constexpr DocumentCommand kReport{prepareReport, reportCommand};
constexpr DocumentCommand kCalibration{prepareCalibration, calibrationCommand};
constexpr DocumentCommand kPlots{prepareCalibration, plotsCommand};

}  // namespace

const DocumentCommand& documentCommand(Command command) {
    switch (command) {
        case Command::Save:
            return kSave;
        case Command::Store:
            return kStore;
        case Command::Tree:
            return kTree;
        case Command::Stream:
            return kStream;
        case Command::Rewrite:
            return kRewrite;
        case Command::WordFrame:
            return kWordFrame;
        case Command::Bus:
            return kBus;
        case Command::Conversions:
            return kConversions;
        case Command::Evaluate:
            return kEvaluate;
        case Command::Get:
            return kGet;
        case Command::Set:
            return kSet;
        case Command::SourceList:
            return kSourceList;
        case Command::SourceCopy:
        case Command::SourceRename:
        case Command::SourceDelete:
        case Command::SourceImport:
        case Command::LinkRename:
            return kSource;
        case Command::Message:
            return kMessage;
        case Command::Packet:
            return kPacket;
        case Command::Report:
            return kReport;
        case Command::Calibration:
            return kCalibration;
        case Command::Plots:
            return kPlots;
        case Command::Check:
        case Command::Recover:
        case Command::Fit:
        case Command::Vocabulary:
            break;
        default:
            return mdbDocumentCommand(command);
    }
    return kCheck;
}

bool recoverCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    if (!recoverStore(context.application, context.ui, line.file, line.output, line.partial)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.text = "Recovered as " + terminalLine(context.line.output) + "\n";
    return true;
}

bool listAbandonedCommand(CommandContext& context, CommandOutput& output) {
    const auto& store = context.application.context().store;
    Json stores = Json::array();
    std::vector<std::vector<std::string>> rows;
    IoStatus failure;
    for (const auto& found : findAbandonedStores(store.temporaryRoot(), &failure)) {
        const auto facts = describeStore(found.folder);
        stores.push_back(storeMembers(found, facts));
        rows.push_back(
            {isoTime(found.modified), terminalLine(found.folder), terminalLine(stateText(facts))});
    }
    if (!failure.ok()) {
        showBox(context.ui,
                formatPrintf("Unable to read '%s'\n\nReason: %s", failure.path(), failure.reason()),
                "Unable To Recover Working Store");
    }
    output.text = rows.empty() ? "No folder was left behind.\n" : alignedTable(rows);
    output.members["stores"] = std::move(stores);
    return failure.ok();
}

}  // namespace kavu::cli
