#include "groups/Vocabularies.h"

#include "core/document/GroupFiles.h"
#include "core/text/Text.h"
#include "groups/AGroupFields.h"
#include "groups/GGroupFields.h"
#include "groups/GroupRecord.h"
#include "groups/MGroupFields.h"
#include "groups/RGroupFields.h"
#include "groups/TGroupFields.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>

namespace kavu {

namespace {

struct Vocabulary {
    char letter;
    std::string_view name;
    std::span<const Field> (*fields)();
};
constexpr Vocabulary kVocabularies[] = {
    {'G', "General information", generalFields},
    {'T', "Transmission", transmissionFields},
    {'R', "Recorder/reproducer", recorderVocabulary},
    {'M', "Multiplex/modulation", multiplexFields},
    {'A', "PAM", pamFields},
};
constexpr std::string_view kLetters = "GTRMA";

const Vocabulary* vocabularyOf(char letter) {
    const auto it = std::find_if(std::begin(kVocabularies), std::end(kVocabularies),
                                 [letter](const Vocabulary& row) { return row.letter == letter; });
    return it == std::end(kVocabularies) ? nullptr : it;
}

/// Takes "-12" from the end of a code; 0 if there is no number above 0.
std::size_t takeNumber(std::string_view& code) {
    const auto dash = code.rfind('-');
    if (dash == std::string_view::npos) {
        return 0;
    }
    const auto digits = code.substr(dash + 1);
    constexpr std::size_t kMostDigits = 6;
    if (digits.empty() || digits.size() > kMostDigits || digits.front() == '0' ||
        !std::all_of(digits.begin(), digits.end(), isDigit)) {
        return 0;
    }
    code = code.substr(0, dash);
    return static_cast<std::size_t>(leadingInteger(digits));
}

void addMatches(std::vector<VocabularyMatch>& matches, std::span<const Field> table,
                const std::string& code, std::size_t n, std::size_t m) {
    for (const auto& field : table) {
        if (equalsIgnoreCase(field.code, code)) {
            matches.push_back({&field, n, m});
        }
    }
}

}  // namespace

std::span<const Field> groupVocabulary(char letter) {
    const auto* const row = vocabularyOf(letter);
    return row == nullptr ? std::span<const Field>() : row->fields();
}

std::string_view vocabularyLetters() {
    return kLetters;
}

std::string_view vocabularyName(char letter) {
    const auto* const row = vocabularyOf(letter);
    return row == nullptr ? std::string_view() : row->name;
}

std::string CommandCode::text() const {
    return groupHead(letter, index) + field;
}

std::optional<CommandCode> parseCommandCode(std::string_view code) {
    const auto backslash = code.find('\\');
    if (backslash == 0 || backslash == std::string_view::npos || backslash + 1 == code.size() ||
        code.find_first_of(":; \t\r\n") != std::string_view::npos) {
        return std::nullopt;
    }
    CommandCode parsed;
    parsed.letter = toUpperAscii(code.front());
    parsed.field = code.substr(backslash + 1);
    const auto kinds = groupKinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const GroupKind& each) {
        return each.letter == parsed.letter;
    });
    if (kind == kinds.end()) {
        return std::nullopt;
    }
    const auto head = code.substr(1, backslash - 1);
    if (!kind->indexed) {
        return head.empty() ? std::optional(parsed) : std::nullopt;
    }
    if (!head.starts_with('-') || head.size() < 2 || head.size() > 3 ||
        !std::all_of(head.begin() + 1, head.end(), isDigit)) {
        return std::nullopt;
    }
    parsed.index = leadingInt(head.substr(1));
    return parsed.index >= kLeastGroupIndex ? std::optional(parsed) : std::nullopt;
}

std::vector<VocabularyMatch> matchVocabulary(std::span<const Field> table,
                                             std::string_view fieldCode) {
    std::vector<VocabularyMatch> matches;
    addMatches(matches, table, std::string(fieldCode), 0, 0);
    auto base = fieldCode;
    const auto last = takeNumber(base);
    if (last > 0) {
        addMatches(matches, table, std::string(base) + "-n", last, 0);
        if (const auto first = takeNumber(base); first > 0) {
            addMatches(matches, table, std::string(base) + "-n-m", first, last);
        }
    }
    // "POC1-n" itself is no code of a command.
    std::erase_if(matches, [](const VocabularyMatch& match) {
        return indexCountOf(match.field->code) > 0 && match.n == 0;
    });
    return matches;
}

}  // namespace kavu
