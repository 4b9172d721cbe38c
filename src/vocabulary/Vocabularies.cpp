#include "vocabulary/Vocabularies.h"

#include "core/text/Text.h"
#include "vocabulary/AGroupFields.h"
#include "vocabulary/CGroupFields.h"
#include "vocabulary/DGroupFields.h"
#include "vocabulary/GGroupFields.h"
#include "vocabulary/MGroupFields.h"
#include "vocabulary/PGroupFields.h"
#include "vocabulary/RGroupFields.h"
#include "vocabulary/TGroupFields.h"

#include <algorithm>
#include <array>

namespace kavu {

std::span<const GroupVocabulary> vocabularies() {
    static const auto kVocabularies = std::to_array<GroupVocabulary>({
        {'G', "General information", generalFields()},
        {'T', "Transmission", transmissionFields()},
        {'R', "Recorder/reproducer", recorderVocabulary()},
        {'M', "Multiplex/modulation", multiplexFields()},
        {'P', "PCM format", pcmVocabulary()},
        {'D', "Measurement description", measurementVocabulary()},
        {'A', "PAM", pamFields()},
        {'C', "Data conversion", conversionVocabulary()},
    });
    return kVocabularies;
}

const GroupVocabulary* findVocabulary(char letter) {
    const auto all = vocabularies();
    const auto it = std::find_if(all.begin(), all.end(),
                                 [letter](const auto& row) { return row.letter == letter; });
    return it == all.end() ? nullptr : &*it;
}

std::vector<VocabularyMatch> matchVocabulary(std::span<const Field> table, std::string_view field) {
    constexpr int kMostNumber = 999'999;
    const auto path = parseField(field);
    if (!path || std::any_of(path->at.begin(), path->at.begin() + path->count,
                             [](int number) { return number > kMostNumber; })) {
        return {};
    }
    std::vector<VocabularyMatch> matches;
    for (const auto& row : table) {
        if (indexCountOf(row.code) == path->count &&
            equalsIgnoreCase(stemOf(row.code), path->stem)) {
            matches.push_back({&row, *path});
        }
    }
    return matches;
}

std::vector<VocabularyMatch> matchVocabulary(char letter, std::string_view field) {
    const auto* const vocabulary = findVocabulary(letter);
    return vocabulary == nullptr ? std::vector<VocabularyMatch>()
                                 : matchVocabulary(vocabulary->fields, field);
}

}  // namespace kavu
