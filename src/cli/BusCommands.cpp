// Shows and edits the bus group of a data link: the forms of the editor, filled by a script.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "bus/definition/BusEdit.h"
#include "bus/definition/BusFiles.h"
#include "bus/definition/BusMessageType.h"
#include "bus/definition/BusRows.h"
#include "bus/definition/BusTerminalEdit.h"
#include "bus/definition/BusUnpack.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "groups/DataSources.h"

#include <algorithm>

namespace kavu::cli {

namespace {

// --- The model as JSON --------------------------------------------------------------------------

Json textJson(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return jsonText(text);
}

/// All fields that the edition knows, by their codes without indices.
Json busFieldsJson(const BusDefinition& definition, BusLevel level, const GroupRow& row,
                   bool isArinc = false) {
    Json fields = Json::object();
    for (const auto& field : busFields(level)) {
        const auto stem = stemOf(field.code);
        if (isKnownIn(definition.edition, field) && (isArinc || (stem != "LBL" && stem != "SDI"))) {
            fields[std::string(stem)] = textJson(row.value(field.code));
        }
    }
    return fields;
}

Json terminalsJson(const std::vector<Terminal>& list) {
    Json all = Json::array();
    for (const auto& [name, address] : list) {
        all.push_back({{"name", textJson(name)}, {"address", textJson(address)}});
    }
    return all;
}

/// The rows of a level in a row, each with its number, its fields and what `more` adds.
template <typename More>
Json busRowsJson(const BusDefinition& definition, BusLevel level, const GroupRow& owner,
                 bool isArinc, const More& more) {
    Json all = Json::array();
    for (const auto& row : rowsOf(owner, level)) {
        Json each = Json::object();
        each["number"] = all.size() + 1;
        if (level == BusLevel::Message) {
            each["type"] = messageTypeText(messageTypeOf(row, definition.edition));
        }
        each["fields"] = busFieldsJson(definition, level, row, isArinc);
        more(each, row);
        all.push_back(std::move(each));
    }
    return all;
}

Json receiveJson(const BusDefinition& definition, const GroupRow& message) {
    Json all = Json::array();
    for (const auto& command : rowsOf(message, BusLevel::Receive)) {
        all.push_back(busFieldsJson(definition, BusLevel::Receive, command));
    }
    return all;
}

void addMessageMembers(const BusDefinition& definition, Json& each, const GroupRow& message) {
    each["receive"] = receiveJson(definition, message);
    each["measurements"] = busRowsJson(
        definition, BusLevel::Measurement, message, false, [&](Json& inner, const GroupRow& row) {
            inner["locations"] = busRowsJson(definition, BusLevel::Location, row, false,
                                             [](Json&, const GroupRow&) {});
        });
}

Json busesJson(const BusDefinition& definition) {
    std::size_t number = 0;
    return busRowsJson(
        definition, BusLevel::Bus, definition.group, false, [&](Json& each, const GroupRow& bus) {
            const auto& terminals = definition.listKnownTerminals(++number);
            Json tracks = Json::array();
            for (const auto& track : rowsOf(bus, BusLevel::Track)) {
                tracks.push_back(textJson(busValue(track, BusLevel::Track, "TS")));
            }
            each["tracks"] = std::move(tracks);
            each["remoteTerminals"] = terminalsJson(terminals.remote);
            each["subTerminals"] = terminalsJson(terminals.sub);
            each["messages"] =
                busRowsJson(definition, BusLevel::Message, bus, isArincBus(bus, definition.edition),
                            [&](Json& inner, const GroupRow& message) {
                                addMessageMembers(definition, inner, message);
                            });
        });
}

// --- The model as text --------------------------------------------------------------------------

void addTable(std::string& text, const BusDefinition& definition, BusLevel level,
              const GroupRow& owner) {
    const auto& all = rowsOf(owner, level);
    if (all.empty()) {
        return;
    }
    std::vector<std::vector<std::string>> rows = {busColumns(level, definition.edition)};
    for (const auto& row : all) {
        rows.push_back(busCells(level, row, definition.edition));
        for (auto& cell : rows.back()) {
            cell = terminalLine(cell);
        }
    }
    text += alignedTable(rows) + "\n";
}

std::string modelText(const BusDefinition& definition) {
    std::string text = "Buses of " + terminalLine(definition.link) + "\n\n";
    addTable(text, definition, BusLevel::Bus, definition.group);
    const auto heading = [&](BusLevel level, const GroupRow& row, std::size_t number) {
        text += terminalLine(busRowLabel(level, row, number)) + "\n";
    };
    std::size_t b = 0;
    for (const auto& bus : definition.buses()) {
        heading(BusLevel::Bus, bus, ++b);
        addTable(text, definition, BusLevel::Message, bus);
        std::size_t m = 0;
        for (const auto& message : rowsOf(bus, BusLevel::Message)) {
            heading(BusLevel::Message, message, ++m);
            addTable(text, definition, BusLevel::Measurement, message);
        }
    }
    return text;
}

// --- The steps ----------------------------------------------------------------------------------

bool wrongPlace(ScriptedInterface* ui) {
    showBox(ui,
            "The place of the step is none of a bus group: the numbers of a bus, of its "
            "message, of its measurement and of its location.",
            "Unable To Edit Bus Attributes");
    return false;
}

Terminal terminalOf(const EditStep& step) {
    Terminal terminal;
    for (const auto& [name, value] : step.values) {
        if (name == "name") {
            terminal.name = value;
        } else if (name == "address") {
            terminal.address = value;
        }
    }
    return terminal;
}

bool doTerminalStep(CommandContext& context, BusDefinition& definition, const EditStep& step,
                    const BusPlace& place) {
    auto& document = context.application.context();
    if (place.size() != 1) {
        return wrongPlace(context.ui);
    }
    switch (step.act) {
        case EditAct::AddTerminal:
            return enterTerminal(document, context.ui, definition, place.front(),
                                 step.list == "sub" ? TerminalKind::Sub : TerminalKind::Remote,
                                 terminalOf(step));
        case EditAct::SaveTerminals:
            return saveTerminalsAsDefaults(document, context.ui, definition, place.front());
        default:
            return loadDefaultTerminals(document, context.ui, definition, place.front());
    }
}

bool doStep(CommandContext& context, BusDefinition& definition, const EditStep& step) {
    const auto numbers = step.numbers();
    if (!numbers || numbers->size() > kDeepestBusPlace) {
        return wrongPlace(context.ui);
    }
    BusEdit edit(context.application.context(), context.ui, definition,
                 &context.application.measurementNames());
    const BusForm form{.values = step.values, .type = step.type, .tracks = step.tracks};
    switch (step.act) {
        case EditAct::Add:
            return edit.add(*numbers, form);
        case EditAct::Set:
            return edit.set(*numbers, form);
        case EditAct::Delete:
            return edit.remove(*numbers);
        default:
            return doTerminalStep(context, definition, step, *numbers);
    }
}

void doSteps(CommandContext& context, CommandOutput& output, BusDefinition& definition) {
    if (!context.line.edits) {
        return;
    }
    Json done = Json::array();
    for (const auto& step : *context.line.edits) {
        const bool isDone = doStep(context, definition, step);
        done.push_back({{"step", done.size() + 1}, {"done", isDone}});
        output.text +=
            "Step " + std::to_string(done.size()) + (isDone ? ": done\n" : ": refused\n");
    }
    output.members["edits"] = std::move(done);
}

}  // namespace

bool busCommand(CommandContext& context, CommandOutput& output) {
    auto& document = context.application.context();
    const auto& link = context.line.link;
    if (!isDataLink(document, context.ui, link)) {
        showBox(context.ui, formatPrintf("There is no data link '%s' in this document.", link),
                "Unable To Load Stream");
        return false;
    }
    auto definition = openBusDefinition(document, context.ui, link);
    if (!definition) {
        return false;
    }
    doSteps(context, output, *definition);
    if (!context.line.output.empty() &&
        (!storeBusDefinition(document, context.ui, *definition) || !saveOutput(context, output))) {
        return false;
    }
    discardBusProfiles(document);
    if (!context.line.json) {
        output.text = modelText(*definition) + output.text;
        return true;
    }
    auto members = std::move(output.members);
    output.members = Json::object();
    output.members["stream"] = jsonText(link);
    output.members["group"] = std::max(0, findGroupIndex(document, context.ui, 'B', link));
    output.members["fields"] = busFieldsJson(*definition, BusLevel::Group, definition->group);
    output.members["fields"]["DLN"] = jsonText(link);
    output.members["buses"] = busesJson(*definition);
    output.members.update(members);
    return true;
}

bool readBusGroup(CommandContext& context, const std::string& link) {
    auto& document = context.application.context();
    const bool isRead = openBusDefinition(document, context.ui, link).has_value();
    discardBusProfiles(document);
    return isRead;
}

bool rewriteBusGroup(CommandContext& context, const std::string& link) {
    auto& document = context.application.context();
    const auto definition = openBusDefinition(document, context.ui, link);
    return definition && storeBusDefinition(document, context.ui, *definition);
}

}  // namespace kavu::cli
