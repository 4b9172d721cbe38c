// What the user typed: options, a command and its arguments.
#pragma once

#include "cli/EditSteps.h"
#include "cli/ExitStatus.h"
#include "core/text/Clock.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kavu::cli {

enum class Command {
    Check,
    Save,
    Store,
    Tree,
    Recover,
    Stream,
    Rewrite,
    WordFrame,
    Bus,
    Conversions,
    Evaluate,
    Fit,
    Vocabulary,
    Get,
    Set,
    SourceList,
    SourceCopy,
    SourceRename,
    SourceDelete,
    SourceImport,
    LinkRename,
    Message,
    Packet,
    MdbInfo,
    MdbValidate,
    MdbList,
    MdbGet,
    MdbAdd,
    MdbPut,
    MdbRemove,
    MdbConvert,
    MdbUpdateStream,
    MdbSaveStream,
    MdbAddBus,
    MdbEuData,
    MdbEuApply,
    MdbImport,
    MdbProfiles,
    DbaseInfo,
    DbaseRows,
    DbaseSet,
    DbaseFind,
    DbasePurge,
    XmlSelect,
    XmlSet,
    XmlSetAttribute,
    XmlRemove,
    SdkStreams,
    SdkMeasurements,
    SdkMeasurement,
    SdkEu,
    LayoutNew,
    LayoutShow,
    LayoutCheck,
    LayoutSet,
    Workbook,
    Report,
    Calibration,
    Plots,
    XmlImport,
    XmlExport
};

/// When a progress line is shown on standard error.
enum class ProgressWhen { Auto, Always, Never };

/// Replies to questions, given in advance: `yes`, `no`, `cancel`, or an integer or a text
/// for a prompt.
struct Replies {
    std::map<int, std::string> byId;  ///< by message number without its sign
    std::string all = "no";           ///< to every question with neither name nor reply of its own
    std::map<std::string, std::string, std::less<>> byName{};  ///< one of `kQuestionNames`
};

/// What the commands of the measurement database take besides a TMATS file.
struct MdbArguments {
    std::string path{};            ///< empty: the setting `MDB`
    std::optional<int> version{};  ///< 0 to 2; without it the setting `MDBVer`
    std::string name{};            ///< of a measurement
    std::vector<std::pair<std::size_t, std::string>> values{};  ///< `add`, `put`: by field index
    bool records = false;                                       ///< `list`: whole records
    bool all = false;                                           ///< `remove`: all records
    int to = 0;                                                 ///< `convert`: the form of OUT
    bool append = false;                                        ///< `convert`: OUT stays
    std::vector<std::size_t> fields{};                          ///< `update-stream`
    bool addRoot = false;
    bool addChildren = false;
    std::string type{};  ///< `eu-apply`
    std::string text{};
};

/// What an import takes besides the database.
struct ImportArguments {
    std::string kind{};  ///< `dbase`, `delimited`, `fixed`; empty: by profile or file
    std::optional<char> delimiter{};
    bool header = false;
    /// Fields of the record, and where their values are.
    std::vector<std::pair<std::size_t, std::string>> map{};
    std::string profile{};
    std::string saveProfile{};
    std::string deleteProfile{};  ///< `mdb profiles`
};

/// What the commands of tables and XML files take besides the file.
struct TableArguments {
    std::string column{};  ///< `dbase`: a name or number
    std::string text{};
    std::int64_t row = -1;
    bool matchesCase = false;
    bool isWhole = false;
    bool yes = false;    ///< `dbase purge`
    std::string path{};  ///< `xml`
    std::string root{};
    std::string attribute{};
    std::optional<std::string> value{};  ///< `xml remove`
};

/// What the commands of reports take besides the file.
struct ReportArguments {
    std::string layout{};  ///< a layout file; empty: the settings
    /// `layout set`: keys and the values they are to have.
    std::vector<std::pair<std::string, std::string>> keys{};
    std::vector<std::string> kinds{};  ///< `report`: as they were named; empty: those checked
    std::string form = "text";         ///< what is written
    int pageWidth = 132;               ///< characters on a line
    int pageLines = 0;                 ///< lines on a page of text; 0 for no page breaks
    int startPage = 1;
    std::vector<std::string> names{};  ///< `calibration`, `plots`: measurements
    bool isDelimited = false;          ///< `workbook`: delimited text
};

/// What the conversions to and from TMATS XML take besides their files.
struct BridgeArguments {
    bool isSchema = false;               ///< by the public schema
    std::vector<std::string> streams{};  ///< `xml-export`: only these data links
};

struct CommandLine {
    Command command = Command::Check;
    bool json = false;
    bool quiet = false;
    bool overwrite = false;  ///< an output other than a TMATS file may replace a file
    ProgressWhen progress = ProgressWhen::Auto;
    bool keepComments = false;
    std::string settingsPath;  ///< empty: the settings file of the support folder
    std::optional<CivilTime> now;
    Replies replies;

    bool partial = false;        ///< `recover`: also a store that is incomplete
    std::string file;            ///< the document, or the store to recover
    std::string output;          ///< the file to write; not all commands need one
    std::string link;            ///< of a command on one stream: the data link
    std::optional<int> edition;  ///< `save`, `vocabulary`: the edition, one of `kEditions`
    std::string into;            ///< `store`: the folder for the copies
    bool list = false;           ///< `recover`: list the stores
    bool deep = false;           ///< `check`: load every stream as well

    std::string name;              ///< `conversions`, `evaluate`, `sdk`: a measurement
    std::vector<double> values;    ///< `evaluate`: telemetry values
    bool best = false;             ///< `fit`: the order of the best fit
    std::optional<int> order;      ///< `fit`: 0 to 10; without it the best fit
    std::optional<int> maxOrder;   ///< `fit`: of the search, 1 to 10
    std::optional<int> precision;  ///< `fit`: digits after the point, 0 to 40
    std::optional<int> bits;       ///< `fit`: size of the word, 1 to 64
    std::string svg;               ///< `fit`: the picture to write

    char letter = 0;                 ///< `vocabulary`: a group that has one
    std::vector<std::string> codes;  ///< `get`: well formed codes
    /// `set`: well formed codes, and the values they are to have.
    std::vector<std::pair<std::string, std::string>> changes;

    std::string source;          ///< `source`: the data source to work on
    std::string newName;         ///< `source copy`, `rename`, `link rename`
    bool allReferences = false;  ///< `source rename`, `link rename`: rename in other commands, too
    std::string otherFile;       ///< `source import`: the file to import from
    std::string prefix;          ///< `source copy`, `import`: before measurement names
    std::string suffix;          ///< and after them
    bool withConversions = false;  ///< `source import`: the conversion records, too
    bool recorder = false;         ///< `source import`: a recorder, not a transmitted source

    /// `bus`, `message`, `packet`: what to edit, in order; nothing without `--edit`.
    std::optional<std::vector<EditStep>> edits;
    MdbArguments mdb;  ///< `mdb`
    ImportArguments import;
    TableArguments table;  ///< `dbase`, `xml`
    ReportArguments report;
    BridgeArguments bridge;
};

/// The command line, or, if there is nothing to run, what to print and how to exit: help
/// and version go to standard output, wrong usage to standard error.
struct ParsedCommandLine {
    std::optional<CommandLine> line;
    ExitStatus status = ExitStatus::Clean;
    std::string out;
    std::string err;
};

/// `arguments` are those after the name of the program.
[[nodiscard]] ParsedCommandLine parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace kavu::cli
