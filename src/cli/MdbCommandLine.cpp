#include "cli/MdbCommandLine.h"

#include "cli/CommandLineParts.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "mdb/record/MdbFields.h"

namespace kavu::cli {

namespace {

void addDatabase(CLI::App& command, CommandLine& line, RawMdb& raw) {
    oneValue(
        command.add_option("--database", line.mdb.path, "The database (default: the setting MDB)"),
        "PATH");
    oneValue(command.add_option("--database-version", raw.version,
                                "Its form: 0 text of 28 columns, 1 text of 36 columns, 2 XML "
                                "(default: the setting MDBVer)"),
             "N");
}

/// Adds commands to `mdb`.
class MdbCommands {
  public:
    MdbCommands(MdbApps& apps, CommandLine& line, RawMdb& raw)
        : apps_(apps), line_(line), raw_(raw) {}

    CLI::App& add(Command id, const char* name, const char* help) {
        auto* const command = addCommand(*apps_.mdb, name, help);
        apps_.commands.emplace_back(id, command);
        return *command;
    }
    CLI::App& addOfFile(Command id, const char* name, const char* help, bool hasLink) {
        auto& command = add(id, name, help);
        oneValue(command.add_option("FILE", line_.file, "The TMATS file"), "")->required();
        if (hasLink) {
            oneValue(command.add_option("LINK", line_.link, "The name of the stream's data link"),
                     "")
                ->required();
        }
        return command;
    }
    void addName(CLI::App& command, bool isRequired = true) {
        oneValue(command.add_option("NAME", line_.mdb.name, "The name of the measurement"), "")
            ->required(isRequired);
    }
    void addValues(CLI::App& command) {
        command
            .add_option("--field", raw_.values,
                        "A field by its label or index, and its value. Repeatable")
            ->type_name("FIELD=VALUE")
            ->take_all()
            ->allow_extra_args(false);
    }
    void addOutput(CLI::App& command) {
        oneValue(command.add_option("-o,--output", line_.output, "The file to write"), "OUT")
            ->required();
    }

