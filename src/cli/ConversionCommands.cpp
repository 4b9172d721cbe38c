// The conversion records of a document, and values converted by them.
#include "application/Application.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "conversion/ConversionFields.h"
#include "conversion/ConversionStore.h"
#include "conversion/EuEvaluation.h"
#include "conversion/EuNumbers.h"
#include "core/TmatsDocument.h"
#include "core/files/FileIo.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "core/text/TextEncoding.h"

namespace kavu::cli {

namespace {

std::string realLineBreaks(std::string_view stored) {
    std::string text(stored);
    fromStoredForm(text);
    return text;
}

/// Adds a record with every key, including a comment in a file of its own.
bool addRecord(CommandContext& context, const ProfileFile::Section& record, Json& records,
               std::string& text) {
    IoStatus status;
    const auto comment = context.application.conversions().readEuComment(record, &status);
    if (!status.ok()) {
        showBox(context.ui,
                formatPrintf("Unable to read '%s'\n\nReason: %s", status.path(), status.reason()),
                "Unable To Read Conversion");
        return false;
    }
    JsonMembers values;
    std::vector<std::vector<std::string>> rows;
    const bool isJson = context.line.json;
    values.reserve(isJson ? record.lines().size() + 1 : 0);
    const auto add = [&](const std::string& key, const std::string& value) {
        if (isJson) {
            values.set(toUtf8(key), jsonText(value));
        } else {
            rows.push_back({"  " + terminalLine(key), terminalLine(value)});
        }
    };
    for (const auto& line : record.lines()) {
        if (!line.key.empty() && !equalsIgnoreCase(line.key, kCommentCode)) {
            add(line.key, realLineBreaks(record.get(line.key)));
        }
    }
    if (!comment.empty()) {
        add(std::string(kCommentCode), comment);
    }
    if (isJson) {
        records.push_back({{"name", jsonText(record.name())}, {"values", values.take()}});
    } else {
        text += terminalLine(record.name()) + "\n" + alignedTable(rows);
    }
    return true;
}

bool tellMissing(CommandContext& context) {
    showBox(
        context.ui,
        formatPrintf("There is no conversion record of '%s' in this document.", context.line.name),
        "Unable To Find Conversion");
    return false;
}

}  // namespace

bool conversionsCommand(CommandContext& context, CommandOutput& output) {
    auto& store = context.application.conversions();
    Json records = Json::array();
    std::optional<RecordPlace> wanted;
    if (!context.line.name.empty()) {
        wanted = store.locateDefinition(context.line.name);
        if (!wanted->found) {
            return tellMissing(context);
        }
    }
    for (const auto number : store.chunkNumbers()) {
        if (wanted && number != wanted->chunk) {
            continue;
        }
        const auto chunk = store.chunk(number);
        for (const auto& section : chunk->sections()) {
            const bool shown = wanted ? section.name() == wanted->section : !section.name().empty();
            if (shown && !addRecord(context, section, records, output.text)) {
                return false;
            }
            if (shown && wanted) {
                break;
            }
        }
        if (cancelRequested(context.ui)) {
            return false;
        }
    }
    output.members["conversions"] = std::move(records);
    return true;
}

bool evaluateCommand(CommandContext& context, CommandOutput& output) {
    auto& store = context.application.conversions();
    const auto place = store.locateDefinition(context.line.name);
    if (!place.found) {
        return tellMissing(context);
    }
    output.members["name"] = jsonText(place.section);
    std::string why;
    const auto chunk = store.chunk(place.chunk);
    const auto evaluation = EuEvaluation::make(*chunk, place.section,
                                               context.application.context().document.version, why);
    if (!evaluation) {
        showBox(context.ui,
                formatPrintf("The values of '%s' cannot be converted. %s", place.section, why),
                "Unable To Convert Values");
        return false;
    }
    output.members["type"] = jsonText(evaluation->type());
    Json values = Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const double x : context.line.values) {
        const auto y = evaluation->value(x);
        values.push_back({{"x", x}, {"y", y ? Json(*y) : Json(nullptr)}});
        rows.push_back({exactText(x), y ? exactText(*y) : "-"});
        if (!y) {
            showBox(context.ui, formatPrintf("There is no finite value for %s.", exactText(x)),
                    "Unable To Convert Values");
        }
    }
    output.members["values"] = std::move(values);
    output.text = alignedTable(rows);
    return true;
}

}  // namespace kavu::cli
