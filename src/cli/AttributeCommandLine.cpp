#include "cli/AttributeCommandLine.h"

#include "core/text/Text.h"
#include "groups/CommandCode.h"
#include "vocabulary/Vocabularies.h"

namespace kavu::cli {

namespace {

std::optional<std::string> readLetter(const std::string& text, CommandLine& line) {
    const char letter = text.size() == 1 ? toUpperAscii(text.front()) : '\0';
    if (findVocabulary(letter) == nullptr) {
        return "vocabulary: '" + text + "' is not a group with a vocabulary (" +
               vocabularyLetterList() + ")";
    }
    line.letter = letter;
    return std::nullopt;
}

std::optional<std::string> refusedCode(const char* command, const std::string& code) {
    if (parseCommandCode(code)) {
        return std::nullopt;
    }
    if (startsWithIgnoreCase(code, "C-")) {
        return std::string(command) + ": '" + code +
               "' is part of a conversion record; see the command 'conversions'";
    }
    return std::string(command) + ": '" + code +
           "' is not the code of a command, such as G\\PN or T-1\\RF1";
}

std::optional<std::string> readChanges(const std::vector<std::string>& assignments,
                                       CommandLine& line) {
    for (const auto& text : assignments) {
        const auto equals = text.find('=');
        if (equals == std::string::npos) {
            return "set: '" + text + "' is not of the form CODE=VALUE";
        }
        line.changes.emplace_back(text.substr(0, equals), text.substr(equals + 1));
        if (auto refused = refusedCode("set", line.changes.back().first)) {
            return refused;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string vocabularyLetterList() {
    std::string text;
    for (const auto& vocabulary : vocabularies()) {
        text += text.empty() ? "" : ", ";
        text += vocabulary.letter;
    }
    return text;
}

std::optional<std::string> readAttributeArguments(const RawAttributes& raw, CommandLine& line) {
    if (line.command == Command::Vocabulary) {
        return readLetter(raw.letter, line);
    }
    if (line.command == Command::Set) {
        return readChanges(raw.assignments, line);
    }
    for (const auto& code : raw.codes) {
        if (auto refused = refusedCode("get", code)) {
            return refused;
        }
    }
    line.codes = raw.codes;
    return std::nullopt;
}

}  // namespace kavu::cli
