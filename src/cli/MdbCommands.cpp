#include "cli/MdbCommands.h"

#include "application/Application.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/operations/DatabaseWork.h"

namespace kavu::cli {

namespace {

bool openLine(CommandContext& context, MeasurementDatabase& database, IfMissing missing) {
    return openDatabase(context.application.context(), context.ui, database, missing,
                        OnFailure::Report);
}

std::string realText(std::string stored) {
    fromStoredForm(stored);
    return stored;
}

/// The fields of a record that have a text, one on a line.
std::string recordText(const MdbRecord& record) {
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        if (!record[i].empty()) {
            rows.push_back({std::string(mdbFields()[i].label), terminalLine(realText(record[i]))});
        }
    }
    return alignedTable(rows);
}

MdbRecord lineRecord(const CommandLine& line) {
    MdbRecord record(std::string(trimBlanks(line.mdb.name)));
    for (const auto& [index, value] : line.mdb.values) {
        record[index] = trimBlanks(value);
    }
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        toStoredForm(record[i]);
    }
    return record;
}

bool info(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    if (!openLine(context, *database, IfMissing::Refuse)) {
        return false;
    }
    const auto columns = columnCount(database->version());
    const auto records = database->recordCount();
    output.members["columns"] = columns;
    output.members["records"] = records;
    output.text =
        alignedTable({{"Columns", std::to_string(columns)}, {"Records", std::to_string(records)}});
    return true;
}

bool validate(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    const int result =
        validateDatabase(context.application.context(), context.ui, *database,
                         context.line.edition.value_or(kLatestEdition), OnFailure::Report);
    output.members["result"] = result;
    output.text = result == 1 ? "No faults\n" : "";
    return result >= 0 && !cancelRequested(context.ui);
}

bool list(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    if (!openLine(context, *database, IfMissing::Refuse)) {
        return false;
    }
    const bool whole = context.line.mdb.records;
    Json rows = Json::array();
    for (auto record = database->first(); record; record = database->next()) {
        rows.push_back(whole ? recordJson(*record) : jsonText(record->name()));
        output.text += whole ? recordText(*record) + "\n" : terminalLine(record->name()) + "\n";
    }
    output.members[whole ? "records" : "names"] = std::move(rows);
    return true;
}

bool get(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    if (!openLine(context, *database, IfMissing::Refuse)) {
        return false;
    }
    std::size_t columns = 0;
    const auto record = database->find(context.line.mdb.name, &columns);
    output.members["found"] = record.has_value();
    if (record) {
        output.members["record"] = recordJson(*record);
        output.members["columns"] = columns;
    }
    output.text = record ? recordText(*record) : "There is no such record.\n";
    return true;
}

bool add(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    if (!openLine(context, *database, IfMissing::Start) ||
        !database->add(context.ui, lineRecord(context.line))) {
        return false;
    }
    output.text = "Added\n";
    return true;
}

bool put(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    bool replaced = false;
    if (!openLine(context, *database, IfMissing::Start) ||
        !database->replace(context.ui, lineRecord(context.line), &replaced)) {
        return false;
    }
    output.members["replaced"] = replaced;
    output.text = replaced ? "Replaced\n" : "Added\n";
    return true;
}

bool remove(CommandContext& context, CommandOutput& output) {
    const auto database = lineDatabase(context);
    bool removed = false;
    if (!openLine(context, *database, IfMissing::Refuse) ||
        !database->remove(context.ui, context.line.mdb.all ? "" : context.line.mdb.name,
                          &removed)) {
        return false;
    }
    output.members["removed"] = removed;
    output.text = removed ? "Removed\n" : "There is no such record.\n";
    return true;
}

/// Two names of one file, such as a link, would lose what is to be read.
bool isSource(CommandContext& context, const MeasurementDatabase& source) {
    const auto& out = context.line.output;
    bool same = false;
    if (probeSameFile(source.path(), out, same).ok() && !same) {
        return false;
    }
    if (!same && !fileExists(out)) {
        return false;
    }
    showBox(context.ui, formatPrintf("'%s' is an input; it is not overwritten.", out),
            "Unable To Write File");
    return true;
}

