// Opens any bytes as a document and does one thing to it that the input chooses: a source or link
// operation, or `set`. What the operation is not about must be in the saved file as it was in one
// that is only opened and saved; and an operation that fails has changed nothing.
//
// The first line of an input is the operation and its arguments, with tabs between them: "rename",
// OLD, NEW; "link", OLD, NEW; "delete", NAME; "copy", NAME, NEW; "create", NAME; any other is
// "set", with any number of CODE=VALUE. The rest is the document.
#include "FuzzRun.h"
#include "LostCommands.h"
#include "core/TmatsDocument.h"
#include "core/WorkingStore.h"
#include "core/document/BuildDocument.h"
#include "core/document/OpenDocument.h"
#include "core/talk/ProfileSettings.h"
#include "groups/AttributeEdit.h"
#include "groups/CommandCode.h"
#include "groups/SourceEdit.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kavu;
using fuzz::FileCommand;

struct Operation {
    std::string name;
    std::vector<std::string> arguments;

    [[nodiscard]] std::string argument(std::size_t at) const {
        return at < arguments.size() ? arguments[at] : std::string();
    }
};

Operation operationIn(std::string_view line) {
    Operation operation;
    bool isName = true;
    while (!line.empty() || isName) {
        const auto part = line.substr(0, line.find('\t'));
        line.remove_prefix(std::min(part.size() + 1, line.size()));
        if (isName) {
            operation.name = part;
            isName = false;
        } else {
            operation.arguments.emplace_back(part);
        }
    }
    static const std::set<std::string> others{"rename", "link", "delete", "copy", "create"};
    if (!others.contains(operation.name)) {
        operation.name = "set";
    }
    return operation;
}

bool run(fuzz::Run& run, const Operation& operation) {
    auto& application = run.application;
    auto& ui = run.ui;
    SourceParts parts{application.context(), application.conversions(),
                      application.measurementNames()};
    const auto first = operation.argument(0);
    const auto second = operation.argument(1);
    ui.otherwise = Button::Yes;
    if (operation.name == "rename") {
        return renameDataSource(parts, &ui, first, second);
    }
    if (operation.name == "link") {
        return renameDataLink(parts, &ui, first, second);
    }
    if (operation.name == "delete") {
        return deleteDataSource(parts, &ui, first);
    }
    if (operation.name == "copy") {
        // No other names for the measurements.
        ui.queued = {Button::Yes, Button::No};
        ui.texts = {second};
        return copyDataSource(parts, &ui, first);
    }
    if (operation.name == "create") {
        ui.queued = {Button::Yes, Button::No};
        ui.texts = {first};
        ui.choices = {0};
        return createDataSource(parts, &ui);
    }
    std::vector<AttributeChange> changes;
    for (const auto& assignment : operation.arguments) {
        const auto equals = assignment.find('=');
        const auto code = parseCommandCode(assignment.substr(0, equals));
        if (equals == std::string::npos || !code) {
            return false;
        }
        changes.push_back({*code, assignment.substr(equals + 1)});
    }
    return setAttributes(parts.context, &ui, changes);
}

using GroupNumber = std::pair<char, std::int64_t>;

/// The groups without a source that a deletion asks about: a line each, as "R-1 'Box'".
std::set<GroupNumber> groupsAskedAbout(const test::RecordingInterface& ui) {
    std::set<GroupNumber> groups;
    for (const auto& box : ui.boxes) {
        auto rest = std::string_view(box.text);
        const auto start = rest.find("belong to no data source");
        rest.remove_prefix(std::min(start, rest.size()));
        for (auto at = rest.find(" '"); at != std::string_view::npos;
             at = rest.find(" '", at + 1)) {
            const auto line = rest.rfind('\n', at) + 1;
            const auto group = rest.substr(line, at - line);
            if (group.size() > 2 && group[1] == '-') {
                groups.emplace(group[0], std::atoll(std::string(group.substr(2)).c_str()));
            }
        }
    }
    return groups;
}

