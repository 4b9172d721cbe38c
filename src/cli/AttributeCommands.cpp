// Lists the vocabulary of a group, and reads and sets commands of attribute groups by
// their codes.
#include "application/Application.h"
#include "application/DocumentService.h"
#include "cli/Commands.h"
#include "cli/ScriptedInterface.h"
#include "cli/TerminalText.h"
#include "core/TmatsDocument.h"
#include "core/text/Edition.h"
#include "core/text/Text.h"
#include "groups/AttributeEdit.h"
#include "vocabulary/FieldRules.h"
#include "vocabulary/Vocabularies.h"

#include <array>

namespace kavu::cli {

namespace {

constexpr std::array<const char*, 7> kKinds = {"text",  "choice", "date",   "datetime",
                                               "count", "digits", "comment"};

const char* kindText(FieldKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

/// Tables have 0 for what exists from the first edition on.
int fromEdition(int firstEdition) {
    return std::max(firstEdition, kEditions.front());
}

Json choicesJson(const Field& field, int edition) {
    Json choices = Json::array();
    for (const auto& choice : field.choices) {
        if (isKnownIn(edition, choice)) {
            choices.push_back({{"value", jsonText(storedChoice(choice, limitIn(edition, field)))},
                               {"text", jsonText(std::string(choice.text))},
                               {"xml", jsonText(std::string(choice.xml))}});
        }
    }
    return choices;
}

Json fieldJson(const Field& field, int edition) {
    return {{"code", field.code},
            {"label", field.label},
            {"page", field.page},
            {"limit", limitIn(edition, field)},
            {"kind", kindText(field.kind)},
            {"from", fromEdition(field.firstEdition)},
            {"to", field.lastEdition},
            {"element", field.element},
            {"choices", choicesJson(field, edition)},
            {"box", field.box},
            {"unit", field.unit},
            {"list", field.list},
            {"rows", field.rows},
            {"bridge", field.bridgeOnly}};
}

std::string editionsText(const Field& field) {
    if (field.lastEdition != 0) {
        return std::to_string(fromEdition(field.firstEdition)) + "-" +
               std::to_string(field.lastEdition);
    }
    return field.firstEdition == 0 ? "" : "from " + std::to_string(field.firstEdition);
}

std::vector<std::string> fieldRow(const Field& field, int edition) {
    const auto limit = field.rows > 0 ? field.rows : limitIn(edition, field);
    return {terminalLine(field.code),  limit == 0 ? "" : std::to_string(limit),
            kindText(field.kind),      editionsText(field),
            terminalLine(field.label), terminalLine(choiceList(field, edition))};
}

std::string realLineBreaks(std::string value) {
    fromStoredForm(value);
    return value;
}

}  // namespace

bool vocabularyCommand(CommandContext& context, CommandOutput& output) {
    const char letter = context.line.letter;
    const int edition = context.line.edition.value_or(kLatestEdition);
    Json fields = Json::array();
    std::vector<std::vector<std::string>> rows = {
        {"Code", "Limit", "Kind", "Editions", "Label", "Choices"}};
    // The command line is checked against the same list.
    const auto* const found = findVocabulary(letter);
    const auto vocabulary = found == nullptr ? GroupVocabulary{} : *found;
    for (const auto& field : vocabulary.fields) {
        if (isKnownIn(edition, field)) {
            fields.push_back(fieldJson(field, edition));
            rows.push_back(fieldRow(field, edition));
        }
    }
    output.members["group"] = std::string(1, letter);
    output.members["edition"] = edition;
    output.members["fields"] = std::move(fields);
    output.text = std::string(vocabulary.name) + " (" + letter + "), IRIG " + editionText(edition) +
                  "\n\n" + alignedTable(rows);
    return true;
}

bool getCommand(CommandContext& context, CommandOutput& output) {
    std::vector<CommandCode> codes;
    for (const auto& code : context.line.codes) {
        codes.push_back(parseCommandCode(code).value_or(CommandCode{}));
    }
    std::vector<std::vector<std::string>> found;
    if (!readAttributes(context.application.context(), context.ui, codes, found)) {
        return false;
    }
    Json values = Json::object();
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < codes.size(); ++i) {
        Json all = Json::array();
        for (const auto& value : found[i]) {
            all.push_back(jsonText(realLineBreaks(value)));
            rows.push_back({terminalLine(context.line.codes[i]), terminalLine(value)});
        }
        values[context.line.codes[i]] = std::move(all);
    }
    output.members["values"] = std::move(values);
    output.text = alignedTable(rows);
    return true;
}

bool setCommand(CommandContext& context, CommandOutput& output) {
    std::vector<AttributeChange> changes;
    for (const auto& [code, value] : context.line.changes) {
        changes.push_back({parseCommandCode(code).value_or(CommandCode{}), value});
    }
    auto& document = context.application.context();
    if (!setAttributes(document, context.ui, changes)) {
        return false;
    }
    output.changed = document.document.changed;  // the save clears it
    if (!context.application.documents().saveTo(context.ui, context.line.output)) {
        return false;
    }
    output.members["output"] = jsonText(context.line.output);
    output.text = "Saved as " + terminalLine(context.line.output) + "\n";
    return true;
}

}  // namespace kavu::cli
