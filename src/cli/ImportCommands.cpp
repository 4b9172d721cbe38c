// The import of tables into the measurement database, and its profiles.
#include "application/Application.h"
#include "cli/MdbCommands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "mdb/import/ImportFile.h"
#include "mdb/import/ImportProfiles.h"

#include <algorithm>

namespace kavu::cli {

namespace {

bool reportNoProfile(const CommandContext& context, const std::string& title) {
    showBox(context.ui, formatPrintf("There is no profile '%s'.", title), "Load Profile");
    return false;
}

ImportReference referenceOf(ImportKind kind, std::size_t field, const std::string& text) {
    const auto comma = kind == ImportKind::Fixed ? text.find(',') : std::string::npos;
    ImportReference reference{field, text.substr(0, comma)};
    if (comma != std::string::npos) {
        reference.second = text.substr(comma + 1);
    }
    return reference;
}

/// The profile of the line, if it names one, and what the line says besides it.
std::optional<ImportLayout> lineLayout(const CommandContext& context) {
    const auto& given = context.line.import;
    const auto& file = context.line.file;
    ImportLayout layout;
    layout.kind = importKindOfFile(file).value_or(ImportKind::Delimited);
    layout.delimiter = importDelimiterOfFile(file);
    if (!given.profile.empty()) {
        auto profile = loadImportProfile(context.application.context().settings, given.profile);
        if (!profile) {
            reportNoProfile(context, given.profile);
            return std::nullopt;
        }
        layout = std::move(profile->layout);
    }
    layout.kind = importKindOf(given.kind).value_or(layout.kind);
    layout.delimiter = given.delimiter.value_or(layout.delimiter);
    layout.hasHeader = layout.hasHeader || given.header;
    for (const auto& [field, text] : given.map) {
        std::erase_if(layout.references, [&, at = field](const ImportReference& reference) {
            return reference.field == at;
        });
        layout.references.push_back(referenceOf(layout.kind, field, text));
    }
    return layout;
}

Json importedNames(const std::vector<std::string>& names) {
    Json json = Json::array();
    for (const auto& name : names) {
        json.push_back(jsonText(name));
    }
    return json;
}

}  // namespace

bool importCommand(CommandContext& context, CommandOutput& output) {
    const auto& line = context.line;
    auto& document = context.application.context();
    const auto layout = lineLayout(context);
    if (!layout) {
        return false;
    }
    const auto database = lineDatabase(context);
    const ImportInput input{line.file, *layout, database->version()};
    const auto result = importFile(document, context.ui, input, *database, line.overwrite);
    if (!result) {
        return false;
    }
    if (!line.import.saveProfile.empty()) {
        (void)saveImportProfile(document.settings, {line.import.saveProfile, *layout},
                                database->version());
    }
    output.members["converted"] = result->converted;
    output.members["skipped"] = importedNames(result->skipped);
    output.members["refused"] = importedNames(result->refused);
    output.text = std::to_string(result->converted) + " measurements imported\n";
    for (const auto& name : result->refused) {
        output.text += "Refused: " + terminalLine(name) + "\n";
    }
    return !cancelRequested(context.ui);
}

bool importProfilesCommand(CommandContext& context, CommandOutput& output) {
    auto& settings = context.application.context().settings;
    const auto& title = context.line.import.deleteProfile;
    if (!title.empty() && !deleteImportProfile(settings, title)) {
        return reportNoProfile(context, title);
    }
    Json profiles = Json::array();
    std::vector<std::vector<std::string>> rows{{"Title", "Type"}};
    for (const auto& profile : listImportProfiles(settings)) {
        const auto& kind = importKinds()[static_cast<std::size_t>(profile.layout.kind)];
        profiles.push_back({{"title", jsonText(profile.title)}, {"kind", std::string(kind.word)}});
        rows.push_back({terminalLine(profile.title), std::string(kind.name)});
    }
    output.members["profiles"] = std::move(profiles);
    output.text = alignedTable(rows);
    return true;
}

}  // namespace kavu::cli