/// Opens, does it, and saves. Nothing for a document that does not open, or that does not save
/// because the operation has made it none.
struct Outcome {
    bool done = false;
    std::vector<FileCommand> commands;
    std::set<GroupNumber> named;  ///< groups that a question named, and the answer let go
};
std::optional<Outcome> outcomeOf(const std::string& scratch, const std::string& in,
                                 const Operation* operation) {
    fuzz::Run one(scratch);
    one.ui.otherwise = Button::Yes;
    auto& context = one.application.context();
    context.settings.overrideForThisRun(setting::kKeepComments.name, "1");
    if (!loadDocument(context, &one.ui, in)) {
        return std::nullopt;
    }
    Outcome outcome;
    outcome.done = operation == nullptr || run(one, *operation);
    outcome.named = groupsAskedAbout(one.ui);
    const auto out = scratch + "/out/out.tma";
    KAVU_CHECK(saveDocumentTo(context, &one.ui, out));
    outcome.commands = fuzz::commandsOf(fuzz::read(out));
    return outcome;
}

/// True for the command that names its group.
bool isName(const FileCommand& command) {
    const auto field = lowerAscii(command.field);
    return field == "id" || field == "dln";
}
/// A name as it is compared.
std::string nameIn(std::string_view value) {
    return std::string(
        trimTrailingBlanks(value.substr(0, std::min<std::size_t>(value.size(), 32))));
}
bool isOfSource(char letter) {
    return letter == 'T' || letter == 'R' || letter == 'M';
}
/// A command of a row of the list of data sources.
bool isOfSourceRow(const FileCommand& command) {
    return command.letter == 'G' && startsWithIgnoreCase(command.field, "ds") &&
           command.field.find('-') != std::string::npos;
}
std::string rowOf(const FileCommand& command) {
    return command.field.substr(command.field.find('-'));
}

/// What the operation does to a document, told from the document before it.
class Expectation {
  public:
    Expectation(const Operation& operation, const std::vector<FileCommand>& before,
                const std::set<GroupNumber>& named)
        : operation_(operation), old_(nameIn(operation.argument(0))), deleted_(named) {
        const bool renames = operation.name == "rename" || operation.name == "link";
        for (const auto& command : before) {
            if (isName(command)) {
                const bool isRenamed =
                    renames && isOfSource(command.letter) == (operation.name == "rename");
                const auto name = nameIn(command.value);
                names_.emplace(GroupNumber(command.letter, command.group),
                               isRenamed && name == old_ ? nameIn(operation.argument(1)) : name);
            }
        }
        if (operation.name == "delete") {
            findDeleted(before);
        }
    }

    /// The command whatever the numbers of its group and of its row of the list of data sources
    /// are: an operation gives the groups that stay other numbers, but no other names.
    [[nodiscard]] std::string keyOf(const FileCommand& command) const {
        return keyIn(names_, command);
    }
    static std::string keyIn(const std::map<GroupNumber, std::string>& names,
                             const FileCommand& command) {
        if (isOfSourceRow(command)) {
            const auto field = lowerAscii(command.field);
            return "G\\" + field.substr(0, field.find('-')) + ":" + command.value;
        }
        const auto name = names.find({command.letter, command.group});
        return command.withoutGroup() + (name == names.end() ? "" : "\n" + name->second);
    }
    static std::map<GroupNumber, std::string> namesIn(const std::vector<FileCommand>& commands) {
        std::map<GroupNumber, std::string> names;
        for (const auto& command : commands) {
            if (isName(command)) {
                names.emplace(GroupNumber(command.letter, command.group), nameIn(command.value));
            }
        }
        return names;
    }