/// Writes every record of one database into another, which waits for its commit.
void copyRecords(CommandContext& context, MeasurementDatabase& from, MeasurementDatabase& to,
                 CommandOutput& output) {
    const auto& messages = context.application.context().messages;
    std::size_t converted = 0;
    std::size_t reduced = 0;
    Json refused = Json::array();
    for (auto record = from.first(); record; record = from.next()) {
        if (!to.canHold(*record)) {
            messages.log(context.ui, message::kNoSemicolon, title::kError);
            refused.push_back(jsonText(record->name()));
            output.text += "Refused: " + terminalLine(record->name()) + "\n";
        } else if (to.add(context.ui, *record)) {
            ++converted;
            reduced += to.version() == MdbVersion::Basic && record->hasBusFields() ? 1 : 0;
        }
    }
    output.text += std::to_string(converted) + " records converted";
    output.text += reduced > 0 ? ", " + std::to_string(reduced) + " without their 1553 fields\n"
                               : std::string("\n");
    output.members["converted"] = converted;
    output.members["refused"] = std::move(refused);
    output.members["reduced"] = reduced;
}

bool convert(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    const auto& line = context.line;
    const auto from = lineDatabase(context);
    if (!openLine(context, *from, IfMissing::Refuse) || isSource(context, *from)) {
        return false;
    }
    MeasurementDatabase to(document.messages, line.output, static_cast<MdbVersion>(line.mdb.to),
                           sampleRateOptions(document.settings));
    if (!openLine(context, to, IfMissing::Start)) {
        return false;
    }
    MeasurementDatabase::Batch batch(to, context.ui);
    if (!batch.isOpen() || (!line.mdb.append && !to.remove(context.ui, {})) ||
        !to.makeFile(context.ui)) {
        return false;
    }
    copyRecords(context, *from, to, output);
    document.messages.showDialog(context.ui, "KAVU-9 Error Messages",
                                 "Measurement Database: " + from->path(),
                                 document.messages.logPath());
    output.members["output"] = jsonText(line.output);
    return batch.commit(context.ui);
}

}  // namespace

bool isMdbCommand(Command command) {
    return command >= Command::MdbInfo && command <= Command::MdbProfiles;
}

bool mdbOpensDocument(Command command) {
    return command >= Command::MdbUpdateStream && command <= Command::MdbEuApply;
}

std::unique_ptr<MeasurementDatabase> lineDatabase(CommandContext& context) {
    auto& document = context.application.context();
    const auto& given = context.line.mdb;
    return std::make_unique<MeasurementDatabase>(
        document.messages,
        given.path.empty() ? document.settings.get(setting::kDatabasePath) : given.path,
        given.version ? static_cast<MdbVersion>(*given.version)
                      : databaseVersion(document.settings),
        sampleRateOptions(document.settings));
}

Json recordJson(const MdbRecord& record) {
    Json json = Json::object();
    for (std::size_t i = 0; i < mdbfield::kCount; ++i) {
        json[std::string(mdbFields()[i].label)] = jsonText(realText(record[i]));
    }
    return json;
}

bool mdbCommand(CommandContext& context, CommandOutput& output) {
    switch (context.line.command) {
        case Command::MdbInfo:
            return info(context, output);
        case Command::MdbValidate:
            return validate(context, output);
        case Command::MdbList:
            return list(context, output);
        case Command::MdbGet:
            return get(context, output);
        case Command::MdbAdd:
            return add(context, output);
        case Command::MdbPut:
            return put(context, output);
        case Command::MdbRemove:
            return remove(context, output);
        case Command::MdbImport:
            return importCommand(context, output);
        case Command::MdbProfiles:
            return importProfilesCommand(context, output);
        default:
            return convert(context, output);
    }
}

}  // namespace kavu::cli
