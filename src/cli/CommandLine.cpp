#include "cli/CommandLine.h"

#include "cli/AttributeCommandLine.h"
#include "cli/CommandLineParts.h"
#include "cli/ImportCommandLine.h"
#include "cli/MdbCommandLine.h"
#include "cli/ReportCommandLine.h"
#include "cli/SdkCommandLine.h"
#include "cli/TableCommandLine.h"
#include "cli/XmlExportCommand.h"
#include "cli/XmlImportCommand.h"
#include "conversion/CurveFit.h"
#include "conversion/EuNumbers.h"
#include "core/talk/QuestionNames.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#ifndef KAVU_VERSION
#define KAVU_VERSION "unknown"
#endif

namespace kavu::cli {

namespace {

/// The texts of the command line before they are checked.
struct RawOptions {
    std::vector<std::string> answers;
    std::string now;
    std::string progress = "auto";
    std::string edition;
    std::vector<std::string> values;
    std::string order;
    std::string maxOrder;
    std::string precision;
    std::string bits;
    RawAttributes attributes;
    std::string edits;
    RawMdb mdb;
    RawImport import;
    RawTable table;
    RawReport report;
};

void addCommonOptions(CLI::App& app, CommandLine& line, RawOptions& raw) {
    app.add_flag("--json", line.json,
                 "Print one JSON document on standard output, and nothing else there");
    oneValue(app.add_option("--settings", line.settingsPath,
                            "Use this settings file in place of kavu.ini of the support folder"),
             "FILE");
    app.add_option("--answer", raw.answers,
                   "Reply to the question with this message number or name: yes, no, cancel, or "
                   "an integer or a text for a prompt. Repeatable")
        ->type_name("ID=REPLY")
        ->take_all()
        ->allow_extra_args(false);
    oneValue(app.add_option("--answer-all", line.replies.all,
                            "Reply to every question that has no answer of its own (default: no)"),
             "REPLY");
    app.add_flag("--keep-comments", line.keepComments,
                 "Keep the comments of a file where they are");
    app.add_flag("--overwrite", line.overwrite,
                 "An output other than a TMATS file may replace a file that is there");
    oneValue(app.add_option("--now", raw.now,
                            "The date and time that dates, banners and stamps use "
                            "(default: the clock)"),
             "YYYY-MM-DDTHH:MM:SS");
    oneValue(app.add_option("--progress", raw.progress,
                            "A progress line on standard error: auto, always or never; auto "
                            "shows it on a terminal only (default: auto)"),
             "WHEN");
    app.add_flag("--quiet", line.quiet, "No progress and no notes on standard error");
}

void addFile(CLI::App& command, CommandLine& line) {
    oneValue(command.add_option("FILE", line.file, "The TMATS file"), "")->required();
}

struct CommandApps {
    CLI::App* check;
    CLI::App* save;
    CLI::App* store;
    CLI::App* tree;
    CLI::App* recover;
    CLI::App* stream;
    CLI::App* rewrite;
    CLI::App* wordFrame;
    CLI::App* conversions;
    CLI::App* evaluate;
    CLI::App* fit;
    CLI::App* vocabulary;
    CLI::App* get;
    CLI::App* set;
    /// With the command of each.
    std::vector<std::pair<Command, CLI::App*>> sources;
    std::vector<std::pair<Command, CLI::App*>> edited;
    std::vector<std::pair<Command, CLI::App*>> bridge;
    MdbApps mdb;
    TableApps tables;
    SdkApps sdk;
    ReportApps reports;
};

void addLink(CLI::App& command, CommandLine& line) {
    oneValue(command.add_option("LINK", line.link, "The name of the stream's data link"), "")
        ->required();
}

CLI::Option* addOutput(CLI::App& command, CommandLine& line) {
    return oneValue(command.add_option("-o,--output", line.output, "The file to write"), "OUT")
        ->required();
}

void addStreamCommands(CLI::App& app, CommandApps& apps, CommandLine& line) {
    apps.stream = addCommand(app, "stream", "Load a PCM stream and show its whole model");
    addFile(*apps.stream, line);
    addLink(*apps.stream, line);
    apps.rewrite = addCommand(app, "rewrite",
                              "Load a PCM stream, rewrite its groups, and save the document "
                              "under another name");
    addFile(*apps.rewrite, line);
    addLink(*apps.rewrite, line);
    addOutput(*apps.rewrite, line);
    apps.wordFrame = addCommand(app, "word-frame",
                                "Load a PCM stream, give its measurements word/frame locations, "
                                "and save the document under another name");
    addFile(*apps.wordFrame, line);
    addLink(*apps.wordFrame, line);
    addOutput(*apps.wordFrame, line);
}

void addConversionCommands(CLI::App& app, CommandApps& apps, CommandLine& line, RawOptions& raw) {
    apps.conversions = addCommand(app, "conversions", "Show the conversion records of a file");
    addFile(*apps.conversions, line);
    oneValue(apps.conversions->add_option("NAME", line.name, "Only the record of this measurement"),
             "");

    apps.evaluate = addCommand(app, "evaluate",
                               "Convert telemetry values of a measurement to engineering units");
    addFile(*apps.evaluate, line);
    oneValue(apps.evaluate->add_option("NAME", line.name, "The measurement"), "")->required();
    apps.evaluate->add_option("VALUE", raw.values, "The telemetry values")
        ->type_name("")
        ->required();

    apps.fit = addCommand(app, "fit", "Fit a curve to the pairs of a text file");
    oneValue(apps.fit->add_option("PAIRS", line.file,
                                  "The file: a telemetry value and an engineering-unit value on "
                                  "each line"),
             "")
        ->required();
    oneValue(apps.fit->add_option("--order", raw.order, "The order of the fit, 0 to 10"), "N");
    apps.fit->add_flag("--best", line.best, "The order of the best fit (default)");
    oneValue(apps.fit->add_option("--max-order", raw.maxOrder,
                                  "The highest order that the search for the best fit tries, 1 to "
                                  "10 (default: the setting LSBFMaxOrder)"),
             "N");
    oneValue(apps.fit->add_option("--precision", raw.precision,
                                  "Digits after the point, 0 to 40 (default: the setting "
                                  "FloatPrecision)"),
             "N");
    oneValue(apps.fit->add_option("--bits", raw.bits,
                                  "The size of the telemetry word, 1 to 64: judge the "
                                  "coefficients over all its counts"),
             "N");
    oneValue(apps.fit->add_option("--svg", line.svg, "Draw the plot into this file"), "FILE");
}

void addEdition(CLI::App& command, const char* help, RawOptions& raw) {
    oneValue(command.add_option("--edition", raw.edition,
                                std::string(help) + ": 1996, 1999, 2000, 2001, 2004, 2005, 2007, "
                                                    "2009 or 2011"),
             "YEAR");
}

void addAttributeCommands(CLI::App& app, CommandApps& apps, CommandLine& line, RawOptions& raw) {
    apps.vocabulary =
        addCommand(app, "vocabulary", "Show the fields of a group in the order of the file");
    oneValue(apps.vocabulary->add_option("LETTER", raw.attributes.letter,
                                         "The letter of the group: " + vocabularyLetterList()),
             "")
        ->required();
    addEdition(*apps.vocabulary, "As this edition of IRIG 106 knows them (default: 2011)", raw);

    apps.get = addCommand(app, "get", "Show the values of commands by their codes");
    addFile(*apps.get, line);
    apps.get->add_option("CODE", raw.attributes.codes, "Codes, such as G\\PN and P-1\\D2")
        ->type_name("")
        ->required();

    apps.set = addCommand(app, "set",
                          "Set commands of the attribute groups, and save the document under "
                          "another name");
    addFile(*apps.set, line);
    apps.set
        ->add_option("CODE=VALUE", raw.attributes.assignments,
                     "Codes with their new values; an empty value removes the command")
        ->type_name("")
        ->required();
    addOutput(*apps.set, line);
}

void addAffixes(CLI::App& command, CommandLine& line) {
    oneValue(
        command.add_option("--prefix", line.prefix, "Text before the names of the measurements"),
        "TEXT");
    oneValue(command.add_option("--suffix", line.suffix, "Text after them"), "TEXT");
}

void addSourceCommands(CLI::App& app, CommandApps& apps, CommandLine& line) {
    auto* const source =
        addCommand(app, "source", "List, copy, rename, delete, import a data source");
    source->require_subcommand(1);
    auto* const link = addCommand(app, "link", "Rename a data link");
    link->require_subcommand(1);
    const auto add = [&](Command id, CLI::App& parent, const char* name, const char* help) {
        auto* const command = addCommand(parent, name, help);
        addFile(*command, line);
        apps.sources.emplace_back(id, command);
        return command;
    };
    const auto name = [&](CLI::App* command, const char* label, std::string& text,
                          const char* help) {
        oneValue(command->add_option(label, text, help), "")->required();
    };
    const auto allReferences = [&](CLI::App* command) {
        command->add_flag("--all-references", line.allReferences,
                          "Rename it in the commands, too, that the rename otherwise only lists");
    };
    constexpr const char* kSource = "The name of the data source";
    add(Command::SourceList, *source, "list", "Show the data sources, their groups and links");
    auto* command =
        add(Command::SourceCopy, *source, "copy", "Copy a data source with its streams");
    name(command, "NAME", line.source, kSource);
    name(command, "NEW", line.newName, "The name of the copy");
    addAffixes(*command, line);
    addOutput(*command, line);
    command = add(Command::SourceRename, *source, "rename", "Rename a data source");
    name(command, "OLD", line.source, kSource);
    name(command, "NEW", line.newName, "Its new name");
    allReferences(command);
    addOutput(*command, line);
    command = add(Command::SourceDelete, *source, "delete",
                  "Delete a data source with its streams; asks question 140");
    name(command, "NAME", line.source, kSource);
    addOutput(*command, line);
    command = add(Command::SourceImport, *source, "import",
                  "Import a data source with its stream from another TMATS file");
    name(command, "OTHER", line.otherFile, "The TMATS file to import from");
    name(command, "NAME", line.source, "The name of the data source there");
    command->add_flag("--recorder", line.recorder,
                      "It is a recorder/reproducer, not a transmitted data source");
    command->add_flag("--conversions", line.withConversions,
                      "Import the conversion records of its measurements, too");
    addAffixes(*command, line);
    addOutput(*command, line);
    command = add(Command::LinkRename, *link, "rename", "Rename a data link wherever it is named");
    name(command, "OLD", line.link, "The name of the data link");
    name(command, "NEW", line.newName, "Its new name");
    allReferences(command);
    addOutput(*command, line);
}

/// The commands on the groups of a stream that have forms of their own.
void addEditedCommands(CLI::App& app, CommandApps& apps, CommandLine& line, RawOptions& raw) {
    const auto add = [&](Command id, const char* name, const char* help) {
        auto* const command = addCommand(app, name, help);
        addFile(*command, line);
        addLink(*command, line);
        oneValue(command->add_option("--edit", raw.edits,
                                     "Steps to do first, as a JSON list or a file with one"),
                 "EDITS");
        addOutput(*command, line)->required(false);
        apps.edited.emplace_back(id, command);
    };
    add(Command::Bus, "bus",
        "Show the bus group of a data link, edit it, and save the document under another name");
    add(Command::Message, "message",
        "Show the message data of a link (from 106-09 on), edit it, and save the document under "
        "another name");
    add(Command::Packet, "packet",
        "Show the packet telemetry of a link (106-05 to 106-07), edit it, and save the document "
        "under another name");
}

CommandApps addCommands(CLI::App& app, CommandLine& line, RawOptions& raw) {
    CommandApps apps{};
    apps.check = addCommand(app, "check", "Open a TMATS file as the editor does, and report");
    addFile(*apps.check, line);
    apps.check->add_flag("--deep", line.deep,
                         "Load every stream as well, and report what is wrong with each");

    apps.save = addCommand(app, "save", "Open a TMATS file and save it under another name");
    addFile(*apps.save, line);
    oneValue(apps.save->add_option("-o,--output", line.output, "The file to write"), "OUT")
        ->required();
    addEdition(*apps.save, "Convert the document to this edition of IRIG 106", raw);

    apps.store = addCommand(app, "store",
                            "Open a TMATS file and copy the files of the working store, names "
                            "and bytes as they are");
    addFile(*apps.store, line);
    oneValue(apps.store->add_option("--into", line.into,
                                    "The folder for the copies: made if it is missing, must be "
                                    "empty"),
             "DIR")
        ->required();

    apps.tree = addCommand(app, "tree",
                           "Show the data sources, their links and streams, and the measurements");
    addFile(*apps.tree, line);

    apps.recover = addCommand(app, "recover",
                              "Build a TMATS file from a working store folder that a crashed run "
                              "left behind");
    oneValue(apps.recover->add_option("STORE", line.file, "The folder"), "");
    oneValue(apps.recover->add_option("-o,--output", line.output, "The file to write"), "OUT");
    apps.recover->add_flag("--partial", line.partial,
                           "Also from a folder whose file was not read to its end");
    apps.recover->add_flag("--list", line.list,
                           "List the folders that crashed runs left behind, newest first");
    addStreamCommands(app, apps, line);
    addConversionCommands(app, apps, line, raw);
    addAttributeCommands(app, apps, line, raw);
    addSourceCommands(app, apps, line);
    addEditedCommands(app, apps, line, raw);
    apps.mdb = addMdbCommands(app, line, raw.mdb);
    addImportCommands(apps.mdb, line, raw.import);
    apps.tables = addTableCommands(app, line, raw.table);
    apps.sdk = addSdkCommands(app, line);
    apps.reports = addReportCommands(app, line, raw.report);
    apps.bridge = {{Command::XmlImport, addXmlImportCommand(app, line)},
                   {Command::XmlExport, addXmlExportCommand(app, line)}};
    return apps;
}

Command chosenCommand(const CommandApps& apps) {
    if (apps.save->parsed()) {
        return Command::Save;
    }
    if (apps.store->parsed()) {
        return Command::Store;
    }
    if (apps.tree->parsed()) {
        return Command::Tree;
    }
    if (apps.stream->parsed()) {
        return Command::Stream;
    }
    if (apps.rewrite->parsed()) {
        return Command::Rewrite;
    }
    if (apps.wordFrame->parsed()) {
        return Command::WordFrame;
    }
    if (apps.conversions->parsed()) {
        return Command::Conversions;
    }
    if (apps.evaluate->parsed()) {
        return Command::Evaluate;
    }
    if (apps.fit->parsed()) {
        return Command::Fit;
    }
    if (apps.vocabulary->parsed()) {
        return Command::Vocabulary;
    }
    if (apps.get->parsed()) {
        return Command::Get;
    }
    if (apps.set->parsed()) {
        return Command::Set;
    }
    for (const auto& [command, chosen] : apps.sources) {
        if (chosen->parsed()) {
            return command;
        }
    }
    for (const auto* const commands : {&apps.edited, &apps.mdb.commands, &apps.tables.commands,
                                       &apps.reports.commands, &apps.sdk, &apps.bridge}) {
        for (const auto& [command, chosen] : *commands) {
            if (chosen->parsed()) {
                return command;
            }
        }
    }
    return apps.recover->parsed() ? Command::Recover : Command::Check;
}

void readAnswers(const RawOptions& raw, CommandLine& line) {
    for (const auto& answer : raw.answers) {
        const auto equals = answer.find('=');
        int id = 0;
        const char* const begin = answer.data();
        const char* const end = begin + std::min(equals, answer.size());
        const auto [stop, error] = std::from_chars(begin, end, id);
        if (equals != std::string::npos && isQuestionName({begin, end})) {
            line.replies.byName[std::string(begin, end)] = answer.substr(equals + 1);
            continue;
        }
        if (equals == std::string::npos || error != std::errc() || stop != end || id <= 0) {
            throw UsageError{"--answer: '" + answer +
                             "' is not of the form ID=REPLY with the number of a message or the "
                             "name of a question"};
        }
        line.replies.byId[id] = answer.substr(equals + 1);
    }
}

void readNow(const CLI::App& app, const RawOptions& raw, CommandLine& line) {
    if (app.count("--now") == 0) {
        return;
    }
    line.now = parseIsoTime(raw.now);
    if (!line.now) {
        throw UsageError{"--now: '" + raw.now +
                         "' is not a date and time of the form YYYY-MM-DDTHH:MM:SS"};
    }
}

void readProgress(const RawOptions& raw, CommandLine& line) {
    if (raw.progress == "auto") {
        line.progress = ProgressWhen::Auto;
    } else if (raw.progress == "always") {
        line.progress = ProgressWhen::Always;
    } else if (raw.progress == "never") {
        line.progress = ProgressWhen::Never;
    } else {
        throw UsageError{"--progress: '" + raw.progress + "' is not auto, always or never"};
    }
}

void readEdition(const CommandApps& apps, const RawOptions& raw, CommandLine& line) {
    if (apps.save->count("--edition") + apps.vocabulary->count("--edition") == 0) {
        return;
    }
    for (const int year : kEditions) {
        if (raw.edition == std::to_string(year)) {
            line.edition = year;
            return;
        }
    }
    throw UsageError{"--edition: '" + raw.edition +
                     "' is not an edition of IRIG 106 that is known here"};
}

void readValues(const RawOptions& raw, CommandLine& line) {
    for (const auto& text : raw.values) {
        const auto value = parseDouble(text);
        if (!value) {
            throw UsageError{"evaluate: '" + text + "' is not a number"};
        }
        line.values.push_back(*value);
    }
}

std::optional<int> readBounded(const CLI::App& app, const char* option, const std::string& text,
                               int least, int most) {
    if (app.count(option) == 0) {
        return std::nullopt;
    }
    const auto number = parseInteger(text);
    if (!number || *number < least || *number > most) {
        throw UsageError{std::string(option) + ": '" + text + "' is not a whole number from " +
                         std::to_string(least) + " to " + std::to_string(most)};
    }
    return static_cast<int>(*number);
}

void readFit(const CommandApps& apps, const RawOptions& raw, CommandLine& line) {
    line.order = readBounded(*apps.fit, "--order", raw.order, 0, kHighestOrder);
    line.maxOrder = readBounded(*apps.fit, "--max-order", raw.maxOrder, 1, kHighestOrder);
    line.precision = readBounded(*apps.fit, "--precision", raw.precision, 0, kMostFloatPrecision);
    line.bits = readBounded(*apps.fit, "--bits", raw.bits, 1, 64);
    if (line.best && line.order) {
        throw UsageError{"fit: --order and --best exclude each other"};
    }
}

void readEdits(const CommandApps& apps, const RawOptions& raw, CommandLine& line) {
    for (const auto& [command, app] : apps.edited) {
        if (!app->parsed() || app->count("--edit") == 0) {
            continue;
        }
        auto steps = readEditSteps(
            raw.edits, command == Command::Bus ? EditActs::WithTerminals : EditActs::Plain);
        if (const auto* const wrong = std::get_if<std::string>(&steps)) {
            throw UsageError{"--edit: " + *wrong};
        }
        line.edits = std::move(std::get<std::vector<EditStep>>(steps));
    }
}

/// Adds the 0 to numbers such as "-.5", which would be taken for an option.
std::vector<std::string> withWholeNumbers(std::vector<std::string> arguments) {
    for (auto& argument : arguments) {
        if (argument.size() > 2 && argument.starts_with("-.") && isDigit(argument[2])) {
            argument.insert(1, "0");
        }
    }
    return arguments;
}

void checkRecover(const CommandLine& line) {
    if (line.command != Command::Recover) {
        return;
    }
    if (line.list && (!line.file.empty() || !line.output.empty() || line.partial)) {
        throw UsageError{"recover: --list takes neither a folder nor an output"};
    }
    if (!line.list && (line.file.empty() || line.output.empty())) {
        throw UsageError{"recover: STORE and -o OUT are required, or --list"};
    }
}

ParsedCommandLine wrongUsage(const std::string& text) {
    ParsedCommandLine result;
    result.status = ExitStatus::Usage;
    result.err = "kavu-cli: " + text + "\nRun `kavu-cli --help` for the commands and options.\n";
    return result;
}

/// What is wrong with a line; a misspelt command is named.
std::string usageText(const CLI::App& app, const CLI::ParseError& error) {
    const auto rest = app.remaining();
    if (!app.get_subcommands().empty() || rest.empty()) {
        return error.what();
    }
    return rest.front().starts_with('-') ? "there is no option '" + rest.front() + "'"
                                         : "there is no command '" + rest.front() + "'";
}

}  // namespace

ParsedCommandLine parseCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    RawOptions raw;
    CLI::App app("The editor for TMATS files without its windows.", "kavu-cli");
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("kavu-cli " KAVU_VERSION),
                         "Print the version and exit");
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    addCommonOptions(app, line, raw);
    const CommandApps apps = addCommands(app, line, raw);

    try {
        auto words = withWholeNumbers(arguments);
        std::reverse(words.begin(), words.end());
        app.parse(std::move(words));
        line.command = chosenCommand(apps);
        readAnswers(raw, line);
        if (line.allReferences) {
            line.replies.byName.try_emplace(std::string(question::kAllReferences), "yes");
        }
        if (line.table.yes) {
            line.replies.byName[std::string(question::kPurge)] = "yes";
        }
        readNow(app, raw, line);
        readProgress(raw, line);
        readEdition(apps, raw, line);
        checkRecover(line);
        readValues(raw, line);
        readFit(apps, raw, line);
        readEdits(apps, raw, line);
        readMdbArguments(apps.mdb, raw.mdb, line);
        readImportArguments(raw.import, line);
        readTableArguments(apps.tables, raw.table, line);
        readReportArguments(raw.report, line);
        if (auto refused = readAttributeArguments(raw.attributes, line)) {
            throw UsageError{*refused};
        }
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            return wrongUsage(usageText(app, error));
        }
        ParsedCommandLine result;
        std::ostringstream out;
        std::ostringstream err;
        app.exit(error, out, err);
        result.out = out.str();
        return result;
    } catch (const UsageError& error) {
        return wrongUsage(error.text);
    }
    ParsedCommandLine result;
    result.line = std::move(line);
    return result;
}

}  // namespace kavu::cli