    /// True for a command that the operation removes or gives another value.
    [[nodiscard]] bool isMeant(const FileCommand& command) const {
        const auto field = lowerAscii(command.field);
        const bool changesSources =
            operation_.name == "create" || operation_.name == "copy" || operation_.name == "delete";
        if (command.letter == 'G' && field == "dsi\\n" && changesSources) {
            return true;
        }
        if (operation_.name == "delete") {
            return deleted_.contains({command.letter, command.group}) ||
                   (isOfSourceRow(command) && rows_.contains(rowOf(command)));
        }
        return operation_.name == "set" &&
               std::any_of(operation_.arguments.begin(), operation_.arguments.end(),
                           [&](const std::string& assignment) {
                               return startsWithIgnoreCase(
                                   command.text, assignment.substr(0, assignment.find('=')));
                           });
    }
    /// The command with the name that a rename may have given it; nothing if it has no such name.
    [[nodiscard]] std::optional<FileCommand> renamed(const FileCommand& command) const {
        if ((operation_.name != "rename" && operation_.name != "link") ||
            nameIn(command.value) != old_) {
            return std::nullopt;
        }
        auto result = command;
        result.value = operation_.argument(1);
        return result;
    }

  private:
    /// True for what makes a link one of a source: its multiplex or a track of its recorder.
    static bool namesLink(const FileCommand& command) {
        return (command.letter == 'M' && (startsWithIgnoreCase(command.field, "bb\\dln") ||
                                          startsWithIgnoreCase(command.field, "si\\dln"))) ||
               (command.letter == 'R' && startsWithIgnoreCase(command.field, "cdln-"));
    }
    /// The groups of a source, and those of its links.
    void findDeleted(const std::vector<FileCommand>& before) {
        for (const auto& command : before) {
            if (isName(command) && isOfSource(command.letter) && nameIn(command.value) == old_) {
                deleted_.emplace(command.letter, command.group);
            } else if (isOfSourceRow(command) && startsWithIgnoreCase(command.field, "dsi-") &&
                       nameIn(command.value) == old_) {
                rows_.insert(rowOf(command));
            }
        }
        std::set<std::string> links;
        for (const auto& command : before) {
            if (deleted_.contains({command.letter, command.group}) && namesLink(command)) {
                links.insert(nameIn(command.value));
            }
        }
        for (const auto& command : before) {
            if (isName(command) && !isOfSource(command.letter) &&
                links.contains(nameIn(command.value))) {
                deleted_.emplace(command.letter, command.group);
            }
        }
    }

    const Operation& operation_;
    std::string old_;
    std::map<GroupNumber, std::string> names_;
    std::set<GroupNumber> deleted_;
    std::set<std::string> rows_;
};

/// Checks that all commands that the operation is not about are still there.
void checkNothingLost(const Operation& operation, const Outcome& plain, const Outcome& changed) {
    const Operation none;
    const Expectation expected(changed.done ? operation : none, plain.commands, changed.named);
    const auto namesNow = Expectation::namesIn(changed.commands);
    std::map<std::string, long> left;
    for (const auto& command : changed.commands) {
        ++left[Expectation::keyIn(namesNow, command)];
    }
    const auto take = [&left](const std::string& key) { return left[key]-- > 0; };
    for (const auto& command : plain.commands) {
        if (expected.isMeant(command)) {
            continue;
        }
        const auto renamed = expected.renamed(command);
        const bool isThere =
            take(expected.keyOf(command)) || (renamed && take(expected.keyOf(*renamed)));
        if (!isThere) {
            std::fprintf(stderr, "lost by %s: %s\n", operation.name.c_str(), command.text.c_str());
            KAVU_CHECK(false);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string scratch = fuzz::makeScratch();
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto line = input.substr(0, input.find('\n'));
    const auto operation = operationIn(line);
    const std::string in = scratch + "/in.tma";
    KAVU_CHECK(writeWholeFile(in, input.substr(std::min(line.size() + 1, input.size()))).ok());
    KAVU_CHECK(makeFolder(scratch + "/out").ok());
    const auto plain = outcomeOf(scratch, in, nullptr);
    const auto changed = plain ? outcomeOf(scratch, in, &operation) : std::nullopt;
    if (plain && changed) {
        checkNothingLost(operation, *plain, *changed);
    }
    (void)deleteFolder(scratch + "/out");
    return 0;
}
