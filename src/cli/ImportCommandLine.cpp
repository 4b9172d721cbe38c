#include "cli/ImportCommandLine.h"

#include "cli/CommandLineParts.h"
#include "mdb/import/ImportLayout.h"
#include "mdb/record/MdbFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <array>

namespace kavu::cli {

namespace {

constexpr auto kDelimiterWords = std::to_array<std::pair<std::string_view, char>>(
    {{"comma", ','}, {"semicolon", ';'}, {"colon", ':'}, {"tab", '\t'}, {"space", ' '}});

char readDelimiter(const std::string& text) {
    const auto* const word =
        std::find_if(kDelimiterWords.begin(), kDelimiterWords.end(),
                     [&](const auto& delimiter) { return delimiter.first == text; });
    if (word != kDelimiterWords.end()) {
        return word->second;
    }
    const auto& all = importDelimiters();
    const bool isKnown = text.size() == 1 &&
                         std::any_of(all.begin(), all.end(), [&](const ImportDelimiter& delimiter) {
                             return delimiter.character == text.front();
                         });
    if (!isKnown) {
        throw UsageError{"--delimiter: '" + text +
                         "' is neither comma, semicolon, colon, tab or space nor one of "
                         ":;,)(*&^%$#@~|\\/"};
    }
    return text.front();
}

void readMap(const std::vector<std::string>& map, CommandLine& line) {
    for (const auto& text : map) {
        const auto equals = text.find('=');
        const auto field = mdbFieldIndex(std::string_view(text).substr(0, equals));
        if (equals == std::string::npos || !field) {
            throw UsageError{"--map: '" + text +
                             "' is not of the form FIELD=REF with the label or index of a field"};
        }
        line.import.map.emplace_back(*field, text.substr(equals + 1));
    }
}

/// Where the kind is known, a place in fixed columns must be one.
void checkPlaces(ImportKind kind, const CommandLine& line) {
    for (const auto& [field, reference] : line.import.map) {
        const auto start = parseInteger(reference.substr(0, reference.find(',')));
        if (kind == ImportKind::Fixed && (!start || *start < 1)) {
            throw UsageError{"--map: '" + reference + "' is not of the form START,SIZE"};
        }
    }
}

}  // namespace

void addImportCommands(MdbApps& apps, CommandLine& line, RawImport& import) {
    auto* command = addCommand(*apps.mdb, "import",
                               "Import a table of another tool; with --overwrite in place of all "
                               "that is there");
    apps.commands.emplace_back(Command::MdbImport, command);
    oneValue(command->add_option("SOURCE", line.file, "The table"), "")->required();
    command
        ->add_option("--map", import.map,
                     "A field of the record by its label or index, and where its value is: the "
                     "name of a column, the number of a field from 1, or START,SIZE. Repeatable")
        ->type_name("FIELD=REF")
        ->take_all()
        ->allow_extra_args(false);
    oneValue(command->add_option("--kind", line.import.kind,
                                 "dbase, delimited or fixed (default: by the extension)"),
             "KIND");
    oneValue(command->add_option("--delimiter", import.delimiter,
                                 "A character, or comma, semicolon, colon, tab, space (default: by "
                                 "the extension)"),
             "CHAR");
    command->add_flag("--header", line.import.header,
                      "The first line holds names, and REF may be one of them");
    oneValue(command->add_option("--profile", line.import.profile,
                                 "Import as the profile of this title says"),
             "TITLE");
    oneValue(command->add_option("--save-profile", line.import.saveProfile,
                                 "Keep kind, delimiter and mapping under this title"),
             "TITLE");

    command = addCommand(*apps.mdb, "profiles", "List the profiles of imports");
    apps.commands.emplace_back(Command::MdbProfiles, command);
    oneValue(command->add_option("--delete", line.import.deleteProfile,
                                 "Delete the profile of this title first"),
             "TITLE");
}

void readImportArguments(const RawImport& raw, CommandLine& line) {
    if (line.command != Command::MdbImport) {
        return;
    }
    auto& given = line.import;
    readMap(raw.map, line);
    if (!raw.delimiter.empty()) {
        given.delimiter = readDelimiter(raw.delimiter);
    }
    if (!given.kind.empty() && !importKindOf(given.kind)) {
        throw UsageError{"--kind: '" + given.kind + "' is not dbase, delimited or fixed"};
    }
    if (given.map.empty() && given.profile.empty()) {
        throw UsageError{"mdb import: --map or --profile is required"};
    }
    const auto kind = given.kind.empty() ? importKindOfFile(line.file) : importKindOf(given.kind);
    if (!kind && given.profile.empty()) {
        throw UsageError{"mdb import: the extension of '" + line.file +
                         "' does not say its kind; --kind does"};
    }
    if (kind && (given.profile.empty() || !given.kind.empty())) {
        checkPlaces(*kind, line);
    }
}

}  // namespace kavu::cli