  private:
    MdbApps& apps_;
    CommandLine& line_;
    RawMdb& raw_;
};

void addStreamParts(MdbCommands& commands, CommandLine& line, RawMdb& raw) {
    auto* command = &commands.addOfFile(Command::MdbUpdateStream, "update-stream",
                                        "Update a stream from the database", true);
    oneValue(command->add_option("--fields", raw.fields,
                                 "What is updated: all (default), none, or labels and indices "
                                 "with commas between, of 3 to 6 and 15 to 35"),
             "LIST");
    command->add_flag("--add-root", line.mdb.addRoot, "Add the root word of a measurement, too");
    command->add_flag("--add-children", line.mdb.addChildren, "Add its children, too");
    commands.addOutput(*command);
    commands.addOfFile(Command::MdbSaveStream, "save-stream",
                       "Save the measurements of a stream into the database; with --overwrite in "
                       "place of all that is there",
                       true);
    commands.addOutput(commands.addOfFile(Command::MdbAddBus, "add-bus",
                                          "Add the measurements of a bus from the database, each "
                                          "to the message that its 1553 fields name",
                                          true));
    command = &commands.addOfFile(Command::MdbEuData, "eu-data",
                                  "Show the conversion data of a measurement as one text", false);
    commands.addName(*command);
    command = &commands.addOfFile(Command::MdbEuApply, "eu-apply",
                                  "Put conversion data into the record of a measurement", false);
    commands.addName(*command);
    oneValue(command->add_option("TYPE", line.mdb.type, "The type of the conversion, such as COE"),
             "")
        ->required();
    oneValue(command->add_option("TEXT", line.mdb.text, "The data"), "")->required();
    commands.addOutput(*command);
}

int readVersion(const char* option, const std::string& text) {
    if (text.size() != 1 || text.front() < '0' || text.front() > '2') {
        throw UsageError{std::string(option) + ": '" + text + "' is not 0, 1 or 2"};
    }
    return text.front() - '0';
}

std::size_t readField(const char* option, std::string_view text) {
    const auto index = mdbFieldIndex(text);
    if (!index) {
        throw UsageError{std::string(option) + ": '" + std::string(text) +
                         "' is neither the label nor the index of a field"};
    }
    return *index;
}

void readValues(const std::vector<std::string>& values, CommandLine& line) {
    for (const auto& text : values) {
        const auto equals = text.find('=');
        if (equals == std::string::npos) {
            throw UsageError{"--field: '" + text + "' is not of the form FIELD=VALUE"};
        }
        const auto index = readField("--field", std::string_view(text).substr(0, equals));
        if (index == mdbfield::kName) {
            throw UsageError{"--field: the name is given by NAME"};
        }
        line.mdb.values.emplace_back(index, text.substr(equals + 1));
    }
}

void readFields(const std::string& list, CommandLine& line) {
    if (list == "all" || list == "none") {
        for (std::size_t i = 0; i < mdbfield::kCount && list == "all"; ++i) {
            if (isStreamField(i)) {
                line.mdb.fields.push_back(i);
            }
        }
        return;
    }
    std::string_view rest = list;
    while (true) {
        const auto end = rest.find(',');
        const auto index = readField("--fields", trimBlanks(rest.substr(0, end)));
        if (!isStreamField(index)) {
            throw UsageError{"--fields: a stream takes the fields 3 to 6 and 15 to 35 alone"};
        }
        line.mdb.fields.push_back(index);
        if (end == std::string_view::npos) {
            return;
        }
        rest.remove_prefix(end + 1);
    }
}

int readEditionOf(const std::string& text) {
    for (const int year : kEditions) {
        if (text == std::to_string(year)) {
            return year;
        }
    }
    throw UsageError{"--edition: '" + text + "' is not an edition of IRIG 106 that is known here"};
}

}  // namespace

MdbApps addMdbCommands(CLI::App& app, CommandLine& line, RawMdb& raw) {
    MdbApps apps;
    apps.mdb = addCommand(app, "mdb", "Work with the measurement database");
    apps.mdb->require_subcommand(1);
    addDatabase(*apps.mdb, line, raw);  // a command hands on what it does not know itself
    MdbCommands commands(apps, line, raw);
    commands.add(Command::MdbInfo, "info", "Show its columns and the number of its records");
    auto* command = &commands.add(Command::MdbValidate, "validate", "Check every record");
    oneValue(command->add_option("--edition", raw.edition,
                                 "As this edition of IRIG 106 wants them (default: 2011)"),
             "YEAR");
    command = &commands.add(Command::MdbList, "list", "List the names of its records");
    command->add_flag("--records", line.mdb.records, "The records as a whole");
    commands.addName(commands.add(Command::MdbGet, "get", "Show a record"));
    command = &commands.add(Command::MdbAdd, "add", "Add a record after all others");
    commands.addName(*command);
    commands.addValues(*command);
    command = &commands.add(Command::MdbPut, "put", "Replace the record of a name, or add it");
    commands.addName(*command);
    commands.addValues(*command);
    command = &commands.add(Command::MdbRemove, "remove", "Remove the record of a name, or all");
    commands.addName(*command, false);
    command->add_flag("--all", line.mdb.all, "Remove all records");
    command = &commands.add(Command::MdbConvert, "convert",
                            "Write every record into a database of another form");
    oneValue(command->add_option("--to", raw.to, "The form: 0, 1 or 2"), "VERSION")->required();
    command->add_flag("--append", line.mdb.append, "Add to what OUT has, instead of replacing it");
    commands.addOutput(*command);
    addStreamParts(commands, line, raw);
    return apps;
}

void readMdbArguments(const MdbApps& apps, const RawMdb& raw, CommandLine& line) {
    if (!apps.mdb->parsed()) {
        return;
    }
    if (!raw.version.empty()) {
        line.mdb.version = readVersion("--database-version", raw.version);
    }
    if (line.command == Command::MdbConvert) {
        line.mdb.to = readVersion("--to", raw.to);
    }
    if (!raw.edition.empty()) {
        line.edition = readEditionOf(raw.edition);
    }
    if (line.command == Command::MdbRemove && line.mdb.all != line.mdb.name.empty()) {
        throw UsageError{"mdb remove: NAME or --all is required, and not both"};
    }
    const bool needsName = line.command == Command::MdbAdd || line.command == Command::MdbPut;
    if (needsName && trimBlanks(line.mdb.name).empty()) {
        throw UsageError{"mdb: a record has a name"};
    }
    readValues(raw.values, line);
    readFields(raw.fields, line);
}

}  // namespace kavu::cli
