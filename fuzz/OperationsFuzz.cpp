// Opens any bytes as a document and does one thing to it that the input chooses: a source or link
// operation, or `set`. What the operation is not about must be in the saved file as it was in one
// that is only opened and saved; and an operation that fails has changed nothing.
//
// The first line of an input is the operation and its arguments, with tabs between them: "rename",
// OLD, NEW; "link", OLD, NEW; "delete", NAME; "copy", NAME, NEW; "create", NAME; "set", then any
// number of CODE=VALUE. The rest is the document.
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

/// Opens, does it, and saves. Nothing for a document that does not open, or that does not save
/// because the operation has made it none.
struct Outcome {
    bool done = false;
    std::vector<FileCommand> commands;
    std::string told;
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
    const auto out = scratch + "/out/out.tma";
    KAVU_CHECK(saveDocumentTo(context, &one.ui, out));
    outcome.commands = fuzz::commandsOf(fuzz::read(out));
    outcome.told = fuzz::everythingTold(one.ui);
    return outcome;
}

/// The command whatever the numbers of its group and of its row of the list of data sources are.
std::string keyOfContent(const FileCommand& command) {
    const auto field = lowerAscii(command.field);
    if (command.letter == 'G' && field.starts_with("ds") && field.find('-') != std::string::npos) {
        return "G\\" + field.substr(0, field.find('-')) + ":" + command.value;
    }
    return command.withoutGroup();
}

/// The names of the groups that are named, with their letters.
std::set<std::pair<char, std::string>> groupNames(const std::vector<FileCommand>& commands) {
    std::set<std::pair<char, std::string>> names;
    for (const auto& command : commands) {
        const auto field = lowerAscii(command.field);
        if (field == "id" || field == "dln") {
            names.emplace(command.letter, command.value.substr(0, 32));
        }
    }
    return names;
}

/// The groups of a document that are not in another one any more.
std::set<std::pair<char, std::int64_t>> removedGroups(const std::vector<FileCommand>& before,
                                                      const std::vector<FileCommand>& after) {
    const auto left = groupNames(after);
    std::set<std::pair<char, std::int64_t>> removed;
    for (const auto& command : before) {
        const auto field = lowerAscii(command.field);
        if ((field == "id" || field == "dln") &&
            !left.contains({command.letter, command.value.substr(0, 32)})) {
            removed.emplace(command.letter, command.group);
        }
    }
    return removed;
}

/// True for a command that the operation is about.
bool isMeant(const Operation& operation, const FileCommand& lost,
             const std::set<std::pair<char, std::int64_t>>& removed) {
    const auto field = lowerAscii(lost.field);
    const auto value = trimTrailingBlanks(
        std::string_view(lost.value).substr(0, std::min<std::size_t>(lost.value.size(), 32)));
    const bool isCount = lost.letter == 'G' && (field == "dsi\\n" || field == "fn");
    if (operation.name == "rename" || operation.name == "link") {
        return value == trimTrailingBlanks(operation.argument(0)) || isCount;
    }
    if (operation.name == "delete") {
        // What the file has of its row goes with it.
        return isCount || removed.contains({lost.letter, lost.group}) ||
               (lost.letter == 'G' && field.starts_with("ds"));
    }
    if (operation.name == "set") {
        return std::any_of(operation.arguments.begin(), operation.arguments.end(),
                           [&](const std::string& assignment) {
                               return startsWithIgnoreCase(
                                   lost.text, assignment.substr(0, assignment.find('=')));
                           });
    }
    return isCount;
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
        const auto removed = operation.name == "delete"
                                 ? removedGroups(plain->commands, changed->commands)
                                 : std::set<std::pair<char, std::int64_t>>();
        for (const auto* const lost :
             fuzz::lostCommands(plain->commands, changed->commands, keyOfContent)) {
            if (!changed->done || !isMeant(operation, *lost, removed)) {
                std::fprintf(stderr, "lost by %s: %s\n", operation.name.c_str(),
                             lost->text.c_str());
                KAVU_CHECK(false);
            }
        }
    }
    (void)deleteFolder(scratch + "/out");
    return 0;
}
