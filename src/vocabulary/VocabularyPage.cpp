#include "vocabulary/VocabularyPage.h"

#include "core/text/Edition.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

namespace kavu {

namespace {

/// A cell of a table, with its bars escaped: a bar would end it.
std::string cell(std::string_view text) {
    return replaceAll(text, "|", "\\|");
}

std::string code(std::string_view text) {
    return text.empty() ? std::string() : "`" + cell(text) + "`";
}

std::string editions(int first, int last) {
    if (first == 0 && last == 0) {
        return "all";
    }
    if (last == 0) {
        return formatPrintf("from %d", first);
    }
    return first == 0 ? formatPrintf("up to %d", last) : formatPrintf("%d to %d", first, last);
}

std::string limits(const Field& field) {
    if (field.rows > 0) {
        return formatPrintf("%d rows", static_cast<int>(field.rows));
    }
    if (field.limit == 0) {
        return {};
    }
    std::string text = std::to_string(field.limit);
    for (const int edition : {1996, 1999}) {
        if (const auto limit = limitIn(edition, field); limit != field.limit) {
            text += formatPrintf("; %d in %d", static_cast<int>(limit), edition);
        }
    }
    return text;
}

std::string kind(const Field& field) {
    switch (field.kind) {
        case FieldKind::Date:
            return "date";
        case FieldKind::DateTime:
            return "date and time";
        case FieldKind::Count:
            return "count";
        case FieldKind::Digits:
            return "digits";
        case FieldKind::Comment:
            return "text of several lines";
        case FieldKind::Text:
        case FieldKind::Choice:
            break;
    }
    return field.choices.empty() ? "text" : "choice";
}

std::string choices(const Field& field) {
    std::string text;
    for (const auto& choice : field.choices) {
        text += text.empty() ? "" : "; ";
        text += code(storedChoice(choice, field.limit));
        const auto inXml = choice.xml.empty() ? schemaText(choice) : choice.xml;
        const auto shown = choice.text.empty() ? inXml : choice.text;
        text += shown == choice.value ? "" : " " + cell(shown);
        if (choice.text.empty() && !field.bridgeOnly) {
            text += " (XML only)";
        }
        if (choice.firstEdition != 0 || choice.lastEdition != 0) {
            text += " (" + editions(choice.firstEdition, choice.lastEdition) + ")";
        }
    }
    return text;
}

std::string xml(const Field& field) {
    auto text = code(field.element);
    const auto add = [&text](const char* what, std::string_view value) {
        if (!value.empty()) {
            text += std::string("; ") + what + " " + code(value);
        }
    };
    add("read from", field.elementRead);
    add("in the schema", schemaElement(field) == field.element ? "" : schemaElement(field));
    add("of command", field.codeToXml);
    add("into command", field.codeFromXml);
    return text;
}

std::string label(const Field& field) {
    std::string text(field.label);
    if (text.ends_with(':')) {
        text.pop_back();
    }
    text = field.box.empty() || text.empty() ? text : std::string(field.box) + ": " + text;
    text += field.unit.empty() ? "" : " (" + std::string(field.unit) + ")";
    text = cell(text);
    return field.codeRead.empty() ? text : text + " (the page reads " + code(field.codeRead) + ")";
}

std::string row(const Field& field) {
    std::string text = "| " + code(field.code);
    for (const auto& each :
         {label(field), cell(field.page), kind(field), limits(field),
          editions(field.firstEdition, field.lastEdition), choices(field), xml(field)}) {
        text += " | " + each;
    }
    return text + " |\n";
}

}  // namespace

std::string vocabularyPage(const GroupVocabulary& vocabulary) {
    std::string text = formatPrintf("# The %c group: %s\n\n", vocabulary.letter, vocabulary.name);
    text +=
        "The commands in the order in which they are written. `-n`, `-n-m` and so on stand for "
        "the numbers of rows. A field without a label is on no page. `kavu-cli vocabulary` shows "
        "the "
        "same for one edition of IRIG 106.\n\n"
        "| Command | Label | Page | Kind | Limit | Editions | Choices | XML element |\n"
        "| --- | --- | --- | --- | --- | --- | --- | --- |\n";
    for (const auto& field : vocabulary.fields) {
        text += row(field);
    }
    return text;
}

std::string vocabularyPageName(char letter) {
    return std::string("group-") + toLowerAscii(letter) + ".md";
}

}  // namespace kavu
