#include "vocabulary/References.h"

#include "core/text/Text.h"
#include "vocabulary/Vocabularies.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kavu {

namespace {

struct Reference {
    char letter = 0;
    Field field{};
};
/// Fields of groups without a vocabulary, and fields that only old documents have.
constexpr auto kOthers = std::to_array<Reference>({
    // Before a track had a data link whatever its type, PCM tracks and buses had one each.
    {'R', {.code = "BDLN-n", .refersTo = Refers::Link}},
    {'R', {.code = "PDLN-n", .refersTo = Refers::Link}},
    {'B', {.code = "SMF\\SMN-n", .refersTo = Refers::Measurement}},
    {'S', {.code = "SMF\\SMN-n", .refersTo = Refers::Measurement}},
    {'V', {.code = "ID", .refersTo = Refers::Source}},
});

/// The part of a field that is compared: all of it, or its front up to the dash of its
/// indices.
struct Pattern {
    std::string front{};
    bool indexed = false;
    Refers refers = Refers::No;
};
using Patterns = std::array<std::vector<Pattern>, 'Z' - 'A' + 1>;

void add(std::vector<Pattern>& patterns, const Field& field) {
    if (field.refersTo == Refers::No) {
        return;
    }
    const bool indexed = indexCountOf(field.code) > 0;
    std::string front(stemOf(field.code));
    front += indexed ? "-" : "";
    const bool known = std::any_of(patterns.begin(), patterns.end(),
                                   [&](const Pattern& each) { return each.front == front; });
    if (!known) {
        patterns.push_back({std::move(front), indexed, field.refersTo});
    }
}

/// Only the few rows that refer to something: each command of a document is looked up,
/// and a recorder has hundreds of rows.
Patterns makePatterns() {
    Patterns all;
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            add(all[static_cast<std::size_t>(vocabulary.letter - 'A')], field);
        }
    }
    for (const auto& other : kOthers) {
        add(all[static_cast<std::size_t>(other.letter - 'A')], other.field);
    }
    return all;
}

/// Null for what is no letter of a group.
const std::vector<Pattern>* patternsOf(char letter) {
    static const auto kPatterns = makePatterns();
    return letter < 'A' || letter > 'Z' ? nullptr
                                        : &kPatterns[static_cast<std::size_t>(letter - 'A')];
}

using Names = std::array<std::string_view, 'Z' - 'A' + 1>;

Names makeNames() {
    Names names;
    const auto take = [&names](char letter, const Field& field) {
        auto& name = names[static_cast<std::size_t>(letter - 'A')];
        const bool isName = field.refersTo == Refers::Source || field.refersTo == Refers::LinkName;
        if (name.empty() && isName && indexCountOf(field.code) == 0) {
            name = field.code;
        }
    };
    for (const auto& vocabulary : vocabularies()) {
        for (const auto& field : vocabulary.fields) {
            take(vocabulary.letter, field);
        }
    }
    for (const auto& other : kOthers) {
        take(other.letter, other.field);
    }
    return names;
}

}  // namespace

std::string_view ownNameOf(char letter) {
    static const auto kNames = makeNames();
    return letter < 'A' || letter > 'Z' ? std::string_view()
                                        : kNames[static_cast<std::size_t>(letter - 'A')];
}

Refers refersTo(char letter, std::string_view field) {
    if (const auto* const patterns = patternsOf(letter)) {
        for (const auto& pattern : *patterns) {
            if (pattern.indexed ? startsWithIgnoreCase(field, pattern.front)
                                : equalsIgnoreCase(field, pattern.front)) {
                return pattern.refers;
            }
        }
    }
    return Refers::No;
}

bool hasReferences(char letter, Refers refers) {
    const auto* const patterns = patternsOf(letter);
    return patterns != nullptr &&
           std::any_of(patterns->begin(), patterns->end(),
                       [refers](const Pattern& pattern) { return pattern.refers == refers; });
}

bool mayRefer(char letter, std::string_view field) {
    const auto* const patterns = patternsOf(letter);
    return patterns != nullptr && !field.empty() &&
           std::any_of(patterns->begin(), patterns->end(),
                       [first = toUpperAscii(field.front())](const Pattern& pattern) {
                           return pattern.front.front() == first;
                       });
}

}  // namespace kavu
