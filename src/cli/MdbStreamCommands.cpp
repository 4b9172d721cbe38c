// The commands between the measurement database and a TMATS file.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusUnpack.h"
#include "cli/MdbCommands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "core/TmatsDocument.h"
#include "core/document/Transaction.h"
#include "core/files/ProfileFile.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"
#include "mdb/operations/BusAdditions.h"
#include "mdb/operations/EuDataString.h"
#include "mdb/operations/StreamSave.h"
#include "mdb/operations/StreamUpdate.h"
#include "pcm/PcmFormat.h"

namespace kavu::cli {

namespace {

DatabaseWork workOf(CommandContext& context, MeasurementDatabase& database) {
    auto& application = context.application;
    return {application.context(), application.conversions(), application.pcmFormat(), database};
}

Json namesJson(const std::vector<std::string>& names) {
    Json json = Json::array();
    for (const auto& name : names) {
        json.push_back(jsonText(name));
    }
    return json;
}

bool updateStreamCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    const auto database = lineDatabase(context);
    if (!openDatabase(context.application.context(), context.ui, *database, IfMissing::Refuse,
                      OnFailure::Report) ||
        !loadStream(context, output)) {
        return false;
    }
    auto work = workOf(context, *database);
    StreamUpdateChoice choice;
    for (const auto index : line.mdb.fields) {
        choice.fields.set(index);
    }
    choice.autoAdd = {.root = line.mdb.addRoot, .children = line.mdb.addChildren};
    const auto result = updateStreamFromDatabase(work, context.ui, choice);
    if (!result.done || result.cancelled) {
        return false;
    }
    output.members["updated"] = result.updated;
    output.members["newDefinitions"] = result.newDefinitions;
    output.members["added"] = namesJson(result.added);
    return saveStream(context, output);
}

bool saveStreamCommand(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    if (!openDatabase(context.application.context(), context.ui, *database, IfMissing::Start,
                      OnFailure::Report) ||
        !loadStream(context, output)) {
        return false;
    }
    context.ui->setReply(kEraseDatabaseText, "yes");  // the option has said so
    auto work = workOf(context, *database);
    const auto result =
        saveStream(work, context.ui,
                   context.line.overwrite ? StreamSaveMode::Overwrite : StreamSaveMode::Append);
    if (!result.done) {
        return false;
    }
    output.members["added"] = namesJson(result.added);
    for (const auto& name : result.added) {
        output.text += "Added: " + terminalLine(name) + "\n";
    }
    return true;
}

/// The bus group with what was added to it, in the document.
bool addBus(CommandContext& context, CommandOutput& output, MeasurementDatabase& database) {
    auto& document = context.application.context();
    auto definition = openBusDefinition(document, context.ui, context.line.link);
    if (!definition) {
        return false;
    }
    auto work = workOf(context, database);
    const auto result =
        addBusMeasurements(work, context.ui, *definition, &context.application.measurementNames());
    output.members["added"] = namesJson(result.added);
    output.members["newDefinitions"] = result.newDefinitions;
    for (const auto& name : result.added) {
        output.text += "Added: " + terminalLine(name) + "\n";
    }
    return result.done && !result.cancelled &&
           storeBusDefinition(document, context.ui, *definition);
}

bool addBusCommand(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    const auto& link = context.line.link;
    const auto database = lineDatabase(context);
    if (!openDatabase(document, context.ui, *database, IfMissing::Refuse, OnFailure::Report)) {
        return false;
    }
    if (!isDataLink(document, context.ui, link)) {
        showBox(context.ui, formatPrintf("There is no data link '%s' in this document.", link),
                "Unable To Load Stream");
        return false;
    }
    output.members["stream"] = jsonText(link);
    const bool isStored = inTransaction(document, context.ui, OperationId::EditStream,
                                        [&] { return addBus(context, output, *database); });
    discardBusProfiles(document);
    return isStored && saveOutput(context, output);
}

/// The record of the line's measurement; nothing, which is reported, if there is none.
std::optional<RecordPlace> findRecord(CommandContext& context) {
    auto place = context.application.conversions().locateDefinition(context.line.mdb.name);
    if (place.found) {
        return place;
    }
    showBox(
        context.ui,
        formatPrintf("There is no conversion record '%s' in this document.", context.line.mdb.name),
        "Unable To Find Record");
    return std::nullopt;
}

bool euDataCommand(CommandContext& context, CommandOutput& output) {
    const auto place = findRecord(context);
    if (!place) {
        return false;
    }
    auto& conversions = context.application.conversions();
    const auto type = conversions.chunk(place->chunk)->value(place->section, kTypeCode, kNoType);
    auto text = euDataString(conversions, place->section, type);
    fromStoredForm(text);
    output.members["type"] = jsonText(type);
    output.members["text"] = jsonText(text);
    output.text = terminalLine(type) + "\n" + terminalText(text) + "\n";
    return true;
}

bool euApplyCommand(CommandContext& context, CommandOutput& output) {
    if (!findRecord(context)) {
        return false;
    }
    auto& application = context.application;
    const auto& line = context.line.mdb;
    const bool stored =
        inTransaction(application.context(), context.ui, OperationId::EditConversion, [&] {
            return applyEuDataString(application.conversions(), context.ui, line.name, line.type,
                                     line.text);
        });
    output.changed = application.context().document.changed;
    if (!application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["stored"] = stored;
    output.members["output"] = jsonText(context.line.output);
    output.text = (stored ? "Stored\n" : "Nothing was stored\n") + std::string("Saved as ") +
                  terminalLine(context.line.output) + "\n";
    return true;
}

bool prepareNothing(CommandContext&) {
    return true;
}

constexpr DocumentCommand kUpdateStream{prepareNothing, updateStreamCommand};
constexpr DocumentCommand kSaveStream{prepareNothing, saveStreamCommand};
constexpr DocumentCommand kAddBus{prepareNothing, addBusCommand};
constexpr DocumentCommand kEuData{prepareNothing, euDataCommand};
constexpr DocumentCommand kEuApply{prepareNothing, euApplyCommand};

}  // namespace

const DocumentCommand& mdbDocumentCommand(Command command) {
    switch (command) {
        case Command::MdbUpdateStream:
            return kUpdateStream;
        case Command::MdbSaveStream:
            return kSaveStream;
        case Command::MdbAddBus:
            return kAddBus;
        case Command::MdbEuData:
            return kEuData;
        default:
            return kEuApply;
    }
}

}  // namespace kavu::cli
